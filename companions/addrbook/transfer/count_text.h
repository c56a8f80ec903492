// "1 contact", "12,345 contacts".
#pragma once

#include <string>

namespace addrbook {

// The digits in groups, as the user's locale has them.
std::wstring CountText(size_t count, const wchar_t* one, const wchar_t* many);

} // namespace addrbook
