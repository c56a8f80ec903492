#include "support/entry_list_fixture.h"

EntryListTest::EntryListTest()
    : m_parent([this](HWND, UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
          return OnParentMessage(message, wParam, lParam, result);
      })
{}

bool EntryListTest::OnParentMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    switch (message) {
    case kMsgSelectionChanged:
        EXPECT_EQ(lParam, 0);
        m_reports.push_back(wParam);
        return true;
    case WM_COMMAND: m_commands.push_back(wParam); return true;
    case WM_SETFOCUS:
        if (m_handsFocusOn)
            SetFocus(Handle());
        return m_handsFocusOn;
    case WM_NOTIFY: break;
    default: return false;
    }
    auto* notification = reinterpret_cast<NMHDR*>(lParam);
    if (notification->code == LVN_DELETEALLITEMS)
        m_cursorWhileEmptying = GetCursor();
    if (notification->code == LVN_DELETEALLITEMS && m_deselectsOnEmptying) {
        NMLISTVIEW deselected{};
        deselected.hdr = {notification->hwndFrom, notification->idFrom, static_cast<UINT>(LVN_ITEMCHANGED)};
        deselected.iItem = -1;
        deselected.uOldState = LVIS_SELECTED;
        deselected.uChanged = LVIF_STATE;
        m_list.OnNotify(&deselected.hdr);
    }
    *result = m_list.OnNotify(notification);
    const LVITEMW& item = reinterpret_cast<NMLVDISPINFOW*>(notification)->item;
    if (notification->code == LVN_GETDISPINFOW && (item.mask & LVIF_TEXT) && item.iSubItem == 0 &&
        !*item.pszText)
        m_blankRows.push_back(item.iItem);
    return true;
}

void EntryListTest::CreateList(int topOffset)
{
    ASSERT_NE(m_list.Create(m_parent.Handle(), &m_columns, LVS_REPORT | LVS_SHOWSELALWAYS, topOffset),
              nullptr);
    PumpMessages();
}

void EntryListTest::Paint() const
{
    RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
}

std::wstring EntryListTest::Cell(int row, int column) const
{
    std::wstring text(8192, L'\0');
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    text.resize(static_cast<size_t>(
        SendMessageW(Handle(), LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item))));
    return text;
}

LVCOLUMNW EntryListTest::Column(int column) const
{
    LVCOLUMNW header{};
    header.mask = LVCF_FMT | LVCF_WIDTH | LVCF_SUBITEM | LVCF_IMAGE;
    EXPECT_TRUE(ListView_GetColumn(Handle(), column, &header));
    return header;
}

std::wstring EntryListTest::HeaderText(int column) const
{
    wchar_t text[64] = L"";
    HDITEMW item{};
    item.mask = HDI_TEXT;
    item.pszText = text;
    item.cchTextMax = 64;
    EXPECT_TRUE(Header_GetItem(Header(), column, &item));
    return text;
}

LVITEMW EntryListTest::Answer(int row, int column, UINT mask, LVITEMW asked) const
{
    NMLVDISPINFOW info{};
    info.hdr = {Handle(), 0, static_cast<UINT>(LVN_GETDISPINFOW)};
    info.item = asked;
    info.item.mask = mask;
    info.item.iItem = row;
    info.item.iSubItem = column;
    SendMessageW(m_parent.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&info));
    return info.item;
}

UINT EntryListTest::StateOf(int row) const
{
    return ListView_GetItemState(Handle(), row, LVIS_SELECTED | LVIS_FOCUSED);
}

std::vector<int> EntryListTest::SelectedRows() const
{
    std::vector<int> rows;
    for (int row = -1; (row = ListView_GetNextItem(Handle(), row, LVNI_SELECTED)) >= 0;)
        rows.push_back(row);
    return rows;
}

std::vector<CEOID> EntryListTest::Selected()
{
    const std::list<CEOID>& ids = m_list.Selection().InOrder();
    return {ids.begin(), ids.end()};
}

void EntryListTest::Click(HWND window, POINT point, UINT keys)
{
    const LPARAM position = MAKELPARAM(point.x, point.y);
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON | keys, position);
    PostMessageW(window, WM_LBUTTONUP, keys, position);
    PumpMessages();
}

void EntryListTest::ClickRow(int row, UINT keys)
{
    RECT rect{};
    ASSERT_TRUE(ListView_GetItemRect(Handle(), row, &rect, LVIR_LABEL));
    Click(Handle(), {rect.left + 4, (rect.top + rect.bottom) / 2}, keys);
}

void EntryListTest::DoubleClickRow(int row)
{
    ClickRow(row);
    RECT rect{};
    ASSERT_TRUE(ListView_GetItemRect(Handle(), row, &rect, LVIR_LABEL));
    const LPARAM position = MAKELPARAM(rect.left + 4, (rect.top + rect.bottom) / 2);
    PostMessageW(Handle(), WM_LBUTTONDBLCLK, MK_LBUTTON, position);
    PostMessageW(Handle(), WM_LBUTTONUP, 0, position);
    PumpMessages();
}

void EntryListTest::PressKey(UINT key, bool shift, bool control)
{
    BYTE keys[256]{};
    keys[VK_SHIFT] = shift ? 0x80 : 0;
    keys[VK_CONTROL] = control ? 0x80 : 0;
    SetKeyboardState(keys);
    SendMessageW(Handle(), WM_KEYDOWN, key, 0);
    SendMessageW(Handle(), WM_KEYUP, key, 0);
    const BYTE none[256]{};
    SetKeyboardState(const_cast<BYTE*>(none));
    PumpMessages();
}

void EntryListTest::ClickHeader(int column)
{
    RECT rect{};
    ASSERT_TRUE(Header_GetItemRect(Header(), column, &rect));
    Click(Header(), {rect.left + 12, (rect.top + rect.bottom) / 2}, 0);
}

void EntryListTest::DragDivider(int column, int by)
{
    RECT rect{};
    ASSERT_TRUE(Header_GetItemRect(Header(), column, &rect));
    const int y = (rect.top + rect.bottom) / 2;
    PostMessageW(Header(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(rect.right - 1, y));
    PostMessageW(Header(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(rect.right - 1 + by, y));
    PostMessageW(Header(), WM_LBUTTONUP, 0, MAKELPARAM(rect.right - 1 + by, y));
    PumpMessages();
}
