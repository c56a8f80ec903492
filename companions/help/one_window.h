// One window for all requests: a program that is started while a window is open hands its request over to it.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "util/owners.h"

namespace help {

constexpr const wchar_t* kHelpWindowClass = L"JournalHelp";

// While it lives, no other program of ours looks for the window or makes one.
class StartTurn {
  public:
    StartTurn();
    ~StartTurn();
    StartTurn(const StartTurn&) = delete;
    StartTurn& operator=(const StartTurn&) = delete;

  private:
    UniqueKernelHandle m_mutex;
    bool m_isOurs = false;
};

// Hands the request over to the window that is open, which then comes to the foreground; false when there is
// none that takes it.
bool HandOver(const std::wstring& request);

// The request that a WM_COPYDATA carries; nothing when the message is none of ours or malformed.
std::optional<std::wstring> HandedOver(const COPYDATASTRUCT* data);

} // namespace help
