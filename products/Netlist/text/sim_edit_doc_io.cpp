/// Loading and storing of a CSimEditDoc: its bytes to lines, and its lines to bytes.
#include "archive.h"
#include "astring.h"
#include "atomic_file.h"
#include "code_page.h"
#include "editor_options.h"
#include "exceptions.h"
#include "file.h"
#include "file_dialog.h"
#include "file_helpers.h"
#include "file_path.h"
#include "ieditor_driver.h"
#include "line_splitter.h"
#include "sim_edit_doc.h"
#include "text_view.h"
#include "view.h"
#include "wait_cursor.h"
#include "wnd.h"

#include <algorithm>
#include <cerrno>
#include <stdexcept>

namespace {

constexpr std::string_view kStoredLineEnd = "\r\n";
constexpr std::string_view kTextLineEnd = "\n";

/// Bytes converted at a time.
constexpr std::size_t kPiece = 64 * 1024;

template <class Action>
void ForEachTextView(const CDocument& document, Action action) {
    for (CView* view : document.GetViews())
        if (auto* textView = dynamic_cast<ITextView*>(view))
            action(*textView);
}

} // namespace

/// One load: takes the old text away, gathers the new lines, and at its end leaves a document with
/// a line and without journal, also where an exception has cut it short.
class CSimEditDoc::Loader : private LineSplitter::Target {
public:
    /// @param width becomes the length of the longest line, where it is less
    Loader(CSimEditDoc& document, std::int32_t& width)
        : m_document(document), m_widthOut(width), m_splitter(document.m_blocks, *this) {
        m_document.m_lines.Clear();
        m_document.m_bookmarkCount = 0;
        std::swap(m_oldBlocks, m_document.m_blocks);
    }
    Loader(const Loader&) = delete;
    Loader& operator=(const Loader&) = delete;
    ~Loader() {
        m_widthOut = std::max(m_widthOut, m_width);
        LineStore& lines = m_document.m_lines;
        if (lines.Size() == 0)
            lines.Insert(0, std::move(m_spare)); // takes no memory: there is room for some rows
        m_document.m_lineEnds = m_splitter.MetLineEnds();
        m_document.ClearJournal(); // before m_oldBlocks goes, from which records may borrow
        m_document.m_front.Restart(m_document.m_colouring != 0, m_document.m_syntax);
    }

    void Add(std::string_view piece) { m_splitter.Add(piece); }
    void Finish() { m_splitter.Finish(); }

private:
    void AddLine(LineText&& text, const TabTable& tabs) override {
        m_width = std::max(m_width, static_cast<std::int32_t>(text.Size()));
        LineStore& lines = m_document.m_lines;
        lines.Insert(lines.Size(), std::make_unique<CSimEditLine>(std::move(text), tabs));
    }

    CSimEditDoc& m_document;
    std::int32_t& m_widthOut;
    std::unique_ptr<CSimEditLine> m_spare = std::make_unique<CSimEditLine>();
    TextBlocks m_oldBlocks;
    LineSplitter m_splitter;
    std::int32_t m_width = 0;
};

void CSimEditDoc::Serialize(CArchive& archive) {
    if (archive.IsLoading())
        LoadArchive(archive);
    else
        SaveArchive(archive);
}

/// Replaces the text by what feed adds to a Loader.
template <class Feed>
void CSimEditDoc::Load(Feed feed) {
    const CWaitCursor busy;
    ForEachTextView(*this, [](ITextView& view) { view.ResetText(1, kLeastViewWidth); });
    std::int32_t width = kLeastViewWidth;
    try {
        Loader loader(*this, width);
        feed(loader);
        loader.Finish();
    } catch (const std::length_error&) { // a line that is too long
        CArchiveException(CArchiveException::genericException).ReportError();
    }
    ForEachTextView(*this, [width](ITextView& view) { view.SetMaxLineLength(width); });
}

void CSimEditDoc::LoadArchive(CArchive& archive) {
    Load([&archive](Loader& loader) {
        try {
            for (;;) {
                const std::string_view piece = archive.PeekChunk();
                if (piece.empty())
                    return;
                loader.Add(piece);
                archive.Skip(piece.size());
            }
        } catch (const CArchiveException& exception) {
            if (exception.m_Cause != CArchiveException::endOfFile)
                exception.ReportError();
        } catch (const CFileException& exception) {
            exception.ReportError();
        }
    });
}

void CSimEditDoc::SetText(const AString& text) {
    Load([&text](Loader& loader) {
        std::string bytes;
        for (std::size_t at = 0; at < text.size(); at += kPiece) {
            bytes.clear();
            codepage::AppendEncoded(codepage::Page::kWindows1252,
                                    std::u16string_view(text).substr(at, kPiece), bytes);
            loader.Add(bytes);
        }
    });
}

/// Gives each line as it is saved, and the separators between lines, to sink.
template <class Sink>
void CSimEditDoc::SaveLines(std::string_view lineEnd, Sink sink) const {
    const bool dropBlanks = CurrentOptions().DropBlanksOnSave != 0;
    std::string restored;
    for (std::int32_t row = 0; row < LineCount(); ++row) {
        const CSimEditLine& line = Line(row);
        std::string_view text = line.Text();
        if (!line.Tabs().empty()) {
            restored.clear();
            line.AppendText(restored);
            text = restored;
        }
        if (dropBlanks)
            text = text.substr(0, text.find_last_not_of(' ') + 1);
        sink(text);
        if (row + 1 < LineCount())
            sink(lineEnd);
    }
}

void CSimEditDoc::SaveArchive(CArchive& archive) const {
    const CWaitCursor busy;
    SaveLines(kStoredLineEnd, [&archive](std::string_view text) { archive.WriteString(text); });
}

void CSimEditDoc::GetText(AString& text) const {
    SaveLines(kTextLineEnd, [&text](std::string_view bytes) {
        codepage::AppendDecoded(codepage::Page::kWindows1252, bytes, text);
    });
}

namespace {

/// Writes a file whose path is given in the OEM code page, the form in which paths go to a call
/// that opens text; the disk knows it by its UTF-8 form. It is written whole or not at all, but in
/// place where nothing may be made beside it. A failure is silent: the user sees that no file came
/// about.
void WriteTextFile(const std::string& oemPath, const std::string& bytes) {
    AString path;
    path.Assign(AString::kOem, oemPath.c_str());
    std::string diskPath;
    codepage::AppendUtf16ToUtf8(path, diskPath);
    const int code = sys::WriteFileAtomically(diskPath, bytes).code;
    if (code != EACCES && code != EROFS)
        return;
    try {
        CFile file(diskPath, CFile::modeCreate);
        file.Write(bytes.data(), bytes.size());
        file.Close();
    } catch (const CFileException&) {
    }
}

} // namespace

void CSimEditDoc::ExportText() {
    CFileDialog dialog(false, u"*.txt",
                       CFileDialog::overwritePrompt | CFileDialog::hideReadOnly |
                           CFileDialog::pathMustExist,
                       u"All Files (*.*)|*.*||");
    dialog.m_Title = u"Netlist Export";
    dialog.m_MaxPath = 260;
    if (dialog.DoModal() != kIdOk)
        return;
    std::string bytes;
    SaveLines(kStoredLineEnd, [&bytes](std::string_view text) { bytes += text; });
    const FilePath path(dialog.GetPathName());
    if (!FileExists(path))
        MakeDirectory(FilePath(path.GetDirectory()));
    std::string oemPath;
    codepage::AppendEncoded(codepage::Page::kDos850, path.GetFullPath(), oemPath);
    WriteTextFile(oemPath, bytes);
}

const CommandMap& CSimEditDoc::GetCommandMap() const {
    static constexpr CommandEntry kEntries[] = {
        Command<&CSimEditDoc::ExportText>(kExportTextCommand),
    };
    static const CommandMap map{kEntries, &CDocument::GetCommandMap()};
    return map;
}
