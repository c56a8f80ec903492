#include "pick/category_draft.h"

#include <gtest/gtest.h>

#include "mervane/records.h"
#include "support/test_store.h"

namespace {

using Fault = CategoryDraft::Fault;

class Draft : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(m_categories.Open(), 1); }

    void Load() { ASSERT_TRUE(m_draft.Load(m_categories)); }
    int RowOf(const std::wstring& name) const
    {
        for (int row = 0; row < m_draft.Count(); ++row)
            if (m_draft.At(row).name == name)
                return row;
        ADD_FAILURE() << "no such category";
        return 0;
    }
    std::vector<std::wstring> Names() const
    {
        std::vector<std::wstring> names;
        for (int row = 0; row < m_draft.Count(); ++row)
            names.push_back(m_draft.At(row).name);
        return names;
    }
    std::wstring Stored(CEOID id)
    {
        wchar_t name[kCategoryNameSize];
        m_categories.GetStr(id, name, kCategoryNameSize, kCategoriesKey);
        return name;
    }
    CEOID Find(const std::wstring& name)
    {
        for (const CEOID id : Walk(m_categories))
            if (Stored(id) == name)
                return id;
        return 0;
    }

    TestStore m_store;
    DbCategories m_categories;
    CategoryDraft m_draft;
};

TEST_F(Draft, TakesTheStoredOnesInTheOrderOfTheirNames)
{
    const CEOID work = AddCategory(m_categories, L"Work"), art = AddCategory(m_categories, L"art");
    ASSERT_NE(AddCategory(m_categories, L"Home"), 0u);
    ASSERT_EQ(m_categories.IncUse(work), 1);
    ASSERT_EQ(m_categories.IncUse(work), 1);
    ASSERT_EQ(m_categories.SetHidden(art, true), 1);
    m_categories.SetSort({kCategoriesKey, CEDB_SORT_DESCENDING}, 1);
    Load();
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"art", L"Home", L"Work"}));
    EXPECT_EQ(m_draft.At(0).id, art);
    EXPECT_TRUE(m_draft.At(0).hidden);
    EXPECT_FALSE(m_draft.At(1).hidden);
    EXPECT_EQ(m_draft.At(2).id, work);
    EXPECT_EQ(m_draft.At(2).uses, 2);
    EXPECT_FALSE(m_draft.IsChanged());
}

TEST_F(Draft, TakesNothingFromClosedCategories)
{
    m_categories.Close();
    EXPECT_FALSE(m_draft.Load(m_categories));
}

TEST_F(Draft, TellsWhatIsWrongWithAName)
{
    ASSERT_NE(AddCategory(m_categories, L"\u00dcbung"), 0u);
    ASSERT_NE(AddCategory(m_categories, L"Work"), 0u);
    Load();
    EXPECT_EQ(m_draft.Check(L""), Fault::Empty);
    EXPECT_EQ(m_draft.Check(std::wstring(60, L'x')), Fault::TooLong);
    EXPECT_EQ(m_draft.Check(std::wstring(59, L'x')), Fault::None);
    EXPECT_EQ(m_draft.Check(L"WORK"), Fault::Taken);
    EXPECT_EQ(m_draft.Check(L"\u00fcbung"), Fault::Taken);
    EXPECT_EQ(m_draft.Check(L"Workshop"), Fault::None);
    EXPECT_EQ(m_draft.Check(L"work", RowOf(L"Work")), Fault::None) << "its own name in other letters";
    EXPECT_EQ(m_draft.Check(L"work", RowOf(L"\u00dcbung")), Fault::Taken);
}

TEST_F(Draft, WritesNothingBeforeItIsSaved)
{
    const CEOID work = AddCategory(m_categories, L"Work"), home = AddCategory(m_categories, L"Home");
    Load();
    m_draft.Add(L"New");
    m_draft.Rename(RowOf(L"Work"), L"Office");
    m_draft.SetHidden(RowOf(L"Office"), true);
    m_draft.Delete(RowOf(L"Home"));
    EXPECT_TRUE(m_draft.IsChanged());
    EXPECT_EQ(m_categories.RecordCount(), 2u);
    EXPECT_EQ(Stored(work), L"Work");
    EXPECT_EQ(m_categories.IsHidden(work), 0);
    EXPECT_EQ(m_categories.Exists(home), 1);
}

TEST_F(Draft, SavesAllThatWasChanged)
{
    const CEOID work = AddCategory(m_categories, L"Work"), home = AddCategory(m_categories, L"Home"),
                art = AddCategory(m_categories, L"Art");
    ASSERT_EQ(m_categories.SetHidden(art, true), 1);
    ASSERT_EQ(m_categories.IncUse(work), 1);
    Load();
    EXPECT_EQ(m_draft.Add(L"Middle"), 2);
    m_draft.Rename(RowOf(L"Work"), L"Office");
    m_draft.SetHidden(RowOf(L"Office"), true);
    m_draft.SetHidden(RowOf(L"Art"), false);
    m_draft.SetHidden(RowOf(L"Middle"), true);
    m_draft.Delete(RowOf(L"Home"));
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"Art", L"Middle", L"Office"}));
    ASSERT_TRUE(m_draft.Save(m_categories));
    EXPECT_EQ(Stored(work), L"Office");
    EXPECT_EQ(Received(m_categories, work).Number(kCategoryUses), 1) << "a new name keeps the use count";
    EXPECT_EQ(m_categories.IsHidden(work), 1);
    EXPECT_EQ(m_categories.IsHidden(art), 0);
    EXPECT_EQ(m_categories.Exists(home), 0);
    EXPECT_EQ(m_categories.IsHidden(Find(L"Middle")), 1);
    EXPECT_EQ(m_categories.RecordCount(), 3u);
}

TEST_F(Draft, ForgetsWhatWasAddedAndDeleted)
{
    Load();
    m_draft.Delete(m_draft.Add(L"New"));
    EXPECT_FALSE(m_draft.IsChanged());
    ASSERT_TRUE(m_draft.Save(m_categories));
    EXPECT_EQ(m_categories.RecordCount(), 0u);
}

TEST_F(Draft, IsUnchangedWhenAllIsAsBefore)
{
    ASSERT_NE(AddCategory(m_categories, L"Work"), 0u);
    Load();
    m_draft.Rename(0, L"Office");
    m_draft.SetHidden(0, true);
    EXPECT_TRUE(m_draft.IsChanged());
    m_draft.SetHidden(0, false);
    m_draft.Rename(0, L"Work");
    EXPECT_FALSE(m_draft.IsChanged());
}

TEST_F(Draft, WritesNothingWhenNothingWasChanged)
{
    ASSERT_NE(AddCategory(m_categories, L"Work"), 0u);
    Load();
    RawStore raw(m_store.Path());
    ASSERT_TRUE(raw.Run("BEGIN IMMEDIATE"));
    EXPECT_TRUE(m_draft.Save(m_categories)) << "another program's write is not waited for";
    ASSERT_TRUE(raw.Run("ROLLBACK"));
}

TEST_F(Draft, CanExchangeNames)
{
    const CEOID a = AddCategory(m_categories, L"a"), b = AddCategory(m_categories, L"b"),
                c = AddCategory(m_categories, L"c");
    Load();
    m_draft.Rename(RowOf(L"a"), L"free");
    m_draft.Rename(RowOf(L"b"), L"a");
    m_draft.Rename(RowOf(L"c"), L"b");
    m_draft.Rename(RowOf(L"free"), L"C");
    EXPECT_EQ(Names(), (std::vector<std::wstring>{L"a", L"b", L"C"}));
    ASSERT_TRUE(m_draft.Save(m_categories));
    EXPECT_EQ(Stored(a), L"C");
    EXPECT_EQ(Stored(b), L"a");
    EXPECT_EQ(Stored(c), L"b");
}

TEST_F(Draft, PassesNamesOnInEitherDirection)
{
    const CEOID a = AddCategory(m_categories, L"a"), b = AddCategory(m_categories, L"b"),
                y = AddCategory(m_categories, L"y"), z = AddCategory(m_categories, L"z");
    Load();
    m_draft.Rename(RowOf(L"b"), L"m");
    m_draft.Rename(RowOf(L"a"), L"b");
    m_draft.Rename(RowOf(L"y"), L"n");
    m_draft.Rename(RowOf(L"z"), L"y");
    m_draft.Add(L"z");
    m_draft.Delete(RowOf(L"n"));
    m_draft.Add(L"n");
    ASSERT_TRUE(m_draft.Save(m_categories));
    EXPECT_EQ(Stored(a), L"b");
    EXPECT_EQ(Stored(b), L"m");
    EXPECT_EQ(m_categories.Exists(y), 0);
    EXPECT_EQ(Stored(z), L"y");
    EXPECT_NE(Find(L"z"), 0u);
    EXPECT_NE(Find(L"n"), 0u);
    EXPECT_EQ(m_categories.RecordCount(), 5u);
}

TEST_F(Draft, TakesTheNameOfADeletedOne)
{
    const CEOID old = AddCategory(m_categories, L"Work");
    Load();
    m_draft.Delete(0);
    m_draft.Add(L"work");
    ASSERT_TRUE(m_draft.Save(m_categories));
    EXPECT_EQ(m_categories.Exists(old), 0);
    EXPECT_EQ(m_categories.RecordCount(), 1u);
}

TEST_F(Draft, LeavesDeletedWhatAnotherProgramHasDeleted)
{
    ASSERT_NE(AddCategory(m_categories, L"renamed"), 0u);
    ASSERT_NE(AddCategory(m_categories, L"hidden"), 0u);
    ASSERT_NE(AddCategory(m_categories, L"deleted"), 0u);
    Load();
    m_draft.Rename(RowOf(L"renamed"), L"other");
    m_draft.SetHidden(RowOf(L"hidden"), true);
    m_draft.Delete(RowOf(L"deleted"));
    m_draft.Add(L"New");
    ASSERT_TRUE(RawStore(m_store.Path()).Run("DELETE FROM categories"));
    ASSERT_TRUE(m_draft.Save(m_categories));
    EXPECT_EQ(m_categories.RecordCount(), 1u);
    EXPECT_NE(Find(L"New"), 0u);
}

TEST_F(Draft, LeavesWhatAnotherProgramHasChanged)
{
    const CEOID work = AddCategory(m_categories, L"Work"), home = AddCategory(m_categories, L"Home");
    Load();
    m_draft.SetHidden(RowOf(L"Work"), true);
    ASSERT_TRUE(RawStore(m_store.Path()).Run("UPDATE categories SET name = name || '2', uses = 5"));
    ASSERT_TRUE(m_draft.Save(m_categories));
    EXPECT_EQ(Stored(work), L"Work2");
    EXPECT_EQ(Received(m_categories, work).Number(kCategoryUses), 5);
    EXPECT_EQ(m_categories.IsHidden(work), 1);
    EXPECT_EQ(Stored(home), L"Home2");
}

TEST_F(Draft, StoresNothingWhenANameIsTakenMeanwhile)
{
    const CEOID work = AddCategory(m_categories, L"Work"), home = AddCategory(m_categories, L"Home");
    Load();
    m_draft.Delete(RowOf(L"Home"));
    m_draft.Rename(RowOf(L"Work"), L"Office");
    m_draft.Add(L"New");
    RawStore raw(m_store.Path());
    ASSERT_TRUE(raw.Run("INSERT INTO categories(name) VALUES('NEW')"));
    EXPECT_FALSE(m_draft.Save(m_categories));
    EXPECT_EQ(m_categories.Exists(home), 1);
    EXPECT_EQ(Stored(work), L"Work");
    ASSERT_TRUE(raw.Run("DELETE FROM categories WHERE name = 'NEW'"));
    EXPECT_TRUE(m_draft.Save(m_categories)) << "and can be saved once it is free";
    EXPECT_EQ(m_categories.Exists(home), 0);
    EXPECT_EQ(Stored(work), L"Office");
}

TEST_F(Draft, ShowsAndMendsBrokenNames)
{
    RawStore raw(m_store.Path());
    ASSERT_TRUE(raw.Run("INSERT INTO categories(name, uses, hidden) VALUES('', 'many', 'yes')"));
    ASSERT_TRUE(raw.Run("INSERT INTO categories(name, uses) VALUES(hex(zeroblob(100)), -3)"));
    ASSERT_TRUE(raw.Run("INSERT INTO categories(name, uses) VALUES(x'4142', 99999999999)"));
    ASSERT_TRUE(raw.Run("INSERT INTO categories(name, uses) VALUES('\u00dcbung', 99999999999)"));
    ASSERT_TRUE(raw.Run("INSERT INTO categories(name) VALUES('\u00fcbung')"));
    Load();
    ASSERT_EQ(m_draft.Count(), 4) << "the name that is no text is none";
    EXPECT_EQ(m_draft.At(0).name, L"");
    EXPECT_EQ(m_draft.At(0).uses, 0);
    const int longOne = RowOf(std::wstring(200, L'0'));
    EXPECT_EQ(m_draft.At(longOne).uses, 0);
    EXPECT_EQ(m_draft.At(RowOf(L"\u00dcbung")).uses, 32767);
    m_draft.SetHidden(longOne, true);
    m_draft.Rename(RowOf(L"\u00fcbung"), L"Training");
    m_draft.Rename(0, L"Named");
    ASSERT_TRUE(m_draft.Save(m_categories));
    EXPECT_EQ(raw.Integer("SELECT hidden FROM categories WHERE length(name) = 200"), 1);
    EXPECT_NE(Find(L"Training"), 0u);
    EXPECT_NE(Find(L"Named"), 0u);
}

TEST_F(Draft, SavesAThousandChangesTogether)
{
    {
        CeDBase::BulkScope bulk(m_categories);
        for (int i = 0; i < 1000; ++i)
            ASSERT_NE(AddCategory(m_categories, L"Category " + std::to_wstring(i)), 0u);
        ASSERT_EQ(bulk.Commit(), 1);
    }
    Load();
    ASSERT_EQ(m_draft.Count(), 1000);
    for (int row = 0; row < 1000; row += 10)
        m_draft.SetHidden(row, true);
    ASSERT_TRUE(m_draft.Save(m_categories));
    EXPECT_EQ(m_categories.GetNumActiveRecords(), 900);
}

} // namespace
