// The store of this process: one connection to one file, shared by all open databases.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "mervane/changes/change_hub.h"
#include "mervane/changes/commit_ledger.h"
#include "mervane/connection/connection.h"
#include "mervane/connection/store_backup.h"
#include "mervane/order/table_index.h"
#include "mervane/records/name_cache.h"
#include "mervane/records/table.h"
#include "mervane/records/table_scan.h"
#include "mervane/store/unread.h"

namespace mervane {

class Cursor;

class Store {
  public:
    // The store at StorePath(), opened if this process has not yet; null when that fails, with *trouble
    // saying why, and *setAside what was set aside all the same.
    static std::shared_ptr<Store> Open(StoreTrouble* trouble, std::vector<RenamedFile>* setAside);
    // Gives a share up; the last one closes the store. None, or why no whole copy of it was kept though its
    // file is not in its place any more.
    static StoreTrouble Leave(std::shared_ptr<Store> store);
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    // What operations fail in is noted, the first failure since it was taken: see Database.
    StoreTrouble TakeTrouble() { return m_connection.Sql().TakeTrouble(); }
    void Note(StoreTrouble trouble) { m_connection.Sql().NoteTrouble(trouble); }
    // true inside another operation
    bool EnterOperation() { return m_operations++ > 0; }
    void LeaveOperation() { --m_operations; }

    // What an operation of reading has failed in: the owners are told to read again once that can be done.
    void NoteUnread(StoreTrouble trouble) { m_unread.Note(trouble); }
    // Whether the path still leads to the file that is open, as of a moment ago: see OpenedFile.
    StoreTrouble FileTrouble() const { return m_fileTrouble; }

    std::vector<RenamedFile> TakeSetAside() { return m_connection.TakeSetAside(); }

    // Reading. Between the two calls, which nest, one read transaction is held. What other connections have
    // changed is noticed by the outermost BeginRead; where that fails, the next one inside tries it again.
    void BeginRead();
    void EndRead();

    // Bulk work, which nests: all writes in between are one transaction. EndBulk answers whether everything
    // is on disk; with keep false, at whatever depth, nothing was changed. BulkTrouble is the first trouble
    // of a write since the outermost BeginBulk, and that of its own end.
    void BeginBulk();
    [[nodiscard]] bool EndBulk(bool keep);
    StoreTrouble BulkTrouble() const { return m_bulk.trouble; }

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

    // Bulk work, the one that is under way or the last.
    struct Bulk {
        int depth = 0;
        bool failed = false;
        StoreTrouble trouble = StoreTrouble::None;
        int inserts = 0;
        unsigned changes = 0; // without use counts
        TableChange first{TableId::Journal, {kChangeWorkEnded}};
        unsigned uses = 0; // changes of use counts
        TableChange use{TableId::Categories, {kChangeWorkEnded, 0, false}};
    };

    explicit Store(const std::wstring& path);
    // false when it could not be found out whether there are any.
    [[nodiscard]] bool NoticeForeignChanges();
    void BeginView();
    void EndLeftOpen();
    [[nodiscard]] bool BeginWrite();
    void NoteBulkTrouble();
    void NoteWrite(const TableChange& what);
    void NoteWriteInBulk(const TableChange& what);
    TableChange BulkChange() const;
    void Look();
    void LookForForeignChanges();
    void LookAtFile();
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
    Unread m_unread;
    StoreTrouble m_fileTrouble = StoreTrouble::None;
    ULONGLONG m_nextFileLook = 0; // in ticks
    ChangeHub m_changes;
    uint64_t m_version = 0;
    int m_operations = 0;
    int m_readDepth = 0;
    Bulk m_bulk;
};

} // namespace mervane
