#include "list/display_record.h"

#include <gtest/gtest.h>

#include "mervane/db_categories.h"
#include "mervane/db_contacts.h"
#include "support/journal_fixture.h"

namespace {

// Formats what has no names to look up.
DisplayRecord Formatted(const TestRecord& record)
{
    ValueTexts texts;
    return FormatRecord(7, record.Count(), record.Properties(), texts);
}

std::wstring Cell(const DisplayRecord& record, CEPROPID property)
{
    return CellText(record, PropertyNumber(property));
}

std::wstring SystemText(const SYSTEMTIME& time)
{
    wchar_t date[80];
    wchar_t clock[80];
    EXPECT_NE(GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &time, nullptr, date, 80), 0);
    EXPECT_NE(GetTimeFormatW(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &time, nullptr, clock, 80), 0);
    return std::wstring(date) + L" " + clock;
}

TEST(DisplayRecord, AClearedOneIsABlankRow)
{
    const DisplayRecord blank;
    EXPECT_EQ(blank.id, 0u);
    EXPECT_EQ(blank.image, -1);
    EXPECT_EQ(blank.state, 0u);
    for (WORD property = 100; property <= 112; ++property)
        EXPECT_STREQ(CellText(blank, property), L"") << property;
}

TEST(DisplayRecord, ShowsEachPropertyInItsColumn)
{
    const DisplayRecord record =
        Formatted(TestRecord()
                      .Time(kPropDate, Instant(2000, 3, 5, 9, 30))
                      .Text(kPropSubject, L"Meeting")
                      .Text(kPropBody, L"Agreed terms")
                      .Text(kPropType, L"Phone call")
                      .Short(kPropPriority, 2)
                      .Short(kPropSensitivity, 3)
                      .Time(kPropEndTime, Instant(2000, 3, 5, 11, 0))
                      .Time(kPropDuration, TimeCount(90 * TimeCount::kUnitsPerMinute)));
    EXPECT_EQ(record.id, 7u);
    EXPECT_EQ(Cell(record, kPropDate), SystemText({2000, 3, 0, 5, 9, 30, 0, 0}));
    EXPECT_EQ(Cell(record, kPropSubject), L"Meeting");
    EXPECT_EQ(Cell(record, kPropBody), L"Agreed terms");
    EXPECT_EQ(Cell(record, kPropType), L"Phone call");
    EXPECT_EQ(Cell(record, kPropPriority), L"High");
    EXPECT_EQ(Cell(record, kPropSensitivity), L"Confidential");
    EXPECT_EQ(Cell(record, kPropEndTime), SystemText({2000, 3, 0, 5, 11, 0, 0, 0}));
    EXPECT_EQ(Cell(record, kPropDuration), L"1 hour 30 min");
    EXPECT_EQ(Cell(record, kPropCategories), L"");
    EXPECT_EQ(Cell(record, kPropContacts), L"");
    EXPECT_EQ(Cell(record, kPropKind), L"");
    EXPECT_STREQ(CellText(record, 0), L"");
}

TEST(DisplayRecord, OrderOfPropertiesDoesNotMatter)
{
    const DisplayRecord record = Formatted(TestRecord()
                                               .Time(kPropEndTime, Instant(2001, 1, 1, 12, 0))
                                               .Text(kPropSubject, L"late")
                                               .Time(kPropDate, Instant(2001, 1, 1, 11, 0)));
    EXPECT_EQ(Cell(record, kPropDate), SystemText({2001, 1, 0, 1, 11, 0, 0, 0}));
    EXPECT_EQ(Cell(record, kPropEndTime), SystemText({2001, 1, 0, 1, 12, 0, 0, 0}));
}

TEST(DisplayRecord, ARecordWithoutAnEndRepeatsItsDate)
{
    const DisplayRecord record = Formatted(TestRecord().Time(kPropDate, Instant(1999, 12, 31, 23, 59)));
    EXPECT_EQ(Cell(record, kPropEndTime), SystemText({1999, 12, 0, 31, 23, 59, 0, 0}));
}

TEST(DisplayRecord, ARecordWithoutADurationShowsNoMinutes)
{
    EXPECT_EQ(Cell(Formatted(TestRecord().Text(kPropSubject, L"x")), kPropDuration), L"0 minutes");
    EXPECT_EQ(Cell(Formatted(TestRecord()), kPropDuration), L"0 minutes");
    EXPECT_EQ(Cell(Formatted(TestRecord()), kPropDate), L"");
    EXPECT_EQ(Cell(Formatted(TestRecord()), kPropEndTime), L"");
}

TEST(DisplayRecord, DurationsThatAreNoDateShowNoMinutes)
{
    for (const uint64_t units : {uint64_t{1} << 63, UINT64_MAX, UINT64_MAX - 36'000'000'000})
        EXPECT_EQ(Cell(Formatted(TestRecord().Time(kPropDuration, TimeCount(units))), kPropDuration),
                  L"0 minutes")
            << units;
}

TEST(DisplayRecord, DatesThatAreNoneShowNothing)
{
    const DisplayRecord record = Formatted(
        TestRecord().Time(kPropDate, TimeCount(UINT64_MAX)).Time(kPropEndTime, TimeCount(uint64_t{1} << 63)));
    EXPECT_EQ(Cell(record, kPropDate), L"");
    EXPECT_EQ(Cell(record, kPropEndTime), L"");
    const DisplayRecord dated = Formatted(
        TestRecord().Time(kPropDate, Instant(2000, 1, 2)).Time(kPropEndTime, TimeCount(UINT64_MAX)));
    EXPECT_EQ(Cell(dated, kPropEndTime), Cell(dated, kPropDate));
}

TEST(DisplayRecord, OtherPrioritiesAndSensitivitiesAreNormal)
{
    const wchar_t* const priorities[] = {L"Low", L"Normal", L"High", L"Normal"};
    const wchar_t* const sensitivities[] = {L"Normal", L"Personal", L"Private", L"Confidential", L"Normal"};
    for (short i = 0; i < 4; ++i)
        EXPECT_EQ(Cell(Formatted(TestRecord().Short(kPropPriority, i)), kPropPriority), priorities[i]);
    for (short i = 0; i < 5; ++i)
        EXPECT_EQ(Cell(Formatted(TestRecord().Short(kPropSensitivity, i)), kPropSensitivity),
                  sensitivities[i]);
    for (const short odd : std::vector<short>{-1, 5, SHRT_MIN, SHRT_MAX}) {
        EXPECT_EQ(Cell(Formatted(TestRecord().Short(kPropPriority, odd)), kPropPriority), L"Normal") << odd;
        EXPECT_EQ(Cell(Formatted(TestRecord().Short(kPropSensitivity, odd)), kPropSensitivity), L"Normal")
            << odd;
    }
    EXPECT_EQ(Cell(Formatted(TestRecord().Text(kPropSubject, L"x")), kPropPriority), L"Normal");
    EXPECT_EQ(Cell(Formatted(TestRecord().Text(kPropSubject, L"x")), kPropSensitivity), L"Normal");
}

TEST(DisplayRecord, ThePriorityIsTheImageOfItsColumnOnly)
{
    const DisplayRecord high = Formatted(TestRecord().Short(kPropPriority, 2));
    EXPECT_EQ(CellImage(high, 107), 2);
    EXPECT_EQ(CellImage(high, 101), 3);
    EXPECT_EQ(CellImage(high, 0), 3);
    EXPECT_EQ(CellImage(Formatted(TestRecord().Short(kPropPriority, 0)), 107), 0);
    EXPECT_EQ(CellImage(Formatted(TestRecord().Text(kPropSubject, L"x")), 107), -1);
}

TEST(DisplayRecord, BodiesShowTheirFirstLine)
{
    EXPECT_EQ(FirstLine(L""), L"");
    EXPECT_EQ(FirstLine(L"one line"), L"one line");
    EXPECT_EQ(FirstLine(L"first\r\nsecond\r\nthird"), L"first");
    EXPECT_EQ(FirstLine(L"first\rsecond"), L"first");
    EXPECT_EQ(FirstLine(L"a\nb"), L"a\nb");
    EXPECT_EQ(FirstLine(L"\r\nsecond\r\nthird"), L"\r\nsecond\r\nthird");
    EXPECT_EQ(FirstLine(L"\r"), L"\r");
    const DisplayRecord record = Formatted(TestRecord().Text(kPropBody, L"first\r\nsecond"));
    EXPECT_EQ(Cell(record, kPropBody), L"first");
}

TEST(DisplayRecord, BodiesAreBoundedTo119Characters)
{
    for (const size_t length : {size_t{118}, size_t{119}, size_t{120}, size_t{1'000'000}}) {
        const DisplayRecord record = Formatted(TestRecord().Text(kPropBody, std::wstring(length, L'b')));
        EXPECT_EQ(Cell(record, kPropBody), std::wstring(std::min<size_t>(length, 119), L'b')) << length;
    }
    // The bound comes before the line: what starts with CR shows its first 119 characters.
    const DisplayRecord record = Formatted(TestRecord().Text(kPropBody, L"\r" + std::wstring(200, L'x')));
    EXPECT_EQ(Cell(record, kPropBody), L"\r" + std::wstring(118, L'x'));
}

TEST(DisplayRecord, SubjectAndTypeAreWhole)
{
    const std::wstring text = std::wstring(1000, L's') + L"end";
    const DisplayRecord record = Formatted(TestRecord().Text(kPropSubject, text).Text(kPropType, text));
    EXPECT_EQ(Cell(record, kPropSubject), text);
    EXPECT_EQ(Cell(record, kPropType), text);
}

TEST(DisplayRecord, HugeSubjectsAreKeptAsFarAsAColumnGoes)
{
    const DisplayRecord record = Formatted(TestRecord().Text(kPropSubject, std::wstring(1'000'000, L's')));
    EXPECT_EQ(Cell(record, kPropSubject), std::wstring(4095, L's'));
}

TEST(DisplayRecord, NoSurrogatePairIsCutInHalf)
{
    const std::wstring pair = L"\xD83D\xDE00";
    const DisplayRecord cut =
        Formatted(TestRecord().Text(kPropBody, std::wstring(118, L'b') + pair + L"more"));
    EXPECT_EQ(Cell(cut, kPropBody), std::wstring(118, L'b'));
    const DisplayRecord kept =
        Formatted(TestRecord().Text(kPropBody, std::wstring(117, L'b') + pair + L"more"));
    EXPECT_EQ(Cell(kept, kPropBody), std::wstring(117, L'b') + pair);
    // One without its other half stays what it is.
    const std::wstring lone = std::wstring(118, L'b') + L"\xD83D";
    EXPECT_EQ(Cell(Formatted(TestRecord().Text(kPropBody, lone)), kPropBody), lone);
    EXPECT_EQ(Cell(Formatted(TestRecord().Text(kPropSubject, L"\xDE00\xD83D")), kPropSubject),
              L"\xDE00\xD83D");
}

TEST(DisplayRecord, PassesOverWhatIsNotThere)
{
    TestRecord odd;
    odd.Missing(kPropSubject).Missing(kPropDate).Missing(kPropPriority);
    odd.Short(0x12340002, 5);
    CEPROPVAL nothing{};
    nothing.propid = kPropBody;
    std::vector<CEPROPVAL> properties(odd.Properties(), odd.Properties() + odd.Count());
    properties.push_back(nothing);
    ValueTexts texts;
    const DisplayRecord record =
        FormatRecord(3, static_cast<WORD>(properties.size()), properties.data(), texts);
    EXPECT_EQ(record.id, 3u);
    EXPECT_EQ(Cell(record, kPropSubject), L"");
    EXPECT_EQ(Cell(record, kPropDate), L"");
    EXPECT_EQ(record.image, -1);
    EXPECT_EQ(Cell(record, kPropBody), L"");
    EXPECT_EQ(Cell(record, kPropDuration), L"0 minutes");
}

// Names come from the databases.
class DisplayRecordNames : public JournalTest {
  protected:
    static CEOID AddCategory(const std::wstring& name)
    {
        return AddNamed<DbCategories>(kCategoriesKey, name);
    }
    static CEOID AddContact(const std::wstring& name) { return AddNamed<DbContacts>(kContactsKey, name); }

  private:
    template <typename Database> static CEOID AddNamed(CEPROPID key, std::wstring name)
    {
        Database database;
        EXPECT_NE(database.Open(), 0);
        CEPROPVAL property{};
        property.propid = key;
        property.val.lpwstr = name.data();
        const CEOID id = database.WriteRecord(0, 1, &property);
        EXPECT_NE(id, 0u);
        return id;
    }
};

TEST_F(DisplayRecordNames, CategoriesAreJoinedWithCommasAndContactsWithSemicolons)
{
    const CEOID work = AddCategory(L"Work");
    const CEOID home = AddCategory(L"Home");
    const CEOID ann = AddContact(L"Arden, Ann");
    const CEOID bob = AddContact(L"Bell, Bob");
    const DisplayRecord record =
        Formatted(TestRecord().Blob(kPropCategories, {2, work, home}).Blob(kPropContacts, {2, ann, bob}));
    EXPECT_EQ(Cell(record, kPropCategories), L"Home,Work");
    EXPECT_EQ(Cell(record, kPropContacts), L"Arden, Ann;Bell, Bob");
}

TEST_F(DisplayRecordNames, JoinedNamesAreBoundedTo119Characters)
{
    std::vector<DWORD> blob{4};
    std::wstring all;
    for (const wchar_t letter : {L'a', L'b', L'c', L'd'}) {
        blob.push_back(AddCategory(std::wstring(50, letter)));
        all += (all.empty() ? L"" : L",") + std::wstring(50, letter);
    }
    EXPECT_EQ(Cell(Formatted(TestRecord().Blob(kPropCategories, blob)), kPropCategories), all.substr(0, 119));
    const CEOID contact = AddContact(std::wstring(150, L'c'));
    EXPECT_EQ(Cell(Formatted(TestRecord().Blob(kPropContacts, {1, contact})), kPropContacts),
              std::wstring(119, L'c'));
}

TEST_F(DisplayRecordNames, BrokenBlobsNameWhatTheyHold)
{
    const CEOID work = AddCategory(L"Work");
    EXPECT_EQ(Cell(Formatted(TestRecord().Blob(kPropCategories, {1000, work})), kPropCategories), L"Work");
    EXPECT_EQ(Cell(Formatted(TestRecord().Blob(kPropCategories, {})), kPropCategories), L"");
    EXPECT_EQ(Cell(Formatted(TestRecord().Blob(kPropCategories, {1, 999'999})), kPropCategories), L"");
    EXPECT_EQ(Cell(Formatted(TestRecord().Blob(kPropContacts, {0xFFFFFFFF, 1, 2, 3})), kPropContacts), L"");
    CEPROPVAL nowhere{};
    nowhere.propid = kPropCategories;
    nowhere.val.blob = {8, nullptr};
    ValueTexts texts;
    EXPECT_EQ(Cell(FormatRecord(1, 1, &nowhere, texts), kPropCategories), L"");
}

} // namespace
