#include "ui/paint_wait.h"

#include "ui/taken_message.h"
#include "util/wait_cursor.h"

namespace {

// A window that never becomes valid may not hold up the rest.
constexpr int kMostPaints = 50;

void PaintWhatIsDue()
{
    MSG message;
    for (int i = 0; i < kMostPaints && TakeMessage(nullptr, WM_PAINT, &message); ++i)
        DispatchMessageW(&message);
}

} // namespace

void PaintWhileWaiting(DWORD milliseconds)
{
    const WaitCursor cursor;
    const ULONGLONG end = GetTickCount64() + milliseconds;
    for (ULONGLONG now = GetTickCount64(); now < end; now = GetTickCount64()) {
        PaintWhatIsDue();
        MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now),
                                  QS_PAINT | QS_SENDMESSAGE);
    }
    PaintWhatIsDue();
}
