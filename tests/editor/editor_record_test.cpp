// The record behind the editor: which one is loaded, which one is written, and what other programs do to it.
#include "editor_record_fixture.h"

namespace {

TEST(LoadedMask, NumbersAreOredTogether)
{
    JournalEntry entry;
    entry.date = TimeCount(1);
    entry.endTime = TimeCount(1);
    entry.duration = TimeCount(1);
    entry.kind = 3;
    EXPECT_EQ(LoadedMask(entry), 0u);
    entry.subject = L"";
    EXPECT_EQ(LoadedMask(entry), 1u);
    entry.type = L"";
    EXPECT_EQ(LoadedMask(entry), 3u);
    entry = {};
    entry.type = L"Note";
    EXPECT_EQ(LoadedMask(entry), 2u);
    entry = {};
    entry.categories.emplace();
    EXPECT_EQ(LoadedMask(entry), 3u);
    entry = {};
    entry.contacts.emplace();
    EXPECT_EQ(LoadedMask(entry), 4u);
    entry = {};
    entry.body = L"x";
    EXPECT_EQ(LoadedMask(entry), 5u);
    entry = {};
    entry.priority = short{1};
    EXPECT_EQ(LoadedMask(entry), 6u);
    entry = {};
    entry.sensitivity = short{0};
    EXPECT_EQ(LoadedMask(entry), 7u);
    entry = {};
    entry.subject = L"x";
    entry.body = L"x";
    EXPECT_EQ(LoadedMask(entry), 5u);
    entry.contacts.emplace();
    EXPECT_EQ(LoadedMask(entry), 5u);
    entry.priority = short{1};
    EXPECT_EQ(LoadedMask(entry), 7u);
}

TEST_F(EditorRecordTest, ANewEntryLoadsNothing)
{
    CEOID id = 0;
    EditorRecord record(Own().Journal(), &id);
    JournalEntry entry;
    EXPECT_EQ(record.Load(&entry), EditorRecord::Loaded::Nothing);
    EXPECT_EQ(record.Mask(), 0u);
}

TEST_F(EditorRecordTest, ARecordThatIsGoneLoadsNothing)
{
    CEOID id = Write(Entry());
    ASSERT_TRUE(Own().Journal().DeleteRecord(id));
    EditorRecord record(Own().Journal(), &id);
    JournalEntry entry;
    EXPECT_EQ(record.Load(&entry), EditorRecord::Loaded::Nothing);
    EXPECT_FALSE(entry.subject);
}

// It would be an empty one to the editor, and its save would write over it.
TEST_F(EditorRecordTest, ARecordThatCannotBeReadIsNotOpened)
{
    CEOID id = Write(Entry(L"Unread"));
    const CEOID unread = id;
    EditorRecord record(Own().Journal(), &id);
    record.OpenStores(nullptr);
    JournalEntry loaded;
    ASSERT_TRUE(ChangeStore("ALTER TABLE journal RENAME COLUMN sensitivity TO hidden"));
    EXPECT_EQ(record.Load(&loaded), EditorRecord::Loaded::Failed);
    EXPECT_NE(record.Trouble(), StoreTrouble::None);
    EXPECT_FALSE(loaded.subject);
    ASSERT_TRUE(ChangeStore("ALTER TABLE journal RENAME COLUMN hidden TO sensitivity"));
    EntryToWrite entry = Entry(L"Other");
    EXPECT_EQ(record.Save(&entry), Saved::Failed) << "neither over it nor beside it";
    EXPECT_EQ(id, unread);
    EXPECT_EQ(Read(unread).subject, L"Unread");
    EXPECT_EQ(Own().Journal().RecordCount(), 1u);
}

TEST_F(EditorRecordTest, ASeekThatFailsIsNoMissingRecord)
{
    CEOID id = Write(Entry(L"There"));
    EditorRecord record(Own().Journal(), &id);
    record.OpenStores(nullptr);
    JournalEntry loaded;
    ASSERT_TRUE(ChangeStore("ALTER TABLE journal RENAME TO away"));
    EXPECT_EQ(record.Load(&loaded), EditorRecord::Loaded::Failed);
    ASSERT_TRUE(ChangeStore("ALTER TABLE away RENAME TO journal"));
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done) << "another try may do";

    ASSERT_TRUE(ChangeStore("ALTER TABLE journal RENAME TO away"));
    EntryToWrite entry = Entry(L"Other");
    EXPECT_EQ(record.Save(&entry), Saved::Failed);
    EXPECT_NE(record.Trouble(), StoreTrouble::None);
    ASSERT_TRUE(ChangeStore("ALTER TABLE away RENAME TO journal"));
    EXPECT_EQ(Own().Journal().RecordCount(), 1u) << "no second record";
    EXPECT_EQ(Read(id).subject, L"There");
    EXPECT_EQ(record.Save(&entry), Saved::Updated);
    EXPECT_EQ(Read(id).subject, L"Other");
}

// Each property alone makes it another record, and a change that another program takes back does not.
TEST_F(EditorRecordTest, ARecordThatAnotherProgramChangedIsNotWrittenOver)
{
    const char* const changes[] = {
        "date = date + 1",
        "subject = 'theirs'",
        "subject = NULL",
        "body = body || ' '",
        "type = 'Fax'",
        "kind = 4",
        "priority = 2",
        "sensitivity = 1",
        "end_time = end_time + 1",
        "duration = 7",
        "duration = NULL",
        "contacts = x'0100000009000000'",
        "categories = x'0100000007000000'",
    };
    for (const char* change : changes) {
        CEOID id = Write(Entry(L"Mine"));
        OpenRecord record(&id);
        const std::string where = " WHERE oid = " + std::to_string(id);
        ASSERT_TRUE(ChangeStore(("UPDATE journal SET " + std::string(change) + where).c_str()));
        const JournalEntry theirs = Read(id);
        EXPECT_EQ(record.Save(Entry(L"Mine again")), Saved::Changed) << change;
        EXPECT_EQ(Read(id).subject, theirs.subject) << change;
        EXPECT_EQ(record.Save(Entry(L"Mine again")), Saved::Changed) << "and asks again: " << change;
        EXPECT_EQ(record.Save(Entry(L"Mine again"), Theirs::Replace), Saved::Updated) << change;
        EXPECT_EQ(Read(id).subject, L"Mine again") << change;
        EXPECT_EQ(record.Save(Entry(L"Mine again")), Saved::Updated)
            << "its own writes are known: " << change;
    }
}

// The answer was about what had been seen by then.
TEST_F(EditorRecordTest, WhatChangedOnceMoreIsAskedAboutOnceMore)
{
    CEOID id = Write(Entry(L"Mine"));
    OpenRecord record(&id);
    EXPECT_EQ(record.Save(Entry(L"Mine again")), Saved::Updated);
    for (const char* change :
         {"UPDATE journal SET subject = 'theirs'", "UPDATE journal SET body = 'theirs'"}) {
        ASSERT_TRUE(ChangeStore(change));
        EXPECT_EQ(record.Save(Entry(L"Mine again"), Theirs::Replace), Saved::Changed) << change;
        EXPECT_EQ(Read(id).subject, L"theirs") << change;
    }
    EXPECT_EQ(Read(id).body, L"theirs");
    EXPECT_EQ(record.Save(Entry(L"Mine again"), Theirs::Replace), Saved::Updated);
    EXPECT_EQ(Read(id).subject, L"Mine again");
}

TEST_F(EditorRecordTest, WhatWasWrittenFirstIsKnownToo)
{
    CEOID id = 0;
    OpenRecord record(&id);
    ASSERT_EQ(record.Save(Entry(L"One")), Saved::Created);
    ASSERT_TRUE(ChangeStore("UPDATE journal SET subject = 'theirs'"));
    EXPECT_EQ(record.Save(Entry(L"One")), Saved::Changed);
    EXPECT_EQ(Read(id).subject, L"theirs");
}

TEST_F(EditorRecordTest, BothAreKeptWhenItIsSavedAsNew)
{
    const CEOID theirs = Write(Entry(L"Mine"));
    CEOID id = theirs;
    OpenRecord record(&id);
    ASSERT_TRUE(ChangeStore("UPDATE journal SET subject = 'theirs'"));
    ASSERT_EQ(record.Save(Entry(L"Mine again")), Saved::Changed);
    EXPECT_EQ(record.SaveAsNew(Entry(L"Mine again")), Saved::Created);
    EXPECT_NE(id, theirs);
    EXPECT_EQ(Read(theirs).subject, L"theirs");
    EXPECT_EQ(Read(id).subject, L"Mine again");
    EXPECT_EQ(record.Save(Entry(L"Mine again")), Saved::Updated);
}

TEST_F(EditorRecordTest, TheSubjectOutlastsAStoreThatCannotBeRead)
{
    CEOID id = Write(Entry(L"There"));
    EditorRecord record(Own().Journal(), &id);
    JournalEntry loaded;
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done);
    ASSERT_TRUE(ChangeStore("UPDATE journal SET subject = 'newer'"));
    EXPECT_EQ(record.StoredSubject(), L"newer");
    ASSERT_TRUE(ChangeStore("ALTER TABLE journal RENAME TO away"));
    EXPECT_EQ(record.StoredSubject(), L"There");
    ASSERT_TRUE(ChangeStore("ALTER TABLE away RENAME TO journal"));
}

TEST_F(EditorRecordTest, AFirstWriteCreatesAndASecondUpdates)
{
    CEOID id = 0;
    OpenRecord record(&id);
    EXPECT_EQ(record.Save(Entry(L"One")), Saved::Created);
    EXPECT_NE(id, 0u);
    const CEOID first = id;
    EXPECT_EQ(record.Save(Entry(L"Two")), Saved::Updated);
    EXPECT_EQ(id, first);
    EXPECT_EQ(Count(), 1u);
    EXPECT_EQ(Read(id).subject, L"Two");
}

TEST_F(EditorRecordTest, ARecordThatWentAwayIsWrittenAnew)
{
    CEOID id = Write(Entry());
    const CEOID before = id;
    OpenRecord record(&id);
    ASSERT_TRUE(Own().Journal().DeleteRecord(id));
    EXPECT_EQ(record.Save(Entry(L"Again")), Saved::Created);
    EXPECT_NE(id, before);
    EXPECT_EQ(Read(id).subject, L"Again");
}

} // namespace
