#include "app/quiet_notice.h"

#include "ui/dialog_in_front.h"
#include "ui/gathered.h"

namespace {

constexpr unsigned kPeriod = 250; // milliseconds

} // namespace

void QuietNotice::Tell(HWND window)
{
    m_window = window;
    SetTimer(window, reinterpret_cast<UINT_PTR>(this), kPeriod, OnTimer);
}

void QuietNotice::Stop()
{
    if (m_window)
        KillTimer(m_window, reinterpret_cast<UINT_PTR>(this));
    m_window = nullptr;
}

void CALLBACK QuietNotice::OnTimer(HWND, UINT, UINT_PTR self, DWORD)
{
    reinterpret_cast<QuietNotice*>(self)->MaybeTell();
}

// Else the timer comes again.
void QuietNotice::MaybeTell()
{
    if (IsInputWaiting() || !IsWindowEnabled(m_window) || IsIconic(m_window) || IsInSystemLoop())
        return;
    HWND window = m_window;
    Stop();
    if (const std::wstring text = m_text(); !text.empty())
        MessageBoxW(window, text.c_str(), L"Journal", MB_OK | MB_ICONEXCLAMATION);
}
