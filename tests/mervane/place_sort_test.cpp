#include "mervane/order/place_sort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

#include "mervane/values/property_map.h"

namespace {

using namespace mervane;

const Property& JournalProperty(CEPROPID id)
{
    const TableInfo& journal = InfoOf(TableId::Journal);
    return journal.properties[static_cast<size_t>(FindProperty(journal, id))];
}

RecordSet Records(uint32_t count)
{
    std::vector<CEOID> ids(count);
    std::iota(ids.begin(), ids.end(), 1);
    return RecordSet(std::move(ids));
}

TEST(SortByKey, SortsAndKeepsEqualOnesInTheirOrder)
{
    std::mt19937_64 random(3);
    for (const size_t count : {0u, 1u, 2u, 500u, 5000u})
        for (const uint64_t mask : {~uint64_t{0}, uint64_t{0xFF}, uint64_t{0xFF} << 56, uint64_t{0}}) {
            std::vector<KeyedPlace> items;
            for (uint32_t i = 0; i < count; ++i)
                items.push_back({random() & mask, i});
            auto expected = items;
            std::stable_sort(expected.begin(), expected.end(),
                             [](const auto& a, const auto& b) { return a.key < b.key; });
            SortByKey(items);
            for (size_t i = 0; i < count; ++i)
                ASSERT_EQ(items[i].place, expected[i].place);
        }
}

TEST(NumberColumn, OrdersTimesWithoutSignAndNumbersWith)
{
    NumberColumn times(JournalProperty(0x00650040)), numbers(JournalProperty(0x006B0002)),
        kinds(JournalProperty(0x006A0012));
    for (NumberColumn* column : {&times, &numbers, &kinds})
        column->Resize(4);
    times.Set(0, -1); // the highest count of all
    times.Set(1, 5);
    EXPECT_GT(times.Key(0), times.Key(1));
    numbers.Set(0, -1);
    numbers.Set(1, 5);
    EXPECT_LT(numbers.Key(0), numbers.Key(1));
    kinds.Set(0, 65535);
    kinds.Set(1, 5);
    EXPECT_GT(kinds.Key(0), kinds.Key(1));
}

TEST(NumberColumn, TakesWhatTheTypeCannotHoldAsMissing)
{
    NumberColumn numbers(JournalProperty(0x006B0002)), kinds(JournalProperty(0x006A0012));
    numbers.Resize(5);
    kinds.Resize(5);
    int64_t place = 0;
    for (const int64_t value : {-32768, 32767, -32769, 32768}) {
        numbers.Set(static_cast<uint32_t>(place), value);
        EXPECT_EQ(numbers.IsMissing(static_cast<uint32_t>(place)), place >= 2) << value;
        ++place;
    }
    EXPECT_TRUE(numbers.IsMissing(4)); // never set
    kinds.Set(0, -1);
    EXPECT_TRUE(kinds.IsMissing(0));
    kinds.Set(0, 65536);
    EXPECT_TRUE(kinds.IsMissing(0));
    kinds.Set(0, 65535);
    EXPECT_FALSE(kinds.IsMissing(0));
    kinds.Set(0, std::nullopt);
    EXPECT_TRUE(kinds.IsMissing(0));
}

TEST(SortPlaces, PutsMissingNumbersLastInBothDirections)
{
    RecordSet records = Records(6);
    NumberColumn column(JournalProperty(0x00650040));
    column.Resize(6);
    column.Set(0, 7);
    column.Set(2, 3);
    column.Set(3, 7);
    column.Set(5, -4);
    EXPECT_EQ(SortPlaces(records, column, false), (std::vector<uint32_t>{2, 0, 3, 5, 1, 4}));
    EXPECT_EQ(SortPlaces(records, column, true), (std::vector<uint32_t>{5, 0, 3, 2, 1, 4}));
    records.Remove(3);
    records.Remove(4);
    EXPECT_EQ(SortPlaces(records, column, false), (std::vector<uint32_t>{2, 0, 5, 1}));
}

// An order that is known from elsewhere saves the sort, and may be wrong.
TEST(SortPlaces, IsTheSameAlongAnyOrder)
{
    RecordSet records = Records(8);
    NumberColumn column(JournalProperty(0x00650040));
    column.Resize(8);
    for (const auto& [place, number] : {std::pair{0u, 7}, {2u, 3}, {3u, 7}, {5u, 9}, {6u, 7}, {7u, 1}})
        column.Set(place, number);
    records.Remove(2);
    const std::vector<uint32_t> ascending{7, 0, 3, 6, 5, 1, 4}, descending{5, 0, 3, 6, 7, 1, 4};
    const std::vector<uint32_t> orders[] = {
        {4, 1, 7, 2, 6, 0, 3, 5},    // the numbers', missing ones first, equal ones in disorder
        {7, 2, 0, 3, 6, 5, 1, 4},    // the same, missing ones last
        {0, 1, 2, 3, 4, 5, 6, 7},    // another one
        {5, 6, 3, 0, 2, 7, 1, 4},    // backwards
        {7, 2, 0, 3, 6, 5, 1},       // one place too few
        {7, 2, 0, 3, 6, 5, 1, 4, 4}, // one too many
        {},
    };
    for (const auto& order : orders) {
        EXPECT_EQ(SortPlaces(records, column, false, order), ascending) << order.size();
        EXPECT_EQ(SortPlaces(records, column, true, order), descending) << order.size();
    }
}

TEST(SortedIds, AreAscendingAndEachOnce)
{
    EXPECT_EQ(SortedIds({}), std::vector<CEOID>());
    EXPECT_EQ(SortedIds({3, 1, 2, 3}), (std::vector<CEOID>{1, 2, 3}));
    EXPECT_EQ(SortedIds({UINT32_MAX, 5, UINT32_MAX, 1}), (std::vector<CEOID>{1, 5, UINT32_MAX}));
}

// Keys of few letters in many lengths, so that runs go deep, beside a plain stable sort of the whole keys.
class KeySort : public testing::TestWithParam<size_t> {};

TEST_P(KeySort, SortsLikeTheWholeKeys)
{
    constexpr uint32_t kCount = 4000;
    std::mt19937 random(11);
    std::vector<std::optional<std::string>> keys(kCount);
    for (auto& key : keys)
        if (random() % 10) {
            key.emplace();
            const size_t length = random() % 40;
            while (key->size() < length)
                *key += random() % 8 ? std::string(8, 'a')
                                     : std::string(1 + random() % 3, static_cast<char>(random()));
        }
    KeyColumn column(kCount, GetParam());
    for (uint32_t place = 0; place < kCount; ++place)
        column.Set(place, keys[place]);
    const RecordSet records = Records(kCount);
    for (const bool descending : {false, true}) {
        std::vector<uint32_t> expected(kCount);
        std::iota(expected.begin(), expected.end(), 0);
        std::stable_sort(expected.begin(), expected.end(), [&](uint32_t a, uint32_t b) {
            if (!keys[a] || !keys[b])
                return keys[a].has_value() && !keys[b];
            return descending ? *keys[b] < *keys[a] : *keys[a] < *keys[b];
        });
        EXPECT_EQ(SortPlaces(records, column, descending, [&](uint32_t place) { return *keys[place]; }),
                  expected);
    }
}

INSTANTIATE_TEST_SUITE_P(KeyLimits, KeySort, testing::Values(8, 9, 16, 30, 1000));

TEST(KeyColumn, KeepsReplacesAndForgetsKeys)
{
    KeyColumn column(2, 100);
    EXPECT_TRUE(column.IsMissing(0));
    column.Set(0, "abc");
    column.Set(1, "");
    EXPECT_EQ(column.Key(0), "abc");
    EXPECT_FALSE(column.IsMissing(1));
    EXPECT_EQ(column.Key(1), "");
    column.Set(0, "longer than before");
    EXPECT_EQ(column.Key(0), "longer than before");
    column.Set(0, std::nullopt);
    EXPECT_TRUE(column.IsMissing(0));
    column.Resize(3);
    EXPECT_TRUE(column.IsMissing(2));
}

TEST(KeyColumn, CutsLongKeys)
{
    KeyColumn column(4, 8);
    column.Set(0, "12345678");
    column.Set(1, "12345678A");
    column.Set(2, "12345678B");
    column.Set(3, "1234567");
    EXPECT_FALSE(column.IsCut(0));
    EXPECT_TRUE(column.IsCut(1));
    EXPECT_EQ(column.Key(1), "12345678");
    EXPECT_EQ(column.Compare(1, 2), std::nullopt);
    EXPECT_GT(column.Compare(1, 0), 0);
    EXPECT_LT(column.Compare(0, 1), 0);
    EXPECT_LT(column.Compare(3, 0), 0);
    EXPECT_EQ(column.Compare(0, 0), 0);
}

TEST(KeyColumn, DoesNotGrowWithReplacedKeys)
{
    constexpr uint32_t kPlaces = 1000;
    KeyColumn column(kPlaces, 1000);
    for (int round = 0; round < 40; ++round)
        for (uint32_t place = 0; place < kPlaces; ++place)
            column.Set(place, std::string(200, static_cast<char>('a' + round % 26)) + std::to_string(place));
    EXPECT_LT(column.Bytes(), 3'000'000u);
    for (uint32_t place = 0; place < kPlaces; ++place)
        ASSERT_EQ(column.Key(place), std::string(200, 'a' + 39 % 26) + std::to_string(place));
}

TEST(RecordSet, FindsAndAppends)
{
    RecordSet records({2, 5, 9});
    EXPECT_EQ(records.Find(5), 1u);
    EXPECT_EQ(records.Find(4), kNoPlace);
    EXPECT_EQ(records.Append(9), kNoPlace);
    EXPECT_EQ(records.Append(10), 3u);
    EXPECT_EQ(records.Find(10), 3u);
    records.Remove(1);
    EXPECT_EQ(records.Find(5), kNoPlace);
    uint32_t next = 0;
    EXPECT_EQ(records.FindFrom(2, &next), 0u);
    EXPECT_EQ(records.FindFrom(5, &next), kNoPlace);
    EXPECT_EQ(records.FindFrom(9, &next), 2u);
    EXPECT_EQ(records.FindFrom(2, &next), 0u);
}

TEST(PlaceFinder, FindsAmongNearAndFarIdentifiers)
{
    for (const CEOID last : {12u, 4'000'000'000u}) {
        RecordSet records({2, 5, 9, last});
        records.Remove(1);
        const PlaceFinder finder(records);
        EXPECT_EQ(finder.Find(2), 0u);
        EXPECT_EQ(finder.Find(5), kNoPlace);
        EXPECT_EQ(finder.Find(9), 2u);
        EXPECT_EQ(finder.Find(last), 3u);
        EXPECT_EQ(finder.Find(last + 1), kNoPlace);
        EXPECT_EQ(finder.Find(0), kNoPlace);
    }
}

} // namespace
