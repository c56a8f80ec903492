#include "mervane/sqlite/file_start.h"

#include <sqlite3.h>

#include "mervane/sqlite/sql_database.h"

namespace mervane {

std::optional<FileStart::Seen> FileStart::Read(Database& database)
{
    sqlite3_file* file = database.File();
    const auto before = ReadCheckpointed(database);
    if (!file || !before)
        return std::nullopt;
    Seen seen{*before, {}, 0};
    // A short read is one of a file that has been cut, and fills up with zeros.
    const int read = file->pMethods->xRead(file, seen.header.data(), int{kDatabaseHeaderSize}, 0);
    if ((read != SQLITE_OK && read != SQLITE_IOERR_SHORT_READ) ||
        file->pMethods->xFileSize(file, &seen.size) != SQLITE_OK || ReadCheckpointed(database) != before)
        return std::nullopt;
    return seen;
}

// Once it is another one, only what was there before makes it the same again: what is brought into it then
// makes it no better.
StoreTrouble FileStart::Look(Database& database)
{
    const std::optional<Seen> now = Read(database);
    if (now && m_seen && (m_isOther || m_seen->when == now->when))
        m_isOther = m_seen->header != now->header || m_seen->size != now->size;
    if (now && !m_isOther)
        m_seen = now;
    return m_isOther ? StoreTrouble::OtherFile : StoreTrouble::None;
}

} // namespace mervane
