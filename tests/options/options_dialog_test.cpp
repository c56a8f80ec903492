#include "options/options_dialog.h"

#include "options/options_dialog_fixture.h"

namespace {

TEST_F(OptionsDialogTest, AtFirstEverythingIsOnButTheInputPanel)
{
    Run([](DialogWindow& dialog) {
        EXPECT_EQ(WindowText(dialog.Window()), L"Options");
        for (const int id : {kConfirm, kOpenOnFind, kRetain, kCategories}) {
            EXPECT_TRUE(dialog.IsChecked(id)) << id;
            EXPECT_TRUE(dialog.IsEnabled(id)) << id;
        }
        EXPECT_FALSE(dialog.IsChecked(kInputPanel));
        EXPECT_FALSE(dialog.IsEnabled(kInputPanel));
        ExpectPassword(dialog, L"Password NOT Set!", false);
    });
}

TEST_F(OptionsDialogTest, TheCaptionsAreTheGivenOnes)
{
    Run([](DialogWindow& dialog) {
        EXPECT_EQ(dialog.Text(kConfirm), L"Confirm before &deleteing records");
        EXPECT_EQ(dialog.Text(kOpenOnFind), L"Open record in edit mode after &Find");
        EXPECT_EQ(dialog.Text(kInputPanel), L"Pop up &Input Panel during Edit mode");
        EXPECT_EQ(dialog.Text(kRetain), L"&Retain Filter Settings between sessions");
        EXPECT_EQ(dialog.Text(kCategories), L"Display assigned categories in edit mode");
        EXPECT_EQ(dialog.Text(kClear), L"&Clear Password");
    });
}

// As the template has it, before anything is read.
TEST(OptionsTemplate, TheStatusIsPasswordNotSet)
{
    HWND dialog = CreateDialogParamW(
        GetModuleHandleW(nullptr), MAKEINTRESOURCEW(103), nullptr,
        [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; }, 0);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(WindowText(GetDlgItem(dialog, kStatus)), L"Password Not Set");
    int frames = 0;
    for (HWND item = GetWindow(dialog, GW_CHILD); item; item = GetWindow(item, GW_HWNDNEXT))
        if ((GetWindowLongPtrW(item, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX && WindowText(item).empty())
            ++frames;
    EXPECT_EQ(frames, 2);
    DestroyWindow(dialog);
}

TEST_F(OptionsDialogTest, EachBoxShowsItsValue)
{
    const std::pair<int, const wchar_t*> values[] = {{kConfirm, L"ConfirmDelete"},
                                                     {kOpenOnFind, L"OpenOnFind"},
                                                     {kRetain, L"RememberFilter"},
                                                     {kCategories, L"DispCats"}};
    for (const auto& [off, name] : values) {
        for (const auto& value : values)
            Own().SetNumber(L"Options", value.second, value.first != off);
        Run([&](DialogWindow& dialog) {
            for (const auto& value : values)
                EXPECT_EQ(dialog.IsChecked(value.first), value.first != off) << value.second;
        });
    }
}

TEST_F(OptionsDialogTest, OkStoresTheBoxes)
{
    Own().SetNumber(L"Options", L"DynSIP", 7);
    Run([](DialogWindow& dialog) {
        dialog.Click(kConfirm);
        dialog.Click(kRetain);
        EXPECT_EQ(Stored(L"ConfirmDelete"), 0xDEADu) << "not before OK";
        dialog.Ok();
        EXPECT_FALSE(IsWindowVisible(dialog.Window())) << "it has ended";
    });
    EXPECT_EQ(Stored(L"ConfirmDelete"), 0u);
    EXPECT_EQ(Stored(L"OpenOnFind"), 1u);
    EXPECT_EQ(Stored(L"RememberFilter"), 0u);
    EXPECT_EQ(Stored(L"DispCats"), 1u);
    EXPECT_EQ(Stored(L"Password"), 0u);
    EXPECT_EQ(Stored(L"DynSIP"), 7u) << "never written";
}

// A value that a person or another program has put there is a mark like any other, until OK.
TEST_F(OptionsDialogTest, WhatIsStoredAsNoNumberShowsAsTheDefault)
{
    Own().SetString(L"Options", L"ConfirmDelete", L"0");
    Own().SetString(L"Options", L"RememberFilter", L"never");
    Own().SetNumber(L"Options", L"DispCats", 0x100);
    Run([](DialogWindow& dialog) {
        EXPECT_TRUE(dialog.IsChecked(kConfirm)) << "four bytes that are not zero";
        EXPECT_TRUE(dialog.IsChecked(kRetain));
        EXPECT_TRUE(dialog.IsChecked(kCategories));
        dialog.Ok();
    });
    for (const wchar_t* name : {L"ConfirmDelete", L"RememberFilter", L"DispCats"})
        EXPECT_EQ(Stored(name), 1u) << name;
}

TEST_F(OptionsDialogTest, OkMakesTheInputPanelsValueNever)
{
    Run([](DialogWindow& dialog) { dialog.Ok(); });
    EXPECT_EQ(Stored(L"DynSIP"), 0xDEADu);
    EXPECT_EQ(Stored(L"RememberFilter"), 1u) << "what the box showed is stored now";
}

TEST_F(OptionsDialogTest, TheInputPanelsBoxShowsNothingOfItsValue)
{
    Own().SetNumber(L"Options", L"DynSIP", 1);
    Run([](DialogWindow& dialog) {
        EXPECT_FALSE(dialog.IsChecked(kInputPanel));
        EXPECT_FALSE(dialog.IsEnabled(kInputPanel));
        dialog.AltKey('I');
        EXPECT_FALSE(dialog.IsChecked(kInputPanel));
    });
}

TEST_F(OptionsDialogTest, ItsOwnerWaits)
{
    const TestParent owner;
    Run(
        [&](DialogWindow& dialog) {
            EXPECT_EQ(GetWindow(dialog.Window(), GW_OWNER), owner.Handle());
            EXPECT_FALSE(IsWindowEnabled(owner.Handle()));
        },
        owner.Handle());
    EXPECT_TRUE(IsWindowEnabled(owner.Handle()));
}

TEST_F(OptionsDialogTest, CancelStoresNothing)
{
    const std::function<void(DialogWindow&)> ways[] = {
        [](DialogWindow& dialog) { dialog.Key(VK_ESCAPE); },
        [](DialogWindow& dialog) { dialog.Click(IDCANCEL); },
        [](DialogWindow& dialog) { SendMessageW(dialog.Window(), WM_SYSCOMMAND, SC_CLOSE, 0); }};
    for (const auto& close : ways) {
        Run([&](DialogWindow& dialog) {
            dialog.Click(kConfirm);
            close(dialog);
            EXPECT_FALSE(IsWindowVisible(dialog.Window())) << "it has ended";
        });
        for (const wchar_t* name :
             {L"ConfirmDelete", L"OpenOnFind", L"RememberFilter", L"DispCats", L"Password"})
            EXPECT_EQ(Stored(name), 0xDEADu) << name;
    }
}

} // namespace
