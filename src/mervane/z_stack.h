// ZStack: an ordered set of ZCategory references.
#pragma once

#include <cstddef>
#include <vector>

#include "mervane/values/ce_types.h"

class CeDBase;

struct ZCategory {
    CEOID id = 0;
    WORD flags = 0;
};

class ZStack {
  public:
    void Push(ZCategory category) { m_items.push_back(category); }
    // 0 when the stack is empty; otherwise the last item leaves it.
    int Pop(ZCategory* category);
    // The item of a category, owned by the stack and valid until the stack changes; null when it is not
    // there.
    ZCategory* Find(CEOID id);
    const ZCategory* Find(CEOID id) const;
    int Remove(CEOID id); // 0 when it is not there
    // null for an index past the end.
    ZCategory* GetItem(size_t index);
    const ZCategory* GetItem(size_t index) const;
    size_t Count() const { return m_items.size(); }
    bool IsEmpty() const { return m_items.empty(); }
    // Sorts by the categories' names, by the user's locale without regard to case.
    void Sort(CeDBase& categories);
    void DeleteStack() { m_items.clear(); }

  private:
    std::vector<ZCategory> m_items;
};
