/// The sheet of the editor options, and what its OK does to store and views.
#include "breaking_desk.h"
#include "cmd_target.h"
#include "iview_doc.h"
#include "view_script.h"

namespace {

constexpr unsigned kOptions = 42000;
constexpr unsigned kEditColor = 9013, kSampleColor = 9014;
constexpr unsigned kFontName = 9015, kSize = 9016, kSample = 9017;

class OptionsSheet : public ScriptTest {
protected:
    /// Gives the factory's command; the script works the sheet.
    void Do(std::function<void(HeadlessDialog&)> script) {
        bool shown = false;
        m_Desk.m_DialogScripts.push_back([&](HeadlessDialog& sheet) {
            shown = true;
            script(sheet);
        });
        std::vector<CMenu*> menus;
        std::vector<CCmdTarget*> targets;
        ASSERT_TRUE(Factory().GetFactoryMenus(IViewDoc::kOptionsMenu, menus, targets));
        targets.at(0)->SendCommand(kOptions);
        EXPECT_TRUE(shown);
    }
    AString Stored(const char16_t* key) {
        AString value;
        m_Desktop.GetStringOption(value, 0, u"Options", key, u"none");
        return value;
    }
    ColorRef Background(int row) { return View().GetGrid().GetCell(row, 0).m_Background; }
    static const LogFont& FontOf(const HeadlessDialog& sheet) {
        return dynamic_cast<const HeadlessFont&>(*sheet.GetFont(kSample)).m_Font;
    }
};

TEST_F(OptionsSheet, ShowsTheOptionsAndASampleOfTheChoice) {
    m_Desk.m_Fonts = {u"Bee Mono", u"Ant", u"Bee Mono"};
    m_Desktop.SetIntegerOption(0, u"Options", u"BMColor", 0x123456);
    m_Desktop.SetStringOption(0, u"Options", u"TextFont", u"ant,-20");
    Do([this](HeadlessDialog& sheet) {
        EXPECT_EQ(sheet.GetTitle(), u"Netlist Editor Options");
        EXPECT_EQ(sheet.GetColor(kSampleColor), 0x123456u);
        EXPECT_EQ(sheet.GetItems(kFontName), (std::vector<AString>{u"Ant", u"Bee Mono"}));
        EXPECT_EQ(sheet.GetSelection(kFontName), 0);
        EXPECT_EQ(sheet.GetText(kSize), u"20");
        sheet.Choose(kFontName, u"Bee Mono");
        EXPECT_EQ(FontOf(sheet).m_FaceName, u"Bee Mono");
        const std::pair<const char16_t*, int> kRows[] = {
            {u"9", -12},   {u"", -12}, {u"x", -12},      {u"7.5", -10}, // pixels of so many points
            {u"-12", -16}, {u"0", 0},  {u"1e300", -666}, {u"12", -16}};
        for (const auto& [text, height] : kRows) {
            sheet.Type(kSize, text);
            EXPECT_EQ(FontOf(sheet).m_Height, height) << AString(text).ToCString();
        }
        sheet.Type(kFontName, u"An");
        EXPECT_EQ(FontOf(sheet).m_FaceName, u"Bee Mono");
        sheet.Type(kFontName, u"Ant");
        EXPECT_EQ(FontOf(sheet).m_FaceName, u"Ant");
        EXPECT_TRUE(m_Desk.m_Messages.empty());
    });
    m_Desk.m_Fonts = {u"Bee Mono"}; // a face that isn't there is shown all the same
    Do([](HeadlessDialog& sheet) {
        EXPECT_EQ(sheet.GetSelection(kFontName), -1);
        EXPECT_EQ(sheet.GetText(kFontName), u"ant");
        EXPECT_EQ(FontOf(sheet).m_FaceName, u"ant");
    });
}

TEST_F(OptionsSheet, OkStoresFaceHeightAndColour) {
    constexpr char16_t kRest[] = u",0,0,0,400,0,0,0,0,3,2,1,34";
    m_Desk.m_Fonts = {u"Ant", u"Bee"};
    const struct {
        const char16_t* m_Face; ///< null: not chosen
        const char16_t* m_Size; ///< null: not typed
        const char16_t* m_Stored;
        unsigned m_Button;
    } kRows[] = {
        {u"Bee", nullptr, u"Bee,-12", kIdOk},
        {nullptr, u"10", u"Bee,-10", kIdOk},
        {u"Ant", u"9.9", u"Bee,-10", kIdCancel},
        {nullptr, u"-14.7", u"Bee,-14", kIdOk}, // a face that was chosen and cancelled is forgotten
        {u"Ant", u"0", u"Ant,0", kIdOk},
        {nullptr, u"4e9", u"Ant,-2147483647", kIdOk}};
    for (const auto& row : kRows) {
        Do([&row](HeadlessDialog& sheet) {
            if (row.m_Face)
                sheet.Choose(kFontName, row.m_Face);
            if (row.m_Size)
                sheet.Type(kSize, row.m_Size);
            EXPECT_TRUE(sheet.Click(row.m_Button));
        });
        EXPECT_EQ(Stored(u"TextFont"), AString(row.m_Stored) + kRest);
    }
    Do([this](HeadlessDialog& sheet) {
        sheet.Type(kSize, u"big");
        sheet.Click(kIdOk);
        EXPECT_FALSE(sheet.GetResult().has_value());
        EXPECT_EQ(m_Desk.m_Messages.size(), 1u);
    });
    EXPECT_EQ(Stored(u"TextFont"), AString(u"Ant,-2147483647") + kRest);
}

TEST_F(OptionsSheet, ViewsTakeTheBookmarkColour) {
    Start("|ab\ncd");
    Play("C-F2");
    TestInstance instance(u"other");
    OpenEditor script(Factory().CreateScriptEditor(nullptr, u"x", u"", u"s"));
    script->OpenView(&instance);
    HeadlessWindow& scriptView = View();
    script.m_Driver->RunCommand(42005);
    m_Desk.Pump();
    const auto colourOf = [](HeadlessWindow& view) {
        return view.GetGrid().GetCell(0, 0).m_Background;
    };
    HeadlessWindow& netlistView =
        *std::ranges::find(m_Desk.GetWindows(), WindowKind::view, &HeadlessWindow::GetKind)[0];
    EXPECT_EQ(colourOf(netlistView), 0xC0C0C0u);
    for (const bool ok : {false, true}) {
        m_Desk.m_ColorAnswers = {0x00FF00};
        Do([ok](HeadlessDialog& sheet) {
            sheet.Click(kEditColor);
            EXPECT_EQ(sheet.GetColor(kSampleColor), 0x00FF00u);
            sheet.Click(kEditColor); // cancelled
            EXPECT_EQ(sheet.GetColor(kSampleColor), 0x00FF00u);
            sheet.Click(ok ? kIdOk : kIdCancel);
        });
        m_Desk.Pump();
        EXPECT_EQ(Stored(u"BMColor"), ok ? u"65280" : u"none");
        EXPECT_EQ(colourOf(netlistView), ok ? 0x00FF00u : 0xC0C0C0u);
        EXPECT_EQ(colourOf(scriptView), 0xC0C0C0u);
    }
    netlistView.SetFocus();
    scriptView.SetFocus();
    m_Desk.Pump();
    EXPECT_EQ(colourOf(scriptView), 0x00FF00u);
}

TEST_F(OptionsSheet, WithoutMemoryForAFontTheOptionIsStoredAllTheSame) {
    BreakingDesk breaking(m_Desk);
    Start("|ab");
    m_Desk.m_Fonts = {u"Bee"};
    SetBackend(&breaking);
    Do([&breaking](HeadlessDialog& sheet) {
        breaking.m_Broken = kBreakFont;
        sheet.Choose(kFontName, u"Bee");
        EXPECT_EQ(FontOf(sheet).m_FaceName, u"Courier New");
        sheet.Click(kIdOk);
    });
    EXPECT_EQ(Stored(u"TextFont").Left(7), u"Bee,-12");
    SetBackend(&m_Desk);
    ExpectTruePicture();
}

} // namespace
