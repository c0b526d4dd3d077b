#include <atomic>
#include <csignal>
#include <random>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>

#include "desk_stage.h"

namespace {

constexpr int kKills = 60;
constexpr int kPause = 3; // milliseconds

/// What the process that types tells the one that kills it.
struct Progress {
    std::atomic<int> m_Typed{0};
    std::atomic<int> m_Kept{0}; ///< how much had been typed when the texts were kept last
};

char CharacterAt(int index) {
    return static_cast<char>('a' + index % 26);
}

/// Types until it is killed: in bursts with a pause between, or without any.
[[noreturn]] void TypeForever(Progress& progress, const std::string& folder, bool pauses) {
    RecoveryStore store;
    if (!store.Open(folder))
        _exit(1);
    OpenDocuments documents(Core());
    OpenDocument* const document = documents.Create(EditorSort::netlist, QStringLiteral("one"));
    RecoveryTimer timer(
        store, [&] { return documents.GetAll(); }, [](const std::string&) { _exit(2); });
    timer.SetPause(kPause);
    timer.m_OnKept = [&] { progress.m_Kept = progress.m_Typed.load(); };
    for (;;) {
        const int at = progress.m_Typed++;
        document->GetEditor().m_Driver->InsertChar(0, at, CharacterAt(at), true);
        document->GetEditor().m_Driver->NotifyEdited(0);
        timer.Look();
        QApplication::processEvents();
        const bool rests = pauses && at % 7 == 6;
        while (rests && progress.m_Kept <= at)
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void ExpectTyped(const std::string& text) {
    for (int i = 0; i < static_cast<int>(text.size()); ++i)
        ASSERT_EQ(text[static_cast<std::size_t>(i)], CharacterAt(i)) << i;
}

TEST_F(DeskTest, NoMoreIsLostByAKillThanWhatWasTypedSinceTheLastPause) {
    void* const shared =
        mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(shared, MAP_FAILED);
    std::mt19937 random(20);
    for (int kill = 0; kill < kKills; ++kill) {
        auto& progress = *new (shared) Progress;
        const std::string folder = PathOf("recovery-" + std::to_string(kill));
        const pid_t typist = fork();
        if (typist == 0)
            TypeForever(progress, folder, kill % 2 == 0);
        while (progress.m_Kept == 0 && waitpid(typist, nullptr, WNOHANG) == 0)
            usleep(200);
        usleep(static_cast<useconds_t>(random() % 20000));
        ::kill(typist, SIGKILL);
        int status = 0;
        waitpid(typist, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << WEXITSTATUS(status);

        RecoveryStore store;
        ASSERT_TRUE(store.Open(folder));
        const std::vector<RecoveredText> texts = store.TakeOrphans();
        ASSERT_EQ(texts.size(), 1u);
        EXPECT_GE(static_cast<int>(texts[0].m_Archive.size()), progress.m_Kept);
        EXPECT_LE(static_cast<int>(texts[0].m_Archive.size()), progress.m_Typed);
        ExpectTyped(texts[0].m_Archive);
        store.Forget(texts[0].m_Id);
    }
    munmap(shared, sizeof(Progress));
}

TEST_F(DeskTest, WhatIsSavedOrClosedIsNotOfferedAgain) {
    const std::string folder = PathOf("recovery");
    RecoveryStore other;
    for (const int answer : {0, 1}) {
        RecoveryStore store;
        ASSERT_TRUE(store.Open(folder));
        RecoveryTimer timer(
            store, [this] { return m_Documents.GetAll(); }, [](const auto&) {});
        OpenDocument& document = OpenBytes("a.cir", "mine\n");
        Type(document, "x");
        timer.KeepAll();
        EXPECT_EQ(document.m_KeptChange, document.GetEditor().m_Inspector->GetChangeCount());
        EXPECT_TRUE(answer == 1 || m_Files.Save(document));
        timer.Forget(document);
        m_Documents.Remove(document);
    }
    ASSERT_TRUE(other.Open(folder));
    EXPECT_TRUE(other.TakeOrphans().empty());
}

TEST_F(DeskTest, RecoveredTextsComeBackUnsavedWithFormAndCaret) {
    WriteBytes(PathOf("a.vbs"), "on disk\n");
    FileSession known;
    std::string archive;
    ASSERT_TRUE(known.Load(PathOf("a.vbs"), archive));
    {
        RecoveryStore dead;
        ASSERT_TRUE(dead.Open(Core().GetRecoveryFolder()));
        ASSERT_TRUE(dead.Keep({.m_Id = "text-0",
                               .m_Path = PathOf("a.vbs"),
                               .m_Title = "a.vbs",
                               .m_Editor = "vbscript",
                               .m_KnownFile = known.GetKnownDisk(),
                               .m_Form = {FileEncoding::utf8, true, LineEnds::crLf},
                               .m_Caret = {1, 2},
                               .m_Archive = "one\r\ntwo \xB5\r\n"}));
    }
    m_Answers = {0};
    m_Files.OfferRecovered();
    const std::vector<OpenDocument*> all = m_Documents.GetAll();
    ASSERT_EQ(all.size(), 1u);
    EXPECT_TRUE(all[0]->IsModified());
    EXPECT_EQ(all[0]->GetSort(), EditorSort::vbScript);
    EXPECT_EQ(all[0]->GetEditor().m_Inspector->GetCaret()->m_Caret, (TextPosition{1, 2}));
    WriteBytes(PathOf("a.vbs"), "by others\n");
    m_Answers = {1};
    EXPECT_FALSE(m_Files.Save(*all[0])) << "the file isn't the one that was known";
    WriteBytes(PathOf("a.vbs"), "on disk\n");
    EXPECT_TRUE(m_Files.Save(*all[0]));
    EXPECT_EQ(m_Asked.size(), 2u);
    EXPECT_EQ(ReadBytes(PathOf("a.vbs")), "\xEF\xBB\xBFone\r\ntwo \xC2\xB5\r\n");
}

} // namespace
