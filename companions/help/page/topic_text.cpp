#include "help/page/topic_text.h"

namespace help {

namespace {

// Neighbouring runs of one link (one of them bold, say) are one link.
void AddLink(TopicText& text, const Run& run, size_t begin)
{
    const size_t end = begin + run.text.size();
    if (!text.links.empty() && text.links.back().range.end == begin && text.links.back().target == run.target)
        text.links.back().range.end = end;
    else
        text.links.push_back({{begin, end}, run.target});
}

void AddBlock(TopicText& text, const Block& block)
{
    text.blocks.push_back(text.text.size());
    text.text += LeadOf(block);
    for (size_t cell = 0; cell < block.cells.size(); ++cell) {
        if (cell > 0)
            text.text += L'\t';
        for (const Run& run : block.cells[cell]) {
            if (!run.target.empty())
                AddLink(text, run, text.text.size());
            text.text += run.text;
        }
    }
}

} // namespace

std::wstring LeadOf(const Block& block)
{
    return block.kind == BlockKind::ListItem ? block.marker + L"\t" : std::wstring();
}

TopicText TextOf(const std::vector<Block>& blocks)
{
    TopicText text;
    for (const Block& block : blocks) {
        if (!text.blocks.empty())
            text.text += L'\r';
        AddBlock(text, block);
    }
    return text;
}

const TextLink* LinkAt(const TopicText& text, size_t place)
{
    for (const TextLink& link : text.links)
        if (link.range.begin <= place && place <= link.range.end)
            return &link;
    return nullptr;
}

const TextLink* NextLink(const TopicText& text, size_t place)
{
    for (const TextLink& link : text.links)
        if (link.range.begin >= place)
            return &link;
    return nullptr;
}

const TextLink* PreviousLink(const TopicText& text, size_t place)
{
    const TextLink* previous = nullptr;
    for (const TextLink& link : text.links)
        if (link.range.end <= place)
            previous = &link;
    return previous;
}

} // namespace help
