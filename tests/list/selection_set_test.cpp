#include "list/selection_set.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

std::vector<CEOID> Ids(const SelectionSet& set)
{
    return {set.InOrder().begin(), set.InOrder().end()};
}

TEST(SelectionSet, KeepsTheOrderOfSelecting)
{
    SelectionSet set;
    EXPECT_TRUE(set.IsEmpty());
    for (CEOID id : {7u, 3u, 0xFFFFFFFFu, 5u})
        EXPECT_TRUE(set.Append(id));
    EXPECT_EQ(Ids(set), (std::vector<CEOID>{7, 3, 0xFFFFFFFF, 5}));
    EXPECT_EQ(set.Count(), 4u);
    EXPECT_FALSE(set.IsEmpty());
}

TEST(SelectionSet, HoldsEachRecordOnce)
{
    SelectionSet set;
    EXPECT_TRUE(set.Append(7));
    EXPECT_TRUE(set.Append(3));
    EXPECT_FALSE(set.Append(7));
    EXPECT_EQ(Ids(set), (std::vector<CEOID>{7, 3}));
}

TEST(SelectionSet, HoldsNoRecordZero)
{
    SelectionSet set;
    EXPECT_FALSE(set.Append(0));
    EXPECT_FALSE(set.Contains(0));
    EXPECT_TRUE(set.IsEmpty());
}

TEST(SelectionSet, RemovesFromAnyPlace)
{
    SelectionSet set;
    for (CEOID id = 1; id <= 5; ++id)
        set.Append(id);
    EXPECT_TRUE(set.Remove(1));
    EXPECT_TRUE(set.Remove(3));
    EXPECT_TRUE(set.Remove(5));
    EXPECT_FALSE(set.Remove(3));
    EXPECT_FALSE(set.Remove(99));
    EXPECT_EQ(Ids(set), (std::vector<CEOID>{2, 4}));
    EXPECT_FALSE(set.Contains(3));
    EXPECT_TRUE(set.Contains(4));
}

TEST(SelectionSet, WhatComesBackStandsLast)
{
    SelectionSet set;
    for (CEOID id = 1; id <= 3; ++id)
        set.Append(id);
    set.Remove(1);
    EXPECT_TRUE(set.Append(1));
    EXPECT_EQ(Ids(set), (std::vector<CEOID>{2, 3, 1}));
}

TEST(SelectionSet, ClearEmptiesIt)
{
    SelectionSet set;
    set.Append(1);
    set.Append(2);
    set.Clear();
    EXPECT_TRUE(set.IsEmpty());
    EXPECT_FALSE(set.Contains(1));
    EXPECT_TRUE(set.Append(1));
    EXPECT_EQ(Ids(set), (std::vector<CEOID>{1}));
}

TEST(SelectionSet, HoldsAWholeJournal)
{
    SelectionSet set;
    for (CEOID id = 1; id <= 65535; ++id)
        ASSERT_TRUE(set.Append(id));
    for (CEOID id = 65535; id > 1; --id)
        ASSERT_TRUE(set.Remove(id));
    EXPECT_EQ(Ids(set), (std::vector<CEOID>{1}));
}

} // namespace
