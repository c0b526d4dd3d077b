/// Scripts of what a user does with a view, and the view's state as one text.
#pragma once

#include <map>
#include <span>
#include <sstream>
#include <tuple>
#include <vector>

#include "host_design.h"
#include "view_fixture.h"

class ScriptTest : public ViewTest {
protected:
    /// What a script makes of a text.
    struct Case {
        const char* m_Start;
        const char* m_Script;
        const char* m_End;
        const char* m_Shown = ""; ///< the texts shown to the user
    };
    void Check(std::span<const Case> cases, CSize cells = {80, 25}) {
        for (const Case& c : cases) {
            Start(c.m_Start, cells);
            m_Desk.m_Messages.clear();
            Play(c.m_Script);
            EXPECT_EQ(State(), c.m_End) << c.m_Start << ": " << c.m_Script;
            std::string shown;
            for (const auto& message : m_Desk.m_Messages)
                shown += (shown.empty() ? "" : "|") + message.m_Text.ToCString();
            EXPECT_EQ(shown, c.m_Shown) << c.m_Start << ": " << c.m_Script;
            ExpectTruePicture();
        }
    }

    /// Opens a text in which '|' marks the caret.
    void Start(std::string marked, CSize cells = {80, 25}) {
        const std::size_t at = marked.find('|');
        const std::size_t line = marked.rfind('\n', at) + 1;
        int column = 0;
        for (const char character : marked.substr(line, at - line))
            column += character == '\t' ? 4 - column % 4 : 1;
        const auto row = std::count(marked.begin(), marked.begin() + static_cast<long>(line), '\n');
        Open(marked.erase(at, 1), cells);
        Click({static_cast<int>(row), column});
    }

    /// Plays words between blanks: 'text' is typed, "undo" and "redo" replay, a number is a
    /// command, "clip:text" fills the clipboard, "goto:line" ends the dialog with OK. "find:text",
    /// "replace:text:with" and "all:text:with" press a button of a new dialog, with ":c" for case
    /// kept and ":u" for upward. Everything else is a key: "S-C-A-Name" with modifiers. "*3" behind
    /// a word does it that often. In texts '_' stands for a blank, '~' for a tab, '^' for LF, '`'
    /// for CR.
    void Play(const std::string& script) {
        std::istringstream words(script);
        for (std::string word; words >> word;)
            PlayWord(word);
    }

    /// The expanded text with '|' at the caret, '[' ('{' for a block) at the anchor of a selection,
    /// ']' at its end if the caret is elsewhere, tabs as ">---".
    std::string State() {
        IEditorInspector& look = *Editor().m_Inspector;
        const TextPosition caret = look.GetCaret()->m_Caret;
        const SelectionState selection = *look.GetSelection();
        std::vector<std::tuple<int, int, const char*>> marks{{caret.m_Row, caret.m_Column, "|"}};
        if (const auto& [row, column] = selection.m_Anchor; selection.m_Selected)
            marks.insert(marks.begin(), {row, column, selection.m_Block ? "{" : "["});
        if (const auto& [row, column] = selection.m_End;
            selection.m_Selected && selection.m_End != caret)
            marks.emplace_back(row, column, "]");
        std::ranges::stable_sort(
            marks, {}, [](const auto& mark) { return std::pair(get<0>(mark), get<1>(mark)); });
        std::string all;
        for (int row = 0; row < look.GetLineCount(); ++row) {
            std::string line(look.GetLineText(row));
            std::vector<TabSpan> tabs;
            look.GetLineTabs(row, tabs);
            for (const TabSpan& tab : tabs)
                line.replace(static_cast<std::size_t>(tab.m_Position),
                             static_cast<std::size_t>(tab.m_Width), ">---",
                             static_cast<std::size_t>(tab.m_Width));
            for (std::size_t i = marks.size(); i-- > 0;)
                if (get<0>(marks[i]) == row)
                    line.insert(static_cast<std::size_t>(get<1>(marks[i])), get<2>(marks[i]));
            all += (row ? "\n" : "") + line;
        }
        return all;
    }

    /// The records, oldest first: type, row, column, "-end column" of a range, '*' for the first of
    /// an action, the character's number and the text.
    std::string Journal() {
        std::vector<JournalEntry> records;
        Editor().m_Inspector->GetUndoRecords(records);
        std::ostringstream out;
        for (const JournalEntry& r : records) {
            out << (out.tellp() > 0 ? " / " : "") << r.m_Type << ' ' << r.m_Row << ','
                << r.m_Column;
            if (r.m_EndRow != -1)
                out << '-' << r.m_EndColumn;
            out << (r.m_First ? "* " : " ") << int{r.m_Char} << ' ' << r.m_String;
        }
        return out.str();
    }
    void UndoAll() {
        while (Editor().m_Driver->UndoEdit()) {
        }
    }
    void RedoAll() {
        while (Editor().m_Driver->RedoEdit()) {
        }
    }
    std::string Bytes() {
        std::string bytes;
        Editor().m_Inspector->GetArchive(bytes);
        return bytes;
    }
    TextPosition CaretPlace() { return Editor().m_Inspector->GetCaret()->m_Caret; }
    void SetOption(const char16_t* key, int value) {
        m_Desktop.SetIntegerOption(0, u"Options", key, value);
    }

private:
    static AString Decoded(std::string text) {
        for (char& c : text)
            if (const std::size_t at = std::string_view("_~^`").find(c); at != std::string::npos)
                c = " \t\n\r"[at];
        return AString::FromMultiByte(AString::kAnsi, text);
    }

    void PlayWord(std::string word) {
        int count = 1;
        if (const std::size_t behind = word.find_last_not_of("0123456789");
            behind < word.size() - 1 && word[behind] == '*') {
            count = std::stoi(word.substr(behind + 1));
            word.resize(behind);
        }
        std::vector<std::string> parts{""};
        for (const char c : word)
            c == ':' ? void(parts.emplace_back()) : parts.back().push_back(c);
        if (parts[0] == "clip")
            m_Desk.m_Clipboard = Decoded(parts[1]);
        else if (parts[0] == "goto")
            PlayDialog(42002, [parts](HeadlessDialog& shown) {
                shown.Type(9001, Decoded(parts[1]));
                shown.Click(kIdOk);
            });
        else if (parts.size() > 1)
            PlaySearch(parts, count);
        else
            for (; count > 0; --count)
                PlaySimple(word);
    }

    void PlayDialog(unsigned command, std::function<void(HeadlessDialog&)> script) {
        m_Desk.m_DialogScripts.push_back(std::move(script));
        Editor().m_Driver->RunCommand(command);
        EXPECT_TRUE(m_Desk.m_DialogScripts.empty());
    }

    void PlaySearch(const std::vector<std::string>& parts, int count) {
        const bool replaces = parts[0] != "find";
        const unsigned button = parts[0] == "all" ? 9011 : replaces ? 9010 : kIdOk;
        const std::string flags = parts.size() > (replaces ? 3 : 2) ? parts.back() : "";
        PlayDialog(replaces ? 57641 : 57636, [&](HeadlessDialog& shown) {
            shown.Type(9007, Decoded(parts[1]));
            if (replaces)
                shown.Type(9008, Decoded(parts[2]));
            if (flags == "c")
                shown.Click(9004);
            EXPECT_TRUE(shown.IsChecked(9006) && !shown.IsChecked(9005)); // down
            if (flags == "u")
                shown.Click(9005);
            for (int i = 0; i < count; ++i)
                shown.Click(button);
            EXPECT_FALSE(shown.GetResult().has_value()); // only Cancel ends it
        });
    }

    void PlaySimple(const std::string& word) {
        if (word.front() == '\'')
            Type(Decoded(word.substr(1, word.size() - 2)));
        else if (word == "undo")
            Editor().m_Driver->UndoEdit();
        else if (word == "redo")
            Editor().m_Driver->RedoEdit();
        else if (std::isdigit(static_cast<unsigned char>(word.front())))
            Editor().m_Driver->RunCommand(static_cast<unsigned>(std::stoi(word)));
        else
            PlayKey(word);
    }

    void PlayKey(std::string word) {
        static const std::map<std::string, unsigned> kKeys = {
            {"Left", kKeyLeft},    {"Right", kKeyRight},   {"Up", kKeyUp},      {"Down", kKeyDown},
            {"PgUp", kKeyPageUp},  {"PgDn", kKeyPageDown}, {"Home", kKeyHome},  {"End", kKeyEnd},
            {"Enter", kKeyReturn}, {"Back", kKeyBack},     {"Del", kKeyDelete}, {"Ins", kKeyInsert},
            {"Esc", kKeyEscape},   {"F2", kKeyF2},         {"F3", kKeyF3}};
        unsigned modifiers = 0;
        for (; word.size() > 2 && word[1] == '-'; word.erase(0, 2))
            modifiers |= word[0] == 'S' ? kModShift : word[0] == 'C' ? kModControl : kModAlt;
        const unsigned key = word.size() == 1 ? static_cast<unsigned>(word[0]) : kKeys.at(word);
        View().PressKey(key, modifiers);
    }
};
