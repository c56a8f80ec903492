#include "pick/category_dialog_layout.h"

#include <gtest/gtest.h>

namespace {

constexpr CategoryDialogSizes kSizes{{75, 23}, {6, 6}, {10, 11}};

bool Overlap(const RECT& a, const RECT& b)
{
    RECT both{};
    return IntersectRect(&both, &a, &b) != FALSE;
}

void ExpectAllInside(SIZE client)
{
    const CategoryDialogLayout layout = LayOutCategoryDialog(client, kSizes);
    SCOPED_TRACE(testing::Message() << client.cx << "x" << client.cy);
    const auto inside = [&](const RECT& rect) {
        return rect.left >= 0 && rect.top >= 0 && rect.right <= client.cx && rect.bottom <= client.cy;
    };
    EXPECT_TRUE(inside(layout.list));
    EXPECT_GT(layout.list.right, layout.list.left);
    EXPECT_GT(layout.list.bottom, layout.list.top);
    for (size_t i = 0; i < kCategoryButtons; ++i) {
        EXPECT_TRUE(inside(layout.buttons[i])) << i;
        EXPECT_EQ(layout.buttons[i].right - layout.buttons[i].left, 75);
        EXPECT_EQ(layout.buttons[i].bottom - layout.buttons[i].top, 23);
        EXPECT_FALSE(Overlap(layout.buttons[i], layout.list)) << i;
        for (size_t other = i + 1; other < kCategoryButtons; ++other)
            EXPECT_FALSE(Overlap(layout.buttons[i], layout.buttons[other])) << i << " and " << other;
    }
}

TEST(CategoryDialogLayout, KeepsAllInSightAndApart)
{
    for (const LONG height : {45, 80, 109, 110, 137, 138, 190, 196, 197, 240, 700})
        for (const LONG width : {560, 640, 1000})
            ExpectAllInside({width, height});
}

TEST(CategoryDialogLayout, StandsInOneColumnWhereItCan)
{
    const CategoryDialogLayout layout = LayOutCategoryDialog({400, 300}, kSizes);
    const RECT first{315, 11, 390, 34}, hide{315, 98, 390, 121}, ok{315, 237, 390, 260},
        cancel{315, 266, 390, 289};
    EXPECT_TRUE(EqualRect(&layout.buttons[0], &first));
    EXPECT_TRUE(EqualRect(&layout.buttons[3], &hide));
    EXPECT_TRUE(EqualRect(&layout.buttons[4], &ok)) << "at the foot";
    EXPECT_TRUE(EqualRect(&layout.buttons[5], &cancel));
    const RECT list{10, 11, 303, 289};
    EXPECT_TRUE(EqualRect(&layout.list, &list));
}

TEST(CategoryDialogLayout, StandsInTwoColumnsWhereItIsLow)
{
    const CategoryDialogLayout layout = LayOutCategoryDialog({400, 120}, kSizes);
    EXPECT_EQ(layout.buttons[2].left, layout.buttons[0].left);
    EXPECT_GT(layout.buttons[3].left, layout.buttons[0].right);
    EXPECT_EQ(layout.buttons[3].top, layout.buttons[0].top);
    EXPECT_EQ(layout.buttons[5].top, layout.buttons[2].top);
}

TEST(CategoryDialogLayout, TakesAnySize)
{
    for (const SIZE size : {SIZE{0, 0}, SIZE{1, 1}, SIZE{-5, -5}, SIZE{100, 20}, SIZE{100000, 100000}}) {
        const CategoryDialogLayout layout = LayOutCategoryDialog(size, kSizes);
        EXPECT_GE(layout.list.right, layout.list.left);
        EXPECT_GE(layout.list.bottom, layout.list.top);
    }
}

} // namespace
