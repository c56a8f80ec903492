#include "editor/editor_bar.h"

#include <algorithm>
#include <utility>

#include "res/resource.h"
#include "ui/pictures/image_list.h"
#include "ui/screen/scale.h"

namespace {

constexpr int kImageWidth = 12;
constexpr int kButtonWidth = 22;
constexpr int kButtonHeight = 21;
// Narrow, so that all buttons stand in one row at 640 pixels.
constexpr int kSeparatorWidth = 4;

constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS | TBSTYLE_LIST | TBSTYLE_FLAT |
                         TBSTYLE_TOOLTIPS | CCS_NORESIZE | CCS_NODIVIDER | CCS_NOPARENTALIGN;

struct BarButton {
    int command; // 0: a separator
    int image;
    BYTE style;
    int width;
    const wchar_t* text;
};

constexpr BarButton kSeparator{0, kSeparatorWidth, BTNS_SEP, 0, nullptr};
constexpr BYTE kAutoSize = BTNS_AUTOSIZE;
constexpr BYTE kViewStyle = BTNS_CHECKGROUP | BTNS_AUTOSIZE;

constexpr BarButton kButtons[] = {
    {CMD_TIMER, kTimerImage, BTNS_CHECK, 45, L"Off"},
    kSeparator,
    {CMD_SENSITIVITY, kFirstSensitivityImage, BTNS_DROPDOWN, kSensitivityWidth, L"Normal"},
    {CMD_PRIORITY, kFirstPriorityImage + 1, BTNS_DROPDOWN, kPriorityWidth, L"Normal"},
    kSeparator,
    {CMD_TIME_STAMP, 4, kAutoSize, 24, nullptr},
    {CMD_SAVE, 15, kAutoSize, 24, nullptr},
    kSeparator,
    {CMD_EDIT_CATEGORIES, 0, kAutoSize, 24, nullptr},
    {CMD_ZOOM, kZoomImage, BTNS_DROPDOWN, kZoomWidth, L"100%"},
    kSeparator,
    {CMD_EDIT_ENTRY_VIEW, 5, kViewStyle, 24, nullptr},
    {CMD_ASSIGN_CATEGORIES, 1, kViewStyle, 24, nullptr},
    {CMD_ASSIGN_CONTACTS, 2, kViewStyle, 24, nullptr},
};

// In button order without the separators; the drop-down buttons have none.
constexpr const wchar_t* kTooltips[] = {
    L"Timer On/Off",    L"", L"",           L"TimeStamp",         L"Save",
    L"Edit Categories", L"", L"Edit Entry", L"Assign Categories", L"Assign Contacts",
};

} // namespace

bool EditorBar::Create(HINSTANCE instance, HWND parent, HFONT font)
{
    m_window =
        CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr, kStyle, 0, 0, 0, 0, parent,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_EDITOR_BAR)), instance, nullptr);
    if (!m_window)
        return false;
    SendMessageW(m_window, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageW(m_window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    // The drop-down buttons show an arrow; the editor drops their menu from the button's body as well.
    // Those without a text keep to the width of their image.
    constexpr DWORD kExtended = TBSTYLE_EX_DRAWDDARROWS | TBSTYLE_EX_MIXEDBUTTONS;
    SendMessageW(m_window, TB_SETEXTENDEDSTYLE, kExtended, kExtended);
    SetImages(instance);
    return AddButtons();
}

// All that a button has below half of its padding, where its image begins: so the image stands in the middle,
// as the text does.
int EditorBar::ImageHeight() const
{
    const auto padding = static_cast<DWORD>(SendMessageW(m_window, TB_GETPADDING, 0, 0));
    return Scale(m_window, kButtonHeight) - HIWORD(padding);
}

void EditorBar::SetImages(HINSTANCE instance)
{
    const int dpi = DpiOf(m_window);
    const int height = ImageHeight();
    UniqueImageList images = LoadImageStrip(instance, IDB_EDITOR_BAR, kImageWidth, kImageMask, dpi, height);
    UniqueImageList greyed =
        LoadGreyedImageStrip(instance, IDB_EDITOR_BAR, kImageWidth, kImageMask, dpi, height);
    SendMessageW(m_window, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images.get()));
    SendMessageW(m_window, TB_SETDISABLEDIMAGELIST, 0, reinterpret_cast<LPARAM>(greyed.get()));
    m_images = std::move(images);
    m_greyedImages = std::move(greyed);
}

void EditorBar::OnResolutionChanged(HFONT font)
{
    SendMessageW(m_window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    SetImages(GetModuleHandleW(nullptr));
    SetSizes();
    InvalidateRect(m_window, nullptr, TRUE);
}

bool EditorBar::AddButtons()
{
    std::vector<TBBUTTON> buttons;
    for (const BarButton& button : kButtons) {
        TBBUTTON added{};
        added.iBitmap = button.command ? button.image : Scale(m_window, button.image);
        added.idCommand = button.command;
        added.fsState = TBSTATE_ENABLED;
        added.fsStyle = static_cast<BYTE>(button.style | (button.text ? BTNS_SHOWTEXT : 0));
        added.iString = button.text ? reinterpret_cast<INT_PTR>(button.text) : -1;
        buttons.push_back(added);
    }
    if (!SendMessageW(m_window, TB_ADDBUTTONSW, buttons.size(), reinterpret_cast<LPARAM>(buttons.data())))
        return false;
    for (const BarButton& button : kButtons)
        m_widths.push_back(button.command ? button.width : button.image);
    SetSizes();
    return true;
}

void EditorBar::SetSizes()
{
    SendMessageW(m_window, TB_SETBUTTONSIZE, 0,
                 MAKELPARAM(Scale(m_window, kButtonWidth), Scale(m_window, kButtonHeight)));
    TBBUTTONINFOW info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_BYINDEX | TBIF_SIZE;
    for (size_t i = 0; i < m_widths.size(); ++i) {
        info.cx = static_cast<WORD>(Scale(m_window, m_widths[i]));
        SendMessageW(m_window, TB_SETBUTTONINFOW, i, reinterpret_cast<LPARAM>(&info));
    }
}

// Of a command of the bar.
int& EditorBar::WidthOf(int command)
{
    const auto found = std::find_if(std::begin(kButtons), std::end(kButtons),
                                    [=](const BarButton& button) { return button.command == command; });
    return m_widths[static_cast<size_t>(found - std::begin(kButtons))];
}

void EditorBar::SetFace(int command, const ButtonFace& face)
{
    std::wstring text = face.text;
    TBBUTTONINFOW info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_TEXT | TBIF_IMAGE | TBIF_SIZE;
    info.pszText = text.data();
    info.iImage = face.image;
    info.cx = static_cast<WORD>(Scale(m_window, face.width));
    WidthOf(command) = face.width;
    SendMessageW(m_window, TB_SETBUTTONINFOW, static_cast<WPARAM>(command), reinterpret_cast<LPARAM>(&info));
}

void EditorBar::Enable(int command, bool enable)
{
    SendMessageW(m_window, TB_ENABLEBUTTON, static_cast<WPARAM>(command), MAKELPARAM(enable, 0));
}

void EditorBar::Check(int command, bool check)
{
    SendMessageW(m_window, TB_CHECKBUTTON, static_cast<WPARAM>(command), MAKELPARAM(check, 0));
}

std::vector<ButtonExtent> EditorBar::Buttons() const
{
    std::vector<ButtonExtent> extents;
    for (size_t i = 0; i < std::size(kButtons); ++i) {
        RECT rect{};
        SendMessageW(m_window, TB_GETITEMRECT, i, reinterpret_cast<LPARAM>(&rect));
        extents.push_back({static_cast<int>(rect.right - rect.left), kButtons[i].command == 0});
    }
    return extents;
}

int EditorBar::RowHeight() const
{
    return HIWORD(static_cast<DWORD>(SendMessageW(m_window, TB_GETBUTTONSIZE, 0, 0)));
}

void EditorBar::BreakInto(int width)
{
    const std::vector<bool> breaks = BreakRows(Buttons(), width);
    for (size_t i = 0; i < breaks.size(); ++i)
        SetWrap(static_cast<int>(i), breaks[i]);
}

void EditorBar::SetWrap(int index, bool wrap)
{
    TBBUTTONINFOW info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_BYINDEX | TBIF_STATE;
    SendMessageW(m_window, TB_GETBUTTONINFOW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&info));
    const int others = info.fsState & ~TBSTATE_WRAP;
    info.fsState = static_cast<BYTE>(wrap ? others | TBSTATE_WRAP : others);
    SendMessageW(m_window, TB_SETBUTTONINFOW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&info));
}

const wchar_t* EditorBar::Tooltip(int command)
{
    size_t tip = 0;
    for (const BarButton& button : kButtons) {
        if (button.command && button.command == command)
            return kTooltips[tip];
        tip += button.command ? 1 : 0;
    }
    return L"";
}
