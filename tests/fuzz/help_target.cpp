#include <algorithm>

#include "help/page/find_in_topics.h"
#include "help/page/html_reader.h"
#include "help/page/page_text.h"
#include "help/page/print_layout.h"
#include "help/page/rtf_writer.h"
#include "help/page/topic_text.h"
#include "help/page/topics.h"
#include "targets.h"

namespace fuzz {

namespace {

using namespace help;

bool IsSound(const Block& block)
{
    const bool hasLevel = block.kind == BlockKind::Heading || block.kind == BlockKind::ListItem;
    const int most = block.kind == BlockKind::Heading ? 6 : kMaxListDepth;
    if (block.cells.empty() || (hasLevel && (block.level < 1 || block.level > most)))
        return false;
    for (const std::vector<Run>& cell : block.cells)
        if (std::any_of(cell.begin(), cell.end(), [](const Run& run) { return run.text.empty(); }))
            return false;
    return true;
}

bool LinksAreInOrder(const TopicText& text)
{
    size_t place = 0;
    for (const TextLink& link : text.links) {
        if (link.range.begin < place || link.range.end <= link.range.begin || link.target.empty())
            return false;
        place = link.range.end;
    }
    return place <= text.text.size();
}

// In ASCII, its braces in pairs.
bool IsSoundRtf(const std::string& rtf)
{
    int depth = 0;
    for (size_t i = 0; i < rtf.size(); ++i) {
        if (static_cast<unsigned char>(rtf[i]) >= 0x7F)
            return false;
        if (rtf[i] == '\\')
            ++i;
        else
            depth += rtf[i] == '{' ? 1 : rtf[i] == '}' ? -1 : 0;
        if (depth < 0 || (depth == 0 && i + 1 < rtf.size()))
            return false;
    }
    return depth == 0;
}

bool IsOnPage(const PlacedText& placed, const PrintArea& area)
{
    return placed.page >= 0 && placed.y >= area.top && placed.x >= area.left;
}

std::string TryPrint(const std::vector<Block>& blocks, const PrintArea& area)
{
    const auto measure = [](const std::wstring& text, const PrintLook& look) {
        return PrintSize{static_cast<int>(text.size()) * look.points, 2 * look.points};
    };
    int page = 0;
    for (const PlacedText& placed : LayOut(blocks, area, measure)) {
        if (!IsOnPage(placed, area) || placed.page < page)
            return "what is printed stands beside the page";
        page = placed.page;
    }
    return {};
}

std::string TryTopic(const Topic& topic, const std::vector<Topic>& topics)
{
    const TopicText text = TextOf(topic.blocks);
    if (text.blocks.size() != topic.blocks.size() || !LinksAreInOrder(text))
        return "a topic's links do not lie in its text";
    for (const TextLink& link : text.links)
        if (const auto place = FindAnchor(topics, link.target.substr(1));
            place && place->block >= topics[place->topic].blocks.size())
            return "a link leads beside the topics";
    for (const int width : {1, 580, 2900})
        if (!IsSoundRtf(RtfOf(topic.blocks, width)))
            return "the rich text is not whole";
    const std::string broken = TryPrint(topic.blocks, {96, 100, 200, 600, 800});
    return broken.empty() ? TryPrint(topic.blocks, {96, 0, 0, 1, 1}) : broken;
}

std::string TryFind(const std::vector<std::wstring>& texts, const std::wstring& page)
{
    const std::wstring wanted = page.substr(page.size() / 2, 2);
    for (const bool backwards : {false, true}) {
        const auto found = FindInTopics(texts, wanted, {}, backwards);
        if (found && (found->topic >= texts.size() || found->range.end > texts[found->topic].size() ||
                      found->range.end - found->range.begin != wanted.size()))
            return "what was found lies beside the topics";
    }
    return {};
}

} // namespace

std::string TryHelpPage(std::string_view bytes)
{
    (void)IsText(bytes);
    const std::wstring page = DecodeText(bytes);
    Document document = ReadHtml(page);
    if (!std::all_of(document.blocks.begin(), document.blocks.end(), IsSound))
        return "a block is not sound";
    const std::vector<Topic> topics = TopicsOf(std::move(document), L"Untitled");
    if (topics.empty())
        return "there is no topic";
    std::vector<std::wstring> texts;
    for (const Topic& topic : topics) {
        const std::string broken = TryTopic(topic, topics);
        if (!broken.empty())
            return broken;
        texts.push_back(TextOf(topic.blocks).text);
    }
    return TryFind(texts, page);
}

} // namespace fuzz
