// The system as SQLite sees it, with one call that fails, and a record of what reaches the disk.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// What SQLite asks of a file system.
enum class FileCall {
    Open,
    Delete,
    Access,
    Read,
    Write,
    Truncate,
    Sync,
    FileSize,
    Lock,
    Unlock,
    ShmMap,
    ShmLock,
};
constexpr size_t kFileCallCount = 12;
const char* NameOf(FileCall call);

// One step towards the disk. Names are the files' last parts.
struct DiskEvent {
    enum class Kind { Create, Write, Truncate, Sync, Delete };
    Kind kind = Kind::Write;
    std::string file;
    int64_t offset = 0; // of a write; the new size of a truncation
    std::string bytes;  // of a write
};

// Lies over the system's own file system as the default one while it lives; stores are opened after it is
// made and closed before it goes. Flushes are counted but not passed on: the machine keeps its power.
class FaultVfs {
  public:
    FaultVfs();
    ~FaultVfs();
    FaultVfs(const FaultVfs&) = delete;
    FaultVfs& operator=(const FaultVfs&) = delete;

    // From now on the nth call of a kind (from 1) fails with the kind's fault of this number (a failed write
    // may be one of a full disk, or one that wrote the first half); all others go through, but for faults
    // that stay.
    void FailNth(FileCall call, int n, int fault = 0);
    void FailNone();
    static int FaultCount(FileCall call);
    static const char* FaultName(FileCall call, int fault);
    bool HasFired() const; // since FailNth
    // Calls since FailNth or FailNone.
    int Seen(FileCall call) const;
    // For how many milliseconds SQLite has waited since then.
    int Slept() const;

    // From now on every step of a store's files is told, before it is done; null: no more.
    void Record(std::function<void(DiskEvent)> listener);
};
