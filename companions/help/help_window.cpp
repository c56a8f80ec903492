#include "help/help_window.h"

#include <algorithm>
#include <utility>

#include "help/one_window.h"
#include "help/resource.h"
#include "ui/dialog_in_front.h"
#include "ui/screen/scale.h"
#include "ui/screen/work_area.h"
#include "ui/wine.h"

namespace help {

namespace {

constexpr int kMargin = 4;
constexpr int kButtonWidth = 72;
constexpr int kLabelWidth = 36;
constexpr int kFindWidth = 180;
constexpr int kNarrowestFind = 90;
constexpr int kNarrowestContents = 110;
constexpr int kWidestContents = 260;
constexpr int kWindowWidth = 860;
constexpr int kWindowHeight = 600;
constexpr const wchar_t* kZoomSetting = L"Zoom"; // percent
constexpr UINT kMsgShowAsked = WM_APP;
constexpr UINT_PTR kForwardTimer = 1;
constexpr UINT kForwardPeriod = 100; // milliseconds from one look to the next
constexpr int kForwardLooks = 5;

// At the right of the work area, so that what asked for help stays in sight.
RECT FirstPlace()
{
    RECT place = MiddlePlace(kWindowWidth, kWindowHeight);
    OffsetRect(&place, WorkArea().right - place.right, 0);
    return place;
}

} // namespace

bool HelpWindow::RegisterWindowClass(HINSTANCE instance)
{
    return CompanionWindow::RegisterWindowClass(instance, kHelpWindowClass, WindowProcedure<HelpWindow>::Run,
                                                IDR_HELP_MENU);
}

bool HelpWindow::Create(HINSTANCE instance)
{
    OpenSettings(kSettingsKey);
    if (!CompanionWindow::Create(instance, kHelpWindowClass, L"Journal Help", FirstPlace(), this))
        return false;
    // A window that is not seen yet has not been told its size, and a text without any is broken into lines
    // twice.
    LayOut();
    return true;
}

LRESULT HelpWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CREATE: return OnCreate() ? 0 : -1;
    case WM_SETFOCUS: OnSetFocus(); return 0;
    case WM_COMMAND: OnCommand(LOWORD(wParam)); return 0;
    case WM_NOTIFY: return OnNotify(reinterpret_cast<NMHDR*>(lParam));
    case WM_INITMENUPOPUP: EnableCommands(); return 0;
    case WM_COPYDATA: return OnHandedOver(reinterpret_cast<const COPYDATASTRUCT*>(lParam));
    case kMsgShowAsked: ShowAsked(); return 0;
    case WM_TIMER: StayForward(wParam); return 0;
    case WM_APPCOMMAND: return OnAppCommand(lParam);
    case WM_DESTROY: OnDestroy(); return 0;
    default: return OnFrameMessage(message, wParam, lParam);
    }
}

bool HelpWindow::MakeRow()
{
    m_back = MakeChild(L"BUTTON", L"\u2190 Back", WS_TABSTOP, 0, IDC_BACK);
    m_forward = MakeChild(L"BUTTON", L"Forward \u2192", WS_TABSTOP, 0, IDC_FORWARD);
    m_findLabel = MakeChild(L"STATIC", L"Fi&nd:", SS_CENTERIMAGE | SS_RIGHT, 0, IDC_FIND_LABEL);
    m_find = MakeChild(L"EDIT", L"", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, IDC_FIND);
    m_status = MakeChild(L"STATIC", L"", SS_CENTERIMAGE | SS_ENDELLIPSIS | SS_NOPREFIX, 0, IDC_STATUS);
    return m_back && m_forward && m_findLabel && m_find && m_status;
}

// A screen reader calls a control that has no name of its own by the label before it. These have no size.
bool HelpWindow::MakePanes()
{
    if (!MakeChild(L"STATIC", L"Contents", 0, 0, IDC_CONTENTS_LABEL) ||
        !m_contents.Create(m_window, IDC_CONTENTS) || !MakeChild(L"STATIC", L"Topic", 0, 0, IDC_TEXT_LABEL) ||
        !m_text.Create(m_window, IDC_TEXT))
        return false;
    GiveFont(m_contents.Handle());
    return true;
}

// What is asked of the pane is its own resolution.
void HelpWindow::OnResolutionChanged(int)
{
    m_text.OnResolutionChanged();
}

bool HelpWindow::OnCreate()
{
    MakeFonts();
    if (!MakeRow() || !MakePanes())
        return false;
    m_text.SetZoom(static_cast<int>(
        std::min<DWORD>(m_settings.GetNumber(kSettings, kZoomSetting, kNormalZoom), kLargestZoom)));
    return true;
}

// Where the row is short the box leaves room behind it for what is said about what was found.
void HelpWindow::PlaceRow(int width)
{
    const auto scaled = [this](int pixels) { return Scale(m_window, pixels); };
    const int margin = scaled(kMargin), height = RowHeight();
    int left = margin;
    const auto place = [&](HWND child, int childWidth) {
        MoveWindow(child, left, margin, std::max(0, std::min(childWidth, width - left - margin)), height,
                   TRUE);
        left += childWidth + margin;
    };
    place(m_back, scaled(kButtonWidth));
    place(m_forward, scaled(kButtonWidth));
    place(m_findLabel, scaled(kLabelWidth));
    place(m_find, std::clamp((width - left) / 2, scaled(kNarrowestFind), scaled(kFindWidth)));
    place(m_status, width);
}

void HelpWindow::LayOut()
{
    RECT client{};
    GetClientRect(m_window, &client);
    const auto scaled = [this](int pixels) { return Scale(m_window, pixels); };
    const int width = client.right, margin = scaled(kMargin);
    PlaceRow(width);
    const int top = RowHeight() + 2 * margin;
    const int height = std::max(0, static_cast<int>(client.bottom) - top);
    const int contents =
        std::min(std::clamp(width * 3 / 10, scaled(kNarrowestContents), scaled(kWidestContents)), width);
    MoveWindow(m_contents.Handle(), 0, top, contents, height, TRUE);
    MoveWindow(m_text.Handle(), contents + margin, top, std::max(0, width - contents - margin), height, TRUE);
    m_text.Fit();
}

void HelpWindow::OnDestroy()
{
    if (StorePlace())
        m_settings.SetNumber(kSettings, kZoomSetting, static_cast<DWORD>(m_text.Zoom()));
    PostQuitMessage(0);
}

LRESULT HelpWindow::OnNotify(NMHDR* header)
{
    if (const auto topic = m_contents.ChosenBy(header)) {
        GoTo(*topic);
    } else if (header->idFrom == IDC_CONTENTS && header->code == NM_RETURN) {
        SetFocus(m_text.Handle());
        return 1;
    } else if (header->idFrom == IDC_TEXT && header->code == EN_LINK) {
        const auto* link = reinterpret_cast<const ENLINK*>(header);
        if (link->msg == WM_LBUTTONUP)
            Follow(LinkAt(m_text.Text(), static_cast<size_t>(std::max<LONG>(link->chrg.cpMin, 0))));
    }
    return 0;
}

// Another program of ours, or anything that looks like it: the message is looked at before it is believed.
LRESULT HelpWindow::OnHandedOver(const COPYDATASTRUCT* data)
{
    const std::optional<std::wstring> request = HandedOver(data);
    if (!request)
        return FALSE;
    m_asked.push_back(RequestOfText(*request));
    return PostMessageW(m_window, kMsgShowAsked, 0, 0);
}

void HelpWindow::ComeForward()
{
    BringForward(m_window, SW_SHOW);
}

// In a message that was posted, for two reasons. Within the one that was sent the other program would wait
// for the page, and open a window of its own where that takes long. And a display's server compares the time
// of the last posted message with that of the last change of the keyboard's window: where the change was
// later, the keyboard stays where it is.
void HelpWindow::ShowAsked()
{
    if (m_asked.empty())
        return;
    const HelpRequest request = std::move(m_asked.front());
    m_asked.erase(m_asked.begin());
    ComeForward();
    Show(request);
    m_forwardLooks = kForwardLooks;
    if (IsUnderWine())
        SetTimer(m_window, kForwardTimer, kForwardPeriod, nullptr);
}

// A late event of the display, about the window that has asked, may take the foreground away once more.
void HelpWindow::StayForward(UINT_PTR timer)
{
    if (timer != kForwardTimer)
        return;
    if (IsIconic(m_window) || GetForegroundWindow() != GetLastActivePopup(m_window))
        ComeForward();
    if (--m_forwardLooks <= 0)
        KillTimer(m_window, kForwardTimer);
}

LRESULT HelpWindow::OnAppCommand(LPARAM lParam)
{
    switch (GET_APPCOMMAND_LPARAM(lParam)) {
    case APPCOMMAND_BROWSER_BACKWARD: OnCommand(CMD_BACK); return TRUE;
    case APPCOMMAND_BROWSER_FORWARD: OnCommand(CMD_FORWARD); return TRUE;
    default: return DefWindowProcW(m_window, WM_APPCOMMAND, 0, lParam);
    }
}

// Wine's tree keeps Alt+F4, F10 and Alt to itself: the window takes them in its place.
bool HelpWindow::TranslateSystemKey(const MSG& message)
{
    if (message.message != WM_SYSKEYDOWN || message.hwnd != m_contents.Handle())
        return false;
    TranslateMessage(&message);
    DefWindowProcW(m_window, message.message, message.wParam, message.lParam);
    return true;
}

// In the text Tab goes from link to link, and Enter follows the one that the caret is in.
bool HelpWindow::TranslateKey(const MSG& message)
{
    if (TranslateSystemKey(message))
        return true;
    if (message.message != WM_KEYDOWN || message.hwnd != m_text.Handle())
        return false;
    const bool isPlain = GetKeyState(VK_CONTROL) >= 0 && GetKeyState(VK_MENU) >= 0;
    if (isPlain && message.wParam == VK_TAB)
        StepLink(GetKeyState(VK_SHIFT) < 0);
    else if (isPlain && message.wParam == VK_RETURN)
        OnEnter();
    else
        return false;
    return true;
}

// What had the keyboard may be grey by now.
void HelpWindow::OnSetFocus()
{
    SetFocus(m_focus && IsWindowEnabled(m_focus) ? m_focus : m_text.Handle());
}

void HelpWindow::OnEnter()
{
    HWND focus = GetFocus();
    if (focus == m_find)
        Find(false);
    else if (focus == m_back || focus == m_forward)
        OnCommand(GetDlgCtrlID(focus));
    else if (focus == m_contents.Handle())
        SetFocus(m_text.Handle());
    else
        Follow(LinkAt(m_text.Text(), m_text.Selection().begin));
}

} // namespace help
