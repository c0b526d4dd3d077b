// quorel project: what is listed, and how it ends.

#include "quorel_process.h"

namespace {

class ProjectCommand : public QuorelProcess {
protected:
    const std::string mSample = QUOREL_SOURCE_DIR "/samples/amplifier.qproj";
};

TEST_F(ProjectCommand, ListsTheSampleWithTheTextsOfItsFiles) {
    const Ran ran = Run({"project", "--json", mSample});
    EXPECT_EQ(ran.code, 0) << ran.err;
    const json project = json::parse(ran.out);
    EXPECT_TRUE(project["problems"].empty());
    ASSERT_EQ(project["designs"].size(), 2u);
    const json& amplifier = project["designs"][0];
    EXPECT_EQ(amplifier["name"], "amplifier");
    EXPECT_EQ(amplifier["lines"], 122);
    EXPECT_EQ(amplifier["instances"], json::parse(R"([
        {"name": "left", "windows": [[1, -1, -1, -1, -1, 0, 0, 620, 560]]},
        {"name": "right", "windows": [[5, -1, -1, -1, -1, 630, 0, 1180, 360]]}])"));
    const json& script = project["designs"][1]["scripts"][0];
    EXPECT_EQ(script["name"], "sweep");
    EXPECT_EQ(script["language"], "VBScript");
    EXPECT_EQ(script["use"], true);
    EXPECT_EQ(Run({"project", mSample}).out, "Audio: 2 designs\n"
                                             "  amplifier: 122 lines\n"
                                             "    instance left: 1 window\n"
                                             "    instance right: 1 window\n"
                                             "  filter: 65 lines\n"
                                             "    instance input: 0 windows\n"
                                             "    script sweep: VBScript, 111 lines\n"
                                             "    script values: JavaScript, 121 lines\n");
}

TEST_F(ProjectCommand, EndsWithTheExitCodeOfTheFault) {
    const std::string faulty = Write("faulty.qproj", "$begin 'Project'\n\tName='a\\tb'\n\n\todd\n"
                                                     "\t$begin 'Design'\n\t\tOther=1\n");
    const std::string none = Write("none.qproj", "R1 1 2 1k\n");
    const struct {
        std::vector<std::string> arguments;
        int code;
        std::string out;
        std::string err; ///< a part of it
    } rows[] = {
        {{faulty},
         1,
         "a\u2409b: 1 design\n  : 0 lines\n",
         faulty + ":4: expected a '(' or a '='\n" + faulty +
             ":6: 'Other' is not known in 'Design'\n" + faulty +
             ":7: the file ends inside 'Design'\n" + faulty +
             ":7: the file ends inside 'Project'\n"},
        {{"-"}, 1, "", "'-': this is no project that can be read: no block 'Project' begins in it"},
        {{none, "--json"}, 1, "", "no block 'Project'"},
        {{"/nowhere/a"}, 3, "", "'/nowhere/a': No such file"},
        {{}, 2, "", "FILE is required\nUsage: quorel project"},
    };
    for (const auto& row : rows) {
        std::vector<std::string> arguments = row.arguments;
        arguments.insert(arguments.begin(), "project");
        const Ran ran = Run(arguments);
        EXPECT_EQ(ran.code, row.code) << row.err;
        EXPECT_EQ(ran.out, row.out);
        EXPECT_NE(ran.err.find(row.err), std::string::npos) << ran.err;
    }
    const json problems = json::parse(Run({"project", "--json", faulty}).out)["problems"];
    ASSERT_EQ(problems.size(), 4u);
    EXPECT_EQ(problems[0], json::parse(R"({"line": 4, "message": "expected a '(' or a '='"})"));
}

} // namespace
