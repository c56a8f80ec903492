// What each of the last commits to a store has changed, written down by those who made them in memory that
// all programs share. A program that finds new commits in the store reads here what to read again; where one
// is missing, because its writer keeps no ledger, everything has to be read again.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "mervane/sqlite/log_state.h"
#include "mervane/values/change.h"

namespace mervane {

class CommitLedger {
  public:
    CommitLedger() = default;
    ~CommitLedger();
    CommitLedger(const CommitLedger&) = delete;
    CommitLedger& operator=(const CommitLedger&) = delete;

    // The ledger of the store at the path. Without memory for it nothing is written down or found.
    void Open(const std::wstring& path);

    // The commit that follows the state, under the write lock: Announce before it is made, and Close after it
    // with the state that it has made; none when it was not made, or when that state is not known.
    void Announce(const LogState& before, const TableChange& what);
    void Close(const LogState& before, const std::optional<LogState>& after);

    // The changes of the commits behind from up to to, in their order; none when a commit is not noted, or
    // when the noted ones do not form a chain from the first state to the last. Waits a moment for a writer
    // that has made one and is about to close it.
    std::optional<std::vector<TableChange>> Between(const LogState& from, const LogState& to) const;

  private:
    struct Slot;
    // A commit as it is written down.
    struct Link {
        uint64_t before; // the checks of the states around it
        uint64_t after;
        TableChange what;
    };

    Slot& SlotOf(uint32_t number) const;
    std::optional<Link> Find(uint32_t number) const;

    void* m_mapping = nullptr;
    Slot* m_slots = nullptr;
};

} // namespace mervane
