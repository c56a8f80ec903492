// RecordSearch: answers which record comes next that a search finds. The first question reads the searched
// property of all records, once; while nothing has changed, the same search's other questions are answered
// from what was found then.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "mervane/file/trouble.h"
#include "mervane/values/property_map.h"

namespace mervane {

class RowOrder;
class Store;
class TableIndex;

struct SearchRequest {
    CEPROPID property = 0; // a text or a time
    std::wstring text;     // for a text; empty: every record that has the property
    bool matchCase = false;
    uint64_t time = 0; // for a time: an instant of the day

    bool operator==(const SearchRequest&) const = default;
};

class RecordSearch {
  public:
    // The first record found behind the given one in the order of the sort, wrapping round; 0 for none. For
    // a record that is not there, 0 for one, the first of all. Where not all could be searched, the store
    // notes why with an answer of 0. Inside a read.
    CEOID Next(const std::shared_ptr<Store>& store, TableId table, const SORTORDERSPEC& sort,
               const SearchRequest& request, CEOID behind);

  private:
    // What the records found depend on.
    struct Basis {
        SearchRequest request;
        TableId table;
        CEPROPID sortProperty;
        DWORD sortFlags;
        uint64_t storeVersion;

        bool operator==(const Basis&) const = default;
    };

    StoreTrouble Find(Store& store, const Basis& basis, const RowOrder& order);
    size_t IndexBehind(const RowOrder& order, TableIndex& index, CEOID id) const;

    std::weak_ptr<Store> m_store;
    std::optional<Basis> m_basis;               // none while nothing was found out
    std::vector<CEOID> m_found;                 // in the order of the sort
    std::vector<uint32_t> m_rows;               // theirs
    StoreTrouble m_missed = StoreTrouble::None; // why not all records were searched
    size_t m_lastAnswer = 0;                    // where the last answer stands in m_found
};

} // namespace mervane
