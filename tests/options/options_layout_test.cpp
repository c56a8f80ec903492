// The Options dialog on the screen and under the keyboard.
#include <algorithm>
#include <vector>

#include "options/options_dialog_fixture.h"
#include "options/prompt_answerer.h"
#include "ui/screen/scale.h"

namespace {

// A text on one line in a control's own font, its mnemonic's mark taken away.
int WidthIn(HWND control, const wchar_t* text)
{
    HDC context = GetDC(control);
    HGDIOBJ before = SelectObject(context, reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)));
    RECT rect{};
    DrawTextW(context, text, -1, &rect, DT_CALCRECT | DT_SINGLELINE);
    SelectObject(context, before);
    ReleaseDC(control, context);
    return rect.right;
}

bool Contains(const RECT& outer, const RECT& inner)
{
    RECT both{};
    UnionRect(&both, &outer, &inner);
    return EqualRect(&both, &outer) != FALSE;
}

std::vector<HWND> Frames(HWND dialog)
{
    std::vector<HWND> frames;
    for (HWND item = GetWindow(dialog, GW_CHILD); item; item = GetWindow(item, GW_HWNDNEXT))
        if ((GetWindowLongPtrW(item, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX)
            frames.push_back(item);
    return frames;
}

TEST_F(OptionsDialogTest, TheKeyboardAloneDoesIt)
{
    Run([](DialogWindow& dialog) {
        dialog.AltKey('D');
        EXPECT_FALSE(dialog.IsChecked(kConfirm));
        dialog.Key(VK_TAB);
        EXPECT_TRUE(dialog.HasFocus(kOpenOnFind));
        dialog.Key(VK_SPACE);
        EXPECT_FALSE(dialog.IsChecked(kOpenOnFind));
        dialog.Key(VK_TAB);
        EXPECT_TRUE(dialog.HasFocus(kRetain)) << "past what is grey";
        dialog.AltKey('R');
        dialog.Key(VK_RETURN);
    });
    EXPECT_EQ(Stored(L"ConfirmDelete"), 0u);
    EXPECT_EQ(Stored(L"OpenOnFind"), 0u);
    EXPECT_EQ(Stored(L"RememberFilter"), 0u);
}

TEST_F(OptionsDialogTest, IsWholeOnTheScreen)
{
    Run([](DialogWindow& dialog) { dialog.ExpectWholeOnScreen(); });
}

// Whatever they say: the frame of a button, and the box before a caption, take room of their own.
TEST_F(OptionsDialogTest, IsWholeWithEachOfItsTexts)
{
    Run([](DialogWindow& dialog) {
        const auto expectRoom = [&](int id, const wchar_t* text, int taken) {
            const RECT rect = dialog.Rect(id);
            EXPECT_LE(WidthIn(dialog.Item(id), text) + Scale(taken), rect.right - rect.left) << text;
        };
        for (const wchar_t* status : {L"Password NOT Set!", L"Password NOT Set", L"Password Not Set",
                                      L"Password IS Set!", L"Password Changed!", L"Password NOT Changed!",
                                      L"Password Cleared!", L"Password Not Cleared!", L"Incorrect Password!"})
            expectRoom(kStatus, status, 0);
        for (const wchar_t* face : {L"Set &Password", L"Change &Password"})
            expectRoom(kSet, face, 12);
        expectRoom(kClear, dialog.Text(kClear).c_str(), 12);
        for (const int id : {kConfirm, kOpenOnFind, kInputPanel, kRetain, kCategories})
            expectRoom(id, dialog.Text(id).c_str(), 20);
    });
}

// One that reached into the other would paint over its line.
TEST_F(OptionsDialogTest, IsWholeInItsTwoFrames)
{
    Run([](DialogWindow& dialog) {
        const std::vector<HWND> frames = Frames(dialog.Window());
        ASSERT_EQ(frames.size(), 2u);
        const RECT boxes = dialog.RectOf(frames[0]), password = dialog.RectOf(frames[1]);
        RECT both{};
        EXPECT_FALSE(IntersectRect(&both, &boxes, &password));
        for (const int id : {kConfirm, kOpenOnFind, kInputPanel, kRetain, kCategories})
            EXPECT_TRUE(Contains(boxes, dialog.Rect(id))) << id;
        for (const int id : {kSet, kClear, kStatus})
            EXPECT_TRUE(Contains(password, dialog.Rect(id))) << id;
    });
}

TEST_F(OptionsDialogTest, TabGoesFromTheBoxesToThePasswordAndTheButtons)
{
    StorePassword(L"old");
    Run([](DialogWindow& dialog) {
        for (const int id : {kConfirm, kOpenOnFind, kRetain, kCategories, kSet, kClear, IDOK, IDCANCEL}) {
            EXPECT_TRUE(dialog.HasFocus(id)) << id;
            dialog.Key(VK_TAB);
        }
        EXPECT_TRUE(dialog.HasFocus(kConfirm)) << "round again";
        dialog.Key(VK_TAB, false, true);
        EXPECT_TRUE(dialog.HasFocus(IDCANCEL));
    });
}

TEST_F(OptionsDialogTest, EachMnemonicIsUsedOnce)
{
    Run([](DialogWindow& dialog) {
        std::wstring letters;
        for (const int id : {kConfirm, kOpenOnFind, kInputPanel, kRetain, kCategories, kSet, kClear}) {
            const std::wstring text = dialog.Text(id);
            if (const size_t mark = text.find(L'&'); mark != text.npos)
                letters += static_cast<wchar_t>(towupper(text.at(mark + 1)));
        }
        std::sort(letters.begin(), letters.end());
        EXPECT_EQ(letters, L"CDFIPR");
    });
}

// By Space, which no prompt finds held down, as it would find the Alt of a mnemonic.
TEST_F(OptionsDialogTest, TheKeyboardReachesThePassword)
{
    StorePassword(L"old");
    const MessageBoxAnswerer boxes({IDNO});
    const PromptAnswerer prompts;
    Run([&](DialogWindow& dialog) {
        dialog.AltKey('F');
        EXPECT_FALSE(dialog.IsChecked(kOpenOnFind));
        dialog.Focus(kSet);
        dialog.Key(VK_SPACE);
        EXPECT_EQ(dialog.Text(kStatus), L"Password NOT Changed!");
        EXPECT_TRUE(dialog.HasFocus(kSet));
        dialog.Focus(kClear);
        dialog.Key(VK_SPACE);
        EXPECT_EQ(boxes.Boxes().size(), 1u);
        EXPECT_TRUE(dialog.HasFocus(kClear));
    });
    EXPECT_EQ(prompts.Prompts().size(), 1u);
}

} // namespace
