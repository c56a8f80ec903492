#include "ui/bars/adornments.h"

#include <commctrl.h>
#include <uxtheme.h>

#include "ui/bars/command_bands.h"
#include "ui/pictures/glyphs.h"
#include "ui/pictures/pixels.h"
#include "ui/pictures/standard_images.h"
#include "ui/screen/scale.h"

namespace {

constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | CCS_NODIVIDER | CCS_NORESIZE |
                         CCS_NOPARENTALIGN | TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_TOOLTIPS;

struct Adornment {
    DWORD flag;
    int command;
    const wchar_t* text; // shown as the tooltip
};
constexpr Adornment kAll[] = {{kAdornHelp, 0xEA01, L"Help"}, {kAdornClose, 0xEA02, L"Close"}};
constexpr int kHelp = 0xEA01;

} // namespace

std::unique_ptr<Adornments> Adornments::Create(HINSTANCE instance, HWND rebar, DWORD flags)
{
    std::unique_ptr<Adornments> self(new Adornments);
    self->m_rebar = rebar;
    self->m_window = CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr, kStyle, 0, 0, 0, 0, GetParent(rebar),
                                     nullptr, instance, nullptr);
    if (!self->m_window || !self->m_hook.Attach(self->m_window, HandleMessage, self.get()) ||
        !self->AddButtons(flags))
        return nullptr;
    return self;
}

Adornments::~Adornments()
{
    if (m_window)
        DestroyWindow(m_window);
}

LRESULT Adornments::HandleMessage(void* self, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* adornments = static_cast<Adornments*>(self);
    switch (message) {
    case WM_ERASEBKGND: adornments->PaintBackground(reinterpret_cast<HDC>(wParam)); return TRUE;
    case WM_NCDESTROY: adornments->m_window = nullptr; return 0;
    default: return adornments->m_hook.Next(message, wParam, lParam);
    }
}

bool Adornments::AddButtons(DWORD flags)
{
    const int side = Scale(m_window, kStandardImageSide);
    m_images.reset(CreateImageList(side, side));
    const bool hasImages =
        m_images &&
        AppendToImageList(m_images.get(), DrawAdornmentGlyphs(side, GetSysColor(COLOR_BTNTEXT))) >= 0;
    SendMessageW(m_window, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageW(m_window, TB_SETPARENT, reinterpret_cast<WPARAM>(m_rebar), 0);
    SendMessageW(m_window, TB_SETEXTENDEDSTYLE, TBSTYLE_EX_MIXEDBUTTONS, TBSTYLE_EX_MIXEDBUTTONS);
    if (hasImages)
        SendMessageW(m_window, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(m_images.get()));
    int image = 0;
    for (const Adornment& adornment : kAll) {
        TBBUTTON button{};
        button.iBitmap = hasImages ? image++ : I_IMAGENONE;
        button.idCommand = adornment.command;
        button.fsState = TBSTATE_ENABLED;
        button.fsStyle = hasImages ? BTNS_BUTTON : BTNS_SHOWTEXT | BTNS_AUTOSIZE; // then it says what it is
        button.iString = reinterpret_cast<INT_PTR>(adornment.text);
        if ((flags & adornment.flag) &&
            !SendMessageW(m_window, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button)))
            return false;
    }
    return true;
}

int Adornments::Width() const
{
    const LRESULT count = SendMessageW(m_window, TB_BUTTONCOUNT, 0, 0);
    RECT last{};
    if (count > 0)
        SendMessageW(m_window, TB_GETITEMRECT, static_cast<WPARAM>(count - 1),
                     reinterpret_cast<LPARAM>(&last));
    return last.right;
}

void Adornments::Place(int x, int height) const
{
    SetWindowPos(m_window, nullptr, x, 0, Width(), height, SWP_NOZORDER | SWP_NOACTIVATE);
}

void Adornments::OnCommand(int command) const
{
    HWND parent = GetParent(m_rebar);
    if (command != kHelp) {
        PostMessageW(parent, WM_CLOSE, 0, 0);
        return;
    }
    HELPINFO info{};
    info.cbSize = sizeof info;
    info.iContextType = HELPINFO_WINDOW;
    info.iCtrlId = command;
    info.hItemHandle = m_window;
    GetCursorPos(&info.MousePos);
    SendMessageW(parent, WM_HELP, 0, reinterpret_cast<LPARAM>(&info));
}

// As if it lay on the bands.
void Adornments::PaintBackground(HDC dc) const
{
    RECT all{};
    GetClientRect(m_window, &all);
    HTHEME theme = GetWindowTheme(m_rebar);
    if (!theme || FAILED(DrawThemeBackground(theme, dc, 0, 0, &all, nullptr)))
        FillRect(dc, &all, GetSysColorBrush(COLOR_BTNFACE));
}
