// Programs and libraries are found in the system's folders, and not in the current one.
#include "util/program_search.h"

#include <gtest/gtest.h>

#include "support/temporary_name.h"
#include "support/test_store.h"
#include "util/owners.h"

namespace {

std::wstring Variable(const wchar_t* name)
{
    std::wstring text(32768, L'\0');
    text.resize(GetEnvironmentVariableW(name, text.data(), static_cast<DWORD>(text.size())));
    return text;
}

// A folder that is the current one, with two programs: one of a name of its own, and one of the system's.
class ProgramSearch : public testing::Test {
  protected:
    ProgramSearch() : m_path(Variable(L"PATH"))
    {
        m_folder = TemporaryName(L"search here");
        CreateDirectoryW(m_folder.c_str(), nullptr);
        GetCurrentDirectoryW(MAX_PATH, m_before);
        EXPECT_TRUE(SetCurrentDirectoryW(m_folder.c_str()));
        for (const wchar_t* name : {L"own-tool.exe", L"hostname.exe"})
            EXPECT_TRUE(WriteFileBytes(Here(name), "no program"));
    }
    ~ProgramSearch() override
    {
        SetEnvironmentVariableW(L"PATH", m_path.c_str());
        SetCurrentDirectoryW(m_before);
        for (const wchar_t* name : {L"own-tool.exe", L"hostname.exe"})
            DeleteFileW(Here(name).c_str());
        RemoveDirectoryW(m_folder.c_str());
    }
    std::wstring Here(const std::wstring& name) const { return m_folder + L"\\" + name; }

    std::wstring m_folder, m_path;
    wchar_t m_before[MAX_PATH] = L"";
};

TEST_F(ProgramSearch, LooksNotInTheCurrentFolder)
{
    EXPECT_EQ(FindInSystem(L"own-tool.exe"), L"");
    const std::wstring system = FindInSystem(L"hostname.exe");
    EXPECT_NE(system, L"");
    EXPECT_NE(system, Here(L"hostname.exe"));
}

TEST_F(ProgramSearch, LooksInTheFoldersOfThePathThatAreFull)
{
    SetEnvironmentVariableW(L"PATH", L".;own;;..\\here");
    EXPECT_EQ(FindInSystem(L"own-tool.exe"), L"");
    SetEnvironmentVariableW(L"PATH", (L".;;" + m_folder).c_str());
    EXPECT_EQ(FindInSystem(L"own-tool.exe"), Here(L"own-tool.exe"));
    EXPECT_EQ(FindInSystem(L"own-tool"), Here(L"own-tool.exe"));
    SetEnvironmentVariableW(L"PATH", nullptr);
    EXPECT_NE(FindInSystem(L"hostname.exe"), L"");
}

TEST_F(ProgramSearch, TakesTheProgramOfACommandInFull)
{
    const std::wstring program = Here(L"own-tool.exe");
    EXPECT_EQ(ProgramOfCommand(L"\"" + program + L"\" /x"), program);
    EXPECT_EQ(ProgramOfCommand(L"\"" + program), program);
    EXPECT_EQ(ProgramOfCommand(program + L" /x y"), program);
    EXPECT_EQ(ProgramOfCommand(Here(L"own-tool") + L" /x y"), program);
    EXPECT_NE(ProgramOfCommand(L"hostname.exe /x"), L"");
    EXPECT_NE(ProgramOfCommand(L"hostname.exe /x"), Here(L"hostname.exe"));
}

TEST_F(ProgramSearch, ACommandFromTheCurrentFolderHasNoProgram)
{
    for (const wchar_t* command :
         {L"own-tool.exe", L"\"own-tool.exe\" /x", L".\\own-tool.exe", L"..\\x", L"C:own-tool.exe", L"",
          L"\"", L"\"\"", L" ", L"/x", L"C:\\no such program.exe /x"})
        EXPECT_EQ(ProgramOfCommand(command), L"") << command;
    EXPECT_EQ(ProgramOfCommand(m_folder), L"") << "a folder";
}

} // namespace
