#include "mervane/db_categories.h"

#include <algorithm>
#include <iterator>

#include "mervane/category_list.h"
#include "mervane/store/store.h"
#include "mervane/values/id_blob.h"

using mervane::TableId;

namespace {

CEPROPVAL NameValue(const std::wstring& name)
{
    CEPROPVAL value{};
    value.propid = kCategoriesKey;
    value.val.lpwstr = const_cast<wchar_t*>(name.c_str()); // a write only reads it
    return value;
}

// For what goes through all of them.
const mervane::NameCache& NamesOrNote(const std::shared_ptr<mervane::Store>& store)
{
    const mervane::NameCache& names = store->NamesOf(TableId::Categories);
    store->Note(names.Missing());
    return names;
}

// One that is not found may be among those that could not be read.
const mervane::NameCache::Entry* FindOrNote(const std::shared_ptr<mervane::Store>& store, CEOID id)
{
    if (!store)
        return nullptr;
    const mervane::NameCache& names = store->NamesOf(TableId::Categories);
    const auto* entry = names.Find(id);
    if (!entry)
        store->Note(names.Missing());
    return entry;
}

} // namespace

DbCategories::DbCategories() : CeDBase(TableId::Categories) {}

int DbCategories::Open(CEPROPID key, HWND owner)
{
    return key == kCategoriesKey ? OpenTable(owner) : 0;
}

int DbCategories::IncUse(CEOID id)
{
    const Operation operation(*this);
    return IsOpen() && SharedStore()->AddToUses(id, 1) ? 1 : 0;
}

int DbCategories::DecUse(CEOID id)
{
    const Operation operation(*this);
    return IsOpen() && SharedStore()->AddToUses(id, -1) ? 1 : 0;
}

int DbCategories::IsHidden(CEOID id)
{
    const ReadOperation operation(*this);
    const auto* entry = FindOrNote(SharedStore(), id);
    return entry && entry->hidden ? 1 : 0;
}

int DbCategories::Exists(CEOID id)
{
    const ReadOperation operation(*this);
    return FindOrNote(SharedStore(), id) ? 1 : 0;
}

int DbCategories::GetNumActiveRecords()
{
    const ReadOperation operation(*this);
    if (!IsOpen())
        return 0;
    const auto& entries = NamesOrNote(SharedStore()).Entries();
    return static_cast<int>(
        std::count_if(entries.begin(), entries.end(), [](const auto& e) { return !e.hidden; }));
}

int DbCategories::Reset()
{
    const Operation operation(*this);
    return IsOpen() && SharedStore()->ResetUses() ? 1 : 0;
}

CEOID DbCategories::Add(const std::wstring& name)
{
    const CEPROPVAL value = NameValue(name);
    return WriteRecord(0, 1, &value);
}

int DbCategories::Rename(CEOID id, const std::wstring& name)
{
    const CEPROPVAL value = NameValue(name);
    return id && WriteRecord(id, 1, &value) == id ? 1 : 0;
}

int DbCategories::SetHidden(CEOID id, bool hidden)
{
    CEPROPVAL value{};
    value.propid = kCategoryHidden;
    value.val.uiVal = hidden ? 1 : 0;
    return id && WriteRecord(id, 1, &value) == id ? 1 : 0;
}

HWND DbCategories::CreateListView(HINSTANCE instance, HWND parent, const RECT& rectangle, int id)
{
    return mervane::CreateCategoryList(instance, parent, rectangle, id);
}

// The names are copied first: what the list tells its parent while it is filled may lead to a write.
int DbCategories::UpdateListView(HWND list)
{
    const Operation operation(*this);
    if (!IsOpen() || !IsWindow(list))
        return 0;
    std::vector<mervane::NameCache::Entry> active;
    {
        const ReadScope scope(*this);
        const auto& entries = NamesOrNote(SharedStore()).Entries();
        std::copy_if(entries.begin(), entries.end(), std::back_inserter(active),
                     [](const auto& entry) { return !entry.hidden; });
    }
    mervane::FillCategoryList(list, active);
    return 1;
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

bool DbCategories::HoldsAny(const CEBLOB& blob, std::span<const CEOID> wanted)
{
    return mervane::HoldsAnyId(blob, wanted);
}
