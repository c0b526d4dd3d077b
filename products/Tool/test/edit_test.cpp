/// quorel edit: scripts, their answers, and files.
#include "quorel_process.h"

namespace {

class Edit : public QuorelProcess {
protected:
    /// The answers to the lines of a batch, without colours unless `more` says so.
    std::vector<json> Batch(const std::string& lines,
                            std::vector<std::string> more = {"--config", "none"}) {
        more.insert(more.begin(), {"edit", "--batch"});
        return RunBatch(more, lines);
    }
};

/// A line of a batch, and members that its answer has.
struct Row {
    const char* request;
    const char* expected;
};

} // namespace

TEST_F(Edit, DoesWhatTheScriptSays) {
    const Row rows[] = {
        {R"({})", R"({"lines":[""],"tabs":[[]],"text":"","saved":"","caret":[0,0],"wantedColumn":0,
            "insertMode":true,"selected":false,"block":false,"topRow":0,"maxLineLength":1000,
            "linesPerPage":25,"modified":false,"bookmarks":[],"bookmarkCount":0,"colors":[[]],
            "rangeIn":[-1],"rangeOut":[-1],"undo":[],"redo":[],"commands":{"done":0,"undone":0},
            "clipboard":"","findBox":"","findHistory":[],"prompts":[],
            "title":"quorel - Netlist","language":""})"},
        {R"({"text":"a\tb\r\n\u00e9","script":["caret 1 9","type \"\\\"\\\\\\t\\xb5\" ","  # none",""]})",
         R"({"lines":["a   b","\u00e9\"\\ \u00b5"],"tabs":[[[1,3]],[[3,1]]],"saved":"a\tb\r\n\u00e9\"\\\t\u00b5",
             "text":"a\tb\n\u00e9\"\\\t\u00b5","caret":[1,5],"modified":true,"maxLineLength":1000})"},
        {R"({"script":["type \u20ac\ud83d\ude00\u0416","type \"\\n\\r\\x00\\x80\""]})",
         R"({"lines":["\u0080??\u0080"],"text":"\u20ac??\u20ac"})"},
        {R"({"text":"one two","script":["key Ctrl+Right","key Shift+Right 2","key Ctrl+c","key End",
             "key Shift+Insert","key Backspace","key Insert"]})",
         R"({"lines":["one twot"],"clipboard":"tw","insertMode":false,"caret":[0,8]})"},
        {R"({"text":"abc","script":["key Delete 2","command 57643","command 1","undo","undo-edit 9",
             "redo"]})",
         R"({"lines":["bc"],"commands":{"done":2,"undone":0},"undo":[{"type":0,"row":0,"column":0,"endColumn":-1,"endRow":-1,"first":1,
             "char":97,"string":"DelChar","tabs":[]}],"redo":[{"type":0,"row":0,"column":0,
             "endColumn":-1,"endRow":-1,"first":1,"char":98,"string":"DelChar","tabs":[]}]})"},
        {R"({"editor":"javascript","script":["type ab","undo","command 57643","redo"]})",
         R"({"lines":["a"],"commands":{"done":1,"undone":1}})"},
        {R"({"options":{"NumberOfCommands":2},"script":["type abcd","undo 9","clipboard x",
             "command 57637","redo","undo"]})",
         R"({"lines":["ab"],"commands":{"done":0,"undone":2}})"},
        {R"({"text":"abc\r\nd\r\nefg","script":["drag 0 1 2 2 alt"]})",
         R"({"selected":true,"block":true,"anchor":[0,1],"end":[2,2],"caret":[2,2]})"},
        {R"({"text":"ab{cd}\r\nef","script":["drag 0 4 1 1","drag 0 5 0 0"]})",
         R"({"selected":true,"anchor":[0,4],"end":[1,1]})"}, // dragged in vain
        {R"({"text":"ab{cd}\r\nef","script":["drag 0 1 1 1","drag 0 4 0 4"]})",
         R"({"selected":false,"caret":[0,4]})"},
        {R"({"text":"ab{cd}","script":["double-click 0 5"]})",
         R"({"selected":true,"anchor":[0,3],"end":[0,5]})"},
        {R"({"text":"0\n1\n2\n3\n4\n5\n6\n7\n8\n9","window":[20,3],"script":["drag 0 0 7 1"]})",
         R"({"topRow":5,"end":[7,1],"linesPerPage":3})"},
        {R"({"text":"0\n1\n2\n3\n4\n5\n6\n7\n8\n9","window":[20,3],"script":["wheel -240","scroll line-up",
             "scroll page-down","scroll line-down","scroll page-up"]})",
         R"({"topRow":5,"caret":[0,0]})"},
        {R"({"text":"0\n1\n2\n3\n4\n5\n6\n7\n8\n9","window":[20,3],"script":["caret 2147483647 5",
             "scroll page-up","caret 4 0"]})",
         R"({"topRow":4,"caret":[4,0]})"},
        {R"({"script":["clipboard \"a\\tb\\nc\u20ac\"","command 57637"]})",
         R"({"lines":["a   b","c\u0080"],"clipboard":"a\tb\nc\u20ac"})"},
        {R"({"text":"x aB\nab","script":["find ab","find ab --case","replace Ab \"\" --up","find-box q"]})",
         R"({"selected":true,"anchor":[0,2],"findBox":"q","findHistory":["Ab","ab"],"prompts":[]})"},
        {R"({"text":"x aB\nab","script":["find ab --case","replace ab \"c d\" --case","replace ab e"]})",
         R"({"lines":["x aB","c d"],"selected":true,"anchor":[0,2],"end":[0,4]})"},
        {R"({"text":"aa","script":["replace-all a bb","find Q","go-to x","key Ctrl+F","command 42000"]})",
         R"({"lines":["bbbb"],"prompts":[{"text":"Cannot find string:\"q\"","style":16},
             {"text":"Please enter an integer.","style":48}]})"},
        {R"({"text":"a\nb\nc","script":["go-to 3","key Ctrl+F2","go-to 4","go-to 0"]})",
         R"({"caret":[2,0],"bookmarks":[2],"bookmarkCount":1})"},
        {R"({"editor":"vbscript","script":["language JavaScript"]})",
         R"({"language":"JavaScript"})"},
        {R"({"text":"ab ","options":{"DropBlanksOnSave":1,"NumberOfUndos":"2"},
             "script":["caret 0 0","type xyz"]})",
         R"({"saved":"xyzab","undo":[
             {"type":1,"row":0,"column":1,"endColumn":-1,"endRow":-1,"first":1,"char":121,"string":"y","tabs":[]},
             {"type":1,"row":0,"column":2,"endColumn":-1,"endRow":-1,"first":1,"char":122,"string":"z","tabs":[]}]})"}};
    std::string lines;
    for (const Row& row : rows)
        lines += json::parse(row.request).dump() + "\n";
    lines += "{}\n"; // nothing of the others is left
    const std::vector<json> answers = Batch(lines);
    ASSERT_EQ(answers.size(), std::size(rows) + 1);
    EXPECT_EQ(answers.back(), answers.front());
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        const json expected = json::parse(rows[i].expected);
        for (const auto& [member, value] : expected.items())
            EXPECT_EQ(answers[i][member], value) << rows[i].request << " " << member;
    }
}

TEST_F(Edit, RefusesWhatItCannotDo) {
    const Row rows[] = {
        {R"({"script":["type x","# one","jump"]})", "line 3: 'jump' is no action"},
        {R"({"script":["Type x"]})", "line 1: 'Type' is no action"},
        {R"({"script":["type"]})", "line 1: this isn't: type TEXT"},
        {R"({"script":["type a b"]})", "line 1: this isn't: type TEXT"},
        {R"({"script":["type \"a"]})", "line 1: a quote is missing"},
        {R"({"script":["type \"a\"b"]})", "line 1: a quote stands beside a word"},
        {R"({"script":["type \"\\x4\""]})", "line 1: \\x stands without two hexadecimal digits"},
        {R"({"script":["caret 1"]})", "line 1: this isn't: caret ROW COLUMN"},
        {R"({"script":["caret 1 -1"]})", "line 1: this isn't: caret ROW COLUMN"},
        {R"({"script":["caret 1 2147483648"]})", "line 1: this isn't: caret ROW COLUMN"},
        {R"({"script":["key Left 1000001"]})", "line 1: this isn't: key KEY [COUNT]"},
        {R"({"script":["key Left 1 1"]})", "line 1: this isn't: key KEY [COUNT]"},
        {R"({"script":["key Meta+Left"]})", "line 1: this isn't: key KEY [COUNT]"},
        {R"({"script":["key Ctrl+Q"]})", "line 1: this isn't: key KEY [COUNT]"},
        {R"({"script":["find a --down"]})", "line 1: this isn't: find TEXT [--case] [--up]"},
        {R"({"script":["language VBScript"]})", "line 1: a netlist has no language"},
        {R"({"script":"type x"})", "\"script\" is not an array"},
        {R"({"script":[1]})", "\"script\" is not an array of strings"},
        {R"({"text":"\u0100"})", "\"text\" holds a character above U+00FF"},
        {R"({"options":[]})", "\"options\" is not an object"},
        {R"({"options":{"a":true}})",
         "\"options\" is an object with a value that is neither number nor string"},
        {R"({"editor":"perl"})", "\"editor\" is not netlist, javascript or vbscript"},
        {R"({"window":[0,25]})", "\"window\" is not two numbers from 1 to 1000"},
        {R"({"window":[80,99999999999999999999]})", "\"window\" is not two numbers from 1 to 1000"},
        {"[]", "not an object"}};
    std::string lines;
    for (const Row& row : rows)
        lines += std::string(row.request) + "\n";
    const std::vector<json> answers = Batch(lines + "\xFF\n{\n");
    ASSERT_EQ(answers.size(), std::size(rows) + 2);
    for (std::size_t i = 0; i < std::size(rows); ++i)
        EXPECT_EQ(answers[i], (json{{"error", rows[i].expected}})) << rows[i].request;
    EXPECT_TRUE(answers[answers.size() - 2].contains("error"));
    EXPECT_TRUE(answers.back().contains("error"));
}

TEST_F(Edit, EditsFiles) {
    const std::string file = Write("a.cir", "R1 a b 1k\r\n\xE9\r\n");
    const std::string utf8 = Write("b.cir", "\xC3\xA9\r\n");
    const std::string script = Write("do", "# both\r\nreplace-all 1k 2k\r\n\r\ncommand 57642\n");
    const std::string out = Path("out.cir");
    const std::tuple<std::vector<std::string>, int, std::string> rows[] = {
        {{}, 0, ""},
        {{file}, 0, "R1 a b 1k\n\xE9\n"},
        {{"--as-text", utf8, "--script", Write("type", "type \xC3\xBC")}, 0, "\xC3\xBC\xC3\xA9\n"},
        {{file, "--script", script, "--output", "-"}, 0, "R1 a b 2k\r\n\xE9\r\n"},
        {{"--as-text", file}, 1, ""},
        {{file, "--script", Write("bad", "type \xFF"), "--output", out}, 1, ""},
        {{Path("none")}, 3, ""},
        {{file, "--output", Path("none/out")}, 3, ""},
        {{"--as-text"}, 2, ""},
        {{"-", "--script", "-"}, 2, ""},
        {{file, "--batch"}, 2, ""},
        {{"--window", "80x1001"}, 2, ""},
        {{"--json", "--output", "-"}, 2, ""}};
    for (const auto& [givenArguments, code, output] : rows) {
        std::vector<std::string> arguments = {"edit"};
        arguments.insert(arguments.end(), givenArguments.begin(), givenArguments.end());
        const Ran ran = Run(arguments);
        EXPECT_EQ(ran.code, code) << ran.err << testing::PrintToString(givenArguments);
        EXPECT_EQ(ran.out, output) << testing::PrintToString(givenArguments);
        EXPECT_EQ(ran.err.empty(), code == 0) << testing::PrintToString(givenArguments);
    }
    EXPECT_FALSE(std::filesystem::exists(out));
    EXPECT_EQ(Run({"edit", file, "--script", script, "--output", out}).out, "");
    EXPECT_EQ(Read(out), "R1 a b 2k\r\n\xE9\r\n");
}

TEST_F(Edit, WritesStatesAsJson) {
    const Ran ran = Run({"edit", "--json", "--script", "-", "--editor", "javascript", "--option",
                         "NumberOfUndos=0", "--window", "10x2"},
                        "type var\nstate\ntype \"/*\"");
    EXPECT_EQ(ran.err, "");
    std::istringstream lines(ran.out);
    std::string first, last, more;
    ASSERT_TRUE(std::getline(lines, first) && std::getline(lines, last)) << ran.out;
    EXPECT_FALSE(std::getline(lines, more));
    EXPECT_EQ(json::parse(first)["lines"], json({"var"}));
    EXPECT_NE(json::parse(first)["colors"][0], json::array());
    const json state = json::parse(last);
    EXPECT_EQ(state["lines"], json({"var/*"}));
    EXPECT_NE(state["rangeOut"], json({-1}));
    EXPECT_EQ(state["undo"], json::array());
    EXPECT_EQ(state["linesPerPage"], 2);
    EXPECT_EQ(state["language"], "JavaScript");
}
