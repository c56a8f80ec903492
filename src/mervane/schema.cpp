#include "mervane/schema.h"

#include <iterator>

#include "mervane/drive_kind.h"
#include "mervane/store_header.h"
#include "mervane/store_path.h"

namespace mervane {

namespace {

constexpr const char* kVersion1 = R"sql(
CREATE TABLE journal(
  oid INTEGER PRIMARY KEY AUTOINCREMENT,
  date INTEGER,
  subject TEXT,
  body TEXT,
  categories BLOB,
  type TEXT,
  kind INTEGER,
  priority INTEGER,
  sensitivity INTEGER,
  end_time INTEGER,
  duration INTEGER,
  contacts BLOB
);
CREATE INDEX journal_numbers ON journal(date, end_time, duration, kind, priority, sensitivity);
CREATE TABLE categories(
  oid INTEGER PRIMARY KEY AUTOINCREMENT,
  name TEXT NOT NULL COLLATE NOCASE UNIQUE,
  uses INTEGER DEFAULT 0,
  hidden INTEGER DEFAULT 0
);
CREATE TABLE contacts(
  oid INTEGER PRIMARY KEY AUTOINCREMENT,
  file_as TEXT,
  company TEXT
);
)sql";

// More of a contact, and an index with what lists of contacts show, so that they are read without notes and
// pictures.
constexpr const char* kVersion2 = R"sql(
ALTER TABLE contacts ADD COLUMN first_name TEXT;
ALTER TABLE contacts ADD COLUMN last_name TEXT;
ALTER TABLE contacts ADD COLUMN job_title TEXT;
ALTER TABLE contacts ADD COLUMN emails TEXT;
ALTER TABLE contacts ADD COLUMN phones TEXT;
ALTER TABLE contacts ADD COLUMN address TEXT;
ALTER TABLE contacts ADD COLUMN birthday TEXT;
ALTER TABLE contacts ADD COLUMN note TEXT;
ALTER TABLE contacts ADD COLUMN vcard_extra TEXT;
CREATE INDEX contacts_names ON contacts(file_as, company);
)sql";

// What each version adds to the one before it.
constexpr const char* kSteps[] = {kVersion1, kVersion2};
static_assert(std::size(kSteps) == kSchemaVersion);

// A store of version 1 that cannot be written stays as it is: its contacts are shown as if they had the
// columns.
constexpr const char* kContactsOfVersion1 =
    "CREATE TEMP VIEW contacts AS SELECT *, NULL AS first_name, NULL AS last_name, NULL AS job_title, "
    "NULL AS emails, NULL AS phones, NULL AS address, NULL AS birthday, NULL AS note, NULL AS vcard_extra "
    "FROM main.contacts";

// One flush for each commit and none beside it: the log goes into the file when the last program closes it.
// What another tool may have put into the file (triggers, functions in the schema) is not trusted.
constexpr const char* kConnectionPragmas = "PRAGMA synchronous = FULL;"
                                           "PRAGMA wal_autocheckpoint = 0;"
                                           "PRAGMA temp_store = MEMORY;"
                                           "PRAGMA cell_size_check = ON;"
                                           "PRAGMA trusted_schema = OFF;";

constexpr ULONGLONG kModeTimeout = 2500; // milliseconds

// Both or, while another program keeps the file to itself, none: it may be ready between the two.
StoreMarks MarksIn(Database& database)
{
    const std::optional<int64_t> application = database.QueryInteger("PRAGMA application_id");
    if (!application)
        return {-1, -1};
    return {*application, database.QueryInteger("PRAGMA user_version").value_or(-1)};
}

bool SetMarks(Database& database)
{
    const std::string marks = "PRAGMA application_id = " + std::to_string(kApplicationId) +
                              "; PRAGMA user_version = " + std::to_string(kUserVersion);
    return database.Execute(marks.c_str());
}

// 0 for a file without anything in it, none for one that this program may not use.
std::optional<int64_t> VersionIn(Database& database)
{
    const StoreMarks marks = MarksIn(database);
    if (MayUse(marks))
        return SchemaVersionOf(marks.userVersion);
    const bool isEmpty = marks == StoreMarks{0, 0} &&
                         database.QueryInteger("SELECT count(*) FROM sqlite_schema") == int64_t{0};
    return isEmpty ? std::optional<int64_t>(0) : std::nullopt;
}

// What another program that is just making the store has done of it is seen as a whole or not at all.
std::optional<int64_t> VersionAtOnce(Database& database)
{
    if (!database.Execute("BEGIN"))
        return std::nullopt;
    const std::optional<int64_t> version = VersionIn(database);
    return database.Execute("COMMIT") ? version : std::nullopt;
}

// One step for each version, all in one transaction: a store is of its old version or of the newest.
bool Migrate(Database& database)
{
    Transaction transaction(database);
    // Another program may have done it meanwhile.
    const std::optional<int64_t> version = transaction.IsOpen() ? VersionIn(database) : std::nullopt;
    if (!version || *version >= kSchemaVersion)
        return version.has_value();
    for (auto step = static_cast<size_t>(*version); step < std::size(kSteps); ++step)
        if (!database.Execute(kSteps[step]))
            return false;
    return SetMarks(database) && transaction.Commit();
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
        Statement statement(database, words.pragma);
        if (statement.Step() == Statement::Result::Row && statement.Text(0) == words.name)
            return true;
        if (GetTickCount64() >= end)
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

// A file that cannot be written: what is not there yet shows as absent.
bool ShowAsNewest(Database& database, int64_t version)
{
    return version == 1 && database.Execute(kContactsOfVersion1);
}

bool HasTables(Database& database)
{
    return Statement(
               database,
               "SELECT date, end_time, duration, kind, priority, sensitivity, subject, body, categories, "
               "type, contacts FROM journal")
               .IsValid() &&
           Statement(database, "SELECT name, uses, hidden FROM categories").IsValid() &&
           Statement(database, "SELECT file_as, company, first_name, last_name, job_title, emails, phones, "
                               "address, birthday, note, vcard_extra FROM contacts")
               .IsValid();
}

bool BringUpToDate(Database& database)
{
    const std::optional<int64_t> version = VersionAtOnce(database);
    if (!version)
        return false;
    if (*version < kSchemaVersion &&
        !(database.IsReadOnly() ? ShowAsNewest(database, *version) : Migrate(database)))
        return false;
    return HasTables(database);
}

bool MakeReady(Database& database, Mode mode)
{
    if (!database.Execute(kConnectionPragmas))
        return false;
    if (database.IsReadOnly())
        return BringUpToDate(database);
    if (mode == Mode::Log)
        return BringUpToDate(database) && UseMode(database, mode);
    return BeginAlone(database) && BringUpToDate(database) && UseMode(database, mode) && EndAlone(database);
}

bool FileExists(const std::wstring& path)
{
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool HasLog(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    return GetFileAttributesExW((path + L"-wal").c_str(), GetFileExInfoStandard, &data) &&
           (data.nFileSizeLow || data.nFileSizeHigh);
}

// A newer program that was killed may have left its marks in the log only. Alone with the file, SQLite reads
// the log without making a file of its own; when another program has the store open, this one opens it the
// usual way.
bool LogIsForeign(const std::wstring& path)
{
    Database database;
    // To be alone with a file one must be able to write it.
    if (!database.Open(path, Database::Mode::Create))
        return false;
    database.KeepLog();
    (void)database.Execute("PRAGMA locking_mode = EXCLUSIVE; PRAGMA busy_timeout = 0");
    const StoreMarks marks = MarksIn(database);
    return marks.userVersion != -1 && !MayUse(marks);
}

// A log whose file is gone or emptied has what was saved last, and a new file would do away with it.
bool MayNotUseLog(const std::wstring& path, FileKind kind)
{
    return kind == FileKind::Missing || kind == FileKind::Empty || LogIsForeign(path);
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

} // namespace

bool OpenStoreFile(Database& database, const std::wstring& path)
{
    // Looked for before the file: one that another program is just making gets its log last.
    const bool hadLog = HasLog(path);
    const bool hadSharedMemory = FileExists(path + L"-shm");
    const FileKind kind = LookAtFile(path);
    if (kind == FileKind::Foreign || (hadLog && MayNotUseLog(path, kind)))
        return false;
    if (kind == FileKind::Missing && !MakeFolderOf(path))
        return false;
    if (!database.Open(path, ModeFor(kind, hadLog)))
        return false;
    if (MakeReady(database, IsOnFixedDrive(path) ? Mode::Log : Mode::Rollback))
        return true;
    CloseUntouched(database, path, hadLog, hadSharedMemory);
    return false;
}

} // namespace mervane
