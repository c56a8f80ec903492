// The order of rows and walks.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "records.h"
#include "support/test_store.h"

namespace {

class Sorted : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(m_journal.Open(nullptr), 1); }
    void SortBy(CEPROPID property, DWORD flags = 0) { m_journal.SetSort({property, flags}, 1); }

    // Rows, walk and the ways back agree on this order.
    void ExpectOrder(const std::vector<CEOID>& expected)
    {
        EXPECT_EQ(Rows(m_journal), expected);
        EXPECT_EQ(Walk(m_journal), expected);
        for (size_t row = 0; row < expected.size(); ++row) {
            EXPECT_EQ(m_journal.RowOf(expected[row]), static_cast<int>(row));
            EXPECT_EQ(m_journal.IdOfRow(static_cast<uint32_t>(row)), expected[row]);
        }
    }

    TestStore m_store;
    DbJournal m_journal;
};

TEST_F(Sorted, StartsWithTheDateAscending)
{
    SORTORDERSPEC sort{};
    m_journal.GetSort(&sort);
    EXPECT_EQ(sort.propid, kDate);
    EXPECT_EQ(sort.dwFlags, 0u);
    const CEOID late = AddEntry(m_journal, L"", 9), early = AddEntry(m_journal, L"", 2);
    ExpectOrder({early, late});
}

TEST_F(Sorted, OpensInTheGivenSort)
{
    const CEOID b = AddEntry(m_journal, L"b", 1), a = AddEntry(m_journal, L"a", 2);
    ASSERT_EQ(m_journal.Open(nullptr, {kSubject, 0}), 1);
    ExpectOrder({a, b});
    ASSERT_EQ(m_journal.Open(nullptr, {kDate, CEDB_SORT_DESCENDING}), 1);
    ExpectOrder({a, b});
    for (const CEPROPID none :
         {CEPROPID{0}, CEPROPID{0x00990002}, kCategoriesKey, MakePropertyId(101, CEVT_I2)}) {
        ASSERT_EQ(m_journal.Open(nullptr, {none, CEDB_SORT_DESCENDING}), 1);
        SORTORDERSPEC sort{};
        m_journal.GetSort(&sort);
        EXPECT_EQ(sort.propid, kDate);
    }
}

TEST_F(Sorted, KeepsTheOrderWhenThereIsNoSuchProperty)
{
    SortBy(kSubject, CEDB_SORT_DESCENDING);
    SortBy(0x00990002);
    SORTORDERSPEC sort{};
    m_journal.GetSort(&sort);
    EXPECT_EQ(sort.propid, kSubject);
    EXPECT_EQ(sort.dwFlags, CEDB_SORT_DESCENDING);
}

TEST_F(Sorted, ByTimesAsUnsignedCounts)
{
    const CEOID high = AddEntry(m_journal, L"", 0x8000'0000'0000'0000), low = AddEntry(m_journal, L"", 1),
                highest = AddEntry(m_journal, L"", ~uint64_t{0}), zero = AddEntry(m_journal, L"", 0);
    ExpectOrder({zero, low, high, highest});
    SortBy(kDate, CEDB_SORT_DESCENDING);
    ExpectOrder({highest, high, low, zero});
}

TEST_F(Sorted, ByNumbersWithTheirSign)
{
    std::vector<CEOID> ids;
    for (const int priority : {2, -5, 0, 32767, -32768})
        ids.push_back(Sent().Number(kPriority, priority).Write(m_journal));
    SortBy(kPriority);
    ExpectOrder({ids[4], ids[1], ids[2], ids[0], ids[3]});
    SortBy(kPriority, CEDB_SORT_DESCENDING);
    ExpectOrder({ids[3], ids[0], ids[2], ids[1], ids[4]});
}

TEST_F(Sorted, WithRecordsThatLackThePropertyLastAndEqualOnesByIdentifier)
{
    for (const CEPROPID property : {kDate, kPriority, kKind, kDuration, kSubject}) {
        std::vector<CEOID> ids;
        for (const int value : {1, -1, 2, 1, -1, 2}) {
            Sent sent;
            if (value >= 0 && PropertyType(property) == CEVT_FILETIME)
                sent.Time(property, static_cast<uint64_t>(value));
            else if (value >= 0 && PropertyType(property) == CEVT_LPWSTR)
                sent.Text(property, value == 1 ? L"one" : L"TWO");
            else if (value >= 0)
                sent.Number(property, value);
            ids.push_back(sent.Write(m_journal));
        }
        SortBy(property);
        ExpectOrder({ids[0], ids[3], ids[2], ids[5], ids[1], ids[4]});
        SortBy(property, CEDB_SORT_DESCENDING);
        ExpectOrder({ids[2], ids[5], ids[0], ids[3], ids[1], ids[4]});
        for (const CEOID id : ids)
            EXPECT_EQ(m_journal.DeleteRecord(id), 1);
    }
}

TEST_F(Sorted, TakesOddCellsAsMissing)
{
    const CEOID odd = AddEntry(m_journal, L"a", 1), good = AddEntry(m_journal, L"b", 2);
    ASSERT_TRUE(RawStore(m_store.Path())
                    .Run("UPDATE journal SET date = 'x', subject = x'41', priority = 70000 WHERE oid = 1"));
    ASSERT_TRUE(RawStore(m_store.Path()).Run("UPDATE journal SET priority = 5 WHERE oid = 2"));
    for (const CEPROPID property : {kDate, kSubject, kPriority})
        for (const DWORD flags : {DWORD{0}, CEDB_SORT_DESCENDING}) {
            SortBy(property, flags);
            ExpectOrder({good, odd});
        }
}

TEST_F(Sorted, ByTextWithoutRegardToCase)
{
    std::vector<CEOID> ids;
    for (const wchar_t* subject :
         {L"banana", L"Apple", L"apple", L"\u00c4pfel", L"Zebra", L"", L"apples", L"BANANA"})
        ids.push_back(AddEntry(m_journal, subject));
    SortBy(kSubject);
    // By what the system says of each pair.
    std::vector<CEOID> expected = ids;
    const auto textOf = [this](CEOID id) { return std::wstring(m_journal.GetSubject(id)); };
    std::stable_sort(expected.begin(), expected.end(), [&](CEOID a, CEOID b) {
        return CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, textOf(a).c_str(), -1, textOf(b).c_str(),
                              -1) == CSTR_LESS_THAN;
    });
    ExpectOrder(expected);
    EXPECT_EQ(expected.front(), ids[5]); // the empty text
    EXPECT_EQ(expected[1], ids[3]);      // an accent counts less than the next letter
    EXPECT_EQ(expected[2], ids[1]);      // Apple and apple are the same
    EXPECT_EQ(expected[3], ids[2]);
    EXPECT_EQ(expected.back(), ids[4]);
}

TEST_F(Sorted, ByJoinedNames)
{
    DbCategories categories;
    ASSERT_EQ(categories.Open(), 1);
    const CEOID work = AddCategory(categories, L"Work"), art = AddCategory(categories, L"art"),
                home = AddCategory(categories, L"Home");
    const CEOID workOnly = Sent().Ids(kCategories, {work}).Write(m_journal);
    const CEOID none = Sent().Text(kSubject, L"none").Write(m_journal);
    const CEOID homeArt = Sent().Ids(kCategories, {home, art}).Write(m_journal); // "art,Home"
    const CEOID homeOnly = Sent().Ids(kCategories, {home}).Write(m_journal);
    SortBy(kCategories);
    ExpectOrder({homeArt, homeOnly, workOnly, none});
    SortBy(kCategories, CEDB_SORT_DESCENDING);
    ExpectOrder({workOnly, homeOnly, homeArt, none});
    // Another name, another order.
    ASSERT_EQ(Sent().Text(kCategoriesKey, L"Zoo").Write(categories, art), art);
    ExpectOrder({workOnly, homeArt, homeOnly, none}); // "Work", "Home,Zoo", "Home"
    ASSERT_EQ(categories.DeleteRecord(work), 1);
    ExpectOrder({homeArt, homeOnly, workOnly, none}); // the deleted one is an empty text
}

TEST_F(Sorted, ByJoinedContacts)
{
    DbContacts contacts;
    ASSERT_EQ(contacts.Open(), 1);
    const CEOID zoe = AddContact(contacts, L"Zoe"), adam = AddContact(contacts, L"Adam");
    const CEOID withZoe = Sent().Ids(kContacts, {zoe}).Write(m_journal);
    const CEOID withAdam = Sent().Ids(kContacts, {adam}).Write(m_journal);
    SortBy(kContacts);
    ExpectOrder({withAdam, withZoe});
    ASSERT_EQ(Sent().Text(kContactsKey, L"Aaron").Write(contacts, zoe), zoe);
    ExpectOrder({withZoe, withAdam});
}

TEST_F(Sorted, CategoriesAndContactsByTheirNames)
{
    DbCategories categories;
    ASSERT_EQ(categories.Open(), 1);
    const CEOID b = AddCategory(categories, L"b"), c = AddCategory(categories, L"C"),
                a = AddCategory(categories, L"A");
    EXPECT_EQ(Rows(categories), (std::vector<CEOID>{a, b, c}));
    EXPECT_EQ(Walk(categories), (std::vector<CEOID>{a, b, c}));
    EXPECT_EQ(categories.RowOf(c), 2);
    DbContacts contacts;
    ASSERT_EQ(contacts.Open(), 1);
    const CEOID y = AddContact(contacts, L"y"), x = AddContact(contacts, L"X");
    EXPECT_EQ(Walk(contacts), (std::vector<CEOID>{x, y}));
}

TEST_F(Sorted, CategoriesByTheirUses)
{
    DbCategories categories;
    ASSERT_EQ(categories.Open(), 1);
    const CEOID used = AddCategory(categories, L"used");
    ASSERT_EQ(categories.IncUse(used), 1);
    categories.SetSort({kCategoryUses, 0}, 1);
    EXPECT_EQ(Rows(categories), std::vector<CEOID>{used});
    // What is not sent of a new category is 0, not missing.
    const CEOID unused = AddCategory(categories, L"unused");
    EXPECT_EQ(Rows(categories), (std::vector<CEOID>{unused, used}));
    ASSERT_EQ(categories.IncUse(unused), 1);
    ASSERT_EQ(categories.IncUse(unused), 1);
    EXPECT_EQ(Rows(categories), (std::vector<CEOID>{used, unused}));
    EXPECT_EQ(categories.Reset(), 1);
    ASSERT_EQ(Sent().Delete(kCategoryUses).Write(categories, used), used);
    EXPECT_EQ(Rows(categories), (std::vector<CEOID>{unused, used})) << "none at all comes last";
}

// What is sorted after each of many writes beside what a fresh look gives.
class SortedWrites : public Sorted, public testing::WithParamInterface<CEPROPID> {
  protected:
    static Sent RandomValue(CEPROPID property, std::mt19937& random)
    {
        Sent sent;
        const int value = static_cast<int>(random() % 8);
        if (value == 0)
            sent.Delete(property);
        else if (PropertyType(property) == CEVT_FILETIME)
            sent.Time(property, uint64_t{random()} << (random() % 33));
        else if (PropertyType(property) == CEVT_LPWSTR)
            sent.Text(property, std::wstring(random() % 3, L'a' + static_cast<wchar_t>(random() % 3)) +
                                    (random() % 2 ? L"B" : L"b"));
        else if (PropertyType(property) == CEVT_BLOB)
            sent.Ids(property, {static_cast<DWORD>(random() % 4), static_cast<DWORD>(random() % 4)});
        else
            sent.Number(property, value - 4);
        return sent;
    }
};

TEST_P(SortedWrites, KeepTheOrderUpToDate)
{
    DbCategories categories;
    ASSERT_EQ(categories.Open(), 1);
    for (const wchar_t* name : {L"x", L"d", L"m"})
        ASSERT_NE(AddCategory(categories, name), 0u);
    std::mt19937 random(5);
    CeDBase::BulkScope bulk(m_journal);
    for (const DWORD flags : {DWORD{0}, CEDB_SORT_DESCENDING}) {
        SortBy(GetParam(), flags);
        std::vector<CEOID> ids = Rows(m_journal);
        for (int step = 0; step < 700; ++step) {
            const CEOID id = ids.empty() ? 0 : ids[random() % ids.size()];
            const unsigned action = static_cast<unsigned>(random() % 6);
            if (action == 0 && id) {
                ASSERT_EQ(m_journal.DeleteRecord(id), 1);
                std::erase(ids, id);
            } else if (action < 3 && id) {
                ASSERT_EQ(RandomValue(GetParam(), random).Write(m_journal, id), id);
            } else {
                ids.push_back(RandomValue(GetParam(), random).Write(m_journal));
                ASSERT_NE(ids.back(), 0u);
            }
        }
    }
    ASSERT_EQ(bulk.Commit(), 1);
    const std::vector<CEOID> followed = Rows(m_journal);
    m_journal.Close();
    categories.Close();
    ASSERT_EQ(m_journal.Open(nullptr, {GetParam(), CEDB_SORT_DESCENDING}), 1);
    ExpectOrder(followed);
}

INSTANTIATE_TEST_SUITE_P(Properties, SortedWrites,
                         testing::Values(kDate, kPriority, kKind, kDuration, kSubject, kCategories),
                         [](const auto& property) {
                             return "Property" + std::to_string(property.param >> 16);
                         });

TEST_F(Sorted, LongTextsThatDifferLateOnly)
{
    const std::wstring start(30'000, L'q');
    std::vector<CEOID> ids;
    for (const wchar_t* end : {L"c", L"a", L"b", L"a"})
        ids.push_back(Sent().Text(kBody, start + end).Write(m_journal));
    SortBy(kBody);
    ExpectOrder({ids[1], ids[3], ids[2], ids[0]});
    // What comes later is compared by the whole texts too.
    const CEOID between = Sent().Text(kBody, start + L"ab").Write(m_journal);
    ExpectOrder({ids[1], ids[3], between, ids[2], ids[0]});
    SortBy(kBody, CEDB_SORT_DESCENDING);
    ExpectOrder({ids[0], ids[2], between, ids[1], ids[3]});
}

TEST_F(Sorted, TextsOfAMillionCharacters)
{
    const std::wstring start(1'000'000, L'q');
    std::vector<CEOID> ids;
    for (const wchar_t* end : {L"b", L"a"})
        ids.push_back(Sent().Text(kBody, start + end).Write(m_journal));
    SortBy(kBody);
    ExpectOrder({ids[1], ids[0]});
}

TEST_F(Sorted, TextsWithUnpairedSurrogates)
{
    std::vector<CEOID> ids;
    for (const std::wstring& text : {std::wstring{wchar_t{0xD800}}, std::wstring{L'b', wchar_t{0xDC00}},
                                     std::wstring{L'a', wchar_t{0xDFFF}}, std::wstring{L'c'}})
        ids.push_back(AddEntry(m_journal, text));
    SortBy(kSubject);
    std::vector<CEOID> rows = Rows(m_journal);
    ExpectOrder(rows);
    std::erase(rows, ids[0]); // where it stands by itself is the system's affair
    EXPECT_EQ(rows, (std::vector<CEOID>{ids[2], ids[1], ids[3]}));
}

TEST_F(Sorted, SeveralDatabasesEachInTheirOwnWay)
{
    DbJournal bySubject;
    ASSERT_EQ(bySubject.Open(nullptr, {kSubject, 0}), 1);
    const CEOID z = AddEntry(m_journal, L"z", 1), a = AddEntry(m_journal, L"a", 2);
    ExpectOrder({z, a});
    EXPECT_EQ(Rows(bySubject), (std::vector<CEOID>{a, z}));
    const CEOID m = AddEntry(bySubject, L"m", 3);
    ExpectOrder({z, a, m});
    EXPECT_EQ(Rows(bySubject), (std::vector<CEOID>{a, m, z}));
}

} // namespace
