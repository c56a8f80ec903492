#include "help/page/find_in_topics.h"

#include <windows.h>

#include <algorithm>

namespace help {

namespace {

std::optional<TextRange> FindForwards(const std::wstring& text, const std::wstring& wanted, size_t from)
{
    const size_t found = text.find(wanted, from);
    if (found == std::wstring::npos)
        return std::nullopt;
    return TextRange{found, found + wanted.size()};
}

// One that ends at the place or before it.
std::optional<TextRange> FindBackwards(const std::wstring& text, const std::wstring& wanted, size_t from)
{
    if (wanted.size() > from)
        return std::nullopt;
    const size_t found = text.rfind(wanted, from - wanted.size());
    if (found == std::wstring::npos)
        return std::nullopt;
    return TextRange{found, found + wanted.size()};
}

} // namespace

std::wstring Folded(const std::wstring& text)
{
    std::wstring folded = text;
    CharLowerBuffW(folded.data(), static_cast<DWORD>(folded.size()));
    std::replace(folded.begin(), folded.end(), L'\u00A0', L' ');
    return folded;
}

std::optional<TextPlace> FindInTopics(const std::vector<std::wstring>& topics, const std::wstring& text,
                                      const TextPlace& from, bool backwards)
{
    if (text.empty() || topics.empty())
        return std::nullopt;
    const std::wstring wanted = Folded(text);
    const size_t count = topics.size();
    // Once around, and into the topic that it began in again, from its other end.
    for (size_t step = 0; step <= count; ++step) {
        const size_t topic = (from.topic + (backwards ? count - step % count : step)) % count;
        const std::wstring folded = Folded(topics[topic]);
        const size_t atEdge = backwards ? folded.size() : 0;
        const size_t start =
            step == 0 ? std::min(backwards ? from.range.begin : from.range.end, folded.size()) : atEdge;
        const auto found =
            backwards ? FindBackwards(folded, wanted, start) : FindForwards(folded, wanted, start);
        if (found)
            return TextPlace{topic, *found};
    }
    return std::nullopt;
}

} // namespace help
