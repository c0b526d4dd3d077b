// Opening a project of 10,000 designs, saving it, and the first look at one text, beside the ways
// in which a desktop would keep the same designs otherwise.

#include <malloc.h>

#include <nlohmann/json.hpp>
#include <pugixml.hpp>

#include "peer_bench.h"
#include "project_file.h"

namespace {

constexpr int kDesigns = 10000;
constexpr int kLines = 100;
constexpr int kRounds = 5;
const std::string kOpen = "project: open 10,000 designs of 100 lines";

void Check(bool isGood, const char* what) {
    if (isGood)
        return;
    std::fprintf(stderr, "project_bench: %s\n", what);
    std::exit(1);
}

double Used() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

std::string NetlistOf(int design) {
    std::string text;
    for (int line = 0; line < kLines; ++line)
        text += "R" + std::to_string(line) + " n" + std::to_string(line) + " out " +
                std::to_string(design) + "k tc=0.001\n";
    return text;
}

std::string NameOf(int design) {
    return "design " + std::to_string(design);
}

Project Open(const std::string& bytes) {
    Project project;
    std::vector<ProjectProblem> problems;
    Check(ReadProject(bytes, project, problems).IsOk() && problems.empty() &&
              project.m_Designs.size() == kDesigns,
          "the project does not read");
    return project;
}

void Ours() {
    Project made;
    for (int i = 0; i < kDesigns; ++i) {
        auto& design = *made.m_Designs.emplace_back(std::make_unique<ProjectDesign>());
        design.m_Name = NameOf(i);
        design.m_Netlist = ProjectText(AString(NetlistOf(i)));
    }
    const std::string bytes = WriteProject(made);
    made = {};
    bench::Row(kOpen, "quorel", "ms",
               bench::TimeOf(kRounds, [&] { bench::Keep(Open(bytes)); }) / 1e6);
    bench::Row(kOpen, "the aim", "ms", 2000);
    const double before = Used();
    const Project project = Open(bytes);
    bench::Row("project: memory of 10,000 designs over the file's bytes", "quorel", "ratio",
               (Used() - before) / static_cast<double>(bytes.size()));
    int next = 0;
    bench::Row("project: first look at one text of 10,000", "quorel", "us",
               bench::TimeOf(1000, [&] {
                   bench::Keep(
                       project.m_Designs[static_cast<std::size_t>(next++)]->m_Netlist.Get());
               }) / 1000);
    bench::Row("project: bytes of 10,000 designs to save", "quorel", "ms",
               bench::TimeOf(kRounds, [&] { bench::Keep(WriteProject(project)); }) / 1e6);
}

void Json() {
    nlohmann::json designs = nlohmann::json::array();
    for (int i = 0; i < kDesigns; ++i)
        designs.push_back({{"name", NameOf(i)}, {"text", NetlistOf(i)}});
    const std::string bytes = designs.dump(1);
    bench::Row(kOpen, "nlohmann-json, texts in one piece", "ms",
               bench::TimeOf(kRounds, [&] { bench::Keep(nlohmann::json::parse(bytes)); }) / 1e6);
}

void Xml() {
    std::string bytes = "<project>\n";
    for (int i = 0; i < kDesigns; ++i)
        bytes += "<design name=\"" + NameOf(i) + "\"><text>" + NetlistOf(i) + "</text></design>\n";
    bytes += "</project>\n";
    bench::Row(kOpen, "pugixml, texts in one piece", "ms",
               bench::TimeOf(kRounds, [&] {
                   pugi::xml_document document;
                   Check(document.load_buffer(bytes.data(), bytes.size()), "XML does not parse");
                   bench::Keep(document);
               }) / 1e6);
}

} // namespace

int main() {
    Ours();
    Json();
    Xml();
}
