#include "support/command_line_file.h"

#include <gtest/gtest.h>

#include <cstring>

#include "support/temporary_name.h"
#include "support/test_store.h"
#include "support/test_windows.h"

CommandLineFile::CommandLineFile()
{
    m_path = TemporaryName(L"command-line");
    DeleteFileW(m_path.c_str());
    SetEnvironmentVariableW(L"COMMAND_LINE_FILE", m_path.c_str());
}

CommandLineFile::~CommandLineFile()
{
    SetEnvironmentVariableW(L"COMMAND_LINE_FILE", nullptr);
    DeleteFileW(m_path.c_str());
}

// It closes with a line end.
std::wstring CommandLineFile::Read() const
{
    std::string bytes;
    EXPECT_TRUE(PumpUntil([&] {
        bytes = ReadFileBytes(m_path);
        return bytes.size() >= 2 && bytes[bytes.size() - 2] == '\n';
    }));
    std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
    memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
    return text.substr(0, text.find(L'\n'));
}

std::wstring CommandLineFile::ProgramPath()
{
    wchar_t own[MAX_PATH];
    GetModuleFileNameW(nullptr, own, MAX_PATH);
    const std::wstring path = own;
    return path.substr(0, path.find_last_of(L'\\') + 1) + L"command_line_writer.exe";
}
