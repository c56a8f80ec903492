#include "help/topic_work.h"

#include <algorithm>

#include "help/page/topic_text.h"

namespace help {

namespace {

constexpr uint64_t kEachCell = 3'000;
constexpr uint64_t kEachLine = 2'000;
constexpr uint64_t kEachLink = 50'000;

// Of the lines that the text itself has.
uint64_t WorkOfLines(const std::wstring& text)
{
    uint64_t work = 0;
    for (size_t begin = 0; begin <= text.size();) {
        const size_t end = std::min(text.find(L'\v', begin), text.size());
        work += kEachLine + uint64_t{end - begin} * (end - begin);
        begin = end + 1;
    }
    return work;
}

} // namespace

uint64_t WorkOf(const std::vector<Block>& topic)
{
    uint64_t work = 0;
    for (const Block& block : topic) {
        const TopicText text = TextOf({block});
        work += block.cells.size() * kEachCell + text.links.size() * kEachLink +
                (1 + text.links.size()) * WorkOfLines(text.text);
    }
    return work;
}

} // namespace help
