// A store as a plain connection sees it, past the library and past faults.
#pragma once

#include <string>

// Every value of every record of the journal's tables, with its type, and the highest identifiers so far: two
// stores with the same text hold the same. "error: " and why when it cannot be read as a whole.
std::string DumpStore(const std::wstring& path);

// "ok", or what is broken.
std::string CheckStore(const std::wstring& path);

// Runs statements; false when one fails.
[[nodiscard]] bool RunInStore(const std::wstring& path, const std::string& sql);
