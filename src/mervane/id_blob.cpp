#include "mervane/id_blob.h"

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

} // namespace

IdBlob ReadIdBlob(std::span<const BYTE> bytes)
{
    if (bytes.size() < kWord)
        return {{}, bytes.empty()};
    const size_t counted = WordAt(bytes, 0);
    const size_t held = bytes.size() / kWord - 1;
    IdBlob blob{{}, bytes.size() == kWord + counted * kWord};
    std::unordered_set<CEOID> seen;
    for (size_t i = 0; i < std::min(counted, held); ++i)
        AppendOnce(blob.ids, seen, WordAt(bytes, i + 1));
    return blob;
}

IdBlob ReadIdBlob(const CEBLOB& blob)
{
    return ReadIdBlob(std::span<const BYTE>(blob.lpb, blob.lpb ? blob.dwCount : 0));
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
