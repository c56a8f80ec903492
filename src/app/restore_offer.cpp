#include "app/restore_offer.h"

#include "app/main_window.h"
#include "mervane/backup/restoration.h"
#include "mervane/backup/store_copy.h"
#include "mervane/file/folder_files.h"
#include "mervane/file/store_path.h"
#include "ui/hourglass.h"
#include "ui/ownerless_box.h"
#include "ui/store_window.h"
#include "util/clock.h"
#include "util/date_text.h"

using mervane::BackupSearch;
using mervane::FoundBackup;
using mervane::Restoration;

namespace {

int ShowBox(const std::wstring& text, UINT buttons)
{
    return ShowOwnerlessBox(text.c_str(), L"Journal", buttons | MB_ICONEXCLAMATION);
}

SYSTEMTIME TimeOf(mervane::BackupDay day)
{
    SYSTEMTIME time{};
    time.wYear = static_cast<WORD>(static_cast<int>(day.year()));
    time.wMonth = static_cast<WORD>(static_cast<unsigned>(day.month()));
    time.wDay = static_cast<WORD>(static_cast<unsigned>(day.day()));
    return time;
}

std::wstring EntriesText(int64_t entries)
{
    return entries == 1 ? L"1 entry" : std::to_wstring(entries) + L" entries";
}

std::wstring BackupText(const FoundBackup& backup)
{
    return L"\n\nThe backup of " + LongDateText(TimeOf(backup.day)) + L" is whole. It has " +
           EntriesText(backup.entries) + L"; what was written after it was made is not in it.\n\n";
}

std::wstring Question(const FoundBackup& backup, const Restoration& restoration)
{
    return BackupText(backup) +
           L"Put the backup in the place of this file, and open it? The file itself is kept, as\n\n" +
           restoration.KeptAs();
}

std::wstring GoneQuestion(const std::wstring& path, const FoundBackup& backup)
{
    return GoneText(path, mervane::FileExists(path)) + BackupText(backup) +
           L"Put the backup in its place, and open it? With No a new journal is begun.";
}

// An older one is not offered as the newest.
std::wstring UnreadText(const BackupSearch& backups)
{
    return L"\n\nA backup may be there, but\n\n" + backups.unread + L"\n\ncannot be read: " +
           ReasonText(backups.trouble, L"it") +
           L".\n\nNothing was changed, and no new journal was begun. Start the journal again when that can "
           L"be read; where it never will be, move it to another folder first.";
}

std::wstring NoneWholeQuestion(const std::wstring& path)
{
    return GoneText(path, mervane::FileExists(path)) +
           L"\n\nThere are backups of it, but none is whole. They are in the folder\n\n" +
           mervane::BackupPath(path, L"") +
           L"\n\nBegin a new journal? With No nothing is done, so that you can look for a copy first.";
}

BackupSearch FindBackup(const std::wstring& path)
{
    const ScopedHourglass work;
    return mervane::NewestWholeBackup(path, mervane::DayOfTime(LocalNow()));
}

// Of several starts that ask at the same time one puts it there. What the others find there is opened, or the
// window of the one that was faster comes forward.
StoreTrouble RunInTurn(const std::wstring& path, const Restoration& restoration, const FoundBackup& backup)
{
    const ScopedHourglass work;
    const Turn turn = TurnForStore(kMainWindowClass, mervane::StoreNumber(path));
    return restoration.HasAnother() ? StoreTrouble::None : restoration.Run(backup.path);
}

bool Restore(const std::wstring& path, const Restoration& restoration, const FoundBackup& backup)
{
    const StoreTrouble trouble = RunInTurn(path, restoration, backup);
    if (trouble == StoreTrouble::None)
        return true;
    ShowBox(NotDoneText(L"The backup was not put in its place", trouble), MB_OK);
    return false;
}

} // namespace

bool TellUnopenedStore(const std::wstring& path, StoreTrouble trouble,
                       const std::vector<RenamedFile>& setAside)
{
    const std::wstring text = NotOpenedText(path, trouble, setAside);
    if (!mervane::IsBroken(path, trouble)) {
        ShowBox(text, MB_OK);
        return false;
    }
    // Of the file that is spoken of here: what comes into its place while the box stands is not touched.
    const Restoration restoration(path);
    if (restoration.InTheWay() != StoreTrouble::None) {
        ShowBox(text + L"\n\nA backup can only take its place while no other program has it open.", MB_OK);
        return false;
    }
    const BackupSearch backups = FindBackup(path);
    if (!backups.found) {
        ShowBox(text + (backups.trouble == StoreTrouble::None
                            ? L"\n\nThere is no backup that could take its place."
                            : UnreadText(backups)),
                MB_OK);
        return false;
    }
    return ShowBox(text + Question(*backups.found, restoration), MB_YESNO | MB_DEFBUTTON2) == IDYES &&
           Restore(path, restoration, *backups.found);
}

bool OfferBackupOfGoneStore(const std::wstring& path)
{
    if (!mervane::IsGone(path))
        return true;
    const Restoration restoration(path);
    const BackupSearch backups = FindBackup(path);
    if (backups.trouble != StoreTrouble::None) {
        ShowBox(GoneText(path, mervane::FileExists(path)) + UnreadText(backups), MB_OK);
        return false;
    }
    if (!backups.found)
        return !backups.hasAny || ShowBox(NoneWholeQuestion(path), MB_YESNO | MB_DEFBUTTON2) == IDYES;
    switch (ShowBox(GoneQuestion(path, *backups.found), MB_YESNO)) {
    case IDYES: return Restore(path, restoration, *backups.found);
    case IDNO: return true;
    default: return false;
    }
}
