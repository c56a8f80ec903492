// Wine's server, which answers what programs ask of the system, and the processors that it and this program
// run on.
#pragma once

namespace bench {

// False outside Wine, or when run.sh has not named the server's process (BENCH_WINESERVER).
bool KnowsWineServer();
// Holds this program to the first processor and the server to the given one; returns when both are so.
void PinServer(int processor);

} // namespace bench
