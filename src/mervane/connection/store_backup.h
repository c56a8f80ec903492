// The copy of a store that is made of each day on which the program was started.
#pragma once

#include <windows.h>

#include <string>

#include "mervane/backup/backup_keep.h"
#include "mervane/backup/store_copy.h"
#include "mervane/connection/connection.h"

namespace mervane {

// The day's copy of an open store, made in small steps beside the program's own work. What cannot be done is
// not done, and older backups stay as they are. Begin and Step return the time in milliseconds until the next
// Step; 0: there is none.
class StoreBackup {
  public:
    // store is at path and outlives this.
    StoreBackup(Connection& store, const std::wstring& path) : m_store(store), m_path(path) {}
    StoreBackup(const StoreBackup&) = delete;
    StoreBackup& operator=(const StoreBackup&) = delete;

    // Removes what was left unfinished, and begins the day's copy: not where the day has one, the store is
    // read-only, another file is in its place, or the disk has not room for two more.
    [[nodiscard]] unsigned Begin(BackupDay today);
    // A step of a few pages. The last steps check the copy as far as mayGoOn lets them, give it its name
    // (trying for two seconds while another program holds it), and delete surplus backups.
    [[nodiscard]] unsigned Step(MayGoOn mayGoOn);
    // Ends what is under way and removes it.
    void End();
    // Why the one that was begun last was not kept; None where it was, and as long as it is under way.
    StoreTrouble Trouble() const { return m_trouble; }

  private:
    [[nodiscard]] unsigned CopyPages();
    [[nodiscard]] unsigned Finish(MayGoOn mayGoOn);
    [[nodiscard]] bool MayNameSoon();
    void KeepCopy();

    Connection& m_store;
    std::wstring m_path;
    BackupDay m_today{};
    StoreCopy m_copy;
    bool m_isMade = false;  // and not checked yet
    bool m_isWhole = false; // and has not its name yet
    int m_namings = 0;      // that failed
    int m_restarts = 0;
    StoreTrouble m_trouble = StoreTrouble::None;
};

} // namespace mervane
