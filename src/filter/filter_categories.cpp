#include "filter/filter_categories.h"

#include "mervane/db_categories.h"
#include "util/owners.h"

namespace {

// The current record's name when entries use it, otherwise empty.
std::wstring NameInUse(DbCategories& categories, CEOID* id)
{
    const CEPROPID wanted[] = {kCategoriesKey, kCategoryUses};
    WORD count = 2;
    CEPROPVAL* properties = nullptr;
    *id = categories.ReadRecord(&count, wanted, &properties);
    const LocalBlock<CEPROPVAL> owner(properties);
    if (!*id || ((properties[0].wFlags | properties[1].wFlags) & CEDB_PROPNOTFOUND) ||
        !properties[1].val.iVal)
        return {};
    return properties[0].val.lpwstr;
}

} // namespace

std::vector<OfferedCategory> OfferedCategories(bool* hasAll)
{
    std::vector<OfferedCategory> offered;
    DbCategories categories;
    if (!categories.Open())
        return offered;
    bool isRead = true;
    const CeDBase::ReadScope scope(categories);
    for (int found = categories.SeekFirstRecord(); found && offered.size() < kMostOffered;
         found = categories.SeekNextRecord()) {
        CEOID id = 0;
        std::wstring name = NameInUse(categories, &id);
        isRead = isRead && categories.Trouble() == StoreTrouble::None;
        if (!name.empty())
            offered.push_back({id, std::move(name)});
    }
    if (hasAll && !(isRead && categories.Trouble() == StoreTrouble::None))
        *hasAll = false;
    return offered;
}

void FilterOnCategory(CEOID id, FilterState* filter)
{
    filter->categories.DeleteStack();
    filter->categories.Push({id, 0});
    filter->categoriesMode = true;
    filter->active = true;
}

namespace {

bool DropGoneCategories(FilterState* filter)
{
    DbCategories categories;
    if (filter->categories.IsEmpty() || !categories.Open())
        return false;
    ZStack kept;
    for (size_t i = 0; i < filter->categories.Count(); ++i)
        if (categories.Exists(filter->categories.GetItem(i)->id) ||
            categories.Trouble() != StoreTrouble::None)
            kept.Push(*filter->categories.GetItem(i));
    const bool isOneGone = kept.Count() < filter->categories.Count();
    filter->categories = kept;
    return isOneGone;
}

} // namespace

bool BringFilterUpToDate(FilterState* filter)
{
    const bool isOneGone = DropGoneCategories(filter);
    if (filter->categoriesMode && filter->categories.IsEmpty())
        filter->active = false;
    return isOneGone;
}

std::optional<std::wstring> CategoryName(CEOID id)
{
    wchar_t name[kCategoryNameSize] = L"";
    DbCategories categories;
    if (categories.Open())
        categories.GetStr(id, name, kCategoryNameSize, kCategoriesKey);
    if (categories.Trouble() != StoreTrouble::None)
        return std::nullopt;
    return name;
}
