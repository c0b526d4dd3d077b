#include "editor_access.h"

#include <algorithm>

#include "archive.h"
#include "base_editor.h"
#include "file.h"
#include "job_progress.h"

namespace {

std::vector<TabSpan> SpansOf(const TabTable& tabs) {
    std::vector<TabSpan> spans;
    for (const TabEntry& tab : tabs)
        spans.push_back({tab.Position, tab.Width});
    return spans;
}

JournalEntry EntryOf(const CSimEditLine& line) {
    const JournalFields& record = line.Record();
    return {.m_Type = record.Type,
            .m_Row = record.Row,
            .m_Column = record.Column,
            .m_EndColumn = record.EndColumn,
            .m_EndRow = record.EndRow,
            .m_First = record.First,
            .m_Char = record.Char,
            .m_String = std::string(line.Text()),
            .m_Tabs = SpansOf(line.Tabs())};
}

void CopyRecords(const RecordList& list, std::vector<JournalEntry>& records) {
    records.clear();
    for (std::size_t i = 0; i < list.Size(); ++i)
        records.push_back(EntryOf(list[i]));
}

bool HasLineEnd(std::string_view text) {
    return text.find_first_of("\r\n") != std::string_view::npos;
}

/// The column behind a text inserted at column, tabs expanded.
int ColumnBehind(int column, std::string_view text) {
    for (const char character : text)
        column += character == '\t' ? TabWidthAt(column) : 1;
    return column;
}

/// A file of bytes in memory that shows how far it has been read into a document, and ends when the
/// user stops it.
class WatchedBytes : public CFile {
public:
    WatchedBytes(const CSimEditDoc& document, std::string_view bytes)
        : m_Document(document), m_Bytes(bytes) {}
    std::size_t Read(void* buffer, std::size_t size) override {
        m_Stopped = m_Stopped || !GoOn();
        const std::size_t read = m_Stopped ? 0 : std::min(size, m_Bytes.size() - m_Done);
        std::copy_n(m_Bytes.data() + m_Done, read, static_cast<char*>(buffer));
        m_Done += read;
        return read;
    }
    bool IsStopped() const { return m_Stopped; }

private:
    /// Whoever paints or reads the text meanwhile finds a line in it, as always.
    bool GoOn() {
        return m_Document.LineCount() == 0 ||
               m_Progress.GoOn(static_cast<std::int64_t>(m_Done),
                               static_cast<std::int64_t>(m_Bytes.size()));
    }

    CJobProgress m_Progress{u"Loading"};
    const CSimEditDoc& m_Document;
    std::string_view m_Bytes;
    std::size_t m_Done = 0;
    bool m_Stopped = false;
};

/// @return false: the user has stopped it, and the text is empty
bool LoadWatched(CSimEditDoc& document, std::string_view bytes) {
    WatchedBytes file(document, bytes);
    CArchive archive(file, CArchive::load);
    document.CSimEditDoc::LoadArchive(archive);
    if (file.IsStopped())
        document.CSimEditDoc::SetText({});
    return !file.IsStopped();
}

} // namespace

bool EditorAccess::HasRow(int row) const {
    return row >= 0 && row < m_Editor.LineCount();
}

bool EditorAccess::HasPlace(int row, int column) const {
    return HasRow(row) && column >= 0 && column <= m_Editor.Line(row).Length();
}

int EditorAccess::GetLineCount() {
    return m_Editor.LineCount();
}

std::string_view EditorAccess::GetLineText(int row) {
    return HasRow(row) ? m_Editor.Line(row).Text() : std::string_view();
}

void EditorAccess::GetLineTabs(int row, std::vector<TabSpan>& tabs) {
    tabs = HasRow(row) ? SpansOf(m_Editor.Line(row).Tabs()) : std::vector<TabSpan>();
}

void EditorAccess::GetLineColors(int row, std::vector<ColorSpan>& colors) {
    colors.clear();
    if (!HasRow(row))
        return;
    for (const CColorDscr& span : m_Editor.ColouredLine(row).Colors())
        colors.push_back({span.Start, span.End, span.Color});
}

int EditorAccess::GetLineRangeIn(int row) {
    return HasRow(row) ? m_Editor.ColouredLine(row).RangeIn() : -1;
}

int EditorAccess::GetLineRangeOut(int row) {
    return HasRow(row) ? m_Editor.ColouredLine(row).RangeOut() : -1;
}

bool EditorAccess::HasBookmark(int row) {
    return HasRow(row) && m_Editor.Line(row).Bookmark() != 0;
}

int EditorAccess::GetBookmarkCount() {
    return m_Editor.BookmarkCount();
}

bool EditorAccess::IsModified() {
    return m_Editor.CDocument::IsModified();
}

LineEnds EditorAccess::GetLineEnds() {
    return m_Editor.LoadedLineEnds();
}

void EditorAccess::GetArchive(std::string& bytes) {
    CArchive archive(&bytes);
    m_Editor.SaveArchive(archive);
    archive.Close();
}

void EditorAccess::GetTitle(AString& title) {
    title = m_Editor.CDocument::GetTitle();
}

void EditorAccess::GetLanguage(AString& language) {
    language.clear();
}

int EditorAccess::GetSyntaxIndex() {
    return m_Editor.SyntaxIndex();
}

int EditorAccess::GetUndoCount() {
    return static_cast<int>(m_Editor.UndoList().Size());
}

int EditorAccess::GetRedoCount() {
    return static_cast<int>(m_Editor.RedoList().Size());
}

void EditorAccess::GetUndoRecords(std::vector<JournalEntry>& records) {
    CopyRecords(m_Editor.UndoList(), records);
}

void EditorAccess::GetRedoRecords(std::vector<JournalEntry>& records) {
    CopyRecords(m_Editor.RedoList(), records);
}

bool EditorAccess::InsertLine(int row, bool record, bool first, std::string_view text) {
    if (row < 0 || row > m_Editor.LineCount() || HasLineEnd(text) ||
        !CSimEditLine::HasRoomFor(text, 0))
        return false;
    m_Editor.CSimEditDoc::InsertLine(row, record, first, text);
    return true;
}

bool EditorAccess::DeleteLine(int row, bool record, bool first) {
    if (!HasRow(row) || m_Editor.LineCount() == 1)
        return false;
    m_Editor.CSimEditDoc::DeleteLine(row, record, first);
    return true;
}

std::optional<int> EditorAccess::InsertChar(int row, int column, char character, bool record) {
    if (!HasPlace(row, column) || HasLineEnd({&character, 1}))
        return std::nullopt;
    int width = 0;
    m_Editor.CSimEditDoc::InsertChar(row, column, character, record, width);
    return width;
}

std::optional<int> EditorAccess::OverwriteChar(int row, int column, char character, bool record) {
    if (!HasPlace(row, column) || HasLineEnd({&character, 1}))
        return std::nullopt;
    int width = 0;
    m_Editor.CSimEditDoc::OverwriteChar(row, column, character, record, width);
    return width;
}

std::optional<int> EditorAccess::InsertString(int row, int column, std::string_view text,
                                              bool record, bool first) {
    if (!HasPlace(row, column) || HasLineEnd(text) ||
        !CSimEditLine::HasRoomFor(text, m_Editor.Line(row).Text().size()))
        return std::nullopt;
    const int end = ColumnBehind(column, text);
    // A copy: the text may be a line's own.
    m_Editor.CSimEditDoc::InsertString(row, column, end, std::string(text), record, first);
    return end;
}

bool EditorAccess::SplitLine(int row, int column, bool first, int indent, bool record) {
    if (!HasPlace(row, column) || indent > kMostIndent)
        return false;
    m_Editor.CSimEditDoc::SplitLine(row, column, first, indent, record);
    return true;
}

std::optional<int> EditorAccess::CatLine(int row, bool first, bool record) {
    if (!HasRow(row) || row + 1 == m_Editor.LineCount())
        return std::nullopt;
    return m_Editor.CSimEditDoc::CatLine(row, first, record);
}

std::optional<int> EditorAccess::DelChar(int row, int column, bool record) {
    if (!HasPlace(row, column) || column == m_Editor.Line(row).Length())
        return std::nullopt;
    int width = 0;
    m_Editor.CSimEditDoc::DelChar(row, column, record, width);
    return width;
}

bool EditorAccess::DelRange(int row, int column, int endColumn, bool first, bool record) {
    if (!HasPlace(row, column) || !HasPlace(row, endColumn) || endColumn < column)
        return false;
    m_Editor.CSimEditDoc::DelRange(row, column, endColumn, first, record);
    return true;
}

void EditorAccess::NotifyEdited(int firstRow) {
    m_Editor.SetModifiedFlag();
    m_Editor.UpdateAllViews(nullptr, firstRow);
}

void EditorAccess::SetModified(bool modified) {
    m_Editor.SetModifiedFlag(modified);
}

bool EditorAccess::LoadArchive(std::string_view bytes, bool mayStop) {
    NoteChange();
    bool isLoaded = true;
    if (mayStop) {
        isLoaded = LoadWatched(m_Editor, bytes);
    } else {
        CArchive archive(bytes);
        m_Editor.CSimEditDoc::LoadArchive(archive);
    }
    m_Editor.UpdateAllViews(nullptr);
    return isLoaded;
}

bool EditorAccess::SetLanguage(const AString& language) {
    auto* const script = dynamic_cast<IScriptEditor*>(&m_Editor);
    if (script)
        script->SetLanguage(language);
    return script != nullptr;
}
