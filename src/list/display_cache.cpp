#include "list/display_cache.h"

#include <algorithm>

#include "list/list_rows.h"
#include "util/owners.h"

const DisplayRecord* DisplayCache::Block::Find(int row) const
{
    const bool held = row >= start && static_cast<size_t>(row - start) < records.size();
    return held ? &records[static_cast<size_t>(row - start)] : nullptr;
}

void DisplayCache::Clear()
{
    m_main = {};
    m_tail = {};
}

void DisplayCache::OnHint(int from, int to, int capacity)
{
    if (from < 0 || to < from)
        return;
    const bool reachesEnd = static_cast<DWORD>(to) + 1 == m_rowCount;
    if (reachesEnd && to - from < kTailRowsMax)
        FillTail(from, to);
    else
        FillMain(from, to, std::max(capacity, kCacheRows));
}

const DisplayRecord& DisplayCache::Row(int row) const
{
    static const DisplayRecord s_blank;
    if (const DisplayRecord* record = m_main.Find(row))
        return *record;
    const DisplayRecord* record = m_tail.Find(row);
    return record ? *record : s_blank;
}

void DisplayCache::FillTail(int from, int to)
{
    if (!m_tail.StartsIn(from))
        Fill(&m_tail, from, to - from + 1);
}

// The end of the range may be one past the counted rows: that row has been read as well.
void DisplayCache::FillMain(int from, int to, int capacity)
{
    if (!m_main.StartsIn(from) || to > m_main.start + m_main.count)
        Fill(&m_main, from, std::min(to - from, capacity - 1) + 1);
}

void DisplayCache::Fill(Block* block, int from, int count)
{
    *block = {};
    block->start = from;
    block->count = count;
    ReadRows(block);
}

// The journal's rows are those of the list, whose filter they are under. A record that cannot be read is a
// blank row, so that the rows behind it keep their places.
void DisplayCache::ReadRows(Block* block)
{
    const CeDBase::ReadScope scope(m_journal);
    const ScopedPosition position(m_journal);
    const uint32_t start = static_cast<uint32_t>(block->start), rows = m_journal.PassingRows();
    const size_t wanted =
        std::min<size_t>(static_cast<size_t>(block->count) + 1, rows - std::min(rows, start));
    const std::vector<CEPROPID> shown = m_columns ? ShownProperties(*m_columns) : std::vector<CEPROPID>();
    ValueTexts texts;
    int more = wanted && m_journal.SeekRow(start) != 0;
    for (; more && block->records.size() < wanted; more = m_journal.SeekNextRecord()) {
        auto count = static_cast<WORD>(shown.size());
        CEPROPVAL* properties = nullptr;
        const CEOID id = m_journal.ReadRecord(&count, shown.data(), &properties);
        const LocalBlock<CEPROPVAL> owner(properties);
        block->records.push_back(id ? FormatRecord(id, count, properties, texts) : DisplayRecord());
    }
}
