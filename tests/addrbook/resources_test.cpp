// Everything has a key of its own: in each menu and in each dialog no two letters are the same.
#include <windows.h>

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "addrbook/resource.h"
#include "support/test_windows.h"
#include "util/owners.h"

namespace addrbook {

namespace {

// The letter after the text's "&"; 0 for none.
wchar_t Mnemonic(const std::wstring& text)
{
    const size_t place = text.find(L'&');
    if (place == std::wstring::npos || place + 1 >= text.size())
        return L'\0';
    return static_cast<wchar_t>(towlower(text[place + 1]));
}

std::wstring MenuText(HMENU menu, int item)
{
    wchar_t text[100] = L"";
    GetMenuStringW(menu, static_cast<UINT>(item), text, 100, MF_BYPOSITION);
    return text;
}

void ExpectLettersOfTheirOwn(HMENU menu)
{
    std::set<wchar_t> letters;
    for (int item = 0; item < GetMenuItemCount(menu); ++item) {
        const std::wstring text = MenuText(menu, item);
        if (!text.empty()) {
            EXPECT_NE(Mnemonic(text), L'\0') << item;
            EXPECT_TRUE(letters.insert(Mnemonic(text)).second) << item;
        }
        if (HMENU popup = GetSubMenu(menu, item))
            ExpectLettersOfTheirOwn(popup);
    }
}

TEST(AddressResources, MenusHaveALetterForEachItem)
{
    const UniqueMenu menu(LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_ADDRESS_MENU)));
    ASSERT_TRUE(menu);
    ASSERT_EQ(GetMenuItemCount(menu.get()), 3);
    ExpectLettersOfTheirOwn(menu.get());
}

// What the menu says beside a command is the accelerator that there is.
TEST(AddressResources, MenusTellTheKeys)
{
    HACCEL table = LoadAcceleratorsW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_ADDRESS_KEYS));
    ACCEL keys[16];
    const int count = CopyAcceleratorTableW(table, keys, 16);
    std::map<int, wchar_t> letters;
    for (int i = 0; i < count; ++i)
        if ((keys[i].fVirt & (FVIRTKEY | FCONTROL | FSHIFT | FALT)) == (FVIRTKEY | FCONTROL))
            letters[keys[i].cmd] = static_cast<wchar_t>(keys[i].key);
    EXPECT_EQ(letters, (std::map<int, wchar_t>{{CMD_NEW_CONTACT, L'N'},
                                               {CMD_FIND_CONTACT, L'F'},
                                               {CMD_IMPORT, L'I'},
                                               {CMD_EXPORT_CARDS, L'E'}}));
    const UniqueMenu menu(LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_ADDRESS_MENU)));
    for (const auto& [id, letter] : letters) {
        wchar_t text[100] = L"";
        GetMenuStringW(menu.get(), static_cast<UINT>(id), text, 100, MF_BYCOMMAND);
        const std::wstring key = std::wstring(L"\tCtrl+") + letter;
        EXPECT_NE(std::wstring(text).find(key), std::wstring::npos) << id;
    }
}

INT_PTR CALLBACK NoProcedure(HWND, UINT, WPARAM, LPARAM)
{
    return FALSE;
}

// In the order of the tab key, each label right before its control.
TEST(AddressResources, EachFieldOfAContactHasALabelWithALetter)
{
    const TestParent parent;
    const UniqueWindow dialog(CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_CONTACT),
                                                 parent.Handle(), NoProcedure, 0));
    ASSERT_TRUE(dialog);
    constexpr int kOrder[] = {IDC_FIRST_NAME, IDC_LAST_NAME, IDC_COMPANY, IDC_JOB_TITLE, IDC_FILE_AS,
                              IDC_BIRTHDAY,   IDC_EMAILS,    IDC_PHONES,  IDC_ADDRESS,   IDC_NOTE};
    std::set<wchar_t> letters;
    HWND control = nullptr;
    for (const int id : kOrder) {
        control = GetNextDlgTabItem(dialog.get(), control, FALSE);
        EXPECT_EQ(GetDlgCtrlID(control), id);
        const std::wstring label = WindowText(GetWindow(control, GW_HWNDPREV));
        EXPECT_TRUE(letters.insert(Mnemonic(label)).second) << id;
        EXPECT_NE(Mnemonic(label), L'\0') << id;
    }
    EXPECT_EQ(GetDlgCtrlID(GetNextDlgTabItem(dialog.get(), control, FALSE)), IDOK);
}

} // namespace

} // namespace addrbook
