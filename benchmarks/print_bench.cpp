// The desktop prints 50,000 lines into a PDF, with colours and line numbers; beside it what Qt's
// own ways of printing text take.

#include "screen_work.h"

#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QTextDocument>

#include "bench_desk.h"
#include "headless_desk.h"

namespace {

using namespace screen;
const std::string kPrint = "print 50,000 lines to PDF, colours and line numbers";
constexpr double kMargin = 10; // millimetres, as the desktop's PDF has
constexpr int kReps = 3;

QString PathOf(const BenchDesk& desk, const char* name) {
    return QString::fromStdString(desk.PathOf(name));
}

PdfOutput OutputOf(const BenchDesk& desk) {
    PdfOutput output;
    output.m_Path = AString(PathOf(desk, "ours.pdf").toStdU16String());
    return output;
}

/// The text font as the desktop scales it for the device.
LogFont PrintFont(CSize resolution) {
    LogFont font;
    font.m_FaceName = u"Courier New";
    font.m_Height = -12 * resolution.cy / 96;
    return font;
}

/// What the desktop draws on a page of the PDF's measures, call by call.
std::shared_ptr<PrintRecord> RecordCalls(BenchDesk& desk) {
    HeadlessDesk recorder;
    {
        PrintRequest request;
        const auto job = desk.GetDesk().AskPrinter(request);
        const auto font = desk.GetDesk().CreateFont(PrintFont(job->GetResolution()));
        recorder.m_Printer = {.m_PageSize = job->GetPageSize(),
                              .m_Resolution = job->GetResolution(),
                              .m_Font = job->GetSurface().GetFontMetrics(font.get())};
    }
    SetBackend(&recorder);
    desk.GetDriver().RunCommand(kCommandPrint);
    SetBackend(&desk.GetDesk());
    if (recorder.m_PrintJobs.empty() || !recorder.m_PrintJobs.back()->m_Completed)
        std::_Exit(3);
    return recorder.m_PrintJobs.back();
}

/// A QPdfWriter like the desktop's, and a painter on it with that font.
struct Pdf {
    explicit Pdf(const QString& path) : m_Writer(path), m_Font(TextFont()) {
        m_Writer.setPageSize(QPageSize(QPageSize::A4));
        m_Writer.setPageMargins(QMarginsF(kMargin, kMargin, kMargin, kMargin),
                                QPageLayout::Millimeter);
        m_Painter.begin(&m_Writer);
        m_Font.setPixelSize(12 * m_Writer.logicalDpiY() / 96);
        m_Painter.setFont(m_Font);
    }
    ~Pdf() { m_Painter.end(); }

    QPdfWriter m_Writer;
    QPainter m_Painter;
    QFont m_Font;
};

void DrawCalls(const QString& path, const PrintRecord& record) {
    Pdf pdf(path);
    const int ascent = QFontMetrics(pdf.m_Font).ascent();
    for (const PrintedPage& page : record.m_Pages) {
        if (&page != &record.m_Pages.front())
            pdf.m_Writer.newPage();
        for (const PrintedText& text : page.m_Texts) {
            const ColorRef color = text.m_Color;
            pdf.m_Painter.setPen(QColor(color & 0xFF, color >> 8 & 0xFF, color >> 16 & 0xFF));
            pdf.m_Painter.drawText(text.m_X, text.m_Y + ascent,
                                   QString::fromStdU16String(text.m_Text));
        }
    }
}

void DrawLines(const QString& path, const std::vector<std::string_view>& lines) {
    Pdf pdf(path);
    const int height = QFontMetrics(pdf.m_Font).height();
    const int rows = pdf.m_Painter.viewport().height() / height;
    int row = 0;
    for (const std::string_view line : lines) {
        if (row == rows) {
            pdf.m_Writer.newPage();
            row = 0;
        }
        pdf.m_Painter.drawText(0, ++row * height,
                               QString::fromLatin1(line.data(), qsizetype(line.size())));
    }
}

void PrintDocument(const QString& path, const std::string& text) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFileName(path);
    printer.setPageSize(QPageSize(QPageSize::A4));
    QTextDocument document;
    document.setDefaultFont(TextFont());
    document.setPlainText(QString::fromUtf8(text.data(), qsizetype(text.size())));
    document.print(&printer);
}

void MeasurePeers(const BenchDesk& desk, const PrintRecord& record) {
    const std::string text = bench::Input("netlist_50k.cir");
    const std::vector<std::string_view> lines = bench::LinesOf(text);
    const QString path = PathOf(desk, "peer.pdf");
    const auto time = [&](const char* who, auto print) {
        bench::Row(kPrint, who, "ms", bench::TimeOf(kReps, print) / 1e6);
    };
    time("QPdfWriter, as many coloured calls", [&] { DrawCalls(path, record); });
    time("QPdfWriter, a call a line, no colours", [&] { DrawLines(path, lines); });
    time("QTextDocument to QPrinter, no colours", [&] { PrintDocument(path, text); });
    std::size_t calls = 0;
    for (const PrintedPage& page : record.m_Pages)
        calls += page.m_Texts.size();
    bench::Row("print 50,000 lines: calls that draw text", "quorel", "calls", double(calls));
}

} // namespace

int main(int argc, char** argv) {
    Application application(argc, argv);
    Prepare();
    BenchDesk desk("PrintLineNumbers=1\n");
    desk.Open(bench::InputPath("netlist_50k.cir"));
    Application::Settle();
    desk.GetDesk().SetPdfOutput(OutputOf(desk));
    const auto print = [&] { desk.GetDriver().RunCommand(kCommandPrint); };
    bench::Row(kPrint, "quorel", "ms", bench::TimeOf(kReps, print) / 1e6);
    MeasurePeers(desk, *RecordCalls(desk));
    End();
}
