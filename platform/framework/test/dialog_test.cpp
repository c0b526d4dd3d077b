/// Dialogs and property sheets, worked by scripts on the headless desk.
#include "property_sheet.h"

#include <gtest/gtest.h>

#include "font.h"
#include "headless_desk.h"

namespace {

using C = ControlRow;
enum Control : unsigned { kName = 10, kFlag, kCount, kSize, kRun, kNone };

constexpr ControlRow kForm[] = {
    {C::edit, kName, u"", 0, 0, 9, 9},          {C::checkBox, kFlag, u"", 0, 0, 9, 9},
    {C::edit, kCount, u"", 0, 0, 9, 9},         {C::edit, kSize, u"", 0, 0, 9, 9},
    {C::pushButton, kRun, u"", 0, 0, 9, 9},     {C::defaultButton, kIdOk, u"OK", 0, 0, 9, 9},
    {C::pushButton, kIdCancel, u"", 0, 0, 9, 9}};
constexpr ControlRow kNamePage[] = {{C::edit, kName, u"", 0, 0, 9, 9},
                                    {C::pushButton, kRun, u"", 0, 0, 9, 9}};
constexpr ControlRow kCountPage[] = {{C::edit, kCount, u"", 0, 0, 9, 9}};
constexpr DialogResource kDialogs[] = {
    {1, u"Form", 9, 9, kForm}, {2, u"Name", 9, 9, kNamePage}, {3, u"Count", 9, 9, kCountPage}};
constexpr ResourceTables kTables{{}, {}, {}, kDialogs, {}};

class Form : public CDialog {
public:
    explicit Form(unsigned id = 1) : CDialog(id) {}

    AString m_Name = u"first";
    bool m_Flag = true;
    std::int32_t m_Count = -7;
    double m_Size = 1.5;
    int m_Runs = 0;

protected:
    void DoDataExchange(CDataExchange& exchange) override {
        exchange.Text(kName, m_Name);
        exchange.Check(kFlag, m_Flag);
        exchange.Integer(kCount, m_Count);
        exchange.Number(kSize, m_Size);
    }
    const NoticeMap& GetNoticeMap() const override {
        static constexpr NoticeEntry kEntries[] = {Notice<&Form::OnRun>(kRun),
                                                   Notice<&Form::OnRun>(kName, kNoticeTextChanged)};
        static const NoticeMap kMap{kEntries, &CDialog::GetNoticeMap()};
        return kMap;
    }

private:
    void OnRun() { ++m_Runs; }
};

template <unsigned Id, unsigned Control>
class Page : public CPropertyPage {
public:
    Page() : CPropertyPage(Id) {}

    std::int32_t m_Count = 1;
    std::string m_Told;

protected:
    void DoDataExchange(CDataExchange& exchange) override {
        if (Control == kCount)
            exchange.Integer(kCount, m_Count);
    }
    void OnInitDialog() override {
        CPropertyPage::OnInitDialog();
        m_Told += 'i';
    }
    void OnOK() override { m_Told += 'o'; }
    void OnCancel() override { m_Told += 'c'; }
    const NoticeMap& GetNoticeMap() const override {
        static constexpr NoticeEntry kEntries[] = {
            Notice<&Page::OnRun>(Control == kName ? kRun : kNone)};
        static const NoticeMap kMap{kEntries, &CPropertyPage::GetNoticeMap()};
        return kMap;
    }

private:
    void OnRun() { m_Told += 'r'; }
};

class Dialog : public testing::Test {
protected:
    Dialog() { SetBackend(&m_Desk); }
    ~Dialog() override { SetBackend(nullptr); }

    void Script(std::function<void(HeadlessDialog&)> script) {
        m_Desk.m_DialogScripts.push_back(std::move(script));
    }

    HeadlessDesk m_Desk;
    ResourceRegistration m_Registration{kTables};
};

TEST_F(Dialog, MembersGoToTheControlsAndComeBackOnOk) {
    for (const bool ok : {true, false}) {
        Form form;
        Script([ok](HeadlessDialog& shown) {
            EXPECT_EQ(shown.GetTitle(), u"Form");
            EXPECT_EQ(shown.GetText(kName), u"first");
            EXPECT_TRUE(shown.IsChecked(kFlag));
            EXPECT_EQ(shown.GetText(kCount), u"-7");
            EXPECT_EQ(shown.GetText(kSize), u"1.5");
            shown.Type(kName, u"second");
            shown.Click(kFlag);
            shown.Type(kCount, u" 12 ");
            shown.Type(kSize, u"10");
            shown.Click(kRun);
            shown.Click(ok ? kIdOk : kIdCancel);
        });
        EXPECT_EQ(form.DoModal(), ok ? kIdOk : kIdCancel);
        EXPECT_EQ(form.m_Name, ok ? u"second" : u"first");
        EXPECT_EQ(form.m_Flag, !ok);
        EXPECT_EQ(form.m_Count, ok ? 12 : -7);
        EXPECT_EQ(form.m_Size, ok ? 10 : 1.5);
        EXPECT_EQ(form.m_Runs, 2);
    }
    EXPECT_TRUE(m_Desk.m_Messages.empty());
}

TEST_F(Dialog, ATextThatIsNoNumberIsRefusedBeforeTheDialogEnds) {
    const struct {
        unsigned m_Control;
        const char16_t* m_Text;
        const char16_t* m_Message; ///< null: taken
        double m_Value;
    } kRows[] = {{kCount, u"x", u"Please enter an integer.", -7},
                 {kCount, u"", u"Please enter an integer.", -7},
                 {kCount, u"1.5", u"Please enter an integer.", -7},
                 {kCount, u"12x", u"Please enter an integer.", -7},
                 {kCount, u"+3", nullptr, 3},
                 {kCount, u"99999999999999999999", nullptr, 2147483647},
                 {kCount, u"-99999999999", nullptr, -2147483648.0},
                 {kSize, u"", u"Please enter a number.", 1.5},
                 {kSize, u"1,5", u"Please enter a number.", 1.5},
                 {kSize, u"nan", u"Please enter a number.", 1.5},
                 {kSize, u"1e999", u"Please enter a number.", 1.5},
                 {kSize, u"-2.25", nullptr, -2.25}};
    for (const auto& row : kRows) {
        Form form;
        m_Desk.m_Messages.clear();
        Script([&row](HeadlessDialog& shown) {
            shown.Type(row.m_Control, row.m_Text);
            shown.Click(kIdOk);
            EXPECT_EQ(shown.GetResult().has_value(), row.m_Message == nullptr);
        });
        EXPECT_EQ(form.DoModal(), row.m_Message ? kIdCancel : kIdOk);
        EXPECT_EQ(row.m_Control == kCount ? form.m_Count : form.m_Size, row.m_Value);
        ASSERT_EQ(m_Desk.m_Messages.size(), row.m_Message ? 1u : 0u)
            << AString(row.m_Text).ToCString();
        if (row.m_Message) {
            EXPECT_EQ(m_Desk.m_Messages[0].m_Text, row.m_Message);
        }
    }
}

TEST_F(Dialog, WithoutATableOrABackendItIsCancelled) {
    Form missing(99);
    EXPECT_EQ(missing.DoModal(), kIdCancel);
    Page<99, 0> page;
    CPropertySheet sheet(u"Sheet");
    EXPECT_EQ(sheet.DoModal(), kIdCancel); // without a page
    sheet.AddPage(page);
    EXPECT_EQ(sheet.DoModal(), kIdCancel);
    EXPECT_EQ(page.m_Told, "");
    SetBackend(nullptr);
    Form form;
    EXPECT_EQ(form.DoModal(), kIdCancel);
    CFont font;
    EXPECT_FALSE(font.CreatePointFont(100, u"Mono"));
}

TEST_F(Dialog, ASheetEndsWhenAllItsPagesAllowIt) {
    const struct {
        const char16_t* m_Count;
        unsigned m_Button;
        const char* m_Told; ///< of the first page
        int m_Result;
        int m_Value;
    } kRows[] = {{u"5", kIdOk, "iro", kIdOk, 5},
                 {u"x", kIdOk, "irc", kIdCancel, 1}, // refused, then closed
                 {u"5", kIdCancel, "irc", kIdCancel, 1}};
    for (const auto& row : kRows) {
        Page<2, kName> first;
        Page<3, kCount> second;
        CPropertySheet sheet(u"Sheet");
        sheet.AddPage(first);
        sheet.AddPage(second);
        Script([&row](HeadlessDialog& shown) {
            EXPECT_EQ(shown.GetTitle(), u"Sheet");
            EXPECT_EQ(shown.GetText(kCount), u"1");
            EXPECT_TRUE(shown.Click(kRun));
            shown.Type(kCount, row.m_Count);
            EXPECT_TRUE(shown.Click(row.m_Button));
        });
        EXPECT_EQ(sheet.DoModal(), row.m_Result);
        EXPECT_EQ(first.m_Told, row.m_Told);
        EXPECT_EQ(second.m_Told, std::string("i") + row.m_Told[2]);
        EXPECT_EQ(second.m_Count, row.m_Value);
    }
}

TEST_F(Dialog, AFontByPoints) {
    CFont font;
    ASSERT_TRUE(font.CreatePointFont(105, u"Mono"));
    const LogFont asked = dynamic_cast<const HeadlessFont&>(*font.Get()).m_Font;
    EXPECT_EQ(asked.m_FaceName, u"Mono");
    EXPECT_EQ(asked.m_Height, -14); // 10.5 points at 96 pixels an inch
}

} // namespace
