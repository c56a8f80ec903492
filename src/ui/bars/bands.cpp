#include "ui/bars/bands.h"

#include <windowsx.h>

#include <algorithm>
#include <utility>

namespace {

// The order of the bands is not stored, so it stays.
constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | CCS_TOP | CCS_NODIVIDER |
                         CCS_NOPARENTALIGN | RBS_VARHEIGHT | RBS_FIXEDORDER;
// What a stored style may say. Above all no stored style hides a band: nothing could bring it back.
constexpr UINT kBandStyles = RBBS_BREAK | RBBS_FIXEDSIZE | RBBS_CHILDEDGE | RBBS_NOVERT | RBBS_FIXEDBMP |
                             RBBS_GRIPPERALWAYS | RBBS_NOGRIPPER;

LONG ClientWidth(HWND window)
{
    RECT client{};
    GetClientRect(window, &client);
    return client.right;
}

UINT ClampWidth(UINT width)
{
    return std::min(width, static_cast<UINT>(GetSystemMetrics(SM_CXVIRTUALSCREEN)));
}

bool IsSameRect(const RECT& a, const RECT& b)
{
    return EqualRect(&a, &b) != FALSE;
}

} // namespace

HWND Bands::Create(HINSTANCE instance, HWND parent, UINT id, DWORD style, HIMAGELIST images)
{
    HWND rebar = CreateWindowExW(WS_EX_TOOLWINDOW, REBARCLASSNAMEW, nullptr, kStyle | style, 0, 0,
                                 static_cast<int>(ClientWidth(parent)), 0, parent,
                                 reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), instance, nullptr);
    if (!rebar)
        return nullptr;
    REBARINFO info{sizeof info, RBIM_IMAGELIST, images};
    if (images)
        SendMessageW(rebar, RB_SETBARINFO, 0, reinterpret_cast<LPARAM>(&info));
    std::unique_ptr<Bands> bands(new Bands(rebar));
    if (!bands->m_hook.Attach(rebar, HandleMessage, bands.get())) {
        DestroyWindow(rebar);
        return nullptr;
    }
    static_cast<void>(bands.release()); // deleted with the window
    return rebar;
}

Bands* Bands::Of(HWND rebar)
{
    return static_cast<Bands*>(WindowHook::SelfOf(rebar, HandleMessage));
}

LRESULT Bands::HandleMessage(void* self, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* bands = static_cast<Bands*>(self);
    if (message != WM_NCDESTROY)
        return bands->OnMessage(message, wParam, lParam);
    delete bands;
    return 0;
}

LRESULT Bands::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case RB_MAXIMIZEBAND: return OnMaximize(wParam, lParam);
    case RB_MINIMIZEBAND: ForgetMaximized(RectOf(static_cast<int>(wParam)).top); break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: OnButtonDown({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}); break;
    case WM_LBUTTONUP: {
        OnButtonUp();
        NoteLayout();
        const LRESULT result = m_hook.Next(message, wParam, lParam);
        OnClicked();
        return result;
    }
    case WM_NOTIFY:
        if (OnNotify(*reinterpret_cast<const NMHDR*>(lParam)))
            return 0;
        break;
    case WM_COMMAND:
        if (!m_adornments || reinterpret_cast<HWND>(lParam) != m_adornments->Window())
            break;
        m_adornments->OnCommand(LOWORD(wParam));
        return 0;
    case WM_SIZE: {
        const LRESULT result = m_hook.Next(message, wParam, lParam);
        OnSized();
        return result;
    }
    default: break;
    }
    return m_hook.Next(message, wParam, lParam);
}

// The bars' notifications go on to the parent, but for those of the menu bar's buttons, which have no meaning
// there.
bool Bands::OnNotify(const NMHDR& notification)
{
    if (m_adornments && notification.hwndFrom == m_adornments->Window())
        return true;
    if (notification.code != TBN_DROPDOWN)
        return false;
    const CommandBar* bar = CommandBar::Of(notification.hwndFrom);
    if (!bar || !bar->Menu())
        return false;
    bar->Menu()->OnDropDown(reinterpret_cast<const NMTOOLBARW*>(&notification)->iItem);
    return true;
}

bool Bands::Add(HINSTANCE instance, const REBARBANDINFOW& info)
{
    std::unique_ptr<CommandBar> bar = CommandBar::Create(instance, m_rebar, [this] { FitToParent(); });
    if (!bar)
        return false;
    REBARBANDINFOW band{};
    band.cbSize = sizeof band;
    band.fMask = RBBIM_STYLE | RBBIM_ID | RBBIM_SIZE | RBBIM_CHILD | RBBIM_CHILDSIZE;
    band.fStyle = info.fMask & RBBIM_STYLE ? info.fStyle & kBandStyles : 0;
    band.wID = info.fMask & RBBIM_ID ? info.wID : 0;
    band.cx = info.fMask & RBBIM_SIZE ? ClampWidth(info.cx) : 0;
    band.hwndChild = bar->Window();
    const SIZE size = bar->Fit(INT_MAX);
    band.cxMinChild = static_cast<UINT>(size.cx);
    band.cyMinChild = static_cast<UINT>(size.cy);
    m_bands.push_back({std::move(bar), false, 0});
    return SendMessageW(m_rebar, RB_INSERTBANDW, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&band)) !=
           0;
}

bool Bands::AddAdornments(HINSTANCE instance, DWORD flags)
{
    if (m_adornments)
        return false;
    m_adornments = Adornments::Create(instance, m_rebar, flags);
    FitToParent();
    return m_adornments != nullptr;
}

CommandBar* Bands::BarOf(int index) const
{
    const Band* band = FindBand(index);
    return band ? band->bar.get() : nullptr;
}

bool Bands::GetRestoreInformation(int index, COMMANDBANDSRESTOREINFO* info) const
{
    const Band* band = FindBand(index);
    if (!band)
        return false;
    const REBARBANDINFOW current = InfoOf(index, RBBIM_ID | RBBIM_STYLE | RBBIM_SIZE);
    info->wID = current.wID;
    info->fStyle = current.fStyle & kBandStyles;
    info->cxRestored = band->isMaximized ? band->restoredWidth : current.cx;
    info->fMaximized = band->isMaximized;
    return true;
}

void Bands::FitToParent()
{
    OnSized();
}

LRESULT Bands::OnMaximize(WPARAM wParam, LPARAM ideal)
{
    const int index = static_cast<int>(wParam);
    Band* band = FindBand(index);
    if (band && !band->isMaximized) {
        ForgetMaximized(RectOf(index).top);
        band->restoredWidth = InfoOf(index, RBBIM_SIZE).cx;
        band->isMaximized = true;
    }
    return m_hook.Next(RB_MAXIMIZEBAND, wParam, ideal);
}

// The end of a drag. Done before the rebar tells the parent of the new layout, which will be asked for then.
void Bands::OnButtonUp()
{
    const std::vector<RECT> rects = Rects();
    if (GetCapture() != m_rebar || std::equal(rects.begin(), rects.end(), m_rectsBeforeDrag.begin(),
                                              m_rectsBeforeDrag.end(), IsSameRect))
        return;
    for (Band& band : m_bands)
        band.isMaximized = false;
    RestoreOrder();
    KeepWidths();
    FitToParent();
}

void Bands::OnButtonDown(POINT point)
{
    m_rectsBeforeDrag = Rects();
    RBHITTESTINFO hit{};
    hit.pt = point;
    SendMessageW(m_rebar, RB_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    m_pressed = hit.flags == RBHT_GRABBER || hit.flags == RBHT_CAPTION ? hit.iBand : -1;
}

LONG Bands::WidthOf(int index) const
{
    const RECT rect = RectOf(index);
    return rect.right - rect.left;
}

void Bands::NoteLayout()
{
    m_widthBeforeClick = WidthOf(m_pressed);
    m_restoredBeforeClick = InfoOf(m_pressed, RBBIM_SIZE).cx;
}

// A click on a gripper may maximise the band, or bring it back, within the control. The parent has been told
// of the new layout by then, as of one that was dragged, and is told once more.
void Bands::OnClicked()
{
    Band* band = FindBand(std::exchange(m_pressed, -1));
    const int index = band ? IndexOf(*band->bar) : -1;
    const LONG width = WidthOf(index);
    if (!band || width == m_widthBeforeClick)
        return;
    const bool wasMaximized = band->isMaximized;
    ForgetMaximized(RectOf(index).top);
    band->isMaximized = width > m_widthBeforeClick;
    if (band->isMaximized && !wasMaximized)
        band->restoredWidth = m_restoredBeforeClick;
    NMHDR changed{m_rebar, static_cast<UINT_PTR>(GetDlgCtrlID(m_rebar)),
                  static_cast<UINT>(RBN_LAYOUTCHANGED)};
    SendMessageW(GetParent(m_rebar), WM_NOTIFY, changed.idFrom, reinterpret_cast<LPARAM>(&changed));
}

// A change of the bars' height comes back here while the width is being settled.
void Bands::OnSized()
{
    if (!m_sizing) {
        m_sizing = true;
        AlignToParent();
        FitBars();
        Remaximize();
        m_sizing = false;
    }
    PlaceAdornments();
}

const Bands::Band* Bands::FindBand(int index) const
{
    HWND bar = InfoOf(index, RBBIM_CHILD).hwndChild;
    for (const Band& band : m_bands)
        if (bar && band.bar->Window() == bar)
            return &band;
    return nullptr;
}

Bands::Band* Bands::FindBand(int index)
{
    const Bands& self = *this;
    return const_cast<Band*>(self.FindBand(index));
}

// All zero when there is no such band.
REBARBANDINFOW Bands::InfoOf(int index, UINT mask) const
{
    REBARBANDINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = mask;
    if (index >= 0)
        SendMessageW(m_rebar, RB_GETBANDINFOW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&info));
    return info;
}

bool Bands::SetInfo(int index, REBARBANDINFOW info)
{
    info.cbSize = sizeof info;
    return SendMessageW(m_rebar, RB_SETBANDINFOW, static_cast<WPARAM>(index),
                        reinterpret_cast<LPARAM>(&info)) != 0;
}

int Bands::IndexOf(const CommandBar& bar) const
{
    for (int i = 0; i < static_cast<int>(m_bands.size()); ++i)
        if (InfoOf(i, RBBIM_CHILD).hwndChild == bar.Window())
            return i;
    return -1;
}

RECT Bands::RectOf(int index) const
{
    RECT rect{};
    SendMessageW(m_rebar, RB_GETRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rect));
    return rect;
}

std::vector<RECT> Bands::Rects() const
{
    std::vector<RECT> rects;
    for (const Band& band : m_bands)
        rects.push_back(RectOf(IndexOf(*band.bar)));
    return rects;
}

// The rebar ends where the adornments begin. A minimised parent has no width to align to.
void Bands::AlignToParent()
{
    const LONG parentWidth = ClientWidth(GetParent(m_rebar));
    if (parentWidth <= 0)
        return;
    const LONG adornmentsWidth = m_adornments ? m_adornments->Width() : 0;
    const LONG width = std::max(parentWidth - adornmentsWidth, 0L);
    RECT own{};
    GetWindowRect(m_rebar, &own);
    MapWindowPoints(nullptr, GetParent(m_rebar), reinterpret_cast<POINT*>(&own), 2);
    if (own.left == 0 && own.top == 0 && own.right == width)
        return;
    SetWindowPos(m_rebar, nullptr, 0, 0, static_cast<int>(width), static_cast<int>(own.bottom - own.top),
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void Bands::FitBars()
{
    const LONG width = ClientWidth(m_rebar);
    if (width <= 0)
        return;
    for (const Band& band : m_bands)
        FitBar(*band.bar, width);
}

// All of a bar's buttons are always in sight: a band is never narrower than they are, and where the window
// is, they go into several rows.
void Bands::FitBar(CommandBar& bar, LONG width)
{
    const int index = IndexOf(bar);
    RECT borders{};
    SendMessageW(m_rebar, RB_GETBANDBORDERS, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&borders));
    const LONG available = std::max(width - borders.left - borders.right, 1L);
    const SIZE size = bar.Fit(static_cast<int>(available));
    REBARBANDINFOW info{};
    info.fMask = RBBIM_CHILDSIZE | RBBIM_IDEALSIZE;
    info.cxMinChild = static_cast<UINT>(std::min(size.cx, available));
    info.cyMinChild = static_cast<UINT>(size.cy);
    info.cxIdeal = info.cxMinChild;
    const REBARBANDINFOW current = InfoOf(index, info.fMask);
    if (current.cxMinChild != info.cxMinChild || current.cyMinChild != info.cyMinChild)
        SetInfo(index, info);
}

void Bands::Remaximize()
{
    for (const Band& band : m_bands)
        if (band.isMaximized)
            m_hook.Next(RB_MAXIMIZEBAND, static_cast<WPARAM>(IndexOf(*band.bar)), FALSE);
}

void Bands::ForgetMaximized(LONG rowTop)
{
    for (Band& band : m_bands)
        if (RectOf(IndexOf(*band.bar)).top == rowTop)
            band.isMaximized = false;
}

// A rebar that lets bands be dragged past each other in spite of its style: the rows that the drag made stay,
// the order does not.
void Bands::RestoreOrder()
{
    const std::vector<RECT> rects = Rects();
    bool moved = false;
    for (size_t i = 0; i < m_bands.size(); ++i) {
        const int index = IndexOf(*m_bands[i].bar);
        moved = moved || index != static_cast<int>(i);
        SendMessageW(m_rebar, RB_MOVEBAND, static_cast<WPARAM>(index), static_cast<LPARAM>(i));
    }
    if (!moved)
        return;
    for (size_t i = 0; i < m_bands.size(); ++i)
        SetRowStart(static_cast<int>(i), i > 0 && rects[i].top != rects[i - 1].top);
    // A moved band alone is not laid out anew.
    SendMessageW(m_rebar, WM_SIZE, 0, 0);
}

void Bands::SetRowStart(int index, bool startsRow)
{
    REBARBANDINFOW info = InfoOf(index, RBBIM_STYLE);
    info.fStyle = startsRow ? info.fStyle | RBBS_BREAK : info.fStyle & ~static_cast<UINT>(RBBS_BREAK);
    SetInfo(index, info);
}

// What a drag made of the bands is what they are asked to be from now on.
void Bands::KeepWidths()
{
    const std::vector<RECT> rects = Rects();
    for (size_t i = 0; i < m_bands.size(); ++i) {
        REBARBANDINFOW info{};
        info.fMask = RBBIM_SIZE;
        info.cx = static_cast<UINT>(rects[i].right - rects[i].left);
        SetInfo(IndexOf(*m_bands[i].bar), info);
    }
}

void Bands::PlaceAdornments() const
{
    if (!m_adornments)
        return;
    RECT own{};
    GetWindowRect(m_rebar, &own);
    m_adornments->Place(static_cast<int>(ClientWidth(GetParent(m_rebar))) - m_adornments->Width(),
                        static_cast<int>(own.bottom - own.top));
}
