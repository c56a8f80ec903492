// FilterMenu: what drops down from the filter's button: the categories in use, and the filter's commands.
#pragma once

#include <windows.h>

#include "data/filter_state.h"
#include "util/owners.h"

class FilterMenu {
  public:
    // The filter's own categories are checked.
    explicit FilterMenu(const FilterState& filter);

    HMENU Handle() const { return m_menu.get(); }
    bool ListsCategories() const { return m_categories > 0; }
    // What the user has chosen: a category becomes the filter; any other command leaves the filter alone.
    void Choose(UINT command, FilterState* filter) const;

  private:
    void AddCategories(const FilterState& filter);

    UniqueMenu m_menu;
    UINT m_categories = 0; // how many are listed
};
