// The activity timer's last tick in the settings, as the two halves of a TimeCount.
#pragma once

#include "app/registry_store.h"

// No tick is recorded: the timer is off.
void ClearLastTick(RegistryStore* settings);
