// Finding and moving in the address book by keyboard.
#include "address_window_fixture.h"
#include "addrbook/resource.h"
#include "support/test_windows.h"

namespace addrbook {

namespace {

TEST_F(AddressWindowTest, FindsWhileOneTypes)
{
    Add("Anna", "lake");
    Add("Bert");
    Add("Carl", "lake");
    Open();
    SetWindowTextW(Item(IDC_FIND), L"LAK");
    EXPECT_EQ(Names(), (Texts{L"Anna", L"Carl"}));
    EXPECT_EQ(WindowText(Item(IDC_COUNT)), L"2 of 3 contacts");
    EXPECT_EQ(Current(), L"Anna");
    const MSG down{Item(IDC_FIND), WM_KEYDOWN, VK_DOWN, 0, 0, {}};
    EXPECT_TRUE(m_window->TranslateKey(down)) << "the arrows move in the list";
    EXPECT_EQ(Current(), L"Carl");
    Command(IDCANCEL);
    EXPECT_EQ(WindowText(Item(IDC_FIND)), L"");
    EXPECT_EQ(Names().size(), 3u);
    EXPECT_EQ(Current(), L"Carl");
}

TEST_F(AddressWindowTest, LettersGoToTheNextName)
{
    for (const char* name : {"Anna", "Bert", "Bj\xC3\xB6rn", "Carl"})
        Add(name);
    Open();
    SendMessageW(List(), WM_CHAR, L'b', 1);
    EXPECT_EQ(Current(), L"Bert");
    SendMessageW(List(), WM_CHAR, L'j', 1);
    EXPECT_EQ(Current(), L"Bj\u00F6rn");
}

TEST_F(AddressWindowTest, ALetterGoesOnFromTheCurrentName)
{
    for (const char* name : {"Anna", "Bert", "Bill"})
        Add(name);
    Open();
    PressInList(VK_DOWN);
    SendMessageW(List(), WM_CHAR, L'b', 1);
    EXPECT_EQ(Current(), L"Bill");
}

TEST_F(AddressWindowTest, InTheBoxTheArrowsAndThePageKeysMoveInTheList)
{
    for (const char* name : {"Anna", "Bert", "Carl"})
        Add(name);
    Open();
    const auto press = [&](WPARAM key, HWND control) {
        return m_window->TranslateKey({control, WM_KEYDOWN, key, 0, 0, {}});
    };
    EXPECT_TRUE(press(VK_NEXT, Item(IDC_FIND)));
    EXPECT_EQ(Current(), L"Carl");
    EXPECT_TRUE(press(VK_UP, Item(IDC_FIND)));
    EXPECT_EQ(Current(), L"Bert");
    EXPECT_TRUE(press(VK_PRIOR, Item(IDC_FIND)));
    EXPECT_EQ(Current(), L"Anna");
    for (const WPARAM key : std::initializer_list<WPARAM>{VK_LEFT, VK_RIGHT, VK_HOME, VK_END, VK_DELETE})
        EXPECT_FALSE(press(key, Item(IDC_FIND))) << key << " is the box's";
    EXPECT_FALSE(press(VK_DOWN, List()));
    EXPECT_FALSE(m_window->TranslateKey({Item(IDC_FIND), WM_KEYUP, VK_DOWN, 0, 0, {}}));
}

TEST_F(AddressWindowTest, SelectAllIsAKeyOfTheList)
{
    for (const char* name : {"Anna", "Bert", "Carl"})
        Add(name);
    Open();
    const auto pressWith = [&](BYTE control, HWND window) {
        BYTE keys[256] = {};
        keys[VK_CONTROL] = control;
        SetKeyboardState(keys);
        const bool used = m_window->TranslateKey({window, WM_KEYDOWN, L'A', 0, 0, {}});
        keys[VK_CONTROL] = 0;
        SetKeyboardState(keys);
        return used;
    };
    EXPECT_FALSE(pressWith(0, List()));
    EXPECT_FALSE(pressWith(0x80, Item(IDC_FIND))) << "there it selects the text";
    EXPECT_EQ(Selected(), Texts{L"Anna"});
    EXPECT_TRUE(pressWith(0x80, List()));
    EXPECT_EQ(Selected().size(), 3u);
}

TEST_F(AddressWindowTest, TheFocusComesBackToWhereItWas)
{
    Open();
    HWND window = m_window->Handle();
    const auto hasFocus = [&](int id) {
        return PumpUntil([&] {
            SetForegroundWindow(window);
            return GetForegroundWindow() == window && GetFocus() == Item(id);
        });
    };
    EXPECT_TRUE(hasFocus(IDC_CONTACTS)) << "at first it is the list's";
    Command(CMD_FIND_CONTACT);
    EXPECT_TRUE(hasFocus(IDC_FIND));
    {
        const TestParent other;
        EXPECT_TRUE(PumpUntil([&] {
            SetForegroundWindow(other.Handle());
            return GetForegroundWindow() == other.Handle();
        }));
        SetForegroundWindow(window);
        EXPECT_TRUE(hasFocus(IDC_FIND));
    }
    Command(IDCANCEL);
    EXPECT_TRUE(hasFocus(IDC_CONTACTS));
}

TEST_F(AddressWindowTest, TheFindCommandTakesWhatWasTypedBefore)
{
    Open();
    SetWindowTextW(Item(IDC_FIND), L"anna");
    Command(CMD_FIND_CONTACT);
    DWORD start = 9, end = 9;
    SendMessageW(Item(IDC_FIND), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(start, 0u);
    EXPECT_EQ(end, 4u);
}

TEST_F(AddressWindowTest, EscEmptiesTheBoxAndThenLeavesIt)
{
    Add("Anna");
    Add("Bert");
    Open();
    HWND window = m_window->Handle();
    Command(CMD_FIND_CONTACT);
    ASSERT_TRUE(PumpUntil([&] {
        SetForegroundWindow(window);
        return GetForegroundWindow() == window && GetFocus() == Item(IDC_FIND);
    }));
    SetWindowTextW(Item(IDC_FIND), L"bert");
    EXPECT_EQ(Names(), Texts{L"Bert"});
    Command(IDCANCEL);
    EXPECT_EQ(WindowText(Item(IDC_FIND)), L"");
    EXPECT_EQ(Names().size(), 2u);
    EXPECT_EQ(GetFocus(), Item(IDC_FIND));
    Command(IDCANCEL);
    EXPECT_EQ(GetFocus(), List());
}

TEST_F(AddressWindowTest, InTheBoxTheArrowsStopAtTheEnds)
{
    Add("Anna");
    Add("Bert");
    Open();
    const auto press = [&](WPARAM key) {
        return m_window->TranslateKey({Item(IDC_FIND), WM_KEYDOWN, key, 0, 0, {}});
    };
    EXPECT_TRUE(press(VK_UP));
    EXPECT_EQ(Current(), L"Anna");
    EXPECT_TRUE(press(VK_DOWN));
    EXPECT_TRUE(press(VK_DOWN));
    EXPECT_EQ(Current(), L"Bert");
    EXPECT_TRUE(press(VK_UP));
    EXPECT_EQ(Selected(), Texts{L"Anna"}) << "one row at a time is selected";
}

// While one types into the box it is seen which contact the keys would open.
TEST_F(AddressWindowTest, TheSelectionIsSeenWithoutTheFocus)
{
    Open();
    EXPECT_TRUE(GetWindowLongW(List(), GWL_STYLE) & LVS_SHOWSELALWAYS);
}

} // namespace

} // namespace addrbook
