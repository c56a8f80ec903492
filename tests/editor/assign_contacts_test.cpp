// The view Assign Contacts in the editor's window.
#include "assign_fixture.h"

#include <sqlite3.h>

#include "res/resource.h"
#include "support/unreadable_table.h"
#include "ui/screen/scale.h"

namespace {

class AssignContactsTest : public AssignTest {
  protected:
    // As they stand in the store, every value.
    std::string AllContacts() const
    {
        std::string all;
        const auto add = [](void* text, int count, char** values, char**) {
            for (int i = 0; i < count; ++i)
                *static_cast<std::string*>(text) += std::string(values[i] ? values[i] : "NULL") + "|";
            return 0;
        };
        sqlite3* store = nullptr;
        EXPECT_EQ(sqlite3_open16(m_store.Path().c_str(), &store), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(store, "SELECT * FROM contacts", add, &all, nullptr), SQLITE_OK);
        sqlite3_close(store);
        return all;
    }
};

DWORD StyleOf(HWND window)
{
    return static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
}

TEST_F(AssignContactsTest, WithoutContactsThereIsOneItemThatSaysSo)
{
    RunNewIn(CMD_ASSIGN_CONTACTS, [](EditorWindow& editor) {
        const ListInEditor list = Contacts(editor);
        ASSERT_EQ(list.Count(), 1);
        EXPECT_EQ(list.Text(0), L"<No contacts>");
        EXPECT_EQ(list.Box(0), 0);
        EXPECT_TRUE(list.ExtendedStyle() & LVS_EX_FULLROWSELECT);
        EXPECT_GE(list.ColumnWidth(0), Scale(145)) << "an item is seen under a column only";
        list.ClickLabel(0);
        editor.Focus(IDC_CONTACT_LIST);
        editor.Key(VK_SPACE);
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(AssignContactsTest, WhatCannotBeReadIsNotShownAsNone)
{
    const CEOID ann = AddContact(L"Ann");
    CEOID id = AddEntry({}, {ann});
    Run(&id, [&](EditorWindow& editor) {
        {
            const UnreadableTable none(m_store.Path(), "contacts");
            editor.Command(CMD_ASSIGN_CONTACTS);
            const ListInEditor list = Contacts(editor);
            EXPECT_EQ(list.Count(), 0);
            ASSERT_EQ(list.Columns(), 1);
            EXPECT_EQ(list.ColumnTitle(0), L"<The contacts cannot be read>");
        }
        EXPECT_TRUE(PumpUntil([&] { return Contacts(editor).Count() == 1; }));
        EXPECT_EQ(Contacts(editor).Columns(), 2);
        EXPECT_TRUE(Contacts(editor).IsChecked(L"Ann"));
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(AssignContactsTest, ContactsThatCannotBeReadForAWhileStayInTheList)
{
    AddContact(L"Ann");
    RunNewIn(CMD_ASSIGN_CONTACTS, [&](EditorWindow& editor) {
        HWND list = Contacts(editor).Window();
        {
            const UnreadableTable none(m_store.Path(), "contacts");
            SendMessageW(editor.Window(), kMsgDatabaseChange, kChangeWorkEnded, 0);
        }
        EXPECT_EQ(Contacts(editor).Window(), list);
        EXPECT_EQ(Contacts(editor).Columns(), 2);
        EXPECT_TRUE(PumpUntil([&] { return Contacts(editor).Count() == 1; }));
    });
}

TEST_F(AssignContactsTest, ContactsAreListedInTwoColumns)
{
    AddContact(L"Smith, Ann", L"Works & Co");
    AddContact(L"Miller, Bo");
    RunNewIn(CMD_ASSIGN_CONTACTS, [](EditorWindow& editor) {
        const ListInEditor list = Contacts(editor);
        EXPECT_EQ(StyleOf(list.Window()) & (0x18009u | LVS_TYPEMASK), 0x18009u);
        EXPECT_TRUE(list.ExtendedStyle() & 0x20);
        ASSERT_EQ(list.Columns(), 2);
        EXPECT_EQ(list.ColumnTitle(0), L"File As");
        EXPECT_EQ(list.ColumnWidth(0), Scale(145));
        EXPECT_EQ(list.ColumnTitle(1), L"Company");
        EXPECT_EQ(list.ColumnWidth(1), Scale(143));
        ASSERT_EQ(list.Count(), 2);
        EXPECT_EQ(list.Text(0), L"Miller, Bo");
        EXPECT_EQ(list.Text(1), L"Smith, Ann");
        EXPECT_EQ(list.Text(1, 1), L"Works & Co");
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(AssignContactsTest, TheEntrysContactsAreChecked)
{
    const CEOID ann = AddContact(L"Ann");
    AddContact(L"Bo");
    CEOID id = AddEntry({}, {ann});
    RunIn(&id, CMD_ASSIGN_CONTACTS, [](EditorWindow& editor) {
        EXPECT_TRUE(Contacts(editor).IsChecked(L"Ann"));
        EXPECT_FALSE(Contacts(editor).IsChecked(L"Bo"));
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(AssignContactsTest, ACheckIsAChangeAndIsSaved)
{
    AddContact(L"Ann");
    const CEOID bo = AddContact(L"Bo");
    CEOID id = 0;
    RunIn(&id, CMD_ASSIGN_CONTACTS, [](EditorWindow& editor) {
        editor.Focus(IDC_CONTACT_LIST);
        editor.Key(VK_DOWN);
        EXPECT_FALSE(editor.SaveEnabled());
        editor.Key(VK_SPACE);
        EXPECT_TRUE(Contacts(editor).IsChecked(L"Bo"));
        EXPECT_TRUE(editor.SaveEnabled());
        editor.Ok();
    });
    ASSERT_NE(id, 0u);
    EXPECT_EQ(Read(id).contacts, Ids({bo}));
}

TEST_F(AssignContactsTest, ATapOnTheBoxOrTheNameIsAChange)
{
    const CEOID ann = AddContact(L"Ann");
    const CEOID bo = AddContact(L"Bo");
    CEOID id = AddEntry({});
    RunIn(&id, CMD_ASSIGN_CONTACTS, [](EditorWindow& editor) {
        Contacts(editor).ClickBelow();
        EXPECT_FALSE(editor.SaveEnabled());
        Contacts(editor).ClickBox(0);
        EXPECT_TRUE(Contacts(editor).IsChecked(L"Ann"));
        EXPECT_TRUE(editor.SaveEnabled());
        editor.Command(CMD_SAVE);
        EXPECT_FALSE(editor.SaveEnabled());
        Contacts(editor).ClickLabel(1);
        EXPECT_TRUE(Contacts(editor).IsChecked(L"Bo"));
        EXPECT_TRUE(editor.SaveEnabled());
        editor.Ok();
    });
    EXPECT_EQ(Read(id).contacts, Ids({ann, bo}));
}

TEST_F(AssignContactsTest, UncheckingTheLastOneDeletesTheProperty)
{
    CEOID id = AddEntry({}, {AddContact(L"Ann")});
    RunIn(&id, CMD_ASSIGN_CONTACTS, [](EditorWindow& editor) {
        editor.Focus(IDC_CONTACT_LIST);
        editor.Key(VK_SPACE);
        EXPECT_FALSE(Contacts(editor).IsChecked(L"Ann"));
        EXPECT_TRUE(editor.SaveEnabled());
        editor.Ok();
    });
    EXPECT_FALSE(Read(id).contacts);
}

TEST_F(AssignContactsTest, ChecksAreThereAgainAfterAnotherView)
{
    AddContact(L"Ann");
    RunNewIn(CMD_ASSIGN_CONTACTS, [](EditorWindow& editor) {
        editor.Focus(IDC_CONTACT_LIST);
        editor.Key(VK_SPACE);
        editor.Command(CMD_EDIT_ENTRY_VIEW);
        editor.Command(CMD_ASSIGN_CONTACTS);
        EXPECT_TRUE(Contacts(editor).IsChecked(L"Ann"));
    });
}

TEST_F(AssignContactsTest, ContactsAreNoCategories)
{
    AddContact(L"Ann");
    CEOID id = AddEntry({AddCategory(L"Home")});
    RunIn(&id, CMD_ASSIGN_CONTACTS, [](EditorWindow& editor) {
        editor.Focus(IDC_CONTACT_LIST);
        editor.Key(VK_SPACE);
        EXPECT_EQ(Line(editor), L"Home");
        Contacts(editor).DoubleClick(0); // opens nothing
        PumpMessages();
        EXPECT_TRUE(IsWindowEnabled(editor.Window()));
        editor.Ok();
    });
    EXPECT_TRUE(Read(id).categories);
}

TEST_F(AssignContactsTest, ATypedNameIsFoundAndChangesNothing)
{
    for (const wchar_t* name : {L"Ann", L"Bo", L"Cleo", L"Dana"})
        AddContact(name);
    RunNewIn(CMD_ASSIGN_CONTACTS, [](EditorWindow& editor) {
        editor.Focus(IDC_CONTACT_LIST);
        editor.Type(L"cl");
        EXPECT_TRUE(Contacts(editor).Has(2, LVIS_FOCUSED));
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(AssignContactsTest, TheContactsThemselvesAreNotWritten)
{
    AddContact(L"Ann", L"Works");
    AddContact(L"Bo");
    const std::string before = AllContacts();
    ASSERT_NE(before.find("Works"), std::string::npos);
    CEOID id = AddEntry({});
    for (const int box : {1, 0})
        RunIn(&id, CMD_ASSIGN_CONTACTS, [&](EditorWindow& editor) {
            Contacts(editor).ClickBox(0);
            EXPECT_EQ(Contacts(editor).IsChecked(L"Ann"), box == 1);
            editor.Ok();
        });
    EXPECT_EQ(AllContacts(), before);
}

} // namespace
