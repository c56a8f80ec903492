#include "mervane/change_hub.h"

#include <algorithm>

#include "mervane/property_map.h"

namespace mervane {

namespace {

constexpr const wchar_t* kPeerClass = L"MervaneStore";
constexpr UINT_PTR kTimer = 1;
constexpr UINT kTimerPeriod = 500; // milliseconds

// What a peer's message packs into wParam: the code, the table, and this bit.
constexpr WPARAM kNamesUntouched = 0x10000;
constexpr int kTableShift = 8;
constexpr WPARAM kByte = 0xFF;

UINT PeerMessage()
{
    static const UINT s_message = RegisterWindowMessageW(L"MervaneStoreChange");
    return s_message;
}

bool IsWorkCode(WPARAM code)
{
    return code == kChangeWorkBegins || code == kChangeWorkEnded;
}

bool IsChangeCode(WPARAM code)
{
    return IsWorkCode(code) || code == kChangeCreated || code == kChangeModified || code == kChangeDeleted;
}

WPARAM Pack(TableId table, const Change& change)
{
    return change.code | IndexOf(table) << kTableShift | (change.touchesNames ? 0 : kNamesUntouched);
}

// Bulk work concerns all databases. The journal's owner shows the names of categories and contacts: to it a
// change of theirs is the end of some work, after which it shows everything afresh.
void Tell(TableId ownersTable, HWND owner, TableId table, const Change& change)
{
    if (ownersTable == table || (change.touchesNames && IsWorkCode(change.code)))
        PostMessageW(owner, kMsgDatabaseChange, change.code, static_cast<LPARAM>(change.id));
    else if (ownersTable == TableId::Journal && change.touchesNames)
        PostMessageW(owner, kMsgDatabaseChange, kChangeWorkEnded, 0);
}

} // namespace

ChangeHub::ChangeHub(const std::wstring& pathKey, std::function<void()> look)
    : m_pathKey(pathKey), m_look(std::move(look))
{}

ChangeHub::~ChangeHub()
{
    if (m_window)
        DestroyWindow(m_window);
}

void ChangeHub::Start()
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = kPeerClass;
    RegisterClassW(&windowClass);
    m_window = CreateWindowExW(0, kPeerClass, m_pathKey.c_str(), 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                               windowClass.hInstance, this);
}

void ChangeHub::AddOwner(TableId table, HWND owner, const void* who)
{
    if (!owner)
        return;
    if (m_owners.empty())
        SetTimer(m_window, kTimer, kTimerPeriod, nullptr);
    m_owners.push_back({table, owner, who});
}

void ChangeHub::RemoveOwner(const void* who)
{
    if (std::erase_if(m_owners, [who](const Owner& owner) { return owner.who == who; }) && m_owners.empty())
        KillTimer(m_window, kTimer);
}

void ChangeHub::Announce(TableId table, const Change& change) const
{
    HWND peer = nullptr;
    while ((peer = FindWindowExW(HWND_MESSAGE, peer, kPeerClass, m_pathKey.c_str())) != nullptr)
        if (peer != m_window)
            PostMessageW(peer, PeerMessage(), Pack(table, change), static_cast<LPARAM>(change.id));
}

void ChangeHub::NoteForeignChange()
{
    m_unexplained = Unexplained::New;
}

LRESULT CALLBACK ChangeHub::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE)
        SetWindowLongPtrW(
            window, GWLP_USERDATA,
            reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams));
    auto* self = reinterpret_cast<ChangeHub*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self && message == PeerMessage())
        self->OnPeerChange(wParam, static_cast<CEOID>(lParam));
    else if (self && message == WM_TIMER && wParam == kTimer)
        self->OnTimer();
    else
        return DefWindowProcW(window, message, wParam, lParam);
    return 0;
}

void ChangeHub::OnPeerChange(WPARAM packed, CEOID id)
{
    const Change change{packed & kByte, id, (packed & kNamesUntouched) == 0};
    const size_t table = packed >> kTableShift & kByte;
    if (!IsChangeCode(change.code) || table >= kTableCount)
        return;
    // The change that this message tells of is no longer unexplained, also when it is noticed only here.
    m_look();
    m_unexplained = Unexplained::None;
    for (const Owner& owner : m_owners)
        Tell(owner.table, owner.window, static_cast<TableId>(table), change);
}

// A change is given one period in which its writer may tell of it.
void ChangeHub::OnTimer()
{
    if (m_unexplained == Unexplained::None)
        m_look();
    if (m_unexplained == Unexplained::Old)
        for (const Owner& owner : m_owners)
            PostMessageW(owner.window, kMsgDatabaseChange, kChangeWorkEnded, 0);
    m_unexplained = m_unexplained == Unexplained::New ? Unexplained::Old : Unexplained::None;
}

} // namespace mervane
