// Project files: what is read, what is kept, what is written, and that a save is all or nothing.

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <regex>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "atomic_file.h"
#include "project_law.h"

namespace {

using project_law::Dump;
using project_law::FindBrokenLaw;

Project Read(const std::string& bytes, std::vector<ProjectProblem>* problems = nullptr) {
    Project project;
    std::vector<ProjectProblem> found;
    const sys::Status status = ReadProject(bytes, project, problems ? *problems : found);
    EXPECT_TRUE(status) << status.reason;
    return project;
}

std::string LinesOf(const std::vector<ProjectProblem>& problems) {
    std::string text;
    for (const ProjectProblem& problem : problems)
        text += std::to_string(problem.m_Line) + ": " + problem.m_Message + "\n";
    return text;
}

std::string ReadBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// --- Texts ---

Project MakeProject(const AString& text) {
    Project project;
    project.m_Name = text;
    auto& design = *project.m_Designs.emplace_back(std::make_unique<ProjectDesign>());
    design.m_Netlist = ProjectText(text);
    auto& script = *design.m_Scripts.emplace_back(std::make_unique<ProjectScript>());
    script.m_Language = text;
    script.m_Text = ProjectText(text + u"\n");
    return project;
}

TEST(ProjectTexts, KeepEveryCharacter) {
    std::vector<AString> texts{u"",        u"\n",    u"\n\na\n", u"' \" \\ ! $end 'x'",
                               u"tab\t\\", u"a\r\nb"};
    for (unsigned start = 0; start < 0x10000; start += 0x100) {
        AString all;
        for (unsigned unit = start; unit < start + 0x100; ++unit) {
            all += static_cast<char16_t>(unit);
            all += unit % 3 == 0 ? u"\n" : unit % 3 == 1 ? u"0" : u"";
        }
        texts.push_back(all);
    }
    for (const AString& text : texts) {
        const Project written = MakeProject(text);
        std::vector<ProjectProblem> problems;
        const Project read = Read(WriteProject(written), &problems);
        EXPECT_EQ(LinesOf(problems), "");
        ASSERT_EQ(Dump(read), Dump(written));
        EXPECT_EQ(read.m_Name, text);
        EXPECT_EQ(read.m_Designs[0]->m_Netlist.Get(), text);
        EXPECT_EQ(read.m_Designs[0]->m_Scripts[0]->m_Language, text);
    }
}

TEST(ProjectTexts, StayBytesOfTheFileUntilTheyAreAnother) {
    // Written as another program would: its bytes come back.
    const std::string body = "\t\t\tLine=\"R1\"  ! a resistor\r\n Line='a\\\nb' Line=word\n";
    const Project project = Read("$begin 'Project'\n\t$begin 'Design'\n$begin 'Text'\r\n" + body +
                                 "\t\t$end 'Text'\n$end\n$end");
    ProjectText& text = project.m_Designs.at(0)->m_Netlist;
    EXPECT_TRUE(text.IsOfFile());
    EXPECT_EQ(text.CountLines(), 4u);
    EXPECT_EQ(text.Get(), u"R1\na\nb\nword");
    text.Set(u"R1\na\nb\nword");
    EXPECT_NE(WriteProject(project).find("$begin 'Text'\n" + body + "\t\t$end"), std::string::npos);
    text.Set(u"R2\n");
    EXPECT_EQ(text.CountLines(), 2u);
    EXPECT_NE(WriteProject(project).find("'Text'\n\t\t\tLine='R2'\n\t\t\tLine=''\n\t\t$end"),
              std::string::npos);
}

// --- What is not understood ---

TEST(ProjectFile, KeepsWhatItDoesNotUnderstandAtTheEndOfItsBlock) {
    struct Case {
        const char* inside; ///< the project's block
        const char* problems;
        const char* kept; ///< in the written project, in front of its end
    };
    const Case cases[] = {
        {"\tName='a' ! b\n", "", ""},
        {"\tjunk here ! why\n", "2: expected a '(' or a '='\n", "\tjunk here ! why\n"},
        {"Name='a' Other=1 Name='b'\n",
         "2: 'Other' is not known in 'Project'\n2: 'Name' stands here already\n",
         "Other=1\nName='b'\n"},
        {"\tName=5\n\tName='a'\n", "2: 'Name' has no value of its kind\n", "\tName=5\n"},
        {"\tA(1,\r\n\t\t'b')\n", "2: 'A' is not known in 'Project'\n", "\tA(1,\r\n\t\t'b')\n"},
        {"\tA(1,\n\t\tb c)\n", "3: expected a ')', ']' or a ','\n", "\tA(1,\n\t\tb c)\n"},
        {"$begin 'New' $end 'Old' y\n$begin 'Design' $end\n",
         "2: 'New' is not known in 'Project'\n", "$begin 'New' $end 'Old' y\n"},
        {"A(1,", "2: 'A' is not known in 'Project'\n2: the file ends inside 'Project'\n",
         "\t$begin 'Kept'\n\t\tLine='A(1,'\n"
         "\t$end 'Kept'\n"},
        {"\t$begin 'Kept'\n\t\tLine='$end \\xE4'\n\t$end\n",
         "2: an item that can't stand by itself\n",
         "\t$begin 'Kept'\n\t\tLine='$end xE4'\n\t$end 'Kept'\n"},
    };
    for (const Case& c : cases) {
        const bool isCut = std::string_view(c.inside).back() != '\n';
        const std::string end = isCut ? "" : "$end 'Project'\n";
        const std::string bytes = std::string("$begin 'Project'\n") + c.inside + end;
        std::vector<ProjectProblem> problems;
        const std::string written = WriteProject(Read(bytes, &problems));
        EXPECT_EQ(LinesOf(problems), c.problems) << c.inside;
        EXPECT_TRUE(written.ends_with(std::string(c.kept) + "$end 'Project'\n")) << written;
        EXPECT_EQ(FindBrokenLaw(bytes).value_or(""), "");
    }
}

constexpr const char* kRefused[][2] = {
    {"", "no block 'Project' begins in it"},
    {"R1 1 2 1k\n", "no block 'Project' begins in it"},
    {"$begin 'Design'\n$end 'Design'\n", "no block 'Project' begins in it"},
    {"$begin 'Project'\nFormat=2\n$end 'Project'\n", "it is of format 2, not 1"},
};

TEST(ProjectFile, RefusesWhatIsNoProject) {
    for (const auto& [bytes, reason] : kRefused) {
        Project project;
        project.m_Name = u"old";
        std::vector<ProjectProblem> problems;
        const sys::Status status = ReadProject(bytes, project, problems);
        EXPECT_FALSE(status);
        EXPECT_TRUE(status.reason.ends_with(reason)) << status.reason;
        EXPECT_EQ(project.m_Name, u"") << bytes;
    }
    Project project;
    std::vector<ProjectProblem> problems;
    EXPECT_FALSE(ReadProject(std::string("\0\f", 2), project, problems)) << "the binary form";
}

/// A faulty project with lines in it, each with a word of its own, that fit in nowhere.
class FaultyFiles : public testing::Test {
protected:
    std::string Make(int seed) {
        mRandom.seed(static_cast<unsigned>(seed));
        std::string bytes;
        std::istringstream lines(mSound);
        for (std::string line; std::getline(lines, line);) {
            bytes += line + "\n";
            if (Pick(4) == 0)
                bytes += std::regex_replace(kFaults[Pick(std::size(kFaults))], std::regex("@"),
                                            "mark" + std::to_string(mMarks++) + "x") +
                         "\n";
        }
        return bytes.substr(0, Pick(3) == 0 ? bytes.size() - Pick(60) : bytes.size());
    }
    std::size_t Pick(std::size_t below) { return mRandom() % below; }

    static constexpr const char* kFaults[] = {
        "@",          "@(1,",     "@=",     "@ = 'a\\",    "$begin '@'",      "$end '@'",
        "Name='@'",   "@(2",      "@[x:",   "  '@' = 1 @", "$begin @ $end @", "$begin\n'@'",
        "Line='@",    "Text='@'", "\xFF @", "Use = @",     "$begin_cdata$ @", "@ = (",
        "Netlist(@)", "'@\r@' x"};
    const std::string mSound =
        WriteProject(MakeProject(u"R1 in out 1k\n\nR2 \x4e2d \xd800")) + "! end\n";
    std::mt19937 mRandom;
    int mMarks = 0;
};

TEST_F(FaultyFiles, LoseNoLineAndObeyTheLaws) {
    for (int seed = 0; seed < 1500; ++seed) {
        const std::string bytes = Make(seed);
        ASSERT_EQ(FindBrokenLaw(bytes).value_or(""), "") << bytes;
        const std::string written = WriteProject(Read(bytes));
        const std::regex mark("mark[0-9]+x");
        for (std::sregex_iterator i(bytes.begin(), bytes.end(), mark), end; i != end; ++i)
            ASSERT_NE(written.find(i->str()), std::string::npos) << bytes << "\n---\n" << written;
    }
}

TEST_F(FaultyFiles, DoNoHarmHoweverDeep) {
    const char* const pieces[] = {"$begin 'x'\n",    "$begin x ",
                                  "$begin 'Kept'\n", "f(",
                                  "$begin 'Text'\n", "f(\n",
                                  "$end x\n",        "v[",
                                  "$begin\n=\n",     "$begin 'Design'\n$begin 'Script'\n"};
    for (const char* const piece : pieces) {
        std::string bytes = "$begin 'Project'\n";
        for (int i = 0; i < 20000; ++i)
            bytes += piece;
        EXPECT_EQ(FindBrokenLaw(bytes).value_or("").substr(0, 300), "") << piece;
    }
}

// --- Saving ---

/// Ends the process, or refuses, at one step of a save.
struct StepBreaker : sys::IFileWatch {
    StepBreaker(int step, bool isEnd) : mLeft(step), mIsEnd(isEnd) {}
    int Before(sys::FileStep) override {
        if (mLeft-- != 0)
            return 0;
        if (mIsEnd)
            ::_exit(1);
        return ENOSPC;
    }
    int mLeft;
    bool mIsEnd;
};

TEST(ProjectSave, LeavesTheOldFileOrTheNewOneWhole) {
    const auto folder = std::filesystem::path(testing::TempDir()) / "project_save";
    std::filesystem::create_directories(folder);
    const std::string path = (folder / "a.qproj").string();
    const Project project = MakeProject(AString(5 << 18, u'x')); // two pieces
    const std::string oldBytes = WriteProject(MakeProject(u"old"));
    const std::string newBytes = WriteProject(project);
    int newFiles = 0;
    int steps = 0;
    for (bool isDone = false; !isDone; ++steps) {
        std::ofstream(path, std::ios::binary) << oldBytes;
        const pid_t child = ::fork();
        if (child == 0) {
            StepBreaker breaker(steps, true);
            ::_exit(SaveProject(path, project, &breaker) ? 0 : 2);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        isDone = WEXITSTATUS(status) == 0;
        ASSERT_NE(WEXITSTATUS(status), 2);
        const std::string bytes = ReadBytes(path);
        ASSERT_TRUE(bytes == oldBytes || bytes == newBytes) << "ended at step " << steps;
        newFiles += bytes == newBytes;

        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder);
        std::ofstream(path, std::ios::binary) << oldBytes;
        StepBreaker breaker(steps, false);
        const bool isSaved = SaveProject(path, project, &breaker).IsOk();
        EXPECT_EQ(ReadBytes(path), isSaved ? newBytes : oldBytes) << "refused at step " << steps;
        const auto files = std::distance(std::filesystem::directory_iterator(folder), {});
        EXPECT_EQ(files, 1) << "something is left beside it";
    }
    EXPECT_GT(steps, 8);
    EXPECT_EQ(newFiles, 2) << "the whole save, and the one that ends behind the rename";
    std::filesystem::remove_all(folder);
}

} // namespace
