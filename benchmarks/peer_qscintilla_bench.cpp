// QScintilla's engine on the text engine's work, its notices off, and its lexer for netlists.

#include "text_work.h"

#include <QApplication>
#include <Qsci/qscilexerspice.h>
#include <Qsci/qsciscintilla.h>
#include <memory>

namespace {

using namespace work;
using Engine = QsciScintillaBase;
const std::string kWho = "QScintilla";

std::unique_ptr<Engine> Fresh() {
    auto engine = std::make_unique<Engine>();
    engine->SendScintilla(Engine::SCI_SETMODEVENTMASK, 0ul);
    return engine;
}

void SetText(Engine& engine, const std::string& raw) {
    engine.SendScintilla(Engine::SCI_SETTEXT, 0ul, raw.c_str());
}

long LineStart(Engine& engine, long line) {
    return engine.SendScintilla(Engine::SCI_POSITIONFROMLINE, static_cast<unsigned long>(line));
}

double HeldMemory() {
    {
        auto warm = Fresh();
        SetText(*warm, "a\r\n");
    }
    const double before = work::Resident();
    auto engine = Fresh();
    double bytes = 0;
    {
        const std::string raw = Million();
        bytes = double(raw.size());
        SetText(*engine, raw);
    }
    engine->SendScintilla(Engine::SCI_EMPTYUNDOBUFFER);
    malloc_trim(0);
    return (work::Resident() - before) * 1e6 / bytes;
}

void MeasureLoad(const std::string& raw) {
    {
        auto engine = Fresh();
        const double begin = bench::Now();
        SetText(*engine, raw);
        Row(kLoadFirst, kWho, "ms", (bench::Now() - begin) / 1e6);
    }
    work::WarmHeap();
    auto engine = Fresh();
    SetText(*engine, raw);
    const auto time = bench::TimeOf(
        kReps, [&] { engine = Fresh(); }, [&] { SetText(*engine, raw); });
    Row(kLoadWarm, kWho, "ms", time / 1e6);
    std::vector<char> out(raw.size() + 1);
    const auto text = bench::TimeOf(kReps, [&] {
        engine->SendScintilla(Engine::SCI_GETTEXT, static_cast<unsigned long>(out.size()),
                              static_cast<void*>(out.data()));
    });
    Row(kGetText, kWho, "ms", text / 1e6);
}

void MeasureColouring() {
    const std::string raw = Small();
    QsciScintilla editor;
    editor.setText(QString::fromUtf8(raw.data(), qsizetype(raw.size())));
    auto* lexer = new QsciLexerSpice(&editor);
    editor.SendScintilla(Engine::SCI_EMPTYUNDOBUFFER);
    editor.setLexer(lexer);
    const auto time = bench::TimeOf(
        kReps, [&] { editor.SendScintilla(Engine::SCI_CLEARDOCUMENTSTYLE); },
        [&] { editor.SendScintilla(Engine::SCI_COLOURISE, 0ul, -1l); });
    Row(kColour, "QScintilla, lexer by hand", "us", time / 1e3 / editor.lines());
}

/// Inserts, deletes and restyles the one line, as an editor with that lexer does.
void MeasureEdits(const std::string& raw) {
    QsciScintilla editor;
    editor.SendScintilla(Engine::SCI_SETMODEVENTMASK, 0ul);
    SetText(editor, raw);
    editor.setLexer(new QsciLexerSpice(&editor));
    editor.SendScintilla(Engine::SCI_SETMODEVENTMASK, 0ul);
    editor.SendScintilla(Engine::SCI_COLOURISE, 0ul, -1l);
    editor.SendScintilla(Engine::SCI_EMPTYUNDOBUFFER);
    const long middle = editor.SendScintilla(Engine::SCI_GETLINECOUNT) / 2;
    const auto restyle = [&](long line) {
        editor.SendScintilla(Engine::SCI_COLOURISE,
                             static_cast<unsigned long>(LineStart(editor, line)),
                             LineStart(editor, line + 1));
    };
    const auto insert = [&](long at, const char* text) {
        editor.SendScintilla(Engine::SCI_INSERTTEXT, static_cast<unsigned long>(at), text);
    };
    Edits(
        kTypeMedian, kTypeWorst, kWho,
        [&](std::size_t) {
            insert(LineStart(editor, middle) + 3, "x");
            restyle(middle);
        },
        [&](std::size_t) { editor.SendScintilla(Engine::SCI_UNDO); });
    Edits(
        kTopMedian, kTopWorst, kWho,
        [&](std::size_t) {
            insert(LineStart(editor, 9), "\r\n");
            restyle(9);
        },
        [](std::size_t) {});
    Edits(
        kDeleteMedian, kDeleteWorst, kWho,
        [&](std::size_t) {
            const long from = LineStart(editor, middle);
            editor.SendScintilla(Engine::SCI_DELETERANGE, static_cast<unsigned long>(from),
                                 LineStart(editor, middle + 1) - from);
            restyle(middle);
        },
        [](std::size_t) {});
    const double begin = bench::Now();
    for (int i = 0; i < kManyLines; ++i) {
        insert(LineStart(editor, middle + i), "M7 n1 n2 n3 0 nch w=3.20u l=0.18u m=2\r\n");
        restyle(middle + i);
    }
    Row(kInsertMany, kWho, "ms", (bench::Now() - begin) / 1e6);
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    Row(kMemory, kWho, "x", HeldMemory());
    const std::string raw = Million();
    MeasureLoad(raw);
    MeasureColouring();
    MeasureEdits(raw);
    std::fflush(stdout);
    _exit(0);
}
