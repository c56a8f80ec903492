// A store file and settings of a test's own.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

// A path in the temporary folder that no other test has; the file, its companions (-wal, -shm), what was put
// aside beside it and its backups are deleted before and after. MERVANE_STORE names it while this lives.
class TestStore {
  public:
    TestStore();
    ~TestStore();
    TestStore(const TestStore&) = delete;
    TestStore& operator=(const TestStore&) = delete;

    const std::wstring& Path() const { return m_path; }

  private:
    std::wstring m_path;
};

// The folder beside a store that has its backups, with a backslash at its end, and what of them is there: the
// names, sorted, unfinished ones too.
std::wstring BackupFolderOf(const std::wstring& storePath);
std::vector<std::wstring> BackupsOf(const std::wstring& storePath);

// Empties the programs' registry keys before and after, so that every test starts from the defaults.
class TestRegistry {
  public:
    TestRegistry();
    ~TestRegistry();
    TestRegistry(const TestRegistry&) = delete;
    TestRegistry& operator=(const TestRegistry&) = delete;
};

// The bytes of a file; empty when it cannot be read.
std::string ReadFileBytes(const std::wstring& path);
bool WriteFileBytes(const std::wstring& path, const std::string& bytes);
