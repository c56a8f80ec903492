// The settings that the editor reads and writes, each read where it is used.
#pragma once

#include <string>

#include "settings/registry_store.h"

// Of the subkey Options; the Options dialog stores them.
constexpr const wchar_t* kDispCats = L"DispCats";
constexpr const wchar_t* kConfirmDelete = L"ConfirmDelete";

bool ShowsCategories(const RegistryStore& settings);
bool UsesInputPanel(const RegistryStore& settings);
// Whether to ask before something is deleted.
bool ConfirmsDeletions(const RegistryStore& settings);

// A menu id of the zoom button; whatever number is stored.
DWORD StoredZoom(const RegistryStore& settings);
void StoreZoom(RegistryStore* settings, DWORD menuId);

// The type last saved with an entry; empty when there is none.
std::wstring LastType(const RegistryStore& settings);
void StoreLastType(RegistryStore* settings, const std::wstring& type);
