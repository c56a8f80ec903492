#include "mervane/backup/restoration.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <tuple>

#include "mervane/backup/whole_store.h"
#include "mervane/backup/store_copy.h"
#include "mervane/file/aside_name.h"
#include "mervane/file/folder_files.h"
#include "mervane/sqlite/sql_trouble.h"
#include "mervane/sqlite/store_header.h"
#include "util/compare_text.h"
#include "util/held_file.h"

namespace mervane {

namespace {

constexpr const wchar_t* kNeighbours[] = {L"-wal", L"-shm", L"-journal"};

// The broken file's other name: with a neighbour's suffix it is the neighbour's, so that they still belong
// together.
std::wstring KeptName(const std::wstring& path, const std::wstring& name)
{
    return path + L".damaged-" + name;
}

// The backup's copy, once it is whole, until it has the store's name. While there is one the restoration has
// been begun; what decides is whether the store has gone from its place.
constexpr const wchar_t* kRestoring = L".restoring-";
std::wstring CopyName(const std::wstring& path, const std::wstring& name)
{
    return path + kRestoring + name;
}

constexpr const wchar_t* kUnfinished = L".part";

// Never over a file that is there.
StoreTrouble Move(const std::wstring& from, const std::wstring& to)
{
    return MoveHeldFile(from, to, MOVEFILE_WRITE_THROUGH) ? StoreTrouble::None
                                                          : TroubleOfSystem(GetLastError());
}

StoreTrouble MoveIfThere(const std::wstring& from, const std::wstring& to)
{
    if (MoveHeldFile(from, to, MOVEFILE_WRITE_THROUGH))
        return StoreTrouble::None;
    const DWORD error = GetLastError();
    return error == ERROR_FILE_NOT_FOUND ? StoreTrouble::None : TroubleOfSystem(error);
}

// A file that nobody else has open or can open while this lives; it can be renamed.
class HeldFile {
  public:
    explicit HeldFile(const std::wstring& path)
    {
        const bool isHeld = DoWhileHeld(path, [&] {
            m_file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                 FILE_ATTRIBUTE_NORMAL, nullptr);
            return IsHeld();
        });
        m_trouble = isHeld ? StoreTrouble::None : TroubleOfSystem(GetLastError());
    }
    ~HeldFile()
    {
        if (IsHeld())
            CloseHandle(m_file);
    }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

    bool IsHeld() const { return m_file != INVALID_HANDLE_VALUE; }
    StoreTrouble Trouble() const { return m_trouble; }

  private:
    HANDLE m_file = INVALID_HANDLE_VALUE;
    StoreTrouble m_trouble = StoreTrouble::None;
};

// A file that is deleted unless it has become something else.
class ScopedFile {
  public:
    explicit ScopedFile(const std::wstring& path) : m_path(path) {}
    ~ScopedFile() { DeleteFileW(m_path.c_str()); }
    ScopedFile(const ScopedFile&) = delete;
    ScopedFile& operator=(const ScopedFile&) = delete;

  private:
    std::wstring m_path;
};

bool FlushFile(const std::wstring& path)
{
    HANDLE file = INVALID_HANDLE_VALUE;
    const auto open = [&] {
        file = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
        return file != INVALID_HANDLE_VALUE;
    };
    if (!DoWhileHeld(path, open))
        return false;
    const bool flushed = FlushFileBuffers(file) != FALSE;
    const DWORD error = GetLastError();
    CloseHandle(file);
    SetLastError(error);
    return flushed;
}

// The copy may be written, and is on the disk, whole.
StoreTrouble CopyBackup(const std::wstring& backup, const std::wstring& copy)
{
    if (!CopyFileW(backup.c_str(), copy.c_str(), TRUE) ||
        !SetFileAttributesW(copy.c_str(), FILE_ATTRIBUTE_NORMAL) || !FlushFile(copy))
        return TroubleOfSystem(GetLastError());
    const WholeCheck check = CheckWhole(copy);
    return check.result == WholeCheck::Result::Whole ? StoreTrouble::None : check.trouble;
}

// With no store in its place: the rest. *moved: of the neighbours, in their order, so many are done with.
StoreTrouble PutInPlace(const std::wstring& path, const std::wstring& name, size_t* moved)
{
    for (*moved = 0; *moved < std::size(kNeighbours); ++*moved) {
        const wchar_t* suffix = kNeighbours[*moved];
        if (const StoreTrouble trouble = MoveIfThere(path + suffix, KeptName(path, name) + suffix);
            trouble != StoreTrouble::None)
            return trouble;
    }
    return Move(CopyName(path, name), path);
}

// The store, if there was one, comes last: until then the next start can still complete the restoration, and
// does, where something cannot be taken back. Without its log the store would lack what was saved last.
void TakeBack(const std::wstring& path, const std::wstring& name, size_t moved)
{
    for (const wchar_t* suffix : std::span(kNeighbours).first(moved))
        if (MoveIfThere(KeptName(path, name) + suffix, path + suffix) != StoreTrouble::None)
            return;
    if (MoveIfThere(KeptName(path, name), path) == StoreTrouble::None)
        DeleteFileW(CopyName(path, name).c_str());
}

bool IsFree(const std::wstring& path, const std::wstring& name)
{
    const std::wstring kept = KeptName(path, name), copy = CopyName(path, name);
    return !FileExists(kept) && !FileExists(copy) && !FileExists(copy + kUnfinished) &&
           std::none_of(std::begin(kNeighbours), std::end(kNeighbours),
                        [&](const wchar_t* suffix) { return FileExists(kept + suffix); });
}

// The names of restorations whose copies lie beside the store, with what follows; none when it cannot be
// told. The path may be written in letters of another case than when they were made.
std::optional<std::vector<std::wstring>> NamesBeside(const std::wstring& path)
{
    const std::wstring start = FileNameOf(path) + kRestoring;
    const auto files = FilesLike(path + kRestoring + L"*");
    if (!files)
        return std::nullopt;
    std::vector<std::wstring> names;
    for (const std::wstring& file : *files)
        if (file.size() > start.size() && NameStartsWith(file, start))
            names.push_back(file.substr(start.size()));
    return names;
}

// Of restorations that came to no end while the store was in its place.
void DeleteLeftCopies(const std::wstring& path, const std::wstring& ownName)
{
    for (const std::wstring& name : NamesBeside(path).value_or(std::vector<std::wstring>()))
        if (!name.starts_with(ownName))
            DeleteFileW(CopyName(path, name).c_str());
}

StoreTrouble PutInPlaceOrTakeBack(const std::wstring& path, const std::wstring& name)
{
    size_t moved = 0;
    const StoreTrouble trouble = PutInPlace(path, name, &moved);
    if (trouble != StoreTrouble::None)
        TakeBack(path, name, moved);
    return trouble;
}

// The one that a loss of power has interrupted when the store had gone from its place; empty: there is none.
std::wstring InterruptedOf(const std::wstring& path, const std::vector<std::wstring>& names)
{
    const auto interrupted = std::find_if(names.begin(), names.end(), [&](const std::wstring& name) {
        return !name.ends_with(kUnfinished) && MayExist(KeptName(path, name));
    });
    return interrupted == names.end() ? std::wstring() : *interrupted;
}

bool IsReadable(const std::wstring& path)
{
    Database file;
    return file.Open(path, Database::Mode::Unchanging) &&
           file.QueryInteger("SELECT count(*) FROM sqlite_schema").has_value();
}

BackupDay DayOfLastWrite(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    SYSTEMTIME utc{}, local{};
    GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data);
    FileTimeToSystemTime(&data.ftLastWriteTime, &utc);
    SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local);
    return DayOfTime(local);
}

// None when it is a whole store, with *entries then.
StoreTrouble LookInto(const std::wstring& backup, int64_t* entries)
{
    if (const StoreTrouble trouble = CheckWhole(backup).trouble; trouble != StoreTrouble::None)
        return trouble;
    Database file;
    const auto count = file.Open(backup, Database::Mode::Unchanging)
                           ? file.QueryInteger("SELECT count(*) FROM journal")
                           : std::nullopt;
    *entries = count.value_or(0);
    return file.TakeTrouble();
}

} // namespace

bool IsBroken(const std::wstring& storePath, StoreTrouble trouble)
{
    if (trouble == StoreTrouble::Damaged)
        return true;
    return trouble == StoreTrouble::NotAStore && FileExists(storePath) && !IsReadable(storePath);
}

bool IsGone(const std::wstring& storePath)
{
    const FileKind kind = LookAtFile(storePath).kind;
    if ((kind != FileKind::Missing && kind != FileKind::Empty) || MayHaveContent(storePath + L"-wal"))
        return false;
    if (kind == FileKind::Empty)
        return true;
    const auto names = NamesBeside(storePath);
    return names && InterruptedOf(storePath, *names).empty();
}

BackupSearch NewestWholeBackup(const std::wstring& storePath, BackupDay today)
{
    BackupSearch search;
    const BackupNames names(FileNameOf(storePath));
    const auto files = FilesLike(BackupPath(storePath, L"*"));
    if (!files) {
        search.trouble = TroubleOfSystem(GetLastError());
        search.unread = BackupPath(storePath, L"");
        return search;
    }
    for (const std::wstring& name : NewestFirst(names, *files, today)) {
        search.hasAny = true;
        FoundBackup backup{BackupPath(storePath, name), {}, 0};
        const StoreTrouble trouble = LookInto(backup.path, &backup.entries);
        if (trouble == StoreTrouble::None) {
            backup.day = names.DayOf(name).value_or(DayOfLastWrite(backup.path));
            search.found = backup;
            return search;
        }
        if (!IsOfContent(trouble)) {
            search.trouble = trouble;
            search.unread = backup.path;
            return search;
        }
    }
    return search;
}

bool Restoration::Stamp::operator==(const Stamp& other) const
{
    const auto values = [](const Stamp& stamp) {
        return std::tie(stamp.volume, stamp.indexHigh, stamp.indexLow, stamp.sizeHigh, stamp.sizeLow,
                        stamp.lastWrite.dwHighDateTime, stamp.lastWrite.dwLowDateTime);
    };
    return values(*this) == values(other);
}

std::optional<Restoration::Stamp> Restoration::StampNow() const
{
    HANDLE file = CreateFileW(m_path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return std::nullopt;
    BY_HANDLE_FILE_INFORMATION data;
    const bool isKnown = GetFileInformationByHandle(file, &data) != FALSE;
    CloseHandle(file);
    if (!isKnown)
        return std::nullopt;
    return Stamp{data.dwVolumeSerialNumber, data.nFileIndexHigh, data.nFileIndexLow,
                 data.nFileSizeHigh,        data.nFileSizeLow,   data.ftLastWriteTime};
}

Restoration::Restoration(const std::wstring& storePath)
    : m_path(storePath),
      m_name(FreeNameOfNow([&](const std::wstring& name) { return IsFree(storePath, name); })),
      m_keptAs(KeptName(storePath, m_name)), m_wasMissing(!FileExists(storePath))
{
    m_stamp = StampNow();
}

StoreTrouble Restoration::InTheWay() const
{
    return HeldFile(m_path).Trouble();
}

bool Restoration::HasAnother() const
{
    const std::optional<Stamp> now = StampNow();
    return now && (m_wasMissing || (m_stamp && now != m_stamp)) && !IsGone(m_path);
}

StoreTrouble Restoration::Run(const std::wstring& backup) const
{
    const std::wstring copy = CopyName(m_path, m_name) + kUnfinished;
    const ScopedFile left(copy);
    const StoreTrouble trouble = CopyBackup(backup, copy);
    if (trouble != StoreTrouble::None)
        return trouble;
    return m_wasMissing ? Fill(copy) : Exchange(copy);
}

StoreTrouble Restoration::Exchange(const std::wstring& copy) const
{
    const HeldFile broken(m_path);
    if (!broken.IsHeld())
        return broken.Trouble();
    if (!m_stamp || StampNow() != m_stamp)
        return StoreTrouble::OtherFile;
    DeleteLeftCopies(m_path, m_name);
    const std::wstring whole = CopyName(m_path, m_name);
    if (const StoreTrouble trouble = Move(copy, whole); trouble != StoreTrouble::None)
        return trouble;
    if (const StoreTrouble trouble = Move(m_path, m_keptAs); trouble != StoreTrouble::None) {
        DeleteFileW(whole.c_str());
        return trouble;
    }
    return PutInPlaceOrTakeBack(m_path, m_name);
}

StoreTrouble Restoration::Fill(const std::wstring& copy) const
{
    if (FileExists(m_path))
        return StoreTrouble::OtherFile;
    DeleteLeftCopies(m_path, m_name);
    const StoreTrouble trouble = Move(copy, CopyName(m_path, m_name));
    return trouble == StoreTrouble::None ? PutInPlaceOrTakeBack(m_path, m_name) : trouble;
}

StoreTrouble FinishRestoration(const std::wstring& storePath)
{
    const auto names = NamesBeside(storePath);
    if (!names)
        return StoreTrouble::Unreachable;
    const std::wstring name = InterruptedOf(storePath, *names);
    if (name.empty())
        return StoreTrouble::None;
    const HeldFile broken(KeptName(storePath, name));
    if (!broken.IsHeld())
        return broken.Trouble();
    // Another program may have done it meanwhile.
    size_t moved = 0;
    return FileExists(storePath) ? StoreTrouble::None : PutInPlace(storePath, name, &moved);
}

} // namespace mervane
