// While it lives, one value of the registry cannot be written.
#pragma once

#include <cwchar>

#include "support/import_watch.h"

class WriteRefuser {
  public:
    explicit WriteRefuser(const wchar_t* name) { s_name = name; }

  private:
    static LSTATUS WINAPI Set(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data,
                              DWORD size)
    {
        return wcscmp(name, s_name) == 0 ? ERROR_ACCESS_DENIED : s_set(key, name, reserved, type, data, size);
    }

    static inline const wchar_t* s_name = nullptr;
    static inline decltype(&RegSetValueExW) s_set = __imp_RegSetValueExW;
    const ImportWatch<decltype(&RegSetValueExW)> m_watch{&__imp_RegSetValueExW, Set};
};
