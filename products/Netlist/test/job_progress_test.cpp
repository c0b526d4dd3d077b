/// Long jobs that the user watches and stops.
#include "breaking_desk.h"
#include "job_progress.h"
#include "view_script.h"

namespace {

class WatchingDesk : public BreakingDesk, public IProgressDesk {
public:
    using BreakingDesk::BreakingDesk;
    bool ShowProgress(const AString&, int thousandths) override {
        EXPECT_GE(thousandths, m_Shown);
        m_Shown = thousandths;
        return thousandths < m_StopAt;
    }
    void EndProgress() override { ++m_Ends; }

    int m_StopAt = 1001;
    int m_Shown = 0;
    int m_Ends = 0;
};

class JobProgress : public ScriptTest {
protected:
    JobProgress() {
        CJobProgress::s_Interval = std::chrono::milliseconds(0);
        SetBackend(&m_Watching);
    }
    ~JobProgress() override {
        CJobProgress::s_Interval = std::chrono::milliseconds(50);
        SetBackend(&m_Desk);
    }

    WatchingDesk m_Watching{m_Desk};
};

TEST_F(JobProgress, AStoppedReplaceAllIsTakenBackByUndo) {
    Start("|a\na\na\na");
    m_Watching.m_StopAt = 500;
    Play("all:a:bc");
    EXPECT_EQ(Editor().m_Inspector->GetLineText(1), "bc");
    EXPECT_EQ(Editor().m_Inspector->GetLineText(3), "a");
    EXPECT_EQ(m_Watching.m_Ends, 1);
    Play("undo*9");
    EXPECT_EQ(Editor().m_Inspector->GetLineText(1), "a");
}

TEST_F(JobProgress, AStoppedLoadLeavesNothing) {
    Start("|old");
    const std::string bytes(1 << 20, '\n');
    EXPECT_TRUE(Editor().m_Driver->LoadArchive(bytes, true));
    EXPECT_EQ(Editor().m_Inspector->GetLineCount(), 1 << 20);
    m_Watching.m_Shown = 0;
    m_Watching.m_StopAt = 700;
    EXPECT_FALSE(Editor().m_Driver->LoadArchive(bytes, true));
    EXPECT_EQ(Editor().m_Inspector->GetLineCount(), 1);
    EXPECT_EQ(m_Watching.m_Ends, 2);
    m_Watching.m_Shown = 0;
    EXPECT_TRUE(Editor().m_Driver->LoadArchive(std::string(1 << 20, 'x'), true));
    EXPECT_EQ(m_Watching.m_Shown, 0) << "asked while the text has no line";
}

} // namespace
