// The store of this process: one connection to one file, shared by all open databases.
#pragma once

#include <array>
#include <memory>
#include <optional>

#include "mervane/change_hub.h"
#include "mervane/name_cache.h"
#include "mervane/row_index.h"
#include "mervane/table.h"

namespace mervane {

class Store {
  public:
    // The store at StorePath(), opened if this process has not yet; null when that fails.
    static std::shared_ptr<Store> Open();
    ~Store();
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    // Reading. Between the two calls, which nest, one read transaction is held. What other connections have
    // changed is noticed by the outermost BeginRead.
    void BeginRead();
    void EndRead();

    // Bulk work, which nests: all writes in between are one transaction. EndBulk answers whether everything
    // is on disk; with keep false, at whatever depth, nothing was changed.
    void BeginBulk();
    [[nodiscard]] bool EndBulk(bool keep);

    // Writes: 0 or false on failure, and nothing is changed then.
    [[nodiscard]] CEOID WriteRecord(TableId table, CEOID id, const RecordValues& values);
    [[nodiscard]] bool DeleteRecord(TableId table, CEOID id);
    [[nodiscard]] bool AddToUses(CEOID category, int step);
    [[nodiscard]] bool ResetUses();

    Table& TableOf(TableId table) { return m_tables[IndexOf(table)]; }
    // Inside BeginRead.
    const NameCache& NamesOf(TableId table);
    std::shared_ptr<const RowIndex> RowsOf(TableId table, const SORTORDERSPEC& sort);
    ChangeHub& Changes() { return m_changes; }

  private:
    class Write;

    explicit Store(const std::wstring& pathKey);
    void NoticeForeignChanges();
    void ForgetCaches();
    void AfterWrite(TableId table, const Change& change);
    bool MayHaveName(CEOID id, const RecordValues& values);

    std::wstring m_pathKey;
    Database m_database;
    Statement m_dataVersion;
    std::optional<int64_t> m_seenVersion;
    std::array<Table, kTableCount> m_tables;
    std::array<std::optional<NameCache>, kTableCount> m_names;
    std::array<std::vector<std::shared_ptr<const RowIndex>>, kTableCount> m_rows;
    ChangeHub m_changes;
    int m_readDepth = 0;
    int m_bulkDepth = 0;
    bool m_bulkFailed = false;
};

} // namespace mervane
