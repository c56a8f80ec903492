#include "address_window_fixture.h"

#include <commctrl.h>

#include "addrbook/resource.h"
#include "addrbook/transfer/contact_record.h"
#include "support/test_windows.h"

namespace addrbook {

void AddressWindowTest::TearDown()
{
    Close();
    DeleteFileW(m_path.c_str());
}

CEOID AddressWindowTest::Add(const std::string& fileAs, const char* note)
{
    vcard::Contact contact;
    contact[vcard::Field::FileAs] = fileAs;
    contact[vcard::Field::Note] = note;
    return ContactSaver().Save(m_contacts, 0, contact);
}

void AddressWindowTest::Open()
{
    HINSTANCE instance = GetModuleHandleW(nullptr);
    ASSERT_TRUE(AddressWindow::RegisterWindowClass(instance));
    m_window = std::make_unique<AddressWindow>();
    ASSERT_TRUE(m_window->Create(instance));
    m_window->ShowFirst(SW_SHOWNORMAL);
    PumpMessages();
}

// Its end is the program's.
void AddressWindowTest::Close()
{
    m_window.reset();
    MSG message;
    while (PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
    }
}

HWND AddressWindowTest::List() const
{
    return Item(IDC_CONTACTS);
}

std::wstring AddressWindowTest::NameIn(int row) const
{
    wchar_t text[300] = L"";
    ListView_GetItemText(List(), row, 0, text, 300);
    return text;
}

std::vector<std::wstring> AddressWindowTest::Names() const
{
    std::vector<std::wstring> names;
    for (int row = 0; row < ListView_GetItemCount(List()); ++row)
        names.push_back(NameIn(row));
    return names;
}

std::vector<std::wstring> AddressWindowTest::Selected() const
{
    std::vector<std::wstring> names;
    for (int row = -1; (row = ListView_GetNextItem(List(), row, LVNI_SELECTED)) >= 0;)
        names.push_back(NameIn(row));
    return names;
}

std::wstring AddressWindowTest::Current() const
{
    return NameIn(ListView_GetNextItem(List(), -1, LVNI_FOCUSED | LVNI_SELECTED));
}

void AddressWindowTest::Select(int row, bool selected)
{
    ListView_SetItemState(List(), row, selected ? LVIS_SELECTED : 0u, LVIS_SELECTED);
}

void AddressWindowTest::Command(int id)
{
    SendMessageW(m_window->Handle(), WM_COMMAND, static_cast<WPARAM>(id), 0);
}

void AddressWindowTest::PressInList(WPARAM key)
{
    SendMessageW(List(), WM_KEYDOWN, key, 0);
}

void AddressWindowTest::TellOfAChange(WPARAM code)
{
    PostMessageW(m_window->Handle(), kMsgDatabaseChange, code, 0);
    PumpMessages();
}

} // namespace addrbook
