// The password at the start of the program, as a person gives it.
#include <gtest/gtest.h>

#include "e2e/journal/journal_window.h"

namespace {

class Password : public JournalWindowTest {
  protected:
    void Lock()
    {
        ASSERT_NE(AddEntry(L"One"), 0u);
        ASSERT_TRUE(StoreSetting(L"Options", L"vacc", L"Secret"));
        ASSERT_TRUE(StoreSetting(L"Options", L"setpw", 1));
        ASSERT_TRUE(StoreSetting(L"Options", L"Password", 1));
        ASSERT_TRUE(m_journal.Launch());
    }
    // Types an answer, and Enter or Esc, into the next prompt.
    void Answer(const std::wstring& text, WORD key)
    {
        HWND prompt = WaitForDialog(m_journal.Id(), L"Enter Journal Password");
        ASSERT_NE(prompt, nullptr);
        ASSERT_TRUE(Activate(prompt));
        EXPECT_EQ(FindTopWindow(m_journal.Id(), L"Journal"), nullptr) << "the journal is not there yet";
        TypeText(text);
        ASSERT_TRUE(WaitFor([&] { return TextOf(Control(prompt, IDC_PASSWORD)) == text; }));
        PressKey(key);
        ASSERT_TRUE(WaitUntilGone(prompt));
    }
    void ExpectSilentEnd()
    {
        ASSERT_TRUE(m_journal.WaitForEnd());
        EXPECT_EQ(m_journal.ExitCode(), 0u);
        EXPECT_FALSE(HasSettings(L"Settings")) << "nothing was opened";
    }
};

TEST_F(Password, TwoWrongAnswersAndARightOneOpenTheJournal)
{
    ASSERT_NO_FATAL_FAILURE(Lock());
    ASSERT_NO_FATAL_FAILURE(Answer(L"secret", VK_RETURN));
    ASSERT_NO_FATAL_FAILURE(Answer(L"", VK_ESCAPE));
    ASSERT_NO_FATAL_FAILURE(Answer(L"Secret", VK_RETURN));
    ASSERT_NE(m_journal.WaitForMainWindow(), nullptr);
    EXPECT_TRUE(ShowsRows(1));
}

TEST_F(Password, ThreeWrongAnswersEndTheProgramWithoutAWord)
{
    ASSERT_NO_FATAL_FAILURE(Lock());
    for (const wchar_t* wrong : {L"a", L"b", L"c"})
        ASSERT_NO_FATAL_FAILURE(Answer(wrong, VK_RETURN));
    ASSERT_NO_FATAL_FAILURE(ExpectSilentEnd());
}

TEST_F(Password, CancelThreeTimesEndsTheProgramWithoutAWord)
{
    ASSERT_NO_FATAL_FAILURE(Lock());
    for (int attempt = 0; attempt < 3; ++attempt)
        ASSERT_NO_FATAL_FAILURE(Answer(L"", VK_ESCAPE));
    ASSERT_NO_FATAL_FAILURE(ExpectSilentEnd());
}

TEST_F(Password, SetInTheOptionsItIsAskedForAtTheNextStart)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    PostCommand(Window(), CMD_OPTIONS);
    HWND options = WaitForDialog(m_journal.Id(), L"Options");
    ASSERT_NE(options, nullptr);
    ASSERT_TRUE(Activate(options));
    PressKeys({VK_MENU, 'P'});
    for (const wchar_t* title : {L"Enter New Password", L"Re-Enter Password"}) {
        HWND prompt = WaitForDialog(m_journal.Id(), title);
        ASSERT_NE(prompt, nullptr);
        ASSERT_TRUE(Activate(prompt));
        TypeText(L"Secret\n");
        ASSERT_TRUE(WaitUntilGone(prompt));
    }
    EXPECT_TRUE(
        WaitFor([&] { return TextOf(Control(options, IDC_PASSWORD_STATUS)) == L"Password IS Set!"; }));
    ASSERT_TRUE(Activate(options));
    PressButton(options, IDOK);
    ASSERT_TRUE(WaitUntilGone(options));
    ASSERT_TRUE(m_journal.Close());

    ASSERT_TRUE(m_journal.Launch());
    ASSERT_NO_FATAL_FAILURE(Answer(L"Secret", VK_RETURN));
    EXPECT_NE(m_journal.WaitForMainWindow(), nullptr);
}

} // namespace
