#include "util/window_metrics.h"

#include <unordered_map>

namespace mervane {

namespace {

constexpr int kGivenDpi = 96; // the system's own, of old

using GetDpiOfWindow = UINT(WINAPI*)(HWND);
using GetMetricForDpi = int(WINAPI*)(int, UINT);
using AdjustForDpi = BOOL(WINAPI*)(LPRECT, DWORD, BOOL, DWORD, UINT);
using GetParametersForDpi = BOOL(WINAPI*)(UINT, UINT, PVOID, UINT, UINT);

// Null where this system has none.
template <typename Function> Function Find(const char* name)
{
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), name)));
}

int ReadSystemDpi()
{
    HDC screen = GetDC(nullptr);
    if (!screen)
        return kGivenDpi;
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return dpi > 0 ? dpi : kGivenDpi;
}

// By top-level window. Never freed: a window may outlive what the program frees at its end.
std::unordered_map<HWND, int>& Told()
{
    static auto& s_told = *new std::unordered_map<HWND, int>;
    return s_told;
}

BOOL CALLBACK SendTo(HWND control, LPARAM message)
{
    const auto& told = *reinterpret_cast<const MSG*>(message);
    SendMessageW(control, told.message, told.wParam, told.lParam);
    return TRUE;
}

} // namespace

int SystemDpi()
{
    static const int s_dpi = ReadSystemDpi();
    return s_dpi;
}

int DpiOf(HWND window)
{
    static const auto s_get = Find<GetDpiOfWindow>("GetDpiForWindow");
    if (!window)
        return SystemDpi();
    if (!Told().empty())
        if (const auto told = Told().find(GetAncestor(window, GA_ROOT)); told != Told().end())
            return told->second;
    const int dpi = s_get ? static_cast<int>(s_get(window)) : 0;
    return dpi > 0 ? dpi : SystemDpi();
}

void NoteDpi(HWND window, WPARAM dpi)
{
    if (LOWORD(dpi) > 0)
        Told()[window] = LOWORD(dpi);
}

void ForgetDpi(HWND window)
{
    Told().erase(window);
}

int MetricOf(HWND window, int index)
{
    static const auto s_get = Find<GetMetricForDpi>("GetSystemMetricsForDpi");
    return s_get ? s_get(index, static_cast<UINT>(DpiOf(window))) : GetSystemMetrics(index);
}

SIZE FrameOf(HWND window)
{
    static const auto s_adjust = Find<AdjustForDpi>("AdjustWindowRectExForDpi");
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
    const auto exStyle = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE));
    RECT frame{};
    if (!s_adjust || !s_adjust(&frame, style, FALSE, exStyle, static_cast<UINT>(DpiOf(window))))
        AdjustWindowRectEx(&frame, style, FALSE, exStyle);
    return {frame.right - frame.left, frame.bottom - frame.top};
}

void PassToControls(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != WM_SYSCOLORCHANGE && message != WM_SETTINGCHANGE)
        return;
    MSG told{};
    told.message = message;
    told.wParam = wParam;
    told.lParam = lParam;
    EnumChildWindows(window, SendTo, reinterpret_cast<LPARAM>(&told));
}

bool ParametersFor(int dpi, UINT action, UINT size, void* parameters)
{
    static const auto s_get = Find<GetParametersForDpi>("SystemParametersInfoForDpi");
    if (s_get && s_get(action, size, parameters, 0, static_cast<UINT>(dpi)))
        return true;
    return SystemParametersInfoW(action, size, parameters, 0) != FALSE;
}

} // namespace mervane
