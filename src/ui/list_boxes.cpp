#include "ui/list_boxes.h"

#include "ui/pictures/canvas.h"

namespace {

constexpr UINT kUnchecked = 1; // numbers of the state images
constexpr UINT kChecked = 2;

UINT ImageOf(UINT state)
{
    return (state & LVIS_STATEIMAGEMASK) >> 12;
}

UINT ItemImage(HWND list, int item)
{
    return ImageOf(ListView_GetItemState(list, item, LVIS_STATEIMAGEMASK));
}

} // namespace

int ItemCount(HWND list)
{
    return ListView_GetItemCount(list);
}

LPARAM ItemParameter(HWND list, int item)
{
    LVITEMW wanted{};
    wanted.mask = LVIF_PARAM;
    wanted.iItem = item;
    SendMessageW(list, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&wanted));
    return wanted.lParam;
}

int FindItem(HWND list, LPARAM parameter)
{
    LVFINDINFOW wanted{};
    wanted.flags = LVFI_PARAM;
    wanted.lParam = parameter;
    return static_cast<int>(
        SendMessageW(list, LVM_FINDITEMW, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&wanted)));
}

void CheckItem(HWND list, int item, bool checked)
{
    ListView_SetItemState(list, item, INDEXTOSTATEIMAGEMASK(checked ? kChecked : kUnchecked),
                          LVIS_STATEIMAGEMASK);
}

void UncheckAll(HWND list)
{
    for (int item = 0; item < ItemCount(list); ++item)
        if (ItemImage(list, item) == kChecked)
            CheckItem(list, item, false);
}

BoxChange BoxChangeOf(const NMLISTVIEW& change)
{
    const UINT before = ImageOf(change.uOldState);
    const UINT after = ImageOf(change.uNewState);
    if (before == kUnchecked && after == kChecked)
        return BoxChange::Checked;
    if (before == kChecked && after == kUnchecked)
        return BoxChange::Unchecked;
    return BoxChange::None;
}

void TurnTappedBox(HWND list, const NMITEMACTIVATE& tap)
{
    LVHITTESTINFO hit{};
    hit.pt = tap.ptAction;
    const int item = ListView_HitTest(list, &hit);
    const UINT image = item >= 0 ? ItemImage(list, item) : 0;
    if (image && hit.flags == LVHT_ONITEMLABEL)
        CheckItem(list, item, image != kChecked);
}

void RescaleColumns(HWND list, int before, int now)
{
    const int count = Header_GetItemCount(ListView_GetHeader(list));
    for (int column = 0; column < count; ++column)
        ListView_SetColumnWidth(list, column, MulDiv(ListView_GetColumnWidth(list, column), now, before));
}

// The drawing goes into nothing. A scroll bar that other columns needed goes with a change of the size.
void SetItemWidth(HWND list, int width)
{
    const Canvas nothing(1, 1, RGB(255, 255, 255));
    SendMessageW(list, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(nothing.Dc()), PRF_CLIENT);
    ListView_SetColumnWidth(list, 0, width);
    RECT place{};
    GetWindowRect(list, &place);
    for (const LONG more : {1L, 0L})
        SetWindowPos(list, nullptr, 0, 0, place.right - place.left, place.bottom - place.top + more,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}
