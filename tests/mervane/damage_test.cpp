// Stores with broken content: no crash, reads skip what cannot be read, writes answer 0.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "records.h"
#include "support/test_store.h"

namespace {

constexpr size_t kPageSize = 4096;

class Damaged : public testing::Test {
  protected:
    void SetUp() override
    {
        {
            DbJournal journal;
            DbCategories categories;
            DbContacts contacts;
            ASSERT_EQ(journal.Open(nullptr), 1);
            ASSERT_EQ(categories.Open(), 1);
            ASSERT_EQ(contacts.Open(), 1);
            CeDBase::BulkScope bulk(journal);
            for (int i = 0; i < 5; ++i)
                ASSERT_NE(AddCategory(categories, L"c" + std::to_wstring(i)), 0u);
            ASSERT_NE(AddContact(contacts, L"contact"), 0u);
            for (uint64_t i = 0; i < kEntries; ++i)
                ASSERT_NE(Sent()
                              .Time(kDate, i * 1000)
                              .Text(kSubject, L"subject " + std::to_wstring(i))
                              .Text(kBody, std::wstring(300 + i * 7, L'b'))
                              .Ids(kCategories, {1 + static_cast<DWORD>(i % 5)})
                              .Write(journal),
                          0u);
            ASSERT_EQ(bulk.Commit(), 1);
        }
        m_good = ReadFileBytes(m_store.Path());
        ASSERT_GT(m_good.size(), 10 * kPageSize);
    }

    size_t PageOf(const std::string& name)
    {
        return static_cast<size_t>(
            RawStore(m_store.Path())
                .Integer("SELECT rootpage FROM sqlite_schema WHERE name = '" + name + "'"));
    }
    void Put(const std::string& bytes) const
    {
        for (const wchar_t* suffix : {L"-wal", L"-shm"})
            DeleteFileW((m_store.Path() + suffix).c_str());
        ASSERT_TRUE(WriteFileBytes(m_store.Path(), bytes));
    }
    std::string WithPage(size_t page, char content) const
    {
        std::string bytes = m_good;
        std::fill_n(bytes.begin() + static_cast<int>((page - 1) * kPageSize), kPageSize, content);
        return bytes;
    }

    // Everything that can be asked of a store, of which nothing may crash.
    static void UseAll()
    {
        DbJournal journal;
        if (!journal.Open(nullptr))
            return;
        for (const CEPROPID property : {kDate, kSubject, kPriority, kCategories}) {
            journal.SetSort({property, CEDB_SORT_DESCENDING}, 1);
            const CeDBase::ReadScope scope(journal);
            (void)journal.RecordCount();
            for (const CEOID id : Rows(journal)) {
                (void)journal.RowOf(id);
                (void)journal.GetSubject(id);
            }
            for (const CEOID id : Walk(journal))
                (void)id;
        }
        DbCategories categories;
        if (categories.Open()) {
            (void)JoinedNames(categories, {5, 1, 2, 3, 4, 5}, L',');
            (void)categories.GetNumActiveRecords();
            (void)categories.IncUse(1);
            (void)AddCategory(categories, L"new");
        }
        (void)AddEntry(journal, L"new", 5);
        (void)Sent().Time(kDate, 9).Write(journal, 3);
        (void)journal.DeleteRecord(4);
    }

    static constexpr uint64_t kEntries = 200;
    TestStore m_store;
    std::string m_good;
};

TEST_F(Damaged, IndexLeavesTheTableReadable)
{
    const size_t root = PageOf("journal_numbers");
    for (const char content : {'\0', '\xFF', 'x'}) {
        Put(WithPage(root, content));
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        EXPECT_EQ(journal.RecordCount(), kEntries);
        EXPECT_EQ(Walk(journal).size(), kEntries);
        EXPECT_STREQ(journal.GetSubject(7), L"subject 6");
        journal.SetSort({kPriority, 0}, 1);
        EXPECT_EQ(Rows(journal).size(), kEntries);
        // A write that the index needs is refused, and the record is as it was.
        EXPECT_EQ(Sent().Time(kDate, 5).Text(kSubject, L"new").Write(journal, 7), 0u);
        EXPECT_STREQ(journal.GetSubject(7), L"subject 6");
        EXPECT_EQ(AddEntry(journal, L"new"), 0u);
        EXPECT_EQ(journal.RecordCount(), kEntries);
    }
}

TEST_F(Damaged, LeafLosesItsOwnRecordsOnly)
{
    // A leaf in the middle of the table, by what it holds.
    const size_t at = m_good.find("subject 100");
    ASSERT_NE(at, std::string::npos);
    Put(WithPage(at / kPageSize + 1, '\0'));
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    EXPECT_EQ(journal.RecordCount(), kEntries) << "the index knows them";
    size_t read = 0;
    {
        const CeDBase::ReadScope scope(journal);
        for (int found = journal.SeekFirstRecord(); found; found = journal.SeekNextRecord())
            read += Received(journal).Id() != 0;
    }
    EXPECT_GT(read, kEntries - 10);
    EXPECT_LT(read, kEntries);
    EXPECT_EQ(journal.SeekRecord(101), 0u);
    EXPECT_STREQ(journal.GetSubject(1), L"subject 0");
    EXPECT_STREQ(journal.GetSubject(200), L"subject 199");
    // A sort that needs the table finds the records on both sides; those that cannot be read come last.
    journal.SetSort({kSubject, 0}, 1);
    const std::vector<CEOID> rows = Rows(journal);
    EXPECT_EQ(rows.size(), kEntries);
    std::vector<std::wstring> subjects;
    for (const CEOID id : rows)
        subjects.emplace_back(journal.GetSubject(id));
    EXPECT_EQ(std::count(subjects.begin(), subjects.end(), L""), static_cast<int>(kEntries - read));
    EXPECT_EQ(std::find(subjects.begin(), subjects.end(), L"") - subjects.begin(), static_cast<int>(read));
    EXPECT_TRUE(std::is_sorted(subjects.begin(), subjects.begin() + static_cast<int>(read)));
    EXPECT_EQ(std::count(subjects.begin(), subjects.end(), L"subject 199"), 1);
}

TEST_F(Damaged, TableAndIndexTogether)
{
    const size_t at = m_good.find("subject 100");
    std::string bytes = WithPage(at / kPageSize + 1, '\0');
    const size_t index = PageOf("journal_numbers");
    std::fill_n(bytes.begin() + static_cast<int>((index - 1) * kPageSize), kPageSize, '\0');
    Put(bytes);
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    const std::vector<CEOID> rows = Rows(journal);
    EXPECT_GT(rows.size(), kEntries - 10);
    EXPECT_LT(rows.size(), kEntries);
    EXPECT_EQ(rows.front(), 1u);
    EXPECT_EQ(rows.back(), 200u);
    for (const CEOID id : rows)
        EXPECT_EQ(journal.SeekRecord(id), id);
    // What may be among the missing is not known to be gone; what the table itself does not have is.
    EXPECT_EQ(journal.RowOf(101), -1);
    EXPECT_EQ(journal.Trouble(), StoreTrouble::Damaged);
    EXPECT_EQ(journal.RowOf(kEntries + 1), -1);
    EXPECT_EQ(journal.Trouble(), StoreTrouble::None);
}

TEST_F(Damaged, EachPageInTurn)
{
    for (size_t page = 1; page <= m_good.size() / kPageSize; ++page)
        for (const char content : {'\0', '\xFF'}) {
            Put(WithPage(page, content));
            UseAll();
        }
}

TEST_F(Damaged, HeadersOfPages)
{
    std::mt19937 random(1);
    for (int round = 0; round < 100; ++round) {
        std::string bytes = m_good;
        const size_t page = static_cast<size_t>(random()) % (bytes.size() / kPageSize);
        const size_t start = page * kPageSize + (page == 0 ? 100 : 0);
        for (int i = 0; i < 3; ++i)
            bytes[start + static_cast<size_t>(random()) % 40] = static_cast<char>(random());
        Put(bytes);
        UseAll();
    }
}

TEST_F(Damaged, BytesAnywhere)
{
    std::mt19937 random(2);
    for (int round = 0; round < 60; ++round) {
        std::string bytes = m_good;
        for (int i = 0; i < 100; ++i)
            bytes[100 + static_cast<size_t>(random()) % (bytes.size() - 100)] = static_cast<char>(random());
        Put(bytes);
        UseAll();
    }
}

TEST_F(Damaged, FilesThatWereCut)
{
    for (size_t size = 100; size < m_good.size(); size += m_good.size() / 23) {
        Put(m_good.substr(0, size));
        UseAll();
    }
}

TEST_F(Damaged, HeaderFieldsOfTheFile)
{
    for (size_t offset = 16; offset < 100; ++offset)
        for (const char content : {'\x01', '\xFF'}) {
            std::string bytes = m_good;
            bytes[offset] = content;
            Put(bytes);
            UseAll();
        }
}

TEST_F(Damaged, CellsOfOddKinds)
{
    Put(m_good);
    {
        RawStore raw(m_store.Path());
        ASSERT_TRUE(raw.Run(
            "UPDATE journal SET date = CASE oid % 5 WHEN 0 THEN 'x' WHEN 1 THEN x'00' WHEN 2 THEN 1.5 "
            "WHEN 3 THEN NULL ELSE -1 END, subject = CASE oid % 3 WHEN 0 THEN x'FF' WHEN 1 THEN "
            "CAST(x'FFFEC0' AS TEXT) ELSE '' END, categories = CASE oid % 3 WHEN 0 THEN 'text' WHEN 1 "
            "THEN x'FFFFFFFF01' ELSE zeroblob(3) END, priority = 99999"));
        ASSERT_TRUE(
            raw.Run("UPDATE categories SET name = CAST(x'C3' AS TEXT) || oid, uses = x'00', hidden = 'yes'"));
    }
    UseAll();
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    EXPECT_EQ(journal.RecordCount(), kEntries) << "one new, one deleted";
}

} // namespace
