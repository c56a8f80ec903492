// The Go menu hands over to what the system has.
#include <gtest/gtest.h>

#include "e2e/journal/journal_window.h"

namespace {

// A process that the journal has started and that shows a box of this title; 0: there is none yet.
DWORD OwnerOfBox(const wchar_t* title)
{
    DWORD process = 0;
    GetWindowThreadProcessId(FindWindowW(L"#32770", title), &process);
    return process;
}

class GoMenu : public JournalWindowTest {};

TEST_F(GoMenu, WithoutACalendarItIsSaidPlainly)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    PostCommand(Window(), CMD_CALENDAR);
    DWORD process = 0;
    ASSERT_TRUE(WaitFor([&] { return (process = OwnerOfBox(L"Calendar")) != 0; }));
    EXPECT_NE(process, m_journal.Id());
    const RemoteMessageBox box = WaitForMessageBox(process);
    ASSERT_TRUE(box);
    EXPECT_EQ(box.Text(), L"There is no calendar program on this computer that the journal could open.");
    PressButton(box.Handle(), IDOK);
    ASSERT_TRUE(WaitUntilGone(box.Handle()));
    EXPECT_TRUE(IsWindowEnabled(Window())) << "the journal did not wait";
}

// Of Wine's explorer or of Windows'.
HWND FilesWindow()
{
    HWND window = FindWindowW(L"ExplorerWClass", nullptr);
    return window ? window : FindWindowW(L"CabinetWClass", nullptr);
}

TEST_F(GoMenu, MyHandheldShowsTheComputersFiles)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    PostCommand(Window(), CMD_MY_HANDHELD);
    ASSERT_TRUE(WaitFor([] { return IsWindowVisible(FilesWindow()) != FALSE; }));
    EXPECT_FALSE(HasMessageBox(m_journal.Id()));
    EXPECT_EQ(OwnerOfBox(L"My Handheld PC"), 0u);
    PostMessageW(FilesWindow(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitFor([] { return FilesWindow() == nullptr; }));
}

} // namespace
