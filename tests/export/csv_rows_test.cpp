#include "export/csv_rows.h"

#include "export/export_fixture.h"

namespace {

using Pieces = std::vector<std::string>;

class CsvRowsTest : public ExportTest {
  protected:
    std::string Row(const TestRecord& record)
    {
        {
            PieceWriter file(m_file.Path());
            ValueTexts texts;
            WriteEntryRow(m_columns, {record.Count(), record.Properties()}, texts, file);
        }
        return m_file.Bytes();
    }
    std::string Header()
    {
        {
            PieceWriter file(m_file.Path());
            ValueTexts texts;
            WriteHeaderRow(m_columns, file);
        }
        return m_file.Bytes();
    }
    std::string ValueOf(CEPROPID id, const TestRecord& record)
    {
        Choose({PropertyNumber(id)});
        return Row(record);
    }
};

TEST_F(CsvRowsTest, TheHeaderNamesTheChosenColumns)
{
    EXPECT_EQ(Header(), "\"Date\",\"Subject\",\"Body\",\"Categories\",\"Type\",\"Priority\",\"Sensitivity\","
                        "\"End Time\",\"Duration\",\"Contacts\"\r\n");
    Choose({103, 110});
    EXPECT_EQ(Header(), "\"Body\",\"Duration\"\r\n");
    Choose({107});
    EXPECT_EQ(Header(), "\"Priority\"\r\n");
}

TEST_F(CsvRowsTest, TheHeaderEndsItsRowWithoutAColumn)
{
    Choose({});
    EXPECT_EQ(Header(), "\"\r\n");
}

TEST_F(CsvRowsTest, FieldsStandInTheOrderOfTheColumns)
{
    MoveColumn(&m_columns, FindColumnByProperty(m_columns, 110), 0);
    Choose({101, 102, 110});
    EXPECT_EQ(Header(), "\"Duration\",\"Date\",\"Subject\"\r\n");
    TestRecord record;
    record.Text(kPropSubject, L"S").Time(kPropDate, Instant(2000, 3, 5, 9, 30));
    record.Time(kPropDuration, TimeCount());
    EXPECT_EQ(Row(record), "\"0 minutes\",\"3/5/2000 9:30 AM\",\"S\"\r\n");
}

TEST_F(CsvRowsTest, WhatIsNeverOfferedIsNeverWritten)
{
    Choose({101, 102, 106});
    m_columns.columns[1].Add(kColumnNeverOffered);
    EXPECT_EQ(Header(), "\"Date\"\r\n");
    TestRecord record;
    record.Text(kPropSubject, L"S").Short(kPropKind, 3).Time(kPropDate, Instant(2000, 3, 5));
    EXPECT_EQ(Row(record), "\"3/5/2000 12:00 AM\"\r\n");
}

TEST_F(CsvRowsTest, AnEntryWithoutAChosenFieldLeavesTheRowOpen)
{
    Choose({102, 103, 107});
    TestRecord record;
    record.Time(kPropDate, Instant(2000, 3, 5));
    EXPECT_EQ(Row(record), "\"\",\"\",\"");
    record.Missing(kPropSubject);
    EXPECT_EQ(Row(record), "\"\",\"\",\"") << "one that was asked for and is not there";
    Choose({});
    EXPECT_EQ(Row(record), "");
}

TEST_F(CsvRowsTest, AFieldWithoutAValueEndsTheRow)
{
    Choose({102, 103, 104});
    EXPECT_EQ(Row(TestRecord().Text(kPropBody, L"")), "\"\",\"\",\"\"\r\n");
    EXPECT_EQ(Row(TestRecord().Blob(kPropCategories, {0})), "\"\",\"\",\"\"\r\n");
    CEPROPVAL noText{};
    noText.propid = kPropSubject;
    {
        PieceWriter file(m_file.Path());
        ValueTexts texts;
        WriteEntryRow(m_columns, {1, &noText}, texts, file);
    }
    EXPECT_EQ(m_file.Bytes(), "\"\",\"\",\"\"\r\n") << "the property is there, its text is not";
}

TEST_F(CsvRowsTest, PriorityAndSensitivityAreEmptyWhereTheyAreAbsent)
{
    Choose({102, 107, 108});
    EXPECT_EQ(Row(TestRecord().Text(kPropSubject, L"S")), "\"S\",\"\",\"\"\r\n");
    EXPECT_EQ(Row(TestRecord().Short(kPropPriority, 2).Short(kPropSensitivity, 3)),
              "\"\",\"High\",\"Confidential\"\r\n");
    EXPECT_EQ(Row(TestRecord().Short(kPropPriority, 3).Short(kPropSensitivity, -1)),
              "\"\",\"Normal\",\"Normal\"\r\n");
}

TEST_F(CsvRowsTest, NothingInsideAValueIsEscaped)
{
    EXPECT_EQ(ValueOf(kPropSubject, std::move(TestRecord().Text(kPropSubject, L"a \"b\", c"))),
              "\"a \"b\", c\"\r\n");
    EXPECT_EQ(ValueOf(kPropBody, std::move(TestRecord().Text(kPropBody, L"a\r\nb\r\n"))),
              "\"a\r\nb\r\n\"\r\n");
}

TEST_F(CsvRowsTest, ValuesReadAsInTheText)
{
    const CEOID work = AddCategory(L"Work"), home = AddCategory(L"Home");
    const CEOID bob = AddContact(L"Bell, Bob"), ann = AddContact(L"Arden, Ann");
    TestRecord record;
    record.Blob(kPropCategories, {2, work, home}).Blob(kPropContacts, {2, bob, ann}).Text(kPropType, L"Fax");
    record.Time(kPropEndTime, Instant(2002, 1, 1, 0, 44)).Time(kPropDate, TimeCount(UINT64_MAX));
    record.Time(kPropDuration, TimeCount(90 * TimeCount::kUnitsPerMinute));
    EXPECT_EQ(Row(record), "\"\",\"\",\"\",\"Home,Work\",\"Fax\",\"\",\"\",\"1/1/2002 12:44 AM\","
                           "\"1 hour 30 min\",\"Arden, Ann;Bell, Bob\"\r\n");
}

TEST_F(CsvRowsTest, SeparatorsAndValuesAreEachAPiece)
{
    Choose({101, 102, 103});
    PieceWatch watch;
    Row(TestRecord().Text(kPropSubject, L"S"));
    Header();
    EXPECT_EQ(watch.Pieces(), (Pieces{"\"", "\",\"", "S", "\",\"", "\"\r\n", "\"", "Date", "\",\"", "Subject",
                                      "\",\"", "Body", "\"\r\n"}));
    EXPECT_TRUE(watch.IsEachFlushed());
}

TEST_F(CsvRowsTest, AValueWithoutMemoryIsLeftOut)
{
    Choose({102, 103, 105});
    TestRecord record;
    record.Text(kPropSubject, L"S").Text(kPropBody, std::wstring(60'000, L'x')).Text(kPropType, L"T");
    const NoMemoryFor noMemory(50'000);
    EXPECT_EQ(Row(record), "\"S\",\"\",\"T\"\r\n");
    Choose({103});
    EXPECT_EQ(Row(record), "\"\"\r\n") << "the entry has the field";
}

} // namespace
