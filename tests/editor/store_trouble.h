// Makes the writes of a store fail while it lives, as a full disk or a damaged file would, without closing
// it.
#pragma once

#include <windows.h>
#include <sqlite3.h>

#include <string>

#include <gtest/gtest.h>

class StoreTrouble {
  public:
    explicit StoreTrouble(const std::wstring& path)
    {
        EXPECT_EQ(sqlite3_open16(path.c_str(), &m_database), SQLITE_OK);
        Run("CREATE TRIGGER no_insert BEFORE INSERT ON journal BEGIN SELECT RAISE(ABORT, 'full'); END");
        Run("CREATE TRIGGER no_update BEFORE UPDATE ON journal BEGIN SELECT RAISE(ABORT, 'full'); END");
    }
    ~StoreTrouble()
    {
        Run("DROP TRIGGER no_insert");
        Run("DROP TRIGGER no_update");
        sqlite3_close(m_database);
    }
    StoreTrouble(const StoreTrouble&) = delete;
    StoreTrouble& operator=(const StoreTrouble&) = delete;

  private:
    void Run(const char* sql)
    {
        EXPECT_EQ(sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr), SQLITE_OK);
    }

    sqlite3* m_database = nullptr;
};
