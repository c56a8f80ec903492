#include "mervane/sqlite/sql_trouble.h"

#include <windows.h>
#include <sqlite3.h>

namespace mervane {

namespace {

constexpr DWORD kDiskQuotaExceeded = 1295; // not in every header

StoreTrouble TroubleOfAccess(int code, DWORD systemError)
{
    switch (code) {
    case SQLITE_IOERR_NOMEM: return StoreTrouble::NoMemory;
    case SQLITE_IOERR_SHORT_READ:
    case SQLITE_IOERR_CORRUPTFS:
    case SQLITE_IOERR_DATA: return StoreTrouble::Damaged;
    case SQLITE_CANTOPEN_ISDIR: return StoreTrouble::IsFolder;
    default: return TroubleOfSystem(systemError);
    }
}

} // namespace

StoreTrouble TroubleOfSystem(unsigned long error)
{
    switch (error) {
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
    case kDiskQuotaExceeded: return StoreTrouble::Full;
    case ERROR_WRITE_PROTECT: return StoreTrouble::ReadOnly;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION: return StoreTrouble::Locked;
    case ERROR_ACCESS_DENIED:
    case ERROR_PRIVILEGE_NOT_HELD: return StoreTrouble::NoAccess;
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
    case ERROR_COMMITMENT_LIMIT:
    case ERROR_NO_SYSTEM_RESOURCES: return StoreTrouble::NoMemory;
    case ERROR_FILE_CORRUPT:
    case ERROR_DISK_CORRUPT:
    case ERROR_CRC: return StoreTrouble::Damaged;
    default: return StoreTrouble::Unreachable;
    }
}

StoreTrouble TroubleOf(int code, unsigned long systemError)
{
    switch (code & 0xFF) {
    case SQLITE_OK:
    case SQLITE_ROW:
    case SQLITE_DONE:
    case SQLITE_CONSTRAINT: return StoreTrouble::None;
    case SQLITE_FULL: return StoreTrouble::Full;
    case SQLITE_READONLY:
        return code == SQLITE_READONLY_DBMOVED ? StoreTrouble::OtherFile : StoreTrouble::ReadOnly;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL: return StoreTrouble::Locked;
    case SQLITE_CORRUPT: return StoreTrouble::Damaged;
    case SQLITE_NOTADB: return StoreTrouble::NotAStore;
    case SQLITE_NOMEM: return StoreTrouble::NoMemory;
    case SQLITE_IOERR:
    case SQLITE_CANTOPEN: return TroubleOfAccess(code, systemError);
    case SQLITE_PERM:
    case SQLITE_AUTH: return StoreTrouble::NoAccess;
    case SQLITE_TOOBIG: return StoreTrouble::TooLarge;
    // A table or a column is not there any more: another tool has changed the file.
    case SQLITE_ERROR:
    case SQLITE_SCHEMA: return StoreTrouble::NotAStore;
    default: return StoreTrouble::Other;
    }
}

} // namespace mervane
