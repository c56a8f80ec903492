#include "support/test_store.h"

#include <algorithm>

#include "support/temporary_name.h"
#include "util/owners.h"

namespace {

void DeleteStoreFiles(const std::wstring& path)
{
    for (const wchar_t* suffix : {L"", L"-wal", L"-shm", L"-journal"})
        DeleteFileW((path + suffix).c_str());
    // What was put aside beside it.
    WIN32_FIND_DATAW data;
    HANDLE search = FindFirstFileW((path + L".*").c_str(), &data);
    for (BOOL more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileW(search, &data))
        DeleteFileW((path.substr(0, path.find_last_of(L'\\') + 1) + data.cFileName).c_str());
    if (search != INVALID_HANDLE_VALUE)
        FindClose(search);
}

// The folder goes with the last one that has backups in it.
void DeleteBackups(const std::wstring& path)
{
    for (const std::wstring& name : BackupsOf(path))
        DeleteFileW((BackupFolderOf(path) + name).c_str());
    RemoveDirectoryW(BackupFolderOf(path).c_str());
}

UniqueKernelHandle OpenTestFile(const std::wstring& path, DWORD access, DWORD disposition)
{
    HANDLE file = CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    return UniqueKernelHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

// The keys themselves stay: the application object of the test's process may hold one open.
void EmptyKeys()
{
    for (const wchar_t* path : {L"Software\\Quillmarsh\\Journal", L"Software\\Quillmarsh\\Address Book"}) {
        HKEY key = nullptr;
        if (RegCreateKeyW(HKEY_CURRENT_USER, path, &key) != ERROR_SUCCESS)
            continue;
        const UniqueKey owner(key);
        RegDeleteTreeW(key, nullptr);
    }
}

} // namespace

std::wstring BackupFolderOf(const std::wstring& storePath)
{
    return storePath.substr(0, storePath.find_last_of(L'\\') + 1) + L"backup\\";
}

std::vector<std::wstring> BackupsOf(const std::wstring& storePath)
{
    const std::wstring name = storePath.substr(storePath.find_last_of(L'\\') + 1);
    const std::wstring all = BackupFolderOf(storePath) + name.substr(0, name.rfind(L'.')) + L"-*";
    std::vector<std::wstring> found;
    WIN32_FIND_DATAW data;
    HANDLE search = FindFirstFileW(all.c_str(), &data);
    for (BOOL more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileW(search, &data))
        found.emplace_back(data.cFileName);
    if (search != INVALID_HANDLE_VALUE)
        FindClose(search);
    std::sort(found.begin(), found.end());
    return found;
}

TestStore::TestStore()
{
    static unsigned s_count = 0;
    m_path = TemporaryName(L"journal-test") + L"-" + std::to_wstring(++s_count) + L".db";
    DeleteStoreFiles(m_path);
    DeleteBackups(m_path);
    SetEnvironmentVariableW(L"MERVANE_STORE", m_path.c_str());
}

TestStore::~TestStore()
{
    SetEnvironmentVariableW(L"MERVANE_STORE", nullptr);
    DeleteStoreFiles(m_path);
    DeleteBackups(m_path);
}

TestRegistry::TestRegistry()
{
    EmptyKeys();
}
TestRegistry::~TestRegistry()
{
    EmptyKeys();
}

std::string ReadFileBytes(const std::wstring& path)
{
    const UniqueKernelHandle file = OpenTestFile(path, GENERIC_READ, OPEN_EXISTING);
    LARGE_INTEGER size{};
    if (!file || !GetFileSizeEx(file.get(), &size))
        return {};
    std::string bytes(static_cast<size_t>(size.QuadPart), '\0');
    DWORD read = 0;
    if (!ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr))
        return {};
    bytes.resize(read);
    return bytes;
}

bool WriteFileBytes(const std::wstring& path, const std::string& bytes)
{
    const UniqueKernelHandle file = OpenTestFile(path, GENERIC_WRITE, CREATE_ALWAYS);
    DWORD written = 0;
    return file && WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
           written == bytes.size();
}
