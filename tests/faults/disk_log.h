// What a store's files have been through on their way to the disk, and the disks that a loss of power could
// have left.
//
// The file system is taken for one with a journal of its own, as NTFS, ext4 and APFS are: what a flush of a
// file promises is on disk when it returns, and so is all that was done before it to the files' names and
// sizes (made, cut, deleted), which otherwise gets there late but in its order. What was written and not
// flushed gets there in any order, each sector by itself, or not at all.
#pragma once

#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "support/fault_vfs.h"

struct DiskFile {
    std::string bytes;
    // Which of the files that had this name one after the other: what was written to one that is deleted
    // never reaches the next.
    int generation = 0;
};
// Files by the last parts of their names.
using Disk = std::map<std::string, DiskFile>;

class DiskLog {
  public:
    // The disk before the first step.
    explicit DiskLog(Disk before) : m_before(std::move(before)) {}

    void Add(DiskEvent event);
    size_t Size() const { return m_steps.size(); }
    // A flush, or a file that is made, cut or deleted.
    bool IsTurningPoint(size_t step) const { return m_steps[step].kind != DiskEvent::Kind::Write; }

    const Disk& Before() const { return m_before; }
    struct Step : DiskEvent {
        int generation = 0; // of its file
    };
    const std::vector<Step>& Steps() const { return m_steps; }

  private:
    Disk m_before;
    std::map<std::string, int> m_generations;
    std::vector<Step> m_steps;
};

// Goes through a log once, from its beginning to its end.
class DiskReplay {
  public:
    explicit DiskReplay(const DiskLog& log) : m_log(log), m_flushed(log.Before()) {}

    // The first steps of the log have happened; never fewer than before.
    void GoTo(size_t steps);
    // A disk that a loss of power can leave now, by sectors of 512 or of 4096 bytes; where they tear, one may
    // begin with the new and end with the old.
    Disk LosePower(std::mt19937& random) const;

  private:
    void Flush(const std::string& file);

    const DiskLog& m_log;
    Disk m_flushed;
    std::vector<const DiskLog::Step*> m_pending;
    size_t m_next = 0;
};
