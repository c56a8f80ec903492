#include "mervane/changes/change_hub.h"

#include <algorithm>

namespace mervane {

namespace {

constexpr const wchar_t* kPeerClass = L"MervaneStore";
constexpr UINT_PTR kTimer = 1;
constexpr UINT kTimerPeriod = 250;        // milliseconds
constexpr UINT kMsgAllMayBeNew = WM_USER; // to the own window
constexpr std::ptrdiff_t kMostTold = 100; // changes one by one; more are told as "all may be new"

UINT PeerMessage()
{
    static const UINT s_message = RegisterWindowMessageW(L"MervaneStoreChange");
    return s_message;
}

// Bulk work concerns all databases. The journal's owner shows the names of categories and contacts: to it a
// change of theirs is the end of some work, after which it shows everything afresh. So are use counts to the
// categories' owner, where they were changed with something else.
void Tell(TableId ownersTable, HWND owner, const TableChange& what)
{
    const auto& [table, change] = what;
    if (ownersTable == table || (change.touchesNames && IsWorkCode(change.code)))
        PostMessageW(owner, kMsgDatabaseChange, change.code, static_cast<LPARAM>(change.id));
    else if (ownersTable == TableId::Journal && change.touchesNames)
        PostMessageW(owner, kMsgDatabaseChange, kChangeWorkEnded, 0);
    if (ownersTable == TableId::Categories && change.alsoUses)
        PostMessageW(owner, kMsgDatabaseChange, kChangeWorkEnded, 0);
}

} // namespace

bool ChangeHub::TakeFrom(std::vector<Heard>& list, const TableChange& what)
{
    const auto found =
        std::find_if(list.begin(), list.end(), [&](const Heard& heard) { return heard.what == what; });
    if (found == list.end())
        return false;
    list.erase(found);
    return true;
}

bool ChangeHub::IsNew(const Heard& heard)
{
    return !heard.isOld;
}

// The old ones go, the new ones become old.
void ChangeHub::Age(std::vector<Heard>& list)
{
    list.erase(list.begin(), std::find_if(list.begin(), list.end(), IsNew));
    for (Heard& heard : list)
        heard.isOld = true;
}

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
            PostMessageW(peer, PeerMessage(), PackChange({table, change}), static_cast<LPARAM>(change.id));
}

void ChangeHub::NoteForeignChange()
{
    m_untold.clear();
    m_told.clear();
    if (!m_allMayBeNew && !m_owners.empty())
        m_allMayBeNew = PostMessageW(m_window, kMsgAllMayBeNew, 0, 0) != 0;
}

// Of however many changes that were noticed since messages were last handled.
void ChangeHub::OnAllMayBeNew()
{
    m_allMayBeNew = false;
    for (const Owner& owner : m_owners)
        PostMessageW(owner.window, kMsgDatabaseChange, kChangeWorkEnded, 0);
}

void ChangeHub::NoteForeignChange(const TableChange& what)
{
    if (!m_owners.empty() && !TakeFrom(m_told, what))
        m_untold.push_back({what, false});
}

void ChangeHub::TellOwners(const TableChange& what) const
{
    for (const Owner& owner : m_owners)
        Tell(owner.table, owner.window, what);
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
    else if (self && message == kMsgAllMayBeNew)
        self->OnAllMayBeNew();
    else
        return DefWindowProcW(window, message, wParam, lParam);
    return 0;
}

// Costs little, and no read of the store: there may be hundreds, and all of them come before a key.
void ChangeHub::OnPeerChange(WPARAM packed, CEOID id)
{
    const auto what = UnpackChange(packed, id);
    if (!what)
        return;
    if (!TakeFrom(m_untold, *what))
        m_told.push_back({*what, false});
    TellOwners(*what);
    // A timer's message comes when no other waits.
    if (GetTickCount64() >= m_nextLook + kTimerPeriod)
        OnTimer();
}

// A message is on its way for one period; a writer that has ended in between has sent none.
void ChangeHub::OnTimer()
{
    m_nextLook = GetTickCount64() + kTimerPeriod;
    m_look();
    const auto firstNew = std::find_if(m_untold.begin(), m_untold.end(), IsNew);
    if (firstNew - m_untold.begin() > kMostTold)
        return NoteForeignChange();
    for (auto untold = m_untold.begin(); untold != firstNew; ++untold)
        TellOwners(untold->what);
    Age(m_untold);
    Age(m_told);
}

} // namespace mervane
