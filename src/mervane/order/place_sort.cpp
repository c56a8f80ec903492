#include "mervane/order/place_sort.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <span>
#include <utility>

namespace mervane {

namespace {

constexpr int kDigitBits = 11;
constexpr size_t kDigitValues = 1 << kDigitBits;
// Fewer are sorted sooner by comparing.
constexpr size_t kFewItems = 1000;

size_t DigitOf(uint64_t key, unsigned shift)
{
    return key >> shift & (kDigitValues - 1);
}

// The bits in which the keys differ; 0 also when they are in order already.
uint64_t BitsToSort(const std::vector<KeyedPlace>& items)
{
    uint64_t bits = 0;
    bool inOrder = true;
    for (size_t i = 1; i < items.size(); ++i) {
        bits |= items[i].key ^ items[0].key;
        inOrder &= items[i - 1].key <= items[i].key;
    }
    return inOrder ? 0 : bits;
}

void SortByDigit(const std::vector<KeyedPlace>& items, std::vector<KeyedPlace>& sorted, unsigned shift)
{
    std::array<uint32_t, kDigitValues> next{};
    for (const KeyedPlace& item : items)
        ++next[DigitOf(item.key, shift)];
    uint32_t offset = 0;
    for (uint32_t& count : next)
        offset += std::exchange(count, offset);
    for (const KeyedPlace& item : items)
        sorted[next[DigitOf(item.key, shift)]++] = item;
}

// The records that have the property, and those that lack it.
template <typename Column, typename MakeKey>
std::vector<KeyedPlace> TakePresent(const RecordSet& records, const Column& column,
                                    std::vector<uint32_t>& missing, MakeKey makeKey)
{
    std::vector<KeyedPlace> present;
    present.reserve(records.PlaceCount());
    for (uint32_t place = 0; place < records.PlaceCount(); ++place) {
        if (records.IsRemoved(place))
            continue;
        if (column.IsMissing(place))
            missing.push_back(place);
        else
            present.push_back({makeKey(place), place});
    }
    return present;
}

std::vector<uint32_t> JoinPlaces(const std::vector<KeyedPlace>& present, const std::vector<uint32_t>& missing)
{
    std::vector<uint32_t> places;
    places.reserve(present.size() + missing.size());
    for (const KeyedPlace& item : present)
        places.push_back(item.place);
    places.insert(places.end(), missing.begin(), missing.end());
    return places;
}

// The sorted places, when the given order of all places is one of the numbers, but for places that compare
// the same; nothing when it is not.
std::optional<std::vector<uint32_t>> OrderAlong(const std::vector<uint32_t>& ascending,
                                                const RecordSet& records, const NumberColumn& numbers,
                                                bool descending)
{
    if (ascending.size() != records.PlaceCount())
        return std::nullopt;
    std::vector<uint32_t> places, missing;
    places.reserve(ascending.size());
    size_t runStart = 0;
    for (size_t i = 0; i < ascending.size(); ++i) {
        const uint32_t place = ascending[descending ? ascending.size() - 1 - i : i];
        if (records.IsRemoved(place))
            continue;
        if (numbers.IsMissing(place)) {
            missing.push_back(place);
            continue;
        }
        if (!places.empty() && numbers.Key(place) != numbers.Key(places.back())) {
            if ((numbers.Key(place) < numbers.Key(places.back())) != descending)
                return std::nullopt;
            std::sort(places.begin() + static_cast<ptrdiff_t>(runStart), places.end());
            runStart = places.size();
        }
        places.push_back(place);
    }
    std::sort(places.begin() + static_cast<ptrdiff_t>(runStart), places.end());
    std::sort(missing.begin(), missing.end());
    places.insert(places.end(), missing.begin(), missing.end());
    return places;
}

// Sorts by kept keys, eight bytes at a time: each step looks only into the runs that are the same so far.
class KeySorter {
  public:
    KeySorter(const KeyColumn& keys, bool descending, const FullKey& fullKey)
        : m_keys(keys), m_descending(descending), m_fullKey(fullKey)
    {}

    // The first bytes of all keys, as many as offset says, are the same; the places ascend.
    void Sort(std::vector<KeyedPlace> items, size_t offset, std::span<uint32_t> places)
    {
        for (KeyedPlace& item : items)
            item.key = PartOf(m_keys.Key(item.place), offset);
        SortByKey(items);
        for (size_t start = 0, end; start < items.size(); start = end) {
            end = start + 1;
            while (end < items.size() && items[end].key == items[start].key)
                ++end;
            SortRun(std::span(items).subspan(start, end - start), offset + kPart,
                    places.subspan(start, end - start));
        }
    }

  private:
    static constexpr size_t kPart = sizeof(uint64_t);
    static constexpr size_t kShortRun = 24;

    // Eight bytes of a key as a number that compares like them.
    uint64_t PartOf(std::string_view key, size_t offset) const
    {
        unsigned char bytes[kPart] = {};
        if (offset < key.size())
            memcpy(bytes, key.data() + offset, std::min(key.size() - offset, kPart));
        uint64_t part = 0;
        for (const unsigned char byte : bytes)
            part = part << 8 | byte;
        return m_descending ? ~part : part;
    }

    void SortRun(std::span<const KeyedPlace> run, size_t offset, std::span<uint32_t> places)
    {
        const bool goesOn = std::any_of(run.begin(), run.end(), [&](const KeyedPlace& item) {
            return m_keys.Key(item.place).size() > offset;
        });
        if (goesOn && run.size() > kShortRun) {
            Sort(std::vector(run.begin(), run.end()), offset, places);
            return;
        }
        std::transform(run.begin(), run.end(), places.begin(),
                       [](const KeyedPlace& item) { return item.place; });
        if (run.size() > 1)
            SortWhole(places);
    }

    void SortWhole(std::span<uint32_t> places)
    {
        std::sort(places.begin(), places.end(), [this](uint32_t a, uint32_t b) {
            const int order = m_keys.Compare(a, b).value_or(0);
            return order ? (order < 0) != m_descending : a < b;
        });
        for (size_t start = 0, end; start < places.size(); start = end) {
            end = start + 1;
            while (end < places.size() && !m_keys.Compare(places[start], places[end]))
                ++end;
            if (end - start > 1)
                SortByFullKeys(places.subspan(start, end - start));
        }
    }

    // Kept keys that are cut do not tell these apart.
    void SortByFullKeys(std::span<uint32_t> places)
    {
        std::vector<std::pair<std::string, uint32_t>> whole;
        whole.reserve(places.size());
        for (const uint32_t place : places)
            whole.emplace_back(m_fullKey(place), place);
        std::sort(whole.begin(), whole.end(), [this](const auto& a, const auto& b) {
            const int order = a.first.compare(b.first);
            return order ? (order < 0) != m_descending : a.second < b.second;
        });
        for (size_t i = 0; i < places.size(); ++i)
            places[i] = whole[i].second;
    }

    const KeyColumn& m_keys;
    bool m_descending;
    const FullKey& m_fullKey;
};

} // namespace

void SortByKey(std::vector<KeyedPlace>& items)
{
    const uint64_t bits = BitsToSort(items);
    if (!bits)
        return;
    if (items.size() < kFewItems) {
        std::stable_sort(items.begin(), items.end(),
                         [](const auto& a, const auto& b) { return a.key < b.key; });
        return;
    }
    std::vector<KeyedPlace> sorted(items.size());
    for (unsigned shift = 0; shift < 64; shift += kDigitBits)
        if (DigitOf(bits, shift)) {
            SortByDigit(items, sorted, shift);
            items.swap(sorted);
        }
}

std::vector<uint32_t> SortPlaces(const RecordSet& records, const NumberColumn& numbers, bool descending,
                                 const std::vector<uint32_t>& ascending)
{
    if (auto places = OrderAlong(ascending, records, numbers, descending))
        return std::move(*places);
    std::vector<uint32_t> missing;
    std::vector<KeyedPlace> present = TakePresent(records, numbers, missing, [&](uint32_t place) {
        return descending ? ~numbers.Key(place) : numbers.Key(place);
    });
    SortByKey(present);
    return JoinPlaces(present, missing);
}

std::vector<uint32_t> SortPlaces(const RecordSet& records, const KeyColumn& keys, bool descending,
                                 const FullKey& fullKey)
{
    std::vector<uint32_t> missing;
    std::vector<KeyedPlace> present =
        TakePresent(records, keys, missing, [](uint32_t) { return uint64_t{0}; });
    std::vector<uint32_t> places(present.size());
    KeySorter(keys, descending, fullKey).Sort(std::move(present), 0, places);
    places.insert(places.end(), missing.begin(), missing.end());
    return places;
}

} // namespace mervane
