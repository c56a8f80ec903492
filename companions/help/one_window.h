// One window for all requests: a program that is started while a window is open hands its request over to it.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace help {

constexpr const wchar_t* kHelpWindowClass = L"JournalHelp";

// The name of the turn in which a program looks for the window and, where there is none, makes it.
constexpr const wchar_t* kHelpTurn = L"Journal.Help";

// Hands the request over to the window that is open, which then comes to the foreground; false when there is
// none that takes it.
bool HandOver(const std::wstring& request);

// The request that a WM_COPYDATA carries; nothing when the message is none of ours or malformed.
std::optional<std::wstring> HandedOver(const COPYDATASTRUCT* data);

} // namespace help
