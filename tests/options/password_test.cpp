#include "options/password.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>

#include "options/prompt_answerer.h"
#include "options/write_refuser.h"
#include "res/resource.h"
#include "support/dialog_window.h"
#include "support/help_requests.h"
#include "support/test_session.h"
#include "support/test_store.h"
#include "support/test_windows.h"
#include "ui/screen/work_area.h"

namespace {

using Titles = std::vector<std::wstring>;

constexpr std::nullopt_t kCancel = std::nullopt;

std::wstring StoredText()
{
    wchar_t text[kSettingTextSize];
    Own().GetString(L"Options", L"vacc", L"(none)", text);
    return text;
}

DWORD Stored(const wchar_t* name)
{
    return Own().GetNumber(L"Options", name, 0xDEAD);
}

void Store(const wchar_t* text)
{
    Own().SetNumber(L"Options", L"setpw", 1);
    Own().SetString(L"Options", L"vacc", text);
}

// Bytes as they stand, of any type.
void StoreRaw(const wchar_t* name, DWORD type, const void* bytes, DWORD count)
{
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyW(HKEY_CURRENT_USER, L"Software\\Quillmarsh\\Journal\\Options", &key),
              ERROR_SUCCESS);
    const UniqueKey owner(key);
    ASSERT_EQ(RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(bytes), count), ERROR_SUCCESS);
}

class PasswordTest : public testing::Test {
  protected:
    // What the prompt was answered with: 1 for OK, 0 for Cancel, -1 when the action left it open.
    static INT_PTR RunPrompt(std::wstring* text, const std::function<void(DialogWindow&)>& action)
    {
        const auto call = [&]() -> INT_PTR { return AskPassword(nullptr, PasswordMode::Check, text); };
        bool ended = false;
        const INT_PTR result = RunDialog(
            call,
            [&](HWND window) {
                DialogWindow dialog(window);
                action(dialog);
                ended = !IsWindowVisible(window);
            },
            0);
        return ended ? result : -1;
    }

    TestRegistry m_registry;
};

TEST_F(PasswordTest, ThePromptAsksForWhatItsTitleSays)
{
    const std::pair<PasswordMode, const wchar_t*> titles[] = {
        {PasswordMode::New, L"Enter New Password"},
        {PasswordMode::Again, L"Re-Enter Password"},
        {PasswordMode::Check, L"Enter Journal Password"}};
    for (const auto& [mode, title] : titles) {
        const PromptAnswerer prompts({L"abc"});
        std::wstring text;
        EXPECT_TRUE(AskPassword(nullptr, mode, &text));
        EXPECT_EQ(text, L"abc");
        EXPECT_EQ(prompts.Titles(), Titles{title});
        EXPECT_TRUE(prompts.Prompts()[0].isMasked);
        EXPECT_TRUE(prompts.Prompts()[0].hasKeyboard);
    }
    EXPECT_EQ(static_cast<int>(PasswordMode::New), 0x1);
    EXPECT_EQ(static_cast<int>(PasswordMode::Again), 0x10);
    EXPECT_EQ(static_cast<int>(PasswordMode::Check), 0x100);
}

TEST_F(PasswordTest, F1InThePromptAsksForItsPage)
{
    const HelpRequests requests;
    std::wstring text;
    EXPECT_EQ(RunPrompt(&text,
                        [](DialogWindow& dialog) {
                            dialog.Key(VK_F1);
                            dialog.Cancel();
                        }),
              0);
    EXPECT_EQ(requests.Asked(), Titles{L"pellwyn.htm#Password"});
}

TEST_F(PasswordTest, ACancelledPromptGivesNoText)
{
    const PromptAnswerer prompts({kCancel});
    std::wstring text = L"before";
    EXPECT_FALSE(AskPassword(nullptr, PasswordMode::New, &text));
    EXPECT_EQ(text, L"before");
}

// Before its purpose is known.
TEST(PasswordTemplate, IsTitledEnterJournalPassword)
{
    HWND dialog = CreateDialogParamW(
        GetModuleHandleW(nullptr), MAKEINTRESOURCEW(105), nullptr,
        [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; }, 0);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(WindowText(dialog), L"Enter Journal Password");
    DestroyWindow(dialog);
}

TEST_F(PasswordTest, EveryWayOfClosingThePromptIsCancel)
{
    const std::function<void(DialogWindow&)> ways[] = {
        [](DialogWindow& prompt) { prompt.Key(VK_ESCAPE); },
        [](DialogWindow& prompt) { prompt.Click(IDCANCEL); },
        [](DialogWindow& prompt) { SendMessageW(prompt.Window(), WM_SYSCOMMAND, SC_CLOSE, 0); },
        [](DialogWindow& prompt) { SendMessageW(prompt.Window(), WM_CLOSE, 0, 0); }};
    for (const auto& close : ways) {
        std::wstring text = L"before";
        EXPECT_EQ(RunPrompt(&text,
                            [&](DialogWindow& prompt) {
                                prompt.Type(L"typed");
                                close(prompt);
                            }),
                  0);
        EXPECT_EQ(text, L"before");
    }
}

TEST_F(PasswordTest, ThePromptIsWorkedByItsButtonsAndKeys)
{
    std::wstring text;
    EXPECT_EQ(RunPrompt(&text,
                        [](DialogWindow& prompt) {
                            for (const int id : {IDC_PASSWORD, IDOK, IDCANCEL, IDC_PASSWORD}) {
                                EXPECT_TRUE(prompt.HasFocus(id)) << id;
                                prompt.Key(VK_TAB);
                            }
                            EXPECT_TRUE(prompt.HasFocus(IDOK));
                            prompt.SetText(IDC_PASSWORD, L"typed");
                            prompt.Click(IDOK);
                        }),
              1);
    EXPECT_EQ(text, L"typed");
}

// More than fits is taken in and scrolls, so that nothing beeps at somebody who types on.
TEST_F(PasswordTest, ThePromptTakesInAnyLength)
{
    std::wstring text;
    RunPrompt(&text, [](DialogWindow& prompt) {
        prompt.Type(std::wstring(60, L'x'));
        EXPECT_EQ(prompt.Text(IDC_PASSWORD), std::wstring(60, L'x'));
        prompt.Key(VK_RETURN);
    });
    EXPECT_EQ(text, L"xxxxxxxx");
}

TEST_F(PasswordTest, WithoutAPromptThereIsNoAnswer)
{
    const WindowRefuser refuser(L"#32770");
    std::wstring text = L"before";
    EXPECT_FALSE(AskPassword(nullptr, PasswordMode::Check, &text));
    EXPECT_EQ(text, L"before");
    StoreAskAtStart(Own(), true);
    EXPECT_FALSE(UnlockAtStart(Own()));
}

TEST_F(PasswordTest, EightCharactersAreTaken)
{
    const PromptAnswerer prompts({L"123456789012", L"12345678", L""});
    std::wstring text;
    EXPECT_TRUE(AskPassword(nullptr, PasswordMode::New, &text));
    EXPECT_EQ(text, L"12345678");
    EXPECT_TRUE(AskPassword(nullptr, PasswordMode::New, &text));
    EXPECT_EQ(text, L"12345678");
    EXPECT_TRUE(AskPassword(nullptr, PasswordMode::New, &text));
    EXPECT_EQ(text, L"");
}

TEST_F(PasswordTest, ThePromptBelongsToItsOwnerAndStandsNearItsCorner)
{
    const TestParent parent(nullptr, 500, 200);
    // Until then a window manager may still be placing it.
    ASSERT_TRUE(PumpUntil([&] { return GetForegroundWindow() == parent.Handle(); }));
    SetWindowPos(parent.Handle(), nullptr, 40, 30, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    ASSERT_TRUE(PumpUntil([&] {
        RECT place{};
        GetWindowRect(parent.Handle(), &place);
        return place.left == 40 && place.top == 30;
    }));
    const PromptAnswerer prompts({L""});
    std::wstring text;
    EXPECT_TRUE(AskPassword(parent.Handle(), PasswordMode::Check, &text));
    ASSERT_EQ(prompts.Prompts().size(), 1u);
    EXPECT_EQ(prompts.Prompts()[0].owner, parent.Handle());
    POINT corner{};
    ClientToScreen(parent.Handle(), &corner);
    const RECT& place = prompts.Prompts()[0].place;
    EXPECT_GT(place.left, corner.x);
    EXPECT_GT(place.top, corner.y);
    EXPECT_LT(place.left, corner.x + 100);
    EXPECT_LT(place.top, corner.y + 100);
}

TEST_F(PasswordTest, IsWholeOverAnOwnerAtTheEdgeOfTheScreen)
{
    const TestParent parent(nullptr, 300, 200);
    ASSERT_TRUE(PumpUntil([&] { return GetForegroundWindow() == parent.Handle(); }));
    const RECT area = WorkArea();
    SetWindowPos(parent.Handle(), nullptr, area.right - 60, area.bottom - 60, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER);
    PumpMessages();
    const PromptAnswerer prompts({L""});
    std::wstring text;
    EXPECT_TRUE(AskPassword(parent.Handle(), PasswordMode::Check, &text));
    const RECT& place = prompts.Prompts().at(0).place;
    EXPECT_LE(place.right, area.right);
    EXPECT_LE(place.bottom, area.bottom);
}

TEST_F(PasswordTest, IsWholeInTheMiddleWithoutAnOwner)
{
    const PromptAnswerer prompts({L""});
    std::wstring text;
    EXPECT_TRUE(AskPassword(nullptr, PasswordMode::Check, &text));
    const RECT area = WorkArea();
    const RECT& place = prompts.Prompts().at(0).place;
    EXPECT_NEAR(place.left + place.right, area.left + area.right, 2);
    EXPECT_NEAR(place.top + place.bottom, area.top + area.bottom, 2);
    EXPECT_GE(place.left, area.left);
    EXPECT_GE(place.top, area.top);
}

TEST_F(PasswordTest, TheCheckTakesTheStoredTextAndNoOther)
{
    Store(L"Secret");
    for (const wchar_t* wrong : {L"secret", L"Secre", L"Secrets", L"", L"Secret "}) {
        const PromptAnswerer prompts({wrong});
        EXPECT_FALSE(CheckPassword(nullptr, Own())) << wrong;
    }
    const PromptAnswerer prompts({L"Secret", kCancel});
    EXPECT_TRUE(CheckPassword(nullptr, Own()));
    EXPECT_FALSE(CheckPassword(nullptr, Own())) << "cancelled";
    EXPECT_EQ(prompts.Titles(), (Titles{L"Enter Journal Password", L"Enter Journal Password"}));
}

TEST_F(PasswordTest, ACancelledCheckFailsAlsoWhenTheTextWouldBeRight)
{
    Store(L"");
    const PromptAnswerer prompts({kCancel, L""});
    EXPECT_FALSE(CheckPassword(nullptr, Own()));
    EXPECT_TRUE(CheckPassword(nullptr, Own()));
}

TEST_F(PasswordTest, WithoutAStoredTextTheEmptyAnswerPasses)
{
    const PromptAnswerer prompts({L"x", L""});
    EXPECT_FALSE(CheckPassword(nullptr, Own()));
    EXPECT_TRUE(CheckPassword(nullptr, Own()));
}

TEST_F(PasswordTest, LettersOfAllKindsPass)
{
    const PromptAnswerer prompts({L"\u00c4\u03a9\u4e2d\U0001F600", L"\u00c4\u03a9\u4e2d\U0001F600",
                                  L"\u00c4\u03a9\u4e2d\U0001F600", L"\u00e4\u03a9\u4e2d\U0001F600"});
    EXPECT_TRUE(SetNewPassword(nullptr, Own()));
    EXPECT_TRUE(CheckPassword(nullptr, Own()));
    EXPECT_FALSE(CheckPassword(nullptr, Own()));
}

TEST_F(PasswordTest, ANewPasswordIsAskedForTwiceAndStoredAtOnce)
{
    EXPECT_FALSE(IsPasswordSet(Own()));
    const PromptAnswerer prompts({L"Secret", L"Secret"});
    EXPECT_TRUE(SetNewPassword(nullptr, Own()));
    EXPECT_EQ(prompts.Titles(), (Titles{L"Enter New Password", L"Re-Enter Password"}));
    EXPECT_EQ(StoredText(), L"Secret");
    EXPECT_EQ(Stored(L"setpw"), 1u);
    EXPECT_EQ(Stored(L"Password"), 0xDEADu) << "only the options' OK stores it";
    EXPECT_TRUE(IsPasswordSet(Own()));
}

TEST_F(PasswordTest, TwelveCharactersCountAsTheirFirstEight)
{
    const PromptAnswerer prompts(
        {L"123456789012", L"12345678abcd", L"12345678", L"123456789012", L"1234567"});
    EXPECT_TRUE(SetNewPassword(nullptr, Own()));
    EXPECT_EQ(StoredText(), L"12345678");
    EXPECT_TRUE(CheckPassword(nullptr, Own()));
    EXPECT_TRUE(CheckPassword(nullptr, Own()));
    EXPECT_FALSE(CheckPassword(nullptr, Own()));
}

TEST_F(PasswordTest, TwoDifferentOrCancelledTextsStoreNothing)
{
    const std::pair<PromptAnswerer::Answers, size_t> attempts[] = {
        {{L"Secret", L"secret"}, 2}, {{L"Secret", kCancel}, 2}, {{kCancel}, 1}};
    for (const auto& [answers, asked] : attempts) {
        const PromptAnswerer prompts(answers);
        EXPECT_FALSE(SetNewPassword(nullptr, Own()));
        EXPECT_EQ(prompts.Prompts().size(), asked);
        EXPECT_EQ(StoredText(), L"(none)");
        EXPECT_EQ(Stored(L"setpw"), 0xDEADu);
    }
}

TEST_F(PasswordTest, AnEmptyPasswordIsOne)
{
    const PromptAnswerer prompts({L"", L"", L"x", L""});
    EXPECT_TRUE(SetNewPassword(nullptr, Own()));
    EXPECT_EQ(Stored(L"setpw"), 1u);
    EXPECT_EQ(StoredText(), L"");
    EXPECT_FALSE(CheckPassword(nullptr, Own()));
    EXPECT_TRUE(CheckPassword(nullptr, Own()));
}

TEST_F(PasswordTest, ClearingStoresBothAtOnce)
{
    Store(L"Secret");
    Own().SetNumber(L"Options", L"Password", 1);
    EXPECT_TRUE(ClearPassword(Own()));
    EXPECT_EQ(Stored(L"setpw"), 0u);
    EXPECT_EQ(StoredText(), L"");
    EXPECT_EQ(Stored(L"Password"), 1u) << "the next start still asks";
}

TEST_F(PasswordTest, AStoredTextThatIsTooLongReadsAsNone)
{
    Store(std::wstring(200, L'x').c_str());
    const PromptAnswerer prompts({L"xxxxxxxx", L""});
    EXPECT_FALSE(CheckPassword(nullptr, Own()));
    EXPECT_TRUE(CheckPassword(nullptr, Own()));
}

TEST_F(PasswordTest, AStoredNumberIsNoTextAnybodyTypes)
{
    Own().SetNumber(L"Options", L"vacc", 0x00420041); // the bytes of "AB"
    const PromptAnswerer prompts({L"", L"AB"});
    EXPECT_FALSE(CheckPassword(nullptr, Own()));
    EXPECT_TRUE(CheckPassword(nullptr, Own())) << "the bytes of any type are a text";
}

TEST_F(PasswordTest, AStoredTextWithoutItsEndReadsAsFarAsItGoes)
{
    const PromptAnswerer prompts({L"AB", L"ABC", L"AB", L"ABC"});
    StoreRaw(L"vacc", REG_SZ, L"ABCDEFGH", 3 * sizeof(wchar_t));
    EXPECT_FALSE(CheckPassword(nullptr, Own()));
    EXPECT_TRUE(CheckPassword(nullptr, Own()));
    StoreRaw(L"vacc", REG_SZ, L"ABCDEFGH", 2 * sizeof(wchar_t) + 1);
    EXPECT_TRUE(CheckPassword(nullptr, Own())) << "half a character is none";
    EXPECT_FALSE(CheckPassword(nullptr, Own()));
}

// Nobody can type it: eight characters are taken.
TEST_F(PasswordTest, AStoredTextOfNineCharactersPassesByNoAnswer)
{
    Store(L"123456789");
    const PromptAnswerer prompts({L"123456789", L"12345678", L""});
    for (int attempt = 0; attempt < 3; ++attempt)
        EXPECT_FALSE(CheckPassword(nullptr, Own()));
}

// The system's rules decide what is the same, as for every text of the user's.
TEST_F(PasswordTest, LettersThatTheSystemTakesAsTheSameAreTheSame)
{
    ASSERT_EQ(CompareStringW(LOCALE_SYSTEM_DEFAULT, 0, L"co\u00adop", -1, L"coop", -1), CSTR_EQUAL);
    const PromptAnswerer prompts({L"co\u00adop", L"coop", L"coop"});
    EXPECT_TRUE(SetNewPassword(nullptr, Own()));
    EXPECT_TRUE(CheckPassword(nullptr, Own()));
}

TEST_F(PasswordTest, WhatIsNoNumberDoesNotMakeTheStartAsk)
{
    Store(L"Secret");
    const PromptAnswerer prompts;
    const BYTE bytes[8] = {1, 1, 1, 1, 1, 1, 1, 1};
    for (const DWORD count : {0u, 1u, 3u, 5u, 8u}) {
        StoreRaw(L"Password", REG_BINARY, bytes, count);
        EXPECT_TRUE(UnlockAtStart(Own())) << count;
    }
    EXPECT_TRUE(prompts.Prompts().empty());
}

TEST_F(PasswordTest, AnyNumberButZeroMakesTheStartAsk)
{
    Store(L"Secret");
    const PromptAnswerer prompts({L"Secret", L"Secret", L"Secret"});
    for (const DWORD number : {2u, 0x80000000u, 0xFFFFFFFFu}) {
        Own().SetNumber(L"Options", L"Password", number);
        EXPECT_TRUE(UnlockAtStart(Own())) << number;
    }
    EXPECT_EQ(prompts.Prompts().size(), 3u);
}

// The start asks although none is set any more, and the empty answer is the right one.
TEST_F(PasswordTest, AfterAClearedPasswordTheEmptyAnswerOpens)
{
    Store(L"Secret");
    StoreAskAtStart(Own(), true);
    EXPECT_TRUE(ClearPassword(Own()));
    const PromptAnswerer prompts({L"Secret", kCancel, L""});
    EXPECT_TRUE(UnlockAtStart(Own()));
    EXPECT_EQ(prompts.Prompts().size(), 3u);
}

TEST_F(PasswordTest, TheStartsPromptsHaveNoOwner)
{
    Store(L"Secret");
    StoreAskAtStart(Own(), true);
    const PromptAnswerer prompts({L"no", L"Secret"});
    EXPECT_TRUE(UnlockAtStart(Own()));
    EXPECT_EQ(prompts.Titles(), (Titles{L"Enter Journal Password", L"Enter Journal Password"}));
    for (const auto& prompt : prompts.Prompts()) {
        EXPECT_EQ(prompt.owner, nullptr);
        EXPECT_TRUE(prompt.isMasked);
        EXPECT_TRUE(prompt.hasKeyboard);
    }
}

// Each failed write is told: that its subkey did not open, and that nothing was written.
TEST_F(PasswordTest, ARegistryThatRefusesIsToldAndNotChecked)
{
    constexpr const wchar_t* kPath = L"Software\\Quillmarsh\\Refusing Test";
    RegistryStore settings;
    ASSERT_EQ(settings.Open(kPath), 1);
    ASSERT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, kPath), ERROR_SUCCESS);
    const MessageBoxAnswerer boxes;
    const PromptAnswerer prompts({L"a", L"a"});
    EXPECT_TRUE(SetNewPassword(nullptr, settings));
    EXPECT_EQ(boxes.Boxes().size(), 4u);
    EXPECT_EQ(boxes.Boxes().at(0).caption, L"Error");
    StoreAskAtStart(settings, true);
    EXPECT_EQ(boxes.Boxes().size(), 6u);
    EXPECT_FALSE(IsPasswordSet(settings));
    EXPECT_TRUE(UnlockAtStart(settings)) << "what cannot be read is the default";
    EXPECT_EQ(boxes.Boxes().size(), 6u);
}

TEST_F(PasswordTest, IsNotClearedWhereItsFlagStays)
{
    Store(L"Secret");
    const MessageBoxAnswerer boxes;
    const WriteRefuser refuser(L"setpw");
    EXPECT_FALSE(ClearPassword(Own()));
    EXPECT_TRUE(IsPasswordSet(Own()));
    EXPECT_EQ(StoredText(), L"Secret");
    EXPECT_EQ(boxes.Boxes().size(), 1u);
}

TEST_F(PasswordTest, IsNotClearedWhereItsTextStays)
{
    Store(L"Secret");
    const MessageBoxAnswerer boxes;
    const WriteRefuser refuser(L"vacc");
    EXPECT_FALSE(ClearPassword(Own()));
    EXPECT_EQ(Stored(L"setpw"), 0u);
    EXPECT_EQ(StoredText(), L"Secret");
}

TEST_F(PasswordTest, IsNotClearedWhereNothingCanBeRead)
{
    constexpr const wchar_t* kPath = L"Software\\Quillmarsh\\Refusing Test";
    RegistryStore settings;
    ASSERT_EQ(settings.Open(kPath), 1);
    ASSERT_EQ(RegDeleteKeyW(HKEY_CURRENT_USER, kPath), ERROR_SUCCESS);
    const MessageBoxAnswerer boxes;
    EXPECT_FALSE(ClearPassword(settings));
}

TEST_F(PasswordTest, WithoutTheSettingTheStartDoesNotAsk)
{
    Store(L"Secret");
    const PromptAnswerer prompts;
    EXPECT_TRUE(UnlockAtStart(Own())) << "missing";
    StoreAskAtStart(Own(), false);
    EXPECT_TRUE(UnlockAtStart(Own())) << "zero";
    EXPECT_TRUE(prompts.Prompts().empty());
}

TEST_F(PasswordTest, TheStartAsksThreeTimesAtMost)
{
    Store(L"Secret");
    StoreAskAtStart(Own(), true);
    const struct {
        PromptAnswerer::Answers answers;
        bool opens;
        size_t asked;
    } starts[] = {{{L"Secret"}, true, 1},
                  {{L"x", L"y", L"Secret"}, true, 3},
                  {{kCancel, L"Secret"}, true, 2},
                  {{L"x", L"y", L"z", L"Secret"}, false, 3},
                  {{kCancel, kCancel, kCancel}, false, 3}};
    for (const auto& start : starts) {
        const PromptAnswerer prompts(start.answers);
        EXPECT_EQ(UnlockAtStart(Own()), start.opens);
        EXPECT_EQ(prompts.Prompts().size(), start.asked);
    }
}

} // namespace
