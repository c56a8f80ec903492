#include "pick/category_draft.h"

#include <algorithm>
#include <span>

#include "mervane/db_categories.h"
#include "mervane/values/category_name.h"
#include "mervane/values/sort_key.h"
#include "util/owners.h"

using mervane::Answer;
using mervane::IsSameCategoryName;
using mervane::MayPass;
using mervane::SortKeyMaker;

namespace {

Answer IsThere(DbCategories& categories, CEOID id)
{
    if (categories.Exists(id))
        return Answer::Yes;
    return categories.Trouble() == StoreTrouble::None ? Answer::No : Answer::Failed;
}

// Does it with a category that is still there; one that is gone needs nothing done.
template <typename Action> bool DoIfThere(DbCategories& categories, CEOID id, Action action)
{
    const Answer isThere = IsThere(categories, id);
    return isThere == Answer::No || (isThere == Answer::Yes && action());
}

// Stands in the way of no name that somebody would give.
std::wstring PassingName(CEOID id)
{
    return L"\uE000 " + std::to_wstring(id);
}

} // namespace

bool CategoryDraft::Load(DbCategories& categories)
{
    if (!categories.IsOpen())
        return false;
    m_drafts.clear();
    m_deleted.clear();
    const CeDBase::ReadScope scope(categories);
    for (int found = categories.SeekFirstRecord(); found; found = categories.SeekNextRecord())
        if (!Read(categories))
            return false;
    if (MayPass(categories.Trouble()))
        return false;
    SortKeyMaker maker;
    for (Draft& draft : m_drafts)
        draft.key = maker.Make(draft.item.name);
    std::sort(m_drafts.begin(), m_drafts.end(), ComesBefore);
    return true;
}

// The current record. One whose name is no text, or that is damaged, is nothing that could be shown.
bool CategoryDraft::Read(DbCategories& categories)
{
    WORD count = 0;
    CEPROPVAL* properties = nullptr;
    Draft draft;
    draft.item.id = categories.ReadRecord(&count, nullptr, &properties);
    const LocalBlock<CEPROPVAL> owner(properties);
    if (!draft.item.id)
        return !MayPass(categories.Trouble());
    bool hasName = false;
    for (const CEPROPVAL& property : std::span(properties, count)) {
        if (property.propid == kCategoriesKey) {
            draft.item.name = property.val.lpwstr;
            hasName = true;
        } else if (property.propid == kCategoryUses) {
            draft.item.uses = property.val.iVal;
        } else if (property.propid == kCategoryHidden) {
            draft.item.hidden = property.val.uiVal != 0;
        }
    }
    if (!hasName)
        return true;
    draft.stored = draft.item;
    m_drafts.push_back(std::move(draft));
    return true;
}

CategoryDraft::Fault CategoryDraft::Check(std::wstring_view name, int row) const
{
    if (name.empty())
        return Fault::Empty;
    if (name.size() >= kCategoryNameSize)
        return Fault::TooLong;
    for (int other = 0; other < Count(); ++other)
        if (other != row && IsSameCategoryName(At(other).name, name))
            return Fault::Taken;
    return Fault::None;
}

// A new category comes behind the stored ones of an equal name, as its identifier will have it.
bool CategoryDraft::ComesBefore(const Draft& a, const Draft& b)
{
    const int order = a.key.compare(b.key);
    return order ? order < 0 : a.item.id - 1 < b.item.id - 1;
}

int CategoryDraft::Insert(Draft draft)
{
    SortKeyMaker maker;
    draft.key = maker.Make(draft.item.name);
    const auto place = std::upper_bound(m_drafts.begin(), m_drafts.end(), draft, ComesBefore);
    const auto inserted = m_drafts.insert(place, std::move(draft));
    return static_cast<int>(inserted - m_drafts.begin());
}

int CategoryDraft::Add(const std::wstring& name)
{
    Draft draft;
    draft.item.name = name;
    return Insert(std::move(draft));
}

int CategoryDraft::Rename(int row, const std::wstring& name)
{
    Draft draft = std::move(m_drafts[static_cast<size_t>(row)]);
    m_drafts.erase(m_drafts.begin() + row);
    draft.item.name = name;
    return Insert(std::move(draft));
}

void CategoryDraft::SetHidden(int row, bool hidden)
{
    m_drafts[static_cast<size_t>(row)].item.hidden = hidden;
}

void CategoryDraft::Delete(int row)
{
    if (const CEOID id = At(row).id)
        m_deleted.push_back(id);
    m_drafts.erase(m_drafts.begin() + row);
}

bool CategoryDraft::IsChanged() const
{
    return !m_deleted.empty() || std::any_of(m_drafts.begin(), m_drafts.end(), [](const Draft& draft) {
        return draft.IsNew() || draft.IsRenamed() || draft.item.hidden != draft.stored.hidden;
    });
}

// Names become free before they are given anew: by what is deleted, then by what is renamed, then comes what
// is new.
bool CategoryDraft::Save(DbCategories& categories) const
{
    if (!IsChanged())
        return true;
    CeDBase::BulkScope bulk(categories);
    return DeleteStored(categories) && RenameStored(categories) && HideStored(categories) &&
           AddNew(categories) && bulk.Commit();
}

bool CategoryDraft::DeleteStored(DbCategories& categories) const
{
    return std::all_of(m_deleted.begin(), m_deleted.end(), [&](CEOID id) {
        return DoIfThere(categories, id, [&] { return categories.DeleteRecord(id) != 0; });
    });
}

bool CategoryDraft::RenameStored(DbCategories& categories) const
{
    return std::all_of(m_drafts.begin(), m_drafts.end(), [&](const Draft& draft) {
        return !draft.IsRenamed() || DoIfThere(categories, draft.item.id, [&] {
            return MakeWay(categories, draft) && categories.Rename(draft.item.id, draft.item.name);
        });
    });
}

// One whose turn comes later may still have the name: two may have changed theirs.
bool CategoryDraft::MakeWay(DbCategories& categories, const Draft& renamed) const
{
    return std::all_of(m_drafts.begin(), m_drafts.end(), [&](const Draft& other) {
        const CEOID id = other.item.id;
        const bool isInTheWay = &other > &renamed && other.IsRenamed() &&
                                IsSameCategoryName(other.stored.name, renamed.item.name);
        return !isInTheWay ||
               DoIfThere(categories, id, [&] { return categories.Rename(id, PassingName(id)) != 0; });
    });
}

bool CategoryDraft::HideStored(DbCategories& categories) const
{
    return std::all_of(m_drafts.begin(), m_drafts.end(), [&](const Draft& draft) {
        const bool isSame = draft.IsNew() || draft.item.hidden == draft.stored.hidden;
        return isSame || DoIfThere(categories, draft.item.id, [&] {
                   return categories.SetHidden(draft.item.id, draft.item.hidden) != 0;
               });
    });
}

bool CategoryDraft::AddNew(DbCategories& categories) const
{
    return std::all_of(m_drafts.begin(), m_drafts.end(), [&](const Draft& draft) {
        if (!draft.IsNew())
            return true;
        const CEOID id = categories.Add(draft.item.name);
        return id && (!draft.item.hidden || categories.SetHidden(id, true));
    });
}
