#include "mervane/db_categories.h"

#include <gtest/gtest.h>

#include "records.h"
#include "support/test_store.h"

namespace {

class Categories : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(m_categories.Open(), 1); }
    std::optional<int> Uses(CEOID id) { return Received(m_categories, id).Number(kCategoryUses); }

    TestStore m_store;
    DbCategories m_categories;
};

TEST_F(Categories, OpenByTheirKeyOnly)
{
    DbCategories other;
    EXPECT_EQ(other.Open(kContactsKey), 0);
    EXPECT_EQ(other.Open(0), 0);
    EXPECT_FALSE(other.IsOpen());
    EXPECT_EQ(other.Open(kCategoriesKey), 1);
}

TEST_F(Categories, AreCreatedRenamedAndDeleted)
{
    const CEOID id = AddCategory(m_categories, L"Work");
    ASSERT_NE(id, 0u);
    const Received read(m_categories, id);
    EXPECT_EQ(read.Ids(), (std::vector<CEPROPID>{kCategoriesKey, kCategoryUses, kCategoryHidden}));
    EXPECT_EQ(read.Text(kCategoriesKey), L"Work");
    EXPECT_EQ(read.Number(kCategoryUses), 0);
    EXPECT_EQ(read.Number(kCategoryHidden), 0);
    EXPECT_EQ(Sent().Text(kCategoriesKey, L"Office").Write(m_categories, id), id);
    wchar_t name[kCategoryNameSize];
    EXPECT_EQ(m_categories.GetStr(id, name, kCategoryNameSize, kCategoriesKey), 6);
    EXPECT_STREQ(name, L"Office");
    EXPECT_EQ(m_categories.Exists(id), 1);
    EXPECT_EQ(m_categories.DeleteRecord(id), 1);
    EXPECT_EQ(m_categories.Exists(id), 0);
}

TEST_F(Categories, HaveNamesThatDifferBeyondCase)
{
    const CEOID work = AddCategory(m_categories, L"Work"), uber = AddCategory(m_categories, L"\u00dcbung");
    ASSERT_NE(work, 0u);
    ASSERT_NE(uber, 0u);
    for (const wchar_t* taken : {L"Work", L"work", L"WORK", L"\u00dcbung", L"\u00fcbung", L"\u00dcBUNG"})
        EXPECT_EQ(AddCategory(m_categories, taken), 0u);
    EXPECT_EQ(Sent().Text(kCategoriesKey, L"\u00fcbung").Write(m_categories, work), 0u);
    EXPECT_EQ(Received(m_categories, work).Text(kCategoriesKey), L"Work");
    // Its own name in other letters is not taken.
    EXPECT_EQ(Sent().Text(kCategoriesKey, L"\u00fcBUNG").Write(m_categories, uber), uber);
    EXPECT_NE(AddCategory(m_categories, L"Ubung"), 0u);
    EXPECT_EQ(m_categories.RecordCount(), 3u);
}

TEST_F(Categories, HaveNamesOf1To59Characters)
{
    EXPECT_EQ(AddCategory(m_categories, L""), 0u);
    EXPECT_EQ(AddCategory(m_categories, std::wstring(60, L'x')), 0u);
    const CEOID id = AddCategory(m_categories, std::wstring(59, L'x'));
    EXPECT_NE(id, 0u);
    EXPECT_EQ(Sent().Number(kCategoryHidden, 1).Write(m_categories), 0u) << "no name";
    EXPECT_EQ(Sent().Delete(kCategoriesKey).Write(m_categories, id), 0u);
    EXPECT_EQ(Received(m_categories, id).Text(kCategoriesKey), std::wstring(59, L'x'));
}

TEST_F(Categories, AreAddedRenamedAndHidden)
{
    const CEOID id = m_categories.Add(L"Work");
    ASSERT_NE(id, 0u);
    EXPECT_EQ(Received(m_categories, id).Text(kCategoriesKey), L"Work");
    EXPECT_EQ(m_categories.IncUse(id), 1);
    EXPECT_EQ(m_categories.Rename(id, L"Office"), 1);
    EXPECT_EQ(JoinedNames(m_categories, {1, id}, L','), L"Office");
    EXPECT_EQ(m_categories.SetHidden(id, true), 1);
    EXPECT_EQ(m_categories.IsHidden(id), 1);
    EXPECT_EQ(m_categories.SetHidden(id, false), 1);
    EXPECT_EQ(m_categories.IsHidden(id), 0);
    EXPECT_EQ(Uses(id), 1);
    EXPECT_EQ(m_categories.RecordCount(), 1u);
}

TEST_F(Categories, RefuseWhatCannotBe)
{
    const CEOID work = m_categories.Add(L"Work"), home = m_categories.Add(L"Home");
    EXPECT_EQ(m_categories.Add(L""), 0u);
    EXPECT_EQ(m_categories.Add(L"WORK"), 0u);
    EXPECT_EQ(m_categories.Add(std::wstring(60, L'x')), 0u);
    EXPECT_EQ(m_categories.Rename(home, L"work"), 0);
    EXPECT_EQ(m_categories.Rename(home, L""), 0);
    EXPECT_EQ(m_categories.Rename(home + 1, L"Other"), 0);
    EXPECT_EQ(m_categories.Rename(0, L"Other"), 0) << "this would be a new one";
    EXPECT_EQ(m_categories.SetHidden(0, true), 0);
    EXPECT_EQ(m_categories.SetHidden(home + 1, true), 0);
    EXPECT_EQ(m_categories.RecordCount(), 2u);
    EXPECT_EQ(JoinedNames(m_categories, {2, work, home}, L','), L"Home,Work");
}

TEST_F(Categories, CountTheirUses)
{
    const CEOID id = AddCategory(m_categories, L"c"), other = AddCategory(m_categories, L"d");
    EXPECT_EQ(m_categories.IncUse(id), 1);
    EXPECT_EQ(m_categories.IncUse(id), 1);
    EXPECT_EQ(Uses(id), 2);
    EXPECT_EQ(Uses(other), 0);
    EXPECT_EQ(m_categories.DecUse(id), 1);
    EXPECT_EQ(Uses(id), 1);
    EXPECT_EQ(m_categories.DecUse(id), 1);
    EXPECT_EQ(m_categories.DecUse(id), 1);
    EXPECT_EQ(Uses(id), 0) << "it stops at 0";
    EXPECT_EQ(m_categories.IncUse(other + 1), 0);
    EXPECT_EQ(m_categories.DecUse(other + 1), 0);
    EXPECT_EQ(m_categories.IncUse(0), 0);
}

TEST_F(Categories, WriteTheirUsesAsANumber)
{
    const CEOID id = AddCategory(m_categories, L"c");
    EXPECT_EQ(Sent().Number(kCategoryUses, 41).Write(m_categories, id), id);
    EXPECT_EQ(m_categories.IncUse(id), 1);
    EXPECT_EQ(Uses(id), 42);
    EXPECT_EQ(Sent().Delete(kCategoryUses).Write(m_categories, id), id);
    EXPECT_EQ(Uses(id), std::nullopt);
    EXPECT_EQ(m_categories.IncUse(id), 1);
    EXPECT_EQ(Uses(id), 1);
}

TEST_F(Categories, SaturateTheUsesThatAreRead)
{
    const CEOID id = AddCategory(m_categories, L"c");
    RawStore raw(m_store.Path());
    const std::pair<const char*, int> cases[] = {
        {"32767", 32767}, {"32768", 32767}, {"9223372036854775807", 32767}, {"-4", 0}};
    for (const auto& [stored, read] : cases) {
        ASSERT_TRUE(raw.Run(std::string("UPDATE categories SET uses = ") + stored));
        EXPECT_EQ(Uses(id), read) << stored;
    }
}

TEST_F(Categories, CountOnFromOddStoredUses)
{
    const CEOID id = AddCategory(m_categories, L"c");
    RawStore raw(m_store.Path());
    const std::tuple<const char*, int64_t, int64_t> cases[] = {
        {"'text'", 1, 0},
        {"NULL", 1, 0},
        {"-7", 1, 0},
        {"9223372036854775807", 2147483647, 2147483646},
        {"32767", 32768, 32766}};
    for (const auto& [stored, more, less] : cases) {
        ASSERT_TRUE(raw.Run(std::string("UPDATE categories SET uses = ") + stored));
        EXPECT_EQ(m_categories.IncUse(id), 1);
        EXPECT_EQ(raw.Integer("SELECT uses FROM categories"), more) << stored;
        ASSERT_TRUE(raw.Run(std::string("UPDATE categories SET uses = ") + stored));
        EXPECT_EQ(m_categories.DecUse(id), 1);
        EXPECT_EQ(raw.Integer("SELECT uses FROM categories"), less) << stored;
    }
}

TEST_F(Categories, ResetSetsAllUsesToZeroAndNothingElse)
{
    const CEOID a = AddCategory(m_categories, L"a"), b = AddCategory(m_categories, L"b");
    EXPECT_EQ(m_categories.IncUse(a), 1);
    ASSERT_EQ(Sent().Delete(kCategoryUses).Number(kCategoryHidden, 1).Write(m_categories, b), b);
    EXPECT_EQ(m_categories.Reset(), 1);
    EXPECT_EQ(Uses(a), 0);
    EXPECT_EQ(Uses(b), 0);
    EXPECT_EQ(Received(m_categories, a).Text(kCategoriesKey), L"a");
    EXPECT_EQ(m_categories.IsHidden(b), 1);
    EXPECT_EQ(m_categories.Reset(), 1) << "also when there is nothing to do";
}

TEST_F(Categories, KnowWhichAreHidden)
{
    const CEOID shown = AddCategory(m_categories, L"shown"), hidden = AddCategory(m_categories, L"hidden");
    EXPECT_EQ(m_categories.GetNumActiveRecords(), 2);
    ASSERT_EQ(Sent().Number(kCategoryHidden, 7).Write(m_categories, hidden), hidden);
    EXPECT_EQ(m_categories.IsHidden(hidden), 1);
    EXPECT_EQ(m_categories.IsHidden(shown), 0);
    EXPECT_EQ(m_categories.IsHidden(hidden + 1), 0);
    EXPECT_EQ(m_categories.GetNumActiveRecords(), 1);
    ASSERT_EQ(Sent().Delete(kCategoryHidden).Write(m_categories, hidden), hidden);
    EXPECT_EQ(m_categories.GetNumActiveRecords(), 2);
}

TEST_F(Categories, NoticeWhatAnotherProgramDoes)
{
    const CEOID id = AddCategory(m_categories, L"old");
    EXPECT_EQ(JoinedNames(m_categories, {1, id}, L','), L"old");
    RawStore raw(m_store.Path());
    ASSERT_TRUE(raw.Run("UPDATE categories SET name = 'new', hidden = 1"));
    EXPECT_EQ(JoinedNames(m_categories, {1, id}, L','), L"new");
    EXPECT_EQ(m_categories.GetNumActiveRecords(), 0);
    EXPECT_EQ(AddCategory(m_categories, L"NEW"), 0u);
}

TEST_F(Categories, AnswerNothingWhenClosed)
{
    const CEOID id = AddCategory(m_categories, L"c");
    m_categories.Close();
    EXPECT_EQ(m_categories.IncUse(id), 0);
    EXPECT_EQ(m_categories.DecUse(id), 0);
    EXPECT_EQ(m_categories.Reset(), 0);
    EXPECT_EQ(m_categories.Exists(id), 0);
    EXPECT_EQ(m_categories.IsHidden(id), 0);
    EXPECT_EQ(m_categories.GetNumActiveRecords(), 0);
    EXPECT_EQ(JoinedNames(m_categories, {1, id}, L','), L"");
}

TEST_F(Categories, JoinNamesInTheirOrder)
{
    const CEOID work = AddCategory(m_categories, L"Work"), art = AddCategory(m_categories, L"art"),
                home = AddCategory(m_categories, L"Home");
    EXPECT_EQ(JoinedNames(m_categories, {3, work, home, art}, L','), L"art,Home,Work");
    EXPECT_EQ(JoinedNames(m_categories, {1, work}, L','), L"Work");
    EXPECT_EQ(JoinedNames(m_categories, {2, home, work}, L';'), L"Home;Work");
    m_categories.SetSort({kCategoriesKey, CEDB_SORT_DESCENDING}, 1);
    EXPECT_EQ(JoinedNames(m_categories, {3, work, home, art}, L','), L"art,Home,Work");
}

TEST_F(Categories, JoinWhatABlobValidlyHolds)
{
    const CEOID a = AddCategory(m_categories, L"a"), b = AddCategory(m_categories, L"b");
    EXPECT_EQ(JoinedNames(m_categories, {}, L','), L"");
    EXPECT_EQ(JoinedNames(m_categories, {0}, L','), L"");
    EXPECT_EQ(JoinedNames(m_categories, {3, a, 999, b}, L','), L"a,b") << "an unknown one";
    EXPECT_EQ(JoinedNames(m_categories, {4, b, a, b, a}, L','), L"a,b") << "each once";
    EXPECT_EQ(JoinedNames(m_categories, {2, 0, a}, L','), L"a");
    EXPECT_EQ(JoinedNames(m_categories, {9, a}, L','), L"a") << "more counted than held";
    EXPECT_EQ(JoinedNames(m_categories, {1, a, b}, L','), L"a") << "more held than counted";
    EXPECT_EQ(JoinedNames(m_categories, {0xFFFFFFFF, a, b}, L','), L"a,b");
    EXPECT_EQ(JoinedNames(m_categories, {1, 999}, L','), L"");
    ASSERT_EQ(m_categories.DeleteRecord(a), 1);
    EXPECT_EQ(JoinedNames(m_categories, {2, a, b}, L','), L"b");
    for (DWORD size = 0; size < 8; ++size) {
        std::vector<BYTE> bytes(size, 1);
        wchar_t* text = nullptr;
        EXPECT_EQ(m_categories.SetStrFromBlob({size, bytes.data()}, L',', &text), 0);
        EXPECT_EQ(text, nullptr);
    }
    wchar_t* text = nullptr;
    EXPECT_EQ(m_categories.SetStrFromBlob({4, nullptr}, L',', &text), 0);
    EXPECT_EQ(m_categories.SetStrFromBlob({0, nullptr}, L',', nullptr), 0);
}

TEST_F(Categories, RankByNameWhateverTheSort)
{
    const CEOID b = AddCategory(m_categories, L"b"), a = AddCategory(m_categories, L"A");
    m_categories.SetSort({kCategoriesKey, CEDB_SORT_DESCENDING}, 1);
    EXPECT_EQ(m_categories.NameRank(a), 0u);
    EXPECT_EQ(m_categories.NameRank(b), 1u);
    EXPECT_EQ(m_categories.NameRank(77), UINT32_MAX);
}

TEST_F(Categories, MakeABlobOfAStackAndBack)
{
    ZStack stack;
    CEBLOB blob{9, reinterpret_cast<BYTE*>(1)};
    EXPECT_EQ(m_categories.SetBlobFromStack(stack, &blob), 1);
    EXPECT_EQ(blob.dwCount, 0u);
    EXPECT_EQ(blob.lpb, nullptr);
    EXPECT_EQ(m_categories.SetStackFromBlob(&stack, blob, 257), 1);
    EXPECT_TRUE(stack.IsEmpty());
    for (const CEOID id : {7u, 3u, 0xFFFFFFFFu})
        stack.Push({id, 0x1101});
    EXPECT_EQ(m_categories.SetBlobFromStack(stack, &blob), 1);
    EXPECT_EQ(std::vector<BYTE>(blob.lpb, blob.lpb + blob.dwCount), IdBytes({3, 7, 3, 0xFFFFFFFF}));
    ZStack back;
    back.Push({1, 1});
    EXPECT_EQ(m_categories.SetStackFromBlob(&back, blob, 0xABCD0101), 1);
    LocalFree(blob.lpb);
    ASSERT_EQ(back.Count(), 3u);
    for (size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(back.GetItem(i)->id, stack.GetItem(i)->id);
        EXPECT_EQ(back.GetItem(i)->flags, 0x0101);
    }
}

TEST_F(Categories, TakeWhatABlobOfAWrongShapeHolds)
{
    const auto take = [this](std::vector<BYTE> bytes) {
        ZStack stack;
        const int right =
            m_categories.SetStackFromBlob(&stack, {static_cast<DWORD>(bytes.size()), bytes.data()}, 257);
        std::vector<CEOID> ids;
        for (size_t i = 0; i < stack.Count(); ++i)
            ids.push_back(stack.GetItem(i)->id);
        return std::pair(right, ids);
    };
    using Taken = std::pair<int, std::vector<CEOID>>;
    EXPECT_EQ(take(IdBytes({2, 5, 6})), Taken(1, {5, 6}));
    EXPECT_EQ(take(IdBytes({0})), Taken(1, {}));
    EXPECT_EQ(take(IdBytes({3, 5, 6})), Taken(0, {5, 6}));
    EXPECT_EQ(take(IdBytes({1, 5, 6})), Taken(0, {5}));
    EXPECT_EQ(take(IdBytes({0xFFFFFFFF, 5})), Taken(0, {5}));
    EXPECT_EQ(take({1, 0, 0, 0, 5, 0, 0}), Taken(0, {}));
    EXPECT_EQ(take({1, 0}), Taken(0, {}));
    EXPECT_EQ(take(IdBytes({4, 5, 0, 5, 6})), Taken(1, {5, 6})) << "each once, 0 is none";
}

TEST_F(Categories, TakeLargeBlobsEachOnce)
{
    std::vector<DWORD> words{20'000};
    for (DWORD i = 0; i < 20'000; ++i)
        words.push_back(1 + i % 7000);
    std::vector<BYTE> bytes = IdBytes(words);
    ZStack stack;
    EXPECT_EQ(m_categories.SetStackFromBlob(&stack, {static_cast<DWORD>(bytes.size()), bytes.data()}, 257),
              1);
    ASSERT_EQ(stack.Count(), 7000u);
    for (CEOID id = 1; id <= 7000; ++id)
        ASSERT_EQ(stack.GetItem(id - 1)->id, id);
}

} // namespace
