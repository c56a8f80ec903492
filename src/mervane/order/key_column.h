// The sort keys of a text property of all records, by their places, made once and kept.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace mervane {

class KeyColumn {
  public:
    // Keys are cut to keyLimit bytes, so that a column of long texts stays within bounds.
    KeyColumn(uint32_t places, size_t keyLimit);

    // New places lack the property.
    void Resize(uint32_t places) { m_positions.resize(places, kMissing); }
    void Set(uint32_t place, std::optional<std::string_view> key);

    bool IsMissing(uint32_t place) const { return m_positions[place] == kMissing; }
    // Borrowed until the next Set.
    std::string_view Key(uint32_t place) const;
    bool IsCut(uint32_t place) const;
    // Below zero, zero, above zero; none when both keys are cut and the same so far. Neither may be missing.
    std::optional<int> Compare(uint32_t a, uint32_t b) const;

    size_t Bytes() const { return m_positions.size() * sizeof(uint32_t) + m_blocks.size() * kBlockSize; }

  private:
    static constexpr uint32_t kMissing = UINT32_MAX;
    static constexpr uint32_t kBlockSize = 0x10000;
    using Block = std::array<char, kBlockSize>;

    const char* EntryAt(uint32_t position) const
    {
        return m_blocks[position / kBlockSize]->data() + position % kBlockSize;
    }
    uint32_t Append(std::string_view key, bool cut);
    void DropWaste();

    size_t m_keyLimit;
    std::vector<uint32_t> m_positions;
    std::vector<std::unique_ptr<Block>> m_blocks;
    uint32_t m_used = kBlockSize; // of the last block
    size_t m_wasted = 0;          // bytes of keys that were replaced
};

} // namespace mervane
