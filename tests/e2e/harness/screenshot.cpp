#include "e2e/harness/screenshot.h"

#include "support/test_store.h"
#include "util/owners.h"

namespace {

struct ScreenReleaser {
    void operator()(HDC screen) const { ReleaseDC(nullptr, screen); }
};
using UniqueScreen = std::unique_ptr<std::remove_pointer_t<HDC>, ScreenReleaser>;
using UniqueMemoryDc = UniqueHandle<HDC, DeleteDC>;

RECT AreaOf(HWND window)
{
    RECT area{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    if (window)
        GetWindowRect(window, &area);
    return area;
}

BITMAPINFOHEADER Header(const RECT& area)
{
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = area.right - area.left;
    header.biHeight = area.bottom - area.top;
    header.biPlanes = 1;
    header.biBitCount = 24;
    header.biSizeImage = static_cast<DWORD>((header.biWidth * 3 + 3) / 4 * 4 * header.biHeight);
    return header;
}

std::string Bytes(const void* data, size_t size)
{
    return std::string(static_cast<const char*>(data), size);
}

} // namespace

bool SaveScreenshot(HWND window, const std::wstring& path)
{
    const RECT area = AreaOf(window);
    BITMAPINFO info{};
    info.bmiHeader = Header(area);
    const UniqueScreen screen(GetDC(nullptr));
    const UniqueMemoryDc memory(CreateCompatibleDC(screen.get()));
    void* pixels = nullptr;
    const UniqueBitmap bitmap(CreateDIBSection(memory.get(), &info, DIB_RGB_COLORS, &pixels, nullptr, 0));
    if (!bitmap)
        return false;
    HGDIOBJ before = SelectObject(memory.get(), bitmap.get());
    const BOOL copied = BitBlt(memory.get(), 0, 0, info.bmiHeader.biWidth, info.bmiHeader.biHeight,
                               screen.get(), area.left, area.top, SRCCOPY);
    SelectObject(memory.get(), before);
    BITMAPFILEHEADER file{};
    file.bfType = 0x4D42;
    file.bfOffBits = sizeof file + sizeof info.bmiHeader;
    file.bfSize = file.bfOffBits + info.bmiHeader.biSizeImage;
    return copied &&
           WriteFileBytes(path, Bytes(&file, sizeof file) + Bytes(&info.bmiHeader, sizeof info.bmiHeader) +
                                    Bytes(pixels, info.bmiHeader.biSizeImage));
}
