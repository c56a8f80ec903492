#include "mervane/db_journal.h"

#include "mervane/store.h"

namespace {

constexpr CEPROPID kSubject = 0x0066001F;

} // namespace

DbJournal::DbJournal() : CeDBase(mervane::TableId::Journal) {}

int DbJournal::Open(HWND owner, const SORTORDERSPEC& sort)
{
    if (!OpenTable(owner))
        return 0;
    SetSort(sort, 1);
    return 1;
}

const wchar_t* DbJournal::GetSubject(CEOID id)
{
    m_subject.clear();
    if (const auto& store = SharedStore()) {
        const ReadScope scope(*this);
        m_subject = store->TableOf(mervane::TableId::Journal).ReadText(id, kSubject).value_or(L"");
    }
    return m_subject.c_str();
}
