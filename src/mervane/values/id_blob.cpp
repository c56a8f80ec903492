#include "mervane/values/id_blob.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <unordered_set>

namespace mervane {

namespace {

constexpr size_t kWord = sizeof(uint32_t);
// Up to here a search through what is there beats a hash set.
constexpr size_t kSmallSet = 32;

uint32_t WordAt(std::span<const BYTE> bytes, size_t index)
{
    uint32_t word;
    memcpy(&word, bytes.data() + index * kWord, kWord);
    return word;
}

void AppendOnce(std::vector<CEOID>& ids, std::unordered_set<CEOID>& seen, CEOID id)
{
    if (id == 0)
        return;
    if (ids.size() < kSmallSet) {
        if (std::find(ids.begin(), ids.end(), id) == ids.end())
            ids.push_back(id);
        return;
    }
    if (seen.empty())
        seen.insert(ids.begin(), ids.end());
    if (seen.insert(id).second)
        ids.push_back(id);
}

// How many words behind the count are counted and wholly there.
size_t IdCount(std::span<const BYTE> bytes)
{
    return bytes.size() < kWord ? 0 : std::min<size_t>(WordAt(bytes, 0), bytes.size() / kWord - 1);
}

std::span<const BYTE> BytesOf(const CEBLOB& blob)
{
    return {blob.lpb, blob.lpb ? blob.dwCount : 0};
}

} // namespace

IdBlob ReadIdBlob(std::span<const BYTE> bytes)
{
    if (bytes.size() < kWord)
        return {{}, bytes.empty()};
    IdBlob blob{{}, bytes.size() == kWord + size_t{WordAt(bytes, 0)} * kWord};
    std::unordered_set<CEOID> seen;
    const size_t count = IdCount(bytes);
    for (size_t i = 0; i < count; ++i)
        AppendOnce(blob.ids, seen, WordAt(bytes, i + 1));
    return blob;
}

IdBlob ReadIdBlob(const CEBLOB& blob)
{
    return ReadIdBlob(BytesOf(blob));
}

bool HoldsAnyId(const CEBLOB& blob, std::span<const CEOID> wanted)
{
    const std::span<const BYTE> bytes = BytesOf(blob);
    const size_t count = IdCount(bytes);
    for (size_t i = 0; i < count; ++i) {
        const CEOID id = WordAt(bytes, i + 1);
        if (id && std::binary_search(wanted.begin(), wanted.end(), id))
            return true;
    }
    return false;
}

int MakeIdBlob(std::span<const CEOID> ids, CEBLOB* blob)
{
    *blob = {0, nullptr};
    if (ids.empty())
        return 1;
    const auto count = static_cast<uint32_t>(ids.size());
    auto* block = static_cast<BYTE*>(LocalAlloc(LMEM_FIXED, kWord + ids.size_bytes()));
    if (!block)
        return 0;
    memcpy(block, &count, kWord);
    memcpy(block + kWord, ids.data(), ids.size_bytes());
    *blob = {static_cast<DWORD>(kWord + ids.size_bytes()), block};
    return 1;
}

} // namespace mervane
