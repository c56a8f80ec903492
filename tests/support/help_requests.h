// What this program asks of the help.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/import_watch.h"
#include "support/temporary_name.h"
#include "support/test_store.h"

// A help viewer that is found and never started: what it would have been started with is kept.
class HelpRequests {
  public:
    HelpRequests()
    {
        s_asked.clear();
        m_before.resize(GetEnvironmentVariableW(L"PATH", nullptr, 0));
        m_before.resize(
            GetEnvironmentVariableW(L"PATH", m_before.data(), static_cast<DWORD>(m_before.size())));
        m_folder = TemporaryName(L"viewer");
        EXPECT_TRUE(CreateDirectoryW(m_folder.c_str(), nullptr));
        EXPECT_TRUE(WriteFileBytes(m_folder + L"\\PegHelp.exe", "no program"));
        EXPECT_TRUE(SetEnvironmentVariableW(L"PATH", m_folder.c_str()));
    }
    ~HelpRequests()
    {
        SetEnvironmentVariableW(L"PATH", m_before.c_str());
        DeleteFileW((m_folder + L"\\PegHelp.exe").c_str());
        RemoveDirectoryW(m_folder.c_str());
    }

    const std::vector<std::wstring>& Asked() const { return s_asked; }

  private:
    static BOOL WINAPI Take(LPCWSTR, LPWSTR commandLine, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL,
                            DWORD, LPVOID, LPCWSTR, LPSTARTUPINFOW, LPPROCESS_INFORMATION)
    {
        s_asked.push_back(commandLine);
        return TRUE;
    }

    static inline std::vector<std::wstring> s_asked;
    std::wstring m_before; // the search path
    std::wstring m_folder;
    const ImportWatch<decltype(&CreateProcessW)> m_watch{&__imp_CreateProcessW, Take};
};
