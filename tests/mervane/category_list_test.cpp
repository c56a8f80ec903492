#include "mervane/category_list.h"

#include <commctrl.h>

#include <gtest/gtest.h>

#include "records.h"
#include "support/test_store.h"
#include "support/test_windows.h"

namespace {

constexpr RECT kPlace{10, 20, 410, 220};

class CategoryList : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(m_categories.Open(), 1); }

    HWND Create()
    {
        m_list = m_categories.CreateListView(GetModuleHandleW(nullptr), m_parent.Handle(), kPlace, 111);
        EXPECT_NE(m_list, nullptr);
        return m_list;
    }
    void Add(std::initializer_list<const wchar_t*> names)
    {
        for (const wchar_t* name : names)
            ASSERT_NE(AddCategory(m_categories, name), 0u) << name;
    }
    std::wstring Text(int row) const
    {
        wchar_t text[300] = L"";
        ListView_GetItemText(m_list, row, 0, text, 300);
        return text;
    }
    std::vector<std::wstring> Texts() const
    {
        std::vector<std::wstring> texts;
        for (int row = 0; row < ListView_GetItemCount(m_list); ++row)
            texts.push_back(Text(row));
        return texts;
    }
    CEOID Parameter(int row) const
    {
        LVITEMW item{};
        item.mask = LVIF_PARAM;
        item.iItem = row;
        EXPECT_TRUE(ListView_GetItem(m_list, &item));
        return static_cast<CEOID>(item.lParam);
    }
    int Focused() const { return ListView_GetNextItem(m_list, -1, LVNI_FOCUSED); }

    // What the list has told of items that changed from one check to the other.
    bool Keep(UINT message, LPARAM lParam)
    {
        if (message == WM_NOTIFY && DbContacts::IsAssignmentChange(*reinterpret_cast<const NMHDR*>(lParam)))
            ++m_toggles;
        return false;
    }

    TestStore m_store;
    DbCategories m_categories;
    int m_toggles = 0;
    TestParent m_parent{
        [this](HWND, UINT message, WPARAM, LPARAM lParam, LRESULT*) { return Keep(message, lParam); }};
    HWND m_list = nullptr;
};

TEST_F(CategoryList, IsAChildWithCheckBoxes)
{
    HWND list = Create();
    EXPECT_EQ(GetParent(list), m_parent.Handle());
    EXPECT_EQ(GetDlgCtrlID(list), 111);
    RECT place{};
    GetWindowRect(list, &place);
    MapWindowPoints(nullptr, m_parent.Handle(), reinterpret_cast<POINT*>(&place), 2);
    EXPECT_TRUE(EqualRect(&place, &kPlace));
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(list, GWL_STYLE));
    EXPECT_EQ(style & (WS_CHILD | WS_VISIBLE | WS_TABSTOP), DWORD{WS_CHILD | WS_VISIBLE | WS_TABSTOP});
    EXPECT_EQ(style & LVS_TYPEMASK, DWORD{LVS_LIST});
    EXPECT_TRUE(style & LVS_SINGLESEL);
    EXPECT_TRUE(GetWindowLongPtrW(list, GWL_EXSTYLE) & WS_EX_CLIENTEDGE);
    EXPECT_EQ(ListView_GetExtendedListViewStyle(list), DWORD{LVS_EX_CHECKBOXES});
    EXPECT_EQ(ListView_GetItemCount(list), 0);
}

TEST_F(CategoryList, IsNoneWithoutAParent)
{
    EXPECT_EQ(m_categories.CreateListView(GetModuleHandleW(nullptr), nullptr, kPlace, 111), nullptr);
}

TEST_F(CategoryList, HoldsWhatIsNotHiddenInTheOrderOfTheNames)
{
    Add({L"Work", L"art", L"Home"});
    const CEOID hidden = AddCategory(m_categories, L"Hidden");
    ASSERT_EQ(m_categories.SetHidden(hidden, true), 1);
    Create();
    EXPECT_EQ(m_categories.UpdateListView(m_list), 1);
    EXPECT_EQ(Texts(), (std::vector<std::wstring>{L"art", L"Home", L"Work"}));
    for (int row = 0; row < 3; ++row) {
        wchar_t name[kCategoryNameSize];
        m_categories.GetStr(Parameter(row), name, kCategoryNameSize, kCategoriesKey);
        EXPECT_EQ(Text(row), name);
        EXPECT_EQ(ListView_GetItemState(m_list, row, LVIS_STATEIMAGEMASK), UINT{INDEXTOSTATEIMAGEMASK(1)});
    }
}

TEST_F(CategoryList, IsFilledAnew)
{
    Add({L"a", L"b"});
    Create();
    ASSERT_EQ(m_categories.UpdateListView(m_list), 1);
    ListView_SetCheckState(m_list, 0, TRUE);
    ASSERT_EQ(m_categories.DeleteRecord(Parameter(1)), 1);
    Add({L"A first"});
    ASSERT_EQ(m_categories.UpdateListView(m_list), 1);
    EXPECT_EQ(Texts(), (std::vector<std::wstring>{L"a", L"A first"}));
    EXPECT_FALSE(ListView_GetCheckState(m_list, 0)) << "unchecked";
    ASSERT_EQ(m_categories.DeleteRecord(Parameter(1)), 1);
    ASSERT_EQ(m_categories.DeleteRecord(Parameter(0)), 1);
    EXPECT_EQ(m_categories.UpdateListView(m_list), 1);
    EXPECT_EQ(ListView_GetItemCount(m_list), 0);
}

TEST_F(CategoryList, TakesThePlaceOfAnItemThatIsNoCategory)
{
    Create();
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    wchar_t text[] = L"<none>";
    item.pszText = text;
    ASSERT_EQ(ListView_InsertItem(m_list, &item), 0);
    Add({L"a"});
    EXPECT_EQ(m_categories.UpdateListView(m_list), 1);
    EXPECT_EQ(Texts(), (std::vector<std::wstring>{L"a"}));
}

TEST_F(CategoryList, KeepsTheFocusOnItsCategory)
{
    Add({L"b", L"c", L"d"});
    Create();
    ASSERT_EQ(m_categories.UpdateListView(m_list), 1);
    EXPECT_EQ(Focused(), 0) << "on the first where there was none";
    ListView_SetItemState(m_list, 1, LVIS_FOCUSED, LVIS_FOCUSED);
    Add({L"a"});
    ASSERT_EQ(m_categories.UpdateListView(m_list), 1);
    EXPECT_EQ(Text(Focused()), L"c");
    ASSERT_EQ(m_categories.DeleteRecord(Parameter(Focused())), 1);
    ASSERT_EQ(m_categories.UpdateListView(m_list), 1);
    EXPECT_EQ(Text(Focused()), L"d") << "what has its place now";
    ASSERT_EQ(m_categories.DeleteRecord(Parameter(2)), 1);
    ASSERT_EQ(m_categories.UpdateListView(m_list), 1);
    EXPECT_EQ(Text(Focused()), L"b") << "the last";
}

TEST_F(CategoryList, IsTurnedByMouseAndSpaceAndByNothingElse)
{
    Add({L"a", L"b"});
    Create();
    ASSERT_EQ(m_categories.UpdateListView(m_list), 1);
    EXPECT_EQ(m_toggles, 0) << "filling it checks nothing";
    PumpMessages();
    RECT label{};
    ListView_GetItemRect(m_list, 1, &label, LVIR_LABEL);
    const LPARAM box =
        MAKELPARAM(label.left - GetSystemMetrics(SM_CXSMICON) / 2, (label.top + label.bottom) / 2);
    SendMessageW(m_list, WM_LBUTTONDOWN, MK_LBUTTON, box);
    PostMessageW(m_list, WM_LBUTTONUP, 0, box);
    PumpMessages();
    EXPECT_TRUE(ListView_GetCheckState(m_list, 1));
    EXPECT_EQ(m_toggles, 1);
    SetFocus(m_list);
    SendMessageW(m_list, WM_KEYDOWN, VK_SPACE, 1);
    EXPECT_EQ(m_toggles, 2) << "the item that has the focus";
}

TEST_F(CategoryList, ShowsEachNameWhole)
{
    const std::wstring wide(40, L'W');
    Add({L"a", wide.c_str()});
    Create();
    ASSERT_EQ(m_categories.UpdateListView(m_list), 1);
    RECT label{};
    ListView_GetItemRect(m_list, 1, &label, LVIR_LABEL);
    const int needed = ListView_GetStringWidth(m_list, wide.c_str());
    EXPECT_TRUE(label.right - label.left >= needed || label.right >= kPlace.right - kPlace.left - 8)
        << label.right - label.left << " of " << needed;
}

TEST_F(CategoryList, TakesBrokenNames)
{
    RawStore raw(m_store.Path());
    ASSERT_TRUE(raw.Run("INSERT INTO categories(name) VALUES('')"));
    ASSERT_TRUE(raw.Run("INSERT INTO categories(name) VALUES(hex(zeroblob(20000)))"));
    ASSERT_TRUE(raw.Run("INSERT INTO categories(name) VALUES(x'FFFE')"));
    ASSERT_TRUE(raw.Run("INSERT INTO categories(name) VALUES('line' || char(13, 10, 9) || 'break')"));
    Create();
    ASSERT_EQ(m_categories.UpdateListView(m_list), 1);
    EXPECT_EQ(ListView_GetItemCount(m_list), 3);
    EXPECT_EQ(Text(0), L"");
    PumpMessages();
}

TEST_F(CategoryList, HoldsAThousand)
{
    {
        CeDBase::BulkScope bulk(m_categories);
        for (int i = 0; i < 1000; ++i)
            ASSERT_NE(AddCategory(m_categories, L"Category " + std::to_wstring(1000 + i)), 0u);
        ASSERT_EQ(bulk.Commit(), 1);
    }
    Create();
    ASSERT_EQ(m_categories.UpdateListView(m_list), 1);
    ASSERT_EQ(ListView_GetItemCount(m_list), 1000);
    for (int row = 0; row < 1000; row += 111)
        EXPECT_EQ(Text(row), L"Category " + std::to_wstring(1000 + row));
}

TEST_F(CategoryList, IsNotFilledFromWhatIsClosed)
{
    Add({L"a"});
    Create();
    EXPECT_EQ(m_categories.UpdateListView(nullptr), 0);
    EXPECT_EQ(m_categories.UpdateListView(reinterpret_cast<HWND>(INT_PTR{0x7FFF0001})), 0);
    m_categories.Close();
    EXPECT_EQ(m_categories.UpdateListView(m_list), 0);
    EXPECT_EQ(ListView_GetItemCount(m_list), 0);
}

} // namespace
