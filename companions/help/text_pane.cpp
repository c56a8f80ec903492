#include "help/text_pane.h"

#include <commctrl.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "help/page/rtf_writer.h"
#include "help/page/table_columns.h"
#include "ui/screen/scale.h"
#include "ui/screen/scoped.h"

namespace help {

namespace {

constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_READONLY |
                         ES_AUTOVSCROLL | ES_NOHIDESEL;

struct RtfSource {
    const std::string& rtf;
    size_t place = 0;
};

DWORD CALLBACK ReadRtf(DWORD_PTR cookie, LPBYTE buffer, LONG size, LONG* read)
{
    auto* source = reinterpret_cast<RtfSource*>(cookie);
    const size_t part =
        std::min(static_cast<size_t>(std::max<LONG>(size, 0)), source->rtf.size() - source->place);
    std::memcpy(buffer, source->rtf.data() + source->place, part);
    source->place += part;
    *read = static_cast<LONG>(part);
    return 0;
}

CHARRANGE RangeOf(const TextRange& range)
{
    return {static_cast<LONG>(range.begin), static_cast<LONG>(range.end)};
}

// A box that is gone to by Tab is selected whole, to be typed over. This text is to be read on from its
// caret.
LRESULT CALLBACK WithoutSelectingAll(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                     DWORD_PTR)
{
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(window, WithoutSelectingAll, id);
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    return message == WM_GETDLGCODE ? result & ~LRESULT{DLGC_HASSETSEL} : result;
}

// The control is in a library of its own, a newer and an older one.
HWND MakeControl(HWND parent, int id)
{
    const auto create = [&](const wchar_t* windowClass) {
        return CreateWindowExW(WS_EX_CLIENTEDGE, windowClass, L"", kStyle, 0, 0, 0, 0, parent,
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr),
                               nullptr);
    };
    const auto load = [](const wchar_t* library) {
        return LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    };
    if (load(L"msftedit.dll"))
        if (HWND control = create(MSFTEDIT_CLASS))
            return control;
    return load(L"riched20.dll") ? create(L"RichEdit20W") : nullptr;
}

} // namespace

bool TextPane::Create(HWND parent, int id)
{
    m_window = MakeControl(parent, id);
    if (!m_window)
        return false;
    m_dpi = DpiOf(m_window);
    SetWindowSubclass(m_window, WithoutSelectingAll, 1, 0);
    SendMessageW(m_window, EM_EXLIMITTEXT, 0, 0x7FFFFFFE);
    SendMessageW(m_window, EM_SETEVENTMASK, 0, ENM_LINK);
    return true;
}

void TextPane::Show(const std::vector<Block>& blocks)
{
    m_blocks = blocks;
    m_text = TextOf(blocks);
    Load();
    Select({0, 0});
    SendMessageW(m_window, WM_VSCROLL, SB_TOP, 0);
}

void TextPane::Load()
{
    const int zoom = Zoom();
    m_widestColumn = WidestColumnNow();
    const std::string rtf = RtfOf(m_blocks, m_widestColumn);
    {
        const ScopedRedrawPause pause(m_window);
        RtfSource source{rtf};
        EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&source), 0, ReadRtf};
        SendMessageW(m_window, EM_STREAMIN, SF_RTF, reinterpret_cast<LPARAM>(&stream));
        MarkLinks();
    }
    SetZoom(zoom);
}

void TextPane::Fit()
{
    if (m_blocks.empty() || WidestColumnNow() == m_widestColumn)
        return;
    const TextRange selected = Selection();
    const size_t first = FirstVisible();
    Load();
    Select(selected);
    ScrollTo(first);
}

int TextPane::WidestColumnNow() const
{
    RECT client{};
    GetClientRect(m_window, &client);
    return WidestColumn(MulDiv(client.right, kTwipsPerInch * kNormalZoom, SystemDpi() * ControlsZoom()));
}

void TextPane::MarkLinks()
{
    CHARFORMAT2W format{};
    format.cbSize = sizeof format;
    format.dwMask = CFM_LINK;
    format.dwEffects = CFE_LINK;
    for (const TextLink& link : m_text.links) {
        Select(link.range);
        SendMessageW(m_window, EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
    }
}

void TextPane::Select(const TextRange& range)
{
    CHARRANGE selected = RangeOf(range);
    SendMessageW(m_window, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&selected));
    SendMessageW(m_window, EM_SCROLLCARET, 0, 0);
}

TextRange TextPane::Selection() const
{
    CHARRANGE selected{};
    SendMessageW(m_window, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selected));
    return {static_cast<size_t>(std::max<LONG>(selected.cpMin, 0)),
            static_cast<size_t>(std::max<LONG>(selected.cpMax, 0))};
}

void TextPane::GoTo(size_t place)
{
    Select({place, place});
    ScrollTo(place);
}

// Wine scrolls by lines without what is between paragraphs, and so falls short: it gets there in a few steps.
void TextPane::ScrollTo(size_t place)
{
    const auto line = SendMessageW(m_window, EM_EXLINEFROMCHAR, 0, static_cast<LPARAM>(place));
    constexpr int kMostSteps = 10;
    LRESULT before = -1, first = SendMessageW(m_window, EM_GETFIRSTVISIBLELINE, 0, 0);
    for (int step = 0; step < kMostSteps && first != line && first != before; ++step) {
        SendMessageW(m_window, EM_LINESCROLL, 0, line - first);
        before = std::exchange(first, SendMessageW(m_window, EM_GETFIRSTVISIBLELINE, 0, 0));
    }
}

size_t TextPane::FirstVisible() const
{
    const auto line = SendMessageW(m_window, EM_GETFIRSTVISIBLELINE, 0, 0);
    return static_cast<size_t>(
        std::max<LRESULT>(SendMessageW(m_window, EM_LINEINDEX, static_cast<WPARAM>(line), 0), 0));
}

// What the control has: it shows texts at the system's resolution.
int TextPane::ControlsZoom() const
{
    int numerator = 0, denominator = 0;
    SendMessageW(m_window, EM_GETZOOM, reinterpret_cast<WPARAM>(&numerator),
                 reinterpret_cast<LPARAM>(&denominator));
    return numerator > 0 && denominator > 0 ? MulDiv(numerator, kNormalZoom, denominator) : kNormalZoom;
}

int TextPane::Zoom() const
{
    return MulDiv(ControlsZoom(), SystemDpi(), m_dpi);
}

void TextPane::SetZoom(int percent)
{
    const int zoom = MulDiv(std::clamp(percent, kSmallestZoom, kLargestZoom), m_dpi, SystemDpi());
    if (zoom != ControlsZoom()) // setting it lays the text out anew
        SendMessageW(m_window, EM_SETZOOM, static_cast<WPARAM>(zoom), kNormalZoom);
}

void TextPane::OnResolutionChanged()
{
    const int zoom = Zoom();
    m_dpi = DpiOf(m_window);
    SetZoom(zoom);
}

} // namespace help
