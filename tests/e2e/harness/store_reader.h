// The store file as any SQLite tool sees it, also while the program has it open.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

struct sqlite3;

class StoreReader {
  public:
    // A blob's bytes, any other value as text in UTF-8; nothing for NULL.
    using Value = std::optional<std::string>;
    using Rows = std::vector<std::vector<Value>>;

    explicit StoreReader(const std::wstring& path);

    bool IsOpen() const { return m_database != nullptr; }
    // All rows of a SELECT; none also when the statement fails.
    Rows Query(const std::string& sql) const;
    // The first value of the first row; nothing when there is no row.
    Value QueryOne(const std::string& sql) const;

  private:
    struct Closer {
        void operator()(sqlite3* database) const;
    };
    std::unique_ptr<sqlite3, Closer> m_database;
};
