#include "stores.h"

#include <cstdio>
#include <cstdlib>

#include "sample/sample_store.h"

namespace bench {

namespace {

std::wstring g_folder;

void DeleteStore(const std::wstring& path)
{
    for (const wchar_t* suffix : {L"", L"-wal", L"-shm"})
        DeleteFileW((path + suffix).c_str());
}

// Made under another name first: an interrupted run leaves no half store behind.
bool MakeStore(uint32_t count)
{
    const std::wstring path = StorePath(count);
    if (GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES)
        return true;
    printf("Making a store of %u entries.\n", count);
    fflush(stdout);
    const std::wstring unfinished = path + L"-unfinished";
    DeleteStore(unfinished);
    SetEnvironmentVariableW(L"MERVANE_STORE", unfinished.c_str());
    sample::SamplePlan plan{count};
    plan.bulk = true;
    return sample::FillStore(plan) && MoveFileW(unfinished.c_str(), path.c_str());
}

} // namespace

void Fail(const char* message)
{
    fprintf(stderr, "bench: %s\n", message);
    exit(1);
}

void SetFolder(const std::wstring& folder)
{
    g_folder = folder;
}

std::wstring StorePath(uint32_t count)
{
    return g_folder + L"\\bulk-" + std::to_wstring(count) + L".db";
}

bool MakeStores()
{
    return MakeStore(kSmall) && MakeStore(kMiddle) && MakeStore(kFull) && MakeStore(kMillion);
}

StoreCopy::StoreCopy(uint32_t count, const wchar_t* name)
    : m_path(g_folder + L"\\copy-" + std::to_wstring(count) + L"-" + name + L".db")
{
    DeleteStore(m_path);
    if (!CopyFileW(StorePath(count).c_str(), m_path.c_str(), TRUE))
        Fail("cannot copy a store");
}

StoreCopy::~StoreCopy()
{
    DeleteStore(m_path);
}

OpenJournal::OpenJournal(const std::wstring& path, CEPROPID sort)
{
    SetEnvironmentVariableW(L"MERVANE_STORE", path.c_str());
    if (!Open(nullptr, {sort, 0}))
        Fail("cannot open a store");
}

} // namespace bench
