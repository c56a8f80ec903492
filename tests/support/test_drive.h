// A drive of a kind that a test chooses.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

// A path as the system below Wine has it; empty when it has none.
std::wstring UnixPath(const std::wstring& path);
// Runs a tool of that system, which does what no program of this one may do with an open file. Its end is not
// told: it is known by what it has done.
bool RunUnix(const std::wstring& command, const std::function<bool()>& isDone);
// Renames a file in that way, whoever has it open; a file that has the other name goes.
bool MoveUnix(const std::wstring& from, const std::wstring& to);

// A drive letter for a folder of its own in the temporary folder, a network's or one that can be pulled out
// (DRIVE_REMOTE, DRIVE_REMOVABLE), as Wine's mount manager makes it. Both are gone at the end.
class TestDrive {
  public:
    explicit TestDrive(UINT kind);
    ~TestDrive();
    TestDrive(const TestDrive&) = delete;
    TestDrive& operator=(const TestDrive&) = delete;

    bool IsThere() const { return m_there; }
    std::wstring Path(const std::wstring& name) const { return L"N:\\" + name; }
    const std::wstring& Folder() const { return m_folder; }

  private:
    std::wstring m_folder;
    bool m_there = false;
};
