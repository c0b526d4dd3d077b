/// CNetlistFactory: the module's factory of netlist and script editors.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "accelerator.h"
#include "astring.h"
#include "combo_box.h"
#include "ifactory.h"
#include "ifactory_tools.h"
#include "menu.h"

class CBaseEditor;
class CDocTemplate;
class CNetlistFactoryCmdTarget;
class CSyntaxDscr;
class CToolBarsData;

/// Made by the module's entry, initialised once a process, destroyed with its last reference. No
/// operation throws: what runs out of memory gives null, or its fixed result.
///
/// The syntax configuration is read when the first editor is created, and again at each creation
/// while it gave no descriptions.
class CNetlistFactory final : public INetlistFactory, public IFactoryTools {
public:
    CNetlistFactory();
    CNetlistFactory(const CNetlistFactory&) = delete;
    CNetlistFactory& operator=(const CNetlistFactory&) = delete;
    /// Editors that live on are told that they have no factory any more.
    ~CNetlistFactory();

    // IUnknown
    ResultCode QueryInterface(const InterfaceId& id, void** object) override;
    std::uint32_t AddRef() override;
    std::uint32_t Release() override;

    // IFactory
    int InitializeFactory(IDesktop* desktop) override;
    void UninitializeFactory() override;
    bool GetFactoryMenus(int kind, std::vector<CMenu*>& menus,
                         std::vector<CCmdTarget*>& targets) override;
    bool GetFactoryMenu(int kind, CMenu*& menu, std::vector<CCmdTarget*>& targets) override;
    void GetEnvironmentName(AString& name) override;

    // IEditorFactory
    IEditor* CreateEditor(IComponent* component) override;
    void CreateDesignEditor(IComponent* component, IDesignEditor*& editor) override;
    void GetEditorsName(AString& name) override;

    // INetlistFactory
    IEditor* CreateScriptEditor(ICommandContext* owner, const AString& text,
                                const AString& language, const AString& name) override;

    // IFactoryTools
    CToolBarsData* GetToolBars() override { return m_ToolBars.get(); }
    std::span<const Accelerator> GetKeys() override { return m_Accelerators.GetKeys(); }
    int ZoomText(int steps) override;

    /// @name For the editors
    /// @{
    using SyntaxArray = std::vector<std::shared_ptr<const CSyntaxDscr>>;
    /// In the order of the configuration. Editors share a description, since their colours may be
    /// worked out after the factory's end.
    const SyntaxArray& GetSyntaxDscrs() const { return m_SyntaxDscrs; }
    /// Whose frames all editors use; null before InitializeFactory.
    CDocTemplate* GetNetlistTemplate() const { return m_NetlistTemplate; }
    const CAcceleratorTable& GetAccelerators() const { return m_Accelerators; }
    /// The find box of the module's toolbar.
    CComboBox& GetFindCombo() { return m_FindCombo; }
    void EditorBegins(CBaseEditor& editor) { m_Editors.push_back(&editor); }
    void EditorEnds(CBaseEditor& editor) { std::erase(m_Editors, &editor); }
    /// @}

    /// Whether anybody holds a reference.
    bool IsHeld() const { return m_References > 0; }

private:
    void Initialize(IDesktop& desktop);
    /// Takes back what Initialize has done before it failed.
    void UndoInitialize();
    static CDocTemplate* AddTemplate(unsigned resourceId);
    void CreateToolBars();

    void EnsureSyntaxConfig();
    void LocateSyntaxConfig();
    bool CopySyntaxConfig(const std::string& source);
    void ReadSyntaxConfig();
    void DropConfigCopy();

    IEditor* MakeEditor(IComponent* component);
    IEditor* MakeScriptEditor(ICommandContext* owner, const AString& text, const AString& language,
                              const AString& name);

    std::uint32_t m_References = 0;
    SyntaxArray m_SyntaxDscrs;
    IDesktop* m_Desktop = nullptr;             ///< not owned
    CDocTemplate* m_NetlistTemplate = nullptr; ///< the application object's
    CDocTemplate* m_ScriptTemplate = nullptr;  ///< the application object's
    CMenu m_OptionsMenu;
    std::unique_ptr<CNetlistFactoryCmdTarget> m_CmdTarget;
    CAcceleratorTable m_Accelerators;
    AString m_ConfigPath;            ///< what the reader opens: the copy, or the file itself
    AString m_ConfigSource;          ///< the configuration file as found
    bool m_ConfigIsTempCopy = false; ///< m_ConfigPath is a copy that is deleted at the end
    CComboBox m_FindCombo;
    std::unique_ptr<CToolBarsData> m_ToolBars; ///< with the find box, which it goes before
    std::vector<CBaseEditor*> m_Editors;       ///< those alive, not owned
};
