#include "help/print.h"

#include <cderr.h>
#include <commdlg.h>

#include <algorithm>

#include "ui/hourglass.h"
#include "ui/screen/scoped.h"
#include "util/owners.h"

namespace help {

namespace {

constexpr int kPointsPerInch = 72;

using UniqueDc = UniqueHandle<HDC, DeleteDC>;

// The fonts of a device, made when first needed.
class PrintFonts {
  public:
    explicit PrintFonts(HDC dc) : m_dc(dc) {}

    HFONT Of(const PrintLook& look)
    {
        for (const auto& [known, font] : m_fonts)
            if (known == look)
                return font.get();
        m_fonts.emplace_back(look, Make(look));
        return m_fonts.back().second.get();
    }
    PrintSize Measure(const std::wstring& text, const PrintLook& look)
    {
        const ScopedSelectObject selected(m_dc, Of(look));
        SIZE size{};
        GetTextExtentPoint32W(m_dc, text.c_str(), static_cast<int>(text.size()), &size);
        return {static_cast<int>(size.cx), std::max(1, static_cast<int>(size.cy))};
    }

  private:
    UniqueFont Make(const PrintLook& look) const
    {
        const int height = -MulDiv(look.points, GetDeviceCaps(m_dc, LOGPIXELSY), kPointsPerInch);
        return UniqueFont(CreateFontW(height, 0, 0, 0, look.isBold ? FW_BOLD : FW_NORMAL, look.isItalic,
                                      FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                                      DEFAULT_QUALITY, DEFAULT_PITCH,
                                      look.isCode ? L"Courier New" : L"Tahoma"));
    }

    HDC m_dc;
    std::vector<std::pair<PrintLook, UniqueFont>> m_fonts;
};

bool PrintPage(HDC dc, PrintFonts& fonts, const PlacedText* begin, const PlacedText* end)
{
    if (StartPage(dc) <= 0)
        return false;
    SetBkMode(dc, TRANSPARENT);
    for (const PlacedText* text = begin; text != end; ++text) {
        const ScopedSelectObject selected(dc, fonts.Of(text->look));
        TextOutW(dc, text->x, text->y, text->text.c_str(), static_cast<int>(text->text.size()));
    }
    return EndPage(dc) > 0;
}

bool PrintPages(HDC dc, PrintFonts& fonts, const std::vector<PlacedText>& placed)
{
    const PlacedText* begin = placed.data();
    const PlacedText* const last = begin + placed.size();
    while (begin != last) {
        const PlacedText* end =
            std::find_if(begin, last, [&](const PlacedText& text) { return text.page != begin->page; });
        if (!PrintPage(dc, fonts, begin, end))
            return false;
        begin = end;
    }
    return true;
}

// A printer whose output is a file asks for its name when the document begins. Cancel there is told by the
// system as an error, and by some drivers as the job's number.
PrintEnd EndOf(int job, DWORD error)
{
    return job == SP_APPABORT || job == SP_USERABORT || error == ERROR_CANCELLED ||
                   error == ERROR_PRINT_CANCELLED
               ? PrintEnd::Cancelled
               : PrintEnd::Failed;
}

void SayFailure(HWND owner, const std::wstring& title)
{
    MessageBoxW(owner, L"The help could not be printed.", title.c_str(), MB_OK | MB_ICONEXCLAMATION);
}

} // namespace

PrintArea AreaOf(HDC dc)
{
    const int inchX = std::max(1, GetDeviceCaps(dc, LOGPIXELSX)),
              inchY = std::max(1, GetDeviceCaps(dc, LOGPIXELSY));
    const int marginX = inchX * 3 / 4, marginY = inchY * 3 / 4;
    // The device's own origin lies within the edge of the paper that it cannot reach.
    const int left = std::max(0, marginX - GetDeviceCaps(dc, PHYSICALOFFSETX));
    const int top = std::max(0, marginY - GetDeviceCaps(dc, PHYSICALOFFSETY));
    PrintArea area;
    area.left = left;
    area.top = top;
    area.width = std::max(1, GetDeviceCaps(dc, HORZRES) - 2 * left);
    area.height = std::max(1, GetDeviceCaps(dc, VERTRES) - 2 * top);
    area.inch = inchX;
    return area;
}

PrintEnd PrintBlocks(HDC dc, const std::wstring& title, const std::vector<Block>& blocks,
                     const wchar_t* output)
{
    PrintFonts fonts(dc);
    const std::vector<PlacedText> placed =
        LayOut(blocks, AreaOf(dc),
               [&](const std::wstring& text, const PrintLook& look) { return fonts.Measure(text, look); });
    DOCINFOW document{};
    document.cbSize = sizeof document;
    document.lpszDocName = title.c_str();
    document.lpszOutput = output;
    if (const int job = StartDocW(dc, &document); job <= 0)
        return EndOf(job, GetLastError());
    if (PrintPages(dc, fonts, placed))
        return EndDoc(dc) > 0 ? PrintEnd::Printed : PrintEnd::Failed;
    AbortDoc(dc);
    return PrintEnd::Failed;
}

void AskAndPrint(HWND owner, const std::wstring& title, const std::vector<Block>& blocks)
{
    PRINTDLGW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.Flags = PD_RETURNDC | PD_NOPAGENUMS | PD_NOSELECTION | PD_USEDEVMODECOPIESANDCOLLATE;
    const bool isChosen = PrintDlgW(&dialog) != FALSE;
    const DWORD error = isChosen ? 0 : CommDlgExtendedError();
    GlobalFree(dialog.hDevMode);
    GlobalFree(dialog.hDevNames);
    const UniqueDc dc(isChosen ? dialog.hDC : nullptr);
    // That there is no printer the dialog says itself; a person who cancels knows.
    if (!isChosen && (error == 0 || error == PDERR_NODEFAULTPRN))
        return;
    const ScopedHourglass work;
    const wchar_t* const output = dialog.Flags & PD_PRINTTOFILE ? L"FILE:" : nullptr;
    if (!dc || PrintBlocks(dc.get(), title, blocks, output) == PrintEnd::Failed)
        SayFailure(owner, title);
}

} // namespace help
