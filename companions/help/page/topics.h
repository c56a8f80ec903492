// The topics of the help: each heading of the first two levels begins one.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "help/page/help_document.h"

namespace help {

struct Topic {
    std::wstring title;
    int level = 1;             // 1 or 2; one of level 2 belongs to the one of level 1 before it
    std::vector<Block> blocks; // its heading first, where it has one
};

// A place in the help: a topic, and a block in it.
struct TopicPlace {
    size_t topic = 0;
    size_t block = 0;
};

// At least one topic, which may be empty. What stands before the first heading is a topic with the document's
// title, or with the title given where it has none.
std::vector<Topic> TopicsOf(Document document, const std::wstring& titleOfUntitled);

// The place that the anchor names, first exactly, then without regard to case.
std::optional<TopicPlace> FindAnchor(const std::vector<Topic>& topics, const std::wstring& anchor);

} // namespace help
