#include "editor/body_text.h"

#include "data/journal_entry.h"
#include "ui/control_text.h"

namespace {

constexpr int kTimeSize = 20;

void SelectAll(HWND edit)
{
    SendMessageW(edit, EM_SETSEL, 0, -1);
}
// Leaves the caret where it is.
void CancelSelection(HWND edit)
{
    SendMessageW(edit, EM_SETSEL, static_cast<WPARAM>(-1), 0);
}

} // namespace

std::wstring TextOf(HWND control)
{
    return ReadText(control).value_or(L"");
}

bool HasBodyPlaceholder(HWND body)
{
    // Spares reading a long text at every change of focus.
    return GetWindowTextLengthW(body) == static_cast<int>(wcslen(kBodyPlaceholder)) &&
           IsPlaceholder(TextOf(body), kBodyPlaceholder);
}

void SelectBodyPlaceholder(HWND body)
{
    if (HasBodyPlaceholder(body))
        SelectAll(body);
}

void RestoreBodyPlaceholder(HWND body)
{
    if (GetWindowTextLengthW(body) == 0)
        SetWindowTextW(body, kBodyPlaceholder);
}

std::wstring TimeStampText(const SYSTEMTIME& time, bool replacesPlaceholder)
{
    wchar_t text[kTimeSize] = L"";
    GetTimeFormatW(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &time, nullptr, text, kTimeSize);
    return std::wstring(replacesPlaceholder ? L"" : L"\r\n\r\n") + text + L" - ";
}

void InsertTimeStamp(HWND body, const SYSTEMTIME& time)
{
    const bool replaces = HasBodyPlaceholder(body);
    if (replaces)
        SelectAll(body);
    else
        CancelSelection(body);
    SendMessageW(body, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(TimeStampText(time, replaces).c_str()));
    CancelSelection(body);
    SendMessageW(body, EM_SCROLLCARET, 0, 0);
    SetFocus(body);
}
