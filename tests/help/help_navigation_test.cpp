// Going through the help in its window: topics, links, the contents, finding.
#include "help/help_window.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "help/resource.h"
#include "help_window_fixture.h"
#include "support/test_windows.h"
#include "ui/screen/scale.h"

namespace help {
namespace {

TEST_F(HelpWindowTest, ShowsTheTopicThatIsAskedFor)
{
    Open(kPage, L"pellwyn.htp#Two");
    EXPECT_EQ(Title(), L"Second");
    EXPECT_EQ(TreeTopic(), L"Second");
    EXPECT_EQ(PaneText(), L"Second\rBeta gamma\rline   two");
    EXPECT_EQ(WindowText(m_window->Handle()), L"My Help");
    EXPECT_TRUE(IsWindowVisible(m_window->Handle()));
}

// Links and places found are counted in the program's text and applied to the control's.
TEST_F(HelpWindowTest, TheControlHasTheTextThatThePlacesAreCountedIn)
{
    OpenShipped(L"pellwyn.htm");
    for (size_t topic = 0; topic < m_window->Book().Count(); ++topic) {
        EXPECT_EQ(m_window->ShownTopic(), topic);
        std::wstring text = m_window->Text().Text().text;
        std::replace(text.begin(), text.end(), L'\v', L' ');
        std::wstring shown = PaneText();
        for (size_t place = 0; place < std::min(shown.size(), text.size()); ++place)
            if (text[place] == L'\t' && shown[place] == L' ') // a cell that is wider than its column
                shown[place] = L'\t';
        EXPECT_EQ(shown, text) << topic;
        Command(CMD_NEXT_TOPIC);
    }
    EXPECT_EQ(m_window->ShownTopic(), m_window->Book().Count() - 1) << "the last one stays";
}

TEST_F(HelpWindowTest, NoTopicAskedForIsTheContents)
{
    Open(kPage);
    EXPECT_EQ(Title(), L"First");
    m_window->Show(RequestOfText(L"pellwyn.htm#Three"));
    EXPECT_EQ(Title(), L"Third");
    m_window->Show(RequestOfText(L""));
    EXPECT_EQ(Title(), L"First");
}

TEST_F(HelpWindowTest, ATopicThatIsNotThereIsSaid)
{
    Open(kPage, L"pellwyn.htm#Absent");
    EXPECT_EQ(Title(), L"");
    EXPECT_EQ(TreeTopic(), L"");
    EXPECT_NE(PaneText().find(L"no topic \u201CAbsent\u201D"), std::wstring::npos);
    EXPECT_FALSE(IsWindowEnabled(Item(IDC_BACK)));
    Command(CMD_FIRST_TOPIC);
    EXPECT_EQ(Title(), L"First");
    m_window->Show(RequestOfText(L"#Absent"));
    EXPECT_EQ(Title(), L"");
    Command(CMD_BACK);
    EXPECT_EQ(Title(), L"First");
    EXPECT_FALSE(IsWindowEnabled(Item(IDC_FORWARD))) << "what was said there is no topic to go to again";
}

TEST_F(HelpWindowTest, AMissingFileIsSaidAndAskedForAgain)
{
    Open(kPage, L"C:\\absent\\other.htm#One");
    EXPECT_EQ(Title(), L"");
    EXPECT_NE(PaneText().find(L"C:\\absent\\other.htm"), std::wstring::npos);
    EXPECT_NE(PaneText().find(L"cannot be found"), std::wstring::npos);
    for (const int command : {CMD_PRINT_TOPIC, CMD_BACK, CMD_FORWARD, CMD_FIRST_TOPIC, CMD_NEXT_TOPIC,
                              CMD_PREVIOUS_TOPIC, CMD_HELP_ON_HELP})
        Command(command);
    Find(L"x");
    EXPECT_EQ(Title(), L"");
    m_window->Show(RequestOfText(L"pellwyn.htm#Two"));
    EXPECT_EQ(Title(), L"Second");
}

TEST_F(HelpWindowTest, GoesBackAndForward)
{
    Open(kPage);
    EXPECT_FALSE(IsWindowEnabled(Item(IDC_BACK)));
    m_window->Show(RequestOfText(L"#Two"));
    m_window->Show(RequestOfText(L"#Three"));
    EXPECT_TRUE(IsWindowEnabled(Item(IDC_BACK)));
    Command(CMD_BACK);
    EXPECT_EQ(Title(), L"Second");
    EXPECT_EQ(TreeTopic(), L"Second");
    Command(IDC_BACK);
    EXPECT_EQ(Title(), L"First");
    EXPECT_FALSE(IsWindowEnabled(Item(IDC_BACK)));
    Command(CMD_BACK);
    EXPECT_EQ(Title(), L"First");
    Command(IDC_FORWARD);
    EXPECT_EQ(Title(), L"Second");
    SendMessageW(m_window->Handle(), WM_APPCOMMAND, 0, MAKELPARAM(0, APPCOMMAND_BROWSER_FORWARD));
    EXPECT_EQ(Title(), L"Third");
    SendMessageW(m_window->Handle(), WM_APPCOMMAND, 0, MAKELPARAM(0, APPCOMMAND_BROWSER_BACKWARD));
    EXPECT_EQ(Title(), L"Second");
    Command(CMD_FORWARD);
    EXPECT_FALSE(IsWindowEnabled(Item(IDC_FORWARD)));
}

TEST_F(HelpWindowTest, GoesToTheNeighbouringTopics)
{
    Open(kPage);
    Command(CMD_PREVIOUS_TOPIC);
    EXPECT_EQ(Title(), L"First");
    Command(CMD_NEXT_TOPIC);
    Command(CMD_NEXT_TOPIC);
    EXPECT_EQ(Title(), L"Third");
    Command(CMD_NEXT_TOPIC);
    EXPECT_EQ(Title(), L"Third");
    Command(CMD_PREVIOUS_TOPIC);
    EXPECT_EQ(Title(), L"Second");
    Command(CMD_FIRST_TOPIC);
    EXPECT_EQ(Title(), L"First");
}

// A topic of many lines with a place in its midst.
std::string LongPage()
{
    std::string page = "<h1>Long</h1>";
    for (int line = 0; line < 200; ++line)
        page += line == 100 ? "<p id=Middle>middle" : "<p>words";
    return page + "<h1>Other</h1>";
}

TEST_F(HelpWindowTest, APlaceInATopicIsScrolledTo)
{
    Open(LongPage());
    const size_t middle = m_window->Text().Text().text.find(L"middle");
    const auto isFirst = [&](size_t place) {
        return SendMessageW(Pane(), EM_EXLINEFROMCHAR, 0, static_cast<LPARAM>(place)) ==
               SendMessageW(Pane(), EM_GETFIRSTVISIBLELINE, 0, 0);
    };
    EXPECT_TRUE(isFirst(0));
    m_window->Show(RequestOfText(L"#Middle"));
    EXPECT_TRUE(isFirst(middle));
    EXPECT_EQ(m_window->Text().Selection().begin, middle);
    SetWindowPos(m_window->Handle(), nullptr, 0, 0, Scale(320), Scale(300), SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_TRUE(isFirst(middle)) << "the same place at another size";
    Command(CMD_BACK);
    EXPECT_TRUE(isFirst(0)) << "the way back leads out of the midst, too";
    Command(CMD_FORWARD);
    EXPECT_TRUE(isFirst(middle));
    Command(CMD_NEXT_TOPIC);
    Command(CMD_BACK);
    EXPECT_TRUE(isFirst(middle));
}

TEST_F(HelpWindowTest, AnotherFileIsShownFromItsBeginningAndEndsTheWayBack)
{
    Open(kPage);
    Command(CMD_NEXT_TOPIC);
    Command(CMD_BACK);
    const std::wstring other = m_folder.Write(L"other.htm", "<title>Other Help</title><h1>Elsewhere</h1>");
    m_window->Show(RequestOfText(other));
    EXPECT_EQ(PaneText(), L"Elsewhere");
    EXPECT_EQ(TreeTopic(), L"Elsewhere");
    EXPECT_EQ(TreeView_GetCount(Item(IDC_CONTENTS)), 1u);
    EXPECT_EQ(WindowText(m_window->Handle()), L"Other Help");
    EXPECT_FALSE(IsWindowEnabled(Item(IDC_BACK)));
    EXPECT_FALSE(IsWindowEnabled(Item(IDC_FORWARD)));
}

TEST_F(HelpWindowTest, TheContentsAreATreeOfTheTopics)
{
    Open(kPage);
    HWND tree = Item(IDC_CONTENTS);
    EXPECT_EQ(TreeView_GetCount(tree), 3u);
    const HTREEITEM first = TreeView_GetRoot(tree);
    const HTREEITEM second = TreeView_GetChild(tree, first);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(TreeView_GetNextSibling(tree, first), nullptr);
    SetFocus(tree);
    TreeView_SelectItem(tree, second);
    EXPECT_EQ(Title(), L"Second");
    EXPECT_EQ(GetFocus(), tree) << "the keyboard goes on through the contents";
    Command(IDOK);
    EXPECT_EQ(GetFocus(), Pane());
    SetFocus(tree);
    NMHDR enter{tree, IDC_CONTENTS, static_cast<UINT>(NM_RETURN)};
    EXPECT_EQ(SendMessageW(m_window->Handle(), WM_NOTIFY, IDC_CONTENTS, reinterpret_cast<LPARAM>(&enter)), 1);
    EXPECT_EQ(GetFocus(), Pane());
    Command(CMD_BACK);
    EXPECT_EQ(Title(), L"First");
}

TEST_F(HelpWindowTest, TabGoesFromLinkToLinkAndEnterFollows)
{
    Open(kPage);
    SetFocus(Pane());
    EXPECT_TRUE(KeyInText(VK_TAB));
    EXPECT_EQ(Selected(), L"the second");
    EXPECT_TRUE(KeyInText(VK_TAB));
    EXPECT_EQ(Selected(), L"nothing");
    EXPECT_TRUE(KeyInText(VK_RETURN));
    EXPECT_EQ(Title(), L"First");
    EXPECT_EQ(Status(), L"This link leads nowhere: #Nowhere");
    EXPECT_TRUE(KeyInText(VK_TAB));
    EXPECT_EQ(GetFocus(), Item(IDC_FIND)) << "behind the last link the next pane";
    Command(CMD_PREVIOUS_PANE);
    m_window->Show(RequestOfText(L"#Three"));
    KeyInText(VK_TAB);
    EXPECT_TRUE(KeyInText(VK_RETURN));
    EXPECT_EQ(Title(), L"First");
    EXPECT_FALSE(KeyInText(VK_DOWN)) << "the control's own keys stay its own";
    BYTE keys[256] = {};
    keys[VK_CONTROL] = 0x80;
    SetKeyboardState(keys);
    EXPECT_FALSE(KeyInText(VK_TAB)) << "with Ctrl it is another key";
    keys[VK_CONTROL] = 0;
    SetKeyboardState(keys);
}

TEST_F(HelpWindowTest, TabFromTheContentsGoesToTheTextAndOnFromItsBeginning)
{
    Open(kPage);
    SetFocus(Item(IDC_CONTENTS));
    MSG tab{};
    tab.hwnd = Item(IDC_CONTENTS);
    tab.message = WM_KEYDOWN;
    tab.wParam = VK_TAB;
    EXPECT_FALSE(m_window->TranslateKey(tab));
    EXPECT_TRUE(IsDialogMessageW(m_window->Handle(), &tab));
    EXPECT_EQ(GetFocus(), Pane());
    EXPECT_EQ(Selected(), L"");
    KeyInText(VK_TAB);
    EXPECT_EQ(Selected(), L"the second");
}

TEST_F(HelpWindowTest, TheSystemsKeysWorkInTheContentsToo)
{
    Open(kPage);
    MSG key{};
    key.hwnd = Item(IDC_CONTENTS);
    key.message = WM_SYSKEYDOWN;
    key.wParam = VK_F4;
    key.lParam = 0x203E0001; // with Alt
    EXPECT_TRUE(m_window->TranslateKey(key));
    MSG closing{};
    EXPECT_TRUE(PeekMessageW(&closing, m_window->Handle(), WM_SYSCOMMAND, WM_SYSCOMMAND, PM_REMOVE));
    EXPECT_EQ(closing.wParam & 0xFFF0, static_cast<WPARAM>(SC_CLOSE));
    key.wParam = 'F';
    key.lParam = 0x20210001;
    EXPECT_TRUE(m_window->TranslateKey(key));
    MSG letter{};
    EXPECT_TRUE(PeekMessageW(&letter, key.hwnd, WM_SYSCHAR, WM_SYSCHAR, PM_REMOVE)) << "that opens a menu";
    key.hwnd = Pane();
    EXPECT_FALSE(m_window->TranslateKey(key)) << "the other controls pass them on themselves";
    key.hwnd = Item(IDC_CONTENTS);
    key.message = WM_KEYDOWN;
    EXPECT_FALSE(m_window->TranslateKey(key));
}

TEST_F(HelpWindowTest, AClickOnALinkFollowsIt)
{
    Open(kPage);
    const TextLink& link = m_window->Text().Text().links[0];
    ENLINK click{};
    click.nmhdr.hwndFrom = Pane();
    click.nmhdr.idFrom = IDC_TEXT;
    click.nmhdr.code = EN_LINK;
    click.msg = WM_MOUSEMOVE;
    click.chrg = {static_cast<LONG>(link.range.begin), static_cast<LONG>(link.range.end)};
    SendMessageW(m_window->Handle(), WM_NOTIFY, IDC_TEXT, reinterpret_cast<LPARAM>(&click));
    EXPECT_EQ(Title(), L"First");
    click.msg = WM_LBUTTONUP;
    SendMessageW(m_window->Handle(), WM_NOTIFY, IDC_TEXT, reinterpret_cast<LPARAM>(&click));
    EXPECT_EQ(Title(), L"Second");
}

TEST_F(HelpWindowTest, FindGoesThroughAllTopics)
{
    Open(kPage);
    Find(L"BETA");
    EXPECT_EQ(Selected(), L"beta");
    EXPECT_EQ(Title(), L"First");
    EXPECT_EQ(Status(), L"Found in: First");
    EXPECT_EQ(GetFocus(), Pane());
    Command(CMD_FIND_NEXT);
    EXPECT_EQ(Selected(), L"Beta");
    EXPECT_EQ(Title(), L"Second");
    Command(CMD_FIND_NEXT);
    EXPECT_EQ(Title(), L"First");
    Command(CMD_FIND_PREVIOUS);
    EXPECT_EQ(Title(), L"Second");
    Command(CMD_BACK);
    EXPECT_EQ(Title(), L"First");
    Find(L"absent");
    EXPECT_EQ(Title(), L"First");
    EXPECT_EQ(Status(), L"Not found: absent");
    SetWindowTextW(Item(IDC_FIND), L"");
    Command(CMD_FIND_NEXT);
    EXPECT_EQ(GetFocus(), Item(IDC_FIND)) << "with nothing to look for the box is gone to";
}

TEST_F(HelpWindowTest, EnterInTheBoxFindsAndEscLeavesIt)
{
    Open(kPage);
    Command(CMD_FIND_TEXT);
    EXPECT_EQ(GetFocus(), Item(IDC_FIND));
    SetWindowTextW(Item(IDC_FIND), L"gamma");
    Command(IDOK);
    EXPECT_EQ(Title(), L"Second");
    Command(CMD_FIND_TEXT);
    DWORD begin = 9, end = 9;
    SendMessageW(Item(IDC_FIND), EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
    EXPECT_TRUE(begin == 0 && end == 5) << "to be typed over";
    Command(IDCANCEL);
    EXPECT_EQ(GetFocus(), Pane());
}

} // namespace
} // namespace help
