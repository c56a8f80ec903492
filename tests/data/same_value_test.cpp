// Values compared field by field: what counts as changed, and what as stored.
#include <gtest/gtest.h>

#include "data/same_value.h"

namespace {

bool IsSame(CEPROPID id, const EntryToWrite& a, const EntryToWrite& b)
{
    return HaveSameValue(*FieldOf(id), a, b);
}

bool IsStored(CEPROPID id, const JournalEntry& stored, const EntryToWrite& entry)
{
    return IsStoredValue(*FieldOf(id), stored, entry);
}

TEST(SameValue, IsOfOneFieldAlone)
{
    EntryToWrite entry, other;
    other.subject = L"Call";
    other.priority = kPriorityHigh;
    other.endTime = TimeCount(1);
    for (const Field& field : Fields()) {
        const bool differs =
            field.id == kPropSubject || field.id == kPropPriority || field.id == kPropEndTime;
        const bool isSet = field.id == kPropCategories || field.id == kPropContacts;
        EXPECT_EQ(IsSame(field.id, entry, other), !differs && !isSet) << field.id;
        EXPECT_EQ(IsSame(field.id, other, other), !isSet) << field.id;
    }
}

TEST(SameValue, OfATextThatIsNoneIsStoredAsNoneOrAsAnEmptyOne)
{
    EntryToWrite entry;
    JournalEntry stored;
    for (const wchar_t* text : {L"", kSubjectPlaceholder}) {
        entry.subject = text;
        stored.subject.reset();
        EXPECT_TRUE(IsStored(kPropSubject, stored, entry));
        stored.subject = L"";
        EXPECT_TRUE(IsStored(kPropSubject, stored, entry));
        stored.subject = kSubjectPlaceholder;
        EXPECT_FALSE(IsStored(kPropSubject, stored, entry));
    }
    entry.type = kSubjectPlaceholder; // another field's
    EXPECT_FALSE(IsStored(kPropType, stored, entry));
    stored.type = kSubjectPlaceholder;
    EXPECT_TRUE(IsStored(kPropType, stored, entry));
}

TEST(SameValue, OfANumberIsNotStoredWhereTheRecordLacksIt)
{
    EntryToWrite entry;
    JournalEntry stored;
    EXPECT_FALSE(IsStored(kPropPriority, stored, entry));
    stored.priority = kPriorityNormal;
    EXPECT_TRUE(IsStored(kPropPriority, stored, entry));
    EXPECT_FALSE(IsStored(kPropDate, stored, entry));
    stored.date = TimeCount();
    EXPECT_TRUE(IsStored(kPropDate, stored, entry));
}

TEST(SameValue, IsPlainOfAllButTheKindAndTheSets)
{
    for (const Field& field : Fields())
        EXPECT_EQ(IsPlainValue(field),
                  field.id != kPropKind && field.id != kPropCategories && field.id != kPropContacts)
            << field.id;
}

} // namespace
