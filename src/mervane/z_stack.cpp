#include "mervane/z_stack.h"

#include <algorithm>

#include "mervane/ce_dbase.h"

int ZStack::Pop(ZCategory* category)
{
    if (m_items.empty())
        return 0;
    *category = m_items.back();
    m_items.pop_back();
    return 1;
}

const ZCategory* ZStack::Find(CEOID id) const
{
    const auto found =
        std::find_if(m_items.begin(), m_items.end(), [id](const auto& item) { return item.id == id; });
    return found == m_items.end() ? nullptr : &*found;
}

ZCategory* ZStack::Find(CEOID id)
{
    const auto found =
        std::find_if(m_items.begin(), m_items.end(), [id](const auto& item) { return item.id == id; });
    return found == m_items.end() ? nullptr : &*found;
}

int ZStack::Remove(CEOID id)
{
    const auto found =
        std::find_if(m_items.begin(), m_items.end(), [id](const auto& item) { return item.id == id; });
    if (found == m_items.end())
        return 0;
    m_items.erase(found);
    return 1;
}

ZCategory* ZStack::GetItem(size_t index)
{
    return index < m_items.size() ? &m_items[index] : nullptr;
}

const ZCategory* ZStack::GetItem(size_t index) const
{
    return index < m_items.size() ? &m_items[index] : nullptr;
}

void ZStack::Sort(CeDBase& categories)
{
    const CeDBase::ReadScope scope(categories);
    std::stable_sort(m_items.begin(), m_items.end(), [&categories](const ZCategory& a, const ZCategory& b) {
        return categories.NameRank(a.id) < categories.NameRank(b.id);
    });
}
