// A file is written whole or not at all, and read whole or not at all.
#include "util/whole_file.h"

#include <gtest/gtest.h>

#include "support/file_faults.h"
#include "support/temporary_name.h"
#include "support/test_store.h"
#include "util/owners.h"

namespace {

class WholeFile : public testing::Test {
  protected:
    WholeFile()
    {
        m_folder = TemporaryName(L"whole");
        CreateDirectoryW(m_folder.c_str(), nullptr);
        m_path = m_folder + L"\\file.txt";
        EXPECT_TRUE(WriteFileBytes(m_path, "before"));
    }
    ~WholeFile() override
    {
        for (const std::wstring& name : Names())
            if (!DeleteFileW((m_folder + L"\\" + name).c_str()))
                RemoveDirectoryW((m_folder + L"\\" + name).c_str());
        EXPECT_TRUE(RemoveDirectoryW(m_folder.c_str()));
    }
    std::vector<std::wstring> Names() const
    {
        std::vector<std::wstring> names;
        WIN32_FIND_DATAW data;
        HANDLE search = FindFirstFileW((m_folder + L"\\*").c_str(), &data);
        for (BOOL more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileW(search, &data))
            if (data.cFileName[0] != L'.')
                names.emplace_back(data.cFileName);
        FindClose(search);
        return names;
    }
    UniqueKernelHandle Hold(DWORD access, DWORD share) const
    {
        HANDLE held = CreateFileW(m_path.c_str(), access, share, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
        EXPECT_NE(held, INVALID_HANDLE_VALUE);
        return UniqueKernelHandle(held == INVALID_HANDLE_VALUE ? nullptr : held);
    }

    std::wstring m_folder, m_path;
};

TEST_F(WholeFile, IsReplacedByOneOfAnyLength)
{
    for (const std::string& bytes : {std::string("x"), std::string(), std::string(100'000, 'y')}) {
        EXPECT_TRUE(ReplaceWholeFile(m_path, bytes));
        EXPECT_TRUE(ReadFileBytes(m_path) == bytes);
        EXPECT_EQ(Names().size(), 1u);
    }
}

TEST_F(WholeFile, StaysWhicheverCallFails)
{
    FileFaults faults;
    bool fired = true, replaced = false;
    for (int n = 1; fired; ++n) {
        faults.FailNth(n);
        replaced = ReplaceWholeFile(m_path, "after");
        fired = faults.HasFired();
        faults.FailNone();
        EXPECT_NE(replaced, fired) << n;
        EXPECT_EQ(ReadFileBytes(m_path), replaced ? "after" : "before") << n;
        EXPECT_EQ(Names().size(), 1u) << n;
    }
    EXPECT_TRUE(replaced);
}

TEST_F(WholeFile, IsNoneWhereAFolderHasItsName)
{
    ASSERT_TRUE(DeleteFileW(m_path.c_str()));
    ASSERT_TRUE(CreateDirectoryW(m_path.c_str(), nullptr));
    EXPECT_FALSE(ReplaceWholeFile(m_path, "after"));
    EXPECT_EQ(Names(), std::vector<std::wstring>{L"file.txt"});
}

TEST_F(WholeFile, StaysWhereAnotherProgramHasItOpen)
{
    {
        const UniqueKernelHandle held = Hold(GENERIC_READ, FILE_SHARE_READ);
        EXPECT_FALSE(ReplaceWholeFile(m_path, "after"));
        EXPECT_EQ(Names(), std::vector<std::wstring>{L"file.txt"});
    }
    EXPECT_EQ(ReadFileBytes(m_path), "before");
    EXPECT_TRUE(ReplaceWholeFile(m_path, "after"));
}

TEST_F(WholeFile, StaysWhereAllNamesBesideItAreTaken)
{
    ASSERT_TRUE(WriteFileBytes(m_path + L".new", "somebody's"));
    for (int number = 2; number <= 100; ++number)
        ASSERT_TRUE(WriteFileBytes(m_path + L".new" + std::to_wstring(number), "somebody's"));
    EXPECT_FALSE(ReplaceWholeFile(m_path, "after"));
    EXPECT_EQ(ReadFileBytes(m_path), "before");
    EXPECT_EQ(Names().size(), 101u);
    ASSERT_TRUE(DeleteFileW((m_path + L".new100").c_str()));
    EXPECT_TRUE(ReplaceWholeFile(m_path, "after"));
    EXPECT_EQ(ReadFileBytes(m_path + L".new99"), "somebody's");
}

TEST_F(WholeFile, IsReadUpToTheLimit)
{
    EXPECT_EQ(ReadWholeFile(m_path.c_str(), 6), "before");
    EXPECT_EQ(ReadWholeFile(m_path.c_str(), 5), std::nullopt);
    ASSERT_TRUE(WriteFileBytes(m_path, ""));
    EXPECT_EQ(ReadWholeFile(m_path.c_str(), 0), "");
    EXPECT_EQ(ReadWholeFile((m_path + L".none").c_str(), 6), std::nullopt);
    EXPECT_EQ(ReadWholeFile(m_folder.c_str(), 6), std::nullopt);
}

TEST_F(WholeFile, IsNotReadWhicheverCallFails)
{
    FileFaults faults;
    bool fired = true;
    for (int n = 1; fired; ++n) {
        faults.FailNth(n);
        const auto read = ReadWholeFile(m_path.c_str(), 6);
        fired = faults.HasFired();
        faults.FailNone();
        EXPECT_EQ(read, fired ? std::nullopt : std::optional<std::string>("before")) << n;
    }
}

decltype(&ReadFile) g_readFile;

// As where it is cut off behind the question for its size.
BOOL WINAPI ReadHalf(HANDLE file, LPVOID bytes, DWORD size, LPDWORD read, LPOVERLAPPED overlapped)
{
    return g_readFile(file, bytes, size / 2, read, overlapped);
}

TEST_F(WholeFile, IsNotReadByHalf)
{
    g_readFile = __imp_ReadFile;
    const ImportWatch<decltype(&ReadFile)> half(&__imp_ReadFile, ReadHalf);
    EXPECT_EQ(ReadWholeFile(m_path.c_str(), 6), std::nullopt);
}

} // namespace
