#include "pick/category_assignment.h"

#include <gtest/gtest.h>

#include "support/test_store.h"
#include "support/unreadable_table.h"

namespace {

constexpr CEOID kHome = 7;
constexpr CEOID kWork = 9;

ZStack StackOf(std::initializer_list<ZCategory> items)
{
    ZStack stack;
    for (const ZCategory& item : items)
        stack.Push(item);
    return stack;
}

int FlagsOf(const ZStack& stack, CEOID id)
{
    const ZCategory* item = stack.Find(id);
    return item ? item->flags : -1;
}

TEST(CategoryAssignment, ACheckedCategoryIsAddedAsNew)
{
    ZStack stack = StackOf({{kHome, 0x0101}});
    AssignCategory(&stack, kWork);
    EXPECT_EQ(stack.Count(), 2u);
    EXPECT_EQ(FlagsOf(stack, kWork), 0x1101);
    EXPECT_EQ(FlagsOf(stack, kHome), 0x0101);
}

TEST(CategoryAssignment, CheckingAndUncheckingLeavesNoTrace)
{
    ZStack stack = StackOf({{kHome, 0x0101}});
    AssignCategory(&stack, kWork);
    ReleaseCategory(&stack, kWork);
    EXPECT_EQ(stack.Count(), 1u);
    EXPECT_EQ(FlagsOf(stack, kHome), 0x0101);
}

TEST(CategoryAssignment, AnUncheckedOneThatTheEntryHadIsMarkedToBeReleased)
{
    ZStack stack = StackOf({{kHome, 0x0101}, {kWork, 0x0101}});
    ReleaseCategory(&stack, kHome);
    EXPECT_EQ(stack.Count(), 2u);
    EXPECT_EQ(FlagsOf(stack, kHome), 0x0011);
    EXPECT_EQ(FlagsOf(stack, kWork), 0x0101);
}

TEST(CategoryAssignment, UncheckingAndCheckingOneThatTheEntryHadIsNoChange)
{
    ZStack stack = StackOf({{kHome, 0x0101}});
    ReleaseCategory(&stack, kHome);
    AssignCategory(&stack, kHome);
    EXPECT_EQ(FlagsOf(stack, kHome), 0x0101);
    ReleaseCategory(&stack, kHome);
    EXPECT_EQ(FlagsOf(stack, kHome), 0x0011);
}

TEST(CategoryAssignment, OtherFlagsStayAsTheyAre)
{
    ZStack stack = StackOf({{kHome, 0xEFFF}, {kWork, 0xFEEF}});
    ReleaseCategory(&stack, kHome);
    EXPECT_EQ(FlagsOf(stack, kHome), 0xEEFF);
    AssignCategory(&stack, kHome);
    EXPECT_EQ(FlagsOf(stack, kHome), 0xEFEF);
    AssignCategory(&stack, kWork);
    EXPECT_EQ(FlagsOf(stack, kWork), 0xFFEF);
}

TEST(CategoryAssignment, UncheckingOneThatIsNotThereDoesNothing)
{
    ZStack stack = StackOf({{kHome, 0x0101}});
    ReleaseCategory(&stack, kWork);
    EXPECT_EQ(stack.Count(), 1u);
    EXPECT_EQ(FlagsOf(stack, kHome), 0x0101);
}

TEST(CategoryAssignment, OnlyAssignedOnesAreChecked)
{
    EXPECT_EQ(AssignedCategories(StackOf({{kHome, 0x0011}, {kWork, 0x1101}, {3, 0x0101}, {4, 0x0001}})),
              (std::vector<CEOID>{kWork, 3}));
    EXPECT_TRUE(AssignedCategories({}).empty());
}

class ListedCategories : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(m_categories.Open()); }

    CEOID Add(std::wstring name, bool hidden = false)
    {
        CEPROPVAL values[2]{};
        values[0].propid = kCategoriesKey;
        values[0].val.lpwstr = name.data();
        values[1].propid = kCategoryHidden;
        values[1].val.uiVal = 1;
        return m_categories.WriteRecord(0, hidden ? 2 : 1, values);
    }

    TestStore m_store;
    DbCategories m_categories;
};

TEST_F(ListedCategories, HiddenAndDeletedOnesAreDropped)
{
    const CEOID home = Add(L"Home");
    const CEOID secret = Add(L"Secret", true);
    const CEOID gone = Add(L"Gone");
    const CEOID work = Add(L"Work");
    ASSERT_TRUE(m_categories.DeleteRecord(gone));
    ZStack stack = StackOf({{gone, 0x0101}, {work, 0x0011}, {secret, 0x1101}, {home, 0x1101}});
    DropUnlistedCategories(&stack, &m_categories);
    ASSERT_EQ(stack.Count(), 2u);
    EXPECT_EQ(stack.GetItem(0)->id, work);
    EXPECT_EQ(stack.GetItem(0)->flags, 0x0011);
    EXPECT_EQ(stack.GetItem(1)->id, home);
    EXPECT_EQ(stack.GetItem(1)->flags, 0x1101);
}

// A look-up that fails is not a category that is gone.
TEST_F(ListedCategories, WhatCannotBeReadIsKept)
{
    const CEOID home = Add(L"Home");
    ZStack stack = StackOf({{home, 0x0101}, {home + 1, 0x1101}});
    {
        const UnreadableTable none(m_store.Path(), "categories");
        DropUnlistedCategories(&stack, &m_categories);
        EXPECT_EQ(stack.Count(), 2u);
    }
    DropUnlistedCategories(&stack, &m_categories);
    EXPECT_EQ(stack.Count(), 1u) << "once it can be read";
}

TEST_F(ListedCategories, WithoutAStoreNothingIsDropped)
{
    DbCategories closed;
    ZStack stack = StackOf({{kHome, 0x0101}});
    DropUnlistedCategories(&stack, &closed);
    EXPECT_EQ(stack.Count(), 1u);
}

} // namespace
