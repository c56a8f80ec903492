// A store's connection: its transactions, its view of other connections' changes, and its write-ahead log.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "mervane/file/file_identity.h"
#include "mervane/file/turn.h"
#include "mervane/sqlite/file_start.h"
#include "mervane/sqlite/log_state.h"
#include "mervane/sqlite/sql_database.h"

namespace mervane {

class Connection {
  public:
    Connection() = default;
    ~Connection() { (void)End(); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // name: the path to look for it by; links on the way may lead elsewhere later. Programs open a store one
    // after the other: each looks at the file and its neighbours. What another program has made or removed by
    // half would look like what a loss of power leaves.
    [[nodiscard]] bool Open(const std::wstring& path, const std::wstring& name);
    // Before the connection goes, which is to be soon: no other program opens the store until it has gone,
    // nor closes it. The log stays where the store is not at its path any more, or was written over. Where it
    // is not there, a whole copy of what was open is kept beside the path, as NAME.replaced-TIME. None, or
    // why there is no such copy.
    StoreTrouble End();
    Database& Sql() { return m_database; }
    // What lay beside the file when it was opened and is not its own: told once.
    std::vector<RenamedFile> TakeSetAside() { return std::exchange(m_setAside, {}); }
    // Whether its name still leads to the file that is open, and nobody has written over that; else why not.
    StoreTrouble LookAtFile();

    bool InTransaction() const { return m_database.InTransaction(); }
    [[nodiscard]] bool BeginRead();
    // Waits for another process's write, up to 2.5 seconds, in which the program's waiter may read. Ends the
    // read that is open. Fails for a read-only file, and at once inside that waiting.
    [[nodiscard]] bool BeginWrite();
    // A write is on disk when this returns true. It is refused where its name leads to another file by now,
    // or to none: what would be written nobody would find again.
    [[nodiscard]] bool Commit();
    // Whether the last commit has written something.
    bool HasLogged() const { return m_logged; }
    void Rollback();
    // Whether a rollback has failed: what is seen may be what was given up.
    bool IsLeftOpen() const { return m_isLeftOpen; }
    // Never a commit, or what a failed rollback has left open would be one.
    void EndRead() { Rollback(); }

    // Whether another connection has changed the store since this was last answered. Inside a transaction.
    [[nodiscard]] Answer HasForeignChange();
    // What the transaction sees; after a write, what that has made of it. None where it is not known, always
    // in a store without a log.
    const std::optional<LogState>& State() const { return m_state; }

  private:
    [[nodiscard]] bool Prepare();
    void LookForTheFirstTime();
    bool IsWrittenOver();
    [[nodiscard]] StoreTrouble KeepWhole(const std::wstring& path);
    [[nodiscard]] bool TryWrite();
    [[nodiscard]] bool RunCommit();
    static int OnCommit(void* self, sqlite3* handle, const char* name, int logPages);
    void MaybeShortenLog();
    std::optional<LogState> LogStateNow();
    [[nodiscard]] bool TakeView();
    std::optional<LogState> StateAfterCommit();

    std::optional<Turn> m_closing; // until the database is closed
    Database m_database;
    std::wstring m_path;
    OpenedFile m_file;
    FileStart m_start;
    std::vector<RenamedFile> m_setAside;
    Statement m_begin;
    Statement m_beginImmediate;
    Statement m_commit;
    Statement m_rollback;
    Statement m_dataVersion;
    bool m_hasLog = false;
    bool m_isLeftOpen = false;
    std::optional<int64_t> m_version; // of the content, as the transaction sees it
    std::optional<int64_t> m_seenVersion;
    std::optional<LogState> m_state;
    bool m_logged = false;
    int m_logPages = 0;
    int m_nextShortening = 0;
};

} // namespace mervane
