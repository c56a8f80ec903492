// EditorRescue: when an open editor puts aside what is not saved.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>

#include "editor/rescue_file.h"

class EditorRescue {
  public:
    // state tells what there is to put aside; nothing when it cannot be had.
    explicit EditorRescue(std::function<std::optional<RescueState>()> state) : m_state(std::move(state)) {}
    ~EditorRescue();
    EditorRescue(const EditorRescue&) = delete;
    EditorRescue& operator=(const EditorRescue&) = delete;

    static constexpr UINT_PTR kTimer = 0x0E5C;
    static constexpr UINT kDelay = 3'000; // milliseconds from a change until it is on disk
    static constexpr UINT kPause = 5'000; // from one write to the next, at least

    // Goes on with a file that was found.
    void TakeOver(RescueFile file) { m_file = std::move(file); }
    // Something has changed: a WM_TIMER comes to the window in time. However long changes go on, each is on
    // disk a few seconds later.
    void Ask(HWND window);
    // Takes that WM_TIMER; false for any other one.
    [[nodiscard]] bool OnTimer(HWND window, UINT_PTR id);
    // What cannot be had or written now is tried again as if it had changed.
    void WriteNow(HWND window);
    // Something is about to be saved: what is on disk becomes just that. Where the program ends between the
    // save and Discard, the next start finds all of it in the store.
    void CatchUp(HWND window);
    // All is saved, or given up: nothing stays on disk, and nothing more is written until the next change. A
    // file that cannot be deleted is tried again then, and at the end.
    void Discard(HWND window);

  private:
    void Cancel(HWND window);

    std::function<std::optional<RescueState>()> m_state;
    RescueFile m_file;
    ULONGLONG m_written = 0; // ticks, when it was last tried
    bool m_isAsked = false;
    bool m_isLeft = false; // the file, which could not be deleted
};
