// A journal of which a leaf of the table is broken, and the index that would know what it held.
#pragma once

#include <windows.h>
#include <sqlite3.h>

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "support/test_store.h"

// subject: of an entry of that leaf. The store is closed, and has no log.
inline void LoseLeafOf(const std::wstring& path, const std::string& subject)
{
    constexpr size_t kPageSize = 4096;
    sqlite3* database = nullptr;
    sqlite3_stmt* root = nullptr;
    EXPECT_EQ(sqlite3_open16(path.c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_prepare_v2(database,
                                 "SELECT rootpage FROM sqlite_schema WHERE name = 'journal_numbers'", -1,
                                 &root, nullptr),
              SQLITE_OK);
    EXPECT_EQ(sqlite3_step(root), SQLITE_ROW);
    const auto index = static_cast<size_t>(sqlite3_column_int(root, 0)) - 1;
    sqlite3_finalize(root);
    sqlite3_close(database);
    std::string bytes = ReadFileBytes(path);
    // A page that once held it may still have its text; those that hold it now lie behind.
    const size_t leaf = bytes.rfind(subject) / kPageSize;
    for (const size_t page : {index, leaf})
        std::fill_n(bytes.begin() + static_cast<ptrdiff_t>(page * kPageSize), kPageSize, '\0');
    EXPECT_TRUE(WriteFileBytes(path, bytes));
}
