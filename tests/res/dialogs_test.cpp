#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/test_windows.h"

namespace {

INT_PTR CALLBACK NoProcedure(HWND, UINT, WPARAM, LPARAM)
{
    return FALSE;
}

// A dialog of a template, not shown.
class DialogTemplateTest : public testing::Test {
  protected:
    ~DialogTemplateTest() override { DestroyWindow(m_dialog); }

    bool Make(int id)
    {
        m_dialog =
            CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), nullptr, NoProcedure, 0);
        return m_dialog != nullptr;
    }
    HWND Item(int id) const { return GetDlgItem(m_dialog, id); }
    std::wstring ItemText(int id) const { return WindowText(Item(id)); }
    std::wstring ItemClass(int id) const
    {
        wchar_t name[50] = L"";
        GetClassNameW(Item(id), name, 50);
        return name;
    }
    DWORD ItemStyle(int id) const { return static_cast<DWORD>(GetWindowLongPtrW(Item(id), GWL_STYLE)); }
    int CountItems() const
    {
        int count = 0;
        for (HWND item = ::GetWindow(m_dialog, GW_CHILD); item; item = ::GetWindow(item, GW_HWNDNEXT))
            ++count;
        return count;
    }
    // Every control lies inside the dialog.
    void ExpectNothingCutOff() const
    {
        RECT client;
        GetClientRect(m_dialog, &client);
        for (HWND item = ::GetWindow(m_dialog, GW_CHILD); item; item = ::GetWindow(item, GW_HWNDNEXT)) {
            RECT place;
            GetWindowRect(item, &place);
            MapWindowPoints(nullptr, m_dialog, reinterpret_cast<POINT*>(&place), 2);
            RECT seen;
            IntersectRect(&seen, &client, &place);
            EXPECT_TRUE(EqualRect(&seen, &place)) << GetDlgCtrlID(item);
        }
    }

    HWND m_dialog = nullptr;
};

// Font and size as the template has them.
struct TemplateFont {
    WORD points;
    std::wstring face;
};

TemplateFont FontOfTemplate(int id)
{
    HMODULE module = GetModuleHandleW(nullptr);
    HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(id), MAKEINTRESOURCEW(5)); // RT_DIALOG
    const auto* word = static_cast<const WORD*>(LockResource(LoadResource(module, resource)));
    word += 13; // version, signature, help id, styles, number of items, place
    word += *word ? (*word == 0xFFFF ? 2 : wcslen(reinterpret_cast<const wchar_t*>(word)) + 1) : 1; // menu
    word += *word ? (*word == 0xFFFF ? 2 : wcslen(reinterpret_cast<const wchar_t*>(word)) + 1) : 1; // class
    word += wcslen(reinterpret_cast<const wchar_t*>(word)) + 1;                                     // caption
    return {word[0], reinterpret_cast<const wchar_t*>(word + 3)};
}

TEST_F(DialogTemplateTest, EditorIsANewEntryUntilItHasATitle)
{
    ASSERT_TRUE(Make(139));
    EXPECT_EQ(WindowText(m_dialog), L"<New Entry>");
    EXPECT_EQ(CountItems(), 5);
    ExpectNothingCutOff();
}

TEST_F(DialogTemplateTest, EditorHasTheCategoriesLineAndItsLabel)
{
    ASSERT_TRUE(Make(139));
    EXPECT_EQ(ItemClass(1023), L"Static");
    EXPECT_EQ(ItemText(1023), L"<None>");
    EXPECT_NE(ItemStyle(1023) & SS_NOPREFIX, 0u); // an "&" in a category's name is to be seen
    EXPECT_EQ(ItemClass(1024), L"Static");
    EXPECT_EQ(ItemText(1024), L"Categories:");
    EXPECT_EQ(ItemStyle(1024) & SS_NOTIFY, 0u); // its number is the save command's
    EXPECT_EQ(ItemClass(-1), L"Static");
    EXPECT_EQ(ItemText(-1), L"");
}

TEST_F(DialogTemplateTest, EditorHasOkAndCancel)
{
    ASSERT_TRUE(Make(139));
    EXPECT_EQ(ItemText(1), L"OK");
    EXPECT_EQ(ItemText(2), L"Cancel");
    EXPECT_EQ(LOWORD(SendMessageW(m_dialog, DM_GETDEFID, 0, 0)), 1);
    for (const int id : {1, 2})
        EXPECT_EQ(ItemStyle(id) & (WS_TABSTOP | WS_VISIBLE), WS_TABSTOP | WS_VISIBLE);
}

TEST_F(DialogTemplateTest, EditorFitsTheWorkAreaAndKeepsThatSize)
{
    ASSERT_TRUE(Make(139));
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(m_dialog, GWL_STYLE));
    EXPECT_EQ(style & (WS_POPUP | WS_CAPTION | WS_SYSMENU), WS_POPUP | WS_CAPTION | WS_SYSMENU);
    EXPECT_EQ(style & (WS_THICKFRAME | WS_CHILD), 0u);
}

TEST_F(DialogTemplateTest, AboutNamesTheProgram)
{
    ASSERT_TRUE(Make(104));
    EXPECT_EQ(WindowText(m_dialog), L"About Journal");
    EXPECT_EQ(ItemText(1100), L"Kelvra Journal");
    EXPECT_EQ(ItemText(1101), L"Handheld PC Pro Version");
    EXPECT_EQ(ItemClass(1102), L"Static");
    EXPECT_EQ(ItemText(1102), L""); // the program writes it
    EXPECT_FALSE(ItemText(1103).empty());
    EXPECT_EQ(ItemText(1), L"OK");
    ExpectNothingCutOff();
}

TEST_F(DialogTemplateTest, AboutShowsTheIcon)
{
    ASSERT_TRUE(Make(104));
    int icons = 0;
    for (HWND item = ::GetWindow(m_dialog, GW_CHILD); item; item = ::GetWindow(item, GW_HWNDNEXT))
        icons += SendMessageW(item, STM_GETICON, 0, 0) != 0;
    EXPECT_EQ(icons, 1);
}

TEST_F(DialogTemplateTest, AboutHasRoomForItsNotice)
{
    ASSERT_TRUE(Make(104));
    HDC dc = GetDC(Item(1103));
    HGDIOBJ previous = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(Item(1103), WM_GETFONT, 0, 0)));
    RECT room;
    GetClientRect(Item(1103), &room);
    RECT needed = room;
    DrawTextW(dc, ItemText(1103).c_str(), -1, &needed, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    SelectObject(dc, previous);
    ReleaseDC(Item(1103), dc);
    EXPECT_LE(needed.bottom, room.bottom);
    EXPECT_LE(needed.right, room.right);
}

TEST_F(DialogTemplateTest, AboutFitsTheHandheldsScreen)
{
    ASSERT_TRUE(Make(104));
    RECT place;
    GetWindowRect(m_dialog, &place);
    HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    EXPECT_LE(place.right - place.left, MulDiv(640, dpi, 96));
    EXPECT_LE(place.bottom - place.top, MulDiv(240, dpi, 96));
}

TEST_F(DialogTemplateTest, QuickSubjectsHasItsControls)
{
    ASSERT_TRUE(Make(106));
    EXPECT_EQ(WindowText(m_dialog), L"Quick Subjects");
    EXPECT_EQ(ItemClass(1402), L"Edit");
    EXPECT_EQ(ItemClass(1029), L"ListBox");
    EXPECT_EQ(ItemStyle(1029) & (LBS_SORT | LBS_NOTIFY | LBS_MULTIPLESEL | LBS_EXTENDEDSEL),
              LBS_SORT | LBS_NOTIFY);
    const std::pair<int, const wchar_t*> buttons[] = {
        {1026, L"&Add"}, {1027, L"&Modify"}, {1031, L"&Delete"}, {1, L"OK"}, {2, L"Cancel"}};
    for (const auto& [id, text] : buttons) {
        EXPECT_EQ(ItemClass(id), L"Button") << id;
        EXPECT_EQ(ItemText(id), text);
    }
    EXPECT_EQ(CountItems(), 7);
    for (const int id : {1402, 1029, 1026, 1027, 1031, 1, 2})
        EXPECT_EQ(ItemStyle(id) & (WS_TABSTOP | WS_VISIBLE), WS_TABSTOP | WS_VISIBLE) << id;
    EXPECT_EQ(LOWORD(SendMessageW(m_dialog, DM_GETDEFID, 0, 0)), 1);
    ExpectNothingCutOff();
}

TEST_F(DialogTemplateTest, QuickSubjectsFitsTheHandheldsScreenAtHalfAsMuchResolutionAgain)
{
    ASSERT_TRUE(Make(106));
    RECT place;
    GetWindowRect(m_dialog, &place);
    HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    EXPECT_LE(place.right - place.left, MulDiv(640, dpi, 144));
    EXPECT_LE(place.bottom - place.top, MulDiv(240, dpi, 144));
}

TEST_F(DialogTemplateTest, FilterHasItsControls)
{
    ASSERT_TRUE(Make(107));
    struct Wanted {
        int id;
        const wchar_t* text;
        DWORD type;
        DWORD style;
    };
    const Wanted wanted[] = {{1011, L"Filter by &Months", BS_AUTORADIOBUTTON, WS_TABSTOP | WS_GROUP},
                             {1012, L"Filter by &Categories", BS_AUTORADIOBUTTON, 0},
                             {1016, L"", BS_GROUPBOX, 0},
                             {1201, L"Filter on Date &Range ", BS_AUTOCHECKBOX, WS_TABSTOP | WS_GROUP},
                             {1408, L"C&lear Filter Selection", BS_PUSHBUTTON, WS_TABSTOP},
                             {1, L"OK", BS_DEFPUSHBUTTON, WS_TABSTOP},
                             {2, L"Cancel", BS_PUSHBUTTON, WS_TABSTOP}};
    for (const Wanted& item : wanted) {
        EXPECT_EQ(ItemClass(item.id), L"Button") << item.id;
        EXPECT_EQ(ItemText(item.id), item.text);
        EXPECT_EQ(ItemStyle(item.id) & BS_TYPEMASK, item.type) << item.id;
        EXPECT_EQ(ItemStyle(item.id) & (WS_TABSTOP | WS_GROUP), item.style) << item.id;
    }
    for (const auto& [id, text] : {std::pair(1014, L"&Start"), std::pair(1015, L"&End")}) {
        EXPECT_EQ(ItemClass(id), L"Static") << id;
        EXPECT_EQ(ItemText(id), text);
    }
    EXPECT_EQ(CountItems(), 9) << "lists and date pickers are the program's";
    EXPECT_EQ(LOWORD(SendMessageW(m_dialog, DM_GETDEFID, 0, 0)), 1);
    ExpectNothingCutOff();
}

TEST_F(DialogTemplateTest, FilterFitsTheHandheldsScreenAtHalfAsMuchResolutionAgain)
{
    ASSERT_TRUE(Make(107));
    RECT place;
    GetWindowRect(m_dialog, &place);
    HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    EXPECT_LE(place.right - place.left, MulDiv(640, dpi, 144));
    EXPECT_LE(place.bottom - place.top, MulDiv(240, dpi, 144));
}

TEST_F(DialogTemplateTest, FindHasItsControls)
{
    ASSERT_TRUE(Make(102));
    EXPECT_EQ(WindowText(m_dialog), L"Find");
    const std::pair<int, const wchar_t*> buttons[] = {
        {1106, L"&Date"}, {1107, L"&Subject"}, {1108, L"&Entry"}, {1047, L"To&p"}, {1049, L"&Current"}};
    for (const auto& [id, text] : buttons) {
        EXPECT_EQ(ItemText(id), text);
        EXPECT_EQ(ItemStyle(id) & BS_TYPEMASK, DWORD{BS_AUTORADIOBUTTON}) << id;
    }
    EXPECT_EQ(ItemText(1407), L"&Match");
    EXPECT_EQ(ItemStyle(1407) & BS_TYPEMASK, DWORD{BS_AUTOCHECKBOX});
    EXPECT_EQ(ItemClass(1105), L"ComboBox");
    EXPECT_EQ(ItemStyle(1105) & 3, DWORD{CBS_DROPDOWN});
    EXPECT_EQ(LOWORD(SendMessageW(m_dialog, DM_GETDEFID, 0, 0)), 1);
    for (const int id : {1, 2})
        EXPECT_EQ(ItemStyle(id) & (WS_TABSTOP | WS_VISIBLE), WS_TABSTOP | WS_VISIBLE);
    ExpectNothingCutOff();
}

TEST_F(DialogTemplateTest, FindHasItsFrames)
{
    ASSERT_TRUE(Make(102));
    std::vector<std::wstring> frames;
    for (HWND item = ::GetWindow(m_dialog, GW_CHILD); item; item = ::GetWindow(item, GW_HWNDNEXT))
        if ((GetWindowLongPtrW(item, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX && GetDlgCtrlID(item) != 1105 &&
            !WindowText(item).empty() && WindowText(item)[0] == L' ')
            frames.push_back(WindowText(item));
    std::sort(frames.begin(), frames.end());
    EXPECT_EQ(frames,
              (std::vector<std::wstring>{L" Case ", L" Search by ", L" Search for", L" Search from "}));
}

TEST_F(DialogTemplateTest, FindsTwoGroupsOfButtonsAreApart)
{
    ASSERT_TRUE(Make(102));
    CheckDlgButton(m_dialog, 1106, BST_CHECKED);
    CheckDlgButton(m_dialog, 1047, BST_CHECKED);
    SendMessageW(Item(1108), BM_CLICK, 0, 0);
    EXPECT_FALSE(IsDlgButtonChecked(m_dialog, 1106));
    EXPECT_TRUE(IsDlgButtonChecked(m_dialog, 1047));
    SendMessageW(Item(1049), BM_CLICK, 0, 0);
    EXPECT_FALSE(IsDlgButtonChecked(m_dialog, 1047));
    EXPECT_TRUE(IsDlgButtonChecked(m_dialog, 1108));
}

TEST_F(DialogTemplateTest, FindResultsHasItsControlsInBothForms)
{
    for (const int id : {142, 143}) {
        ASSERT_TRUE(Make(id));
        EXPECT_EQ(WindowText(m_dialog), L"Find Results...");
        EXPECT_EQ(ItemText(-1), L"Found:");
        EXPECT_EQ(ItemText(1042), L"0");
        EXPECT_EQ(ItemText(1043), L"(double tap to Edit)");
        EXPECT_EQ(ItemClass(1041), L"SysListView32");
        EXPECT_EQ(ItemText(1), L"OK");
        ExpectNothingCutOff();
        DestroyWindow(m_dialog);
    }
}

TEST(DialogTemplates, UseTheSystemsFont)
{
    for (const int id : {102, 104, 106, 107, 139, 142, 143}) {
        const TemplateFont font = FontOfTemplate(id);
        EXPECT_EQ(font.points, 8) << id;
        EXPECT_EQ(font.face, L"MS Shell Dlg") << id;
    }
}

} // namespace
