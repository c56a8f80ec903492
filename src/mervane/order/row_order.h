// An order of records, by their places: row to record and record to row at once, kept up to date one by one.
//
// The rows lie in chunks of a few hundred, so that a record that comes or goes moves one chunk and renumbers
// the chunks behind it, however many records there are.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "mervane/order/record_set.h"

namespace mervane {

constexpr uint32_t kNoRow = UINT32_MAX;

class RowOrder {
  public:
    // The places in their order, each once.
    explicit RowOrder(std::span<const uint32_t> places);

    uint32_t Count() const { return m_count; }
    uint32_t PlaceAt(uint32_t row) const;          // kNoPlace past the end
    uint32_t RowOf(uint32_t place) const;          // kNoRow when it is not in the order
    uint64_t Version() const { return m_version; } // differs after each change
    // Calls action(place) for all, in their order.
    template <typename Action> void ForEachPlace(Action action) const
    {
        for (const uint32_t number : m_sequence)
            for (uint32_t i = 0; i < m_chunks[number]->count; ++i)
                action(m_chunks[number]->places[i]);
    }

    // isBefore(other): the record of that place comes before the new one.
    template <typename IsBefore> void Insert(uint32_t place, IsBefore isBefore)
    {
        const uint32_t chunk = ChunkFor([&](uint32_t first) { return isBefore(first); });
        const auto& places = m_chunks[m_sequence[chunk]]->places;
        uint32_t low = 0, high = m_chunks[m_sequence[chunk]]->count;
        while (low < high) {
            const uint32_t middle = (low + high) / 2;
            if (isBefore(places[middle]))
                low = middle + 1;
            else
                high = middle;
        }
        InsertAt(chunk, low, place);
    }
    // Nothing when it is not in the order.
    void Remove(uint32_t place);

  private:
    static constexpr uint32_t kChunkSize = 512;
    struct Chunk {
        std::array<uint32_t, kChunkSize> places;
        uint32_t count = 0;
        uint32_t sequence = 0; // where m_sequence has it
    };

    // The last chunk whose first record comes before, else the first.
    template <typename IsBefore> uint32_t ChunkFor(IsBefore isBefore)
    {
        if (m_sequence.empty())
            AddChunk(0);
        uint32_t low = 0, high = static_cast<uint32_t>(m_sequence.size());
        while (low < high) {
            const uint32_t middle = (low + high) / 2;
            const Chunk& chunk = *m_chunks[m_sequence[middle]];
            if (chunk.count && isBefore(chunk.places[0]))
                low = middle + 1;
            else
                high = middle;
        }
        return low ? low - 1 : 0;
    }
    Chunk& AddChunk(uint32_t at);
    void RemoveChunk(uint32_t at);
    void Split(uint32_t at);
    void InsertAt(uint32_t chunk, uint32_t index, uint32_t place);
    void Renumber(uint32_t from);
    void ShiftRows(uint32_t behind, uint32_t by);

    std::vector<std::unique_ptr<Chunk>> m_chunks; // by chunk number; null: the number is free
    std::vector<uint32_t> m_free;
    std::vector<uint32_t> m_sequence; // chunk numbers in the order of the rows
    std::vector<uint32_t> m_firstRow; // of each in m_sequence
    std::vector<uint32_t> m_chunkOf;  // by place
    uint32_t m_count = 0;
    uint64_t m_version = 0;
};

} // namespace mervane
