// The Go menu hands over to what the system has.
#include <gtest/gtest.h>

#include "e2e/harness/remote_memory.h"
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

// What a program of ours gets that asks for a library by its name alone; 0 where there is none.
uint64_t Load(HWND window, const std::wstring& name)
{
    const UniqueKernelHandle process = ProcessOf(window);
    const size_t size = (name.size() + 1) * sizeof(wchar_t);
    RemoteBlock block(process.get(), size);
    EXPECT_TRUE(block.Write(static_cast<const void*>(name.c_str()), size));
    return CallInProcess(process.get(), L"kernel32.dll", "LoadLibraryW", {Argument(block.Address())},
                         MAXDWORD);
}

// A window of a class that a command of the menu brings.
HWND Started(HWND journal, int command, const wchar_t* windowClass, const wchar_t* title = nullptr)
{
    PostCommand(journal, command);
    HWND window = nullptr;
    WaitFor([&] { return (window = FindWindowW(windowClass, title)) && IsWindowVisible(window); });
    return window;
}

// Programs can be loaded like libraries, and one of ours lies beside the one that asks.
TEST_F(GoMenu, NoProgramTakesALibraryFromItsOwnFolder)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    HWND calendar = Started(Window(), CMD_CALENDAR, L"#32770", L"Calendar");
    HWND contacts = Started(Window(), CMD_CONTACTS, L"AddressBook");
    HWND help = Started(Window(), CMD_HELP_CONTENTS, L"JournalHelp");
    for (HWND window : {Window(), calendar, contacts, help}) {
        ASSERT_NE(window, nullptr);
        KeepThreadForCalls(ProcessOf(window).get());
        EXPECT_NE(Load(window, L"version.dll"), 0u) << "the system's";
        EXPECT_EQ(Load(window, L"iexplorm.exe"), 0u);
    }
    PressButton(calendar, IDOK);
    for (HWND window : {calendar, contacts, help}) {
        PostMessageW(window, WM_CLOSE, 0, 0);
        EXPECT_TRUE(WaitUntilGone(window));
    }
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
