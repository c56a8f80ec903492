// A store whose contacts cannot be read while this lives, as in a damaged file: what is asked fails.
#pragma once

#include <windows.h>
#include <sqlite3.h>

#include <string>

#include <gtest/gtest.h>

class UnreadableContacts {
  public:
    explicit UnreadableContacts(const std::wstring& path)
    {
        EXPECT_EQ(sqlite3_open16(path.c_str(), &m_database), SQLITE_OK);
        Run("ALTER TABLE contacts RENAME TO elsewhere");
    }
    ~UnreadableContacts()
    {
        Run("ALTER TABLE elsewhere RENAME TO contacts");
        sqlite3_close(m_database);
    }
    UnreadableContacts(const UnreadableContacts&) = delete;
    UnreadableContacts& operator=(const UnreadableContacts&) = delete;

  private:
    void Run(const char* sql)
    {
        EXPECT_EQ(sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sql;
    }

    sqlite3* m_database = nullptr;
};
