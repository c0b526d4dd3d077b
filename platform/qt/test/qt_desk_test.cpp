// The desk's dialogs, menus and files.

#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>

#include "cmd_target.h"
#include "menu.h"
#include "pdf_desk.h"
#include "qt_text.h"
#include "resources.h"
#include "stage.h"

extern "C" IBackendDesk* QuorelOpenPdfDesk(const PdfOutput& output);
extern "C" void QuorelClosePdfDesk();

namespace {

constexpr unsigned kCut = 57635, kCopy = 57634, kGoTo = 42002;

/// Answers two commands, one of them disabled, the other checked under a name of its own.
class Target : public CCmdTarget {
public:
    void OnCopy() {}
    void OnUpdateCopy(CCmdUI& ui) { ui.Enable(false); }
    void OnGoTo() {}
    void OnUpdateGoTo(CCmdUI& ui) {
        ui.SetCheck();
        ui.SetText(u"Go to line 7");
    }

protected:
    const CommandMap& GetCommandMap() const override {
        static constexpr CommandEntry kEntries[] = {
            Command<&Target::OnCopy, &Target::OnUpdateCopy>(kCopy),
            Command<&Target::OnGoTo, &Target::OnUpdateGoTo>(kGoTo)};
        static const CommandMap kMap{kEntries, nullptr};
        return kMap;
    }
};

QString Describe(const QMenu& menu) {
    QStringList items;
    for (const QAction* action : menu.actions())
        items.append(QStringLiteral("%1%2%3").arg(action->isSeparator() ? u"-"_qs : action->text(),
                                                  action->isEnabled() ? u""_qs : u" off"_qs,
                                                  action->isChecked() ? u" on"_qs : u""_qs));
    return items.join(u'|');
}

} // namespace

TEST(QtDeskTest, PopupMenusShowTheStatesAndGiveTheCommand) {
    static constexpr MenuRow kItems[] = {
        {MenuRow::item, kCut, u"Cu&t\tCtrl+X"}, {MenuRow::item, kCopy, u"&Copy"},
        {MenuRow::separator, 0, u""},           {MenuRow::popup, 0, u"More"},
        {MenuRow::item, kGoTo, u"&Go To ..."},  {MenuRow::popupEnd, 0, u""}};
    static constexpr MenuResource kMenus[] = {{1, kItems}};
    static constexpr ResourceTables kTables{{}, kMenus, {}, {}, {}};
    const ResourceRegistration registration(kTables);
    CMenu menu;
    ASSERT_TRUE(menu.LoadMenu(1));
    Target target;
    QtStage stage;
    for (const bool choose : {true, false}) {
        QTimer::singleShot(0, [&] {
            auto* shown = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(shown, nullptr);
            EXPECT_EQ(Describe(*shown), u"Cu&t\tCtrl+X off|&Copy off|-|More");
            QMenu* more = shown->actions().back()->menu();
            EXPECT_EQ(Describe(*more), u"Go to line 7 on");
            if (choose) {
                shown->setActiveAction(shown->actions().back());
                more->setActiveAction(more->actions().front());
                QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
                QApplication::sendEvent(more, &enter);
            } else {
                shown->close();
            }
        });
        const unsigned command = stage.GetDesk().TrackMenu(menu, {10, 10}, target);
        EXPECT_EQ(command, choose ? kGoTo : 0u);
    }
}

TEST(QtDeskTest, MessageBoxesHaveTheButtonsOfTheirStyle) {
    const struct {
        int m_Style;
        QMessageBox::StandardButton m_Pressed;
        int m_Result;
        QMessageBox::Icon m_Icon;
        int m_Buttons;
    } kRows[] = {{0x30, QMessageBox::Ok, kIdOk, QMessageBox::Warning, 1},
                 {0x43, QMessageBox::No, kIdNo, QMessageBox::Information, 3},
                 {0x14, QMessageBox::Yes, kIdYes, QMessageBox::Critical, 2},
                 {0x21, QMessageBox::Cancel, kIdCancel, QMessageBox::Question, 2},
                 {0x2012, QMessageBox::Ignore, 5, QMessageBox::Critical, 3},
                 {0x0F, QMessageBox::Ok, kIdCancel, QMessageBox::NoIcon, 1}};
    QtStage stage;
    for (const auto& row : kRows) {
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->icon(), row.m_Icon);
            EXPECT_EQ(box->buttons().size(), row.m_Buttons);
            EXPECT_EQ(box->text(), u"Save <b>x</b>?");
            box->button(row.m_Pressed)->click();
        });
        EXPECT_EQ(stage.GetDesk().ShowMessage(u"Save <b>x</b>?", row.m_Style), row.m_Result);
    }
}

TEST(QtDeskTest, FontsAreFixedPitchWhateverWasAskedFor) {
    QtStage stage;
    const auto measure = [&](const AString& face, int height, int weight) {
        LogFont font;
        font.m_FaceName = face;
        font.m_Height = height;
        font.m_Weight = weight;
        const auto made = stage.GetDesk().CreateFont(font);
        IBackendSurface& screen = stage.GetDesk().GetScreen();
        EXPECT_EQ(screen.MeasureText(u"iW", made.get()).cx,
                  2 * screen.GetFontMetrics(made.get()).m_MaxWidth);
        return screen.GetFontMetrics(made.get());
    };
    const FontMetrics plain = measure(u"Courier New", -24, 400);
    EXPECT_EQ(measure(u"Courier New", -24, 700).m_MaxWidth, plain.m_MaxWidth);
    EXPECT_EQ(measure(u"no such font", -24, 400).m_Height, plain.m_Height);
    EXPECT_GT(measure(u"Courier New", -48, 400).m_Height, plain.m_Height * 3 / 2);
    EXPECT_LE(measure(u"Courier New", 24, 400).m_Height, plain.m_Height);
    EXPECT_GT(measure(u"", 0, 0).m_Height, 0);
    EXPECT_FALSE(stage.GetDesk().GetFixedPitchFonts().empty());
}

TEST(QtDeskTest, AFileThatCantBeWrittenRefusesTheJob) {
    QtStage stage;
    PdfOutput output;
    output.m_Path = u"/no/such/folder/out.pdf";
    output.m_FromPage = 2;
    output.m_ToPage = 5;
    ASSERT_EQ(QuorelOpenPdfDesk(output), QuorelOpenPdfDesk(output));
    IBackendDesk* desk = QuorelOpenPdfDesk(output);
    PrintRequest request;
    std::unique_ptr<IBackendPrinter> job = desk->AskPrinter(request);
    ASSERT_NE(job, nullptr);
    EXPECT_EQ(std::pair(request.m_FromPage, request.m_ToPage), std::pair(2, 5));
    const CSize a4 = job->GetPageSize();
    EXPECT_FALSE(job->StartDocument(u"opamp"));
    EXPECT_FALSE(job->StartPage());
    EXPECT_FALSE(job->EndDocument());
    output.m_Paper = PdfOutput::Paper::letter;
    job = QuorelOpenPdfDesk(output)->AskPrinter(request);
    EXPECT_GT(job->GetPageSize().cx, a4.cx);
    EXPECT_LT(job->GetPageSize().cy, a4.cy);
    job.reset();
    QuorelClosePdfDesk();
    QuorelClosePdfDesk();
}

/// A text on a page, behind the one before.
struct PrintedPiece {
    const char16_t* m_Text;
    ColorRef m_Color;
};

/// What the first page of a PDF of these pieces holds.
QByteArray PageOf(const std::vector<PrintedPiece>& pieces, bool underlined) {
    const QTemporaryDir folder;
    PdfOutput output;
    output.m_Path = FromQt(folder.filePath(QStringLiteral("out.pdf")));
    IBackendDesk* const desk = QuorelOpenPdfDesk(output);
    PrintRequest request;
    const std::unique_ptr<IBackendPrinter> job = desk->AskPrinter(request);
    LogFont asked;
    asked.m_FaceName = u"Courier New";
    asked.m_Height = -150;
    asked.m_Underline = underlined;
    const std::unique_ptr<IBackendFont> font = desk->CreateFont(asked);
    EXPECT_TRUE(job->StartDocument(u"deck") && job->StartPage());
    CPoint at{900, 0};
    for (const PrintedPiece& piece : pieces)
        at.x += job->GetSurface().DrawText(
            at, piece.m_Text, {.m_Font = font.get(), .m_Color = piece.m_Color, .m_Opaque = false});
    EXPECT_TRUE(job->EndPage() && job->EndDocument());
    QFile file(ToQt(output.m_Path));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    const qsizetype begin = bytes.indexOf("stream\n");
    return bytes.mid(begin, bytes.indexOf("endstream") - begin);
}

TEST(QtDeskTest, TextsThatStandSideBySideArePrintedAsOneWhereTheyLookTheSame) {
    QtStage stage;
    constexpr ColorRef kRed = 0xFF;
    const std::vector<PrintedPiece> whole{{u" R1 a  5k", kRed}};
    const struct {
        std::vector<PrintedPiece> m_Pieces;
        bool m_Plain, m_Underlined; ///< whether it is as the whole in such a font
    } rows[] = {{{{u" R1", kRed}, {u" a", kRed}, {u"  5k", kRed}}, true, true},
                {{{u" ", kBlack}, {u"R1", kRed}, {u" ", kBlack}, {u"a  5k", kRed}}, true, false},
                {{{u" R1", kRed}, {u" a", kBlack}, {u"  5k", kRed}}, false, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        EXPECT_EQ(PageOf(row.m_Pieces, false) == PageOf(whole, false), row.m_Plain);
        EXPECT_EQ(PageOf(row.m_Pieces, true) == PageOf(whole, true), row.m_Underlined);
    }
    QuorelClosePdfDesk();
}
