#include "mervane/backup/whole_store.h"

#include <sqlite3.h>

#include <cstdlib>

#include "mervane/sqlite/schema_check.h"
#include "mervane/sqlite/sql_database.h"
#include "mervane/sqlite/sql_trouble.h"
#include "mervane/sqlite/store_header.h"

namespace mervane {

namespace {

// What another tool has put into the tables is not trusted here either.
constexpr const char* kCheckPragmas = "PRAGMA trusted_schema = OFF; PRAGMA cell_size_check = ON";

// Has a connection's statements give up where something else is to be done first.
class Interruption {
  public:
    Interruption(Database& database, MayGoOn mayGoOn) : m_mayGoOn(mayGoOn)
    {
        if (mayGoOn)
            sqlite3_progress_handler(database.Handle(), kProgressOfLook, Look, this);
    }
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    bool HasCome() const { return m_hasCome; }

  private:
    static int Look(void* self)
    {
        auto* interruption = static_cast<Interruption*>(self);
        interruption->m_hasCome = interruption->m_hasCome || !interruption->m_mayGoOn();
        return interruption->m_hasCome;
    }

    static constexpr int kProgressOfLook = 200; // pages that are checked, or a statement's steps

    MayGoOn m_mayGoOn;
    bool m_hasCome = false;
};

StoreTrouble TroubleIn(Database& file)
{
    const StoreMarks marks = MarksIn(file);
    if (!MayUse(marks) || !HasOwnTables(file, SchemaVersionOf(marks.userVersion))) {
        const StoreTrouble trouble = file.TakeTrouble();
        return trouble == StoreTrouble::None ? StoreTrouble::NotAStore : trouble;
    }
    return TroubleOfCheck(file, "PRAGMA quick_check(1)");
}

// SQLite's checks tell a page that they could not read among what they find, by its code in words.
int CodeIn(std::string_view finding)
{
    constexpr std::string_view kCode = "error code=", kListPage = "failed to get page";
    if (const size_t code = finding.find(kCode); code != std::string_view::npos)
        return atoi(std::string(finding.substr(code + kCode.size())).c_str());
    return finding.find(kListPage) == std::string_view::npos ? SQLITE_CORRUPT : SQLITE_IOERR_READ;
}

DWORD LastErrorOf(Database& file)
{
    int error = 0;
    sqlite3_file_control(file.Handle(), "main", SQLITE_FCNTL_LAST_ERRNO, &error);
    return static_cast<DWORD>(error);
}

} // namespace

StoreTrouble TroubleOfCheck(Database& file, const char* check)
{
    file.TakeTrouble();
    Statement statement(file, check);
    const auto finding = statement.Step() == Statement::Result::Row ? statement.Text(0) : std::nullopt;
    if (finding)
        return *finding == "ok" ? StoreTrouble::None : TroubleOf(CodeIn(*finding), LastErrorOf(file));
    const StoreTrouble trouble = file.TakeTrouble();
    return trouble == StoreTrouble::None ? StoreTrouble::Damaged : trouble;
}

WholeCheck CheckWhole(const std::wstring& path, MayGoOn mayGoOn)
{
    Database file;
    if (!file.Open(path, Database::Mode::Unchanging) || !file.Execute(kCheckPragmas))
        return {WholeCheck::Result::NotWhole, file.TakeTrouble()};
    const Interruption interruption(file, mayGoOn);
    const StoreTrouble trouble = TroubleIn(file);
    sqlite3_progress_handler(file.Handle(), 0, nullptr, nullptr);
    if (interruption.HasCome())
        return {WholeCheck::Result::Interrupted, StoreTrouble::None};
    const auto result =
        trouble == StoreTrouble::None ? WholeCheck::Result::Whole : WholeCheck::Result::NotWhole;
    return {result, trouble};
}

} // namespace mervane
