// What each backend must do alike.

#include <random>

#include "resources.h"
#include "stage.h"

namespace {

constexpr int kRows = 6;
constexpr int kColumns = 24;

/// The slow twin of a window's picture: what each cell shows.
class Model {
public:
    std::vector<Cell> m_Cells = std::vector<Cell>(kRows * kColumns);
    Cell& At(int row, int column) {
        return m_Cells[static_cast<std::size_t>(row * kColumns + column)];
    }
    template <class Change>
    void Each(const CRect& cells, Change change) {
        for (int row = std::max(cells.top, 0); row < std::min(cells.bottom, kRows); ++row)
            for (int column = std::max(cells.left, 0); column < std::min(cells.right, kColumns);
                 ++column)
                change(At(row, column));
    }
    void Scroll(int right, int down, const CRect& cells) {
        const Model before = *this;
        for (int row = cells.top; row < cells.bottom; ++row)
            for (int column = cells.left; column < cells.right; ++column)
                if (cells.Contains({column - right, row - down}))
                    At(row, column) = Model(before).At(row - down, column - right);
    }
};

class ConformanceTest : public ::testing::TestWithParam<bool> {
protected:
    ConformanceTest() {
        if (GetParam())
            m_Stage = std::make_unique<QtStage>();
        else
            m_Stage = std::make_unique<HeadlessStage>();
        LogFont font;
        font.m_FaceName = u"no such font";
        font.m_Height = -13;
        m_Font = Desk().CreateFont(font);
        m_Frame = Desk().CreateWindow(WindowKind::frame, nullptr, m_FrameSink);
        m_Window = Desk().CreateWindow(WindowKind::view, m_Frame.get(), m_Sink);
        m_OtherFrame = Desk().CreateWindow(WindowKind::frame, nullptr, m_FrameSink);
        m_Other = Desk().CreateWindow(WindowKind::view, m_OtherFrame.get(), m_OtherSink);
        m_OtherFrame->Show(kShow);
        m_Frame->Show(kShow);
        m_Stage->Settle();
        const FontMetrics metrics = m_Window->GetSurface().GetFontMetrics(m_Font.get());
        m_Cell = {metrics.m_AverageWidth, metrics.m_Height};
        EXPECT_EQ(metrics.m_MaxWidth, metrics.m_AverageWidth);
        for (IBackendWindow* window : {m_Window.get(), m_Other.get()})
            window->GetSurface().FillRect(Pixels({0, 0, 1000, 1000}), kWhite);
        Forget();
    }
    void Forget() {
        m_Stage->Settle();
        for (NotingSink* sink : {&m_Sink, &m_OtherSink, &m_FrameSink}) {
            sink->m_Log.clear();
            sink->m_Painted.clear();
        }
    }
    IBackendDesk& Desk() { return m_Stage->GetDesk(); }
    CRect Pixels(const CRect& cells) const {
        return {cells.left * m_Cell.cx, cells.top * m_Cell.cy, cells.right * m_Cell.cx,
                cells.bottom * m_Cell.cy};
    }
    TextStyle Style(const Cell& cell) {
        return {m_Font.get(), cell.m_Color, cell.m_Background, true};
    }
    /// Draws the model into the other window, each cell by itself.
    void DrawModel(Model& model) {
        IBackendSurface& surface = m_Other->GetSurface();
        for (int row = 0; row < kRows; ++row)
            for (int column = 0; column < kColumns; ++column) {
                const Cell& cell = model.At(row, column);
                const CRect place = Pixels({column, row, column + 1, row + 1});
                surface.DrawText({place.left, place.top}, {&cell.m_Character, 1}, Style(cell));
                if (cell.m_Inverted)
                    surface.InvertRect(place);
            }
    }
    std::string CompareWith(Model& model) {
        DrawModel(model);
        return m_Stage->Compare(*m_Window, *m_Other, Pixels({0, 0, kColumns, kRows}));
    }

    std::unique_ptr<Stage> m_Stage;
    NotingSink m_Sink, m_OtherSink, m_FrameSink;
    std::unique_ptr<IBackendFont> m_Font;
    std::unique_ptr<IBackendWindow> m_Frame, m_OtherFrame, m_Window, m_Other;
    CSize m_Cell;
};

/// One random drawing on window and model.
class RandomDrawing {
public:
    RandomDrawing(IBackendWindow& window, Model& model, CSize cell, const IBackendFont* font)
        : m_Window(window), m_Model(model), m_Cell(cell), m_Font(font) {}
    void Step() {
        const int left = Pick(kColumns), top = Pick(kRows);
        const CRect cells{left, top, left + 1 + Pick(kColumns - left), top + 1 + Pick(kRows - top)};
        switch (Pick(4)) {
        case 0:
            Fill(cells, kColors[Pick(3)]);
            break;
        case 1:
            Surface().InvertRect(Pixels(cells));
            m_Model.Each(cells, [](Cell& cell) { cell.m_Inverted ^= true; });
            break;
        case 2:
            Write(top, left - 3);
            break;
        default: {
            const int right = Pick(5) - 2, down = Pick(5) - 2;
            m_Window.ScrollPixels({right * m_Cell.cx, down * m_Cell.cy}, Pixels(cells));
            m_Model.Scroll(right, down, cells);
        }
        }
    }

private:
    static constexpr ColorRef kColors[] = {0xC0C0C0, 0x0000FF, 0x805010};

    int Pick(int count) { return static_cast<int>(m_Random() % static_cast<unsigned>(count)); }
    IBackendSurface& Surface() { return m_Window.GetSurface(); }
    CRect Pixels(const CRect& cells) const {
        return {cells.left * m_Cell.cx, cells.top * m_Cell.cy, cells.right * m_Cell.cx,
                cells.bottom * m_Cell.cy};
    }
    void Fill(const CRect& cells, ColorRef color) {
        Surface().FillRect(Pixels(cells), color);
        m_Model.Each(cells, [color](Cell& cell) { cell = {.m_Background = color}; });
    }
    /// A text that may begin and end outside, by way of a shifted origin and under a clip.
    void Write(int row, int column) {
        static constexpr std::u16string_view kText = u"Wj_g|\u00C5\u20AC\u25A1i5 W";
        const CRect clip{2, 0, 2 + Pick(kColumns), kRows};
        const CRect device = Pixels(clip);
        const Cell cell{u' ', kColors[Pick(3)], kColors[Pick(3)], false};
        IBackendSurface& surface = Surface();
        surface.SetClip(&device);
        surface.SetOrigin({-5 * m_Cell.cx, 0});
        EXPECT_EQ(surface.DrawText({(column + 5) * m_Cell.cx, row * m_Cell.cy}, kText,
                                   {m_Font, cell.m_Color, cell.m_Background, true}),
                  static_cast<int>(kText.size()) * m_Cell.cx);
        for (const char16_t c : kText) {
            if (clip.Contains({column, row}) && column < kColumns)
                m_Model.At(row, column) = {c, cell.m_Color, cell.m_Background, false};
            ++column;
        }
    }

    IBackendWindow& m_Window;
    Model& m_Model;
    CSize m_Cell;
    const IBackendFont* m_Font;
    std::mt19937 m_Random{20};
};

std::string Name(const ::testing::TestParamInfo<bool>& info) {
    return info.param ? "Qt" : "Headless";
}
INSTANTIATE_TEST_SUITE_P(Backends, ConformanceTest, ::testing::Bool(), Name);

} // namespace

TEST_P(ConformanceTest, ThePictureIsThatOfItsCellsAfterAnyDrawing) {
    Model model;
    RandomDrawing drawing(*m_Window, model, m_Cell, m_Font.get());
    for (int i = 0; i < 600; ++i) {
        drawing.Step();
        if (i % 20 == 19) {
            ASSERT_EQ(CompareWith(model), "") << "after step " << i;
        }
    }
    model.At(0, 0).m_Character = u'?';
    EXPECT_NE(CompareWith(model), "") << "the comparison sees a single cell";
}

TEST_P(ConformanceTest, InvalidPartsAddUpMoveAlongAndArePaintedOnceUnderTheirClip) {
    m_Sink.m_Paint = [](IBackendSurface& surface) { surface.FillRect({-9, -9, 999, 999}, 0xFF); };
    m_Window->Invalidate(Pixels({1, 1, 2, 2}), false);
    m_Window->Invalidate(Pixels({3, 1, 4, 2}), true);
    m_Window->Invalidate({-20, -20, 0, 0}, true);
    EXPECT_TRUE(m_Sink.m_Painted.empty());
    m_Window->ScrollPixels({0, m_Cell.cy}, Pixels({0, 0, 8, 6}));
    m_Window->Update();
    m_Window->Update();
    EXPECT_EQ(m_Sink.m_Painted, std::vector<CRect>{Pixels({1, 1, 4, 3})});
    EXPECT_TRUE(m_Sink.m_Erased);
    Model model;
    model.Each({1, 1, 4, 3}, [](Cell& cell) { cell.m_Background = 0xFF; });
    EXPECT_EQ(CompareWith(model), "");
    m_Window->Invalidate(Pixels({0, 0, 1, 1}), false);
    m_Stage->Settle();
    ASSERT_EQ(m_Sink.m_Painted.size(), 2u) << "without being asked for";
    EXPECT_FALSE(m_Sink.m_Erased);
    m_Sink.m_Paint = nullptr;
}

TEST_P(ConformanceTest, FocusMovesInOrderBeforeTheCallReturns) {
    std::vector<std::pair<int, unsigned>> order;
    m_Sink.m_OnMessage = [&](unsigned message) { order.push_back({1, message}); };
    m_OtherSink.m_OnMessage = [&](unsigned message) { order.push_back({2, message}); };
    using Order = std::vector<std::pair<int, unsigned>>;
    m_Window->SetFocus();
    m_Stage->Settle();
    order.clear();
    m_Other->SetFocus();
    EXPECT_EQ(order, (Order{{1, kMsgKillFocus}, {2, kMsgSetFocus}}));
    m_Other->SetFocus();
    m_Other.reset();
    m_Window->SetFocus();
    EXPECT_EQ(order.size(), 3u) << "a window that is gone hears nothing";
    EXPECT_EQ(order.back(), std::pair(1, unsigned{kMsgSetFocus}));
}

TEST_P(ConformanceTest, TheCaretIsShownWhereItWasSetAndLeavesThePictureAlone) {
    Model model;
    m_Window->GetSurface().DrawText({0, 0}, u"R1", Style({}));
    model.At(0, 0).m_Character = u'R';
    model.At(0, 1).m_Character = u'1';
    m_Window->SetFocus();
    m_Stage->Settle();
    const CRect caret{m_Cell.cx, 0, m_Cell.cx + 2, m_Cell.cy};
    m_Window->SetCaret(&caret);
    m_Stage->Settle();
    EXPECT_EQ(m_Stage->GetShownCaret(*m_Window), caret);
    EXPECT_EQ(CompareWith(model), "");
    m_Window->SetCaret(nullptr);
    m_Stage->Settle();
    EXPECT_EQ(m_Stage->GetShownCaret(*m_Window), std::nullopt);
}

TEST_P(ConformanceTest, PostedMessagesComeInTheirTurn) {
    m_Sink.m_OnMessage = [this](unsigned message) {
        if (message == kMsgCommand)
            m_Window->Post(kMsgPaste, 0, 0);
    };
    m_Window->Post(kMsgCommand, 7, 0);
    m_Other->Post(kMsgCut, 0, 0);
    m_Window->Post(kMsgCopy, 0, 0);
    EXPECT_TRUE(m_Sink.TakeMessages().empty());
    m_Other.reset();
    m_Stage->Settle();
    EXPECT_EQ(m_Sink.TakeMessages(), (std::vector<unsigned>{kMsgCommand, kMsgCopy, kMsgPaste}));
    EXPECT_TRUE(m_OtherSink.TakeMessages().empty());
}

TEST_P(ConformanceTest, TheClipboardGivesWhatWasSet) {
    for (const std::u16string_view text : {u"R1 1 0 5k", u"a\nb\tc \u20AC\u00E9", u"x"}) {
        EXPECT_TRUE(Desk().SetClipboardText(AString(text)));
        EXPECT_TRUE(Desk().HasClipboardText());
        EXPECT_EQ(Desk().GetClipboardText(), AString(text));
    }
}

namespace {

constexpr ControlRow kFirstPage[] = {{ControlRow::edit, 4, u"text", 0, 0, 10, 10},
                                     {ControlRow::radioButton, 12, u"&Up", 0, 0, 10, 10, true},
                                     {ControlRow::radioButton, 3, u"&Down", 0, 0, 10, 10},
                                     {ControlRow::radioButton, 6, u"other", 0, 0, 10, 10, true},
                                     {ControlRow::checkBox, 7, u"Match &case", 0, 0, 10, 10},
                                     {ControlRow::defaultButton, kIdOk, u"OK", 0, 0, 10, 10}};
constexpr ControlRow kSecondPage[] = {{ControlRow::comboBox, 5, u"", 0, 0, 10, 10},
                                      {ControlRow::label, 8, u"Si&ze", 0, 0, 10, 10}};
constexpr DialogResource kPages[] = {{1, u"Find", 60, 60, kFirstPage},
                                     {2, u"Font", 60, 60, kSecondPage}};
constexpr const DialogResource* kBoth[] = {&kPages[0], &kPages[1]};

/// Writes down what its controls hold at each notice, and ends on OK and Cancel.
class NotingDialog : public IDialogSink {
public:
    void DialogShown(IBackendDialog& dialog) override {
        m_Dialog = &dialog;
        dialog.AddItem(5, u"Courier New");
        dialog.AddItem(5, u"Mono");
        Note("shown");
        dialog.SetSelection(5, 0);
        dialog.SetChecked(3, true);
        dialog.SetChecked(7, true);
        dialog.SetChecked(7, false);
        dialog.SetText(4, u"preset");
        dialog.SetText(99, u"no such control");
        Note("set");
    }
    void ControlNotice(unsigned control, unsigned notice) override {
        Note(std::to_string(control) + ' ' + std::to_string(notice));
        if (control == kIdOk || control == kIdCancel)
            m_Dialog->End(static_cast<int>(control));
    }
    std::vector<std::string> m_Notes;

private:
    void Note(const std::string& what) {
        std::string state = what + ':';
        for (const unsigned control : {12u, 3u, 6u, 7u, 99u})
            state += m_Dialog->IsChecked(control) ? '1' : '0';
        state += ' ' + m_Dialog->GetText(4).ToCString() + ' ' + m_Dialog->GetText(8).ToCString();
        state += ' ' + m_Dialog->GetText(5).ToCString();
        m_Notes.push_back(state + ' ' + std::to_string(m_Dialog->GetSelection(5)));
    }
    IBackendDialog* m_Dialog = nullptr;
};

} // namespace

TEST_P(ConformanceTest, DialogsAreTheirControlsByNumber) {
    NotingDialog sink;
    m_Stage->WorkNextDialog({{DialogStep::type, 4, u"R1"},
                             {DialogStep::click, 6},
                             {DialogStep::click, 12},
                             {DialogStep::click, 7},
                             {DialogStep::choose, 5, u"Mono"},
                             {DialogStep::click, kIdOk}});
    EXPECT_EQ(Desk().RunDialog({}, kBoth, sink), kIdOk);
    EXPECT_EQ(sink.m_Notes,
              (std::vector<std::string>{
                  "shown:00000 text Si&ze  -1", "set:01000 preset Si&ze Courier New 0",
                  "4 768:01000 R1 Si&ze Courier New 0", "6 0:01100 R1 Si&ze Courier New 0",
                  "12 0:10100 R1 Si&ze Courier New 0", "7 0:10110 R1 Si&ze Courier New 0",
                  "5 9:10110 R1 Si&ze Mono 1", "1 0:10110 R1 Si&ze Mono 1"}));
    m_Stage->WorkNextDialog({});
    NotingDialog closed;
    EXPECT_EQ(Desk().RunDialog(u"Options", kBoth, closed), kIdCancel) << "a closed window";
    EXPECT_EQ(closed.m_Notes.size(), 3u);
}

TEST_P(ConformanceTest, AJobIsThereWithItsLastPageOnly) {
    for (const bool complete : {true, false}) {
        PrintRequest request;
        std::unique_ptr<IBackendPrinter> job = Desk().AskPrinter(request);
        ASSERT_NE(job, nullptr);
        IBackendSurface& surface = job->GetSurface();
        const int width = surface.GetFontMetrics(m_Font.get()).m_MaxWidth;
        EXPECT_EQ(surface.MeasureText(u"1234", m_Font.get()).cx, 4 * width);
        EXPECT_GT(job->GetPageSize().cy, 10 * surface.GetFontMetrics(m_Font.get()).m_Height);
        EXPECT_TRUE(job->StartDocument(u"opamp"));
        for (int page = 0; page < 3; ++page) {
            EXPECT_TRUE(job->StartPage());
            EXPECT_EQ(surface.DrawText({100, 20}, u"0001: ", {m_Font.get(), 0xFF, kWhite, true}),
                      6 * width);
            surface.DrawLine({0, 40}, {800, 40}, 2, kBlack);
            EXPECT_TRUE(job->EndPage());
        }
        if (complete) {
            EXPECT_TRUE(job->EndDocument());
        }
        job.reset();
        EXPECT_EQ(m_Stage->GetPrintedPages(), GetParam() || complete ? 3 : 0)
            << "a job dropped leaves the file of the one before";
    }
}
