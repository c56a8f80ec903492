// What Find keeps in the settings: the buttons chosen last and the history of search texts.
#pragma once

#include <string>
#include <vector>

#include "find/find_request.h"

class RegistryStore;

// The buttons are stored by their identifiers; any other number reads as the default.
CEPROPID ReadSearchBy(const RegistryStore& settings);     // the date unless stored
SearchFrom ReadSearchFrom(const RegistryStore& settings); // Top unless stored
bool ReadMatchCase(const RegistryStore& settings);        // off unless stored
void StoreFindChoices(RegistryStore* settings, const FindRequest& request);

int ButtonOf(SearchFrom from);

// Newest first, at most five; it ends at its first text that is empty, missing or too long to be read.
std::vector<std::wstring> ReadFindHistory(const RegistryStore& settings);
// Puts a text at the front; the fifth drops out. One that is there already, whatever its case, changes
// nothing.
void AddToFindHistory(RegistryStore* settings, const std::wstring& text);
