#include "export/export_window.h"

#include "ui/screen/work_area.h"

std::vector<std::wstring> ExportWindow::Fields() const
{
    std::vector<std::wstring> items;
    for (LRESULT i = 0; i < Ask(kFields, LB_GETCOUNT); ++i) {
        wchar_t text[64];
        Ask(kFields, LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
        items.emplace_back(text);
    }
    return items;
}

std::vector<std::wstring> ExportWindow::SelectedFields() const
{
    std::vector<std::wstring> selected;
    const std::vector<std::wstring> all = Fields();
    for (size_t i = 0; i < all.size(); ++i)
        if (Ask(kFields, LB_GETSEL, i) > 0)
            selected.push_back(all[i]);
    return selected;
}

void ExportWindow::ClickField(const std::wstring& title) const
{
    const std::vector<std::wstring> all = Fields();
    for (size_t i = 0; i < all.size(); ++i) {
        if (all[i] != title)
            continue;
        Ask(kFields, LB_SETTOPINDEX, i);
        RECT rect{};
        Ask(kFields, LB_GETITEMRECT, i, reinterpret_cast<LPARAM>(&rect));
        const LPARAM point = MAKELPARAM(rect.left + 5, (rect.top + rect.bottom) / 2);
        Ask(kFields, WM_LBUTTONDOWN, MK_LBUTTON, point);
        Ask(kFields, WM_LBUTTONUP, 0, point);
        return;
    }
    ADD_FAILURE() << "no such field";
}

ExportDialogTest::ExportDialogTest()
{
    ResetColumns(&m_columns, WorkArea().right);
}

void ExportDialogTest::Run(ExportFormat format, const std::function<void(ExportWindow&)>& action, HWND owner)
{
    const auto work = [&](HWND window) {
        ExportWindow dialog(window);
        action(dialog);
    };
    const auto call = [&]() -> INT_PTR {
        RunExportDialog(owner, m_file.Path(), format, {m_columns, m_selection, Own()});
        return 0;
    };
    RunDialog(call, work, 0);
}

std::wstring ExportDialogTest::RunThrough(ExportFormat format,
                                          const std::function<void(ExportWindow&)>& choose)
{
    const MessageBoxAnswerer answerer;
    Run(format, [&](ExportWindow& dialog) {
        if (choose)
            choose(dialog);
        dialog.Ok();
    });
    EXPECT_EQ(answerer.Boxes().size(), 1u);
    return answerer.Boxes().empty() ? L"" : answerer.Boxes()[0].text;
}

void ExportDialogTest::FilterMonth(int month)
{
    Own().Filter().active = true;
    Own().Filter().monthMask = 1u << (month - 1);
}
