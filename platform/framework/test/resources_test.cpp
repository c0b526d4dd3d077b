#include "resources.h"

#include <gtest/gtest.h>

#include "accelerator.h"
#include "doc_template.h"
#include "file_dialog.h"
#include "headless_desk.h"
#include "menu.h"
#include "wait_cursor.h"
#include "win_app.h"

namespace {

constexpr MenuRow kEditRows[] = {
    {MenuRow::popup, 0, u"&Edit"},     {MenuRow::item, 42005, u"Toggle &Bookmark\tCtrl+F2"},
    {MenuRow::separator, 0, u""},      {MenuRow::popup, 0, u"&More"},
    {MenuRow::item, 42002, u"&Go To"}, {MenuRow::popupEnd, 0, u""},
    {MenuRow::popupEnd, 0, u""},       {MenuRow::item, 42009, u"&Export"}};
constexpr MenuRow kOpenRows[] = {{MenuRow::popup, 0, u"never closed"}};
constexpr MenuRow kClosedRows[] = {{MenuRow::popupEnd, 0, u""}, {MenuRow::popup, 0, u""}};
constexpr MenuRow kOtherRows[] = {{MenuRow::item, 1, u"other"}};
constexpr MenuResource kMenus[] = {{9002, kEditRows}, {9003, kOpenRows}, {9004, kClosedRows}};
constexpr MenuResource kOtherMenus[] = {{9002, kOtherRows}};
constexpr Accelerator kKeys[] = {
    {'G', kModControl, 42002}, {kKeyF3, 0, 42008}, {kKeyF3, kModAlt | kModShift, 42012}};
constexpr AcceleratorResource kAccelerators[] = {{9000, kKeys}};
constexpr StringRow kStrings[] = {{42013, u"Netlist Editor Options"}, {57647, u"Undo"}};
constexpr ControlRow kControls[] = {{ControlRow::edit, 9001, u"", 7, 7, 40, 12}};
constexpr DialogResource kDialogs[] = {{9006, u"GoTo Line", 100, 50, kControls}};
constexpr const char* kPixels[] = {"1 1 1 1", "a c #000000", "a"};
constexpr PictureResource kPictures[] = {{9007, kPixels}};
constexpr ResourceTables kTables{kStrings, kMenus, kAccelerators, kDialogs, kPictures};
constexpr ResourceTables kOther{{}, kOtherMenus, {}, {}, {}};

} // namespace

TEST(Resources, AreKnownWhileRegisteredAndTheLastOnesWin) {
    EXPECT_EQ(FindMenu(9002), nullptr);
    {
        const ResourceRegistration registration(kTables);
        EXPECT_EQ(FindMenu(9002), &kMenus[0]);
        EXPECT_EQ(FindAccelerators(9000), &kAccelerators[0]);
        EXPECT_EQ(FindDialog(9006), &kDialogs[0]);
        EXPECT_EQ(FindPicture(9007), &kPictures[0]);
        EXPECT_EQ(FindPicture(9008), nullptr);
        EXPECT_EQ(AString(ResourceId{57647}), u"Undo");
        {
            const ResourceRegistration later(kOther);
            EXPECT_EQ(FindMenu(9002), &kOtherMenus[0]);
            EXPECT_EQ(FindDialog(9006), &kDialogs[0]);
        }
        EXPECT_EQ(FindMenu(9002), &kMenus[0]);
    }
    EXPECT_EQ(FindDialog(9006), nullptr);
    EXPECT_EQ(AString(ResourceId{57647}), u"");
}

TEST(Menu, IsBuiltFromItsTable) {
    const ResourceRegistration registration(kTables);
    CMenu menu;
    EXPECT_FALSE(menu.IsLoaded());
    ASSERT_TRUE(menu.LoadMenu(9002));
    ASSERT_EQ(menu.GetItemCount(), 2u);
    const CMenu* edit = menu.GetSubMenu(0);
    ASSERT_NE(edit, nullptr);
    ASSERT_EQ(edit->GetItemCount(), 3u);
    EXPECT_EQ(menu.GetItem(0).m_Text, u"&Edit");
    EXPECT_TRUE(edit->GetItem(1).IsSeparator());
    EXPECT_FALSE(menu.GetItem(0).IsSeparator());
    EXPECT_EQ(menu.GetSubMenu(1), nullptr);
    EXPECT_EQ(menu.GetSubMenu(2), nullptr);
    const std::pair<unsigned, const char16_t*> kFound[] = {
        {42005, u"Toggle &Bookmark\tCtrl+F2"}, {42002, u"&Go To"}, {42009, u"&Export"}};
    for (const auto& [command, text] : kFound)
        EXPECT_EQ(menu.FindCommand(command)->m_Text, text);
    EXPECT_EQ(menu.FindCommand(0), nullptr);
    EXPECT_EQ(menu.FindCommand(42000), nullptr);

    for (const unsigned bad : {9003u, 9004u, 9999u})
        EXPECT_FALSE(menu.LoadMenu(bad)) << bad;
    EXPECT_EQ(menu.GetItemCount(), 2u) << "a failed load changes nothing";
    menu.DestroyMenu();
    EXPECT_FALSE(menu.IsLoaded());
    EXPECT_EQ(menu.GetItemCount(), 0u);
}

TEST(Accelerators, NeedTheExactModifiers) {
    const ResourceRegistration registration(kTables);
    CAcceleratorTable table;
    EXPECT_EQ(table.FindCommand('G', kModControl), 0u);
    ASSERT_TRUE(table.LoadAccelerators(9000));
    const std::tuple<unsigned, unsigned, unsigned> kRows[] = {
        {'G', kModControl, 42002}, {'G', 0, 0},          {'G', kModControl | kModShift, 0},
        {kKeyF3, 0, 42008},        {kKeyF3, kModAlt, 0}, {kKeyF3, kModShift | kModAlt, 42012}};
    for (const auto& [key, modifiers, command] : kRows)
        EXPECT_EQ(table.FindCommand(key, modifiers), command) << key;
    table.Destroy();
    EXPECT_FALSE(table.IsLoaded());
    EXPECT_FALSE(table.LoadAccelerators(9001));
}

TEST(FileDialog, AsksTheDeskAndKeepsToItsRoom) {
    HeadlessDesk desk;
    const auto ask = [&](std::size_t room) {
        CFileDialog dialog(false, u"*.txt",
                           CFileDialog::overwritePrompt | CFileDialog::hideReadOnly,
                           u"All Files (*.*)|*.*||");
        dialog.m_MaxPath = room;
        return dialog.DoModal() == kIdOk ? dialog.GetPathName() : AString(u"cancelled");
    };
    desk.m_FileAnswers = {u"/a/b.txt"};
    EXPECT_EQ(ask(260), u"cancelled") << "without a backend";
    SetBackend(&desk);
    EXPECT_EQ(ask(260), u"/a/b.txt");
    EXPECT_EQ(ask(260), u"cancelled") << "without an answer";
    desk.m_FileAnswers = {AString(259, u'x'), AString(260, u'x')};
    EXPECT_EQ(ask(260), AString(259, u'x'));
    EXPECT_EQ(ask(260), u"cancelled") << "a path that doesn't fit";

    const FileRequest& request = desk.m_FileRequests.at(0);
    EXPECT_FALSE(request.m_Open);
    EXPECT_EQ(request.m_FileName, u"*.txt");
    EXPECT_TRUE(request.m_OverwritePrompt);
    EXPECT_FALSE(request.m_PathMustExist);
}

TEST(WaitCursor, NestsAndEndsWithTheArrow) {
    HeadlessDesk desk;
    SetBackend(&desk);
    {
        const CWaitCursor outer;
        const CWaitCursor inner;
    }
    EXPECT_EQ(desk.m_Cursors, (std::vector{CursorShape::wait, CursorShape::arrow}));
    SetBackend(nullptr);
    const CWaitCursor alone;
}

namespace {

class NamedTemplate : public CMultiDocTemplate {
public:
    NamedTemplate(unsigned id, std::vector<unsigned>& ended)
        : CMultiDocTemplate(id, nullptr, nullptr, nullptr), m_Ended(ended) {}
    ~NamedTemplate() override { m_Ended.push_back(GetResourceId()); }

private:
    std::vector<unsigned>& m_Ended;
};

} // namespace

TEST(Application, DestroysItsTemplatesTheLastOneFirst) {
    std::vector<unsigned> ended;
    {
        CWinApp app(u"Netlist");
        app.AddDocTemplate(std::make_unique<NamedTemplate>(9000, ended));
        app.AddDocTemplate(std::make_unique<NamedTemplate>(9001, ended));
        EXPECT_EQ(app.GetDocTemplates().size(), 2u);
        app.CloseTemplates();
        EXPECT_TRUE(app.GetDocTemplates().empty());
        app.AddDocTemplate(std::make_unique<NamedTemplate>(9002, ended));
    }
    EXPECT_EQ(ended, (std::vector<unsigned>{9001, 9000, 9002}));
}
