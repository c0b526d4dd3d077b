// The text engine on netlists: loading, memory, colouring, edits, text out; a vector of strings as
// the peer that any program has at hand.

#include "archive.h"
#include "astring.h"
#include "sim_edit_doc.h"
#include "syntax_config.h"
#include "text_work.h"

#include <cmath>
#include <memory>

namespace {

using namespace work;
const std::string kUs = "quorel";
const std::string kVector = "vector of strings";
const std::string kAim = "the aim"; // a bound that doesn't come from a peer

void Load(CSimEditDoc& document, std::string_view bytes) {
    CArchive archive(bytes);
    document.LoadArchive(archive);
}

using Vector = std::vector<std::string>;

void Split(const std::string& raw, Vector& lines) {
    for (const std::string_view line : bench::LinesOf(raw))
        lines.emplace_back(line);
}

/// The vector's split without a table of views in between.
void SplitDirectly(const std::string& raw, Vector& lines) {
    const char* at = raw.data();
    const char* const end = at + raw.size();
    while (at < end) {
        const char* stop = static_cast<const char*>(std::memchr(at, '\n', std::size_t(end - at)));
        stop = stop ? stop : end;
        const char* last = stop > at && stop[-1] == '\r' ? stop - 1 : stop;
        lines.emplace_back(at, std::size_t(last - at));
        at = stop + 1;
    }
}

const CSyntaxDscr& NetlistSyntax() {
    static const SyntaxDscrs syntaxes =
        ReadSyntaxDscrs(QUOREL_SOURCE_DIR "/config/NetlistEditor.cfg",
                        QUOREL_SOURCE_DIR "/config/NetlistEditor.cfg");
    return *syntaxes.at(2);
}

/// Looks at every line, since a line that nobody looks at isn't coloured.
void ColourAll(CSimEditDoc& document) {
    for (std::int32_t row = 0; row < document.LineCount(); ++row)
        document.ColouredLine(row);
}

double LoadOnce(const std::string& raw) {
    CSimEditDoc document;
    const double begin = bench::Now();
    Load(document, raw);
    return (bench::Now() - begin) / 1e6;
}

/// What a document of the file holds in resident memory, over the file's bytes.
double HeldMemory(bool coloured) {
    const CSyntaxDscr& syntax = NetlistSyntax();
    CSimEditDoc document;
    document.SetSyntaxDscr(&syntax);
    syntax.Colour("R1 a b 1k", -1); // the scanner is the description's
    const double before = work::Resident();
    double bytes = 0;
    {
        const std::string raw = Million();
        bytes = double(raw.size());
        Load(document, raw);
    }
    if (coloured)
        ColourAll(document);
    malloc_trim(0);
    return (work::Resident() - before) * 1e6 / bytes;
}

double VectorMemory() {
    const double before = work::Resident();
    Vector lines;
    double bytes = 0;
    {
        const std::string raw = Million();
        bytes = double(raw.size());
        SplitDirectly(raw, lines);
    }
    malloc_trim(0);
    return (work::Resident() - before) * 1e6 / bytes;
}

void MeasureFresh() {
    Row(kMemory, kUs, "x", InChild([] { return HeldMemory(false); }));
    Row(kMemoryColoured, kUs, "x", InChild([] { return HeldMemory(true); }));
    Row(kMemory, kVector, "x", InChild(VectorMemory));
    Row(kMemory, kAim, "x", 2.5);
    Row(kMemoryColoured, kAim, "x", 3.5);
    for (const std::string& work : {kTypeWorst, kTopWorst, kDeleteWorst})
        Row(work, kAim, "us", 1000);
    const std::string raw = Million();
    Row(kLoadFirst, kUs, "ms", InChild([&] { return LoadOnce(raw); }));
    Row(kLoadFirst, kVector, "ms", InChild([&] {
            Vector lines;
            const double begin = bench::Now();
            SplitDirectly(raw, lines);
            return (bench::Now() - begin) / 1e6;
        }));
}

void MeasureLoad(const std::string& raw) {
    std::unique_ptr<CSimEditDoc> document;
    Load(*(document = std::make_unique<CSimEditDoc>()), raw);
    const auto ours = bench::TimeOf(
        kReps, [&] { document = std::make_unique<CSimEditDoc>(); }, [&] { Load(*document, raw); });
    Row(kLoadWarm, kUs, "ms", ours / 1e6);
    document.reset();
    std::unique_ptr<Vector> lines;
    SplitDirectly(raw, *(lines = std::make_unique<Vector>()));
    const auto theirs = bench::TimeOf(
        kReps, [&] { lines = std::make_unique<Vector>(); }, [&] { SplitDirectly(raw, *lines); });
    Row(kLoadWarm, kVector, "ms", theirs / 1e6);
}

void MeasureColouring() {
    Vector lines;
    Split(Small(), lines);
    CSimEditDoc document;
    Load(document, Small());
    const CSyntaxDscr& syntax = NetlistSyntax();
    document.SetSyntaxDscr(&syntax);
    std::size_t spans = 0;
    const auto time = bench::TimeOf(kReps, [&] {
        document.Recolour(0, 0);
        ColourAll(document);
    });
    for (std::int32_t row = 0; row < document.LineCount(); ++row)
        spans += document.ColouredLine(row).Colors().ToVector().size();
    Row(kColour, kUs, "us", time / 1e3 / document.LineCount());
    Row(kSpans, kUs, "spans", double(spans) / document.LineCount());

    // Linear in the length of a line: nanoseconds a character at two lengths.
    std::string text;
    while (text.size() < 1'000'000)
        text += lines[text.size() % lines.size()] + " ";
    for (const std::size_t length : {10'000u, 1'000'000u}) {
        const std::string_view part = std::string_view(text).substr(0, length);
        const auto each =
            bench::TimeOfShort(7, [&] { bench::Keep(syntax.Colour(part, -1).spans); });
        Row("colour a character of a line of " + std::to_string(length), kUs, "ns",
            each / double(length));
    }
}

void MeasureEdits(const std::string& raw) {
    CSimEditDoc document;
    document.SetSyntaxDscr(&NetlistSyntax());
    Load(document, raw);
    ColourAll(document);
    const std::int32_t middle = document.LineCount() / 2;
    std::int32_t width = 0;
    Edits(
        kTypeMedian, kTypeWorst, kUs,
        [&](std::size_t) {
            document.InsertChar(middle, 3, 'x', 1, width);
            document.ColouredLine(middle);
        },
        [&](std::size_t) { document.DelChar(middle, 3, 0, width); });
    Edits(
        kTopMedian, kTopWorst, kUs,
        [&](std::size_t) {
            document.InsertLine(9, 1, 1, {});
            document.ColouredLine(9);
        },
        [](std::size_t) {});
    Edits(
        kDeleteMedian, kDeleteWorst, kUs,
        [&](std::size_t) {
            document.DeleteLine(middle, 1, 1);
            document.ColouredLine(middle);
        },
        [](std::size_t) {});
    const std::string line = "M7 n1 n2 n3 0 nch w=3.20u l=0.18u m=2";
    const double begin = bench::Now();
    for (int i = 0; i < kManyLines; ++i) {
        document.InsertLine(middle + i, 1, i == 0, line);
        document.ColouredLine(middle + i);
    }
    Row(kInsertMany, kUs, "ms", (bench::Now() - begin) / 1e6);
}

void MeasureOut(const std::string& raw) {
    CSimEditDoc document;
    Load(document, raw);
    AString text;
    text.reserve(raw.size());
    document.GetText(text);
    const auto out = bench::TimeOf(
        kReps, [&] { text.clear(); }, [&] { document.GetText(text); });
    Row(kGetText, kUs, "ms", out / 1e6);
    std::string bytes;
    bytes.reserve(raw.size());
    const auto write = [&] {
        CArchive archive(&bytes);
        document.SaveArchive(archive);
        archive.Close();
    };
    write();
    const auto saved = bench::TimeOf(
        kReps, [&] { bytes.clear(); }, write);
    Row(kArchive, kUs, "ms", saved / 1e6);
    if (bytes != raw.substr(0, bytes.size()) || bytes.size() + 2 < raw.size())
        std::exit(3); // the figures would be of something else
    const auto copied =
        bench::TimeOf(kReps, [&] { std::memcpy(bytes.data(), raw.data(), bytes.size()); });
    Row(kArchive, "memcpy", "ms", copied / 1e6);
}

} // namespace

int main() {
    MeasureFresh();
    work::WarmHeap();
    const std::string raw = Million();
    MeasureLoad(raw);
    MeasureOut(raw);
    MeasureColouring();
    MeasureEdits(raw);
}
