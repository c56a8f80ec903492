// The user in front of the password prompts.
#pragma once

#include <windows.h>

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "support/thread_hook.h"

// Answers the prompts that this thread opens while it lives, in order; those beyond the answers are
// cancelled.
class PromptAnswerer {
  public:
    struct Prompt {
        std::wstring title;
        HWND owner = nullptr;
        bool isMasked = false;
        bool hasKeyboard = false; // its text
        RECT place{};             // on the screen
    };
    // No text: Cancel.
    using Answers = std::deque<std::optional<std::wstring>>;
    explicit PromptAnswerer(Answers answers = {});
    ~PromptAnswerer();
    PromptAnswerer(const PromptAnswerer&) = delete;
    PromptAnswerer& operator=(const PromptAnswerer&) = delete;

    const std::vector<Prompt>& Prompts() const { return m_prompts; }
    std::vector<std::wstring> Titles() const;

  private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam);
    static void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR id, DWORD time);
    void Answer();

    Answers m_answers;
    std::vector<Prompt> m_prompts;
    const ThreadHook m_hook{WH_CBT, Hook};
    HWND m_prompt = nullptr; // open, to be answered
};
