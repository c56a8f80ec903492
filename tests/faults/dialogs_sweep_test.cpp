// The editor's window and the categories' under faults: what was typed is stored when they close with OK, or
// a box says that it is not and they stay open.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include "editor/entry_editor.h"
#include "fault_sweep.h"
#include "pick/z_cats_dlg.h"
#include "res/resource.h"
#include "support/dialog_window.h"
#include "support/test_session.h"
#include "support/test_windows.h"
#include "util/clock.h"

namespace {

class FaultedDialogs : public FaultSweep {
  protected:
    // Works a dialog and closes it with OK; where that is refused it is ended without.
    Outcome Run(const std::function<INT_PTR()>& open, const std::function<void(const DialogWindow&)>& work)
    {
        const MessageBoxAnswerer boxes({IDNO}); // also to the offer of a copy
        const ModalDriver driver([&](HWND window) {
            const DialogWindow dialog(window);
            ShowWindow(window, SW_SHOW); // the dialog manager shows it once it has nothing else to do
            work(dialog);
            dialog.Ok();
            if (IsWindowVisible(window)) { // one that has ended is hidden
                EXPECT_FALSE(boxes.Boxes().empty()) << "open, but nothing is told";
                EndDialog(window, 0);
            }
        });
        const bool done = open() == 1;
        EXPECT_EQ(done, boxes.Boxes().empty());
        return done ? Outcome::Done : Outcome::Failed;
    }

    TestRegistry m_registry;
};

// Its categories and contacts, which are not shown, are kept.
TEST_F(FaultedDialogs, SavingInTheEditor)
{
    Sweep({.prepare = [] { return Own().Journal().Open(nullptr) == 1; },
           .run =
               [&] {
                   CEOID id = 6;
                   const Outcome outcome = Run([&] { return OpenEntryEditor(Own(), nullptr, &id); },
                                               [](const DialogWindow& editor) {
                                                   editor.Focus(IDC_BODY);
                                                   SendMessageW(editor.Item(IDC_BODY), EM_SETSEL, 0, -1);
                                                   editor.Type(L"typed");
                                               });
                   EXPECT_EQ(id, 6u);
                   return outcome;
               },
           .end = [] { Own().Journal().Close(); },
           .model = "UPDATE journal SET body = 'typed' WHERE oid = 6"});
}

// A Tuesday in 2024.
constexpr SYSTEMTIME kNow{2024, 3, 2, 5, 14, 5, 30, 250};

TEST_F(FaultedDialogs, WritingANewEntryInTheEditor)
{
    const ScopedClockForTesting clock(kNow);
    Sweep({.prepare = [] { return Own().Journal().Open(nullptr) == 1; },
           .run =
               [&] {
                   CEOID id = 0;
                   const Outcome outcome = Run([&] { return OpenEntryEditor(Own(), nullptr, &id); },
                                               [](const DialogWindow& editor) {
                                                   editor.Focus(IDC_BODY);
                                                   editor.Type(L"typed");
                                               });
                   EXPECT_EQ(id, outcome == Outcome::Done ? 41u : 0u);
                   return outcome;
               },
           .end = [] { Own().Journal().Close(); },
           .model =
               "INSERT INTO journal(date, subject, body, type, kind, priority, sensitivity, end_time, "
               "duration) "
               "VALUES(133541211302500000, NULL, 'typed', 'Phone call', 3, 1, 0, 133541211302500000, 0)"});
}

void Press(const DialogWindow& dialog, int row, const wchar_t* button)
{
    HWND list = FindWindowExW(dialog.Window(), nullptr, WC_LISTVIEWW, nullptr);
    ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    SendMessageW(FindWindowExW(dialog.Window(), nullptr, L"Button", button), BM_CLICK, 0, 0);
}

TEST_F(FaultedDialogs, WorkingInTheWindowOfCategories)
{
    Sweep({.prepare = [this] { return OpenAll(); },
           .run =
               [&] {
                   return Run([] { return ZCatsDlg(nullptr).DoModal(); },
                              [](const DialogWindow& dialog) {
                                  Press(dialog, 0, L"&Hide");   // Books
                                  Press(dialog, 1, L"Un&hide"); // Garden
                                  Press(dialog, 3, L"&Delete"); // Music, which no entry uses
                              });
               },
           .end = [this] { CloseAll(); },
           .model = "UPDATE categories SET hidden = 1 WHERE oid = 5; UPDATE categories SET hidden = 0 WHERE "
                    "oid = 4; "
                    "DELETE FROM categories WHERE oid = 6"});
}

} // namespace
