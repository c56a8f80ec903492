#include "e2e/harness/message_box.h"
#include "e2e/harness/screenshot.h"
#include "e2e/sample/sample_test.h"
#include "support/temporary_name.h"
#include "support/test_store.h"

namespace {

constexpr DWORD kShortLimit = 50;

using ProcessTest = SampleTest;

TEST_F(ProcessTest, ClosesAndTellsTheExitCode)
{
    EXPECT_TRUE(m_program.IsRunning());
    EXPECT_EQ(m_program.ExitCode(), std::nullopt);
    ASSERT_TRUE(m_program.Close());
    EXPECT_FALSE(m_program.IsRunning());
    EXPECT_EQ(m_program.ExitCode(), 7u);
}

TEST_F(ProcessTest, KillEndsTheProcessAndItCanStartAgain)
{
    const DWORD first = m_program.Id();
    m_program.Kill();
    EXPECT_FALSE(m_program.IsRunning());
    EXPECT_EQ(FindTopWindow(first, L"HarnessSample"), nullptr);
    ASSERT_NE(m_program.Start(), nullptr);
    EXPECT_NE(m_program.Id(), first);
}

TEST_F(ProcessTest, NoticesACrash)
{
    PostCommand(m_window, SAMPLE_CMD_CRASH);
    ASSERT_TRUE(m_program.WaitForEnd());
    EXPECT_EQ(m_program.ExitCode(), 3u);
}

TEST_F(ProcessTest, AProgramThatIsNotThereDoesNotStart)
{
    JournalProcess nothing(L"no_such_program.exe");
    EXPECT_FALSE(nothing.Launch());
    EXPECT_FALSE(nothing.IsRunning());
}

TEST_F(ProcessTest, WaitingForAWindowThatDoesNotComeEnds)
{
    JournalProcess other(L"e2e_sample.exe", L"NoSuchClass");
    ASSERT_TRUE(other.Launch());
    EXPECT_EQ(other.WaitForMainWindow(kShortLimit), nullptr);
    EXPECT_EQ(WaitForDialog(m_program.Id(), L"No Such Dialog", kShortLimit), nullptr);
    EXPECT_FALSE(WaitForMessageBox(m_program.Id(), kShortLimit));
}

TEST_F(ProcessTest, ActivatesOneOfTwoPrograms)
{
    JournalProcess other(L"e2e_sample.exe", L"HarnessSample");
    HWND second = other.Start();
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(GetForegroundWindow(), second);
    ASSERT_TRUE(Activate(m_window));
    EXPECT_EQ(GetForegroundWindow(), m_window);
}

TEST_F(ProcessTest, SavesAPictureOfAWindow)
{
    const std::wstring path = TemporaryName(L"harness");
    ASSERT_TRUE(SaveScreenshot(m_window, path));
    RECT rect;
    GetWindowRect(m_window, &rect);
    const std::string bytes = ReadFileBytes(path);
    EXPECT_EQ(bytes.substr(0, 2), "BM");
    EXPECT_GE(bytes.size(), static_cast<size_t>((rect.right - rect.left) * (rect.bottom - rect.top) * 3));
    DeleteFileW(path.c_str());
}

} // namespace
