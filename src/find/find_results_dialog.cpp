#include "find/find_results_dialog.h"

#include <commctrl.h>

#include <algorithm>
#include <string>

#include "data/journal_entry.h"
#include "editor/entry_editor.h"
#include "mervane/db_journal.h"
#include "res/resource.h"
#include "ui/dialog.h"
#include "ui/hourglass.h"
#include "ui/launch.h"
#include "ui/list_boxes.h"
#include "ui/screen/scale.h"
#include "ui/screen/scoped.h"
#include "ui/window_hook.h"
#include "util/date_text.h"
#include "util/owners.h"

namespace {

constexpr SIZE kWantedClient = {480, 260}; // in pixels, where there is room for it
constexpr int kDateWidth = 130;

struct FoundEntry {
    std::wstring date;
    std::wstring subject;
};

bool IsThere(const CEPROPVAL& property)
{
    return !(property.wFlags & CEDB_PROPNOTFOUND);
}

// Without a date or a subject the text is empty; none when the record cannot be read.
std::optional<FoundEntry> ReadEntry(DbJournal& journal, CEOID id)
{
    if (journal.SeekRecord(id) != id)
        return std::nullopt;
    const CEPROPID wanted[] = {kPropDate, kPropSubject};
    WORD count = 2;
    CEPROPVAL* properties = nullptr;
    const CEOID read = journal.ReadRecord(&count, wanted, &properties);
    const LocalBlock<CEPROPVAL> owner(properties);
    if (!read)
        return std::nullopt;
    FoundEntry entry;
    if (IsThere(properties[0]))
        entry.date = DateTimeText(TimeCount(properties[0].val.filetime));
    if (IsThere(properties[1]))
        entry.subject = properties[1].val.lpwstr;
    return entry;
}

class FindResultsDialog : public Dialog {
  public:
    FindResultsDialog(const Session& session, const std::vector<CEOID>& found)
        : m_session(session), m_found(found)
    {}

  protected:
    bool OnInitDialog() override;
    void OnResolutionChanged(int before) override { RescaleColumns(List(), before, DpiOf(GetWindow())); }
    const wchar_t* HelpTopic() const override { return kHelpFound; }
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

  private:
    static LRESULT HandleListMessage(void* self, UINT message, WPARAM wParam, LPARAM lParam);

    bool OnNotify(const NMHDR& notification);
    void Fit();
    void AddColumns();
    void Fill();
    void AddRow(int row, CEOID id, const FoundEntry& entry);
    void Select(int row);
    void Edit(int row);
    HWND List() const { return GetItem(IDC_FOUND_LIST); }
    int FocusedRow() const { return ListView_GetNextItem(List(), -1, LVNI_FOCUSED); }
    CEOID IdOf(int row) const;

    const Session m_session;
    std::vector<CEOID> m_found;
    WindowHook m_listHook;
};

bool FindResultsDialog::OnInitDialog()
{
    Fit();
    CenterOnWorkArea();
    constexpr DWORD kStyle = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER;
    ListView_SetExtendedListViewStyleEx(List(), kStyle, kStyle);
    (void)m_listHook.Attach(List(), HandleListMessage, this);
    AddColumns();
    Fill();
    const bool hasRows = ListView_GetItemCount(List()) > 0;
    if (hasRows)
        Select(0);
    SetFocus(hasRows ? List() : GetItem(IDOK));
    return false;
}

// Enter opens the entry instead of pressing the default button.
LRESULT FindResultsDialog::HandleListMessage(void* self, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* dialog = static_cast<FindResultsDialog*>(self);
    const LRESULT result = dialog->m_listHook.Next(message, wParam, lParam);
    if (message != WM_GETDLGCODE || dialog->FocusedRow() < 0)
        return result;
    const auto* key = reinterpret_cast<const MSG*>(lParam);
    const bool isEnter = key && key->message == WM_KEYDOWN && key->wParam == VK_RETURN;
    return isEnter ? result | DLGC_WANTALLKEYS : result;
}

// The template is as small as a small screen wants it; elsewhere the list gets the room.
void FindResultsDialog::Fit()
{
    const RECT area = OwnersWorkArea();
    RECT own{}, inside{}, list{}, button{};
    GetWindowRect(GetWindow(), &own);
    GetClientRectangle(&inside);
    GetWindowRect(List(), &list);
    GetWindowRect(GetItem(IDOK), &button);
    const LONG mostX = (area.right - area.left) - (own.right - own.left);
    const LONG mostY = (area.bottom - area.top) - (own.bottom - own.top);
    const LONG x = std::min<LONG>(Scale(GetWindow(), kWantedClient.cx) - inside.right, mostX);
    const LONG y = std::min<LONG>(Scale(GetWindow(), kWantedClient.cy) - inside.bottom, mostY);
    constexpr UINT kSizeOnly = SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE;
    SetWindowPosition(0, 0, own.right - own.left + x, own.bottom - own.top + y, nullptr, kSizeOnly, nullptr);
    SetWindowPosition(0, 0, list.right - list.left + x, list.bottom - list.top + y, List(), kSizeOnly,
                      nullptr);
    ScreenToClientRect(&button);
    SetWindowPosition(button.left + x, button.top, 0, 0, GetItem(IDOK),
                      SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE, nullptr);
}

void FindResultsDialog::AddColumns()
{
    RECT inside{};
    GetClientRectangle(&inside, List());
    const int dateWidth = Scale(GetWindow(), kDateWidth);
    const int subjectWidth = inside.right - dateWidth - MetricOf(GetWindow(), SM_CXVSCROLL);
    const std::pair<const wchar_t*, int> columns[] = {{L"Date", dateWidth}, {L"Subject", subjectWidth}};
    for (int i = 0; i < 2; ++i) {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
        column.pszText = const_cast<wchar_t*>(columns[i].first); // the control only reads it
        column.cx = columns[i].second;
        column.iSubItem = i;
        ListView_InsertColumn(List(), i, &column);
    }
}

// What cannot be read is passed over, and found no more.
void FindResultsDialog::Fill()
{
    const ScopedHourglass work;
    const ScopedRedrawPause pause(List());
    DbJournal& journal = m_session.journal;
    const CeDBase::ReadScope scope(journal);
    ListView_DeleteAllItems(List());
    ListView_SetItemCount(List(), static_cast<int>(m_found.size()));
    int rows = 0;
    for (const CEOID id : m_found)
        if (const auto entry = ReadEntry(journal, id))
            AddRow(rows++, id, *entry);
    SetDlgItemInt(GetWindow(), IDC_FOUND_COUNT, static_cast<UINT>(rows), FALSE);
}

void FindResultsDialog::AddRow(int row, CEOID id, const FoundEntry& entry)
{
    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_PARAM;
    item.iItem = row;
    item.pszText = const_cast<wchar_t*>(entry.date.c_str()); // the control only reads it
    item.lParam = static_cast<LPARAM>(id);
    ListView_InsertItem(List(), &item);
    ListView_SetItemText(List(), row, 1, const_cast<wchar_t*>(entry.subject.c_str()));
}

void FindResultsDialog::Select(int row)
{
    constexpr UINT kState = LVIS_SELECTED | LVIS_FOCUSED;
    ListView_SetItemState(List(), row, kState, kState);
    ListView_EnsureVisible(List(), row, FALSE);
}

CEOID FindResultsDialog::IdOf(int row) const
{
    LVITEMW item{};
    item.mask = LVIF_PARAM;
    item.iItem = row;
    return ListView_GetItem(List(), &item) ? static_cast<CEOID>(item.lParam) : 0;
}

// An entry that another program changes while it is open may be kept twice, and one that is deleted is
// written anew: what was edited has another identifier then. The one that was opened shows for as long as it
// is there.
void FindResultsDialog::Edit(int row)
{
    const CEOID opened = IdOf(row);
    if (!opened)
        return;
    CEOID id = opened;
    const int top = ListView_GetTopIndex(List());
    OpenEntryEditor(m_session, GetWindow(), &id);
    if (id != opened)
        m_found.insert(std::find(m_found.begin(), m_found.end(), opened) + 1, id);
    Fill();
    const int last = ListView_GetItemCount(List()) - 1;
    if (last < 0)
        return;
    ListView_EnsureVisible(List(), last, FALSE);
    ListView_EnsureVisible(List(), std::min(top, last), FALSE);
    LVFINDINFOW wanted{};
    wanted.flags = LVFI_PARAM;
    wanted.lParam = static_cast<LPARAM>(id);
    const int found = ListView_FindItem(List(), -1, &wanted);
    Select(found >= 0 ? found : std::min(row, last));
}

bool FindResultsDialog::OnMessage(UINT message, WPARAM, LPARAM lParam, LRESULT*)
{
    return message == WM_NOTIFY && OnNotify(*reinterpret_cast<const NMHDR*>(lParam));
}

bool FindResultsDialog::OnNotify(const NMHDR& notification)
{
    if (notification.idFrom != IDC_FOUND_LIST)
        return false;
    if (notification.code == NM_DBLCLK)
        Edit(reinterpret_cast<const NMITEMACTIVATE&>(notification).iItem);
    else if (notification.code == NM_RETURN)
        Edit(FocusedRow());
    return false;
}

} // namespace

void RunFindResults(const Session& session, HWND owner, const std::vector<CEOID>& found)
{
    FindResultsDialog dialog(session, found);
    dialog.DoModal(GetModuleHandleW(nullptr), IDD_FIND_RESULTS, owner);
}
