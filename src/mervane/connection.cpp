#include "mervane/connection.h"

#include <sqlite3.h>

#include <algorithm>

#include "mervane/schema.h"

namespace mervane {

namespace {

// The log goes into the file when the last program closes the store. Saves do not wait for that, except after
// some thousand of them: a log of more pages than this makes reading slow.
constexpr int kLongLog = 4000;
constexpr int kLogStep = 1000; // until the next try, when a reader was in the way

bool RunOnce(Statement& statement)
{
    const ScopedReset reset(statement);
    return statement.Run();
}

} // namespace

bool Connection::Open(const std::wstring& path)
{
    if (!OpenStoreFile(m_database, path))
        return false;
    m_begin = Statement(m_database, "BEGIN");
    m_beginImmediate = Statement(m_database, "BEGIN IMMEDIATE");
    m_commit = Statement(m_database, "COMMIT");
    m_rollback = Statement(m_database, "ROLLBACK");
    m_dataVersion = Statement(m_database, "PRAGMA data_version");
    m_nextShortening = kLongLog;
    sqlite3_wal_hook(m_database.Handle(), OnCommit, this);
    // What was there before counts as seen.
    (void)HasForeignChange();
    return true;
}

int Connection::OnCommit(void* self, sqlite3*, const char*, int logPages)
{
    static_cast<Connection*>(self)->m_logPages = logPages;
    return SQLITE_OK;
}

bool Connection::BeginRead()
{
    return RunOnce(m_begin);
}

bool Connection::BeginWrite()
{
    return !m_database.IsReadOnly() && RunOnce(m_beginImmediate);
}

bool Connection::Commit()
{
    if (!RunOnce(m_commit))
        return false;
    MaybeShortenLog();
    return true;
}

void Connection::Rollback()
{
    if (InTransaction())
        (void)RunOnce(m_rollback);
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

bool Connection::HasForeignChange()
{
    const ScopedReset reset(m_dataVersion);
    if (m_dataVersion.Step() != Statement::Result::Row)
        return false;
    const auto version = m_dataVersion.Integer(0);
    const bool changed = m_seenVersion && version != m_seenVersion;
    m_seenVersion = version;
    return changed;
}

} // namespace mervane
