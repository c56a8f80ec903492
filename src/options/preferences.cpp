#include "options/preferences.h"

#include "editor/editor_settings.h"
#include "filter/filter_settings.h"

namespace {
constexpr const wchar_t* kOpenOnFind = L"OpenOnFind"; // nobody reads it but the dialog
} // namespace

Preferences ReadPreferences(const RegistryStore& settings)
{
    const auto isSet = [&](const wchar_t* name) { return settings.GetNumber(kOptions, name, 1) != 0; };
    return {isSet(kConfirmDelete), isSet(kOpenOnFind), isSet(kRememberFilter), isSet(kDispCats)};
}

void StorePreferences(RegistryStore& settings, const Preferences& preferences)
{
    settings.SetNumber(kOptions, kConfirmDelete, preferences.confirmDelete);
    settings.SetNumber(kOptions, kOpenOnFind, preferences.openOnFind);
    settings.SetNumber(kOptions, kDispCats, preferences.showCategories);
    settings.SetNumber(kOptions, kRememberFilter, preferences.rememberFilter);
}
