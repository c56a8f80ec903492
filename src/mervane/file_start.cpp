#include "mervane/file_start.h"

#include <sqlite3.h>

#include "mervane/sql_database.h"

namespace mervane {

std::optional<FileStart::Start> FileStart::Read(Database& database)
{
    sqlite3_file* file = nullptr;
    const auto before = ReadCheckpointed(database);
    if (!before ||
        sqlite3_file_control(database.Handle(), "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK)
        return std::nullopt;
    Start start{*before, {}, 0};
    // A short read is one of a file that has been cut, and fills up with zeros.
    const int read = file->pMethods->xRead(file, start.header.data(), kHeaderSize, 0);
    if ((read != SQLITE_OK && read != SQLITE_IOERR_SHORT_READ) ||
        file->pMethods->xFileSize(file, &start.size) != SQLITE_OK || ReadCheckpointed(database) != before)
        return std::nullopt;
    return start;
}

StoreTrouble FileStart::Look(Database& database)
{
    const std::optional<Start> now = Read(database);
    if (!now)
        return StoreTrouble::None;
    if (!m_seen || m_seen->when != now->when)
        m_seen = now;
    return m_seen->header == now->header && m_seen->size == now->size ? StoreTrouble::None
                                                                      : StoreTrouble::OtherFile;
}

} // namespace mervane
