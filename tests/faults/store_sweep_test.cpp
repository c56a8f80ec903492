// The library under faults: an answer without a trouble is right, a write is whole or nothing.
#include <gtest/gtest.h>

#include "fault_sweep.h"
#include "mervane/records.h"
#include "pick/category_draft.h"
#include "util/owners.h"

namespace {

using Faulted = FaultSweep;

TEST_F(Faulted, OpeningAStore)
{
    Sweep({.prepare = [] { return true; },
           .run =
               [this] {
                   CloseAll();
                   if (OpenAll())
                       return Outcome::Done;
                   const bool told = m_journal.Trouble() != StoreTrouble::None ||
                                     m_categories.Trouble() != StoreTrouble::None ||
                                     m_contacts.Trouble() != StoreTrouble::None;
                   EXPECT_TRUE(told);
                   return Outcome::Failed;
               },
           .end = [this] { CloseAll(); }});
}

TEST_F(Faulted, ClosingAStore)
{
    Sweep({.prepare =
               [this] {
                   return OpenAll() && Sent().Text(kSubject, L"kept").Write(m_journal, 7) == 7 &&
                          m_journal.DeleteRecord(8);
               },
           .run =
               [this] {
                   CloseAll();
                   return Outcome::Done;
               },
           .end = [] {},
           .model = "UPDATE journal SET subject = 'kept' WHERE oid = 7; DELETE FROM journal WHERE oid = 8"});
}

// What a read says without a trouble is what is stored.
class Read {
  public:
    explicit Read(CeDBase& database) : m_database(database) {}
    template <typename T> void Expect(const T& answer, const T& stored)
    {
        m_failed |= m_database.Trouble() != StoreTrouble::None;
        if (m_database.Trouble() == StoreTrouble::None) {
            EXPECT_EQ(answer, stored);
        }
    }
    bool HasFailed() const { return m_failed; }

  private:
    CeDBase& m_database;
    bool m_failed = false;
};

TEST_F(Faulted, ReadingAnEntry)
{
    Sweep({.prepare = [this] { return OpenAll(); },
           .run =
               [this] {
                   Read read(m_journal);
                   const CEOID found = m_journal.SeekRecord(9);
                   read.Expect(found, CEOID{9});
                   if (found) {
                       const Received entry(m_journal);
                       read.Expect(entry.Id(), CEOID{9});
                       read.Expect(entry.Text(kSubject), std::optional<std::wstring>(L"Entry 9"));
                       read.Expect(entry.Ids().size(), size_t{10});
                   }
                   read.Expect(m_journal.SeekRecord(900), CEOID{0});
                   wchar_t text[20] = L"";
                   read.Expect(m_journal.GetStr(9, text, 20, kSubject), 7);
                   return read.HasFailed() ? Outcome::Failed : Outcome::Done;
               },
           .end = [this] { CloseAll(); }});
}

TEST_F(Faulted, WalkingThroughEntries)
{
    Sweep({.prepare = [this] { return OpenAll(); },
           .run =
               [this] {
                   Read read(m_journal);
                   m_journal.SetSort({kSubject, 0}, 1);
                   read.Expect(m_journal.RecordCount(), DWORD{40});
                   size_t walked = 0;
                   for (int found = m_journal.SeekFirstRecord(); found; found = m_journal.SeekNextRecord())
                       ++walked;
                   read.Expect(walked, size_t{40});
                   return read.HasFailed() ? Outcome::Failed : Outcome::Done;
               },
           .end = [this] { CloseAll(); }});
}

TEST_F(Faulted, NamingCategories)
{
    Sweep({.prepare = [this] { return OpenAll(); },
           .run =
               [this] {
                   Read read(m_categories);
                   std::vector<BYTE> blob = IdBytes({2, 1, 3});
                   wchar_t* text = nullptr;
                   const int length = m_categories.SetStrFromBlob({12, blob.data()}, L',', &text);
                   const LocalBlock<wchar_t> owner(text);
                   read.Expect(length, 11);
                   read.Expect(m_categories.Exists(2), 1);
                   read.Expect(m_categories.Exists(99), 0);
                   read.Expect(m_categories.IsHidden(4), 1);
                   read.Expect(m_categories.GetNumActiveRecords(), 5);
                   return read.HasFailed() ? Outcome::Failed : Outcome::Done;
               },
           .end = [this] { CloseAll(); }});
}

TEST_F(Faulted, SavingADraftOfTheCategories)
{
    CategoryDraft draft;
    const auto rowOf = [&](const wchar_t* name) {
        for (int row = 0; row < draft.Count(); ++row)
            if (draft.At(row).name == name)
                return row;
        return -1;
    };
    Sweep({.prepare =
               [&] {
                   draft = {};
                   if (!OpenAll() || !draft.Load(m_categories))
                       return false;
                   draft.Rename(rowOf(L"Home"), L"Between");
                   draft.Rename(rowOf(L"Work"), L"Home");
                   draft.Rename(rowOf(L"Between"), L"Work");
                   draft.Delete(rowOf(L"Travel"));
                   draft.SetHidden(rowOf(L"Books"), true);
                   draft.Add(L"New");
                   CloseAll();
                   return OpenAll();
               },
           .run =
               [&] {
                   if (draft.Save(m_categories))
                       return Outcome::Done;
                   EXPECT_NE(m_categories.Trouble(), StoreTrouble::None);
                   return Outcome::Failed;
               },
           .end = [this] { CloseAll(); },
           .model =
               "UPDATE categories SET name = 'x' WHERE oid = 1; UPDATE categories SET name = 'Home' WHERE "
               "oid = 2; UPDATE categories SET name = 'Work' WHERE oid = 1; DELETE FROM categories WHERE oid "
               "= 3; UPDATE categories SET hidden = 1 WHERE oid = 5; INSERT INTO categories(name) "
               "VALUES('New')"});
}

Outcome Told(bool done, const CeDBase& database)
{
    if (done)
        return Outcome::Done;
    EXPECT_NE(database.Trouble(), StoreTrouble::None);
    return Outcome::Failed;
}

TEST_F(Faulted, WritingAnEntry)
{
    Sweep({.prepare = [this] { return OpenAll(); },
           .run =
               [this] {
                   const CEOID written = Sent().Text(kSubject, L"new").Delete(kBody).Write(m_journal, 12);
                   return Told(written == 12, m_journal);
               },
           .end = [this] { CloseAll(); },
           .model = "UPDATE journal SET subject = 'new', body = NULL WHERE oid = 12"});
}

TEST_F(Faulted, WritingANewCategory)
{
    Sweep({.prepare = [this] { return OpenAll(); },
           .run = [this] { return Told(m_categories.Add(L"Sports") == 7, m_categories); },
           .end = [this] { CloseAll(); },
           .model = "INSERT INTO categories(name) VALUES('Sports')"});
}

// A name that another one has is refused, whatever fails; never taken.
TEST_F(Faulted, WritingACategoryOfATakenName)
{
    Sweep({.prepare = [this] { return OpenAll(); },
           .run =
               [this] {
                   EXPECT_EQ(m_categories.Add(L"HOME"), 0u);
                   return m_categories.Trouble() == StoreTrouble::None ? Outcome::Done : Outcome::Failed;
               },
           .end = [this] { CloseAll(); }});
}

TEST_F(Faulted, DoingABulk)
{
    Sweep(
        {.prepare = [this] { return OpenAll(); },
         .run =
             [this] {
                 CeDBase::BulkScope bulk(m_journal);
                 for (CEOID id = 1; id <= 10; ++id)
                     (void)m_journal.DeleteRecord(id);
                 for (int i = 0; i < 10; ++i)
                     (void)AddEntry(m_journal, L"bulk", 5);
                 return Told(bulk.Commit() == 1, m_journal);
             },
         .end = [this] { CloseAll(); },
         .model =
             "DELETE FROM journal WHERE oid <= 10; WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i + 1 "
             "FROM n WHERE i < 10) INSERT INTO journal(date, subject) SELECT 5, 'bulk' FROM n"});
}

} // namespace
