// A topic as a text control shows it: one text, and what its parts look like and lead to. Places are counted
// in UTF-16 units from 0; each paragraph but the last ends with one L'\r', as the control counts.
#pragma once

#include <string>
#include <vector>

#include "help/page/help_document.h"

namespace help {

struct TextRange {
    size_t begin = 0;
    size_t end = 0; // behind the last
};

struct TextLink {
    TextRange range;
    std::wstring target;
};

struct TopicText {
    std::wstring text;
    std::vector<size_t> blocks;  // where each block begins
    std::vector<TextLink> links; // in the order of the text; none is empty
};

TopicText TextOf(const std::vector<Block>& blocks);

// What stands before a block's own text: an item's marker and a tab.
std::wstring LeadOf(const Block& block);

// The link that holds the place, or that ends there; null when none does.
const TextLink* LinkAt(const TopicText& text, size_t place);
// The first link behind the place, or the last one before it; null when there is none.
const TextLink* NextLink(const TopicText& text, size_t place);
const TextLink* PreviousLink(const TopicText& text, size_t place);

} // namespace help
