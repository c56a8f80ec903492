// How a program passes the time while another program's lock keeps a write waiting.
#pragma once

#include <windows.h>

// Returns after about so many milliseconds, some 25 at the most. It may let windows paint: reads are answered
// meanwhile, writes answer 0 at once (Locked), and a walk goes on from where it stood.
using StoreWaiter = void (*)(DWORD milliseconds);

// For all stores of the process; null, as at the beginning: it sleeps.
void SetStoreWaiter(StoreWaiter waiter);

namespace mervane {

void WaitForStore(DWORD milliseconds);
// Inside WaitForStore: what waits is in the midst of something.
[[nodiscard]] bool IsWaitingForStore();

// For a window's procedure, before anything else: true for a message that was sent during such a wait and
// asks for something to be done (a close, a command, a system command). It comes again once the wait is over
// and messages are looked at, as if it had been posted.
[[nodiscard]] bool PutOffWhileWaiting(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

} // namespace mervane
