#include "mervane/db_journal.h"

#include <gtest/gtest.h>

#include "records.h"
#include "support/test_store.h"

namespace {

TEST(DbJournal, GivesASubjectUntilTheNextCall)
{
    const TestStore store;
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    const CEOID with = AddEntry(journal, L"Lunch"), without = Sent().Number(kPriority, 1).Write(journal);
    EXPECT_STREQ(journal.GetSubject(with), L"Lunch");
    EXPECT_STREQ(journal.GetSubject(without), L"");
    EXPECT_STREQ(journal.GetSubject(0), L"");
    EXPECT_STREQ(journal.GetSubject(99), L"");
}

TEST(DbJournal, KeepsTheCurrentRecordWhileAskedForASubject)
{
    const TestStore store;
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    const CEOID first = AddEntry(journal, L"one", 1), second = AddEntry(journal, L"two", 2);
    ASSERT_EQ(journal.SeekRecord(first), first);
    EXPECT_STREQ(journal.GetSubject(second), L"two");
    EXPECT_EQ(Received(journal).Id(), first);
}

TEST(DbJournal, MayBeOpenedAgain)
{
    const TestStore store;
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    const CEOID id = AddEntry(journal, L"one");
    ASSERT_EQ(journal.SeekRecord(id), id);
    ASSERT_EQ(journal.Open(nullptr), 1);
    EXPECT_EQ(Received(journal).Id(), 0u) << "no current record";
    EXPECT_EQ(journal.RecordCount(), 1u);
}

} // namespace
