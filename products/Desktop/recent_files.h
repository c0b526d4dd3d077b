/// RecentFiles: the menu of files opened last.
#pragma once

#include <functional>

#include <QMenu>

class DesktopSettings;

class RecentFiles : public QMenu {
public:
    static constexpr qsizetype kMost = 10;

    /// @param settings outlives the menu @param open told of the path chosen
    RecentFiles(DesktopSettings& settings, std::function<void(const QString&)> open,
                QWidget* parent);

    /// Puts a file first.
    void Add(const QString& path);

private:
    void Fill();

    DesktopSettings& m_Settings;
    std::function<void(const QString&)> m_Open;
};
