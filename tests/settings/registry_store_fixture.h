// A registry store over a key of the test's own.
#pragma once

#include <gtest/gtest.h>

#include <shlwapi.h>

#include <string>
#include <vector>

#include "settings/registry_store.h"
#include "support/test_windows.h"

inline constexpr const wchar_t* kPath = L"Software\\Quillmarsh\\Store Test";

inline std::wstring SystemMessage(DWORD code)
{
    wchar_t text[512] = L"";
    EXPECT_NE(FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0,
                             text, 512, nullptr),
              0u);
    return text;
}

inline UniqueKey Key(const std::wstring& path)
{
    HKEY key = nullptr;
    RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_ALL_ACCESS, &key);
    return UniqueKey(key);
}

inline UniqueKey Subkey(const wchar_t* name)
{
    return Key(std::wstring(kPath) + L"\\" + name);
}

inline constexpr const wchar_t* kLinkName = L"Options";

// Deletes a key itself, where every ordinary way would go on to a link's target.
inline void DeleteLink()
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(Key(kPath).get(), kLinkName, REG_OPTION_OPEN_LINK, KEY_ALL_ACCESS, &key) !=
        ERROR_SUCCESS)
        return;
    const UniqueKey owner(key);
    using DeleteKey = LONG(WINAPI*)(HKEY);
    const FARPROC address = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtDeleteKey");
    ASSERT_NE(address, nullptr);
    EXPECT_EQ(reinterpret_cast<DeleteKey>(reinterpret_cast<void*>(address))(key), 0);
}

inline void DeleteTestKey()
{
    DeleteLink();
    SHDeleteKeyW(HKEY_CURRENT_USER, kPath);
}

class RegistryStoreTest : public testing::Test {
  protected:
    RegistryStoreTest()
    {
        DeleteTestKey();
        EXPECT_EQ(m_store.Open(kPath), 1);
    }
    ~RegistryStoreTest() override { DeleteTestKey(); }

    std::wstring Text(const wchar_t* subkey, const wchar_t* name,
                      const wchar_t* defaultText = L"default") const
    {
        // One character more than there is room for, to see that nothing is written there.
        wchar_t text[kSettingTextSize + 1];
        std::fill(std::begin(text), std::end(text), L'#');
        m_store.GetString(subkey, name, defaultText, text);
        EXPECT_EQ(text[kSettingTextSize], L'#');
        EXPECT_LT(wcsnlen(text, kSettingTextSize), static_cast<size_t>(kSettingTextSize));
        return text;
    }

    // Stores raw bytes of any type in "Options".
    void StoreRaw(const wchar_t* name, DWORD type, const std::vector<BYTE>& bytes)
    {
        HKEY key = nullptr;
        ASSERT_EQ(RegCreateKeyExW(Key(kPath).get(), L"Options", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                                  nullptr),
                  ERROR_SUCCESS);
        const UniqueKey owner(key);
        ASSERT_EQ(RegSetValueExW(key, name, 0, type, bytes.data(), static_cast<DWORD>(bytes.size())),
                  ERROR_SUCCESS);
    }

    // Makes kLinkName a subkey that the enumeration shows and that cannot be opened: a link to nowhere.
    void MakeDeadLink()
    {
        HKEY key = nullptr;
        ASSERT_EQ(RegCreateKeyExW(Key(kPath).get(), kLinkName, 0, nullptr, REG_OPTION_CREATE_LINK,
                                  KEY_ALL_ACCESS, nullptr, &key, nullptr),
                  ERROR_SUCCESS);
        const UniqueKey owner(key);
        const std::wstring target = L"\\Registry\\Machine\\Software\\Nowhere\\At All";
        ASSERT_EQ(RegSetValueExW(key, L"SymbolicLinkValue", 0, REG_LINK,
                                 reinterpret_cast<const BYTE*>(target.data()),
                                 static_cast<DWORD>(target.size() * sizeof(wchar_t))),
                  ERROR_SUCCESS);
    }

    RegistryStore m_store;
};
