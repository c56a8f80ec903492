// The categories and contacts of the record behind the editor, and the uses that are counted with it.
#include "editor_record_fixture.h"
#include "support/fault_vfs.h"
#include "support/locked_store.h"

namespace {

// Two entries have then what the one had.
TEST_F(EditorRecordTest, SavedAsNewItCountsTheUsesOfTheNewEntry)
{
    const CEOID kept = Category(L"Kept");
    const CEOID added = Category(L"Added");
    const CEOID released = Category(L"Released");
    CEOID id = WriteWith(kPropCategories, Ids({kept, released}));
    OpenRecord record(&id);
    for (const CEOID category : {kept, released})
        ASSERT_TRUE(record.CategoryStore().IncUse(category));
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
    OpenRecord record(&id);
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
    OpenRecord record(&id);
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
    OpenRecord record(&id);
    for (const CEOID category : {kept, released})
        ASSERT_TRUE(record.CategoryStore().IncUse(category));
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

// By then the new record has an identifier, which goes with it.
class EditorRecordOnAFullDisk : public EditorRecordTest {
  protected:
    void FillDisk() { m_faults.FailNth(FileCall::Write, 1); }

    FaultVfs m_faults;
};

TEST_F(EditorRecordOnAFullDisk, SavedAsNewItIsStillTheOneThatItWas)
{
    const CEOID theirs = Write(Entry(L"Loaded"));
    CEOID id = theirs;
    OpenRecord record(&id);
    ASSERT_TRUE(Change("UPDATE journal SET subject = 'theirs'"));
    EntryToWrite entry = Entry(L"Mine");
    ASSERT_EQ(record.Save(&entry), EditorRecord::Saved::Changed);
    FillDisk();
    EXPECT_EQ(record.SaveAsNew(&entry), EditorRecord::Saved::Failed);
    EXPECT_TRUE(m_faults.HasFired());
    EXPECT_EQ(record.Trouble(), StoreTrouble::Full);
    EXPECT_EQ(id, theirs);
    EXPECT_EQ(record.Id(), theirs);
    EXPECT_EQ(Count(), 1u);
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Changed) << "and is asked about again";
    EXPECT_EQ(Read(theirs).subject, L"theirs");
    EXPECT_EQ(record.Save(&entry, EditorRecord::Theirs::Replace), EditorRecord::Saved::Updated);
    EXPECT_EQ(Read(theirs).subject, L"Mine");
    EXPECT_EQ(Count(), 1u);
}

TEST_F(EditorRecordOnAFullDisk, ANewOneIsStillNone)
{
    CEOID id = 0;
    OpenRecord record(&id);
    EntryToWrite entry = Entry();
    FillDisk();
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Failed);
    EXPECT_EQ(id, 0u);
    EXPECT_EQ(record.Id(), 0u);
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Created);
    EXPECT_EQ(record.Id(), id);
    EXPECT_EQ(Count(), 1u);
}

TEST_F(EditorRecordOnAFullDisk, ItIsStillKnownAsItIsStored)
{
    CEOID id = Write(Entry(L"Before"));
    OpenRecord record(&id);
    EntryToWrite entry = Entry(L"Mine");
    FillDisk();
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Failed);
    EXPECT_EQ(Read(id).subject, L"Before");
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated) << "nobody else has changed it";
    EXPECT_EQ(Read(id).subject, L"Mine");
}

TEST_F(EditorRecordTest, AChangeCostsNoCategoryItsAssignment)
{
    const CEOID home = Category(L"Home");
    CEOID id = Write(Entry(L"Mine"));
    OpenRecord record(&id);
    record.Categories().Push({home, 0x1101});
    ASSERT_TRUE(Change("UPDATE journal SET subject = 'theirs'"));
    EntryToWrite entry = Entry(L"Mine again");
    ASSERT_EQ(record.Save(&entry), EditorRecord::Saved::Changed);
    EXPECT_EQ(Uses(home), 0);
    EXPECT_EQ(record.Save(&entry, EditorRecord::Theirs::Replace), EditorRecord::Saved::Updated);
    EXPECT_EQ(Uses(home), 1);
    EXPECT_EQ(Read(id).categories, Ids({home}));
}

TEST_F(EditorRecordTest, CategoriesAreLoadedAsAssignedAndWrittenBack)
{
    const CEOID home = Category(L"Home");
    const CEOID work = Category(L"Work");
    CEOID id = WriteWith(kPropCategories, Ids({home, work}));
    OpenRecord record(&id);
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
    OpenRecord record(&id);
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
    OpenRecord record(&id);
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
    OpenRecord record(&id);
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
    OpenRecord record(&id);
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
    OpenRecord record(&id);
    record.Categories().Find(only)->flags = 0x0011;
    EntryToWrite entry = Entry();
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
    EXPECT_FALSE(Read(id).categories);
}

TEST_F(EditorRecordTest, AnAddedCategoryThatIsGoneDoesNotStopTheSave)
{
    const CEOID gone = Category(L"Gone");
    CEOID id = 0;
    OpenRecord record(&id);
    record.Categories().Push({gone, 0x1101});
    ASSERT_TRUE(record.CategoryStore().DeleteRecord(gone));
    EntryToWrite entry = Entry();
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Created);
    EXPECT_EQ(Count(), 1u);
}

TEST_F(EditorRecordTest, ContactsThatNobodyTouchedAreKept)
{
    CEOID id = WriteWith(kPropContacts, Ids({7, 9}));
    OpenRecord record(&id);
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
    OpenRecord record(&id);
    record.Contacts().Unassign(7);
    EntryToWrite entry = Entry();
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
    EXPECT_FALSE(Read(id).contacts);
}

std::vector<BYTE> Behind(std::vector<BYTE> blob, size_t bytes)
{
    blob.insert(blob.end(), bytes, 0xEE);
    return blob;
}

// Whatever another program meant by it.
TEST_F(EditorRecordTest, ASetOfAWrongShapeThatNobodyTouchedStaysAsItIs)
{
    const CEOID home = Category(L"Home");
    const std::vector<BYTE> blobs[] = {
        Behind(Ids({home}), 4), Behind(Ids({home}), 3), Behind({}, 2), {9, 0, 0, 0}};
    for (const CEPROPID property : {kPropCategories, kPropContacts})
        for (const std::vector<BYTE>& blob : blobs) {
            CEOID id = WriteWith(property, blob);
            OpenRecord record(&id);
            for (const wchar_t* subject : {L"Other", L"And once more"}) {
                EntryToWrite entry = Entry(subject);
                EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
                EXPECT_EQ(Read(id).subject, subject);
                EXPECT_EQ(property == kPropCategories ? Read(id).categories : Read(id).contacts, blob);
            }
        }
    EXPECT_EQ(Uses(home), 0);
}

TEST_F(EditorRecordTest, ASetOfAWrongShapeIsWrittenAnewWithAChange)
{
    const CEOID home = Category(L"Home");
    const CEOID work = Category(L"Work");
    CEOID id = WriteWith(kPropCategories, Behind(Ids({home}), 4));
    EntryToWrite entry = Entry();
    {
        OpenRecord record(&id);
        record.Categories().Push({work, 0x1101});
        EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
    }
    EXPECT_EQ(Read(id).categories, Ids({home, work}));
    {
        CEOID other = WriteWith(kPropCategories, Behind(Ids({home}), 4));
        OpenRecord record(&other);
        record.Categories().Find(home)->flags = 0x0011;
        EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
        EXPECT_FALSE(Read(other).categories) << "the last one was released";
    }
    CEOID other = WriteWith(kPropContacts, Behind(Ids({7, 9}), 3));
    OpenRecord record(&other);
    record.Contacts().Unassign(7);
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
    EXPECT_EQ(Read(other).contacts, Ids({9}));
    record.Contacts().Assign(7);
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
    EXPECT_EQ(Read(other).contacts, Ids({9, 7}));
}

TEST_F(EditorRecordTest, ASetOfAWrongShapeIsWrittenOverWhatAnotherProgramHasMadeOfIt)
{
    const CEOID home = Category(L"Home");
    for (const CEPROPID property : {kPropCategories, kPropContacts}) {
        CEOID id = WriteWith(property, Behind(Ids({home}), 4));
        OpenRecord record(&id);
        ASSERT_TRUE(
            Change("UPDATE journal SET categories = x'0100000007000000', contacts = x'0100000007000000'"));
        EntryToWrite entry = Entry();
        ASSERT_EQ(record.Save(&entry), EditorRecord::Saved::Changed);
        ASSERT_EQ(record.Save(&entry, EditorRecord::Theirs::Replace), EditorRecord::Saved::Updated);
        EXPECT_EQ(property == kPropCategories ? Read(id).categories : Read(id).contacts, Ids({home}));
    }
}

TEST_F(EditorRecordTest, ASetOfAWrongShapeGoesIntoANewRecordAsFarAsItIsOne)
{
    const CEOID home = Category(L"Home");
    CEOID id = WriteWith(kPropCategories, Behind(Ids({home}), 4));
    const CEOID before = id;
    OpenRecord record(&id);
    EntryToWrite entry = Entry();
    EXPECT_EQ(record.SaveAsNew(&entry), EditorRecord::Saved::Created);
    ASSERT_NE(id, before);
    EXPECT_EQ(Read(before).categories, Behind(Ids({home}), 4));
    EXPECT_EQ(Read(id).categories, Ids({home}));
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
    EXPECT_EQ(Read(id).categories, Ids({home}));
}

TEST_F(EditorRecordTest, AFailedWriteChangesNothing)
{
    const CEOID home = Category(L"Home");
    const CEOID work = Category(L"Work");
    CEOID id = WriteWith(kPropCategories, Ids({home}));
    DbCategories categories;
    ASSERT_TRUE(categories.Open());
    categories.IncUse(home);
    OpenRecord record(&id);
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
    OpenRecord record(&id);
    record.CategoryStore().IncUse(home);
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
    OpenRecord record(&id);
    record.Categories().Push({Category(L"Home"), 0x1101});
    EntryToWrite entry = Entry();
    const LockedStore trouble(m_store.Path());
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Failed);
    EXPECT_EQ(id, 0u);
    EXPECT_EQ(record.Categories().Count(), 1u);
}

} // namespace
