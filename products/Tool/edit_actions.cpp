#include "edit_actions.h"

#include "action_words.h"
#include "combo_box.h"
#include "edit_script.h"
#include "edit_stage.h"
#include "progress.h"

namespace {

using Arguments = ActionArguments;

TextPosition Place(const Arguments& arguments, std::size_t first = 0) {
    return {arguments.m_Numbers[first], arguments.m_Numbers[first + 1]};
}

void Type(EditStage& stage, const Arguments& arguments) {
    stage.Type(arguments.m_Texts[0]);
}

void Key(EditStage& stage, const Arguments& arguments) {
    for (int i = 0; i < arguments.m_Count; ++i)
        stage.PressKey(arguments.m_Key, arguments.m_Modifiers);
}

void Command(EditStage& stage, const Arguments& arguments) {
    stage.RunCommand(static_cast<unsigned>(arguments.m_Numbers[0]));
}

void Caret(EditStage& stage, const Arguments& arguments) {
    stage.GetSession().GetDriver().SetCaret(Place(arguments));
    stage.Settle();
}

void Drag(EditStage& stage, const Arguments& arguments) {
    stage.Drag(Place(arguments), Place(arguments, 2), arguments.m_Alt);
}

void DoubleClick(EditStage& stage, const Arguments& arguments) {
    stage.DoubleClick(Place(arguments));
}

void Wheel(EditStage& stage, const Arguments& arguments) {
    stage.TurnWheel(arguments.m_Numbers[0]);
}

void Scroll(EditStage& stage, const Arguments& arguments) {
    stage.Scroll(arguments.m_Code);
}

void Clipboard(EditStage& stage, const Arguments& arguments) {
    stage.GetDesk().m_Clipboard = arguments.m_Texts[0];
}

/// Steps back, or forth, until there is nothing left.
template <int (IEditorDriver::*Step)(int)>
void Replay(EditStage& stage, const Arguments& arguments) {
    (stage.GetSession().GetDriver().*Step)(arguments.m_Count);
    stage.Settle();
}

/// Steps through the editor's commands, until there is none left.
template <void (IDesktop::*Step)(Undo_Manager*), QuorelCommand* (Undo_Manager::*Next)() const>
void StepCommands(EditStage& stage, const Arguments& arguments) {
    EditorSession& session = stage.GetSession();
    Undo_Manager& commands = session.GetCommands();
    for (int i = 0; i < arguments.m_Count && (commands.*Next)(); ++i)
        (session.GetDesktop().*Step)(&commands);
    stage.Settle();
}

void FindBox(EditStage& stage, const Arguments& arguments) {
    stage.GetSession().GetFindBox().SetWindowText(arguments.m_Texts[0]);
}

template <unsigned DialogCommand, unsigned Button>
void Search(EditStage& stage, const Arguments& arguments) {
    const std::vector<AString>& texts = arguments.m_Texts;
    stage.Search({.m_Command = DialogCommand,
                  .m_Button = Button,
                  .m_Text = texts[0],
                  .m_Replacement = texts.size() > 1 ? texts[1] : AString(),
                  .m_MatchCase = arguments.m_MatchCase,
                  .m_Up = arguments.m_Up});
}

void GoTo(EditStage& stage, const Arguments& arguments) {
    stage.GoToLine(arguments.m_Texts[0]);
}

void Language(EditStage& stage, const Arguments& arguments) {
    if (!stage.GetSession().GetDriver().SetLanguage(arguments.m_Texts[0]))
        throw ToolError(ExitCode::no, "a netlist has no language");
    stage.Settle();
}

void State(EditStage& stage, const Arguments&) {
    if (stage.m_OnState)
        stage.m_OnState();
}

/// The module's numbers of the dialogs' commands and buttons.
enum Number : unsigned {
    kCommandFind = 57636,
    kCommandReplace = 57641,
    kButtonFindNext = 1,
    kButtonReplace = 9010,
    kButtonReplaceAll = 9011,
};

constexpr auto kUndo = &StepCommands<&IDesktop::UndoCommand, &Undo_Manager::GetUndoCommand>;
constexpr auto kRedo = &StepCommands<&IDesktop::RedoCommand, &Undo_Manager::GetRedoCommand>;
constexpr auto kUndoEdit = &Replay<&IEditorDriver::UndoEdit>;
constexpr auto kRedoEdit = &Replay<&IEditorDriver::RedoEdit>;

constexpr EditAction kActions[] = {
    {"type TEXT", &Type},
    {"key KEY [COUNT]", &Key},
    {"command ID", &Command},
    {"caret ROW COLUMN", &Caret},
    {"drag ROW COLUMN ROW COLUMN [alt]", &Drag},
    {"double-click ROW COLUMN", &DoubleClick},
    {"wheel DELTA", &Wheel},
    {"scroll line-up|line-down|page-up|page-down", &Scroll},
    {"clipboard TEXT", &Clipboard},
    {"undo [COUNT]", kUndo},
    {"redo [COUNT]", kRedo},
    {"undo-edit [COUNT]", kUndoEdit},
    {"redo-edit [COUNT]", kRedoEdit},
    {"find-box TEXT", &FindBox},
    {"find TEXT [--case] [--up]", &Search<kCommandFind, kButtonFindNext>},
    {"replace TEXT WITH [--case] [--up]", &Search<kCommandReplace, kButtonReplace>},
    {"replace-all TEXT WITH [--case] [--up]", &Search<kCommandReplace, kButtonReplaceAll>},
    {"go-to LINE", &GoTo},
    {"language NAME", &Language},
    {"state", &State},
};

const EditAction& FindAction(const std::string& name) {
    for (const EditAction& action : kActions)
        if (action.m_Usage.substr(0, action.m_Usage.find(' ')) == name)
            return action;
    throw ToolError(ExitCode::no, "'" + name + "' is no action");
}

/// Does a step's work; what fails says the step's line.
template <class Work>
void AtLine(int line, Work work) {
    try {
        work();
    } catch (const ToolError& error) {
        throw ToolError(error.GetCode(), "line " + std::to_string(line) + ": " + error.what());
    }
}

} // namespace

std::vector<ScriptStep> ReadScript(std::span<const std::string_view> lines,
                                   std::span<const Accelerator> keys) {
    std::vector<ScriptStep> steps;
    for (int line = 1; const std::string_view text : lines) {
        AtLine(line, [&] {
            const std::vector<std::string> words = SplitWords(text);
            if (words.empty())
                return;
            const EditAction& action = FindAction(words.front());
            steps.push_back({line, &action, ReadArguments(action.m_Usage, words, keys)});
        });
        ++line;
    }
    return steps;
}

void RunScript(std::span<const ScriptStep> steps, EditStage& stage) {
    for (std::size_t i = 0; i < steps.size(); ++i) {
        Progress::Set(i, steps.size());
        AtLine(steps[i].m_Line, [&] { steps[i].m_Action->m_Run(stage, steps[i].m_Arguments); });
    }
}
