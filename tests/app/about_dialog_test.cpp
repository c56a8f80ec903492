// The About box, from its command.
#include "app/main_window_fixture.h"
#include "res/resource.h"
#include "ui/screen/work_area.h"

namespace {

// A control's text in its font.
SIZE TextSize(HWND control)
{
    HDC context = GetDC(control);
    HGDIOBJ before = SelectObject(context, reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)));
    const std::wstring text = WindowText(control);
    SIZE size{};
    GetTextExtentPoint32W(context, text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(context, before);
    ReleaseDC(control, context);
    return size;
}

TEST_F(MainWindowTest, AboutShowsTheProgramAndTheBuild)
{
    Create();
    std::wstring title, product, platform, build;
    bool bold = false;
    const ModalDriver driver([&](HWND dialog) {
        title = WindowText(dialog);
        product = WindowText(GetDlgItem(dialog, IDC_ABOUT_PRODUCT));
        platform = WindowText(GetDlgItem(dialog, IDC_ABOUT_PLATFORM));
        build = WindowText(GetDlgItem(dialog, IDC_ABOUT_BUILD));
        LOGFONTW font{};
        GetObjectW(reinterpret_cast<HFONT>(SendDlgItemMessageW(dialog, IDC_ABOUT_PRODUCT, WM_GETFONT, 0, 0)),
                   sizeof font, &font);
        bold = font.lfWeight == FW_BOLD;
        SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    Command(CMD_ABOUT);
    ASSERT_TRUE(driver.Ran());
    EXPECT_EQ(title, L"About Journal");
    EXPECT_EQ(product, L"Kelvra Journal");
    EXPECT_EQ(platform, L"Handheld PC Pro Version");
    EXPECT_EQ(build, L"Build (2094)");
    EXPECT_TRUE(bold);
}

// The name is larger than the rest, and whole.
TEST_F(MainWindowTest, AboutShowsItsNameWholeInTheMiddle)
{
    HWND owner = Create();
    const ModalDriver driver([&](HWND dialog) {
        EXPECT_EQ(::GetWindow(dialog, GW_OWNER), owner);
        EXPECT_FALSE(IsWindowEnabled(owner));
        const RECT area = WorkArea();
        RECT place{};
        GetWindowRect(dialog, &place);
        EXPECT_NEAR(place.left + place.right, area.left + area.right, 2);
        EXPECT_NEAR(place.top + place.bottom, area.top + area.bottom, 2);
        HWND product = GetDlgItem(dialog, IDC_ABOUT_PRODUCT);
        RECT room{};
        GetClientRect(product, &room);
        const SIZE name = TextSize(product), platform = TextSize(GetDlgItem(dialog, IDC_ABOUT_PLATFORM));
        EXPECT_LE(name.cx, room.right);
        EXPECT_LE(name.cy, room.bottom);
        EXPECT_GT(name.cy, platform.cy);
        SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    Command(CMD_ABOUT);
    ASSERT_TRUE(driver.Ran());
    EXPECT_TRUE(IsWindowEnabled(owner));
}

class AboutAnswer : public MainWindowTest, public testing::WithParamInterface<int> {};

TEST_P(AboutAnswer, ClosesItAndDeletesItsFont)
{
    Create();
    HGDIOBJ font = nullptr;
    const ModalDriver driver([&](HWND dialog) {
        font = reinterpret_cast<HGDIOBJ>(SendDlgItemMessageW(dialog, IDC_ABOUT_PRODUCT, WM_GETFONT, 0, 0));
        EXPECT_EQ(GetObjectType(font), DWORD{OBJ_FONT});
        SendMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(GetParam()), 0);
    });
    Command(CMD_ABOUT);
    ASSERT_TRUE(driver.Ran());
    EXPECT_EQ(GetObjectType(font), 0u);
}

INSTANTIATE_TEST_SUITE_P(Both, AboutAnswer, testing::Values(IDOK, IDCANCEL));

} // namespace
