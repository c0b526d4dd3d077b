#include <new>

#include <gtest/gtest.h>

#include "breaking_desk.h"
#include "headless_desk.h"

namespace {

class DeafSink : public IWindowSink {
public:
    std::intptr_t HandleMessage(unsigned, std::uintptr_t, std::intptr_t) override { return 0; }
    void HandlePaint(IBackendSurface&, bool) override {}
};

class OkDialog : public IDialogSink {
public:
    void DialogShown(IBackendDialog& dialog) override { dialog.End(kIdOk); }
    void ControlNotice(unsigned, unsigned) override {}
};

std::unique_ptr<IBackendPrinter> Ask(IBackendDesk& desk) {
    PrintRequest request;
    return desk.AskPrinter(request);
}

/// A job of two pages. @return the pages that came out, 100 more when it came to its end
int PrintTwoPages(IBackendDesk& desk) {
    const std::unique_ptr<IBackendPrinter> job = Ask(desk);
    int pages = 0;
    if (!job || !job->StartDocument(u"opamp"))
        return pages;
    for (; pages < 2; ++pages)
        if (!job->StartPage() || !job->EndPage())
            return pages;
    return job->EndDocument() ? pages + 100 : pages;
}

/// How one sees that an operation works.
struct Outcome {
    const char* m_Name;
    BreakableOperation m_Operation;
    std::function<bool(IBackendDesk&)> m_Works;
};

const Outcome kOutcomes[] = {
    {"clipboard read", kBreakClipboardRead,
     [](IBackendDesk& desk) { return desk.GetClipboardText().has_value(); }},
    {"clipboard write", kBreakClipboardWrite,
     [](IBackendDesk& desk) { return desk.SetClipboardText(u"R1"); }},
    {"font", kBreakFont,
     [](IBackendDesk& desk) {
         try {
             return desk.CreateFont({}) != nullptr;
         } catch (const std::bad_alloc&) {
             return false;
         }
     }},
    {"window", kBreakWindow,
     [](IBackendDesk& desk) {
         DeafSink sink;
         return desk.CreateWindow(WindowKind::view, nullptr, sink) != nullptr;
     }},
    {"file", kBreakFile, [](IBackendDesk& desk) { return desk.AskFile({}).has_value(); }},
    {"colour", kBreakColor, [](IBackendDesk& desk) { return desk.AskColor(0, {}).has_value(); }},
    {"dialog", kBreakDialog,
     [](IBackendDesk& desk) {
         OkDialog dialog;
         return desk.RunDialog({}, {}, dialog) == kIdOk;
     }},
    {"drag", kBreakDrag,
     [](IBackendDesk& desk) { return desk.DragText(u"R1") != DropEffect::none; }},
    {"printer", kBreakPrinter, [](IBackendDesk& desk) { return Ask(desk) != nullptr; }},
    {"print start", kBreakPrintStart,
     [](IBackendDesk& desk) {
         const auto job = Ask(desk);
         return !job || job->StartDocument(u"opamp");
     }},
    {"print end", kBreakPrintEnd,
     [](IBackendDesk& desk) {
         const auto job = Ask(desk);
         return !job || job->EndDocument();
     }},
};

} // namespace

TEST(BreakingDeskTest, OneOperationBreaksAndTheOthersGoThrough) {
    HeadlessDesk inner;
    BreakingDesk desk(inner);
    inner.m_DropEffect = DropEffect::copy;
    for (const Outcome& broken : kOutcomes) {
        for (const Outcome& tried : kOutcomes) {
            inner.m_Clipboard = u"text";
            inner.m_FileAnswers = {u"a.cir"};
            inner.m_ColorAnswers = {0xFF};
            desk.m_Broken = broken.m_Operation;
            EXPECT_EQ(tried.m_Works(desk), tried.m_Operation != broken.m_Operation)
                << tried.m_Name << " with broken " << broken.m_Name;
        }
    }
    EXPECT_EQ(inner.m_Clipboard, AString(u"text"));
}

TEST(BreakingDeskTest, ThePrinterIsLostAtThePageChosen) {
    HeadlessDesk inner;
    BreakingDesk desk(inner);
    const struct {
        unsigned m_Broken;
        int m_Page, m_Printed, m_Started;
    } kRows[] = {{kBreakPrintPage, 1, 0, 0},
                 {kBreakPrintPage, 2, 1, 1},
                 {kBreakPrintPageEnd, 2, 1, 2},
                 {kBreakPrintPage, 3, 102, 2}};
    for (const auto& row : kRows) {
        desk.m_Broken = row.m_Broken;
        desk.m_LostPage = row.m_Page;
        EXPECT_EQ(PrintTwoPages(desk), row.m_Printed);
        EXPECT_EQ(static_cast<int>(inner.m_PrintJobs.back()->m_Pages.size()), row.m_Started);
    }
}
