#include "mervane/backup/migration_copy.h"

#include "mervane/backup/backup_keep.h"
#include "mervane/file/folder_files.h"
#include "mervane/sqlite/store_header.h"

namespace mervane {

StoreTrouble CopyBeforeMigration(Database& store, const std::wstring& path, StoreCopy& copy)
{
    const std::wstring name = BackupNames(FileNameOf(path)).BeforeVersion(kSchemaVersion, 1);
    const bool isWhole = copy.Begin(store, BackupPath(path, name)) && copy.CopyAll() &&
                         copy.Check() == WholeCheck::Result::Whole;
    return isWhole ? StoreTrouble::None : copy.Trouble();
}

std::wstring FreePathBeforeVersion(const std::wstring& storePath, int64_t version)
{
    const BackupNames names(FileNameOf(storePath));
    for (int number = 1;; ++number)
        if (std::wstring path = BackupPath(storePath, names.BeforeVersion(version, number));
            !FileExists(path))
            return path;
}

} // namespace mervane
