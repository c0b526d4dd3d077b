// QScintilla with its lexer for netlists on the work of the editor on the screen.

#include "screen_work.h"

#include <QClipboard>
#include <QFile>
#include <QMainWindow>
#include <Qsci/qscilexerspice.h>
#include <Qsci/qsciscintilla.h>
#include <memory>

namespace {

using namespace screen;
using Engine = QsciScintillaBase;
const std::string kWho = "QScintilla";
/// Fewer than others, since a page or a key far down takes it tens of milliseconds and more.
constexpr int kPagesHere = 100;
constexpr int kRowsHere = 1;

/// An editor in a window of its own.
struct Editor {
    Editor() : m_Text(new QsciScintilla), m_Lexer(m_Text) {
        m_Lexer.setDefaultFont(TextFont());
        m_Lexer.setFont(TextFont());
        m_Text->setLexer(&m_Lexer);
        m_Text->setUtf8(false); // as our text is
        m_Text->SendScintilla(Engine::SCI_SETCARETPERIOD, 0ul);
        m_Window.setCentralWidget(m_Text);
        m_Window.show();
        FitClient(m_Window, *m_Text->viewport());
    }

    /// From here on the engine tells nobody of changes, which is what it is fastest with.
    void PutNoticesOff() { m_Text->SendScintilla(Engine::SCI_SETMODEVENTMASK, 0ul); }

    void Read(const std::string& path) {
        QFile file(QString::fromStdString(path));
        if (!file.open(QIODevice::ReadOnly) || !m_Text->read(&file))
            std::_Exit(2);
    }

    long Find(const char* text, long from) {
        SetTarget(from, m_Text->SendScintilla(Engine::SCI_GETLENGTH));
        return m_Text->SendScintilla(Engine::SCI_SEARCHINTARGET, std::strlen(text), text);
    }

    void ReplaceAll(const char* text, const char* replacement) {
        m_Text->SendScintilla(Engine::SCI_SETSEARCHFLAGS, ulong(Engine::SCFIND_MATCHCASE));
        m_Text->beginUndoAction();
        for (long at = Find(text, 0); at >= 0;) {
            const long length = m_Text->SendScintilla(Engine::SCI_REPLACETARGET,
                                                      std::strlen(replacement), replacement);
            at = Find(text, at + length);
        }
        m_Text->endUndoAction();
    }

    QMainWindow m_Window;
    QsciScintilla* m_Text; // the window's
    QsciLexerSpice m_Lexer;

private:
    void SetTarget(long from, long to) {
        m_Text->SendScintilla(Engine::SCI_SETTARGETSTART, ulong(from));
        m_Text->SendScintilla(Engine::SCI_SETTARGETEND, ulong(to));
    }
};

void MeasureEditor() {
    const std::string path = MillionFile();
    Editor editor;
    QsciScintilla& text = *editor.m_Text;
    QWidget& client = *text.viewport();
    text.setFocus();
    MeasureShown(kOpen, kWho, client, [&] { editor.Read(path); });
    editor.PutNoticesOff();
    MeasurePages(kWho, text, client, kPagesHere);
    text.setCursorPosition(kMiddle, 0);
    Application::Settle();
    MeasureTyping(kWho, text, client, kRowsHere);

    text.SendScintilla(Engine::SCI_SETSEARCHFLAGS, ulong(Engine::SCFIND_MATCHCASE));
    const double found = bench::TimeOf(3, [&] { bench::Keep(editor.Find(kAbsent, 0)); });
    bench::Row(kFindNone, kWho, "ms", found / 1e6);

    MeasureShown(kCopyAll, kWho, client, [&] {
        text.selectAll();
        text.copy();
    });
    QGuiApplication::clipboard()->setText(QString::fromStdString(PastedText()));
    text.setCursorPosition(kMiddle, 0);
    Application::Settle();
    MeasureShown(kPaste, kWho, client, [&] { text.paste(); });
    MeasureShown(kPasteUndo, kWho, client, [&] { text.undo(); });
    MeasureShown(kPasteRedo, kWho, client, [&] { text.redo(); });
}

void MeasureReplacing() {
    Editor editor;
    editor.m_Text->setText(QString::fromStdString(TextOfHits(1'000'000)));
    editor.m_Text->SendScintilla(Engine::SCI_EMPTYUNDOBUFFER);
    editor.PutNoticesOff();
    Application::Settle();
    QWidget& client = *editor.m_Text->viewport();
    MeasureShown(kReplaceAll, kWho, client, [&] { editor.ReplaceAll(kHit, kReplacement); });
    MeasureShown(kReplaceUndo, kWho, client, [&] { editor.m_Text->undo(); });
}

} // namespace

int main(int argc, char** argv) {
    Application application(argc, argv);
    Prepare();
    MeasureEditor();
    MeasureReplacing();
    End();
}
