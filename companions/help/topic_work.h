// What it takes to show a topic. To break one line the system's control measures all that is left of the
// paragraph, and it lays a paragraph out anew for each link that it is told of. So one long line, or many
// links in one paragraph, take the square of their number: a page of 512 KiB would keep the window for
// minutes.
#pragma once

#include <cstdint>
#include <vector>

#include "help/page/help_document.h"

namespace help {

constexpr uint64_t kMostWork = 100'000'000; // less than a second

// In steps of its own, whatever the machine.
uint64_t WorkOf(const std::vector<Block>& topic);

} // namespace help
