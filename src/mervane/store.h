// The store of this process: one connection to one file, shared by all open databases.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "mervane/backup.h"
#include "mervane/change_hub.h"
#include "mervane/commit_ledger.h"
#include "mervane/connection.h"
#include "mervane/name_cache.h"
#include "mervane/table.h"
#include "mervane/table_index.h"
#include "mervane/table_scan.h"

namespace mervane {

class Cursor;

class Store {
  public:
    // The store at StorePath(), opened if this process has not yet; null when that fails, with *trouble
    // saying why.
    static std::shared_ptr<Store> Open(StoreTrouble* trouble);
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    // What operations fail in is noted, the first failure since it was taken: see Database.
    StoreTrouble TakeTrouble() { return m_connection.Sql().TakeTrouble(); }
    void Note(StoreTrouble trouble) { m_connection.Sql().NoteTrouble(trouble); }
    // true inside another operation
    bool EnterOperation() { return m_operations++ > 0; }
    void LeaveOperation() { --m_operations; }

    // Reading. Between the two calls, which nest, one read transaction is held. What other connections have
    // changed is noticed by the outermost BeginRead; where that fails, the next one inside tries it again.
    void BeginRead();
    void EndRead();

    // Bulk work, which nests: all writes in between are one transaction. EndBulk answers whether everything
    // is on disk; with keep false, at whatever depth, nothing was changed. BulkTrouble is the first trouble
    // of a write since the outermost BeginBulk, and that of its own end.
    void BeginBulk();
    [[nodiscard]] bool EndBulk(bool keep);
    StoreTrouble BulkTrouble() const { return m_bulkTrouble; }

    // Writes: 0 or false on failure, and nothing is changed then.
    [[nodiscard]] CEOID WriteRecord(TableId table, CEOID id, const RecordValues& values);
    [[nodiscard]] bool DeleteRecord(TableId table, CEOID id);
    [[nodiscard]] bool AddToUses(CEOID category, int step);
    [[nodiscard]] bool ResetUses();

    Table& TableOf(TableId table) { return m_tables[mervane::IndexOf(table)]; }
    // Inside BeginRead.
    const NameCache& NamesOf(TableId table) { return m_names.Of(table); }
    const std::shared_ptr<TableIndex>& IndexOf(TableId table);
    // As ScanTable, of one of the store's tables.
    [[nodiscard]] StoreTrouble Scan(TableId table, const std::string& columns, const OnScannedRow& onRow);

    // Differs after each change of a record, whoever has made it. Inside a read.
    uint64_t Version() const { return m_version; }

    // What is under way ends with the store.
    StoreBackup& Backup() { return m_backup; }

    ChangeHub& Changes() { return m_changes; }
    void AddCursor(Cursor* cursor) { m_cursors.push_back(cursor); }
    void RemoveCursor(Cursor* cursor) { std::erase(m_cursors, cursor); }

  private:
    friend class StoreWrite;

    Store(const std::wstring& path, const std::wstring& pathKey);
    // false when it could not be found out whether there are any.
    [[nodiscard]] bool NoticeForeignChanges();
    void BeginView();
    [[nodiscard]] bool BeginWrite();
    void NoteBulkTrouble();
    void NoteWrite(const TableChange& what);
    void LookForForeignChanges();
    void TakeOverChanges();
    void Follow(const std::vector<TableChange>& changes);
    void FollowOne(const TableChange& what);
    void FollowRecord(TableId table, CEOID id);
    [[nodiscard]] bool FollowIndex(TableIndex& index, TableId table, CEOID id);
    [[nodiscard]] bool CommitAs(const TableChange& what);
    void ForgetAll();
    void ForgetIncomplete();
    void TellCursors(TableId table, CEOID id, const RecordValues* values);
    void AfterWrite(TableId table, const Change& change, const RecordValues* values);
    void AfterNames(TableId table);
    void AfterUses(const Change& change);
    bool MayHaveName(CEOID id, const RecordValues& values);

    std::wstring m_pathKey;
    Connection m_connection;
    StoreBackup m_backup;
    CommitLedger m_ledger;
    std::optional<LogState> m_seen; // what the indexes and names are as of
    std::array<Table, kTableCount> m_tables;
    NameCaches m_names;
    std::array<std::shared_ptr<TableIndex>, kTableCount> m_indexes;
    std::vector<Cursor*> m_cursors;
    ChangeHub m_changes;
    uint64_t m_version = 0;
    int m_operations = 0;
    int m_readDepth = 0;
    int m_bulkDepth = 0;
    bool m_bulkFailed = false;
    StoreTrouble m_bulkTrouble = StoreTrouble::None;
    int m_bulkInserts = 0;
    unsigned m_bulkWrites = 0;
    TableChange m_bulkFirst{TableId::Journal, {kChangeWorkEnded}}; // of the writes
};

} // namespace mervane
