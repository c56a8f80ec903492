#include "filter/filter_date_pane.h"

#include <commctrl.h>

#include "filter/filter_dialog_layout.h"
#include "filter/filter_settings.h"
#include "res/resource.h"
#include "ui/dialog.h"
#include "ui/list_boxes.h"
#include "ui/screen/scale.h"
#include "ui/typed_time.h"
#include "util/clock.h"
#include "util/month_set.h"

namespace {

constexpr DWORD kControl = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
// The group of radio buttons before the list ends where the list begins.
constexpr DWORD kMonthsStyle = kControl | WS_GROUP | LVS_LIST | LVS_SINGLESEL | LVS_SHOWSELALWAYS;
constexpr int kMonthWidth = 76;

void SetDay(HWND picker, const SYSTEMTIME& day)
{
    const SYSTEMTIME today = LocalNow();
    if (!IsSet(day) || !DateTime_SetSystemtime(picker, GDT_VALID, &day))
        DateTime_SetSystemtime(picker, GDT_VALID, &today);
}

HWND MakeControl(HWND dialog, const wchar_t* className, int id, DWORD style, DWORD exStyle, const RECT& place)
{
    return CreateWindowExW(exStyle, className, L"", style, place.left, place.top, place.right - place.left,
                           place.bottom - place.top, dialog,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr),
                           nullptr);
}

} // namespace

void FilterDatePane::Create(HWND dialog)
{
    m_dialog = dialog;
    m_months =
        MakeControl(dialog, WC_LISTVIEWW, IDC_MONTH_LIST, kMonthsStyle, WS_EX_CLIENTEDGE, ListPlace(dialog));
    PlaceInDialog(m_months, dialog, GetDlgItem(dialog, IDC_FILTER_BY_CATEGORIES));
    FillMonths();
    m_start = MakePicker(IDC_RANGE_START, IDC_RANGE_START_LABEL, m_filter->rangeStart);
    m_end = MakePicker(IDC_RANGE_END, IDC_RANGE_END_LABEL, m_filter->rangeEnd);
    CheckDlgButton(dialog, IDC_FILTER_ON_RANGE,
                   static_cast<UINT>(m_filter->rangeMode ? BST_CHECKED : BST_UNCHECKED));
}

void FilterDatePane::FillMonths()
{
    ListView_SetExtendedListViewStyleEx(m_months, LVS_EX_CHECKBOXES, LVS_EX_CHECKBOXES);
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    for (; item.iItem < kMonthCount; ++item.iItem) {
        item.pszText = const_cast<wchar_t*>(MonthName(item.iItem)); // the list only reads it
        SendMessageW(m_months, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        CheckItem(m_months, item.iItem, (m_filter->monthMask & MonthBit(item.iItem)) != 0);
    }
    OnResolutionChanged();
    ListView_SetItemState(m_months, 0, LVIS_FOCUSED, LVIS_FOCUSED);
}

void FilterDatePane::OnResolutionChanged() const
{
    SetItemWidth(m_months, Scale(m_dialog, kMonthWidth));
}

HWND FilterDatePane::MakePicker(int id, int labelId, const SYSTEMTIME& day) const
{
    HWND label = GetDlgItem(m_dialog, labelId);
    HWND picker = MakeControl(m_dialog, DATETIMEPICK_CLASSW, id, kControl | DTS_SHORTDATEFORMAT, 0,
                              PickerPlace(m_dialog, label));
    PlaceInDialog(picker, m_dialog, label);
    SetDay(picker, day);
    TellTyping(picker, m_dialog);
    return picker;
}

void FilterDatePane::Show(bool show)
{
    for (const int id : {IDC_RANGE_FRAME, IDC_FILTER_ON_RANGE, IDC_RANGE_START_LABEL, IDC_RANGE_START,
                         IDC_RANGE_END_LABEL, IDC_RANGE_END, IDC_MONTH_LIST})
        ShowWindow(GetDlgItem(m_dialog, id), show ? SW_SHOW : SW_HIDE);
    if (show)
        EnableWhatCounts();
}

HWND FilterDatePane::First() const
{
    return m_filter->rangeMode ? m_start : m_months;
}

void FilterDatePane::EnableWhatCounts()
{
    const bool range = m_filter->rangeMode;
    for (const int id : {IDC_RANGE_START_LABEL, IDC_RANGE_START, IDC_RANGE_END_LABEL, IDC_RANGE_END})
        EnableWindow(GetDlgItem(m_dialog, id), range);
    for (const int id : {IDC_MONTH_LIST, IDC_CLEAR_SELECTION})
        EnableWindow(GetDlgItem(m_dialog, id), !range);
}

void FilterDatePane::OnRangeChecked(bool checked)
{
    m_filter->rangeMode = checked;
    EnableWhatCounts();
}

void FilterDatePane::OnMonthNotify(const NMHDR& notification)
{
    if (notification.code == NM_CLICK)
        TurnTappedBox(m_months, reinterpret_cast<const NMITEMACTIVATE&>(notification));
    if (notification.code != LVN_ITEMCHANGED)
        return;
    const auto& change = reinterpret_cast<const NMLISTVIEW&>(notification);
    switch (BoxChangeOf(change)) {
    case BoxChange::Checked: m_filter->monthMask |= MonthBit(change.iItem); break;
    case BoxChange::Unchecked: m_filter->monthMask &= ~MonthBit(change.iItem); break;
    case BoxChange::None: break;
    }
}

void FilterDatePane::ClearMonths()
{
    UncheckAll(m_months);
}

void FilterDatePane::ReadRange()
{
    TakeTypedTime(m_dialog);
    DateTime_GetSystemtime(m_start, &m_filter->rangeStart);
    DateTime_GetSystemtime(m_end, &m_filter->rangeEnd);
}
