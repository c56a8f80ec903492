#include "ui/pictures/glyphs.h"

#include "ui/pictures/canvas.h"
#include "ui/screen/scoped.h"
#include "util/owners.h"

namespace {

// Drawn larger and averaged, so that slanted lines have soft edges.
constexpr int kFiner = 4;

void DrawQuestionMark(HDC dc, RECT box)
{
    LOGFONTW description{};
    description.lfHeight = -(box.bottom - box.top);
    description.lfWeight = FW_BOLD;
    description.lfQuality = ANTIALIASED_QUALITY;
    lstrcpynW(description.lfFaceName, L"Tahoma", LF_FACESIZE);
    const UniqueFont font(CreateFontIndirectW(&description));
    const ScopedSelectObject selected(dc, font.get());
    DrawTextW(dc, L"?", 1, &box, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP);
}

void DrawCross(HDC dc, const RECT& box)
{
    const int size = static_cast<int>(box.bottom - box.top);
    const LOGBRUSH brush{BS_SOLID, RGB(0, 0, 0), 0};
    const UniqueHandle<HPEN, DeleteObject> pen(ExtCreatePen(
        PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_FLAT, static_cast<DWORD>(size / 7), &brush, 0, nullptr));
    const ScopedSelectObject selected(dc, pen.get());
    const int margin = size / 5;
    MoveToEx(dc, box.left + margin, box.top + margin, nullptr);
    LineTo(dc, box.right - margin, box.bottom - margin);
    MoveToEx(dc, box.right - margin, box.top + margin, nullptr);
    LineTo(dc, box.left + margin, box.bottom - margin);
}

} // namespace

Pixels DrawAdornmentGlyphs(int side, COLORREF color)
{
    const int fine = side * kFiner;
    const Canvas canvas(2 * fine, fine, RGB(255, 255, 255));
    SetBkMode(canvas.Dc(), TRANSPARENT);
    DrawQuestionMark(canvas.Dc(), {0, 0, fine, fine});
    DrawCross(canvas.Dc(), {fine, 0, 2 * fine, fine});
    Pixels drawn = canvas.Read();
    const auto rgb = static_cast<uint32_t>(GetRValue(color) << 16 | GetGValue(color) << 8 | GetBValue(color));
    for (uint32_t& pixel : drawn.argb)
        pixel = (0xFF - (pixel & 0xFF)) << 24 | rgb; // the darker, the more of the colour
    return ScaleStrip(drawn, fine, side, side);
}
