// A person files an entry under categories, links it to people, and sees both in the list's columns.
#include <gtest/gtest.h>

#include "e2e/journal/journal_window.h"
#include "mervane/db_categories.h"
#include "mervane/db_contacts.h"
#include "mervane/z_column.h"

namespace {

class Assign : public JournalWindowTest {
  protected:
    void SetUp() override
    {
        DbCategories categories;
        ASSERT_TRUE(categories.Open());
        for (const wchar_t* name : {L"Work", L"Garden", L"Öffentlich"})
            ASSERT_TRUE(Add(&categories, kCategoriesKey, name));
        DbContacts contacts;
        ASSERT_TRUE(contacts.Open());
        for (const wchar_t* name : {L"Smith, Ann", L"Ωμέγα, Νίκος", L"Miller, Bo"})
            ASSERT_TRUE(Add(&contacts, kContactsKey, name));
        ShowColumns({102, 104, 111});
    }

    void ShowColumns(const std::vector<DWORD>& properties)
    {
        DWORD position = 0;
        for (const DWORD property : properties)
            ASSERT_TRUE(
                StoreSetting(L"Settings", (L"Column" + std::to_wstring(position++)).c_str(),
                             property << kColumnPropertyShift | 200 << kColumnWidthShift | kColumnShown));
        ASSERT_TRUE(StoreSetting(L"Settings", L"iCols", position));
    }

    // Once the list shows them.
    void ExpectRow(const std::wstring& categories, const std::wstring& contacts)
    {
        EXPECT_TRUE(WaitFor([&] { return List().Text(0, 1) == categories && List().Text(0, 2) == contacts; }))
            << "the row's fields are other ones";
    }

    RemoteListView ListOf(HWND editor, int id)
    {
        EXPECT_TRUE(WaitFor([&] { return Control(editor, id) != nullptr; })) << id;
        return RemoteListView(Control(editor, id));
    }

  private:
    static bool Add(CeDBase* database, CEPROPID property, const wchar_t* name)
    {
        CEPROPVAL value{};
        value.propid = property;
        value.val.lpwstr = const_cast<wchar_t*>(name);
        return database->WriteRecord(0, 1, &value) != 0;
    }
};

TEST_F(Assign, ByMouseAndSeenInTheColumns)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    PressKeys({VK_CONTROL, 'N'});
    HWND editor = WaitForEditor();
    ASSERT_NE(editor, nullptr);
    const RemoteToolbar bar(Control(editor, IDC_EDITOR_BAR));

    ASSERT_TRUE(Click(bar.BodyPoint(CMD_ASSIGN_CATEGORIES)));
    const RemoteListView categories = ListOf(editor, IDC_CATEGORY_LIST);
    ASSERT_TRUE(WaitFor([&] { return categories.RowCount() == 3; }));
    EXPECT_TRUE(bar.IsChecked(CMD_ASSIGN_CATEGORIES));
    EXPECT_FALSE(bar.IsEnabled(CMD_SAVE)) << "looking is no change";
    HWND line = Control(editor, IDC_CATEGORIES_LINE);
    ASSERT_TRUE(Click(categories.LabelPoint(categories.FindRow(0, L"Work"))));
    EXPECT_TRUE(WaitFor([&] { return TextOf(line) == L"Work"; }));
    ASSERT_TRUE(Click(categories.CheckPoint(categories.FindRow(0, L"Öffentlich"))));
    EXPECT_TRUE(WaitFor([&] { return TextOf(line) == L"Öffentlich, Work"; }));

    ASSERT_TRUE(Click(bar.BodyPoint(CMD_ASSIGN_CONTACTS)));
    const RemoteListView contacts = ListOf(editor, IDC_CONTACT_LIST);
    ASSERT_TRUE(WaitFor([&] { return contacts.RowCount() == 3; }));
    EXPECT_EQ(Control(editor, IDC_CATEGORY_LIST), nullptr);
    for (const wchar_t* name : {L"Smith, Ann", L"Ωμέγα, Νίκος"}) {
        const int row = contacts.FindRow(0, name);
        ASSERT_TRUE(Click(contacts.CheckPoint(row)));
        EXPECT_TRUE(WaitFor([&] { return contacts.CheckImage(row) == 2; }));
    }
    ASSERT_TRUE(Click(MiddleOf(Control(editor, IDOK))));
    ASSERT_TRUE(WaitUntilGone(editor));

    ASSERT_TRUE(ShowsRows(1));
    ExpectRow(L"Öffentlich,Work", L"Smith, Ann;Ωμέγα, Νίκος");
    const StoreReader store(m_store.Path());
    EXPECT_EQ(store.QueryOne("SELECT group_concat(uses) FROM (SELECT uses FROM categories ORDER BY oid)"),
              "1,0,1");
}

TEST_F(Assign, ByTheKeyboardAlone)
{
    ASSERT_NE(AddEntry(L"Lunch"), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(1));
    PressKey(VK_HOME);
    PressKey(VK_RETURN);
    HWND editor = WaitForEditor();
    ASSERT_NE(editor, nullptr);
    HWND bar = Control(editor, IDC_EDITOR_BAR);
    for (int i = 0; i < 5; ++i)
        PressKey(VK_TAB);
    ASSERT_TRUE(WaitFor([&] { return FocusOf(editor) == bar; }));

    PressKey(VK_END);
    PressKey(VK_SPACE);
    const RemoteListView contacts = ListOf(editor, IDC_CONTACT_LIST);
    PressKey(VK_TAB);
    ASSERT_TRUE(WaitFor([&] { return FocusOf(editor) == contacts.Handle(); }));
    TypeText(L"smi");
    ASSERT_TRUE(WaitFor([&] { return contacts.FocusedRow() == contacts.FindRow(0, L"Smith, Ann"); }));
    EXPECT_FALSE(RemoteToolbar(bar).IsEnabled(CMD_SAVE)) << "finding is no change";
    PressKey(VK_SPACE);
    EXPECT_TRUE(WaitFor([&] { return contacts.CheckImage(contacts.FocusedRow()) == 2; }));

    PressKeys({VK_SHIFT, VK_TAB});
    PressKey(VK_END);
    PressKey(VK_LEFT);
    PressKey(VK_SPACE);
    const RemoteListView categories = ListOf(editor, IDC_CATEGORY_LIST);
    PressKey(VK_TAB);
    ASSERT_TRUE(WaitFor([&] { return FocusOf(editor) == categories.Handle(); }));
    PressKey(VK_SPACE);
    EXPECT_TRUE(WaitFor([&] { return TextOf(Control(editor, IDC_CATEGORIES_LINE)) == L"Garden"; }));
    PressKey(VK_RETURN); // OK
    ASSERT_TRUE(WaitUntilGone(editor));
    ExpectRow(L"Garden", L"Smith, Ann");
}

} // namespace
