#include "mervane/order/key_column.h"

#include <algorithm>
#include <cstring>

namespace mervane {

namespace {

// Before each key: its length, and whether it is cut.
constexpr uint16_t kCutBit = 0x8000;
constexpr size_t kLongestKey = 0x4000;
constexpr size_t kMuchWaste = 0x100000;
using EntryHead = uint16_t;

EntryHead HeadOf(const char* entry)
{
    EntryHead head;
    memcpy(&head, entry, sizeof head);
    return head;
}

} // namespace

KeyColumn::KeyColumn(uint32_t places, size_t keyLimit)
    : m_keyLimit(std::min(keyLimit, kLongestKey)), m_positions(places, kMissing)
{}

std::string_view KeyColumn::Key(uint32_t place) const
{
    const char* entry = EntryAt(m_positions[place]);
    return {entry + sizeof(EntryHead), static_cast<size_t>(HeadOf(entry) & ~kCutBit)};
}

bool KeyColumn::IsCut(uint32_t place) const
{
    return (HeadOf(EntryAt(m_positions[place])) & kCutBit) != 0;
}

std::optional<int> KeyColumn::Compare(uint32_t a, uint32_t b) const
{
    if (const int order = Key(a).compare(Key(b)))
        return order;
    // Of two keys that are the same so far the one that goes on is the greater.
    const int aCut = IsCut(a), bCut = IsCut(b);
    return aCut && bCut ? std::nullopt : std::optional(aCut - bCut);
}

void KeyColumn::Set(uint32_t place, std::optional<std::string_view> key)
{
    if (!IsMissing(place))
        m_wasted += sizeof(EntryHead) + Key(place).size();
    m_positions[place] = key ? Append(key->substr(0, m_keyLimit), key->size() > m_keyLimit) : kMissing;
    if (m_wasted > kMuchWaste && m_wasted > m_blocks.size() * kBlockSize / 2)
        DropWaste();
}

uint32_t KeyColumn::Append(std::string_view key, bool cut)
{
    const auto size = static_cast<uint32_t>(sizeof(EntryHead) + key.size());
    if (m_used + size > kBlockSize) {
        m_blocks.push_back(std::make_unique_for_overwrite<Block>());
        m_used = 0;
    }
    char* entry = m_blocks.back()->data() + m_used;
    const auto head = static_cast<EntryHead>(key.size() | (cut ? kCutBit : 0));
    memcpy(entry, &head, sizeof head);
    std::copy(key.begin(), key.end(), entry + sizeof head);
    const auto position = static_cast<uint32_t>((m_blocks.size() - 1) * kBlockSize + m_used);
    m_used += size;
    return position;
}

void KeyColumn::DropWaste()
{
    KeyColumn fresh(static_cast<uint32_t>(m_positions.size()), m_keyLimit);
    for (uint32_t place = 0; place < m_positions.size(); ++place)
        if (!IsMissing(place))
            fresh.m_positions[place] = fresh.Append(Key(place), IsCut(place));
    *this = std::move(fresh);
}

} // namespace mervane
