// What kind of drive a file is on.
#pragma once

#include <windows.h>
#include <winioctl.h>

#include <string>

namespace mervane {

// Whether the file lies, or would, on a drive that the system takes for one of this machine: no network's,
// and none whose medium comes out.
bool IsOnOwnDrive(const std::wstring& path);

// Whether the file lies, or would, on a drive that is built into this machine: a mapping of it stays
// readable. Not: a drive that can be pulled out as a whole, a network's, and one that does not say what it
// is.
bool IsOnFixedDrive(const std::wstring& path);

// Whether a device is built in, by what it tells of itself.
bool IsBuiltIn(const STORAGE_DEVICE_DESCRIPTOR& device);

} // namespace mervane
