// The rows of the list: all contacts by File As, or those in which a text is found.
#pragma once

#include <array>
#include <string>
#include <unordered_map>
#include <vector>

#include "mervane/db_contacts.h"

namespace addrbook {

enum class Column { FileAs, Company, Email, Phone };
constexpr size_t kColumnCount = 4;

class ContactRows {
  public:
    explicit ContactRows(DbContacts& contacts) : m_contacts(contacts) {}

    // Reads anew which contacts there are: those that can be read, and where none can, those that there were.
    void Load();
    // Why not all of them could be read, or be searched, since they were loaded; None when all could.
    StoreTrouble Trouble() const { return m_trouble; }
    // Shows those in which each word of the text is found, wherever, in whatever case, with or
    // without accents; all for an empty text.
    void Find(const std::wstring& text);

    size_t Count() const { return m_shown.size(); }
    size_t CountOfAll() const { return m_all.size(); }
    const std::vector<CEOID>& Ids() const { return m_shown; }
    CEOID IdAt(size_t row) const { return row < m_shown.size() ? m_shown[row] : 0; }
    int RowOf(CEOID id) const; // -1 when it is not shown

    // What a cell shows; of e-mails and phones the first.
    const std::wstring& Text(size_t row, Column column);
    // Reads some rows in one go, before they are asked for.
    void Prepare(size_t first, size_t last);
    // The first row from start on, then from the top, whose File As begins with the text; -1 for none.
    int FindName(const std::wstring& start, size_t from);

  private:
    using Cells = std::array<std::wstring, kColumnCount>;

    const Cells& CellsOf(CEOID id);
    Cells ReadCells(CEOID id);
    void ReadSearchText(CEOID id, std::wstring* all);
    void LoadSearchTexts();
    void ShowFound();

    DbContacts& m_contacts;
    StoreTrouble m_trouble = StoreTrouble::None;
    std::vector<CEOID> m_all;
    std::vector<CEOID> m_shown;
    std::vector<std::wstring> m_words; // what is looked for, folded
    // Of each in m_all, all its texts folded; empty until something is looked for.
    std::vector<std::wstring> m_searchTexts;
    std::unordered_map<CEOID, Cells> m_cells;
};

} // namespace addrbook
