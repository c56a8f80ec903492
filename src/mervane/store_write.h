// One write to the store, or its part in a bulk: rolled back unless committed.
#pragma once

#include "mervane/store.h"

namespace mervane {

class StoreWrite {
  public:
    explicit StoreWrite(Store& store);
    ~StoreWrite();
    StoreWrite(const StoreWrite&) = delete;
    StoreWrite& operator=(const StoreWrite&) = delete;

    bool IsOpen() const { return m_open; }
    // On disk when true; in a bulk, as soon as that ends well.
    [[nodiscard]] bool Commit(const TableChange& what);

  private:
    Store& m_store;
    bool m_open = false;
};

} // namespace mervane
