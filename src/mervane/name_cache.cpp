#include "mervane/name_cache.h"

#include <algorithm>

#include "mervane/sort_key.h"
#include "mervane/text_codec.h"

namespace mervane {

namespace {

constexpr const char* kSelectCategories = "SELECT oid, name, hidden FROM categories";
constexpr const char* kSelectContacts = "SELECT oid, file_as, 0 FROM contacts";

} // namespace

NameCache::NameCache(Database& database, TableId table)
{
    Statement statement(database, table == TableId::Categories ? kSelectCategories : kSelectContacts);
    std::vector<std::pair<std::string, Entry>> keyed;
    while (statement.Step() == Statement::Result::Row) {
        const int64_t id = statement.Integer(0).value_or(0);
        const auto text = statement.Text(1);
        if (id <= 0 || id > UINT32_MAX || !text)
            continue;
        std::wstring name = DecodeText(*text);
        std::string key = SortKey(name);
        keyed.emplace_back(std::move(key), Entry{static_cast<CEOID>(id), std::move(name),
                                                 statement.Integer(2).value_or(0) != 0});
    }
    std::sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) {
        const int order = a.first.compare(b.first);
        return order ? order < 0 : a.second.id < b.second.id;
    });
    m_entries.reserve(keyed.size());
    m_rankOf.reserve(keyed.size());
    for (auto& [key, entry] : keyed) {
        m_rankOf.emplace_back(entry.id, static_cast<uint32_t>(m_entries.size()));
        m_entries.push_back(std::move(entry));
    }
    std::sort(m_rankOf.begin(), m_rankOf.end());
}

const NameCache::Entry* NameCache::Find(CEOID id) const
{
    const auto found = std::lower_bound(m_rankOf.begin(), m_rankOf.end(), std::pair(id, uint32_t{0}));
    return found != m_rankOf.end() && found->first == id ? &m_entries[found->second] : nullptr;
}

uint32_t NameCache::RankOf(CEOID id) const
{
    const Entry* entry = Find(id);
    return entry ? static_cast<uint32_t>(entry - m_entries.data()) : UINT32_MAX;
}

std::wstring NameCache::Join(std::span<const CEOID> ids, wchar_t separator) const
{
    std::vector<const Entry*> named;
    named.reserve(ids.size());
    for (const CEOID id : ids)
        if (const Entry* entry = Find(id))
            named.push_back(entry);
    std::sort(named.begin(), named.end());
    named.erase(std::unique(named.begin(), named.end()), named.end());
    std::wstring joined;
    for (const Entry* entry : named) {
        if (entry != named.front())
            joined += separator;
        joined += entry->name;
    }
    return joined;
}

} // namespace mervane
