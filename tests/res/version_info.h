// What a program's file tells of itself.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

class VersionInfo {
  public:
    explicit VersionInfo(const std::wstring& path)
    {
        DWORD unused = 0;
        m_info.resize(GetFileVersionInfoSizeW(path.c_str(), &unused));
        EXPECT_FALSE(m_info.empty());
        EXPECT_TRUE(GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(m_info.size()), m_info.data()));
    }

    std::wstring Text(const std::wstring& name) const
    {
        void* text = nullptr;
        UINT length = 0;
        if (!VerQueryValueW(m_info.data(), (L"\\StringFileInfo\\040904b0\\" + name).c_str(), &text, &length))
            return L"(missing)";
        return static_cast<const wchar_t*>(text);
    }

    // The file's version as it stands in numbers, the first three of them.
    std::wstring Numbers() const
    {
        void* data = nullptr;
        UINT length = 0;
        if (!VerQueryValueW(m_info.data(), L"\\", &data, &length))
            return L"(missing)";
        const auto* fixed = static_cast<const VS_FIXEDFILEINFO*>(data);
        return std::to_wstring(HIWORD(fixed->dwFileVersionMS)) + L"." +
               std::to_wstring(LOWORD(fixed->dwFileVersionMS)) + L"." +
               std::to_wstring(HIWORD(fixed->dwFileVersionLS));
    }

  private:
    std::vector<BYTE> m_info;
};

inline std::wstring OwnPath()
{
    wchar_t path[MAX_PATH];
    return {path, GetModuleFileNameW(nullptr, path, MAX_PATH)};
}
