// DisplayCache: the formatted rows around the visible page and at the end of the list, so that a paint costs
// no access to the store.
#pragma once

#include <vector>

#include "columns/column_set.h"
#include "list/display_record.h"
#include "mervane/db_journal.h"

constexpr int kCacheRows = 50;   // of a block, at least
constexpr int kTailRowsMax = 30; // a hint that reaches the last row belongs to the tail when it is this short

class DisplayCache {
  public:
    // Both are borrowed and outlive the cache. rowCount: how many rows the list has, as it was told.
    DisplayCache(DbJournal& journal, const DWORD& rowCount) : m_journal(journal), m_rowCount(rowCount) {}

    // The list's columns: only what those that are shown show is read. Borrowed; null: every field. To be
    // cleared when other ones are shown.
    void SetColumns(const ColumnSet* columns) { m_columns = columns; }
    void Clear();
    // Makes ready for painting the rows from..to, whatever they are; to < from is no row. A block holds
    // capacity rows (at least kCacheRows): a wider hint is clipped.
    void OnHint(int from, int to, int capacity);
    // The record of a row; the blank one when the row is in neither block.
    const DisplayRecord& Row(int row) const;

  private:
    // Kept: two blocks, for a jump to the end and back shows at once what was there.
    struct Block {
        int start = 0;
        int count = 0;
        std::vector<DisplayRecord> records; // one more than count, as far as rows go

        bool StartsIn(int row) const { return count && row >= start && row < start + count; }
        const DisplayRecord* Find(int row) const;
    };

    void FillTail(int from, int to);
    void FillMain(int from, int to, int capacity);
    void Fill(Block* block, int from, int count);
    void ReadRows(Block* block);

    DbJournal& m_journal;
    const DWORD& m_rowCount;
    const ColumnSet* m_columns = nullptr;
    Block m_main;
    Block m_tail;
};
