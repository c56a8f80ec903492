#include "ui/bars/command_bands.h"

#include <gtest/gtest.h>

#include "res/resource.h"
#include "ui/bands_window.h"
#include "ui/input.h"
#include "ui/screen/scale.h"
#include "ui/ui_test_resource.h"
#include "util/owners.h"

namespace {

constexpr int kWidth = 640;

HINSTANCE Instance()
{
    return GetModuleHandleW(nullptr);
}

std::function<POINT()> ButtonAt(HWND bar, size_t index)
{
    return [bar, index] { return CenterOf(bar, ButtonRects(bar)[index]); };
}

constexpr size_t kNewButton = 0;
constexpr size_t kGreyButton = 4;
constexpr size_t kFilterButton = 7;

} // namespace

TEST(CommandBands, HaveTheirIdentifierAndStyle)
{
    const BandsWindow window(kWidth);
    EXPECT_EQ(GetDlgCtrlID(window.Bands()), static_cast<int>(kBandsId));
    EXPECT_EQ(GetParent(window.Bands()), window.Window());
    EXPECT_TRUE(GetWindowLongPtrW(window.Bands(), GWL_STYLE) & RBS_BANDBORDERS);
    EXPECT_EQ(SendMessageW(window.Bands(), RB_GETBANDCOUNT, 0, 0), 2);
    EXPECT_EQ(SendMessageW(window.Bands(), RB_IDTOINDEX, kMenuBandId, 0), 0);
    EXPECT_EQ(SendMessageW(window.Bands(), RB_IDTOINDEX, kButtonBandId, 0), 1);
}

TEST(CommandBands, TakeAnImageList)
{
    const TestParent parent;
    const UniqueImageList images(ImageList_Create(16, 16, ILC_COLOR32, 1, 1));
    HWND bands = CommandBands_Create(Instance(), parent.Handle(), 5, 0, images.get());
    REBARINFO info{sizeof info, RBIM_IMAGELIST, nullptr};
    SendMessageW(bands, RB_GETBARINFO, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(info.himl, images.get());
    DestroyWindow(bands);
    EXPECT_EQ(ImageList_GetImageCount(images.get()), 0); // still the caller's
}

TEST(CommandBands, EachBandHasABarOfItsOwn)
{
    const BandsWindow window(kWidth);
    EXPECT_NE(window.MenuBar(), nullptr);
    EXPECT_NE(window.ButtonBar(), nullptr);
    EXPECT_NE(window.MenuBar(), window.ButtonBar());
    EXPECT_EQ(CommandBands_GetCommandBar(window.Bands(), 2), nullptr);
    EXPECT_EQ(CommandBands_GetCommandBar(window.Bands(), static_cast<UINT>(-1)), nullptr);
}

TEST(CommandBands, OtherWindowsAreNoBands)
{
    const TestParent parent;
    COMMANDBANDSRESTOREINFO info{};
    info.wID = 77;
    MSG message{};
    EXPECT_EQ(CommandBands_Create(Instance(), nullptr, 1, 0, nullptr), nullptr);
    EXPECT_FALSE(CommandBands_AddBands(parent.Handle(), Instance(), 0, nullptr));
    EXPECT_EQ(CommandBands_GetCommandBar(parent.Handle(), 0), nullptr);
    EXPECT_FALSE(CommandBands_AddAdornments(parent.Handle(), Instance(), kAdornments));
    EXPECT_FALSE(CommandBands_GetRestoreInformation(parent.Handle(), 0, &info));
    EXPECT_FALSE(CommandBar_InsertMenubar(parent.Handle(), Instance(), TEST_MENU));
    EXPECT_EQ(CommandBar_GetMenu(parent.Handle()), nullptr);
    EXPECT_EQ(CommandBar_AddBitmap(parent.Handle(), Instance(), IDB_NEW_ENTRY, 1), -1);
    EXPECT_FALSE(CommandBands_TranslateMenuKey(parent.Handle(), message));
    CommandBands_Resize(nullptr);
    EXPECT_EQ(info.wID, 77u);
}

TEST(CommandBands, MissingBandHasNoRestoreInformation)
{
    const BandsWindow window(kWidth);
    COMMANDBANDSRESTOREINFO info{};
    info.wID = 77;
    EXPECT_FALSE(CommandBands_GetRestoreInformation(window.Bands(), 2, &info));
    EXPECT_FALSE(CommandBands_GetRestoreInformation(window.Bands(), static_cast<UINT>(-1), &info));
    EXPECT_EQ(info.wID, 77u);
}

TEST(CommandBands, AdornmentsAreAddedOnce)
{
    const BandsWindow window(kWidth);
    EXPECT_FALSE(CommandBands_AddAdornments(window.Bands(), Instance(), kAdornments));
}

TEST(CommandBands, AdornmentsFollowTheirFlags)
{
    const TestParent parent;
    HWND bands = CommandBands_Create(Instance(), parent.Handle(), 5, 0, nullptr);
    EXPECT_TRUE(CommandBands_AddAdornments(bands, Instance(), kAdornClose));
    HWND bar = FindWindowExW(parent.Handle(), nullptr, TOOLBARCLASSNAMEW, nullptr);
    ASSERT_EQ(SendMessageW(bar, TB_BUTTONCOUNT, 0, 0), 1);
    TBBUTTON button{};
    SendMessageW(bar, TB_GETBUTTON, 0, reinterpret_cast<LPARAM>(&button));
    wchar_t text[16] = L"";
    SendMessageW(bar, TB_GETBUTTONTEXTW, static_cast<WPARAM>(button.idCommand),
                 reinterpret_cast<LPARAM>(text));
    EXPECT_STREQ(text, L"Close");
    // They go with the bands.
    DestroyWindow(bands);
    EXPECT_FALSE(IsWindow(bar));
}

TEST(CommandBands, ImagesAreNumberedInTheOrderOfTheirBitmaps)
{
    const BandsWindow window(kWidth); // 3 + 15 images
    EXPECT_EQ(CommandBar_AddBitmap(window.ButtonBar(), Instance(), IDB_FILTER, 1), 18);
    EXPECT_EQ(CommandBar_AddBitmap(window.ButtonBar(), Instance(), 9999, 1), -1);
    EXPECT_EQ(CommandBar_AddBitmap(window.ButtonBar(), Instance(), IDB_FILTER, 2), -1); // has but one
    EXPECT_EQ(CommandBar_AddBitmap(window.ButtonBar(), Instance(), IDB_FILTER, 0), -1);
    EXPECT_EQ(CommandBar_AddBitmap(window.ButtonBar(), HINST_COMMCTRL, 9999, 1), -1);
    EXPECT_EQ(CommandBar_AddBitmap(window.ButtonBar(), Instance(), IDB_EDIT_ENTRY, 1), 19);
    auto* images = reinterpret_cast<HIMAGELIST>(SendMessageW(window.ButtonBar(), TB_GETIMAGELIST, 0, 0));
    int width = 0;
    int height = 0;
    ImageList_GetIconSize(images, &width, &height);
    EXPECT_EQ(width, Scale(16));
    EXPECT_EQ(height, Scale(16));
    auto* greyed =
        reinterpret_cast<HIMAGELIST>(SendMessageW(window.ButtonBar(), TB_GETDISABLEDIMAGELIST, 0, 0));
    EXPECT_NE(greyed, images);
    EXPECT_EQ(ImageList_GetImageCount(greyed), 20);
    EXPECT_EQ(ImageList_GetImageCount(images), 20);
}

TEST(CommandBands, HeightChangeIsToldToTheParent)
{
    BandsWindow window(Scale(kWidth));
    const int before = CommandBands_Height(window.Bands());
    int heightWhenTold = 0;
    window.onMessage = [&](UINT message, WPARAM wParam, LPARAM lParam, LRESULT*) {
        if (message == WM_NOTIFY && wParam == kBandsId &&
            reinterpret_cast<const NMHDR*>(lParam)->code == static_cast<UINT>(RBN_HEIGHTCHANGE))
            heightWhenTold = CommandBands_Height(window.Bands());
        return false;
    };
    window.SetClientWidth(Scale(400));
    EXPECT_GT(heightWhenTold, before);
    EXPECT_EQ(heightWhenTold, CommandBands_Height(window.Bands()));
}

// What is asked for then is what the drag made.
TEST(CommandBands, DragIsToldToTheParentWhenItIsDone)
{
    BandsWindow window(Scale(800));
    UINT widthWhenTold = 0;
    window.onMessage = [&](UINT message, WPARAM wParam, LPARAM lParam, LRESULT*) {
        if (message == WM_NOTIFY && wParam == kBandsId &&
            reinterpret_cast<const NMHDR*>(lParam)->code == static_cast<UINT>(RBN_LAYOUTCHANGED))
            widthWhenTold = window.Restore(0).cxRestored;
        return false;
    };
    window.DragGripper(Scale(60), 0);
    EXPECT_EQ(widthWhenTold, static_cast<UINT>(Scale(155) + Scale(60)));
}

TEST(CommandBands, ButtonsSendTheirCommandToTheParent)
{
    BandsWindow window(kWidth);
    window.Show();
    InputScript()
        .Click(ButtonAt(window.ButtonBar(), kNewButton))
        .Until("command", [&window] { return !window.commands.empty(); })
        .Run();
    EXPECT_EQ(window.commands, std::vector<UINT>{100});
}

TEST(CommandBands, GreyButtonSendsNothing)
{
    BandsWindow window(kWidth);
    window.Show();
    InputScript()
        .Click(ButtonAt(window.ButtonBar(), kGreyButton))
        .Click(ButtonAt(window.ButtonBar(), kNewButton))
        .Until("command", [&window] { return !window.commands.empty(); })
        .Run();
    EXPECT_EQ(window.commands, std::vector<UINT>{100});
}

TEST(CommandBands, BodyOfADropDownButtonSendsItsCommandAndTheArrowItsNotification)
{
    BandsWindow window(kWidth);
    window.Show();
    const auto arrow = [&window] {
        const RECT rect = ButtonRects(window.ButtonBar())[kFilterButton];
        return CenterOf(window.ButtonBar(), {rect.right - Scale(8), rect.top, rect.right, rect.bottom});
    };
    InputScript()
        .Click(ButtonAt(window.ButtonBar(), kFilterButton))
        .Until("command", [&window] { return !window.commands.empty(); })
        .Run();
    EXPECT_EQ(window.commands, std::vector<UINT>{kFilterCommand});
    EXPECT_FALSE(window.Has(0, static_cast<UINT>(TBN_DROPDOWN)));
    window.commands.clear();
    window.notifications.clear();
    const auto isDropped = [&window] {
        for (const auto& notification : window.notifications)
            if (notification.code == static_cast<UINT>(TBN_DROPDOWN) && notification.item == kFilterCommand)
                return true;
        return false;
    };
    InputScript().Click(arrow).Until("drop-down", isDropped).Run();
    EXPECT_TRUE(window.commands.empty());
}

TEST(CommandBands, TipsAreAskedForAtTheParent)
{
    BandsWindow window(kWidth);
    window.Show();
    std::wstring shown;
    window.onMessage = [&](UINT message, WPARAM, LPARAM lParam, LRESULT*) {
        auto* tip = reinterpret_cast<NMTBGETINFOTIPW*>(lParam);
        if (message != WM_NOTIFY || tip->hdr.code != static_cast<UINT>(TBN_GETINFOTIPW) || tip->iItem != 100)
            return false;
        wcscpy(tip->pszText, L"Fresh");
        return true;
    };
    auto* tips = reinterpret_cast<HWND>(SendMessageW(window.ButtonBar(), TB_GETTOOLTIPS, 0, 0));
    InputScript()
        .MoveTo(ButtonAt(window.ButtonBar(), kNewButton))
        .Until("tip", [tips] { return IsWindowVisible(tips) != FALSE; })
        .Do([&] { shown = ToolTipText(tips, window.ButtonBar(), 100); })
        .Run();
    EXPECT_EQ(shown, L"Fresh");
}

TEST(CommandBands, QuestionMarkSendsHelp)
{
    BandsWindow window(kWidth);
    window.Show();
    int helps = 0;
    window.onMessage = [&helps](UINT message, WPARAM, LPARAM lParam, LRESULT* result) {
        if (message != WM_HELP)
            return false;
        EXPECT_EQ(reinterpret_cast<const HELPINFO*>(lParam)->cbSize, sizeof(HELPINFO));
        ++helps;
        *result = 1;
        return true;
    };
    window.notifications.clear();
    InputScript().Click(ButtonAt(window.Adornments(), 0)).Until("help", [&helps] { return helps > 0; }).Run();
    EXPECT_EQ(helps, 1);
    EXPECT_TRUE(window.commands.empty());
    for (const auto& notification : window.notifications)
        EXPECT_NE(notification.from, window.Adornments());
}

TEST(CommandBands, CrossPostsClose)
{
    BandsWindow window(kWidth);
    window.Show();
    int closes = 0;
    bool isPosted = false;
    window.onMessage = [&closes](UINT message, WPARAM, LPARAM, LRESULT*) {
        closes += message == WM_CLOSE;
        return message == WM_CLOSE;
    };
    InputScript()
        .Click(ButtonAt(window.Adornments(), 1))
        .Until("close", [&closes] { return closes > 0; })
        .Run([&](const MSG& message) {
            isPosted = isPosted || (message.message == WM_CLOSE && message.hwnd == window.Window());
            return false;
        });
    EXPECT_EQ(closes, 1);
    EXPECT_TRUE(isPosted);
    EXPECT_TRUE(window.commands.empty());
}

TEST(CommandBands, AdornmentsSayWhatTheyAre)
{
    BandsWindow window(kWidth);
    window.Show();
    const wchar_t* const texts[] = {L"Help", L"Close"};
    auto* tips = reinterpret_cast<HWND>(SendMessageW(window.Adornments(), TB_GETTOOLTIPS, 0, 0));
    for (size_t i = 0; i < 2; ++i)
        InputScript()
            .MoveTo(ButtonAt(window.ButtonBar(), kNewButton))
            .Until("no tip", [tips] { return !IsWindowVisible(tips); })
            .MoveTo(ButtonAt(window.Adornments(), i))
            .Until("tip", [tips] { return IsWindowVisible(tips) != FALSE; })
            .Do([&] {
                TBBUTTON button{};
                SendMessageW(window.Adornments(), TB_GETBUTTON, i, reinterpret_cast<LPARAM>(&button));
                EXPECT_EQ(ToolTipText(tips, window.Adornments(), static_cast<UINT_PTR>(button.idCommand)),
                          texts[i]);
            })
            .Run();
}

TEST(CommandBands, GoWithTheirParent)
{
    HWND bands = nullptr;
    HWND bar = nullptr;
    HWND adornments = nullptr;
    {
        const BandsWindow window(kWidth);
        bands = window.Bands();
        bar = window.MenuBar();
        adornments = window.Adornments();
    }
    EXPECT_FALSE(IsWindow(bands));
    EXPECT_FALSE(IsWindow(bar));
    EXPECT_FALSE(IsWindow(adornments));
}
