// One write to the store, or its part in a bulk: rolled back unless committed.
#pragma once

#include "mervane/store/store.h"

namespace mervane {

class StoreWrite {
  public:
    explicit StoreWrite(Store& store);
    ~StoreWrite();
    StoreWrite(const StoreWrite&) = delete;
    StoreWrite& operator=(const StoreWrite&) = delete;

    // Asked right before the statement: a read that has failed ends the transaction, and what is written
    // then would be written by itself.
    bool IsOpen() const { return m_open && m_store.m_connection.InTransaction(); }
    // On disk when true; in a bulk, as soon as that ends well.
    [[nodiscard]] bool Commit(const TableChange& what);

  private:
    Store& m_store;
    bool m_open = false;
    bool m_committed = false;
};

} // namespace mervane
