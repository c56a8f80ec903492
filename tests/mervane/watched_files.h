// Watches what SQLite asks of the system while this lives, and fails writes on demand. Stores must be opened
// after it is made and closed before it goes.
#pragma once

class WatchedFiles {
  public:
    struct Counts {
        int syncs = 0;
        int reads = 0;
        int writes = 0;
        int locks = 0; // of the file and of the shared memory, taken and given back
    };

    WatchedFiles();
    ~WatchedFiles();
    WatchedFiles(const WatchedFiles&) = delete;
    WatchedFiles& operator=(const WatchedFiles&) = delete;

    const Counts& Seen() const;
    void Forget();
    // From now on the disk is full, or not.
    void FillDisk(bool full);
    // From now on a flush fails, or not.
    void FailSyncs(bool fail);
    // From now on nothing can be read that is not in memory, or everything.
    void FailReads(bool fail);
    // Of the reads from now on one fails, behind so many that do not; none with a negative number.
    void FailOneRead(int behind);
};
