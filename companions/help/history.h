// The way back and forward through what was read.
#pragma once

#include <optional>
#include <vector>

namespace help {

// A topic and the place in its text.
struct Visit {
    size_t topic = 0;
    size_t place = 0;
};

class History {
  public:
    // A topic is left for one that was chosen anew: the way forward ends.
    void Leave(const Visit& visit);
    // Where back or forward leads to from the place that is left, if it is one that can be gone to again;
    // nothing at the end of the way.
    std::optional<Visit> Back(const std::optional<Visit>& left) { return Step(m_back, m_forward, left); }
    std::optional<Visit> Forward(const std::optional<Visit>& left) { return Step(m_forward, m_back, left); }
    bool CanGoBack() const { return !m_back.empty(); }
    bool CanGoForward() const { return !m_forward.empty(); }
    void Clear();

  private:
    static std::optional<Visit> Step(std::vector<Visit>& from, std::vector<Visit>& to,
                                     const std::optional<Visit>& left);

    std::vector<Visit> m_back;
    std::vector<Visit> m_forward;
};

} // namespace help
