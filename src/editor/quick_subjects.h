// The user's ready-made subjects in the settings: how many there are under "Settings", the texts under
// "Options".
#pragma once

#include <string>
#include <vector>

#include "settings/registry_store.h"

constexpr const wchar_t* kSubjectCount = L"scount";

// In list order, as many as the count says, but none behind the last one that is stored. One that is missing
// or too long for a setting is empty.
std::vector<std::wstring> ReadQuickSubjects(const RegistryStore& settings);
// What a longer list has left behind it stays where it is.
void StoreQuickSubjects(RegistryStore* settings, const std::vector<std::wstring>& subjects);
