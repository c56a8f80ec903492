#include "options/preferences.h"

#include <gtest/gtest.h>

#include "support/test_session.h"
#include "support/test_store.h"

namespace {

DWORD Stored(const wchar_t* name)
{
    return Own().GetNumber(L"Options", name, 0xDEAD);
}

TEST(Preferences, AreAllOnAtFirst)
{
    const TestRegistry registry;
    const Preferences preferences = ReadPreferences(Own());
    EXPECT_TRUE(preferences.confirmDelete);
    EXPECT_TRUE(preferences.openOnFind);
    EXPECT_TRUE(preferences.rememberFilter);
    EXPECT_TRUE(preferences.showCategories);
}

TEST(Preferences, EachHasItsOwnValue)
{
    const TestRegistry registry;
    const wchar_t* const names[] = {L"ConfirmDelete", L"OpenOnFind", L"RememberFilter", L"DispCats"};
    for (size_t off = 0; off < 4; ++off) {
        for (size_t i = 0; i < 4; ++i)
            Own().SetNumber(L"Options", names[i], i != off);
        const Preferences preferences = ReadPreferences(Own());
        EXPECT_EQ(preferences.confirmDelete, off != 0);
        EXPECT_EQ(preferences.openOnFind, off != 1);
        EXPECT_EQ(preferences.rememberFilter, off != 2);
        EXPECT_EQ(preferences.showCategories, off != 3);
        Own().RemoveValue(L"Options", names[off]);
        StorePreferences(Own(), preferences);
        for (size_t i = 0; i < 4; ++i)
            EXPECT_EQ(Stored(names[i]), DWORD{i != off}) << names[i];
    }
}

TEST(Preferences, AnyNumberButZeroIsOn)
{
    const TestRegistry registry;
    Own().SetNumber(L"Options", L"ConfirmDelete", 0x80000000);
    EXPECT_TRUE(ReadPreferences(Own()).confirmDelete);
}

} // namespace
