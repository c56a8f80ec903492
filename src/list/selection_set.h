// SelectionSet: the identifiers of the selected records, in the order of selecting. Finding, adding and
// removing cost the same however many there are.
#pragma once

#include <cstddef>
#include <list>
#include <unordered_map>

#include "mervane/values/ce_types.h"

class SelectionSet {
  public:
    SelectionSet() = default;
    SelectionSet(const SelectionSet&) = delete; // the cells point into the order
    SelectionSet& operator=(const SelectionSet&) = delete;

    bool Append(CEOID id); // false when it is there already, or is 0
    bool Remove(CEOID id); // false when it is not there
    void Clear();
    bool Contains(CEOID id) const { return m_cells.count(id) != 0; }
    size_t Count() const { return m_order.size(); }
    bool IsEmpty() const { return m_order.empty(); }
    const std::list<CEOID>& InOrder() const { return m_order; }

  private:
    std::list<CEOID> m_order;
    std::unordered_map<CEOID, std::list<CEOID>::iterator> m_cells;
};
