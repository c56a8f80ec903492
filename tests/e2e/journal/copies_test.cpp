// Copies of the program that are started beside each other.
#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "e2e/journal/journal_window.h"

namespace {

using Copies = JournalWindowTest;

TEST_F(Copies, OfTwoStartedAtOnceOneOpens)
{
    constexpr int kPairs = 40;
    for (int i = 0; i < kPairs; ++i) {
        std::array<JournalProcess, 2> both;
        ASSERT_TRUE(both[0].Launch() && both[1].Launch());
        ASSERT_TRUE(WaitFor([&] { return both[0].IsRunning() != both[1].IsRunning(); })) << i;
        JournalProcess& open = both[both[0].IsRunning() ? 0 : 1];
        ASSERT_NE(open.WaitForMainWindow(), nullptr) << i;
        EXPECT_EQ(VisibleWindows(L"Journal"), std::vector{open.MainWindow()}) << i;
        EXPECT_FALSE(HasMessageBox(open.Id()));
        ASSERT_TRUE(open.Close()) << i;
        for (const JournalProcess& copy : both)
            EXPECT_EQ(copy.ExitCode(), 0u) << i;
    }
}

TEST_F(Copies, EachStoreHasAWindow)
{
    ASSERT_NE(AddEntry(L"Here"), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(1));
    const std::wstring other = m_store.Path() + L".other.db";
    {
        JournalProcess second, third;
        SetEnvironmentVariableW(L"MERVANE_STORE", other.c_str());
        HWND window = second.Start();
        ASSERT_NE(window, nullptr);
        EXPECT_EQ(RemoteListView(ChildOfClass(window, L"SysListView32")).RowCount(), 0);
        EXPECT_EQ(VisibleWindows(L"Journal").size(), 2u);
        // And another start with the same store, spelt otherwise, shows the same.
        ASSERT_TRUE(Activate(Window()));
        std::wstring large = other;
        CharUpperBuffW(large.data(), static_cast<DWORD>(large.size()));
        SetEnvironmentVariableW(L"MERVANE_STORE", large.c_str());
        ASSERT_TRUE(third.Launch());
        ASSERT_TRUE(third.WaitForEnd());
        EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == window; }));
        EXPECT_EQ(VisibleWindows(L"Journal").size(), 2u);
        EXPECT_TRUE(second.Close());
    }
    SetEnvironmentVariableW(L"MERVANE_STORE", m_store.Path().c_str());
    EXPECT_TRUE(DeleteFileW(other.c_str()));
}

TEST_F(Copies, ASecondStartBringsTheDialogInFrontForward)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    PressKeys({VK_CONTROL, 'N'});
    HWND editor = WaitForEditor();
    ASSERT_NE(editor, nullptr);
    JournalProcess second;
    ASSERT_TRUE(second.Launch());
    ASSERT_TRUE(second.WaitForEnd());
    EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == editor; }));
    // As for any other program that makes the main window the active one.
    SetForegroundWindow(Window());
    EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == editor && FocusOf(editor); }));
    EXPECT_FALSE(HasMessageBox(m_journal.Id()));
}

TEST_F(Copies, ASecondStartShowsTheQuestionThatStands)
{
    ASSERT_NE(AddEntry(L"One"), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(1));
    ASSERT_TRUE(Click(List().LabelPoint(0)));
    ASSERT_TRUE(WaitFor([&] { return List().SelectedRows() == std::vector{0}; }));
    PressKey(VK_DELETE);
    const RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(box);
    JournalProcess second;
    ASSERT_TRUE(second.Launch());
    ASSERT_TRUE(second.WaitForEnd());
    EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == box.Handle(); }));
    ASSERT_TRUE(box.Answer(IDNO));
    EXPECT_TRUE(IsWindowEnabled(Window()));
}

} // namespace
