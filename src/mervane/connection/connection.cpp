#include "mervane/connection/connection.h"

#include <sqlite3.h>

#include <algorithm>

#include "mervane/backup/store_copy.h"
#include "mervane/connection/schema.h"
#include "mervane/file/aside_name.h"
#include "mervane/file/store_path.h"
#include "mervane/file/store_waiter.h"

namespace mervane {

namespace {

// The log goes into the file when the last program closes the store. Saves do not wait for that, except after
// some thousand of them: a log of more pages than this makes reading slow.
constexpr int kLongLog = 4000;
constexpr int kLogStep = 1000; // until the next try, when a reader was in the way

// How often a transaction begins anew because another program has written in the moment of its beginning.
constexpr int kMostBeginnings = 5;
// Another program that opens or closes the store for longer is not waited for any more.
constexpr DWORD kOpeningLimit = 10'000; // milliseconds
constexpr DWORD kClosingLimit = 2'500;  // the end of a session may be waiting
// Another program's write that takes longer is not waited for.
constexpr ULONGLONG kLongestWait = 2500; // milliseconds
constexpr DWORD kLongestStep = 25;       // between two tries

bool RunOnce(Statement& statement)
{
    const ScopedReset reset(statement);
    return statement.Run();
}

std::wstring TurnName(const std::wstring& path)
{
    return L"Store." + std::to_wstring(StoreNumber(path));
}

bool UsesLog(Database& database)
{
    Statement mode(database, "PRAGMA journal_mode");
    return mode.Step() == Statement::Result::Row && mode.Text(0) == "wal";
}

} // namespace

// Closing brings the log into the file and deletes it, by its name, which may be another store's by now. That
// it lies at its own path is enough, wherever a link leads.
StoreTrouble Connection::End()
{
    const std::wstring path = std::exchange(m_path, {});
    if (!m_database.Handle() || path.empty())
        return StoreTrouble::None;
    m_closing.emplace(TurnName(path), kClosingLimit);
    const bool isThere = OpenedFile(path, m_database.FileHandle()).Look() == StoreTrouble::None;
    if (isThere && !IsWrittenOver())
        return StoreTrouble::None;
    m_database.KeepLog();
    return isThere || !m_hasLog ? StoreTrouble::None : KeepWhole(path);
}

bool Connection::IsWrittenOver()
{
    return m_hasLog && m_start.Look(m_database) != StoreTrouble::None;
}

// Nobody finds the file any more, and without it the log is of no use.
StoreTrouble Connection::KeepWhole(const std::wstring& path)
{
    Rollback();
    const std::wstring replaced = ReplacedPath(path);
    DeleteUnfinished(replaced);
    StoreCopy copy;
    if (!copy.Begin(m_database, replaced) || !copy.CopyAll() || !copy.Name(FreePathOfNow(replaced)))
        return copy.Trouble();
    copy.Keep();
    return StoreTrouble::None;
}

bool Connection::Open(const std::wstring& path, const std::wstring& name)
{
    const Turn turn(TurnName(path), kOpeningLimit);
    if (const StoreTrouble trouble = OpenStoreFile(m_database, path, &m_setAside);
        trouble != StoreTrouble::None) {
        m_database.TakeTrouble();
        m_database.NoteTrouble(trouble);
        return false;
    }
    if (!Prepare())
        return false;
    m_path = path;
    m_file = OpenedFile(name, m_database.FileHandle());
    m_nextShortening = kLongLog;
    sqlite3_wal_hook(m_database.Handle(), OnCommit, this);
    m_hasLog = !m_database.IsReadOnly() && UsesLog(m_database);
    // What was there before counts as seen, and what was tried on the way as done.
    const bool isSeen = BeginRead() && HasForeignChange() != Answer::Failed;
    EndRead();
    if (!isSeen)
        return false;
    LookForTheFirstTime();
    m_database.TakeTrouble();
    return true;
}

// Until the log of a killed program is brought in, nobody knows how much of it the file has.
void Connection::LookForTheFirstTime()
{
    if (m_hasLog && !ReadCheckpointed(m_database))
        sqlite3_wal_checkpoint_v2(m_database.Handle(), nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
    (void)LookAtFile();
}

// A transaction could not be ended by a statement that is not there.
bool Connection::Prepare()
{
    m_begin = Statement(m_database, "BEGIN");
    m_beginImmediate = Statement(m_database, "BEGIN IMMEDIATE");
    m_commit = Statement(m_database, "COMMIT");
    m_rollback = Statement(m_database, "ROLLBACK");
    m_dataVersion = Statement(m_database, "PRAGMA data_version");
    return m_begin.IsValid() && m_beginImmediate.IsValid() && m_commit.IsValid() && m_rollback.IsValid() &&
           m_dataVersion.IsValid();
}

int Connection::OnCommit(void* self, sqlite3*, const char*, int logPages)
{
    static_cast<Connection*>(self)->m_logPages = logPages;
    static_cast<Connection*>(self)->m_logged = true;
    return SQLITE_OK;
}

std::optional<LogState> Connection::LogStateNow()
{
    return m_hasLog ? ReadLogState(m_database) : std::nullopt;
}

// Makes the transaction see what is there now. True when it is known which commit that ends with.
bool Connection::TakeView()
{
    const auto before = LogStateNow();
    const ScopedReset reset(m_dataVersion);
    m_version = m_dataVersion.Step() == Statement::Result::Row ? m_dataVersion.Integer(0) : std::nullopt;
    m_state = LogStateNow();
    if (m_state == before)
        return true;
    m_state.reset();
    return false;
}

StoreTrouble Connection::LookAtFile()
{
    const StoreTrouble trouble = m_file.Look();
    return trouble == StoreTrouble::None && IsWrittenOver() ? StoreTrouble::OtherFile : trouble;
}

bool Connection::BeginRead()
{
    for (int i = 1; RunOnce(m_begin); ++i) {
        if (TakeView() || i == kMostBeginnings)
            return true;
        Rollback();
    }
    return false;
}

bool Connection::BeginWrite()
{
    if (m_database.IsReadOnly()) {
        m_database.NoteTrouble(StoreTrouble::ReadOnly);
        return false;
    }
    if (IsWaitingForStore()) {
        m_database.NoteTrouble(StoreTrouble::Locked);
        return false;
    }
    // What a waiter's reads fail in is theirs.
    const OwnTrouble own(m_database);
    const ULONGLONG end = GetTickCount64() + kLongestWait;
    bool isOpen = TryWrite();
    for (DWORD step = 1; !isOpen && m_database.Trouble() == StoreTrouble::Locked && GetTickCount64() < end;
         step = std::min(2 * step, kLongestStep)) {
        WaitForStore(step);
        m_database.TakeTrouble();
        isOpen = TryWrite();
    }
    if (isOpen)
        (void)TakeView();
    return isOpen;
}

// SQLite's own waiting would hold up the thread.
bool Connection::TryWrite()
{
    Rollback();
    m_database.WaitForLocks(false);
    const bool isOpen = RunOnce(m_beginImmediate);
    m_database.WaitForLocks(true);
    return isOpen;
}

// Without a log a lock that cannot be given back is told of the commit, whose journal is gone by then: it is
// done, and would be done twice if it were called a failure.
bool Connection::RunCommit()
{
    OwnTrouble own(m_database);
    if (RunOnce(m_commit))
        return true;
    if (sqlite3_extended_errcode(m_database.Handle()) != SQLITE_IOERR_UNLOCK)
        return false;
    (void)own.Take();
    return true;
}

bool Connection::Commit()
{
    m_logged = false;
    const StoreTrouble trouble = LookAtFile();
    m_database.NoteTrouble(trouble);
    if (trouble != StoreTrouble::None || !RunCommit())
        return false;
    if (m_logged)
        m_state = StateAfterCommit();
    if (m_hasLog)
        (void)m_start.Look(m_database); // the commit may have begun another log: what is seen is taken anew
    MaybeShortenLog();
    return true;
}

// Another program may have written again by now; the log's state in between is lost then.
std::optional<LogState> Connection::StateAfterCommit()
{
    const auto now = LogStateNow();
    return m_state && now && now->number == m_state->number + 1 ? now : std::nullopt;
}

void Connection::Rollback()
{
    if (InTransaction() && !RunOnce(m_rollback))
        (void)m_database.Execute("ROLLBACK"); // the next read or write tries it again
    m_isLeftOpen = InTransaction();
}

void Connection::MaybeShortenLog()
{
    if (m_logPages < kLongLog)
        m_nextShortening = kLongLog;
    if (m_logPages < m_nextShortening)
        return;
    sqlite3_wal_checkpoint_v2(m_database.Handle(), nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
    m_nextShortening = m_logPages + kLogStep;
}

Answer Connection::HasForeignChange()
{
    if (!m_version)
        return Answer::Failed;
    const bool changed = m_seenVersion && m_version != m_seenVersion;
    m_seenVersion = m_version;
    return AnswerOf(changed);
}

} // namespace mervane
