// What the Options dialog does with the password.
#include <optional>

#include "options/options_dialog_fixture.h"
#include "options/prompt_answerer.h"
#include "options/write_refuser.h"

namespace {

constexpr std::nullopt_t kCancel = std::nullopt;

TEST_F(OptionsDialogTest, AStoredPasswordCanBeChangedAndCleared)
{
    Own().SetNumber(L"Options", L"setpw", 1);
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
    const PromptAnswerer prompts({L"old", L"old", L"old", L"new", L"new", L"new"});
    const MessageBoxAnswerer boxes({IDYES});
    HWND window = nullptr;
    Run([&](DialogWindow& dialog) {
        window = dialog.Window();
        dialog.Click(kSet);
        dialog.Click(kSet);
        dialog.Click(kClear);
    });
    ASSERT_EQ(prompts.Prompts().size(), 6u);
    for (const auto& prompt : prompts.Prompts())
        EXPECT_EQ(prompt.owner, window);
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
    Own().SetNumber(L"Options", L"Password", 1);
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

// Told by the registry's own box and then here; what is shown stays what is in force.
TEST_F(OptionsDialogTest, APasswordThatStaysIsNotCleared)
{
    StorePassword(L"old");
    const WriteRefuser refuser(L"setpw");
    const MessageBoxAnswerer boxes({IDYES, IDOK});
    const PromptAnswerer prompts({L"old"});
    Run([](DialogWindow& dialog) {
        dialog.Click(kClear);
        ExpectPassword(dialog, L"Password Not Cleared!", true);
        dialog.Ok();
    });
    EXPECT_EQ(StoredText(), L"old");
    EXPECT_EQ(Stored(L"setpw"), 1u);
    EXPECT_EQ(boxes.Boxes().size(), 2u);
}

TEST_F(OptionsDialogTest, APasswordClearedAndLeftByCancelIsStillAskedFor)
{
    StorePassword(L"old");
    Own().SetNumber(L"Options", L"Password", 1);
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

TEST_F(OptionsDialogTest, AQuestionThatCannotBeShownIsNotAYes)
{
    StorePassword(L"old");
    Run([](DialogWindow& dialog) {
        const WindowRefuser refuser(L"#32770");
        dialog.Click(kClear);
        EXPECT_EQ(refuser.Seen(), 1);
        ExpectPassword(dialog, L"Password IS Set!", true);
    });
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
    StorePassword(L"old");
    const PromptAnswerer prompts;
    const MessageBoxAnswerer boxes({IDNO});
    Run([](DialogWindow& dialog) {
        for (const int code : {1, BN_SETFOCUS, BN_KILLFOCUS, BN_DBLCLK})
            for (const int button : {kSet, kClear})
                dialog.Command(button, static_cast<WORD>(code));
        ExpectPassword(dialog, L"Password IS Set!", true);
    });
    EXPECT_TRUE(prompts.Prompts().empty());
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST_F(OptionsDialogTest, ABoxLeavesThePasswordAlone)
{
    const PromptAnswerer prompts;
    Run([](DialogWindow& dialog) {
        for (const int id : {kConfirm, kOpenOnFind, kRetain, kCategories})
            dialog.Click(id);
        ExpectPassword(dialog, L"Password NOT Set!", false);
    });
    EXPECT_TRUE(prompts.Prompts().empty());
}

TEST_F(OptionsDialogTest, AfterClearingTheButtonSetsANewOne)
{
    StorePassword(L"old");
    const MessageBoxAnswerer boxes({IDYES});
    const PromptAnswerer prompts({L"old", L"new", L"new"});
    Run([](DialogWindow& dialog) {
        dialog.Click(kClear);
        dialog.Click(kSet);
        ExpectPassword(dialog, L"Password IS Set!", true);
        dialog.Ok();
    });
    EXPECT_EQ(prompts.Titles(), (std::vector<std::wstring>{L"Enter Journal Password", L"Enter New Password",
                                                           L"Re-Enter Password"}));
    EXPECT_EQ(StoredText(), L"new");
    EXPECT_EQ(Stored(L"setpw"), 1u);
    EXPECT_EQ(Stored(L"Password"), 1u);
}

// What an earlier dialog, left by Cancel, has set or cleared.
TEST_F(OptionsDialogTest, OkAsksForWhatIsSetWhoeverSetIt)
{
    const PromptAnswerer prompts;
    const std::pair<DWORD, DWORD> cases[] = {{1, 1}, {7, 1}, {0x80000000, 1}, {0, 0}};
    for (const auto& [isSet, asks] : cases) {
        Own().SetNumber(L"Options", L"setpw", isSet);
        Own().SetNumber(L"Options", L"Password", !asks);
        Run([&, asked = asks](DialogWindow& dialog) {
            ExpectPassword(dialog, asked ? L"Password IS Set!" : L"Password NOT Set!", asked);
            dialog.Ok();
        });
        EXPECT_EQ(Stored(L"Password"), asks) << isSet;
        EXPECT_EQ(Stored(L"setpw"), isSet) << "OK leaves it alone";
    }
}

// The flag alone says so, not the text nor what the start does.
TEST_F(OptionsDialogTest, ATextWithoutItsFlagIsNoPassword)
{
    Own().SetString(L"Options", L"vacc", L"left over");
    Own().SetNumber(L"Options", L"Password", 1);
    Run([](DialogWindow& dialog) { ExpectPassword(dialog, L"Password NOT Set!", false); });
}

TEST_F(OptionsDialogTest, AFailedSetAfterClearingLeavesNone)
{
    StorePassword(L"old");
    const MessageBoxAnswerer boxes({IDYES});
    const PromptAnswerer prompts({L"old", L"new", L"newer"});
    Run([](DialogWindow& dialog) {
        dialog.Click(kClear);
        dialog.Click(kSet);
        ExpectPassword(dialog, L"Password NOT Set", false);
    });
    EXPECT_EQ(StoredText(), L"");
    EXPECT_EQ(Stored(L"setpw"), 0u);
}

TEST_F(OptionsDialogTest, TheQuestionStandsOverTheDialogAndComesFirst)
{
    StorePassword(L"old");
    const PromptAnswerer prompts({L"old"});
    const MessageBoxAnswerer boxes({IDNO, IDYES});
    HWND window = nullptr;
    Run([&](DialogWindow& dialog) {
        window = dialog.Window();
        dialog.Click(kClear);
        EXPECT_EQ(boxes.Boxes().size(), 1u);
        EXPECT_TRUE(prompts.Prompts().empty());
        dialog.Click(kClear);
        EXPECT_EQ(prompts.Prompts().size(), 1u);
    });
    ASSERT_EQ(boxes.Boxes().size(), 2u);
    EXPECT_EQ(boxes.Boxes()[0].owner, window);
}

} // namespace
