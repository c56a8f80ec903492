#include "columns/column_draft.h"

#include <algorithm>

bool IsOffered(const ZColumn& column)
{
    return !column.Has(kColumnShown) && !column.Has(kColumnNeverOffered);
}

bool ColumnDraft::Show(int position)
{
    if (position < 0 || position >= kPropertyCount)
        return false;
    ZColumn& column = m_columns.columns[static_cast<size_t>(position)];
    if (!IsOffered(column))
        return false;
    column.Add(kColumnShown);
    MoveColumn(&m_columns, position, m_columns.shownCount++);
    m_changed = true;
    return true;
}

bool ColumnDraft::Hide(int position)
{
    if (!IsShown(position) || m_columns.shownCount < 2)
        return false;
    m_columns.columns[static_cast<size_t>(position)].Remove(kColumnShown | kColumnSort);
    MoveColumn(&m_columns, position, --m_columns.shownCount);
    m_changed = true;
    return true;
}

bool ColumnDraft::Swap(int position, int other)
{
    if (!IsShown(position) || !IsShown(other))
        return false;
    MoveColumn(&m_columns, position, other);
    m_changed = true;
    return true;
}

ColumnMoves ColumnDraft::MovesOf(int position) const
{
    return {IsShown(position) && IsShown(position - 1), IsShown(position) && IsShown(position + 1)};
}

void ColumnDraft::Restore()
{
    m_columns = m_opened;
    m_changed = false;
}

void ColumnDraft::TakeDefaults()
{
    ResetColumns(&m_columns, m_workAreaRight);
}

ColumnSet ColumnDraft::Taken() const
{
    ColumnSet taken = m_columns;
    if (GetSortColumn(taken) >= 0)
        return taken;
    const auto sortable = std::find_if(taken.columns.begin(), taken.columns.end(),
                                       [](const ZColumn& column) { return column.Has(kColumnSortable); });
    if (sortable != taken.columns.end())
        sortable->Add(kColumnSort);
    return taken;
}
