// A picture of the screen or of a window, for a person to look at.
#pragma once

#include <windows.h>

#include <string>

// Writes what the window covers of the screen, or the whole screen for null, as a 24-bit BMP file.
[[nodiscard]] bool SaveScreenshot(HWND window, const std::wstring& path);
