#include "editor/editor_settings.h"

#include "res/resource.h"

namespace {
constexpr const wchar_t* kDynSip = L"DynSIP";
constexpr const wchar_t* kZoom = L"iZoom";
constexpr const wchar_t* kLastType = L"selType";
} // namespace

bool ShowsCategories(const RegistryStore& settings)
{
    return settings.GetNumber(kOptions, kDispCats, 1) != 0;
}

bool UsesInputPanel(const RegistryStore& settings)
{
    return settings.GetNumber(kOptions, kDynSip, 1) != 0;
}

bool ConfirmsDeletions(const RegistryStore& settings)
{
    return settings.GetNumber(kOptions, kConfirmDelete, 1) != 0;
}

DWORD StoredZoom(const RegistryStore& settings)
{
    return settings.GetNumber(kSettings, kZoom, CMD_ZOOM_100);
}

void StoreZoom(RegistryStore* settings, DWORD menuId)
{
    settings->SetNumber(kSettings, kZoom, menuId);
}

std::wstring LastType(const RegistryStore& settings)
{
    wchar_t type[kSettingTextSize];
    settings.GetString(kSettings, kLastType, L"", type);
    return type;
}

void StoreLastType(RegistryStore* settings, const std::wstring& type)
{
    settings->SetString(kSettings, kLastType, type.c_str());
}
