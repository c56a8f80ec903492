// The user's preferences as the Options dialog shows and stores them. Whoever acts on one reads it for
// himself, each time.
#pragma once

#include "settings/registry_store.h"

struct Preferences {
    bool confirmDelete = true;
    bool openOnFind = true;     // stored only: nobody reads it
    bool rememberFilter = true; // a filter takes it as off while it is not stored
    bool showCategories = true;
};

Preferences ReadPreferences(const RegistryStore& settings);
void StorePreferences(RegistryStore& settings, const Preferences& preferences);
