// Makes a store of sample data.
#include <windows.h>

#include <cstdio>

#include "makesample_arguments.h"

namespace {

int Fail(const wchar_t* message, const wchar_t* what = L"")
{
    fwprintf(stderr, L"makesample: %ls%ls\n", message, what);
    return 1;
}

// Half a store is worse than none.
void DeleteStore(const std::wstring& path)
{
    for (const wchar_t* suffix : {L"", L"-wal", L"-shm", L"-journal"})
        DeleteFileW((path + suffix).c_str());
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    const auto arguments = ParseArguments({argv + 1, argv + argc});
    if (!arguments)
        return Fail(L"use: makesample STORE COUNT [--bulk] [--seed N] [--today YYYY-MM-DD]");
    const std::wstring& store = arguments->store;
    if (GetFileAttributesW(store.c_str()) != INVALID_FILE_ATTRIBUTES)
        return Fail(L"will not touch what is there already: ", store.c_str());
    SetEnvironmentVariableW(L"MERVANE_STORE", store.c_str());
    if (!sample::FillStore(arguments->plan)) {
        DeleteStore(store);
        return Fail(L"cannot write ", store.c_str());
    }
    const unsigned count = arguments->plan.count;
    wprintf(L"%ls: %u %ls entries\n", store.c_str(), count, arguments->plan.bulk ? L"bulk" : L"realistic");
    return 0;
}
