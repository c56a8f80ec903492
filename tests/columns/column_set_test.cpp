#include "columns/column_set.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

#include "support/settings_log.h"
#include "support/test_store.h"
#include "ui/screen/scale.h"

namespace {

constexpr const wchar_t* kTestPath = L"Software\\Quillmarsh\\Journal";

std::vector<DWORD> Words(const ColumnSet& set)
{
    std::vector<DWORD> words;
    for (const ZColumn& column : set.columns)
        words.push_back(column.GetFlags());
    return words;
}

std::vector<int> Properties(const ColumnSet& set)
{
    std::vector<int> properties;
    for (const ZColumn& column : set.columns)
        properties.push_back(column.Property());
    return properties;
}

// Whatever was stored: each property once, the shown ones first, and as many as are counted.
void ExpectWhole(const ColumnSet& set)
{
    std::vector<int> properties = Properties(set);
    std::sort(properties.begin(), properties.end());
    std::vector<int> all(kPropertyCount);
    std::iota(all.begin(), all.end(), 101);
    EXPECT_EQ(properties, all);
    for (int i = 0; i < kPropertyCount; ++i)
        EXPECT_EQ(set.columns[static_cast<size_t>(i)].Has(kColumnShown), i < set.shownCount) << i;
}

class ColumnSetTest : public testing::Test {
  protected:
    ColumnSetTest() { EXPECT_EQ(m_settings.Open(kTestPath), 1); }

    void Store(const std::vector<DWORD>& words, DWORD count)
    {
        for (size_t i = 0; i < words.size(); ++i)
            m_settings.SetNumber(L"Settings", (L"Column" + std::to_wstring(i)).c_str(), words[i]);
        m_settings.SetNumber(L"Settings", L"iCols", count);
    }
    void Store(const std::vector<DWORD>& words) { Store(words, static_cast<DWORD>(words.size())); }

    ColumnSet Load(int right = 900)
    {
        ColumnSet set;
        LoadColumns(&set, m_settings, right);
        ExpectWhole(set);
        return set;
    }

    TestRegistry m_registry;
    RegistryStore m_settings;
};

struct Width {
    int right;
    DWORD date;
    DWORD subject;
};

TEST_F(ColumnSetTest, DefaultsForSeveralWorkAreas)
{
    // A third and two thirds, cut to whole pixels and to what twelve bits hold.
    const Width widths[] = {{640, 213, 426},   {800, 266, 533},    {1024, 341, 682},   {1366, 455, 910},
                            {1920, 640, 1280}, {2560, 853, 1706},  {0, 0, 0},          {1, 0, 0},
                            {2, 0, 1},         {6144, 2048, 4095}, {20000, 4095, 4095}};
    for (const Width& width : widths) {
        ColumnSet set;
        ResetColumns(&set, width.right);
        EXPECT_EQ(Words(set),
                  (std::vector<DWORD>{0x6500001D + (width.date << 12), 0x6600000D + (width.subject << 12),
                                      0x67064000, 0x68032000, 0x69032005, 0x6A000020, 0x6B010005, 0x6C028005,
                                      0x6D028005, 0x6E028005, 0x6F03C000}))
            << width.right;
        EXPECT_EQ(set.shownCount, 2);
    }
}

// The work area is in pixels of the screen already.
TEST_F(ColumnSetTest, GivenWidthsAreAtTheSystemsResolution)
{
    ColumnSet set;
    ResetColumns(&set, 900);
    const int widths[] = {300,       600,       Scale(100), Scale(50), Scale(50), 0,
                          Scale(16), Scale(40), Scale(40),  Scale(40), Scale(60)};
    for (size_t i = 0; i < 11; ++i)
        EXPECT_EQ(set.columns[i].Width(), widths[i]) << i;
}

TEST_F(ColumnSetTest, ImpossibleWorkAreasAreHarmless)
{
    for (int right : {INT_MAX, INT_MIN, -1}) {
        ColumnSet set;
        ResetColumns(&set, right);
        EXPECT_EQ(set.columns[1].Width(), right > 0 ? 4095 : 0);
        ExpectWhole(set);
    }
}

TEST_F(ColumnSetTest, TitlesAreTheFieldsNames)
{
    const wchar_t* const titles[] = {L"Date",     L"Subject",     L"Body",     L"Categories", L"Type",    L"",
                                     L"Priority", L"Sensitivity", L"End Time", L"Duration",   L"Contacts"};
    ColumnSet set;
    ResetColumns(&set, 900);
    for (size_t i = 0; i < 11; ++i)
        EXPECT_EQ(set.columns[i].Title(), titles[i]);
}

TEST_F(ColumnSetTest, ResetForgetsEverything)
{
    ColumnSet set;
    ResetColumns(&set, 900);
    const std::vector<DWORD> defaults = Words(set);
    MoveColumn(&set, 10, 0);
    for (ZColumn& column : set.columns)
        column.SetFlags(0xFFFFFFFF);
    set.shownCount = 11;
    ResetColumns(&set, 900);
    EXPECT_EQ(Words(set), defaults);
    EXPECT_EQ(set.shownCount, 2);
}

TEST_F(ColumnSetTest, NothingStoredIsTheDefaults)
{
    ColumnSet defaults;
    ResetColumns(&defaults, 900);
    const ColumnSet set = Load();
    EXPECT_EQ(Words(set), Words(defaults));
    EXPECT_EQ(set.shownCount, 2);
}

TEST_F(ColumnSetTest, AStoredCountOfZeroIsTheDefaults)
{
    ColumnSet defaults;
    ResetColumns(&defaults, 900);
    Store({0x6B00A01D, 0x6700A000}, 0);
    EXPECT_EQ(Words(Load()), Words(defaults));
}

TEST_F(ColumnSetTest, LoadsPositionsAndWords)
{
    Store({0x6B00A01D, 0x66064005, 0x67032048});
    const ColumnSet set = Load();
    EXPECT_EQ(set.shownCount, 3);
    EXPECT_EQ(Words(set), (std::vector<DWORD>{0x6B00A01D, 0x6606400D, 0x67032048, // the shown mark is added
                                              0x6512C015, 0x68032000, 0x69032005, 0x6A000020, 0x6C028005,
                                              0x6D028005, 0x6E028005, 0x6F03C000}));
    EXPECT_EQ(set.columns[0].Title(), L"Priority");
    EXPECT_EQ(set.columns[3].Title(), L"Date");
}

TEST_F(ColumnSetTest, OnlyTheCountedPositionsAreRead)
{
    Store({0x6E028008, 0x6F03C008, 0x67064008}, 2);
    const ColumnSet set = Load();
    EXPECT_EQ(set.shownCount, 2);
    EXPECT_EQ(Properties(set), (std::vector<int>{110, 111, 101, 102, 103, 104, 105, 106, 107, 108, 109}));
}

TEST_F(ColumnSetTest, AColumnNotNamedKeepsItsDefaultsButTheShownMark)
{
    Store({0x67064008});
    const ColumnSet set = Load(1023);
    EXPECT_EQ(set.columns[1].GetFlags(), 0x65155015u);
    EXPECT_EQ(set.columns[2].GetFlags(), 0x662AA005u);
    EXPECT_EQ(GetSortColumn(set), 1); // the date, not shown, still sorts
}

TEST_F(ColumnSetTest, UnknownPropertiesAreSkipped)
{
    for (DWORD unknown : {0x00000008u, 0x64064008u, 0x70064008u, 0xFF064008u}) {
        Store({0x67064008, unknown, 0x66064008});
        const ColumnSet set = Load();
        EXPECT_EQ(set.shownCount, 2);
        EXPECT_EQ(Properties(set), (std::vector<int>{103, 102, 101, 104, 105, 106, 107, 108, 109, 110, 111}));
    }
}

TEST_F(ColumnSetTest, MissingPositionsAreSkipped)
{
    Store({}, 11);
    m_settings.SetNumber(L"Settings", L"Column4", 0x6E028008);
    m_settings.SetNumber(L"Settings", L"Column10", 0x65028008);
    const ColumnSet set = Load();
    EXPECT_EQ(set.shownCount, 2);
    EXPECT_EQ(Properties(set), (std::vector<int>{110, 101, 102, 103, 104, 105, 106, 107, 108, 109, 111}));
}

// Without a column there would be nothing to see, and no header to work with.
TEST_F(ColumnSetTest, NothingKnownIsTheDefaults)
{
    ColumnSet defaults;
    ResetColumns(&defaults, 900);
    for (const DWORD unknown : {0u, 0x12345678u, 0x6A064008u, 0xFFFFFFFFu}) {
        Store({unknown, unknown});
        const ColumnSet set = Load();
        EXPECT_EQ(set.shownCount, 2) << unknown;
        EXPECT_EQ(Words(set), Words(defaults)) << unknown;
    }
}

TEST_F(ColumnSetTest, TheNamelessPropertyIsNeverShown)
{
    Store({0x6A064008, 0x66064008});
    const ColumnSet set = Load();
    EXPECT_EQ(set.shownCount, 1);
    EXPECT_EQ(set.columns[0].Property(), 102);
    EXPECT_EQ(set.columns[static_cast<size_t>(FindColumnByProperty(set, 106))].GetFlags(), 0x6A000020u);
}

TEST_F(ColumnSetTest, OfAPropertyNamedTwiceTheLastWordCounts)
{
    Store({0x65064008, 0x66064008, 0x65001018});
    const ColumnSet set = Load();
    EXPECT_EQ(set.shownCount, 2);
    EXPECT_EQ(Properties(set), (std::vector<int>{102, 101, 103, 104, 105, 106, 107, 108, 109, 110, 111}));
    EXPECT_EQ(set.columns[1].GetFlags(), 0x65001018u);
}

TEST_F(ColumnSetTest, OnePropertyInEveryPlaceIsOneColumn)
{
    Store(std::vector<DWORD>(11, 0x6E028008));
    const ColumnSet set = Load();
    EXPECT_EQ(set.shownCount, 1);
    EXPECT_EQ(set.columns[0].Property(), 110);
}

TEST_F(ColumnSetTest, AnyCountLoadsWhatIsThere)
{
    for (DWORD count : {4u, 11u, 12u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        Store({0x67064008, 0x66064008}, count);
        const ColumnSet set = Load();
        EXPECT_EQ(set.shownCount, 2) << count;
        EXPECT_EQ(set.columns[0].Property(), 103);
    }
}

TEST_F(ColumnSetTest, ThereAreElevenPositions)
{
    Store({0x67064008}, 100);
    m_settings.SetNumber(L"Settings", L"Column11", 0x66064008);
    m_settings.SetNumber(L"Settings", L"Column57", 0x66064008);
    EXPECT_EQ(Load().shownCount, 1);
}

TEST_F(ColumnSetTest, AStoredWordMaySetAnyFlag)
{
    Store({0x66FFFFFF, 0x65000000});
    const ColumnSet set = Load();
    EXPECT_EQ(set.columns[0].GetFlags(), 0x66FFFFFFu);
    EXPECT_EQ(set.columns[0].Width(), 4095);
    EXPECT_EQ(set.columns[1].GetFlags(), 0x65000008u);
}

TEST_F(ColumnSetTest, AllElevenWordsReversed)
{
    Store({0x6F001000, 0x6E001000, 0x6D001000, 0x6C001000, 0x6B001000, 0x6A001000, 0x69001000, 0x68001000,
           0x67001000, 0x66001000, 0x65001000});
    const ColumnSet set = Load();
    EXPECT_EQ(set.shownCount, 10);
    EXPECT_EQ(Properties(set), (std::vector<int>{111, 110, 109, 108, 107, 105, 104, 103, 102, 101, 106}));
}

TEST_F(ColumnSetTest, ValuesOfOtherTypesAreHarmless)
{
    m_settings.SetString(L"Settings", L"iCols", L"many");
    EXPECT_EQ(Load().shownCount, 2);
    Store({0x67064008}, 2);
    m_settings.SetString(L"Settings", L"Column1", L"no column");
    EXPECT_EQ(Load().shownCount, 1);
}

TEST_F(ColumnSetTest, SavesAllElevenAndTheCount)
{
    ColumnSet set;
    ResetColumns(&set, 900);
    MoveColumn(&set, 6, 0);
    set.columns[0].SetFlags(0x6B00A01D);
    set.shownCount = 3;
    SaveColumns(set, m_settings);
    const std::vector<DWORD> words = Words(set);
    for (size_t i = 0; i < 11; ++i)
        EXPECT_EQ(m_settings.GetNumber(L"Settings", (L"Column" + std::to_wstring(i)).c_str(), 0), words[i]);
    EXPECT_EQ(m_settings.GetNumber(L"Settings", L"Column11", 77), 77u);
    EXPECT_EQ(m_settings.GetNumber(L"Settings", L"iCols", 0), 3u);
}

// A value that was stored in another type is a number afterwards.
TEST_F(ColumnSetTest, SavingReplacesWhateverWasThere)
{
    m_settings.SetString(L"Settings", L"Column3", L"text");
    ColumnSet set;
    ResetColumns(&set, 900);
    SaveColumns(set, m_settings);
    DWORD type = 0;
    DWORD value = 0;
    DWORD bytes = sizeof value;
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, L"Software\\Quillmarsh\\Journal\\Settings", L"Column3",
                           RRF_RT_ANY, &type, &value, &bytes),
              ERROR_SUCCESS);
    EXPECT_EQ(type, static_cast<DWORD>(REG_DWORD));
    EXPECT_EQ(value, 0x68032000u);
}

// A write alone would keep the spelling of a value that is there.
TEST_F(ColumnSetTest, SavingDeletesEachValueFirst)
{
    m_settings.SetNumber(L"Settings", L"cOLUMN7", 1);
    ColumnSet set;
    ResetColumns(&set, 900);
    SaveColumns(set, m_settings);
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Quillmarsh\\Journal\\Settings", 0, KEY_READ, &key),
              ERROR_SUCCESS);
    const UniqueKey owner(key);
    std::vector<std::wstring> names;
    wchar_t name[32];
    for (DWORD length = 32; RegEnumValueW(key, static_cast<DWORD>(names.size()), name, &length, nullptr,
                                          nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         length = 32)
        names.push_back(name);
    EXPECT_EQ(names.size(), 12u);
    EXPECT_NE(std::find(names.begin(), names.end(), L"Column7"), names.end());
}

TEST_F(ColumnSetTest, WhatIsSavedIsLoaded)
{
    ColumnSet set;
    ResetColumns(&set, 900);
    for (const int property : {111, 107, 103}) {
        const int index = FindColumnByProperty(set, static_cast<WORD>(property));
        set.columns[static_cast<size_t>(index)].Add(kColumnShown | kColumnExport);
        MoveColumn(&set, index, 1);
        ++set.shownCount;
    }
    SaveColumns(set, m_settings);
    const ColumnSet loaded = Load();
    EXPECT_EQ(Words(loaded), Words(set));
    EXPECT_EQ(loaded.shownCount, 5);
}

TEST_F(ColumnSetTest, FindsByProperty)
{
    ColumnSet set;
    ResetColumns(&set, 900);
    for (WORD property = 101; property <= 111; ++property)
        EXPECT_EQ(FindColumnByProperty(set, property), property - 101);
    for (const WORD property :
         std::initializer_list<WORD>{0, 100, 112, 357, 0xFFFF}) // 357: 101 in its low byte
        EXPECT_EQ(FindColumnByProperty(set, property), -1);
    MoveColumn(&set, 0, 10);
    EXPECT_EQ(FindColumnByProperty(set, 101), 10);
}

TEST_F(ColumnSetTest, FindsByTitle)
{
    ColumnSet set;
    ResetColumns(&set, 900);
    EXPECT_EQ(FindColumnByTitle(set, L"Date"), 0);
    EXPECT_EQ(FindColumnByTitle(set, L"End Time"), 8);
    EXPECT_EQ(FindColumnByTitle(set, L"date"), -1);
    EXPECT_EQ(FindColumnByTitle(set, L"Dat"), -1);
    EXPECT_EQ(FindColumnByTitle(set, L"Start Time"), -1);
    EXPECT_EQ(FindColumnByTitle(set, L""), -1);
}

TEST_F(ColumnSetTest, FindsTheFirstSortColumn)
{
    ColumnSet set;
    ResetColumns(&set, 900);
    EXPECT_EQ(GetSortColumn(set), 0);
    set.columns[7].Add(kColumnSort);
    EXPECT_EQ(GetSortColumn(set), 0);
    set.columns[0].Remove(kColumnSort);
    EXPECT_EQ(GetSortColumn(set), 7);
    set.columns[7].Remove(kColumnSort);
    EXPECT_EQ(GetSortColumn(set), -1);
}

TEST_F(ColumnSetTest, MovesPastItsNeighbours)
{
    ColumnSet set;
    ResetColumns(&set, 900);
    MoveColumn(&set, 4, 1);
    EXPECT_EQ(Properties(set), (std::vector<int>{101, 105, 102, 103, 104, 106, 107, 108, 109, 110, 111}));
    EXPECT_EQ(set.columns[1].Title(), L"Type");
    MoveColumn(&set, 0, 10);
    EXPECT_EQ(Properties(set), (std::vector<int>{105, 102, 103, 104, 106, 107, 108, 109, 110, 111, 101}));
    const std::vector<int> before = Properties(set);
    MoveColumn(&set, 3, 3);
    MoveColumn(&set, -1, 3);
    MoveColumn(&set, 3, 11);
    MoveColumn(&set, 11, 3);
    MoveColumn(&set, 3, -1);
    EXPECT_EQ(Properties(set), before);
}

TEST_F(ColumnSetTest, TheCountIsStoredLast)
{
    const ColumnSet set = Load();
    std::vector<std::wstring> expected;
    for (int i = 0; i < 11; ++i)
        expected.push_back(L"Column" + std::to_wstring(i));
    expected.push_back(L"iCols");
    const SettingsLog log;
    SaveColumns(set, m_settings);
    EXPECT_EQ(log.Names(), expected);
}

} // namespace
