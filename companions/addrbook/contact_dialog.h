// The window in which one contact is made or changed.
#pragma once

#include <windows.h>

#include <functional>

#include "addrbook/contact.h"

namespace addrbook {

// save is called with the contact as it stands when OK is pressed; while it answers false the window stays
// open. True when something was saved.
bool EditContact(HINSTANCE instance, HWND owner, const Contact& contact, bool isNew,
                 const std::function<bool(const Contact&)>& save);

} // namespace addrbook
