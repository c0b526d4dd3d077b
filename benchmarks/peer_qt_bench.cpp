// Qt's text document on the text engine's work, and its highlighter with six rules.

#include "text_work.h"

#include <QApplication>
#include <QPlainTextDocumentLayout>
#include <QRegularExpression>
#include <QSyntaxHighlighter>
#include <QTextDocument>
#include <memory>

namespace {

using namespace work;
const std::string kWho = "QTextDocument";
constexpr int kSlowReps = 3;

class Highlighter : public QSyntaxHighlighter {
public:
    explicit Highlighter(QTextDocument* document) : QSyntaxHighlighter(document) {
        for (const char* rule :
             {"\\.(subckt|model|param|ends|include|lib)", "[A-Za-z_][A-Za-z0-9_]*",
              "\\b[0-9]+(\\.[0-9]+)?(meg|[kmunpf])?\\b", "\"[^\"]*\"", "^\\*[^\\n]*", "\\$.*"}) {
            QTextCharFormat format;
            format.setForeground(QColor(40 * int(m_rules.size()), 20, 100));
            QRegularExpression expression{QString::fromLatin1(rule)};
            expression.optimize();
            m_rules.emplace_back(expression, format);
        }
    }

protected:
    void highlightBlock(const QString& text) override {
        for (const auto& [expression, format] : m_rules) {
            auto matches = expression.globalMatch(text);
            while (matches.hasNext()) {
                const auto match = matches.next();
                setFormat(int(match.capturedStart()), int(match.capturedLength()), format);
            }
        }
    }

private:
    std::vector<std::pair<QRegularExpression, QTextCharFormat>> m_rules;
};

std::unique_ptr<QTextDocument> Fresh() {
    auto document = std::make_unique<QTextDocument>();
    document->setDocumentLayout(new QPlainTextDocumentLayout(document.get()));
    return document;
}

void MeasureLoad() {
    const std::string raw = Million();
    const QString text = QString::fromUtf8(raw.data(), qsizetype(raw.size()));
    const double before = work::Resident();
    auto document = Fresh();
    const double begin = bench::Now();
    document->setPlainText(text);
    Row(kLoadFirst, kWho, "ms", (bench::Now() - begin) / 1e6);
    malloc_trim(0);
    Row(kMemory, kWho, "x", (work::Resident() - before) * 1e6 / double(raw.size()));
    work::WarmHeap();
    const auto time = bench::TimeOf(
        kSlowReps, [&] { document = Fresh(); }, [&] { document->setPlainText(text); });
    Row(kLoadWarm, kWho, "ms", time / 1e6);
}

void MeasureColouring() {
    const std::string raw = Small();
    auto document = Fresh();
    document->setPlainText(QString::fromUtf8(raw.data(), qsizetype(raw.size())));
    Highlighter highlighter(document.get());
    highlighter.rehighlight();
    const auto time = bench::TimeOf(kSlowReps, [&] { highlighter.rehighlight(); });
    Row(kColour, "QSyntaxHighlighter, six rules", "us", time / 1e3 / document->blockCount());
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    MeasureLoad();
    MeasureColouring();
    std::fflush(stdout);
    _exit(0);
}
