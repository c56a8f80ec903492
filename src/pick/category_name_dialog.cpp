#include "pick/category_name_dialog.h"

#include "mervane/db_categories.h"
#include "mervane/values/category_name.h"
#include "pick/modal_dialog.h"

namespace mervane {

namespace {

constexpr WORD kLabel = 1001, kName = 1002;

class CategoryNameDialog : public ModalDialog {
  public:
    CategoryNameDialog(const CategoryDraft& draft, int row) : m_draft(draft), m_row(row) {}

    std::optional<std::wstring> NameFor(HWND owner)
    {
        if (Run(Contents(), owner) != 1)
            return std::nullopt;
        return m_name;
    }

  private:
    DialogTemplate Contents() const;
    bool OnInit() override;
    void OnOK() override;
    void OnCommand(int id, int code) override;
    std::wstring Complaint(CategoryDraft::Fault fault) const;

    const CategoryDraft& m_draft;
    int m_row;
    std::wstring m_name;
};

DialogTemplate CategoryNameDialog::Contents() const
{
    DialogTemplate contents(m_row < 0 ? L"New Category" : L"Rename Category", DS_MODALFRAME, {200, 50});
    contents.Add({L"STATIC", L"&Name:", kLabel, SS_LEFT, {7, 9, 31, 18}});
    contents.Add({L"EDIT", L"", kName, WS_TABSTOP | ES_AUTOHSCROLL, {33, 7, 193, 21}, WS_EX_CLIENTEDGE});
    contents.Add({L"BUTTON", L"OK", IDOK, WS_TABSTOP | BS_DEFPUSHBUTTON, {89, 29, 139, 43}});
    contents.Add({L"BUTTON", L"Cancel", IDCANCEL, WS_TABSTOP, {143, 29, 193, 43}});
    return contents;
}

bool CategoryNameDialog::OnInit()
{
    SendMessageW(Item(kName), EM_LIMITTEXT, kCategoryNameSize - 1, 0);
    if (m_row >= 0)
        SetDlgItemTextW(Window(), kName, m_draft.At(m_row).name.c_str());
    Enable(IDOK, !TrimCategoryName(TextOf(kName)).empty());
    SendMessageW(Item(kName), EM_SETSEL, 0, -1);
    SetFocus(Item(kName));
    return false;
}

void CategoryNameDialog::OnCommand(int id, int code)
{
    if (id == kName && code == EN_CHANGE)
        Enable(IDOK, !TrimCategoryName(TextOf(kName)).empty());
}

std::wstring CategoryNameDialog::Complaint(CategoryDraft::Fault fault) const
{
    if (fault == CategoryDraft::Fault::Taken)
        return L"There is a category \"" + m_name + L"\" already.";
    return L"A category's name has at most " + std::to_wstring(kCategoryNameSize - 1) + L" characters.";
}

void CategoryNameDialog::OnOK()
{
    const std::wstring typed = TextOf(kName);
    m_name = TrimCategoryName(typed);
    const CategoryDraft::Fault fault = m_draft.Check(m_name, m_row);
    if (fault == CategoryDraft::Fault::None)
        return End(1);
    Ask(Complaint(fault), MB_OK | MB_ICONEXCLAMATION);
    SendMessageW(Item(kName), EM_SETSEL, 0, -1);
    SetFocus(Item(kName));
}

} // namespace

std::optional<std::wstring> AskForCategoryName(HWND owner, const CategoryDraft& draft, int row)
{
    return CategoryNameDialog(draft, row).NameFor(owner);
}

} // namespace mervane
