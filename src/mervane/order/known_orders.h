// The orders of one table that are in use.
#pragma once

#include <algorithm>
#include <memory>
#include <vector>

#include "mervane/order/passing_set.h"
#include "mervane/order/row_order.h"

namespace mervane {

struct SortBy {
    int property; // its place in the table's list
    bool descending;
    bool operator==(const SortBy&) const = default;
};

class KnownOrders {
  public:
    struct Known {
        SortBy sort;
        const RowOrder* address;
        std::weak_ptr<RowOrder> order;
        // What is first grouped by; null for an order without a filter.
        const PassingSet* groups = nullptr;
        std::weak_ptr<const PassingSet> passing = {};

        bool IsAlive() const { return !order.expired() && (!groups || !passing.expired()); }
    };

    void Add(const SortBy& sort, const std::shared_ptr<RowOrder>& order,
             const std::shared_ptr<const PassingSet>& passing = nullptr)
    {
        std::erase_if(m_known, [](const Known& known) { return !known.IsAlive(); });
        m_known.push_back({sort, order.get(), order, passing.get(), passing});
    }
    // One without groups; null: there is none.
    std::shared_ptr<RowOrder> Plain(const SortBy& sort) const
    {
        for (const Known& known : m_known)
            if (known.sort == sort && !known.groups)
                if (auto order = known.order.lock())
                    return order;
        return nullptr;
    }
    bool IsKnown(const SortBy& sort, const RowOrder* order) const
    {
        return std::any_of(m_known.begin(), m_known.end(),
                           [&](const Known& known) { return known.address == order && known.sort == sort; });
    }
    void Drop(int property)
    {
        std::erase_if(m_known, [property](const Known& known) { return known.sort.property == property; });
    }
    // Calls action(known, order) for those that somebody holds and that canFollow(known) still; the others
    // are given up.
    template <typename CanFollow, typename Action> void ForEach(CanFollow canFollow, Action action)
    {
        std::erase_if(m_known, [&](const Known& known) {
            const auto order = known.order.lock();
            const auto passing = known.passing.lock();
            if (!order || passing.get() != known.groups || !canFollow(known))
                return true;
            action(known, *order);
            return false;
        });
    }

  private:
    std::vector<Known> m_known;
};

} // namespace mervane
