#include "options/preferences.h"

namespace {

constexpr const wchar_t* kConfirmDelete = L"ConfirmDelete";
constexpr const wchar_t* kOpenOnFind = L"OpenOnFind";
constexpr const wchar_t* kRememberFilter = L"RememberFilter";
constexpr const wchar_t* kShowCategories = L"DispCats";

} // namespace

Preferences ReadPreferences(const RegistryStore& settings)
{
    const auto isSet = [&](const wchar_t* name) { return settings.GetNumber(kOptions, name, 1) != 0; };
    return {isSet(kConfirmDelete), isSet(kOpenOnFind), isSet(kRememberFilter), isSet(kShowCategories)};
}

void StorePreferences(RegistryStore& settings, const Preferences& preferences)
{
    settings.SetNumber(kOptions, kConfirmDelete, preferences.confirmDelete);
    settings.SetNumber(kOptions, kOpenOnFind, preferences.openOnFind);
    settings.SetNumber(kOptions, kShowCategories, preferences.showCategories);
    settings.SetNumber(kOptions, kRememberFilter, preferences.rememberFilter);
}
