#include "editor/body_paste.h"

#include <commctrl.h>

#include <cwchar>
#include <optional>
#include <string>

#include "data/line_ends.h"
#include "util/text_cut.h"

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

// How many characters may take the selection's place. What a program puts in some systems' controls do not
// limit.
size_t RoomIn(HWND body)
{
    DWORD start = 0, end = 0;
    SendMessageW(body, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    const auto limit = static_cast<size_t>(SendMessageW(body, EM_GETLIMITTEXT, 0, 0));
    const size_t kept = static_cast<size_t>(GetWindowTextLengthW(body)) - (end - start);
    return kept < limit ? limit - kept : 0;
}

// Leaves neither half a line end nor half a character. True when nothing had to be cut.
bool CutTo(size_t length, std::wstring* text)
{
    if (text->size() <= length)
        return true;
    text->resize(CutText(*text, length).size());
    if (!text->empty() && text->back() == L'\r')
        text->pop_back();
    return false;
}

// False when the control's own paste does as well.
bool Paste(HWND body)
{
    const std::optional<std::wstring> text = ClipboardText(body);
    if (!text || !HasLoneLineEnd(*text))
        return false;
    std::wstring whole = WithLineEnds(*text);
    const bool fits = CutTo(RoomIn(body), &whole);
    SendMessageW(body, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(whole.c_str()));
    if (!fits)
        SendMessageW(GetParent(body), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(body), EN_MAXTEXT),
                     reinterpret_cast<LPARAM>(body));
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
