#include "list/selection_set.h"

bool SelectionSet::Append(CEOID id)
{
    if (!id || Contains(id))
        return false;
    m_cells.emplace(id, m_order.insert(m_order.end(), id));
    return true;
}

bool SelectionSet::Remove(CEOID id)
{
    const auto cell = m_cells.find(id);
    if (cell == m_cells.end())
        return false;
    m_order.erase(cell->second);
    m_cells.erase(cell);
    return true;
}

void SelectionSet::Clear()
{
    m_order.clear();
    m_cells.clear();
}
