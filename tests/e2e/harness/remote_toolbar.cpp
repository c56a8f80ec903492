#include "e2e/harness/remote_toolbar.h"

#include "e2e/harness/remote_window.h"

namespace {

constexpr int kTextSize = 256;  // characters
constexpr int kArrowInset = 5;  // pixels from the right edge into the arrow
constexpr int kArrowWidth = 12; // pixels, at least, that the body does not have

} // namespace

RemoteToolbar::RemoteToolbar(HWND bar) : m_bar(bar), m_process(ProcessOf(bar)) {}

std::vector<int> RemoteToolbar::Commands() const
{
    std::vector<int> commands;
    const int count = static_cast<int>(Send(m_bar, TB_BUTTONCOUNT));
    for (int index = 0; index < count; ++index)
        commands.push_back(Button(index).idCommand);
    return commands;
}

TBBUTTON RemoteToolbar::Button(int index) const
{
    RemoteBlock block(m_process.get(), sizeof(TBBUTTON));
    if (!Send(m_bar, TB_GETBUTTON, static_cast<WPARAM>(index), block.AsLParam()))
        return {};
    return block.Read<TBBUTTON>();
}

std::wstring RemoteToolbar::Text(int command) const
{
    RemoteBlock block(m_process.get(), kTextSize * sizeof(wchar_t));
    const LRESULT length = Send(m_bar, TB_GETBUTTONTEXTW, static_cast<WPARAM>(command), 0, -1);
    wchar_t text[kTextSize] = {};
    if (length < 0 || length >= kTextSize)
        return {};
    Send(m_bar, TB_GETBUTTONTEXTW, static_cast<WPARAM>(command), block.AsLParam());
    block.Read(text, sizeof text - sizeof(wchar_t));
    return text;
}

bool RemoteToolbar::IsEnabled(int command) const
{
    return Send(m_bar, TB_ISBUTTONENABLED, static_cast<WPARAM>(command)) != 0;
}

bool RemoteToolbar::IsChecked(int command) const
{
    return Send(m_bar, TB_ISBUTTONCHECKED, static_cast<WPARAM>(command)) != 0;
}

RECT RemoteToolbar::ScreenRect(int command) const
{
    RemoteBlock block(m_process.get(), sizeof(RECT));
    if (!Send(m_bar, TB_GETRECT, static_cast<WPARAM>(command), block.AsLParam()))
        return {};
    RECT rect = block.Read<RECT>();
    MapWindowPoints(m_bar, nullptr, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

POINT RemoteToolbar::BodyPoint(int command) const
{
    const RECT rect = ScreenRect(command);
    const LONG width = rect.right - rect.left;
    const LONG body = width > 2 * kArrowWidth ? width - kArrowWidth : width;
    return {rect.left + body / 2, (rect.top + rect.bottom) / 2};
}

POINT RemoteToolbar::ArrowPoint(int command) const
{
    const RECT rect = ScreenRect(command);
    return {rect.right - kArrowInset, (rect.top + rect.bottom) / 2};
}
