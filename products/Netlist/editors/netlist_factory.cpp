#include "netlist_factory.h"

#include <array>

#include "assertion.h"
#include "debug_line.h"
#include "desktop_access.h"
#include "doc_template.h"
#include "guarded.h"
#include "idesign_editor.h"
#include "idesktop.h"
#include "library_start.h"
#include "module_state.h"
#include "netlist_app.h"
#include "netlist_design_editor.h"
#include "netlist_factory_cmd_target.h"
#include "netlist_mdi_child_wnd.h"
#include "resource_ids.h"
#include "script_editor.h"
#include "sim_edit_view.h"
#include "tool_bar_table.h"
#include "tool_bars_data.h"

namespace {

constexpr std::array kAnsweredIds{kUnknownId, kNetlistFactoryId, kFactoryId, kEditorFactoryId};

bool sInitialized = false; // for the whole process

} // namespace

CNetlistFactory::CNetlistFactory()
    : m_CmdTarget(std::make_unique<CNetlistFactoryCmdTarget>(this)) {}

CNetlistFactory::~CNetlistFactory() {
    for (CBaseEditor* editor : m_Editors)
        editor->FactoryEnds();
    Guarded([this] { DropConfigCopy(); });
    ModuleState::Get().FactoryEnds();
}

ResultCode CNetlistFactory::QueryInterface(const InterfaceId& id, void** object) {
    if (!object)
        return kResultPointer;
    *object = nullptr;
    if (std::ranges::find(kAnsweredIds, id) == kAnsweredIds.end())
        return kResultNoInterface;
    *object = static_cast<INetlistFactory*>(this);
    AddRef();
    return kResultOk;
}

std::uint32_t CNetlistFactory::AddRef() {
    return ++m_References;
}

std::uint32_t CNetlistFactory::Release() {
    const std::uint32_t references = --m_References;
    if (references == 0)
        delete this;
    return references;
}

int CNetlistFactory::InitializeFactory(IDesktop* desktop) {
    constexpr int kInitialized = 1;
    USE_ASSERT(desktop);
    if (!desktop || std::exchange(sInitialized, true))
        return kInitialized;
    const bool isDone = Guarded(false, [&] {
        Initialize(*desktop);
        return true;
    });
    if (!isDone) {
        UndoInitialize();
        sInitialized = false; // another call may have more luck
    }
    return kInitialized;
}

void CNetlistFactory::Initialize(IDesktop& desktop) {
    m_Desktop = &desktop;
    AString key;
    desktop.GetRegistryKey(key);
    CNetlistApp::Get().SetRegistryKey(key);
    gDesktop = &desktop;
    InitUnitManager(desktop);
    InitValueManager(desktop);
    m_ConfigIsTempCopy = false;
    LoadOptions(desktop);
    CNetlistApp::Get().RebuildFont();
    CreateToolBars();
    m_NetlistTemplate = AddTemplate(kTemplateNetlist);
    m_ScriptTemplate = AddTemplate(kTemplateScript);
    m_Accelerators.LoadAccelerators(kAcceleratorsNetlist);
}

void CNetlistFactory::UndoInitialize() {
    m_Accelerators.Destroy();
    CNetlistApp::Get().CloseTemplates();
    m_ScriptTemplate = nullptr;
    m_NetlistTemplate = nullptr;
    m_ToolBars.reset();
    gDesktop = nullptr;
    m_Desktop = nullptr;
}

CDocTemplate* CNetlistFactory::AddTemplate(unsigned resourceId) {
    // Documents need a factory and more, so only CreateEditor and CreateScriptEditor make them.
    auto made = std::make_unique<CMultiDocTemplate>(
        resourceId, nullptr, []() -> CFrameWnd* { return new CNetlistMDIChildWnd; },
        []() -> CView* { return new CSimEditView; });
    CDocTemplate* const docTemplate = made.get();
    CNetlistApp::Get().AddDocTemplate(std::move(made));
    return docTemplate;
}

void CNetlistFactory::CreateToolBars() {
    if (!m_Desktop || m_ToolBars)
        return;
    m_ToolBars = std::make_unique<CToolBarsData>(*m_Desktop, u"Netlist");
    m_ToolBars->AddBuiltInToolBar(kToolBarName, kToolBarTable);
    m_ToolBars->AddToolBar(kToolBarName, kToolBarTable);
    m_ToolBars->AddControl(&m_FindCombo, kFindBoxCommand, kFindBoxStyle, kFindBoxWidth,
                           kFindBoxHeight);
}

void CNetlistFactory::UninitializeFactory() {
    Guarded([] { WriteDebugLine("NetlistFactory UninitializeFactory called\n"); });
    m_Accelerators.Destroy();
    Guarded([this] { DropConfigCopy(); });
    Guarded([this] { m_ToolBars.reset(); });
}

bool CNetlistFactory::GetFactoryMenus(int kind, std::vector<CMenu*>& menus,
                                      std::vector<CCmdTarget*>& targets) {
    return Guarded(false, [&] { return INetlistFactory::GetFactoryMenus(kind, menus, targets); });
}

bool CNetlistFactory::GetFactoryMenu(int kind, CMenu*& menu, std::vector<CCmdTarget*>& targets) {
    if (kind != IViewDoc::kOptionsMenu)
        return false;
    return Guarded(false, [&] {
        if (!m_OptionsMenu.IsLoaded() && !m_OptionsMenu.LoadMenu(kMenuOptions))
            return false;
        targets.push_back(m_CmdTarget.get());
        menu = &m_OptionsMenu;
        return true;
    });
}

void CNetlistFactory::GetEnvironmentName(AString& name) {
    Guarded([&] { name = u"NetlistEnvironment"; });
}

void CNetlistFactory::GetEditorsName(AString& name) {
    Guarded([&] { name = u"Netlist"; });
}

IEditor* CNetlistFactory::CreateEditor(IComponent* component) {
    return Guarded<IEditor*>(nullptr, [&] { return MakeEditor(component); });
}

IEditor* CNetlistFactory::MakeEditor(IComponent* component) {
    EnsureSyntaxConfig();
    auto made = std::make_unique<CNetlistDesignEditor>(component, *this);
    if (m_NetlistTemplate)
        m_NetlistTemplate->AddDocument(made.get());
    made->UseSyntax(kNetlistSyntax);
    return static_cast<IEditor*>(made.release()->GetInterface(IViewDoc::kEditorInterface));
}

void CNetlistFactory::CreateDesignEditor(IComponent* component, IDesignEditor*& editor) {
    IEditor* const made = CreateEditor(component);
    void* const side = made ? made->GetInterface(IViewDoc::kDesignEditorInterface) : nullptr;
    editor = static_cast<IDesignEditor*>(side);
    USE_ASSERT_TEXT(editor, "ide");
}

IEditor* CNetlistFactory::CreateScriptEditor(ICommandContext* owner, const AString& text,
                                             const AString& language, const AString& name) {
    return Guarded<IEditor*>(nullptr,
                             [&] { return MakeScriptEditor(owner, text, language, name); });
}

IEditor* CNetlistFactory::MakeScriptEditor(ICommandContext* owner, const AString& text,
                                           const AString& language, const AString& name) {
    EnsureSyntaxConfig();
    auto made = std::make_unique<CScriptEditor>(owner, *this);
    made->SetText(text);
    made->SetScriptName(name);
    static_cast<IScriptEditor&>(*made).SetLanguage(language);
    if (m_ScriptTemplate)
        m_ScriptTemplate->AddDocument(made.get());
    return static_cast<IEditor*>(made.release()->GetInterface(IViewDoc::kEditorInterface));
}
