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

// Runs statements on the store as another tool would; false when one fails.
[[nodiscard]] bool ChangeStore(const std::wstring& path, const std::string& sql);

// Another program's exclusive lock on the whole store, for as long as this lives.
class StoreLock {
  public:
    explicit StoreLock(const std::wstring& path);
    ~StoreLock();
    StoreLock(const StoreLock&) = delete;
    StoreLock& operator=(const StoreLock&) = delete;

    bool IsHeld() const { return m_held; }

  private:
    sqlite3* m_database = nullptr;
    bool m_held = false;
};
