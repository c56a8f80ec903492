#include "ui/bars/command_bar.h"

#include <algorithm>

#include "ui/bars/button_rows.h"
#include "ui/pictures/image_list.h"
#include "ui/pictures/pixels.h"
#include "ui/pictures/standard_images.h"
#include "ui/screen/message_font.h"
#include "ui/screen/scale.h"

namespace {

constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | CCS_NODIVIDER |
                         CCS_NORESIZE | CCS_NOPARENTALIGN | TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_TOOLTIPS |
                         TBSTYLE_TRANSPARENT;

bool ChangesRoom(UINT message)
{
    switch (message) {
    case TB_ADDBUTTONSA:
    case TB_ADDBUTTONSW:
    case TB_INSERTBUTTONA:
    case TB_INSERTBUTTONW:
    case TB_DELETEBUTTON:
    case TB_HIDEBUTTON:
    case TB_MOVEBUTTON:
    case TB_SETBUTTONINFOA:
    case TB_SETBUTTONINFOW:
    case TB_SETBUTTONSIZE:
    case TB_SETBUTTONWIDTH:
    case TB_SETIMAGELIST:
    case TB_SETPADDING:
    case WM_SETFONT: return true;
    default: return false;
    }
}

int ButtonCount(HWND bar)
{
    return static_cast<int>(SendMessageW(bar, TB_BUTTONCOUNT, 0, 0));
}

RECT ButtonRect(HWND bar, int index)
{
    RECT rect{};
    SendMessageW(bar, TB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rect));
    return rect;
}

std::vector<ButtonExtent> ButtonExtents(HWND bar)
{
    std::vector<ButtonExtent> extents;
    for (int i = 0; i < ButtonCount(bar); ++i) {
        TBBUTTON button{};
        SendMessageW(bar, TB_GETBUTTON, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&button));
        const RECT rect = ButtonRect(bar, i);
        extents.push_back({static_cast<int>(rect.right - rect.left), (button.fsStyle & BTNS_SEP) != 0});
    }
    return extents;
}

// As large as the bar's images are.
Pixels LoadBarImages(HWND bar, HINSTANCE instance, int bitmapId)
{
    if (instance != HINST_COMMCTRL)
        return LoadStrip(instance, bitmapId, kStandardImageSide, kImageMask, DpiOf(bar));
    return bitmapId == IDB_STD_SMALL_COLOR ? LoadStandardImages(DpiOf(bar)) : Pixels{};
}

} // namespace

std::unique_ptr<CommandBar> CommandBar::Create(HINSTANCE instance, HWND rebar,
                                               std::function<void()> onResized)
{
    std::unique_ptr<CommandBar> bar(new CommandBar(std::move(onResized)));
    bar->m_window =
        CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr, kStyle, 0, 0, 0, 0, rebar, nullptr, instance, nullptr);
    if (!bar->m_window)
        return nullptr;
    SendMessageW(bar->m_window, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    // Buttons without a text keep to the width of their image; those with one say that they show it.
    constexpr DWORD kExtended = TBSTYLE_EX_DRAWDDARROWS | TBSTYLE_EX_MIXEDBUTTONS;
    SendMessageW(bar->m_window, TB_SETEXTENDEDSTYLE, kExtended, kExtended);
    const int side = Scale(bar->m_window, kStandardImageSide);
    SendMessageW(bar->m_window, TB_SETBITMAPSIZE, 0, MAKELPARAM(side, side));
    bar->m_font = FitControlFont(bar->m_window);
    if (!bar->m_hook.Attach(bar->m_window, HandleMessage, bar.get()))
        return nullptr;
    return bar;
}

CommandBar* CommandBar::Of(HWND bar)
{
    return static_cast<CommandBar*>(WindowHook::SelfOf(bar, HandleMessage));
}

CommandBar::~CommandBar()
{
    if (m_window)
        DestroyWindow(m_window);
}

LRESULT CommandBar::HandleMessage(void* self, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* bar = static_cast<CommandBar*>(self);
    if (message != WM_NCDESTROY)
        return bar->OnMessage(message, wParam, lParam);
    bar->m_window = nullptr;
    bar->m_menu.reset();
    return 0;
}

LRESULT CommandBar::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    if (m_menu && m_menu->OnBarMessage(message, wParam, lParam, &result))
        return result;
    result = m_hook.Next(message, wParam, lParam);
    if (ChangesRoom(message) && !m_fitting)
        m_onResized();
    return result;
}

SIZE CommandBar::Fit(int available)
{
    m_fitting = true;
    const std::vector<bool> breaks = BreakRows(ButtonExtents(m_window), available);
    for (size_t i = 0; i < breaks.size(); ++i)
        BreakAfter(static_cast<int>(i), breaks[i]);
    m_fitting = false;
    return ButtonsSize();
}

void CommandBar::BreakAfter(int index, bool isRowEnd)
{
    TBBUTTONINFOW info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_BYINDEX | TBIF_STATE;
    SendMessageW(m_window, TB_GETBUTTONINFOW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&info));
    const BYTE state =
        static_cast<BYTE>(isRowEnd ? info.fsState | TBSTATE_WRAP : info.fsState & ~TBSTATE_WRAP);
    if (state == info.fsState)
        return;
    info.fsState = state;
    SendMessageW(m_window, TB_SETBUTTONINFOW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&info));
}

SIZE CommandBar::ButtonsSize() const
{
    const auto buttonSize = static_cast<DWORD>(SendMessageW(m_window, TB_GETBUTTONSIZE, 0, 0));
    SIZE size{0, HIWORD(buttonSize)};
    for (int i = 0; i < ButtonCount(m_window); ++i) {
        const RECT rect = ButtonRect(m_window, i);
        size.cx = std::max(size.cx, rect.right);
        size.cy = std::max(size.cy, rect.bottom);
    }
    return size;
}

bool CommandBar::InsertMenubar(HINSTANCE instance, int menuId)
{
    if (m_menu)
        return false;
    m_menu = MenuBar::Create(m_window, instance, menuId);
    return m_menu != nullptr;
}

int CommandBar::AddBitmap(HINSTANCE instance, int bitmapId, int imageCount)
{
    const int side = Scale(m_window, kStandardImageSide);
    const Pixels strip = LoadBarImages(m_window, instance, bitmapId);
    if (imageCount <= 0 || strip.width < imageCount * side || strip.height != side)
        return -1;
    if (!m_images) {
        m_images.reset(CreateImageList(side, side));
        m_greyedImages.reset(CreateImageList(side, side));
        SendMessageW(m_window, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(m_images.get()));
        SendMessageW(m_window, TB_SETDISABLEDIMAGELIST, 0, reinterpret_cast<LPARAM>(m_greyedImages.get()));
    }
    const Pixels added = CutLeft(strip, imageCount * side);
    // Both lists count alike, so that a button's image has one number.
    return AppendToImageList(m_greyedImages.get(), Greyed(added)) < 0
               ? -1
               : AppendToImageList(m_images.get(), added);
}
