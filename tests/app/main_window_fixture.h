// The main window over a store and settings of a test's own.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "app/journal_app.h"
#include "app/main_window.h"
#include "res/resource.h"
#include "support/test_store.h"
#include "support/test_windows.h"
#include "ui/bars/command_bands.h"

HINSTANCE Instance();
// Takes the quit message that a destroyed main window posts; true when there was one.
bool TakeQuitMessage();
CEOID AddEntry(const wchar_t* subject, uint64_t date);

class MainWindowTest : public testing::Test {
  protected:
    MainWindowTest() { MainWindow::RegisterWindowClass(Instance()); }
    ~MainWindowTest() override
    {
        if (m_window.Handle())
            DestroyWindow(m_window.Handle());
        App().Journal().Close();
        TakeQuitMessage();
    }

    HWND Create()
    {
        HWND window = m_window.Create(Instance());
        EXPECT_NE(window, nullptr);
        m_window.ShowFirst(SW_SHOWNORMAL);
        PumpMessages();
        return window;
    }

    HWND Bands() const { return GetDlgItem(m_window.Handle(), IDC_BANDS); }
    HWND MenuBar() const { return CommandBands_GetCommandBar(Bands(), 0); }
    HWND Buttons() const { return CommandBands_GetCommandBar(Bands(), 1); }
    // Beside the bands.
    HWND Adornments() const { return FindWindowExW(m_window.Handle(), nullptr, L"ToolbarWindow32", nullptr); }
    HMENU Menu() const { return CommandBar_GetMenu(MenuBar()); }
    HWND List() { return m_window.List().Handle(); }
    int Rows() { return ListView_GetItemCount(List()); }
    // It takes the rest of the window.
    void ExpectListBelowBands();

    bool ButtonEnabled(int command) const
    {
        return SendMessageW(Buttons(), TB_ISBUTTONENABLED, static_cast<WPARAM>(command), 0) != 0;
    }
    bool MenuEnabled(UINT command) const
    {
        return !(GetMenuState(Menu(), command, MF_BYCOMMAND) & MF_GRAYED);
    }

    void Command(UINT id, WORD source = 0)
    {
        SendMessageW(m_window.Handle(), WM_COMMAND, MAKEWPARAM(id, source), 0);
    }

    TestStore m_store;
    TestRegistry m_registry;
    MainWindow m_window{App().GetSession()};
};
