// The settings that the program writes while this lives, in the order in which it does.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "support/import_watch.h"

class SettingsLog {
  public:
    // onWrite is called with each name before it is written.
    explicit SettingsLog(std::function<void(const std::wstring& name)> onWrite = nullptr)
        : m_onWrite(std::move(onWrite))
    {
        s_current = this;
    }
    ~SettingsLog() { s_current = nullptr; }
    SettingsLog(const SettingsLog&) = delete;
    SettingsLog& operator=(const SettingsLog&) = delete;

    const std::vector<std::wstring>& Names() const { return m_names; }

  private:
    static LSTATUS WINAPI SetValue(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data,
                                   DWORD size)
    {
        if (s_current->m_onWrite)
            s_current->m_onWrite(name);
        s_current->m_names.emplace_back(name);
        return s_current->m_watch.Original()(key, name, reserved, type, data, size);
    }

    static inline SettingsLog* s_current = nullptr;
    std::function<void(const std::wstring&)> m_onWrite;
    std::vector<std::wstring> m_names;
    const ImportWatch<decltype(&RegSetValueExW)> m_watch{&__imp_RegSetValueExW, SetValue};
};
