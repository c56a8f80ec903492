#include "mervane/records/name_cache.h"

#include <algorithm>

#include "mervane/records/table_scan.h"
#include "mervane/values/sort_key.h"
#include "mervane/values/text_codec.h"

namespace mervane {

namespace {

struct KeyedEntry {
    std::string key;
    NameCache::Entry entry;
};

StoreTrouble ReadEntries(Database& database, TableId table, std::vector<KeyedEntry>* entries)
{
    const char* columns = table == TableId::Categories ? "name, hidden" : "file_as, 0";
    SortKeyMaker maker;
    return ScanTable(database, InfoOf(table).name, columns, [&](CEOID id, const Statement& row) {
        const auto text = row.Text(1);
        if (!text)
            return;
        std::wstring name = DecodeText(*text);
        std::string key(maker.Make(name));
        entries->push_back({std::move(key), {id, std::move(name), row.Integer(2).value_or(0) != 0}});
    });
}

} // namespace

NameCache::NameCache(Database& database, TableId table)
{
    std::vector<KeyedEntry> keyed;
    m_missing = ReadEntries(database, table, &keyed);
    std::sort(keyed.begin(), keyed.end(), [](const KeyedEntry& a, const KeyedEntry& b) {
        const int order = a.key.compare(b.key);
        return order ? order < 0 : a.entry.id < b.entry.id;
    });
    // Around damage a record may have come twice.
    const auto isSame = [](const KeyedEntry& a, const KeyedEntry& b) { return a.entry.id == b.entry.id; };
    keyed.erase(std::unique(keyed.begin(), keyed.end(), isSame), keyed.end());
    m_entries.reserve(keyed.size());
    m_rankOf.reserve(keyed.size());
    for (KeyedEntry& item : keyed) {
        m_rankOf.emplace_back(item.entry.id, static_cast<uint32_t>(m_entries.size()));
        m_entries.push_back(std::move(item.entry));
    }
    std::sort(m_rankOf.begin(), m_rankOf.end());
}

const NameCache::Entry* NameCache::Find(CEOID id) const
{
    const uint32_t rank = RankOf(id);
    return rank == UINT32_MAX ? nullptr : &m_entries[rank];
}

uint32_t NameCache::RankOf(CEOID id) const
{
    const auto found = std::lower_bound(m_rankOf.begin(), m_rankOf.end(), std::pair(id, uint32_t{0}));
    return found != m_rankOf.end() && found->first == id ? found->second : UINT32_MAX;
}

std::wstring NameCache::Join(std::span<const CEOID> ids, wchar_t separator) const
{
    std::vector<uint32_t> ranks;
    ranks.reserve(ids.size());
    for (const CEOID id : ids)
        if (const uint32_t rank = RankOf(id); rank != UINT32_MAX)
            ranks.push_back(rank);
    std::sort(ranks.begin(), ranks.end());
    ranks.erase(std::unique(ranks.begin(), ranks.end()), ranks.end());
    std::wstring joined;
    for (const uint32_t rank : ranks) {
        if (rank != ranks.front())
            joined += separator;
        joined += m_entries[rank].name;
    }
    return joined;
}

const NameCache& NameCaches::Of(TableId table)
{
    auto& cache = m_caches[IndexOf(table)];
    if (!cache)
        cache.emplace(m_database, table);
    return *cache;
}

void NameCaches::ForgetIncomplete()
{
    for (auto& cache : m_caches)
        if (cache && MayPass(cache->Missing()))
            cache.reset();
}

} // namespace mervane
