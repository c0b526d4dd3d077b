/// The host kit's desktop and an instance, with a record of what the module's tests look at.
#pragma once

#include <new>
#include <string>

#include "host_design.h"
#include "host_desktop.h"

/// A desktop whose directories may change.
class TestDesktop : public HostDesktop {
public:
    explicit TestDesktop(OptionStore& options) : HostDesktop({}, options) {}

    void GetInstallDirectory(AString& directory) override { directory = m_InstallDirectory; }
    void GetSysLibDirectory(AString& directory) override { directory = m_SysLibDirectory; }
    int GetIntegerOption(int reserved, const AString& section, const AString& key,
                         int defaultValue) override {
        if (m_IsOutOfMemory)
            throw std::bad_alloc();
        return HostDesktop::GetIntegerOption(reserved, section, key, defaultValue);
    }
    void GetRegistryKey(AString& key) override {
        HostDesktop::GetRegistryKey(key);
        ++m_RegistryKeyQueries; // once a start
    }

    AString m_InstallDirectory;
    AString m_SysLibDirectory;
    int m_RegistryKeyQueries = 0;
    bool m_IsOutOfMemory = false;
};

/// An instance that notes when editors become active (+) and stop being it (-).
class TestInstance : public HostInstance {
public:
    explicit TestInstance(AString name) : HostInstance(std::move(name), sKeys) {}

    std::string m_Notices;

    void EditorActivated(IEditor*) override { m_Notices += '+'; }
    void EditorDeactivated(IEditor*) override { m_Notices += '-'; }

private:
    static inline HostViewKeys sKeys;
};
