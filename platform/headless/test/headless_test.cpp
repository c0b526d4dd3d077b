#include <gtest/gtest.h>

#include "cmd_target.h"
#include "headless_desk.h"
#include "menu.h"
#include "resources.h"

namespace {

/// Notes what a window is told.
class NotingSink : public IWindowSink {
public:
    std::intptr_t HandleMessage(unsigned message, std::uintptr_t, std::intptr_t) override {
        m_Messages.push_back(message);
        if (message == kMsgMouseMove && m_Window)
            m_Window->Post(kMsgMouseMove, 0, 0); // as an endless auto-scroll does
        return 0;
    }
    void HandlePaint(IBackendSurface&, bool) override {}
    std::vector<unsigned> m_Messages;
    IBackendWindow* m_Window = nullptr;
};

/// A window of 10 by 4 cells.
class HeadlessTest : public ::testing::Test {
protected:
    HeadlessTest() {
        m_Desk.m_ClientSize = {80, 64};
        m_Window = m_Desk.CreateWindow(WindowKind::view, nullptr, m_Sink);
        Window().Update();
        Window().GetSurface().FillRect({0, 0, 80, 64}, kWhite);
    }
    HeadlessWindow& Window() { return static_cast<HeadlessWindow&>(*m_Window); }
    Cell At(int row, int column) { return Window().GetGrid().GetCell(row, column); }
    std::vector<std::u16string> Rows() {
        std::vector<std::u16string> rows;
        for (int row = 0; row < Window().GetGrid().GetRowCount(); ++row)
            rows.push_back(Window().GetGrid().GetRowText(row));
        return rows;
    }

    HeadlessDesk m_Desk;
    NotingSink m_Sink;
    std::unique_ptr<IBackendWindow> m_Window;
};

using Rows = std::vector<std::u16string>;

} // namespace

TEST_F(HeadlessTest, TextStandsInItsCellsWithItsColours) {
    IBackendSurface& surface = Window().GetSurface();
    EXPECT_EQ(surface.DrawText({8, 16}, u"R1", {nullptr, 0x112233, 0xC0C0C0, true}), 16);
    EXPECT_EQ(At(1, 1), (Cell{u'R', 0x112233, 0xC0C0C0, false}));
    surface.DrawText({8, 16}, u"C", {nullptr, 1, 2, false});
    EXPECT_EQ(At(1, 1), (Cell{u'C', 1, 0xC0C0C0, false})) << "without its background";
    surface.SetOrigin({-16, 16});
    surface.DrawText({0, 0}, u"abcdefghijklmnop", {});
    EXPECT_EQ(Rows(), (::Rows{u"", u"cdefghijkl", u"", u""})) << "cut at the window's edges";
    EXPECT_EQ(surface.GetClipBox(), (CRect{16, -16, 96, 48}));
    const CRect clip{8, 0, 24, 64};
    surface.SetClip(&clip);
    surface.DrawText({16, 16}, u"xxxx", {});
    EXPECT_EQ(Rows()[2], u" xx");
    EXPECT_EQ(Window().GetSurface().GetClipBox(), (CRect{0, 0, 80, 64})) << "starts afresh";
    EXPECT_EQ(surface.MeasureText(u"abc", nullptr), (CSize{24, 16}));
}

TEST_F(HeadlessTest, FillAndInvertTouchTheCellsWhoseMiddleTheyHold) {
    IBackendSurface& surface = Window().GetSurface();
    const struct {
        CRect m_Rect;
        CRect m_Cells; // columns and rows
    } kRows[] = {{{0, 0, 80, 64}, {0, 0, 10, 4}},     {{8, 16, 24, 32}, {1, 1, 3, 2}},
                 {{4, 8, 12, 24}, {0, 0, 1, 1}},      {{5, 9, 13, 25}, {1, 1, 2, 2}},
                 {{-40, -40, 5, 9}, {0, 0, 1, 1}},    {{-40, -40, 4, 8}, {0, 0, 0, 0}},
                 {{72, 48, 500, 500}, {9, 3, 10, 4}}, {{10, 10, 10, 60}, {0, 0, 0, 0}}};
    for (const auto& row : kRows) {
        surface.FillRect(row.m_Rect, 0xFF);
        surface.InvertRect(row.m_Rect);
        for (int r = 0; r < 4; ++r)
            for (int c = 0; c < 10; ++c) {
                const bool inside = row.m_Cells.Contains({c, r});
                EXPECT_EQ(At(r, c).m_Background, inside ? 0xFFu : kWhite) << r << ' ' << c;
                EXPECT_EQ(At(r, c).m_Inverted, inside);
            }
        surface.InvertRect(row.m_Rect);
        EXPECT_FALSE(At(0, 0).m_Inverted) << "twice gives back what was there";
        surface.FillRect({0, 0, 80, 64}, kWhite);
    }
}

TEST_F(HeadlessTest, AResizedWindowKeepsItsPictureAndIsInvalid) {
    Window().GetSurface().FillRect({8, 16, 16, 32}, 0xFF);
    Window().Resize({40, 100});
    EXPECT_EQ(m_Sink.m_Messages, std::vector<unsigned>{kMsgSize});
    EXPECT_EQ(Rows().size(), 7u);
    EXPECT_EQ(Window().GetGrid().GetColumnCount(), 5);
    EXPECT_EQ(At(1, 1).m_Background, 0xFFu);
    EXPECT_EQ(Window().GetInvalid(), (CRect{0, 0, 40, 100}));
}

TEST_F(HeadlessTest, APumpEndsThoughMessagesPostThemselves) {
    m_Sink.m_Window = m_Window.get();
    m_Window->Post(kMsgMouseMove, 0, 0);
    EXPECT_EQ(m_Desk.Pump(50), 50);
    m_Window.reset();
    EXPECT_EQ(m_Desk.Pump(), 0);
}

TEST_F(HeadlessTest, TheClipboardMayBeBusyOrEmpty) {
    EXPECT_FALSE(m_Desk.HasClipboardText());
    EXPECT_EQ(m_Desk.GetClipboardText(), std::nullopt);
    EXPECT_TRUE(m_Desk.SetClipboardText(u"R1 1 0 5k"));
    m_Desk.m_ClipboardBusy = true;
    EXPECT_FALSE(m_Desk.SetClipboardText(u"lost"));
    EXPECT_EQ(m_Desk.GetClipboardText(), std::nullopt);
    m_Desk.m_ClipboardBusy = false;
    EXPECT_EQ(m_Desk.GetClipboardText(), AString(u"R1 1 0 5k"));
}

namespace {

/// Fills its list when shown, and turns its button off.
class ListDialog : public IDialogSink {
public:
    void DialogShown(IBackendDialog& dialog) override {
        m_Dialog = &dialog;
        dialog.AddItem(5, u"Liberation Mono");
        dialog.Enable(8, false);
    }
    void ControlNotice(unsigned control, unsigned) override {
        if (control == kIdOk)
            m_Dialog->End(kIdOk);
    }
    IBackendDialog* m_Dialog = nullptr;
};

} // namespace

TEST(HeadlessDialogTest, AScriptDoesOnlyWhatAUserCan) {
    static constexpr ControlRow kControls[] = {{ControlRow::edit, 4, u"text", 0, 0, 10, 10},
                                               {ControlRow::comboBox, 5, u"", 0, 0, 10, 10},
                                               {ControlRow::pushButton, 8, u"off", 0, 0, 10, 10},
                                               {ControlRow::defaultButton, kIdOk, u"", 0, 0, 9, 9}};
    static constexpr DialogResource kPage{9016, u"Find", 10, 10, kControls};
    static constexpr const DialogResource* kPages[] = {&kPage};
    HeadlessDesk desk;
    ListDialog sink;
    desk.m_DialogScripts.push_back([](HeadlessDialog& dialog) {
        EXPECT_EQ(dialog.GetTitle(), u"Find");
        EXPECT_FALSE(dialog.Click(8)) << "not enabled";
        EXPECT_FALSE(dialog.Click(99)) << "not there";
        EXPECT_FALSE(dialog.Choose(5, u"Arial"));
        EXPECT_TRUE(dialog.Click(kIdOk));
        EXPECT_FALSE(dialog.Type(4, u"too late"));
    });
    EXPECT_EQ(desk.RunDialog({}, kPages, sink), kIdOk);
    EXPECT_EQ(desk.RunDialog(u"Options", kPages, sink), kIdCancel) << "nobody works it";
}

TEST(HeadlessDeskTest, QueuesGiveAnswersAndEmptyOnesCancel) {
    HeadlessDesk desk;
    const struct {
        int m_Style, m_Cancelling;
    } kRows[] = {{0x30, kIdOk}, {0x43, kIdCancel}, {4, kIdNo}, {1, kIdCancel}, {9, kIdCancel}};
    for (const auto& row : kRows)
        EXPECT_EQ(desk.ShowMessage(u"?", row.m_Style), row.m_Cancelling) << row.m_Style;
    desk.m_MessageAnswers = {kIdYes};
    EXPECT_EQ(desk.ShowMessage(u"!", 0x43), kIdYes);
    EXPECT_EQ(desk.m_Messages.size(), 6u);
    EXPECT_EQ(desk.AskColor(0, {}), std::nullopt);
    desk.m_ColorAnswers = {0xFF00};
    EXPECT_EQ(desk.AskColor(0, {}), 0xFF00u);

    static constexpr MenuRow kItems[] = {{MenuRow::item, 42002, u"&Go To"}};
    static constexpr MenuResource kMenus[] = {{1, kItems}};
    static constexpr ResourceTables kTables{{}, kMenus, {}, {}, {}};
    const ResourceRegistration registration(kTables);
    CMenu menu;
    ASSERT_TRUE(menu.LoadMenu(1));
    CCmdTarget deaf;
    desk.m_MenuAnswers = {42002, 7};
    EXPECT_EQ(desk.TrackMenu(menu, {}, deaf), 0u) << "nobody answers it: disabled";
    EXPECT_EQ(desk.TrackMenu(menu, {}, deaf), 0u) << "not in the menu";
}

TEST(HeadlessPrinterTest, PagesAreRecordedUntilTheDeviceRefuses) {
    HeadlessDesk desk;
    desk.m_Printer.m_FailingPage = 2;
    desk.m_PrintAnswers = {[](PrintRequest& request) { return request.m_FromPage == 2; },
                           [](PrintRequest& request) {
                               request.m_Selection = true;
                               return true;
                           }};
    PrintRequest request;
    EXPECT_EQ(desk.AskPrinter(request), nullptr);
    auto printer = desk.AskPrinter(request);
    ASSERT_NE(printer, nullptr);
    EXPECT_TRUE(request.m_Selection);
    IBackendSurface& surface = printer->GetSurface();
    EXPECT_EQ(surface.GetFontMetrics(nullptr).m_Height, 20);
    EXPECT_EQ(surface.GetSize(), (CSize{800, 1000}));
    EXPECT_TRUE(printer->StartDocument(u"opamp"));
    surface.DrawText({1, 1}, u"before the first page", {});
    EXPECT_TRUE(printer->StartPage());
    surface.SetOrigin({5, 0});
    EXPECT_EQ(surface.DrawText({100, 20}, u"0001: ", {nullptr, 0xFF, kWhite, true}), 60);
    surface.DrawLine({0, 40}, {800, 40}, 2, kBlack);
    EXPECT_TRUE(printer->EndPage());
    EXPECT_FALSE(printer->StartPage());
    printer.reset();

    const PrintRecord& record = *desk.m_PrintJobs.at(0);
    EXPECT_EQ(record.m_Title, u"opamp");
    EXPECT_FALSE(record.m_Completed);
    ASSERT_EQ(record.m_Pages.size(), 1u);
    EXPECT_EQ(record.m_Pages[0].m_Texts, std::vector<PrintedText>({{105, 20, u"0001: ", 0xFF}}));
    EXPECT_EQ(record.m_Pages[0].m_Rules, std::vector<PrintedRule>({{{5, 40}, {805, 40}, 2}}));
}
