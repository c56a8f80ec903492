#include "editor/category_view.h"

#include "pick/category_assignment.h"
#include "pick/only_item.h"
#include "res/resource.h"
#include "ui/list_boxes.h"
#include "ui/scoped_quiet.h"

namespace {

constexpr const wchar_t* kNoCategoriesYet = L"<Double Tap to Create Categories>";

// Every bit but the one of the boxes, as the handheld's program has it.
constexpr DWORD kWithoutBoxes = 0xFFFFFFFB;
// Of these bits the handheld's lists knew these. To the desktop's the others are a transparent background,
// shadows, a selection that follows the mouse and more, which nobody has meant.
constexpr DWORD kMeantWithoutBoxes =
    LVS_EX_GRIDLINES | LVS_EX_SUBITEMIMAGES | LVS_EX_HEADERDRAGDROP | LVS_EX_FULLROWSELECT;

// One of the bits that the list gets without boxes is for a header in every kind of list.
void NeverShowHeader(HWND list)
{
    SetWindowLongPtrW(list, GWL_STYLE, GetWindowLongPtrW(list, GWL_STYLE) | LVS_NOCOLUMNHEADER);
}

// Not masked: what was set before goes.
void SetOnlyStyle(HWND list, DWORD style)
{
    SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(style));
}

} // namespace

bool CategoryView::Create(HWND editor, const RECT& rect)
{
    m_list =
        m_record->CategoryStore().CreateListView(GetModuleHandleW(nullptr), editor, rect, IDC_CATEGORY_LIST);
    Refresh();
    return m_list != nullptr;
}

void CategoryView::Destroy()
{
    const ScopedQuiet quiet(m_quiet);
    if (m_list)
        DestroyWindow(m_list);
    m_list = nullptr;
}

void CategoryView::TakeEdited()
{
    if (!m_list)
        return;
    DropUnlistedCategories(&m_record->Categories(), &m_record->CategoryStore());
    Refresh();
}

void CategoryView::Refresh()
{
    if (!m_list)
        return;
    const ScopedQuiet quiet(m_quiet);
    DbCategories& store = m_record->CategoryStore();
    if (store.GetNumActiveRecords() == 0) {
        NeverShowHeader(m_list);
        SetOnlyStyle(m_list, kWithoutBoxes);
        ListView_SetExtendedListViewStyleEx(m_list, ~kMeantWithoutBoxes, 0);
        ShowOnlyItem(m_list, store.Trouble() == StoreTrouble::None ? kNoCategoriesYet : kUnreadCategories);
        return;
    }
    SetOnlyStyle(m_list, LVS_EX_CHECKBOXES);
    store.UpdateListView(m_list);
    CheckAssigned();
}

void CategoryView::CheckAssigned()
{
    for (const CEOID id : AssignedCategories(m_record->Categories()))
        if (const int item = FindItem(m_list, static_cast<LPARAM>(id)); item >= 0)
            CheckItem(m_list, item, true);
}

CategoryView::Outcome CategoryView::OnNotify(const NMHDR& notification)
{
    switch (notification.code) {
    case NM_CLICK: OnTap(reinterpret_cast<const NMITEMACTIVATE&>(notification)); return Outcome::Nothing;
    case NM_DBLCLK: return Outcome::Edit;
    case LVN_ITEMCHANGING:
        return OnItemChanging(reinterpret_cast<const NMLISTVIEW&>(notification)) ? Outcome::Assigned
                                                                                 : Outcome::Nothing;
    default: return Outcome::Nothing;
    }
}

// A tap on the box is toggled by the list itself.
void CategoryView::OnTap(const NMITEMACTIVATE& tap)
{
    constexpr UINT kMarked = LVIS_SELECTED | LVIS_FOCUSED;
    LVHITTESTINFO hit{};
    hit.pt = tap.ptAction;
    const int item = ListView_HitTest(m_list, &hit);
    if (item >= 0 && hit.flags == LVHT_ONITEMSTATEICON) {
        ListView_SetItemState(m_list, item, kMarked, kMarked);
    } else {
        TurnTappedBox(m_list, tap);
    }
}

// The list tells before it changes a box, and also when nothing changes in it.
bool CategoryView::OnItemChanging(const NMLISTVIEW& change)
{
    const BoxChange box = BoxChangeOf(change);
    if (*m_quiet || box == BoxChange::None)
        return false;
    const CEOID id = static_cast<CEOID>(ItemParameter(m_list, change.iItem));
    if (box == BoxChange::Unchecked)
        ReleaseCategory(&m_record->Categories(), id);
    else
        AssignCategory(&m_record->Categories(), id);
    return true;
}
