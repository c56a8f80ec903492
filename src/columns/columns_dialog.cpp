#include "columns/columns_dialog.h"

#include <algorithm>
#include <initializer_list>
#include <string>

#include "columns/column_draft.h"
#include "res/resource.h"
#include "ui/dialog.h"
#include "ui/launch.h"
#include "ui/screen/work_area.h"

namespace {

constexpr int kMostGrowth = 50; // of the lists, in pixels at 96 dpi: all fields are seen then

class ColumnsDialog : public Dialog {
  public:
    explicit ColumnsDialog(ColumnSet* set) : m_set(set), m_draft(*set, WorkArea().right) {}

    void OnOK() override;

  protected:
    bool OnInitDialog() override;
    const wchar_t* HelpTopic() const override { return kHelpColumns; }
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

  private:
    bool OnCommand(int id, WORD code);
    bool OnButton(int id);
    void OnListBox(int listBox, WORD code);
    void OnListFocus(int listBox);
    void OnFocusLost();
    void Add();
    void Remove();
    void Move(bool (ColumnDraft::*move)(int), int step);
    void Reset();
    void RestoreDefaults();

    void Fill();
    void ShowDraft(int listBox, int item);
    void EnableItems();
    bool HasFocus(std::initializer_list<int> ids) const;
    int CountOf(int listBox) const { return Ask(listBox, LB_GETCOUNT); }
    int SelectedItem(int listBox) const { return Ask(listBox, LB_GETCURSEL); }
    int SelectedPosition(int listBox) const;
    int Ask(int listBox, UINT message, int wParam = 0) const;

    ColumnSet* m_set;
    ColumnDraft m_draft;
};

bool ColumnsDialog::OnInitDialog()
{
    Grow(kMostGrowth, {IDC_AVAILABLE_FIELDS, IDC_SHOWN_FIELDS}, {IDC_DEFAULT_COLUMNS});
    CenterOnWorkArea();
    SetFocus(GetItem(IDC_AVAILABLE_FIELDS));
    ShowDraft(IDC_AVAILABLE_FIELDS, 0);
    return false;
}

void ColumnsDialog::OnOK()
{
    *m_set = m_draft.Taken();
    Dialog::OnOK();
}

bool ColumnsDialog::OnMessage(UINT message, WPARAM wParam, LPARAM, LRESULT*)
{
    return message == WM_COMMAND && OnCommand(LOWORD(wParam), HIWORD(wParam));
}

bool ColumnsDialog::OnCommand(int id, WORD code)
{
    if (id == IDC_AVAILABLE_FIELDS || id == IDC_SHOWN_FIELDS) {
        OnListBox(id, code);
        return true;
    }
    switch (code) {
    case BN_KILLFOCUS: OnFocusLost(); return true;
    case BN_CLICKED:
    case BN_DOUBLECLICKED: return OnButton(id); // the second of two quick clicks
    default: return false;
    }
}

bool ColumnsDialog::OnButton(int id)
{
    switch (id) {
    case IDC_ADD_FIELD: Add(); return true;
    case IDC_REMOVE_FIELD: Remove(); return true;
    case IDC_FIELD_UP: Move(&ColumnDraft::MoveUp, -1); return true;
    case IDC_FIELD_DOWN: Move(&ColumnDraft::MoveDown, 1); return true;
    case IDC_RESET_FIELDS: Reset(); return true;
    case IDC_DEFAULT_COLUMNS: RestoreDefaults(); return true;
    default: return false;
    }
}

void ColumnsDialog::OnListBox(int listBox, WORD code)
{
    switch (code) {
    case LBN_SETFOCUS: OnListFocus(listBox); break;
    case LBN_KILLFOCUS: OnFocusLost(); break;
    case LBN_SELCHANGE: EnableItems(); break;
    case LBN_DBLCLK: listBox == IDC_AVAILABLE_FIELDS ? Add() : Remove(); break;
    default: break;
    }
}

// There is one selection in both lists. A list that is reached with the keyboard shows where one stands.
void ColumnsDialog::OnListFocus(int listBox)
{
    Ask(listBox == IDC_AVAILABLE_FIELDS ? IDC_SHOWN_FIELDS : IDC_AVAILABLE_FIELDS, LB_SETCURSEL, -1);
    if (SelectedItem(listBox) < 0)
        Ask(listBox, LB_SETCURSEL, Ask(listBox, LB_GETCARETINDEX));
    EnableItems();
}

// A whole dialog that loses the keyboard, to another program, comes back as it was.
void ColumnsDialog::OnFocusLost()
{
    if (IsChild(GetWindow(), GetFocus()))
        EnableItems();
}

void ColumnsDialog::Add()
{
    const int item = SelectedItem(IDC_AVAILABLE_FIELDS);
    if (m_draft.Show(SelectedPosition(IDC_AVAILABLE_FIELDS)))
        ShowDraft(IDC_AVAILABLE_FIELDS, item);
}

void ColumnsDialog::Remove()
{
    if (CountOf(IDC_SHOWN_FIELDS) < 2) {
        MessageBoxW(GetWindow(), L"At least one column must remain...", L"Warning",
                    MB_OK | MB_ICONEXCLAMATION);
        return;
    }
    const int item = SelectedItem(IDC_SHOWN_FIELDS);
    if (m_draft.Hide(SelectedPosition(IDC_SHOWN_FIELDS)))
        ShowDraft(IDC_SHOWN_FIELDS, item);
}

void ColumnsDialog::Move(bool (ColumnDraft::*move)(int), int step)
{
    const int item = SelectedItem(IDC_SHOWN_FIELDS);
    if ((m_draft.*move)(SelectedPosition(IDC_SHOWN_FIELDS)))
        ShowDraft(IDC_SHOWN_FIELDS, item + step);
}

void ColumnsDialog::Reset()
{
    m_draft.Restore();
    ShowDraft(IDC_AVAILABLE_FIELDS, 0);
}

void ColumnsDialog::RestoreDefaults()
{
    if (IsButtonChecked(IDC_DEFAULT_COLUMNS))
        m_draft.TakeDefaults();
    else
        m_draft.Restore();
    ShowDraft(IDC_AVAILABLE_FIELDS, -1);
}

void ColumnsDialog::Fill()
{
    for (const int listBox : {IDC_AVAILABLE_FIELDS, IDC_SHOWN_FIELDS})
        Ask(listBox, LB_RESETCONTENT);
    for (const ZColumn& column : m_draft.Columns().columns)
        if (column.Has(kColumnShown) || IsOffered(column))
            SendDlgItemMessageW(GetWindow(),
                                column.Has(kColumnShown) ? IDC_SHOWN_FIELDS : IDC_AVAILABLE_FIELDS,
                                LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(column.Title().c_str()));
}

// item of the list is selected: when it has gone, the one in its place, so that several can be moved one
// after the other. -1: none.
void ColumnsDialog::ShowDraft(int listBox, int item)
{
    Fill();
    Ask(listBox, LB_SETCURSEL, std::min(item, CountOf(listBox) - 1));
    EnableItems();
    KeepFocus(listBox);
}

// The buttons of a list can be pressed while the list, or one of them, has the keyboard.
void ColumnsDialog::EnableItems()
{
    const bool own = !IsButtonChecked(IDC_DEFAULT_COLUMNS);
    const bool available = own && CountOf(IDC_AVAILABLE_FIELDS);
    const bool shown = own && CountOf(IDC_SHOWN_FIELDS);
    const bool adds = HasFocus({IDC_AVAILABLE_FIELDS, IDC_ADD_FIELD});
    const int position = own && HasFocus({IDC_SHOWN_FIELDS, IDC_REMOVE_FIELD, IDC_FIELD_UP, IDC_FIELD_DOWN})
                             ? SelectedPosition(IDC_SHOWN_FIELDS)
                             : -1;
    const ColumnMoves moves = m_draft.MovesOf(position);
    EnableItem(IDC_AVAILABLE_FIELDS, available);
    EnableItem(IDC_SHOWN_FIELDS, shown);
    EnableItem(IDC_ADD_FIELD, available && adds);
    EnableItem(IDC_REMOVE_FIELD, position >= 0);
    EnableItem(IDC_FIELD_UP, moves.up);
    EnableItem(IDC_FIELD_DOWN, moves.down);
    EnableItem(IDC_RESET_FIELDS, own && m_draft.IsChanged());
}

bool ColumnsDialog::HasFocus(std::initializer_list<int> ids) const
{
    HWND focus = GetFocus();
    return std::any_of(ids.begin(), ids.end(), [=, this](int id) { return GetItem(id) == focus; });
}

// The place in the set of what is selected; -1: nothing is.
int ColumnsDialog::SelectedPosition(int listBox) const
{
    const int item = SelectedItem(listBox);
    const int length = item < 0 ? -1 : Ask(listBox, LB_GETTEXTLEN, item);
    if (length < 0)
        return -1;
    std::wstring title(static_cast<size_t>(length) + 1, L'\0');
    SendDlgItemMessageW(GetWindow(), listBox, LB_GETTEXT, static_cast<WPARAM>(item),
                        reinterpret_cast<LPARAM>(title.data()));
    return FindColumnByTitle(m_draft.Columns(), title.c_str());
}

int ColumnsDialog::Ask(int listBox, UINT message, int wParam) const
{
    return static_cast<int>(
        SendDlgItemMessageW(GetWindow(), listBox, message, static_cast<WPARAM>(wParam), 0));
}

} // namespace

bool CustomizeColumns(HWND owner, ColumnSet* set)
{
    return ColumnsDialog(set).DoModal(GetModuleHandleW(nullptr), IDD_CUSTOMIZE_COLUMNS, owner) == 1;
}
