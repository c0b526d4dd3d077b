/// EditStage: an editor and the hands of the user who works in it, for a script.
#pragma once

#include <functional>

#include "editor_session.h"
#include "headless_desk.h"

/// A desk where nobody answers: dialogs are cancelled unless an action works them, no printer is
/// there, and what is dragged is dropped nowhere.
class EditDesk : public HeadlessDesk {
public:
    /// @param cells columns and rows of the client area
    explicit EditDesk(CSize cells);
    ~EditDesk() override;

    void SetCursor(CursorShape) override {}
    DropEffect DragText(const AString& text) override;
    std::unique_ptr<IBackendPrinter> AskPrinter(PrintRequest&) override { return nullptr; }
    void ShowPreview(const PrintFunction&) override {}

    CPoint m_DropPoint; ///< where the pointer is when a drag has ended
};

/// How a search dialog is filled in, and which of its buttons is pressed.
struct SearchRequest {
    unsigned m_Command; ///< that opens the dialog
    unsigned m_Button;
    AString m_Text;
    AString m_Replacement;
    bool m_MatchCase;
    bool m_Up;
};

/// Does what the actions say. Everything posted or invalid is handled when an operation returns.
class EditStage {
public:
    /// @param session has an editor on that desk; both outlive the stage
    EditStage(EditorSession& session, EditDesk& desk);

    EditorSession& GetSession() { return m_Session; }
    EditDesk& GetDesk() { return m_Desk; }

    /// A character message for each character.
    void Type(const AString& text);
    void PressKey(unsigned key, unsigned modifiers);
    void RunCommand(unsigned id);
    /// Presses at a cell of the text, moves to another one and releases. @param alt is held
    void Drag(TextPosition from, TextPosition to, bool alt);
    void DoubleClick(TextPosition at);
    void TurnWheel(int delta);
    void Scroll(unsigned code);
    /// Opens a search dialog, presses the button once, and closes it.
    void Search(const SearchRequest& request);
    void GoToLine(const AString& line);
    /// Handles what an operation of the session has left.
    void Settle() { m_Desk.Pump(); }

    std::function<void()> m_OnState; ///< what the action `state` does; may be empty

private:
    CPoint PointOf(TextPosition at);
    void SendMouse(unsigned message, TextPosition at);
    void RunDialog(unsigned command, std::function<void(HeadlessDialog&)> work);

    EditorSession& m_Session;
    EditDesk& m_Desk;
    HeadlessWindow& m_Window; ///< the view's
};
