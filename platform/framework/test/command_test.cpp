#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "accelerator.h"
#include "doc_template.h"
#include "document.h"
#include "frame.h"
#include "headless_desk.h"

namespace {

std::vector<std::string> sLog;

void Log(const std::string& text) {
    sLog.push_back(text);
}

std::vector<std::string> TakeLog() {
    return std::exchange(sLog, {});
}

using Lines = std::vector<std::string>;

/// Commands: 1 all, 2 view and document, 3 document, 4 template, 5 frame, 6 disabled at the
/// document, 7 checked at the document.
class TestTemplate : public CMultiDocTemplate {
public:
    using CMultiDocTemplate::CMultiDocTemplate;
    void OnAny() { Log("template"); }

protected:
    const CommandMap& GetCommandMap() const override {
        static constexpr CommandEntry kEntries[] = {Command<&TestTemplate::OnAny>(1),
                                                    Command<&TestTemplate::OnAny>(4)};
        static const CommandMap kMap{kEntries, &CMultiDocTemplate::GetCommandMap()};
        return kMap;
    }
};

class TestDocument : public CDocument {
public:
    ~TestDocument() override { Log("~document"); }
    void OnAny() { Log("document"); }
    const CAcceleratorTable* GetDefaultAccelerator() override { return m_Keys; }
    void OnForbidden() { Log("forbidden"); }
    void OnUpdateForbidden(CCmdUI& ui) { ui.Enable(false); }
    void OnUpdateChecked(CCmdUI& ui) {
        ui.SetCheck();
        ui.SetText(u"checked");
    }

    const CAcceleratorTable* m_Keys = nullptr;

protected:
    const CommandMap& GetCommandMap() const override {
        static constexpr CommandEntry kEntries[] = {
            Command<&TestDocument::OnAny>(1), Command<&TestDocument::OnAny>(2),
            Command<&TestDocument::OnAny>(3),
            Command<&TestDocument::OnForbidden, &TestDocument::OnUpdateForbidden>(6),
            Command<&TestDocument::OnAny, &TestDocument::OnUpdateChecked>(7)};
        static const CommandMap kMap{kEntries, &CDocument::GetCommandMap()};
        return kMap;
    }
};

class TestView : public CScrollView {
public:
    static bool sRefuse;
    ~TestView() override { Log("~view"); }
    void OnAny() { Log("view"); }
    void OnUpdate(CView* sender, std::intptr_t hint, CObject*) override {
        Log("update " + std::to_string(hint) + (sender ? " from a view" : ""));
        if (hint == m_LeaveAt)
            GetDocument()->RemoveView(this);
    }
    void OnActivateView(bool activate, CView*, CView*) override {
        Log((activate ? "activate " : "deactivate ") + m_Name);
    }
    std::intptr_t OnCreate(std::uintptr_t, std::intptr_t) { return sRefuse ? -1 : 0; }

    std::string m_Name = "view";
    std::intptr_t m_LeaveAt = -1;

protected:
    const CommandMap& GetCommandMap() const override {
        static constexpr CommandEntry kEntries[] = {Command<&TestView::OnAny>(1),
                                                    Command<&TestView::OnAny>(2)};
        static const CommandMap kMap{kEntries, &CScrollView::GetCommandMap()};
        return kMap;
    }
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageEntry kEntries[] = {Message<&TestView::OnCreate>(kMsgCreate)};
        static const MessageMap kMap{kEntries, &CScrollView::GetMessageMap()};
        return kMap;
    }
};
bool TestView::sRefuse = false;

class TestFrame : public CMDIChildWnd {
public:
    ~TestFrame() override { Log("~frame"); }
    void OnAny() { Log("frame"); }

protected:
    const CommandMap& GetCommandMap() const override {
        static constexpr CommandEntry kEntries[] = {Command<&TestFrame::OnAny>(1),
                                                    Command<&TestFrame::OnAny>(5)};
        static const CommandMap kMap{kEntries, &CMDIChildWnd::GetCommandMap()};
        return kMap;
    }
};

CDocument* MakeDocument() {
    return new TestDocument;
}
CFrameWnd* MakeFrame() {
    return new TestFrame;
}
CView* MakeView() {
    return new TestView;
}

/// A template with one document in one frame, with the headless backend or with none.
class DocumentTest : public ::testing::TestWithParam<bool> {
protected:
    DocumentTest() {
        if (GetParam())
            SetBackend(&m_Desk);
        m_Document = m_Template->CreateNewDocument();
        m_Frame = m_Template->CreateNewFrame(m_Document);
        TakeLog();
    }
    ~DocumentTest() override {
        if (m_Template)
            m_Template->CloseAllDocuments();
        m_Template.reset();
        SetBackend(nullptr);
        TakeLog();
    }
    TestView& View(std::size_t index) {
        return static_cast<TestView&>(*m_Document->GetViews().at(index));
    }

    HeadlessDesk m_Desk;
    std::unique_ptr<CDocTemplate> m_Template =
        std::make_unique<TestTemplate>(9000, &MakeDocument, &MakeFrame, &MakeView);
    CDocument* m_Document;
    CFrameWnd* m_Frame;
};
INSTANTIATE_TEST_SUITE_P(Backends, DocumentTest, ::testing::Bool());

} // namespace

TEST_P(DocumentTest, CommandsGoFromFrameToViewToDocumentToTemplate) {
    const struct {
        unsigned m_Id;
        Lines m_FromFrame, m_FromView, m_FromDocument;
    } kRows[] = {{1, {"view"}, {"view"}, {"document"}},
                 {2, {"view"}, {"view"}, {"document"}},
                 {3, {"document"}, {"document"}, {"document"}},
                 {4, {"template"}, {"template"}, {"template"}},
                 {5, {"frame"}, {}, {}},
                 {6, {}, {}, {}},
                 {7, {"document"}, {"document"}, {"document"}},
                 {8, {}, {}, {}}};
    for (const auto& row : kRows) {
        for (const auto& [target, log] :
             {std::pair<CCmdTarget*, Lines>(m_Frame, row.m_FromFrame),
              std::pair<CCmdTarget*, Lines>(&View(0), row.m_FromView),
              std::pair<CCmdTarget*, Lines>(m_Document, row.m_FromDocument)}) {
            EXPECT_EQ(target->RunCommand(row.m_Id), !log.empty()) << row.m_Id;
            EXPECT_EQ(TakeLog(), log) << row.m_Id;
        }
    }
    EXPECT_EQ(m_Frame->SendMessage(kMsgCommand, 5), 1);
    EXPECT_EQ(TakeLog(), Lines{"frame"});
    m_Frame->SetActiveView(nullptr, false);
    EXPECT_FALSE(m_Frame->RunCommand(2));
    EXPECT_TRUE(m_Frame->RunCommand(1));
    EXPECT_EQ(TakeLog(), Lines{"frame"});
}

TEST_P(DocumentTest, UpdateHandlersDecideTheState) {
    const std::tuple<unsigned, bool, bool, bool, AString> kRows[] = {
        {1, true, true, false, u""},
        {6, true, false, false, u""},
        {7, true, true, true, u"checked"},
        {8, false, false, false, u""}};
    for (const auto& [id, answered, enabled, checked, text] : kRows) {
        CCmdUI ui(id);
        EXPECT_EQ(m_Frame->UpdateCommand(ui), answered) << id;
        EXPECT_EQ(ui.IsEnabled(), enabled) << id;
        EXPECT_EQ(ui.IsChecked(), checked) << id;
        EXPECT_EQ(ui.GetText(), text) << id;
    }
    EXPECT_TRUE(m_Frame->SendCommand(6));
    EXPECT_FALSE(m_Frame->SendCommand(8));
    EXPECT_EQ(TakeLog(), Lines{"forbidden"});
}

TEST_P(DocumentTest, AcceleratorsAreTakenOnTheWayToTheFrame) {
    static constexpr Accelerator kKeys[] = {{'A', kModControl, 5}, {'B', 0, 6}, {'C', 0, 8}};
    static constexpr AcceleratorResource kTable[] = {{1, kKeys}};
    static constexpr ResourceTables kTables{{}, {}, kTable, {}, {}};
    const ResourceRegistration registration(kTables);
    CAcceleratorTable keys;
    ASSERT_TRUE(keys.LoadAccelerators(1));
    EXPECT_FALSE(View(0).PreTranslateKey('A', kModControl)) << "no table yet";
    static_cast<TestDocument*>(m_Document)->m_Keys = &keys;
    const std::tuple<unsigned, unsigned, bool, Lines> kRows[] = {
        {'A', kModControl, true, {"frame"}},
        {'A', kModControl | kModShift, false, {}},
        {'B', 0, true, {}}, // disabled
        {'C', 0, true, {}}, // answered by nobody
        {'D', 0, false, {}}};
    for (const auto& [key, modifiers, taken, log] : kRows) {
        EXPECT_EQ(View(0).PreTranslateKey(key, modifiers), taken) << key;
        EXPECT_EQ(TakeLog(), log) << key;
    }
}

TEST_P(DocumentTest, AnUpdateReachesEveryViewButTheSender) {
    m_Template->CreateNewFrame(m_Document);
    m_Template->CreateNewFrame(m_Document);
    m_Document->UpdateAllViews(nullptr, 3);
    EXPECT_EQ(TakeLog(), Lines(3, "update 3"));
    m_Document->UpdateAllViews(&View(1), 4);
    EXPECT_EQ(TakeLog(), Lines(2, "update 4 from a view"));

    CView* const last = m_Document->GetViews().back();
    View(0).m_LeaveAt = View(1).m_LeaveAt = 5;
    CView* const stray[] = {&View(0), &View(1)};
    m_Document->UpdateAllViews(nullptr, 5);
    EXPECT_EQ(TakeLog(), Lines(3, "update 5")) << "a view that leaves hides no other";
    EXPECT_EQ(m_Document->GetViews(), std::vector<CView*>{last});
    for (CView* view : stray) {
        EXPECT_EQ(view->GetDocument(), nullptr);
        view->GetParentFrame()->DestroyWindow();
    }
}

TEST_P(DocumentTest, AViewBelongsToOneDocumentOnce) {
    TestDocument other;
    other.AddView(&View(0));
    other.AddView(nullptr);
    other.RemoveView(&View(0));
    EXPECT_TRUE(other.GetViews().empty());
    m_Document->AddView(&View(0));
    EXPECT_EQ(m_Document->GetViews().size(), 1u);
    EXPECT_EQ(View(0).GetDocument(), m_Document);
}

TEST_P(DocumentTest, ADestroyedFrameTakesItsViewOutOfTheDocument) {
    m_Frame->ActivateFrame();
    TakeLog();
    m_Frame->SendMessage(kMsgClose);
    EXPECT_EQ(TakeLog(), (Lines{"deactivate view", "~view", "~frame"}));
    EXPECT_TRUE(m_Document->GetViews().empty());
    EXPECT_EQ(CMDIChildWnd::GetActiveChild(), nullptr);
    EXPECT_TRUE(m_Desk.GetWindows().empty());
}

TEST_P(DocumentTest, AnAutoDeletingDocumentGoesWithItsLastView) {
    CFrameWnd* const second = m_Template->CreateNewFrame(m_Document);
    m_Document->SetAutoDelete(true);
    m_Frame->DestroyWindow();
    EXPECT_EQ(m_Template->GetDocuments().size(), 1u);
    second->DestroyWindow();
    EXPECT_EQ(TakeLog(), (Lines{"~view", "~frame", "~view", "~document", "~frame"}));
    EXPECT_TRUE(m_Template->GetDocuments().empty());
}

TEST_P(DocumentTest, ClosingDestroysTheFramesAndMaybeTheDocument) {
    m_Template->CreateNewFrame(m_Document);
    m_Document->OnCloseDocument();
    EXPECT_EQ(TakeLog(), (Lines{"~view", "~frame", "~view", "~frame"}));
    EXPECT_EQ(m_Template->GetDocuments().size(), 1u);
    m_Document->SetAutoDelete(true);
    m_Template->CreateNewFrame(m_Document);
    m_Template->CloseAllDocuments();
    EXPECT_EQ(TakeLog(), (Lines{"~view", "~frame", "~document"}));
    EXPECT_TRUE(m_Template->GetDocuments().empty());
}

TEST_P(DocumentTest, TheTemplateOwnsWhatIsInItsListAtItsEnd) {
    CDocument* const gone = m_Template->CreateNewDocument();
    CDocument* const stays = m_Template->CreateNewDocument();
    CMultiDocTemplate other(9001, nullptr, nullptr, nullptr);
    other.AddDocument(stays);
    EXPECT_TRUE(other.GetDocuments().empty()) << "a document stands in one list only";
    EXPECT_EQ(other.CreateNewDocument(), nullptr);
    EXPECT_EQ(other.CreateNewFrame(stays), nullptr);
    delete gone;
    EXPECT_EQ(m_Template->GetDocuments(), (std::vector<CDocument*>{m_Document, stays}));
    m_Template->RemoveDocument(stays);
    EXPECT_EQ(stays->GetDocTemplate(), nullptr);
    other.AddDocument(stays);
    m_Frame->DestroyWindow();
    TakeLog();
    m_Template.reset();
    EXPECT_EQ(TakeLog(), Lines{"~document"});
    EXPECT_EQ(other.GetDocuments(), std::vector<CDocument*>{stays});
}

TEST_P(DocumentTest, AViewThatRefusesLeavesNothingBehind) {
    TestView::sRefuse = true;
    EXPECT_EQ(m_Template->CreateNewFrame(m_Document), nullptr);
    TestView::sRefuse = false;
    EXPECT_EQ(TakeLog(), (Lines{"~view", "~frame"}));
    EXPECT_EQ(m_Document->GetViews().size(), 1u);
    EXPECT_EQ(m_Desk.GetWindows().size(), GetParam() ? 2u : 0u);
}

TEST_P(DocumentTest, TitlesStandInTheFramesOfAllViews) {
    CFrameWnd* const second = m_Template->CreateNewFrame(m_Document);
    m_Document->SetTitle(u"I1 - Netlist");
    CFrameWnd* const third = m_Template->CreateNewFrame(m_Document);
    m_Template->InitialUpdateFrame(third, m_Document, true);
    EXPECT_EQ(TakeLog(), (Lines{"update 0", "activate view"}));
    for (CFrameWnd* frame : {m_Frame, second, third}) {
        EXPECT_EQ(frame->GetWindowText(), u"I1 - Netlist");
        if (auto* window = static_cast<HeadlessWindow*>(frame->GetBackendWindow())) {
            EXPECT_EQ(window->GetTitle(), u"I1 - Netlist");
        }
    }
}

TEST_P(DocumentTest, OneFrameIsActiveAndBothViewsHearOfTheChange) {
    CFrameWnd* const second = m_Template->CreateNewFrame(m_Document);
    View(0).m_Name = "first";
    View(1).m_Name = "second";
    m_Frame->ActivateFrame();
    m_Frame->ActivateFrame(kShowRestore);
    EXPECT_EQ(TakeLog(), Lines{"activate first"});
    second->SendMessage(kMsgMdiActivate);
    EXPECT_EQ(TakeLog(), (Lines{"deactivate first", "activate second"}));
    EXPECT_EQ(CMDIChildWnd::GetActiveChild(), second);
    second->SetActiveView(nullptr);
    EXPECT_EQ(TakeLog(), Lines{"deactivate second"});
    EXPECT_EQ(second->GetActiveDocument(), nullptr);
    second->SetActiveView(&View(1));
    EXPECT_EQ(TakeLog(), Lines{"activate second"});
    EXPECT_EQ(second->GetActiveDocument(), m_Document);
}
