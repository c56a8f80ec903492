#include "help/page/topics.h"

#include <algorithm>

#include "help/page/ascii_text.h"

namespace help {

namespace {

constexpr int kTopicLevels = 2;

bool BeginsTopic(const Block& block)
{
    return block.kind == BlockKind::Heading && block.level <= kTopicLevels;
}

template <typename Test> std::optional<TopicPlace> PlaceOf(const std::vector<Topic>& topics, Test isWanted)
{
    for (size_t topic = 0; topic < topics.size(); ++topic)
        for (size_t block = 0; block < topics[topic].blocks.size(); ++block) {
            const std::vector<std::wstring>& anchors = topics[topic].blocks[block].anchors;
            if (std::any_of(anchors.begin(), anchors.end(), isWanted))
                return TopicPlace{topic, block};
        }
    return std::nullopt;
}

// A title in one line.
std::wstring TitleOf(const Block& heading)
{
    std::wstring title = heading.Text();
    std::replace(title.begin(), title.end(), L'\v', L' ');
    return title;
}

} // namespace

std::vector<Topic> TopicsOf(Document document, const std::wstring& titleOfUntitled)
{
    std::vector<Topic> topics;
    for (Block& block : document.blocks) {
        if (BeginsTopic(block))
            topics.push_back({TitleOf(block), block.level, {}});
        else if (topics.empty())
            topics.emplace_back();
        topics.back().blocks.push_back(std::move(block));
    }
    if (topics.empty())
        topics.emplace_back();
    if (topics.front().title.empty())
        topics.front().title = document.title.empty() ? titleOfUntitled : document.title;
    return topics;
}

std::optional<TopicPlace> FindAnchor(const std::vector<Topic>& topics, const std::wstring& anchor)
{
    if (anchor.empty())
        return std::nullopt;
    if (const auto exact = PlaceOf(topics, [&](const std::wstring& one) { return one == anchor; }))
        return exact;
    const std::wstring small = InSmallLetters(anchor);
    return PlaceOf(topics, [&](const std::wstring& one) { return InSmallLetters(one) == small; });
}

} // namespace help
