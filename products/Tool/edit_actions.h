/// The actions of a script of `edit`.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "astring.h"
#include "resources.h"

class EditStage;

/// The words of an action, read.
struct ActionArguments {
    std::vector<AString> m_Texts;
    std::vector<int> m_Numbers; ///< rows and columns, and what else counts
    int m_Count = 1;
    unsigned m_Key = 0;
    unsigned m_Modifiers = 0; ///< KeyModifiers, joined
    unsigned m_Code = 0;      ///< a ScrollCode
    bool m_MatchCase = false;
    bool m_Up = false;
    bool m_Alt = false;
};

/// An action with its name and the words that it takes.
struct EditAction {
    /// The name, then the words; those in brackets may be missing, in any order behind the others.
    std::string_view m_Usage;
    void (*m_Run)(EditStage& stage, const ActionArguments& arguments);
};

/// A line of a script, read.
struct ScriptStep {
    int m_Line; ///< from 1 on
    const EditAction* m_Action;
    ActionArguments m_Arguments;
};

/// Reads a whole script. @param keys the accelerators, whose letters are keys too. The first action
/// that is unknown or malformed ends it by ExitCode::no, naming its line.
std::vector<ScriptStep> ReadScript(std::span<const std::string_view> lines,
                                   std::span<const Accelerator> keys);

/// Runs it. An action that can't be done ends it likewise.
void RunScript(std::span<const ScriptStep> steps, EditStage& stage);
