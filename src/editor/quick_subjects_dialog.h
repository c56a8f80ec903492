// The Quick Subjects dialog, in which the user keeps the list of ready-made subjects.
#pragma once

#include <windows.h>

#include "settings/registry_store.h"

// Runs it modally. 1 when it was closed with OK and the subjects are stored, 0 otherwise.
int RunQuickSubjects(HWND owner, RegistryStore& settings);
