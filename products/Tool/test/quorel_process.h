/// Running the command as a process, in a folder of the test's own.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using nlohmann::json;

struct Ran {
    int code;
    std::string out;
    std::string err;
};

class QuorelProcess : public testing::Test {
protected:
    QuorelProcess() { std::filesystem::create_directories(mFolder); }
    ~QuorelProcess() override { std::filesystem::remove_all(mFolder); }

    std::string Path(const std::string& name) const { return (mFolder / name).string(); }

    std::string Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(Path(name), std::ios::binary) << bytes;
        return Path(name);
    }

    static std::string Read(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /// Runs it with that standard input. A signal gives 128 and more.
    Ran Run(const std::vector<std::string>& arguments, const std::string& input = {}) const {
        std::string line = "env " + mEnvironment + " " + Quote(mProgram);
        for (const std::string& argument : arguments)
            line += " " + Quote(argument);
        line += " <" + Quote(Write("stdin", input)) + " >" + Quote(Path("stdout")) + " 2>" +
                Quote(Path("stderr"));
        const int status = std::system(line.c_str());
        return {WEXITSTATUS(status), Read(Path("stdout")), Read(Path("stderr"))};
    }

    /// The answers to the lines of a batch, one for each; the run itself goes well.
    std::vector<json> RunBatch(const std::vector<std::string>& arguments,
                               const std::string& lines) const {
        const Ran ran = Run(arguments, lines);
        EXPECT_EQ(ran.code, 0) << ran.err;
        EXPECT_EQ(ran.err, "");
        std::vector<json> answers;
        std::istringstream stream(ran.out);
        for (std::string line; std::getline(stream, line);)
            answers.push_back(json::parse(line));
        return answers;
    }

    std::string mProgram = QUOREL_BIN_DIR "/quorel";
    std::string mEnvironment = "QUOREL_DATA_DIR=" QUOREL_SOURCE_DIR;

private:
    static std::string Quote(const std::string& text) {
        std::string quoted = "'";
        for (const char c : text)
            quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
        return quoted + "'";
    }

    const std::filesystem::path mFolder =
        std::filesystem::path(testing::TempDir()) /
        (std::string("quorel-") + testing::UnitTest::GetInstance()->current_test_info()->name());
};
