#include "export/export_dialog.h"

#include <commctrl.h>

#include <initializer_list>

#include "export/export_fields.h"
#include "list/not_done_box.h"
#include "res/resource.h"
#include "ui/dialog.h"
#include "ui/hourglass.h"
#include "ui/launch.h"
#include "ui/screen/scale.h"
#include "ui/screen/work_area.h"

namespace {

constexpr const wchar_t* kHeaderName = L"WriteHeader"; // in Settings; header or labels
constexpr DWORD kHeaderDefault = 1;
constexpr ULONGLONG kShowPeriod = 100; // milliseconds
constexpr int kWideLayout = 414;       // pixels at 96 dpi that it takes in its font

class ExportDialog : public Dialog {
  public:
    ExportDialog(const std::wstring& path, ExportFormat format, const ExportSource& source)
        : m_path(path), m_format(format), m_source(source)
    {}

    void OnOK() override;
    void OnCancel() override;

  protected:
    bool OnInitDialog() override;
    const wchar_t* HelpTopic() const override { return kHelpExport; }
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

  private:
    void ShowFormat();
    void FillFields();
    ExportScope ChosenScope() const;
    void TakeFields();
    ExportRequest TakeChoices();
    void ShowProgress(uint32_t entryCount);
    uint32_t Write(const ExportRequest& request);
    bool AfterEntry(uint32_t count);
    void Show(uint32_t count);
    void Pump();
    void TellCount(uint32_t count);
    LRESULT Ask(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        return SendDlgItemMessageW(GetWindow(), id, message, wParam, lParam);
    }

    const std::wstring m_path;
    const ExportFormat m_format;
    const ExportSource m_source;
    bool m_writes = false;
    bool m_stopped = false;                      // by the user, or because the program ends
    bool m_ends = false;                         // the program
    StoreTrouble m_trouble = StoreTrouble::None; // of what could not be read
    ULONGLONG m_lastShown = 0;
};

bool ExportDialog::OnInitDialog()
{
    CenterOnWorkArea();
    ShowFormat();
    CheckButton(IDC_EXPORT_HEADER,
                m_source.session.settings.GetNumber(kSettings, kHeaderName, kHeaderDefault) != 0);
    CheckButton(IDC_EXPORT_ALL, true);
    EnableItem(IDC_EXPORT_FILTERED, m_source.session.filter.active);
    EnableItem(IDC_EXPORT_SELECTED, !m_source.selection.IsEmpty());
    HideItem(IDC_EXPORT_PROGRESS);
    FillFields();
    return true;
}

void ExportDialog::ShowFormat()
{
    if (m_format == ExportFormat::CommaSeparated) {
        SetDlgItemTextW(GetWindow(), IDC_EXPORT_FORMAT, L"Format\nComma Separated Value");
        return;
    }
    EnableItem(IDC_EXPORT_FIELDS, false);
    SetDlgItemTextW(GetWindow(), IDC_EXPORT_FORMAT, L"Format\nSimple Text");
    SetDlgItemTextW(GetWindow(), IDC_EXPORT_HEADER, L"Write Labels to File");
}

void ExportDialog::FillFields()
{
    const std::vector<std::wstring> titles = ChooseAllFields(&m_source.columns);
    for (const std::wstring& title : titles)
        Ask(IDC_EXPORT_FIELDS, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(title.c_str()));
    Ask(IDC_EXPORT_FIELDS, LB_SELITEMRANGE, TRUE, MAKELPARAM(0, titles.size()));
    Ask(IDC_EXPORT_FIELDS, LB_SETTOPINDEX, 0);
}

bool ExportDialog::OnMessage(UINT message, WPARAM, LPARAM, LRESULT* result)
{
    // The windows live while the export writes, and each would set a cursor of its own.
    if (message != WM_SETCURSOR || !m_writes)
        return false;
    ShowHourglass();
    *result = TRUE;
    return true;
}

void ExportDialog::OnOK()
{
    const uint32_t count = Write(TakeChoices());
    // The main window may have been closed meanwhile, and this one with it.
    if (!GetWindow())
        return;
    if (!m_ends)
        TellCount(count);
    if (!m_ends && m_trouble != StoreTrouble::None && GetWindow())
        TellNotDone(GetWindow(), L"Not every entry could be read and exported", m_trouble);
    End(1);
}

// While the export writes it ends behind the entry that is being written.
void ExportDialog::OnCancel()
{
    if (m_writes)
        m_stopped = true;
    else
        End(0);
}

ExportScope ExportDialog::ChosenScope() const
{
    if (IsButtonChecked(IDC_EXPORT_SELECTED))
        return ExportScope::Selected;
    return IsButtonChecked(IDC_EXPORT_FILTERED) ? ExportScope::Filtered : ExportScope::All;
}

void ExportDialog::TakeFields()
{
    std::vector<bool> chosen;
    const LRESULT count = Ask(IDC_EXPORT_FIELDS, LB_GETCOUNT);
    for (LRESULT i = 0; i < count; ++i)
        chosen.push_back(Ask(IDC_EXPORT_FIELDS, LB_GETSEL, static_cast<WPARAM>(i)) > 0);
    ChooseFields(chosen, &m_source.columns);
}

ExportRequest ExportDialog::TakeChoices()
{
    TakeFields();
    SaveColumns(m_source.columns, m_source.session.settings);
    const bool headerOrLabels = IsButtonChecked(IDC_EXPORT_HEADER);
    m_source.session.settings.SetNumber(kSettings, kHeaderName, headerOrLabels);
    const auto& selected = m_source.selection.InOrder();
    return {m_path,
            m_format,
            ChosenScope(),
            headerOrLabels,
            {selected.begin(), selected.end()},
            &m_source.columns,
            &m_source.session.filter};
}

// The bar takes the check box's place. Nothing is left to choose but to stop, and Enter does not stop what it
// has just begun.
void ExportDialog::ShowProgress(uint32_t entryCount)
{
    HideItem(IDC_EXPORT_HEADER);
    ShowItem(IDC_EXPORT_PROGRESS);
    Ask(IDC_EXPORT_PROGRESS, PBM_SETRANGE32, 0, static_cast<LPARAM>(entryCount));
    SendMessageW(GetWindow(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetItem(IDCANCEL)), TRUE);
    for (const int id : {IDOK, IDC_EXPORT_ALL, IDC_EXPORT_SELECTED, IDC_EXPORT_FILTERED, IDC_EXPORT_FIELDS})
        EnableItem(id, false);
}

uint32_t ExportDialog::Write(const ExportRequest& request)
{
    const ScopedHourglass work;
    SORTORDERSPEC sort{};
    m_source.session.journal.GetSort(&sort);
    ExportJob job(request, sort);
    m_writes = true;
    ShowProgress(job.EntryCount());
    Show(0);
    const uint32_t count = m_stopped ? 0 : job.Run([this](uint32_t soFar) { return AfterEntry(soFar); });
    Ask(IDC_EXPORT_PROGRESS, PBM_SETPOS, count);
    m_writes = false;
    m_trouble = job.Trouble();
    return count;
}

// To move the bar and to look at messages takes longer than to make an entry's texts: it is done as often as
// a person sees it.
bool ExportDialog::AfterEntry(uint32_t count)
{
    if (GetTickCount64() - m_lastShown >= kShowPeriod)
        Show(count);
    return !m_stopped;
}

void ExportDialog::Show(uint32_t count)
{
    Ask(IDC_EXPORT_PROGRESS, PBM_SETPOS, count);
    Pump();
    m_lastShown = GetTickCount64();
}

// Lets all windows of the program paint themselves, and this one be stopped; those below it are disabled.
void ExportDialog::Pump()
{
    MSG message;
    while (!m_stopped && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            m_ends = true;
        } else if (message.message == WM_KEYDOWN && message.wParam == VK_RETURN) {
            continue;
        } else if (!IsDialogMessageW(GetWindow(), &message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        m_stopped = m_stopped || m_ends || !GetWindow();
    }
}

void ExportDialog::TellCount(uint32_t count)
{
    wchar_t text[40];
    wsprintfW(text, L"Exported %d record%s", count, count == 1 ? L"" : L"s");
    MessageBoxW(GetWindow(), text, L"Export Completed", MB_OK);
}

} // namespace

void RunExportDialog(HWND owner, const std::wstring& path, ExportFormat format, const ExportSource& source)
{
    const int id = UsesWideLayout(WorkAreaAt(owner), DpiOf(owner)) ? IDD_EXPORT_WIDE : IDD_EXPORT_TALL;
    ExportDialog(path, format, source).DoModal(GetModuleHandleW(nullptr), id, owner);
}

bool UsesWideLayout(const RECT& workArea, int dpi)
{
    const LONG width = workArea.right - workArea.left;
    return width > workArea.bottom - workArea.top && width >= ScaleForDpi(kWideLayout, dpi);
}
