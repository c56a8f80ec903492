// The Options dialog over settings of the test's own.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "options/options_dialog.h"
#include "support/dialog_window.h"
#include "support/test_session.h"
#include "support/test_store.h"
#include "support/test_windows.h"

inline constexpr int kConfirm = 1010, kOpenOnFind = 1011, kInputPanel = 1012, kRetain = 1202,
                     kCategories = 1014;
inline constexpr int kSet = 1018, kClear = 1017, kStatus = 1019;

inline DWORD Stored(const wchar_t* name)
{
    return Own().GetNumber(L"Options", name, 0xDEAD);
}

inline std::wstring StoredText()
{
    wchar_t text[kSettingTextSize];
    Own().GetString(L"Options", L"vacc", L"(none)", text);
    return text;
}

class OptionsDialogTest : public testing::Test {
  protected:
    // What the action leaves open is closed with nothing stored.
    static void Run(const std::function<void(DialogWindow&)>& action, HWND owner = nullptr)
    {
        const auto call = [=]() -> INT_PTR {
            RunOptions(owner, Own());
            return 0;
        };
        const auto work = [&](HWND window) {
            DialogWindow dialog(window);
            action(dialog);
        };
        RunDialog(call, work, 0);
    }
    static void StorePassword(const wchar_t* text)
    {
        Own().SetNumber(L"Options", L"setpw", 1);
        Own().SetString(L"Options", L"vacc", text);
    }
    // What the dialog says about the password: status, the button's face, and whether it can be cleared.
    static void ExpectPassword(const DialogWindow& dialog, const wchar_t* status, bool isSet)
    {
        EXPECT_EQ(dialog.Text(kStatus), status);
        EXPECT_EQ(dialog.Text(kSet), isSet ? L"Change &Password" : L"Set &Password");
        EXPECT_EQ(dialog.IsEnabled(kClear), isSet);
        EXPECT_TRUE(dialog.IsEnabled(kSet));
    }

    TestRegistry m_registry;
};
