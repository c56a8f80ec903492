// Names for what is put aside beside a store.
#pragma once

#include <functional>
#include <string>

namespace mervane {

// The local time, "20260131-184500", and where that is not free "20260131-184500-2" and so on.
std::wstring FreeNameOfNow(const std::function<bool(const std::wstring& name)>& isFree);

// A path of that, which no file has. start: all before the time.
std::wstring FreePathOfNow(const std::wstring& start);

} // namespace mervane
