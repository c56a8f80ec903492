// Comparing texts: by the locale of the user, for what a person sorts and finds by; by the system's, for what
// is stored and has to be the same for every user; by their characters, for names that programs go by.
#pragma once

#include <string_view>

enum class Case { Matters, Ignored };

bool IsSameForUser(std::wstring_view a, std::wstring_view b, Case letters);
// Whether a comes behind b, without regard to case.
bool IsBehindForUser(std::wstring_view a, std::wstring_view b);
bool IsSameForSystem(std::wstring_view a, std::wstring_view b, Case letters);
// Without regard to case.
bool IsSameName(std::wstring_view a, std::wstring_view b);
bool NameStartsWith(std::wstring_view name, std::wstring_view start);
bool NameEndsWith(std::wstring_view name, std::wstring_view end);
