#include "edit_state.h"

#include "combo_box.h"

namespace {

/// Writes the members of the state, each with a comma behind it.
class StateWriter {
public:
    StateWriter(EditStage& stage, JsonWriter& json)
        : m_Desk(stage.GetDesk()), m_Session(stage.GetSession()),
          m_Inspector(m_Session.GetInspector()), m_Json(json) {}

    void WriteText();
    void WriteView();
    void WriteColors();
    void WriteJournal();
    void WriteSurroundings();

private:
    /// A list with an element for each line.
    template <class Element>
    void WriteLines(std::string_view name, Element element) {
        Name(name) << "[";
        for (int row = 0; row < m_Inspector.GetLineCount(); ++row) {
            m_Json.NextElement(row == 0);
            element(row);
        }
        m_Json << "],";
    }
    template <class Spans, class Append>
    void WriteSpans(const Spans& spans, Append append) {
        m_Json << "[";
        for (const auto& span : spans)
            append(span);
        m_Json << "]";
    }
    void WriteTabs(const std::vector<TabSpan>& tabs) {
        WriteSpans(tabs, [&](const TabSpan& tab) {
            m_Json.AppendIntegers({tab.m_Position, tab.m_Width});
        });
    }
    void WriteRecords(std::string_view name, const std::vector<JournalEntry>& records);
    void WriteRecord(const JournalEntry& record);

    JsonWriter& Name(std::string_view name) { return m_Json << "\"" << name << "\":"; }
    void Member(std::string_view name, const AString& text) {
        Name(name);
        m_Json.AppendString(std::u16string_view(text));
        m_Json << ",";
    }
    void Number(std::string_view name, std::int64_t number) {
        Name(name);
        m_Json.AppendInteger(number);
        m_Json << ",";
    }
    void Flag(std::string_view name, bool flag) { Name(name) << (flag ? "true," : "false,"); }
    void Place(std::string_view name, TextPosition place) {
        Name(name) << "[";
        m_Json.AppendInteger(place.m_Row);
        m_Json << ",";
        m_Json.AppendInteger(place.m_Column);
        m_Json << "],";
    }
    void Rows(std::string_view name, bool (IEditorInspector::*belongs)(int row));

    EditDesk& m_Desk;
    EditorSession& m_Session;
    IEditorInspector& m_Inspector;
    JsonWriter& m_Json;
};

void StateWriter::WriteText() {
    WriteLines("lines", [&](int row) { m_Json.AppendBytes(m_Inspector.GetLineText(row)); });
    std::vector<TabSpan> tabs;
    WriteLines("tabs", [&](int row) {
        m_Inspector.GetLineTabs(row, tabs);
        WriteTabs(tabs);
    });
    AString text;
    m_Session.GetEditor().GetText(text);
    Member("text", text);
    std::string bytes;
    m_Inspector.GetArchive(bytes);
    Name("saved");
    m_Json.AppendBytes(bytes);
    m_Json << ",";
}

void StateWriter::WriteView() {
    const CaretState caret = m_Inspector.GetCaret().value();
    Place("caret", caret.m_Caret);
    Number("wantedColumn", caret.m_WantedColumn);
    Flag("insertMode", caret.m_InsertMode);
    const SelectionState selection = m_Inspector.GetSelection().value();
    Flag("selected", selection.m_Selected);
    Flag("block", selection.m_Block);
    Place("anchor", selection.m_Anchor);
    Place("end", selection.m_End);
    const ScrollState scroll = m_Inspector.GetScroll().value();
    Number("topRow", scroll.m_TopRow);
    Number("maxLineLength", scroll.m_MaxLineLength);
    Number("linesPerPage", scroll.m_LinesPerPage);
    Flag("modified", m_Inspector.IsModified());
    Rows("bookmarks", &IEditorInspector::HasBookmark);
    Number("bookmarkCount", m_Inspector.GetBookmarkCount());
}

void StateWriter::Rows(std::string_view name, bool (IEditorInspector::*belongs)(int row)) {
    Name(name) << "[";
    bool isFirst = true;
    for (int row = 0; row < m_Inspector.GetLineCount(); ++row) {
        if (!(m_Inspector.*belongs)(row))
            continue;
        m_Json.NextElement(isFirst);
        m_Json.AppendInteger(row);
        isFirst = false;
    }
    m_Json << "],";
}

void StateWriter::WriteColors() {
    std::vector<ColorSpan> colors;
    WriteLines("colors", [&](int row) {
        m_Inspector.GetLineColors(row, colors);
        WriteSpans(colors, [&](const ColorSpan& span) {
            m_Json.AppendIntegers({span.m_Start, span.m_End, span.m_Color});
        });
    });
    WriteLines("rangeIn", [&](int row) { m_Json.AppendInteger(m_Inspector.GetLineRangeIn(row)); });
    WriteLines("rangeOut",
               [&](int row) { m_Json.AppendInteger(m_Inspector.GetLineRangeOut(row)); });
}

void StateWriter::WriteRecord(const JournalEntry& record) {
    m_Json << "{";
    Number("type", record.m_Type);
    Number("row", record.m_Row);
    Number("column", record.m_Column);
    Number("endColumn", record.m_EndColumn);
    Number("endRow", record.m_EndRow);
    Number("first", record.m_First);
    Number("char", record.m_Char);
    Name("string");
    m_Json.AppendBytes(record.m_String);
    m_Json << ",";
    Name("tabs");
    WriteTabs(record.m_Tabs);
    m_Json << "}";
}

void StateWriter::WriteRecords(std::string_view name, const std::vector<JournalEntry>& records) {
    Name(name) << "[";
    for (const JournalEntry& record : records) {
        m_Json.NextElement(&record == &records.front());
        WriteRecord(record);
    }
    m_Json << "],";
}

void StateWriter::WriteJournal() {
    std::vector<JournalEntry> records;
    m_Inspector.GetUndoRecords(records);
    WriteRecords("undo", records);
    m_Inspector.GetRedoRecords(records);
    WriteRecords("redo", records);
    const Undo_Manager& commands = m_Session.GetCommands();
    const std::int64_t done = commands.GetCommandIndex() + std::int64_t{1};
    Name("commands") << "{";
    Number("done", done);
    Name("undone");
    m_Json.AppendInteger(static_cast<std::int64_t>(commands.GetCommandCount()) - done);
    m_Json << "},";
}

void StateWriter::WriteSurroundings() {
    Member("clipboard", m_Desk.m_Clipboard.value_or(AString()));
    const CComboBox& box = m_Session.GetFindBox();
    Member("findBox", box.GetWindowText());
    Name("findHistory") << "[";
    for (int i = 0; i < box.GetCount(); ++i) {
        m_Json.NextElement(i == 0);
        m_Json.AppendString(std::u16string_view(box.GetItemText(i)));
    }
    m_Json << "],";
    Name("prompts") << "[";
    for (const auto& message : m_Desk.m_Messages) {
        m_Json.NextElement(&message == &m_Desk.m_Messages.front());
        m_Json << "{";
        Member("text", message.m_Text);
        Name("style");
        m_Json.AppendInteger(message.m_Style);
        m_Json << "}";
    }
    m_Json << "],";
    AString text;
    m_Inspector.GetTitle(text);
    Member("title", text);
    m_Inspector.GetLanguage(text);
    Name("language");
    m_Json.AppendString(std::u16string_view(text));
}

} // namespace

void WriteState(EditStage& stage, JsonWriter& json) {
    StateWriter state(stage, json);
    json << "{";
    state.WriteText();
    state.WriteView();
    state.WriteColors();
    state.WriteJournal();
    state.WriteSurroundings();
    json << "}";
}
