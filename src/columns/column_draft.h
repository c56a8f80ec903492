// ColumnDraft: the columns while they are being customised. Nothing of it reaches the set before it is taken.
#pragma once

#include "columns/column_set.h"

// What can be done to the selected one of the shown columns.
struct ColumnMoves {
    bool up = false;
    bool down = false;

    friend bool operator==(const ColumnMoves&, const ColumnMoves&) = default;
};

class ColumnDraft {
  public:
    // workAreaRight: as for ResetColumns.
    ColumnDraft(const ColumnSet& opened, int workAreaRight)
        : m_opened(opened), m_columns(opened), m_workAreaRight(workAreaRight)
    {}

    const ColumnSet& Columns() const { return m_columns; }
    bool IsChanged() const { return m_changed; }

    // Positions count all columns of the set. An operation that a position does not allow returns false and
    // changes nothing.

    // Shows a column that is offered, behind those that are shown.
    bool Show(int position);
    // Hides a shown column; it is not sorted by any more. The last one stays.
    bool Hide(int position);
    bool MoveUp(int position) { return Swap(position, position - 1); }
    bool MoveDown(int position) { return Swap(position, position + 1); }
    ColumnMoves MovesOf(int position) const;

    // As the columns were in the beginning.
    void Restore();
    void TakeDefaults();
    // The columns, one of which the list is sorted by: the first that can be, shown or not, where none is
    // marked.
    ColumnSet Taken() const;

  private:
    bool IsShown(int position) const { return position >= 0 && position < m_columns.shownCount; }
    bool Swap(int position, int other);

    ColumnSet m_opened;
    ColumnSet m_columns;
    int m_workAreaRight;
    bool m_changed = false;
};

// Whether the dialog lists a column among those that can be shown.
bool IsOffered(const ZColumn& column);
