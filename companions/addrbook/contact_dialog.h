// The window in which one contact is made or changed.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "formats/vcard/contact.h"

namespace addrbook {

struct SaveAnswer {
    bool isSaved = false;
    std::wstring why; // it is not, for a box; empty: the person knows
};
// Called with the contact as it stands when OK is pressed, and the window for boxes; while it is not saved
// the window stays open.
using ContactSave = std::function<SaveAnswer(HWND dialog, const vcard::Contact& contact)>;

// True when something was saved.
bool EditContact(HINSTANCE instance, HWND owner, const vcard::Contact& contact, bool isNew,
                 const ContactSave& save);

} // namespace addrbook
