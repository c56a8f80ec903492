#include "ui/screen/message_font.h"

#include "ui/screen/scale.h"
#include "ui/screen/scoped.h"

namespace {

bool ReadMetrics(HWND window, NONCLIENTMETRICSW* metrics)
{
    metrics->cbSize = sizeof *metrics;
    return mervane::ParametersFor(DpiOf(window), SPI_GETNONCLIENTMETRICS, sizeof *metrics, metrics);
}

} // namespace

UniqueFont MakeMessageFont(HWND window)
{
    NONCLIENTMETRICSW metrics{};
    ReadMetrics(window, &metrics);
    return UniqueFont(CreateFontIndirectW(&metrics.lfMessageFont));
}

UniqueFont MakeMenuFont(HWND window)
{
    NONCLIENTMETRICSW metrics{};
    return UniqueFont(ReadMetrics(window, &metrics) ? CreateFontIndirectW(&metrics.lfMenuFont) : nullptr);
}

UniqueFont MakeTipFont(HWND window)
{
    NONCLIENTMETRICSW metrics{};
    return UniqueFont(ReadMetrics(window, &metrics) ? CreateFontIndirectW(&metrics.lfStatusFont) : nullptr);
}

UniqueFont MakeControlFont(HWND window)
{
    LOGFONTW font{};
    const bool isRead = mervane::ParametersFor(DpiOf(window), SPI_GETICONTITLELOGFONT, sizeof font, &font);
    return UniqueFont(isRead ? CreateFontIndirectW(&font) : nullptr);
}

UniqueFont FitControlFont(HWND control)
{
    if (DpiOf(control) == SystemDpi())
        return nullptr;
    UniqueFont font = MakeControlFont(control);
    if (font)
        SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), FALSE);
    return font;
}

int TextHeight(HWND window, HFONT font)
{
    HDC dc = GetDC(window);
    TEXTMETRICW metrics{};
    {
        const ScopedSelectObject selected(dc, font);
        GetTextMetricsW(dc, &metrics);
    }
    ReleaseDC(window, dc);
    return static_cast<int>(metrics.tmHeight);
}
