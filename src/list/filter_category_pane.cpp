#include "list/filter_category_pane.h"

#include "editor/only_item.h"
#include "list/filter_dialog_layout.h"
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
    DropUnlisted();
    for (size_t i = 0; i < m_filter->categories.Count(); ++i)
        CheckItem(m_list, FindItem(m_list, static_cast<LPARAM>(m_filter->categories.GetItem(i)->id)), true);
    if (ItemCount(m_list) == 0)
        ShowNone();
    SetItemWidth(m_list, ListView_GetColumnWidth(m_list, 0));
}

void FilterCategoryPane::DropUnlisted()
{
    ZStack listed;
    for (size_t i = 0; i < m_filter->categories.Count(); ++i) {
        const ZCategory& category = *m_filter->categories.GetItem(i);
        if (FindItem(m_list, static_cast<LPARAM>(category.id)) >= 0)
            listed.Push(category);
    }
    m_filter->categories = listed;
}

void FilterCategoryPane::ShowNone() const
{
    ListView_SetExtendedListViewStyleEx(m_list, LVS_EX_CHECKBOXES, 0);
    ShowOnlyItem(m_list, kNoCategories);
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
