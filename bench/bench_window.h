// What the bench and the empty window's program both know.
#pragma once

namespace bench {

constexpr const wchar_t* kEmptyWindowClass = L"BenchEmptyWindow";

} // namespace bench
