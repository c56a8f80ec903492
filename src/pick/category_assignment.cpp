#include "pick/category_assignment.h"

#include "data/category_flags.h"

namespace {

WORD WithMark(WORD flags, WORD mark)
{
    constexpr WORD kOthers = 0xFFFF & ~(kCategoryAssigned | kCategoryReleased);
    return static_cast<WORD>((flags & kOthers) | mark);
}

} // namespace

void AssignCategory(ZStack* stack, CEOID id)
{
    if (ZCategory* item = stack->Find(id))
        item->flags = WithMark(item->flags, kCategoryAssigned);
    else
        stack->Push({id, kCategoryLoaded | kCategoryAdded});
}

void ReleaseCategory(ZStack* stack, CEOID id)
{
    ZCategory* item = stack->Find(id);
    if (item && (item->flags & kCategoryAdded))
        stack->Remove(id);
    else if (item)
        item->flags = WithMark(item->flags, kCategoryReleased);
}

void CountAllAsAdded(ZStack* stack)
{
    ZStack added;
    for (size_t i = 0; const ZCategory* item = stack->GetItem(i); ++i)
        if (!(item->flags & kCategoryReleased))
            added.Push({item->id, static_cast<WORD>(item->flags | kCategoryAdded)});
    *stack = added;
}

std::vector<CEOID> AssignedCategories(const ZStack& stack)
{
    std::vector<CEOID> ids;
    for (size_t i = 0; const ZCategory* item = stack.GetItem(i); ++i)
        if (item->flags & kCategoryAssigned)
            ids.push_back(item->id);
    return ids;
}

void DropUnlistedCategories(ZStack* stack, DbCategories* store)
{
    if (!store->IsOpen())
        return;
    const CeDBase::ReadScope scope(*store);
    ZStack kept;
    for (size_t i = 0; const ZCategory* item = stack->GetItem(i); ++i) {
        const bool isThere = store->Exists(item->id) != 0;
        const bool isKnown = store->Trouble() == StoreTrouble::None;
        if (!isKnown || (isThere && !store->IsHidden(item->id)))
            kept.Push(*item);
    }
    *stack = kept;
}
