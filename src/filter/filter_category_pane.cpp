#include "filter/filter_category_pane.h"

#include "filter/filter_dialog_layout.h"
#include "pick/category_assignment.h"
#include "pick/only_item.h"
#include "res/resource.h"
#include "ui/dialog.h"
#include "ui/list_boxes.h"

namespace {

constexpr const wchar_t* kNoCategories = L"< None >";

} // namespace

void FilterCategoryPane::Create(HWND dialog)
{
    if (!m_store.Open(kCategoriesKey, dialog))
        return;
    m_list = m_store.CreateListView(GetModuleHandleW(nullptr), dialog, ListPlace(dialog),
                                    IDC_FILTER_CATEGORY_LIST);
    if (!m_list)
        return;
    // The group of radio buttons before the list ends where the list begins.
    SetWindowLongPtrW(m_list, GWL_STYLE, GetWindowLongPtrW(m_list, GWL_STYLE) | WS_GROUP);
    PlaceInDialog(m_list, dialog, GetDlgItem(dialog, IDC_FILTER_BY_CATEGORIES));
    Refresh();
}

void FilterCategoryPane::Show(bool show) const
{
    if (m_list)
        ShowWindow(m_list, show ? SW_SHOW : SW_HIDE);
}

void FilterCategoryPane::Refresh()
{
    if (!m_list)
        return;
    ListView_SetExtendedListViewStyleEx(m_list, LVS_EX_CHECKBOXES, LVS_EX_CHECKBOXES);
    if (!m_store.UpdateListView(m_list))
        return;
    const bool listsAll = m_store.Trouble() == StoreTrouble::None;
    DropUnlistedCategories(&m_filter->categories, &m_store);
    for (size_t i = 0; i < m_filter->categories.Count(); ++i)
        if (const int item = FindItem(m_list, static_cast<LPARAM>(m_filter->categories.GetItem(i)->id));
            item >= 0)
            CheckItem(m_list, item, true);
    if (ItemCount(m_list) == 0)
        ShowOnly(listsAll ? kNoCategories : kUnreadCategories);
    SetItemWidth(m_list, ListView_GetColumnWidth(m_list, 0));
}

void FilterCategoryPane::ShowOnly(const wchar_t* text) const
{
    ListView_SetExtendedListViewStyleEx(m_list, LVS_EX_CHECKBOXES, 0);
    ShowOnlyItem(m_list, text);
}

void FilterCategoryPane::OnNotify(const NMHDR& notification)
{
    if (notification.code == NM_CLICK)
        TurnTappedBox(m_list, reinterpret_cast<const NMITEMACTIVATE&>(notification));
    if (notification.code != LVN_ITEMCHANGED)
        return;
    const auto& change = reinterpret_cast<const NMLISTVIEW&>(notification);
    const CEOID category = static_cast<CEOID>(ItemParameter(m_list, change.iItem));
    switch (BoxChangeOf(change)) {
    case BoxChange::Checked:
        if (!m_filter->categories.Find(category))
            m_filter->categories.Push({category, 0});
        break;
    case BoxChange::Unchecked: m_filter->categories.Remove(category); break;
    case BoxChange::None: break;
    }
}

void FilterCategoryPane::Clear()
{
    m_filter->categories.DeleteStack();
    if (m_list)
        UncheckAll(m_list);
}
