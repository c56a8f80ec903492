#include "help/history.h"

namespace help {

namespace {

constexpr size_t kMaxVisits = 200;

}

void History::Leave(const Visit& visit)
{
    m_forward.clear();
    m_back.push_back(visit);
    if (m_back.size() > kMaxVisits)
        m_back.erase(m_back.begin());
}

void History::Clear()
{
    m_back.clear();
    m_forward.clear();
}

std::optional<Visit> History::Step(std::vector<Visit>& from, std::vector<Visit>& to,
                                   const std::optional<Visit>& left)
{
    if (from.empty())
        return std::nullopt;
    const Visit visit = from.back();
    from.pop_back();
    if (left)
        to.push_back(*left);
    return visit;
}

} // namespace help
