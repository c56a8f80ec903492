// The Export dialog, and the user in front of it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "export/export_dialog.h"
#include "export/export_fixture.h"
#include "support/dialog_window.h"
#include "support/test_windows.h"

constexpr int kAll = 1034, kSelected = 1035, kFiltered = 1036, kFields = 1037, kHeader = 1038, kFormat = 1039,
              kProgress = 1040;

class ExportWindow : public DialogWindow {
  public:
    using DialogWindow::DialogWindow;

    std::vector<std::wstring> Fields() const;
    std::vector<std::wstring> SelectedFields() const;
    // A click on a field, which turns it.
    void ClickField(const std::wstring& title) const;
    bool IsOn(int id) const { return Ask(id, BM_GETCHECK) == BST_CHECKED; }
    bool IsShown(int id) const { return (GetWindowLongPtrW(Item(id), GWL_STYLE) & WS_VISIBLE) != 0; }
};

class ExportDialogTest : public ExportTest {
  protected:
    ExportDialogTest();

    void Run(ExportFormat format, const std::function<void(ExportWindow&)>& action, HWND owner = nullptr);
    // Presses OK; what the message box at the end said.
    std::wstring RunThrough(ExportFormat format, const std::function<void(ExportWindow&)>& choose = {});
    static void FilterMonth(int month);

    SelectionSet m_selection;
};
