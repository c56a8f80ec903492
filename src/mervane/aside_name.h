// Names for what is put aside beside a store.
#pragma once

#include <string>

namespace mervane {

// The local time, "20260131-184500".
std::wstring NameOfNow();

} // namespace mervane
