// Putting a backup into the place of a store that is broken, emptied or gone. A file that is there is kept
// beside it with all that belongs to it, under another name, and nothing is ever written over.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "mervane/backup/backup_keep.h"
#include "mervane/file/trouble.h"

namespace mervane {

// Whether a store that was not opened for this reason is broken: damaged, or no database at all. Another
// program's database is not.
bool IsBroken(const std::wstring& storePath, StoreTrouble trouble);

// Whether opening would make a new store: there is no file, or an empty one. A log without its store and a
// restoration that was interrupted are something.
bool IsGone(const std::wstring& storePath);

struct FoundBackup {
    std::wstring path;
    BackupDay day; // on which it was made
    int64_t entries = 0;
};
struct BackupSearch {
    std::optional<FoundBackup> found;
    bool hasAny = false; // by its name, whole or not
    // Why the newest backup is not known, and which path could not be read: a backup, before those that would
    // come behind it, or the folder.
    StoreTrouble trouble = StoreTrouble::None;
    std::wstring unread;
};
// The newest backup of the store that is whole; each is read from one end to the other until one is. Those of
// days to come, which a wrong clock has made, and those made before a migration come last.
BackupSearch NewestWholeBackup(const std::wstring& storePath, BackupDay today);

class Restoration {
  public:
    // Of the file that is there now, or of none: another one that has come into its place is not touched.
    explicit Restoration(const std::wstring& storePath);

    // None when no other program has the file open.
    [[nodiscard]] StoreTrouble InTheWay() const;
    // Whether another file has come there since, and not an empty one: another start, say, has put a backup
    // in its place.
    [[nodiscard]] bool HasAnother() const;
    // What the file that is there will be called.
    const std::wstring& KeptAs() const { return m_keptAs; }
    // None when a copy of the backup is in the store's place and the file that was there is kept. Else
    // everything is as it was: there is no room, another program has the store open, a file cannot be
    // renamed. A loss of power, or a rename that can neither be done nor undone, leaves the old state, the
    // new one, or one that FinishRestoration completes.
    [[nodiscard]] StoreTrouble Run(const std::wstring& backup) const;

  private:
    // Which file it is, and its content as far as its size and times tell.
    struct Stamp {
        DWORD volume, indexHigh, indexLow, sizeHigh, sizeLow;
        FILETIME lastWrite;
        bool operator==(const Stamp& other) const;
    };
    std::optional<Stamp> StampNow() const;
    [[nodiscard]] StoreTrouble Exchange(const std::wstring& copy) const;
    [[nodiscard]] StoreTrouble Fill(const std::wstring& copy) const;

    std::wstring m_path;
    std::wstring m_name; // that all files of this restoration have in common
    std::wstring m_keptAs;
    bool m_wasMissing;
    std::optional<Stamp> m_stamp;
};

// Where a store is missing: brings a restoration that a loss of power has interrupted to its end. None also
// when there is none.
[[nodiscard]] StoreTrouble FinishRestoration(const std::wstring& storePath);

} // namespace mervane
