#include "app/main_window_fixture.h"

namespace {

TEST_F(MainWindowTest, ItsEndSavesBandsAndColumns)
{
    HWND window = Create();
    EXPECT_EQ(App().GetNumber(L"Settings", L"iCols", 99), 99u) << "nothing is stored before the end";
    SendMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_EQ(App().GetNumber(L"Settings", L"iCols", 99), 2u);
    EXPECT_NE(App().GetNumber(L"Settings", L"Column10", 0), 0u);
    for (const wchar_t* name : {L"mstyle", L"mrestore", L"mmax", L"tstyle", L"trestore", L"tmax"})
        EXPECT_NE(App().GetNumber(L"Settings", name, 0xABCDEF), 0xABCDEFu) << name;
}

TEST_F(MainWindowTest, ItsEndTakesTheEmptyNoticeAway)
{
    HWND window = Create();
    ASSERT_NE(FindWindowExW(List(), nullptr, L"STATIC", nullptr), nullptr);
    SendMessageW(window, WM_DESTROY, 0, 0);
    EXPECT_EQ(FindWindowExW(List(), nullptr, L"STATIC", nullptr), nullptr);
}

// What was stored for a band is what it had, each value under its name.
TEST_F(MainWindowTest, ItsEndSavesEachBandAsItIs)
{
    App().SetNumber(L"Settings", L"mstyle", 128);
    App().SetNumber(L"Settings", L"tstyle", 129);
    App().SetNumber(L"Settings", L"trestore", 333);
    HWND window = Create();
    COMMANDBANDSRESTOREINFO bands[2]{};
    for (UINT i = 0; i < 2; ++i) {
        bands[i].cbSize = sizeof bands[i];
        ASSERT_TRUE(CommandBands_GetRestoreInformation(Bands(), i, &bands[i]));
    }
    ASSERT_EQ(bands[0].wID, 103u);
    ASSERT_EQ(bands[1].wID, 104u);
    SendMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_EQ(App().GetNumber(L"Settings", L"mstyle", 0), bands[0].fStyle);
    EXPECT_EQ(App().GetNumber(L"Settings", L"mrestore", 0), bands[0].cxRestored);
    EXPECT_EQ(App().GetNumber(L"Settings", L"mmax", 7), 0u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"tstyle", 0), bands[1].fStyle);
    EXPECT_EQ(App().GetNumber(L"Settings", L"trestore", 0), bands[1].cxRestored);
    EXPECT_EQ(App().GetNumber(L"Settings", L"tmax", 7), 0u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"mstyle", 0), 128u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"tstyle", 0), 129u);
    EXPECT_NE(bands[0].cxRestored, bands[1].cxRestored);
}

TEST_F(MainWindowTest, ItsEndSavesItsPlace)
{
    HWND window = Create();
    SetWindowPos(window, nullptr, 40, 50, 500, 300, SWP_NOZORDER);
    ASSERT_TRUE(PumpUntil([&] {
        RECT place;
        GetWindowRect(window, &place);
        return place.left == 40 && place.right == 540;
    }));
    SendMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_EQ(App().GetNumber(L"Settings", L"wLeft", 0), 40u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"wTop", 0), 50u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"wRight", 0), 540u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"wBottom", 0), 350u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"wMax", 7), 0u);
}

class StoredSort : public MainWindowTest {
  protected:
    StoredSort()
    {
        App().SetNumber(L"Settings", L"iCols", 1);
        App().SetNumber(L"Settings", L"Column0", 0x6506400C); // the date, not the sort column
    }
    CEPROPID OpenedSort()
    {
        SORTORDERSPEC sort{};
        App().Journal().GetSort(&sort);
        return sort.propid;
    }
};

TEST_F(StoredSort, IsTheOneTheJournalOpensIn)
{
    App().SetNumber(L"Options", L"sort", 0x0066001F);
    Create();
    EXPECT_EQ(OpenedSort(), 0x0066001Fu);
}

TEST_F(StoredSort, IsTheDateWhenItIsMissing)
{
    Create();
    EXPECT_EQ(OpenedSort(), 0x00650040u);
}

class LayoutNotification : public MainWindowTest, public testing::WithParamInterface<UINT> {};

TEST_P(LayoutNotification, SavesStyleAndWidthOnly)
{
    HWND window = Create();
    App().SetNumber(L"Settings", L"mmax", 77);
    App().SetNumber(L"Settings", L"tmax", 78);
    for (const wchar_t* name : {L"mstyle", L"mrestore", L"tstyle", L"trestore"})
        App().RemoveValue(L"Settings", name);
    NMHDR header{Bands(), IDC_BANDS, GetParam()};
    SendMessageW(window, WM_NOTIFY, IDC_BANDS, reinterpret_cast<LPARAM>(&header));
    EXPECT_EQ(App().GetNumber(L"Settings", L"mstyle", 0xABCDEF), 0xABCDEFu)
        << "the bands are in the midst of their work, and a box would let them be made anew";
    PumpMessages();
    for (const wchar_t* name : {L"mstyle", L"mrestore", L"tstyle", L"trestore"})
        EXPECT_NE(App().GetNumber(L"Settings", name, 0xABCDEF), 0xABCDEFu) << name;
    EXPECT_EQ(App().GetNumber(L"Settings", L"mmax", 0), 77u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"tmax", 0), 78u);
}

// Whether the layout had been saved by the time the list was moved.
bool g_savedBeforeMove = false;

LRESULT CALLBACK WatchMove(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR)
{
    if (message == WM_WINDOWPOSCHANGED)
        g_savedBeforeMove = App().GetNumber(L"Settings", L"mstyle", 0xABCDEF) != 0xABCDEF;
    return DefSubclassProc(list, message, wParam, lParam);
}

TEST_P(LayoutNotification, RefitsTheListFirst)
{
    HWND window = Create();
    SetWindowPos(List(), nullptr, 7, 3, 50, 40, SWP_NOZORDER | SWP_NOACTIVATE);
    App().RemoveValue(L"Settings", L"mstyle");
    g_savedBeforeMove = true;
    SetWindowSubclass(List(), WatchMove, 7, 0);
    NMHDR header{Bands(), IDC_BANDS, GetParam()};
    SendMessageW(window, WM_NOTIFY, IDC_BANDS, reinterpret_cast<LPARAM>(&header));
    RemoveWindowSubclass(List(), WatchMove, 7);
    EXPECT_FALSE(g_savedBeforeMove);
    ExpectListBelowBands();
}

INSTANTIATE_TEST_SUITE_P(Codes, LayoutNotification,
                         testing::Values(static_cast<UINT>(RBN_HEIGHTCHANGE),
                                         static_cast<UINT>(RBN_LAYOUTCHANGED)));

TEST_F(MainWindowTest, BuildingTheBandsSavesNothing)
{
    App().SetNumber(L"Settings", L"mrestore", 4242);
    ASSERT_NE(m_window.Create(Instance()), nullptr);
    EXPECT_EQ(App().GetNumber(L"Settings", L"mrestore", 0), 4242u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"tstyle", 0xABCDEF), 0xABCDEFu);
}

TEST_F(MainWindowTest, AStoredMaximizedBandIsMaximized)
{
    const std::pair<const wchar_t*, const wchar_t*> names[] = {{L"tmax", L"mmax"}, {L"mmax", L"tmax"}};
    for (const auto& [maximized, other] : names) {
        App().SetNumber(L"Settings", maximized, 3);
        App().SetNumber(L"Settings", other, 0);
        HWND window = Create();
        SendMessageW(window, WM_CLOSE, 0, 0);
        EXPECT_EQ(App().GetNumber(L"Settings", maximized, 0), 1u) << maximized;
        EXPECT_EQ(App().GetNumber(L"Settings", other, 5), 0u) << other;
    }
}

// The button band comes second, and of two bands in one row only one can be maximised.
TEST_F(MainWindowTest, OfTwoStoredMaximizedBandsTheLastOneIs)
{
    App().SetNumber(L"Settings", L"mmax", 1);
    App().SetNumber(L"Settings", L"tmax", 1);
    SendMessageW(Create(), WM_CLOSE, 0, 0);
    EXPECT_EQ(App().GetNumber(L"Settings", L"mmax", 5), 0u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"tmax", 5), 1u);
}

} // namespace
