// Another setting of the user's locale, which ends with this.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

class ScopedLocaleSetting {
  public:
    ScopedLocaleSetting(LCTYPE type, const wchar_t* value) : m_type(type)
    {
        EXPECT_TRUE(GetLocaleInfoW(LOCALE_USER_DEFAULT, type, m_before, 80));
        EXPECT_TRUE(SetLocaleInfoW(LOCALE_USER_DEFAULT, type, value));
    }
    ~ScopedLocaleSetting() { SetLocaleInfoW(LOCALE_USER_DEFAULT, m_type, m_before); }
    ScopedLocaleSetting(const ScopedLocaleSetting&) = delete;
    ScopedLocaleSetting& operator=(const ScopedLocaleSetting&) = delete;

  private:
    LCTYPE m_type;
    wchar_t m_before[80] = L"";
};
