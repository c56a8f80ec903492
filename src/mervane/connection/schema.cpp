#include "mervane/connection/schema.h"

#include <iterator>
#include <optional>

#include "mervane/backup/restoration.h"
#include "mervane/backup/migration_copy.h"
#include "mervane/connection/store_neighbours.h"
#include "mervane/file/drive_kind.h"
#include "mervane/file/folder_files.h"
#include "mervane/file/store_path.h"
#include "mervane/sqlite/own_tables.h"
#include "mervane/sqlite/schema_check.h"

namespace mervane {

namespace {

// One flush for each commit and none beside it: the log goes into the file when the last program closes it.
// What another tool may have put into the file (triggers, functions in the schema) is not trusted.
constexpr const char* kConnectionPragmas = "PRAGMA synchronous = FULL;"
                                           "PRAGMA wal_autocheckpoint = 0;"
                                           "PRAGMA temp_store = MEMORY;"
                                           "PRAGMA cell_size_check = ON;"
                                           "PRAGMA foreign_keys = OFF;"
                                           "PRAGMA trusted_schema = OFF;";

// What a large transaction has changed stays in memory until its end. With a rollback journal the file would
// be locked, also for reading, from the first page on that is written before.
constexpr const char* kNoSpill = "PRAGMA cache_spill = OFF";

constexpr ULONGLONG kModeTimeout = 2500; // milliseconds

bool SetMarks(Database& database)
{
    const std::string marks = "PRAGMA application_id = " + std::to_string(kApplicationId) +
                              "; PRAGMA user_version = " + std::to_string(kUserVersion);
    return database.Execute(marks.c_str());
}

// Why what was tried last has failed.
StoreTrouble FailureOf(Database& database)
{
    const StoreTrouble trouble = database.TakeTrouble();
    return trouble == StoreTrouble::None ? StoreTrouble::Other : trouble;
}

// The schema's version, 0 for a file without anything in it; or why this program may not use the file.
struct Found {
    int64_t version;
    StoreTrouble trouble;
};

Found VersionIn(Database& database)
{
    const StoreMarks marks = MarksIn(database);
    if (marks.userVersion == -1)
        return {-1, FailureOf(database)};
    const bool isEmpty = marks == StoreMarks{0, 0} &&
                         database.QueryInteger("SELECT count(*) FROM sqlite_schema") == int64_t{0};
    return {SchemaVersionOf(marks.userVersion), isEmpty ? StoreTrouble::None : TroubleOfMarks(marks)};
}

// What another program that is just making the store has done of it is seen as a whole or not at all.
Found VersionAtOnce(Database& database)
{
    if (!database.Execute("BEGIN"))
        return {-1, FailureOf(database)};
    const Found found = VersionIn(database);
    if (database.Execute("COMMIT"))
        return found;
    return {-1, FailureOf(database)};
}

StoreTrouble CheckTables(Database& database, int64_t version)
{
    if (version == 0 || HasOwnTables(database, version))
        return StoreTrouble::None;
    const StoreTrouble trouble = database.TakeTrouble();
    return trouble == StoreTrouble::None ? StoreTrouble::NotAStore : trouble;
}

// One step for each version.
StoreTrouble RunSteps(Database& database, int64_t version)
{
    for (auto step = static_cast<size_t>(version); step < std::size(kSchemaSteps); ++step)
        if (!database.Execute(kSchemaSteps[step]))
            return FailureOf(database);
    return SetMarks(database) ? StoreTrouble::None : FailureOf(database);
}

// Another program that commits again and again between the copy and the migration is given up.
constexpr int kMostCopies = 10;

// A copy is made first and kept. All steps are one transaction: a store is of its old version or of the
// newest. Nothing where another program has changed the store since the copy: that is to be done again.
std::optional<StoreTrouble> TryToMigrate(Database& database, const std::wstring& path, int64_t version)
{
    StoreCopy copy;
    const auto content = database.QueryInteger("PRAGMA data_version");
    const bool isNew = version == 0;
    const StoreTrouble copied = isNew ? StoreTrouble::None : CopyBeforeMigration(database, path, copy);
    Transaction transaction(database);
    // Another program may have done it meanwhile.
    const Found found = transaction.IsOpen() ? VersionIn(database) : Found{-1, FailureOf(database)};
    if (found.trouble != StoreTrouble::None || found.version >= kSchemaVersion)
        return found.trouble;
    if (copied != StoreTrouble::None)
        return copied;
    if (!content || database.QueryInteger("PRAGMA data_version") != content || found.version != version)
        return std::nullopt;
    StoreTrouble trouble = RunSteps(database, version);
    if (trouble == StoreTrouble::None && !isNew && !copy.Name(FreePathBeforeVersion(path, kSchemaVersion)))
        trouble = copy.Trouble();
    if (trouble == StoreTrouble::None && !transaction.Commit())
        trouble = FailureOf(database);
    if (trouble == StoreTrouble::None)
        copy.Keep();
    return trouble;
}

StoreTrouble Migrate(Database& database, const std::wstring& path, int64_t version)
{
    for (int i = 0; i < kMostCopies; ++i) {
        if (const StoreTrouble odd = CheckTables(database, version); odd != StoreTrouble::None)
            return odd;
        if (const auto trouble = TryToMigrate(database, path, version))
            return *trouble;
        const Found found = VersionAtOnce(database);
        if (found.trouble != StoreTrouble::None || found.version >= kSchemaVersion)
            return found.trouble;
        version = found.version;
    }
    return StoreTrouble::Locked;
}

// How a transaction is made whole. A write-ahead log has an index in mapped memory, which is only safe on a
// drive that stays. Elsewhere a rollback journal is used, which is deleted at the end as other tools do it:
// one that were kept open, they could not delete.
enum class Mode { Log, Rollback };

struct ModeWords {
    const char* pragma;
    const char* name;
};

ModeWords WordsOf(Mode mode)
{
    return mode == Mode::Log ? ModeWords{"PRAGMA journal_mode = WAL", "wal"}
                             : ModeWords{"PRAGMA journal_mode = DELETE", "delete"};
}

// Of several programs that do this at the same time SQLite makes one give up rather than wait.
bool UseMode(Database& database, Mode mode)
{
    const ModeWords words = WordsOf(mode);
    const ULONGLONG end = GetTickCount64() + kModeTimeout;
    for (;; Sleep(10)) {
        (void)database.TakeTrouble();
        Statement statement(database, words.pragma);
        if (statement.Step() == Statement::Result::Row && statement.Text(0) == words.name)
            return true;
        if (database.Trouble() != StoreTrouble::Locked || GetTickCount64() >= end)
            return false;
    }
}

// A log that lies beside the file is read without its index in a file, alone, until the file has another
// mode.
bool BeginAlone(Database& database)
{
    return database.Execute("PRAGMA locking_mode = EXCLUSIVE");
}

// The next read gives the file back to others.
bool EndAlone(Database& database)
{
    return database.Execute("PRAGMA locking_mode = NORMAL; SELECT count(*) FROM sqlite_schema");
}

// A file that cannot be written stays as it is: what is not there yet shows as absent.
bool ShowAsNewest(Database& database, int64_t version)
{
    const std::vector<OwnTable> newest = OwnTablesOf(kSchemaVersion);
    for (const OwnTable& table : OwnTablesOf(version)) {
        const std::string view = ViewAsNewest(table, newest);
        if (!view.empty() && !database.Execute(view.c_str()))
            return false;
    }
    return true;
}

StoreTrouble BringUpToDate(Database& database, const std::wstring& path)
{
    const Found found = VersionAtOnce(database);
    if (found.trouble != StoreTrouble::None || found.version >= kSchemaVersion)
        return found.trouble != StoreTrouble::None ? found.trouble : CheckTables(database, found.version);
    if (!database.IsReadOnly())
        return Migrate(database, path, found.version);
    const StoreTrouble trouble = CheckTables(database, found.version);
    if (trouble != StoreTrouble::None)
        return trouble;
    return ShowAsNewest(database, found.version) ? StoreTrouble::None : StoreTrouble::NotAStore;
}

StoreTrouble MakeReady(Database& database, const std::wstring& path, Mode mode)
{
    if (mode == Mode::Rollback)
        database.MapNoIndex();
    const bool alone = mode == Mode::Rollback && !database.IsReadOnly();
    if ((alone && !BeginAlone(database)) || !database.Execute(kConnectionPragmas))
        return FailureOf(database);
    if (database.IsReadOnly())
        return BringUpToDate(database, path);
    if (const StoreTrouble trouble = BringUpToDate(database, path); trouble != StoreTrouble::None)
        return trouble;
    return UseMode(database, mode) && (!alone || (EndAlone(database) && database.Execute(kNoSpill)))
               ? StoreTrouble::None
               : FailureOf(database);
}

Database::Mode ModeFor(FileKind kind, bool hasLog)
{
    if (kind != FileKind::ReadOnlyStore)
        return Database::Mode::Create;
    return hasLog ? Database::Mode::ReadOnly : Database::Mode::Unchanging;
}

// Leaves a file that is refused as it was found, with what lies beside it.
void CloseUntouched(Database& database, const std::wstring& path, bool hadLog, bool hadSharedMemory)
{
    if (hadLog)
        database.KeepLog();
    database.Close();
    // Another program's is not deleted: it is in use.
    if (hadLog && !hadSharedMemory)
        DeleteFileW((path + L"-shm").c_str());
}

StoreTrouble OpenWith(Database& database, const std::wstring& path, AsideFiles* aside)
{
    // Looked for before the file: one that another program is just making gets its log last.
    const bool hadLog = MayHaveContent(path + L"-wal");
    const bool hadSharedMemory = MayExist(path + L"-shm");
    FileLook file = LookAtFile(path);
    if (file.kind == FileKind::Missing) {
        if (const StoreTrouble trouble = FinishRestoration(path); trouble != StoreTrouble::None)
            return trouble;
        file = LookAtFile(path);
    }
    if (const StoreTrouble trouble = PrepareNeighbours(path, file, aside); trouble != StoreTrouble::None)
        return trouble;
    if (file.kind == FileKind::Missing && !MakeFolderOf(path))
        return StoreTrouble::Unreachable;
    const bool hasLog = MayHaveContent(path + L"-wal");
    const bool isFixed = IsOnFixedDrive(path);
    // It cannot be given another mode, nor opened by us alone; so its log's index would be mapped.
    if (file.kind == FileKind::ReadOnlyStore && hasLog && !isFixed)
        return StoreTrouble::ReadOnly;
    if (!database.Open(path, ModeFor(file.kind, hasLog)))
        return FailureOf(database);
    const StoreTrouble trouble = MakeReady(database, path, isFixed ? Mode::Log : Mode::Rollback);
    if (trouble != StoreTrouble::None)
        CloseUntouched(database, path, hadLog && !aside->Has(path + L"-wal"), hadSharedMemory);
    return trouble;
}

} // namespace

// What was set aside for a file that is refused after all lies beside it again.
StoreTrouble OpenStoreFile(Database& database, const std::wstring& path, std::vector<RenamedFile>* setAside)
{
    AsideFiles aside;
    const StoreTrouble trouble = OpenWith(database, path, &aside);
    if (trouble != StoreTrouble::None) {
        database.Close();
        aside.PutBack();
    }
    *setAside = aside.Files();
    return trouble;
}

} // namespace mervane
