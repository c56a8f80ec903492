#include "mervane/db_journal.h"

#include <gtest/gtest.h>

#include "mervane/db_categories.h"
#include "mervane/db_contacts.h"
#include "support/test_store.h"

namespace {

CEPROPVAL Text(CEPROPID id, const wchar_t* text)
{
    CEPROPVAL value{};
    value.propid = id;
    value.val.lpwstr = const_cast<wchar_t*>(text);
    return value;
}

TEST(DbJournal, ReadsBackWhatWasWritten)
{
    const TestStore store;
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    const CEPROPVAL subject = Text(0x0066001F, L"Sm\u00f8r \xD800 \xD83D\xDE00");
    const CEOID id = journal.WriteRecord(0, 1, &subject);
    ASSERT_NE(id, 0u);
    EXPECT_EQ(journal.SeekRecord(id), id);
    EXPECT_STREQ(journal.GetSubject(id), subject.val.lpwstr);
    WORD count = 0;
    CEPROPVAL* read = nullptr;
    EXPECT_EQ(journal.ReadRecord(&count, nullptr, &read), id);
    ASSERT_EQ(count, 1);
    EXPECT_STREQ(read->val.lpwstr, subject.val.lpwstr);
    LocalFree(read);
    EXPECT_EQ(journal.RecordCount(), 1u);
    EXPECT_EQ(journal.RowOf(id), 0);
    const CEPROPVAL name = Text(kCategoriesKey, L"Work");
    DbCategories categories;
    ASSERT_EQ(categories.Open(), 1);
    const CEOID work = categories.WriteRecord(0, 1, &name);
    EXPECT_NE(work, 0u);
    EXPECT_EQ(categories.WriteRecord(0, 1, &name), 0u);
    EXPECT_EQ(categories.IncUse(work), 1);
    EXPECT_EQ(categories.GetNumActiveRecords(), 1);
    EXPECT_EQ(journal.DeleteRecord(id), 1);
    EXPECT_EQ(journal.SeekFirstRecord(), 0);
}

} // namespace
