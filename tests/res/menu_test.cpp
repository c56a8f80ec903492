#include <windows.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace {

struct Item {
    UINT id; // 0: a separator
    std::wstring text;

    bool operator==(const Item&) const = default;
};

void PrintTo(const Item& item, std::ostream* out)
{
    *out << item.id << " \"" << std::string(item.text.begin(), item.text.end()) << '"';
}

using MenuPointer = std::unique_ptr<std::remove_pointer_t<HMENU>, decltype(&DestroyMenu)>;

MenuPointer MainMenu()
{
    return {LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(101)), &DestroyMenu};
}

std::wstring ItemText(HMENU menu, int position)
{
    wchar_t text[100];
    const int length = GetMenuStringW(menu, static_cast<UINT>(position), text, 100, MF_BYPOSITION);
    return {text, static_cast<size_t>(length)};
}

std::vector<Item> Items(HMENU menu)
{
    std::vector<Item> items;
    for (int position = 0; position < GetMenuItemCount(menu); ++position)
        items.push_back({GetMenuItemID(menu, position), ItemText(menu, position)});
    return items;
}

class MainMenuTest : public testing::Test {
  protected:
    void SetUp() override { ASSERT_NE(m_menu, nullptr); }

    MenuPointer m_menu = MainMenu();
};

TEST_F(MainMenuTest, HasFourMenus)
{
    ASSERT_EQ(GetMenuItemCount(m_menu.get()), 4);
    EXPECT_EQ(ItemText(m_menu.get(), 0), L"&File");
    EXPECT_EQ(ItemText(m_menu.get(), 1), L"&Edit");
    EXPECT_EQ(ItemText(m_menu.get(), 2), L"&Go");
    EXPECT_EQ(ItemText(m_menu.get(), 3), L"&Tools");
}

TEST_F(MainMenuTest, FileHoldsNoQuitYet)
{
    const std::vector<Item> expected = {{100, L"&New Entry"}, {0, L""}, {122, L"&Export..."}};
    EXPECT_EQ(Items(GetSubMenu(m_menu.get(), 0)), expected);
}

TEST_F(MainMenuTest, EditShowsItsShortcuts)
{
    const std::vector<Item> expected = {{141, L"&Cut\tCtrl+X"},     {143, L"Copy\tCtrl+C"},
                                        {142, L"&Paste\tCtrl+V"},   {0, L""},
                                        {101, L"&Edit Entry"},      {0, L""},
                                        {102, L"&Delete Entry"},    {0, L""},
                                        {103, L"&Categories List"}, {104, L"&Subjects List"}};
    EXPECT_EQ(Items(GetSubMenu(m_menu.get(), 1)), expected);
}

TEST_F(MainMenuTest, GoHoldsNoMyHandheldYet)
{
    const std::vector<Item> expected = {
        {110, L"&Calendar"}, {111, L"&Contacts"}, {112, L"&Inbox"}, {113, L"&Tasks"}};
    EXPECT_EQ(Items(GetSubMenu(m_menu.get(), 2)), expected);
}

TEST_F(MainMenuTest, Tools)
{
    const std::vector<Item> expected = {{115, L"&Find..."},
                                        {0, L""},
                                        {118, L"Filter on &Categories"},
                                        {120, L"Filter on &Months"},
                                        {121, L"Cl&ear Filter"},
                                        {0, L""},
                                        {124, L"C&ustomize Columns..."},
                                        {117, L"&Options"},
                                        {0, L""},
                                        {127, L"&Help Contents"},
                                        {0, L""},
                                        {160, L"&About"}};
    EXPECT_EQ(Items(GetSubMenu(m_menu.get(), 3)), expected);
}

TEST_F(MainMenuTest, StartsWithEveryItemEnabledAndUnchecked)
{
    for (int menu = 0; menu < 4; ++menu) {
        HMENU popup = GetSubMenu(m_menu.get(), menu);
        for (int position = 0; position < GetMenuItemCount(popup); ++position) {
            const UINT state = GetMenuState(popup, static_cast<UINT>(position), MF_BYPOSITION);
            if (GetMenuItemID(popup, position) == 0)
                EXPECT_NE(state & MF_SEPARATOR, 0u) << menu << ", " << position;
            else
                EXPECT_EQ(state, 0u) << menu << ", " << position;
        }
    }
}

} // namespace
