// Find in the help: from a place on through all topics and round to it again.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "help/page/topic_text.h"

namespace help {

struct TextPlace {
    size_t topic = 0;
    TextRange range; // in the topic's text
};

// The next place of the text behind `from` (forwards: from the end of its range, backwards: before its
// beginning), without regard to case. It may be `from` itself when there is no other.
std::optional<TextPlace> FindInTopics(const std::vector<std::wstring>& topics, const std::wstring& text,
                                      const TextPlace& from, bool backwards);

// In small letters, of the same length.
std::wstring Folded(const std::wstring& text);

} // namespace help
