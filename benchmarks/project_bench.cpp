// Opening a project of 10,000 designs, saving it, and the first look at one text, beside the ways
// in which a desktop would keep the same designs otherwise.

#include <malloc.h>

#include <nlohmann/json.hpp>
#include <pugixml.hpp>

#include "block_turns.h"
#include "peer_bench.h"
#include "project_file.h"

namespace {

constexpr int kDesigns = 10000;
constexpr int kLines = 100;
constexpr int kRounds = 7;
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

std::string MakeBytes() {
    Project made;
    for (int i = 0; i < kDesigns; ++i) {
        auto& design = *made.m_Designs.emplace_back(std::make_unique<ProjectDesign>());
        design.m_Name = NameOf(i);
        design.m_Netlist = ProjectText(AString(NetlistOf(i)));
    }
    return WriteProject(made);
}

std::string MakeJson() {
    nlohmann::json designs = nlohmann::json::array();
    for (int i = 0; i < kDesigns; ++i)
        designs.push_back({{"name", NameOf(i)}, {"text", NetlistOf(i)}});
    return designs.dump(1);
}

std::string MakeXml() {
    std::string xml = "<project>\n";
    for (int i = 0; i < kDesigns; ++i)
        xml += "<design name=\"" + NameOf(i) + "\"><text>" + NetlistOf(i) + "</text></design>\n";
    return xml + "</project>\n";
}

void MeasureTimes(const std::string& bytes, const Project& project) {
    const std::string json = MakeJson();
    const std::string xml = MakeXml();
    work::Turns turns;
    turns.Add(kOpen, "quorel", kRounds, {{}, [&] { bench::Keep(Open(bytes)); }, {}});
    turns.Add(kOpen, "nlohmann-json, texts in one piece", kRounds,
              {{}, [&] { bench::Keep(nlohmann::json::parse(json)); }, {}});
    turns.Add(kOpen, "pugixml, texts in one piece", kRounds,
              {{},
               [&] {
                   pugi::xml_document document;
                   Check(document.load_buffer(xml.data(), xml.size()), "XML does not parse");
                   bench::Keep(document);
               },
               {}});
    turns.Add("project: all texts of 10,000 designs, asked for one by one", "quorel", kRounds,
              {{},
               [&] {
                   for (const auto& design : project.m_Designs)
                       bench::Keep(design->m_Netlist.Get());
               },
               {}});
    turns.Add("project: the bytes of 10,000 designs to save", "quorel", kRounds,
              {{}, [&] { bench::Keep(WriteProject(project)); }, {}});
    turns.Run(kDesigns);
    bench::Row(kOpen, "the aim", "ns/item", 2e9 / kDesigns);
}

} // namespace

int main() {
    const std::string bytes = MakeBytes();
    const double before = Used();
    const Project project = Open(bytes);
    bench::Row("project: memory of 10,000 designs over the file's bytes", "quorel", "ratio",
               (Used() - before) / static_cast<double>(bytes.size()));
    MeasureTimes(bytes, project);
}
