// The pane that shows a topic: the system's rich text control, which can be read from the keyboard and by a
// screen reader, but not written into.
#pragma once

#include <windows.h>
#include <richedit.h>

#include <string>
#include <vector>

#include "help/page/topic_text.h"

namespace help {

constexpr int kNormalZoom = 100; // percent
constexpr int kSmallestZoom = 50;
constexpr int kLargestZoom = 400;

class TextPane {
  public:
    // False when the control cannot be made.
    [[nodiscard]] bool Create(HWND parent, int id);
    HWND Handle() const { return m_window; }

    // The blocks from their beginning.
    void Show(const std::vector<Block>& blocks);
    // After a change of the pane's size: puts the columns of tables where there is room for them.
    void Fit();
    const TopicText& Text() const { return m_text; }

    // Brings the place to the top of the pane, with the caret before it.
    void GoTo(size_t place);
    // Selects the range and brings it into sight.
    void Select(const TextRange& range);
    TextRange Selection() const;
    // The first place that is in sight.
    size_t FirstVisible() const;

    // As the person has chosen it, whatever the resolution is.
    int Zoom() const;
    void SetZoom(int percent);
    // The pane's window has another resolution; the text is laid out anew when it is fitted next.
    void OnResolutionChanged();

  private:
    void Load();
    void ScrollTo(size_t place);
    void MarkLinks();
    int WidestColumnNow() const;
    int ControlsZoom() const;

    HWND m_window = nullptr;
    int m_dpi = 0; // that its text is zoomed to
    std::vector<Block> m_blocks;
    int m_widestColumn = 0; // for which the blocks were laid out
    TopicText m_text;
};

} // namespace help
