#include "options/options_dialog.h"

#include "options/password.h"
#include "options/preferences.h"
#include "res/resource.h"
#include "ui/dialog.h"
#include "ui/launch.h"

namespace {

class OptionsDialog : public Dialog {
  public:
    explicit OptionsDialog(RegistryStore& settings) : m_settings(settings) {}

    void OnOK() override;

  protected:
    bool OnInitDialog() override;
    const wchar_t* HelpTopic() const override { return kHelpOptions; }
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

  private:
    bool OnClick(int id);
    void SetPassword();
    void ChangePassword();
    void ClearPassword();
    bool IsClearingConfirmed();
    void ShowPasswordSet(bool isSet, const wchar_t* status);
    void ShowStatus(const wchar_t* status) { SetDlgItemTextW(GetWindow(), IDC_PASSWORD_STATUS, status); }

    RegistryStore& m_settings;
    bool m_isSet = false; // a password
};

bool OptionsDialog::OnInitDialog()
{
    const Preferences preferences = ReadPreferences(m_settings);
    CheckButton(IDC_CONFIRM_DELETE, preferences.confirmDelete);
    CheckButton(IDC_OPEN_ON_FIND, preferences.openOnFind);
    CheckButton(IDC_SHOW_CATEGORIES, preferences.showCategories);
    EnableItem(IDC_USE_INPUT_PANEL, false); // there is none here
    CheckButton(IDC_REMEMBER_FILTER, preferences.rememberFilter);
    const bool isSet = IsPasswordSet(m_settings);
    ShowPasswordSet(isSet, isSet ? L"Password IS Set!" : L"Password NOT Set!");
    CenterOnWorkArea();
    return true;
}

void OptionsDialog::OnOK()
{
    StorePreferences(m_settings,
                     {IsButtonChecked(IDC_CONFIRM_DELETE), IsButtonChecked(IDC_OPEN_ON_FIND),
                      IsButtonChecked(IDC_REMEMBER_FILTER), IsButtonChecked(IDC_SHOW_CATEGORIES)});
    StoreAskAtStart(m_settings, m_isSet);
    Dialog::OnOK();
}

bool OptionsDialog::OnMessage(UINT message, WPARAM wParam, LPARAM, LRESULT*)
{
    return message == WM_COMMAND && HIWORD(wParam) == BN_CLICKED && OnClick(LOWORD(wParam));
}

bool OptionsDialog::OnClick(int id)
{
    switch (id) {
    case IDC_SET_PASSWORD: m_isSet ? ChangePassword() : SetPassword(); return true;
    case IDC_CLEAR_PASSWORD: ClearPassword(); return true;
    default: return false;
    }
}

void OptionsDialog::SetPassword()
{
    const bool isSet = SetNewPassword(GetWindow(), m_settings);
    ShowPasswordSet(isSet, isSet ? L"Password IS Set!" : L"Password NOT Set");
}

void OptionsDialog::ChangePassword()
{
    const bool changed = CheckPassword(GetWindow(), m_settings) && SetNewPassword(GetWindow(), m_settings);
    ShowStatus(changed ? L"Password Changed!" : L"Password NOT Changed!");
}

void OptionsDialog::ClearPassword()
{
    if (!IsClearingConfirmed())
        return;
    if (!CheckPassword(GetWindow(), m_settings))
        ShowStatus(L"Incorrect Password!");
    else if (::ClearPassword(m_settings))
        ShowPasswordSet(false, L"Password Cleared!");
    else
        ShowStatus(L"Password Not Cleared!");
}

bool OptionsDialog::IsClearingConfirmed()
{
    return MessageBoxW(GetWindow(), L"Are you sure that you wish to clear your password?",
                       L"Journal Password", MB_YESNO | MB_ICONEXCLAMATION) == IDYES;
}

void OptionsDialog::ShowPasswordSet(bool isSet, const wchar_t* status)
{
    m_isSet = isSet;
    ShowStatus(status);
    SetDlgItemTextW(GetWindow(), IDC_SET_PASSWORD, isSet ? L"Change &Password" : L"Set &Password");
    EnableItem(IDC_CLEAR_PASSWORD, isSet);
    KeepFocus(IDC_SET_PASSWORD);
}

} // namespace

void RunOptions(HWND owner, RegistryStore& settings)
{
    OptionsDialog dialog(settings);
    dialog.DoModal(GetModuleHandleW(nullptr), IDD_OPTIONS, owner);
}
