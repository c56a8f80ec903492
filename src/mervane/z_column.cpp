#include "mervane/z_column.h"

#include <algorithm>

namespace {

constexpr size_t kTitleLength = 59;
constexpr DWORD kFieldFlagsMask = (1u << kColumnWidthShift) - 1;
constexpr DWORD kWidthBits = kColumnWidthMask << kColumnWidthShift;

} // namespace

void ZColumn::Copy(const wchar_t* title, WORD property, DWORD flags, int width)
{
    const std::wstring_view text = title ? title : L"";
    m_title = text.substr(0, kTitleLength);
    m_flags = (DWORD{property} << kColumnPropertyShift) | (flags & kFieldFlagsMask);
    SetWidth(width);
}

void ZColumn::SetWidth(int width)
{
    const int clipped = std::clamp(width, 0, static_cast<int>(kColumnWidthMask));
    m_flags = (m_flags & ~kWidthBits) | (static_cast<DWORD>(clipped) << kColumnWidthShift);
}

int ZColumn::SetActive()
{
    Add(kColumnSort);
    return GetSortOrder();
}

int ZColumn::SetAscending()
{
    m_flags ^= kColumnDescending;
    Remove(kColumnToggled);
    return GetSortOrder();
}

int ZColumn::SetDecending()
{
    m_flags ^= kColumnDescending;
    Add(kColumnToggled);
    return GetSortOrder();
}

int ZColumn::GetSortOrder() const
{
    return Has(kColumnDescending) ? kHeaderImageDescending : kHeaderImageAscending;
}
