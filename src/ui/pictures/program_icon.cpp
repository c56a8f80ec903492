#include "ui/pictures/program_icon.h"

#include "res/resource.h"
#include "ui/screen/scale.h"

// Not a shared icon: of those the system may hand out another size.
UniqueIcon SetProgramIcon(HWND window, WPARAM which)
{
    const int size = Scale(window, which == ICON_SMALL ? 16 : 32);
    UniqueIcon icon(static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_JOURNAL),
                                                  IMAGE_ICON, size, size, LR_DEFAULTCOLOR)));
    SendMessageW(window, WM_SETICON, which, reinterpret_cast<LPARAM>(icon.get()));
    return icon;
}
