// The day's backup under faults: a whole copy of the store, or none.
#include <gtest/gtest.h>

#include "fault_sweep.h"
#include "store_dump.h"

namespace {

using Faulted = FaultSweep;

TEST_F(Faulted, MakingTheDaysBackup)
{
    SYSTEMTIME day{};
    day.wYear = 2026;
    day.wMonth = 1;
    day.wDay = 31;
    Sweep({.prepare =
               [this] {
                   for (const std::wstring& name : BackupsOf(Path()))
                       DeleteFileW((BackupFolderOf(Path()) + name).c_str());
                   return OpenAll();
               },
           .run =
               [&] {
                   if (m_journal.BeginBackup(day))
                       for (int steps = 0; m_journal.StepBackup(nullptr) && steps < 1000;)
                           ++steps;
                   m_journal.EndBackup();
                   const auto found = BackupsOf(Path());
                   for (const std::wstring& name : found)
                       EXPECT_TRUE(name.ends_with(L"-2026-01-31.db")) << "something unfinished is left";
                   return found.empty() ? Outcome::Failed : Outcome::Done;
               },
           .end =
               [this] {
                   CloseAll();
                   for (const std::wstring& name : BackupsOf(Path())) {
                       const std::wstring backup = BackupFolderOf(Path()) + name;
                       EXPECT_TRUE(DumpStore(backup) == DumpStore(Path()));
                       EXPECT_EQ(CheckStore(backup), "ok");
                   }
               }});
}

} // namespace
