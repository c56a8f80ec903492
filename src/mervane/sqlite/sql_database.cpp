#include "mervane/sqlite/sql_database.h"

#include <sqlite3.h>

#include "mervane/file/database_header.h"
#include "mervane/sqlite/file_growth.h"
#include "mervane/sqlite/sql_trouble.h"
#include "mervane/values/text_codec.h"

namespace mervane {

namespace {

// How long a statement waits for another process's lock.
constexpr int kBusyTimeout = 2500; // milliseconds

// A text or a whole record of more bytes than that is refused, in a foreign file too: reading one takes three
// times the memory.
constexpr int kLongestValue = 128 << 20;

int OpenFlags(Database::Mode mode)
{
    switch (mode) {
    case Database::Mode::Unchanging: return SQLITE_OPEN_READONLY | SQLITE_OPEN_URI;
    case Database::Mode::ReadOnly: return SQLITE_OPEN_READONLY;
    case Database::Mode::Create: return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    }
    return SQLITE_OPEN_READONLY;
}

std::string UnchangingUri(const std::wstring& path)
{
    std::string uri = path.starts_with(L'\\') ? "file://" : "file:///";
    for (const char character : EncodeText(path)) {
        switch (character) {
        case '\\': uri += '/'; break;
        case '%': uri += "%25"; break;
        case '?': uri += "%3f"; break;
        case '#': uri += "%23"; break;
        default: uri += character; break;
        }
    }
    return uri + "?immutable=1";
}

} // namespace

Database::Database() = default;

Database::~Database()
{
    Close();
}

bool Database::Open(const std::wstring& path, Mode mode)
{
    Close();
    GrowFilesByWriting();
    const std::string name = mode == Mode::Unchanging ? UnchangingUri(path) : EncodeText(path);
    if (sqlite3_open_v2(name.c_str(), &m_handle, OpenFlags(mode), nullptr) != SQLITE_OK) {
        NoteFailure();
        Close();
        return false;
    }
    WaitForLocks(true);
    sqlite3_limit(m_handle, SQLITE_LIMIT_LENGTH, kLongestValue);
    // What another tool has put into the file does not run.
    sqlite3_db_config(m_handle, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(m_handle, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    return true;
}

void Database::Close()
{
    sqlite3_close_v2(std::exchange(m_handle, nullptr));
}

bool Database::IsReadOnly() const
{
    return sqlite3_db_readonly(m_handle, "main") != 0;
}

void Database::WaitForLocks(bool wait)
{
    sqlite3_busy_timeout(m_handle, wait ? kBusyTimeout : 0);
}

void Database::KeepLog()
{
    sqlite3_db_config(m_handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

sqlite3_file* Database::File() const
{
    sqlite3_file* file = nullptr;
    const int result = sqlite3_file_control(m_handle, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    return result == SQLITE_OK && file->pMethods ? file : nullptr;
}

// SQLite asks the methods' version whether there is shared memory.
void Database::MapNoIndex()
{
    sqlite3_file* file = File();
    if (!file)
        return;
    m_methods = std::make_unique<sqlite3_io_methods>(*file->pMethods);
    m_methods->iVersion = 1;
    file->pMethods = m_methods.get();
}

// Where no index is mapped, SQLite says of a file with a log no more than that something cannot be opened.
bool Database::IsKeptOutByLog() const
{
    sqlite3_file* file = m_methods ? File() : nullptr;
    BYTE version = 0;
    return file && file->pMethods->xRead(file, &version, 1, kReadVersionPlace) == SQLITE_OK &&
           version == kVersionWithLog;
}

bool Database::Execute(const char* sql)
{
    if (sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr) == SQLITE_OK)
        return true;
    NoteFailure();
    return false;
}

std::optional<int64_t> Database::QueryInteger(const char* sql)
{
    Statement statement(*this, sql);
    if (statement.Step() != Statement::Result::Row)
        return std::nullopt;
    return statement.Integer(0);
}

bool Database::InTransaction() const
{
    return m_handle && !sqlite3_get_autocommit(m_handle);
}

StoreTrouble Database::NoteFailure()
{
    const int code = sqlite3_extended_errcode(m_handle);
    StoreTrouble trouble = TroubleOf(code, static_cast<DWORD>(sqlite3_system_errno(m_handle)));
    if (code == SQLITE_CANTOPEN && IsKeptOutByLog())
        trouble = StoreTrouble::Locked;
    NoteTrouble(trouble);
    return trouble;
}

HANDLE Database::FileHandle() const
{
    HANDLE handle = INVALID_HANDLE_VALUE;
    sqlite3_file_control(m_handle, "main", SQLITE_FCNTL_WIN32_GET_HANDLE, &handle);
    return handle;
}

int64_t Database::LastInsertId() const
{
    return sqlite3_last_insert_rowid(m_handle);
}
int Database::Changes() const
{
    return sqlite3_changes(m_handle);
}

Statement::Statement(Database& database, std::string_view sql) : m_database(&database)
{
    if (!database.IsOpen())
        m_compiling = StoreTrouble::Unreachable;
    else if (sqlite3_prepare_v3(database.Handle(), sql.data(), static_cast<int>(sql.size()),
                                SQLITE_PREPARE_PERSISTENT, &m_statement, nullptr) != SQLITE_OK)
        m_compiling = database.NoteFailure();
}

Statement::~Statement()
{
    sqlite3_finalize(m_statement);
}

Statement::Statement(Statement&& other) noexcept
    : m_database(other.m_database), m_statement(std::exchange(other.m_statement, nullptr)),
      m_compiling(other.m_compiling), m_failed(other.m_failed)
{}

Statement& Statement::operator=(Statement&& other) noexcept
{
    std::swap(m_database, other.m_database);
    std::swap(m_statement, other.m_statement);
    std::swap(m_compiling, other.m_compiling);
    std::swap(m_failed, other.m_failed);
    return *this;
}

void Statement::Fail() const
{
    m_failed = true;
    m_database->NoteFailure();
}

void Statement::FailForMemory() const
{
    m_failed = true;
    m_database->NoteTrouble(StoreTrouble::NoMemory);
}

void Statement::Check(int bound)
{
    if (bound != SQLITE_OK)
        Fail();
}

void Statement::BindInteger(int parameter, int64_t value)
{
    if (m_statement)
        Check(sqlite3_bind_int64(m_statement, parameter, value));
}

void Statement::BindText(int parameter, std::string_view text)
{
    // An empty view may have no address, which would bind NULL.
    if (m_statement)
        Check(sqlite3_bind_text64(m_statement, parameter, text.empty() ? "" : text.data(), text.size(),
                                  SQLITE_STATIC, SQLITE_UTF8));
}

void Statement::BindBlob(int parameter, std::span<const BYTE> bytes)
{
    if (m_statement && bytes.empty())
        Check(sqlite3_bind_zeroblob(m_statement, parameter, 0));
    else if (m_statement)
        Check(sqlite3_bind_blob64(m_statement, parameter, bytes.data(), bytes.size(), SQLITE_STATIC));
}

void Statement::BindNull(int parameter)
{
    if (m_statement)
        Check(sqlite3_bind_null(m_statement, parameter));
}

Statement::Result Statement::Step()
{
    if (!m_statement) {
        if (m_database)
            m_database->NoteTrouble(m_compiling);
        return Result::Failed;
    }
    if (m_failed)
        return Result::Failed;
    switch (sqlite3_step(m_statement)) {
    case SQLITE_ROW: return Result::Row;
    case SQLITE_DONE: return Result::Done;
    default: Fail(); return Result::Failed;
    }
}

void Statement::Reset()
{
    m_failed = false;
    if (m_statement)
        sqlite3_reset(m_statement);
}

bool Statement::IsNull(int column) const
{
    return sqlite3_column_type(m_statement, column) == SQLITE_NULL;
}

std::optional<int64_t> Statement::Integer(int column) const
{
    if (sqlite3_column_type(m_statement, column) != SQLITE_INTEGER)
        return std::nullopt;
    return sqlite3_column_int64(m_statement, column);
}

std::optional<std::string_view> Statement::Text(int column) const
{
    if (sqlite3_column_type(m_statement, column) != SQLITE_TEXT)
        return std::nullopt;
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_statement, column));
    const int length = sqlite3_column_bytes(m_statement, column);
    if (text)
        return std::string_view(text, static_cast<size_t>(length));
    FailForMemory();
    return std::nullopt;
}

std::optional<std::span<const BYTE>> Statement::Blob(int column) const
{
    if (sqlite3_column_type(m_statement, column) != SQLITE_BLOB)
        return std::nullopt;
    const auto* bytes = static_cast<const BYTE*>(sqlite3_column_blob(m_statement, column));
    const int length = sqlite3_column_bytes(m_statement, column);
    // An empty one has no address either, but stays a blob.
    if (bytes || sqlite3_column_type(m_statement, column) == SQLITE_BLOB)
        return std::span(bytes, bytes ? static_cast<size_t>(length) : 0);
    FailForMemory();
    return std::nullopt;
}

Transaction::Transaction(Database& database)
    : m_database(database), m_open(!database.InTransaction() && database.Execute("BEGIN IMMEDIATE"))
{}

Transaction::~Transaction()
{
    if (m_open)
        (void)m_database.Execute("ROLLBACK");
}

bool Transaction::Commit()
{
    if (!m_open || !m_database.InTransaction() || !m_database.Execute("COMMIT"))
        return false;
    m_open = false;
    return true;
}

} // namespace mervane
