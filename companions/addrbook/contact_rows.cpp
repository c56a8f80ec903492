#include "addrbook/contact_rows.h"

#include <algorithm>

#include "util/owners.h"

namespace addrbook {

namespace {

constexpr size_t kMostCells = 1000; // rows that are kept
constexpr CEPROPID kCellProperties[kColumnCount] = {kContactsKey, kContactCompany, kContactEmails,
                                                    kContactPhones};
constexpr CEPROPID kSearched[] = {kContactsKey,     kContactFirstName, kContactLastName, kContactCompany,
                                  kContactJobTitle, kContactEmails,    kContactPhones,   kContactAddress,
                                  kContactBirthday, kContactNote};
constexpr WORD kSearchedCount = static_cast<WORD>(std::size(kSearched));

std::wstring Folded(const std::wstring& text)
{
    if (text.empty())
        return text;
    const int size = static_cast<int>(text.size());
    std::wstring folded(text.size(), L'\0');
    const int length = LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_LOWERCASE, text.c_str(), size,
                                     folded.data(), size, nullptr, nullptr, 0);
    return length == size ? folded : text;
}

std::vector<std::wstring> WordsOf(const std::wstring& text)
{
    std::vector<std::wstring> words;
    for (size_t start = 0; (start = text.find_first_not_of(L" \t", start)) != std::wstring::npos;) {
        const size_t end = std::min(text.find_first_of(L" \t", start), text.size());
        words.push_back(text.substr(start, end - start));
        start = end;
    }
    return words;
}

const wchar_t* TextIn(const CEPROPVAL& value)
{
    return value.wFlags & CEDB_PROPNOTFOUND ? nullptr : value.val.lpwstr;
}

LocalBlock<CEPROPVAL> Read(DbContacts& contacts, CEOID id, const CEPROPID* wanted, WORD count)
{
    CEPROPVAL* values = nullptr;
    if (contacts.SeekRecord(id))
        (void)contacts.ReadRecord(&count, wanted, &values);
    return LocalBlock<CEPROPVAL>(values);
}

} // namespace

void ContactRows::Load()
{
    const CeDBase::ReadScope scope(m_contacts);
    m_all.clear();
    m_cells.clear();
    m_searchTexts.clear();
    for (uint32_t row = 0; const CEOID id = m_contacts.IdOfRow(row); ++row)
        m_all.push_back(id);
    ShowFound();
}

void ContactRows::Find(const std::wstring& text)
{
    m_words = WordsOf(Folded(text));
    ShowFound();
}

void ContactRows::ShowFound()
{
    if (m_words.empty()) {
        m_shown = m_all;
        return;
    }
    LoadSearchTexts();
    m_shown.clear();
    for (size_t i = 0; i < m_all.size(); ++i) {
        const std::wstring& text = m_searchTexts[i];
        const bool hasAll = std::all_of(m_words.begin(), m_words.end(), [&](const std::wstring& word) {
            return text.find(word) != std::wstring::npos;
        });
        if (hasAll)
            m_shown.push_back(m_all[i]);
    }
}

void ContactRows::LoadSearchTexts()
{
    if (!m_searchTexts.empty())
        return;
    const CeDBase::ReadScope scope(m_contacts);
    m_searchTexts.reserve(m_all.size());
    for (const CEOID id : m_all)
        m_searchTexts.push_back(ReadSearchText(id));
}

std::wstring ContactRows::ReadSearchText(CEOID id)
{
    const auto values = Read(m_contacts, id, kSearched, kSearchedCount);
    std::wstring all;
    for (WORD i = 0; values && i < kSearchedCount; ++i)
        if (const wchar_t* text = TextIn(values.get()[i]))
            all.append(text).append(1, L'\n');
    return Folded(all);
}

int ContactRows::RowOf(CEOID id) const
{
    const auto found = std::find(m_shown.begin(), m_shown.end(), id);
    return found == m_shown.end() ? -1 : static_cast<int>(found - m_shown.begin());
}

ContactRows::Cells ContactRows::ReadCells(CEOID id)
{
    const auto values = Read(m_contacts, id, kCellProperties, kColumnCount);
    Cells cells;
    for (size_t i = 0; values && i < kColumnCount; ++i)
        if (const wchar_t* text = TextIn(values.get()[i]))
            cells[i].assign(text, wcscspn(text, L"\r\n"));
    return cells;
}

const ContactRows::Cells& ContactRows::CellsOf(CEOID id)
{
    const auto found = m_cells.find(id);
    if (found != m_cells.end())
        return found->second;
    if (m_cells.size() >= kMostCells)
        m_cells.clear();
    return m_cells.emplace(id, ReadCells(id)).first->second;
}

const std::wstring& ContactRows::Text(size_t row, Column column)
{
    static const std::wstring s_none;
    return row < m_shown.size() ? CellsOf(m_shown[row])[static_cast<size_t>(column)] : s_none;
}

void ContactRows::Prepare(size_t first, size_t last)
{
    const CeDBase::ReadScope scope(m_contacts);
    for (size_t row = first; row <= last && row < m_shown.size() && row - first < kMostCells; ++row)
        (void)CellsOf(m_shown[row]);
}

int ContactRows::FindName(const std::wstring& start, size_t from)
{
    constexpr int kSize = 512;
    const CeDBase::ReadScope scope(m_contacts);
    const int length = std::min(static_cast<int>(start.size()), kSize - 1);
    for (size_t i = 0; i < m_shown.size(); ++i) {
        const size_t row = (from + i) % m_shown.size();
        wchar_t name[kSize];
        if (m_contacts.GetStr(m_shown[row], name, kSize, kContactsKey) >= length &&
            CompareStringOrdinal(name, length, start.c_str(), length, TRUE) == CSTR_EQUAL)
            return static_cast<int>(row);
    }
    return -1;
}

} // namespace addrbook
