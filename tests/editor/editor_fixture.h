// A journal, settings and a clock of a test's own, and the editor worked from inside its modal loop.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "data/journal_entry.h"
#include "editor/entry_editor.h"
#include "res/resource.h"
#include "support/dialog_window.h"
#include "support/test_session.h"
#include "support/test_store.h"
#include "support/test_windows.h"
#include "util/clock.h"

// Tuesday, 5 March 2024, 14:05:30.250.
constexpr SYSTEMTIME kTuesday{2024, 3, 2, 5, 14, 5, 30, 250};

TimeCount At(const SYSTEMTIME& time);
TimeCount Minutes(int minutes);

// The editor's window.
class EditorWindow : public DialogWindow {
  public:
    using DialogWindow::DialogWindow;

    SYSTEMTIME Picked(int id) const;
    std::wstring ListItem(int box, int index) const;

    // What the user sees as typed: the field gets the focus, the new text, and tells of the change.
    void Enter(int id, const std::wstring& text) const;
    void Pick(int id, const SYSTEMTIME& time) const; // a picker's new time, with its notification
    void ChooseInBox(int id, int item) const;        // drops the list, walks to the item and takes it
    void DropDown(int button) const;                 // drops the button's menu and waits until it is gone
    void Choose(int button, int menuId) const;       // drops the button's menu and takes the item

    // What the system sends to all windows once a section of the settings has changed.
    void TellOfChange(const wchar_t* section) const
    {
        SendMessageW(Window(), WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(section));
    }

    bool SaveEnabled() const { return BarState(CMD_SAVE) & TBSTATE_ENABLED; }
    int BarState(int command) const;
    std::wstring BarText(int command) const;
    int BarImage(int command) const;
    int BarWidth(int command) const;
};

inline void ExpectSameRect(const RECT& a, const RECT& b)
{
    EXPECT_TRUE(EqualRect(&a, &b)) << a.left << "," << a.top << "," << a.right << "," << a.bottom << " and "
                                   << b.left << "," << b.top << "," << b.right << "," << b.bottom;
}

// Takes an item of the next popup menu with the arrow keys and Enter; leaves a menu that has no such item.
class MenuChooser {
  public:
    explicit MenuChooser(int menuId);
    ~MenuChooser();
    MenuChooser(const MenuChooser&) = delete;
    MenuChooser& operator=(const MenuChooser&) = delete;

    bool Chose() const { return m_chose; }

  private:
    static void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR id, DWORD time);
    void Take(HMENU menu);

    static inline MenuChooser* s_current = nullptr;
    UINT m_menuId;
    UINT_PTR m_timer = 0;
    bool m_done = false;
    bool m_chose = false;
};

class EditorTest : public testing::Test {
  protected:
    ~EditorTest() override;
    void SetUp() override;
    void TearDown() override;

    // Opens the editor and lets the action work it; what the action leaves open is closed without saving.
    // Returns what the editor returned; *id as OpenEntryEditor has it.
    int Run(CEOID* id, const std::function<void(EditorWindow&)>& action);
    int RunNew(const std::function<void(EditorWindow&)>& action);

    CEOID Write(EntryToWrite entry);
    JournalEntry Read(CEOID id);
    DWORD Count() { return Own().Journal().RecordCount(); }
    // As another program does, over a connection of its own.
    bool ChangeStore(const char* sql) const;

    TestRegistry m_registry;
    TestStore m_store;
    ScopedClockForTesting m_clock{kTuesday};
};
