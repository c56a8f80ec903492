#include "pages.h"
#include "support/temporary_name.h"

#include <gtest/gtest.h>

#include <atomic>

namespace help {

TestFolder::TestFolder()
{
    static std::atomic<int> count;
    m_path = TemporaryName(L"help \u4EBA\u00E9") + L"-" + std::to_wstring(++count) + L"\\";
    EXPECT_TRUE(CreateDirectoryW(m_path.c_str(), nullptr));
}

TestFolder::~TestFolder()
{
    for (const std::wstring& file : m_files)
        DeleteFileW(file.c_str());
    for (const std::wstring& folder : m_folders)
        RemoveDirectoryW(folder.c_str());
    RemoveDirectoryW(m_path.c_str());
}

std::wstring TestFolder::Write(const std::wstring& name, const std::string& bytes)
{
    const size_t folder = name.find(L'\\');
    if (folder != std::wstring::npos) {
        m_folders.push_back(m_path + name.substr(0, folder));
        CreateDirectoryW(m_folders.back().c_str(), nullptr);
    }
    m_files.push_back(m_path + name);
    HANDLE file = CreateFileW(m_files.back().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    EXPECT_NE(file, INVALID_HANDLE_VALUE);
    DWORD written = 0;
    EXPECT_TRUE(WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr));
    EXPECT_EQ(written, bytes.size());
    CloseHandle(file);
    return m_files.back();
}

} // namespace help
