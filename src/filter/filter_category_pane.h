// FilterCategoryPane: what the filter's dialog shows in its mode for categories: the device's list of them.
#pragma once

#include <windows.h>

#include "data/filter_state.h"
#include "mervane/db_categories.h"

class FilterCategoryPane {
  public:
    // What is chosen goes into the filter, which is borrowed.
    explicit FilterCategoryPane(FilterState* filter) : m_filter(filter) {}

    // Makes the list; there is none when the categories cannot be opened, and then the filter keeps its own.
    void Create(HWND dialog);
    void Show(bool show) const;
    // null when there is none.
    HWND List() const { return m_list; }

    // Lists what the store has now. What is not listed, because it is gone or hidden, leaves the filter: what
    // is seen is what is chosen. What could not be read stays in it.
    void Refresh();
    // A notification of the list.
    void OnNotify(const NMHDR& notification);
    void Clear();

  private:
    void ShowOnly(const wchar_t* text) const;

    FilterState* m_filter;
    DbCategories m_store;
    HWND m_list = nullptr; // the dialog destroys its controls
};
