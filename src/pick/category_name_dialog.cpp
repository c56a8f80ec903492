#include "pick/category_name_dialog.h"

#include "mervane/db_categories.h"
#include "mervane/values/category_name.h"
#include "res/resource.h"
#include "ui/control_text.h"
#include "ui/dialog.h"
#include "ui/launch.h"

namespace {

class CategoryNameDialog : public Dialog {
  public:
    CategoryNameDialog(const CategoryDraft& draft, int row) : m_draft(draft), m_row(row) {}

    const std::wstring& Name() const { return m_name; }

    void OnOK() override;

  protected:
    bool OnInitDialog() override;
    const wchar_t* HelpTopic() const override { return kHelpCategories; }
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

  private:
    void TakeName();
    std::wstring Complaint(CategoryDraft::Fault fault) const;
    const wchar_t* Title() const { return m_row < 0 ? L"New Category" : L"Rename Category"; }
    HWND Edit() const { return GetItem(IDC_CATEGORY_NAME); }

    const CategoryDraft& m_draft;
    int m_row;
    std::wstring m_name; // as it is typed, without the blanks around it
};

bool CategoryNameDialog::OnInitDialog()
{
    SetWindowTextW(GetWindow(), Title());
    SendMessageW(Edit(), EM_LIMITTEXT, kCategoryNameSize - 1, 0);
    if (m_row >= 0)
        SetWindowTextW(Edit(), m_draft.At(m_row).name.c_str());
    TakeName();
    CenterOnOwner();
    SendMessageW(Edit(), EM_SETSEL, 0, -1);
    SetFocus(Edit());
    return false;
}

bool CategoryNameDialog::OnMessage(UINT message, WPARAM wParam, LPARAM, LRESULT*)
{
    if (message != WM_COMMAND || wParam != MAKEWPARAM(IDC_CATEGORY_NAME, EN_CHANGE))
        return false;
    TakeName();
    return true;
}

void CategoryNameDialog::TakeName()
{
    m_name = mervane::TrimCategoryName(ReadText(Edit()).value_or(L""));
    EnableItem(IDOK, !m_name.empty());
}

std::wstring CategoryNameDialog::Complaint(CategoryDraft::Fault fault) const
{
    if (fault == CategoryDraft::Fault::Taken)
        return L"There is a category \"" + m_name + L"\" already.";
    return L"A category's name has at most " + std::to_wstring(kCategoryNameSize - 1) + L" characters.";
}

void CategoryNameDialog::OnOK()
{
    const CategoryDraft::Fault fault = m_draft.Check(m_name, m_row);
    if (fault == CategoryDraft::Fault::None)
        return End(1);
    MessageBoxW(GetWindow(), Complaint(fault).c_str(), Title(), MB_OK | MB_ICONEXCLAMATION);
    SendMessageW(Edit(), EM_SETSEL, 0, -1);
    SetFocus(Edit());
}

} // namespace

std::optional<std::wstring> AskForCategoryName(HWND owner, const CategoryDraft& draft, int row)
{
    CategoryNameDialog dialog(draft, row);
    if (dialog.DoModal(GetModuleHandleW(nullptr), IDD_CATEGORY_NAME, owner) != 1)
        return std::nullopt;
    return dialog.Name();
}
