// Waiting for what another process does.
#pragma once

#include <windows.h>

#include <functional>

// Milliseconds. Generous, for a loaded machine: a condition that comes true ends the wait at once.
constexpr DWORD kRemoteLimit = 20'000;

// Polls until the condition holds; false when the limit passes first.
bool WaitFor(const std::function<bool()>& condition, DWORD limit = kRemoteLimit);

// Polls until find returns something; null when the limit passes first.
HWND WaitForWindow(const std::function<HWND()>& find, DWORD limit = kRemoteLimit);
