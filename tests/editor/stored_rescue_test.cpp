// Whether what was put aside is in the store already.
#include "editor/stored_rescue.h"

#include "editor_record_fixture.h"

namespace {

class StoredRescueTest : public EditorRecordTest {
  protected:
    // Of an editor that has the record open, as it is, with the entry in its controls.
    RescueState StateOf(CEOID id, EntryToWrite entry)
    {
        OpenRecord record(&id);
        RescueState state;
        record.DescribeTo(&state);
        state.entry = std::move(entry);
        return state;
    }
    static bool Stored(const RescueState& state) { return IsStored(Own().Journal(), state); }
};

TEST_F(StoredRescueTest, WithoutARecordItIsNot)
{
    EXPECT_FALSE(Stored(StateOf(0, Entry())));
}

// Also beside others of its day and of other ones.
TEST_F(StoredRescueTest, ANewEntryIsWhereARecordHasAllOfIt)
{
    const RescueState state = StateOf(0, Entry(L"Mine"));
    for (const SYSTEMTIME& day :
         {kTuesday, SYSTEMTIME{2024, 3, 2, 5, 9, 0, 0, 0}, SYSTEMTIME{2024, 3, 3, 6, 14, 5, 30, 250}}) {
        EntryToWrite other = Entry(L"Other");
        other.date = At(day);
        Write(other);
        EXPECT_FALSE(Stored(state));
    }
    Write(Entry(L"Mine"));
    EXPECT_TRUE(Stored(state));
}

TEST_F(StoredRescueTest, EachOfItsPropertiesCounts)
{
    CEOID id = Write(Entry(L"Mine"));
    const RescueState same = StateOf(0, Entry(L"Mine"));
    ASSERT_TRUE(Stored(same));
    const std::function<void(RescueState*)> changes[] = {
        [](RescueState* state) { state->entry.date.AddSeconds(1); },
        [](RescueState* state) { state->entry.date.AddDays(1); },
        [](RescueState* state) { state->entry.endTime.AddMinutes(1); },
        [](RescueState* state) { state->entry.duration.AddMinutes(1); },
        [](RescueState* state) { state->entry.priority = kPriorityHigh; },
        [](RescueState* state) { state->entry.sensitivity = kSensitivityPrivate; },
        [](RescueState* state) { state->entry.type = L"Fax"; },
        [](RescueState* state) { state->entry.subject += L"e"; },
        [](RescueState* state) { state->entry.body += L" "; },
        [](RescueState* state) { state->entry.subject = kSubjectPlaceholder; },
        [](RescueState* state) { state->entry.body = kBodyPlaceholder; },
        [](RescueState* state) { state->categories = std::vector<CEOID>{7}; },
        [](RescueState* state) { state->contacts = {7}; },
    };
    for (const auto& change : changes) {
        RescueState state = same;
        change(&state);
        EXPECT_FALSE(Stored(state)) << &change - changes;
        state.id = id;
        EXPECT_FALSE(Stored(state)) << "nor of the record: " << &change - changes;
    }
}

TEST_F(StoredRescueTest, PlaceholdersAreStoredAsNoText)
{
    EntryToWrite entry = Entry(kSubjectPlaceholder);
    entry.body = kBodyPlaceholder;
    Write(entry);
    EXPECT_TRUE(Stored(StateOf(0, entry)));
    entry.body = entry.subject = L"";
    EXPECT_TRUE(Stored(StateOf(0, entry)));
}

TEST_F(StoredRescueTest, SetsCountWhateverTheirOrder)
{
    CEOID id = WriteWith(kPropCategories, Ids({5, 7}));
    RescueState state = StateOf(0, Entry());
    EXPECT_FALSE(Stored(state));
    state.categories = std::vector<CEOID>{7, 5};
    EXPECT_TRUE(Stored(state));
    state.categories.reset();
    EXPECT_TRUE(Stored(state)) << "it has those of the record, whatever they are";
    ASSERT_TRUE(Own().Journal().DeleteRecord(id));
    id = WriteWith(kPropContacts, Ids({5, 7}));
    EXPECT_FALSE(Stored(state));
    state.contacts = {7, 5};
    EXPECT_TRUE(Stored(state));
}

// A record that is as it was loaded has none of it, whatever another one has.
TEST_F(StoredRescueTest, OfARecordItIsWhereThatHasAllOfIt)
{
    const CEOID id = Write(Entry(L"Mine"));
    const RescueState state = StateOf(id, Entry(L"Mine again"));
    EXPECT_FALSE(Stored(state));
    Write(Entry(L"Mine again"));
    EXPECT_FALSE(Stored(state)) << "a copy of it";
    ASSERT_TRUE(ChangeStore("UPDATE journal SET subject = 'Mine again'"));
    EXPECT_TRUE(Stored(state));
}

// As the save does it where the person has answered so.
TEST_F(StoredRescueTest, OfAChangedRecordAnotherOneMayHaveIt)
{
    const CEOID id = Write(Entry(L"Mine"));
    const RescueState state = StateOf(id, Entry(L"Mine again"));
    ASSERT_TRUE(ChangeStore("UPDATE journal SET subject = 'theirs'"));
    EXPECT_FALSE(Stored(state));
    const CEOID besides = Write(Entry(L"Mine again"));
    EXPECT_TRUE(Stored(state));
    ASSERT_TRUE(Own().Journal().DeleteRecord(id));
    EXPECT_TRUE(Stored(state));
    ASSERT_TRUE(Own().Journal().DeleteRecord(besides));
    EXPECT_FALSE(Stored(state));
}

TEST_F(StoredRescueTest, WhereTheStoreCannotBeReadItIsNot)
{
    CEOID id = Write(Entry(L"Mine"));
    RescueState state = StateOf(id, Entry(L"Mine"));
    ASSERT_TRUE(ChangeStore("ALTER TABLE journal RENAME COLUMN sensitivity TO hidden"));
    EXPECT_FALSE(Stored(state));
    state.id = 0;
    EXPECT_FALSE(Stored(state));
    ASSERT_TRUE(ChangeStore("ALTER TABLE journal RENAME COLUMN hidden TO sensitivity"));
    EXPECT_TRUE(Stored(state));
}

} // namespace
