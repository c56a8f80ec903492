#include "mervane/connection/store_neighbours.h"

#include <windows.h>

#include <algorithm>

#include "mervane/file/aside_name.h"
#include "mervane/file/file_reader.h"
#include "mervane/file/folder_files.h"
#include "mervane/file/log_content.h"
#include "mervane/sqlite/schema_check.h"
#include "mervane/sqlite/sql_trouble.h"
#include "util/held_file.h"

namespace mervane {

namespace {

enum class Verdict { Belongs, SetAside, Unclear };

bool IsSound(Database& database)
{
    Statement check(database, "PRAGMA integrity_check(1)");
    return check.Step() == Statement::Result::Row && check.Text(0) == "ok";
}

bool IsSoundNow(const std::wstring& path)
{
    Database database;
    return database.Open(path, Database::Mode::Unchanging) && IsSound(database);
}

// The file as it is, whatever lies beside it. A read that has failed looks like damage, which stays.
bool IsSoundAlone(const std::wstring& path)
{
    return IsSoundNow(path) || IsSoundNow(path);
}

// The file with what lies beside it, tried on copies.
bool IsSoundWith(const std::wstring& path, const wchar_t* suffix)
{
    wchar_t folder[MAX_PATH + 1], copy[MAX_PATH + 1];
    if (!GetTempPathW(MAX_PATH, folder) || !GetTempFileNameW(folder, L"jrn", 0, copy))
        return false;
    const std::wstring beside = copy + std::wstring(suffix);
    bool sound = false;
    if (CopyFileW(path.c_str(), copy, FALSE) && CopyFileW((path + suffix).c_str(), beside.c_str(), FALSE)) {
        Database database;
        sound = database.Open(copy, Database::Mode::Create) && IsSound(database);
    }
    for (const wchar_t* left : {L"", L"-wal", L"-shm", L"-journal"})
        DeleteFileW((copy + std::wstring(left)).c_str());
    return sound;
}

// The only connection to a file, which leaves it and its log as they are.
class Alone {
  public:
    explicit Alone(const std::wstring& path)
    {
        if (!m_database.Open(path, Database::Mode::Create))
            return;
        m_database.KeepLog();
        (void)m_database.Execute("PRAGMA locking_mode = EXCLUSIVE; PRAGMA busy_timeout = 0");
        m_marks = MarksIn(m_database);
    }
    bool IsIn() const { return m_marks.userVersion != -1; }
    const StoreMarks& Marks() const { return m_marks; }
    Database& Sql() { return m_database; }

  private:
    Database m_database;
    StoreMarks m_marks{-1, -1};
};

// By what the file and its neighbour say of each other and, in doubt, by whether they are sound together.
Verdict JudgeLog(const std::wstring& path, Database& alone)
{
    const std::wstring logPath = path + L"-wal";
    bool hasFailed = false;
    const std::optional<LogContent> log = ReadLog(logPath, &hasFailed);
    const std::optional<DatabaseHeader> header = ReadDatabaseHeader(path, &hasFailed);
    const FileReader file(logPath);
    const bool hasNothing = !log && file.Size() <= kLogHeaderSize;
    if (hasFailed || file.HasFailed())
        return Verdict::Unclear;
    if (hasNothing)
        return Verdict::Belongs;
    const bool may = log && header && MayBelong(*header, *log);
    const bool isSoundAlone = IsSoundAlone(path);
    if (may)
        // What is damaged with its log and without it is read as far as it goes.
        return IsSound(alone) || !isSoundAlone ? Verdict::Belongs : Verdict::Unclear;
    if (isSoundAlone)
        return Verdict::SetAside;
    return log && IsSound(alone) ? Verdict::Belongs : Verdict::Unclear;
}

// SQLite leaves a journal that begins with 0 alone.
bool IsDone(const std::wstring& journalPath, bool* hasFailed)
{
    BYTE first = 0;
    const FileReader file(journalPath);
    const bool isRead = file.Read(0, {&first, 1});
    *hasFailed |= file.HasFailed();
    return !isRead || !first;
}

Verdict JudgeJournal(const std::wstring& path)
{
    const std::wstring journalPath = path + L"-journal";
    bool hasFailed = false;
    const bool isDone = IsDone(journalPath, &hasFailed);
    const std::optional<JournalContent> journal = ReadJournal(journalPath, &hasFailed);
    const std::optional<DatabaseHeader> header = ReadDatabaseHeader(path, &hasFailed);
    if (hasFailed)
        return Verdict::Unclear;
    if (isDone)
        return Verdict::Belongs;
    const bool may = journal && header && MayBelong(*header, *journal);
    if (may && IsSoundWith(path, L"-journal"))
        return Verdict::Belongs;
    return !may && IsSoundAlone(path) ? Verdict::SetAside : Verdict::Unclear;
}

StoreTrouble Obey(Verdict verdict, const std::wstring& neighbour, AsideFiles* aside)
{
    switch (verdict) {
    case Verdict::Belongs: return StoreTrouble::None;
    case Verdict::SetAside: return aside->SetAside(neighbour);
    case Verdict::Unclear: return StoreTrouble::OddLog;
    }
    return StoreTrouble::OddLog;
}

// For a file that is not had alone: it cannot be written, and its folder often neither, or another program
// has it open. That one has this log; but a tool may have written over the file under it.
StoreTrouble PrepareUntouched(const std::wstring& path)
{
    bool hasFailed = false;
    const std::optional<LogContent> log = ReadLog(path + L"-wal", &hasFailed);
    const std::optional<DatabaseHeader> header = ReadDatabaseHeader(path, &hasFailed);
    const bool belongs = !log || (header && MayBelong(*header, *log));
    return belongs && !hasFailed ? StoreTrouble::None : StoreTrouble::OddLog;
}

// The other program may be bringing its log in.
StoreTrouble PrepareShared(const std::wstring& path)
{
    constexpr int kTries = 10;
    StoreTrouble trouble = PrepareUntouched(path);
    for (int i = 1; i < kTries && trouble != StoreTrouble::None; ++i) {
        Sleep(20);
        trouble = PrepareUntouched(path);
    }
    return trouble;
}

StoreTrouble PrepareLog(const std::wstring& path, FileKind kind, AsideFiles* aside)
{
    if (!MayHaveContent(path + L"-wal"))
        return StoreTrouble::None;
    // What was saved last may be in it alone, and a new file would do away with it.
    if (kind == FileKind::Missing || kind == FileKind::Empty)
        return StoreTrouble::OddLog;
    if (kind == FileKind::ReadOnlyStore)
        return PrepareUntouched(path);
    Verdict verdict;
    {
        Alone alone(path);
        if (!alone.IsIn())
            return PrepareShared(path);
        verdict = JudgeLog(path, alone.Sql());
        // A newer program that was killed may have left its marks in the log only.
        if (verdict == Verdict::Belongs && !MayUse(alone.Marks()))
            return TroubleOfMarks(alone.Marks());
    }
    return Obey(verdict, path + L"-wal", aside);
}

// The journal of a store that was just being made, beside an empty file. One that is no journal, or was only
// begun when the power failed, has nothing to put back.
Verdict JudgeFirstJournal(const std::wstring& journalPath)
{
    bool hasFailed = false;
    const std::optional<JournalContent> journal = ReadJournal(journalPath, &hasFailed);
    const bool isDone = IsDone(journalPath, &hasFailed);
    if (!hasFailed && (isDone || (journal && !journal->pagesBefore)))
        return Verdict::Belongs;
    return journal || hasFailed ? Verdict::Unclear : Verdict::SetAside;
}

StoreTrouble PrepareJournal(const std::wstring& path, FileKind kind, AsideFiles* aside)
{
    const std::wstring journalPath = path + L"-journal";
    if (!MayHaveContent(journalPath))
        return StoreTrouble::None;
    if (kind == FileKind::Store)
        return Obey(JudgeJournal(path), journalPath, aside);
    // SQLite would delete the journal of a file that is gone.
    return kind == FileKind::ReadOnlyStore ? StoreTrouble::OddLog
                                           : Obey(JudgeFirstJournal(journalPath), journalPath, aside);
}

} // namespace

StoreTrouble AsideFiles::SetAside(const std::wstring& path)
{
    const std::wstring keptAs = FreePathOfNow(path + L".set-aside-");
    if (MoveHeldFile(path, keptAs, 0)) {
        m_files.push_back({path, keptAs});
        return StoreTrouble::None;
    }
    const DWORD error = GetLastError();
    // Another program may have done it.
    return error == ERROR_FILE_NOT_FOUND ? StoreTrouble::None : TroubleOfSystem(error);
}

bool AsideFiles::Has(const std::wstring& path) const
{
    return std::any_of(m_files.begin(), m_files.end(), [&](const auto& file) { return file.path == path; });
}

void AsideFiles::PutBack()
{
    std::erase_if(m_files, [](const RenamedFile& file) { return MoveHeldFile(file.keptAs, file.path, 0); });
}

StoreTrouble PrepareNeighbours(const std::wstring& path, const FileLook& file, AsideFiles* aside)
{
    if (file.trouble != StoreTrouble::None)
        return file.trouble;
    const StoreTrouble trouble = PrepareJournal(path, file.kind, aside);
    return trouble == StoreTrouble::None ? PrepareLog(path, file.kind, aside) : trouble;
}

} // namespace mervane
