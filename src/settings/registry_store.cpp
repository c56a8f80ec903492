#include "settings/registry_store.h"

#include <algorithm>
#include <cwchar>
#include <utility>
#include <vector>

#include "ui/ownerless_box.h"

namespace {

constexpr DWORD kSubkeyNameSize = 160; // with the terminator

// Kept: it is looked for among the names, so that one that is there and does not open is a failure.
//
// The root's subkey of that name, spelt as it is stored; empty when there is none. A name too long for the
// buffer is a stranger's and must not hide those behind it.
std::wstring FindSubkeyName(HKEY root, const wchar_t* subkey)
{
    wchar_t name[kSubkeyNameSize];
    for (DWORD index = 0;; ++index) {
        DWORD length = kSubkeyNameSize;
        const LSTATUS status = RegEnumKeyExW(root, index, name, &length, nullptr, nullptr, nullptr, nullptr);
        if (status == ERROR_SUCCESS && _wcsicmp(name, subkey) == 0)
            return name;
        if (status != ERROR_SUCCESS && status != ERROR_MORE_DATA)
            return {};
    }
}

// The errors whose boxes stand, the innermost last.
std::vector<DWORD> g_reported;

void ReportFailure(LSTATUS status)
{
    if (status != ERROR_SUCCESS)
        RegistryStore::ReportError(static_cast<DWORD>(status));
}

constexpr DWORD kListNameSize = 64;    // with the terminator; a longer name is of no list
constexpr size_t kMostMissing = 1'000; // of a list's values

// The length of a list that ends with this value; 0 where it is not a value of the list, or is beyond the
// limit.
DWORD LengthUpTo(const wchar_t* name, const wchar_t* prefix, DWORD limit)
{
    const size_t letters = wcslen(prefix);
    if (_wcsnicmp(name, prefix, letters) != 0)
        return 0;
    const unsigned long long number = wcstoull(name + letters, nullptr, 10);
    const bool isOfList = number < limit && std::to_wstring(number) == name + letters;
    return isOfList ? static_cast<DWORD>(number) + 1 : 0;
}

// One key for the length of an operation: the root, which it borrows, or a subkey, which it closes.
class ScopedSubkey {
  public:
    // Never creates the subkey. One that is missing leaves no handle; one that does not open is reported too.
    static ScopedSubkey Find(HKEY root, const wchar_t* subkey)
    {
        if (!*subkey)
            return ScopedSubkey(root);
        const std::wstring name = FindSubkeyName(root, subkey);
        if (name.empty())
            return ScopedSubkey(nullptr);
        HKEY key = nullptr;
        ReportFailure(RegOpenKeyExW(root, name.c_str(), 0, KEY_ALL_ACCESS, &key));
        return ScopedSubkey(UniqueKey(key));
    }

    static ScopedSubkey Make(HKEY root, const wchar_t* subkey)
    {
        if (!*subkey)
            return ScopedSubkey(root);
        HKEY key = nullptr;
        ReportFailure(RegCreateKeyExW(root, subkey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
                                      nullptr, &key, nullptr));
        return ScopedSubkey(UniqueKey(key));
    }

    HKEY Handle() const { return m_key; }
    // Also when it did not open.
    bool Exists() const { return m_exists; }

  private:
    explicit ScopedSubkey(HKEY borrowed) : m_key(borrowed), m_exists(borrowed != nullptr) {}
    explicit ScopedSubkey(UniqueKey owned) : m_owned(std::move(owned)), m_key(m_owned.get()), m_exists(true)
    {}

    UniqueKey m_owned;
    HKEY m_key;
    bool m_exists;
};

void WriteValue(HKEY key, const wchar_t* name, DWORD type, const void* data, size_t bytes)
{
    ReportFailure(
        RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(bytes)));
}

} // namespace

RegistryStore::~RegistryStore()
{
    if (m_root)
        ReportFailure(RegCloseKey(m_root.release()));
}

int RegistryStore::Open(const wchar_t* path)
{
    m_path = path;
    HKEY root = nullptr;
    const LSTATUS status = RegCreateKeyExW(HKEY_CURRENT_USER, m_path.c_str(), 0, nullptr,
                                           REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr, &root, nullptr);
    m_root.reset(root);
    ReportFailure(status);
    return status == ERROR_SUCCESS;
}

DWORD RegistryStore::GetNumber(const wchar_t* subkey, const wchar_t* name, DWORD defaultValue) const
{
    const ScopedSubkey key = ScopedSubkey::Find(m_root.get(), subkey);
    DWORD value = 0;
    DWORD bytes = sizeof value;
    const LSTATUS status =
        RegQueryValueExW(key.Handle(), name, nullptr, nullptr, reinterpret_cast<BYTE*>(&value), &bytes);
    return status == ERROR_SUCCESS && bytes == sizeof value ? value : defaultValue;
}

// What is stored may be of any type and any length: it is terminated here, and a text that fills the whole
// buffer is one that is too long.
void RegistryStore::GetString(const wchar_t* subkey, const wchar_t* name, const wchar_t* defaultText,
                              wchar_t* text) const
{
    const ScopedSubkey key = ScopedSubkey::Find(m_root.get(), subkey);
    wchar_t stored[kSettingTextSize + 1];
    DWORD bytes = kSettingTextSize * sizeof *stored;
    const LSTATUS status =
        RegQueryValueExW(key.Handle(), name, nullptr, nullptr, reinterpret_cast<BYTE*>(stored), &bytes);
    stored[status == ERROR_SUCCESS ? bytes / sizeof *stored : 0] = L'\0';
    const bool fits = status == ERROR_SUCCESS && wcslen(stored) < kSettingTextSize;
    lstrcpynW(text, fits ? stored : defaultText, kSettingTextSize);
}

int RegistryStore::SetNumber(const wchar_t* subkey, const wchar_t* name, DWORD value)
{
    const ScopedSubkey key = ScopedSubkey::Make(m_root.get(), subkey);
    WriteValue(key.Handle(), name, REG_DWORD, &value, sizeof value);
    return 1;
}

int RegistryStore::SetString(const wchar_t* subkey, const wchar_t* name, const wchar_t* text)
{
    const ScopedSubkey key = ScopedSubkey::Make(m_root.get(), subkey);
    WriteValue(key.Handle(), name, REG_SZ, text, (wcslen(text) + 1) * sizeof *text);
    return 1;
}

int RegistryStore::RemoveValue(const wchar_t* subkey, const wchar_t* name)
{
    if (!*subkey)
        return 1;
    const ScopedSubkey key = ScopedSubkey::Find(m_root.get(), subkey);
    if (!key.Exists())
        return 1;
    const LSTATUS status = RegDeleteValueW(key.Handle(), name);
    return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

DWORD RegistryStore::ListLength(const wchar_t* subkey, const wchar_t* prefix, DWORD limit) const
{
    const ScopedSubkey key = ScopedSubkey::Find(m_root.get(), subkey);
    wchar_t name[kListNameSize];
    LSTATUS status = key.Handle() ? ERROR_SUCCESS : ERROR_NO_MORE_ITEMS;
    std::vector<DWORD> lengths; // up to each of the list's values
    for (DWORD index = 0; status == ERROR_SUCCESS || status == ERROR_MORE_DATA; ++index) {
        DWORD size = kListNameSize;
        status = RegEnumValueW(key.Handle(), index, name, &size, nullptr, nullptr, nullptr, nullptr);
        if (status == ERROR_SUCCESS)
            if (const DWORD length = LengthUpTo(name, prefix, limit))
                lengths.push_back(length);
    }
    std::erase_if(lengths, [most = lengths.size() + kMostMissing](DWORD length) { return length > most; });
    return lengths.empty() ? 0 : *std::max_element(lengths.begin(), lengths.end());
}

int RegistryStore::FindListString(const wchar_t* subkey, const wchar_t* prefix, const wchar_t* text,
                                  int count, DWORD flags) const
{
    for (int i = 0; i < count; ++i) {
        wchar_t value[kSettingTextSize];
        GetString(subkey, (prefix + std::to_wstring(i)).c_str(), L"", value);
        if (!*value)
            return 0;
        if (CompareStringW(LOCALE_SYSTEM_DEFAULT, flags, text, -1, value, -1) == CSTR_EQUAL)
            return i + 1;
    }
    return 0;
}

// Without the insertions of a message that has some, which nobody here could supply. A timer that stores
// something would put up a box with every tick while nobody answers the first: that one says it already.
void RegistryStore::ReportError(DWORD code)
{
    if (std::find(g_reported.begin(), g_reported.end(), code) != g_reported.end())
        return;
    g_reported.push_back(code);
    wchar_t* text = nullptr;
    FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
        code, MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT), reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    const LocalBlock<wchar_t> owner(text);
    ShowOwnerlessBox(text ? text : L"", L"Error", MB_ICONINFORMATION);
    g_reported.pop_back();
}
