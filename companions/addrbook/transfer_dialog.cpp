#include "addrbook/transfer_dialog.h"

#include <commctrl.h>

#include "addrbook/resource.h"
#include "ui/dialog.h"
#include "ui/launch.h"

namespace addrbook {

namespace {

constexpr UINT_PTR kTimer = 1;
constexpr unsigned kStepTime =
    60; // milliseconds: long enough to get on, short enough for a button to feel alive

class TransferDialog : public Dialog {
  public:
    TransferDialog(const wchar_t* title, Transfer& transfer) : m_title(title), m_transfer(transfer) {}

    void OnOK() override { End(m_state == Transfer::State::Done ? 1 : 0); }
    void OnCancel() override;

  protected:
    bool OnInitDialog() override;
    const wchar_t* HelpTopic() const override { return kHelpTransfer; }
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    void OnSessionEnd() override;

  private:
    void Step();
    void Ask();
    void ShowEnd();

    const wchar_t* m_title;
    Transfer& m_transfer;
    Transfer::State m_state = Transfer::State::Working;
    bool m_isStepping = false;
};

// At the end there is nothing left to cancel. In the midst of a step, which another program's request can
// reach, the step's end is waited for.
void TransferDialog::OnCancel()
{
    if (m_isStepping)
        m_state = Transfer::State::Cancelled;
    else
        OnOK();
}

// A step that waits for another program's write can hear of it. It is not interrupted: what it has begun is
// taken back behind it, or by the store when the process ends first.
void TransferDialog::OnSessionEnd()
{
    if (m_state == Transfer::State::Done || m_state == Transfer::State::Failed)
        return;
    m_state = Transfer::State::Cancelled;
    if (!m_isStepping)
        m_transfer.Abandon();
}

bool TransferDialog::OnInitDialog()
{
    SetWindowTextW(GetWindow(), m_title);
    SetWindowTextW(GetItem(IDC_TRANSFER_TEXT), L"Working...");
    SendMessageW(GetItem(IDC_TRANSFER_BAR), PBM_SETRANGE32, 0, 1000);
    CenterOnWorkArea();
    SetTimer(GetWindow(), kTimer, USER_TIMER_MINIMUM, nullptr);
    SetFocus(GetItem(IDCANCEL));
    return false;
}

bool TransferDialog::OnMessage(UINT message, WPARAM wParam, LPARAM, LRESULT*)
{
    if (message != WM_TIMER || wParam != kTimer)
        return false;
    if (m_state == Transfer::State::Working)
        Step();
    return true;
}

// Meanwhile it may have been cancelled, or the session have ended and the window with it.
void TransferDialog::Step()
{
    m_isStepping = true;
    const Transfer::State state = m_transfer.Step(kStepTime);
    m_isStepping = false;
    if (m_state == Transfer::State::Cancelled) {
        m_transfer.Abandon();
        return End(0);
    }
    m_state = state;
    SendMessageW(GetItem(IDC_TRANSFER_BAR), PBM_SETPOS, static_cast<WPARAM>(m_transfer.PerMille()), 0);
    if (m_state == Transfer::State::Asking)
        Ask();
    if (m_state == Transfer::State::Cancelled)
        End(0);
    else if (m_state != Transfer::State::Working)
        ShowEnd();
}

// The timer goes on meanwhile: it steps only what is working.
void TransferDialog::Ask()
{
    m_state = m_transfer.Ask(GetWindow());
}

void TransferDialog::ShowEnd()
{
    KillTimer(GetWindow(), kTimer);
    SetWindowTextW(GetItem(IDC_TRANSFER_TEXT), m_transfer.Report().c_str());
    // OK takes the place of Cancel, which has nothing left to do.
    RECT place{};
    GetWindowRect(GetItem(IDCANCEL), &place);
    ScreenToClientRect(&place);
    MoveWindow(place.left, place.top, place.right - place.left, place.bottom - place.top, true,
               GetItem(IDOK));
    EnableItem(IDOK, true);
    SendMessageW(GetWindow(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetItem(IDOK)), TRUE);
    HideItem(IDCANCEL);
}

} // namespace

bool RunTransfer(HINSTANCE instance, HWND owner, const wchar_t* title, Transfer& transfer)
{
    return TransferDialog(title, transfer).DoModal(instance, IDD_TRANSFER, owner) == 1;
}

} // namespace addrbook
