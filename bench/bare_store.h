// SQLite alone on the same file, set up as the product's own connection: what the product is compared with.
#pragma once

#include <cstdint>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

namespace bench {

class BareStore {
  public:
    // Takes the settings of the newest connection, which is to be the product's: memory, and when the log is
    // emptied.
    explicit BareStore(const std::wstring& path);
    ~BareStore();
    BareStore(const BareStore&) = delete;
    BareStore& operator=(const BareStore&) = delete;

    sqlite3* Handle() const { return m_handle; }
    void Execute(const char* sql);

  private:
    void TakeOver(sqlite3* from, const char* pragma);

    sqlite3* m_handle = nullptr;
};

class BareStatement {
  public:
    BareStatement(BareStore& store, const char* sql);
    ~BareStatement();
    BareStatement(const BareStatement&) = delete;
    BareStatement& operator=(const BareStatement&) = delete;

    sqlite3_stmt* Get() const { return m_statement; }

  private:
    sqlite3_stmt* m_statement = nullptr;
};

} // namespace bench
