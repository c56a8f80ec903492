#include "e2e/harness/settings.h"

namespace {

constexpr DWORD kTextSize = 512; // characters

std::wstring KeyPath(const std::wstring& subkey)
{
    const std::wstring root = L"Software\\Quillmarsh\\Journal";
    return subkey.empty() ? root : root + L"\\" + subkey;
}

} // namespace

std::optional<DWORD> NumberSetting(const std::wstring& subkey, const wchar_t* name)
{
    DWORD number = 0;
    DWORD size = sizeof number;
    if (RegGetValueW(HKEY_CURRENT_USER, KeyPath(subkey).c_str(), name, RRF_RT_REG_DWORD, nullptr, &number,
                     &size))
        return std::nullopt;
    return number;
}

std::optional<std::wstring> TextSetting(const std::wstring& subkey, const wchar_t* name)
{
    wchar_t text[kTextSize];
    DWORD size = sizeof text;
    if (RegGetValueW(HKEY_CURRENT_USER, KeyPath(subkey).c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size))
        return std::nullopt;
    return text;
}

bool StoreSetting(const std::wstring& subkey, const wchar_t* name, DWORD number)
{
    return RegSetKeyValueW(HKEY_CURRENT_USER, KeyPath(subkey).c_str(), name, REG_DWORD, &number,
                           sizeof number) == ERROR_SUCCESS;
}

bool StoreSetting(const std::wstring& subkey, const wchar_t* name, const std::wstring& text)
{
    const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    return RegSetKeyValueW(HKEY_CURRENT_USER, KeyPath(subkey).c_str(), name, REG_SZ, text.c_str(), size) ==
           ERROR_SUCCESS;
}

bool StoreRawSetting(const std::wstring& subkey, const wchar_t* name, DWORD type, const std::string& bytes)
{
    return RegSetKeyValueW(HKEY_CURRENT_USER, KeyPath(subkey).c_str(), name, type, bytes.data(),
                           static_cast<DWORD>(bytes.size())) == ERROR_SUCCESS;
}

bool HasSettings(const std::wstring& subkey)
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, KeyPath(subkey).c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
        return false;
    RegCloseKey(key);
    return true;
}
