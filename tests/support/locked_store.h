// Makes the writes of a store fail while it lives, without closing it: another connection holds the write
// lock past the time-out.
#pragma once

#include <windows.h>
#include <sqlite3.h>

#include <string>

#include <gtest/gtest.h>

class LockedStore {
  public:
    explicit LockedStore(const std::wstring& path)
    {
        EXPECT_EQ(sqlite3_open16(path.c_str(), &m_database), SQLITE_OK);
        Run("BEGIN IMMEDIATE");
    }
    ~LockedStore()
    {
        Run("ROLLBACK");
        sqlite3_close(m_database);
    }
    LockedStore(const LockedStore&) = delete;
    LockedStore& operator=(const LockedStore&) = delete;

  private:
    void Run(const char* sql)
    {
        EXPECT_EQ(sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr), SQLITE_OK);
    }

    sqlite3* m_database = nullptr;
};
