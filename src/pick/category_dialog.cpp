#include "pick/category_dialog.h"

#include <commctrl.h>

#include <algorithm>
#include <string>
#include <utility>

#include "mervane/db_categories.h"
#include "mervane/list_windows.h"
#include "pick/category_dialog_layout.h"
#include "pick/category_draft.h"
#include "pick/category_name_dialog.h"
#include "res/resource.h"
#include "ui/dialog.h"
#include "ui/launch.h"
#include "ui/screen/scale.h"

namespace {

// In the order of the layout.
constexpr int kButtons[kCategoryButtons] = {
    IDC_ADD_CATEGORY, IDC_RENAME_CATEGORY, IDC_DELETE_CATEGORY, IDC_HIDE_CATEGORY, IDOK, IDCANCEL};

constexpr const wchar_t* kTitle = L"Edit Categories";
constexpr SIZE kSmallest{180, 60}; // in dialog units, as all that follows
constexpr SIZE kButton{50, 14}, kGap{4, 4}, kMargin{7, 7};
constexpr int kUsesWidth = 28, kHiddenWidth = 34, kNameWidth = 60;

enum Column { kName, kUses, kHidden, kColumns };

class CategoryDialog : public Dialog {
  public:
    CategoryDialog(CategoryDraft draft, DbCategories& categories)
        : m_draft(std::move(draft)), m_categories(categories)
    {}

    void OnOK() override;

  protected:
    bool OnInitDialog() override;
    void OnResolutionChanged(int) override { LayOut(); }
    const wchar_t* HelpTopic() const override { return kHelpCategories; }
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

  private:
    bool OnCommand(int id);
    bool OnNotify(NMHDR* notification, LRESULT* result);
    void OnGetMinMaxInfo(MINMAXINFO* info) const;
    void OnGetDispInfo(LVITEMW& item) const;
    void OnKeyDown(WORD key);
    void OnAdd();
    void OnRename();
    void OnDelete();
    void OnHide();
    bool IsDeletionMeant(const CategoryDraft::Item& category) const;

    void InsertColumns();
    void LayOut();
    void SetColumnWidths();
    // Dialog units in pixels.
    SIZE Pixels(SIZE units) const;
    int Selected() const { return ListView_GetNextItem(List(), -1, LVNI_SELECTED); }
    // With that row selected, or the nearest, and the focus in the list, ready for the next key.
    void ShowDraft(int selected);
    void UpdateButtons();
    HWND List() const { return GetItem(IDC_CATEGORIES); }

    CategoryDraft m_draft;
    DbCategories& m_categories;
    bool m_isShowing = false; // the draft: the list's notifications tell nothing new
};

bool CategoryDialog::OnInitDialog()
{
    InsertColumns();
    constexpr DWORD kStyle = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER;
    ListView_SetExtendedListViewStyleEx(List(), kStyle, kStyle);
    LayOut();
    ShowDraft(0);
    CenterOnOwner();
    return false;
}

void CategoryDialog::InsertColumns()
{
    const std::pair<const wchar_t*, int> columns[kColumns] = {
        {L"Category", LVCFMT_LEFT}, {L"Uses", LVCFMT_RIGHT}, {L"Hidden", LVCFMT_CENTER}};
    for (int i = 0; i < kColumns; ++i) {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_FMT;
        column.fmt = columns[i].second;
        column.pszText = const_cast<wchar_t*>(columns[i].first); // the list only reads it
        ListView_InsertColumn(List(), i, &column);
    }
}

void CategoryDialog::LayOut()
{
    RECT client{};
    GetClientRectangle(&client);
    const CategoryDialogLayout layout =
        LayOutCategoryDialog({client.right, client.bottom}, {Pixels(kButton), Pixels(kGap), Pixels(kMargin)});
    const auto place = [this](int id, const RECT& rect) {
        MoveWindow(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, true, GetItem(id));
    };
    place(IDC_CATEGORIES, layout.list);
    for (size_t i = 0; i < kCategoryButtons; ++i)
        place(kButtons[i], layout.buttons[i]);
    SetColumnWidths();
}

SIZE CategoryDialog::Pixels(SIZE units) const
{
    RECT rect{0, 0, units.cx, units.cy};
    MapDialogRect(GetWindow(), &rect);
    return {rect.right, rect.bottom};
}

// Side by side without a gap, whether the rows scroll or not.
void CategoryDialog::SetColumnWidths()
{
    RECT list{};
    GetWindowRect(List(), &list);
    const int uses = Pixels({kUsesWidth, 0}).cx, hidden = Pixels({kHiddenWidth, 0}).cx;
    const bool scrolls = m_draft.Count() > ListView_GetCountPerPage(List());
    const int beside = 2 * MetricOf(List(), SM_CXEDGE) + (scrolls ? MetricOf(List(), SM_CXVSCROLL) : 0);
    const int name = list.right - list.left - beside - uses - hidden;
    ListView_SetColumnWidth(List(), kName, std::max<int>(name, Pixels({kNameWidth, 0}).cx));
    ListView_SetColumnWidth(List(), kUses, uses);
    ListView_SetColumnWidth(List(), kHidden, hidden);
}

bool CategoryDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    switch (message) {
    case WM_COMMAND: return HIWORD(wParam) == BN_CLICKED && OnCommand(LOWORD(wParam));
    case WM_NOTIFY: return OnNotify(reinterpret_cast<NMHDR*>(lParam), result);
    case WM_SIZE: LayOut(); return true;
    case WM_GETMINMAXINFO: OnGetMinMaxInfo(reinterpret_cast<MINMAXINFO*>(lParam)); return true;
    default: return false;
    }
}

void CategoryDialog::OnGetMinMaxInfo(MINMAXINFO* info) const
{
    const SIZE smallest = Pixels(kSmallest), frame = mervane::FrameOf(GetWindow());
    info->ptMinTrackSize = {smallest.cx + frame.cx, smallest.cy + frame.cy};
}

bool CategoryDialog::OnCommand(int id)
{
    switch (id) {
    case IDC_ADD_CATEGORY: OnAdd(); return true;
    case IDC_RENAME_CATEGORY: OnRename(); return true;
    case IDC_DELETE_CATEGORY: OnDelete(); return true;
    case IDC_HIDE_CATEGORY: OnHide(); return true;
    default: return false;
    }
}

bool CategoryDialog::OnNotify(NMHDR* notification, LRESULT* result)
{
    if (notification->hwndFrom != List())
        return false;
    switch (notification->code) {
    case LVN_GETDISPINFOW: OnGetDispInfo(reinterpret_cast<NMLVDISPINFOW*>(notification)->item); return true;
    case LVN_ODFINDITEMW:
        *result = mervane::FindRow(*reinterpret_cast<const NMLVFINDITEMW*>(notification), m_draft.Count(),
                                   [this](int row) { return std::wstring_view(m_draft.At(row).name); });
        return true;
    case LVN_ITEMCHANGED:
        if (!m_isShowing)
            UpdateButtons();
        return true;
    case LVN_KEYDOWN: OnKeyDown(reinterpret_cast<const NMLVKEYDOWN*>(notification)->wVKey); return true;
    case NM_DBLCLK: OnRename(); return true;
    default: return false;
    }
}

void CategoryDialog::OnGetDispInfo(LVITEMW& item) const
{
    if (item.iItem < 0 || item.iItem >= m_draft.Count())
        return mervane::AnswerText(item, {});
    const CategoryDraft::Item& category = m_draft.At(item.iItem);
    switch (item.iSubItem) {
    case kName: return mervane::AnswerText(item, category.name);
    case kUses: return mervane::AnswerText(item, std::to_wstring(category.uses));
    default: return mervane::AnswerText(item, category.hidden ? L"Yes" : L"");
    }
}

void CategoryDialog::OnKeyDown(WORD key)
{
    switch (key) {
    case VK_INSERT: return OnAdd();
    case VK_F2: return OnRename();
    case VK_DELETE: return OnDelete();
    default: return;
    }
}

void CategoryDialog::OnAdd()
{
    if (const auto name = AskForCategoryName(GetWindow(), m_draft, -1))
        ShowDraft(m_draft.Add(*name));
}

void CategoryDialog::OnRename()
{
    const int row = Selected();
    if (row < 0)
        return;
    if (const auto name = AskForCategoryName(GetWindow(), m_draft, row))
        ShowDraft(m_draft.Rename(row, *name));
}

bool CategoryDialog::IsDeletionMeant(const CategoryDraft::Item& category) const
{
    if (category.uses <= 0)
        return true;
    const std::wstring entries =
        category.uses == 1 ? L"1 entry uses" : std::to_wstring(category.uses) + L" entries use";
    const std::wstring question = entries + L" the category \"" + category.name + L"\". Delete it?";
    return MessageBoxW(GetWindow(), question.c_str(), kTitle, MB_YESNO | MB_ICONEXCLAMATION) == IDYES;
}

void CategoryDialog::OnDelete()
{
    const int row = Selected();
    if (row < 0 || !IsDeletionMeant(m_draft.At(row)))
        return;
    m_draft.Delete(row);
    ShowDraft(row);
}

void CategoryDialog::OnHide()
{
    const int row = Selected();
    if (row < 0)
        return;
    m_draft.SetHidden(row, !m_draft.At(row).hidden);
    ShowDraft(row);
}

void CategoryDialog::ShowDraft(int selected)
{
    const int row = std::min(selected, m_draft.Count() - 1);
    m_isShowing = true;
    ListView_SetItemState(List(), -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_SetItemCountEx(List(), m_draft.Count(), LVSICF_NOSCROLL);
    if (row >= 0) {
        ListView_SetItemState(List(), row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
        ListView_EnsureVisible(List(), row, FALSE);
    }
    m_isShowing = false;
    SetColumnWidths();
    SendMessageW(GetWindow(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(List()), TRUE);
    UpdateButtons();
}

void CategoryDialog::UpdateButtons()
{
    const int row = Selected();
    const bool isHidden = row >= 0 && row < m_draft.Count() && m_draft.At(row).hidden;
    SetDlgItemTextW(GetWindow(), IDC_HIDE_CATEGORY, isHidden ? L"Un&hide" : L"&Hide");
    for (const int id : {IDC_RENAME_CATEGORY, IDC_DELETE_CATEGORY, IDC_HIDE_CATEGORY})
        EnableItem(id, row >= 0);
}

void CategoryDialog::OnOK()
{
    if (m_draft.Save(m_categories))
        return End(1);
    const StoreTrouble trouble = m_categories.Trouble();
    const std::wstring text =
        trouble == StoreTrouble::None
            ? L"The categories could not be stored: another program has given one of these names "
              L"to a category of its own."
            : NotDoneText(L"The categories could not be stored", trouble, TypedText::StillThere);
    MessageBoxW(GetWindow(), text.c_str(), kTitle, MB_OK | MB_ICONEXCLAMATION);
}

} // namespace

void TellThatNoneAreShown(HWND owner, StoreTrouble trouble)
{
    MessageBoxW(owner, NotDoneText(L"The categories cannot be shown", trouble).c_str(), kTitle,
                MB_OK | MB_ICONEXCLAMATION);
}

INT_PTR RunCategoryDialog(HWND owner, DbCategories& categories)
{
    CategoryDraft draft;
    if (!draft.Load(categories)) {
        TellThatNoneAreShown(owner, categories.Trouble());
        return -1;
    }
    CategoryDialog dialog(std::move(draft), categories);
    return dialog.DoModal(GetModuleHandleW(nullptr), IDD_EDIT_CATEGORIES, owner);
}
