#include "filter/filter_dialog.h"

#include <commctrl.h>

#include "filter/filter_category_pane.h"
#include "filter/filter_date_pane.h"
#include "filter/filter_settings.h"
#include "mervane/ce_dbase.h"
#include "res/resource.h"
#include "ui/dialog.h"
#include "ui/gathered.h"
#include "ui/launch.h"

namespace {

class FilterDialog : public Dialog {
  public:
    FilterDialog(RegistryStore& settings, const FilterState& filter)
        : m_settings(settings), m_filter(filter), m_dates(&m_filter), m_categories(&m_filter)
    {}

    const FilterState& Filter() const { return m_filter; }
    void OnOK() override;

  protected:
    bool OnInitDialog() override;
    void OnResolutionChanged(int before) override;
    const wchar_t* HelpTopic() const override { return kHelpFilter; }
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

  private:
    bool OnClick(int id);
    bool OnNotify(const NMHDR& notification);
    void ShowMode();
    void SetMode(bool categories);
    void ClearSelection();

    RegistryStore& m_settings;
    FilterState m_filter; // a draft
    FilterDatePane m_dates;
    FilterCategoryPane m_categories;
    Gathered m_refresh{[this] { m_categories.Refresh(); }}; // for what other programs change
};

bool FilterDialog::OnInitDialog()
{
    m_dates.Create(GetWindow());
    m_categories.Create(GetWindow());
    CheckRadioButton(GetWindow(), IDC_FILTER_BY_MONTHS, IDC_FILTER_BY_CATEGORIES,
                     m_filter.categoriesMode ? IDC_FILTER_BY_CATEGORIES : IDC_FILTER_BY_MONTHS);
    ShowMode();
    CenterOnWorkArea();
    HWND first = m_filter.categoriesMode ? m_categories.List() : m_dates.First();
    if (first)
        SetFocus(first);
    return !first;
}

void FilterDialog::OnResolutionChanged(int)
{
    m_dates.OnResolutionChanged();
    m_categories.Refresh();
}

bool FilterDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT*)
{
    switch (message) {
    case WM_COMMAND: return HIWORD(wParam) == BN_CLICKED && OnClick(LOWORD(wParam));
    case WM_NOTIFY: return OnNotify(*reinterpret_cast<NMHDR*>(lParam));
    case kMsgDatabaseChange: m_refresh.Ask(GetWindow()); return true;
    default: return false;
    }
}

bool FilterDialog::OnClick(int id)
{
    switch (id) {
    case IDC_FILTER_BY_MONTHS: SetMode(false); return true;
    case IDC_FILTER_BY_CATEGORIES: SetMode(true); return true;
    case IDC_FILTER_ON_RANGE: m_dates.OnRangeChecked(IsButtonChecked(id)); return true;
    case IDC_CLEAR_SELECTION: ClearSelection(); return true;
    default: return false;
    }
}

bool FilterDialog::OnNotify(const NMHDR& notification)
{
    switch (notification.idFrom) {
    case IDC_MONTH_LIST: m_dates.OnMonthNotify(notification); return true;
    case IDC_FILTER_CATEGORY_LIST: m_categories.OnNotify(notification); return true;
    default: return false;
    }
}

void FilterDialog::SetMode(bool categories)
{
    m_filter.categoriesMode = categories;
    ShowMode();
}

void FilterDialog::ShowMode()
{
    const bool categories = m_filter.categoriesMode;
    SetWindowTextW(GetWindow(), categories ? L"Filter on Categories..." : L"Filter on Months...");
    EnableItem(IDC_CLEAR_SELECTION, true);
    m_dates.Show(!categories);
    m_categories.Show(categories);
}

void FilterDialog::ClearSelection()
{
    if (m_filter.categoriesMode)
        m_categories.Clear();
    else
        m_dates.ClearMonths();
}

void FilterDialog::OnOK()
{
    if (!m_filter.categoriesMode && m_filter.rangeMode)
        m_dates.ReadRange();
    AcceptFilter(&m_filter, &m_settings);
    End(1);
}

} // namespace

bool OpenFilterDialog(const Session& session, HWND owner, bool categoriesMode)
{
    FilterState& filter = session.filter;
    FilterState shown = filter;
    if (!shown.active && RemembersFilter(session.settings))
        LoadFilterDates(session.settings, &shown);
    shown.categoriesMode = categoriesMode;
    FilterDialog dialog(session.settings, shown);
    if (dialog.DoModal(GetModuleHandleW(nullptr), IDD_FILTER, owner) != 1)
        return false;
    filter = dialog.Filter();
    return true;
}
