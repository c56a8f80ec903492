// ValueTexts: what values read as, for a page of cells or for an export.
#pragma once

#include <string>
#include <string_view>

#include "data/fields.h"
#include "mervane/db_categories.h"
#include "mervane/db_contacts.h"

// A cell's texts are bounded so that no record, whatever it holds, makes a page dear.
constexpr size_t kShortTextMax = 119;  // the body, names
constexpr size_t kWholeTextMax = 4095; // other texts: shown whole, and no column is wider in pixels

// The databases that names are looked up in are opened for the first name, and stay open as long as this
// lives.
class ValueTexts {
  public:
    // The whole text of a field's value: empty for a null text, for what is no date, and where no name is
    // known. Valid until the next call, and no longer than the value.
    std::wstring_view Whole(const Field& field, const CEVALUNION& value);
    // What a cell shows of it.
    std::wstring Cell(const Field& field, const CEVALUNION& value);
    // Why the first names that are missing could not be read; None when none are.
    StoreTrouble Trouble() const { return m_trouble; }

  private:
    template <typename Database> struct Source {
        Database database;
        bool isOpen = false;
    };

    std::wstring_view Text(const Field& field, const CEVALUNION& value, size_t most);
    template <typename Database>
    std::wstring_view Names(Source<Database>* source, const CEBLOB& blob, wchar_t separator);

    Source<DbCategories> m_categories;
    Source<DbContacts> m_contacts;
    StoreTrouble m_trouble = StoreTrouble::None;
    std::wstring m_text;
};

// The text up to its first CR; all of it when it starts with one or has none.
std::wstring_view FirstLine(std::wstring_view text);
