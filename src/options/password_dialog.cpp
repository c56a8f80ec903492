#include "options/password.h"

#include "res/resource.h"
#include "ui/dialog.h"
#include "ui/launch.h"

namespace {

const wchar_t* PasswordTitle(PasswordMode mode)
{
    switch (mode) {
    case PasswordMode::New: return L"Enter New Password";
    case PasswordMode::Again: return L"Re-Enter Password";
    case PasswordMode::Check: break;
    }
    return L"Enter Journal Password";
}

class PasswordDialog : public Dialog {
  public:
    explicit PasswordDialog(PasswordMode mode) : m_mode(mode) {}

    const std::wstring& Text() const { return m_text; }

    void OnOK() override
    {
        wchar_t text[kPasswordMax + 1] = L"";
        GetDlgItemTextW(GetWindow(), IDC_PASSWORD, text, kPasswordMax + 1);
        m_text = text;
        Dialog::OnOK();
    }

  protected:
    const wchar_t* HelpTopic() const override { return kHelpPassword; }
    bool OnInitDialog() override
    {
        SetWindowTextW(GetWindow(), PasswordTitle(m_mode));
        // At the start there is no window that it could stand beside, nor one that would bring it forward.
        if (!GetParent(GetWindow())) {
            CenterOnWorkArea();
            SetForegroundWindow(GetWindow());
        }
        return true;
    }

  private:
    PasswordMode m_mode;
    std::wstring m_text;
};

} // namespace

bool AskPassword(HWND owner, PasswordMode mode, std::wstring* text)
{
    PasswordDialog dialog(mode);
    if (dialog.DoModal(GetModuleHandleW(nullptr), IDD_PASSWORD, owner) != 1)
        return false;
    *text = dialog.Text();
    return true;
}
