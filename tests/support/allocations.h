// How often and how much the program has asked for memory: work that can be counted, whatever the machine
// does.
#pragma once

#include <cstddef>

struct Allocations {
    size_t count;
    size_t bytes;
};
// Since the program's start.
Allocations AllocationsSoFar();
