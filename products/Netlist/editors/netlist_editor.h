/// CNetlistEditor: an editor of a netlist that belongs to a design.
#pragma once

#include "editor_of.h"

/// The base of what the factory makes for netlists.
class CNetlistEditor : public EditorOf<INetlistEditor> {
public:
    /// @param design not owned; null when the netlist belongs to none
    CNetlistEditor(IDesign* design, CNetlistFactory& factory);
    ~CNetlistEditor() override;

    /// Runs it by the design; without one it is destroyed.
    void RunEditCommand(IQuorelCommand* command) override;
    /// That of the design's project.
    ICommandContext* GetCommandContext() override;
    /// By default "INSTANCE - Netlist" while the active view has an instance, else
    /// "PROJECT - DESIGN - Netlist".
    void UpdateTitle(const AString& title, bool isExplicit) override;

    /// The design's name.
    void GetObjectName(AString& name) override;
    void GetBlockName(AString& name) override;

protected:
    unsigned ExportMenu() const override { return kMenuExport; }

    IDesign* const m_Design;
};
