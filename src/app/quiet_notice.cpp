#include "app/quiet_notice.h"

#include "ui/dialog_in_front.h"

namespace {

constexpr unsigned kPeriod = 250; // milliseconds

} // namespace

void QuietNotice::Tell(HWND window)
{
    (void)m_timer.Start(window, kPeriod); // where the system refuses it nothing is told
}

// Else the timer comes again.
void QuietNotice::MaybeTell()
{
    HWND window = m_timer.Window();
    if (IsInputWaiting() || !IsWindowEnabled(window) || IsIconic(window) || IsInSystemLoop())
        return;
    Stop();
    if (const std::wstring text = m_text(); !text.empty())
        MessageBoxW(window, text.c_str(), L"Journal", MB_OK | MB_ICONEXCLAMATION);
}
