// Which backups are kept, and what they are called.
#include <gtest/gtest.h>

#include <algorithm>

#include "mervane/backup/backup_keep.h"

namespace {

using mervane::BackupDay;
using mervane::BackupNames;
using mervane::BackupsToDelete;
using Names = std::vector<std::wstring>;

BackupDay Day(int year, unsigned month, unsigned day)
{
    return {std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
}

// Of January 2026, whose Sundays are 4, 11, 18 and 25; 1 February is one too.
std::wstring January(unsigned day)
{
    return L"journal-2026-01-" + std::wstring(day < 10 ? L"0" : L"") + std::to_wstring(day) + L".db";
}

Names Januaries(const std::vector<unsigned>& days)
{
    Names names;
    for (const unsigned day : days)
        names.push_back(January(day));
    return names;
}

struct KeepCase {
    const char* name;
    BackupDay today;
    Names files;
    Names deleted;
};

void PrintTo(const KeepCase& aCase, std::ostream* out)
{
    *out << aCase.name;
}

class BackupKeep : public testing::TestWithParam<KeepCase> {};

TEST_P(BackupKeep, DeletesWhatIsTooMuch)
{
    Names files = GetParam().files;
    for (int order = 0; order < 2; ++order) {
        Names deleted = BackupsToDelete(BackupNames(L"journal.db"), files, GetParam().today);
        std::sort(deleted.begin(), deleted.end());
        EXPECT_EQ(deleted, GetParam().deleted);
        std::reverse(files.begin(), files.end());
    }
}

INSTANTIATE_TEST_SUITE_P(
    Cases, BackupKeep,
    testing::Values(
        KeepCase{"none", Day(2026, 1, 31), {}, {}}, KeepCase{"one", Day(2026, 1, 31), Januaries({31}), {}},
        KeepCase{
            "old ones where there are no others", Day(2026, 12, 31), Januaries({5, 6, 7, 8, 9, 10, 12}), {}},
        KeepCase{"the eighth day", Day(2026, 1, 31), Januaries({23, 24, 26, 27, 28, 29, 30, 31}),
                 Januaries({23})},
        KeepCase{"Sundays among and before the seven", Day(2026, 1, 31),
                 Januaries({2, 3, 4, 5, 10, 11, 18, 24, 25, 26, 27, 28, 29, 30, 31}),
                 Januaries({2, 3, 5, 10, 24})},
        KeepCase{"the fifth Sunday",
                 Day(2026, 2, 3),
                 {January(4), January(11), January(18), January(25), January(27), January(28), January(29),
                  January(30), January(31), L"journal-2026-02-01.db", L"journal-2026-02-02.db",
                  L"journal-2026-02-03.db"},
                 Januaries({4, 27})},
        KeepCase{"days to come stay and do not count", Day(2026, 1, 10),
                 Januaries({1, 2, 3, 5, 6, 7, 8, 9, 10, 20, 21, 22, 23, 24, 26, 27, 28}), Januaries({1, 2})},
        KeepCase{"nothing but its own names",
                 Day(2027, 1, 1),
                 {L"journal-2026-02-30.db",
                  L"journal-2026-1-001.db",
                  L"journal-2026-01-01.db.part",
                  L"xjournal-2026-01-01.db",
                  L"journal-2026-01-01-2.db",
                  L"journal_2026-01-01.db",
                  L"journal-2026-01-01db",
                  L"journal-before-v2.db",
                  L"journal-2026-13-01.db",
                  L"journal-2026+01-01.db",
                  L"journal--026-01-01.db",
                  L"journal.db",
                  L"",
                  January(5),
                  January(6),
                  January(7),
                  January(8),
                  January(9),
                  January(10),
                  January(12),
                  January(13)},
                 Januaries({5})},
        // To the folder they are the same names, and a day that has two of them is one day.
        KeepCase{"names in letters of another case",
                 Day(2027, 1, 1),
                 {L"Journal-2026-01-05.db", L"JOURNAL-2026-01-06.DB", January(6), January(7), January(8),
                  January(9), January(10), January(12), January(13)},
                 {L"Journal-2026-01-05.db"}}));

TEST(BackupName, IsOfTheStoreAndTheDay)
{
    EXPECT_EQ(BackupNames(L"journal.db").OfDay(Day(2026, 3, 9)), L"journal-2026-03-09.db");
    EXPECT_EQ(BackupNames(L"my.own.store").OfDay(Day(2026, 3, 9)), L"my.own-2026-03-09.store");
    EXPECT_EQ(BackupNames(L"own").OfDay(Day(2026, 3, 9)), L"own-2026-03-09");
    EXPECT_EQ(BackupNames(L"journal.db").BeforeVersion(2, 1), L"journal-before-v2.db");
    EXPECT_EQ(BackupNames(L"journal.db").BeforeVersion(2, 3), L"journal-before-v2-3.db");
    for (const wchar_t* store : {L"journal.db", L"own", L"\u00e4.b.c"})
        EXPECT_EQ(BackupNames(store).DayOf(BackupNames(store).OfDay(Day(2024, 2, 29))), Day(2024, 2, 29));
}

TEST(BackupName, OfAnUnfinishedOneIsKnown)
{
    const BackupNames names(L"journal.db");
    for (const std::wstring& whole :
         {names.OfDay(Day(2026, 1, 31)), names.BeforeVersion(2, 1), names.BeforeVersion(12, 3)}) {
        EXPECT_FALSE(names.IsUnfinished(whole));
        EXPECT_TRUE(names.IsUnfinished(BackupNames::Unfinished(whole, 4294967295)));
        EXPECT_FALSE(BackupNames(L"own.db").IsUnfinished(BackupNames::Unfinished(whole, 32)));
    }
    for (const wchar_t* other : {L"journal-2026-01-31.db.part", L"journal-2026-01-31.db.x.part", L".part",
                                 L"a.1.part", L"journal.db.1.part", L"journal-before-v.db.1.part",
                                 L"journal-before-v2-.db.1.part", L"journal-2026-01-31.db.1.par"})
        EXPECT_FALSE(names.IsUnfinished(other)) << other;
}

TEST(BackupAge, IsWhatTheNameTells)
{
    const Names sorted = {January(10),
                          January(9),
                          January(1),
                          L"journal-2025-12-31.db",
                          L"journal-2030-01-01.db",
                          January(11),
                          L"journal-before-v12.db",
                          L"journal-before-v2-10.db",
                          L"journal-before-v2-2.db",
                          L"journal-before-v2.db"};
    Names files = sorted;
    for (const wchar_t* other : {L"journal.db", L"journal-2026-01-05.db.7.part", L"journal-before-v.db",
                                 L"other-2026-01-05.db", L"journal-before-v2-.db", L"journal-2026-01-32.db"})
        files.push_back(other);
    for (int order = 0; order < 2; ++order) {
        EXPECT_EQ(mervane::NewestFirst(BackupNames(L"journal.db"), files, Day(2026, 1, 10)), sorted);
        std::reverse(files.begin(), files.end());
    }
}

// Once the store's file is gone, its name is the one that was typed.
TEST(BackupAge, IsToldWhateverTheCase)
{
    const Names sorted = {L"JOURNAL-2026-01-10.DB", L"Journal-2026-01-09.db", L"Journal-before-v2.db"};
    EXPECT_EQ(
        mervane::NewestFirst(BackupNames(L"journal.db"), {sorted[2], sorted[0], sorted[1]}, Day(2026, 1, 10)),
        sorted);
}

} // namespace
