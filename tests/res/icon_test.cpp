#include <windows.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

#pragma pack(push, 2)
struct GroupEntry {
    BYTE width;
    BYTE height;
    BYTE colours;
    BYTE reserved;
    WORD planes;
    WORD bits;
    DWORD bytes;
    WORD id;
};
#pragma pack(pop)

std::vector<GroupEntry> IconGroup()
{
    HMODULE module = GetModuleHandleW(nullptr);
    HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(101), MAKEINTRESOURCEW(14)); // RT_GROUP_ICON
    if (!resource)
        return {};
    const auto* header = static_cast<const WORD*>(LockResource(LoadResource(module, resource)));
    const auto* entries = reinterpret_cast<const GroupEntry*>(header + 3);
    return {entries, entries + header[2]};
}

struct Picture {
    int size = 0;
    int clear = 0;   // pixels with alpha 0
    int solid = 0;   // pixels with alpha 255
    int between = 0; // the smooth edge
};

Picture LoadPicture(int size)
{
    auto icon = static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(101), IMAGE_ICON,
                                              size, size, LR_DEFAULTCOLOR));
    ICONINFO info{};
    if (!GetIconInfo(icon, &info))
        return {};
    BITMAPINFO description{};
    description.bmiHeader.biSize = sizeof description.bmiHeader;
    HDC dc = CreateCompatibleDC(nullptr);
    GetDIBits(dc, info.hbmColor, 0, 0, nullptr, &description, DIB_RGB_COLORS);
    Picture picture{description.bmiHeader.biWidth};
    description.bmiHeader.biBitCount = 32;
    description.bmiHeader.biCompression = BI_RGB;
    const int height = description.bmiHeader.biHeight;
    std::vector<DWORD> pixels(static_cast<size_t>(picture.size) * static_cast<size_t>(height));
    GetDIBits(dc, info.hbmColor, 0, static_cast<UINT>(height), pixels.data(), &description, DIB_RGB_COLORS);
    for (const DWORD pixel : pixels) {
        const DWORD alpha = pixel >> 24;
        ++(alpha == 0 ? picture.clear : alpha == 255 ? picture.solid : picture.between);
    }
    DeleteDC(dc);
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    DestroyIcon(icon);
    return picture;
}

TEST(Icon, ComesInEverySizeWithAlpha)
{
    std::vector<int> sizes;
    for (const GroupEntry& entry : IconGroup()) {
        EXPECT_EQ(entry.width, entry.height);
        EXPECT_EQ(entry.bits, 32);
        sizes.push_back(entry.width);
    }
    EXPECT_EQ(sizes, (std::vector<int>{16, 20, 24, 32, 40, 48, 64, 0})); // 0 stands for 256
}

TEST(Icon, LoadsWithClearGroundAndSmoothEdges)
{
    for (const int size : {16, 20, 24, 32, 40, 48, 64, 256}) {
        const Picture picture = LoadPicture(size);
        EXPECT_EQ(picture.size, size);
        EXPECT_GT(picture.clear, size * size / 10) << size;
        EXPECT_GT(picture.solid, size * size / 2) << size;
        EXPECT_GT(picture.between, 0) << size;
    }
}

} // namespace
