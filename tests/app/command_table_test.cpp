#include "app/command_table.h"

#include <gtest/gtest.h>

#include <set>

namespace {

TEST(CommandTable, HoldsTheCommandsAndNoOthers)
{
    const std::set<UINT> known = {100, 101, 102, 103, 104, 105, 110, 111, 112, 113, 115, 117,
                                  118, 120, 121, 122, 124, 125, 127, 140, 141, 142, 143, 160};
    for (UINT id = 0; id <= 0xFFFF; ++id)
        EXPECT_EQ(FindCommand(id) != nullptr, known.count(id) == 1) << id;
}

// 123 is a number of the menu's that does nothing.
TEST(CommandTable, TheEditCommandsOfTheKeysAreNone)
{
    for (UINT id : {123u, 57634u, 57635u, 57637u, 57643u, 1050u})
        EXPECT_EQ(FindCommand(id), nullptr) << id;
}

} // namespace
