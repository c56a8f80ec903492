#include "ui/bars/button_rows.h"

#include <gtest/gtest.h>

namespace {

using Breaks = std::vector<bool>;

ButtonExtent Button(int width)
{
    return {width, false};
}

ButtonExtent Separator(int width)
{
    return {width, true};
}

} // namespace

TEST(ButtonRows, WhatFitsStaysInOneRow)
{
    EXPECT_EQ(BreakRows({Button(20), Button(20), Button(20)}, 60), Breaks({false, false, false}));
    EXPECT_EQ(BreakRows({}, 10), Breaks());
}

TEST(ButtonRows, RowEndsBeforeTheButtonThatDoesNotFit)
{
    EXPECT_EQ(BreakRows({Button(20), Button(20), Button(20)}, 59), Breaks({false, true, false}));
    EXPECT_EQ(BreakRows({Button(20), Button(20), Button(20), Button(20), Button(20)}, 40),
              Breaks({false, true, false, true, false}));
}

TEST(ButtonRows, ButtonWiderThanTheRowHasARowOfItsOwn)
{
    EXPECT_EQ(BreakRows({Button(100)}, 10), Breaks({false}));
    EXPECT_EQ(BreakRows({Button(5), Button(100), Button(5)}, 10), Breaks({true, true, false}));
}

TEST(ButtonRows, SeparatorLeadsTheNextRow)
{
    EXPECT_EQ(BreakRows({Button(20), Button(20), Separator(8), Button(20)}, 50),
              Breaks({false, true, false, false}));
    // With the separator in front the row is full earlier: 8 + 20 + 20 do not fit into 47.
    EXPECT_EQ(BreakRows({Button(20), Button(19), Separator(8), Button(20), Button(20)}, 47),
              Breaks({false, true, false, true, false}));
}

TEST(ButtonRows, HiddenButtonsTakeNoRoom)
{
    EXPECT_EQ(BreakRows({Button(20), Button(0), Button(20)}, 40), Breaks({false, false, false}));
}
