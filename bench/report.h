// The table that a run prints.
#pragma once

#include <cstdint>

namespace bench {

void PrintHeading(const char* text);
// Two medians in microseconds, their ratio and its limit; limit 0: told for information.
void PrintRatio(const char* what, double measured, double against, double limit);
// A count with the value it must have; -1: told for information.
void PrintCount(const char* what, uint64_t count, int wanted = -1);
void PrintNote(const char* text);

} // namespace bench
