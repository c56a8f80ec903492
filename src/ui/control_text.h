// The whole text of a control.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

// Nothing where the control does not hand out what it has: that is no empty text.
std::optional<std::wstring> ReadText(HWND control);
