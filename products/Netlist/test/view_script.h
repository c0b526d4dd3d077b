/// Scripts of keys for a view, and its state as one text.
#pragma once

#include <map>
#include <sstream>
#include <vector>

#include "host_design.h"
#include "view_fixture.h"

class ScriptTest : public ViewTest {
protected:
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

    /// Plays words between blanks: 'text' is typed ('_' for a blank, '~' for a tab), "undo" and
    /// "redo" replay, a number is a command, everything else a key: "S-C-A-Name*3" with modifiers
    /// and a count.
    void Play(const std::string& script) {
        std::istringstream words(script);
        for (std::string word; words >> word;)
            PlayWord(word);
    }

    /// The expanded text with '|' at the caret, '[' ('{' for a block) at the anchor of a selection,
    /// tabs as ">---".
    std::string State() {
        IEditorInspector& look = *Editor().m_Inspector;
        const TextPosition caret = look.GetCaret()->m_Caret;
        const SelectionState selection = *look.GetSelection();
        std::string all;
        for (int row = 0; row < look.GetLineCount(); ++row) {
            std::string line(look.GetLineText(row));
            std::vector<TabSpan> tabs;
            look.GetLineTabs(row, tabs);
            for (const TabSpan& tab : tabs)
                line.replace(static_cast<std::size_t>(tab.m_Position),
                             static_cast<std::size_t>(tab.m_Width), ">---",
                             static_cast<std::size_t>(tab.m_Width));
            if (row == caret.m_Row)
                line.insert(static_cast<std::size_t>(caret.m_Column), "|");
            const TextPosition anchor = selection.m_Anchor;
            if (selection.m_Selected && row == anchor.m_Row) {
                const bool behind = row == caret.m_Row && anchor.m_Column > caret.m_Column;
                line.insert(static_cast<std::size_t>(anchor.m_Column + behind),
                            selection.m_Block ? "{" : "[");
            }
            all += (row ? "\n" : "") + line;
        }
        return all;
    }

    /// The records, oldest first: type, row, column, "-end column" of a range, '*' for the first of
    /// an action, the character's number and the text.
    static std::string Dump(const std::vector<JournalEntry>& records) {
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
    std::string Journal() {
        std::vector<JournalEntry> records;
        Editor().m_Inspector->GetUndoRecords(records);
        return Dump(records);
    }
    std::string RedoJournal() {
        std::vector<JournalEntry> records;
        Editor().m_Inspector->GetRedoRecords(records);
        return Dump(records);
    }
    std::string Bytes() {
        std::string bytes;
        Editor().m_Inspector->GetArchive(bytes);
        return bytes;
    }
    void SetOption(const char16_t* key, int value) {
        m_Desktop.SetIntegerOption(0, u"Options", key, value);
    }

private:
    void PlayWord(const std::string& word) {
        if (word.front() == '\'') {
            for (const char c : word.substr(1, word.size() - 2))
                Type(std::u16string(1, c == '_'   ? u' '
                                       : c == '~' ? u'\t'
                                                  : static_cast<unsigned char>(c)));
        } else if (word == "undo") {
            Editor().m_Driver->UndoEdit();
        } else if (word == "redo") {
            Editor().m_Driver->RedoEdit();
        } else if (std::isdigit(static_cast<unsigned char>(word.front()))) {
            Editor().m_Driver->RunCommand(static_cast<unsigned>(std::stoi(word)));
        } else {
            PlayKey(word);
        }
    }

    void PlayKey(std::string word) {
        static const std::map<std::string, unsigned> kKeys = {
            {"Left", kKeyLeft},    {"Right", kKeyRight},   {"Up", kKeyUp},      {"Down", kKeyDown},
            {"PgUp", kKeyPageUp},  {"PgDn", kKeyPageDown}, {"Home", kKeyHome},  {"End", kKeyEnd},
            {"Enter", kKeyReturn}, {"Back", kKeyBack},     {"Del", kKeyDelete}, {"Ins", kKeyInsert},
            {"Esc", kKeyEscape},   {"F2", kKeyF2},         {"Space", ' '}};
        unsigned modifiers = 0;
        for (; word.size() > 2 && word[1] == '-'; word.erase(0, 2))
            modifiers |= word[0] == 'S' ? kModShift : word[0] == 'C' ? kModControl : kModAlt;
        const std::size_t star = word.find('*');
        const int count = star == std::string::npos ? 1 : std::stoi(word.substr(star + 1));
        word = word.substr(0, star);
        const unsigned key = word.size() == 1 ? static_cast<unsigned>(word[0]) : kKeys.at(word);
        for (int i = 0; i < count; ++i)
            View().PressKey(key, modifiers);
    }
};
