// RescueFile: the file in which an open editor puts aside what is not saved, in case the program ends without
// having asked. docs/rescue.md tells where they are and what becomes of them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "data/rescue_state.h"
#include "util/owners.h"

// While it has a file, nobody else takes that file over: a lock file lies open beside it, which the system
// closes and removes however the process ends. Whose lock can be taken has nobody any more who works on it.
// (An open handle on the file itself would be in the way of the rename that replaces it.) The file outlives
// the object unless it is removed.
class RescueFile {
  public:
    RescueFile() = default;

    // Puts the state, whole or not at all, in place of the one before; the first time in a new file of its
    // store. False where that fails: the one before is still there.
    [[nodiscard]] bool Write(const RescueState& state);
    // Its work is saved, or given up. False where it cannot be deleted: the file is still this one's.
    [[nodiscard]] bool Remove();
    bool HasFile() const { return !m_path.empty(); }
    // Keeps the file, under a name under which it is not found again. Of the kept ones of its store the
    // newest kKept stay.
    static constexpr size_t kKept = 10;
    void SetAside();
    // Nothing when it cannot be read.
    std::optional<RescueState> Read() const;

    // Those of a store that a program has left behind, the oldest first.
    static std::vector<RescueFile> FindLeft(uint64_t store);

  private:
    explicit RescueFile(std::wstring path) : m_path(std::move(path)) {}
    [[nodiscard]] bool Lock();
    [[nodiscard]] bool TakeName(uint64_t store);
    void Release();

    std::wstring m_path; // empty: none
    UniqueKernelHandle m_lock;
};
