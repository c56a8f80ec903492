// The journal's password: it guards the opening of the journal on this device; it does not encipher the data.
#pragma once

#include <windows.h>

#include <string>

#include "settings/registry_store.h"

constexpr int kPasswordMax = 8; // characters that are taken; what is typed beyond them does not count

// What the password is asked for; also the title of the prompt.
enum class PasswordMode { New = 0x1, Again = 0x10, Check = 0x100 };

// Asks in the prompt (dialog 105) over the owner. False when it was cancelled; *text is set after OK only.
[[nodiscard]] bool AskPassword(HWND owner, PasswordMode mode, std::wstring* text);

// Whether a password is set.
bool IsPasswordSet(const RegistryStore& settings);
// True only when OK was chosen and the text is the stored one. The case matters.
[[nodiscard]] bool CheckPassword(HWND owner, const RegistryStore& settings);
// Asks for a new password twice. Stored, and true, when both texts are the same.
[[nodiscard]] bool SetNewPassword(HWND owner, RegistryStore& settings);
// False, and the text is left, where it stays set, or only its text stays.
[[nodiscard]] bool ClearPassword(RegistryStore& settings);

// Whether the next start asks: only the Options dialog's OK stores it.
void StoreAskAtStart(RegistryStore& settings, bool ask);
// At the start: true when the password is not asked for or was given at the latest at the third attempt.
[[nodiscard]] bool UnlockAtStart(const RegistryStore& settings);
