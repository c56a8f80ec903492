// A thin layer over SQLite without exceptions: a connection, a prepared statement. sqlite3.h shows in no
// header.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "mervane/file/trouble.h"

struct sqlite3;
struct sqlite3_file;
struct sqlite3_io_methods;
struct sqlite3_stmt;

namespace mervane {

// One connection; closed at the end.
class Database {
  public:
    // Unchanging: read-only, and nobody writes meanwhile, so that no lock is taken and no file made beside
    // it.
    enum class Mode { Unchanging, ReadOnly, Create };

    Database();
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    [[nodiscard]] bool Open(const std::wstring& path, Mode mode);
    // Every statement of the connection must be gone.
    void Close();
    bool IsOpen() const { return m_handle != nullptr; }
    bool IsReadOnly() const;
    // Whether a statement waits for another process's lock, up to 2.5 seconds, as it does from the beginning.
    void WaitForLocks(bool wait);
    // Closing leaves the write-ahead log as it is.
    void KeepLog();
    // From now on the index of a write-ahead log is not mapped: work that needs the index finds the file
    // locked, also once another program has given it a log. What is done alone needs none.
    void MapNoIndex();

    // Runs statements that give no rows that matter.
    [[nodiscard]] bool Execute(const char* sql);
    // The first column of the first row, when it is an integer.
    std::optional<int64_t> QueryInteger(const char* sql);

    bool InTransaction() const;
    // The first failure since it was taken last; None where there was none. What its statements fail in
    // counts, and so does what is noted. It outlives Close.
    StoreTrouble Trouble() const { return m_trouble; }
    StoreTrouble TakeTrouble() { return std::exchange(m_trouble, StoreTrouble::None); }
    void NoteTrouble(StoreTrouble trouble)
    {
        if (m_trouble == StoreTrouble::None)
            m_trouble = trouble;
    }
    // Notes why the last call of SQLite failed, which it returns.
    StoreTrouble NoteFailure();
    int64_t LastInsertId() const;
    int Changes() const;       // rows that the last statement changed
    HANDLE FileHandle() const; // of the open file, which the database owns
    sqlite3* Handle() const { return m_handle; }
    // The database's file as SQLite has it open; null when there is none.
    sqlite3_file* File() const;

  private:
    bool IsKeptOutByLog() const;

    sqlite3* m_handle = nullptr;
    std::unique_ptr<sqlite3_io_methods> m_methods; // of the file, where they are not the system's
    StoreTrouble m_trouble = StoreTrouble::None;
};

// What is tried while it lives keeps its trouble apart; Take answers it. At its end the earlier trouble is
// back, followed by what was not taken.
class OwnTrouble {
  public:
    explicit OwnTrouble(Database& database) : m_database(database), m_before(database.TakeTrouble()) {}
    ~OwnTrouble()
    {
        const StoreTrouble left = m_database.TakeTrouble();
        m_database.NoteTrouble(m_before);
        m_database.NoteTrouble(left);
    }
    OwnTrouble(const OwnTrouble&) = delete;
    OwnTrouble& operator=(const OwnTrouble&) = delete;

    StoreTrouble Take() { return m_database.TakeTrouble(); }

  private:
    Database& m_database;
    const StoreTrouble m_before;
};

// A prepared statement. One that failed to compile is inert: binding does nothing, Step fails. The database,
// which outlives it, notes its failures.
class Statement {
  public:
    enum class Result { Row, Done, Failed };

    Statement() = default;
    Statement(Database& database, std::string_view sql);
    ~Statement();
    Statement(Statement&& other) noexcept;
    Statement& operator=(Statement&& other) noexcept;

    bool IsValid() const { return m_statement != nullptr; }
    // Since the last Reset; of an inert one always. A value that could not be read counts, which otherwise
    // looks like one of another type.
    bool HasFailed() const { return m_failed || !m_statement; }

    // Parameters from 1. Texts and blobs are borrowed until Reset. Where one cannot be bound, Step fails.
    void BindInteger(int parameter, int64_t value);
    void BindText(int parameter, std::string_view text);
    void BindBlob(int parameter, std::span<const BYTE> bytes);
    void BindNull(int parameter);

    [[nodiscard]] Result Step();
    // Steps a statement that gives no rows.
    [[nodiscard]] bool Run() { return Step() == Result::Done; }
    // Ends the execution and gives back the locks it holds.
    void Reset();

    // Columns from 0 of the current row; none when the value is of another type. What is returned is borrowed
    // until the next Step or Reset.
    bool IsNull(int column) const;
    std::optional<int64_t> Integer(int column) const;
    std::optional<std::string_view> Text(int column) const;
    std::optional<std::span<const BYTE>> Blob(int column) const;

  private:
    void Check(int bound);
    void Fail() const;
    void FailForMemory() const;

    Database* m_database = nullptr;
    sqlite3_stmt* m_statement = nullptr;
    StoreTrouble m_compiling = StoreTrouble::None; // why it is inert
    mutable bool m_failed = false;
};

// Resets a statement at the end of its use.
class ScopedReset {
  public:
    explicit ScopedReset(Statement& statement) : m_statement(statement) {}
    ~ScopedReset() { m_statement.Reset(); }
    ScopedReset(const ScopedReset&) = delete;
    ScopedReset& operator=(const ScopedReset&) = delete;

  private:
    Statement& m_statement;
};

// A write transaction, rolled back unless committed. Failing to begin makes Commit fail too.
class Transaction {
  public:
    explicit Transaction(Database& database);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    bool IsOpen() const { return m_open; }
    [[nodiscard]] bool Commit();

  private:
    Database& m_database;
    bool m_open;
};

} // namespace mervane
