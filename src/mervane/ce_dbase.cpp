#include "mervane/ce_dbase.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "mervane/store/cursor.h"
#include "mervane/store/store.h"
#include "mervane/values/id_blob.h"

using mervane::Cursor;
using mervane::InfoOf;
using mervane::Store;

namespace {

constexpr uint32_t kMostRecordsCounted = 0xFFFF;

// Never freed: a database may outlive it.
std::vector<CeDBase*>& OpenDatabases()
{
    static auto& s_open = *new std::vector<CeDBase*>;
    return s_open;
}

} // namespace

CeDBase::CeDBase(mervane::TableId table) : m_table(table) {}

CeDBase::~CeDBase()
{
    CeDBase::Close();
}

int CeDBase::OpenTable(HWND owner)
{
    CeDBase::Close();
    m_store = Store::Open(&m_closed, &m_setAside);
    m_trouble = m_closed;
    if (!m_store)
        return 0;
    m_closed = StoreTrouble::Unreachable;
    m_cursor = std::make_unique<Cursor>(*m_store, m_table, SORTORDERSPEC{InfoOf(m_table).defaultSort, 0});
    m_store->Changes().AddOwner(m_table, owner, this);
    OpenDatabases().push_back(this);
    return 1;
}

int CeDBase::Close()
{
    if (!m_store)
        return 0;
    std::erase(OpenDatabases(), this);
    m_store->Changes().RemoveOwner(this);
    m_cursor.reset();
    m_trouble = Store::Leave(std::exchange(m_store, nullptr));
    return 1;
}

void CeDBase::CloseAll()
{
    while (!OpenDatabases().empty())
        OpenDatabases().back()->CeDBase::Close();
}

bool CeDBase::IsOpen() const
{
    return m_store != nullptr;
}

StoreTrouble CeDBase::FileTrouble() const
{
    return m_store ? m_store->FileTrouble() : StoreTrouble::None;
}

std::vector<RenamedFile> CeDBase::TakeSetAside()
{
    return m_store ? m_store->TakeSetAside() : std::exchange(m_setAside, {});
}

void CeDBase::SetSort(const SORTORDERSPEC& sort, int)
{
    if (m_cursor)
        m_cursor->SetSort(sort);
}

void CeDBase::GetSort(SORTORDERSPEC* sort) const
{
    *sort = m_cursor ? m_cursor->Sort() : SORTORDERSPEC{};
}

CEOID CeDBase::SeekRecord(CEOID id)
{
    const ReadOperation operation(*this);
    if (!m_store)
        return 0;
    const bool isThere = m_store->TableOf(m_table).Exists(id) == mervane::Answer::Yes;
    m_cursor->SetCurrent(isThere ? id : 0);
    return m_cursor->Current();
}

CEOID CeDBase::CurrentRecord() const
{
    return m_cursor ? m_cursor->Current() : 0;
}

int CeDBase::SeekFirstRecord()
{
    const ReadOperation operation(*this);
    return m_store && m_cursor->First() ? 1 : 0;
}

int CeDBase::SeekNextRecord()
{
    const ReadOperation operation(*this);
    return m_store && m_cursor->Next() ? 1 : 0;
}

int CeDBase::DeleteRecord(CEOID id)
{
    const Operation operation(*this);
    return m_store && m_store->DeleteRecord(m_table, id) ? 1 : 0;
}

DWORD CeDBase::RecordCount()
{
    const ReadOperation operation(*this);
    if (!m_store)
        return 0;
    return static_cast<DWORD>(std::min(m_cursor->Count(), kMostRecordsCounted));
}

CEOID CeDBase::ReadRecord(WORD* count, const CEPROPID* wanted, CEPROPVAL** properties)
{
    const ReadOperation operation(*this);
    if (properties)
        *properties = nullptr;
    if (!count || !properties)
        return 0;
    CEOID id = 0;
    if (m_store && (wanted || *count == 0))
        id = m_store->TableOf(m_table).Read(m_cursor->Current(), count, wanted, properties);
    if (!id)
        *count = 0;
    return id;
}

std::vector<CEPROPID> CeDBase::ForeignProperties()
{
    const ReadOperation operation(*this);
    return m_store ? m_store->TableOf(m_table).ReadForeign(m_cursor->Current()) : std::vector<CEPROPID>();
}

CEOID CeDBase::WriteRecord(CEOID id, WORD count, const CEPROPVAL* properties)
{
    const Operation operation(*this);
    mervane::RecordValues values;
    if (!m_store || !values.Read(InfoOf(m_table), count, properties))
        return 0;
    return m_store->WriteRecord(m_table, id, values);
}

CEOID CeDBase::SeekRow(uint32_t row)
{
    const ReadOperation operation(*this);
    return m_store ? m_cursor->ToRow(row) : 0;
}

CEOID CeDBase::IdOfRow(uint32_t row)
{
    const ReadOperation operation(*this);
    return m_store ? m_cursor->At(row) : 0;
}

int CeDBase::RowOf(CEOID id)
{
    const ReadOperation operation(*this);
    return m_store ? m_cursor->RowOf(id) : -1;
}

uint32_t CeDBase::SetRowFilter(RowFilter filter)
{
    const bool known = mervane::FindProperty(InfoOf(m_table), filter.property) >= 0;
    if (!m_cursor || !known || !filter.passes)
        return 0;
    m_cursor->SetRowFilter(std::make_shared<const RowFilter>(std::move(filter)));
    return ++m_lastStamp;
}

void CeDBase::ClearRowFilter()
{
    if (m_cursor)
        m_cursor->SetRowFilter(nullptr);
}

uint32_t CeDBase::RowFilterStamp() const
{
    return m_cursor && m_cursor->HasRowFilter() ? m_lastStamp : 0;
}

uint32_t CeDBase::PassingRows()
{
    const ReadOperation operation(*this);
    return m_store ? m_cursor->PassingCount() : 0;
}

int CeDBase::GetStr(CEOID id, wchar_t* text, int size, CEPROPID property)
{
    const ReadOperation operation(*this);
    if (!text || size <= 0)
        return 0;
    text[0] = L'\0';
    if (!m_store)
        return 0;
    const auto stored = m_store->TableOf(m_table).ReadText(id, property);
    if (!stored)
        return 0;
    const size_t length = stored->copy(text, static_cast<size_t>(size) - 1);
    text[length] = L'\0';
    return static_cast<int>(length);
}

uint32_t CeDBase::NameRank(CEOID id)
{
    if (!m_store || !InfoOf(m_table).nameProperty)
        return UINT32_MAX;
    const ReadOperation operation(*this);
    return m_store->NamesOf(m_table).RankOf(id);
}

int CeDBase::SetStrFromBlob(const CEBLOB& blob, wchar_t separator, wchar_t** text)
{
    const ReadOperation operation(*this);
    if (!text)
        return 0;
    *text = nullptr;
    if (!m_store || !InfoOf(m_table).nameProperty)
        return 0;
    const std::vector<CEOID> ids = mervane::ReadIdBlob(blob).ids;
    const mervane::NameCache& names = m_store->NamesOf(m_table);
    if (std::any_of(ids.begin(), ids.end(), [&](CEOID id) { return !names.Find(id); }))
        m_store->Note(names.Missing());
    const std::wstring joined = names.Join(ids, separator);
    if (joined.empty())
        return 0;
    const size_t bytes = (joined.size() + 1) * sizeof(wchar_t);
    *text = static_cast<wchar_t*>(LocalAlloc(LMEM_FIXED, bytes));
    if (!*text) {
        m_store->Note(StoreTrouble::NoMemory);
        return 0;
    }
    memcpy(*text, joined.c_str(), bytes);
    return static_cast<int>(joined.size());
}

CeDBase::ReadScope::ReadScope(CeDBase& database) : m_store(database.m_store)
{
    if (m_store)
        m_store->BeginRead();
}

CeDBase::ReadScope::~ReadScope()
{
    if (m_store)
        m_store->EndRead();
}

CeDBase::BulkScope::BulkScope(CeDBase& database)
    : m_database(database), m_store(database.m_store), m_trouble(database.m_closed)
{
    const Operation operation(database);
    if (m_store)
        m_store->BeginBulk();
}

CeDBase::BulkScope::~BulkScope()
{
    if (m_store)
        (void)m_store->EndBulk(false);
}

int CeDBase::BulkScope::Commit()
{
    const auto store = std::move(m_store);
    m_store.reset();
    bool done = false;
    if (store) {
        const Operation operation(m_database);
        done = store->EndBulk(true);
        m_trouble = done ? StoreTrouble::None : store->BulkTrouble();
    }
    m_database.m_trouble = m_trouble;
    return done ? 1 : 0;
}

StoreTrouble CeDBase::BulkScope::Trouble() const
{
    return m_store ? m_store->BulkTrouble() : m_trouble;
}

CeDBase::Operation::Operation(CeDBase& database, Kind kind)
    : m_database(database), m_kind(kind), m_store(database.m_store)
{
    if (!m_store)
        return;
    m_isNested = m_store->EnterOperation();
    m_outer = m_store->TakeTrouble();
}

CeDBase::Operation::~Operation()
{
    m_database.m_trouble = m_store ? m_store->TakeTrouble() : m_database.m_closed;
    if (!m_store)
        return;
    m_store->LeaveOperation();
    if (m_kind == Kind::Reads)
        m_store->NoteUnread(m_database.m_trouble);
    // What nobody will ask for any more must not be told as the reason of something later.
    if (!m_isNested)
        return;
    m_store->Note(m_outer);
    m_store->Note(m_database.m_trouble);
}
