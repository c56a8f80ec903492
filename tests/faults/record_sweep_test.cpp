// An entry in the editor's hands under faults: read and written with its categories and contacts.
#include <gtest/gtest.h>

#include "data/category_flags.h"
#include "editor/editor_record.h"
#include "fault_sweep.h"

namespace {

using FaultedRecord = FaultSweep;

EntryToWrite Entry(const wchar_t* subject)
{
    EntryToWrite entry;
    entry.date = TimeCount(133'600'000'000'000'000);
    entry.endTime = entry.date;
    entry.duration = TimeCount(0);
    entry.type = L"Note";
    entry.body = L"Body";
    entry.subject = subject;
    return entry;
}

// Nobody else changes the record.
bool HasFailed(const EditorRecord& record, EditorRecord::Saved saved)
{
    EXPECT_NE(saved, EditorRecord::Saved::Changed);
    if (saved == EditorRecord::Saved::Failed) {
        EXPECT_NE(record.Trouble(), StoreTrouble::None);
    }
    return saved == EditorRecord::Saved::Failed;
}

constexpr const char* kFields =
    "date, subject, body, categories, type, kind, priority, sensitivity, end_time, duration";
constexpr const char* kValues = "133600000000000000, 'new', 'Body', x'0100000005000000', 'Note', 3, 1, 0, "
                                "133600000000000000, 0";

// A new entry with a category, whose use is counted with it or not at all.
TEST_F(FaultedRecord, SavingANewEntry)
{
    CEOID id = 0;
    std::optional<EditorRecord> record;
    Sweep({.prepare =
               [&] {
                   id = 0;
                   if (!OpenAll())
                       return false;
                   record.emplace(m_journal, &id);
                   record->OpenStores(nullptr);
                   record->Categories().Push({5, kCategoryAdded});
                   return true;
               },
           .run =
               [&] {
                   EntryToWrite entry = Entry(L"new");
                   const bool failed = HasFailed(*record, record->Save(&entry));
                   EXPECT_EQ(id, failed ? 0u : 41u);
                   return failed ? Outcome::Failed : Outcome::Done;
               },
           .end =
               [&] {
                   record.reset();
                   CloseAll();
               },
           .model = std::string("UPDATE categories SET uses = 1 WHERE oid = 5; INSERT INTO journal(") +
                    kFields + ") VALUES(" + kValues + ")"});
}

// An entry that was loaded keeps its categories and contacts when it is saved again.
TEST_F(FaultedRecord, SavingALoadedEntry)
{
    CEOID id = 0;
    std::optional<EditorRecord> record;
    Sweep({.prepare =
               [&] {
                   id = 6; // two categories, one contact
                   if (!OpenAll())
                       return false;
                   record.emplace(m_journal, &id);
                   record->OpenStores(nullptr);
                   JournalEntry loaded;
                   return record->Load(&loaded) == EditorRecord::Loaded::Done;
               },
           .run =
               [&] {
                   EntryToWrite entry = Entry(L"changed");
                   const bool failed = HasFailed(*record, record->Save(&entry));
                   EXPECT_EQ(id, 6u) << "a second record";
                   return failed ? Outcome::Failed : Outcome::Done;
               },
           .end =
               [&] {
                   record.reset();
                   CloseAll();
               },
           .model =
               "UPDATE journal SET date = 133600000000000000, end_time = date, subject = 'changed', body = "
               "'Body', priority = 1, end_time = 133600000000000000 WHERE oid = 6"});
}

// What is there is opened as it is, or not at all; never as a new entry.
TEST_F(FaultedRecord, Loading)
{
    CEOID id = 6;
    std::optional<EditorRecord> record;
    Sweep({.prepare = [&] { return OpenAll(); },
           .run =
               [&] {
                   record.emplace(m_journal, &id);
                   record->OpenStores(nullptr);
                   JournalEntry loaded;
                   const EditorRecord::Loaded answer = record->Load(&loaded);
                   EXPECT_NE(answer, EditorRecord::Loaded::Nothing);
                   if (answer == EditorRecord::Loaded::Failed) {
                       EXPECT_NE(record->Trouble(), StoreTrouble::None);
                       return Outcome::Failed;
                   }
                   EXPECT_EQ(loaded.subject, L"Entry 6");
                   size_t categories = 0;
                   while (record->Categories().GetItem(categories))
                       ++categories;
                   EXPECT_EQ(categories, 2u);
                   EXPECT_EQ(record->Contacts().Assigned(), std::vector<CEOID>{4});
                   return Outcome::Done;
               },
           .end =
               [&] {
                   record.reset();
                   CloseAll();
               }});
}

} // namespace
