#include "app/registry_store.h"

#include <gtest/gtest.h>

#include <shlwapi.h>

#include <string>
#include <vector>

#include "support/test_windows.h"

namespace {

constexpr const wchar_t* kPath = L"Software\\Quillmarsh\\Store Test";

std::wstring SystemMessage(DWORD code)
{
    wchar_t text[512] = L"";
    EXPECT_NE(FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0,
                             text, 512, nullptr),
              0u);
    return text;
}

UniqueKey Key(const std::wstring& path)
{
    HKEY key = nullptr;
    RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_ALL_ACCESS, &key);
    return UniqueKey(key);
}

UniqueKey Subkey(const wchar_t* name)
{
    return Key(std::wstring(kPath) + L"\\" + name);
}

constexpr const wchar_t* kLinkName = L"Options";

// Deletes a key itself, where every ordinary way would go on to a link's target.
void DeleteLink()
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

void DeleteTestKey()
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

class FindListStringTest : public RegistryStoreTest {
  protected:
    void Store(const std::vector<const wchar_t*>& texts)
    {
        for (size_t i = 0; i < texts.size(); ++i)
            m_store.SetString(L"Options", (L"Find" + std::to_wstring(i)).c_str(), texts[i]);
    }
    int Find(const wchar_t* text, int count = 5)
    {
        return m_store.FindListString(L"Options", L"Find", text, count);
    }
};

TEST_F(FindListStringTest, GivesTheFirstPlaceFromOne)
{
    Store({L"a", L"b", L"c", L"b"});
    EXPECT_EQ(Find(L"a"), 1);
    EXPECT_EQ(Find(L"b"), 2);
    EXPECT_EQ(Find(L"c"), 3);
    EXPECT_EQ(Find(L"d"), 0);
}

TEST_F(FindListStringTest, LooksAtCountValues)
{
    Store({L"a", L"b", L"c"});
    EXPECT_EQ(Find(L"c", 3), 3);
    EXPECT_EQ(Find(L"c", 2), 0);
    EXPECT_EQ(Find(L"a", 1), 1);
    EXPECT_EQ(Find(L"a", 0), 0);
    EXPECT_EQ(Find(L"a", -1), 0);
    EXPECT_EQ(Find(L"a", INT_MIN), 0);
    EXPECT_EQ(Find(L"d", INT_MAX), 0);
}

TEST_F(FindListStringTest, EndsAtTheFirstEmptyOrMissingValue)
{
    Store({L"a", L"", L"c"});
    EXPECT_EQ(Find(L"c"), 0);
    m_store.RemoveValue(L"Options", L"Find1");
    EXPECT_EQ(Find(L"c"), 0);
    EXPECT_EQ(Find(L""), 0);
    Store({L"a", std::wstring(156, L'x').c_str(), L"c"}); // reads as the default, which is empty
    EXPECT_EQ(Find(L"c"), 0);
}

TEST_F(FindListStringTest, CaseMatters)
{
    Store({L"Meeting", L"Mee", L"meeting"});
    EXPECT_EQ(Find(L"meeting"), 3);
    EXPECT_EQ(Find(L"MEETING"), 0);
    EXPECT_EQ(Find(L"Mee"), 2);
    EXPECT_EQ(Find(L"Meet"), 0);
}

TEST_F(FindListStringTest, EqualIsWhatTheSystemSays)
{
    ASSERT_EQ(CompareStringW(LOCALE_SYSTEM_DEFAULT, 0, L"Stra\u00dfe", -1, L"Strasse", -1), CSTR_EQUAL);
    Store({L"Stra\u00dfe"});
    EXPECT_EQ(Find(L"Strasse"), 1);
}

TEST_F(FindListStringTest, ThePrefixNamesTheList)
{
    Store({L"a"});
    m_store.SetString(L"Options", L"subj0", L"b");
    EXPECT_EQ(m_store.FindListString(L"Options", L"subj", L"b", 5), 1);
    EXPECT_EQ(m_store.FindListString(L"Options", L"Find", L"b", 5), 0);
    EXPECT_EQ(m_store.FindListString(L"Settings", L"Find", L"a", 5), 0);
}

TEST_F(RegistryStoreTest, ASubkeyThatDoesNotOpenIsReported)
{
    MakeDeadLink();
    const MessageBoxAnswerer answerer;
    EXPECT_EQ(m_store.GetNumber(kLinkName, L"n", 7), 7u);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].caption, L"Error");
    EXPECT_EQ(answerer.Boxes()[0].text, SystemMessage(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(Text(L"Options", L"n", L"mine"), L"mine");
    EXPECT_EQ(answerer.Boxes().size(), 2u);
}

TEST_F(RegistryStoreTest, ADeletionThatFailsGivesZero)
{
    MakeDeadLink();
    const MessageBoxAnswerer answerer;
    EXPECT_EQ(m_store.RemoveValue(L"Options", L"n"), 0);
    EXPECT_EQ(answerer.Boxes().size(), 1u); // that the subkey did not open
}

TEST_F(RegistryStoreTest, AWriteWithoutASubkeyIsReportedTwice)
{
    ASSERT_EQ(SHDeleteKeyW(HKEY_CURRENT_USER, kPath), ERROR_SUCCESS);
    const MessageBoxAnswerer answerer;
    EXPECT_EQ(m_store.SetNumber(L"Options", L"n", 1), 1);
    ASSERT_EQ(answerer.Boxes().size(), 2u);
    EXPECT_EQ(answerer.Boxes()[0].text, SystemMessage(ERROR_KEY_DELETED));
    EXPECT_EQ(answerer.Boxes()[1].text, SystemMessage(ERROR_INVALID_HANDLE));
    EXPECT_EQ(answerer.Boxes()[1].caption, L"Error");
    EXPECT_EQ(m_store.SetString(L"Options", L"t", L"x"), 1);
    EXPECT_EQ(answerer.Boxes().size(), 4u);
}

TEST_F(RegistryStoreTest, AFailedWriteToTheRootIsReported)
{
    ASSERT_EQ(SHDeleteKeyW(HKEY_CURRENT_USER, kPath), ERROR_SUCCESS);
    const MessageBoxAnswerer answerer;
    EXPECT_EQ(m_store.SetNumber(L"", L"n", 1), 1);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, SystemMessage(ERROR_KEY_DELETED));
}

TEST_F(RegistryStoreTest, ReadsOfARootThatIsGoneAreDefaultsUnreported)
{
    m_store.SetNumber(L"Options", L"n", 1);
    ASSERT_EQ(SHDeleteKeyW(HKEY_CURRENT_USER, kPath), ERROR_SUCCESS);
    const MessageBoxAnswerer answerer;
    EXPECT_EQ(m_store.GetNumber(L"Options", L"n", 7), 7u);
    EXPECT_EQ(m_store.GetNumber(L"", L"n", 8), 8u);
    EXPECT_EQ(m_store.RemoveValue(L"Options", L"n"), 1);
    EXPECT_TRUE(answerer.Boxes().empty());
}

TEST_F(RegistryStoreTest, OperationsLeaveNoHandleBehind)
{
    const auto handles = [] {
        DWORD count = 0;
        EXPECT_TRUE(GetProcessHandleCount(GetCurrentProcess(), &count));
        return count;
    };
    const auto work = [this] {
        m_store.SetNumber(L"Options", L"n", 1);
        m_store.SetString(L"Options", L"Find0", L"x");
        (void)m_store.GetNumber(L"Options", L"n", 0);
        (void)Text(L"Options", L"Find0");
        (void)m_store.FindListString(L"Options", L"Find", L"y", 5);
        m_store.RemoveValue(L"Options", L"n");
        RegistryStore other;
        (void)other.Open(kPath);
        (void)other.Open(kPath);
    };
    work();
    const DWORD before = handles();
    for (int i = 0; i < 50; ++i)
        work();
    EXPECT_LT(handles(), before + 10);
}

// The handle that opening the root takes: the one a key gets that is opened in its place.
TEST_F(RegistryStoreTest, ARootThatDoesNotCloseIsReported)
{
    const MessageBoxAnswerer answerer;
    {
        HKEY probe = nullptr;
        ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, kPath, 0, KEY_ALL_ACCESS, &probe), ERROR_SUCCESS);
        RegCloseKey(probe);
        RegistryStore store;
        ASSERT_EQ(store.Open(kPath), 1);
        ASSERT_EQ(RegCloseKey(probe), ERROR_SUCCESS);
        EXPECT_TRUE(answerer.Boxes().empty());
    }
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].caption, L"Error");
    EXPECT_EQ(answerer.Boxes()[0].text, SystemMessage(ERROR_INVALID_HANDLE));
}

HICON g_boxIcon;
HWND g_boxOwner;
bool g_boxHasCancel;

LRESULT CALLBACK LookAtBox(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HCBT_ACTIVATE) {
        const HWND box = reinterpret_cast<HWND>(wParam);
        g_boxOwner = GetWindow(box, GW_OWNER);
        g_boxHasCancel = GetDlgItem(box, IDCANCEL) != nullptr;
        for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            if (const LRESULT icon = SendMessageW(child, STM_GETICON, 0, 0))
                g_boxIcon = reinterpret_cast<HICON>(icon);
        }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST(ReportError, ShowsTheSystemsTextInABoxTitledError)
{
    const MessageBoxAnswerer answerer;
    g_boxIcon = nullptr;
    const HHOOK hook = SetWindowsHookExW(WH_CBT, LookAtBox, nullptr, GetCurrentThreadId());
    RegistryStore::ReportError(ERROR_ACCESS_DENIED);
    UnhookWindowsHookEx(hook);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].caption, L"Error");
    EXPECT_EQ(answerer.Boxes()[0].text, SystemMessage(ERROR_ACCESS_DENIED));
    EXPECT_EQ(g_boxIcon, LoadIconW(nullptr, IDI_INFORMATION));
    EXPECT_EQ(g_boxOwner, nullptr);
    EXPECT_FALSE(g_boxHasCancel);
}

TEST(ReportError, ShowsMessagesWithInsertionsAsTheyStand)
{
    const MessageBoxAnswerer answerer;
    RegistryStore::ReportError(ERROR_BAD_EXE_FORMAT); // "%1 is not a valid Win32 application"
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, SystemMessage(ERROR_BAD_EXE_FORMAT));
}

TEST(ReportError, AnUnknownCodeStillShowsABox)
{
    const MessageBoxAnswerer answerer;
    RegistryStore::ReportError(0x2FFFFFFF);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].caption, L"Error");
}

} // namespace
