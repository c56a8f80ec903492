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
    if (!OpenStoreFile(m_database, path) || !Prepare())
        return false;
    m_nextShortening = kLongLog;
    sqlite3_wal_hook(m_database.Handle(), OnCommit, this);
    // What was there before counts as seen, and what was tried on the way as done.
    if (HasForeignChange() == Answer::Failed)
        return false;
    m_database.TakeTrouble();
    return true;
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
    return SQLITE_OK;
}

bool Connection::BeginRead()
{
    return RunOnce(m_begin);
}

bool Connection::BeginWrite()
{
    if (m_database.IsReadOnly()) {
        m_database.NoteTrouble(StoreTrouble::ReadOnly);
        return false;
    }
    return RunOnce(m_beginImmediate);
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
    if (InTransaction() && !RunOnce(m_rollback))
        (void)m_database.Execute("ROLLBACK"); // the next read or write tries it again
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
    const ScopedReset reset(m_dataVersion);
    if (m_dataVersion.Step() != Statement::Result::Row)
        return Answer::Failed;
    const auto version = m_dataVersion.Integer(0);
    const bool changed = m_seenVersion && version != m_seenVersion;
    m_seenVersion = version;
    return AnswerOf(changed);
}

} // namespace mervane
