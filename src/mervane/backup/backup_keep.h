// What a store's backups are called, and which of them are kept.
#pragma once

#include <windows.h>

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace mervane {

using BackupDay = std::chrono::year_month_day;

// Not ok() for a time that is none.
BackupDay DayOfTime(const SYSTEMTIME& time);

// The names of the backups of one store, without their folder.
class BackupNames {
  public:
    // storeFile: the store's own file name.
    explicit BackupNames(std::wstring_view storeFile);

    std::wstring OfDay(BackupDay day) const;
    // number: 1 for the first one.
    std::wstring BeforeVersion(int64_t version, int number) const;
    // What a backup is called while it is made by a process.
    static std::wstring Unfinished(std::wstring_view name, unsigned long process);
    // Whether a file's name is one that Unfinished makes of another name.
    static bool IsUnfinishedOf(std::wstring_view name, std::wstring_view file);

    // The day of a name that OfDay makes. Case does not count in any of these: the store's name may be
    // written in another one than when the backup was made.
    std::optional<BackupDay> DayOf(std::wstring_view name) const;
    // Version and number of a name that BeforeVersion makes.
    using VersionAndNumber = std::pair<int64_t, int64_t>;
    std::optional<VersionAndNumber> VersionOf(std::wstring_view name) const;
    // Whether it is a name that Unfinished makes of one of these.
    bool IsUnfinished(std::wstring_view name) const;

  private:
    std::wstring m_stem;      // "journal"
    std::wstring m_extension; // ".db"
};

// Which of a folder's files go: backups of days that are neither among the latest 7 nor among the latest 4
// Sundays that have one. Days after today, which a wrong clock has made, count for nothing and stay, as all
// other files do. Never the latest one. Called as the folder does.
std::vector<std::wstring> BackupsToDelete(const BackupNames& names, const std::vector<std::wstring>& files,
                                          BackupDay today);

// The backups among a folder's files, unfinished ones not, the newest first as far as their names tell: days
// up to today, then later days, then copies from before a migration, the highest version and number first.
std::vector<std::wstring> NewestFirst(const BackupNames& names, const std::vector<std::wstring>& files,
                                      BackupDay today);

} // namespace mervane
