#include "editor/editor_rescue.h"

#include <algorithm>

EditorRescue::~EditorRescue()
{
    if (m_isLeft)
        (void)m_file.Remove();
}

void EditorRescue::Ask(HWND window)
{
    if (m_isLeft)
        m_isLeft = !m_file.Remove();
    if (m_isAsked || !window)
        return;
    const ULONGLONG next = m_written ? m_written + kPause : 0;
    const ULONGLONG now = GetTickCount64();
    const UINT rest = next > now ? static_cast<UINT>(next - now) : 0;
    m_isAsked = SetTimer(window, kTimer, std::max(kDelay, rest), nullptr) != 0;
}

bool EditorRescue::OnTimer(HWND window, UINT_PTR id)
{
    if (id != kTimer)
        return false;
    // One may have been under way when it was called off.
    if (m_isAsked)
        WriteNow(window);
    return true;
}

void EditorRescue::WriteNow(HWND window)
{
    Cancel(window);
    m_written = GetTickCount64();
    const std::optional<RescueState> state = m_state();
    const bool isWritten = state && m_file.Write(*state);
    m_isLeft = m_isLeft && !isWritten;
    if (!isWritten)
        Ask(window);
}

void EditorRescue::CatchUp(HWND window)
{
    if (m_file.HasFile())
        WriteNow(window);
}

void EditorRescue::Discard(HWND window)
{
    Cancel(window);
    m_isLeft = !m_file.Remove();
}

void EditorRescue::Cancel(HWND window)
{
    KillTimer(window, kTimer);
    m_isAsked = false;
}
