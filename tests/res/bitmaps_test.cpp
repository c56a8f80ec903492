#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

namespace {

constexpr COLORREF kMask = RGB(0xC0, 0xC0, 0xC0);
// What is added to a bitmap's number, and its images' size in quarters of the given one.
constexpr std::pair<int, int> kSizes[] = {{0, 4}, {2000, 5}, {3000, 6}, {1000, 8}, {4000, 10}, {5000, 12}};

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
    std::vector<Strip> strips;
    for (const auto& [added, quarters] : kSizes)
        strips.push_back({216 + added, 4 * quarters, 5});
    for (const Strip& strip : kStrips)
        for (const auto& [added, quarters] : kSizes)
            strips.push_back({strip.id + added, strip.imageSize * quarters / 4, strip.count});
    return strips;
}

bool IsBlank(const Image& image)
{
    return std::set<COLORREF>(image.begin(), image.end()) == std::set<COLORREF>{kMask};
}

// How much of a small image is found at the same place of a larger one, as a share.
double Agreement(const Image& small, const Image& large, int size, int largeSize)
{
    int count = 0;
    for (int y = 0; y < largeSize; ++y)
        for (int x = 0; x < largeSize; ++x)
            count += large[static_cast<size_t>(y * largeSize + x)] ==
                     small[static_cast<size_t>(y * size / largeSize * size + x * size / largeSize)];
    return count / static_cast<double>(largeSize * largeSize);
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

// None is mixed from two, as where an image is averaged.
TEST(Bitmaps, HaveTheSameColoursAtEverySize)
{
    std::set<COLORREF> given;
    for (const Strip& strip : kStrips)
        for (const Image& image : StripPixels(strip.id).ReadAll())
            given.insert(image.begin(), image.end());
    for (const Strip& strip : AllStrips())
        for (const Image& image : StripPixels(strip.id).ReadAll())
            for (const COLORREF color : image)
                ASSERT_TRUE(given.contains(color)) << strip.id << ", " << color;
}

TEST(Bitmaps, AreBlankOnlyWhereNothingIsToBeSeen)
{
    std::set<std::pair<int, size_t>> blanks;
    for (const auto& [added, quarters] : kSizes)
        blanks.insert({{210 + added, 3}, {211 + added, 0}});
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
    for (const auto& [added, quarters] : kSizes) {
        const StripPixels editor(201 + added);
        const StripPixels list(210 + added);
        for (int priority = 0; priority < 3; ++priority)
            EXPECT_EQ(editor.Read(7 + priority), list.Read(priority)) << added;
    }
}

TEST(Bitmaps, PointTheSortMarksUpAndDown)
{
    for (const auto& [added, quarters] : kSizes) {
        const StripPixels header(211 + added);
        const auto size = static_cast<ptrdiff_t>(3 * quarters);
        const Image ascending = header.Read(1);
        // Upwards: the first row that is not empty is the shortest.
        const auto marked = [&](ptrdiff_t row) {
            return size -
                   std::count(ascending.begin() + row * size, ascending.begin() + (row + 1) * size, kMask);
        };
        ptrdiff_t top = 0;
        while (marked(top) == 0)
            ++top;
        EXPECT_LT(marked(top), marked(top + quarters / 4)) << added;

        Image turned;
        for (ptrdiff_t row = size; row-- > 0;)
            turned.insert(turned.end(), ascending.begin() + row * size, ascending.begin() + (row + 1) * size);
        EXPECT_EQ(header.Read(2), turned) << added;
    }
}

// Which of the larger images is most like the small one.
size_t MostAlike(const Image& small, const std::vector<Image>& larger, int size, int largeSize)
{
    const auto less = [&](const Image& one, const Image& other) {
        return Agreement(small, one, size, largeSize) < Agreement(small, other, size, largeSize);
    };
    return static_cast<size_t>(std::max_element(larger.begin(), larger.end(), less) - larger.begin());
}

TEST(Bitmaps, KeepTheirOrderAtEverySize)
{
    for (const Strip& strip : kStrips)
        for (const auto& [added, quarters] : kSizes) {
            const std::vector<Image> small = StripPixels(strip.id).ReadAll();
            const std::vector<Image> larger = StripPixels(strip.id + added).ReadAll();
            for (size_t i = 0; i < small.size(); ++i)
                EXPECT_EQ(MostAlike(small[i], larger, strip.imageSize, strip.imageSize * quarters / 4), i)
                    << strip.id + added;
        }
}

} // namespace
