#include "ui/bars/command_bands.h"

#include "ui/bars/bands.h"

HWND CommandBands_Create(HINSTANCE instance, HWND parent, UINT id, DWORD style, HIMAGELIST images)
{
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES | ICC_COOL_CLASSES};
    if (!InitCommonControlsEx(&classes))
        return nullptr;
    return Bands::Create(instance, parent, id, style, images);
}

bool CommandBands_AddBands(HWND window, HINSTANCE instance, UINT count, const REBARBANDINFOW* info)
{
    Bands* bands = Bands::Of(window);
    if (!bands)
        return false;
    for (UINT i = 0; i < count; ++i)
        if (!bands->Add(instance, info[i]))
            return false;
    bands->FitToParent();
    return true;
}

HWND CommandBands_GetCommandBar(HWND window, UINT band)
{
    const Bands* bands = Bands::Of(window);
    const CommandBar* bar = bands ? bands->BarOf(static_cast<int>(band)) : nullptr;
    return bar ? bar->Window() : nullptr;
}

bool CommandBands_AddAdornments(HWND window, HINSTANCE instance, DWORD flags)
{
    Bands* bands = Bands::Of(window);
    return bands && bands->AddAdornments(instance, flags);
}

bool CommandBands_GetRestoreInformation(HWND window, UINT band, COMMANDBANDSRESTOREINFO* info)
{
    const Bands* bands = Bands::Of(window);
    return bands && bands->GetRestoreInformation(static_cast<int>(band), info);
}

int CommandBands_Height(HWND window)
{
    RECT rect{};
    GetWindowRect(window, &rect);
    return static_cast<int>(rect.bottom - rect.top);
}

void CommandBands_Resize(HWND window)
{
    if (Bands* bands = Bands::Of(window))
        bands->FitToParent();
}

bool CommandBar_InsertMenubar(HWND window, HINSTANCE instance, int menuId)
{
    CommandBar* bar = CommandBar::Of(window);
    return bar && bar->InsertMenubar(instance, menuId);
}

HMENU CommandBar_GetMenu(HWND window)
{
    const CommandBar* bar = CommandBar::Of(window);
    return bar && bar->Menu() ? bar->Menu()->Handle() : nullptr;
}

int CommandBar_AddBitmap(HWND window, HINSTANCE instance, int bitmapId, int imageCount)
{
    CommandBar* bar = CommandBar::Of(window);
    return bar ? bar->AddBitmap(instance, bitmapId, imageCount) : -1;
}

bool CommandBands_TranslateMenuKey(HWND window, const MSG& message)
{
    const CommandBar* bar = CommandBar::Of(window);
    return bar && bar->Menu() && bar->Menu()->TranslateKey(message);
}
