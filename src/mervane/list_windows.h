// What the library's list views have in common.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <functional>
#include <string_view>

namespace mervane {

// A visible child list view with a sunken edge and the dialog's font; null on failure.
HWND CreateChildList(HINSTANCE instance, HWND parent, const RECT& rectangle, int id, DWORD style);

// The list paints nothing while this lives, and as a whole at the end.
class ListRedrawPause {
  public:
    explicit ListRedrawPause(HWND list);
    ~ListRedrawPause();
    ListRedrawPause(const ListRedrawPause&) = delete;
    ListRedrawPause& operator=(const ListRedrawPause&) = delete;

  private:
    HWND m_list;
};

// Copies a text to where LVN_GETDISPINFO wants it, cut to the room there.
void AnswerText(LVITEMW& item, std::wstring_view text);

// The row that LVN_ODFINDITEM looks for among so many: the first from its start on whose name begins with the
// text, or is it, without regard to case; goes on at the top when it asks for that. -1 for none, and for a
// search by anything but a text. A start outside the rows is the top.
int FindRow(const NMLVFINDITEMW& wanted, int count, const std::function<std::wstring_view(int row)>& nameOf);

} // namespace mervane
