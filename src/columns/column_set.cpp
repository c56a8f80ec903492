#include "columns/column_set.h"

#include <algorithm>
#include <utility>

#include "data/fields.h"
#include "ui/screen/scale.h"

namespace {

constexpr const wchar_t* kShownCountName = L"iCols";
constexpr const wchar_t* kColumnPrefix = L"Column";
constexpr WORD kFirstNumber = PropertyNumber(mervane::kJournalProperties[0].id);

std::wstring ColumnName(int position)
{
    return kColumnPrefix + std::to_wstring(position);
}

int FindColumn(const ColumnSet& set, const auto& matches)
{
    const auto found = std::find_if(set.columns.begin(), set.columns.end(), matches);
    return found == set.columns.end() ? -1 : static_cast<int>(found - set.columns.begin());
}

void HideAll(ColumnSet* set)
{
    for (ZColumn& column : set->columns)
        column.Remove(kColumnShown);
    set->shownCount = 0;
}

// Takes a stored flags word as the last shown column so far.
void ShowStored(ColumnSet* set, DWORD stored)
{
    const WORD property = static_cast<WORD>(stored >> kColumnPropertyShift);
    const int index = FieldOfColumn(property) ? FindColumnByProperty(*set, property) : -1;
    if (index < 0)
        return;
    ZColumn& column = set->columns[static_cast<size_t>(index)];
    if (!column.Has(kColumnShown))
        ++set->shownCount;
    column.SetFlags(stored | kColumnShown);
    MoveColumn(set, index, set->shownCount - 1);
}

} // namespace

void ResetColumns(ColumnSet* set, int workAreaRight)
{
    set->shownCount = 0;
    for (const Field& field : Fields()) {
        const WORD number = PropertyNumber(field.id);
        const int width = field.column.thirds
                              ? static_cast<int>(1LL * field.column.thirds * workAreaRight / 3)
                              : Scale(field.column.width);
        set->columns[number - kFirstNumber].Copy(TitleOf(field).c_str(), number, field.column.flags, width);
        set->shownCount += (field.column.flags & kColumnShown) != 0;
    }
}

void LoadColumns(ColumnSet* set, const RegistryStore& settings, int workAreaRight)
{
    const DWORD stored = settings.GetNumber(kSettings, kShownCountName, 0);
    ResetColumns(set, workAreaRight);
    if (!stored)
        return;
    HideAll(set);
    const int positions = static_cast<int>(std::min<DWORD>(stored, kPropertyCount));
    for (int i = 0; i < positions; ++i)
        ShowStored(set, settings.GetNumber(kSettings, ColumnName(i).c_str(), 0));
    if (!set->shownCount)
        ResetColumns(set, workAreaRight);
}

void SaveColumns(const ColumnSet& set, RegistryStore& settings)
{
    for (int i = 0; i < kPropertyCount; ++i) {
        const std::wstring name = ColumnName(i);
        settings.RemoveValue(kSettings, name.c_str());
        settings.SetNumber(kSettings, name.c_str(), set.columns[static_cast<size_t>(i)].GetFlags());
    }
    settings.SetNumber(kSettings, kShownCountName, static_cast<DWORD>(set.shownCount));
}

int FindColumnByProperty(const ColumnSet& set, WORD property)
{
    return FindColumn(set, [=](const ZColumn& column) { return column.Property() == property; });
}

int FindColumnByTitle(const ColumnSet& set, const wchar_t* title)
{
    return FindColumn(set, [=](const ZColumn& column) { return *title && column.Title() == title; });
}

int GetSortColumn(const ColumnSet& set)
{
    return FindColumn(set, [](const ZColumn& column) { return column.Has(kColumnSort); });
}

void MoveColumn(ColumnSet* set, int from, int to)
{
    const auto isPosition = [](int i) { return i >= 0 && i < kPropertyCount; };
    if (!isPosition(from) || !isPosition(to))
        return;
    const int step = from < to ? 1 : -1;
    while (from != to) {
        const int next = from + step;
        std::swap(set->columns[static_cast<size_t>(from)], set->columns[static_cast<size_t>(next)]);
        from = next;
    }
}
