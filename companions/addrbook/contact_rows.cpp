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

bool IsAccent(wchar_t character)
{
    return character >= 0x300 && character <= 0x36F;
}

// A unit of a text as what counts when texts are looked for: small, without accents.
std::wstring FoldedUnit(wchar_t unit)
{
    constexpr int kMostParts = 4;
    wchar_t parts[kMostParts] = {};
    const int count = FoldStringW(MAP_COMPOSITE, &unit, 1, parts, kMostParts);
    std::wstring folded(parts, static_cast<size_t>(count));
    std::erase_if(folded, IsAccent);
    std::wstring small = folded;
    const int size = static_cast<int>(folded.size());
    if (size)
        LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_LOWERCASE, folded.data(), size, small.data(), size,
                      nullptr, nullptr, 0);
    return small;
}

// Folds texts. The system is asked once for each letter beside A to Z: thousands of texts have few of them.
class TextFolder {
  public:
    std::wstring Folded(std::wstring_view text)
    {
        std::wstring folded;
        folded.reserve(text.size());
        for (const wchar_t unit : text) {
            if (unit >= kFirstLetter && !IS_HIGH_SURROGATE(unit) && !IS_LOW_SURROGATE(unit))
                folded += Known(unit);
            else
                folded += unit >= L'A' && unit <= L'Z' ? static_cast<wchar_t>(unit | 0x20) : unit;
        }
        return folded;
    }

  private:
    static constexpr wchar_t kFirstLetter = 0xC0; // beside ASCII's

    const std::wstring& Known(wchar_t unit)
    {
        const auto [place, isNew] = m_known.try_emplace(unit);
        if (isNew)
            place->second = FoldedUnit(unit);
        return place->second;
    }

    std::unordered_map<wchar_t, std::wstring> m_known;
};

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
    std::vector<CEOID> all;
    for (uint32_t row = 0; const CEOID id = m_contacts.IdOfRow(row); ++row)
        all.push_back(id);
    m_trouble = m_contacts.Trouble();
    // What a damaged file still has is shown, but a failed read is no empty address book.
    if (m_trouble == StoreTrouble::None || !all.empty())
        m_all = std::move(all);
    m_cells.clear();
    m_searchTexts.clear();
    ShowFound();
}

void ContactRows::Find(const std::wstring& text)
{
    m_words = WordsOf(TextFolder().Folded(text));
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
    TextFolder folder;
    std::wstring text;
    for (const CEOID id : m_all) {
        ReadSearchText(id, &text);
        m_searchTexts.push_back(folder.Folded(text));
    }
}

void ContactRows::ReadSearchText(CEOID id, std::wstring* all)
{
    const auto values = Read(m_contacts, id, kSearched, kSearchedCount);
    if (m_trouble == StoreTrouble::None)
        m_trouble = m_contacts.Trouble();
    all->clear();
    for (WORD i = 0; values && i < kSearchedCount; ++i)
        if (const wchar_t* text = TextIn(values.get()[i]))
            all->append(text).append(1, L'\n');
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
