#include "ui/control_text.h"

// The length alone says nothing of a failure: 0 may also be the length of an empty text, and the thread's
// last error may come from something else that the control has done.
std::optional<std::wstring> ReadText(HWND control)
{
    const int length = IsWindow(control) ? GetWindowTextLengthW(control) : -1;
    if (length < 0)
        return std::nullopt;
    std::wstring text(static_cast<size_t>(length) + 1, L'\0');
    const int read = GetWindowTextW(control, text.data(), length + 1);
    if (read < length)
        return std::nullopt;
    text.resize(static_cast<size_t>(read));
    return text;
}
