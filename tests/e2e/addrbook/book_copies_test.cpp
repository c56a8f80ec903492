// Copies of the address book that are started beside each other.
#include <gtest/gtest.h>

#include <array>

#include "e2e/addrbook/address_book_window.h"

namespace {

class BookCopies : public AddressBookTest {
  protected:
    JournalProcess m_second{L"addrbook.exe", kAddressBook};
    JournalProcess m_third{L"addrbook.exe", kAddressBook};
};

TEST_F(BookCopies, OfTwoStartedAtOnceOneOpens)
{
    constexpr int kPairs = 20;
    for (int i = 0; i < kPairs; ++i) {
        ASSERT_TRUE(m_second.Launch() && m_third.Launch());
        ASSERT_TRUE(WaitFor([&] { return m_second.IsRunning() != m_third.IsRunning(); })) << i;
        JournalProcess& open = m_second.IsRunning() ? m_second : m_third;
        ASSERT_NE(open.WaitForMainWindow(), nullptr) << i;
        EXPECT_EQ(VisibleWindows(kAddressBook), std::vector{open.MainWindow()}) << i;
        EXPECT_FALSE(HasMessageBox(open.Id()));
        ASSERT_TRUE(open.Close()) << i;
        EXPECT_EQ(m_second.ExitCode(), 0u) << i;
        EXPECT_EQ(m_third.ExitCode(), 0u) << i;
    }
}

TEST_F(BookCopies, EachStoreHasAWindow)
{
    m_cards = CardOf("FN:Anna");
    ASSERT_TRUE(StartWithCards());
    const std::wstring other = m_store.Path() + L".other.db";
    SetEnvironmentVariableW(L"MERVANE_STORE", other.c_str());
    HWND window = m_second.Start();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(RemoteListView(Control(window, IDC_CONTACTS)).RowCount(), 0);
    EXPECT_EQ(VisibleWindows(kAddressBook).size(), 2u);
    // And another start with the same store shows the same.
    ASSERT_TRUE(Activate(Window()));
    ASSERT_TRUE(m_third.Launch());
    ASSERT_TRUE(m_third.WaitForEnd());
    EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == window; }));
    EXPECT_EQ(VisibleWindows(kAddressBook).size(), 2u);
    EXPECT_TRUE(m_second.Close());
    SetEnvironmentVariableW(L"MERVANE_STORE", m_store.Path().c_str());
    EXPECT_TRUE(DeleteFileW(other.c_str()));
}

// Not the question's owner, which could not be worked.
TEST_F(BookCopies, ASecondStartShowsTheQuestionThatStands)
{
    m_cards = CardOf("FN:Anna");
    ASSERT_TRUE(StartWithCards());
    PostCommand(Window(), CMD_DELETE_CONTACT);
    const RemoteMessageBox box = WaitForMessageBox(m_book.Id());
    ASSERT_TRUE(box);
    ASSERT_TRUE(m_second.Launch());
    ASSERT_TRUE(m_second.WaitForEnd());
    EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == box.Handle(); }));
    ASSERT_TRUE(box.Answer(IDNO));
    EXPECT_TRUE(ShowsNames({L"Anna"}));
}

TEST_F(BookCopies, AMaximisedWindowStaysSo)
{
    ASSERT_NE(m_book.Start(), nullptr);
    ShowWindow(Window(), SW_SHOWMAXIMIZED);
    ASSERT_TRUE(WaitFor([&] { return IsZoomed(Window()) != FALSE; }));
    ASSERT_TRUE(m_second.Launch());
    ASSERT_TRUE(m_second.WaitForEnd());
    EXPECT_TRUE(IsZoomed(Window()));
}

// A box that says why it did not start keeps no other start waiting.
TEST_F(BookCopies, AFailedStartHoldsUpNobody)
{
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), "no store"));
    ASSERT_TRUE(m_second.Launch());
    const RemoteMessageBox box = WaitForMessageBox(m_second.Id());
    ASSERT_TRUE(box);
    ASSERT_TRUE(DeleteFileW(m_store.Path().c_str()));
    EXPECT_NE(m_book.Start(), nullptr);
    ASSERT_TRUE(box.Answer(IDOK));
    ASSERT_TRUE(m_second.WaitForEnd());
    EXPECT_EQ(m_second.ExitCode(), 1u);
    EXPECT_TRUE(m_book.IsRunning());
}

} // namespace
