#include "passing_file.h"

namespace {

int Close(sqlite3_file* file)
{
    return RealMethods(file)->xClose(RealFile(file));
}
int Read(sqlite3_file* file, void* data, int size, sqlite3_int64 offset)
{
    return RealMethods(file)->xRead(RealFile(file), data, size, offset);
}
int Write(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset)
{
    return RealMethods(file)->xWrite(RealFile(file), data, size, offset);
}
int Truncate(sqlite3_file* file, sqlite3_int64 size)
{
    return RealMethods(file)->xTruncate(RealFile(file), size);
}
int Sync(sqlite3_file* file, int flags)
{
    return RealMethods(file)->xSync(RealFile(file), flags);
}
int FileSize(sqlite3_file* file, sqlite3_int64* size)
{
    return RealMethods(file)->xFileSize(RealFile(file), size);
}
int Lock(sqlite3_file* file, int level)
{
    return RealMethods(file)->xLock(RealFile(file), level);
}
int Unlock(sqlite3_file* file, int level)
{
    return RealMethods(file)->xUnlock(RealFile(file), level);
}
int CheckReservedLock(sqlite3_file* file, int* held)
{
    return RealMethods(file)->xCheckReservedLock(RealFile(file), held);
}
int FileControl(sqlite3_file* file, int operation, void* argument)
{
    return RealMethods(file)->xFileControl(RealFile(file), operation, argument);
}
int SectorSize(sqlite3_file* file)
{
    return RealMethods(file)->xSectorSize(RealFile(file));
}
int DeviceCharacteristics(sqlite3_file* file)
{
    return RealMethods(file)->xDeviceCharacteristics(RealFile(file));
}
int ShmMap(sqlite3_file* file, int region, int size, int extend, void volatile** memory)
{
    return RealMethods(file)->xShmMap(RealFile(file), region, size, extend, memory);
}
int ShmLock(sqlite3_file* file, int offset, int count, int flags)
{
    return RealMethods(file)->xShmLock(RealFile(file), offset, count, flags);
}
void ShmBarrier(sqlite3_file* file)
{
    RealMethods(file)->xShmBarrier(RealFile(file));
}
int ShmUnmap(sqlite3_file* file, int remove)
{
    return RealMethods(file)->xShmUnmap(RealFile(file), remove);
}
int Fetch(sqlite3_file* file, sqlite3_int64 offset, int size, void** page)
{
    return RealMethods(file)->xFetch(RealFile(file), offset, size, page);
}
int Unfetch(sqlite3_file* file, sqlite3_int64 offset, void* page)
{
    return RealMethods(file)->xUnfetch(RealFile(file), offset, page);
}

} // namespace

sqlite3_io_methods PassingMethods()
{
    constexpr int kWithMappedPages = 3; // iVersion
    return {kWithMappedPages,
            Close,
            Read,
            Write,
            Truncate,
            Sync,
            FileSize,
            Lock,
            Unlock,
            CheckReservedLock,
            FileControl,
            SectorSize,
            DeviceCharacteristics,
            ShmMap,
            ShmLock,
            ShmBarrier,
            ShmUnmap,
            Fetch,
            Unfetch};
}
