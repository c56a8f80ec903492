#include <windows.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

std::vector<ACCEL> Accelerators()
{
    HACCEL table = LoadAcceleratorsW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(101));
    const int count = CopyAcceleratorTableW(table, nullptr, 0);
    std::vector<ACCEL> entries(static_cast<size_t>(count));
    CopyAcceleratorTableW(table, entries.data(), count);
    return entries;
}

TEST(Accelerators, MapTheKeysToTheirCommands)
{
    constexpr BYTE kPlain = FVIRTKEY | FNOINVERT;
    constexpr BYTE kControl = kPlain | FCONTROL;
    constexpr BYTE kShift = kPlain | FSHIFT;
    constexpr BYTE kAlt = kPlain | FALT;
    const ACCEL expected[] = {
        {kControl, 'C', 57634},     {kControl, 'D', 102},     {kControl, 'E', 101},
        {kControl, 'F', 115},       {kControl, 'N', 100},     {kControl, 'T', 1050},
        {kControl, 'V', 57637},     {kAlt, VK_BACK, 57643},   {kPlain, VK_DELETE, 102},
        {kShift, VK_DELETE, 57635}, {kPlain, VK_F1, 127},     {kControl, VK_INSERT, 57634},
        {kShift, VK_INSERT, 57637}, {kPlain, VK_RETURN, 101}, {kControl, 'X', 57635},
    };
    const std::vector<ACCEL> entries = Accelerators();
    ASSERT_EQ(entries.size(), std::size(expected));
    for (size_t i = 0; i < entries.size(); ++i) {
        // The last entry of a table in a file carries a mark of its own beside these flags.
        constexpr BYTE kFlags = FVIRTKEY | FNOINVERT | FSHIFT | FCONTROL | FALT;
        EXPECT_EQ(entries[i].fVirt & kFlags, expected[i].fVirt) << i;
        EXPECT_EQ(entries[i].key, expected[i].key) << i;
        EXPECT_EQ(entries[i].cmd, expected[i].cmd) << i;
    }
}

} // namespace
