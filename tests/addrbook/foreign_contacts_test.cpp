// A contact with values that another program has stored in a form that cannot be read whole: a save of
// something else leaves them as they are.
#include <windows.h>
#include <sqlite3.h>

#include "addrbook/resource.h"
#include "addrbook/transfer/contact_record.h"
#include "address_window_fixture.h"
#include "support/test_windows.h"
#include "transfers.h"

namespace addrbook {

namespace {

// Runs a statement as another program does, over a connection of its own; the first value of its row.
std::string Ask(const std::wstring& path, const std::string& sql)
{
    sqlite3* store = nullptr;
    sqlite3_stmt* row = nullptr;
    std::string value;
    EXPECT_EQ(sqlite3_open16(path.c_str(), &store), SQLITE_OK);
    EXPECT_EQ(sqlite3_prepare_v2(store, sql.c_str(), -1, &row, nullptr), SQLITE_OK) << sql;
    if (sqlite3_step(row) == SQLITE_ROW && sqlite3_column_text(row, 0))
        value = reinterpret_cast<const char*>(sqlite3_column_text(row, 0));
    sqlite3_finalize(row);
    sqlite3_close(store);
    return value;
}

// What the only contact has in each column, as it would be written in SQL.
std::string AllOf(const std::wstring& path)
{
    std::string columns;
    for (const char* column : {"file_as", "company", "first_name", "last_name", "job_title", "emails",
                               "phones", "address", "birthday", "note", "vcard_extra"})
        columns += std::string(columns.empty() ? "" : " || ' ' || ") + "hex(ifnull(" + column +
                   ", '-')) || typeof(" + column + ")";
    return Ask(path, "SELECT " + columns + " FROM contacts");
}

constexpr const char* kForeign =
    "UPDATE contacts SET last_name = CAST(x'4DFC6C6C6572' AS TEXT), job_title = x'01', "
    "emails = CAST(x'610062' AS TEXT), address = CAST(x'610D62' AS TEXT), birthday = x'02', "
    "note = CAST(x'610D620A63' AS TEXT), vcard_extra = CAST(x'6E6F206C696E650A582D413AFF0D0A' AS TEXT)";

TEST_F(AddressWindowTest, WhatNobodyTouchedStaysInTheStoreAsItIs)
{
    Add("Anna");
    Ask(m_store.Path(), kForeign);
    const std::string before = AllOf(m_store.Path());
    Open();
    const ModalDriver driver([](HWND dialog) {
        SetDlgItemTextW(dialog, IDC_PHONES, L"1");
        SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    Command(CMD_EDIT_CONTACT);
    EXPECT_TRUE(driver.Ran());
    EXPECT_EQ(Ask(m_store.Path(), "SELECT phones FROM contacts"), "1");
    Ask(m_store.Path(), "UPDATE contacts SET phones = NULL");
    EXPECT_EQ(AllOf(m_store.Path()), before);
}

TEST_F(AddressWindowTest, WhatIsEditedIsWrittenOver)
{
    const CEOID anna = Add("Anna");
    Ask(m_store.Path(), kForeign);
    Open();
    const ModalDriver driver([](HWND dialog) {
        SetDlgItemTextW(dialog, IDC_JOB_TITLE, L"Head");
        SetDlgItemTextW(dialog, IDC_NOTE, L"a\r\nb");
        SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    Command(CMD_EDIT_CONTACT);
    EXPECT_TRUE(driver.Ran());
    vcard::Contact contact;
    ASSERT_TRUE(LoadContact(m_contacts, anna, &contact));
    EXPECT_EQ(contact[vcard::Field::JobTitle], "Head");
    EXPECT_EQ(contact[vcard::Field::Note], "a\nb");
}

TEST_F(Transfers, AnUpdateByACardLeavesWhatItDoesNotTell)
{
    ASSERT_EQ(Import(vcard::CardOf("FN:a\nUID:1")), State::Done);
    Ask(m_store.Path(), "UPDATE contacts SET note = x'01', address = CAST(x'610D62' AS TEXT)");
    ASSERT_EQ(Import(vcard::CardOf("FN:a\nTITLE:Head\nUID:1")), State::Done);
    EXPECT_EQ(m_report, L"1 contact was updated.");
    EXPECT_EQ(Stored("a")[vcard::Field::JobTitle], "Head");
    EXPECT_EQ(Ask(m_store.Path(), "SELECT hex(note) || hex(address) FROM contacts"), "01610D62");
}

// A UID would be written into it.
TEST_F(Transfers, AnExportNamesNoContactWhoseLinesCannotBeRead)
{
    for (const char* extra : {"x'01'", "CAST(x'582D413AFF' AS TEXT)", "CAST(x'582D413A0062' AS TEXT)"}) {
        ASSERT_EQ(Import(vcard::CardOf("FN:a") + vcard::CardOf("FN:b")), State::Done);
        Ask(m_store.Path(),
            std::string("UPDATE contacts SET vcard_extra = ") + extra + " WHERE file_as = 'a'");
        const std::string sql = "SELECT hex(vcard_extra) FROM contacts WHERE file_as = 'a'";
        const std::string before = Ask(m_store.Path(), sql);
        ASSERT_EQ(Export(Ids()), State::Done);
        EXPECT_EQ(m_report, L"2 contacts were exported.");
        EXPECT_EQ(Ask(m_store.Path(), sql), before);
        vcard::Contact named = Stored("b");
        EXPECT_NE(TakeUid(&named), "");
        for (const CEOID id : Ids())
            ASSERT_EQ(m_contacts.DeleteRecord(id), 1);
    }
}

} // namespace

} // namespace addrbook
