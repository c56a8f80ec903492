// How a program passes the time while another program's lock keeps a write waiting.
#pragma once

#include <windows.h>

// Returns after about so many milliseconds, some 25 at the most. It may let windows paint: reads of the store
// are done meanwhile, writes answer 0 at once (Locked), and a walk on which a write waits goes on from where
// it stood.
using StoreWaiter = void (*)(DWORD milliseconds);

// For all stores of the process; null, as at the beginning: it sleeps.
void SetStoreWaiter(StoreWaiter waiter);

namespace mervane {

void WaitForStore(DWORD milliseconds);
// Inside WaitForStore.
[[nodiscard]] bool IsWaitingForStore();

} // namespace mervane
