#include "data/journal_entry.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

constexpr TimeCount kTime1{0x01BF8A0000000001ull};
constexpr TimeCount kTime2{0x01BF8A0000000002ull};
constexpr TimeCount kTime3{54'000'000'000ull};

CEPROPVAL Bare(CEPROPID id, WORD flags = 0)
{
    CEPROPVAL property{};
    property.propid = id;
    property.wFlags = flags;
    return property;
}

CEPROPVAL Time(CEPROPID id, TimeCount time, WORD flags = 0)
{
    CEPROPVAL property = Bare(id, flags);
    property.val.filetime = time.ToFileTime();
    return property;
}

CEPROPVAL Short(CEPROPID id, short value, WORD flags = 0)
{
    CEPROPVAL property = Bare(id, flags);
    property.val.iVal = value;
    return property;
}

CEPROPVAL Text(CEPROPID id, const wchar_t* text, WORD flags = 0)
{
    CEPROPVAL property = Bare(id, flags);
    property.val.lpwstr = const_cast<wchar_t*>(text);
    return property;
}

CEPROPVAL Blob(CEPROPID id, BYTE* bytes, DWORD count, WORD flags = 0)
{
    CEPROPVAL property = Bare(id, flags);
    property.val.blob = {count, bytes};
    return property;
}

JournalEntry Read(const std::vector<CEPROPVAL>& properties)
{
    JournalEntry entry;
    ReadEntry(properties.data(), static_cast<WORD>(properties.size()), &entry);
    return entry;
}

std::vector<CEPROPVAL> WholeRecord()
{
    static BYTE categories[] = {1, 0, 0, 0, 9, 0, 0, 0};
    static BYTE contacts[] = {1, 0, 0, 0};
    return {Time(0x00650040, kTime1),
            Text(0x0066001F, L"Subject"),
            Text(0x0067001F, L"Body\r\nmore"),
            Blob(0x00680041, categories, 8),
            Text(0x0069001F, L"Meeting"),
            Short(0x006A0012, 3),
            Short(0x006B0002, 2),
            Short(0x006C0002, -1),
            Time(0x006D0040, kTime2),
            Time(0x006E0040, kTime3),
            Blob(0x006F0041, contacts, 4)};
}

void ExpectWholeRecord(const JournalEntry& entry)
{
    EXPECT_EQ(entry.date, kTime1);
    EXPECT_EQ(entry.subject, L"Subject");
    EXPECT_EQ(entry.body, L"Body\r\nmore");
    EXPECT_EQ(entry.categories, (std::vector<BYTE>{1, 0, 0, 0, 9, 0, 0, 0}));
    EXPECT_EQ(entry.type, L"Meeting");
    EXPECT_EQ(entry.kind, 3);
    EXPECT_EQ(entry.priority, 2);
    EXPECT_EQ(entry.sensitivity, -1);
    EXPECT_EQ(entry.endTime, kTime2);
    EXPECT_EQ(entry.duration, kTime3);
    EXPECT_EQ(entry.contacts, (std::vector<BYTE>{1, 0, 0, 0}));
}

bool IsBlank(const JournalEntry& entry)
{
    return !entry.date && !entry.endTime && !entry.duration && !entry.priority && !entry.sensitivity &&
           !entry.subject && !entry.body && !entry.type && !entry.kind && !entry.categories &&
           !entry.contacts;
}

TEST(Fields, IdentifiersAreNumberAndType)
{
    EXPECT_EQ(kPropDate, 0x00650040u);
    EXPECT_EQ(kPropSubject, 0x0066001Fu);
    EXPECT_EQ(kPropBody, 0x0067001Fu);
    EXPECT_EQ(kPropCategories, 0x00680041u);
    EXPECT_EQ(kPropType, 0x0069001Fu);
    EXPECT_EQ(kPropKind, 0x006A0012u);
    EXPECT_EQ(kPropPriority, 0x006B0002u);
    EXPECT_EQ(kPropSensitivity, 0x006C0002u);
    EXPECT_EQ(kPropEndTime, 0x006D0040u);
    EXPECT_EQ(kPropDuration, 0x006E0040u);
    EXPECT_EQ(kPropContacts, 0x006F0041u);
}

TEST(Fields, HaveTheirFixedNumbersAndSigns)
{
    EXPECT_EQ(kEntryKind, 3);
    EXPECT_EQ(kTypeTextSize, 60);
    EXPECT_EQ(kCategorySeparator, 44);
    EXPECT_EQ(kContactSeparator, 59);
}

TEST(Fields, PriorityWords)
{
    EXPECT_STREQ(PriorityWord(0), L"Low");
    EXPECT_STREQ(PriorityWord(1), L"Normal");
    EXPECT_STREQ(PriorityWord(2), L"High");
    for (int other : {-1, 3, 5, 32767, -32768, INT_MAX})
        EXPECT_STREQ(PriorityWord(other), L"Normal");
}

TEST(Fields, SensitivityWords)
{
    EXPECT_STREQ(SensitivityWord(0), L"Normal");
    EXPECT_STREQ(SensitivityWord(1), L"Personal");
    EXPECT_STREQ(SensitivityWord(2), L"Private");
    EXPECT_STREQ(SensitivityWord(3), L"Confidential");
    for (int other : {-1, 4, 32767, -32768, INT_MAX})
        EXPECT_STREQ(SensitivityWord(other), L"Normal");
}

TEST(Placeholder, IsOneAsAWholeOnly)
{
    EXPECT_TRUE(IsPlaceholder(L"<Entry Body>", kBodyPlaceholder));
    EXPECT_TRUE(IsPlaceholder(L"<Entry Subject>", kSubjectPlaceholder));
    for (const wchar_t* text : {L"", L"<entry body>", L"<Entry Body", L"<Entry Body>>", L" <Entry Body>",
                                L"<Entry Body> and more", L"<Entry Body>\r\n", L"<Entry Subject>"})
        EXPECT_FALSE(IsPlaceholder(text, kBodyPlaceholder)) << text;
    EXPECT_FALSE(IsPlaceholder(std::wstring(100000, L'<'), kBodyPlaceholder));
}

// The system passes over some characters when it compares.
TEST(Placeholder, EqualIsWhatTheSystemSays)
{
    int equal = 0;
    for (const wchar_t* text :
         {L"<Entry\u00ad Body>", L"<Entry\u200d Body>", L"<Entry\u200b Body>", L"<Entry\u0001 Body>"}) {
        const bool isEqual =
            CompareStringW(LOCALE_SYSTEM_DEFAULT, 0, text, -1, L"<Entry Body>", -1) == CSTR_EQUAL;
        EXPECT_EQ(IsPlaceholder(text, kBodyPlaceholder), isEqual) << text;
        equal += isEqual;
    }
    EXPECT_GT(equal, 0);
}

TEST(ReadEntry, TakesEveryProperty)
{
    ExpectWholeRecord(Read(WholeRecord()));
}

TEST(ReadEntry, TakesAnyOrder)
{
    std::vector<CEPROPVAL> properties = WholeRecord();
    std::reverse(properties.begin(), properties.end());
    ExpectWholeRecord(Read(properties));
    std::rotate(properties.begin(), properties.begin() + 4, properties.end());
    ExpectWholeRecord(Read(properties));
}

TEST(ReadEntry, WhatTheRecordLacksHasNoValue)
{
    EXPECT_TRUE(IsBlank(Read({})));
    const JournalEntry entry = Read({Text(kPropSubject, L"")});
    EXPECT_EQ(entry.subject, L"");
    EXPECT_EQ(entry.body, std::nullopt);
}

TEST(ReadEntry, ForgetsAnEarlierRecordButItsIdentifier)
{
    JournalEntry entry = Read(WholeRecord());
    entry.id = 77;
    ReadEntry(nullptr, 0, &entry);
    EXPECT_EQ(entry.id, 77u);
    EXPECT_TRUE(IsBlank(entry));
}

TEST(ReadEntry, PassesOverWhatWasNotFound)
{
    std::vector<CEPROPVAL> properties = WholeRecord();
    for (CEPROPVAL& property : properties) {
        property.wFlags = CEDB_PROPNOTFOUND;
        property.val.blob = {100, nullptr};
    }
    EXPECT_TRUE(IsBlank(Read(properties)));
}

TEST(ReadEntry, PassesOverUnknownIdentifiers)
{
    std::vector<CEPROPVAL> properties = WholeRecord();
    for (CEPROPVAL& property : properties)
        property.propid ^= 0x00000100; // another type
    EXPECT_TRUE(IsBlank(Read(properties)));
    for (CEPROPVAL& property : properties)
        property.propid ^= 0x01000100; // the type again, another number
    EXPECT_TRUE(IsBlank(Read(properties)));
    EXPECT_TRUE(IsBlank(Read({Short(0x006B001F, 1), Short(0x00650002, 1), Text(0, L"x"), Bare(0xFFFFFFFF)})));
}

TEST(ReadEntry, PassesOverNullTexts)
{
    EXPECT_TRUE(
        IsBlank(Read({Text(kPropSubject, nullptr), Text(kPropBody, nullptr), Text(kPropType, nullptr)})));
}

TEST(ReadEntry, PassesOverBlobsWithoutBytes)
{
    EXPECT_TRUE(IsBlank(Read({Blob(kPropCategories, nullptr, 8), Blob(kPropContacts, nullptr, 0xFFFFFFFF)})));
    const JournalEntry empty = Read({Blob(kPropCategories, nullptr, 0)});
    ASSERT_TRUE(empty.categories);
    EXPECT_TRUE(empty.categories->empty());
}

TEST(ReadEntry, OfTwoTheLastCounts)
{
    const JournalEntry entry =
        Read({Text(kPropSubject, L"first"), Short(kPropPriority, 0), Text(kPropSubject, L"last"),
              Short(kPropPriority, 2), Text(kPropSubject, L"none", CEDB_PROPNOTFOUND)});
    EXPECT_EQ(entry.subject, L"last");
    EXPECT_EQ(entry.priority, 2);
}

TEST(ReadEntry, NoArrayIsAnEmptyRecord)
{
    JournalEntry entry = Read(WholeRecord());
    ReadEntry(nullptr, 11, &entry);
    EXPECT_TRUE(IsBlank(entry));
}

TEST(ReadEntry, CopiesWhatItTakes)
{
    wchar_t text[] = L"mine";
    BYTE bytes[] = {1, 2};
    const JournalEntry entry = Read({Text(kPropBody, text), Blob(kPropContacts, bytes, 2)});
    text[0] = L'x';
    bytes[0] = 9;
    EXPECT_EQ(entry.body, L"mine");
    EXPECT_EQ(entry.contacts, (std::vector<BYTE>{1, 2}));
}

TEST(ReadEntry, CodesAreSigned)
{
    const JournalEntry entry =
        Read({Short(kPropPriority, -32768), Short(kPropSensitivity, static_cast<short>(0xFFFF))});
    EXPECT_EQ(entry.priority, -32768);
    EXPECT_EQ(entry.sensitivity, -1);
}

EntryToWrite NewEntry()
{
    EntryToWrite entry;
    entry.date = kTime1;
    entry.endTime = kTime2;
    entry.duration = kTime3;
    entry.priority = 2;
    entry.sensitivity = 3;
    entry.type = L"Phone call";
    entry.body = L"Body\r\nmore";
    entry.subject = L"Subject";
    return entry;
}

std::vector<CEPROPID> Ids(const std::vector<CEPROPVAL>& properties)
{
    std::vector<CEPROPID> ids;
    for (const CEPROPVAL& property : properties) {
        ids.push_back(property.propid);
        EXPECT_EQ(property.wLenData, 0);
    }
    return ids;
}

const std::vector<CEPROPID> kNine{0x006A0012, 0x00650040, 0x006D0040, 0x006E0040, 0x006B0002,
                                  0x006C0002, 0x0069001F, 0x0067001F, 0x0066001F};

TEST(PropertiesToWrite, NineOfAnEntryWithoutAssignments)
{
    EntryToWrite entry = NewEntry();
    const std::vector<CEPROPVAL> properties = PropertiesToWrite(entry);
    ASSERT_EQ(Ids(properties), kNine);
    EXPECT_EQ(properties[0].val.uiVal, 3);
    EXPECT_EQ(TimeCount(properties[1].val.filetime), kTime1);
    EXPECT_EQ(TimeCount(properties[2].val.filetime), kTime2);
    EXPECT_EQ(TimeCount(properties[3].val.filetime), kTime3);
    EXPECT_EQ(properties[4].val.iVal, 2);
    EXPECT_EQ(properties[5].val.iVal, 3);
    EXPECT_STREQ(properties[6].val.lpwstr, L"Phone call");
    EXPECT_STREQ(properties[7].val.lpwstr, L"Body\r\nmore");
    EXPECT_STREQ(properties[8].val.lpwstr, L"Subject");
    for (const CEPROPVAL& property : properties)
        EXPECT_EQ(property.wFlags, 0);
}

TEST(PropertiesToWrite, ElevenWithBothAssignments)
{
    BYTE categories[] = {1, 0, 0, 0, 5, 0, 0, 0};
    BYTE contacts[] = {1, 0, 0, 0};
    EntryToWrite entry = NewEntry();
    entry.categories = {8, categories};
    entry.contacts = {4, contacts};
    for (const DWORD mask : {0u, 7u}) {
        entry.exists = mask != 0;
        entry.loadedMask = mask;
        const std::vector<CEPROPVAL> properties = PropertiesToWrite(entry);
        std::vector<CEPROPID> eleven = kNine;
        eleven.insert(eleven.end(), {0x00680041, 0x006F0041});
        ASSERT_EQ(Ids(properties), eleven);
        EXPECT_EQ(properties[9].val.blob.dwCount, 8u);
        EXPECT_EQ(properties[9].val.blob.lpb, categories);
        EXPECT_EQ(properties[9].wFlags, 0);
        EXPECT_EQ(properties[10].val.blob.dwCount, 4u);
        EXPECT_EQ(properties[10].val.blob.lpb, contacts);
        EXPECT_EQ(properties[10].wFlags, 0);
    }
}

TEST(PropertiesToWrite, PlaceholdersAreDeleted)
{
    EntryToWrite entry = NewEntry();
    entry.body = L"<Entry Body>";
    entry.subject = L"<Entry Subject>";
    const std::vector<CEPROPVAL> properties = PropertiesToWrite(entry);
    ASSERT_EQ(Ids(properties), kNine);
    for (const size_t i : {7u, 8u}) {
        EXPECT_EQ(properties[i].wFlags, CEDB_PROPDELETE);
        EXPECT_STREQ(properties[i].val.lpwstr, L"");
    }
}

TEST(PropertiesToWrite, OtherTextsAreKept)
{
    EntryToWrite entry = NewEntry();
    entry.type = L"";
    entry.body = L"<Entry Body> and more";
    entry.subject = L"<entry subject>";
    std::vector<CEPROPVAL> properties = PropertiesToWrite(entry);
    EXPECT_STREQ(properties[6].val.lpwstr, L"");
    EXPECT_EQ(properties[6].wFlags, 0);
    EXPECT_STREQ(properties[7].val.lpwstr, L"<Entry Body> and more");
    EXPECT_EQ(properties[7].wFlags, 0);
    EXPECT_STREQ(properties[8].val.lpwstr, L"<entry subject>");
    EXPECT_EQ(properties[8].wFlags, 0);
    entry.body = L"<Entry Subject>";
    entry.subject = L"<Entry Body>";
    properties = PropertiesToWrite(entry);
    EXPECT_EQ(properties[7].wFlags, 0);
    EXPECT_EQ(properties[8].wFlags, 0);
    entry.body.clear();
    properties = PropertiesToWrite(entry);
    EXPECT_STREQ(properties[7].val.lpwstr, L"");
    EXPECT_EQ(properties[7].wFlags, 0);
}

// What the mask of an existing record deletes when nothing is assigned any more.
TEST(PropertiesToWrite, EmptySetsDeleteByTheOverlappingMask)
{
    struct Case {
        DWORD mask;
        bool categories;
        bool contacts;
    };
    const Case cases[] = {{0, false, false}, {1, true, false},          {2, true, false}, {3, true, false},
                          {4, false, true},  {5, true, true},           {6, true, true},  {7, true, true},
                          {8, false, false}, {0xFFFFFFF8, false, false}};
    for (const Case& c : cases) {
        EntryToWrite entry = NewEntry();
        entry.exists = true;
        entry.loadedMask = c.mask;
        std::vector<CEPROPID> expected = kNine;
        if (c.categories)
            expected.push_back(0x00680041);
        if (c.contacts)
            expected.push_back(0x006F0041);
        const std::vector<CEPROPVAL> properties = PropertiesToWrite(entry);
        EXPECT_EQ(Ids(properties), expected) << c.mask;
        for (size_t i = 9; i < properties.size(); ++i) {
            EXPECT_EQ(properties[i].wFlags, CEDB_PROPDELETE);
            EXPECT_EQ(properties[i].val.blob.dwCount, 0u);
            EXPECT_EQ(properties[i].val.blob.lpb, nullptr);
        }
    }
}

TEST(PropertiesToWrite, TheMaskIsMadeOfOverlappingNumbers)
{
    EXPECT_EQ(kLoadedSubject, 1u);
    EXPECT_EQ(kLoadedType, 2u);
    EXPECT_EQ(kLoadedCategories, 3u);
    EXPECT_EQ(kLoadedContacts, 4u);
    EXPECT_EQ(kLoadedBody, 5u);
    EXPECT_EQ(kLoadedPriority, 6u);
    EXPECT_EQ(kLoadedSensitivity, 7u);
    EntryToWrite entry = NewEntry();
    entry.exists = true;
    entry.loadedMask = kLoadedSubject | kLoadedPriority;
    EXPECT_EQ(PropertiesToWrite(entry).size(), 11u);
}

TEST(PropertiesToWrite, ANewRecordDeletesNoAssignments)
{
    EntryToWrite entry = NewEntry();
    entry.loadedMask = 7;
    EXPECT_EQ(Ids(PropertiesToWrite(entry)), kNine);
}

TEST(PropertiesToWrite, ABlobWithoutBytesAssignsNothing)
{
    EntryToWrite entry = NewEntry();
    entry.categories = {8, nullptr};
    EXPECT_EQ(Ids(PropertiesToWrite(entry)), kNine);
    entry.exists = true;
    entry.loadedMask = kLoadedCategories;
    EXPECT_EQ(PropertiesToWrite(entry).back().wFlags, CEDB_PROPDELETE);
}

TEST(PropertiesToWrite, ReadsBackAsItWas)
{
    EntryToWrite written = NewEntry();
    const JournalEntry entry = Read(PropertiesToWrite(written));
    EXPECT_EQ(entry.date, kTime1);
    EXPECT_EQ(entry.endTime, kTime2);
    EXPECT_EQ(entry.duration, kTime3);
    EXPECT_EQ(entry.priority, 2);
    EXPECT_EQ(entry.sensitivity, 3);
    EXPECT_EQ(entry.type, L"Phone call");
    EXPECT_EQ(entry.body, L"Body\r\nmore");
    EXPECT_EQ(entry.subject, L"Subject");
    EXPECT_EQ(entry.kind, 3);
}

} // namespace
