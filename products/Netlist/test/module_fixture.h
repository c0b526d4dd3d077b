/// A module of its own for each test: loaded from a copy of its file, so that what it does once a
/// process happens anew.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "headless_desk.h"
#include "idesign_editor.h"
#include "ieditor.h"
#include "ieditor_driver.h"
#include "ieditor_inspector.h"
#include "ifactory.h"
#include "module_entries.h"
#include "module_loader.h"
#include "object.h"
#include "test_desktop.h"

namespace fs = std::filesystem;

class ModuleTest : public testing::Test {
protected:
    ModuleTest() {
        std::string form = testing::TempDir() + "netlist-test-XXXXXX";
        m_Folder = ::mkdtemp(form.data());
        for (const char* name : {"install", "syslib", "tmp", "data", "bin"})
            fs::create_directory(m_Folder / name);
        ::setenv("TMPDIR", (m_Folder / "tmp").c_str(), 1);
        ::setenv("XDG_DATA_HOME", (m_Folder / "data").c_str(), 1);
        m_Desktop.m_InstallDirectory = (m_Folder / "install").u16string();
        m_Desktop.m_SysLibDirectory = (m_Folder / "syslib").u16string();
        SetBackend(&m_Desk);
        m_ModulePath = m_Folder / "bin/Netlist.so";
        fs::copy_file(QUOREL_BIN_DIR "/Netlist.so", m_ModulePath);
        fs::create_symlink(QUOREL_BIN_DIR "/../lib", m_Folder / "lib"); // where it finds the others
        const sys::Status loaded = m_Module.Load(m_ModulePath);
        EXPECT_TRUE(loaded) << loaded.reason;
        EXPECT_TRUE(m_Module.Find(kGetFactoryInterfaceEntry, m_GetFactoryInterface));
    }
    ~ModuleTest() override {
        if (m_Factory) {
            m_Factory->UninitializeFactory();
            m_Factory->Release();
        }
        m_Module.Unload();
        SetBackend(nullptr);
        ::unsetenv("TMPDIR");
        ::unsetenv("XDG_DATA_HOME");
        fs::remove_all(m_Folder);
    }

    /// The factory, initialised at the first call.
    INetlistFactory& Factory() {
        if (!m_Factory) {
            m_Factory = static_cast<INetlistFactory*>(m_GetFactoryInterface(&kNetlistFactoryId));
            m_Factory->InitializeFactory(&m_Desktop);
        }
        return *m_Factory;
    }
    ResultCode CallEntry(const char* name) {
        std::remove_pointer_t<ModuleEntry>* entry = nullptr;
        EXPECT_TRUE(m_Module.Find(name, entry));
        return entry();
    }

    /// Writes a configuration of that many descriptions: each colours a comment from "/*" to "*/"
    /// with its own index.
    void WriteConfig(const std::string& directory, int descriptions) {
        std::string list = "[SyntaxColoring]\nNumberOfDscr=" + std::to_string(descriptions) + '\n';
        std::string sections;
        for (int i = 0; i < descriptions; ++i) {
            const std::string n = std::to_string(i);
            list += "Dscr" + n + "=D" + n + '\n';
            sections += "[D" + n + "]\nDscrFile=" + n + ".dsc\n";
            std::ofstream(m_Folder / directory / (n + ".dsc"))
                << "[Ranges]\nNumberOfRangeGroups=1\nRangeGroup0=C\n[C]\nColor=" << n
                << "\nNumberOfDscr=1\nOpen0=/\\*\nClose0=\\*/\n";
        }
        std::ofstream(m_Folder / directory / "NetlistEditor.cfg") << list << sections;
    }

    int FilesIn(const char* name) const {
        return static_cast<int>(std::distance(fs::directory_iterator(m_Folder / name), {}));
    }

    fs::path m_Folder;
    fs::path m_ModulePath;
    HeadlessDesk m_Desk;
    OptionStore m_Options;
    TestDesktop m_Desktop{m_Options};
    sys::ModuleLoader m_Module;
    std::remove_pointer_t<GetFactoryInterfaceEntry>* m_GetFactoryInterface = nullptr;
    INetlistFactory* m_Factory = nullptr;
};

/// An editor with what can be reached from it; it ends with this object.
struct OpenEditor {
    explicit OpenEditor(IEditor* made) : m_Editor(made) {
        auto* const document = static_cast<CObject*>(made->GetInterface(0));
        m_Inspector = dynamic_cast<IEditorInspector*>(document);
        m_Driver = dynamic_cast<IEditorDriver*>(document);
    }

    IEditor* operator->() const { return m_Editor.get(); }

    AString Text() const {
        AString text;
        m_Editor->GetText(text);
        return text;
    }
    std::vector<ColorSpan> Colors(int row) const {
        std::vector<ColorSpan> colors;
        m_Inspector->GetLineColors(row, colors);
        return colors;
    }
    AString Title() const {
        AString title;
        m_Inspector->GetTitle(title);
        return title;
    }

    std::unique_ptr<IEditor> m_Editor;
    IEditorInspector* m_Inspector;
    IEditorDriver* m_Driver;
};

inline std::string Contents(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
