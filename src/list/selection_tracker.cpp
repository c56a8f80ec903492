#include "list/selection_tracker.h"

#include <commctrl.h>

namespace {

bool HasLost(UINT state, UINT oldState, UINT newState)
{
    return (oldState & ~newState & state) != 0;
}

} // namespace

void SelectionTracker::Clear()
{
    m_selection.Clear();
    m_currentEntry = 0;
    m_flag = 0;
}

bool SelectionTracker::OnRecordSelected(CEOID id)
{
    const bool changed = m_selection.Append(id) || !m_flag;
    m_currentEntry = id;
    m_flag = 1;
    return changed;
}

bool SelectionTracker::OnRecordMissing(CEOID id)
{
    const bool changed = m_selection.Remove(id) || m_flag;
    m_currentEntry = 0;
    m_flag = 0;
    return changed;
}

// An item that stays selected while it gains or loses the focus keeps its place in the order of selecting.
bool SelectionTracker::OnItemChanged(CEOID id, UINT oldState, UINT newState)
{
    bool report = HasLost(LVIS_SELECTED, oldState, newState) && Deselect(id);
    if (HasLost(LVIS_FOCUSED, oldState, newState))
        m_currentEntry = 0;
    if (newState & LVIS_FOCUSED)
        m_currentEntry = id;
    if ((newState & LVIS_SELECTED) && id) {
        m_selection.Append(id);
        report = true;
    }
    return report;
}

bool SelectionTracker::OnAllItemsChanged(UINT oldState, UINT newState)
{
    if (!HasLost(LVIS_SELECTED, oldState, newState))
        return false;
    Clear();
    return true;
}

// True when nothing is selected any more.
bool SelectionTracker::Deselect(CEOID id)
{
    m_selection.Remove(id);
    if (m_currentEntry == id)
        m_currentEntry = 0;
    if (!m_selection.IsEmpty())
        return false;
    m_flag = 0;
    return true;
}
