// KSyntaxHighlighting with its definition for netlists on the lines of the 50k file.

#include "text_work.h"

#include <KSyntaxHighlighting/AbstractHighlighter>
#include <KSyntaxHighlighting/Definition>
#include <KSyntaxHighlighting/Format>
#include <KSyntaxHighlighting/Repository>
#include <KSyntaxHighlighting/State>
#include <QCoreApplication>

namespace {

using namespace work;

class Highlighter : public KSyntaxHighlighting::AbstractHighlighter {
public:
    std::size_t spans = 0;

    void Run(const std::vector<QString>& lines) {
        KSyntaxHighlighting::State state;
        for (const QString& line : lines)
            state = highlightLine(line, state);
    }

protected:
    void applyFormat(int, int, const KSyntaxHighlighting::Format&) override { ++spans; }
};

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    const std::string raw = Small();
    std::vector<QString> lines;
    for (const auto line : bench::LinesOf(raw))
        lines.push_back(QString::fromUtf8(line.data(), int(line.size())));
    KSyntaxHighlighting::Repository repository;
    const auto definition = repository.definitionForName(QStringLiteral("Spice"));
    if (!definition.isValid())
        return 2;
    Highlighter highlighter;
    highlighter.setDefinition(definition);
    highlighter.Run(lines);
    const std::string who = "KSyntaxHighlighting 'Spice'";
    Row(kSpans, who, "spans", double(highlighter.spans) / double(lines.size()));
    const auto time = bench::TimeOf(kReps, [&] { highlighter.Run(lines); });
    Row(kColour, who, "us", time / 1e3 / double(lines.size()));
    _exit(0);
}
