// FilterDatePane: what the filter's dialog shows in its mode for dates: the months, the range, and which of
// both counts.
#pragma once

#include <windows.h>

#include "data/filter_state.h"

class FilterDatePane {
  public:
    // What is chosen goes into the filter, which is borrowed.
    explicit FilterDatePane(FilterState* filter) : m_filter(filter) {}

    // Makes the controls that the template does not have, with the filter's choices in them. A day that was
    // never set shows as today.
    void Create(HWND dialog);
    void OnResolutionChanged() const;
    void Show(bool show);
    // Where the keyboard begins.
    HWND First() const;

    // The user has changed what counts.
    void OnRangeChecked(bool checked);
    // A notification of the month list.
    void OnMonthNotify(const NMHDR& notification);
    void ClearMonths();
    // Takes the pickers' days into the filter.
    void ReadRange();

  private:
    void FillMonths();
    HWND MakePicker(int id, int labelId, const SYSTEMTIME& day) const;
    void EnableWhatCounts();

    FilterState* m_filter;
    HWND m_dialog = nullptr;
    HWND m_months = nullptr; // the dialog destroys its controls
    HWND m_start = nullptr;
    HWND m_end = nullptr;
};
