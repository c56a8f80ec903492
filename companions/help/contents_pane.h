// The contents at the left: a tree of the topics.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <optional>
#include <vector>

#include "help/page/topics.h"

namespace help {

class ContentsPane {
  public:
    [[nodiscard]] bool Create(HWND parent, int id);
    HWND Handle() const { return m_window; }

    void Fill(const std::vector<Topic>& topics);
    // Selects the topic without a notification that counts, or none.
    void Select(std::optional<size_t> topic);
    // The topic that a person has chosen, when the notification tells of that.
    std::optional<size_t> ChosenBy(const NMHDR* header) const;

  private:
    HWND m_window = nullptr;
    std::vector<HTREEITEM> m_items; // by topic
    bool m_isQuiet = false;         // the program itself works the tree
};

} // namespace help
