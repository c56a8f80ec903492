#include "pick/category_dialog.h"

#include <algorithm>
#include <string>
#include <utility>

#include "mervane/db_categories.h"
#include "mervane/list_windows.h"
#include "pick/category_dialog_layout.h"
#include "pick/category_draft.h"
#include "pick/category_name_dialog.h"
#include "pick/modal_dialog.h"
#include "util/window_metrics.h"

namespace mervane {

namespace {

constexpr WORD kList = 1000, kAdd = 1001, kRename = 1002, kDelete = 1003, kHide = 1004;
// In the order of the layout.
constexpr int kButtons[kCategoryButtons] = {kAdd, kRename, kDelete, kHide, IDOK, IDCANCEL};

constexpr const wchar_t* kTitle = L"Edit Categories";
constexpr SIZE kSize{250, 150}; // in dialog units, as all that follows
constexpr SIZE kSmallest{180, 60};
constexpr SIZE kButton{50, 14}, kGap{4, 4}, kMargin{7, 7};
constexpr int kUsesWidth = 28, kHiddenWidth = 34, kNameWidth = 60;

enum Column { kName, kUses, kHidden, kColumns };

class CategoryDialog : public ModalDialog {
  public:
    CategoryDialog(CategoryDraft draft, DbCategories& categories)
        : m_draft(std::move(draft)), m_categories(categories)
    {}
    INT_PTR Show(HWND owner) { return Run(Contents(), owner); }

  private:
    static DialogTemplate Contents();
    bool OnInit() override;
    void OnOK() override;
    void OnCommand(int id, int code) override;
    bool OnNotify(NMHDR* notification, LRESULT* result) override;
    void OnSize() override;
    void OnGetMinMaxInfo(MINMAXINFO* info) override;

    void OnGetDispInfo(LVITEMW& item) const;
    void OnKeyDown(WORD key);
    void OnAdd();
    void OnRename();
    void OnDelete();
    void OnHide();
    bool IsDeletionMeant(const CategoryDraft::Item& category) const;

    void InsertColumns();
    void SetColumnWidths();
    int Selected() const { return ListView_GetNextItem(List(), -1, LVNI_SELECTED); }
    // With that row selected, or the nearest, and the focus in the list, ready for the next key.
    void ShowDraft(int selected);
    void UpdateButtons();
    HWND List() const { return Item(kList); }

    CategoryDraft m_draft;
    DbCategories& m_categories;
    bool m_isShowing = false; // the draft: the list's notifications tell nothing new
};

// Letters in use: A, D, H, R.
DialogTemplate CategoryDialog::Contents()
{
    DialogTemplate contents(kTitle, WS_THICKFRAME, kSize);
    contents.Add(
        {WC_LISTVIEWW, L"", kList,
         WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER,
         RECT{}, WS_EX_CLIENTEDGE});
    contents.Add({L"BUTTON", L"&Add...", kAdd, WS_TABSTOP});
    contents.Add({L"BUTTON", L"&Rename...", kRename, WS_TABSTOP});
    contents.Add({L"BUTTON", L"&Delete", kDelete, WS_TABSTOP});
    contents.Add({L"BUTTON", L"Un&hide", kHide, WS_TABSTOP});
    contents.Add({L"BUTTON", L"OK", IDOK, WS_TABSTOP | BS_DEFPUSHBUTTON});
    contents.Add({L"BUTTON", L"Cancel", IDCANCEL, WS_TABSTOP});
    return contents;
}

bool CategoryDialog::OnInit()
{
    InsertColumns();
    constexpr DWORD kStyle = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER;
    ListView_SetExtendedListViewStyleEx(List(), kStyle, kStyle);
    OnSize();
    ShowDraft(0);
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

void CategoryDialog::OnSize()
{
    RECT client{};
    GetClientRect(Window(), &client);
    const CategoryDialogLayout layout = LayOutCategoryDialog(
        {client.right, client.bottom},
        {Pixels(kButton.cx, kButton.cy), Pixels(kGap.cx, kGap.cy), Pixels(kMargin.cx, kMargin.cy)});
    const auto place = [this](int id, const RECT& rect) {
        MoveWindow(Item(id), rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, TRUE);
    };
    place(kList, layout.list);
    for (size_t i = 0; i < kCategoryButtons; ++i)
        place(kButtons[i], layout.buttons[i]);
    SetColumnWidths();
}

// Side by side without a gap, whether the rows scroll or not.
void CategoryDialog::SetColumnWidths()
{
    RECT list{};
    GetWindowRect(List(), &list);
    const int uses = Pixels(kUsesWidth, 0).cx, hidden = Pixels(kHiddenWidth, 0).cx;
    const bool scrolls = m_draft.Count() > ListView_GetCountPerPage(List());
    const int beside = 2 * MetricOf(List(), SM_CXEDGE) + (scrolls ? MetricOf(List(), SM_CXVSCROLL) : 0);
    const int name = list.right - list.left - beside - uses - hidden;
    ListView_SetColumnWidth(List(), kName, std::max<int>(name, Pixels(kNameWidth, 0).cx));
    ListView_SetColumnWidth(List(), kUses, uses);
    ListView_SetColumnWidth(List(), kHidden, hidden);
}

void CategoryDialog::OnGetMinMaxInfo(MINMAXINFO* info)
{
    const SIZE smallest = Pixels(kSmallest.cx, kSmallest.cy);
    const SIZE frame = FrameOf(Window());
    info->ptMinTrackSize = {smallest.cx + frame.cx, smallest.cy + frame.cy};
}

void CategoryDialog::OnCommand(int id, int code)
{
    if (code != BN_CLICKED)
        return;
    switch (id) {
    case kAdd: return OnAdd();
    case kRename: return OnRename();
    case kDelete: return OnDelete();
    case kHide: return OnHide();
    default: return;
    }
}

bool CategoryDialog::OnNotify(NMHDR* notification, LRESULT* result)
{
    if (notification->hwndFrom != List())
        return false;
    switch (notification->code) {
    case LVN_GETDISPINFOW: OnGetDispInfo(reinterpret_cast<NMLVDISPINFOW*>(notification)->item); return true;
    case LVN_ODFINDITEMW:
        *result = FindRow(*reinterpret_cast<const NMLVFINDITEMW*>(notification), m_draft.Count(),
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
        return AnswerText(item, {});
    const CategoryDraft::Item& category = m_draft.At(item.iItem);
    switch (item.iSubItem) {
    case kName: return AnswerText(item, category.name);
    case kUses: return AnswerText(item, std::to_wstring(category.uses));
    default: return AnswerText(item, category.hidden ? L"Yes" : L"");
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
    if (const auto name = AskForCategoryName(Window(), m_draft, -1))
        ShowDraft(m_draft.Add(*name));
}

void CategoryDialog::OnRename()
{
    const int row = Selected();
    if (row < 0)
        return;
    if (const auto name = AskForCategoryName(Window(), m_draft, row))
        ShowDraft(m_draft.Rename(row, *name));
}

bool CategoryDialog::IsDeletionMeant(const CategoryDraft::Item& category) const
{
    if (category.uses <= 0)
        return true;
    const std::wstring entries =
        category.uses == 1 ? L"1 entry uses" : std::to_wstring(category.uses) + L" entries use";
    return Ask(entries + L" the category \"" + category.name + L"\". Delete it?",
               MB_YESNO | MB_ICONEXCLAMATION) == IDYES;
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
    SendMessageW(Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(List()), TRUE);
    UpdateButtons();
}

void CategoryDialog::UpdateButtons()
{
    const int row = Selected();
    const bool isHidden = row >= 0 && row < m_draft.Count() && m_draft.At(row).hidden;
    SetDlgItemTextW(Window(), kHide, isHidden ? L"Un&hide" : L"&Hide");
    for (const int id : {kRename, kDelete, kHide})
        Enable(id, row >= 0);
}

void CategoryDialog::OnOK()
{
    if (m_draft.Save(m_categories))
        return End(1);
    const StoreTrouble trouble = m_categories.Trouble();
    Ask(trouble == StoreTrouble::None
            ? std::wstring(
                  L"The categories could not be stored: another program has given one of these names "
                  L"to a category of its own.")
            : NotDoneText(L"The categories could not be stored", trouble, TypedText::StillThere),
        MB_OK | MB_ICONEXCLAMATION);
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
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&controls);
    return CategoryDialog(std::move(draft), categories).Show(owner);
}

} // namespace mervane
