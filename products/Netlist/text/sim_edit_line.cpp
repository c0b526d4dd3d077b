#include "sim_edit_line.h"

#include "line_pool.h"
#include "line_scan.h"
#include "syntax_dscr.h"

#include <algorithm>
#include <utility>

namespace {

std::uint32_t At(std::int32_t column) {
    return static_cast<std::uint32_t>(column);
}

bool BeginsBehind(std::int32_t column, const TabEntry& tab) {
    return column < tab.Position;
}

} // namespace

CSimEditLine::CSimEditLine(std::string_view text) {
    ExpandTabs(text);
}

CSimEditLine::CSimEditLine(LineText&& text, const TabTable& tabs) : m_text(std::move(text)) {
    if (!tabs.empty())
        MutableTabs() = tabs;
}

CSimEditLine::CSimEditLine(const JournalFields& record, std::string_view text) {
    SetRecord(record);
    ExpandTabs(text);
}

CSimEditLine::CSimEditLine(const CSimEditLine& other)
    : CObject(other), m_text(other.m_text), m_rangeIn(other.m_rangeIn),
      m_rangeOut(other.m_rangeOut) {
    if (!other.Tabs().empty())
        MutableTabs() = other.Tabs();
    if (other.m_extra && other.m_extra->record)
        SetRecord(*other.m_extra->record);
}

void* CSimEditLine::operator new(std::size_t size) {
    return size == sizeof(CSimEditLine) ? LinePool<sizeof(CSimEditLine)>::Take()
                                        : ::operator new(size);
}

void CSimEditLine::operator delete(void* memory, std::size_t size) {
    if (size == sizeof(CSimEditLine))
        LinePool<sizeof(CSimEditLine)>::GiveBack(memory);
    else
        ::operator delete(memory);
}

const TabTable& CSimEditLine::Tabs() const {
    static const TabTable none;
    return m_extra ? m_extra->tabs : none;
}

TabTable& CSimEditLine::MutableTabs() {
    if (!m_extra)
        m_extra = std::make_unique<Extra>();
    return m_extra->tabs;
}

void CSimEditLine::SetBookmark(std::int32_t bookmark) {
    if (bookmark == Bookmark())
        return;
    MutableTabs(); // makes m_extra
    m_extra->bookmark = bookmark;
}

const JournalFields& CSimEditLine::Record() const {
    static const JournalFields none;
    return m_extra && m_extra->record ? *m_extra->record : none;
}

void CSimEditLine::SetRecord(const JournalFields& record) {
    MutableTabs(); // makes m_extra
    m_extra->record = std::make_unique<JournalFields>(record);
}

void CSimEditLine::AddTab(std::int32_t position, std::int32_t width) {
    TabTable& tabs = MutableTabs();
    const auto behind = std::upper_bound(tabs.begin(), tabs.end(), position, BeginsBehind);
    tabs.insert(behind, {position, width});
}

/// Makes text, with its tabs as blanks and entries, that of an empty line.
void CSimEditLine::ExpandTabs(std::string_view text) {
    const char* const end = text.data() + text.size();
    if (FindControl(text.data(), end) == end)
        m_text.Assign(text);
    else
        InsertString(0, text);
}

void CSimEditLine::ShiftTabs(std::int32_t from, std::int32_t delta) {
    if (Tabs().empty())
        return;
    TabTable& tabs = m_extra->tabs;
    auto tab = std::lower_bound(
        tabs.begin(), tabs.end(), from,
        [](const TabEntry& entry, std::int32_t column) { return entry.Position < column; });
    for (; tab != tabs.end() && delta != 0; ++tab) {
        const std::int32_t oldPosition = tab->Position;
        const std::int32_t oldWidth = tab->Width;
        tab->Position += delta;
        tab->Width = TabWidthAt(tab->Position);
        const std::int32_t found = delta >= 1 ? oldPosition : tab->Position;
        const std::int32_t growth = tab->Width - oldWidth;
        if (growth > 0)
            m_text.Insert(At(found), At(growth), ' ');
        else
            m_text.Erase(At(found), At(-growth));
        delta += growth;
    }
}

const TabEntry* CSimEditLine::TabAt(std::int32_t column) const {
    const TabTable& tabs = Tabs();
    const auto behind = std::upper_bound(tabs.begin(), tabs.end(), column, BeginsBehind);
    if (behind == tabs.begin())
        return nullptr;
    const TabEntry& tab = *std::prev(behind);
    return column < tab.Position + tab.Width ? &tab : nullptr;
}

/// Makes plain blanks of a tab that holds column and begins before it.
void CSimEditLine::DropTabAround(std::int32_t column) {
    const TabEntry* tab = TabAt(column);
    if (tab != nullptr && tab->Position < column)
        m_extra->tabs.erase(m_extra->tabs.begin() + (tab - m_extra->tabs.data()));
}

std::int32_t CSimEditLine::InsertChar(std::int32_t column, char character) {
    USE_ASSERT(!IsLineEnd(character));
    if (IsLineEnd(character))
        return 0;
    DropTabAround(column);
    const std::int32_t width = character == '\t' ? TabWidthAt(column) : 1;
    ShiftTabs(column, width);
    m_text.Insert(At(column), At(width), character == '\t' ? ' ' : character);
    if (character == '\t')
        AddTab(column, width);
    return width;
}

std::int32_t CSimEditLine::InsertString(std::int32_t column, std::string_view text) {
    text = BeforeLineEnd(text);
    if (text.empty())
        return 0;
    TabTable tabs;
    std::string expanded;
    if (text.find('\t') != std::string_view::npos) {
        expanded.resize(ExpandedRoom(text));
        expanded.resize(::ExpandTabs(text, column, expanded.data(), tabs));
        text = expanded;
    }
    DropTabAround(column);
    LineText::CheckSize(text.size());
    const auto width = static_cast<std::int32_t>(text.size());
    ShiftTabs(column, width);
    m_text.Insert(At(column), text);
    if (!tabs.empty()) {
        TabTable& all = MutableTabs();
        const auto behind = std::upper_bound(all.begin(), all.end(), column, BeginsBehind);
        all.insert(behind, tabs.begin(), tabs.end());
    }
    return width;
}

std::int32_t CSimEditLine::OverwriteChar(std::int32_t column, char character) {
    if (IsLineEnd(character))
        return InsertChar(column, character);
    DelChar(column);
    return InsertChar(column, character);
}

std::int32_t CSimEditLine::DelChar(std::int32_t column) {
    const TabEntry* tab = TabAt(column);
    const std::int32_t width = tab != nullptr && tab->Position == column ? tab->Width : 1;
    DelRange(column, column + width);
    return width;
}

void CSimEditLine::DelRange(std::int32_t column, std::int32_t end) {
    m_text.Erase(At(column), At(end - column));
    if (Tabs().empty() || end == column)
        return;
    std::erase_if(m_extra->tabs, [column, end](const TabEntry& tab) {
        return tab.Position < end && tab.Position + tab.Width > column;
    });
    ShiftTabs(end, column - end);
}

std::string CSimEditLine::GetText(std::int32_t from, std::int32_t to) const {
    std::string text;
    AppendText(text, from, to);
    return text;
}

void CSimEditLine::AppendText(std::string& target, std::int32_t from, std::int32_t to) const {
    const std::int32_t end = to == -1 || to >= Length() ? Length() : to + 1;
    const std::string_view text = m_text.View();
    const TabTable& tabs = Tabs();
    auto tab = std::lower_bound(
        tabs.begin(), tabs.end(), from,
        [](const TabEntry& entry, std::int32_t column) { return entry.Position < column; });
    for (; tab != tabs.end() && tab->Position < end; ++tab) {
        target.append(text.substr(At(from), At(tab->Position - from)));
        target += '\t';
        from = tab->Position + tab->Width;
    }
    if (from < end)
        target.append(text.substr(At(from), At(end - from)));
}

void CSimEditLine::Append(CSimEditLine& next) {
    next.ShiftTabs(0, Length());
    if (m_text.Empty())
        m_text.Swap(next.m_text); // a line that is long isn't copied for each line taken before it
    else
        m_text.Append(next.Text());
    if (!next.Tabs().empty()) {
        TabTable& tabs = MutableTabs();
        tabs.insert(tabs.end(), next.Tabs().begin(), next.Tabs().end());
    }
}

void CSimEditLine::ColourLine(const CSimEditLine* previous, const CSyntaxDscr* syntax) {
    ColourLine(previous != nullptr ? previous->RangeOut() : -1, syntax);
}

void CSimEditLine::ColourLine(std::int32_t carried, const CSyntaxDscr* syntax) {
    m_rangeIn = -1;
    m_rangeOut = -1;
    if (syntax == nullptr) {
        m_colors.Clear();
        return;
    }
    const LineColours result = syntax->Colour(Text(), carried);
    m_rangeIn = result.rangeIn;
    m_rangeOut = result.rangeOut;
    m_colors.Assign(result.spans);
}

std::string CSimEditLine::Check() const {
    std::int32_t behind = 0;
    for (const TabEntry& tab : Tabs()) {
        if (tab.Position < behind)
            return "tabs overlap or are out of order";
        behind = tab.Position + tab.Width;
        if (tab.Width < 1 || tab.Width > kTabStop || behind % kTabStop != 0)
            return "a tab doesn't end at a tab stop";
        if (behind > Length())
            return "a tab lies behind the text";
        if (Text().substr(At(tab.Position), At(tab.Width)).find_first_not_of(' ') !=
            std::string_view::npos)
            return "a tab's columns aren't blanks";
    }
    if (Text().find_first_of("\t\r\n") != std::string_view::npos)
        return "a tab, CR or LF is stored";
    return {};
}
