// What the tests of the editor's record share.
#pragma once

#include <vector>

#include "assign_fixture.h"
#include "editor/editor_record.h"

// A record as the editor has it open, or none yet.
class OpenRecord : public EditorRecord {
  public:
    explicit OpenRecord(CEOID* id) : EditorRecord(Own().Journal(), id)
    {
        OpenStores(nullptr);
        JournalEntry loaded;
        EXPECT_EQ(Load(&loaded), *id ? Loaded::Done : Loaded::Nothing);
    }
    // With what the editor's controls have at that time.
    Saved Save(EntryToWrite entry, Theirs theirs = Theirs::Ask) { return EditorRecord::Save(&entry, theirs); }
    Saved SaveAsNew(EntryToWrite entry) { return EditorRecord::SaveAsNew(&entry); }
};

class EditorRecordTest : public AssignTest {
  protected:
    using Saved = EditorRecord::Saved;
    using Theirs = EditorRecord::Theirs;

    EntryToWrite Entry(const wchar_t* subject = L"Subject")
    {
        EntryToWrite entry;
        entry.date = At(kTuesday);
        entry.endTime = At(kTuesday);
        entry.type = L"Note";
        entry.body = L"Body";
        entry.subject = subject;
        return entry;
    }
    CEOID WriteWith(CEPROPID property, std::vector<BYTE> blob)
    {
        const CEOID id = Write(Entry());
        CEPROPVAL value{};
        value.propid = property;
        value.val.blob = {static_cast<DWORD>(blob.size()), blob.data()};
        EXPECT_EQ(Own().Journal().WriteRecord(id, 1, &value), id);
        return id;
    }
};
