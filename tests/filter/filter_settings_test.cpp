#include "filter/filter_settings.h"

#include <string>

#include "support/journal_fixture.h"
#include "support/settings_log.h"

namespace {

// 1 and 31 March 2000 as FILETIMEs: days since 1601 times 864,000,000,000.
constexpr uint64_t kFirstOfMarch = 125'963'424'000'000'000;
constexpr uint64_t kLastOfMarch = 125'989'344'000'000'000;
constexpr SYSTEMTIME kFirstDay = {2000, 3, 3, 1, 0, 0, 0, 0}; // a Wednesday
constexpr SYSTEMTIME kLastDay = {2000, 3, 5, 31, 0, 0, 0, 0};

constexpr DWORD kMissing = 0xDEAD;
DWORD Stored(const wchar_t* name)
{
    return Own().GetNumber(L"Filter", name, kMissing);
}

void Store(const wchar_t* name, DWORD value)
{
    Own().SetNumber(L"Filter", name, value);
}

void StoreRange(uint64_t start, uint64_t end)
{
    Store(L"mLStart", static_cast<DWORD>(start));
    Store(L"mHStart", static_cast<DWORD>(start >> 32));
    Store(L"mLEnd", static_cast<DWORD>(end));
    Store(L"mHEnd", static_cast<DWORD>(end >> 32));
}

void StoreRaw(const wchar_t* name, DWORD type, const void* bytes, DWORD size)
{
    EXPECT_EQ(
        RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Quillmarsh\\Journal\\Filter", name, type, bytes, size),
        ERROR_SUCCESS);
}

uint64_t StoredTime(const wchar_t* low, const wchar_t* high)
{
    return uint64_t{Stored(high)} << 32 | Stored(low);
}

bool IsSameDay(const SYSTEMTIME& one, const SYSTEMTIME& other)
{
    return one.wYear == other.wYear && one.wMonth == other.wMonth && one.wDay == other.wDay;
}

FilterState Loaded()
{
    FilterState filter;
    LoadFilter(Own(), &filter);
    return filter;
}

class FilterSettings : public testing::Test {
  protected:
    TestRegistry m_registry;
};

TEST_F(FilterSettings, NothingStoredIsAnInactiveRangeThatWasNeverSet)
{
    FilterState filter;
    filter.monthMask = 5;
    filter.rangeStart = kFirstDay;
    filter.active = true;
    LoadFilter(Own(), &filter);
    EXPECT_FALSE(filter.active);
    EXPECT_TRUE(filter.rangeMode);
    EXPECT_EQ(filter.monthMask, 0u);
    EXPECT_FALSE(IsSet(filter.rangeStart));
    EXPECT_FALSE(IsSet(filter.rangeEnd));
}

TEST_F(FilterSettings, TheStoredRangeComesBack)
{
    StoreRange(kFirstOfMarch, kLastOfMarch);
    Store(L"fRange", 1);
    Store(L"Active", 1);
    const FilterState filter = Loaded();
    EXPECT_TRUE(filter.active);
    EXPECT_TRUE(filter.rangeMode);
    EXPECT_TRUE(IsSameDay(filter.rangeStart, kFirstDay));
    EXPECT_TRUE(IsSameDay(filter.rangeEnd, kLastDay));
}

TEST_F(FilterSettings, TheStoredMonthsComeBack)
{
    Store(L"fRange", 0);
    Store(L"fMonths", 0x801);
    Store(L"Active", 1);
    const FilterState filter = Loaded();
    EXPECT_TRUE(filter.active);
    EXPECT_FALSE(filter.rangeMode);
    EXPECT_EQ(filter.monthMask, 0x801u);
}

TEST_F(FilterSettings, AreLoadedWhateverIsToBeRemembered)
{
    for (const DWORD remember : {0u, 1u}) {
        Own().SetNumber(L"Options", L"RememberFilter", remember);
        Store(L"fRange", 0);
        Store(L"fMonths", 4);
        Store(L"Active", 1);
        EXPECT_TRUE(Loaded().active) << remember;
        EXPECT_EQ(Loaded().monthMask, 4u) << remember;
    }
}

TEST_F(FilterSettings, NoCategoriesAreLeftAtTheStart)
{
    FilterState filter;
    filter.categoriesMode = true;
    filter.categories.Push({7, 0});
    LoadFilter(Own(), &filter);
    EXPECT_FALSE(filter.categoriesMode);
    EXPECT_TRUE(filter.categories.IsEmpty());
}

TEST_F(FilterSettings, ActiveWithNothingToFilterByIsNot)
{
    Store(L"Active", 1);
    EXPECT_FALSE(Loaded().active) << "no range";
    Store(L"fMonths", 0x20);
    EXPECT_FALSE(Loaded().active) << "months, but it is a range that counts";
    Store(L"fRange", 0);
    EXPECT_TRUE(Loaded().active);
    Store(L"fMonths", 0);
    StoreRange(kFirstOfMarch, kLastOfMarch);
    EXPECT_FALSE(Loaded().active) << "a range, but it is months that count";
    Store(L"fRange", 1);
    EXPECT_TRUE(Loaded().active);
    StoreRange(kFirstOfMarch, 0);
    EXPECT_FALSE(Loaded().active) << "half a range";
    StoreRange(0, kLastOfMarch);
    EXPECT_FALSE(Loaded().active) << "the other half";
}

TEST_F(FilterSettings, AnyOtherNumberIsYes)
{
    Store(L"Active", 0xFFFFFFFF);
    Store(L"fRange", 2);
    StoreRange(kFirstOfMarch, kLastOfMarch);
    EXPECT_TRUE(Loaded().active);
    EXPECT_TRUE(Loaded().rangeMode);
}

TEST_F(FilterSettings, BitsBeyondTheMonthsAreNone)
{
    Store(L"Active", 1);
    Store(L"fRange", 0);
    Store(L"fMonths", 0xFFFFF002);
    EXPECT_EQ(Loaded().monthMask, 2u);
    Store(L"fMonths", 0xFFFFF000);
    EXPECT_EQ(Loaded().monthMask, 0u);
    EXPECT_FALSE(Loaded().active);
}

TEST_F(FilterSettings, DatesThatAreNoneReadAsNeverSet)
{
    Store(L"Active", 1);
    for (const uint64_t time : {0xFFFFFFFFFFFFFFFFull, 0x8000000000000000ull}) {
        StoreRange(time, time);
        EXPECT_FALSE(IsSet(Loaded().rangeStart)) << time;
        EXPECT_FALSE(IsSet(Loaded().rangeEnd)) << time;
        EXPECT_FALSE(Loaded().active) << time;
    }
}

TEST_F(FilterSettings, ValuesOfAnotherTypeReadAsTheDefault)
{
    struct Value {
        DWORD type;
        const void* bytes;
        DWORD size;
    };
    const Value values[] = {
        {REG_SZ, L"seven", 12}, {REG_QWORD, "\1\1\1\1\1\1\1\1", 8}, {REG_BINARY, "\1", 1}};
    for (const Value& value : values) {
        for (const wchar_t* name :
             {L"Active", L"fRange", L"fMonths", L"mLStart", L"mHStart", L"mLEnd", L"mHEnd"})
            StoreRaw(name, value.type, value.bytes, value.size);
        EXPECT_FALSE(Loaded().active) << value.type;
        EXPECT_TRUE(Loaded().rangeMode) << value.type;
        EXPECT_EQ(Loaded().monthMask, 0u) << value.type;
        EXPECT_FALSE(IsSet(Loaded().rangeStart)) << value.type;
        EXPECT_FALSE(IsSet(Loaded().rangeEnd)) << value.type;
    }
}

TEST_F(FilterSettings, ToRememberIsOffUnlessItIsStored)
{
    EXPECT_FALSE(RemembersFilter(Own()));
    Own().SetNumber(L"Options", L"RememberFilter", 1);
    EXPECT_TRUE(RemembersFilter(Own()));
    Own().SetNumber(L"Options", L"RememberFilter", 0);
    EXPECT_FALSE(RemembersFilter(Own()));
    Own().SetString(L"Options", L"RememberFilter", L"yes");
    EXPECT_FALSE(RemembersFilter(Own())) << "no number";
}

TEST_F(FilterSettings, AcceptedMonthsLeaveTheStoredRange)
{
    StoreRange(kFirstOfMarch, kLastOfMarch);
    FilterState filter;
    filter.monthMask = 0xC;
    AcceptFilter(&filter, &Own());
    EXPECT_TRUE(filter.active);
    EXPECT_EQ(Stored(L"fRange"), 0u);
    EXPECT_EQ(Stored(L"fMonths"), 0xCu);
    EXPECT_EQ(Stored(L"Active"), 1u);
    EXPECT_EQ(StoredTime(L"mLStart", L"mHStart"), kFirstOfMarch);
    EXPECT_EQ(StoredTime(L"mLEnd", L"mHEnd"), kLastOfMarch);
}

TEST_F(FilterSettings, NoMonthAcceptedIsNoFilter)
{
    Store(L"Active", 1);
    Store(L"fMonths", 3);
    FilterState filter;
    filter.active = true;
    AcceptFilter(&filter, &Own());
    EXPECT_FALSE(filter.active);
    EXPECT_EQ(Stored(L"fRange"), 0u);
    EXPECT_EQ(Stored(L"fMonths"), 0u);
    EXPECT_EQ(Stored(L"Active"), 0u);
}

TEST_F(FilterSettings, AnAcceptedRangeLeavesTheStoredMonths)
{
    Store(L"fMonths", 3);
    FilterState filter;
    filter.rangeMode = true;
    filter.rangeStart = kFirstDay;
    filter.rangeEnd = kLastDay;
    AcceptFilter(&filter, &Own());
    EXPECT_TRUE(filter.active);
    EXPECT_EQ(StoredTime(L"mLStart", L"mHStart"), kFirstOfMarch);
    EXPECT_EQ(StoredTime(L"mLEnd", L"mHEnd"), kLastOfMarch);
    EXPECT_EQ(Stored(L"fRange"), 1u);
    EXPECT_EQ(Stored(L"fMonths"), 3u);
    EXPECT_EQ(Stored(L"Active"), 1u);
}

TEST_F(FilterSettings, OfAcceptedCategoriesOnlyTheirForceIsStored)
{
    FilterState filter;
    filter.categoriesMode = true;
    filter.rangeMode = true;
    filter.monthMask = 1;
    filter.categories.Push({7, 0});
    AcceptFilter(&filter, &Own());
    EXPECT_TRUE(filter.active);
    EXPECT_EQ(Stored(L"Active"), 1u);
    for (const wchar_t* name : {L"fRange", L"fMonths", L"mLStart", L"mHStart", L"mLEnd", L"mHEnd"})
        EXPECT_EQ(Stored(name), kMissing);
    filter.categories.DeleteStack();
    AcceptFilter(&filter, &Own());
    EXPECT_FALSE(filter.active);
    EXPECT_EQ(Stored(L"Active"), 0u);
}

// Whoever reads them halfway has no filter of the new kind with the old values.
TEST_F(FilterSettings, AreStoredBeforeTheirForce)
{
    FilterState filter;
    filter.monthMask = 0xC;
    {
        const SettingsLog log;
        AcceptFilter(&filter, &Own());
        EXPECT_EQ(log.Names(), (std::vector<std::wstring>{L"fRange", L"fMonths", L"Active"}));
    }
    filter.rangeMode = true;
    filter.rangeStart = kFirstDay;
    filter.rangeEnd = kLastDay;
    const SettingsLog log;
    AcceptFilter(&filter, &Own());
    EXPECT_EQ(log.Names(),
              (std::vector<std::wstring>{L"mLStart", L"mHStart", L"mLEnd", L"mHEnd", L"fRange", L"Active"}));
}

class ClearedFilter : public FilterSettings {
  protected:
    void Clear()
    {
        StoreRange(kFirstOfMarch, kLastOfMarch);
        Store(L"fRange", 0);
        Store(L"fMonths", 3);
        Store(L"Active", 1);
        m_filter.active = m_filter.categoriesMode = m_filter.rangeMode = true;
        m_filter.monthMask = 3;
        m_filter.rangeStart = m_filter.rangeEnd = kFirstDay;
        m_filter.categories.Push({7, 0});
        ClearFilter(&m_filter, &Own());
    }

    FilterState m_filter;
};

TEST_F(ClearedFilter, IsZeroAsAWhole)
{
    Clear();
    EXPECT_FALSE(m_filter.active);
    EXPECT_FALSE(m_filter.categoriesMode);
    EXPECT_FALSE(m_filter.rangeMode) << "months, unlike what is stored";
    EXPECT_EQ(m_filter.monthMask, 0u);
    EXPECT_FALSE(IsSet(m_filter.rangeStart));
    EXPECT_FALSE(IsSet(m_filter.rangeEnd));
    EXPECT_TRUE(m_filter.categories.IsEmpty());
}

TEST_F(ClearedFilter, IsForgottenUnlessItIsToBeRemembered)
{
    Clear();
    EXPECT_EQ(StoredTime(L"mLStart", L"mHStart"), 0u);
    EXPECT_EQ(StoredTime(L"mLEnd", L"mHEnd"), 0u);
    EXPECT_EQ(Stored(L"fRange"), 1u);
    EXPECT_EQ(Stored(L"fMonths"), 0u);
    EXPECT_EQ(Stored(L"Active"), 0u);
    EXPECT_TRUE(Loaded().rangeMode) << "the next start";
}

TEST_F(ClearedFilter, StaysStoredWhenItIsToBeRemembered)
{
    Own().SetNumber(L"Options", L"RememberFilter", 1);
    Clear();
    EXPECT_EQ(StoredTime(L"mLStart", L"mHStart"), kFirstOfMarch);
    EXPECT_EQ(StoredTime(L"mLEnd", L"mHEnd"), kLastOfMarch);
    EXPECT_EQ(Stored(L"fRange"), 0u);
    EXPECT_EQ(Stored(L"fMonths"), 3u);
    EXPECT_EQ(Stored(L"Active"), 0u);
    EXPECT_FALSE(m_filter.active);
    EXPECT_EQ(m_filter.monthMask, 0u) << "in memory it is gone all the same";
}

} // namespace
