#include "options/password.h"

#include "util/compare_text.h"

namespace {

constexpr const wchar_t* kText = L"vacc"; // as typed
constexpr const wchar_t* kIsSet = L"setpw";
constexpr const wchar_t* kAskAtStart = L"Password";
constexpr int kAttempts = 3;

std::wstring StoredText(const RegistryStore& settings)
{
    wchar_t text[kSettingTextSize];
    settings.GetString(kOptions, kText, L"", text);
    return text;
}

} // namespace

bool IsPasswordSet(const RegistryStore& settings)
{
    return settings.GetNumber(kOptions, kIsSet, 0) != 0;
}

bool CheckPassword(HWND owner, const RegistryStore& settings)
{
    std::wstring text;
    return AskPassword(owner, PasswordMode::Check, &text) &&
           IsSameForSystem(text, StoredText(settings), Case::Matters);
}

bool SetNewPassword(HWND owner, RegistryStore& settings)
{
    std::wstring text, again;
    if (!AskPassword(owner, PasswordMode::New, &text) || !AskPassword(owner, PasswordMode::Again, &again) ||
        !IsSameForSystem(text, again, Case::Matters))
        return false;
    settings.SetNumber(kOptions, kIsSet, 1);
    settings.SetString(kOptions, kText, text.c_str());
    return true;
}

// A write that fails is told of by the settings and returns no less than one that is done: what was written
// is read back; where that fails it counts as still there.
bool ClearPassword(RegistryStore& settings)
{
    settings.SetNumber(kOptions, kIsSet, 0);
    if (settings.GetNumber(kOptions, kIsSet, 1) != 0)
        return false;
    settings.SetString(kOptions, kText, L"");
    wchar_t text[kSettingTextSize];
    settings.GetString(kOptions, kText, L"?", text);
    return !*text;
}

void StoreAskAtStart(RegistryStore& settings, bool ask)
{
    settings.SetNumber(kOptions, kAskAtStart, ask);
}

bool UnlockAtStart(const RegistryStore& settings)
{
    if (!settings.GetNumber(kOptions, kAskAtStart, 0))
        return true;
    for (int attempt = 0; attempt < kAttempts; ++attempt)
        if (CheckPassword(nullptr, settings))
            return true;
    return false;
}
