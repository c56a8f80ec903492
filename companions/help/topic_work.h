// What it takes to show a topic. The control of the system breaks a line by measuring all that is left of its
// paragraph, and lays a paragraph out anew for each link that it is told of, so that one long line or many
// links in one paragraph take the square of their number: a page of 512 KiB would keep the window for
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
