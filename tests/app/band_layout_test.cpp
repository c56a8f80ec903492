#include "app/band_layout.h"

#include <gtest/gtest.h>

#include "app/journal_app.h"
#include "res/resource.h"
#include "support/test_store.h"
#include "support/test_windows.h"
#include "ui/bars/command_bands.h"
#include "ui/screen/scale.h"

namespace {

class BandLayout : public testing::Test {
  protected:
    TestRegistry m_registry;
};

TEST_F(BandLayout, MissingSettingsReadAsTheDefaults)
{
    const REBARBANDINFOW menu = LoadBand(0, App());
    EXPECT_EQ(menu.fMask, static_cast<UINT>(RBBIM_STYLE | RBBIM_ID | RBBIM_SIZE));
    EXPECT_EQ(menu.wID, 103u);
    EXPECT_EQ(menu.fStyle, 256u);
    EXPECT_EQ(menu.cx, static_cast<UINT>(Scale(155)));
    const REBARBANDINFOW buttons = LoadBand(1, App());
    EXPECT_EQ(buttons.wID, 104u);
    EXPECT_EQ(buttons.fStyle, 128u);
    EXPECT_EQ(buttons.cx, static_cast<UINT>(Scale(140)));
    EXPECT_FALSE(IsBandStoredMaximized(0, App()));
    EXPECT_FALSE(IsBandStoredMaximized(1, App()));
}

TEST_F(BandLayout, StoredSettingsAreRead)
{
    App().SetNumber(L"Settings", L"mstyle", 129);
    App().SetNumber(L"Settings", L"mrestore", 200);
    App().SetNumber(L"Settings", L"mmax", 7);
    App().SetNumber(L"Settings", L"tstyle", 257);
    App().SetNumber(L"Settings", L"trestore", 300);
    App().SetNumber(L"Settings", L"tmax", 1);
    EXPECT_EQ(LoadBand(0, App()).fStyle, 129u);
    EXPECT_EQ(LoadBand(0, App()).cx, 200u);
    EXPECT_EQ(LoadBand(1, App()).fStyle, 257u);
    EXPECT_EQ(LoadBand(1, App()).cx, 300u);
    EXPECT_TRUE(IsBandStoredMaximized(0, App()));
    EXPECT_TRUE(IsBandStoredMaximized(1, App()));
}

// A band that is not there, or that has no identifier, has no layout.
TEST_F(BandLayout, OnlyBandsWithAnIdentifierAreSaved)
{
    const TestParent parent;
    HINSTANCE instance = GetModuleHandleW(nullptr);
    HWND bands = CommandBands_Create(instance, parent.Handle(), 102, RBS_BANDBORDERS, nullptr);
    REBARBANDINFOW nameless = LoadBand(0, App()), buttons = LoadBand(1, App());
    nameless.wID = 0;
    ASSERT_TRUE(CommandBands_AddBands(bands, instance, 1, &nameless));
    SaveBandLayout(bands, BandLayoutParts::All, App());
    EXPECT_EQ(App().GetNumber(L"Settings", L"mstyle", 0xABCDEF), 0xABCDEFu);
    EXPECT_EQ(App().GetNumber(L"Settings", L"tstyle", 0xABCDEF), 0xABCDEFu);
    ASSERT_TRUE(CommandBands_AddBands(bands, instance, 1, &buttons));
    SaveBandLayout(bands, BandLayoutParts::All, App());
    EXPECT_EQ(App().GetNumber(L"Settings", L"mstyle", 0xABCDEF), 0xABCDEFu);
    EXPECT_EQ(App().GetNumber(L"Settings", L"mmax", 0xABCDEF), 0xABCDEFu);
    EXPECT_EQ(App().GetNumber(L"Settings", L"tstyle", 0), 128u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"tmax", 7), 0u);
}

} // namespace
