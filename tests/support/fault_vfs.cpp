#include "support/fault_vfs.h"

#include <windows.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <string_view>

namespace {

struct State {
    sqlite3_vfs* real = nullptr;
    sqlite3_vfs vfs{};
    const sqlite3_io_methods* methods = nullptr; // the system's
    sqlite3_io_methods faulty{};
    std::array<int, kFileCallCount> seen{};
    FileCall failing = FileCall::Open;
    int failAt = 0; // 0: none
    int fault = 0;
    bool fired = false;
    int slept = 0; // microseconds
    std::function<void(DiskEvent)> listener;
};
State g_state;

struct Fault {
    const char* name;
    int error;
    enum class Way { Once, Half, Stays } way = Way::Once; // Half: the first half of a write is done
};

const std::vector<Fault>& FaultsOf(FileCall call)
{
    static const std::array<std::vector<Fault>, kFileCallCount> s_faults{{
        {{"cannot open", SQLITE_CANTOPEN}, {"no memory", SQLITE_NOMEM}},
        {{"delete fails", SQLITE_IOERR_DELETE}},
        {{"access fails", SQLITE_IOERR_ACCESS}},
        {{"read fails", SQLITE_IOERR_READ}, {"drive gone", SQLITE_IOERR_READ, Fault::Way::Stays}},
        {{"disk full", SQLITE_FULL},
         {"disk stays full", SQLITE_FULL, Fault::Way::Stays},
         {"write fails", SQLITE_IOERR_WRITE},
         {"short write", SQLITE_IOERR_WRITE, Fault::Way::Half}},
        {{"truncate fails", SQLITE_IOERR_TRUNCATE}},
        {{"sync fails", SQLITE_IOERR_FSYNC}},
        {{"size fails", SQLITE_IOERR_FSTAT}},
        {{"lock fails", SQLITE_IOERR_LOCK}, {"busy", SQLITE_BUSY}},
        {{"unlock fails", SQLITE_IOERR_UNLOCK}},
        {{"shm map fails", SQLITE_IOERR_SHMMAP}, {"shm no memory", SQLITE_NOMEM}},
        {{"shm lock fails", SQLITE_IOERR_SHMLOCK}, {"shm busy", SQLITE_BUSY}},
    }};
    return s_faults[static_cast<size_t>(call)];
}

// What the system gives as its reason; SQLite and the journal ask for it.
DWORD ReasonOf(int error)
{
    switch (error) {
    case SQLITE_BUSY: return ERROR_LOCK_VIOLATION;
    case SQLITE_FULL: return ERROR_DISK_FULL;
    case SQLITE_NOMEM: return ERROR_NOT_ENOUGH_MEMORY;
    default: return ERROR_IO_DEVICE;
    }
}

// The fault that this call meets; null when it goes through.
const Fault* Meet(FileCall call)
{
    const int number = ++g_state.seen[static_cast<size_t>(call)];
    if (!g_state.failAt || call != g_state.failing || number < g_state.failAt)
        return nullptr;
    const Fault& fault = FaultsOf(call)[static_cast<size_t>(g_state.fault)];
    if (number > g_state.failAt && fault.way != Fault::Way::Stays)
        return nullptr;
    g_state.fired = true;
    SetLastError(ReasonOf(fault.error));
    return &fault;
}

// Behind the system's block of an open file: the file's name, empty for a temporary one.
constexpr int kNameSize = 260;

char* NameOf(sqlite3_file* file)
{
    return reinterpret_cast<char*>(file) + g_state.real->szOsFile;
}

std::string_view LastPart(const char* path)
{
    const std::string_view text = path ? path : "";
    return text.substr(text.find_last_of("\\/") + 1);
}

void Tell(DiskEvent::Kind kind, std::string_view file, int64_t offset = 0, std::string bytes = {})
{
    if (g_state.listener && !file.empty())
        g_state.listener({kind, std::string(file), offset, std::move(bytes)});
}

int Read(sqlite3_file* file, void* data, int size, sqlite3_int64 offset)
{
    if (const Fault* fault = Meet(FileCall::Read))
        return fault->error;
    return g_state.methods->xRead(file, data, size, offset);
}

int Write(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset)
{
    const Fault* fault = Meet(FileCall::Write);
    const int done = !fault ? size : fault->way == Fault::Way::Half ? size / 2 : 0;
    if (done > 0) {
        Tell(DiskEvent::Kind::Write, NameOf(file), offset,
             std::string(static_cast<const char*>(data), static_cast<size_t>(done)));
        const int result = g_state.methods->xWrite(file, data, done, offset);
        if (result != SQLITE_OK)
            return result;
    }
    return fault ? fault->error : SQLITE_OK;
}

int Truncate(sqlite3_file* file, sqlite3_int64 size)
{
    if (const Fault* fault = Meet(FileCall::Truncate))
        return fault->error;
    Tell(DiskEvent::Kind::Truncate, NameOf(file), size);
    return g_state.methods->xTruncate(file, size);
}

int Sync(sqlite3_file* file, int)
{
    if (const Fault* fault = Meet(FileCall::Sync))
        return fault->error;
    Tell(DiskEvent::Kind::Sync, NameOf(file));
    return SQLITE_OK;
}

int FileSize(sqlite3_file* file, sqlite3_int64* size)
{
    if (const Fault* fault = Meet(FileCall::FileSize))
        return fault->error;
    return g_state.methods->xFileSize(file, size);
}

int Lock(sqlite3_file* file, int level)
{
    if (const Fault* fault = Meet(FileCall::Lock))
        return fault->error;
    return g_state.methods->xLock(file, level);
}

int Unlock(sqlite3_file* file, int level)
{
    if (const Fault* fault = Meet(FileCall::Unlock))
        return fault->error;
    return g_state.methods->xUnlock(file, level);
}

int ShmMap(sqlite3_file* file, int region, int size, int extend, void volatile** memory)
{
    if (const Fault* fault = Meet(FileCall::ShmMap)) {
        *memory = nullptr;
        return fault->error;
    }
    return g_state.methods->xShmMap(file, region, size, extend, memory);
}

// Giving a lock back never fails: SQLite does not look at the answer.
int ShmLock(sqlite3_file* file, int offset, int count, int flags)
{
    if (const Fault* fault = flags & SQLITE_SHM_LOCK ? Meet(FileCall::ShmLock) : nullptr)
        return fault->error;
    return g_state.methods->xShmLock(file, offset, count, flags);
}

// All of the system's files have the same methods.
void PutBetween(sqlite3_file* file)
{
    g_state.methods = file->pMethods;
    g_state.faulty = *file->pMethods;
    g_state.faulty.xRead = Read;
    g_state.faulty.xWrite = Write;
    g_state.faulty.xTruncate = Truncate;
    g_state.faulty.xSync = Sync;
    g_state.faulty.xFileSize = FileSize;
    g_state.faulty.xLock = Lock;
    g_state.faulty.xUnlock = Unlock;
    g_state.faulty.xShmMap = ShmMap;
    g_state.faulty.xShmLock = ShmLock;
    file->pMethods = &g_state.faulty;
}

bool Exists(const char* path)
{
    int exists = 0;
    return path && g_state.real->xAccess(g_state.real, path, SQLITE_ACCESS_EXISTS, &exists) == SQLITE_OK &&
           exists;
}

int Open(sqlite3_vfs*, sqlite3_filename path, sqlite3_file* file, int flags, int* outFlags)
{
    file->pMethods = nullptr;
    std::memset(NameOf(file), 0, kNameSize);
    if (const Fault* fault = Meet(FileCall::Open))
        return fault->error;
    const bool existed = Exists(path);
    const int result = g_state.real->xOpen(g_state.real, path, file, flags, outFlags);
    if (file->pMethods)
        PutBetween(file);
    if (result != SQLITE_OK)
        return result;
    const std::string_view name = LastPart(path);
    name.copy(NameOf(file), kNameSize - 1);
    if (!existed)
        Tell(DiskEvent::Kind::Create, name);
    return SQLITE_OK;
}

int Delete(sqlite3_vfs*, const char* path, int syncFolder)
{
    if (const Fault* fault = Meet(FileCall::Delete))
        return fault->error;
    if (Exists(path))
        Tell(DiskEvent::Kind::Delete, LastPart(path));
    return g_state.real->xDelete(g_state.real, path, syncFolder);
}

int Access(sqlite3_vfs*, const char* path, int flags, int* result)
{
    if (const Fault* fault = Meet(FileCall::Access))
        return fault->error;
    return g_state.real->xAccess(g_state.real, path, flags, result);
}

int Sleep(sqlite3_vfs*, int microseconds)
{
    g_state.slept += microseconds;
    return g_state.real->xSleep(g_state.real, microseconds);
}

} // namespace

const char* NameOf(FileCall call)
{
    static constexpr std::array<const char*, kFileCallCount> kNames{
        "xOpen", "xDelete",   "xAccess", "xRead",   "xWrite",  "xTruncate",
        "xSync", "xFileSize", "xLock",   "xUnlock", "xShmMap", "xShmLock"};
    return kNames[static_cast<size_t>(call)];
}

FaultVfs::FaultVfs()
{
    g_state = {};
    g_state.real = sqlite3_vfs_find(nullptr);
    g_state.vfs = *g_state.real;
    g_state.vfs.zName = "faults";
    g_state.vfs.szOsFile = g_state.real->szOsFile + kNameSize;
    g_state.vfs.xOpen = Open;
    g_state.vfs.xDelete = Delete;
    g_state.vfs.xAccess = Access;
    g_state.vfs.xSleep = Sleep;
    sqlite3_vfs_register(&g_state.vfs, 1);
}

FaultVfs::~FaultVfs()
{
    FailNone();
    Record(nullptr);
    sqlite3_vfs_unregister(&g_state.vfs);
}

void FaultVfs::FailNth(FileCall call, int n, int fault)
{
    FailNone();
    g_state.failing = call;
    g_state.failAt = n;
    g_state.fault = fault;
}

void FaultVfs::FailNone()
{
    g_state.failAt = 0;
    g_state.fired = false;
    g_state.seen = {};
    g_state.slept = 0;
}

int FaultVfs::FaultCount(FileCall call)
{
    return static_cast<int>(FaultsOf(call).size());
}
const char* FaultVfs::FaultName(FileCall call, int fault)
{
    return FaultsOf(call)[static_cast<size_t>(fault)].name;
}
bool FaultVfs::HasFired() const
{
    return g_state.fired;
}
int FaultVfs::Seen(FileCall call) const
{
    return g_state.seen[static_cast<size_t>(call)];
}
int FaultVfs::Slept() const
{
    return g_state.slept / 1000;
}
void FaultVfs::Record(std::function<void(DiskEvent)> listener)
{
    g_state.listener = std::move(listener);
}
