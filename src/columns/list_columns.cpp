#include "columns/list_columns.h"

#include "data/fields.h"
#include "ui/screen/scale.h"
#include "ui/screen/scoped.h"

namespace {

constexpr const wchar_t* kPriorityTitle = L"Priority";

bool IsTitle(const std::wstring& title, const wchar_t* other)
{
    return CompareStringOrdinal(title.c_str(), -1, other, -1, TRUE) == CSTR_EQUAL;
}

int HeaderImage(const ZColumn& column, bool priorityIcon)
{
    if (priorityIcon)
        return column.Has(kColumnSort) ? kHeaderImagePrioritySorted : kHeaderImagePriority;
    return column.Has(kColumnSort) ? column.GetSortOrder() : kHeaderImageNone;
}

} // namespace

bool IsPriorityIconColumn(const ZColumn& column, int position)
{
    return position == 0 && column.Has(kColumnSortable) && IsTitle(column.Title(), kPriorityTitle);
}

LVCOLUMNW HeaderColumn(const ZColumn& column, int position)
{
    static wchar_t s_noTitle[] = L"";
    const bool priorityIcon = IsPriorityIconColumn(column, position);
    LVCOLUMNW header{};
    header.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT | LVCF_SUBITEM;
    header.cx = column.Width();
    header.iSubItem = position;
    header.pszText = priorityIcon ? s_noTitle : const_cast<wchar_t*>(column.Title().c_str());
    if (column.Has(kColumnSortable)) {
        header.mask |= LVCF_IMAGE;
        // Without the second bit the desktop's header shows no image.
        header.fmt = LVCFMT_BITMAP_ON_RIGHT | LVCFMT_IMAGE;
        header.iImage = HeaderImage(column, priorityIcon);
    }
    return header;
}

// The control works out its header and its scroll bars anew for every column; once is enough.
bool InsertColumns(HWND list, const ColumnSet& columns)
{
    const ScopedRedrawPause pause(list);
    while (ListView_DeleteColumn(list, 0)) {
    }
    for (int i = 0; i < columns.shownCount; ++i) {
        LVCOLUMNW header = HeaderColumn(columns.columns[static_cast<size_t>(i)], i);
        header.cx = SeenWidth(list, header.cx);
        if (SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&header)) <
            0)
            return false;
    }
    return true;
}

int ClickColumn(ColumnSet* columns, int position)
{
    const size_t clicked = static_cast<size_t>(position);
    ZColumn& column = columns->columns[clicked];
    if (!column.Has(kColumnSortable))
        return -1;
    int image = 0;
    if (!column.Has(kColumnSort))
        image = column.SetActive();
    else
        image = column.Has(kColumnToggled) ? column.SetAscending() : column.SetDecending();
    for (size_t i = 0; i < columns->columns.size(); ++i)
        if (i != clicked && columns->columns[i].Has(kColumnSort)) {
            columns->columns[i].Remove(kColumnSort);
            break;
        }
    return image;
}

SORTORDERSPEC SortOfColumn(const ZColumn& column, SORTORDERSPEC current)
{
    const Field* field = FieldOfColumn(column.Property());
    if (field && field->sorts)
        current.propid = field->id;
    current.dwFlags &= ~CEDB_SORT_DESCENDING;
    if (column.Has(kColumnDescending))
        current.dwFlags |= CEDB_SORT_DESCENDING;
    return current;
}
