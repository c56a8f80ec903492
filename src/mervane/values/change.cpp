#include "mervane/values/change.h"

namespace mervane {

namespace {

constexpr WPARAM kNamesUntouched = 0x10000;
constexpr WPARAM kAlsoUses = 0x20000;
constexpr int kTableShift = 8;
constexpr WPARAM kByte = 0xFF;

bool IsChangeCode(WPARAM code)
{
    return IsWorkCode(code) || code == kChangeCreated || code == kChangeModified || code == kChangeDeleted;
}

} // namespace

WPARAM PackChange(const TableChange& what)
{
    return what.change.code | IndexOf(what.table) << kTableShift |
           (what.change.touchesNames ? 0 : kNamesUntouched) | (what.change.alsoUses ? kAlsoUses : 0);
}

std::optional<TableChange> UnpackChange(WPARAM packed, CEOID id)
{
    const Change change{packed & kByte, id, (packed & kNamesUntouched) == 0, (packed & kAlsoUses) != 0};
    const size_t table = packed >> kTableShift & kByte;
    if (!IsChangeCode(change.code) || table >= kTableCount)
        return std::nullopt;
    return TableChange{static_cast<TableId>(table), change};
}

} // namespace mervane
