// Another work area of the main screen, which ends with this.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include "ui/screen/work_area.h"

class ScopedWorkArea {
  public:
    // A window is told, as the system tells every one.
    ScopedWorkArea(HWND window, const RECT& area)
    {
        Set(area);
        const RECT now = WorkArea();
        EXPECT_TRUE(EqualRect(&now, &area));
        if (window)
            SendMessageW(window, WM_SETTINGCHANGE, SPI_SETWORKAREA, 0);
    }
    ~ScopedWorkArea() { Set(m_before); }
    ScopedWorkArea(const ScopedWorkArea&) = delete;
    ScopedWorkArea& operator=(const ScopedWorkArea&) = delete;

  private:
    static void Set(RECT area) { SystemParametersInfoW(SPI_SETWORKAREA, 0, &area, 0); }

    const RECT m_before = WorkArea();
};
