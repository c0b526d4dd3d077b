#include "interface_id.h"

#include <gtest/gtest.h>

#include "ifactory.h"

TEST(InterfaceId, TextFormGoesBothWays) {
    const struct {
        InterfaceId m_Id;
        const char* m_Text;
    } kRows[] = {
        {{}, "{00000000-0000-0000-0000-000000000000}"},
        {kUnknownId, "{00000000-0000-0000-C000-000000000046}"},
        {kNetlistFactoryClassId, "{4C958AF9-36BE-4B70-A715-DA9F9B1D24E7}"},
        {kNetlistFactoryId, "{BCE7B94E-CEB8-4B55-A72A-03775783EAD6}"},
        {kFactoryId, "{8BC9E5C1-17F4-11D3-9591-0000C0DB3E0F}"},
        {kEditorFactoryId, "{6E95B8F0-BCBF-11D4-A3C0-00010235134F}"},
        {kNetlistApplicationId, "{349C1E8C-81EE-4B36-9697-8384E1CE2FDF}"},
        {kNetlistTypeLibraryId, "{6930EA0B-FE84-4D4F-9D8A-ED71BA25C229}"},
        {{0x01234567, 0x89AB, 0xCDEF, {0xFE, 0xDC, 0xBA, 0x98, 0x76, 0x54, 0x32, 0x10}},
         "{01234567-89AB-CDEF-FEDC-BA9876543210}"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(row.m_Id.ToText(), row.m_Text);
        EXPECT_EQ(InterfaceId::FromText(row.m_Text), row.m_Id) << row.m_Text;
    }
    EXPECT_EQ(InterfaceId::FromText("{6930ea0b-fe84-4d4f-9d8a-ed71ba25c229}"),
              kNetlistTypeLibraryId);
}

TEST(InterfaceId, RefusesEveryOtherForm) {
    for (const char* text :
         {"", "{}", "6930EA0B-FE84-4D4F-9D8A-ED71BA25C229", "{6930EA0B-FE84-4D4F-9D8A-ED71BA25C229",
          "{6930EA0B-FE84-4D4F-9D8A-ED71BA25C229} ", "{6930EA0B+FE84-4D4F-9D8A-ED71BA25C229}",
          "{6930EA0G-FE84-4D4F-9D8A-ED71BA25C229}", "{6930EA0B-FE84-4D4F-9D8A-ED71BA25C22-}",
          "(6930EA0B-FE84-4D4F-9D8A-ED71BA25C229)"})
        EXPECT_FALSE(InterfaceId::FromText(text)) << text;
}

TEST(InterfaceId, ComparesAllSixteenBytes) {
    const InterfaceId base{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    for (const InterfaceId& other :
         {InterfaceId{2, 2, 3, base.m_Data4}, InterfaceId{1, 3, 3, base.m_Data4},
          InterfaceId{1, 2, 4, base.m_Data4}, InterfaceId{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 12}}}) {
        EXPECT_NE(base, other);
        EXPECT_LT(base, other);
    }
}

namespace {

/// A factory that answers as little as it may.
class BareFactory : public IEditorFactory {
public:
    virtual ~BareFactory() = default;
    ResultCode QueryInterface(const InterfaceId&, void**) override { return kResultNoInterface; }
    std::uint32_t AddRef() override { return 1; }
    std::uint32_t Release() override { return 1; }
    int InitializeFactory(IDesktop*) override { return 1; }
    void UninitializeFactory() override {}
    bool GetFactoryMenu(int kind, CMenu*& menu, std::vector<CCmdTarget*>& targets) override {
        if (kind != 8)
            return false;
        menu = reinterpret_cast<CMenu*>(&m_Marker);
        targets.push_back(nullptr);
        return true;
    }
    void GetEnvironmentName(AString& name) override { name = u"Environment"; }
    IEditor* CreateEditor(IComponent*) override { return nullptr; }
    void GetEditorsName(AString&) override {}

    int m_Marker = 0;
};

} // namespace

TEST(Factory, DefaultsFollowTheOperationsThatAFactoryHas) {
    BareFactory factory;
    std::vector<CMenu*> menus;
    std::vector<CCmdTarget*> targets;
    EXPECT_FALSE(factory.GetFactoryMenus(7, menus, targets));
    EXPECT_TRUE(menus.empty() && targets.empty());
    EXPECT_TRUE(factory.GetFactoryMenus(8, menus, targets));
    EXPECT_TRUE(factory.GetFactoryMenus(8, menus, targets));
    EXPECT_EQ(menus, std::vector<CMenu*>(2, reinterpret_cast<CMenu*>(&factory.m_Marker)));
    EXPECT_EQ(targets.size(), 2u);

    AString name;
    factory.GetFactoryName(name);
    EXPECT_EQ(name, u"Environment");

    auto* editor = reinterpret_cast<IDesignEditor*>(&factory.m_Marker);
    factory.CreateDesignEditor(nullptr, editor);
    EXPECT_EQ(editor, nullptr);
}
