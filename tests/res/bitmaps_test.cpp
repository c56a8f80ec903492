#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace {

constexpr COLORREF kMask = RGB(0xC0, 0xC0, 0xC0);
constexpr int kDoubleSize = 1000;

struct Strip {
    int id;
    int imageSize; // width and height
    int count;
};

constexpr Strip kStrips[] = {{201, 12, 16}, {210, 12, 4}, {211, 12, 5}, {212, 16, 2},
                             {213, 16, 1},  {214, 16, 1}, {215, 16, 1}};

using Image = std::vector<COLORREF>; // rows from the top

class StripPixels {
  public:
    explicit StripPixels(int id)
        : m_bitmap(static_cast<HBITMAP>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id),
                                                   IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)))
    {
        GetObjectW(m_bitmap, sizeof m_description, &m_description);
    }
    ~StripPixels() { DeleteObject(m_bitmap); }
    StripPixels(const StripPixels&) = delete;
    StripPixels& operator=(const StripPixels&) = delete;

    const BITMAP& Description() const { return m_description; }

    Image Read(int index) const
    {
        const int size = m_description.bmHeight;
        HDC dc = CreateCompatibleDC(nullptr);
        HGDIOBJ previous = SelectObject(dc, m_bitmap);
        Image image;
        for (int y = 0; y < size; ++y)
            for (int x = 0; x < size; ++x)
                image.push_back(GetPixel(dc, index * size + x, y));
        SelectObject(dc, previous);
        DeleteDC(dc);
        return image;
    }

    std::vector<Image> ReadAll() const
    {
        std::vector<Image> images;
        for (int i = 0; i < m_description.bmWidth / m_description.bmHeight; ++i)
            images.push_back(Read(i));
        return images;
    }

  private:
    HBITMAP m_bitmap;
    BITMAP m_description{};
};

std::vector<Strip> AllStrips()
{
    std::vector<Strip> strips(std::begin(kStrips), std::end(kStrips));
    for (const Strip& strip : kStrips)
        strips.push_back({strip.id + kDoubleSize, 2 * strip.imageSize, strip.count});
    return strips;
}

bool IsBlank(const Image& image)
{
    return std::set<COLORREF>(image.begin(), image.end()) == std::set<COLORREF>{kMask};
}

// How many of a small image's pixels are found at the same place of an image of double size.
int Agreement(const Image& small, const Image& large, int size)
{
    int count = 0;
    for (int y = 0; y < 2 * size; ++y)
        for (int x = 0; x < 2 * size; ++x)
            count += large[static_cast<size_t>(y * 2 * size + x)] ==
                     small[static_cast<size_t>(y / 2 * size + x / 2)];
    return count;
}

TEST(Bitmaps, HaveTheirSizesAndAllTheirColours)
{
    for (const Strip& strip : AllStrips()) {
        const BITMAP description = StripPixels(strip.id).Description();
        EXPECT_EQ(description.bmWidth, strip.imageSize * strip.count) << strip.id;
        EXPECT_EQ(description.bmHeight, strip.imageSize) << strip.id;
        EXPECT_EQ(description.bmBitsPixel, 24) << strip.id;
    }
}

TEST(Bitmaps, MakeImageListsOfAllTheirImages)
{
    for (const Strip& strip : AllStrips()) {
        HIMAGELIST list = ImageList_LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(strip.id),
                                               strip.imageSize, 0, kMask, IMAGE_BITMAP, LR_CREATEDIBSECTION);
        EXPECT_EQ(ImageList_GetImageCount(list), strip.count) << strip.id;
        ImageList_Destroy(list);
    }
}

TEST(Bitmaps, LeaveTheMaskColourAroundEveryImage)
{
    for (const Strip& strip : AllStrips())
        for (const Image& image : StripPixels(strip.id).ReadAll())
            EXPECT_TRUE(std::set<COLORREF>(image.begin(), image.end()).contains(kMask)) << strip.id;
}

TEST(Bitmaps, AreBlankOnlyWhereNothingIsToBeSeen)
{
    const std::set<std::pair<int, size_t>> blanks = {{210, 3}, {211, 0}, {1210, 3}, {1211, 0}};
    for (const Strip& strip : AllStrips()) {
        const std::vector<Image> images = StripPixels(strip.id).ReadAll();
        for (size_t i = 0; i < images.size(); ++i)
            EXPECT_EQ(IsBlank(images[i]), blanks.contains({strip.id, i})) << strip.id << ", " << i;
    }
}

TEST(Bitmaps, ShowNoImageTwice)
{
    for (const Strip& strip : AllStrips()) {
        const std::vector<Image> images = StripPixels(strip.id).ReadAll();
        EXPECT_EQ(std::set<Image>(images.begin(), images.end()).size(), images.size()) << strip.id;
    }
}

TEST(Bitmaps, ShowThePrioritiesAlikeInTheEditorAndInTheList)
{
    for (const int first : {0, kDoubleSize}) {
        const StripPixels editor(201 + first);
        const StripPixels list(210 + first);
        for (int priority = 0; priority < 3; ++priority)
            EXPECT_EQ(editor.Read(7 + priority), list.Read(priority));
    }
}

TEST(Bitmaps, PointTheSortMarksUpAndDown)
{
    const StripPixels header(211);
    const Image ascending = header.Read(1);
    // Upwards: the first row that is not empty is the shortest.
    const auto marked = [&ascending](int row) {
        int count = 0;
        for (int x = 0; x < 12; ++x)
            count += ascending[static_cast<size_t>(row * 12 + x)] != kMask;
        return count;
    };
    int top = 0;
    while (marked(top) == 0)
        ++top;
    EXPECT_LT(marked(top), marked(top + 1));

    Image turned;
    for (size_t row = 12; row-- > 0;)
        turned.insert(turned.end(), ascending.begin() + static_cast<ptrdiff_t>(row * 12),
                      ascending.begin() + static_cast<ptrdiff_t>(row * 12 + 12));
    EXPECT_EQ(header.Read(2), turned);
}

TEST(Bitmaps, KeepTheirOrderAtDoubleSize)
{
    for (const Strip& strip : kStrips) {
        const std::vector<Image> small = StripPixels(strip.id).ReadAll();
        const std::vector<Image> large = StripPixels(strip.id + kDoubleSize).ReadAll();
        for (size_t i = 0; i < small.size(); ++i) {
            size_t best = 0;
            for (size_t k = 1; k < large.size(); ++k)
                if (Agreement(small[i], large[k], strip.imageSize) >
                    Agreement(small[i], large[best], strip.imageSize))
                    best = k;
            EXPECT_EQ(best, i) << strip.id;
        }
    }
}

} // namespace
