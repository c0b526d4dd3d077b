#include "interface_id.h"

#include <gtest/gtest.h>

#include "ifactory.h"

TEST(InterfaceId, TextFormGoesBothWays) {
    const std::pair<InterfaceId, const char*> kRows[] = {
        {{}, "{00000000-0000-0000-0000-000000000000}"},
        {kUnknownId, "{00000000-0000-0000-C000-000000000046}"},
        {kNetlistFactoryClassId, "{4C958AF9-36BE-4B70-A715-DA9F9B1D24E7}"},
        {kNetlistFactoryId, "{BCE7B94E-CEB8-4B55-A72A-03775783EAD6}"},
        {kFactoryId, "{8BC9E5C1-17F4-11D3-9591-0000C0DB3E0F}"},
        {kEditorFactoryId, "{6E95B8F0-BCBF-11D4-A3C0-00010235134F}"},
        {kNetlistApplicationId, "{349C1E8C-81EE-4B36-9697-8384E1CE2FDF}"},
        {kNetlistTypeLibraryId, "{6930EA0B-FE84-4D4F-9D8A-ED71BA25C229}"},
        {{0x01234567, 0x89AB, 0xCDEF, {0xFE, 0xDC, 0xBA, 0x98, 0x76, 0x54, 0x32, 0x10}},
         "{01234567-89AB-CDEF-FEDC-BA9876543210}"}};
    for (const auto& [id, text] : kRows) {
        EXPECT_EQ(id.ToText(), text);
        EXPECT_EQ(InterfaceId::FromText(text), id) << text;
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
