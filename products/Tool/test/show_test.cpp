#include "quorel_process.h"

namespace {

/// A configuration of three descriptions; the last has a block comment and a number.
class Show : public QuorelProcess {
protected:
    Show() {
        Write("own.cfg", "[SyntaxColoring]\nNumberOfDscr=3\nDscr0=A\nDscr1=B\nDscr2=C\n"
                         "[B]\nNumberOfFileExt=1\nFileExt0=BBB\n[C]\nDscrFile=c.dsc\n");
        Write("c.dsc", "[Ranges]\nNumberOfRangeGroups=1\nRangeGroup0=R\n"
                       "[R]\nColor=255\nNumberOfDscr=1\nOpen0=/\\*\nClose0=\\*/\n"
                       "[Tokens]\nNumberOfTokenGroups=1\nTokenGroup0=T\n"
                       "[T]\nColor=66051\nStdStartSep=[ ]\nStdStopSep=\" |$\"\nNumberOfDscr=1\n"
                       "TokenDscr0=[0-9]+\n");
    }

    json ShowJson(const std::string& bytes, const std::vector<std::string>& options = {}) {
        std::vector<std::string> arguments = {"show", "--json", "--config", Path("own.cfg"), "-"};
        arguments.insert(arguments.end() - 1, options.begin(), options.end());
        const Ran ran = Run(arguments, bytes);
        EXPECT_EQ(ran.code, 0) << ran.err;
        return json::parse(ran.out);
    }
};

TEST_F(Show, WritesLinesTabsRangesAndColoursAsJson) {
    const json expected = json::parse(R"({"syntax": 2, "lines": [
        {"text": "12  3 /* 4", "tabs": [[2, 2]], "rangeIn": -1, "rangeOut": 0,
         "colors": [[0, 1, 66051], [4, 4, 66051], [6, 9, 255]]},
        {"text": "", "tabs": [], "rangeIn": 0, "rangeOut": 0, "colors": [[0, 0, 255]]},
        {"text": "*/ 5 \u00b5\u0000\u0080", "tabs": [], "rangeIn": 0, "rangeOut": -1,
         "colors": [[0, 1, 255], [3, 3, 66051]]},
        {"text": "", "tabs": [], "rangeIn": -1, "rangeOut": -1, "colors": []}]})");
    EXPECT_EQ(ShowJson(std::string("12\t3 /* 4\r\n\r*/ 5 \xb5\0\x80\r\n", 22)), expected);
}

TEST_F(Show, ChoosesTheDescriptionByNameIndexOrExtension) {
    const std::tuple<std::vector<std::string>, const char*, int> rows[] = {
        {{}, "a.bbb", 1},
        {{}, "a.cir", 2},
        {{}, "bbb", 2},
        {{"--syntax", "0"}, "a.bbb", 0},
        {{"--syntax", "netlist"}, "a.bbb", 2},
        {{"--config", "none"}, "a.bbb", -1},
        {{"--config", "none", "--syntax", "vbscript"}, "a.bbb", -1}};
    for (const auto& [options, file, syntax] : rows) {
        std::vector<std::string> arguments = {"show", "--json", Write(file, "1")};
        if (options.empty() || options[0] != "--config")
            arguments.insert(arguments.end(), {"--config", Path("own.cfg")});
        arguments.insert(arguments.end(), options.begin(), options.end());
        const Ran ran = Run(arguments);
        ASSERT_EQ(ran.code, 0) << ran.err;
        EXPECT_EQ(json::parse(ran.out)["syntax"], syntax) << testing::PrintToString(arguments);
    }
}

TEST_F(Show, ColoursScriptsOnlyWithBothLanguagesAsTheEditorDoes) {
    for (const int count : {4, 5}) {
        std::string config = "[SyntaxColoring]\nNumberOfDscr=" + std::to_string(count) + "\n";
        for (int i = 0; i < count; ++i)
            config += "Dscr" + std::to_string(i) + "=D\n";
        Write("few.cfg", config);
        for (const char* syntax : {"javascript", "3"}) {
            const Ran ran =
                Run({"show", "--json", "--config", Path("few.cfg"), "--syntax", syntax, "-"}, "1");
            EXPECT_EQ(json::parse(ran.out)["syntax"], *syntax == 'j' && count == 4 ? -1 : 3);
        }
    }
}

TEST_F(Show, WritesTextAsAPersonReadsIt) {
    const std::string number = "\x1b[38;2;3;2;1m";
    const std::tuple<std::string, std::vector<std::string>, std::string> rows[] = {
        {"", {}, ""},
        {"\n", {}, "\n"},
        {"a\n\n", {}, "a\n\n"},
        {"a\r\n\r\n", {}, "a\n\n"},
        {"a\tb\r\n\n\nc", {}, "a   b\n\n\nc\n"},
        {"x 12\n", {"--color", "always"}, "x " + number + "12\x1b[0m\n"},
        {"x 12\n", {"--color", "always", "--config", "none"}, "x 12\n"},
        {"x 12\n", {"--color", "auto"}, "x 12\n"},
        {"\n\n\n\n\n\n\n\n\nj",
         {"--line-numbers"},
         " 1  \n 2  \n 3  \n 4  \n 5  \n 6  \n 7  \n 8  \n 9  \n10  j\n"},
        {"\xc2\xb5 \xe2\x82\xac", {}, "\xc2\xb5 \xe2\x82\xac\n"}, // UTF-8 stays
        {"\xb5 \x80", {}, "\xc2\xb5 \xe2\x82\xac\n"},             // the editors' code page
        {"\x1b[31m\x7f", {}, "\xe2\x90\x9b[31m\xe2\x90\xa1\n"},   // a picture of the character
        {"\xc2\x9b", {}, "\xef\xbf\xbd\n"}};
    for (const auto& [bytes, options, shown] : rows) {
        std::vector<std::string> arguments = {"show", "--config", Path("own.cfg"), "-"};
        if (options.size() == 4)
            arguments = {"show", "-"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        EXPECT_EQ(Run(arguments, bytes).out, shown) << testing::PrintToString(bytes);
    }
}

TEST_F(Show, ColoursWholeSamples) {
    for (const char* sample : {"amplifier.cir", "values.js", "sweep.vbs", "cells.lib"}) {
        const std::string path = std::string(QUOREL_SOURCE_DIR "/samples/") + sample;
        const json shown = json::parse(Run({"show", "--json", path}).out);
        std::size_t coloured = 0, filled = 0;
        for (const json& line : shown["lines"]) {
            filled += line["text"] != "";
            coloured += !line["colors"].empty();
        }
        EXPECT_GT(filled, 20u) << sample;
        EXPECT_GE(coloured * 10, filled * 9) << sample;
    }
}

} // namespace
