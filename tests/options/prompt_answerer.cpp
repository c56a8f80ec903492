#include "options/prompt_answerer.h"

#include <gtest/gtest.h>

#include "support/dialog_window.h"
#include "support/test_windows.h"

namespace {

constexpr int kText = 1018;

PromptAnswerer* g_prompts = nullptr;

HWND PasswordField(HWND window)
{
    wchar_t name[16] = L"";
    HWND field = GetDlgItem(window, kText);
    return field && GetClassNameW(field, name, 16) && lstrcmpiW(name, L"Edit") == 0 ? field : nullptr;
}

} // namespace

PromptAnswerer::PromptAnswerer(Answers answers) : m_answers(std::move(answers))
{
    g_prompts = this;
}

PromptAnswerer::~PromptAnswerer()
{
    g_prompts = nullptr;
}

std::vector<std::wstring> PromptAnswerer::Titles() const
{
    std::vector<std::wstring> titles;
    for (const Prompt& prompt : m_prompts)
        titles.push_back(prompt.title);
    return titles;
}

LRESULT CALLBACK PromptAnswerer::Hook(int code, WPARAM wParam, LPARAM lParam)
{
    HWND window = reinterpret_cast<HWND>(wParam);
    if (code == HCBT_ACTIVATE && g_prompts && window != g_prompts->m_prompt && PasswordField(window)) {
        g_prompts->m_prompt = window;
        EXPECT_NE(SetTimer(nullptr, 0, 10, OnTimer), 0u);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

// Inside the prompt's own loop.
void CALLBACK PromptAnswerer::OnTimer(HWND, UINT, UINT_PTR id, DWORD)
{
    KillTimer(nullptr, id);
    if (g_prompts)
        g_prompts->Answer();
}

void PromptAnswerer::Answer()
{
    const DialogWindow dialog(m_prompt);
    HWND field = PasswordField(m_prompt);
    Prompt prompt{WindowText(m_prompt),
                  GetWindow(m_prompt, GW_OWNER),
                  SendMessageW(field, EM_GETPASSWORDCHAR, 0, 0) != 0,
                  GetFocus() == field,
                  {}};
    GetWindowRect(m_prompt, &prompt.place);
    m_prompts.push_back(prompt);
    const std::optional<std::wstring> answer = m_answers.empty() ? std::nullopt : m_answers.front();
    if (!m_answers.empty())
        m_answers.pop_front();
    if (answer)
        dialog.Type(*answer);
    dialog.Key(answer ? VK_RETURN : VK_ESCAPE);
}
