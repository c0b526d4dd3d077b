#include "module_host.h"

#include <cerrno>
#include <type_traits>
#include <utility>

#include "backend.h"
#include "data_files.h"
#include "host_desktop.h"
#include "module_entries.h"
#include "object.h"

namespace {

/// Whether this process has initialised a factory.
bool sStarted = false;

HostedEditor Inspect(IEditor* editor) {
    HostedEditor hosted;
    hosted.m_Editor.reset(editor);
    if (!editor)
        return hosted;
    auto* const document = static_cast<CObject*>(editor->GetInterface(IEditor::kDocumentInterface));
    hosted.m_Inspector = dynamic_cast<IEditorInspector*>(document);
    hosted.m_Driver = dynamic_cast<IEditorDriver*>(document);
    return hosted;
}

} // namespace

ModuleHost::ModuleHost(HostDesktop& desktop, IBackendDesk* desk)
    : m_Desktop(desktop), m_Desk(desk) {}

sys::Status ModuleHost::Start(const std::string& path) {
    std::string file = path;
    if (file.empty())
        if (sys::Status status = FindModule(file); !status)
            return status;
    if (sStarted)
        return sys::Failure("start", file, EBUSY, "a process starts the module once");
    if (sys::Status status = LoadFactory(file); !status)
        return status;
    sStarted = true;
    SetBackend(m_Desk);
    m_Factory->InitializeFactory(&m_Desktop);
    return {};
}

sys::Status ModuleHost::LoadFactory(const std::string& path) {
    if (sys::Status status = m_Module.Load(path); !status)
        return status;
    std::remove_pointer_t<GetFactoryInterfaceEntry>* entry = nullptr;
    sys::Status status = m_Module.Find(kGetFactoryInterfaceEntry, entry);
    if (status) {
        m_Factory = static_cast<INetlistFactory*>(entry(&kNetlistFactoryId));
        if (!m_Factory)
            status = sys::Failure("start", path, ENOENT, "it gives no factory of netlist editors");
    }
    if (!status)
        m_Module.Unload();
    return status;
}

void ModuleHost::Stop() {
    if (!m_Factory)
        return;
    m_Desktop.ReleaseCommands(); // which may hold on to managers
    m_Desktop.GetToolBarHost()->LetGo();
    m_Factory->UninitializeFactory();
    std::exchange(m_Factory, nullptr)->Release();
    m_Desktop.ReleaseGlobalManagers();
    if (GetBackend() == m_Desk)
        SetBackend(nullptr);
    m_Module.Unload();
}

HostedEditor ModuleHost::CreateNetlistEditor(IComponent* component) {
    return Inspect(m_Factory ? m_Factory->CreateEditor(component) : nullptr);
}

HostedEditor ModuleHost::CreateScriptEditor(ICommandContext* owner, const AString& text,
                                            const AString& language, const AString& name) {
    return Inspect(m_Factory ? m_Factory->CreateScriptEditor(owner, text, language, name)
                             : nullptr);
}
