#include "options/options_dialog.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>

#include "app/journal_app.h"
#include "options/prompt_answerer.h"
#include "support/dialog_window.h"
#include "support/test_store.h"
#include "support/test_windows.h"
#include "ui/work_area.h"

namespace {

constexpr int kConfirm = 1010, kOpenOnFind = 1011, kInputPanel = 1012, kRetain = 1202, kCategories = 1014;
constexpr int kSet = 1018, kClear = 1017, kStatus = 1019;
constexpr std::nullopt_t kCancel = std::nullopt;

DWORD Stored(const wchar_t* name)
{
    return App().GetNumber(L"Options", name, 0xDEAD);
}

std::wstring StoredText()
{
    wchar_t text[kSettingTextSize];
    App().GetString(L"Options", L"vacc", L"(none)", text);
    return text;
}

class OptionsDialogTest : public testing::Test {
  protected:
    // What the action leaves open is closed with nothing stored.
    void Run(const std::function<void(DialogWindow&)>& action)
    {
        const auto call = []() -> INT_PTR {
            RunOptions(nullptr);
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
        App().SetNumber(L"Options", L"setpw", 1);
        App().SetString(L"Options", L"vacc", text);
    }
    // What the dialog says about the password: status, the button's face, and whether it can be cleared.
    static void ExpectPassword(const DialogWindow& dialog, const wchar_t* status, bool isSet)
    {
        EXPECT_EQ(dialog.Text(kStatus), status);
        EXPECT_EQ(dialog.Text(kSet), isSet ? L"Change &Password" : L"Set &Password");
        EXPECT_EQ(dialog.IsEnabled(kClear), isSet);
    }

    TestRegistry m_registry;
};

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
            App().SetNumber(L"Options", value.second, value.first != off);
        Run([&](DialogWindow& dialog) {
            for (const auto& value : values)
                EXPECT_EQ(dialog.IsChecked(value.first), value.first != off) << value.second;
        });
    }
}

TEST_F(OptionsDialogTest, OkStoresTheBoxes)
{
    App().SetNumber(L"Options", L"DynSIP", 7);
    Run([](DialogWindow& dialog) {
        dialog.Click(kConfirm);
        dialog.Click(kRetain);
        EXPECT_EQ(Stored(L"ConfirmDelete"), 0xDEADu) << "not before OK";
        dialog.Ok();
    });
    EXPECT_EQ(Stored(L"ConfirmDelete"), 0u);
    EXPECT_EQ(Stored(L"OpenOnFind"), 1u);
    EXPECT_EQ(Stored(L"RememberFilter"), 0u);
    EXPECT_EQ(Stored(L"DispCats"), 1u);
    EXPECT_EQ(Stored(L"Password"), 0u);
    EXPECT_EQ(Stored(L"DynSIP"), 7u) << "never written";
}

TEST_F(OptionsDialogTest, OkMakesTheInputPanelsValueNever)
{
    Run([](DialogWindow& dialog) { dialog.Ok(); });
    EXPECT_EQ(Stored(L"DynSIP"), 0xDEADu);
    EXPECT_EQ(Stored(L"RememberFilter"), 1u) << "what the box showed is stored now";
}

TEST_F(OptionsDialogTest, CancelStoresNothing)
{
    for (const bool byKey : {true, false}) {
        Run([=](DialogWindow& dialog) {
            dialog.Click(kConfirm);
            if (byKey)
                dialog.Key(VK_ESCAPE);
            else
                dialog.Click(IDCANCEL);
        });
        for (const wchar_t* name :
             {L"ConfirmDelete", L"OpenOnFind", L"RememberFilter", L"DispCats", L"Password"})
            EXPECT_EQ(Stored(name), 0xDEADu) << name;
    }
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

TEST_F(OptionsDialogTest, AStoredPasswordCanBeChangedAndCleared)
{
    App().SetNumber(L"Options", L"setpw", 1);
    Run([](DialogWindow& dialog) { ExpectPassword(dialog, L"Password IS Set!", true); });
}

TEST_F(OptionsDialogTest, SetStoresAtOnceAndOkMakesTheStartAsk)
{
    const PromptAnswerer prompts({L"Secret", L"Secret"});
    Run([](DialogWindow& dialog) {
        dialog.Click(kSet);
        ExpectPassword(dialog, L"Password IS Set!", true);
        EXPECT_EQ(StoredText(), L"Secret");
        EXPECT_EQ(Stored(L"setpw"), 1u);
        EXPECT_EQ(Stored(L"Password"), 0xDEADu);
        dialog.Ok();
    });
    EXPECT_EQ(prompts.Titles(), (std::vector<std::wstring>{L"Enter New Password", L"Re-Enter Password"}));
    EXPECT_EQ(Stored(L"Password"), 1u);
}

TEST_F(OptionsDialogTest, ThePromptsStandOverTheDialog)
{
    const PromptAnswerer prompts({kCancel});
    HWND window = nullptr;
    Run([&](DialogWindow& dialog) {
        window = dialog.Window();
        dialog.Click(kSet);
    });
    ASSERT_EQ(prompts.Prompts().size(), 1u);
    EXPECT_EQ(prompts.Prompts()[0].owner, window);
}

TEST_F(OptionsDialogTest, APasswordSetAndLeftByCancelIsNotAskedFor)
{
    const PromptAnswerer prompts({L"Secret", L"Secret"});
    Run([](DialogWindow& dialog) {
        dialog.Click(kSet);
        dialog.Cancel();
    });
    EXPECT_EQ(StoredText(), L"Secret");
    EXPECT_EQ(Stored(L"setpw"), 1u);
    EXPECT_EQ(Stored(L"Password"), 0xDEADu);
}

TEST_F(OptionsDialogTest, AFailedSetSaysSoWithoutAnExclamationMark)
{
    const PromptAnswerer prompts({L"Secret", L"secret", kCancel});
    Run([](DialogWindow& dialog) {
        dialog.Click(kSet);
        ExpectPassword(dialog, L"Password NOT Set", false);
        dialog.Click(kSet);
        ExpectPassword(dialog, L"Password NOT Set", false);
        dialog.Ok();
    });
    EXPECT_EQ(StoredText(), L"(none)");
    EXPECT_EQ(Stored(L"setpw"), 0xDEADu);
    EXPECT_EQ(Stored(L"Password"), 0u);
}

TEST_F(OptionsDialogTest, ChangeAsksForTheOldOneFirst)
{
    StorePassword(L"old");
    const PromptAnswerer prompts({L"old", L"new", L"new"});
    Run([](DialogWindow& dialog) {
        dialog.Click(kSet);
        ExpectPassword(dialog, L"Password Changed!", true);
    });
    EXPECT_EQ(prompts.Titles(), (std::vector<std::wstring>{L"Enter Journal Password", L"Enter New Password",
                                                           L"Re-Enter Password"}));
    EXPECT_EQ(StoredText(), L"new");
}

TEST_F(OptionsDialogTest, AFailedChangeLeavesTheOldOneInForce)
{
    StorePassword(L"old");
    const std::pair<PromptAnswerer::Answers, size_t> attempts[] = {
        {{L"wrong"}, 1}, {{kCancel}, 1}, {{L"old", L"new", L"New"}, 3}, {{L"old", kCancel}, 2}};
    for (const auto& [answers, asked] : attempts) {
        const PromptAnswerer prompts(answers);
        const MessageBoxAnswerer boxes;
        Run([](DialogWindow& dialog) {
            dialog.Click(kSet);
            ExpectPassword(dialog, L"Password NOT Changed!", true);
        });
        EXPECT_EQ(prompts.Prompts().size(), asked);
        EXPECT_EQ(StoredText(), L"old");
        EXPECT_TRUE(boxes.Boxes().empty()) << "no message of its own";
    }
}

TEST_F(OptionsDialogTest, ClearAsksWhetherAndThenForThePassword)
{
    StorePassword(L"old");
    App().SetNumber(L"Options", L"Password", 1);
    const MessageBoxAnswerer boxes({IDYES});
    const PromptAnswerer prompts({L"old"});
    Run([](DialogWindow& dialog) {
        dialog.Click(kClear);
        ExpectPassword(dialog, L"Password Cleared!", false);
        EXPECT_TRUE(dialog.HasFocus(kSet)) << "the button that was pressed is grey now";
        EXPECT_EQ(Stored(L"setpw"), 0u);
        EXPECT_EQ(StoredText(), L"");
        EXPECT_EQ(Stored(L"Password"), 1u);
        dialog.Ok();
    });
    EXPECT_EQ(Stored(L"Password"), 0u);
    ASSERT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_EQ(boxes.Boxes()[0].text, L"Are you sure that you wish to clear your password?");
    EXPECT_EQ(boxes.Boxes()[0].caption, L"Journal Password");
    EXPECT_EQ(boxes.Boxes()[0].answers, (std::vector<int>{IDYES, IDNO}));
    EXPECT_EQ(boxes.Boxes()[0].icon, LoadIconW(nullptr, IDI_EXCLAMATION));
    EXPECT_EQ(prompts.Titles(), std::vector<std::wstring>{L"Enter Journal Password"});
}

TEST_F(OptionsDialogTest, APasswordClearedAndLeftByCancelIsStillAskedFor)
{
    StorePassword(L"old");
    App().SetNumber(L"Options", L"Password", 1);
    const MessageBoxAnswerer boxes({IDYES});
    const PromptAnswerer prompts({L"old"});
    Run([](DialogWindow& dialog) {
        dialog.Click(kClear);
        dialog.Cancel();
    });
    EXPECT_EQ(Stored(L"Password"), 1u);
    EXPECT_EQ(StoredText(), L"") << "where an empty answer passes";
}

TEST_F(OptionsDialogTest, NoLeavesThePasswordAndTheStatus)
{
    StorePassword(L"old");
    const MessageBoxAnswerer boxes({IDNO});
    const PromptAnswerer prompts;
    Run([](DialogWindow& dialog) {
        dialog.Click(kClear);
        ExpectPassword(dialog, L"Password IS Set!", true);
    });
    EXPECT_TRUE(prompts.Prompts().empty());
    EXPECT_EQ(StoredText(), L"old");
}

TEST_F(OptionsDialogTest, ClearingWithAWrongPasswordChangesNothing)
{
    StorePassword(L"old");
    const MessageBoxAnswerer boxes({IDYES});
    for (const auto& answer : {std::optional<std::wstring>(L"Old"), std::optional<std::wstring>()}) {
        const PromptAnswerer prompts({answer});
        Run([](DialogWindow& dialog) {
            dialog.Click(kClear);
            ExpectPassword(dialog, L"Incorrect Password!", true);
        });
    }
    EXPECT_EQ(StoredText(), L"old");
    EXPECT_EQ(Stored(L"setpw"), 1u);
}

TEST_F(OptionsDialogTest, AfterSettingTheButtonChanges)
{
    const PromptAnswerer prompts({L"a", L"a", L"a", L"b", L"b"});
    Run([](DialogWindow& dialog) {
        dialog.Click(kSet);
        dialog.Click(kSet);
        ExpectPassword(dialog, L"Password Changed!", true);
    });
    EXPECT_EQ(StoredText(), L"b");
}

TEST_F(OptionsDialogTest, OnlyAClickCounts)
{
    const PromptAnswerer prompts;
    Run([](DialogWindow& dialog) {
        for (const int code : {BN_SETFOCUS, BN_KILLFOCUS, BN_DBLCLK})
            dialog.Command(kSet, static_cast<WORD>(code));
    });
    EXPECT_TRUE(prompts.Prompts().empty());
}

TEST_F(OptionsDialogTest, IsWholeOnTheScreen)
{
    Run([](DialogWindow& dialog) {
        const RECT area = WorkArea();
        RECT window{};
        GetWindowRect(dialog.Window(), &window);
        EXPECT_GE(window.left, area.left);
        EXPECT_GE(window.top, area.top);
        EXPECT_LE(window.right, area.right);
        EXPECT_LE(window.bottom, area.bottom);
        RECT client{};
        GetClientRect(dialog.Window(), &client);
        for (const int id : {kConfirm, kOpenOnFind, kInputPanel, kRetain, kCategories, kSet, kClear, kStatus,
                             IDOK, IDCANCEL}) {
            const RECT rect = dialog.Rect(id);
            EXPECT_GE(rect.left, 0) << id;
            EXPECT_GE(rect.top, 0) << id;
            EXPECT_LE(rect.right, client.right) << id;
            EXPECT_LE(rect.bottom, client.bottom) << id;
        }
    });
}

} // namespace
