// The window of the help: its controls, the keyboard, what it keeps and what it is asked by other programs.
#include "help/help_window.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "help/help_file.h"
#include "help/resource.h"
#include "help_window_fixture.h"
#include "support/resolution.h"
#include "support/test_windows.h"
#include "ui/screen/scale.h"
#include "ui/screen/work_area.h"

namespace help {
namespace {

TEST_F(HelpWindowTest, CommandsWithNothingToWorkOnAreGrey)
{
    Open(kPage);
    const auto isGrey = [this](UINT command) {
        SendMessageW(m_window->Handle(), WM_INITMENUPOPUP, 0, 0);
        return (GetMenuState(GetMenu(m_window->Handle()), command, MF_BYCOMMAND) & MF_GRAYED) != 0;
    };
    EXPECT_TRUE(isGrey(CMD_BACK) && isGrey(CMD_FORWARD) && isGrey(CMD_PREVIOUS_TOPIC));
    EXPECT_FALSE(isGrey(CMD_NEXT_TOPIC) || isGrey(CMD_PRINT_TOPIC) || isGrey(CMD_PRINT_ALL));
    Command(CMD_NEXT_TOPIC);
    Command(CMD_NEXT_TOPIC);
    EXPECT_TRUE(isGrey(CMD_NEXT_TOPIC));
    EXPECT_FALSE(isGrey(CMD_BACK) || isGrey(CMD_PREVIOUS_TOPIC));
    m_window->Show(RequestOfText(L"#Absent"));
    EXPECT_TRUE(isGrey(CMD_PRINT_TOPIC) && isGrey(CMD_NEXT_TOPIC) && isGrey(CMD_PREVIOUS_TOPIC));
    EXPECT_FALSE(isGrey(CMD_PRINT_ALL) || isGrey(CMD_FIRST_TOPIC));
    m_window->Show(RequestOfText(L"C:\\absent.htm"));
    EXPECT_TRUE(isGrey(CMD_PRINT_ALL) && isGrey(CMD_FIRST_TOPIC) && isGrey(CMD_BACK));
}

TEST_F(HelpWindowTest, BeginsAtTheRightOfTheScreen)
{
    Open(kPage);
    RECT place{};
    GetWindowRect(m_window->Handle(), &place);
    EXPECT_GT(place.right, WorkArea().right - 20);
}

TEST_F(HelpWindowTest, ExitClosesTheWindow)
{
    Open(kPage);
    Command(CMD_EXIT);
    MSG closing{};
    EXPECT_TRUE(PeekMessageW(&closing, m_window->Handle(), WM_CLOSE, WM_CLOSE, PM_REMOVE));
}

TEST_F(HelpWindowTest, TheControlKnowsWhatIsALink)
{
    Open(kPage);
    for (const auto& [place, isLink] : {std::pair{8, false}, {24, true}}) {
        const CHARRANGE range{place, place + 1};
        SendMessageW(Pane(), EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
        CHARFORMAT2W format{};
        format.cbSize = sizeof format;
        SendMessageW(Pane(), EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
        EXPECT_EQ((format.dwEffects & CFE_LINK) != 0, isLink) << place;
    }
}

PARAFORMAT2 ParagraphAt(HWND pane, LONG place)
{
    const CHARRANGE range{place, place};
    SendMessageW(pane, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
    PARAFORMAT2 format{};
    format.cbSize = sizeof format;
    SendMessageW(pane, EM_GETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&format));
    return format;
}

CHARFORMAT2W CharacterAt(HWND pane, LONG place)
{
    const CHARRANGE range{place, place + 1};
    SendMessageW(pane, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
    CHARFORMAT2W format{};
    format.cbSize = sizeof format;
    SendMessageW(pane, EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
    return format;
}

// In twips: a paragraph's first line begins at 120, an item's text at 380, a row's second cell at its column.
TEST_F(HelpWindowTest, EveryParagraphHasItsOwnFormat)
{
    const auto place = [this](const wchar_t* text) {
        return static_cast<LONG>(m_window->Text().Text().text.find(text));
    };
    Open("<h1>Head</h1><p>words<ul><li>item<ul><li>inner</ul></ul><table><tr><td>cell<td>other</table>"
         "<p>last");
    const struct {
        const wchar_t* text;
        LONG left;    // of the first line
        LONG hanging; // of the others beyond that
    } wanted[] = {{L"Head", 120, 0},    {L"words", 120, 0},   {L"item", 120, 260},
                  {L"inner", 480, 260}, {L"cell", 120, 1200}, {L"last", 120, 0}};
    for (const auto& paragraph : wanted) {
        const PARAFORMAT2 format = ParagraphAt(Pane(), place(paragraph.text));
        EXPECT_EQ(format.dxStartIndent, paragraph.left) << paragraph.text;
        EXPECT_EQ(format.dxOffset, paragraph.hanging) << paragraph.text;
    }
    EXPECT_EQ(ParagraphAt(Pane(), place(L"item")).rgxTabs[0] & 0xFFFFFF, 380);
    EXPECT_EQ(ParagraphAt(Pane(), place(L"cell")).rgxTabs[0] & 0xFFFFFF, 1320);
    EXPECT_EQ(PaneText().substr(PaneText().size() - 4), L"last") << "no empty paragraph is left behind it";
}

// Two inches and more of a pane of four, but not of one of two.
TEST_F(HelpWindowTest, ColumnsOfTablesFitThePane)
{
    Open("<h1>Head</h1><p>x<table><tr><td>0123456789abcdef0123456<td>other</table><p><a href=#y>link</a>");
    const auto row = static_cast<LONG>(m_window->Text().Text().text.find(L"0123"));
    const std::wstring inOneLine = L"0123456789abcdef0123456\tother",
                       inTwo = L"0123456789abcdef0123456 other";
    const auto resize = [this](int width) {
        SetWindowPos(m_window->Handle(), nullptr, 0, 0, Scale(width), Scale(300), SWP_NOMOVE | SWP_NOZORDER);
    };
    resize(800);
    EXPECT_NE(PaneText().find(inOneLine), std::wstring::npos);
    EXPECT_EQ(ParagraphAt(Pane(), row).dxOffset, 2500);
    KeyInText(VK_TAB);
    EXPECT_EQ(Selected(), L"link");
    resize(320);
    EXPECT_NE(PaneText().find(inTwo), std::wstring::npos);
    EXPECT_EQ(Selected(), L"link");
    EXPECT_LT(ParagraphAt(Pane(), row).dxOffset, 1500);
    resize(800);
    EXPECT_NE(PaneText().find(inOneLine), std::wstring::npos);
    for (int step = 0; step < 8; ++step)
        Command(CMD_ZOOM_IN);
    EXPECT_NE(PaneText().find(inTwo), std::wstring::npos) << "larger text leaves less room";
    Command(CMD_ZOOM_NORMAL);
    EXPECT_NE(PaneText().find(inOneLine), std::wstring::npos);
}

TEST_F(HelpWindowTest, WordsLookAsTheyAreMarked)
{
    Open("<h1>Head</h1><h2>Second</h2>");
    EXPECT_EQ(CharacterAt(Pane(), 0).yHeight, 320);
    EXPECT_TRUE(CharacterAt(Pane(), 0).dwEffects & CFE_BOLD);
    Close();
    Open("<p>a<b>b</b><i>i</i><code>c</code><a href=#x>l</a>\xE4\xBA\xBA{}\\</p><table><tr><th>t<th>u</table>"
         "<pre>p</pre>");
    EXPECT_EQ(PaneText(), L"abicl\u4EBA{}\\\rt\tu\rp");
    EXPECT_EQ(CharacterAt(Pane(), 0).yHeight, 200);
    EXPECT_FALSE(CharacterAt(Pane(), 0).dwEffects & (CFE_BOLD | CFE_ITALIC | CFE_LINK));
    EXPECT_TRUE(CharacterAt(Pane(), 1).dwEffects & CFE_BOLD);
    EXPECT_TRUE(CharacterAt(Pane(), 2).dwEffects & CFE_ITALIC);
    EXPECT_STREQ(CharacterAt(Pane(), 3).szFaceName, L"Courier New");
    EXPECT_STREQ(CharacterAt(Pane(), 0).szFaceName, L"Tahoma");
    EXPECT_TRUE(CharacterAt(Pane(), 4).dwEffects & CFE_UNDERLINE);
    EXPECT_TRUE(CharacterAt(Pane(), 10).dwEffects & CFE_BOLD) << "a title of a table";
    EXPECT_STREQ(CharacterAt(Pane(), 14).szFaceName, L"Courier New");
}

TEST_F(HelpWindowTest, EnterPressesTheButtonThatHasTheKeyboard)
{
    Open(kPage);
    Command(CMD_NEXT_TOPIC);
    Command(CMD_NEXT_TOPIC);
    SetFocus(Item(IDC_BACK));
    Command(IDOK);
    EXPECT_EQ(Title(), L"Second");
    Command(IDOK);
    EXPECT_EQ(Title(), L"First");
    EXPECT_EQ(GetFocus(), Pane()) << "a button that is grey cannot keep the keyboard";
    SetFocus(Item(IDC_FORWARD));
    Command(IDOK);
    EXPECT_EQ(Title(), L"Second");
}

// What has the keyboard in a window that comes to the front again.
TEST_F(HelpWindowTest, TheKeyboardComesBackToWhereItWas)
{
    Open(kPage);
    HWND window = m_window->Handle();
    SetFocus(Item(IDC_CONTENTS));
    SendMessageW(window, WM_ACTIVATE, WA_INACTIVE, 0);
    SetFocus(Item(IDC_FIND));
    SendMessageW(window, WM_SETFOCUS, 0, 0);
    EXPECT_EQ(GetFocus(), Item(IDC_CONTENTS));
    Command(CMD_NEXT_TOPIC);
    SetFocus(Item(IDC_BACK));
    SendMessageW(window, WM_ACTIVATE, WA_INACTIVE, 0);
    SetFocus(Item(IDC_CONTENTS));
    Command(CMD_BACK);
    SendMessageW(window, WM_SETFOCUS, 0, 0);
    EXPECT_EQ(GetFocus(), Pane()) << "the button is grey by now";
}

// A screen reader takes the label before a control for its name.
TEST_F(HelpWindowTest, EveryControlHasAName)
{
    Open(kPage);
    EXPECT_EQ(WindowText(Item(IDC_BACK)), L"\u2190 Back");
    EXPECT_EQ(WindowText(Item(IDC_FORWARD)), L"Forward \u2192");
    for (const auto& [id, name] :
         {std::pair{IDC_FIND, L"Fi&nd:"}, {IDC_CONTENTS, L"Contents"}, {IDC_TEXT, L"Topic"}}) {
        HWND label = GetWindow(Item(id), GW_HWNDPREV);
        EXPECT_EQ(WindowText(label), name);
        wchar_t windowClass[20] = L"";
        GetClassNameW(label, windowClass, 20);
        EXPECT_STREQ(windowClass, L"Static");
        EXPECT_TRUE(IsWindowVisible(label)) << name;
    }
}

TEST_F(HelpWindowTest, PanesAreGoneThroughInTurn)
{
    Open(kPage);
    SetFocus(Item(IDC_CONTENTS));
    for (const int pane : {IDC_TEXT, IDC_FIND, IDC_CONTENTS}) {
        Command(CMD_NEXT_PANE);
        EXPECT_EQ(GetFocus(), Item(pane));
    }
    for (const int pane : {IDC_FIND, IDC_TEXT, IDC_CONTENTS}) {
        Command(CMD_PREVIOUS_PANE);
        EXPECT_EQ(GetFocus(), Item(pane));
    }
    Command(CMD_NEXT_TOPIC);
    SetFocus(Item(IDC_BACK));
    Command(CMD_NEXT_PANE);
    EXPECT_EQ(GetFocus(), Item(IDC_CONTENTS)) << "from the row of buttons to the first one";
}

TEST_F(HelpWindowTest, SelectAllAndCopyWorkWhereTheKeyboardIs)
{
    Open(kPage);
    SetFocus(Pane());
    Command(CMD_SELECT_ALL);
    EXPECT_EQ(Selected().substr(0, 5), L"First");
    SetWindowTextW(Item(IDC_FIND), L"box");
    SetFocus(Item(IDC_FIND));
    Command(CMD_SELECT_ALL);
    DWORD begin = 9, end = 9;
    SendMessageW(Item(IDC_FIND), EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(begin, 0u);
    EXPECT_EQ(end, 3u);
}

TEST_F(HelpWindowTest, TheTextCannotBeWrittenInto)
{
    Open(kPage);
    const std::wstring before = PaneText();
    for (const wchar_t key : std::wstring(L"x\b\r"))
        SendMessageW(Pane(), WM_CHAR, key, 0);
    EXPECT_EQ(PaneText(), before);
    EXPECT_TRUE(GetWindowLongPtrW(Pane(), GWL_STYLE) & ES_READONLY);
}

// The text grows with the resolution; what the person has chosen stays what it is.
TEST_F(HelpWindowTest, FollowsAnotherResolutionAndComesBack)
{
    OpenShipped(L"pellwyn.htm");
    const auto height = [this](int id) {
        RECT rect{};
        GetWindowRect(Item(id), &rect);
        return rect.bottom - rect.top;
    };
    const auto zoom = [this] {
        int numerator = 0, denominator = 1;
        SendMessageW(Pane(), EM_GETZOOM, reinterpret_cast<WPARAM>(&numerator),
                     reinterpret_cast<LPARAM>(&denominator));
        return denominator ? 100 * numerator / denominator : 100;
    };
    Command(CMD_ZOOM_IN);
    SetWindowPos(m_window->Handle(), nullptr, 0, 0, Scale(450), Scale(250), SWP_NOZORDER);
    const int chosen = m_window->Text().Zoom();
    const LONG box = height(IDC_FIND);
    RECT before{}, now{};
    GetWindowRect(m_window->Handle(), &before);
    TellResolution(m_window->Handle(), 2);
    GetWindowRect(m_window->Handle(), &now);
    EXPECT_EQ(now.right - now.left, 2 * (before.right - before.left));
    EXPECT_EQ(m_window->Text().Zoom(), chosen);
    EXPECT_EQ(zoom(), 2 * chosen);
    EXPECT_NEAR(height(IDC_FIND), 2 * box, 3);
    TellResolution(m_window->Handle(), 1, 2);
    EXPECT_EQ(m_window->Text().Zoom(), chosen);
    EXPECT_EQ(zoom(), chosen);
    EXPECT_EQ(height(IDC_FIND), box);
    Command(CMD_ZOOM_NORMAL);
}

TEST_F(HelpWindowTest, ZoomStaysForTheNextTopicAndTheNextStart)
{
    Open(kPage);
    EXPECT_EQ(m_window->Text().Zoom(), 100);
    Command(CMD_ZOOM_IN);
    Command(CMD_ZOOM_IN);
    EXPECT_EQ(m_window->Text().Zoom(), 150);
    Command(CMD_NEXT_TOPIC);
    EXPECT_EQ(m_window->Text().Zoom(), 150);
    Close();
    Open(kPage);
    EXPECT_EQ(m_window->Text().Zoom(), 150);
    Command(CMD_ZOOM_NORMAL);
    EXPECT_EQ(m_window->Text().Zoom(), 100);
    for (int step = 0; step < 50; ++step)
        Command(CMD_ZOOM_OUT);
    EXPECT_EQ(m_window->Text().Zoom(), 50);
}

// A window manager may be late with the place of a window that was just opened.
bool LiesAt(HWND window, const RECT& wanted)
{
    return PumpUntil([&] {
        RECT place{};
        return GetWindowRect(window, &place) && EqualRect(&place, &wanted);
    });
}

TEST_F(HelpWindowTest, IsWhereItWasLeft)
{
    const RECT wanted{30, 40, 530, 240};
    Open(kPage);
    EXPECT_TRUE(PumpUntil([this] { return GetForegroundWindow() == m_window->Handle(); }));
    MoveWindow(m_window->Handle(), 30, 40, 500, 200, TRUE);
    EXPECT_TRUE(LiesAt(m_window->Handle(), wanted));
    Close();
    Open(kPage);
    EXPECT_TRUE(LiesAt(m_window->Handle(), wanted));
}

LRESULT HandOverTo(HWND window, ULONG_PTR mark, const std::wstring& request, DWORD bytes)
{
    COPYDATASTRUCT data{};
    data.dwData = mark;
    data.cbData = bytes;
    data.lpData = const_cast<wchar_t*>(request.data());
    return SendMessageW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
}

TEST_F(HelpWindowTest, ComesForwardForARequestAndStaysThere)
{
    Open(kPage);
    HWND window = m_window->Handle();
    const TestParent other;
    const auto isInFront = [](HWND wanted) {
        SetForegroundWindow(wanted);
        return PumpUntil([=] { return GetForegroundWindow() == wanted; });
    };
    ASSERT_TRUE(isInFront(other.Handle()));
    EXPECT_EQ(HandOverTo(window, 0x48454C50, L"#Two", 8), TRUE);
    EXPECT_TRUE(PumpUntil([=] { return GetForegroundWindow() == window; }));
    SetForegroundWindow(other.Handle()); // as a late event of the display has it
    EXPECT_TRUE(PumpUntil([=] { return GetForegroundWindow() == window; }));
    int steady = 0;
    EXPECT_TRUE(PumpUntil([&] {
        if (GetForegroundWindow() == other.Handle())
            return ++steady >= 100;
        steady = 0;
        SetForegroundWindow(other.Handle());
        return false;
    })) << "and not for ever";
}

TEST_F(HelpWindowTest, TakesARequestOfAnotherProgramAndNothingElse)
{
    Open(kPage);
    HWND window = m_window->Handle();
    EXPECT_EQ(HandOverTo(window, 0x48454C50, L"#Two", 8), TRUE);
    EXPECT_EQ(Title(), L"First") << "the other program does not wait for the page";
    EXPECT_TRUE(PumpUntil([this] { return Title() == L"Second"; }));
    EXPECT_EQ(HandOverTo(window, 1, L"#One", 8), FALSE);
    EXPECT_EQ(HandOverTo(window, 0x48454C50, L"#One", 7), FALSE);
    EXPECT_EQ(SendMessageW(window, WM_COPYDATA, 0, 0), FALSE);
    PumpMessages();
    EXPECT_EQ(Title(), L"Second");
    ShowWindow(window, SW_MINIMIZE);
    EXPECT_EQ(HandOverTo(window, 0x48454C50, L"#Three", 12), TRUE);
    EXPECT_TRUE(PumpUntil([this] { return Title() == L"Third"; }));
    EXPECT_TRUE(PumpUntil([=] { return !IsIconic(window); }));
}

TEST_F(HelpWindowTest, F1ShowsThePageOnThisWindow)
{
    OpenShipped(L"pellwyn.htm#Found_Window");
    EXPECT_EQ(Title(), L"Find Results");
    Command(CMD_HELP_ON_HELP);
    EXPECT_EQ(Title(), L"This help");
}

TEST_F(HelpWindowTest, ShowsTheLargestHelpThereCanBe)
{
    std::string page = "<h1>Large</h1>";
    while (page.size() < kMaxHelpFile - 50'000) {
        for (int paragraph = 0; paragraph < 50; ++paragraph)
            page += "<p>" + std::string(900, 'x') + " word</p><ul><li>item</ul>\n";
        page += "<h1>Next</h1>";
    }
    const DWORD start = GetTickCount();
    Open(page);
    EXPECT_EQ(Title(), L"Large");
    EXPECT_LT(GetTickCount() - start, 60'000u);
}

TEST_F(HelpWindowTest, AControlThatCannotBeMadeIsAFailure)
{
    HINSTANCE instance = GetModuleHandleW(nullptr);
    ASSERT_TRUE(HelpWindow::RegisterWindowClass(instance));
    for (const wchar_t* control : {L"RICHEDIT50W", L"SysTreeView32", L"Edit"}) {
        const WindowRefuser refuser(control);
        HelpWindow window(m_folder.Path() + L"PegHelp.exe");
        // An older rich text control may stand in for the newer one.
        if (window.Create(instance)) {
            EXPECT_STREQ(control, L"RICHEDIT50W");
        } else {
            EXPECT_EQ(window.Handle(), nullptr);
        }
    }
    Close();
}

// On a screen of 640 to 240 pixels too, whatever the resolution.
class OnScreen : public HelpWindowTest {};

TEST_F(OnScreen, EverythingIsInReach)
{
    OpenShipped(L"pellwyn.htm");
    RECT area{}, window{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    GetWindowRect(m_window->Handle(), &window);
    EXPECT_GE(window.left, area.left);
    EXPECT_LE(window.right, area.right);
    EXPECT_LE(window.bottom, area.bottom);
    for (const int id : {IDC_BACK, IDC_FORWARD, IDC_FIND, IDC_CONTENTS, IDC_TEXT}) {
        RECT place{};
        GetWindowRect(Item(id), &place);
        EXPECT_GT(place.right - place.left, 40) << id;
        EXPECT_GT(place.bottom - place.top, 12) << id;
        EXPECT_LE(place.right, window.right) << id;
        EXPECT_LE(place.bottom, window.bottom) << id;
    }
    RECT status{};
    GetClientRect(Item(IDC_STATUS), &status);
    EXPECT_GT(status.right, 40) << "there is room to say what was found";
}

} // namespace
} // namespace help
