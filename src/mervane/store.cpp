#include "mervane/store.h"

#include <vector>

#include "mervane/db_categories.h"
#include "mervane/schema.h"
#include "mervane/store_path.h"

namespace mervane {

// One write, or its part in a bulk: rolled back unless committed.
class Store::Write {
  public:
    explicit Write(Store& store) : m_store(store)
    {
        if (m_store.m_bulkDepth) {
            m_open = !m_store.m_bulkFailed && m_store.m_database.InTransaction();
            return;
        }
        // A read transaction cannot become a write transaction once another process has written, so it ends
        // here.
        m_renews = m_store.m_database.InTransaction() && m_store.m_database.Execute("COMMIT");
        m_open = m_store.m_database.Execute("BEGIN IMMEDIATE");
        if (m_open)
            m_store.NoticeForeignChanges();
    }
    ~Write()
    {
        if (m_store.m_bulkDepth) {
            if (!m_done && !m_store.m_database.InTransaction())
                m_store.m_bulkFailed = true;
            return;
        }
        if (m_open && !m_done && m_store.m_database.InTransaction())
            (void)m_store.m_database.Execute("ROLLBACK");
        if (m_renews && m_store.m_database.Execute("BEGIN"))
            m_store.NoticeForeignChanges();
    }
    Write(const Write&) = delete;
    Write& operator=(const Write&) = delete;

    bool IsOpen() const { return m_open; }
    bool Commit()
    {
        m_done = m_store.m_bulkDepth || m_store.m_database.Execute("COMMIT");
        return m_done;
    }

  private:
    Store& m_store;
    bool m_open = false;
    bool m_done = false;
    bool m_renews = false;
};

std::shared_ptr<Store> Store::Open()
{
    // The stores that are open, so that all databases of the process share one connection.
    static std::vector<std::weak_ptr<Store>> s_open;
    const std::wstring path = StorePath();
    if (path.empty())
        return nullptr;
    const std::wstring key = PathKey(path);
    std::erase_if(s_open, [](const auto& store) { return store.expired(); });
    for (const auto& candidate : s_open)
        if (auto store = candidate.lock(); store && store->m_pathKey == key)
            return store;
    std::shared_ptr<Store> store(new Store(key));
    if (!OpenStoreFile(store->m_database, path))
        return nullptr;
    store->m_dataVersion = Statement(store->m_database, "PRAGMA data_version");
    s_open.push_back(store);
    return store;
}

Store::Store(const std::wstring& pathKey)
    : m_pathKey(pathKey), m_tables{Table(m_database, InfoOf(TableId::Journal)),
                                   Table(m_database, InfoOf(TableId::Categories)),
                                   Table(m_database, InfoOf(TableId::Contacts))},
      m_changes(pathKey)
{}

Store::~Store() = default;

void Store::NoticeForeignChanges()
{
    const ScopedReset reset(m_dataVersion);
    if (m_dataVersion.Step() != Statement::Result::Row)
        return;
    const auto version = m_dataVersion.Integer(0);
    if (version != m_seenVersion)
        ForgetCaches();
    m_seenVersion = version;
}

void Store::ForgetCaches()
{
    for (auto& names : m_names)
        names.reset();
    for (auto& rows : m_rows)
        rows.clear();
}

void Store::BeginRead()
{
    if (m_readDepth++ || m_database.InTransaction())
        return;
    (void)m_database.Execute("BEGIN");
    NoticeForeignChanges();
}

void Store::EndRead()
{
    if (--m_readDepth == 0 && m_bulkDepth == 0 && m_database.InTransaction())
        (void)m_database.Execute("COMMIT");
}

void Store::BeginBulk()
{
    if (m_bulkDepth++)
        return;
    if (m_database.InTransaction())
        (void)m_database.Execute("COMMIT");
    m_bulkFailed = !m_database.Execute("BEGIN IMMEDIATE");
    if (m_bulkFailed)
        return;
    NoticeForeignChanges();
    m_changes.Announce(TableId::Journal, {kChangeWorkBegins});
}

bool Store::EndBulk(bool keep)
{
    m_bulkFailed |= !keep;
    if (--m_bulkDepth)
        return !m_bulkFailed;
    const bool kept = !m_bulkFailed && m_database.Execute("COMMIT");
    if (m_database.InTransaction())
        (void)m_database.Execute("ROLLBACK");
    if (!kept)
        ForgetCaches();
    if (m_readDepth)
        (void)m_database.Execute("BEGIN");
    m_changes.Announce(TableId::Journal, {kChangeWorkEnded});
    return kept;
}

void Store::AfterWrite(TableId table, const Change& change)
{
    ForgetCaches();
    if (!m_bulkDepth)
        m_changes.Announce(table, change);
}

bool Store::MayHaveName(CEOID id, const RecordValues& values)
{
    const int index = FindProperty(InfoOf(TableId::Categories), kCategoriesKey);
    if (!values.Changes(index))
        return id != 0;
    const CEPROPVAL* value = values.Value(index);
    const size_t length = value ? wcslen(value->val.lpwstr) : 0;
    if (length == 0 || length >= kCategoryNameSize)
        return false;
    for (const NameCache::Entry& entry : NamesOf(TableId::Categories).Entries())
        if (entry.id != id &&
            CompareStringOrdinal(entry.name.c_str(), -1, value->val.lpwstr, -1, TRUE) == CSTR_EQUAL)
            return false;
    return true;
}

CEOID Store::WriteRecord(TableId table, CEOID id, const RecordValues& values)
{
    Write write(*this);
    if (!write.IsOpen() || (table == TableId::Categories && !MayHaveName(id, values)))
        return 0;
    const bool creates = id == 0;
    if (creates)
        id = TableOf(table).Insert(values);
    else if (!TableOf(table).Update(id, values))
        return 0;
    if (!id || !write.Commit())
        return 0;
    AfterWrite(table, {creates ? kChangeCreated : kChangeModified, id});
    return id;
}

bool Store::DeleteRecord(TableId table, CEOID id)
{
    Write write(*this);
    if (!write.IsOpen() || !TableOf(table).Delete(id) || !write.Commit())
        return false;
    AfterWrite(table, {kChangeDeleted, id});
    return true;
}

bool Store::AddToUses(CEOID category, int step)
{
    constexpr const char* kSql =
        "UPDATE categories SET uses = max(0, min(2147483647, "
        "iif(typeof(uses) = 'integer', max(0, min(2147483647, uses)), 0) + ?)) WHERE oid = ?";
    Write write(*this);
    Statement statement(m_database, kSql);
    statement.BindInteger(1, step);
    statement.BindInteger(2, category);
    if (!write.IsOpen() || !statement.Run() || m_database.Changes() != 1 || !write.Commit())
        return false;
    AfterWrite(TableId::Categories, {kChangeModified, category, false});
    return true;
}

bool Store::ResetUses()
{
    Write write(*this);
    Statement statement(m_database, "UPDATE categories SET uses = 0 WHERE uses IS NOT 0");
    if (!write.IsOpen() || !statement.Run() || !write.Commit())
        return false;
    AfterWrite(TableId::Categories, {kChangeWorkEnded, 0, false});
    return true;
}

const NameCache& Store::NamesOf(TableId table)
{
    auto& names = m_names[IndexOf(table)];
    if (!names)
        names.emplace(m_database, table);
    return *names;
}

std::shared_ptr<const RowIndex> Store::RowsOf(TableId table, const SORTORDERSPEC& sort)
{
    auto& known = m_rows[IndexOf(table)];
    for (const auto& rows : known)
        if (rows->Sort().propid == sort.propid && rows->Sort().dwFlags == sort.dwFlags)
            return rows;
    const NameCache* names = nullptr;
    if (PropertyType(sort.propid) == CEVT_BLOB)
        names = &NamesOf(PropertyNumber(sort.propid) == 104 ? TableId::Categories : TableId::Contacts);
    known.push_back(std::make_shared<RowIndex>(m_database, InfoOf(table), sort, names));
    return known.back();
}

} // namespace mervane
