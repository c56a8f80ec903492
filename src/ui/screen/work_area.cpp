#include "ui/screen/work_area.h"

#include <algorithm>

#include "ui/screen/scale.h"

RECT WorkArea()
{
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    return area;
}

RECT WorkAreaAt(HWND window)
{
    MONITORINFO info{};
    info.cbSize = sizeof info;
    const bool isTold = window && GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &info);
    return isTold && !(info.dwFlags & MONITORINFOF_PRIMARY) ? info.rcWork : WorkArea();
}

RECT MiddlePlace(int width, int height)
{
    const RECT area = WorkArea();
    const LONG roomX = area.right - area.left, roomY = area.bottom - area.top;
    const LONG ownX = std::min<LONG>(Scale(width), roomX), ownY = std::min<LONG>(Scale(height), roomY);
    const LONG left = area.left + (roomX - ownX) / 2, top = area.top + (roomY - ownY) / 2;
    return {left, top, left + ownX, top + ownY};
}
