// DbJournal: the journal itself.
#pragma once

#include <memory>
#include <string>

#include "mervane/ce_dbase.h"

namespace mervane {
class RecordSearch;
struct SearchRequest;
} // namespace mervane

class DbJournal : public CeDBase {
  public:
    DbJournal();
    ~DbJournal() override;

    // Opens the journal in the given sort; a property that cannot be sorted by, or 0, gives the date. owner
    // gets the change notifications. Non-zero on success. A file that is no store, or a newer program's, is
    // refused and stays byte for byte as it was.
    [[nodiscard]] int Open(HWND owner, const SORTORDERSPEC& sort = {});

    // The record's subject, owned by this object and valid until the next call; empty when there is none.
    const wchar_t* GetSubject(CEOID id);

    // Searches: the identifier of the next matching record in the current sort order, hidden by a filter or
    // not; 0 for none, also when the property is of another kind, and when the search fails (see Trouble).
    // They leave the current record as it is. ...After goes on behind a record, whether that matches or not,
    // and comes back to the top at the end: where no other record matches, to the same one. Behind a record
    // that is not there it begins at the top.
    //
    // A text is found anywhere in the property, with regard to case or by Unicode's simple case folding; the
    // empty text in every record that has the property. A date is found by its day.
    //
    // The first question of a search reads its property of all records. What it found is kept, so that
    // going on costs no pass until the search is another one, the sort or a record has changed; inside one
    // ReadScope it asks the system for nothing.
    [[nodiscard]] CEOID FindText(CEPROPID property, const wchar_t* text, bool matchCase);
    [[nodiscard]] CEOID FindTextAfter(CEOID id, CEPROPID property, const wchar_t* text, bool matchCase);
    [[nodiscard]] CEOID FindDate(CEPROPID property, const FILETIME& date);
    [[nodiscard]] CEOID FindDateAfter(CEOID id, CEPROPID property, const FILETIME& date);

    // The day's backup of the store, in a folder beside it, made in small steps while nothing else is to be
    // done. Both return after how many milliseconds StepBackup is to be called; 0 when there is nothing more
    // to do: the day has one, or none can be made. What fails is not made, and no backup is touched by it.
    // mayGoOn, which may be null, is asked in a long step; where it answers false the step is given up and
    // done later. Closing the store ends the backup too.
    [[nodiscard]] unsigned BeginBackup(const SYSTEMTIME& today);
    [[nodiscard]] unsigned StepBackup(bool (*mayGoOn)());
    void EndBackup();
    // Why the backup that was begun last was not kept: Damaged where damage was found in what it has copied.
    [[nodiscard]] StoreTrouble BackupTrouble() const;

  private:
    CEOID FindBehind(CEOID id, const mervane::SearchRequest& request);

    std::unique_ptr<mervane::RecordSearch> m_search;
    std::wstring m_subject;
};
