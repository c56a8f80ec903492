// The Options dialog (template 103): preferences and password.
#pragma once

#include <windows.h>

#include "settings/registry_store.h"

void RunOptions(HWND owner, RegistryStore& settings);
