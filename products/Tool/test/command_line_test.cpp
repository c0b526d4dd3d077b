#include "quorel_process.h"

#include <csignal>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class CommandLine : public QuorelProcess {
protected:
    /// Runs a copy of the program from then on, in a folder far from any data and module.
    void CopyProgram(const std::string& folder) {
        std::filesystem::create_directories(Path(folder));
        std::filesystem::copy(mProgram, Path(folder + "quorel"));
        mProgram = Path(folder + "quorel");
    }

    const std::string mLibraries = " LD_LIBRARY_PATH=" QUOREL_BIN_DIR "/../lib";
};

TEST_F(CommandLine, EndsWithTheExitCodeOfItsFault) {
    const std::string text = Write("a.cir", "R1 a b 1k\r\n");
    const std::tuple<std::vector<std::string>, int, const char*, const char*> rows[] = {
        {{"--version"}, 0, "quorel 0.", ""},
        {{"show", text}, 0, "R1 a b 1k\n", ""},
        {{"show", "-"}, 0, "from stdin\n", ""},
        {{"syntax", "match", "b+", "abb"}, 0, "1 2\n", ""},
        {{"syntax", "match", "[a,b]", "a"}, 0, "0 1\n", ""},
        {{"syntax", "match", "", ""}, 0, "0 0\n", ""},
        {{"syntax", "match", "--", "-x", "a-x"}, 0, "1 2\n", ""},
        {{"syntax", "match", "--ignore-case", "B", "ab"}, 0, "1 1\n", ""},
        {{"syntax", "match", "x", "abb"}, 1, "", "quorel: no match\n"},
        {{"syntax", "match", "a**", "abb"}, 1, "", "quorel: nested *?+\n"},
        {{"show", "--syntax", "99", text}, 1, "", "none of index 99"},
        {{}, 2, "", "Usage: quorel [OPTIONS] COMMAND"},
        {{"nonsense"}, 2, "", "'nonsense' is no command or option\nUsage: quorel"},
        {{"show", "--bogus"}, 2, "", "'--bogus' is no command or option\nUsage: quorel show"},
        {{"syntax"}, 2, "", "Usage: quorel syntax"},
        {{"show"}, 2, "", "FILE is required\nUsage: quorel show"},
        {{"show", "--color", "sometimes", text}, 2, "", "sometimes"},
        {{"show", "--syntax", "cobol", text}, 2, "", "cobol"},
        {{"syntax", "match", "a"}, 2, "", "PATTERN and TEXT are required\nUsage"},
        {{"syntax", "match", "--batch", "a"}, 2, "", "--batch takes no PATTERN"},
        {{"show", "/nowhere/a.cir"}, 3, "", "'/nowhere/a.cir': No such file"},
        {{"show", "/"}, 3, "", "'/'"},
        {{"show", "/dev/zero"}, 3, "", "'/dev/zero'"},
        {{"show", "--config", "/nowhere/a.cfg", text}, 3, "", "'/nowhere/a.cfg'"},
        {{"syntax", "check", "/nowhere/a.cfg"}, 3, "", "'/nowhere/a.cfg'"},
        {{"tour", "/nowhere/a.cir"}, 3, "", "'/nowhere/a.cir'"}};
    for (const auto& [arguments, code, out, err] : rows) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const Ran ran = Run(arguments, "from stdin");
        EXPECT_EQ(ran.code, code);
        EXPECT_THAT(ran.out, StartsWith(out));
        EXPECT_THAT(ran.err, HasSubstr(err));
        EXPECT_EQ(ran.err.empty(), code == 0);
    }
}

TEST_F(CommandLine, ExplainsEveryCommandWithAnExample) {
    std::vector<std::vector<std::string>> commands = {
        {}, {"show"}, {"syntax"}, {"syntax", "check"}, {"syntax", "match"}, {"tour"}, {"blocks"}};
    for (const char* name : {"check", "format", "tree", "tokens", "convert", "index", "get"})
        commands.push_back({"blocks", name});
    for (auto command : commands) {
        command.push_back("--help");
        const Ran ran = Run(command);
        SCOPED_TRACE(testing::PrintToString(command));
        EXPECT_EQ(ran.code, 0);
        EXPECT_THAT(ran.out, HasSubstr("\nExample:\n  quorel "));
        EXPECT_EQ(ran.err, "");
    }
}

TEST_F(CommandLine, ReportsAFullDisk) {
    mProgram = "/bin/sh";
    for (const char* command :
         {"show " QUOREL_SOURCE_DIR "/samples/filter.cir", "--help", "show --help", "--version"}) {
        const Ran ran =
            Run({"-c", std::string(QUOREL_BIN_DIR "/quorel ") + command + " >/dev/full"});
        EXPECT_EQ(ran.code, 3) << command;
        EXPECT_THAT(ran.err, HasSubstr("standard output"));
    }
}

TEST_F(CommandLine, LeavesNoFilesAndSaysNothingWhenItsReaderGoes) {
    mProgram = "/bin/sh";
    mEnvironment = "--default-signal=PIPE " + mEnvironment;
    std::string text;
    for (int i = 0; i < 5000; ++i)
        text += "r1 1 0 1k\n";
    // The command writes, while it has the module at work, once the pipe has lost its reader, who
    // says so through a named one.
    const Ran ran =
        Run({"-c", "cd '" + Path("") + "' && mkdir tmp && mkfifo gone && (cat gone; TMPDIR=tmp " +
                       QUOREL_BIN_DIR "/quorel print --json '" + Write("a.cir", text) +
                       "'; echo $? >code) | (exec <&-; : >gone)"});
    EXPECT_EQ(ran.err, "");
    EXPECT_EQ(Read(Path("code")), std::to_string(128 + SIGPIPE) + "\n");
    EXPECT_TRUE(std::filesystem::is_empty(Path("tmp")));
}

TEST_F(CommandLine, FindsItsConfigurationByTheEnvironmentElseBesideItself) {
    CopyProgram("a/b/bin/");
    for (const char* folder : {"", "/nowhere"}) {
        mEnvironment = mLibraries + " QUOREL_DATA_DIR=" + folder;
        const Ran ran = Run({"show", "-"});
        EXPECT_EQ(ran.code, 3);
        EXPECT_THAT(ran.err, HasSubstr("NetlistEditor.cfg"));
        EXPECT_EQ(Run({"show", "--config", "none", "-"}, "x").out, "x\n");
    }
    std::filesystem::create_directories(Path("config"));
    Write("config/NetlistEditor.cfg", "");
    EXPECT_EQ(Run({"show", "-"}, "x").out, "x\n");
    EXPECT_THAT(Run({"syntax", "check"}).out, StartsWith(Path("config/NetlistEditor.cfg")));
}

// --- tour ---

TEST_F(CommandLine, TourDrivesTheModuleStepByStep) {
    const std::string file = Write("a.cir", "* a\tdeck\r\nR1 a b 1k\nR2 b 0 2k");
    const Ran ran = Run({"tour", "--color", "always", file});
    EXPECT_EQ(ran.code, 0) << ran.err;
    std::size_t from = 0;
    for (const char* step :
         {"module    ", "factory   NetlistEnvironment, makes Netlist editors\n",
          "editor    of a netlist, coloured by syntax description 2\n",
          ": 29 bytes, 3 lines, mixed line ends\n", "\x1b[38;2;", "edit      a line inserted",
          "journal   4 records:\n", "undo      4 actions, the text is as it was loaded\n",
          "redo      4 actions, the text is as it was edited\n", "export    command 42009 to ",
          ", the same as a save writes\n", "script    an editor of JavaScript:\n", "end       "}) {
        const std::size_t at = ran.out.find(step, from);
        ASSERT_NE(at, std::string::npos) << step << "\nmissing in\n" << ran.out;
        from = at;
    }
    EXPECT_EQ(Read(file), "* a\tdeck\r\nR1 a b 1k\nR2 b 0 2k") << "the file itself stays";
}

TEST_F(CommandLine, TourOfAFileThatIsEmptyOrNoText) {
    for (const std::string& bytes :
         {std::string(), std::string("\n"), std::string("\0\x1b\xff", 3)})
        EXPECT_EQ(Run({"tour", Write("a.cir", bytes)}).code, 0) << testing::PrintToString(bytes);
}

TEST_F(CommandLine, TourWithoutTheConfigurationTellsThePromptAndGoesOn) {
    CopyProgram("");
    std::filesystem::copy(QUOREL_BIN_DIR "/Netlist.so", Path("Netlist.so"));
    mEnvironment = mLibraries;
    const Ran ran = Run({"tour", Write("a.cir", "R1 a b 1k")});
    EXPECT_EQ(ran.code, 0) << ran.err;
    EXPECT_THAT(ran.out, HasSubstr("prompt    Cannot locate file 'NetlistEditor.cfg' in install "
                                   "directory or syslib directory.\n"));
    EXPECT_THAT(ran.out, HasSubstr("editor    of a netlist, without colours\n"));
}

TEST_F(CommandLine, TourNeedsTheModule) {
    CopyProgram("");
    mEnvironment += mLibraries + " XDG_DATA_HOME=" + Path("data");
    Ran ran = Run({"tour"});
    EXPECT_EQ(ran.code, 3);
    EXPECT_THAT(ran.err, HasSubstr(Path("Netlist.so")));
    Write("Netlist.so", "not a library");
    ran = Run({"tour"});
    EXPECT_EQ(ran.code, 3);
    EXPECT_THAT(ran.err, HasSubstr(Path("Netlist.so")));
}

} // namespace
