#include "filter/passes_filter.h"

#include <algorithm>
#include <tuple>

#include "data/journal_entry.h"
#include "mervane/db_categories.h"
#include "util/month_set.h"

namespace {

constexpr uint64_t kUnitsPerDay = TimeCount::kUnitsPerMinute * 60 * 24;

std::vector<CEOID> CategoriesOf(const FilterState& filter)
{
    std::vector<CEOID> ids;
    if (!DbCategories().Open())
        return ids;
    for (size_t i = 0; i < filter.categories.Count(); ++i)
        ids.push_back(filter.categories.GetItem(i)->id);
    std::sort(ids.begin(), ids.end());
    return ids;
}

// The beginning of a date's day. What is no date counts as the beginning of all time, as in CompareDates.
uint64_t DayOf(const SYSTEMTIME& time)
{
    TimeCount day;
    return day.FromSystemTime({time.wYear, time.wMonth, 0, time.wDay, 0, 0, 0, 0}) ? day.Units() : 0;
}

} // namespace

FilterTest::FilterTest(const FilterState& filter)
{
    m_filter.active = filter.active;
    if (!filter.active)
        return;
    if (filter.categoriesMode) {
        m_filter.categoriesMode = true;
        m_categories = CategoriesOf(filter);
    } else if (filter.rangeMode) {
        m_filter.rangeMode = true;
        m_from = DayOf(filter.rangeStart);
        m_to = DayOf(filter.rangeEnd) + kUnitsPerDay - 1;
    } else {
        m_filter.monthMask = filter.monthMask;
    }
}

CEPROPID FilterTest::Property() const
{
    return m_filter.categoriesMode ? kPropCategories : kPropDate;
}

bool FilterTest::Passes(const CEPROPVAL* value) const
{
    if (!m_filter.active)
        return true;
    if (m_filter.categoriesMode)
        return value && DbCategories::HoldsAny(value->val.blob, m_categories);
    return !value || HasDate(value->val.filetime);
}

// An instant that is no date lies in no month and in no range.
bool FilterTest::HasDate(const FILETIME& time) const
{
    const TimeCount instant(time);
    if (m_filter.rangeMode && (instant.Units() < m_from || instant.Units() > m_to))
        return false;
    SYSTEMTIME date;
    if (!instant.ToSystemTime(&date))
        return false;
    return m_filter.rangeMode || (m_filter.monthMask & MonthBit(date.wMonth - 1)) != 0;
}

bool operator==(const FilterTest& a, const FilterTest& b)
{
    const auto values = [](const FilterTest& test) {
        return std::tie(test.m_filter.active, test.m_filter.categoriesMode, test.m_filter.rangeMode,
                        test.m_filter.monthMask, test.m_categories, test.m_from, test.m_to);
    };
    return values(a) == values(b);
}

int PassesFilter(const FilterTest& filter, WORD count, const CEPROPVAL* properties)
{
    return !count || filter.Passes(FindProperty(filter.Property(), count, properties)) ? 1 : 0;
}

RowFilter MakeRowFilter(const FilterTest& test)
{
    return {test.Property(), [test](const CEPROPVAL* value) { return test.Passes(value); }, true};
}
