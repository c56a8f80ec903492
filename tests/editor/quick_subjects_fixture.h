// The Quick Subjects dialog, worked as a user does.
#pragma once

#include "editor/quick_subjects.h"
#include "editor/quick_subjects_dialog.h"
#include "editor_fixture.h"

using Texts = std::vector<std::wstring>;

constexpr int kEdit = 1402, kList = 1029, kAdd = 1026, kModify = 1027, kDelete = 1031;

class QuickSubjectsDialogTest : public testing::Test {
  protected:
    // Works the dialog; what the action leaves open is closed with Cancel. The dialog's answer.
    int Run(const std::function<void(EditorWindow&)>& action, HWND owner = nullptr)
    {
        ModalDriver driver([&](HWND window) {
            ShowWindow(window, SW_SHOW); // the dialog manager shows it once it has nothing else to do
            EditorWindow dialog(window);
            action(dialog);
            if (IsWindowVisible(window))
                dialog.Cancel();
        });
        const int result = RunQuickSubjects(owner, Own());
        EXPECT_TRUE(driver.Ran());
        return result;
    }
    // The same, then OK; the subjects as they are stored.
    Texts Stored(const std::function<void(EditorWindow&)>& action)
    {
        EXPECT_EQ(Run([&](EditorWindow& dialog) {
                      action(dialog);
                      dialog.Ok();
                  }),
                  1);
        return ReadQuickSubjects(Own());
    }
    static void Store(const Texts& subjects) { StoreQuickSubjects(&Own(), subjects); }

    static Texts Items(const EditorWindow& dialog)
    {
        Texts items;
        for (LRESULT i = 0; i < dialog.Ask(kList, LB_GETCOUNT); ++i) {
            wchar_t text[300];
            dialog.Ask(kList, LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
            items.emplace_back(text);
        }
        return items;
    }
    static LRESULT Selected(const EditorWindow& dialog) { return dialog.Ask(kList, LB_GETCURSEL); }
    // As a user does: the list gets the focus and the item is clicked.
    static void Select(const EditorWindow& dialog, int item)
    {
        RECT rect{};
        dialog.Ask(kList, LB_GETITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&rect));
        const LPARAM point = MAKELPARAM(rect.left + 5, (rect.top + rect.bottom) / 2);
        SendMessageW(dialog.Item(kList), WM_LBUTTONDOWN, MK_LBUTTON, point);
        SendMessageW(dialog.Item(kList), WM_LBUTTONUP, 0, point);
        EXPECT_EQ(Selected(dialog), item);
    }
    static void Press(const EditorWindow& dialog, int button)
    {
        ASSERT_TRUE(IsWindowEnabled(dialog.Item(button))) << button;
        dialog.Focus(button);
        SendMessageW(dialog.Item(button), BM_CLICK, 0, 0);
    }
    // Which of Add, Modify and Delete can be pressed: "AMD", "--D".
    static std::string Enabled(const EditorWindow& dialog)
    {
        std::string letters = "AMD";
        const int buttons[] = {kAdd, kModify, kDelete};
        for (size_t i = 0; i < 3; ++i)
            if (!IsWindowEnabled(dialog.Item(buttons[i])))
                letters[i] = '-';
        return letters;
    }
    static bool IsAllSelected(const EditorWindow& dialog)
    {
        DWORD from = 99, to = 99;
        dialog.Ask(kEdit, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
        return from == 0 && to == dialog.Text(kEdit).size();
    }
    static void ExpectReset(const EditorWindow& dialog)
    {
        EXPECT_EQ(dialog.Text(kEdit), L"<Entry Subject>");
        EXPECT_TRUE(IsAllSelected(dialog));
        EXPECT_EQ(Enabled(dialog), "---");
        EXPECT_EQ(Selected(dialog), LB_ERR);
        EXPECT_EQ(GetFocus(), dialog.Item(kEdit)) << "a button that is grey must not have the keyboard";
    }

    TestRegistry m_registry;
};
