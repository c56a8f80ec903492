#include "filter/filter_dialog_layout.h"

#include "res/resource.h"

namespace {

// In units of the dialog.
constexpr RECT kList = {7, 22, 163, 77};
constexpr int kGap = 4;
constexpr int kPickerHeight = 13;

RECT PlaceOf(HWND control, HWND dialog)
{
    RECT place{};
    GetWindowRect(control, &place);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

} // namespace

RECT ListPlace(HWND dialog)
{
    RECT place = kList;
    MapDialogRect(dialog, &place);
    return place;
}

RECT PickerPlace(HWND dialog, HWND label)
{
    RECT size = {0, 0, kGap, kPickerHeight};
    MapDialogRect(dialog, &size);
    const RECT text = PlaceOf(label, dialog);
    const RECT frame = PlaceOf(GetDlgItem(dialog, IDC_RANGE_FRAME), dialog);
    const LONG top = (text.top + text.bottom - size.bottom) / 2;
    return {text.right, top, frame.right - size.right, top + size.bottom};
}
