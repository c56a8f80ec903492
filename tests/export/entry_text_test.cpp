#include "export/entry_text.h"

#include "export/export_fixture.h"
#include "mervane/db_categories.h"

namespace {

using Pieces = std::vector<std::string>;

class EntryTextTest : public ExportTest {
  protected:
    std::string Text(const TestRecord& record, bool withLabels = true)
    {
        {
            PieceWriter file(m_file.Path());
            ValueTexts texts;
            WriteEntryText({record.Count(), record.Properties()}, withLabels, texts, file);
        }
        return m_file.Bytes();
    }
};

constexpr const char* kDefaults = "Priority: Normal\r\nSensitivity: Normal\r\n";

std::string WithDefaults(const std::string& before, const std::string& behind)
{
    return before + kDefaults + behind + "\r\n\r\n";
}

TEST_F(EntryTextTest, AnEntryOfADateOnly)
{
    const TestRecord record = std::move(TestRecord().Time(kPropDate, Instant(2000, 3, 5, 9, 30)));
    EXPECT_EQ(Text(record), WithDefaults("Date: 3/5/2000 9:30 AM\r\n", ""));
    EXPECT_EQ(Text(record, false), "3/5/2000 9:30 AM\r\nNormal\r\nNormal\r\n\r\n\r\n");
}

TEST_F(EntryTextTest, AnOrdinaryEntry)
{
    const CEOID work = AddCategory(L"Work");
    TestRecord record;
    record.Time(kPropDate, Instant(2000, 3, 5, 9, 30));
    record.Time(kPropDuration, TimeCount(90 * TimeCount::kUnitsPerMinute));
    record.Short(kPropPriority, 1).Short(kPropSensitivity, 1).Text(kPropSubject, L"Meeting");
    record.Text(kPropType, L"Phone call").Text(kPropBody, L"Agreed terms").Blob(kPropCategories, {1, work});
    EXPECT_EQ(Text(record), "Date: 3/5/2000 9:30 AM\r\n"
                            "Duration: 1 hour 30 min\r\n"
                            "Priority: Normal\r\n"
                            "Sensitivity: Personal\r\n"
                            "Subject: Meeting\r\n"
                            "Type: Phone call\r\n"
                            "\r\n"
                            "Entry:\r\n"
                            "Agreed terms\r\n"
                            "\r\n"
                            "Assigned Categories:\r\n"
                            "Work\r\n"
                            "\r\n"
                            "\r\n");
}

TEST_F(EntryTextTest, AnEntryWithoutPropertiesHasItsWords)
{
    EXPECT_EQ(Text(TestRecord()), WithDefaults("", ""));
    EXPECT_EQ(Text(TestRecord(), false), "Normal\r\nNormal\r\n\r\n\r\n");
}

TEST_F(EntryTextTest, LinesComeInTheirOwnOrder)
{
    TestRecord record;
    record.Blob(kPropContacts, {0}).Blob(kPropCategories, {0}).Text(kPropBody, L"B").Text(kPropType, L"T");
    record.Text(kPropSubject, L"S").Short(kPropSensitivity, 2).Short(kPropPriority, 0);
    record.Time(kPropDuration, TimeCount(TimeCount::kUnitsPerMinute));
    record.Time(kPropEndTime, Instant(2001, 1, 1)).Time(kPropDate, Instant(2002, 2, 2));
    EXPECT_EQ(Text(record), "Date: 2/2/2002 12:00 AM\r\nEnd Date: 1/1/2001 12:00 AM\r\n"
                            "Duration: 1 minute\r\nPriority: Low\r\nSensitivity: Private\r\n"
                            "Subject: S\r\nType: T\r\n\r\nEntry:\r\nB\r\n\r\n"
                            "Assigned Categories:\r\n\r\nAssigned Contacts:\r\n\r\n\r\n\r\n");
}

TEST_F(EntryTextTest, EveryPriorityAndSensitivityHasAWord)
{
    const char* priorities[] = {"Low", "Normal", "High", "Normal", "Normal", "Normal"};
    const char* sensitivities[] = {"Normal", "Personal", "Private", "Confidential", "Normal", "Normal"};
    const short codes[] = {0, 1, 2, 3, 4, -1};
    for (size_t i = 0; i < std::size(codes); ++i) {
        TestRecord record;
        record.Short(kPropPriority, codes[i]).Short(kPropSensitivity, codes[i]);
        EXPECT_EQ(Text(record), "Priority: " + std::string(priorities[i]) +
                                    "\r\nSensitivity: " + sensitivities[i] + "\r\n\r\n\r\n");
    }
}

TEST_F(EntryTextTest, AnEmptyTextHasItsLine)
{
    TestRecord record;
    record.Text(kPropSubject, L"").Text(kPropType, L"").Text(kPropBody, L"");
    EXPECT_EQ(Text(record), WithDefaults("", "Subject: \r\nType: \r\n\r\nEntry:\r\n\r\n\r\n"));
    EXPECT_EQ(Text(record, false), "Normal\r\nNormal\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n");
}

TEST_F(EntryTextTest, APropertyWithoutATextHasNone)
{
    TestRecord record;
    record.Text(kPropSubject, L"").Text(kPropType, L"").Text(kPropBody, L"");
    std::vector<CEPROPVAL> properties(record.Properties(), record.Properties() + record.Count());
    for (CEPROPVAL& property : properties)
        property.val.lpwstr = nullptr;
    {
        PieceWriter file(m_file.Path());
        ValueTexts texts;
        WriteEntryText({3, properties.data()}, true, texts, file);
    }
    EXPECT_EQ(m_file.Bytes(), WithDefaults("", ""));
}

TEST_F(EntryTextTest, WhatIsNotFoundAndWhatIsUnknownHasNoLine)
{
    TestRecord record;
    for (const CEPROPID id : {kPropDate, kPropEndTime, kPropDuration, kPropPriority, kPropSensitivity,
                              kPropSubject, kPropType, kPropBody, kPropCategories, kPropContacts})
        record.Missing(id);
    record.Short(kPropKind, 3).Text(0x0065001F, L"a date of another type").Text(0x0070001F, L"unknown");
    EXPECT_EQ(Text(record), WithDefaults("", ""));
}

TEST_F(EntryTextTest, ABodyIsWrittenAsItIs)
{
    TestRecord record;
    record.Text(kPropBody, L"One\r\n\r\n  two\n\"three\"\tfour\r\n");
    EXPECT_EQ(Text(record), WithDefaults("", "Entry:\r\nOne\r\n\r\n  two\n\"three\"\tfour\r\n\r\n\r\n"));
}

TEST_F(EntryTextTest, NamesAreJoinedInTheirOrder)
{
    const CEOID work = AddCategory(L"Work"), home = AddCategory(L"Home");
    const CEOID bob = AddContact(L"Bell, Bob"), ann = AddContact(L"Arden, Ann");
    TestRecord record;
    record.Blob(kPropCategories, {2, work, home}).Blob(kPropContacts, {2, bob, ann});
    EXPECT_EQ(Text(record), WithDefaults("", "Assigned Categories:\r\nHome,Work\r\n"
                                             "Assigned Contacts:\r\nArden, Ann;Bell, Bob\r\n"));
    EXPECT_EQ(Text(record, false), "Normal\r\nNormal\r\nHome,Work\r\nArden, Ann;Bell, Bob\r\n\r\n\r\n");
}

TEST_F(EntryTextTest, BlobsThatNameNobodyHaveTheirLine)
{
    TestRecord record;
    record.Blob(kPropCategories, {0xFFFFFFFF, 4711}).Blob(kPropContacts, {});
    const std::string expected = WithDefaults("", "Assigned Categories:\r\n\r\nAssigned Contacts:\r\n\r\n");
    EXPECT_EQ(Text(record), expected);
}

TEST_F(EntryTextTest, NamesThatCannotBeReadHaveTheirLine)
{
    const CEOID work = AddCategory(L"Work");
    TestRecord record;
    record.Blob(kPropCategories, {1, work}).Blob(kPropContacts, {0});
    Own().Journal().Close();
    SetEnvironmentVariableW(L"MERVANE_STORE", L"C:\\windows");
    EXPECT_FALSE(DbCategories().Open());
    EXPECT_EQ(Text(record), WithDefaults("", "Assigned Categories:\r\n\r\nAssigned Contacts:\r\n\r\n"));
    SetEnvironmentVariableW(L"MERVANE_STORE", m_store.Path().c_str());
}

TEST_F(EntryTextTest, TimesThatAreNoDatesAreEmpty)
{
    TestRecord record;
    for (const CEPROPID id : {kPropDate, kPropEndTime, kPropDuration})
        record.Time(id, TimeCount(UINT64_MAX));
    EXPECT_EQ(Text(record), WithDefaults("Date: \r\nEnd Date: \r\nDuration: 0 minutes\r\n", ""));
}

TEST_F(EntryTextTest, LabelsValuesAndLineEndsAreEachAPiece)
{
    TestRecord record;
    record.Time(kPropDate, Instant(2000, 3, 5, 9, 30)).Text(kPropType, L"Fax").Text(kPropBody, L"Text");
    PieceWatch watch;
    Text(record);
    EXPECT_EQ(watch.Pieces(), (Pieces{"Date: ", "3/5/2000 9:30 AM", "\r\n", "Priority: ", "Normal", "\r\n",
                                      "Sensitivity: ", "Normal", "\r\n", "Type: ", "Fax", "\r\n\r\n",
                                      "Entry:\r\n", "Text", "\r\n\r\n", "\r\n\r\n"}));
    EXPECT_TRUE(watch.IsEachFlushed());
}

TEST_F(EntryTextTest, ATextWithoutMemoryEndsTheBlock)
{
    TestRecord record;
    record.Text(kPropSubject, L"Subject").Text(kPropType, L"Fax").Text(kPropBody, std::wstring(60'000, L'x'));
    record.Blob(kPropCategories, {0});
    const NoMemoryFor noMemory(50'000);
    EXPECT_EQ(Text(record), std::string(kDefaults) + "Subject: Subject\r\nType: Fax\r\n\r\nEntry:\r\n");
}

TEST_F(EntryTextTest, OfAPropertyThatComesTwiceTheLastCounts)
{
    TestRecord record;
    record.Text(kPropSubject, L"first").Text(kPropSubject, L"last");
    EXPECT_EQ(Text(record), WithDefaults("", "Subject: last\r\n"));
}

} // namespace
