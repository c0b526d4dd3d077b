/// CNetlistApp: the module's application object.
#pragma once

#include <memory>

#include "backend.h"
#include "editor_options.h"
#include "win_app.h"

/// The single static instance owns the document templates and what the editor options give: the
/// text font. It adds no command handlers.
class CNetlistApp : public CWinApp {
public:
    CNetlistApp();

    /// The instance; it lives from the module's load to its unload.
    static CNetlistApp& Get();

    /// The options in force.
    const EditorOptions& GetOptions() const { return CurrentOptions(); }
    /// Destroys the text font and makes it anew from the options.
    void RebuildFont();
    /// The font of all views; null without a backend, which then chooses its own.
    const IBackendFont* GetTextFont() const { return m_TextFont.get(); }
    /// Another one for each text font.
    int GetFontNumber() const { return m_FontNumber; }

private:
    std::unique_ptr<IBackendFont> m_TextFont;
    int m_FontNumber = 0;
};
