#include "editor/editor_layout.h"

#include <algorithm>

#include "res/resource.h"
#include "ui/screen/scale.h"

namespace {

constexpr int kMargin = 6;       // the constants leave this much free at the right: the handheld's frame
constexpr int kRoomForBox = 100; // a narrower subject box gets a row of its own
constexpr int kPickerWidth = 86;
constexpr int kPickerHeight = 22;
constexpr int kRowOfThree = 304; // what the pickers and the duration take in one row, with the margin
constexpr int kBodyMinimum = 28;
constexpr int kButtonWidth = 75;
constexpr int kButtonHeight = 20;
constexpr int kBarLeft = 136;

class Layouter {
  public:
    explicit Layouter(const EditorMetrics& metrics)
        : m_metrics(metrics),
          m_right(std::min<int>(metrics.workArea.cx, metrics.client.cx + Scaled(kMargin))),
          m_wider(std::min(Wider(metrics.dateWidth) + Wider(metrics.timeWidth),
                           std::max(m_right - Scaled(kRowOfThree), 0)))
    {}

    EditorLayout Run()
    {
        const int below = PlaceUpperRows();
        PlaceBody(below);
        PlaceButtons();
        PlaceCategories();
        return m_layout;
    }

  private:
    int Scaled(int pixels) const { return ScaleForDpi(pixels, m_metrics.dpi); }
    // By how much a picker needs more than it is given.
    int Wider(int width) const { return std::max(width - Scaled(kPickerWidth), 0); }
    int DateWider() const { return std::min(Wider(m_metrics.dateWidth), m_wider); }
    static RECT Box(int x, int y, int cx, int cy) { return {x, y, x + std::max(cx, 0), y + std::max(cy, 0)}; }

    RECT& Place(int id) { return m_layout.places[id]; }

    // All of these return the y below what they placed.
    int PlaceUpperRows()
    {
        const bool subjectFits = m_right - Scaled(324) - m_wider >= Scaled(kRoomForBox);
        return PlaceLine(subjectFits ? PlaceTwoRows() : PlaceThreeRows());
    }

    int PlaceTwoRows()
    {
        const int y = Scaled(1);
        PlacePickers();
        Place(IDC_SUBJECT) =
            Box(Scaled(178) + m_wider, y, m_right - Scaled(324) - m_wider, m_metrics.boxHeight);
        Place(IDC_TYPE) = Box(m_right - Scaled(143), y, Scaled(137), m_metrics.boxHeight);
        const int row2 = y + m_metrics.boxHeight + Scaled(5);
        Place(IDC_DURATION) = Box(0, row2, Scaled(120), m_metrics.boxHeight);
        const int room = static_cast<int>(m_metrics.client.cx) - Scaled(kBarLeft);
        // Where the buttons are higher than the box, both have their middle on one line.
        const int middle = row2 + (m_metrics.boxHeight - m_metrics.barRowHeight) / 2;
        return PlaceBar(Scaled(kBarLeft), std::min(row2 - Scaled(1), middle), m_right - Scaled(131), room);
    }

    int PlaceThreeRows()
    {
        const int y = Scaled(1);
        PlacePickers();
        Place(IDC_DURATION) = Box(Scaled(178) + m_wider, y, Scaled(120), m_metrics.boxHeight);
        const int row2 = y + m_metrics.boxHeight + Scaled(5);
        Place(IDC_SUBJECT) = Box(0, row2, m_right - Scaled(146), m_metrics.boxHeight);
        Place(IDC_TYPE) = Box(m_right - Scaled(143), row2, Scaled(137), m_metrics.boxHeight);
        const int width = m_metrics.client.cx;
        return PlaceBar(0, row2 + m_metrics.boxHeight + Scaled(4), width, width);
    }

    void PlacePickers()
    {
        // Boxes grow less than the resolution does; the pickers stay as near to their height as at 96 dpi.
        const int height = std::min(Scaled(kPickerHeight), std::max(kPickerHeight, m_metrics.boxHeight + 1));
        const int date = Scaled(kPickerWidth) + DateWider();
        Place(IDC_START_DATE) = Box(0, Scaled(1), date, height);
        Place(IDC_START_TIME) =
            Box(Scaled(89) + DateWider(), Scaled(1), Scaled(kPickerWidth) + m_wider - DateWider(), height);
    }

    int PlaceBar(int x, int y, int width, int room)
    {
        const std::vector<bool> breaks = BreakRows(m_metrics.barButtons, room);
        const int more = static_cast<int>(std::ranges::count(breaks, true)) * m_metrics.barRowHeight;
        const int row = std::max(m_metrics.boxHeight + Scaled(3), m_metrics.barRowHeight);
        Place(IDC_EDITOR_BAR) = Box(x, y, width, row + more);
        m_layout.barWrapWidth = room;
        return Place(IDC_EDITOR_BAR).bottom;
    }

    int PlaceLine(int y)
    {
        m_layout.line = Box(Scaled(1), y + Scaled(4), m_right - Scaled(7), 1);
        return m_layout.line.bottom;
    }

    void PlaceBody(int below)
    {
        const int top = below + Scaled(5);
        const int row = Scaled(kButtonHeight) + 2 * Scaled(1); // the buttons, and what is free around them
        m_layout.height = std::max<int>(m_metrics.client.cy, top + Scaled(kBodyMinimum) + row);
        int bottom = m_layout.height - row;
        if (m_metrics.showCategories)
            bottom = std::min<int>(bottom, m_metrics.workArea.cy - m_metrics.boxHeight - Scaled(27));
        const int height = std::max(bottom - top, Scaled(kBodyMinimum));
        Place(IDC_BODY) = Box(0, top, m_right - Scaled(7), height);
    }

    void PlaceButtons()
    {
        const int y = m_layout.height - Scaled(1) - Scaled(kButtonHeight);
        const int cancel = m_right - Scaled(kMargin) - Scaled(kButtonWidth);
        Place(IDCANCEL) = Box(cancel, y, Scaled(kButtonWidth), Scaled(kButtonHeight));
        Place(IDOK) =
            Box(cancel - Scaled(4) - Scaled(kButtonWidth), y, Scaled(kButtonWidth), Scaled(kButtonHeight));
    }

    void PlaceCategories()
    {
        const int y = Place(IDC_BODY).bottom + Scaled(6);
        const int height = std::min(Scaled(20), m_layout.height - y);
        Place(IDC_CATEGORIES_LABEL) = Box(0, y, m_metrics.labelWidth, height);
        const int x = Place(IDC_CATEGORIES_LABEL).right + Scaled(5);
        const int right = std::min<int>(m_right - Scaled(3), Place(IDOK).left - Scaled(6));
        Place(IDC_CATEGORIES_LINE) = Box(x, y, right - x, height);
    }

    const EditorMetrics& m_metrics;
    const int m_right; // R, or less where the frame takes more than the constants leave free
    const int m_wider; // both pickers together: what stands right of them moves by so much
    EditorLayout m_layout;
};

} // namespace

EditorLayout LayOutEditor(const EditorMetrics& metrics)
{
    return Layouter(metrics).Run();
}

EditorLayout WithLineBelowBody(const EditorLayout& layout, int dpi)
{
    EditorLayout changed = layout;
    RECT& body = changed.places[IDC_BODY];
    body.bottom = std::max(body.bottom - ScaleForDpi(22, dpi), body.top);
    for (const int id : {IDC_CATEGORIES_LABEL, IDC_CATEGORIES_LINE}) {
        RECT& place = changed.places[id];
        place.top = body.bottom + ScaleForDpi(5, dpi);
        place.bottom = place.top + ScaleForDpi(20, dpi);
    }
    return changed;
}
