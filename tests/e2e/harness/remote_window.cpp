#include "e2e/harness/remote_window.h"

#include <algorithm>
#include <functional>

#include "e2e/harness/message_box.h"
#include "e2e/harness/process_state.h"
#include "util/owners.h"

namespace {

constexpr int kSteadyPolls = 3; // a window that had the keyboard so often keeps it

bool HasClass(HWND window, const wchar_t* windowClass)
{
    wchar_t name[64];
    return GetClassNameW(window, name, 64) && _wcsicmp(name, windowClass) == 0;
}

struct Search {
    std::function<bool(HWND)> matches;
    HWND found = nullptr;
};

BOOL CALLBACK SearchStep(HWND window, LPARAM lParam)
{
    auto* search = reinterpret_cast<Search*>(lParam);
    if (!search->matches(window))
        return TRUE;
    search->found = window;
    return FALSE;
}

HWND SearchTopWindows(DWORD process, const std::function<bool(HWND)>& matches)
{
    Search search{[&](HWND window) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        return owner == process && IsWindowVisible(window) && matches(window);
    }};
    EnumWindows(SearchStep, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND WaitForWindowOf(DWORD process, const std::function<bool(HWND)>& matches, DWORD limit)
{
    HWND window = WaitForWindow([&] { return SearchTopWindows(process, matches); }, limit);
    if (!window)
        PrintStateOf(process);
    return window;
}

HWND SearchChildren(HWND window, const std::function<bool(HWND)>& matches)
{
    Search search{matches};
    EnumChildWindows(window, SearchStep, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

bool IsPlainDialog(HWND window)
{
    return HasClass(window, L"#32770") && !IsMessageBox(window);
}

std::vector<std::wstring> Items(HWND list, UINT countMessage, UINT lengthMessage, UINT textMessage)
{
    std::vector<std::wstring> items;
    const LRESULT count = Send(list, countMessage);
    for (LRESULT i = 0; i < count; ++i) {
        const LRESULT length = Send(list, lengthMessage, static_cast<WPARAM>(i));
        std::wstring text(static_cast<size_t>(length > 0 ? length : 0) + 1, L'\0');
        const LRESULT got =
            SendMessageW(list, textMessage, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text.data()));
        text.resize(static_cast<size_t>(got > 0 ? got : 0));
        items.push_back(text);
    }
    return items;
}

void NotifyParent(HWND control, int code)
{
    Send(GetParent(control), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(control), code),
         reinterpret_cast<LPARAM>(control));
}

} // namespace

HWND FindTopWindow(DWORD process, const wchar_t* windowClass, const wchar_t* title)
{
    return SearchTopWindows(process, [&](HWND window) {
        return HasClass(window, windowClass) && (!title || TextOf(window) == title);
    });
}

std::vector<HWND> VisibleWindows(const wchar_t* windowClass)
{
    std::vector<HWND> windows;
    for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, windowClass, nullptr)) != nullptr;)
        if (IsWindowVisible(window))
            windows.push_back(window);
    return windows;
}

HWND WaitForDialog(DWORD process, const wchar_t* title, DWORD limit)
{
    const auto matches = [&](HWND window) { return IsPlainDialog(window) && TextOf(window) == title; };
    return WaitForWindowOf(process, matches, limit);
}

HWND WaitForDialogWith(DWORD process, int controlId, DWORD limit)
{
    const auto matches = [&](HWND window) { return IsPlainDialog(window) && Control(window, controlId); };
    return WaitForWindowOf(process, matches, limit);
}

bool WaitUntilGone(HWND window, DWORD limit)
{
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return WaitFor([&] { return !IsWindow(window); }, limit) && (!process || WaitForForegroundOf(process));
}

// A late event of the display can take the foreground away once more.
bool Activate(HWND window)
{
    int steady = 0;
    return WaitFor([&] {
        if (GetForegroundWindow() == window && FocusOf(window))
            return ++steady >= kSteadyPolls;
        steady = 0;
        SetForegroundWindow(window);
        return false;
    });
}

bool WaitForForegroundOf(DWORD process)
{
    const UniqueKernelHandle running(OpenProcess(SYNCHRONIZE, FALSE, process));
    int steady = 0;
    return WaitFor([&] {
        HWND window = GetForegroundWindow();
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        steady = owner == process && FocusOf(window) ? steady + 1 : 0;
        return steady >= kSteadyPolls || !running || WaitForSingleObject(running.get(), 0) == WAIT_OBJECT_0;
    });
}

HWND FocusOf(HWND window)
{
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info) ? info.hwndFocus : nullptr;
}

ULONGLONG LongestAnswer(HWND window, const std::function<bool()>& until)
{
    ULONGLONG longest = 0;
    (void)WaitFor([&] {
        const ULONGLONG asked = GetTickCount64();
        (void)Send(window, WM_NULL);
        longest = std::max(longest, GetTickCount64() - asked);
        return until();
    });
    return longest;
}

LRESULT Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT otherwise)
{
    DWORD_PTR result = 0;
    if (!SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, kRemoteLimit, &result))
        return otherwise;
    return static_cast<LRESULT>(result);
}

// A control's own children may have identifiers that the dialog uses too, so its direct children come first.
HWND Control(HWND window, int id)
{
    if (HWND child = GetDlgItem(window, id))
        return child;
    return SearchChildren(window, [&](HWND child) { return GetDlgCtrlID(child) == id; });
}

HWND ChildOfClass(HWND window, const wchar_t* windowClass)
{
    return SearchChildren(window, [&](HWND child) { return HasClass(child, windowClass); });
}

std::wstring TextOf(HWND window)
{
    std::wstring text(static_cast<size_t>(Send(window, WM_GETTEXTLENGTH)) + 1, L'\0');
    const LRESULT length = Send(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<size_t>(length));
    return text;
}

bool SetText(HWND edit, const std::wstring& text)
{
    if (!Send(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str())))
        return false;
    // A combo box is silent about a text that is set; an edit control tells by itself unless it has several
    // lines.
    if (HasClass(edit, L"ComboBox"))
        NotifyParent(edit, CBN_EDITCHANGE);
    else if (GetWindowLongW(edit, GWL_STYLE) & ES_MULTILINE)
        NotifyParent(edit, EN_CHANGE);
    return true;
}

void PostCommand(HWND window, int id)
{
    PostMessageW(window, WM_COMMAND, MAKEWPARAM(id, 0), 0);
}

void PressButton(HWND dialog, int id)
{
    PostMessageW(Control(dialog, id), BM_CLICK, 0, 0);
}

bool IsChecked(HWND dialog, int id)
{
    return Send(Control(dialog, id), BM_GETCHECK) == BST_CHECKED;
}

std::vector<std::wstring> ComboItems(HWND combo)
{
    return Items(combo, CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT);
}

std::vector<std::wstring> ListBoxItems(HWND listBox)
{
    return Items(listBox, LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT);
}

bool ChooseComboItem(HWND combo, int index)
{
    if (Send(combo, CB_SETCURSEL, static_cast<WPARAM>(index), 0, CB_ERR) == CB_ERR)
        return false;
    NotifyParent(combo, CBN_SELENDOK);
    NotifyParent(combo, CBN_SELCHANGE);
    return true;
}
