#include "mervane/order/passing_sets.h"

namespace mervane {

template <typename Action> void PassingSets::ForEach(Action action)
{
    std::erase_if(m_sets, [&](const std::weak_ptr<PassingSet>& known) {
        const auto passing = known.lock();
        if (passing)
            action(*passing);
        return !passing;
    });
}

std::shared_ptr<const PassingSet> PassingSets::Make(const std::shared_ptr<const RowFilter>& filter,
                                                    TableColumns& columns)
{
    auto passing = std::make_shared<PassingSet>(filter);
    passing->Resize(columns.Records().PlaceCount());
    columns.TestAll(*filter, [&](uint32_t place, bool passes) { passing->Set(place, passes); });
    m_sets.push_back(passing);
    return passing;
}

void PassingSets::Inserted(uint32_t place, TableColumns& columns)
{
    ForEach([&](PassingSet& passing) {
        passing.Resize(place + 1);
        passing.Set(place, columns.Passes(*passing.Filter(), place));
    });
}

std::vector<const PassingSet*> PassingSets::Updated(uint32_t place, const RecordValues& values,
                                                    const TableInfo& info, TableColumns& columns)
{
    std::vector<const PassingSet*> changed;
    ForEach([&](PassingSet& passing) {
        const RowFilter& filter = *passing.Filter();
        const bool concerns = filter.emptyPasses || values.Changes(FindProperty(info, filter.property));
        if (concerns && passing.Set(place, columns.Passes(filter, place)))
            changed.push_back(&passing);
    });
    return changed;
}

void PassingSets::Removed(uint32_t place)
{
    ForEach([place](PassingSet& passing) { passing.Set(place, false); });
}

} // namespace mervane
