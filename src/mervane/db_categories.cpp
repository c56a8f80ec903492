#include "mervane/db_categories.h"

#include <algorithm>

#include "mervane/id_blob.h"
#include "mervane/store.h"

using mervane::TableId;

DbCategories::DbCategories() : CeDBase(TableId::Categories) {}

int DbCategories::Open(CEPROPID key, HWND owner)
{
    return key == kCategoriesKey ? OpenTable(owner) : 0;
}

int DbCategories::IncUse(CEOID id)
{
    return IsOpen() && SharedStore()->AddToUses(id, 1) ? 1 : 0;
}

int DbCategories::DecUse(CEOID id)
{
    return IsOpen() && SharedStore()->AddToUses(id, -1) ? 1 : 0;
}

int DbCategories::IsHidden(CEOID id)
{
    if (!IsOpen())
        return 0;
    const ReadScope scope(*this);
    const auto* entry = SharedStore()->NamesOf(TableId::Categories).Find(id);
    return entry && entry->hidden ? 1 : 0;
}

int DbCategories::Exists(CEOID id)
{
    if (!IsOpen())
        return 0;
    const ReadScope scope(*this);
    return SharedStore()->NamesOf(TableId::Categories).Find(id) ? 1 : 0;
}

int DbCategories::GetNumActiveRecords()
{
    if (!IsOpen())
        return 0;
    const ReadScope scope(*this);
    const auto& entries = SharedStore()->NamesOf(TableId::Categories).Entries();
    return static_cast<int>(
        std::count_if(entries.begin(), entries.end(), [](const auto& e) { return !e.hidden; }));
}

int DbCategories::Reset()
{
    return IsOpen() && SharedStore()->ResetUses() ? 1 : 0;
}

int DbCategories::SetBlobFromStack(const ZStack& stack, CEBLOB* blob)
{
    std::vector<CEOID> ids;
    ids.reserve(stack.Count());
    for (size_t i = 0; i < stack.Count(); ++i)
        ids.push_back(stack.GetItem(i)->id);
    return mervane::MakeIdBlob(ids, blob);
}

int DbCategories::SetStackFromBlob(ZStack* stack, const CEBLOB& blob, DWORD flags)
{
    stack->DeleteStack();
    const mervane::IdBlob read = mervane::ReadIdBlob(blob);
    for (const CEOID id : read.ids)
        stack->Push({id, static_cast<WORD>(flags)});
    return read.rightShape ? 1 : 0;
}
