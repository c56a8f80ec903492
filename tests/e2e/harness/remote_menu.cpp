#include "e2e/harness/remote_menu.h"

#include "e2e/harness/input.h"
#include "e2e/harness/remote_window.h"

namespace {

constexpr int kTextSize = 256; // characters
constexpr const wchar_t* kPopupClass = L"#32768";
constexpr UINT kGetMenu = 0x1E1; // MN_GETHMENU

template <typename Handle> uint64_t Number(Handle handle)
{
    return reinterpret_cast<uint64_t>(handle);
}

// Whether the loop of a menu runs in the window's thread.
bool IsInMenu(HWND window)
{
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info) &&
           (info.flags & GUI_INMENUMODE) != 0;
}

} // namespace

RemoteMenu::RemoteMenu(HWND owner, HMENU menu) : m_owner(owner), m_process(ProcessOf(owner)), m_menu(menu) {}

std::vector<RemoteMenuItem> RemoteMenu::Items() const
{
    std::vector<RemoteMenuItem> items;
    const auto count =
        static_cast<int>(CallInProcess(m_process.get(), L"user32.dll", "GetMenuItemCount", {Number(m_menu)}));
    items.reserve(static_cast<size_t>(count));
    for (int position = 0; position < count; ++position)
        items.push_back(Item(position));
    return items;
}

RemoteMenuItem RemoteMenu::Item(int position) const
{
    RemoteBlock block(m_process.get(), sizeof(MENUITEMINFOW) + kTextSize * sizeof(wchar_t));
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_ID | MIIM_STATE | MIIM_STRING | MIIM_SUBMENU;
    info.dwTypeData = reinterpret_cast<wchar_t*>(static_cast<char*>(block.Address()) + sizeof info);
    info.cch = kTextSize;
    if (!block.Write(info) ||
        !CallInProcess(m_process.get(), L"user32.dll", "GetMenuItemInfoW",
                       {Number(m_menu), static_cast<uint64_t>(position), TRUE, Argument(block.Address())}))
        return {};
    info = block.Read<MENUITEMINFOW>();
    wchar_t text[kTextSize] = {};
    block.Read(text, sizeof text - sizeof(wchar_t), sizeof info);
    RemoteMenuItem item;
    item.separator = (info.fType & MFT_SEPARATOR) != 0;
    item.id = item.separator ? 0 : info.wID;
    item.text = text;
    item.enabled = (info.fState & MFS_DISABLED) == 0;
    item.checked = (info.fState & MFS_CHECKED) != 0;
    item.submenu = info.hSubMenu;
    return item;
}

RemoteMenuItem RemoteMenu::Find(UINT id) const
{
    for (const RemoteMenuItem& item : Items()) {
        if (item.id == id && !item.submenu)
            return item;
        if (item.submenu) {
            RemoteMenuItem deeper = RemoteMenu(m_owner, item.submenu).Find(id);
            if (deeper.id == id)
                return deeper;
        }
    }
    return {};
}

POINT RemoteMenu::ItemPoint(int position) const
{
    RemoteBlock block(m_process.get(), sizeof(RECT));
    if (!CallInProcess(m_process.get(), L"user32.dll", "GetMenuItemRect",
                       {0, Number(m_menu), static_cast<uint64_t>(position), Argument(block.Address())}))
        return {};
    const RECT rect = block.Read<RECT>();
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

RemoteMenu MenuBarOf(HWND window)
{
    const UniqueKernelHandle process = ProcessOf(window);
    return RemoteMenu(window, reinterpret_cast<HMENU>(
                                  CallInProcess(process.get(), L"user32.dll", "GetMenu", {Number(window)})));
}

// It is shown a moment before its loop runs, and until then forgets that it was told to end.
HWND WaitForPopup(DWORD process, DWORD limit)
{
    return WaitForWindow(
        [&]() -> HWND {
            HWND popup = FindTopWindow(process, kPopupClass);
            return popup && IsInMenu(popup) ? popup : nullptr;
        },
        limit);
}

RemoteMenu MenuOfPopup(HWND popup)
{
    return RemoteMenu(popup, reinterpret_cast<HMENU>(Send(popup, kGetMenu)));
}

bool ChooseFromPopup(HWND popup, UINT id)
{
    const RemoteMenu menu = MenuOfPopup(popup);
    const std::vector<RemoteMenuItem> items = menu.Items();
    for (size_t position = 0; position < items.size(); ++position)
        if (items[position].id == id && !items[position].submenu)
            return Click(menu.ItemPoint(static_cast<int>(position))) &&
                   WaitFor([&] { return !IsWindow(popup) || !IsWindowVisible(popup); });
    return false;
}

bool ClosePopups(DWORD process)
{
    return WaitFor([&] {
        if (!FindTopWindow(process, kPopupClass))
            return true;
        PressKey(VK_ESCAPE);
        return false;
    });
}
