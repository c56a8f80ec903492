#include "ui/pictures/canvas.h"

Canvas::Canvas(int width, int height, COLORREF background) : m_width(width), m_height(height)
{
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height; // rows from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    m_bitmap.reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &m_bits, nullptr, 0));
    if (!m_bitmap)
        return;
    m_dc = CreateCompatibleDC(nullptr);
    if (!m_dc)
        return;
    m_before = SelectObject(m_dc, m_bitmap.get());
    const RECT all{0, 0, width, height};
    SetBkColor(m_dc, background);
    ExtTextOutW(m_dc, 0, 0, ETO_OPAQUE, &all, nullptr, 0, nullptr);
}

Canvas::~Canvas()
{
    if (!m_dc)
        return;
    SelectObject(m_dc, m_before);
    DeleteDC(m_dc);
}

Pixels Canvas::Read() const
{
    Pixels pixels = m_dc ? MakePixels(m_width, m_height) : Pixels{};
    if (pixels.IsEmpty())
        return pixels;
    GdiFlush();
    const auto* bits = static_cast<const uint32_t*>(m_bits);
    pixels.argb.assign(bits, bits + pixels.argb.size());
    return pixels;
}
