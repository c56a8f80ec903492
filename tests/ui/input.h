// Real input: keys and mouse as a user gives them, one step at a time, also while a menu has its own loop.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

void KeyDown(WORD key);
void KeyUp(WORD key);
void PressKey(WORD key);
// A key while another one is held.
void PressWith(WORD held, WORD key);
void ButtonDown();
void ButtonUp();

// The menus on the screen that belong to this thread, the innermost one last.
std::vector<HMENU> OpenMenus();
// The innermost one; null when none is open.
HMENU InnermostMenu();
// The position of the selected item of a menu, -1 for none.
int SelectedItem(HMENU menu);
POINT CenterOf(HWND window, const RECT& rect);

// Steps that are taken one after the other by a timer, each as soon as its condition holds.
class InputScript {
  public:
    // Waits for a condition.
    InputScript& Until(const char* what, std::function<bool()> condition);
    InputScript& Do(std::function<void()> action);
    // Moves the mouse to where the function says, and waits until it is there.
    InputScript& MoveTo(std::function<POINT()> where);
    InputScript& Click(std::function<POINT()> where);

    // Takes all steps; messages that translate does not use up are dispatched. Fails the test when a
    // condition is not met in time.
    void Run(const std::function<bool(const MSG&)>& translate = nullptr);

  private:
    struct Step {
        const char* what;
        std::function<bool()> condition;
        std::function<void()> action;
    };

    static void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR id, DWORD time);
    void TakeSteps();

    std::vector<Step> m_steps;
    size_t m_next = 0;
    ULONGLONG m_deadline = 0;
    bool m_busy = false;
};
