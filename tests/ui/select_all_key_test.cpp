#include "ui/select_all_key.h"

#include <gtest/gtest.h>

#include "support/selection_log.h"
#include "support/test_windows.h"

namespace {

HWND MakeEdit(const TestParent& parent, DWORD style)
{
    return CreateWindowExW(0, WC_EDITW, L"one\r\ntwo", WS_CHILD | WS_VISIBLE | style, 0, 0, 90, 60,
                           parent.Handle(), nullptr, GetModuleHandleW(nullptr), nullptr);
}

TEST(SelectAllKey, SelectsAllOfSeveralLines)
{
    const TestParent parent(nullptr, 300, 200);
    HWND edits[] = {MakeEdit(parent, ES_MULTILINE), MakeEdit(parent, ES_MULTILINE | ES_READONLY)};
    AddSelectAllKeys(parent.Handle());
    for (HWND edit : edits) {
        const SelectionLog log(edit);
        SendMessageW(edit, WM_CHAR, 1, 0);
        EXPECT_TRUE(log.AllSelected());
        DWORD start = 9, end = 9;
        SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        EXPECT_EQ(start, 0u);
        EXPECT_EQ(end, 8u);
    }
    EXPECT_EQ(WindowText(edits[0]), L"one\r\ntwo");
}

TEST(SelectAllKey, LeavesOtherCharactersAndOneLineToTheControl)
{
    const TestParent parent(nullptr, 300, 200);
    HWND lines = MakeEdit(parent, ES_MULTILINE);
    HWND line = MakeEdit(parent, 0);
    AddSelectAllKeys(parent.Handle());
    const SelectionLog log(lines), other(line);
    SendMessageW(lines, WM_CHAR, L'a', 0);
    SendMessageW(line, WM_CHAR, 1, 0);
    EXPECT_FALSE(log.AllSelected());
    EXPECT_FALSE(other.AllSelected());
    EXPECT_EQ(WindowText(lines), L"aone\r\ntwo");
}

} // namespace
