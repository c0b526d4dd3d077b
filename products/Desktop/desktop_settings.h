/// DesktopSettings: the desktop's own options, beside those of the module.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include "option_store.h"

/// The keys of the section "Desktop" in the user's file of options. Each set is saved by Save.
class DesktopSettings {
public:
    /// @param store outlives the settings
    explicit DesktopSettings(OptionStore& store) : m_Store(store) {}

    /// Milliseconds without a change after which unsaved texts are kept for recovery.
    static constexpr int kDefaultRecoveryPause = 1000;
    int GetRecoveryPause() const;
    void SetRecoveryPause(int milliseconds);

    bool GetTabs() const { return GetNumber(u"Tabs", 1) != 0; }
    void SetTabs(bool on) { SetNumber(u"Tabs", on); }

    /// Paths, the newest first.
    QStringList GetRecentFiles() const;
    void SetRecentFiles(const QStringList& paths);

    QByteArray GetWindowState() const { return GetBytes(u"WindowState"); }
    void SetWindowState(const QByteArray& bytes) { SetBytes(u"WindowState", bytes); }
    QByteArray GetWindowGeometry() const { return GetBytes(u"WindowGeometry"); }
    void SetWindowGeometry(const QByteArray& bytes) { SetBytes(u"WindowGeometry", bytes); }

    OptionStore& GetStore() { return m_Store; }

private:
    int GetNumber(const char16_t* key, int missing) const;
    void SetNumber(const char16_t* key, int number);
    QByteArray GetBytes(const char16_t* key) const;
    void SetBytes(const char16_t* key, const QByteArray& bytes);

    OptionStore& m_Store;
};
