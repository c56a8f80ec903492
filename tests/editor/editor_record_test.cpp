#include "editor/editor_record.h"

#include "editor/category_flags.h"
#include "editor_fixture.h"
#include "locked_store.h"

namespace {

class EditorRecordTest : public EditorTest {
  protected:
    CEOID Category(const wchar_t* name)
    {
        DbCategories categories;
        EXPECT_TRUE(categories.Open());
        std::wstring text = name;
        CEPROPVAL value{};
        value.propid = kCategoriesKey;
        value.val.lpwstr = text.data();
        return categories.WriteRecord(0, 1, &value);
    }
    int Uses(CEOID category)
    {
        DbCategories categories;
        EXPECT_TRUE(categories.Open());
        EXPECT_EQ(categories.SeekRecord(category), category);
        WORD count = 1;
        CEPROPVAL* read = nullptr;
        EXPECT_NE(categories.ReadRecord(&count, &kCategoryUses, &read), 0u);
        const LocalBlock<CEPROPVAL> block(read);
        return read->wFlags & CEDB_PROPNOTFOUND ? 0 : read->val.iVal;
    }
    EntryToWrite Entry(const wchar_t* subject = L"Subject")
    {
        EntryToWrite entry;
        entry.date = At(kTuesday);
        entry.endTime = At(kTuesday);
        entry.type = L"Note";
        entry.body = L"Body";
        entry.subject = subject;
        return entry;
    }
    // Changes the store as another program would.
    bool Change(const char* sql)
    {
        sqlite3* store = nullptr;
        const bool done = sqlite3_open16(m_store.Path().c_str(), &store) == SQLITE_OK &&
                          sqlite3_exec(store, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
        sqlite3_close(store);
        return done;
    }
    static std::vector<BYTE> Ids(std::vector<DWORD> ids)
    {
        std::vector<DWORD> words{static_cast<DWORD>(ids.size())};
        words.insert(words.end(), ids.begin(), ids.end());
        const auto* bytes = reinterpret_cast<const BYTE*>(words.data());
        return {bytes, bytes + words.size() * sizeof(DWORD)};
    }
    CEOID WriteWith(CEPROPID property, std::vector<BYTE> blob)
    {
        const CEOID id = Write(Entry());
        CEPROPVAL value{};
        value.propid = property;
        value.val.blob = {static_cast<DWORD>(blob.size()), blob.data()};
        EXPECT_EQ(App().Journal().WriteRecord(id, 1, &value), id);
        return id;
    }
};

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
    EditorRecord record(App().Journal(), &id);
    JournalEntry entry;
    EXPECT_EQ(record.Load(&entry), EditorRecord::Loaded::Nothing);
    EXPECT_EQ(record.Mask(), 0u);
}

TEST_F(EditorRecordTest, ARecordThatIsGoneLoadsNothing)
{
    CEOID id = Write(Entry());
    ASSERT_TRUE(App().Journal().DeleteRecord(id));
    EditorRecord record(App().Journal(), &id);
    JournalEntry entry;
    EXPECT_EQ(record.Load(&entry), EditorRecord::Loaded::Nothing);
    EXPECT_FALSE(entry.subject);
}

// It would be an empty one to the editor, and its save would write over it.
TEST_F(EditorRecordTest, ARecordThatCannotBeReadIsNotOpened)
{
    CEOID id = Write(Entry(L"Unread"));
    const CEOID unread = id;
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    JournalEntry loaded;
    ASSERT_TRUE(Change("ALTER TABLE journal RENAME COLUMN sensitivity TO hidden"));
    EXPECT_EQ(record.Load(&loaded), EditorRecord::Loaded::Failed);
    EXPECT_NE(record.Trouble(), StoreTrouble::None);
    EXPECT_FALSE(loaded.subject);
    ASSERT_TRUE(Change("ALTER TABLE journal RENAME COLUMN hidden TO sensitivity"));
    EntryToWrite entry = Entry(L"Other");
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Failed) << "neither over it nor beside it";
    EXPECT_EQ(id, unread);
    EXPECT_EQ(Read(unread).subject, L"Unread");
    EXPECT_EQ(App().Journal().RecordCount(), 1u);
}

TEST_F(EditorRecordTest, ASeekThatFailsIsNoMissingRecord)
{
    CEOID id = Write(Entry(L"There"));
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    JournalEntry loaded;
    ASSERT_TRUE(Change("ALTER TABLE journal RENAME TO away"));
    EXPECT_EQ(record.Load(&loaded), EditorRecord::Loaded::Failed);
    ASSERT_TRUE(Change("ALTER TABLE away RENAME TO journal"));
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done) << "another try may do";

    ASSERT_TRUE(Change("ALTER TABLE journal RENAME TO away"));
    EntryToWrite entry = Entry(L"Other");
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Failed);
    EXPECT_NE(record.Trouble(), StoreTrouble::None);
    ASSERT_TRUE(Change("ALTER TABLE away RENAME TO journal"));
    EXPECT_EQ(App().Journal().RecordCount(), 1u) << "no second record";
    EXPECT_EQ(Read(id).subject, L"There");
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
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
        EditorRecord record(App().Journal(), &id);
        record.OpenStores(nullptr);
        JournalEntry loaded;
        ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done);
        const std::string where = " WHERE oid = " + std::to_string(id);
        ASSERT_TRUE(Change(("UPDATE journal SET " + std::string(change) + where).c_str()));
        const JournalEntry theirs = Read(id);
        EntryToWrite entry = Entry(L"Mine again");
        EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Changed) << change;
        EXPECT_EQ(Read(id).subject, theirs.subject) << change;
        EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Changed) << "and asks again: " << change;
        EXPECT_EQ(record.Save(&entry, EditorRecord::Theirs::Replace), EditorRecord::Saved::Updated) << change;
        EXPECT_EQ(Read(id).subject, L"Mine again") << change;
        EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated)
            << "its own writes are known: " << change;
    }
}

TEST_F(EditorRecordTest, WhatWasWrittenFirstIsKnownToo)
{
    CEOID id = 0;
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    EntryToWrite entry = Entry(L"One");
    ASSERT_EQ(record.Save(&entry), EditorRecord::Saved::Created);
    ASSERT_TRUE(Change("UPDATE journal SET subject = 'theirs'"));
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Changed);
    EXPECT_EQ(Read(id).subject, L"theirs");
}

TEST_F(EditorRecordTest, BothAreKeptWhenItIsSavedAsNew)
{
    const CEOID theirs = Write(Entry(L"Mine"));
    CEOID id = theirs;
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    JournalEntry loaded;
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done);
    ASSERT_TRUE(Change("UPDATE journal SET subject = 'theirs'"));
    EntryToWrite entry = Entry(L"Mine again");
    ASSERT_EQ(record.Save(&entry), EditorRecord::Saved::Changed);
    EXPECT_EQ(record.SaveAsNew(&entry), EditorRecord::Saved::Created);
    EXPECT_NE(id, theirs);
    EXPECT_EQ(Read(theirs).subject, L"theirs");
    EXPECT_EQ(Read(id).subject, L"Mine again");
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
}

// Two entries have then what the one had.
TEST_F(EditorRecordTest, SavedAsNewItCountsTheUsesOfTheNewEntry)
{
    const CEOID kept = Category(L"Kept");
    const CEOID added = Category(L"Added");
    const CEOID released = Category(L"Released");
    CEOID id = WriteWith(kPropCategories, Ids({kept, released}));
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    for (const CEOID category : {kept, released})
        ASSERT_TRUE(record.CategoryStore().IncUse(category));
    JournalEntry loaded;
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done);
    record.Categories().Find(released)->flags = 0x0011;
    record.Categories().Push({added, 0x1101});
    EntryToWrite entry = Entry();
    EXPECT_EQ(record.SaveAsNew(&entry), EditorRecord::Saved::Created);
    EXPECT_EQ(Read(id).categories, Ids({kept, added}));
    EXPECT_EQ(Uses(kept), 2);
    EXPECT_EQ(Uses(added), 1);
    EXPECT_EQ(Uses(released), 1) << "the entry that was there has it still";
}

// The first write of the new one does not count as saved, so that OK writes it once more.
TEST_F(EditorRecordTest, SavedAsNewItKeepsItsCategoriesInTheSecondWrite)
{
    const CEOID kept = Category(L"Kept");
    CEOID id = WriteWith(kPropCategories, Ids({kept}));
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    JournalEntry loaded;
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done);
    EntryToWrite entry = Entry();
    ASSERT_EQ(record.SaveAsNew(&entry), EditorRecord::Saved::Created);
    entry = Entry();
    ASSERT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
    EXPECT_EQ(Read(id).categories, Ids({kept}));
}

// An earlier save has emptied the stack.
TEST_F(EditorRecordTest, SavedAsNewBehindASaveItHasWhatThatHasWritten)
{
    const CEOID kept = Category(L"Kept");
    const CEOID added = Category(L"Added");
    CEOID id = WriteWith(kPropCategories, Ids({kept}));
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    JournalEntry loaded;
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done);
    EntryToWrite entry = Entry();
    ASSERT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
    record.Categories().Push({added, 0x1101});
    ASSERT_TRUE(Change("UPDATE journal SET subject = 'theirs'"));
    entry = Entry();
    ASSERT_EQ(record.Save(&entry), EditorRecord::Saved::Changed);
    ASSERT_EQ(record.SaveAsNew(&entry), EditorRecord::Saved::Created);
    EXPECT_EQ(Read(id).categories, Ids({added, kept}));
    EXPECT_EQ(Uses(kept), 1) << "the record that was there never counted it";
    EXPECT_EQ(Uses(added), 1);
}

TEST_F(EditorRecordTest, WhereItCannotBeSavedAsNewItIsStillTheOneThatItWas)
{
    const CEOID kept = Category(L"Kept");
    const CEOID released = Category(L"Released");
    const CEOID theirs = WriteWith(kPropCategories, Ids({kept, released}));
    CEOID id = theirs;
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    for (const CEOID category : {kept, released})
        ASSERT_TRUE(record.CategoryStore().IncUse(category));
    JournalEntry loaded;
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done);
    record.Categories().Find(released)->flags = 0x0011;
    ASSERT_TRUE(Change("UPDATE journal SET subject = 'theirs'"));
    EntryToWrite entry = Entry(L"Mine");
    {
        const LockedStore trouble(m_store.Path());
        EXPECT_EQ(record.SaveAsNew(&entry), EditorRecord::Saved::Failed);
    }
    EXPECT_EQ(id, theirs);
    EXPECT_EQ(record.Id(), theirs);
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Changed) << "and is asked about again";
    EXPECT_EQ(record.Save(&entry, EditorRecord::Theirs::Replace), EditorRecord::Saved::Updated);
    EXPECT_EQ(Read(theirs).categories, Ids({kept}));
    EXPECT_EQ(Uses(kept), 1);
    EXPECT_EQ(Uses(released), 0);
}

TEST_F(EditorRecordTest, AChangeCostsNoCategoryItsAssignment)
{
    const CEOID home = Category(L"Home");
    CEOID id = Write(Entry(L"Mine"));
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    JournalEntry loaded;
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done);
    record.Categories().Push({home, 0x1101});
    ASSERT_TRUE(Change("UPDATE journal SET subject = 'theirs'"));
    EntryToWrite entry = Entry(L"Mine again");
    ASSERT_EQ(record.Save(&entry), EditorRecord::Saved::Changed);
    EXPECT_EQ(Uses(home), 0);
    EXPECT_EQ(record.Save(&entry, EditorRecord::Theirs::Replace), EditorRecord::Saved::Updated);
    EXPECT_EQ(Uses(home), 1);
    EXPECT_EQ(Read(id).categories, Ids({home}));
}

TEST_F(EditorRecordTest, TheSubjectOutlastsAStoreThatCannotBeRead)
{
    CEOID id = Write(Entry(L"There"));
    EditorRecord record(App().Journal(), &id);
    JournalEntry loaded;
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done);
    ASSERT_TRUE(Change("UPDATE journal SET subject = 'newer'"));
    EXPECT_EQ(record.StoredSubject(), L"newer");
    ASSERT_TRUE(Change("ALTER TABLE journal RENAME TO away"));
    EXPECT_EQ(record.StoredSubject(), L"There");
    ASSERT_TRUE(Change("ALTER TABLE away RENAME TO journal"));
}

TEST_F(EditorRecordTest, AFirstWriteCreatesAndASecondUpdates)
{
    CEOID id = 0;
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    EntryToWrite entry = Entry(L"One");
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Created);
    EXPECT_NE(id, 0u);
    const CEOID first = id;
    entry = Entry(L"Two");
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
    EXPECT_EQ(id, first);
    EXPECT_EQ(Count(), 1u);
    EXPECT_EQ(Read(id).subject, L"Two");
}

TEST_F(EditorRecordTest, ARecordThatWentAwayIsWrittenAnew)
{
    CEOID id = Write(Entry());
    const CEOID before = id;
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    JournalEntry loaded;
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done);
    ASSERT_TRUE(App().Journal().DeleteRecord(id));
    EntryToWrite entry = Entry(L"Again");
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Created);
    EXPECT_NE(id, before);
    EXPECT_EQ(Read(id).subject, L"Again");
}

TEST_F(EditorRecordTest, CategoriesAreLoadedAsAssignedAndWrittenBack)
{
    const CEOID home = Category(L"Home");
    const CEOID work = Category(L"Work");
    CEOID id = WriteWith(kPropCategories, Ids({home, work}));
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    JournalEntry loaded;
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done);
    ASSERT_EQ(record.Categories().Count(), 2u);
    EXPECT_EQ(record.Categories().GetItem(0)->flags, 0x0101);
    EntryToWrite entry = Entry();
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
    EXPECT_EQ(Read(id).categories, Ids({home, work}));
    EXPECT_TRUE(record.Categories().IsEmpty());
    EXPECT_EQ(Uses(home), 0);
}

TEST_F(EditorRecordTest, ASecondSaveFindsNoCategoriesAndDeletesThem)
{
    CEOID id = WriteWith(kPropCategories, Ids({Category(L"Home")}));
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    JournalEntry loaded;
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done);
    EntryToWrite entry = Entry();
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
    entry = Entry();
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
    EXPECT_FALSE(Read(id).categories);
}

TEST_F(EditorRecordTest, ANewEntrysCategoriesOutlastTheSecondWrite)
{
    const CEOID home = Category(L"Home");
    CEOID id = 0;
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    record.Categories().Push({home, 0x1101});
    EntryToWrite entry = Entry();
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Created);
    entry = Entry();
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
    EXPECT_EQ(Read(id).categories, Ids({home}));
    EXPECT_EQ(Uses(home), 1);
}

TEST_F(EditorRecordTest, UseCountsFollowWhatWasAddedAndReleased)
{
    const CEOID kept = Category(L"Kept");
    const CEOID added = Category(L"Added");
    const CEOID released = Category(L"Released");
    DbCategories categories;
    ASSERT_TRUE(categories.Open());
    categories.IncUse(released);
    categories.IncUse(released);
    CEOID id = WriteWith(kPropCategories, Ids({kept, released}));
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    JournalEntry loaded;
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done);
    record.Categories().Find(released)->flags = 0x0011;
    record.Categories().Push({added, 0x1101});
    EntryToWrite entry = Entry();
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
    EXPECT_EQ(Read(id).categories, Ids({kept, added}));
    EXPECT_EQ(Uses(kept), 0);
    EXPECT_EQ(Uses(added), 1);
    EXPECT_EQ(Uses(released), 1);
}

TEST_F(EditorRecordTest, AReleasedCategoryIsNotCountedUpWhateverElseItIs)
{
    const CEOID home = Category(L"Home");
    DbCategories categories;
    ASSERT_TRUE(categories.Open());
    categories.IncUse(home);
    CEOID id = Write(Entry());
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    JournalEntry loaded;
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done);
    record.Categories().Push({home, 0x1011});
    EntryToWrite entry = Entry();
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
    EXPECT_EQ(Uses(home), 0);
    EXPECT_FALSE(Read(id).categories);
}

TEST_F(EditorRecordTest, ReleasingTheLastCategoryDeletesTheProperty)
{
    const CEOID only = Category(L"Only");
    CEOID id = WriteWith(kPropCategories, Ids({only}));
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    JournalEntry loaded;
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done);
    record.Categories().Find(only)->flags = 0x0011;
    EntryToWrite entry = Entry();
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
    EXPECT_FALSE(Read(id).categories);
}

TEST_F(EditorRecordTest, AnAddedCategoryThatIsGoneDoesNotStopTheSave)
{
    const CEOID gone = Category(L"Gone");
    CEOID id = 0;
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    record.Categories().Push({gone, 0x1101});
    ASSERT_TRUE(record.CategoryStore().DeleteRecord(gone));
    EntryToWrite entry = Entry();
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Created);
    EXPECT_EQ(Count(), 1u);
}

TEST_F(EditorRecordTest, ContactsThatNobodyTouchedAreKept)
{
    CEOID id = WriteWith(kPropContacts, Ids({7, 9}));
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    JournalEntry loaded;
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done);
    EXPECT_EQ(record.Contacts().Assigned(), (std::vector<CEOID>{7, 9}));
    for (int i = 0; i < 2; ++i) {
        EntryToWrite entry = Entry();
        EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
        EXPECT_EQ(Read(id).contacts, Ids({7, 9}));
    }
}

TEST_F(EditorRecordTest, ContactsThatWereTakenAwayAreDeleted)
{
    CEOID id = WriteWith(kPropContacts, Ids({7}));
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    JournalEntry loaded;
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done);
    record.Contacts().Unassign(7);
    EntryToWrite entry = Entry();
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
    EXPECT_FALSE(Read(id).contacts);
}

TEST_F(EditorRecordTest, AFailedWriteChangesNothing)
{
    const CEOID home = Category(L"Home");
    const CEOID work = Category(L"Work");
    CEOID id = WriteWith(kPropCategories, Ids({home}));
    DbCategories categories;
    ASSERT_TRUE(categories.Open());
    categories.IncUse(home);
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    JournalEntry loaded;
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done);
    record.Categories().Find(home)->flags = 0x0011;
    record.Categories().Push({work, 0x1101});
    EntryToWrite entry = Entry(L"Other");
    {
        const LockedStore trouble(m_store.Path());
        EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Failed);
    }
    EXPECT_EQ(Read(id).subject, L"Subject");
    EXPECT_EQ(Uses(home), 1);
    EXPECT_EQ(Uses(work), 0);
    // All is still there for another try.
    entry = Entry(L"Other");
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
    EXPECT_EQ(Read(id).subject, L"Other");
    EXPECT_EQ(Read(id).categories, Ids({work}));
    EXPECT_EQ(Uses(home), 0);
    EXPECT_EQ(Uses(work), 1);
}

TEST_F(EditorRecordTest, UsesChangeOnlyTogetherWithTheRecord)
{
    const CEOID home = Category(L"Home");
    const CEOID work = Category(L"Work");
    CEOID id = WriteWith(kPropCategories, Ids({home}));
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    record.CategoryStore().IncUse(home);
    JournalEntry loaded;
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done);
    record.Categories().Find(home)->flags = 0x0011;
    record.Categories().Push({work, 0x1101});
    ASSERT_TRUE(Change("ALTER TABLE journal RENAME COLUMN sensitivity TO hidden"));
    EntryToWrite entry = Entry(L"Other");
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Failed);
    EXPECT_EQ(Uses(home), 1);
    EXPECT_EQ(Uses(work), 0);
    ASSERT_TRUE(Change("ALTER TABLE journal RENAME COLUMN hidden TO sensitivity"));
    entry = Entry(L"Other");
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
    EXPECT_EQ(Uses(home), 0);
    EXPECT_EQ(Uses(work), 1);
}

TEST_F(EditorRecordTest, AFailedFirstWriteGivesNoIdentifier)
{
    CEOID id = 0;
    EditorRecord record(App().Journal(), &id);
    record.OpenStores(nullptr);
    record.Categories().Push({Category(L"Home"), 0x1101});
    EntryToWrite entry = Entry();
    const LockedStore trouble(m_store.Path());
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Failed);
    EXPECT_EQ(id, 0u);
    EXPECT_EQ(record.Categories().Count(), 1u);
}

} // namespace
