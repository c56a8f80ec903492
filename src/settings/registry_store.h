// RegistryStore: the program's settings under one key of HKEY_CURRENT_USER, read where they are used, each
// time, with that reader's default. Nothing is cached.
#pragma once

#include <windows.h>

#include <string>

#include "util/owners.h"

// The journal's root key.
constexpr const wchar_t* kRegistryPath = L"Software\\Quillmarsh\\Journal";

constexpr int kSettingTextSize = 156; // with the terminator; a longer stored text reads as the default

// Subkeys.
constexpr const wchar_t* kOptions = L"Options";
constexpr const wchar_t* kSettings = L"Settings";
constexpr const wchar_t* kFilter = L"Filter";

class RegistryStore {
  public:
    RegistryStore() = default;
    virtual ~RegistryStore();
    RegistryStore(const RegistryStore&) = delete;
    RegistryStore& operator=(const RegistryStore&) = delete;

    // Opens or creates the root key. 1 on success, 0 on failure (reported).
    int Open(const wchar_t* path);

    // An empty subkey name means the root key itself, for every operation but RemoveValue. Subkey names match
    // without regard to case. Reads never create a subkey and never report a missing one.
    // Four bytes of any type are a number; fewer or more read as the default.
    DWORD GetNumber(const wchar_t* subkey, const wchar_t* name, DWORD defaultValue) const;
    // text has room for kSettingTextSize characters and is always terminated; a longer default is cut. The
    // bytes of any type are a text, up to its first NUL; an odd last byte is dropped.
    void GetString(const wchar_t* subkey, const wchar_t* name, const wchar_t* defaultText,
                   wchar_t* text) const;
    // Always 1; a failure is reported.
    int SetNumber(const wchar_t* subkey, const wchar_t* name, DWORD value);
    int SetString(const wchar_t* subkey, const wchar_t* name, const wchar_t* text);
    // 1 when deleted or when there was nothing to delete, 0 when the deletion failed, which is not reported.
    int RemoveValue(const wchar_t* subkey, const wchar_t* name);
    // Of the values prefix0, prefix1, ... before the limit: one more than the highest number that is stored,
    // whatever is missing before it; 0 where there is none. A number with more than a thousand missing before
    // it does not belong to the list.
    DWORD ListLength(const wchar_t* subkey, const wchar_t* prefix, DWORD limit) const;
    // The 1-based index of the first of the values prefix0, prefix1, ... that equals the text, by
    // CompareStringW with the flags, or 0. The list ends at its first empty or missing value, at the latest
    // after count values.
    int FindListString(const wchar_t* subkey, const wchar_t* prefix, const wchar_t* text, int count,
                       DWORD flags = 0) const;

    // Shows the system's text for an error code in a box titled "Error"; not again while the box for the same
    // code stands.
    static void ReportError(DWORD code);

  private:
    UniqueKey m_root;
    std::wstring m_path;
};
