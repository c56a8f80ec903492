#include "list_in_editor.h"

#include <gtest/gtest.h>

namespace {

constexpr int kTextSize = 512;

LPARAM At(POINT point)
{
    return MAKELPARAM(point.x, point.y);
}

} // namespace

LRESULT ListInEditor::Ask(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return SendMessageW(m_list, message, wParam, lParam);
}

int ListInEditor::Count() const
{
    return static_cast<int>(Ask(LVM_GETITEMCOUNT));
}

std::wstring ListInEditor::Text(int item, int column) const
{
    wchar_t text[kTextSize] = L"";
    LVITEMW wanted{};
    wanted.iSubItem = column;
    wanted.pszText = text;
    wanted.cchTextMax = kTextSize;
    Ask(LVM_GETITEMTEXTW, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&wanted));
    return wanted.pszText;
}

int ListInEditor::Find(const std::wstring& text) const
{
    for (int i = 0; i < Count(); ++i)
        if (Text(i) == text)
            return i;
    return -1;
}

bool ListInEditor::IsChecked(const std::wstring& text) const
{
    const int item = Find(text);
    EXPECT_GE(item, 0) << text;
    return Box(item) == 2;
}

int ListInEditor::Box(int item) const
{
    return static_cast<int>(Ask(LVM_GETITEMSTATE, static_cast<WPARAM>(item), LVIS_STATEIMAGEMASK) >> 12);
}

bool ListInEditor::Has(int item, UINT state) const
{
    return Ask(LVM_GETITEMSTATE, static_cast<WPARAM>(item), static_cast<LPARAM>(state)) == state;
}

DWORD ListInEditor::ExtendedStyle() const
{
    return static_cast<DWORD>(Ask(LVM_GETEXTENDEDLISTVIEWSTYLE));
}

int ListInEditor::Columns() const
{
    return Header_GetItemCount(ListView_GetHeader(m_list));
}

std::wstring ListInEditor::ColumnTitle(int column) const
{
    wchar_t text[kTextSize] = L"";
    LVCOLUMNW wanted{};
    wanted.mask = LVCF_TEXT;
    wanted.pszText = text;
    wanted.cchTextMax = kTextSize;
    Ask(LVM_GETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&wanted));
    return text;
}

int ListInEditor::ColumnWidth(int column) const
{
    return static_cast<int>(Ask(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column)));
}

void ListInEditor::Check(const std::wstring& text, bool checked) const
{
    const int item = Find(text);
    ASSERT_GE(item, 0) << text;
    ListView_SetItemState(m_list, item, INDEXTOSTATEIMAGEMASK(checked ? 2u : 1u), LVIS_STATEIMAGEMASK);
}

POINT ListInEditor::LabelPoint(int item) const
{
    RECT rect{};
    rect.left = LVIR_LABEL;
    EXPECT_TRUE(Ask(LVM_GETITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&rect)));
    return {rect.left + 8, (rect.top + rect.bottom) / 2};
}

POINT ListInEditor::BoxPoint(int item) const
{
    POINT point = LabelPoint(item);
    LVHITTESTINFO hit{};
    for (hit.pt = point; hit.pt.x >= 0; --hit.pt.x)
        if (ListView_HitTest(m_list, &hit) == item && hit.flags == LVHT_ONITEMSTATEICON)
            return {hit.pt.x - 4, hit.pt.y};
    ADD_FAILURE() << "no box at item " << item;
    return point;
}

void ListInEditor::Click(POINT point) const
{
    Ask(WM_LBUTTONDOWN, MK_LBUTTON, At(point));
    Ask(WM_LBUTTONUP, 0, At(point));
}

void ListInEditor::ClickBox(int item) const
{
    Click(BoxPoint(item));
}

void ListInEditor::ClickLabel(int item) const
{
    Click(LabelPoint(item));
}

void ListInEditor::ClickBelow() const
{
    RECT client{};
    GetClientRect(m_list, &client);
    Click({client.right - 3, client.bottom - 3});
}

void ListInEditor::DoubleClick(int item) const
{
    const POINT point = LabelPoint(item);
    Click(point);
    Ask(WM_LBUTTONDBLCLK, MK_LBUTTON, At(point));
    Ask(WM_LBUTTONUP, 0, At(point));
}
