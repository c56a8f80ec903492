// How SQLite makes a file longer.
#pragma once

namespace mervane {

// From now on SQLite writes what it makes a file longer by, so that a full disk is an error it sees. The
// index of a write-ahead log is mapped: otherwise some systems look for room only when a page is first
// touched, and a full disk would be a fault that ends the program.
void GrowFilesByWriting();

} // namespace mervane
