// Sort keys that are longer than usual, and more of them than are kept.
#include <gtest/gtest.h>

#include <algorithm>

#include "mervane/values/sort_key.h"
#include "records.h"
#include "statement_log.h"
#include "support/test_store.h"

namespace {

// A letter whose keys are so long that there is more than four bytes and some for each of it.
wchar_t LongLetter()
{
    constexpr DWORD kKey = LCMAP_SORTKEY | NORM_IGNORECASE;
    constexpr int kLength = 1000;
    for (wchar_t letter = 0x00C0; letter < 0xD800; ++letter) {
        const std::wstring text(kLength, letter);
        if (LCMapStringW(LOCALE_USER_DEFAULT, kKey, text.c_str(), kLength, nullptr, 0) > 6 * kLength)
            return letter;
    }
    return 0;
}

TEST(SortKeys, AreWholeHoweverMuchOneLetterTakes)
{
    const wchar_t letter = LongLetter();
    ASSERT_NE(letter, 0);
    const std::wstring text(1000, letter);
    mervane::SortKeyMaker maker;
    const std::string a(maker.Make(text + L"a")), b(maker.Make(text + L"b"));
    EXPECT_GT(a.size(), 6000u);
    EXPECT_LT(a, b);
    EXPECT_LT(std::string(maker.Make(text.substr(1))), a);
    EXPECT_EQ(std::string(maker.Make(text + L"A")), a);
    EXPECT_EQ(std::string(maker.Make(L"a")), std::string(mervane::SortKeyMaker().Make(L"A")));
    EXPECT_TRUE(maker.Make(L"").empty());
}

// Of contacts 1 MiB of keys is kept, and of one key 16 KiB at most.
class KeptSortKeys : public testing::Test {
  protected:
    static constexpr int kContacts = 120;

    void SetUp() override { ASSERT_EQ(m_contacts.Open(), 1); }

    // Texts of the same beginning, so long that a hundred of their keys are more than is kept.
    static std::wstring Text(wchar_t beginning, int number)
    {
        return std::wstring(9000, beginning) + static_cast<wchar_t>(L'a' + number / 20) +
               static_cast<wchar_t>(L'a' + number % 20);
    }
    CEOID Add(int fileAs, int company)
    {
        const CEOID id = Sent()
                             .Text(kContactsKey, Text(L'f', fileAs))
                             .Text(kContactCompany, Text(L'c', company))
                             .Write(m_contacts);
        EXPECT_NE(id, 0u);
        return id;
    }
    // The numbers rise in one order and fall in the other.
    void AddAll()
    {
        CeDBase::BulkScope bulk(m_contacts);
        for (int i = 0; i < kContacts; ++i)
            m_ids.push_back(Add(i, kContacts - i));
        ASSERT_EQ(bulk.Commit(), 1);
    }
    std::vector<CEOID> Falling() const { return {m_ids.rbegin(), m_ids.rend()}; }
    // How often the whole column is read while it is sorted.
    int ReadsOfSort(CEPROPID property, const std::string& column)
    {
        m_log.Take();
        m_contacts.SetSort({property, 0}, 1);
        EXPECT_EQ(m_contacts.RecordCount(), m_ids.size());
        const auto statements = m_log.Take();
        return static_cast<int>(std::count_if(statements.begin(), statements.end(), [&](const auto& sql) {
            return sql.find(column + " FROM contacts") != std::string::npos &&
                   sql.find("WHERE oid = ?") == std::string::npos;
        }));
    }

    TestStore m_store;
    StatementLog m_log;
    DbContacts m_contacts;
    std::vector<CEOID> m_ids;
};

TEST_F(KeptSortKeys, AreReadAnewWhereTheyWereDroppedForOthers)
{
    AddAll();
    EXPECT_EQ(ReadsOfSort(kContactsKey, "file_as"), 1);
    EXPECT_EQ(Rows(m_contacts), m_ids);
    EXPECT_EQ(ReadsOfSort(kContactCompany, "company"), 1);
    EXPECT_EQ(Rows(m_contacts), Falling());
    EXPECT_EQ(ReadsOfSort(kContactsKey, "file_as"), 1) << "both would be more than is kept";
    EXPECT_EQ(Rows(m_contacts), m_ids);
}

TEST_F(KeptSortKeys, AreKeptWhereThereIsRoom)
{
    for (int i = 0; i < 3; ++i)
        m_ids.push_back(Add(i, 3 - i));
    EXPECT_EQ(ReadsOfSort(kContactsKey, "file_as"), 1);
    EXPECT_EQ(ReadsOfSort(kContactCompany, "company"), 1);
    EXPECT_EQ(ReadsOfSort(kContactsKey, "file_as"), 0);
    EXPECT_EQ(Rows(m_contacts), m_ids);
}

// The rows of one list are right although another one's sort has taken its keys away.
TEST_F(KeptSortKeys, ThatAreDroppedLeaveTheRowsOfTheirOrderRight)
{
    DbContacts byCompany;
    ASSERT_EQ(byCompany.Open(), 1);
    byCompany.SetSort({kContactCompany, 0}, 1);
    AddAll();
    EXPECT_EQ(Rows(m_contacts), m_ids);
    EXPECT_EQ(Rows(byCompany), Falling());
    ASSERT_EQ(Sent().Text(kContactsKey, L"z").Write(m_contacts, m_ids[0]), m_ids[0]);
    ASSERT_EQ(Sent().Text(kContactCompany, L"z").Write(m_contacts, m_ids[kContacts - 1]),
              m_ids[kContacts - 1]);
    std::vector<CEOID> byName = m_ids, byFirm = Falling();
    std::rotate(byName.begin(), byName.begin() + 1, byName.end());
    std::rotate(byFirm.begin(), byFirm.begin() + 1, byFirm.end());
    EXPECT_EQ(Rows(m_contacts), byName);
    EXPECT_EQ(Rows(byCompany), byFirm);
}

// Keys of few contacts may be long; they are cut once there are many.
TEST_F(KeptSortKeys, GrowNoLongerThanIsKept)
{
    m_ids = {Add(0, 0)};
    EXPECT_EQ(ReadsOfSort(kContactsKey, "file_as"), 1);
    int reads = 0;
    for (int i = 1; i < kContacts; ++i) {
        m_ids.push_back(Add(i, 0));
        reads += ReadsOfSort(kContactsKey, "file_as");
    }
    EXPECT_GE(reads, 1);
    EXPECT_LE(reads, 3) << "and not for each";
    EXPECT_EQ(Rows(m_contacts), m_ids);
}

} // namespace
