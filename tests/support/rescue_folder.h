// A folder of rescue files of a test's own.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "support/temporary_name.h"

class RescueFolder {
  public:
    RescueFolder()
    {
        wchar_t text[MAX_PATH];
        GetEnvironmentVariableW(L"APPDATA", text, MAX_PATH);
        m_before = text;
        m_data = TemporaryName(L"rescue");
        CreateDirectoryW(m_data.c_str(), nullptr);
        SetEnvironmentVariableW(L"APPDATA", m_data.c_str());
        Empty();
    }
    ~RescueFolder()
    {
        Empty();
        SetEnvironmentVariableW(L"APPDATA", m_before.c_str());
    }
    RescueFolder(const RescueFolder&) = delete;
    RescueFolder& operator=(const RescueFolder&) = delete;

    std::wstring Path() const { return m_data + L"\\Quillmarsh\\Journal\\rescue\\"; }
    // Whose names end so; those of all others too when that is empty.
    std::vector<std::wstring> Files(const std::wstring& ending = {}) const
    {
        std::vector<std::wstring> names;
        WIN32_FIND_DATAW data{};
        HANDLE search = FindFirstFileW((Path() + L"*").c_str(), &data);
        if (search == INVALID_HANDLE_VALUE)
            return names;
        do {
            const std::wstring name = data.cFileName;
            if (name.ends_with(ending) && !name.ends_with(L"."))
                names.push_back(Path() + name);
        } while (FindNextFileW(search, &data));
        FindClose(search);
        return names;
    }
    size_t Unsaved() const { return Files(L".rescue").size(); }

  private:
    void Empty() const
    {
        for (const std::wstring& file : Files())
            if (!DeleteFileW(file.c_str()))
                RemoveDirectoryW(file.c_str());
    }

    std::wstring m_before;
    std::wstring m_data;
};
