#include "mervane/backup/store_copy.h"

#include <sqlite3.h>

#include "mervane/backup/backup_keep.h"
#include "mervane/file/folder_files.h"
#include "mervane/file/store_path.h"
#include "mervane/sqlite/sql_trouble.h"
#include "util/held_file.h"

namespace mervane {

namespace {

// Nothing is lost with a copy that is not whole: it is made again, so it needs no journal.
constexpr const char* kCopyPragmas = "PRAGMA journal_mode = OFF; PRAGMA synchronous = FULL";

constexpr int kAllPages = -1;
constexpr ULONGLONG kLongestLock = 2500; // milliseconds

bool IsInTheWay(int result)
{
    const int code = result & 0xFF;
    return code == SQLITE_BUSY || code == SQLITE_LOCKED;
}

size_t EndOfFolder(const std::wstring& path)
{
    return path.find_last_of(L"\\/") + 1;
}

} // namespace

std::wstring FileNameOf(const std::wstring& path)
{
    return path.substr(EndOfFolder(path));
}

std::wstring BackupPath(const std::wstring& storePath, const std::wstring& name)
{
    return storePath.substr(0, EndOfFolder(storePath)) + L"backup\\" + name;
}

std::wstring ReplacedPath(const std::wstring& storePath)
{
    return storePath + L".replaced-";
}

void DeleteUnfinished(const std::wstring& path)
{
    const std::wstring folder = path.substr(0, EndOfFolder(path)), name = FileNameOf(path);
    for (const std::wstring& file : FilesLike(path + L"*").value_or(std::vector<std::wstring>()))
        if (BackupNames::IsUnfinishedOf(name, file))
            DeleteFileW((folder + file).c_str());
}

bool StoreCopy::Fail(StoreTrouble trouble)
{
    m_trouble = trouble == StoreTrouble::None ? StoreTrouble::Other : trouble;
    return false;
}

bool StoreCopy::Begin(Database& source, const std::wstring& path)
{
    Discard();
    m_trouble = StoreTrouble::None;
    m_hadFolder = FileExists(path.substr(0, EndOfFolder(path)));
    if (!MakeFolderOf(path))
        return Fail(TroubleOfSystem(GetLastError()));
    m_file = BackupNames::Unfinished(path, GetCurrentProcessId());
    DeleteFileW(m_file.c_str());
    if (!m_copy.Open(m_file, Database::Mode::Create) || !m_copy.Execute(kCopyPragmas)) {
        Fail(m_copy.TakeTrouble());
        Discard();
        return false;
    }
    m_source = &source;
    m_backup = sqlite3_backup_init(m_copy.Handle(), "main", source.Handle(), "main");
    if (m_backup)
        return true;
    Fail(m_copy.NoteFailure());
    Discard();
    return false;
}

StoreCopy::Progress StoreCopy::Step(int pages)
{
    // A lock is not waited for: nobody asked for the copy.
    m_source->WaitForLocks(false);
    const int result = sqlite3_backup_step(m_backup, pages);
    const auto systemError = static_cast<DWORD>(sqlite3_system_errno(m_copy.Handle()));
    m_source->WaitForLocks(true);
    if (result == SQLITE_OK) {
        // In pieces, or the end would take as long as all of them. A failure is told by the last one.
        FlushFileBuffers(m_copy.FileHandle());
        return Progress::More;
    }
    if (IsInTheWay(result))
        return Progress::Held;
    const int end = sqlite3_backup_finish(std::exchange(m_backup, nullptr));
    if (result == SQLITE_DONE && end == SQLITE_OK) {
        m_copy.Close();
        return Progress::Made;
    }
    Fail(TroubleOf(result == SQLITE_DONE ? end : result, systemError));
    Discard();
    return Progress::Failed;
}

bool StoreCopy::CopyAll()
{
    const ULONGLONG end = GetTickCount64() + kLongestLock;
    for (;; Sleep(10)) {
        const Progress progress = Step(kAllPages);
        if (progress == Progress::Made || progress == Progress::Failed)
            return progress == Progress::Made;
        if (GetTickCount64() >= end) {
            Discard();
            return Fail(StoreTrouble::Locked);
        }
    }
}

int StoreCopy::PagesDone() const
{
    return sqlite3_backup_pagecount(m_backup) - sqlite3_backup_remaining(m_backup);
}

WholeCheck::Result StoreCopy::Check(MayGoOn mayGoOn)
{
    const WholeCheck check = CheckWhole(m_file, mayGoOn);
    if (check.result == WholeCheck::Result::NotWhole)
        Fail(check.trouble);
    return check.result;
}

bool StoreCopy::Name(const std::wstring& path)
{
    if (!MoveHeldFile(m_file, path, MOVEFILE_WRITE_THROUGH))
        return Fail(TroubleOfSystem(GetLastError()));
    m_file = path;
    return true;
}

StoreCopy::Naming StoreCopy::TryName(const std::wstring& path)
{
    if (MoveFileExW(m_file.c_str(), path.c_str(), MOVEFILE_WRITE_THROUGH)) {
        m_file = path;
        return Naming::Named;
    }
    const DWORD error = GetLastError();
    Fail(TroubleOfSystem(error));
    return IsHeld(path, error) ? Naming::Held : Naming::Failed;
}

void StoreCopy::EndBackup()
{
    sqlite3_backup_finish(std::exchange(m_backup, nullptr));
    m_copy.Close();
}

void StoreCopy::Discard()
{
    EndBackup();
    if (m_file.empty())
        return;
    DeleteFileW(m_file.c_str());
    if (!m_hadFolder)
        RemoveDirectoryW(m_file.substr(0, EndOfFolder(m_file) - 1).c_str());
    m_file.clear();
}

} // namespace mervane
