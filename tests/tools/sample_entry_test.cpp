#include "sample/sample_entry.h"

#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "data/entry_types.h"
#include "sample/sample_store.h"

using namespace sample;

namespace {

constexpr uint32_t kMany = 3000;
constexpr uint64_t kDay = TimeCount::kUnitsPerMinute * 60 * 24;

// 1 July 2025, 00:00: the end of the reference day.
TimeCount EndOfReferenceDay()
{
    SYSTEMTIME time{2025, 7, 2, 1, 0, 0, 0, 0};
    TimeCount count;
    EXPECT_TRUE(count.FromSystemTime(time));
    return count;
}

std::vector<SampleEntry> Realistic(uint32_t count)
{
    std::vector<SampleEntry> entries;
    for (uint32_t i = 0; i < count; ++i)
        entries.push_back(RealisticEntry(1, i, count, kReferenceDay));
    return entries;
}

std::vector<SampleEntry> Bulk(uint32_t count)
{
    std::vector<SampleEntry> entries;
    for (uint32_t i = 0; i < count; ++i)
        entries.push_back(BulkEntry(1, i, kReferenceDay));
    return entries;
}

bool Same(const SampleEntry& a, const SampleEntry& b)
{
    return a.date == b.date && a.endTime == b.endTime && a.duration == b.duration &&
           a.priority == b.priority && a.sensitivity == b.sensitivity && a.type == b.type &&
           a.body == b.body && a.subject == b.subject && a.categories == b.categories &&
           a.contacts == b.contacts;
}

bool IsHigh(wchar_t c)
{
    return c >= 0xD800 && c <= 0xDBFF;
}
bool IsLow(wchar_t c)
{
    return c >= 0xDC00 && c <= 0xDFFF;
}

// Whole characters and whole line ends only.
bool IsWellFormed(const std::wstring& text)
{
    for (size_t i = 0; i < text.size(); ++i) {
        const wchar_t next = i + 1 < text.size() ? text[i + 1] : L'\0';
        const wchar_t before = i ? text[i - 1] : L'\0';
        if (text[i] == 0 || IsHigh(text[i]) != IsLow(next) || (text[i] == L'\r') != (next == L'\n'))
            return false;
        if (!i && (IsLow(text[i]) || text[i] == L'\n'))
            return false;
        if (IsLow(text[i]) && !IsHigh(before))
            return false;
    }
    return true;
}

void ExpectPositions(const std::vector<int>& positions, int count)
{
    const std::set<int> distinct(positions.begin(), positions.end());
    EXPECT_EQ(distinct.size(), positions.size());
    for (int position : positions) {
        EXPECT_GE(position, 0);
        EXPECT_LT(position, count);
    }
}

void ExpectSound(const SampleEntry& entry)
{
    for (const auto* text : {&entry.subject, &entry.body, &entry.type}) {
        if (*text) {
            EXPECT_FALSE((*text)->empty());
            EXPECT_TRUE(IsWellFormed(**text));
        }
    }
    if (entry.subject) {
        EXPECT_EQ(entry.subject->find(L'\r'), std::wstring::npos);
    }
    if (entry.type) {
        EXPECT_NE(std::find(std::begin(kEntryTypes), std::end(kEntryTypes), *entry.type),
                  std::end(kEntryTypes));
    }
    EXPECT_LE(entry.priority.value_or(0), 2);
    EXPECT_GE(entry.priority.value_or(0), 0);
    EXPECT_LE(entry.sensitivity.value_or(0), 3);
    EXPECT_GE(entry.sensitivity.value_or(0), 0);
    ExpectPositions(entry.categories, kCategoryCount);
    ExpectPositions(entry.contacts, kContactCount);
    if (entry.date && entry.duration && entry.endTime) {
        EXPECT_EQ(*entry.endTime, *entry.date + *entry.duration);
    }
}

size_t CountIf(const std::vector<SampleEntry>& entries, bool (*holds)(const SampleEntry&))
{
    return static_cast<size_t>(std::count_if(entries.begin(), entries.end(), holds));
}

TEST(SampleLists, NamesFitTheirSeparatorsAndAreDistinct)
{
    std::set<std::wstring> names;
    for (const wchar_t* name : kCategories) {
        EXPECT_EQ(wcschr(name, L','), nullptr) << "joined names could not be told apart";
        EXPECT_TRUE(names.insert(name).second);
    }
    for (const Contact& contact : kContacts) {
        EXPECT_EQ(wcschr(contact.fileAs, L';'), nullptr);
        EXPECT_TRUE(names.insert(contact.fileAs).second);
        EXPECT_NE(*contact.spoken, L'\0');
    }
}

TEST(RealisticEntry, IsSound)
{
    for (const SampleEntry& entry : Realistic(kMany))
        ExpectSound(entry);
}

TEST(RealisticEntry, HasWhatASaveWrites)
{
    for (const SampleEntry& entry : Realistic(kMany)) {
        EXPECT_TRUE(entry.date && entry.endTime && entry.duration && entry.priority && entry.sensitivity &&
                    entry.type);
    }
}

TEST(RealisticEntry, LeavesNoMarkOfItsPatterns)
{
    for (const SampleEntry& entry : Realistic(kMany)) {
        EXPECT_EQ(entry.subject.value_or(L"").find(L'{'), std::wstring::npos);
        EXPECT_EQ(entry.body.value_or(L"").find(L'{'), std::wstring::npos);
    }
}

TEST(RealisticEntry, FillsThreeYearsUpToTheDay)
{
    const auto entries = Realistic(kMany);
    const TimeCount end = EndOfReferenceDay();
    for (const SampleEntry& entry : entries) {
        EXPECT_LT(*entry.date, end);
        EXPECT_GT(entry.date->Units(), end.Units() - (3 * 365 + 8) * kDay);
    }
    EXPECT_LT(entries.front().date->Units(), end.Units() - (3 * 365 - 2) * kDay);
    EXPECT_GT(entries.back().date->Units(), end.Units() - 8 * kDay);
}

TEST(RealisticEntry, IsVaried)
{
    const auto entries = Realistic(500);
    std::set<std::wstring> subjects, types;
    for (const SampleEntry& entry : entries) {
        subjects.insert(entry.subject.value_or(L""));
        types.insert(*entry.type);
    }
    EXPECT_EQ(types.size(), std::size(kEntryTypes));
    EXPECT_GT(subjects.size(), 250u);
    EXPECT_GT(CountIf(entries, [](const SampleEntry& e) { return !e.body; }), 20u);
    EXPECT_GT(CountIf(entries, [](const SampleEntry& e) { return !e.subject; }), 3u);
    EXPECT_GT(CountIf(entries, [](const SampleEntry& e) { return e.categories.empty(); }), 20u);
    EXPECT_GT(CountIf(entries, [](const SampleEntry& e) { return e.categories.size() > 1; }), 20u);
    EXPECT_GT(CountIf(entries, [](const SampleEntry& e) { return !e.contacts.empty(); }), 100u);
    EXPECT_GT(CountIf(entries, [](const SampleEntry& e) { return e.duration->Units() > kDay; }), 0u);
    EXPECT_GT(CountIf(entries,
                      [](const SampleEntry& e) { return e.body && e.body->find(L"\r\n") != e.body->npos; }),
              200u);
}

TEST(RealisticEntry, AssignsTheContactItNames)
{
    size_t named = 0;
    for (const SampleEntry& entry : Realistic(kMany)) {
        // The last contact's name is part of other words.
        for (int i = 0; i + 1 < kContactCount && entry.subject; ++i) {
            const std::wstring_view spoken = kContacts[i].spoken;
            if (entry.subject->find(spoken) == std::wstring::npos || spoken == L"Martin")
                continue;
            ++named;
            EXPECT_NE(std::find(entry.contacts.begin(), entry.contacts.end(), i), entry.contacts.end());
        }
    }
    EXPECT_GT(named, 500u);
}

TEST(RealisticEntry, FollowsTheGivenDay)
{
    const SYSTEMTIME leapDay{2024, 2, 4, 29, 0, 0, 0, 0};
    const SampleEntry last = RealisticEntry(1, 99, 100, leapDay);
    SYSTEMTIME date{};
    ASSERT_TRUE(last.date->ToSystemTime(&date));
    EXPECT_EQ(date.wYear, 2024);
    EXPECT_EQ(date.wMonth, 2);
}

TEST(BulkEntry, IsSound)
{
    for (const SampleEntry& entry : Bulk(kMany))
        ExpectSound(entry);
}

TEST(BulkEntry, BodiesHave200To2000Characters)
{
    size_t shortest = SIZE_MAX, longest = 0;
    for (const SampleEntry& entry : Bulk(kMany)) {
        if (entry.body) {
            shortest = std::min(shortest, entry.body->size());
            longest = std::max(longest, entry.body->size());
        }
    }
    EXPECT_GE(shortest, 200u);
    EXPECT_LT(shortest, 210u);
    EXPECT_LE(longest, 2000u);
    EXPECT_GT(longest, 1990u);
}

TEST(BulkEntry, LacksEachPropertyNowAndThen)
{
    const auto entries = Bulk(kMany);
    constexpr bool (*kLacks[])(const SampleEntry&) = {
        [](const SampleEntry& e) { return !e.date; },        [](const SampleEntry& e) { return !e.endTime; },
        [](const SampleEntry& e) { return !e.duration; },    [](const SampleEntry& e) { return !e.priority; },
        [](const SampleEntry& e) { return !e.sensitivity; }, [](const SampleEntry& e) { return !e.type; },
        [](const SampleEntry& e) { return !e.body; },        [](const SampleEntry& e) { return !e.subject; },
    };
    for (auto lacks : kLacks) {
        EXPECT_GT(CountIf(entries, lacks), kMany / 100);
        EXPECT_LT(CountIf(entries, lacks), kMany / 10);
    }
    EXPECT_GT(CountIf(entries, [](const SampleEntry& e) { return e.categories.size() == 3; }), kMany / 10);
    EXPECT_GT(CountIf(entries, [](const SampleEntry& e) { return e.contacts.empty(); }), kMany / 10);
}

TEST(BulkEntry, SpreadsOverFortyYears)
{
    std::set<uint64_t> years;
    const TimeCount end = EndOfReferenceDay();
    for (const SampleEntry& entry : Bulk(kMany)) {
        if (entry.date) {
            EXPECT_LT(*entry.date, end);
            years.insert((end - *entry.date).Units() / (365 * kDay));
        }
    }
    EXPECT_EQ(years.size(), 40u);
}

TEST(BulkEntry, SubjectsMixScripts)
{
    size_t latin = 0, greek = 0, cyrillic = 0, han = 0, emoji = 0;
    for (const SampleEntry& entry : Bulk(kMany)) {
        for (wchar_t c : entry.subject.value_or(L"")) {
            latin += c >= L'a' && c <= L'z';
            greek += c >= 0x370 && c <= 0x3FF;
            cyrillic += c >= 0x400 && c <= 0x4FF;
            han += c >= 0x4E00 && c <= 0x9FFF;
            emoji += IsHigh(c);
        }
    }
    EXPECT_GT(latin, 1000u);
    EXPECT_GT(greek, 1000u);
    EXPECT_GT(cyrillic, 1000u);
    EXPECT_GT(han, 1000u);
    EXPECT_GT(emoji, 20u);
}

TEST(SampleEntry, DependsOnSeedAndIndexOnly)
{
    for (uint32_t i = 0; i < 50; ++i) {
        EXPECT_TRUE(Same(BulkEntry(7, i, kReferenceDay), BulkEntry(7, i, kReferenceDay)));
        EXPECT_FALSE(Same(BulkEntry(7, i, kReferenceDay), BulkEntry(8, i, kReferenceDay)));
        EXPECT_FALSE(Same(BulkEntry(7, i, kReferenceDay), BulkEntry(7, i + 1, kReferenceDay)));
        EXPECT_TRUE(Same(RealisticEntry(7, i, 50, kReferenceDay), RealisticEntry(7, i, 50, kReferenceDay)));
        EXPECT_FALSE(Same(RealisticEntry(7, i, 50, kReferenceDay), RealisticEntry(8, i, 50, kReferenceDay)));
    }
}

} // namespace
