#include "mervane/schema.h"

#include "mervane/store_header.h"
#include "mervane/store_path.h"

namespace mervane {

namespace {

constexpr const char* kCreateVersion1 = R"sql(
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

// How a connection works: one flush for each commit, no wait for the disk before it; the log goes into the
// file when the last program closes (Store sees to a log that grows without end before that). Triggers and
// views that another tool may have put into the file do not run.
constexpr const char* kConnectionPragmas = "PRAGMA synchronous = FULL;"
                                           "PRAGMA wal_autocheckpoint = 0;"
                                           "PRAGMA mmap_size = 2147418112;"
                                           "PRAGMA temp_store = MEMORY;"
                                           "PRAGMA cell_size_check = ON;"
                                           "PRAGMA trusted_schema = OFF;";

bool SetMarks(Database& database)
{
    const std::string marks = "PRAGMA application_id = " + std::to_string(kApplicationId) +
                              "; PRAGMA user_version = " + std::to_string(kUserVersion);
    return database.Execute(marks.c_str());
}

StoreMarks MarksIn(Database& database)
{
    return {database.QueryInteger("PRAGMA application_id").value_or(-1),
            database.QueryInteger("PRAGMA user_version").value_or(-1)};
}

bool IsEmpty(Database& database)
{
    return MarksIn(database) == StoreMarks{0, 0} &&
           database.QueryInteger("SELECT count(*) FROM sqlite_schema") == int64_t{0};
}

// One step for each version, in one transaction, so that a store is of one version or of the next.
bool Migrate(Database& database)
{
    Transaction transaction(database);
    if (!transaction.IsOpen())
        return false;
    int64_t version = IsEmpty(database) ? 0 : SchemaVersionOf(MarksIn(database).userVersion);
    if (version == kSchemaVersion)
        return true;
    if (version == 0) {
        if (!database.Execute(kCreateVersion1))
            return false;
        version = 1;
    }
    return version == kSchemaVersion && SetMarks(database) && transaction.Commit();
}

bool NeedsMigration(Database& database)
{
    return IsEmpty(database) || SchemaVersionOf(MarksIn(database).userVersion) < kSchemaVersion;
}

// Of two programs that do this at the same time one may be told to wait, so it is not final.
bool UseLog(Database& database)
{
    const ULONGLONG end = GetTickCount64() + 2500;
    while (!database.Execute("PRAGMA journal_mode = WAL")) {
        if (GetTickCount64() >= end)
            return false;
        Sleep(10);
    }
    return true;
}

bool MakeReady(Database& database)
{
    if (!database.Execute(kConnectionPragmas))
        return false;
    if (!IsEmpty(database) && !MayUse(MarksIn(database)))
        return false;
    if (database.IsReadOnly())
        return !NeedsMigration(database);
    return (!NeedsMigration(database) || Migrate(database)) && UseLog(database);
}

} // namespace

bool OpenStoreFile(Database& database, const std::wstring& path)
{
    const FileKind kind = LookAtFile(path);
    if (kind == FileKind::Foreign || (kind == FileKind::Missing && !MakeFolderOf(path)))
        return false;
    const Database::Mode mode =
        kind == FileKind::ReadOnlyStore ? Database::Mode::ReadOnly : Database::Mode::Create;
    if (!database.Open(path, mode))
        return false;
    if (MakeReady(database))
        return true;
    database.Close();
    return false;
}

} // namespace mervane
