/// quorel print: pages as JSON and as PDF.
#include "quorel_process.h"

namespace {

class Print : public QuorelProcess {
protected:
    /// Prints a text as JSON, uncoloured, to a device of 30 columns between the borders.
    json PrintJson(const std::string& text, std::vector<std::string> options = {}) {
        if (options.empty() || options[0] != "--device")
            options.insert(options.begin(), {"--device", "500x80"});
        std::vector<std::string> arguments = {"print", "--json", "--config", "none", "-"};
        arguments.insert(arguments.end() - 1, options.begin(), options.end());
        const Ran ran = Run(arguments, text);
        EXPECT_EQ(ran.code, 0) << ran.err;
        EXPECT_EQ(ran.err, "");
        return json::parse(ran.out);
    }
    /// The texts of each page, joined by '/'.
    static std::vector<std::string> TextsOf(const json& printed) {
        std::vector<std::string> pages;
        for (const json& page : printed["pages"]) {
            pages.emplace_back();
            for (const json& text : page["texts"])
                pages.back() += (pages.back().empty() ? "" : "/") + text["text"].get<std::string>();
        }
        return pages;
    }
    static std::size_t CountPdfPages(const std::string& pdf) {
        std::size_t count = 0;
        for (std::size_t at = pdf.find("/Type /Page\n"); at != std::string::npos;
             at = pdf.find("/Type /Page\n", at + 1))
            ++count;
        return count;
    }
};

} // namespace

TEST_F(Print, WritesPagesAsJson) {
    const std::string text = "a\t\xB5\n\n" + std::string(32, 'y') + "\nend";
    EXPECT_EQ(PrintJson(text, {"--device", "500x60"}), json::parse(R"({
        "linesPerPage": 3, "charsPerLine": 30, "pageTable": [[0, 0], [30, 2], [3, 3]],
        "pageCount": 2,
        "pages": [
            {"texts": [{"x": 100, "y": 0, "text": "a   \u00b5", "color": 0},
                       {"x": 100, "y": 40, "text": "yyyyyyyyyyyyyyyyyyyyyyyyyyyyyy", "color": 0}],
             "rules": []},
            {"texts": [{"x": 100, "y": 0, "text": "yy", "color": 0},
                       {"x": 100, "y": 20, "text": "end", "color": 0}], "rules": []}]})"));
    EXPECT_EQ(PrintJson("", {"--option", "PrintHead=268435456"})["pages"],
              json::parse(R"([{"texts": [], "rules": [[100, 25, 400, 25]]}])"));
    const json usual = json::parse(Run({"print", "--json", "-"}, "x").out);
    EXPECT_EQ(usual["linesPerPage"], 50);
    EXPECT_EQ(usual["charsPerLine"], 60);
}

TEST_F(Print, TakesOptionsPagesAndSelections) {
    const std::string text = "one\ntwo\nthree\nfour\nfive\nsix\nseven\n";
    const std::pair<std::vector<std::string>, std::vector<std::string>> rows[] = {
        {{}, {"one/two/three/four", "five/six/seven"}},
        {{"--pages", "2-9"}, {"five/six/seven"}},
        {{"--pages", "3-3"}, {}},
        {{"--pages", "2-2", "--option", "PrintHead=536903680", "--option", "PrintLBorder=0"},
         {"Page 2 Of 4/three/four"}},
        {{"--option", "PrintHead=201", "--option", "PrintHeadText=a=b"},
         {"a=b/-/one/two", "a=b/-/three/four", "a=b/-/five/six", "a=b/-/seven"}},
        {{"--option", "PrintLineNumbers=1", "--select", "5", "1", "6", "99"},
         {"0006: /ix/0007: /seven"}},
        {{"--select", "3", "2", "0", "1", "--block"}, {"n/w/h/o"}},
        {{"--select", "99", "99", "6", "5"}, {""}},
        {{"--select", "-1", "-5", "0", "2"}, {"on"}}};
    for (const auto& [givenOptions, pages] : rows) {
        std::vector<std::string> options = {"--device", "800x80"};
        options.insert(options.end(), givenOptions.begin(), givenOptions.end());
        EXPECT_EQ(TextsOf(PrintJson(text, options)), pages) << testing::PrintToString(givenOptions);
    }
}

TEST_F(Print, ColoursByTheConfigurationAndTheEditor) {
    std::filesystem::create_directory(Path("parts"));
    std::string config = "[SyntaxColoring]\nNumberOfDscr=5\n";
    for (int i = 0; i < 5; ++i)
        config += "Dscr" + std::to_string(i) + "=D" + std::to_string(i) + '\n';
    for (int i = 0; i < 5; ++i) {
        const std::string name = 'D' + std::to_string(i);
        config += '[' + name + "]\r\n dscrfile = \"parts/" + name + ".dsc\" \n";
        Write("parts/" + name + ".dsc",
              "[Ranges]\nNumberOfRangeGroups=1\nRangeGroup0=R\n[R]\nColor=" + std::to_string(i) +
                  "\nNumberOfDscr=1\nOpen0=1\nClose0=2\n");
    }
    const std::string file = Write("own.cfg", config);
    const std::pair<const char*, int> rows[] = {{"netlist", 2}, {"javascript", 3}, {"vbscript", 4}};
    for (const auto& [editor, color] : rows) {
        const Ran ran = Run({"print", "--json", "--config", file, "--editor", editor, "-"}, "12");
        ASSERT_EQ(ran.code, 0) << ran.err;
        EXPECT_EQ(json::parse(ran.out)["pages"][0]["texts"][0]["color"], color) << editor;
    }
}

TEST_F(Print, MakesAPdf) {
    const std::string file = Write("long.cir", std::string(200, '\n') + "end");
    const std::string out = Path("out.pdf");
    const Ran first = Run({"print", file, "--output", out});
    EXPECT_EQ(first.code, 0);
    EXPECT_EQ(first.err, "");
    const std::string all = Read(out);
    EXPECT_EQ(all.substr(0, 5), "%PDF-");
    EXPECT_GT(CountPdfPages(all), 2u);
    EXPECT_NE(all.find("/MediaBox [0 0 595"), std::string::npos);
    const Ran some = Run({"print", file, "--output", "-", "--pages", "2-3", "--paper", "Letter"});
    EXPECT_EQ(some.code, 0) << some.err;
    EXPECT_EQ(some.out.substr(0, 5), "%PDF-");
    EXPECT_EQ(CountPdfPages(some.out), 2u);
    EXPECT_NE(some.out.find("/MediaBox [0 0 612"), std::string::npos);
    const Ran none = Run({"print", file, "--output", out, "--pages", "90-99"});
    EXPECT_EQ(none.code, 1);
    EXPECT_NE(none.err.find("there is no page 90"), std::string::npos) << none.err;
    EXPECT_EQ(Read(out), all); // as it was
}

TEST_F(Print, RefusesWhatCannotBe) {
    const std::string file = Write("a.cir", "R1 a b 1k\n");
    const std::string out = Path("a.pdf");
    const std::pair<std::vector<std::string>, int> rows[] = {
        {{file}, 2},
        {{file, "--json", "--output", out}, 2},
        {{file, "--output", out, "--device", "100x100"}, 2},
        {{file, "--output", out, "--paper", "A5"}, 2},
        {{file, "--json", "--device", "0x100"}, 2},
        {{file, "--json", "--pages", "0-1"}, 2},
        {{file, "--json", "--block"}, 2},
        {{file, "--json", "--select", "1", "2", "3"}, 2},
        {{file, "--json", "--option", "PrintHead"}, 2},
        {{file, "--json", "--editor", "perl"}, 2},
        {{"-", "--json", "--config", "-"}, 2},
        {{Path("none.cir"), "--json"}, 3},
        {{file, "--json", "--config", Path("none.cfg")}, 3},
        {{file, "--output", Path("none/a.pdf")}, 3}};
    for (const auto& [options, code] : rows) {
        std::vector<std::string> arguments = {"print"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const Ran ran = Run(arguments);
        EXPECT_EQ(ran.code, code) << testing::PrintToString(options);
        EXPECT_NE(ran.err, "") << testing::PrintToString(options);
    }
    EXPECT_FALSE(std::filesystem::exists(out));
}
