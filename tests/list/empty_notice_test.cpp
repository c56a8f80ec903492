#include <algorithm>

#include "support/entry_list_fixture.h"
#include "ui/screen/scale.h"

namespace {

// The pixels of a window as they are on the screen.
std::vector<DWORD> Capture(HWND window)
{
    RECT rect{};
    GetClientRect(window, &rect);
    HDC screen = GetDC(window);
    HDC memory = CreateCompatibleDC(screen);
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, rect.right, -rect.bottom, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    HBITMAP bitmap = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ old = SelectObject(memory, bitmap);
    EXPECT_TRUE(BitBlt(memory, 0, 0, rect.right, rect.bottom, screen, 0, 0, SRCCOPY));
    GdiFlush();
    const auto* pixels = static_cast<const DWORD*>(bits);
    std::vector<DWORD> captured(pixels,
                                pixels + static_cast<size_t>(rect.right) * static_cast<size_t>(rect.bottom));
    for (DWORD& pixel : captured)
        pixel &= 0xFFFFFF;
    SelectObject(memory, old);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(window, screen);
    return captured;
}

DWORD PixelOf(COLORREF color)
{
    return (DWORD{GetRValue(color)} << 16) | (DWORD{GetGValue(color)} << 8) | GetBValue(color);
}

class EmptyNoticeTest : public EntryListTest {
  protected:
    RECT Place() const
    {
        RECT rect{};
        GetClientRect(Notice(), &rect);
        MapWindowPoints(Notice(), Handle(), reinterpret_cast<POINT*>(&rect), 2);
        return rect;
    }

    // Covers the list from 20 pixels below its top, which leave room for the header.
    void ExpectInPlace() const
    {
        RECT client{};
        GetClientRect(Handle(), &client);
        const RECT place = Place();
        EXPECT_EQ(place.left, 0);
        EXPECT_EQ(place.top, Scale(20));
        EXPECT_EQ(place.right, client.right);
        EXPECT_EQ(place.bottom, client.bottom);
    }
};

TEST_F(EmptyNoticeTest, AnEmptyListSaysSo)
{
    CreateList();
    ASSERT_NE(Notice(), nullptr);
    EXPECT_EQ(WindowText(Notice()), L"<No Entries to Show>");
    const DWORD wanted = WS_CHILD | WS_VISIBLE | SS_CENTER;
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongW(Notice(), GWL_STYLE)) & wanted, wanted);
    EXPECT_EQ(GetWindowLongW(Notice(), GWL_STYLE) & SS_TYPEMASK, SS_CENTER);
    ExpectInPlace();
}

TEST_F(EmptyNoticeTest, GoesAtTheFirstRefreshWithRows)
{
    CreateList();
    HWND notice = Notice();
    const CEOID id = AddEntry(1, L"x");
    EXPECT_EQ(Notice(), notice);
    m_list.Refresh();
    EXPECT_EQ(Notice(), nullptr);
    EXPECT_FALSE(IsWindow(notice));
    Own().Journal().DeleteRecord(id);
    m_list.Refresh();
    notice = Notice();
    EXPECT_NE(notice, nullptr);
    m_list.Refresh();
    EXPECT_EQ(Notice(), notice); // the same one
}

TEST_F(EmptyNoticeTest, FollowsTheList)
{
    CreateList();
    m_list.Place(100);
    ExpectInPlace();
    SetWindowPos(m_parent.Handle(), nullptr, 0, 0, 400, 300, SWP_NOMOVE | SWP_NOZORDER);
    m_list.Place(40);
    ExpectInPlace();
}

TEST_F(EmptyNoticeTest, StaysBelowAHighHeader)
{
    CreateList();
    const UniqueFont font(
        CreateFontW(60, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma"));
    ASSERT_TRUE(font);
    SendMessageW(Handle(), WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
    m_list.Place(0);
    RECT header{};
    GetClientRect(Header(), &header);
    ASSERT_GT(header.bottom, 40);
    EXPECT_EQ(Place().top, header.bottom);
}

// The system's colours for windows, changed while it lives.
class ScopedWindowColors {
  public:
    ScopedWindowColors(COLORREF back, COLORREF text)
    {
        const COLORREF colors[]{back, text};
        EXPECT_TRUE(SetSysColors(2, m_which, colors));
    }
    ~ScopedWindowColors() { SetSysColors(2, m_which, m_before); }
    ScopedWindowColors(const ScopedWindowColors&) = delete;
    ScopedWindowColors& operator=(const ScopedWindowColors&) = delete;

  private:
    const int m_which[2]{COLOR_WINDOW, COLOR_WINDOWTEXT};
    const COLORREF m_before[2]{GetSysColor(COLOR_WINDOW), GetSysColor(COLOR_WINDOWTEXT)};
};

TEST_F(EmptyNoticeTest, ReadsOnTheListsBackground)
{
    const ScopedWindowColors colors(RGB(0xFF, 0xF0, 0x80), RGB(0x20, 0x00, 0x60));
    CreateList();
    Paint();
    PumpMessages();
    const std::vector<DWORD> pixels = Capture(Notice());
    const DWORD back = PixelOf(GetSysColor(COLOR_WINDOW));
    const DWORD text = PixelOf(GetSysColor(COLOR_WINDOWTEXT));
    EXPECT_EQ(pixels.front(), back);
    EXPECT_EQ(pixels.back(), back);
    EXPECT_GT(std::count(pixels.begin(), pixels.end(), text), 30);
    EXPECT_EQ(std::count(pixels.begin(), pixels.end(), 0xFFFFFF), 0);
    EXPECT_EQ(SendMessageW(Notice(), WM_GETFONT, 0, 0), SendMessageW(Handle(), WM_GETFONT, 0, 0));
}

TEST_F(EmptyNoticeTest, NeverCatchesTheFocus)
{
    CreateList();
    SetFocus(m_parent.Handle());
    RECT rect{};
    GetWindowRect(Notice(), &rect);
    const POINT middle{(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    EXPECT_EQ(SendMessageW(Notice(), WM_NCHITTEST, 0, MAKELPARAM(middle.x, middle.y)), HTTRANSPARENT);
    EXPECT_EQ(GetWindowLongW(Notice(), GWL_STYLE) & WS_TABSTOP, 0);
    EXPECT_NE(GetFocus(), Notice());
}

TEST_F(EmptyNoticeTest, StaysWholeUnderScrollingAndRepainting)
{
    CreateList();
    Paint();
    const std::vector<DWORD> before = Capture(Notice());
    ListView_Scroll(Handle(), 60, 0);
    PumpMessages();
    EXPECT_EQ(Capture(Notice()), before);
    ListView_Scroll(Handle(), -30, 0);
    PumpMessages();
    EXPECT_EQ(Capture(Notice()), before);
    InvalidateRect(Handle(), nullptr, TRUE);
    PumpMessages();
    EXPECT_EQ(Capture(Notice()), before);
}

} // namespace
