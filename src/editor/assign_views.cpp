#include "editor/assign_views.h"

#include "editor/command_keys.h"
#include "editor/editor_bar.h"
#include "res/resource.h"
#include "ui/list_boxes.h"
#include "ui/screen/scale.h"
#include "ui/window_scroll.h"

namespace {

RECT PlaceOf(HWND control)
{
    RECT rect{};
    GetWindowRect(control, &rect);
    MapWindowPoints(nullptr, GetParent(control), reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

} // namespace

void AssignViews::Start(HWND editor, EditorBar* bar, HWND body)
{
    m_editor = editor;
    m_bar = bar;
    m_body = body;
    ShowInBar(m_view);
}

bool AssignViews::SwitchTo(EditorView view)
{
    const EditorView before = m_view;
    if (view != before && !Open(view)) {
        ShowInBar(before);
        return false;
    }
    m_view = view;
    ShowInBar(view);
    if (view != before) {
        if (GetFocus() == WindowOf(before))
            SetFocus(WindowOf(view));
        Leave(before);
    }
    return true;
}

bool AssignViews::Open(EditorView view)
{
    const RECT place = PlaceOf(m_body);
    switch (view) {
    case EditorView::EditEntry: ShowWindow(m_body, SW_SHOW); return true;
    case EditorView::AssignCategories:
        if (!m_categories.Create(m_editor, place))
            return false;
        break;
    case EditorView::AssignContacts:
        if (!m_contacts.Create(m_editor, place))
            return false;
        break;
    }
    HWND list = WindowOf(view);
    // The tab key comes to it as it does to the body.
    SetWindowPos(list, m_body, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    AddCommandKeys(list, m_editor);
    TellFocus(list, m_editor);
    return true;
}

void AssignViews::Leave(EditorView view)
{
    switch (view) {
    case EditorView::EditEntry: ShowWindow(m_body, SW_HIDE); break;
    case EditorView::AssignCategories: m_categories.Destroy(); break;
    case EditorView::AssignContacts: m_contacts.Destroy(); break;
    }
}

HWND AssignViews::WindowOf(EditorView view) const
{
    switch (view) {
    case EditorView::AssignCategories: return m_categories.Window();
    case EditorView::AssignContacts: return m_contacts.Window();
    default: return m_body;
    }
}

void AssignViews::ShowInBar(EditorView view) const
{
    const EditorViewRule& rule = RuleOfView(view);
    m_bar->Check(rule.command, true);
    m_bar->Enable(CMD_TIME_STAMP, rule.editsBody);
    m_bar->Enable(CMD_ZOOM, rule.editsBody);
    m_bar->Enable(CMD_EDIT_CATEGORIES, rule.editsCategories);
}

void AssignViews::FollowBody() const
{
    if (m_view == EditorView::EditEntry)
        return;
    const RECT place = PlaceOf(m_body);
    MoveWindow(WindowOf(m_view), place.left, place.top, place.right - place.left, place.bottom - place.top,
               TRUE);
}

void AssignViews::OnResolutionChanged(int before)
{
    HWND list = WindowOf(m_view);
    if (m_view == EditorView::EditEntry || !list)
        return;
    SendMessageW(list, WM_SETFONT, static_cast<WPARAM>(SendMessageW(m_editor, WM_GETFONT, 0, 0)), FALSE);
    RescaleColumns(list, before, DpiOf(m_editor));
    Refresh();
}

void AssignViews::Refresh()
{
    m_categories.Refresh();
    if (!m_contacts.Window() || m_contacts.Refresh())
        return;
    const bool hadFocus = GetFocus() == m_contacts.Window();
    m_contacts.Destroy();
    if (!Open(EditorView::AssignContacts))
        (void)SwitchTo(EditorView::EditEntry);
    if (hadFocus)
        SetFocus(WindowOf(m_view));
}

void AssignViews::DestroyLists()
{
    m_categories.Destroy();
    m_contacts.Destroy();
}

AssignViews::Outcome AssignViews::OnNotify(NMHDR* notification, LRESULT* result)
{
    if (!notification->hwndFrom)
        return Outcome::NotOurs;
    if (notification->hwndFrom == m_contacts.Window())
        return m_contacts.OnNotify(notification, result) ? Outcome::ContactsAssigned : Outcome::Nothing;
    if (notification->hwndFrom != m_categories.Window())
        return Outcome::NotOurs;
    switch (m_categories.OnNotify(*notification)) {
    case CategoryView::Outcome::Assigned: return Outcome::CategoriesAssigned;
    case CategoryView::Outcome::Edit: return Outcome::EditCategories;
    default: return Outcome::Nothing;
    }
}
