#include "ui/bars/menu_bar_buttons.h"

#include <commctrl.h>

namespace {

// Outside of what programs use for their commands.
constexpr int kFirstCommand = 0xE800;

bool IsItemEnabled(HMENU menu, int index)
{
    const UINT state = GetMenuState(menu, static_cast<UINT>(index), MF_BYPOSITION);
    return !(state & (MF_GRAYED | MF_DISABLED));
}

} // namespace

std::vector<std::wstring> ItemTexts(HMENU menu)
{
    std::vector<std::wstring> texts;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        const auto position = static_cast<UINT>(i);
        const int length = GetMenuStringW(menu, position, nullptr, 0, MF_BYPOSITION);
        std::wstring text(static_cast<size_t>(length) + 1, L'\0');
        GetMenuStringW(menu, position, text.data(), length + 1, MF_BYPOSITION);
        text.resize(static_cast<size_t>(length));
        texts.push_back(std::move(text));
    }
    return texts;
}

bool MenuBarButtons::Add(HMENU menu)
{
    const std::vector<std::wstring> texts = ItemTexts(menu);
    std::vector<TBBUTTON> buttons(texts.size());
    for (size_t i = 0; i < texts.size(); ++i) {
        const int index = static_cast<int>(i);
        TBBUTTON& button = buttons[i];
        button.iBitmap = I_IMAGENONE;
        button.idCommand = CommandOf(index);
        button.fsState = IsItemEnabled(menu, index) ? TBSTATE_ENABLED : 0;
        button.fsStyle = BTNS_DROPDOWN | BTNS_AUTOSIZE | BTNS_SHOWTEXT;
        button.iString = reinterpret_cast<INT_PTR>(texts[i].c_str());
    }
    return SendMessageW(m_bar, TB_ADDBUTTONSW, buttons.size(), reinterpret_cast<LPARAM>(buttons.data())) != 0;
}

int MenuBarButtons::CommandOf(int index)
{
    return kFirstCommand + index;
}

int MenuBarButtons::IndexOf(int command)
{
    return command - kFirstCommand;
}

std::vector<bool> MenuBarButtons::Enabled() const
{
    std::vector<bool> enabled(static_cast<size_t>(SendMessageW(m_bar, TB_BUTTONCOUNT, 0, 0)));
    for (size_t i = 0; i < enabled.size(); ++i)
        enabled[i] = IsEnabled(static_cast<int>(i));
    return enabled;
}

bool MenuBarButtons::IsEnabled(int index) const
{
    return SendMessageW(m_bar, TB_ISBUTTONENABLED, static_cast<WPARAM>(CommandOf(index)), 0) > 0;
}

int MenuBarButtons::At(POINT point) const
{
    if (WindowFromPoint(point) != m_bar)
        return -1;
    ScreenToClient(m_bar, &point);
    const auto index = static_cast<int>(SendMessageW(m_bar, TB_HITTEST, 0, reinterpret_cast<LPARAM>(&point)));
    return index >= 0 ? index : -1;
}

int MenuBarButtons::Hot() const
{
    return static_cast<int>(SendMessageW(m_bar, TB_GETHOTITEM, 0, 0));
}

void MenuBarButtons::SetHot(int index) const
{
    SendMessageW(m_bar, TB_SETHOTITEM, static_cast<WPARAM>(index), 0);
}

void MenuBarButtons::Press(int index, bool pressed) const
{
    SendMessageW(m_bar, TB_PRESSBUTTON, static_cast<WPARAM>(CommandOf(index)), MAKELPARAM(pressed, 0));
}
