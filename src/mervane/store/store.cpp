#include "mervane/store/store.h"

#include <algorithm>
#include <utility>

#include "mervane/file/store_path.h"
#include "mervane/store/cursor.h"
#include "mervane/store/store_write.h"
#include "mervane/values/category_name.h"

namespace mervane {

namespace {

// So many new records in one transaction are put into their orders one by one; beyond that making the orders
// anew costs less.
constexpr int kInsertsToFollow = 200;

} // namespace

std::shared_ptr<Store> Store::Open(StoreTrouble* trouble, std::vector<RenamedFile>* setAside)
{
    *trouble = StoreTrouble::Unreachable;
    // The stores that are open, so that all databases of the process share one connection.
    static std::vector<std::weak_ptr<Store>> s_open;
    const std::wstring path = FollowedStorePath().value_or(L"");
    if (path.empty())
        return nullptr;
    const std::wstring key = PathKey(path);
    std::erase_if(s_open, [](const auto& store) { return store.expired(); });
    for (const auto& candidate : s_open)
        if (auto store = candidate.lock(); store && store->m_pathKey == key) {
            *trouble = StoreTrouble::None;
            return store;
        }
    std::shared_ptr<Store> store(new Store(path));
    if (!store->m_connection.Open(path, NamedStorePath())) {
        store->Note(StoreTrouble::Other);
        *trouble = store->TakeTrouble();
        *setAside = store->TakeSetAside();
        return nullptr;
    }
    store->m_seen = store->m_connection.State();
    store->m_ledger.Open(key);
    store->m_changes.Start();
    s_open.push_back(store);
    *trouble = StoreTrouble::None;
    return store;
}

StoreTrouble Store::Leave(std::shared_ptr<Store> store)
{
    if (store.use_count() > 1)
        return StoreTrouble::None;
    store->m_backup.End();
    return store->m_connection.End();
}

Store::Store(const std::wstring& path)
    : m_pathKey(PathKey(path)),
      m_backup(m_connection, path), m_tables{Table(m_connection.Sql(), InfoOf(TableId::Journal)),
                                             Table(m_connection.Sql(), InfoOf(TableId::Categories)),
                                             Table(m_connection.Sql(), InfoOf(TableId::Contacts))},
      m_names(m_connection.Sql()), m_changes(m_pathKey, [this] { Look(); })
{}

void Store::ForgetAll()
{
    ++m_version;
    m_names.ForgetAll();
    m_indexes = {};
}

void Store::ForgetIncomplete()
{
    m_names.ForgetIncomplete();
    for (auto& index : m_indexes)
        if (index && (MayPass(index->MissingRecords()) || MayPass(index->MissingValues())))
            index.reset();
}

void Store::BeginRead()
{
    ++m_readDepth;
    EndLeftOpen();
    if (!m_connection.InTransaction())
        BeginView();
}

// What was read of it meanwhile is not kept.
void Store::EndLeftOpen()
{
    if (!m_connection.IsLeftOpen())
        return;
    m_connection.Rollback();
    ForgetAll();
}

// Without it what is held in memory may be older than the file: the next read tries again.
void Store::BeginView()
{
    if (!m_connection.BeginRead() || !NoticeForeignChanges())
        m_connection.Rollback();
}

void Store::EndRead()
{
    if (--m_readDepth || m_bulk.depth)
        return;
    EndLeftOpen();
    m_connection.EndRead();
}

// Windows that paint during the wait read by the same objects, whose walks go on where they stood.
bool Store::BeginWrite()
{
    EndLeftOpen();
    std::vector<std::pair<Cursor*, Cursor::Place>> places;
    for (Cursor* cursor : m_cursors)
        places.emplace_back(cursor, cursor->Stand());
    const bool isOpen = m_connection.BeginWrite();
    for (const auto& [cursor, place] : places)
        if (std::find(m_cursors.begin(), m_cursors.end(), cursor) != m_cursors.end())
            cursor->StandAgain(place);
    return isOpen && NoticeForeignChanges() && m_connection.InTransaction();
}

// Nothing of it is to be seen while it waits.
void Store::BeginBulk()
{
    if (m_bulk.depth) {
        ++m_bulk.depth;
        return;
    }
    const bool isOpen = BeginWrite();
    m_bulk = {};
    m_bulk.depth = 1;
    m_bulk.failed = !isOpen;
    if (m_bulk.failed) {
        NoteBulkTrouble();
        m_connection.Rollback();
    }
}

void Store::NoteWrite(const TableChange& what)
{
    if (m_bulk.depth)
        NoteWriteInBulk(what);
    else
        m_changes.Announce(what.table, what.change);
}

// Work is what has more than one write: a single one is told as the change that it is, with the use counts
// that were changed with it.
void Store::NoteWriteInBulk(const TableChange& what)
{
    if (!what.change.touchesNames)
        m_bulk.use = ++m_bulk.uses == 1 ? what : Bulk().use;
    else if (++m_bulk.changes == 1)
        m_bulk.first = what;
    else if (m_bulk.changes == 2)
        m_changes.Announce(TableId::Journal, {kChangeWorkBegins});
}

TableChange Store::BulkChange() const
{
    if (m_bulk.changes == 0 && m_bulk.uses)
        return m_bulk.use;
    TableChange what = m_bulk.changes == 1 ? m_bulk.first : Bulk().first;
    what.change.alsoUses = m_bulk.uses != 0;
    return what;
}

void Store::NoteBulkTrouble()
{
    if (m_bulk.trouble == StoreTrouble::None)
        m_bulk.trouble = m_connection.Sql().Trouble();
}

bool Store::EndBulk(bool keep)
{
    m_bulk.failed |= !keep;
    if (--m_bulk.depth)
        return !m_bulk.failed;
    const TableChange what = BulkChange();
    const bool kept = !m_bulk.failed && CommitAs(what);
    if (!m_bulk.failed && !kept)
        NoteBulkTrouble();
    m_connection.Rollback();
    if (!kept)
        ForgetAll();
    if (m_readDepth)
        BeginView();
    // Where the beginning was told the end is, also of work that was given up.
    if (m_bulk.changes > 1 || (kept && (m_bulk.changes || m_bulk.uses)))
        m_changes.Announce(what.table, what.change);
    return kept;
}

const std::shared_ptr<TableIndex>& Store::IndexOf(TableId table)
{
    auto& index = m_indexes[mervane::IndexOf(table)];
    if (!index)
        index = std::make_shared<TableIndex>(m_connection.Sql(), table, m_names);
    return index;
}

StoreTrouble Store::Scan(TableId table, const std::string& columns, const OnScannedRow& onRow)
{
    return ScanTable(m_connection.Sql(), InfoOf(table).name, columns, onRow);
}

// Before a write: walks that stand on the record find their way on. values is null for a deletion.
void Store::TellCursors(TableId table, CEOID id, const RecordValues* values)
{
    for (Cursor* cursor : m_cursors)
        if (cursor->Table() == table)
            cursor->BeforeWrite(id, values);
}

void Store::AfterNames(TableId table)
{
    m_names.Forget(table);
    if (auto& journal = m_indexes[mervane::IndexOf(TableId::Journal)])
        journal->NamesChanged(table);
}

void Store::AfterWrite(TableId table, const Change& change, const RecordValues* values)
{
    ++m_version;
    if (table != TableId::Journal)
        AfterNames(table);
    // A new category has the table's own values for what was not sent, so its index is read again.
    if (auto& index = m_indexes[mervane::IndexOf(table)]) {
        if (change.code == kChangeDeleted)
            index->Removed(change.id);
        else if (change.code == kChangeModified)
            index->Updated(change.id, *values);
        else if (table == TableId::Categories || (m_bulk.depth && ++m_bulk.inserts > kInsertsToFollow) ||
                 !index->Inserted(change.id, *values))
            index.reset();
    }
    NoteWrite({table, change});
}

// A category has a name of 1 to 59 characters that no other one has, without regard to case.
bool Store::MayHaveName(CEOID id, const RecordValues& values)
{
    const int index = FindProperty(InfoOf(TableId::Categories), kCategoriesKey);
    if (!values.Changes(index))
        return id != 0;
    const CEPROPVAL* value = values.Value(index);
    const size_t length = value ? wcslen(value->val.lpwstr) : 0;
    if (length == 0 || length >= kCategoryNameSize)
        return false;
    const NameCache& names = NamesOf(TableId::Categories);
    // A name that could not be read may be this one.
    Note(names.Missing());
    if (names.Missing() != StoreTrouble::None)
        return false;
    for (const NameCache::Entry& entry : names.Entries())
        if (entry.id != id && IsSameCategoryName(entry.name, {value->val.lpwstr, length}))
            return false;
    return true;
}

CEOID Store::WriteRecord(TableId table, CEOID id, const RecordValues& values)
{
    StoreWrite write(*this);
    if (!write.IsOpen() || (table == TableId::Categories && !MayHaveName(id, values)))
        return 0;
    const bool creates = id == 0;
    if (!creates)
        TellCursors(table, id, &values);
    if (!write.IsOpen())
        return 0;
    const CEOID written = creates                             ? TableOf(table).Insert(values)
                          : TableOf(table).Update(id, values) ? id
                                                              : 0;
    const Change change{creates ? kChangeCreated : kChangeModified, written};
    if (!written || !write.Commit({table, change}))
        return 0;
    AfterWrite(table, change, &values);
    (void)TakeTrouble(); // it was done, whatever an order wanted to know
    return written;
}

bool Store::DeleteRecord(TableId table, CEOID id)
{
    StoreWrite write(*this);
    if (!write.IsOpen())
        return false;
    TellCursors(table, id, nullptr);
    const Change change{kChangeDeleted, id};
    if (!write.IsOpen() || !TableOf(table).Delete(id) || !write.Commit({table, change}))
        return false;
    AfterWrite(table, change, nullptr);
    (void)TakeTrouble();
    return true;
}

} // namespace mervane
