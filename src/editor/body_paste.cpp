#include "editor/body_paste.h"

#include <commctrl.h>

#include <cwchar>
#include <optional>
#include <string>

#include "data/line_ends.h"

namespace {

constexpr UINT_PTR kSubclass = 4;

// The clipboard's text; nothing when there is none or it cannot be read.
std::optional<std::wstring> ClipboardText(HWND window)
{
    if (!OpenClipboard(window))
        return std::nullopt;
    std::optional<std::wstring> text;
    HGLOBAL data = GetClipboardData(CF_UNICODETEXT);
    if (const auto* start = data ? static_cast<const wchar_t*>(GlobalLock(data)) : nullptr) {
        text.emplace(start, wcsnlen(start, GlobalSize(data) / sizeof *start));
        GlobalUnlock(data);
    }
    CloseClipboard();
    return text;
}

// False when the control's own paste does as well.
bool Paste(HWND body)
{
    const std::optional<std::wstring> text = ClipboardText(body);
    if (!text || !HasLoneLineEnd(*text))
        return false;
    SendMessageW(body, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(WithLineEnds(*text).c_str()));
    return true;
}

LRESULT CALLBACK Procedure(HWND body, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR)
{
    if (message == WM_PASTE && Paste(body))
        return 0;
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(body, Procedure, kSubclass);
    return DefSubclassProc(body, message, wParam, lParam);
}

} // namespace

void AddBodyPaste(HWND body)
{
    SetWindowSubclass(body, Procedure, kSubclass, 0);
}
