#include "mervane/ce_dbase.h"

#include <algorithm>
#include <cstring>

#include "mervane/cursor.h"
#include "mervane/id_blob.h"
#include "mervane/store.h"

using mervane::Cursor;
using mervane::InfoOf;
using mervane::Store;

namespace {

constexpr uint32_t kMostRecordsCounted = 0xFFFF;

} // namespace

CeDBase::CeDBase(mervane::TableId table) : m_table(table) {}

CeDBase::~CeDBase()
{
    CeDBase::Close();
}

int CeDBase::OpenTable(HWND owner)
{
    CeDBase::Close();
    m_store = Store::Open();
    if (!m_store)
        return 0;
    m_cursor = std::make_unique<Cursor>(*m_store, m_table, SORTORDERSPEC{InfoOf(m_table).defaultSort, 0});
    m_store->Changes().AddOwner(m_table, owner, this);
    return 1;
}

int CeDBase::Close()
{
    if (!m_store)
        return 0;
    m_store->Changes().RemoveOwner(this);
    m_cursor.reset();
    m_store.reset();
    return 1;
}

bool CeDBase::IsOpen() const
{
    return m_store != nullptr;
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
    if (!m_store)
        return 0;
    const ReadScope scope(*this);
    m_cursor->SetCurrent(m_store->TableOf(m_table).Exists(id) ? id : 0);
    return m_cursor->Current();
}

int CeDBase::SeekFirstRecord()
{
    const ReadScope scope(*this);
    return m_store && m_cursor->First() ? 1 : 0;
}

int CeDBase::SeekNextRecord()
{
    const ReadScope scope(*this);
    return m_store && m_cursor->Next() ? 1 : 0;
}

int CeDBase::DeleteRecord(CEOID id)
{
    return m_store && m_store->DeleteRecord(m_table, id) ? 1 : 0;
}

DWORD CeDBase::RecordCount()
{
    if (!m_store)
        return 0;
    const ReadScope scope(*this);
    return static_cast<DWORD>(std::min(m_cursor->Count(), kMostRecordsCounted));
}

CEOID CeDBase::ReadRecord(WORD* count, const CEPROPID* wanted, CEPROPVAL** properties)
{
    if (properties)
        *properties = nullptr;
    if (!count || !properties)
        return 0;
    CEOID id = 0;
    if (m_store && (wanted || *count == 0)) {
        const ReadScope scope(*this);
        id = m_store->TableOf(m_table).Read(m_cursor->Current(), count, wanted, properties);
    }
    if (!id)
        *count = 0;
    return id;
}

CEOID CeDBase::WriteRecord(CEOID id, WORD count, const CEPROPVAL* properties)
{
    mervane::RecordValues values;
    if (!m_store || !values.Read(InfoOf(m_table), count, properties))
        return 0;
    return m_store->WriteRecord(m_table, id, values);
}

CEOID CeDBase::SeekRow(uint32_t row)
{
    const ReadScope scope(*this);
    return m_store ? m_cursor->ToRow(row) : 0;
}

CEOID CeDBase::IdOfRow(uint32_t row)
{
    const ReadScope scope(*this);
    return m_store ? m_cursor->At(row) : 0;
}

int CeDBase::RowOf(CEOID id)
{
    const ReadScope scope(*this);
    return m_store ? m_cursor->RowOf(id) : -1;
}

uint32_t CeDBase::SetRowFilter(RowFilter filter)
{
    const bool known = mervane::FindProperty(InfoOf(m_table), filter.property) >= 0;
    if (!m_cursor || !known || PropertyType(filter.property) == CEVT_LPWSTR || !filter.passes)
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
    const ReadScope scope(*this);
    return m_store ? m_cursor->PassingCount() : 0;
}

int CeDBase::GetStr(CEOID id, wchar_t* text, int size, CEPROPID property)
{
    if (!text || size <= 0)
        return 0;
    text[0] = L'\0';
    if (!m_store)
        return 0;
    const ReadScope scope(*this);
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
    const ReadScope scope(*this);
    return m_store->NamesOf(m_table).RankOf(id);
}

int CeDBase::SetStrFromBlob(const CEBLOB& blob, wchar_t separator, wchar_t** text)
{
    if (!text)
        return 0;
    *text = nullptr;
    if (!m_store || !InfoOf(m_table).nameProperty)
        return 0;
    const ReadScope scope(*this);
    const std::wstring joined = m_store->NamesOf(m_table).Join(mervane::ReadIdBlob(blob).ids, separator);
    if (joined.empty())
        return 0;
    const size_t bytes = (joined.size() + 1) * sizeof(wchar_t);
    *text = static_cast<wchar_t*>(LocalAlloc(LMEM_FIXED, bytes));
    if (!*text)
        return 0;
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

CeDBase::BulkScope::BulkScope(CeDBase& database) : m_store(database.m_store)
{
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
    return store && store->EndBulk(true) ? 1 : 0;
}
