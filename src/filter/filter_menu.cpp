#include "filter/filter_menu.h"

#include "filter/filter_categories.h"
#include "res/resource.h"

namespace {

// A name as a menu shows it whole: no letter of it underlined, no part of it moved to the right.
std::wstring MenuText(const std::wstring& name)
{
    std::wstring text;
    for (const wchar_t character : name)
        if (character == L'&')
            text += L"&&";
        else
            text += character == L'\t' ? L' ' : character;
    return text;
}

CEOID CategoryOf(HMENU menu, UINT command)
{
    MENUITEMINFOW item{};
    item.cbSize = sizeof item;
    item.fMask = MIIM_DATA;
    return GetMenuItemInfoW(menu, command, FALSE, &item) ? static_cast<CEOID>(item.dwItemData) : 0;
}

} // namespace

FilterMenu::FilterMenu(const FilterState& filter) : m_menu(CreatePopupMenu())
{
    HMENU menu = m_menu.get();
    AddCategories(filter);
    if (GetMenuItemCount(menu))
        AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu, MF_STRING, CMD_CATEGORIES_LIST, L"<New Category>");
    AppendMenuW(menu, MF_STRING, CMD_FILTER_CATEGORIES, L"Filter On Categories");
    AppendMenuW(menu, MF_STRING, CMD_FILTER_MONTHS, L"Filter On Months");
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu, MF_STRING, CMD_CLEAR_FILTER, L"Clear Filter");
}

void FilterMenu::AddCategories(const FilterState& filter)
{
    bool hasAll = true;
    for (const OfferedCategory& category : OfferedCategories(&hasAll)) {
        std::wstring text = MenuText(category.name);
        const bool isChosen = filter.categoriesMode && filter.categories.Find(category.id);
        MENUITEMINFOW item{};
        item.cbSize = sizeof item;
        item.fMask = MIIM_ID | MIIM_STRING | MIIM_DATA | MIIM_STATE;
        item.wID = CMD_FIRST_CATEGORY + m_categories;
        item.dwTypeData = text.data();
        item.dwItemData = category.id;
        item.fState = static_cast<UINT>(isChosen ? MFS_CHECKED : MFS_UNCHECKED);
        InsertMenuItemW(m_menu.get(), m_categories, TRUE, &item);
        ++m_categories;
    }
    if (!hasAll)
        AppendMenuW(m_menu.get(), MF_STRING | MF_GRAYED, 0, L"(Not all categories can be read)");
}

// The number after the last category's counts as a category too; no item has it.
void FilterMenu::Choose(UINT command, FilterState* filter) const
{
    if (command < CMD_FIRST_CATEGORY || command > CMD_FIRST_CATEGORY + m_categories)
        return;
    const CEOID category = CategoryOf(m_menu.get(), command);
    if (category)
        FilterOnCategory(category, filter);
}
