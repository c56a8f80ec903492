// Which records pass a filter, by their places.
#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "mervane/order/row_filter.h"

namespace mervane {

class PassingSet {
  public:
    explicit PassingSet(std::shared_ptr<const RowFilter> filter) : m_filter(std::move(filter)) {}

    const std::shared_ptr<const RowFilter>& Filter() const { return m_filter; }
    // Of all places; those of removed records do not count.
    uint32_t Count() const { return m_count; }
    bool Passes(uint32_t place) const { return m_passes[place]; }

    // New places do not pass.
    void Resize(uint32_t places) { m_passes.resize(places); }
    // Whether this is a change.
    bool Set(uint32_t place, bool passes)
    {
        if (m_passes[place] == passes)
            return false;
        m_passes[place] = passes;
        passes ? ++m_count : --m_count;
        return true;
    }

  private:
    std::shared_ptr<const RowFilter> m_filter;
    std::vector<bool> m_passes;
    uint32_t m_count = 0;
};

} // namespace mervane
