// Canvas: a picture in memory that GDI draws into.
#pragma once

#include <windows.h>

#include "ui/pictures/pixels.h"
#include "util/owners.h"

class Canvas {
  public:
    // Filled with one colour.
    Canvas(int width, int height, COLORREF background);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    // Null when there is no canvas; then Read gives an empty picture.
    HDC Dc() const { return m_dc; }
    // What was drawn; alpha means nothing.
    Pixels Read() const;

  private:
    int m_width;
    int m_height;
    HDC m_dc = nullptr;
    UniqueBitmap m_bitmap;
    HGDIOBJ m_before = nullptr;
    void* m_bits = nullptr;
};
