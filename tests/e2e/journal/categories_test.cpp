// The master list of categories as a person keeps it, with the keyboard alone.
#include <gtest/gtest.h>

#include "e2e/journal/journal_window.h"

namespace {

class CategoriesList : public JournalWindowTest {
  protected:
    // The journal with the dialog open over these categories, each of that many uses.
    void Open()
    {
        ASSERT_NE(AddEntry(L"One"), 0u); // makes the store
        ASSERT_TRUE(ChangeStore(m_store.Path(),
                                "INSERT INTO categories(name, uses) VALUES('Travel', 2), ('Work', 0)"));
        ASSERT_NE(m_journal.Start(), nullptr);
        PostCommand(Window(), CMD_CATEGORIES_LIST);
        m_dialog = WaitForDialog(m_journal.Id(), L"Edit Categories");
        ASSERT_NE(m_dialog, nullptr);
        ASSERT_TRUE(Activate(m_dialog));
    }
    // The key that opens the dialog for a name, then the name.
    void Name(WORD key, const wchar_t* title, const std::wstring& name)
    {
        PressKey(key);
        HWND dialog = WaitForDialog(m_journal.Id(), title);
        ASSERT_NE(dialog, nullptr);
        ASSERT_TRUE(Activate(dialog));
        TypeText(name + L"\n");
        ASSERT_TRUE(WaitUntilGone(dialog));
    }
    bool Shows(const std::vector<std::wstring>& names) const
    {
        const RemoteListView list(ChildOfClass(m_dialog, L"SysListView32"));
        return WaitFor([&] {
            std::vector<std::wstring> shown;
            for (int row = 0; row < list.RowCount(); ++row)
                shown.push_back(list.Text(row, 0));
            return shown == names;
        });
    }
    std::string Stored() const
    {
        return StoreReader(m_store.Path())
            .QueryOne("SELECT group_concat(name || hidden) FROM (SELECT * FROM categories ORDER BY name)")
            .value_or("");
    }

    HWND m_dialog = nullptr;
};

TEST_F(CategoriesList, IsKeptByTheKeyboardAlone)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    EXPECT_TRUE(Shows({L"Travel", L"Work"}));
    ASSERT_NO_FATAL_FAILURE(Name(VK_INSERT, L"New Category", L"G\u00e4rten"));
    EXPECT_TRUE(Shows({L"G\u00e4rten", L"Travel", L"Work"}));
    PressKey(VK_DOWN);
    PressKey(VK_DELETE);
    const RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(box);
    EXPECT_EQ(box.Text(), L"2 entries use the category \"Travel\". Delete it?");
    ASSERT_TRUE(box.Answer(IDYES));
    EXPECT_TRUE(Shows({L"G\u00e4rten", L"Work"}));
    ASSERT_NO_FATAL_FAILURE(Name(VK_F2, L"Rename Category", L"Office"));
    EXPECT_TRUE(Shows({L"G\u00e4rten", L"Office"}));
    PressKeys({VK_MENU, 'H'});
    const RemoteListView list(ChildOfClass(m_dialog, L"SysListView32"));
    EXPECT_TRUE(WaitFor([&] { return list.Text(1, 2) == L"Yes"; }));
    EXPECT_EQ(Stored(), "Travel0,Work0") << "nothing is stored before OK";
    PressKey(VK_RETURN);
    ASSERT_TRUE(WaitUntilGone(m_dialog));
    EXPECT_EQ(Stored(), "G\u00e4rten0,Office1");
}

TEST_F(CategoriesList, EscapeLeavesAllAsItWas)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    ASSERT_NO_FATAL_FAILURE(Name(VK_INSERT, L"New Category", L"Garden"));
    EXPECT_TRUE(Shows({L"Garden", L"Travel", L"Work"}));
    PressKey(VK_ESCAPE);
    ASSERT_TRUE(WaitUntilGone(m_dialog));
    EXPECT_EQ(Stored(), "Travel0,Work0");
    EXPECT_TRUE(m_journal.Close());
}

} // namespace
