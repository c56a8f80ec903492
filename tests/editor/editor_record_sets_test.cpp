// The categories and contacts of the record behind the editor, and the uses that are counted with it.
#include "editor_record_fixture.h"
#include "support/live_blocks.h"
#include "support/fault_vfs.h"
#include "support/locked_store.h"

namespace {

// Two entries have then what the one had.
TEST_F(EditorRecordTest, SavedAsNewItCountsTheUsesOfTheNewEntry)
{
    const CEOID kept = AddCategory(L"Kept", 1);
    const CEOID added = AddCategory(L"Added");
    const CEOID released = AddCategory(L"Released", 1);
    CEOID id = WriteWith(kPropCategories, Ids({kept, released}));
    OpenRecord record(&id);
    record.Categories().Find(released)->flags = 0x0011;
    record.Categories().Push({added, 0x1101});
    EXPECT_EQ(record.SaveAsNew(Entry()), Saved::Created);
    EXPECT_EQ(Read(id).categories, Ids({kept, added}));
    EXPECT_EQ(Uses(kept), 2);
    EXPECT_EQ(Uses(added), 1);
    EXPECT_EQ(Uses(released), 1) << "the entry that was there has it still";
}

// The first write of the new one does not count as saved, so that OK writes it once more.
TEST_F(EditorRecordTest, SavedAsNewItKeepsItsCategoriesInTheSecondWrite)
{
    const CEOID kept = AddCategory(L"Kept");
    CEOID id = WriteWith(kPropCategories, Ids({kept}));
    OpenRecord record(&id);
    ASSERT_EQ(record.SaveAsNew(Entry()), Saved::Created);
    ASSERT_EQ(record.Save(Entry()), Saved::Updated);
    EXPECT_EQ(Read(id).categories, Ids({kept}));
}

// An earlier save has emptied the stack.
TEST_F(EditorRecordTest, SavedAsNewBehindASaveItHasWhatThatHasWritten)
{
    const CEOID kept = AddCategory(L"Kept");
    const CEOID added = AddCategory(L"Added");
    CEOID id = WriteWith(kPropCategories, Ids({kept}));
    OpenRecord record(&id);
    ASSERT_EQ(record.Save(Entry()), Saved::Updated);
    record.Categories().Push({added, 0x1101});
    ASSERT_TRUE(ChangeStore("UPDATE journal SET subject = 'theirs'"));
    ASSERT_EQ(record.Save(Entry()), Saved::Changed);
    ASSERT_EQ(record.SaveAsNew(Entry()), Saved::Created);
    EXPECT_EQ(Read(id).categories, Ids({added, kept}));
    EXPECT_EQ(Uses(kept), 1) << "the record that was there never counted it";
    EXPECT_EQ(Uses(added), 1);
}

TEST_F(EditorRecordTest, WhereItCannotBeSavedAsNewItIsStillTheOneThatItWas)
{
    const CEOID kept = AddCategory(L"Kept", 1);
    const CEOID released = AddCategory(L"Released", 1);
    const CEOID theirs = WriteWith(kPropCategories, Ids({kept, released}));
    CEOID id = theirs;
    OpenRecord record(&id);
    record.Categories().Find(released)->flags = 0x0011;
    ASSERT_TRUE(ChangeStore("UPDATE journal SET subject = 'theirs'"));
    {
        const LockedStore trouble(m_store.Path());
        EXPECT_EQ(record.SaveAsNew(Entry(L"Mine")), Saved::Failed);
    }
    EXPECT_EQ(id, theirs);
    EXPECT_EQ(record.Id(), theirs);
    EXPECT_EQ(record.Save(Entry(L"Mine")), Saved::Changed) << "and is asked about again";
    EXPECT_EQ(record.Save(Entry(L"Mine"), Theirs::Replace), Saved::Updated);
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
    ASSERT_TRUE(ChangeStore("UPDATE journal SET subject = 'theirs'"));
    ASSERT_EQ(record.Save(Entry(L"Mine")), Saved::Changed);
    FillDisk();
    EXPECT_EQ(record.SaveAsNew(Entry(L"Mine")), Saved::Failed);
    EXPECT_TRUE(m_faults.HasFired());
    EXPECT_EQ(record.Trouble(), StoreTrouble::Full);
    EXPECT_EQ(id, theirs);
    EXPECT_EQ(record.Id(), theirs);
    EXPECT_EQ(Count(), 1u);
    EXPECT_EQ(record.Save(Entry(L"Mine")), Saved::Changed) << "and is asked about again";
    EXPECT_EQ(Read(theirs).subject, L"theirs");
    EXPECT_EQ(record.Save(Entry(L"Mine"), Theirs::Replace), Saved::Updated);
    EXPECT_EQ(Read(theirs).subject, L"Mine");
    EXPECT_EQ(Count(), 1u);
}

TEST_F(EditorRecordOnAFullDisk, ANewOneIsStillNone)
{
    CEOID id = 0;
    OpenRecord record(&id);
    FillDisk();
    EXPECT_EQ(record.Save(Entry()), Saved::Failed);
    EXPECT_EQ(id, 0u);
    EXPECT_EQ(record.Id(), 0u);
    EXPECT_EQ(record.Save(Entry()), Saved::Created);
    EXPECT_EQ(record.Id(), id);
    EXPECT_EQ(Count(), 1u);
}

TEST_F(EditorRecordOnAFullDisk, ItIsStillKnownAsItIsStored)
{
    CEOID id = Write(Entry(L"Before"));
    OpenRecord record(&id);
    FillDisk();
    EXPECT_EQ(record.Save(Entry(L"Mine")), Saved::Failed);
    EXPECT_EQ(Read(id).subject, L"Before");
    EXPECT_EQ(record.Save(Entry(L"Mine")), Saved::Updated) << "nobody else has changed it";
    EXPECT_EQ(Read(id).subject, L"Mine");
}

TEST_F(EditorRecordTest, AChangeCostsNoCategoryItsAssignment)
{
    const CEOID home = AddCategory(L"Home");
    CEOID id = Write(Entry(L"Mine"));
    OpenRecord record(&id);
    record.Categories().Push({home, 0x1101});
    ASSERT_TRUE(ChangeStore("UPDATE journal SET subject = 'theirs'"));
    ASSERT_EQ(record.Save(Entry(L"Mine again")), Saved::Changed);
    EXPECT_EQ(Uses(home), 0);
    EXPECT_EQ(record.Save(Entry(L"Mine again"), Theirs::Replace), Saved::Updated);
    EXPECT_EQ(Uses(home), 1);
    EXPECT_EQ(Read(id).categories, Ids({home}));
}

TEST_F(EditorRecordTest, CategoriesAreLoadedAsAssignedAndWrittenBack)
{
    const CEOID home = AddCategory(L"Home");
    const CEOID work = AddCategory(L"Work");
    CEOID id = WriteWith(kPropCategories, Ids({home, work}));
    OpenRecord record(&id);
    ASSERT_EQ(record.Categories().Count(), 2u);
    EXPECT_EQ(record.Categories().GetItem(0)->flags, 0x0101);
    EXPECT_EQ(record.Save(Entry()), Saved::Updated);
    EXPECT_EQ(Read(id).categories, Ids({home, work}));
    EXPECT_TRUE(record.Categories().IsEmpty());
    EXPECT_EQ(Uses(home), 0);
}

TEST_F(EditorRecordTest, ASecondSaveFindsNoCategoriesAndDeletesThem)
{
    CEOID id = WriteWith(kPropCategories, Ids({AddCategory(L"Home")}));
    OpenRecord record(&id);
    EXPECT_EQ(record.Save(Entry()), Saved::Updated);
    EXPECT_EQ(record.Save(Entry()), Saved::Updated);
    EXPECT_FALSE(Read(id).categories);
}

TEST_F(EditorRecordTest, ANewEntrysCategoriesOutlastTheSecondWrite)
{
    const CEOID home = AddCategory(L"Home");
    CEOID id = 0;
    OpenRecord record(&id);
    record.Categories().Push({home, 0x1101});
    EXPECT_EQ(record.Save(Entry()), Saved::Created);
    EXPECT_EQ(record.Save(Entry()), Saved::Updated);
    EXPECT_EQ(Read(id).categories, Ids({home}));
    EXPECT_EQ(Uses(home), 1);
}

TEST_F(EditorRecordTest, UseCountsFollowWhatWasAddedAndReleased)
{
    const CEOID kept = AddCategory(L"Kept");
    const CEOID added = AddCategory(L"Added");
    const CEOID released = AddCategory(L"Released", 2);
    CEOID id = WriteWith(kPropCategories, Ids({kept, released}));
    OpenRecord record(&id);
    record.Categories().Find(released)->flags = 0x0011;
    record.Categories().Push({added, 0x1101});
    EXPECT_EQ(record.Save(Entry()), Saved::Updated);
    EXPECT_EQ(Read(id).categories, Ids({kept, added}));
    EXPECT_EQ(Uses(kept), 0);
    EXPECT_EQ(Uses(added), 1);
    EXPECT_EQ(Uses(released), 1);
}

TEST_F(EditorRecordTest, AReleasedCategoryIsNotCountedUpWhateverElseItIs)
{
    const CEOID home = AddCategory(L"Home", 1);
    CEOID id = Write(Entry());
    OpenRecord record(&id);
    record.Categories().Push({home, 0x1011});
    EXPECT_EQ(record.Save(Entry()), Saved::Updated);
    EXPECT_EQ(Uses(home), 0);
    EXPECT_FALSE(Read(id).categories);
}

TEST_F(EditorRecordTest, ReleasingTheLastCategoryDeletesTheProperty)
{
    const CEOID only = AddCategory(L"Only");
    CEOID id = WriteWith(kPropCategories, Ids({only}));
    OpenRecord record(&id);
    record.Categories().Find(only)->flags = 0x0011;
    EXPECT_EQ(record.Save(Entry()), Saved::Updated);
    EXPECT_FALSE(Read(id).categories);
}

TEST_F(EditorRecordTest, AnAddedCategoryThatIsGoneDoesNotStopTheSave)
{
    const CEOID gone = AddCategory(L"Gone");
    CEOID id = 0;
    OpenRecord record(&id);
    record.Categories().Push({gone, 0x1101});
    ASSERT_TRUE(record.CategoryStore().DeleteRecord(gone));
    EXPECT_EQ(record.Save(Entry()), Saved::Created);
    EXPECT_EQ(Count(), 1u);
}

TEST_F(EditorRecordTest, ContactsThatNobodyTouchedAreKept)
{
    CEOID id = WriteWith(kPropContacts, Ids({7, 9}));
    OpenRecord record(&id);
    EXPECT_EQ(record.Contacts().Assigned(), (std::vector<CEOID>{7, 9}));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(record.Save(Entry()), Saved::Updated);
        EXPECT_EQ(Read(id).contacts, Ids({7, 9}));
    }
}

TEST_F(EditorRecordTest, ContactsThatWereTakenAwayAreDeleted)
{
    CEOID id = WriteWith(kPropContacts, Ids({7}));
    OpenRecord record(&id);
    record.Contacts().Unassign(7);
    EXPECT_EQ(record.Save(Entry()), Saved::Updated);
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
    const CEOID home = AddCategory(L"Home");
    const std::vector<BYTE> blobs[] = {
        Behind(Ids({home}), 4), Behind(Ids({home}), 3), Behind({}, 2), {9, 0, 0, 0}};
    for (const CEPROPID property : {kPropCategories, kPropContacts})
        for (const std::vector<BYTE>& blob : blobs) {
            CEOID id = WriteWith(property, blob);
            OpenRecord record(&id);
            for (const wchar_t* subject : {L"Other", L"And once more"}) {
                EXPECT_EQ(record.Save(Entry(subject)), Saved::Updated);
                EXPECT_EQ(Read(id).subject, subject);
                EXPECT_EQ(property == kPropCategories ? Read(id).categories : Read(id).contacts, blob);
            }
        }
    EXPECT_EQ(Uses(home), 0);
}

TEST_F(EditorRecordTest, ASetOfAWrongShapeIsWrittenAnewWithAChange)
{
    const CEOID home = AddCategory(L"Home");
    const CEOID work = AddCategory(L"Work");
    CEOID id = WriteWith(kPropCategories, Behind(Ids({home}), 4));
    {
        OpenRecord record(&id);
        record.Categories().Push({work, 0x1101});
        EXPECT_EQ(record.Save(Entry()), Saved::Updated);
    }
    EXPECT_EQ(Read(id).categories, Ids({home, work}));
    {
        CEOID other = WriteWith(kPropCategories, Behind(Ids({home}), 4));
        OpenRecord record(&other);
        record.Categories().Find(home)->flags = 0x0011;
        EXPECT_EQ(record.Save(Entry()), Saved::Updated);
        EXPECT_FALSE(Read(other).categories) << "the last one was released";
    }
    CEOID other = WriteWith(kPropContacts, Behind(Ids({7, 9}), 3));
    OpenRecord record(&other);
    record.Contacts().Unassign(7);
    EXPECT_EQ(record.Save(Entry()), Saved::Updated);
    EXPECT_EQ(Read(other).contacts, Ids({9}));
    record.Contacts().Assign(7);
    EXPECT_EQ(record.Save(Entry()), Saved::Updated);
    EXPECT_EQ(Read(other).contacts, Ids({9, 7}));
}

TEST_F(EditorRecordTest, ASetOfAWrongShapeIsWrittenOverWhatAnotherProgramHasMadeOfIt)
{
    const CEOID home = AddCategory(L"Home");
    for (const CEPROPID property : {kPropCategories, kPropContacts}) {
        CEOID id = WriteWith(property, Behind(Ids({home}), 4));
        OpenRecord record(&id);
        ASSERT_TRUE(ChangeStore(
            "UPDATE journal SET categories = x'0100000007000000', contacts = x'0100000007000000'"));
        ASSERT_EQ(record.Save(Entry()), Saved::Changed);
        ASSERT_EQ(record.Save(Entry(), Theirs::Replace), Saved::Updated);
        EXPECT_EQ(property == kPropCategories ? Read(id).categories : Read(id).contacts, Ids({home}));
    }
}

TEST_F(EditorRecordTest, ASetOfAWrongShapeGoesIntoANewRecordAsFarAsItIsOne)
{
    const CEOID home = AddCategory(L"Home");
    CEOID id = WriteWith(kPropCategories, Behind(Ids({home}), 4));
    const CEOID before = id;
    OpenRecord record(&id);
    EXPECT_EQ(record.SaveAsNew(Entry()), Saved::Created);
    ASSERT_NE(id, before);
    EXPECT_EQ(Read(before).categories, Behind(Ids({home}), 4));
    EXPECT_EQ(Read(id).categories, Ids({home}));
    EXPECT_EQ(record.Save(Entry()), Saved::Updated);
    EXPECT_EQ(Read(id).categories, Ids({home}));
}

TEST_F(EditorRecordTest, AFailedWriteChangesNothing)
{
    const CEOID home = AddCategory(L"Home", 1);
    const CEOID work = AddCategory(L"Work");
    CEOID id = WriteWith(kPropCategories, Ids({home}));
    OpenRecord record(&id);
    record.Categories().Find(home)->flags = 0x0011;
    record.Categories().Push({work, 0x1101});
    {
        const LockedStore trouble(m_store.Path());
        EXPECT_EQ(record.Save(Entry(L"Other")), Saved::Failed);
    }
    EXPECT_EQ(Read(id).subject, L"Subject");
    EXPECT_EQ(Uses(home), 1);
    EXPECT_EQ(Uses(work), 0);
    // All is still there for another try.
    EXPECT_EQ(record.Save(Entry(L"Other")), Saved::Updated);
    EXPECT_EQ(Read(id).subject, L"Other");
    EXPECT_EQ(Read(id).categories, Ids({work}));
    EXPECT_EQ(Uses(home), 0);
    EXPECT_EQ(Uses(work), 1);
}

TEST_F(EditorRecordTest, UsesChangeOnlyTogetherWithTheRecord)
{
    const CEOID home = AddCategory(L"Home", 1);
    const CEOID work = AddCategory(L"Work");
    CEOID id = WriteWith(kPropCategories, Ids({home}));
    OpenRecord record(&id);
    record.Categories().Find(home)->flags = 0x0011;
    record.Categories().Push({work, 0x1101});
    ASSERT_TRUE(ChangeStore("ALTER TABLE journal RENAME COLUMN sensitivity TO hidden"));
    EXPECT_EQ(record.Save(Entry(L"Other")), Saved::Failed);
    EXPECT_EQ(Uses(home), 1);
    EXPECT_EQ(Uses(work), 0);
    ASSERT_TRUE(ChangeStore("ALTER TABLE journal RENAME COLUMN hidden TO sensitivity"));
    EXPECT_EQ(record.Save(Entry(L"Other")), Saved::Updated);
    EXPECT_EQ(Uses(home), 0);
    EXPECT_EQ(Uses(work), 1);
}

TEST_F(EditorRecordTest, AFailedFirstWriteGivesNoIdentifier)
{
    CEOID id = 0;
    OpenRecord record(&id);
    record.Categories().Push({AddCategory(L"Home"), 0x1101});
    const LockedStore trouble(m_store.Path());
    EXPECT_EQ(record.Save(Entry()), Saved::Failed);
    EXPECT_EQ(id, 0u);
    EXPECT_EQ(record.Categories().Count(), 1u);
}

TEST_F(EditorRecordOnAFullDisk, WhatIsReadAndWrittenIsGivenBack)
{
    const CEOID home = AddCategory(L"Home", 1), ann = AddContact(L"Ann");
    CEOID id = AddEntry({home}, {ann});
    const LiveBlocks blocks;
    OpenRecord record(&id);
    EXPECT_GE(blocks.Taken(), 1u);
    EXPECT_EQ(blocks.Count(), 0u) << "loaded";
    EXPECT_EQ(record.Save(Entry()), Saved::Updated);
    EXPECT_EQ(blocks.Count(), 0u) << "written";
    record.AddWritten();
    const size_t taken = blocks.Taken();
    FillDisk();
    EXPECT_EQ(record.Save(Entry(L"Another")), Saved::Failed);
    EXPECT_GT(blocks.Taken(), taken);
    EXPECT_EQ(blocks.Count(), 0u) << "refused";
}

} // namespace
