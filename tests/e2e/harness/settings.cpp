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
