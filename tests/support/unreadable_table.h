// A table of a store that cannot be read while this lives, as in a damaged file: what is asked fails.
#pragma once

#include <windows.h>
#include <sqlite3.h>

#include <string>

#include <gtest/gtest.h>

class UnreadableTable {
  public:
    UnreadableTable(const std::wstring& path, const std::string& table) : m_table(table)
    {
        EXPECT_EQ(sqlite3_open16(path.c_str(), &m_database), SQLITE_OK);
        Run("ALTER TABLE " + m_table + " RENAME TO elsewhere");
    }
    ~UnreadableTable()
    {
        Run("ALTER TABLE elsewhere RENAME TO " + m_table);
        sqlite3_close(m_database);
    }
    UnreadableTable(const UnreadableTable&) = delete;
    UnreadableTable& operator=(const UnreadableTable&) = delete;

  private:
    void Run(const std::string& sql)
    {
        EXPECT_EQ(sqlite3_exec(m_database, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sql;
    }

    std::string m_table;
    sqlite3* m_database = nullptr;
};
