#include "quorel_process.h"

#include <gmock/gmock.h>

namespace {

class Syntax : public QuorelProcess {
protected:
    /// The answers of a batch, one for each line.
    std::vector<json> Batch(const std::string& lines, const std::vector<std::string>& more = {}) {
        std::vector<std::string> arguments = {"syntax", "match", "--batch"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return RunBatch(arguments, lines);
    }
};

TEST_F(Syntax, CheckNamesWhatTheReaderDrops) {
    const std::string config = Write(
        "own.cfg", "[SyntaxColoring]\nNumberOfDscr=2000000000\nDscr0=A\nDscr1=\nDscr2=B\n"
                   "Dscr3=C\n[A]\nDscrFile=a.dsc\nNumberOfFileExt=2\nFileExt0=x\nFileExt1=\xe4\n"
                   "NumberOfLanguages=1\nLanguage0=L\n[B]\nDscrFile=missing.dsc\n");
    Write("a.dsc", "[Ranges]\nNumberOfRangeGroups=1\nRangeGroup0=R\n"
                   "[R]\nNumberOfDscr=2\nOpen0=a\nClose0=$\nOpen1=a**\nClose1=\n"
                   "[Tokens]\nNumberOfTokenGroups=1\nTokenGroup0=T\n"
                   "[T]\nNumberOfDscr=1\nTokenDscr0=(\xb5\nStdStartSep=^\n");
    json expected = json::parse(R"json({"descriptions": [
        {"section": "A", "extensions": ["x", "\u00e4"], "languages": ["L"], "ranges": 1,
         "tokens": 0, "unreadable": false, "dropped": [
            {"section": "R", "key": "Open1", "expression": "a**", "reason": "nested *?+"},
            {"section": "R", "key": "Close1", "expression": "", "reason": "empty expression"},
            {"section": "T", "key": "TokenDscr0", "expression": "(\u00b5",
             "reason": "unterminated ()"},
            {"section": "T", "key": "StdStopSep", "expression": "",
             "reason": "empty expression"}]},
        {"section": "B", "extensions": [], "languages": [], "ranges": 0, "tokens": 0,
         "unreadable": true, "dropped": []},
        {"section": "C", "file": "", "extensions": [], "languages": [], "ranges": 0, "tokens": 0,
         "unreadable": false, "dropped": []}]})json");
    expected["descriptions"][0]["file"] = Path("a.dsc");
    expected["descriptions"][1]["file"] = Path("missing.dsc");
    Ran ran = Run({"syntax", "check", "--json", config});
    EXPECT_EQ(ran.code, 1);
    EXPECT_EQ(json::parse(ran.out), expected);

    ran = Run({"syntax", "check", config});
    EXPECT_EQ(ran.code, 1);
    EXPECT_THAT(ran.err, testing::HasSubstr(Path("a.dsc") + ": [R] Open1: nested *?+: a**\n"));
    EXPECT_THAT(ran.err, testing::HasSubstr(Path("missing.dsc") + ": can't be read\n"));
}

TEST_F(Syntax, CheckReadsStandardInputAndShowsControlCharactersAsPictures) {
    const Ran ran = Run({"syntax", "check", "-"},
                        "[SyntaxColoring]\nNumberOfDscr=1\nDscr0=A\x1b[2J\n"
                        "[A\x1b[2J]\nDscrFile=" +
                            Write("a.dsc", "[Tokens]\nNumberOfTokenGroups=1\nTokenGroup0=T\n"
                                           "[T]\nNumberOfDscr=1\nStdStartSep=^\nStdStopSep=$\n"
                                           "TokenDscr0=(\x1b\n"));
    EXPECT_EQ(ran.code, 1);
    EXPECT_EQ(ran.out,
              "-: 1 description\n0 A\u241b[2J: 0 ranges, 0 tokens, " + Path("a.dsc") + "\n");
    EXPECT_EQ(ran.err, Path("a.dsc") + ": [T] TokenDscr0: unterminated (): (\u241b\n");
}

TEST_F(Syntax, MatchAnswersInOneForm) {
    const char* const found = R"json({"valid": true, "match": true, "start": 1, "length": 2,
        "groups": [null, [2, 1], null, null, null, null, null, null, null]})json";
    const struct {
        const char* request;
        const char* answer;
        int code;
    } rows[] = {
        {R"json({"pattern": "a(x)?(b)", "text": "cab", "ignoreCase": false})json", found, 0},
        {R"json({"pattern": "A(x)?(B)", "text": "cab", "ignoreCase": true})json", found, 0},
        {R"json({"pattern": "x", "text": "abc"})json", R"json({"valid": true, "match": false})json",
         1},
        {R"json({"pattern": "a**", "text": ""})json",
         R"json({"valid": false, "code": 17, "error": "nested *?+"})json", 1}};
    std::string lines;
    for (const auto& row : rows)
        lines += std::string(row.request) + "\n";
    const std::vector<json> answers = Batch(lines);
    ASSERT_EQ(answers.size(), std::size(rows));
    for (std::size_t i = 0; i < answers.size(); ++i) {
        EXPECT_EQ(answers[i], json::parse(rows[i].answer));
        const json request = json::parse(rows[i].request);
        std::vector<std::string> arguments = {"syntax", "match", "--json", request["pattern"],
                                              request["text"]};
        if (request.value("ignoreCase", false))
            arguments.push_back("--ignore-case");
        const Ran ran = Run(arguments);
        EXPECT_EQ(json::parse(ran.out), answers[i]);
        EXPECT_EQ(ran.code, rows[i].code);
    }
}

std::string ManyKeys(int count) {
    std::string object = R"({"pattern": "b", "text": "b")";
    for (int i = 0; i < count; ++i)
        object += ",\"" + std::to_string(i) + "\":1";
    return object + "}";
}

TEST_F(Syntax, BatchAnswersEachLineAndGoesOn) {
    const std::string good = R"({"pattern": "b", "text": "ab"})";
    const std::string rows[] = {"",
                                "nonsense",
                                "[1, 2]",
                                "{\"pattern\": \"b\"",
                                R"({"pattern": "b"})",
                                R"({"text": "b"})",
                                R"({"pattern": 1, "text": "b"})",
                                R"({"pattern": "b", "text": null})",
                                R"({"pattern": "b", "text": "b", "ignoreCase": 1})",
                                R"({"pattern": "\u0100", "text": "b"})",
                                R"({"pattern": "b", "text": "\ud83d\ude00"})",
                                R"({"pattern": "b", "text": "\ud800"})",
                                "{\"pattern\": \"b\", \"text\": \"\xff\"}",
                                std::string("\0{}", 3),
                                good + std::string("\0 more", 6),
                                ManyKeys(80'000),
                                std::string(3'000'000, '['),
                                "{\"a\":" + std::string(200, '[') + std::string(200, ']') + "}",
                                "\"" + std::string(3'000'000, 'x'),
                                R"({"pattern": 1e999, "text": "b"})"};
    std::string lines;
    for (const std::string& row : rows)
        lines += row + "\n" + good + "\r\n";
    lines += good; // no line end
    const std::vector<json> answers = Batch(lines);
    ASSERT_EQ(answers.size(), 2 * std::size(rows) + 1);
    for (std::size_t i = 0; i < answers.size(); ++i) {
        if (i % 2 == 0 && i < 2 * std::size(rows)) {
            EXPECT_TRUE(answers[i].contains("error")) << rows[i / 2].substr(0, 80);
            EXPECT_EQ(answers[i].size(), 1u);
        } else {
            EXPECT_EQ(answers[i]["start"], 1) << i;
        }
    }
}

TEST_F(Syntax, BatchTakesEveryByteAndLongLines) {
    const std::string long_text(5'000'000, 'a');
    const std::vector<json> answers =
        Batch(R"({"pattern": "\u00ff\u0080", "text": "\u0001\u00ff\u0080"})"
              "\n"
              R"({"pattern": "B", "text": "ab\u0000b"})"
              "\n{\"pattern\": \"b\", \"text\": \"" +
                  long_text + "b\"}\n",
              {"--ignore-case"});
    ASSERT_EQ(answers.size(), 3u);
    const std::size_t starts[] = {1, 1, long_text.size()};
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(answers[i]["start"], starts[i]);
}

} // namespace
