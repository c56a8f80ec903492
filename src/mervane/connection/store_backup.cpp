#include "mervane/connection/store_backup.h"

#include <windows.h>

#include <algorithm>

#include "mervane/file/folder_files.h"
#include "mervane/sqlite/store_header.h"

namespace mervane {

namespace {

constexpr int kPagesOfStep = 64;
constexpr int kMostPagesOfStep = 512;
// Where another program writes again and again, the copy begins again and again, in longer steps; then it is
// left alone for a while.
constexpr int kRestartsToPause = 5;

// Until the next step, in milliseconds.
constexpr unsigned kNever = 0;
constexpr unsigned kAtOnce = 10;
constexpr unsigned kSoon = 250;
constexpr unsigned kPause = 60'000;

constexpr int kMostNamings = 1 + 2000 / kSoon; // in two seconds

void DeleteUnfinishedBackups(const std::wstring& folder, const BackupNames& names)
{
    for (const std::wstring& file : FilesLike(folder + L"*").value_or(std::vector<std::wstring>()))
        if (names.IsUnfinished(file))
            DeleteFileW((folder + file).c_str());
}

uint64_t SizeOf(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data))
        return 0;
    return (uint64_t{data.nFileSizeHigh} << 32) | data.nFileSizeLow;
}

// How many records a store has given numbers to, which it never takes back.
constexpr const char* kNumbersGiven = "SELECT coalesce(sum(seq), 0) FROM sqlite_sequence";

// One that has had more records than the new copy is no earlier state of it, but of a store that was lost and
// begun anew: perhaps all that is left. What cannot be read just now stays as well.
bool MayGo(const std::wstring& backup, int64_t numbersNow)
{
    Database file;
    const auto numbers =
        file.Open(backup, Database::Mode::Unchanging) ? file.QueryInteger(kNumbersGiven) : std::nullopt;
    return numbers ? *numbers <= numbersNow : IsOfContent(file.TakeTrouble());
}

// A copy that filled the disk would take the room from the next save.
bool HasRoom(const std::wstring& storePath, const std::wstring& folder)
{
    ULARGE_INTEGER available{};
    if (!GetDiskFreeSpaceExW(folder.c_str(), &available, nullptr, nullptr))
        return true; // the copy itself will tell
    return available.QuadPart / 2 >= SizeOf(storePath) + SizeOf(storePath + L"-wal");
}

} // namespace

unsigned StoreBackup::Begin(BackupDay today)
{
    End();
    m_trouble = StoreTrouble::None;
    if (!today.ok() || m_store.Sql().IsReadOnly() || m_store.LookAtFile() != StoreTrouble::None)
        return kNever;
    const BackupNames names(FileNameOf(m_path));
    DeleteUnfinishedBackups(BackupPath(m_path, L""), names);
    DeleteUnfinished(ReplacedPath(m_path));
    const std::wstring path = BackupPath(m_path, names.OfDay(today));
    if (FileExists(path) || !HasRoom(m_path, m_path.substr(0, m_path.size() - FileNameOf(m_path).size())))
        return kNever;
    m_today = today;
    m_restarts = 0;
    return m_copy.Begin(m_store.Sql(), path) ? kAtOnce : kNever;
}

void StoreBackup::End()
{
    m_isMade = false;
    m_isWhole = false;
    m_namings = 0;
    m_copy.Discard();
}

unsigned StoreBackup::Step(MayGoOn mayGoOn)
{
    if (m_copy.IsUnderWay())
        return CopyPages();
    return m_isMade ? Finish(mayGoOn) : kNever;
}

unsigned StoreBackup::CopyPages()
{
    const int before = m_copy.PagesDone();
    switch (m_copy.Step(std::min(kPagesOfStep << std::min(m_restarts, kRestartsToPause), kMostPagesOfStep))) {
    case StoreCopy::Progress::More: break;
    case StoreCopy::Progress::Held: return kSoon;
    case StoreCopy::Progress::Made: m_isMade = true; return kAtOnce;
    case StoreCopy::Progress::Failed: m_trouble = m_copy.Trouble(); return kNever;
    }
    const bool hasRestarted = before > 0 && m_copy.PagesDone() <= before;
    return hasRestarted && ++m_restarts % kRestartsToPause == 0 ? kPause : kAtOnce;
}

// What was copied is no backup of the file that has come into the store's place.
unsigned StoreBackup::Finish(MayGoOn mayGoOn)
{
    if (!m_isWhole) {
        const WholeCheck::Result result = m_copy.Check(mayGoOn);
        if (result == WholeCheck::Result::Interrupted)
            return kSoon;
        m_isWhole = result == WholeCheck::Result::Whole;
    }
    m_trouble = m_isWhole ? m_store.LookAtFile() : m_copy.Trouble();
    if (m_trouble == StoreTrouble::None && MayNameSoon())
        return kSoon;
    End();
    return kNever;
}

// True while another program holds the copy, as one does that looks through each new file. It is not waited
// for here: the window would stand still.
bool StoreBackup::MayNameSoon()
{
    const BackupNames names(FileNameOf(m_path));
    const StoreCopy::Naming naming = m_copy.TryName(BackupPath(m_path, names.OfDay(m_today)));
    if (naming == StoreCopy::Naming::Held && ++m_namings < kMostNamings)
        return true;
    if (naming == StoreCopy::Naming::Named)
        KeepCopy();
    else
        m_trouble = m_copy.Trouble();
    return false;
}

void StoreBackup::KeepCopy()
{
    const BackupNames names(FileNameOf(m_path));
    m_copy.Keep();
    const std::wstring folder = BackupPath(m_path, L"");
    const auto files = FilesLike(folder + L"*");
    const auto numbers = m_store.Sql().QueryInteger(kNumbersGiven);
    if (!files || !numbers)
        return;
    for (const std::wstring& file : BackupsToDelete(names, *files, m_today))
        if (MayGo(folder + file, *numbers))
            DeleteFileW((folder + file).c_str());
}

} // namespace mervane
