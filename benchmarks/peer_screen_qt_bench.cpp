// Qt's plain text editor, without colours, on the work of the editor on the screen.

#include "screen_work.h"

#include <QFile>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QTextBlock>

namespace {

using namespace screen;
const std::string kWho = "QPlainTextEdit";

void Read(QPlainTextEdit& text, const std::string& path) {
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly))
        std::_Exit(2);
    text.setPlainText(QString::fromUtf8(file.readAll()));
}

void Measure() {
    const std::string path = MillionFile();
    QMainWindow window;
    auto* const text = new QPlainTextEdit;
    text->setFont(TextFont());
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    window.setCentralWidget(text);
    window.show();
    QWidget& client = *text->viewport();
    FitClient(window, client);
    text->setFocus();
    MeasureShown(kOpen, kWho, client, [&] { Read(*text, path); });
    MeasurePages(kWho, *text, client);
    text->setTextCursor(QTextCursor(text->document()->findBlockByNumber(kMiddle)));
    Application::Settle();
    MeasureTyping(kWho, *text, client);
}

} // namespace

int main(int argc, char** argv) {
    Application application(argc, argv);
    Prepare();
    Measure();
    End();
}
