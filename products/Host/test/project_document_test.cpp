// The example of doc/project-file.md: what the document shows is what is read and written.

#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "project_law.h"

namespace {

TEST(ProjectDocument, TheExampleIsWrittenAsItIsRead) {
    std::ifstream file(QUOREL_SOURCE_DIR "/doc/project-file.md");
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const std::string open = "```project\n";
    const std::size_t start = text.find(open) + open.size();
    const std::string example = text.substr(start, text.find("```", start) - start);
    Project project;
    std::vector<ProjectProblem> problems;
    ASSERT_TRUE(ReadProject(example, project, problems));
    EXPECT_TRUE(problems.empty());
    EXPECT_EQ(project_law::Dump(project),
              "Amplifier\ndesign input filter: R1 in out 4.7k\n"
              "C1 out 0 3.3n\t; the corner is at 10 kHz#2\n"
              "instance left[1 -1 -1 -1 -1 0 0 640 480 ]\ninstance right\n"
              "script sweep VBScript used: ' the report of a sweep\nReport \"left\"#2\n"
              "\nkept \nbehind ");
    for (const auto& script : project.m_Designs.at(0)->m_Scripts)
        script->m_Text = ProjectText(script->m_Text.Get());
    EXPECT_EQ(WriteProject(project), example);
}

} // namespace
