#include "mervane/db_journal.h"

#include "mervane/store/record_search.h"
#include "mervane/store/store.h"
#include "mervane/values/journal_table.h"

DbJournal::DbJournal()
    : CeDBase(mervane::TableId::Journal), m_search(std::make_unique<mervane::RecordSearch>())
{}

DbJournal::~DbJournal() = default;

int DbJournal::Open(HWND owner, const SORTORDERSPEC& sort)
{
    if (!OpenTable(owner))
        return 0;
    SetSort(sort, 1);
    return 1;
}

const wchar_t* DbJournal::GetSubject(CEOID id)
{
    const ReadOperation operation(*this);
    m_subject.clear();
    if (const auto& store = SharedStore()) {
        m_subject = store->TableOf(mervane::TableId::Journal).ReadText(id, kPropSubject).value_or(L"");
    }
    return m_subject.c_str();
}

CEOID DbJournal::FindText(CEPROPID property, const wchar_t* text, bool matchCase)
{
    return FindTextAfter(0, property, text, matchCase);
}

CEOID DbJournal::FindTextAfter(CEOID id, CEPROPID property, const wchar_t* text, bool matchCase)
{
    if (PropertyType(property) != CEVT_LPWSTR || !text)
        return 0;
    mervane::SearchRequest request;
    request.property = property;
    request.text = text;
    request.matchCase = matchCase;
    return FindBehind(id, request);
}

CEOID DbJournal::FindDate(CEPROPID property, const FILETIME& date)
{
    return FindDateAfter(0, property, date);
}

CEOID DbJournal::FindDateAfter(CEOID id, CEPROPID property, const FILETIME& date)
{
    if (PropertyType(property) != CEVT_FILETIME)
        return 0;
    mervane::SearchRequest request;
    request.property = property;
    request.time = mervane::CountOf(date);
    return FindBehind(id, request);
}

unsigned DbJournal::BeginBackup(const SYSTEMTIME& today)
{
    const auto& store = SharedStore();
    return store ? store->Backup().Begin(mervane::DayOfTime(today)) : 0;
}

unsigned DbJournal::StepBackup(bool (*mayGoOn)())
{
    const auto& store = SharedStore();
    return store ? store->Backup().Step(mayGoOn) : 0;
}

void DbJournal::EndBackup()
{
    if (const auto& store = SharedStore())
        store->Backup().End();
}

StoreTrouble DbJournal::BackupTrouble() const
{
    const auto& store = SharedStore();
    return store ? store->Backup().Trouble() : StoreTrouble::None;
}

CEOID DbJournal::FindBehind(CEOID id, const mervane::SearchRequest& request)
{
    const ReadOperation operation(*this);
    const auto& store = SharedStore();
    if (!store)
        return 0;
    SORTORDERSPEC sort{};
    GetSort(&sort);
    return m_search->Next(store, mervane::TableId::Journal, sort, request, id);
}
