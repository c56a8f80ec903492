// What another program holds for a moment is waited for, and nothing else.
#include "util/held_file.h"

#include <gtest/gtest.h>

#include "support/held_file.h"
#include "support/temporary_name.h"
#include "support/test_store.h"
#include "util/whole_file.h"

namespace {

class HeldFileTest : public testing::Test {
  protected:
    HeldFileTest() { EXPECT_TRUE(WriteFileBytes(m_path, "before")); }
    ~HeldFileTest() override
    {
        SetFileAttributesW(m_path.c_str(), FILE_ATTRIBUTE_NORMAL);
        DeleteFileW(m_path.c_str());
        DeleteFileW(Other().c_str());
    }
    std::wstring Other() const { return m_path + L".other"; }
    bool IsThere() const { return GetFileAttributesW(m_path.c_str()) != INVALID_FILE_ATTRIBUTES; }

    const std::wstring m_path = TemporaryName(L"held");
};

TEST_F(HeldFileTest, IsDeletedWhenItIsLetGo)
{
    const HCURSOR before = SetCursor(LoadCursorW(nullptr, IDC_ARROW));
    const HeldFile held(m_path, 3);
    EXPECT_TRUE(DeleteHeldFile(m_path));
    EXPECT_FALSE(IsThere());
    EXPECT_EQ(held.Waits(), 3);
    EXPECT_EQ(SetCursor(before), LoadCursorW(nullptr, IDC_ARROW)) << "the pointer that was there";
}

TEST_F(HeldFileTest, IsReplacedWhenItIsLetGo)
{
    const HeldFile held(m_path, 1);
    EXPECT_TRUE(ReplaceWholeFile(m_path, "after"));
    EXPECT_EQ(ReadFileBytes(m_path), "after");
    EXPECT_EQ(held.Waits(), 1);
}

TEST_F(HeldFileTest, IsMovedWhenItIsLetGo)
{
    const HeldFile held(m_path, 40);
    EXPECT_TRUE(MoveHeldFile(m_path, Other(), 0));
    EXPECT_FALSE(IsThere());
    EXPECT_EQ(ReadFileBytes(Other()), "before");
}

TEST_F(HeldFileTest, IsWaitedForTwoSecondsInAll)
{
    const HeldFile held(m_path, 0);
    EXPECT_FALSE(DeleteHeldFile(m_path));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_EQ(held.Waited(), 2'000u);
    EXPECT_FALSE(ReplaceWholeFile(m_path, "after"));
    EXPECT_EQ(held.Waited(), 4'000u);
    EXPECT_EQ(ReadFileBytes(m_path), "before");
}

TEST_F(HeldFileTest, WhatFailsForAnotherReasonFailsAtOnce)
{
    const HeldFile nothingHeld(m_path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
    EXPECT_FALSE(DeleteHeldFile(Other()));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_FALSE(MoveHeldFile(Other(), m_path, MOVEFILE_REPLACE_EXISTING));
    EXPECT_FALSE(DoWhileHeld(m_path, [] {
        SetLastError(ERROR_DISK_FULL);
        return false;
    }));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_DISK_FULL});
    EXPECT_EQ(nothingHeld.Waits(), 0);
}

// Denied as long as the file is pending, a folder or only to be read.
TEST_F(HeldFileTest, WhatIsDeniedIsWaitedForWhereAFileMayBeHeld)
{
    const HeldFile nothingHeld(m_path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
    const auto denied = [] {
        SetLastError(ERROR_ACCESS_DENIED);
        return false;
    };
    EXPECT_FALSE(DoWhileHeld(Other(), denied));
    SetFileAttributesW(m_path.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(DoWhileHeld(m_path, denied));
    EXPECT_FALSE(DoWhileHeld(m_path.substr(0, m_path.rfind(L'\\')), denied));
    EXPECT_EQ(nothingHeld.Waits(), 0);
    SetFileAttributesW(m_path.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_FALSE(DoWhileHeld(m_path, denied));
    EXPECT_EQ(nothingHeld.Waited(), 2'000u);
}

TEST_F(HeldFileTest, ALockedPartIsWaitedFor)
{
    const HeldFile nothingHeld(m_path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
    int tries = 0;
    EXPECT_TRUE(DoWhileHeld(m_path, [&] {
        SetLastError(ERROR_LOCK_VIOLATION);
        return ++tries == 5;
    }));
    EXPECT_EQ(nothingHeld.Waits(), 4);
}

} // namespace
