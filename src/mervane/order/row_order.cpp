#include "mervane/order/row_order.h"

#include <algorithm>

namespace mervane {

namespace {

constexpr uint32_t kNoChunk = UINT32_MAX;
// How full a new order makes its chunks: some may come before one must be split.
constexpr uint32_t kFill = 384;

} // namespace

RowOrder::RowOrder(std::span<const uint32_t> places)
{
    const uint32_t highest = places.empty() ? 0 : *std::max_element(places.begin(), places.end());
    m_chunkOf.resize(places.empty() ? 0 : size_t{highest} + 1, kNoChunk);
    for (size_t start = 0; start < places.size(); start += kFill) {
        const auto part = places.subspan(start, std::min<size_t>(kFill, places.size() - start));
        const auto number = static_cast<uint32_t>(m_chunks.size());
        auto& chunk = m_chunks.emplace_back(std::make_unique<Chunk>());
        std::copy(part.begin(), part.end(), chunk->places.begin());
        chunk->count = static_cast<uint32_t>(part.size());
        for (const uint32_t place : part)
            m_chunkOf[place] = number;
        m_sequence.push_back(number);
    }
    m_count = static_cast<uint32_t>(places.size());
    Renumber(0);
}

uint32_t RowOrder::PlaceAt(uint32_t row) const
{
    if (row >= m_count)
        return kNoPlace;
    const auto behind = std::upper_bound(m_firstRow.begin(), m_firstRow.end(), row);
    const auto at = static_cast<size_t>(behind - m_firstRow.begin()) - 1;
    return m_chunks[m_sequence[at]]->places[row - m_firstRow[at]];
}

uint32_t RowOrder::RowOf(uint32_t place) const
{
    if (place >= m_chunkOf.size() || m_chunkOf[place] == kNoChunk)
        return kNoRow;
    const Chunk& chunk = *m_chunks[m_chunkOf[place]];
    const auto found = std::find(chunk.places.begin(), chunk.places.begin() + chunk.count, place);
    return m_firstRow[chunk.sequence] + static_cast<uint32_t>(found - chunk.places.begin());
}

void RowOrder::Remove(uint32_t place)
{
    const uint32_t row = RowOf(place);
    if (row == kNoRow)
        return;
    Chunk& chunk = *m_chunks[m_chunkOf[place]];
    const uint32_t index = row - m_firstRow[chunk.sequence];
    std::copy(chunk.places.begin() + index + 1, chunk.places.begin() + chunk.count,
              chunk.places.begin() + index);
    --chunk.count;
    m_chunkOf[place] = kNoChunk;
    ShiftRows(chunk.sequence, UINT32_MAX);
    if (!chunk.count)
        RemoveChunk(chunk.sequence);
}

void RowOrder::InsertAt(uint32_t at, uint32_t index, uint32_t place)
{
    if (m_chunks[m_sequence[at]]->count == kChunkSize) {
        Split(at);
        const uint32_t kept = m_chunks[m_sequence[at]]->count;
        if (index > kept) {
            index -= kept;
            ++at;
        }
    }
    Chunk& chunk = *m_chunks[m_sequence[at]];
    std::copy_backward(chunk.places.begin() + index, chunk.places.begin() + chunk.count,
                       chunk.places.begin() + chunk.count + 1);
    chunk.places[index] = place;
    ++chunk.count;
    if (place >= m_chunkOf.size())
        m_chunkOf.resize(size_t{place} + 1, kNoChunk);
    m_chunkOf[place] = m_sequence[at];
    ShiftRows(at, 1);
}

void RowOrder::ShiftRows(uint32_t behind, uint32_t by)
{
    m_count += by;
    for (size_t i = size_t{behind} + 1; i < m_firstRow.size(); ++i)
        m_firstRow[i] += by;
    ++m_version;
}

RowOrder::Chunk& RowOrder::AddChunk(uint32_t at)
{
    uint32_t number = static_cast<uint32_t>(m_chunks.size());
    if (m_free.empty()) {
        m_chunks.emplace_back();
    } else {
        number = m_free.back();
        m_free.pop_back();
    }
    m_chunks[number] = std::make_unique<Chunk>();
    m_sequence.insert(m_sequence.begin() + at, number);
    Renumber(at);
    return *m_chunks[number];
}

void RowOrder::RemoveChunk(uint32_t at)
{
    m_free.push_back(m_sequence[at]);
    m_chunks[m_sequence[at]].reset();
    m_sequence.erase(m_sequence.begin() + at);
    Renumber(at);
}

void RowOrder::Split(uint32_t at)
{
    Chunk& left = *m_chunks[m_sequence[at]];
    Chunk& right = AddChunk(at + 1);
    const uint32_t half = left.count / 2;
    std::copy(left.places.begin() + half, left.places.begin() + left.count, right.places.begin());
    right.count = left.count - half;
    left.count = half;
    for (uint32_t i = 0; i < right.count; ++i)
        m_chunkOf[right.places[i]] = m_sequence[at + 1];
    Renumber(at);
}

void RowOrder::Renumber(uint32_t from)
{
    m_firstRow.resize(m_sequence.size());
    for (size_t i = from; i < m_sequence.size(); ++i) {
        m_chunks[m_sequence[i]]->sequence = static_cast<uint32_t>(i);
        m_firstRow[i] = i ? m_firstRow[i - 1] + m_chunks[m_sequence[i - 1]]->count : 0;
    }
}

} // namespace mervane
