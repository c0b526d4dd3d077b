/// DesktopCore: the parts behind the window: options, host, backend, module, recovery.
#pragma once

#include "assert_box.h"
#include "desktop_settings.h"
#include "host_desktop.h"
#include "module_host.h"
#include "option_store.h"
#include "qt_desk.h"
#include "recovery_store.h"

class IFactoryTools;

/// Made after the QApplication and gone before it. Documents are gone before Stop.
class DesktopCore {
public:
    /// Where the user's own files are; empty: kept nowhere.
    struct Places {
        std::string m_Options = OptionStore::UserFile();
        std::string m_Recovery = RecoveryStore::UserFolder();
        std::string m_Module; ///< its file; empty: where the host kit looks for it
    };

    DesktopCore();
    DesktopCore(const DesktopCore&) = delete;
    DesktopCore& operator=(const DesktopCore&) = delete;
    ~DesktopCore() { Stop(); }

    /// Reads the options, opens the recovery folder and starts the module. Only the module's
    /// failure is one; the others are found in GetTroubles.
    sys::Status Start(const Places& places);
    void Stop();

    /// What went wrong without keeping anybody from work, a sentence each.
    const std::vector<std::string>& GetTroubles() const { return m_Troubles; }
    /// The folder that all processes share for recovery; empty before Start.
    const std::string& GetRecoveryFolder() const { return m_RecoveryFolder; }
    /// What the module shows beside its editors; null before Start.
    IFactoryTools* GetTools();

    OptionStore m_Options;
    DesktopSettings m_Settings{m_Options};
    HostDesktop m_Desktop;
    QtDesk m_Desk;
    AssertBox m_AssertBox{m_Desk};
    ModuleHost m_Module;
    RecoveryStore m_Recovery;

private:
    void Note(const sys::Status& status);

    std::string m_RecoveryFolder;
    std::vector<std::string> m_Troubles;
};
