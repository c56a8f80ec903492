#include "mervane/z_stack.h"

#include <gtest/gtest.h>

#include "records.h"
#include "support/test_store.h"

namespace {

std::vector<CEOID> IdsOf(const ZStack& stack)
{
    std::vector<CEOID> ids;
    for (size_t i = 0; i < stack.Count(); ++i)
        ids.push_back(stack.GetItem(i)->id);
    return ids;
}

TEST(ZStack, PushesAndPopsAtTheEnd)
{
    ZStack stack;
    ZCategory item{99, 7};
    EXPECT_EQ(stack.Pop(&item), 0);
    EXPECT_EQ(item.id, 99u);
    stack.Push({1, 0x101});
    stack.Push({2, 0x1000});
    EXPECT_EQ(stack.Count(), 2u);
    EXPECT_EQ(stack.Pop(&item), 1);
    EXPECT_EQ(item.id, 2u);
    EXPECT_EQ(item.flags, 0x1000);
    EXPECT_EQ(stack.Pop(&item), 1);
    EXPECT_EQ(item.id, 1u);
    EXPECT_TRUE(stack.IsEmpty());
}

TEST(ZStack, FindsRemovesAndGetsItems)
{
    ZStack stack;
    for (const CEOID id : {5u, 3u, 9u})
        stack.Push({id, 0});
    ASSERT_NE(stack.Find(3), nullptr);
    stack.Find(3)->flags = 0x10;
    EXPECT_EQ(stack.GetItem(1)->flags, 0x10);
    EXPECT_EQ(stack.Find(4), nullptr);
    EXPECT_EQ(stack.GetItem(3), nullptr);
    EXPECT_EQ(std::as_const(stack).GetItem(3), nullptr);
    EXPECT_EQ(std::as_const(stack).Find(9)->id, 9u);
    EXPECT_EQ(stack.Remove(3), 1);
    EXPECT_EQ(stack.Remove(3), 0);
    EXPECT_EQ(IdsOf(stack), (std::vector<CEOID>{5, 9}));
    stack.DeleteStack();
    EXPECT_EQ(stack.Count(), 0u);
}

TEST(ZStack, SortsByNameWithoutRegardToCase)
{
    const TestStore store;
    DbCategories categories;
    ASSERT_EQ(categories.Open(), 1);
    const CEOID work = AddCategory(categories, L"work");
    const CEOID abroad = AddCategory(categories, L"Abroad");
    const CEOID home = AddCategory(categories, L"HOME");
    ZStack stack;
    stack.Push({work, 1});
    stack.Push({777, 2}); // no such category: behind all others
    stack.Push({home, 3});
    stack.Push({abroad, 4});
    // Whatever the database itself is sorted by.
    categories.SetSort({kCategoriesKey, CEDB_SORT_DESCENDING}, 1);
    stack.Sort(categories);
    EXPECT_EQ(IdsOf(stack), (std::vector<CEOID>{abroad, home, work, 777}));
    EXPECT_EQ(stack.GetItem(0)->flags, 4);
    EXPECT_EQ(stack.GetItem(2)->flags, 1);
}

} // namespace
