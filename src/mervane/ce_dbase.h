// CeDBase: one database (journal, categories or contacts) of the device's store, as the program sees it:
// records with an identifier, walked in the database's current sort order.
//
// All objects of a process share one connection to one SQLite file (see docs/store.md), so opening a second
// database while a first is open costs nothing. Everything runs on the thread that opened it.
//
// Operations return 1 for success and 0 for failure. A write either is on disk when it returns or has
// returned 0 and left the record as it was. Identifiers are never reused. Trouble() tells a 0 that means "no"
// from one that means that the answer is not known.
#pragma once

#include "mervane/file/trouble.h"
#include "mervane/order/row_filter.h"
#include "mervane/values/database_change.h"
#include "mervane/values/tables.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace mervane {
class Store;
class Cursor;
} // namespace mervane

class CeDBase {
  public:
    CeDBase(const CeDBase&) = delete;
    CeDBase& operator=(const CeDBase&) = delete;

    // The last one to close closes the store. Where its file is not in its place any more a whole copy is
    // kept there, as NAME.replaced-TIME; Trouble() tells why that could not be done.
    virtual int Close();

    // Of this object's last operation: None when it was done, and when its answer is a true "no" (there is no
    // such record, the value is refused); otherwise why it failed. An answer that comes with a trouble tells
    // only of what could be read. Every operation fails while the database is closed, for the reason for
    // which it could not be opened.
    [[nodiscard]] StoreTrouble Trouble() const { return m_trouble; }
    // OtherFile or Unreachable while another file, or none, is in the place of the store's: what is read is
    // the old one's, and every write fails. Looked at twice a second; a change of it is told to the owners.
    [[nodiscard]] StoreTrouble FileTrouble() const;
    // The files beside the store that were not its own when this process opened it, and were renamed; also
    // where the opening failed. They are told once, to whoever asks first.
    [[nodiscard]] std::vector<RenamedFile> TakeSetAside();

    // flag is always 1 here. Records that lack the property come last in either direction, equal ones by
    // identifier; texts sort by the user's locale without regard to case. A property that this database does
    // not have leaves the order as it is.
    virtual void SetSort(const SORTORDERSPEC& sort, int flag);
    virtual void GetSort(SORTORDERSPEC* sort) const;

    // The identifier found, which is now the current record; 0 when the record is gone.
    [[nodiscard]] virtual CEOID SeekRecord(CEOID id);
    // The current record, also where reading it fails; 0: none.
    [[nodiscard]] CEOID CurrentRecord() const;
    // Walks, in the current sort order. Non-zero when there is such a record, which is now the current one.
    // A record deleted during a walk is passed over; the walk goes on behind it. What was begun with
    // SeekFirstRecord or SeekRecord comes to all records in the sort order, whatever the row filter; what was
    // begun with SeekRow goes on row by row.
    [[nodiscard]] virtual int SeekFirstRecord();
    [[nodiscard]] virtual int SeekNextRecord();
    virtual int DeleteRecord(CEOID id);
    // At most 65,535: the count saturates and never wraps.
    virtual DWORD RecordCount();

    // Reads the current record. *count: how many properties are wanted, 0 = all that it has; wanted: their
    // identifiers (may be null when *count is 0). Returns the identifier of the record read, 0 on failure. On
    // success *properties is one LocalAlloc block with the texts and blobs in it; the caller frees it with
    // one LocalFree. *count is the number of properties. With *count 0 they come in ascending property
    // number; otherwise in the order asked for, those that the record lacks flagged CEDB_PROPNOTFOUND. On
    // failure *properties is null and *count 0. A stored value of an unexpected type reads as absent.
    virtual CEOID ReadRecord(WORD* count, const CEPROPID* wanted, CEPROPVAL** properties);

    // Those properties of the current record that ReadRecord cannot give back as they are stored, by another
    // program: of an unexpected type, a number out of range, a text with a NUL or with bytes that are none. A
    // write of one does away with what is there.
    [[nodiscard]] std::vector<CEPROPID> ForeignProperties();

    // Writes to the record id, or creates one when id is 0. Changes only the properties sent; those flagged
    // CEDB_PROPDELETE are removed. Returns the identifier written; 0 on failure (no such record, an unknown
    // property, the disk is full, the store is read-only or locked past the busy time-out).
    [[nodiscard]] virtual CEOID WriteRecord(CEOID id, WORD count, const CEPROPVAL* properties);

    // Closes it. Kept: the device's own classes are laid out so, and the virtual operations stand in the
    // order of their slots, which this one follows.
    virtual ~CeDBase();

    // Rows of the current order, from 0: of all records, under a row filter those that pass before all
    // others. SeekRow makes the record of a row the current one and returns its identifier, 0 when there is
    // no such row. RowOf returns -1 for a record that is not there. Both cost no walk, whatever the position.
    [[nodiscard]] CEOID SeekRow(uint32_t row);
    [[nodiscard]] CEOID IdOfRow(uint32_t row);
    [[nodiscard]] int RowOf(CEOID id);

    // Puts the records that pass the filter first in the rows, those that do not behind them, each group in
    // the sort order, from now on: writes by whomever move records between the groups. All records are tested
    // anew, over values held in memory. Lasts until it is cleared or the database closed. Returns the
    // filter's stamp, which no other filter of this object gets; 0, and nothing changes, when this database
    // has no such property, there is no test, or it is closed.
    uint32_t SetRowFilter(RowFilter filter);
    void ClearRowFilter();
    uint32_t RowFilterStamp() const; // of the one in force; 0: there is none
    // How many records pass the row filter; without one, how many there are. Never cut.
    [[nodiscard]] uint32_t PassingRows();

    // A text property of a record, cut to size - 1 characters and terminated; returns its length, 0 (and an
    // empty text) when there is none.
    int GetStr(CEOID id, wchar_t* text, int size, CEPROPID property);

    // The place of a category or contact in the order of the names, whatever the sort; one that is not there
    // or has no name comes behind all others.
    uint32_t NameRank(CEOID id);

    // The names of a blob's records, in the order of the names, joined with the separator, as one LocalAlloc
    // block that the caller frees; returns its length. Records that no longer exist are not named. With no
    // names *text is null and the result 0. A blob of a wrong shape names what it validly holds.
    int SetStrFromBlob(const CEBLOB& blob, wchar_t separator, wchar_t** text);

    // Holds one read transaction while it lives, so that a page or a full pass asks the system for its locks
    // once and sees one state of the store. They nest. A write inside a scope is possible: it renews the
    // scope's view.
    class ReadScope {
      public:
        explicit ReadScope(CeDBase& database);
        ~ReadScope();
        ReadScope(const ReadScope&) = delete;
        ReadScope& operator=(const ReadScope&) = delete;

      private:
        std::shared_ptr<mervane::Store> m_store;
    };

    // Bulk work: one transaction for all writes of its life, announced to other processes with the codes 1
    // and 15, unless it is one write alone. Commit returns 1 when everything is on disk; without it, when it
    // fails, or when a write of the scope has failed with a trouble, nothing was changed.
    class BulkScope {
      public:
        explicit BulkScope(CeDBase& database);
        ~BulkScope();
        BulkScope(const BulkScope&) = delete;
        BulkScope& operator=(const BulkScope&) = delete;

        [[nodiscard]] int Commit();
        // Why not everything could be written: the first trouble of a write in the scope, or its end's. After
        // Commit it is the database's Trouble too.
        [[nodiscard]] StoreTrouble Trouble() const;

      private:
        CeDBase& m_database;
        std::shared_ptr<mervane::Store> m_store;
        StoreTrouble m_trouble = StoreTrouble::None; // once m_store is given up
    };

    bool IsOpen() const;

    // Closes every database of this process, whoever has it open, and with them the store, unless a scope or
    // an operation is under way. For the end of the process, when nobody will ask any more.
    static void CloseAll();

  protected:
    // One operation, which leaves its trouble behind. They nest: the first trouble inside counts.
    class Operation {
      public:
        enum class Kind { Writes, Reads };
        explicit Operation(CeDBase& database, Kind kind = Kind::Writes);
        ~Operation();
        Operation(const Operation&) = delete;
        Operation& operator=(const Operation&) = delete;

      private:
        CeDBase& m_database;
        const Kind m_kind;
        std::shared_ptr<mervane::Store> m_store;
        StoreTrouble m_outer = StoreTrouble::None;
        bool m_isNested = false;
    };
    // One that reads.
    class ReadOperation {
      public:
        explicit ReadOperation(CeDBase& database)
            : m_operation(database, Operation::Kind::Reads), m_scope(database)
        {}

      private:
        Operation m_operation;
        ReadScope m_scope;
    };

    explicit CeDBase(mervane::TableId table);

    // Opens the store if this process has not yet, and this database in it. owner, which may be null, gets
    // the change notifications until Close.
    [[nodiscard]] int OpenTable(HWND owner);
    // null while closed
    const std::shared_ptr<mervane::Store>& SharedStore() const { return m_store; }

  private:
    mervane::TableId m_table;
    std::shared_ptr<mervane::Store> m_store;   // null while closed
    std::unique_ptr<mervane::Cursor> m_cursor; // sort order, row filter and current record
    uint32_t m_lastStamp = 0;                  // of a row filter
    StoreTrouble m_trouble = StoreTrouble::None;
    StoreTrouble m_closed = StoreTrouble::Unreachable; // why it is
    std::vector<RenamedFile> m_setAside;               // by an opening that has failed
};
