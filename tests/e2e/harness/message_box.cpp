#include "e2e/harness/message_box.h"

#include "e2e/harness/process_state.h"
#include "e2e/harness/remote_window.h"

namespace {

constexpr int kTextId = 0xFFFF;
constexpr int kIconId = 20;
constexpr int kWineIconId = 1088;

BOOL CALLBACK FindBox(HWND window, LPARAM lParam)
{
    auto* search = reinterpret_cast<std::pair<DWORD, HWND>*>(lParam);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != search->first || !IsWindowVisible(window) || !IsMessageBox(window))
        return TRUE;
    search->second = window;
    return FALSE;
}

HWND BoxOf(DWORD process)
{
    std::pair<DWORD, HWND> search{process, nullptr};
    EnumWindows(FindBox, reinterpret_cast<LPARAM>(&search));
    return search.second;
}

} // namespace

// A message box is a dialog that has nothing but one text, an icon and the buttons for its answers.
bool IsMessageBox(HWND window)
{
    wchar_t name[16];
    if (!GetClassNameW(window, name, 16) || wcscmp(name, L"#32770") != 0)
        return false;
    int texts = 0;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const int id = GetDlgCtrlID(child);
        texts += id == kTextId;
        if (id != kTextId && id != kIconId && id != kWineIconId && (id < IDOK || id > IDCONTINUE))
            return false;
    }
    return texts == 1;
}

RemoteMessageBox WaitForMessageBox(DWORD process, DWORD limit)
{
    HWND box = WaitForWindow([&] { return BoxOf(process); }, limit);
    if (!box)
        PrintStateOf(process);
    return RemoteMessageBox(box);
}

bool HasMessageBox(DWORD process)
{
    return BoxOf(process) != nullptr;
}

std::wstring RemoteMessageBox::Text() const
{
    return TextOf(GetDlgItem(m_window, kTextId));
}

std::wstring RemoteMessageBox::Caption() const
{
    return TextOf(m_window);
}

bool RemoteMessageBox::Offers(int answer) const
{
    HWND button = GetDlgItem(m_window, answer);
    return button && IsWindowVisible(button);
}

bool RemoteMessageBox::IsDefault(int answer) const
{
    return (Send(GetDlgItem(m_window, answer), WM_GETDLGCODE) & DLGC_DEFPUSHBUTTON) != 0;
}

bool RemoteMessageBox::Answer(int answer) const
{
    if (!m_window || !Offers(answer))
        return false;
    // As a click tells it; BM_CLICK itself may fail while the box is not the active window.
    PostMessageW(m_window, WM_COMMAND, MAKEWPARAM(answer, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(m_window, answer)));
    return WaitUntilGone(m_window);
}
