#include "editor/editor_layout.h"

#include <gtest/gtest.h>

#include <ostream>

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
    return {layout.date, layout.time, layout.subject, layout.type,       layout.duration, layout.bar,
            layout.line, layout.body, layout.label,   layout.categories, layout.ok,       layout.cancel};
}

TEST(EditorLayout, KeepsTheGivenPlacesAt96Dpi)
{
    for (const SIZE screen : {SIZE{640, 240}, SIZE{800, 600}, SIZE{1024, 768}, SIZE{1920, 1080}}) {
        const int R = screen.cx;
        const int B = screen.cy;
        const EditorLayout layout = LayOutEditor(MetricsOf(screen));
        EXPECT_EQ(layout.date, Box(0, 1, 86, 22));
        EXPECT_EQ(layout.time, Box(89, 1, 86, 22));
        EXPECT_EQ(layout.subject, Box(178, 1, R - 324, 21));
        EXPECT_EQ(layout.type, Box(R - 143, 1, 137, 21));
        EXPECT_EQ(layout.duration, Box(0, 27, 120, 21));
        EXPECT_EQ(layout.bar, Box(136, 26, R - 131, 24));
        EXPECT_EQ(layout.line, Box(1, 54, R - 7, 1));
        EXPECT_EQ(layout.body, Box(0, 60, R - 7, B - 60 - 21 - 27));
        EXPECT_EQ(layout.label.left, 0);
        EXPECT_EQ(layout.label.top, layout.body.bottom + 6);
        EXPECT_EQ(layout.label.right, 56);
        EXPECT_EQ(layout.categories.left, 61);
        EXPECT_EQ(layout.height, B - 25);
    }
}

// As for a date with the month's name, or a time with the words of the user's language.
TEST(EditorLayout, APickerThatNeedsMoreMovesWhatStandsRightOfIt)
{
    EditorMetrics metrics = MetricsOf({1024, 768});
    metrics.dateWidth = 120;
    EditorLayout layout = LayOutEditor(metrics);
    EXPECT_EQ(layout.date, Box(0, 1, 120, 22));
    EXPECT_EQ(layout.time, Box(123, 1, 86, 22));
    EXPECT_EQ(layout.subject, Box(212, 1, 1024 - 324 - 34, 21));
    EXPECT_EQ(layout.type, Box(1024 - 143, 1, 137, 21));
    metrics.timeWidth = 100;
    layout = LayOutEditor(metrics);
    EXPECT_EQ(layout.date, Box(0, 1, 120, 22));
    EXPECT_EQ(layout.time, Box(123, 1, 100, 22));
    EXPECT_EQ(layout.subject, Box(226, 1, 1024 - 324 - 48, 21));
    metrics.dateWidth = metrics.timeWidth = 60;
    layout = LayOutEditor(metrics);
    EXPECT_EQ(layout.date, Box(0, 1, 86, 22));
    EXPECT_EQ(layout.subject, Box(178, 1, 1024 - 324, 21));
}

TEST(EditorLayout, WithoutCategoriesTheBodyReachesDownToTheButtons)
{
    const EditorLayout with = LayOutEditor(MetricsOf({1024, 768}));
    EditorMetrics roomy = MetricsOf({1024, 768}, 96, false);
    roomy.client.cy += 10; // a thinner frame
    const EditorLayout without = LayOutEditor(roomy);
    EXPECT_GT(without.body.bottom, with.body.bottom);
    EXPECT_EQ(without.body.bottom, without.ok.top - 1);
    EXPECT_EQ(without.body.right, 1024 - 7);
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
                    if (!EqualRect(&rect, &layout.bar)) {
                        EXPECT_LE(rect.right, metrics.client.cx) << rect;
                    }
                }
                EXPECT_GE(layout.body.bottom - layout.body.top, ScaleForDpi(28, dpi));
                EXPECT_LE(layout.bar.left + layout.barWrapWidth, metrics.client.cx);
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
    EXPECT_EQ(wide.bar.bottom - wide.bar.top, 48);
    const EditorLayout narrow = LayOutEditor(MetricsOf({1024, 768}, 192));
    EXPECT_EQ(narrow.bar.bottom - narrow.bar.top, 48 + 42);
    EXPECT_EQ(narrow.barWrapWidth, 1024 - 6 - 272);
    EXPECT_EQ(narrow.body.top - wide.body.top, 42);
}

TEST(EditorLayout, ANarrowWindowGivesTheSubjectARowOfItsOwn)
{
    const EditorLayout layout = LayOutEditor(MetricsOf({800, 600}, 192));
    EXPECT_EQ(layout.duration.top, layout.date.top);
    EXPECT_EQ(layout.subject.left, 0);
    EXPECT_GE(layout.subject.top, layout.date.bottom);
    EXPECT_EQ(layout.type.top, layout.subject.top);
    EXPECT_EQ(layout.bar.left, 0);
    EXPECT_GE(layout.bar.top, layout.subject.bottom);
}

TEST(EditorLayout, AThickFrameTakesItsRoomFromTheRightAndTheBody)
{
    EditorMetrics metrics = MetricsOf({1024, 768});
    metrics.client = {1008, 729};
    const EditorLayout layout = LayOutEditor(metrics);
    EXPECT_EQ(layout.type.right, 1008);
    EXPECT_EQ(layout.body.right, 1007);
    EXPECT_EQ(layout.cancel.right, 1008);
    EXPECT_LE(layout.cancel.bottom, 729);
    EXPECT_EQ(layout.body.bottom, layout.ok.top - 1);
    EXPECT_EQ(layout.height, 729);
}

TEST(EditorLayout, TheLineEndsBeforeTheButtons)
{
    const EditorLayout layout = LayOutEditor(MetricsOf({640, 240}));
    EXPECT_EQ(layout.categories.right, layout.ok.left - 6);
    EXPECT_EQ(layout.ok.right, layout.cancel.left - 4);
}

TEST(EditorLayout, TheLineComesCloseBelowAShorterBody)
{
    const EditorLayout before = LayOutEditor(MetricsOf({1024, 768}));
    const EditorLayout after = WithLineBelowBody(before, 96);
    EXPECT_EQ(after.body.bottom, before.body.bottom - 22);
    EXPECT_EQ(after.body.top, before.body.top);
    EXPECT_EQ(after.label.top, after.body.bottom + 5);
    EXPECT_EQ(after.label.bottom - after.label.top, 20);
    EXPECT_EQ(after.categories.left, after.label.right + 5);
    EXPECT_EQ(after.categories.top, after.label.top);
    EXPECT_EQ(after.ok, before.ok);
    EXPECT_EQ(WithLineBelowBody(before, 192).body.bottom, before.body.bottom - 44);
}

} // namespace
