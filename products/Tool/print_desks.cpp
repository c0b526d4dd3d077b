#include "print_desks.h"

#include "data_files.h"
#include "json_text.h"
#include "module_loader.h"
#include "output.h"
#include "progress.h"
#include "tool_error.h"

namespace {

/// A job on another printer, with its progress and its outcome.
class WatchedPrinter : public IBackendPrinter {
public:
    WatchedPrinter(std::unique_ptr<IBackendPrinter> printer, PrintDesk& desk)
        : m_Printer(std::move(printer)), m_Desk(desk) {}
    ~WatchedPrinter() override { Progress::Set(0, 0); }

    CSize GetPageSize() override { return m_Printer->GetPageSize(); }
    CSize GetResolution() override { return m_Printer->GetResolution(); }
    IBackendSurface& GetSurface() override { return m_Printer->GetSurface(); }
    bool StartDocument(const AString& title) override {
        m_Desk.m_Outcome.m_TablePages =
            static_cast<int>(m_Desk.m_GetState().m_PageTable.size()) - 1;
        return Note(m_Printer->StartDocument(title));
    }
    bool GoOn(int page, int lastPage) override {
        Progress::Set(static_cast<std::uint64_t>(page), static_cast<std::uint64_t>(lastPage));
        return m_Printer->GoOn(page, lastPage);
    }
    bool StartPage() override { return Note(m_Printer->StartPage()); }
    bool EndPage() override { return Note(m_Printer->EndPage()); }
    bool EndDocument() override {
        return m_Desk.m_Outcome.m_Completed = Note(m_Printer->EndDocument());
    }

private:
    bool Note(bool good) {
        m_Desk.m_Outcome.m_Failed |= !good;
        return good;
    }

    std::unique_ptr<IBackendPrinter> m_Printer;
    PrintDesk& m_Desk;
};

std::string TableAsJson(const PrintState& state) {
    std::string text;
    for (const TextPosition& place : state.m_PageTable)
        text += (text.empty() ? "[" : ",[") + std::to_string(place.m_Column) + ',' +
                std::to_string(place.m_Row) + ']';
    return text;
}

std::string PageAsJson(const PrintedPage& page) {
    Json texts = Json::array(), rules = Json::array();
    for (const PrintedText& text : page.m_Texts)
        texts.push_back({{"x", text.m_X},
                         {"y", text.m_Y},
                         {"text", JsonFromText(text.m_Text)},
                         {"color", text.m_Color}});
    for (const PrintedRule& rule : page.m_Rules)
        rules.push_back({rule.m_From.x, rule.m_From.y, rule.m_To.x, rule.m_To.y});
    return DumpJson({{"texts", texts}, {"rules", rules}});
}

/// What can't be written is a refusal: nothing is thrown through the module.
class JsonPrinter : public IBackendPrinter {
public:
    JsonPrinter(const PrinterSettings& settings, PrintDesk& desk)
        : m_Printer(settings, m_Record), m_Desk(desk) {}

    CSize GetPageSize() override { return m_Printer.GetPageSize(); }
    CSize GetResolution() override { return m_Printer.GetResolution(); }
    IBackendSurface& GetSurface() override { return m_Printer.GetSurface(); }
    bool StartDocument(const AString& title) override {
        const PrintState state = m_Desk.m_GetState();
        return m_Printer.StartDocument(title) &&
               Write("{\"linesPerPage\":" + std::to_string(state.m_LinesPerPage) +
                     ",\"charsPerLine\":" + std::to_string(state.m_CharsPerLine) +
                     ",\"pageTable\":[" + TableAsJson(state) + "],\"pageCount\":" +
                     std::to_string(state.m_PageTable.size() - 1) + ",\"pages\":[");
    }
    bool GoOn(int page, int lastPage) override { return m_Printer.GoOn(page, lastPage); }
    bool StartPage() override { return m_Printer.StartPage(); }
    bool EndPage() override {
        const bool good = Write((m_IsFirst ? "\n" : ",\n") + PageAsJson(m_Record->m_Pages.back()));
        m_IsFirst = false;
        m_Record->m_Pages.clear();
        return m_Printer.EndPage() && good;
    }
    bool EndDocument() override { return m_Printer.EndDocument(); }

private:
    bool Write(const std::string& text) {
        try {
            Output::Get().Write(text);
            return true;
        } catch (...) {
            m_Desk.m_Outcome.m_Reason = std::current_exception();
            return false;
        }
    }

    std::shared_ptr<PrintRecord> m_Record = std::make_shared<PrintRecord>();
    HeadlessPrinter m_Printer;
    PrintDesk& m_Desk;
    bool m_IsFirst = true;
};

/// The library, which stays until the process ends: what it draws with can't be unloaded.
sys::ModuleLoader& LoadPdfLibrary() {
    static auto* const library = new sys::ModuleLoader;
    sys::Status status = sys::Failure("load", QUOREL_PDF_LIBRARY, 0);
    for (const char* folder : {QUOREL_LIBRARY_FOLDER, "../lib/"})
        if (!library->IsLoaded())
            status = library->Load(ProgramDirectory() + folder + QUOREL_PDF_LIBRARY);
    if (!library->IsLoaded())
        Require(status);
    return *library;
}

} // namespace

std::unique_ptr<IBackendPrinter> PrintDesk::AskPrinter(PrintRequest& request) {
    std::unique_ptr<IBackendPrinter> printer = MakePrinter(request);
    m_Outcome.m_Failed = !printer;
    return printer ? std::make_unique<WatchedPrinter>(std::move(printer), *this) : nullptr;
}

JsonPrintDesk::JsonPrintDesk(CSize device, int fromPage, int toPage)
    : m_FromPage(fromPage), m_ToPage(toPage) {
    m_Printer.m_PageSize = device;
}

void JsonPrintDesk::Finish() {
    Output::Get().Write("]}\n");
}

std::unique_ptr<IBackendPrinter> JsonPrintDesk::MakePrinter(PrintRequest& request) {
    request.m_FromPage = m_FromPage;
    request.m_ToPage = m_ToPage;
    return std::make_unique<JsonPrinter>(m_Printer, *this);
}

PdfPrintDesk::PdfPrintDesk(const PdfOutput& output) {
    sys::ModuleLoader& library = LoadPdfLibrary();
    OpenPdfDeskFunction* open = nullptr;
    Require(library.Find(kOpenPdfDeskName, open));
    Require(library.Find(kClosePdfDeskName, m_Close));
    m_Pdf = open(output);
    if (!m_Pdf)
        throw ToolError(ExitCode::file, library.GetPath() + " can't print here");
}

PdfPrintDesk::~PdfPrintDesk() {
    m_Close();
}

std::unique_ptr<IBackendFont> PdfPrintDesk::CreateFont(const LogFont& font) {
    return m_Pdf->CreateFont(font);
}

std::unique_ptr<IBackendPrinter> PdfPrintDesk::MakePrinter(PrintRequest& request) {
    return m_Pdf->AskPrinter(request);
}
