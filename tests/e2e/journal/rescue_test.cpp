// An entry that is open and not saved when the program is killed.
#include <gtest/gtest.h>

#include "e2e/journal/journal_window.h"
#include "support/rescue_folder.h"

namespace {

class Rescue : public JournalWindowTest {
  protected:
    // Types into an editor that is open and waits until that is on disk.
    void TypeAndWait(HWND editor, const std::wstring& body)
    {
        ASSERT_NE(editor, nullptr);
        ASSERT_TRUE(SetText(Control(editor, IDC_SUBJECT), L"Dinner"));
        ASSERT_TRUE(SetText(Control(editor, IDC_BODY), body));
        ASSERT_TRUE(WaitFor([&] {
            for (const std::wstring& path : m_folder.Files(L".rescue"))
                if (ReadFileBytes(path).find(Utf8(body)) != std::string::npos)
                    return true;
            return false;
        }));
    }
    static std::string Utf8(const std::wstring& text)
    {
        char bytes[256] = "";
        WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, bytes, sizeof bytes, nullptr, nullptr);
        return bytes;
    }
    void Abandon(const std::wstring& body)
    {
        ASSERT_NE(m_journal.Start(), nullptr);
        PressKeys({VK_CONTROL, 'N'});
        ASSERT_NO_FATAL_FAILURE(TypeAndWait(WaitForEditor(), body));
        m_journal.Kill();
    }
    RemoteMessageBox StartToOffer()
    {
        return RemoteMessageBox(m_journal.Launch() ? WaitForMessageBox(m_journal.Id()).Handle() : nullptr);
    }

    RescueFolder m_folder;
};

TEST_F(Rescue, IsOfferedAtTheNextStartAndSaved)
{
    ASSERT_NO_FATAL_FAILURE(Abandon(L"Fish and w\u00FCrst"));
    const RemoteMessageBox box = StartToOffer();
    ASSERT_TRUE(box);
    EXPECT_EQ(box.Caption(), L"Journal");
    EXPECT_TRUE(box.Text().starts_with(L"An entry that was not saved was found: Dinner, ")) << box.Text();
    ASSERT_TRUE(box.Answer(IDYES));
    HWND editor = WaitForEditor();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(TextOf(Control(editor, IDC_SUBJECT)), L"Dinner");
    PressKey(VK_RETURN);
    ASSERT_TRUE(WaitUntilGone(editor));
    ASSERT_NE(m_journal.WaitForMainWindow(), nullptr);
    EXPECT_TRUE(ShowsRows(1));
    EXPECT_TRUE(m_folder.Files().empty());
    ASSERT_TRUE(m_journal.Close());
    const StoreReader store(m_store.Path());
    EXPECT_EQ(store.QueryOne("SELECT count(*) FROM journal"), "1");
    EXPECT_EQ(store.QueryOne("SELECT subject FROM journal"), "Dinner");
    EXPECT_EQ(store.QueryOne("SELECT body FROM journal"), "Fish and w\xC3\xBCrst");
}

TEST_F(Rescue, ARefusedOneIsKeptAndNotOfferedAgain)
{
    ASSERT_NO_FATAL_FAILURE(Abandon(L"Fish"));
    const RemoteMessageBox box = StartToOffer();
    ASSERT_TRUE(box);
    ASSERT_TRUE(box.Answer(IDNO));
    ASSERT_NE(m_journal.WaitForMainWindow(), nullptr);
    EXPECT_TRUE(IsWindowEnabled(Window()));
    EXPECT_EQ(m_folder.Files(L".kept").size(), 1u);
    EXPECT_EQ(m_folder.Unsaved(), 0u);
    ASSERT_TRUE(m_journal.Close());
    ASSERT_NE(m_journal.Start(), nullptr);
    EXPECT_TRUE(IsWindowEnabled(Window()));
    EXPECT_FALSE(HasMessageBox(m_journal.Id()));
    EXPECT_TRUE(ShowsRows(0));
}

TEST_F(Rescue, IsOfferedAgainWhereItWasNotAnswered)
{
    ASSERT_NO_FATAL_FAILURE(Abandon(L"Fish"));
    ASSERT_TRUE(StartToOffer());
    m_journal.Kill();
    RemoteMessageBox box = StartToOffer();
    ASSERT_TRUE(box);
    ASSERT_TRUE(box.Answer(IDYES));
    ASSERT_NE(WaitForEditor(), nullptr);
    m_journal.Kill();
    box = StartToOffer();
    ASSERT_TRUE(box);
    EXPECT_TRUE(box.Text().starts_with(L"An entry that was not saved was found: Dinner, "));
}

TEST_F(Rescue, OfAnotherStoreIsNotOffered)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    PressKeys({VK_CONTROL, 'N'});
    ASSERT_NO_FATAL_FAILURE(TypeAndWait(WaitForEditor(), L"Fish"));
    const TestStore otherStore;
    JournalProcess other;
    ASSERT_NE(other.Start(), nullptr);
    EXPECT_TRUE(IsWindowEnabled(other.MainWindow()));
    EXPECT_FALSE(HasMessageBox(other.Id()));
    EXPECT_EQ(m_folder.Unsaved(), 1u);
}

TEST_F(Rescue, TheEndOfTheSessionLeavesOne)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    PressKeys({VK_CONTROL, 'N'});
    HWND editor = WaitForEditor();
    ASSERT_NE(editor, nullptr);
    ASSERT_TRUE(SetText(Control(editor, IDC_SUBJECT), L"Dinner"));
    Send(Window(), WM_ENDSESSION, TRUE);
    EXPECT_EQ(m_folder.Unsaved(), 1u) << "before it answers";
    ASSERT_TRUE(m_journal.WaitForEnd());
    EXPECT_TRUE(StartToOffer());
}

} // namespace
