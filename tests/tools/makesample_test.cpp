#include "makesample_arguments.h"

#include <gtest/gtest.h>

#include "mervane/db_journal.h"
#include "support/test_store.h"
#include "util/owners.h"

namespace {

bool IsDay(const SYSTEMTIME& day, WORD year, WORD month, WORD dayOfMonth)
{
    return day.wYear == year && day.wMonth == month && day.wDay == dayOfMonth;
}

TEST(MakeSampleArguments, StoreAndCountSuffice)
{
    const auto parsed = ParseArguments({L"a b.db", L"65535"});
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->store, L"a b.db");
    EXPECT_EQ(parsed->plan.count, 65535u);
    EXPECT_FALSE(parsed->plan.bulk);
    EXPECT_TRUE(IsDay(parsed->plan.today, 2025, 6, 30));
}

TEST(MakeSampleArguments, OptionsInAnyOrder)
{
    const auto parsed = ParseArguments(
        {L"s", L"7", L"--today", L"2024-02-29", L"--seed", L"18446744073709551615", L"--bulk"});
    ASSERT_TRUE(parsed);
    EXPECT_TRUE(parsed->plan.bulk);
    EXPECT_EQ(parsed->plan.seed, UINT64_MAX);
    EXPECT_TRUE(IsDay(parsed->plan.today, 2024, 2, 29));
}

TEST(MakeSampleArguments, AnythingElseIsRefused)
{
    const std::vector<std::vector<std::wstring>> wrong = {
        {},
        {L"s"},
        {L"", L"7"},
        {L"s", L""},
        {L"s", L"-1"},
        {L"s", L"7x"},
        {L"s", L"4294967296"},
        {L"s", L"7", L"--bulky"},
        {L"s", L"7", L"8"},
        {L"s", L"7", L"--seed"},
        {L"s", L"7", L"--seed", L"18446744073709551616"},
        {L"s", L"7", L"--seed", L"--bulk"},
        {L"s", L"7", L"--today", L"2023-02-29"},
        {L"s", L"7", L"--today", L"2023-2-3"},
        {L"s", L"7", L"--today", L"2023-04-31"},
        {L"s", L"7", L"--today", L"2023-13-01"},
        {L"s", L"7", L"--today", L"2023-00-01"},
        {L"s", L"7", L"--today", L"2023-01-00"},
        {L"s", L"7", L"--today", L"1500-01-01"},
    };
    for (const auto& arguments : wrong)
        EXPECT_FALSE(ParseArguments(arguments)) << arguments.size() << " arguments";
}

// The exit status of makesample.
DWORD RunMakeSample(const std::wstring& arguments)
{
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring own = path;
    const std::wstring program = own.substr(0, own.find_last_of(L'\\') + 1) + L"..\\tools\\makesample.exe";
    std::wstring commandLine = L"\"" + program + L"\" " + arguments;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process))
        return MAXDWORD;
    const UniqueKernelHandle processOwner(process.hProcess), threadOwner(process.hThread);
    WaitForSingleObject(process.hProcess, 60'000);
    DWORD status = MAXDWORD;
    GetExitCodeProcess(process.hProcess, &status);
    return status;
}

TEST(MakeSample, MakesAStore)
{
    const TestStore store;
    EXPECT_EQ(RunMakeSample(L"\"" + store.Path() + L"\" 25"), 0u);
    DbJournal journal;
    ASSERT_TRUE(journal.Open(nullptr));
    EXPECT_EQ(journal.RecordCount(), 25u);
}

TEST(MakeSample, LeavesAnExistingFileAlone)
{
    const TestStore store;
    ASSERT_TRUE(WriteFileBytes(store.Path(), "mine"));
    EXPECT_EQ(RunMakeSample(L"\"" + store.Path() + L"\" 25"), 1u);
    EXPECT_EQ(ReadFileBytes(store.Path()), "mine");
}

TEST(MakeSample, WrongArgumentsMakeNothing)
{
    const TestStore store;
    EXPECT_EQ(RunMakeSample(L"\"" + store.Path() + L"\" some"), 1u);
    EXPECT_EQ(GetFileAttributesW(store.Path().c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST(MakeSample, FailsWhereAFileStandsInTheWay)
{
    const TestStore store;
    ASSERT_TRUE(WriteFileBytes(store.Path(), "mine"));
    EXPECT_EQ(RunMakeSample(L"\"" + store.Path() + L"\\store.db\" 5"), 1u);
    EXPECT_EQ(ReadFileBytes(store.Path()), "mine");
}

} // namespace
