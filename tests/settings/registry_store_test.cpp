#include "settings/registry_store_fixture.h"

#include "support/import_watch.h"

namespace {

TEST_F(RegistryStoreTest, OpenCreatesTheRoot)
{
    EXPECT_TRUE(Key(kPath));
    RegistryStore second;
    EXPECT_EQ(second.Open(kPath), 1);
}

TEST_F(RegistryStoreTest, AFailedOpenIsReportedAndReadsAreDefaults)
{
    const MessageBoxAnswerer answerer;
    RegistryStore store;
    EXPECT_EQ(store.Open(std::wstring(300, L'x').c_str()), 0);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].caption, L"Error");
    EXPECT_EQ(store.GetNumber(L"Options", L"Password", 7), 7u);
    EXPECT_EQ(store.GetNumber(L"", L"Password", 8), 8u);
    EXPECT_EQ(store.RemoveValue(L"Options", L"Password"), 1);
    EXPECT_EQ(store.FindListString(L"Options", L"Find", L"x", 5), 0);
    EXPECT_EQ(answerer.Boxes().size(), 1u);
}

TEST_F(RegistryStoreTest, AStoreThatWasNeverOpenedReadsDefaults)
{
    const RegistryStore store;
    EXPECT_EQ(store.GetNumber(L"Options", L"Password", 7), 7u);
    wchar_t text[kSettingTextSize];
    store.GetString(L"", L"vacc", L"mine", text);
    EXPECT_STREQ(text, L"mine");
}

TEST_F(RegistryStoreTest, NumbersReadAsWritten)
{
    EXPECT_EQ(m_store.SetNumber(L"Options", L"sort", 0x00650040), 1);
    EXPECT_EQ(m_store.GetNumber(L"Options", L"sort", 0), 0x00650040u);
    m_store.SetNumber(L"Options", L"sort", 0xFFFFFFFF);
    EXPECT_EQ(m_store.GetNumber(L"Options", L"sort", 0), 0xFFFFFFFFu);
    m_store.SetNumber(L"Options", L"sort", 0);
    EXPECT_EQ(m_store.GetNumber(L"Options", L"sort", 5), 0u);
}

TEST_F(RegistryStoreTest, ANumberIsStoredAsADoubleWord)
{
    m_store.SetNumber(L"Options", L"n", 0x01020304);
    DWORD type = 0;
    BYTE bytes[16];
    DWORD count = sizeof bytes;
    ASSERT_EQ(RegQueryValueExW(Subkey(L"Options").get(), L"n", nullptr, &type, bytes, &count), ERROR_SUCCESS);
    EXPECT_EQ(type, static_cast<DWORD>(REG_DWORD));
    EXPECT_EQ(std::vector<BYTE>(bytes, bytes + count), (std::vector<BYTE>{4, 3, 2, 1}));
}

TEST_F(RegistryStoreTest, TextsReadAsWritten)
{
    EXPECT_EQ(m_store.SetString(L"Settings", L"selType", L"Phone \x4e2d call"), 1);
    EXPECT_EQ(Text(L"Settings", L"selType"), L"Phone \x4e2d call");
    m_store.SetString(L"Settings", L"selType", L"");
    EXPECT_EQ(Text(L"Settings", L"selType"), L"");
}

TEST_F(RegistryStoreTest, ATextIsStoredWithItsTerminator)
{
    m_store.SetString(L"Settings", L"t", L"abc");
    DWORD type = 0;
    wchar_t text[16];
    DWORD count = sizeof text;
    ASSERT_EQ(RegQueryValueExW(Subkey(L"Settings").get(), L"t", nullptr, &type, reinterpret_cast<BYTE*>(text),
                               &count),
              ERROR_SUCCESS);
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(count, 8u);
    EXPECT_EQ(std::wstring(text, 4), std::wstring(L"abc\0", 4));
    m_store.SetString(L"Settings", L"t", L"");
    count = sizeof text;
    ASSERT_EQ(RegQueryValueExW(Subkey(L"Settings").get(), L"t", nullptr, &type, reinterpret_cast<BYTE*>(text),
                               &count),
              ERROR_SUCCESS);
    EXPECT_EQ(count, 2u);
}

TEST_F(RegistryStoreTest, MissingValuesAndSubkeysReadAsDefaults)
{
    EXPECT_EQ(m_store.GetNumber(L"Options", L"none", 42), 42u);
    EXPECT_EQ(Text(L"Options", L"none", L"text"), L"text");
    m_store.SetNumber(L"Options", L"there", 1);
    EXPECT_EQ(m_store.GetNumber(L"Options", L"none", 42), 42u);
    EXPECT_EQ(Text(L"Options", L"none", L""), L"");
}

TEST_F(RegistryStoreTest, ReadsNeverMakeASubkeyNorReport)
{
    const MessageBoxAnswerer answerer;
    (void)m_store.GetNumber(L"Options", L"none", 42);
    (void)Text(L"Settings", L"none");
    m_store.RemoveValue(L"Filter", L"none");
    (void)m_store.FindListString(L"Finds", L"Find", L"x", 5);
    for (const wchar_t* subkey : {L"Options", L"Settings", L"Filter", L"Finds"})
        EXPECT_FALSE(Subkey(subkey));
    EXPECT_TRUE(answerer.Boxes().empty());
}

TEST_F(RegistryStoreTest, SubkeysMatchWithoutRegardToCase)
{
    HKEY key = nullptr;
    ASSERT_EQ(
        RegCreateKeyExW(Key(kPath).get(), L"oPTIONS", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr),
        ERROR_SUCCESS);
    RegCloseKey(key);
    m_store.SetNumber(L"Options", L"n", 3);
    EXPECT_EQ(m_store.GetNumber(L"OPTIONS", L"n", 0), 3u);
    wchar_t name[32];
    DWORD length = 32;
    EXPECT_EQ(RegEnumKeyExW(Key(kPath).get(), 0, name, &length, nullptr, nullptr, nullptr, nullptr),
              ERROR_SUCCESS);
    EXPECT_STREQ(name, L"oPTIONS");
    length = 32;
    EXPECT_EQ(RegEnumKeyExW(Key(kPath).get(), 1, name, &length, nullptr, nullptr, nullptr, nullptr),
              ERROR_NO_MORE_ITEMS);
}

TEST_F(RegistryStoreTest, FindsEachOfSeveralSubkeys)
{
    m_store.SetNumber(L"Settings", L"n", 1);
    m_store.SetNumber(L"Options", L"n", 2);
    m_store.SetNumber(L"Filter", L"n", 3);
    m_store.SetNumber(L"Option", L"n", 4);
    EXPECT_EQ(m_store.GetNumber(L"Settings", L"n", 0), 1u);
    EXPECT_EQ(m_store.GetNumber(L"Options", L"n", 0), 2u);
    EXPECT_EQ(m_store.GetNumber(L"Filter", L"n", 0), 3u);
    EXPECT_EQ(m_store.GetNumber(L"Option", L"n", 0), 4u);
}

TEST_F(RegistryStoreTest, LongNamedStrangersHideNothing)
{
    m_store.SetNumber(std::wstring(200, L'a').c_str(), L"n", 1);
    m_store.SetNumber(std::wstring(159, L'b').c_str(), L"n", 2);
    m_store.SetNumber(std::wstring(160, L'c').c_str(), L"n", 3);
    m_store.SetNumber(L"Options", L"n", 4);
    EXPECT_EQ(m_store.GetNumber(L"Options", L"n", 0), 4u);
    // The enumeration's buffer holds names of up to 159 characters.
    EXPECT_EQ(m_store.GetNumber(std::wstring(159, L'B').c_str(), L"n", 0), 2u);
    EXPECT_EQ(m_store.GetNumber(std::wstring(160, L'c').c_str(), L"n", 0), 0u);
}

TEST_F(RegistryStoreTest, TheEmptySubkeyIsTheRoot)
{
    EXPECT_EQ(m_store.SetNumber(L"", L"n", 9), 1);
    EXPECT_EQ(m_store.SetString(L"", L"t", L"root"), 1);
    EXPECT_EQ(m_store.SetString(L"", L"Find0", L"found"), 1);
    EXPECT_EQ(m_store.GetNumber(L"", L"n", 0), 9u);
    EXPECT_EQ(Text(L"", L"t"), L"root");
    EXPECT_EQ(m_store.FindListString(L"", L"Find", L"found", 1), 1);
    DWORD value = 0;
    DWORD bytes = sizeof value;
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, kPath, L"n", RRF_RT_REG_DWORD, nullptr, &value, &bytes),
              ERROR_SUCCESS);
    EXPECT_EQ(value, 9u);
}

TEST_F(RegistryStoreTest, TheRootStaysOpenForTheNextRead)
{
    m_store.SetNumber(L"", L"n", 9);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(m_store.GetNumber(L"", L"n", 0), 9u);
}

TEST_F(RegistryStoreTest, FourBytesOfAnyTypeAreANumber)
{
    StoreRaw(L"binary", REG_BINARY, {1, 2, 3, 4});
    StoreRaw(L"text", REG_SZ, {'a', 0, 0, 0});
    StoreRaw(L"big", REG_DWORD_BIG_ENDIAN, {1, 2, 3, 4});
    EXPECT_EQ(m_store.GetNumber(L"Options", L"binary", 0), 0x04030201u);
    EXPECT_EQ(m_store.GetNumber(L"Options", L"text", 0), 0x61u);
    EXPECT_EQ(m_store.GetNumber(L"Options", L"big", 0), 0x04030201u);
}

TEST_F(RegistryStoreTest, OtherLengthsAreNoNumber)
{
    for (const size_t length : {0u, 1u, 2u, 3u, 5u, 8u, 4000u}) {
        StoreRaw(L"n", REG_BINARY, std::vector<BYTE>(length, 1));
        EXPECT_EQ(m_store.GetNumber(L"Options", L"n", 77), 77u) << length;
    }
    StoreRaw(L"n", REG_DWORD, {1, 1});
    EXPECT_EQ(m_store.GetNumber(L"Options", L"n", 77), 77u);
}

TEST_F(RegistryStoreTest, TextsOfUpTo155CharactersRead)
{
    m_store.SetString(L"Options", L"t", std::wstring(155, L'x').c_str());
    EXPECT_EQ(Text(L"Options", L"t"), std::wstring(155, L'x'));
    for (const size_t length : {156u, 157u, 200u, 20000u}) {
        m_store.SetString(L"Options", L"t", std::wstring(length, L'x').c_str());
        EXPECT_EQ(Text(L"Options", L"t"), L"default") << length;
    }
}

std::vector<BYTE> Bytes(const std::wstring& text, size_t count)
{
    const BYTE* const start = reinterpret_cast<const BYTE*>(text.data());
    return {start, start + count};
}

TEST_F(RegistryStoreTest, UnterminatedTextsAreTerminated)
{
    StoreRaw(L"t", REG_SZ, Bytes(L"abc", 6));
    EXPECT_EQ(Text(L"Options", L"t"), L"abc");
    StoreRaw(L"t", REG_SZ, Bytes(std::wstring(155, L'x'), 310));
    EXPECT_EQ(Text(L"Options", L"t"), std::wstring(155, L'x'));
    StoreRaw(L"t", REG_SZ, Bytes(std::wstring(156, L'x'), 312));
    EXPECT_EQ(Text(L"Options", L"t"), L"default");
    StoreRaw(L"t", REG_BINARY, Bytes(std::wstring(156, L'x'), 312));
    EXPECT_EQ(Text(L"Options", L"t"), L"default");
}

TEST_F(RegistryStoreTest, AnOddLastByteIsDropped)
{
    StoreRaw(L"t", REG_SZ, {'a', 0, 'b', 0, 'c'});
    EXPECT_EQ(Text(L"Options", L"t"), L"ab");
    StoreRaw(L"t", REG_BINARY, {'a'});
    EXPECT_EQ(Text(L"Options", L"t"), L"");
    StoreRaw(L"t", REG_BINARY, Bytes(std::wstring(156, L'x'), 311));
    EXPECT_EQ(Text(L"Options", L"t"), std::wstring(155, L'x'));
}

TEST_F(RegistryStoreTest, ATextEndsAtItsFirstNul)
{
    StoreRaw(L"t", REG_MULTI_SZ, Bytes(std::wstring(L"one\0two\0\0", 9), 18));
    EXPECT_EQ(Text(L"Options", L"t"), L"one");
    std::wstring full(156, L'x');
    full[150] = L'\0';
    StoreRaw(L"t", REG_BINARY, Bytes(full, 312));
    EXPECT_EQ(Text(L"Options", L"t"), std::wstring(150, L'x'));
}

TEST_F(RegistryStoreTest, BytesOfAnyTypeAreAText)
{
    m_store.SetNumber(L"Options", L"t", 0x00420041);
    EXPECT_EQ(Text(L"Options", L"t"), L"AB");
    StoreRaw(L"t", REG_SZ, {});
    EXPECT_EQ(Text(L"Options", L"t"), L"");
    StoreRaw(L"t", REG_EXPAND_SZ, Bytes(L"%A%", 8));
    EXPECT_EQ(Text(L"Options", L"t"), L"%A%");
}

TEST_F(RegistryStoreTest, ALongDefaultIsCut)
{
    EXPECT_EQ(Text(L"Options", L"none", std::wstring(155, L'd').c_str()), std::wstring(155, L'd'));
    EXPECT_EQ(Text(L"Options", L"none", std::wstring(500, L'd').c_str()), std::wstring(155, L'd'));
}

TEST_F(RegistryStoreTest, RemovesAValue)
{
    m_store.SetNumber(L"Options", L"n", 3);
    m_store.SetNumber(L"Options", L"m", 4);
    EXPECT_EQ(m_store.RemoveValue(L"OPTIONS", L"n"), 1);
    EXPECT_EQ(m_store.GetNumber(L"Options", L"n", 0), 0u);
    EXPECT_EQ(m_store.GetNumber(L"Options", L"m", 0), 4u);
}

TEST_F(RegistryStoreTest, RemovingWhatIsMissingSucceeds)
{
    EXPECT_EQ(m_store.RemoveValue(L"Options", L"n"), 1);
    m_store.SetNumber(L"Options", L"m", 4);
    EXPECT_EQ(m_store.RemoveValue(L"Options", L"n"), 1);
}

TEST_F(RegistryStoreTest, RemoveValueLeavesTheRootAlone)
{
    m_store.SetNumber(L"", L"n", 3);
    EXPECT_EQ(m_store.RemoveValue(L"", L"n"), 1);
    EXPECT_EQ(m_store.GetNumber(L"", L"n", 0), 3u);
}

// What the registry was asked for last.
struct KeyRequest {
    HKEY root = nullptr;
    std::wstring path;
    bool isPlain = false; // no class, no security, nothing but the default options
    REGSAM access = 0;
} g_key;
std::vector<DWORD> g_sizes; // of the buffers that values were read into

decltype(&RegCreateKeyExW) g_createKey = nullptr;
decltype(&RegOpenKeyExW) g_openKey = nullptr;
decltype(&RegQueryValueExW) g_queryValue = nullptr;

LSTATUS WINAPI NoteCreate(HKEY root, LPCWSTR path, DWORD reserved, LPWSTR className, DWORD options,
                          REGSAM access, const LPSECURITY_ATTRIBUTES security, PHKEY key, LPDWORD made)
{
    g_key = {root, path, !reserved && !className && options == 0 && !security, access};
    return g_createKey(root, path, reserved, className, options, access, security, key, made);
}

LSTATUS WINAPI NoteOpen(HKEY root, LPCWSTR path, DWORD options, REGSAM access, PHKEY key)
{
    g_key = {root, path, options == 0, access};
    return g_openKey(root, path, options, access, key);
}

LSTATUS WINAPI NoteQuery(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size)
{
    g_sizes.push_back(*size);
    return g_queryValue(key, name, reserved, type, data, size);
}

TEST_F(RegistryStoreTest, KeysAreMadeWithAllRightsAndNothingSpecial)
{
    g_createKey = __imp_RegCreateKeyExW;
    const ImportWatch<decltype(&RegCreateKeyExW)> watch(&__imp_RegCreateKeyExW, NoteCreate);
    RegistryStore store;
    ASSERT_EQ(store.Open(kPath), 1);
    EXPECT_EQ(g_key.root, HKEY_CURRENT_USER);
    EXPECT_EQ(g_key.path, kPath);
    EXPECT_TRUE(g_key.isPlain);
    EXPECT_EQ(g_key.access, REGSAM{0xF003F});
    ASSERT_EQ(store.SetNumber(L"Options", L"n", 1), 1);
    EXPECT_EQ(g_key.path, L"Options");
    EXPECT_TRUE(g_key.isPlain);
    EXPECT_EQ(g_key.access, REGSAM{0xF003F});
}

TEST_F(RegistryStoreTest, ASubkeyIsOpenedWithAllRightsByTheNameThatItHas)
{
    m_store.SetNumber(L"OPTIONS", L"n", 1);
    g_openKey = __imp_RegOpenKeyExW;
    const ImportWatch<decltype(&RegOpenKeyExW)> watch(&__imp_RegOpenKeyExW, NoteOpen);
    const auto expectOpened = [] {
        EXPECT_EQ(g_key.path, L"OPTIONS");
        EXPECT_TRUE(g_key.isPlain);
        EXPECT_EQ(g_key.access, REGSAM{0xF003F});
        g_key = {};
    };
    EXPECT_EQ(m_store.GetNumber(L"Options", L"n", 0), 1u);
    expectOpened();
    EXPECT_EQ(Text(L"Options", L"t"), L"default");
    expectOpened();
    EXPECT_EQ(m_store.RemoveValue(L"Options", L"n"), 1);
    expectOpened();
}

TEST_F(RegistryStoreTest, ANumberIsReadInto4BytesAndATextInto156Characters)
{
    m_store.SetNumber(L"Options", L"n", 1);
    m_store.SetString(L"Options", L"t", L"text");
    g_queryValue = __imp_RegQueryValueExW;
    g_sizes.clear();
    const ImportWatch<decltype(&RegQueryValueExW)> watch(&__imp_RegQueryValueExW, NoteQuery);
    EXPECT_EQ(m_store.GetNumber(L"Options", L"n", 0), 1u);
    EXPECT_EQ(Text(L"Options", L"t"), L"text");
    EXPECT_EQ(g_sizes, (std::vector<DWORD>{4, 312}));
}

} // namespace
