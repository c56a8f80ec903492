// The password at the start of the program, as a person gives it.
#include <gtest/gtest.h>

#include <functional>

#include "e2e/journal/journal_window.h"

namespace {

class Password : public JournalWindowTest {
  protected:
    void Lock(const std::wstring& password = L"Secret")
    {
        ASSERT_NE(AddEntry(L"One"), 0u);
        ASSERT_TRUE(StoreSetting(L"Options", L"vacc", password));
        ASSERT_TRUE(StoreSetting(L"Options", L"setpw", 1));
        ASSERT_TRUE(StoreSetting(L"Options", L"Password", 1));
    }
    void LockAndLaunch()
    {
        ASSERT_NO_FATAL_FAILURE(Lock());
        ASSERT_TRUE(m_journal.Launch());
    }
    static HWND WaitForPrompt(const JournalProcess& journal)
    {
        return WaitForDialog(journal.Id(), L"Enter Journal Password");
    }
    // Types an answer, and Enter or Esc, into the next prompt.
    static void AnswerOf(const JournalProcess& journal, const std::wstring& text, WORD key)
    {
        HWND prompt = WaitForPrompt(journal);
        ASSERT_NE(prompt, nullptr);
        ASSERT_TRUE(Activate(prompt));
        EXPECT_EQ(FindTopWindow(journal.Id(), L"Journal"), nullptr) << "the journal is not there yet";
        TypeText(text);
        ASSERT_TRUE(WaitFor([&] { return TextOf(Control(prompt, IDC_PASSWORD)) == text; }));
        PressKey(key);
        ASSERT_TRUE(WaitUntilGone(prompt));
    }
    void Answer(const std::wstring& text, WORD key) { AnswerOf(m_journal, text, key); }
    // The store is a file that nobody has opened.
    bool IsStoreUntouched() const
    {
        HANDLE file = CreateFileW(m_store.Path().c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        const UniqueKernelHandle owner(file == INVALID_HANDLE_VALUE ? nullptr : file);
        return owner && GetFileAttributesW((m_store.Path() + L"-wal").c_str()) == INVALID_FILE_ATTRIBUTES;
    }
    void ExpectSilentEnd()
    {
        ASSERT_TRUE(m_journal.WaitForEnd());
        EXPECT_EQ(m_journal.ExitCode(), 0u);
        EXPECT_FALSE(HasSettings(L"Settings")) << "nothing was opened";
        EXPECT_FALSE(HasSettings(L"Filter"));
    }
    HWND OpenOptions()
    {
        PostCommand(Window(), CMD_OPTIONS);
        HWND options = WaitForDialog(m_journal.Id(), L"Options");
        return options && Activate(options) ? options : nullptr;
    }
    static bool ShowsStatus(HWND options, const std::wstring& status)
    {
        return WaitFor([&] { return TextOf(Control(options, IDC_PASSWORD_STATUS)) == status; });
    }
    // Sets the password in the Options, which then have the keyboard again.
    void SetPassword(HWND options)
    {
        PressKeys({VK_MENU, 'P'});
        for (const wchar_t* title : {L"Enter New Password", L"Re-Enter Password"}) {
            HWND prompt = WaitForDialog(m_journal.Id(), title);
            ASSERT_NE(prompt, nullptr);
            ASSERT_TRUE(Activate(prompt));
            TypeText(L"Secret\n");
            ASSERT_TRUE(WaitUntilGone(prompt));
        }
        EXPECT_TRUE(ShowsStatus(options, L"Password IS Set!"));
        ASSERT_TRUE(Activate(options));
    }
};

TEST_F(Password, TwoWrongAnswersAndARightOneOpenTheJournal)
{
    ASSERT_NO_FATAL_FAILURE(LockAndLaunch());
    ASSERT_NO_FATAL_FAILURE(Answer(L"secret", VK_RETURN));
    ASSERT_NO_FATAL_FAILURE(Answer(L"", VK_ESCAPE));
    ASSERT_NO_FATAL_FAILURE(Answer(L"Secret", VK_RETURN));
    ASSERT_NE(m_journal.WaitForMainWindow(), nullptr);
    EXPECT_TRUE(ShowsRows(1));
}

TEST_F(Password, ThreeWrongAnswersEndTheProgramWithoutAWord)
{
    ASSERT_NO_FATAL_FAILURE(LockAndLaunch());
    for (const wchar_t* wrong : {L"a", L"b", L"c"})
        ASSERT_NO_FATAL_FAILURE(Answer(wrong, VK_RETURN));
    ASSERT_NO_FATAL_FAILURE(ExpectSilentEnd());
}

TEST_F(Password, CancelThreeTimesEndsTheProgramWithoutAWord)
{
    ASSERT_NO_FATAL_FAILURE(LockAndLaunch());
    for (int attempt = 0; attempt < 3; ++attempt)
        ASSERT_NO_FATAL_FAILURE(Answer(L"", VK_ESCAPE));
    ASSERT_NO_FATAL_FAILURE(ExpectSilentEnd());
}

TEST_F(Password, ClosingThePromptIsAFailedAttemptWhicheverWay)
{
    ASSERT_NO_FATAL_FAILURE(LockAndLaunch());
    const std::function<void(HWND)> ways[] = {
        [](HWND prompt) { PostMessageW(prompt, WM_SYSCOMMAND, SC_CLOSE, 0); }, // the caption's X
        [](HWND prompt) { PressButton(prompt, IDCANCEL); },
        [](HWND) {
            PressKeys({VK_MENU, VK_F4});
        }};
    for (const auto& close : ways) {
        HWND prompt = WaitForPrompt(m_journal);
        ASSERT_NE(prompt, nullptr);
        ASSERT_TRUE(Activate(prompt));
        TypeText(L"Secret");
        ASSERT_TRUE(WaitFor([&] { return TextOf(Control(prompt, IDC_PASSWORD)) == L"Secret"; }));
        close(prompt);
        ASSERT_TRUE(WaitUntilGone(prompt));
    }
    ASSERT_NO_FATAL_FAILURE(ExpectSilentEnd());
}

TEST_F(Password, ThePromptIsInFrontMaskedAndReadyToTypeInto)
{
    ASSERT_NO_FATAL_FAILURE(LockAndLaunch());
    HWND prompt = WaitForPrompt(m_journal);
    ASSERT_NE(prompt, nullptr);
    EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == prompt; })) << "without being called";
    EXPECT_EQ(FocusOf(prompt), Control(prompt, IDC_PASSWORD));
    EXPECT_NE(Send(Control(prompt, IDC_PASSWORD), EM_GETPASSWORDCHAR), 0);
    EXPECT_EQ(TextOf(Control(prompt, IDC_PASSWORD)), L"");
}

// Whatever the start says about the window, it says about the journal's.
TEST_F(Password, ThePromptIsSeenHoweverTheStartShowsTheWindow)
{
    ASSERT_NO_FATAL_FAILURE(Lock());
    ASSERT_TRUE(m_journal.Launch({}, SW_SHOWMAXIMIZED));
    HWND prompt = WaitForPrompt(m_journal);
    ASSERT_NE(prompt, nullptr);
    EXPECT_FALSE(IsZoomed(prompt));
    ASSERT_NO_FATAL_FAILURE(Answer(L"Secret", VK_RETURN));
    ASSERT_NE(m_journal.WaitForMainWindow(), nullptr);
    EXPECT_TRUE(WaitFor([&] { return IsZoomed(Window()) != 0; }));

    ASSERT_TRUE(m_journal.Close());
    ASSERT_TRUE(m_journal.Launch({}, SW_SHOWMINNOACTIVE));
    prompt = WaitForPrompt(m_journal);
    ASSERT_NE(prompt, nullptr);
    EXPECT_FALSE(IsIconic(prompt));
}

TEST_F(Password, NothingOfTheJournalIsOpenedBeforeTheRightAnswer)
{
    ASSERT_NO_FATAL_FAILURE(LockAndLaunch());
    for (const wchar_t* wrong : {L"secret", L"Secre"}) {
        ASSERT_NE(WaitForPrompt(m_journal), nullptr);
        EXPECT_TRUE(IsStoreUntouched());
        EXPECT_EQ(FindWindowW(L"Journal", nullptr), nullptr) << "not even a hidden one";
        ASSERT_NO_FATAL_FAILURE(Answer(wrong, VK_RETURN));
    }
    ASSERT_NE(WaitForPrompt(m_journal), nullptr);
    EXPECT_TRUE(IsStoreUntouched());
    ASSERT_NO_FATAL_FAILURE(Answer(L"Secret", VK_RETURN));
    ASSERT_NE(m_journal.WaitForMainWindow(), nullptr);
    EXPECT_TRUE(ShowsRows(1));
    EXPECT_FALSE(IsStoreUntouched()) << "now it is open";
}

TEST_F(Password, ThreeWrongAnswersMakeNoStore)
{
    ASSERT_TRUE(StoreSetting(L"Options", L"Password", 1));
    ASSERT_TRUE(StoreSetting(L"Options", L"vacc", L"Secret"));
    ASSERT_TRUE(m_journal.Launch());
    for (const wchar_t* wrong : {L"a", L"", L"SECRET"})
        ASSERT_NO_FATAL_FAILURE(Answer(wrong, VK_RETURN));
    ASSERT_NO_FATAL_FAILURE(ExpectSilentEnd());
    EXPECT_EQ(GetFileAttributesW(m_store.Path().c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(Password, TwelveCharactersOpenByTheirFirstEight)
{
    ASSERT_NO_FATAL_FAILURE(Lock(L"12345678"));
    ASSERT_TRUE(m_journal.Launch());
    ASSERT_NO_FATAL_FAILURE(Answer(L"1234567", VK_RETURN));
    ASSERT_NO_FATAL_FAILURE(Answer(L"123456789012", VK_RETURN));
    EXPECT_NE(m_journal.WaitForMainWindow(), nullptr);
}

// No argument opens it, nor does a file that is given.
TEST_F(Password, TheCommandLineIsNotRead)
{
    ASSERT_NO_FATAL_FAILURE(Lock());
    ASSERT_TRUE(m_journal.Launch(L"\"" + m_store.Path() + L"\" Secret /password:Secret"));
    ASSERT_NO_FATAL_FAILURE(Answer(L"", VK_RETURN));
    EXPECT_TRUE(IsStoreUntouched());
    ASSERT_NO_FATAL_FAILURE(Answer(L"Secret", VK_RETURN));
    ASSERT_NE(m_journal.WaitForMainWindow(), nullptr);
    EXPECT_TRUE(ShowsRows(1));
}

TEST_F(Password, AStoredTextIsNotAskedForUnlessTheStartIsToAsk)
{
    ASSERT_NO_FATAL_FAILURE(Lock());
    ASSERT_TRUE(StoreSetting(L"Options", L"Password", 0));
    ASSERT_NE(m_journal.Start(), nullptr);
    EXPECT_TRUE(ShowsRows(1));
}

// Bytes that are no text a person could have typed.
TEST_F(Password, AStoredTextThatIsNoneOpensByTheEmptyAnswer)
{
    ASSERT_NO_FATAL_FAILURE(Lock());
    const std::pair<DWORD, std::string> texts[] = {
        {REG_SZ, std::string(10'000, 'x')}, {REG_SZ, "x"}, {REG_BINARY, ""}};
    for (const auto& [type, bytes] : texts) {
        ASSERT_TRUE(StoreRawSetting(L"Options", L"vacc", type, bytes));
        ASSERT_TRUE(m_journal.Launch());
        ASSERT_NO_FATAL_FAILURE(Answer(L"Secret", VK_RETURN));
        ASSERT_NO_FATAL_FAILURE(Answer(L"", VK_RETURN));
        ASSERT_NE(m_journal.WaitForMainWindow(), nullptr);
        ASSERT_TRUE(m_journal.Close());
    }
}

// A copy that still asks has no window to be brought forward, so a second one asks too.
TEST_F(Password, OfTwoCopiesThatAskOnlyOneOpens)
{
    ASSERT_NO_FATAL_FAILURE(LockAndLaunch());
    ASSERT_NE(WaitForPrompt(m_journal), nullptr);
    JournalProcess second;
    ASSERT_TRUE(second.Launch());
    ASSERT_NO_FATAL_FAILURE(AnswerOf(second, L"Secret", VK_RETURN));
    HWND window = second.WaitForMainWindow();
    ASSERT_NE(window, nullptr);
    ASSERT_NO_FATAL_FAILURE(Answer(L"Secret", VK_RETURN));
    ASSERT_TRUE(m_journal.WaitForEnd());
    EXPECT_EQ(m_journal.ExitCode(), 0u);
    EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == window; }));
}

TEST_F(Password, ACopyThatIsOpenIsBroughtForwardWithoutAsking)
{
    ASSERT_NO_FATAL_FAILURE(LockAndLaunch());
    ASSERT_NO_FATAL_FAILURE(Answer(L"Secret", VK_RETURN));
    ASSERT_NE(m_journal.WaitForMainWindow(), nullptr);
    JournalProcess second;
    ASSERT_TRUE(second.Launch());
    ASSERT_TRUE(second.WaitForEnd()) << "no prompt holds it up";
    EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == Window(); }));
}

TEST_F(Password, SetInTheOptionsItIsAskedForAtTheNextStart)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    HWND options = OpenOptions();
    ASSERT_NE(options, nullptr);
    ASSERT_NO_FATAL_FAILURE(SetPassword(options));
    PressButton(options, IDOK);
    ASSERT_TRUE(WaitUntilGone(options));
    ASSERT_TRUE(m_journal.Close());

    ASSERT_TRUE(m_journal.Launch());
    ASSERT_NO_FATAL_FAILURE(Answer(L"Secret", VK_RETURN));
    EXPECT_NE(m_journal.WaitForMainWindow(), nullptr);
}

TEST_F(Password, SetAndLeftByCancelItIsStoredAndNotAskedFor)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    HWND options = OpenOptions();
    ASSERT_NE(options, nullptr);
    ASSERT_NO_FATAL_FAILURE(SetPassword(options));
    PressButton(options, IDCANCEL);
    ASSERT_TRUE(WaitUntilGone(options));
    ASSERT_TRUE(m_journal.Close());
    EXPECT_EQ(TextSetting(L"Options", L"vacc"), L"Secret");
    EXPECT_EQ(NumberSetting(L"Options", L"setpw"), 1u);

    ASSERT_NE(m_journal.Start(), nullptr) << "no prompt";
    options = OpenOptions();
    ASSERT_NE(options, nullptr);
    EXPECT_TRUE(ShowsStatus(options, L"Password IS Set!"));
}

TEST_F(Password, ClearedAndLeftByCancelItIsAskedForAndTheEmptyAnswerOpens)
{
    ASSERT_NO_FATAL_FAILURE(LockAndLaunch());
    ASSERT_NO_FATAL_FAILURE(Answer(L"Secret", VK_RETURN));
    ASSERT_NE(m_journal.WaitForMainWindow(), nullptr);
    HWND options = OpenOptions();
    ASSERT_NE(options, nullptr);
    PressKeys({VK_MENU, 'C'});
    const RemoteMessageBox question = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(question);
    EXPECT_TRUE(question.IsDefault(IDYES));
    ASSERT_TRUE(question.Answer(IDYES));
    HWND prompt = WaitForPrompt(m_journal);
    ASSERT_NE(prompt, nullptr);
    ASSERT_TRUE(Activate(prompt));
    TypeText(L"Secret\n");
    ASSERT_TRUE(WaitUntilGone(prompt));
    EXPECT_TRUE(ShowsStatus(options, L"Password Cleared!"));
    PressButton(options, IDCANCEL);
    ASSERT_TRUE(WaitUntilGone(options));
    ASSERT_TRUE(m_journal.Close());

    ASSERT_TRUE(m_journal.Launch());
    ASSERT_NO_FATAL_FAILURE(Answer(L"Secret", VK_RETURN));
    ASSERT_NO_FATAL_FAILURE(Answer(L"", VK_RETURN));
    EXPECT_NE(m_journal.WaitForMainWindow(), nullptr);
}

} // namespace
