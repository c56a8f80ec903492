#include "mervane/change_hub.h"

#include <algorithm>

#include "mervane/property_map.h"

namespace mervane {

namespace {

constexpr const wchar_t* kPeerClass = L"MervaneStore";
constexpr WPARAM kNamesUntouched = 0x10000;

UINT PeerMessage()
{
    static const UINT s_message = RegisterWindowMessageW(L"MervaneStoreChange");
    return s_message;
}

bool IsChangeCode(WPARAM code)
{
    constexpr WPARAM kCodes[] = {kChangeWorkBegins, kChangeCreated, kChangeModified, kChangeDeleted,
                                 kChangeWorkEnded};
    return std::find(std::begin(kCodes), std::end(kCodes), code) != std::end(kCodes);
}

WPARAM Pack(TableId table, const Change& change)
{
    return change.code | IndexOf(table) << 8 | (change.touchesNames ? 0 : kNamesUntouched);
}

} // namespace

ChangeHub::ChangeHub(const std::wstring& pathKey) : m_pathKey(pathKey)
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = kPeerClass;
    RegisterClassW(&windowClass);
    m_window = CreateWindowExW(0, kPeerClass, m_pathKey.c_str(), 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                               windowClass.hInstance, this);
}

ChangeHub::~ChangeHub()
{
    if (m_window)
        DestroyWindow(m_window);
}

void ChangeHub::AddOwner(TableId table, HWND owner, const void* who)
{
    if (owner)
        m_owners.push_back({table, owner, who});
}

void ChangeHub::RemoveOwner(const void* who)
{
    std::erase_if(m_owners, [who](const Owner& owner) { return owner.who == who; });
}

void ChangeHub::Announce(TableId table, const Change& change) const
{
    HWND peer = nullptr;
    while ((peer = FindWindowExW(HWND_MESSAGE, peer, kPeerClass, m_pathKey.c_str())) != nullptr)
        if (peer != m_window)
            PostMessageW(peer, PeerMessage(), Pack(table, change), static_cast<LPARAM>(change.id));
}

LRESULT CALLBACK ChangeHub::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE)
        SetWindowLongPtrW(
            window, GWLP_USERDATA,
            reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams));
    const auto* self = reinterpret_cast<const ChangeHub*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self && message == PeerMessage()) {
        self->OnPeerChange(wParam, static_cast<CEOID>(lParam));
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void ChangeHub::OnPeerChange(WPARAM packed, CEOID id) const
{
    const Change change{packed & 0xFF, id, (packed & kNamesUntouched) == 0};
    const size_t table = packed >> 8 & 0xFF;
    if (!IsChangeCode(change.code) || table >= kTableCount)
        return;
    for (const Owner& owner : m_owners)
        TellOwner(owner, static_cast<TableId>(table), change);
}

// The journal's owner shows the names of categories and contacts: to it a change of theirs is the end of some
// work, after which it shows everything afresh.
void ChangeHub::TellOwner(const Owner& owner, TableId table, const Change& change) const
{
    if (owner.table == table)
        PostMessageW(owner.window, kMsgDatabaseChange, change.code, static_cast<LPARAM>(change.id));
    else if (owner.table == TableId::Journal && change.touchesNames && change.code != kChangeWorkBegins)
        PostMessageW(owner.window, kMsgDatabaseChange, kChangeWorkEnded, 0);
}

} // namespace mervane
