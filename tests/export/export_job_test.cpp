#include "export/export_job.h"

#include <gmock/gmock.h>

#include "export/export_fixture.h"

namespace {

class ExportJobTest : public ExportTest {
  protected:
    ExportJobTest() { Choose({102}); }

    static void FilterMonth(int month)
    {
        Own().Filter().active = true;
        Own().Filter().monthMask = 1u << (month - 1);
    }
    static CEOID AddIn(WORD month, const std::wstring& subject)
    {
        return TestRecord().Time(kPropDate, Instant(2000, month, 1)).Text(kPropSubject, subject).Write();
    }
    uint32_t CountFor(ExportScope scope, const std::vector<CEOID>& selection = {})
    {
        const ExportRequest request = Request(ExportFormat::CommaSeparated, false, scope, selection);
        return ExportJob(request, kByDate).EntryCount();
    }
};

TEST_F(ExportTest, GoldenRowsOfAllFields)
{
    AddGoldenEntries();
    EXPECT_EQ(Export(ExportFormat::CommaSeparated, true), Golden("all_fields.csv"));
    EXPECT_EQ(m_count, 7u);
}

TEST_F(ExportTest, GoldenRowsOfThreeFieldsWithoutAHeader)
{
    AddGoldenEntries();
    Choose({102, 103, 107});
    EXPECT_EQ(Export(ExportFormat::CommaSeparated, false), Golden("three_fields.csv"));
}

TEST_F(ExportTest, GoldenHeaderOfNoField)
{
    AddGoldenEntries();
    Choose({});
    EXPECT_EQ(Export(ExportFormat::CommaSeparated, true), Golden("no_fields.csv"));
    EXPECT_EQ(Export(ExportFormat::CommaSeparated, false), "");
    EXPECT_EQ(m_count, 7u);
}

TEST_F(ExportTest, GoldenTextWithLabels)
{
    AddGoldenEntries();
    EXPECT_EQ(Export(ExportFormat::SimpleText, true), Golden("labels.txt"));
    EXPECT_EQ(m_count, 7u);
}

TEST_F(ExportTest, GoldenTextWithoutLabels)
{
    AddGoldenEntries();
    EXPECT_EQ(Export(ExportFormat::SimpleText, false), Golden("plain.txt"));
}

TEST_F(ExportTest, TheTextHasAllFieldsWhicheverAreChosen)
{
    AddGoldenEntries();
    Choose({});
    EXPECT_EQ(Export(ExportFormat::SimpleText, true), Golden("labels.txt"));
}

TEST_F(ExportTest, AnExportChangesNothingInTheJournal)
{
    AddGoldenEntries();
    Export(ExportFormat::CommaSeparated, true);
    const std::string before = ReadFileBytes(m_store.Path());
    const std::string log = ReadFileBytes(m_store.Path() + L"-wal");
    Export(ExportFormat::SimpleText, true);
    EXPECT_EQ(ReadFileBytes(m_store.Path()), before);
    EXPECT_EQ(ReadFileBytes(m_store.Path() + L"-wal"), log);
}

TEST_F(ExportJobTest, AnEmptyJournalGivesTheHeaderAlone)
{
    EXPECT_EQ(Export(ExportFormat::CommaSeparated, true), "\"Subject\"\r\n");
    EXPECT_EQ(m_count, 0u);
    EXPECT_EQ(Export(ExportFormat::SimpleText, true), "") << "text has no header";
    EXPECT_EQ(CountFor(ExportScope::All), 0u);
}

TEST_F(ExportJobTest, AllFollowsTheSort)
{
    AddEntry(2, L"b");
    AddEntry(1, L"c");
    AddEntry(3, L"a");
    EXPECT_EQ(Export(ExportFormat::CommaSeparated, false), "\"c\"\r\n\"b\"\r\n\"a\"\r\n");
    const ExportRequest request = Request(ExportFormat::CommaSeparated, false);
    EXPECT_EQ(ExportJob(request, {kPropSubject, CEDB_SORT_DESCENDING}).Run([](uint32_t) { return true; }),
              3u);
    EXPECT_EQ(m_file.Bytes(), "\"c\"\r\n\"b\"\r\n\"a\"\r\n");
    EXPECT_EQ(ExportJob(request, {kPropDate, CEDB_SORT_DESCENDING}).Run([](uint32_t) { return true; }), 3u);
    EXPECT_EQ(m_file.Bytes(), "\"a\"\r\n\"b\"\r\n\"c\"\r\n");
}

TEST_F(ExportJobTest, SelectedFollowsTheOrderOfSelecting)
{
    const CEOID one = AddEntry(1, L"one"), two = AddEntry(2, L"two"), three = AddEntry(3, L"three");
    EXPECT_EQ(Export(ExportFormat::CommaSeparated, false, ExportScope::Selected, {three, one}),
              "\"three\"\r\n\"one\"\r\n");
    EXPECT_EQ(m_count, 2u);
    EXPECT_EQ(CountFor(ExportScope::Selected, {three, one}), 2u);
    FilterMonth(12);
    EXPECT_EQ(Export(ExportFormat::CommaSeparated, false, ExportScope::Selected, {two}), "\"two\"\r\n")
        << "the filter does not matter";
}

TEST_F(ExportJobTest, ASelectedEntryThatIsGoneIsPassedOver)
{
    const CEOID one = AddEntry(1, L"one"), two = AddEntry(2, L"two"), three = AddEntry(3, L"three");
    ASSERT_EQ(Own().Journal().DeleteRecord(two), 1);
    EXPECT_EQ(Export(ExportFormat::CommaSeparated, false, ExportScope::Selected, {one, two, three, 4711}),
              "\"one\"\r\n\"three\"\r\n");
    EXPECT_EQ(m_count, 2u);
}

TEST_F(ExportJobTest, FilteredWritesWhatPassesAndCountsWhatItLooksAt)
{
    for (int i = 0; i < 10; ++i)
        AddIn(i < 3 ? 5 : 6, std::to_wstring(i));
    FilterMonth(5);
    EXPECT_EQ(Export(ExportFormat::CommaSeparated, true, ExportScope::Filtered),
              "\"Subject\"\r\n\"0\"\r\n\"1\"\r\n\"2\"\r\n");
    EXPECT_EQ(m_count, 10u);
    EXPECT_EQ(CountFor(ExportScope::Filtered), 10u) << "what the bar goes up to";
    Export(ExportFormat::SimpleText, false, ExportScope::Filtered);
    EXPECT_EQ(m_count, 10u);
    EXPECT_EQ(m_file.Bytes(), "5/1/2000 12:00 AM\r\nNormal\r\nNormal\r\n0\r\n\r\n\r\n"
                              "5/1/2000 12:00 AM\r\nNormal\r\nNormal\r\n1\r\n\r\n\r\n"
                              "5/1/2000 12:00 AM\r\nNormal\r\nNormal\r\n2\r\n\r\n\r\n");
}

TEST_F(ExportJobTest, AllIsAllUnderAFilterToo)
{
    AddIn(5, L"five");
    AddIn(6, L"six");
    FilterMonth(5);
    EXPECT_EQ(Export(ExportFormat::CommaSeparated, false), "\"five\"\r\n\"six\"\r\n");
}

TEST_F(ExportJobTest, TheCountGrowsEntryByEntry)
{
    AddIn(5, L"five");
    AddIn(6, L"six");
    AddIn(7, L"seven");
    FilterMonth(6);
    for (const ExportScope scope : {ExportScope::All, ExportScope::Filtered}) {
        const ExportRequest request = Request(ExportFormat::CommaSeparated, false, scope);
        std::vector<uint32_t> counts;
        ExportJob(request, kByDate).Run([&](uint32_t count) {
            counts.push_back(count);
            return true;
        });
        EXPECT_EQ(counts, (std::vector<uint32_t>{1, 2, 3}));
    }
}

TEST_F(ExportJobTest, AStopComesBehindAWholeEntry)
{
    AddGoldenEntries();
    Choose({102, 103});
    ASSERT_TRUE(WriteFileBytes(m_file.Path(), std::string(500, 'x')));
    const ExportRequest request = Request(ExportFormat::CommaSeparated, true);
    EXPECT_EQ(ExportJob(request, kByDate).Run([](uint32_t count) { return count < 2; }), 2u);
    EXPECT_EQ(m_file.Bytes(), "\"Subject\",\"Body\"\r\n\"\",\"\"Meeting\",\"Agreed terms\"\r\n")
        << "the longer file is cut there";
}

TEST_F(ExportJobTest, TheListMayReadTheJournalMeanwhile)
{
    AddEntries(5);
    const ExportRequest request = Request(ExportFormat::CommaSeparated, false);
    ExportJob(request, kByDate).Run([&](uint32_t) {
        EXPECT_NE(Own().Journal().SeekRow(0), 0u);
        Own().Journal().SetSort({kPropSubject, CEDB_SORT_DESCENDING}, 1);
        return true;
    });
    EXPECT_EQ(m_file.Bytes(), "\"entry 0\"\r\n\"entry 1\"\r\n\"entry 2\"\r\n\"entry 3\"\r\n\"entry 4\"\r\n");
}

TEST_F(ExportJobTest, AnEntryDeletedMeanwhileIsPassedOver)
{
    const std::vector<CEOID> ids = AddEntries(4);
    const ExportRequest request = Request(ExportFormat::CommaSeparated, false);
    EXPECT_EQ(ExportJob(request, kByDate).Run([&](uint32_t count) {
        if (count == 2) {
            EXPECT_EQ(Own().Journal().DeleteRecord(ids[1]), 1);
            EXPECT_EQ(Own().Journal().DeleteRecord(ids[2]), 1);
        }
        return true;
    }),
              3u);
    EXPECT_EQ(m_file.Bytes(), "\"entry 0\"\r\n\"entry 1\"\r\n\"entry 3\"\r\n");
}

TEST_F(ExportJobTest, AnEntryThatCannotBeReadIsPassedOver)
{
    AddEntry(1, L"one");
    TestRecord().Time(kPropDate, Instant(2000, 2, 1)).Text(kPropSubject, std::wstring(60'000, L'x')).Write();
    TestRecord().Time(kPropDate, Instant(2000, 3, 1)).Text(kPropSubject, L"three").Write();
    const NoMemoryFor noMemory(50'000);
    for (const ExportScope scope : {ExportScope::All, ExportScope::Filtered}) {
        EXPECT_EQ(Export(ExportFormat::CommaSeparated, false, scope), "\"one\"\r\n\"three\"\r\n");
        EXPECT_EQ(m_count, 2u);
    }
}

TEST_F(ExportJobTest, AFileThatCannotBeOpenedRunsThrough)
{
    AddEntries(3);
    ExportRequest request = Request(ExportFormat::SimpleText, true);
    request.path = L"C:\\no such folder\\export.txt";
    EXPECT_EQ(ExportJob(request, kByDate).Run([](uint32_t) { return true; }), 3u);
}

TEST_F(ExportJobTest, TheJournalsOwnFileIsNoFileToWriteTo)
{
    AddEntries(3);
    ExportRequest request = Request(ExportFormat::SimpleText, true);
    request.path = m_store.Path();
    const std::string before = ReadFileBytes(m_store.Path());
    EXPECT_EQ(ExportJob(request, kByDate).Run([](uint32_t) { return true; }), 3u);
    EXPECT_EQ(ReadFileBytes(m_store.Path()), before);
}

TEST_F(ExportJobTest, FailedWritesRunThrough)
{
    AddEntries(3);
    PieceWatch watch;
    watch.failFrom = 2;
    EXPECT_EQ(Export(ExportFormat::CommaSeparated, false), "\"entry 0");
    EXPECT_EQ(m_count, 3u);
    EXPECT_EQ(watch.Pieces().size(), 9u) << "each piece is tried";
}

TEST_F(ExportJobTest, ABodyOfAMillionCharactersIsWhole)
{
    Choose({103});
    TestRecord().Text(kPropBody, std::wstring(1'000'000, L'\u00E9')).Write();
    const std::string body(1'000'000, '\xE9');
    EXPECT_EQ(Export(ExportFormat::CommaSeparated, false), "\"" + body + "\"\r\n");
    EXPECT_EQ(Export(ExportFormat::SimpleText, false), "Normal\r\nNormal\r\n" + body + "\r\n\r\n\r\n\r\n");
}

TEST_F(ExportJobTest, EveryRecordIsSeenBeyondTheCountsLimit)
{
    constexpr uint32_t kMany = 65'600;
    Choose({});
    {
        CeDBase::BulkScope bulk(Own().Journal());
        CEPROPVAL kind{};
        kind.propid = kPropKind;
        for (uint32_t i = 0; i < kMany; ++i)
            ASSERT_NE(Own().Journal().WriteRecord(0, 1, &kind), 0u);
        ASSERT_EQ(bulk.Commit(), 1);
    }
    EXPECT_EQ(CountFor(ExportScope::All), kMany);
    EXPECT_EQ(CountFor(ExportScope::Filtered), kMany);
    Export(ExportFormat::CommaSeparated, false);
    EXPECT_EQ(m_count, kMany);
}

// The entries of the filter's month are the last of all.
TEST_F(ExportJobTest, AFilterSeesWhatLiesBeyondTheCountsLimit)
{
    constexpr int kMany = 65'600;
    AddEntries(kMany);
    std::string expected;
    for (int i = 100; i < 110; ++i) {
        AddIn(5, L"May " + std::to_wstring(i));
        expected += "\"May " + std::to_string(i) + "\"\r\n";
    }
    FilterMonth(5);
    const std::string written = Export(ExportFormat::CommaSeparated, false, ExportScope::Filtered);
    EXPECT_TRUE(written == expected) << written.substr(0, 200);
    EXPECT_EQ(m_count, uint32_t{kMany} + 10) << "those that were looked at";
}

TEST_F(ExportJobTest, TheCountIsRightForEverySize)
{
    for (uint32_t i = 0; i < 20; ++i) {
        EXPECT_EQ(CountFor(ExportScope::All), i);
        AddEntry(static_cast<int>(i), L"x");
    }
}

} // namespace
