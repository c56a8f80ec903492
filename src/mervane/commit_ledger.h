// What each of the last commits to a store has changed, written down by those who made them in memory that
// all programs share. A program that finds new commits in the store reads here what to read again; where one
// is missing, because its writer keeps no ledger, everything has to be read again.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "mervane/change.h"
#include "mervane/log_state.h"

namespace mervane {

class CommitLedger {
  public:
    CommitLedger() = default;
    ~CommitLedger();
    CommitLedger(const CommitLedger&) = delete;
    CommitLedger& operator=(const CommitLedger&) = delete;

    // The ledger of the store of that path key. Without memory for it nothing is written down or found.
    void Open(const std::wstring& pathKey);

    // The commit that follows the state, under the write lock: Announce before it is made, and Close after it
    // with whether it was.
    void Announce(const LogState& before, const TableChange& what);
    void Close(const LogState& before, bool made);

    // The changes of the commits behind from up to to, in their order; none when one is not written down.
    // Waits a moment for a writer that has made one and is about to close it.
    std::optional<std::vector<TableChange>> Between(const LogState& from, const LogState& to) const;

  private:
    struct Slot;

    Slot& SlotOf(uint32_t number) const;
    std::optional<TableChange> Find(uint32_t number, const LogState* before) const;

    void* m_mapping = nullptr;
    Slot* m_slots = nullptr;
};

} // namespace mervane
