/// CSimEditLine: one line of a document, and one record of its journal.
#pragma once

#include "color_spans.h"
#include "expand_tabs.h"
#include "line_text.h"
#include "object.h"
#include "quorel_export.h"
#include "tab_table.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class CSyntaxDscr;

/// What a line carries only while it is a journal record.
struct JournalFields {
    std::int32_t Type = 0;
    std::int32_t Column = 0;
    std::int32_t Row = 0;
    std::int32_t EndColumn = 0;
    std::int32_t EndRow = 0;
    std::int32_t First = 0; ///< 1 on the oldest record of a user action
    unsigned char Char = 0; ///< 13 stands for a line break, 0 for none
};

/// A line whose text is stored with its tabs expanded to blanks, beside a table of where the tabs
/// stand. All columns are indices of that expanded text; a column lies inside the text or directly
/// behind it. A deleted line becomes a journal record unchanged, so records are lines too.
///
/// A line holds no CR or LF: one in a given text is an assertion, and the text counts up to it.
/// Texts given aren't the line's own. More columns than LineText::kMostSize throw std::length_error
/// and leave the line of no use; HasRoomFor tells before.
///
/// A plain line is 48 bytes. Tabs, bookmark and record are kept apart, for the few that have them.
class QUOREL_API CSimEditLine : public CObject {
public:
    /// A plain line; the text's tab characters are expanded.
    explicit CSimEditLine(std::string_view text = {});
    /// A plain line of expanded text, which may be borrowed, and its tabs.
    CSimEditLine(LineText&& text, const TabTable& tabs);
    /// A journal record; the text's tab characters are expanded.
    CSimEditLine(const JournalFields& record, std::string_view text);
    /// Text, tabs, ranges and journal fields of another line; no bookmark and no colours.
    CSimEditLine(const CSimEditLine& other);
    CSimEditLine& operator=(const CSimEditLine&) = delete;
    ~CSimEditLine() override = default;

    static void* operator new(std::size_t size);
    static void operator delete(void* memory, std::size_t size);

    std::string_view Text() const { return m_text.View(); }
    std::int32_t Length() const { return static_cast<std::int32_t>(m_text.Size()); }
    /// Whether text can be inserted into a line of so many columns.
    static bool HasRoomFor(std::string_view text, std::size_t columns) {
        constexpr std::size_t kMost = LineText::kMostSize - 2 * kTabStop; // tabs behind may grow
        if (columns + text.size() > kMost)
            return false;
        return columns + text.size() * kTabStop <= kMost || columns + ExpandedRoom(text) <= kMost;
    }
    const TabTable& Tabs() const;
    std::int32_t Bookmark() const { return m_extra ? m_extra->bookmark : 0; }
    void SetBookmark(std::int32_t bookmark);
    const ColorSpans& Colors() const { return m_colors; }
    /// Index of the syntax range open when the line begins, -1 if none.
    std::int32_t RangeIn() const { return std::max(m_rangeIn, -1); }
    /// Index of the syntax range still open at the line's end, -1 if none.
    std::int32_t RangeOut() const { return m_rangeOut; }
    /// The journal fields; all zero in a line that isn't a record.
    const JournalFields& Record() const;
    void SetRecord(const JournalFields& record);

    /// Puts a tab into the table, before the first with a greater position.
    void AddTab(std::int32_t position, std::int32_t width);
    /// Re-fits the tabs at or behind from to a text behind them that moves by delta columns, up to
    /// the first tab that absorbs the shift. With delta above 0 the text hasn't moved yet, else it
    /// has.
    void ShiftTabs(std::int32_t from, std::int32_t delta);
    /// Inserts a character or, for a tab, the blanks up to the next tab stop. Inserting inside the
    /// columns of a tab makes plain blanks of that tab. @return the columns inserted
    std::int32_t InsertChar(std::int32_t column, char character);
    /// Has the result of inserting one character after the other. @return the columns inserted
    std::int32_t InsertString(std::int32_t column, std::string_view text);
    /// DelChar, then InsertChar. @return the columns inserted
    std::int32_t OverwriteChar(std::int32_t column, char character);
    /// Deletes the whole tab that starts at column, else one column. @return the columns deleted
    std::int32_t DelChar(std::int32_t column);
    /// Deletes the columns from column up to but not including end. A tab that is cut is dropped:
    /// what is left of its columns are plain blanks.
    void DelRange(std::int32_t column, std::int32_t end);
    /// The columns from and to inclusive, to -1 meaning the last, with the tabs restored. A tab
    /// whose first column is inside comes out whole; from inside a tab gives the rest as blanks.
    std::string GetText(std::int32_t from = 0, std::int32_t to = -1) const;
    /// The same, appended to target.
    void AppendText(std::string& target, std::int32_t from = 0, std::int32_t to = -1) const;
    /// Appends the line that follows this one in the text, which is changed and of no use then.
    void Append(CSimEditLine& next);
    /// The tab that holds column, null if none.
    const TabEntry* TabAt(std::int32_t column) const;

    /// Recomputes the colours and both ranges from the line before (null for the first) and the
    /// description (null for none).
    void ColourLine(const CSimEditLine* previous, const CSyntaxDscr* syntax);
    /// The same where the range open at the line's begin is known.
    void ColourLine(std::int32_t carried, const CSyntaxDscr* syntax);

    /// Whether the colours are still to be worked out, which is so at first. Colouring the line
    /// ends it; a line that isn't to be coloured keeps what it has.
    bool IsPending() const { return m_rangeIn == kPending; }
    void SetPending() { m_rangeIn = kPending; }
    void KeepColours() { m_rangeIn = RangeIn(); }

    /// Checks the rules of the tab table. @return empty, or the broken rule in words
    std::string Check() const;

private:
    struct Extra {
        TabTable tabs;
        std::int32_t bookmark = 0;
        std::unique_ptr<JournalFields> record;
    };
    static constexpr std::int32_t kPending = -2; ///< in the place of a range

    TabTable& MutableTabs();
    void DropTabAround(std::int32_t column);
    void ExpandTabs(std::string_view text);

    LineText m_text;
    ColorSpans m_colors;
    std::unique_ptr<Extra> m_extra;
    std::int32_t m_rangeIn = kPending;
    std::int32_t m_rangeOut = -1;
};
