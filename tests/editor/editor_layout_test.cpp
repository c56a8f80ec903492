#include "editor/editor_layout.h"

#include <gtest/gtest.h>

#include <ostream>

#include "res/resource.h"
#include "ui/screen/scale.h"

static bool operator==(const RECT& a, const RECT& b)
{
    return EqualRect(&a, &b);
}
static std::ostream& operator<<(std::ostream& out, const RECT& r)
{
    return out << "(" << r.left << "," << r.top << " " << r.right - r.left << "x" << r.bottom - r.top << ")";
}

namespace {

// The bar's buttons as they are at 96 dpi, and the room that a frame with a caption takes.
constexpr int kBarWidths[] = {75, -4, 100, 85, -4, 24, 24, -4, 24, 75, -4, 24, 24, 24};
constexpr SIZE kFrame{6, 25};

RECT Box(int x, int y, int cx, int cy)
{
    return {x, y, x + cx, y + cy};
}

EditorMetrics MetricsOf(SIZE screen, int dpi = 96, bool showCategories = true)
{
    EditorMetrics metrics;
    metrics.workArea = screen;
    metrics.client = {screen.cx - kFrame.cx, screen.cy - kFrame.cy};
    metrics.boxHeight = ScaleForDpi(21, dpi);
    metrics.labelWidth = ScaleForDpi(56, dpi);
    for (const int width : kBarWidths)
        metrics.barButtons.push_back({ScaleForDpi(width < 0 ? -width : width, dpi), width < 0});
    metrics.barRowHeight = ScaleForDpi(21, dpi);
    metrics.showCategories = showCategories;
    metrics.dpi = dpi;
    return metrics;
}

std::vector<RECT> AllOf(const EditorLayout& layout)
{
    std::vector<RECT> all = {layout.line};
    for (const auto& [id, place] : layout.places)
        all.push_back(place);
    return all;
}

TEST(EditorLayout, KeepsTheGivenPlacesAt96Dpi)
{
    for (const SIZE screen : {SIZE{640, 240}, SIZE{800, 600}, SIZE{1024, 768}, SIZE{1920, 1080}}) {
        const int R = screen.cx;
        const int B = screen.cy;
        const EditorLayout layout = LayOutEditor(MetricsOf(screen));
        EXPECT_EQ(layout.places.at(IDC_START_DATE), Box(0, 1, 86, 22));
        EXPECT_EQ(layout.places.at(IDC_START_TIME), Box(89, 1, 86, 22));
        EXPECT_EQ(layout.places.at(IDC_SUBJECT), Box(178, 1, R - 324, 21));
        EXPECT_EQ(layout.places.at(IDC_TYPE), Box(R - 143, 1, 137, 21));
        EXPECT_EQ(layout.places.at(IDC_DURATION), Box(0, 27, 120, 21));
        EXPECT_EQ(layout.places.at(IDC_EDITOR_BAR), Box(136, 26, R - 131, 24));
        EXPECT_EQ(layout.line, Box(1, 54, R - 7, 1));
        EXPECT_EQ(layout.places.at(IDC_BODY), Box(0, 60, R - 7, B - 60 - 21 - 27));
        EXPECT_EQ(layout.places.at(IDC_CATEGORIES_LABEL).left, 0);
        EXPECT_EQ(layout.places.at(IDC_CATEGORIES_LABEL).top, layout.places.at(IDC_BODY).bottom + 6);
        EXPECT_EQ(layout.places.at(IDC_CATEGORIES_LABEL).right, 56);
        EXPECT_EQ(layout.places.at(IDC_CATEGORIES_LINE).left, 61);
        EXPECT_EQ(layout.height, B - 25);
    }
}

// As for a date with the month's name, or a time with the words of the user's language.
TEST(EditorLayout, APickerThatNeedsMoreMovesWhatStandsRightOfIt)
{
    EditorMetrics metrics = MetricsOf({1024, 768});
    metrics.dateWidth = 120;
    EditorLayout layout = LayOutEditor(metrics);
    EXPECT_EQ(layout.places.at(IDC_START_DATE), Box(0, 1, 120, 22));
    EXPECT_EQ(layout.places.at(IDC_START_TIME), Box(123, 1, 86, 22));
    EXPECT_EQ(layout.places.at(IDC_SUBJECT), Box(212, 1, 1024 - 324 - 34, 21));
    EXPECT_EQ(layout.places.at(IDC_TYPE), Box(1024 - 143, 1, 137, 21));
    metrics.timeWidth = 100;
    layout = LayOutEditor(metrics);
    EXPECT_EQ(layout.places.at(IDC_START_DATE), Box(0, 1, 120, 22));
    EXPECT_EQ(layout.places.at(IDC_START_TIME), Box(123, 1, 100, 22));
    EXPECT_EQ(layout.places.at(IDC_SUBJECT), Box(226, 1, 1024 - 324 - 48, 21));
    metrics.dateWidth = metrics.timeWidth = 60;
    layout = LayOutEditor(metrics);
    EXPECT_EQ(layout.places.at(IDC_START_DATE), Box(0, 1, 86, 22));
    EXPECT_EQ(layout.places.at(IDC_SUBJECT), Box(178, 1, 1024 - 324, 21));
}

TEST(EditorLayout, WithoutCategoriesTheBodyReachesDownToTheButtons)
{
    const EditorLayout with = LayOutEditor(MetricsOf({1024, 768}));
    EditorMetrics roomy = MetricsOf({1024, 768}, 96, false);
    roomy.client.cy += 10; // a thinner frame
    const EditorLayout without = LayOutEditor(roomy);
    EXPECT_GT(without.places.at(IDC_BODY).bottom, with.places.at(IDC_BODY).bottom);
    EXPECT_EQ(without.places.at(IDC_BODY).bottom, without.places.at(IDOK).top - 1);
    EXPECT_EQ(without.places.at(IDC_BODY).right, 1024 - 7);
}

TEST(EditorLayout, CutsNothingOffAtAnyScreenAndResolution)
{
    for (const SIZE screen : {SIZE{640, 240}, SIZE{800, 600}, SIZE{1024, 768}, SIZE{1920, 1080}})
        for (const int dpi : {96, 120, 144, 192})
            for (const bool special : {true, false}) {
                EditorMetrics metrics = MetricsOf(screen, dpi, special);
                metrics.dateWidth = special ? ScaleForDpi(160, dpi) : 0;
                metrics.timeWidth = special ? ScaleForDpi(130, dpi) : 0;
                const EditorLayout layout = LayOutEditor(metrics);
                SCOPED_TRACE(testing::Message() << screen.cx << "x" << screen.cy << " at " << dpi);
                for (const RECT& rect : AllOf(layout)) {
                    EXPECT_GE(rect.left, 0);
                    EXPECT_GE(rect.top, 0);
                    EXPECT_GT(rect.right, rect.left) << rect;
                    EXPECT_GT(rect.bottom, rect.top) << rect;
                    EXPECT_LE(rect.bottom, layout.height) << rect;
                    // The bar's window ends beyond the edge, its buttons do not.
                    if (!EqualRect(&rect, &layout.places.at(IDC_EDITOR_BAR))) {
                        EXPECT_LE(rect.right, metrics.client.cx) << rect;
                    }
                }
                EXPECT_GE(layout.places.at(IDC_BODY).bottom - layout.places.at(IDC_BODY).top,
                          ScaleForDpi(28, dpi));
                EXPECT_LE(layout.places.at(IDC_EDITOR_BAR).left + layout.barWrapWidth, metrics.client.cx);
            }
}

TEST(EditorLayout, LaysNothingOverAnother)
{
    for (const SIZE screen : {SIZE{640, 240}, SIZE{800, 600}, SIZE{1024, 768}, SIZE{1920, 1080}})
        for (const int dpi : {96, 120, 144, 192}) {
            EditorMetrics metrics = MetricsOf(screen, dpi);
            metrics.dateWidth = ScaleForDpi(160, dpi);
            const std::vector<RECT> all = AllOf(LayOutEditor(metrics));
            SCOPED_TRACE(testing::Message() << screen.cx << "x" << screen.cy << " at " << dpi);
            for (size_t i = 0; i < all.size(); ++i)
                for (size_t j = i + 1; j < all.size(); ++j) {
                    RECT common;
                    EXPECT_FALSE(IntersectRect(&common, &all[i], &all[j])) << all[i] << all[j];
                }
        }
}

TEST(EditorLayout, NeedsNoScrollingWhereTheHandheldsScreenIsReached)
{
    for (const SIZE screen : {SIZE{640, 240}, SIZE{800, 600}, SIZE{1024, 768}, SIZE{1920, 1080}})
        for (const int dpi : {96, 120, 144, 192}) {
            const EditorMetrics metrics = MetricsOf(screen, dpi);
            const bool isTiny = screen.cy == 240 && dpi == 192;
            EXPECT_EQ(LayOutEditor(metrics).height > metrics.client.cy, isTiny) << screen.cx << " " << dpi;
        }
}

TEST(EditorLayout, ABarThatDoesNotFitBreaksIntoRows)
{
    const EditorLayout wide = LayOutEditor(MetricsOf({1280, 960}, 192));
    EXPECT_EQ(wide.places.at(IDC_EDITOR_BAR).bottom - wide.places.at(IDC_EDITOR_BAR).top, 48);
    const EditorLayout narrow = LayOutEditor(MetricsOf({1024, 768}, 192));
    EXPECT_EQ(narrow.places.at(IDC_EDITOR_BAR).bottom - narrow.places.at(IDC_EDITOR_BAR).top, 48 + 42);
    EXPECT_EQ(narrow.barWrapWidth, 1024 - 6 - 272);
    EXPECT_EQ(narrow.places.at(IDC_BODY).top - wide.places.at(IDC_BODY).top, 42);
}

TEST(EditorLayout, ANarrowWindowGivesTheSubjectARowOfItsOwn)
{
    const EditorLayout layout = LayOutEditor(MetricsOf({800, 600}, 192));
    EXPECT_EQ(layout.places.at(IDC_DURATION).top, layout.places.at(IDC_START_DATE).top);
    EXPECT_EQ(layout.places.at(IDC_SUBJECT).left, 0);
    EXPECT_GE(layout.places.at(IDC_SUBJECT).top, layout.places.at(IDC_START_DATE).bottom);
    EXPECT_EQ(layout.places.at(IDC_TYPE).top, layout.places.at(IDC_SUBJECT).top);
    EXPECT_EQ(layout.places.at(IDC_EDITOR_BAR).left, 0);
    EXPECT_GE(layout.places.at(IDC_EDITOR_BAR).top, layout.places.at(IDC_SUBJECT).bottom);
}

TEST(EditorLayout, AThickFrameTakesItsRoomFromTheRightAndTheBody)
{
    EditorMetrics metrics = MetricsOf({1024, 768});
    metrics.client = {1008, 729};
    const EditorLayout layout = LayOutEditor(metrics);
    EXPECT_EQ(layout.places.at(IDC_TYPE).right, 1008);
    EXPECT_EQ(layout.places.at(IDC_BODY).right, 1007);
    EXPECT_EQ(layout.places.at(IDCANCEL).right, 1008);
    EXPECT_LE(layout.places.at(IDCANCEL).bottom, 729);
    EXPECT_EQ(layout.places.at(IDC_BODY).bottom, layout.places.at(IDOK).top - 1);
    EXPECT_EQ(layout.height, 729);
}

TEST(EditorLayout, TheLineEndsBeforeTheButtons)
{
    const EditorLayout layout = LayOutEditor(MetricsOf({640, 240}));
    EXPECT_EQ(layout.places.at(IDC_CATEGORIES_LINE).right, layout.places.at(IDOK).left - 6);
    EXPECT_EQ(layout.places.at(IDOK).right, layout.places.at(IDCANCEL).left - 4);
}

TEST(EditorLayout, TheLineComesCloseBelowAShorterBody)
{
    const EditorLayout before = LayOutEditor(MetricsOf({1024, 768}));
    const EditorLayout after = WithLineBelowBody(before, 96);
    EXPECT_EQ(after.places.at(IDC_BODY).bottom, before.places.at(IDC_BODY).bottom - 22);
    EXPECT_EQ(after.places.at(IDC_BODY).top, before.places.at(IDC_BODY).top);
    EXPECT_EQ(after.places.at(IDC_CATEGORIES_LABEL).top, after.places.at(IDC_BODY).bottom + 5);
    EXPECT_EQ(after.places.at(IDC_CATEGORIES_LABEL).bottom - after.places.at(IDC_CATEGORIES_LABEL).top, 20);
    EXPECT_EQ(after.places.at(IDC_CATEGORIES_LINE).left, after.places.at(IDC_CATEGORIES_LABEL).right + 5);
    EXPECT_EQ(after.places.at(IDC_CATEGORIES_LINE).top, after.places.at(IDC_CATEGORIES_LABEL).top);
    EXPECT_EQ(after.places.at(IDOK), before.places.at(IDOK));
    EXPECT_EQ(WithLineBelowBody(before, 192).places.at(IDC_BODY).bottom,
              before.places.at(IDC_BODY).bottom - 44);
}

} // namespace
