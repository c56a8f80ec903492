// The sets of passing records that somebody holds, each kept up to date.
#pragma once

#include <memory>
#include <vector>

#include "mervane/order/passing_set.h"
#include "mervane/order/table_columns.h"

namespace mervane {

class PassingSets {
  public:
    std::shared_ptr<const PassingSet> Make(const std::shared_ptr<const RowFilter>& filter,
                                           TableColumns& columns);

    // The columns are up to date already.
    void Inserted(uint32_t place, TableColumns& columns);
    // The sets in which the record has begun or ceased to pass.
    std::vector<const PassingSet*> Updated(uint32_t place, const RecordValues& values, const TableInfo& info,
                                           TableColumns& columns);
    void Removed(uint32_t place);

  private:
    // Acts on those that somebody holds; the others are given up.
    template <typename Action> void ForEach(Action action);

    std::vector<std::weak_ptr<PassingSet>> m_sets;
};

} // namespace mervane
