// The user's ready-made subjects in the settings: how many there are under "Settings", the texts under
// "Options".
#pragma once

#include <string>
#include <vector>

#include "app/registry_store.h"

constexpr const wchar_t* kSubjectCount = L"scount";

// In list order. Subjects that are missing, empty or too long for a setting are passed over.
std::vector<std::wstring> ReadQuickSubjects(const RegistryStore& settings);
// What a longer list has left behind it stays where it is.
void StoreQuickSubjects(RegistryStore* settings, const std::vector<std::wstring>& subjects);
