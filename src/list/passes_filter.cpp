#include "list/passes_filter.h"

#include "data/journal_entry.h"
#include "mervane/db_categories.h"
#include "util/month_set.h"

namespace {

constexpr DWORD kStackFlags = 0x101; // what the reading of an entry's categories passes

// Null when the record lacks the property.
const CEPROPVAL* FindProperty(CEPROPID id, WORD count, const CEPROPVAL* properties)
{
    for (WORD i = 0; i < count; ++i)
        if (properties[i].propid == id && !(properties[i].wFlags & CEDB_PROPNOTFOUND))
            return &properties[i];
    return nullptr;
}

bool HasCategoryOf(const FilterState& filter, const CEBLOB& blob)
{
    DbCategories categories;
    if (!categories.Open())
        return false;
    ZStack assigned;
    categories.SetStackFromBlob(&assigned, blob, kStackFlags);
    categories.Close();
    ZCategory category;
    while (assigned.Pop(&category))
        if (filter.categories.Find(category.id))
            return true;
    return false;
}

// CompareDates writes into what it compares: all three are copies.
bool IsInRange(SYSTEMTIME date, SYSTEMTIME start, SYSTEMTIME end)
{
    return CompareDates(&date, &start, kDateOnly) >= 0 && CompareDates(&date, &end, kDateOnly) <= 0;
}

// An instant that is no date lies in no month and in no range.
bool HasDateOf(const FilterState& filter, const FILETIME& time)
{
    SYSTEMTIME date;
    if (!TimeCount(time).ToSystemTime(&date))
        return false;
    if (filter.rangeMode)
        return IsInRange(date, filter.rangeStart, filter.rangeEnd);
    return (filter.monthMask & MonthBit(date.wMonth - 1)) != 0;
}

} // namespace

int PassesFilter(const FilterState& filter, WORD count, const CEPROPVAL* properties)
{
    if (!filter.active || !count)
        return 1;
    if (filter.categoriesMode) {
        const CEPROPVAL* categories = FindProperty(kPropCategories, count, properties);
        return categories && HasCategoryOf(filter, categories->val.blob);
    }
    const CEPROPVAL* date = FindProperty(kPropDate, count, properties);
    return !date || HasDateOf(filter, date->val.filetime);
}
