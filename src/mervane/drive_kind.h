// What kind of drive a file is on.
#pragma once

#include <string>

namespace mervane {

// Whether the file lies, or would, on a drive that is built into this machine: a mapping of it stays
// readable. One that can be pulled out, a network's, and one that is not known are none.
bool IsOnFixedDrive(const std::wstring& path);

} // namespace mervane
