#include "ui/message_font.h"

#include "ui/scoped.h"

UniqueFont MakeMessageFont()
{
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    return UniqueFont(CreateFontIndirectW(&metrics.lfMessageFont));
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
