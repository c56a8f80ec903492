#include "editor/quick_subjects_dialog.h"

#include <algorithm>
#include <optional>

#include "data/journal_entry.h"
#include "editor/editor_settings.h"
#include "ui/placeholder_edit.h"
#include "editor/quick_subjects.h"
#include "editor/subject_list.h"
#include "res/resource.h"
#include "ui/dialog.h"
#include "ui/launch.h"
#include "ui/screen/scale.h"
#include "ui/screen/scoped.h"
#include "util/text_cut.h"

namespace {

constexpr size_t kLongestAdded = 240;
constexpr size_t kLongestModified = 120;
constexpr int kTextMargin = 4;   // pixels beside a subject in the list box
constexpr int kMostGrowth = 110; // of the list box, in pixels at 96 dpi

class QuickSubjectsDialog : public Dialog {
  public:
    explicit QuickSubjectsDialog(RegistryStore& settings) : m_settings(settings) {}

    void OnOK() override;
    void OnCancel() override;

  protected:
    bool OnInitDialog() override;
    void OnResolutionChanged(int) override { FitExtent(); }
    const wchar_t* HelpTopic() const override { return kHelpQuickSubjects; }
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

  private:
    bool OnCommand(int id, WORD code);
    void OnEdit(WORD code);
    void OnTextChange();
    void OnSelection();
    void Add();
    void Modify();
    void Delete();

    bool IsDeletionConfirmed();
    std::wstring Text() const;
    std::optional<std::wstring> SelectedSubject() const;
    void ShowPlaceholder();
    void RestorePlaceholder();
    void SelectText();
    void ShowSubjects();
    void FitExtent() const;
    int WidthOfSubjects() const;
    void ShowButtons(const SubjectButtons& buttons);

    RegistryStore& m_settings;
    SubjectList m_subjects;
    SubjectButtons m_buttons;
};

bool QuickSubjectsDialog::OnInitDialog()
{
    if (UsesInputPanel(m_settings))
        ShowInputPanel(true);
    AddPlaceholder(GetItem(IDC_QUICK_SUBJECT), kSubjectPlaceholder);
    m_subjects = SubjectList(ReadQuickSubjects(m_settings));
    ShowSubjects();
    ShowPlaceholder();
    Grow(kMostGrowth, {IDC_QUICK_SUBJECT_LIST});
    CenterOnWorkArea();
    return true;
}

bool QuickSubjectsDialog::OnMessage(UINT message, WPARAM wParam, LPARAM, LRESULT*)
{
    return message == WM_COMMAND && OnCommand(LOWORD(wParam), HIWORD(wParam));
}

bool QuickSubjectsDialog::OnCommand(int id, WORD code)
{
    switch (id) {
    case IDC_QUICK_SUBJECT: OnEdit(code); return true;
    case IDC_QUICK_SUBJECT_LIST:
        if (code == LBN_SELCHANGE)
            OnSelection();
        return true;
    case IDC_ADD_SUBJECT: Add(); return true;
    case IDC_MODIFY_SUBJECT: Modify(); return true;
    case IDC_DELETE_SUBJECT: Delete(); return true;
    default: return false;
    }
}

void QuickSubjectsDialog::OnEdit(WORD code)
{
    switch (code) {
    case EN_SETFOCUS: SelectText(); break;
    case EN_KILLFOCUS: RestorePlaceholder(); break;
    case EN_CHANGE: OnTextChange(); break;
    default: break;
    }
}

void QuickSubjectsDialog::OnTextChange()
{
    const std::wstring text = Text();
    if (!IsSubject(text))
        SendDlgItemMessageW(GetWindow(), IDC_QUICK_SUBJECT_LIST, LB_SETCURSEL, static_cast<WPARAM>(-1), 0);
    ShowButtons(ButtonsForText(m_subjects, text));
}

void QuickSubjectsDialog::OnSelection()
{
    ShowButtons(ButtonsForSelection(m_buttons, SelectedSubject().has_value(), Text()));
}

void QuickSubjectsDialog::Add()
{
    const std::wstring text = Text();
    if (!IsSubject(text) || !m_subjects.Add(text)) {
        MessageBeep(MB_ICONEXCLAMATION);
        return;
    }
    ShowSubjects();
    ShowPlaceholder();
    KeepFocus(IDC_QUICK_SUBJECT);
}

void QuickSubjectsDialog::Modify()
{
    const auto selected = SelectedSubject();
    std::wstring text = Text();
    text.resize(CutText(text, kLongestModified).size());
    if (!selected || !IsSubject(text) || !m_subjects.Replace(*selected, text)) {
        MessageBeep(MB_ICONEXCLAMATION);
        return;
    }
    ShowSubjects();
    ShowPlaceholder();
    KeepFocus(IDC_QUICK_SUBJECT);
}

void QuickSubjectsDialog::Delete()
{
    const auto selected = SelectedSubject();
    if (!selected || !IsDeletionConfirmed() || !m_subjects.Remove(*selected))
        return;
    ShowSubjects();
    OnTextChange(); // what was a repetition may be none any more
    KeepFocus(IDC_QUICK_SUBJECT_LIST);
}

bool QuickSubjectsDialog::IsDeletionConfirmed()
{
    return !ConfirmsDeletions(m_settings) ||
           MessageBoxW(GetWindow(), L"Delete?", L"Confirm", MB_YESNO | MB_ICONEXCLAMATION) == IDYES;
}

// What is typed, as far as it counts.
std::wstring QuickSubjectsDialog::Text() const
{
    wchar_t buffer[kLongestAdded + 2];
    std::wstring text(buffer, GetDlgItemTextW(GetWindow(), IDC_QUICK_SUBJECT, buffer, std::size(buffer)));
    text.resize(CutText(text, kLongestAdded).size());
    return text;
}

std::optional<std::wstring> QuickSubjectsDialog::SelectedSubject() const
{
    HWND list = GetItem(IDC_QUICK_SUBJECT_LIST);
    const auto item = static_cast<WPARAM>(SendMessageW(list, LB_GETCURSEL, 0, 0));
    const LRESULT length = SendMessageW(list, LB_GETTEXTLEN, item, 0);
    if (length == LB_ERR)
        return std::nullopt;
    std::wstring text(static_cast<size_t>(length) + 1, L'\0');
    SendMessageW(list, LB_GETTEXT, item, reinterpret_cast<LPARAM>(text.data()));
    text.pop_back();
    return text;
}

void QuickSubjectsDialog::ShowPlaceholder()
{
    SetDlgItemTextW(GetWindow(), IDC_QUICK_SUBJECT, kSubjectPlaceholder);
    SelectText();
}

// A placeholder that stands there already is left alone: setting it would drop the list's selection.
void QuickSubjectsDialog::RestorePlaceholder()
{
    const std::wstring text = Text();
    if (!IsSubject(text) && !IsPlaceholder(text, kSubjectPlaceholder))
        SetDlgItemTextW(GetWindow(), IDC_QUICK_SUBJECT, kSubjectPlaceholder);
}

void QuickSubjectsDialog::SelectText()
{
    SendDlgItemMessageW(GetWindow(), IDC_QUICK_SUBJECT, EM_SETSEL, 0, -1);
}

// Sorted by the list box, and with nothing selected.
void QuickSubjectsDialog::ShowSubjects()
{
    HWND list = GetItem(IDC_QUICK_SUBJECT_LIST);
    const ScopedRedrawPause pause(list);
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    for (const std::wstring& subject : m_subjects.InOrder())
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(subject.c_str()));
    FitExtent();
}

void QuickSubjectsDialog::FitExtent() const
{
    SendDlgItemMessageW(GetWindow(), IDC_QUICK_SUBJECT_LIST, LB_SETHORIZONTALEXTENT,
                        static_cast<WPARAM>(WidthOfSubjects()), 0);
}

int QuickSubjectsDialog::WidthOfSubjects() const
{
    HWND list = GetItem(IDC_QUICK_SUBJECT_LIST);
    HDC dc = GetDC(list);
    int width = 0;
    {
        const ScopedSelectObject font(dc, reinterpret_cast<HFONT>(SendMessageW(list, WM_GETFONT, 0, 0)));
        for (const std::wstring& subject : m_subjects.InOrder()) {
            SIZE size{};
            GetTextExtentPoint32W(dc, subject.c_str(), static_cast<int>(subject.size()), &size);
            width = std::max<int>(width, size.cx);
        }
    }
    ReleaseDC(list, dc);
    return width + Scale(GetWindow(), kTextMargin);
}

void QuickSubjectsDialog::ShowButtons(const SubjectButtons& buttons)
{
    m_buttons = buttons;
    EnableItem(IDC_ADD_SUBJECT, buttons.add);
    EnableItem(IDC_MODIFY_SUBJECT, buttons.modify);
    EnableItem(IDC_DELETE_SUBJECT, buttons.remove);
}

void QuickSubjectsDialog::OnOK()
{
    StoreQuickSubjects(&m_settings, m_subjects.InOrder());
    if (UsesInputPanel(m_settings))
        ShowInputPanel(false);
    End(1);
}

void QuickSubjectsDialog::OnCancel()
{
    if (UsesInputPanel(m_settings))
        ShowInputPanel(false);
    End(0);
}

} // namespace

int RunQuickSubjects(HWND owner, RegistryStore& settings)
{
    QuickSubjectsDialog dialog(settings);
    return dialog.DoModal(GetModuleHandleW(nullptr), IDD_QUICK_SUBJECTS, owner) == 1 ? 1 : 0;
}
