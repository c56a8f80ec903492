// The program's settings in the registry, read and written without it.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

// subkey is "Options", "Settings" or "Filter", or empty for the root key. Nothing when the value is not there
// or is of another type.
std::optional<DWORD> NumberSetting(const std::wstring& subkey, const wchar_t* name);
std::optional<std::wstring> TextSetting(const std::wstring& subkey, const wchar_t* name);
[[nodiscard]] bool StoreSetting(const std::wstring& subkey, const wchar_t* name, DWORD number);
[[nodiscard]] bool StoreSetting(const std::wstring& subkey, const wchar_t* name, const std::wstring& text);
// Any bytes as any type (REG_...).
[[nodiscard]] bool StoreRawSetting(const std::wstring& subkey, const wchar_t* name, DWORD type,
                                   const std::string& bytes);
// Whether there is such a subkey.
bool HasSettings(const std::wstring& subkey);
