// The part of Store that takes over what other programs have written.
#include <algorithm>
#include <memory>
#include <utility>

#include "mervane/store/store.h"

namespace mervane {

namespace {

// So many commits are followed one by one; reading all anew costs less than more of them.
constexpr size_t kMostFollowed = 500;
constexpr ULONGLONG kFileLookPeriod = 400; // milliseconds

// Statements give up at once where another program has a lock.
class NoWait {
  public:
    explicit NoWait(Database& database) : m_database(database) { m_database.WaitForLocks(false); }
    ~NoWait() { m_database.WaitForLocks(true); }
    NoWait(const NoWait&) = delete;
    NoWait& operator=(const NoWait&) = delete;

  private:
    Database& m_database;
};

struct FreeBlock {
    void operator()(CEPROPVAL* properties) const { LocalFree(properties); }
};

} // namespace

// Before a transaction writes, what it sees is compared with what was seen last. Otherwise our own commit
// would hide foreign commits before it. False when it cannot be told whether there are any.
bool Store::NoticeForeignChanges()
{
    ForgetIncomplete();
    const Answer changed = m_connection.HasForeignChange();
    if (changed == Answer::Yes)
        TakeOverChanges();
    return changed != Answer::Failed;
}

void Store::TakeOverChanges()
{
    const std::optional<LogState> seen = m_seen;
    m_seen = m_connection.State();
    const auto changes = seen && m_seen ? m_ledger.Between(*seen, *m_seen) : std::nullopt;
    if (changes)
        return Follow(*changes);
    ForgetAll();
    m_changes.NoteForeignChange();
}

void Store::Look()
{
    if (m_connection.InTransaction())
        return;
    LookForForeignChanges();
    if (GetTickCount64() >= m_nextFileLook)
        LookAtFile();
}

// What could not be read before is told like a change: those who show it read it again. A lock is not waited
// for, which would hold up the thread: the next look comes soon.
void Store::LookForForeignChanges()
{
    const NoWait noWait(m_connection.Sql());
    BeginRead();
    const bool canRead = m_connection.InTransaction();
    EndRead();
    if (canRead && m_unread.IsDue(GetTickCount64()))
        m_changes.NoteForeignChange();
}

// Those who show the store may say that nothing more can be written.
void Store::LookAtFile()
{
    m_nextFileLook = GetTickCount64() + kFileLookPeriod;
    const StoreTrouble now = m_connection.LookAtFile();
    if (std::exchange(m_fileTrouble, now) != now)
        m_changes.NoteForeignChange();
}

void Store::Follow(const std::vector<TableChange>& changes)
{
    for (const TableChange& what : changes) {
        m_changes.NoteForeignChange(what);
        if (what.change.alsoUses)
            m_indexes[mervane::IndexOf(TableId::Categories)].reset();
    }
    const bool isBulk = std::any_of(changes.begin(), changes.end(), [](const TableChange& what) {
        return IsWorkCode(what.change.code) && what.change.touchesNames;
    });
    if (isBulk || changes.size() > kMostFollowed)
        return ForgetAll();
    m_version += changes.size();
    // A record is read once, as it is now, however often it was written.
    std::vector<TableChange> records;
    for (const TableChange& what : changes)
        if (std::none_of(records.begin(), records.end(), [&](const TableChange& other) {
                return other.table == what.table && other.change.id == what.change.id &&
                       other.change.touchesNames == what.change.touchesNames;
            }))
            records.push_back(what);
    for (const TableChange& what : records)
        FollowOne(what);
}

void Store::FollowOne(const TableChange& what)
{
    if (what.table != TableId::Journal && what.change.touchesNames)
        AfterNames(what.table);
    // There are few categories, and what is kept of them is soon read again.
    if (what.table == TableId::Categories)
        m_indexes[mervane::IndexOf(what.table)].reset();
    else
        FollowRecord(what.table, what.change.id);
}

void Store::FollowRecord(TableId table, CEOID id)
{
    const std::shared_ptr<TableIndex> index = m_indexes[mervane::IndexOf(table)];
    OwnTrouble own(m_connection.Sql());
    if (index && !FollowIndex(*index, table, id))
        m_indexes[mervane::IndexOf(table)].reset();
    // A failure here does not concern the running operation, which reads for itself, unless it has ended that
    // operation's transaction.
    if (m_connection.InTransaction())
        (void)own.Take();
}

// false when the index has to be made anew.
bool Store::FollowIndex(TableIndex& index, TableId table, CEOID id)
{
    const std::vector<CEPROPID> kept = index.KeptProperties();
    if (kept.empty())
        return false;
    auto count = static_cast<WORD>(kept.size());
    CEPROPVAL* block = nullptr;
    const CEOID read = TableOf(table).Read(id, &count, kept.data(), &block);
    const std::unique_ptr<CEPROPVAL, FreeBlock> owner(block);
    if (!read) {
        if (TableOf(table).Exists(id) != Answer::No)
            return false;
        TellCursors(table, id, nullptr);
        index.Removed(id);
        return true;
    }
    for (WORD i = 0; i < count; ++i)
        if (block[i].wFlags & CEDB_PROPNOTFOUND)
            block[i].wFlags = CEDB_PROPDELETE;
    RecordValues values;
    if (!values.Read(InfoOf(table), count, block))
        return false;
    if (!index.Has(id))
        return index.Inserted(id, values);
    TellCursors(table, id, &values);
    index.Updated(id, values);
    return true;
}

// Commits what was written and says in the ledger what that was.
bool Store::CommitAs(const TableChange& what)
{
    const std::optional<LogState> before = m_connection.State();
    if (before)
        m_ledger.Announce(*before, what);
    const bool committed = m_connection.Commit();
    if (before)
        m_ledger.Close(*before, committed && m_connection.HasLogged() ? m_connection.State() : std::nullopt);
    if (committed)
        m_seen = m_connection.State();
    return committed;
}

} // namespace mervane
