#include "addrbook/address_window.h"

#include <commctrl.h>

#include "address_window_fixture.h"
#include "addrbook/contact_record.h"
#include "addrbook/resource.h"
#include "cards.h"
#include "support/help_requests.h"
#include "support/locked_store.h"
#include "support/test_windows.h"

namespace addrbook {

namespace {

TEST_F(AddressWindowTest, ListsTheContactsByFileAs)
{
    Add("Bert");
    Add("Anna");
    Open();
    EXPECT_EQ(Names(), (Texts{L"Anna", L"Bert"}));
    EXPECT_EQ(Current(), L"Anna");
    EXPECT_EQ(WindowText(Item(IDC_COUNT)), L"2 contacts");
    EXPECT_EQ(WindowText(m_window->Handle()), L"Address Book");
}

TEST_F(AddressWindowTest, ShowsItsPageOfTheHelp)
{
    const HelpRequests requests;
    Open();
    Command(CMD_SHOW_HELP);
    SendMessageW(m_window->Handle(), WM_HELP, 0, 0);
    EXPECT_EQ(requests.Asked(), (Texts{L"pellwyn.htm#Address_Book", L"pellwyn.htm#Address_Book"}));
}

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

TEST_F(AddressWindowTest, MakesAndChangesContacts)
{
    Add("Anna");
    Open();
    {
        const ModalDriver driver([](HWND dialog) {
            SetDlgItemTextW(dialog, IDC_COMPANY, L"Zeta");
            SendMessageW(dialog, WM_COMMAND, IDOK, 0);
        });
        Command(CMD_NEW_CONTACT);
        EXPECT_TRUE(driver.Ran());
    }
    EXPECT_EQ(Names(), (Texts{L"Anna", L"Zeta"}));
    EXPECT_EQ(Current(), L"Zeta");
    {
        const ModalDriver driver([](HWND dialog) {
            EXPECT_EQ(WindowText(dialog), L"Zeta");
            SetDlgItemTextW(dialog, IDC_COMPANY, L"Able");
            SendMessageW(dialog, WM_COMMAND, IDOK, 0);
        });
        Command(IDOK); // Enter
        EXPECT_TRUE(driver.Ran());
    }
    EXPECT_EQ(Names(), (Texts{L"Able", L"Anna"}));
    EXPECT_EQ(Current(), L"Able");
    EXPECT_EQ(m_contacts.RecordCount(), 2u);
}

TEST_F(AddressWindowTest, DeletesWhatIsSelectedAndAsksBefore)
{
    for (const char* name : {"Anna", "Bert", "Carl", "Dora"})
        Add(name);
    Open();
    const MessageBoxAnswerer answerer({IDNO, IDYES, IDYES});
    PressInList(VK_DELETE);
    EXPECT_EQ(Names().size(), 4u);
    PressInList(VK_DELETE);
    EXPECT_EQ(Names(), (Texts{L"Bert", L"Carl", L"Dora"}));
    EXPECT_EQ(Current(), L"Bert");
    Command(CMD_SELECT_ALL);
    Command(CMD_DELETE_CONTACT);
    EXPECT_EQ(m_contacts.RecordCount(), 0u);
    ASSERT_EQ(answerer.Boxes().size(), 3u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"Delete \"Anna\"?");
    EXPECT_EQ(answerer.Boxes()[2].text, L"Delete 3 contacts?");
    PressInList(VK_DELETE);
    EXPECT_EQ(answerer.Boxes().size(), 3u) << "there is nothing to delete";
}

TEST_F(AddressWindowTest, ImportsAndExportsAndTellsTheCount)
{
    Open();
    ASSERT_TRUE(
        WriteFileBytes(m_path, CardOf("FN:Anna") + CardOf("FN:Bert\nX-A:kept\nUID:b") + "BEGIN:VCARD"));
    const auto answer = [](const wchar_t* expected) {
        return [expected](HWND dialog) {
            HWND ok = GetDlgItem(dialog, IDOK);
            EXPECT_TRUE(PumpUntil([ok] { return IsWindowEnabled(ok) != FALSE; }));
            EXPECT_EQ(WindowText(GetDlgItem(dialog, IDC_TRANSFER_TEXT)), expected);
            EXPECT_FALSE(IsWindowVisible(GetDlgItem(dialog, IDCANCEL)));
            SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0); // Esc
        };
    };
    {
        const ModalDriver driver(
            answer(L"2 contacts were imported.\r\n1 card could not be read.\r\nLine 11: the file ends "
                   L"before the card does."));
        m_window->Import(m_path);
        EXPECT_TRUE(driver.Ran());
    }
    EXPECT_EQ(Names(), (Texts{L"Anna", L"Bert"}));
    SetWindowTextW(Item(IDC_FIND), L"bert");
    {
        const ModalDriver driver(answer(L"1 contact was exported."));
        m_window->Export(m_path);
        EXPECT_TRUE(driver.Ran());
    }
    EXPECT_EQ(ReadFileBytes(m_path),
              "BEGIN:VCARD\r\nVERSION:4.0\r\nFN:Bert\r\nX-A:kept\r\nUID:b\r\nEND:VCARD\r\n");
}

TEST_F(AddressWindowTest, AnImportThatIsCancelledChangesNothing)
{
    Add("Anna");
    Open();
    std::string cards;
    for (int i = 0; i < 60'000; ++i)
        cards += CardOf("FN:Name " + std::to_string(i));
    ASSERT_TRUE(WriteFileBytes(m_path, cards));
    const ModalDriver driver([](HWND dialog) {
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, IDOK)));
        SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    m_window->Import(m_path);
    EXPECT_TRUE(driver.Ran());
    EXPECT_EQ(Names(), Texts{L"Anna"});
    EXPECT_EQ(m_contacts.RecordCount(), 1u);
}

// The card is written in one piece.
TEST_F(AddressWindowTest, AnExportOfALargeCardThatIsCancelledLeavesTheFile)
{
    Add("Anna", std::string(8 << 20, 'x').c_str());
    Add("Bert");
    Open();
    ASSERT_TRUE(WriteFileBytes(m_path, "before"));
    const ModalDriver driver([](HWND dialog) {
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, IDOK)));
        SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    m_window->Export(m_path);
    EXPECT_TRUE(driver.Ran());
    EXPECT_EQ(ReadFileBytes(m_path), "before");
    EXPECT_EQ(GetFileAttributesW((m_path + L".part").c_str()), INVALID_FILE_ATTRIBUTES);
    Contact anna;
    ASSERT_TRUE(LoadContact(m_contacts, m_contacts.IdOfRow(0), &anna));
    EXPECT_EQ(anna[Field::Extra], "") << "nor is it given a UID";
}

TEST_F(AddressWindowTest, FollowsAnotherProgramsChanges)
{
    Add("Anna");
    const CEOID bert = Add("Bert");
    Open();
    ASSERT_EQ(m_contacts.DeleteRecord(bert), 1);
    TellOfAChange(kChangeDeleted);
    EXPECT_EQ(Names(), Texts{L"Anna"});
}

TEST_F(AddressWindowTest, ASelectionIsNotHandedOnToOthers)
{
    Add("Anna", "lake");
    Add("Bert", "hill");
    Add("Carl", "lake");
    Add("Dora", "hill");
    Open();
    SetWindowTextW(Item(IDC_FIND), L"lake");
    Command(CMD_SELECT_ALL);
    SetWindowTextW(Item(IDC_FIND), L"hill");
    EXPECT_EQ(Names(), (Texts{L"Bert", L"Dora"}));
    EXPECT_EQ(Selected(), Texts{L"Bert"}) << "nobody has selected these two";
}

TEST_F(AddressWindowTest, WhatStaysInSightStaysSelected)
{
    Add("Anna", "lake");
    Add("Bert");
    Add("Carl", "lake");
    Add("Dora", "lake");
    Open();
    Select(0, false);
    Select(1);
    Select(3);
    SetWindowTextW(Item(IDC_FIND), L"lake");
    EXPECT_EQ(Selected(), Texts{L"Dora"});
    Command(CMD_SELECT_ALL);
    Command(IDCANCEL);
    EXPECT_EQ(Selected(), (Texts{L"Anna", L"Carl", L"Dora"}));
}

// Whatever is looked for: who has just made a contact wants to see it.
TEST_F(AddressWindowTest, WhatWasSavedIsShown)
{
    Add("Anna", "lake");
    Add("Bert");
    Open();
    SetWindowTextW(Item(IDC_FIND), L"lake");
    const ModalDriver driver([](HWND dialog) {
        SetDlgItemTextW(dialog, IDC_COMPANY, L"Zeta");
        SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    Command(CMD_NEW_CONTACT);
    EXPECT_TRUE(driver.Ran());
    EXPECT_EQ(WindowText(Item(IDC_FIND)), L"");
    EXPECT_EQ(Names(), (Texts{L"Anna", L"Bert", L"Zeta"}));
    EXPECT_EQ(Current(), L"Zeta");
    EXPECT_EQ(Selected(), Texts{L"Zeta"});
}

TEST_F(AddressWindowTest, ACancelledContactChangesNothing)
{
    Add("Anna");
    Open();
    const ModalDriver driver([](HWND dialog) { SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0); });
    Command(CMD_NEW_CONTACT);
    EXPECT_TRUE(driver.Ran());
    EXPECT_EQ(m_contacts.RecordCount(), 1u);
}

TEST_F(AddressWindowTest, ADoubleClickOpensAContactAndNothingElsewhere)
{
    Add("Anna");
    Open();
    NMITEMACTIVATE click{};
    click.hdr = {List(), IDC_CONTACTS, static_cast<UINT>(NM_DBLCLK)};
    const auto send = [&] {
        SendMessageW(m_window->Handle(), WM_NOTIFY, IDC_CONTACTS, reinterpret_cast<LPARAM>(&click));
    };
    click.iItem = -1;
    {
        const ModalDriver driver([](HWND dialog) { EndDialog(dialog, 0); });
        send();
        EXPECT_FALSE(driver.Ran()) << "below the last row there is no contact";
    }
    click.iItem = 0;
    const ModalDriver driver([](HWND dialog) {
        EXPECT_EQ(WindowText(dialog), L"Anna");
        EndDialog(dialog, 0);
    });
    send();
    EXPECT_TRUE(driver.Ran());
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

TEST_F(AddressWindowTest, AfterADeletionTheNextOneIsCurrent)
{
    for (const char* name : {"Anna", "Bert", "Carl"})
        Add(name);
    Open();
    const MessageBoxAnswerer answerer({IDYES});
    PressInList(VK_DOWN);
    PressInList(VK_DELETE);
    EXPECT_EQ(Current(), L"Carl");
    PressInList(VK_DELETE);
    EXPECT_EQ(Current(), L"Anna") << "the last one is gone: the one before it";
    EXPECT_EQ(WindowText(Item(IDC_COUNT)), L"1 contact");
}

// A card may bring a name of any length.
TEST_F(AddressWindowTest, TheQuestionOfADeletionFitsTheScreen)
{
    Add(std::string(5'000, 'x'));
    Open();
    const MessageBoxAnswerer answerer({IDNO});
    PressInList(VK_DELETE);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"Delete \"" + std::wstring(80, L'x') + L"...\"?");
    EXPECT_EQ(answerer.Boxes()[0].answers, (std::vector{IDYES, IDNO}));
    EXPECT_EQ(answerer.Boxes()[0].owner, m_window->Handle());
}

TEST_F(AddressWindowTest, TheQuestionOfADeletionCutsNoCharacter)
{
    Add(std::string(79, 'x') + "\xF0\x9F\x98\x80\xF0\x9F\x98\x80");
    Open();
    const MessageBoxAnswerer answerer({IDNO});
    PressInList(VK_DELETE);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"Delete \"" + std::wstring(79, L'x') + L"...\"?");
}

// All of them or none.
TEST_F(AddressWindowTest, ADeletionThatFailsSaysSoAndLosesNothing)
{
    Add("Anna");
    Add("Bert");
    Open();
    Command(CMD_SELECT_ALL);
    const MessageBoxAnswerer answerer({IDYES, IDOK});
    {
        const LockedStore trouble(m_store.Path());
        PressInList(VK_DELETE);
    }
    ASSERT_EQ(answerer.Boxes().size(), 2u);
    EXPECT_EQ(answerer.Boxes()[1].text, NotDoneText(L"The contacts were not deleted", StoreTrouble::Locked));
    EXPECT_EQ(Selected(), (Texts{L"Anna", L"Bert"})) << "what was selected stays so";
    EXPECT_EQ(Names(), (Texts{L"Anna", L"Bert"}));
    EXPECT_EQ(m_contacts.RecordCount(), 2u);
}

// What another program was quicker with is no failure.
TEST_F(AddressWindowTest, ADeletionGoesOnPastWhatIsGoneAlready)
{
    Add("Anna");
    const CEOID bert = Add("Bert");
    Add("Carl");
    Open();
    Command(CMD_SELECT_ALL);
    ASSERT_EQ(m_contacts.DeleteRecord(bert), 1);
    const MessageBoxAnswerer answerer({IDYES});
    PressInList(VK_DELETE);
    EXPECT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(Names(), Texts());
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

TEST_F(AddressWindowTest, WhatAnotherProgramDeletesTakesNobodyElsewhere)
{
    Add("Anna");
    const CEOID bert = Add("Bert");
    Add("Carl");
    Open();
    PressInList(VK_DOWN);
    EXPECT_EQ(Current(), L"Bert");
    ASSERT_EQ(m_contacts.DeleteRecord(bert), 1);
    TellOfAChange(kChangeDeleted);
    EXPECT_EQ(Names(), (Texts{L"Anna", L"Carl"}));
    EXPECT_EQ(Current(), L"Carl");
    EXPECT_EQ(WindowText(Item(IDC_COUNT)), L"2 contacts");
}

TEST_F(AddressWindowTest, AnotherProgramsContactsAreFoundToo)
{
    Add("Anna", "lake");
    Open();
    SetWindowTextW(Item(IDC_FIND), L"lake");
    Add("Zoe", "lake");
    TellOfAChange(kChangeWorkBegins);
    EXPECT_EQ(Names(), Texts{L"Anna"}) << "bulk work is waited for";
    TellOfAChange(kChangeWorkEnded);
    EXPECT_EQ(Names(), (Texts{L"Anna", L"Zoe"}));
    EXPECT_EQ(Current(), L"Anna");
}

TEST_F(AddressWindowTest, AContactThatIsGoneWhenItIsSavedIsWrittenAnew)
{
    const CEOID anna = Add("Anna");
    Open();
    const ModalDriver driver([&](HWND dialog) {
        EXPECT_EQ(m_contacts.DeleteRecord(anna), 1);
        SetDlgItemTextW(dialog, IDC_COMPANY, L"Zeta");
        SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    Command(CMD_EDIT_CONTACT);
    EXPECT_TRUE(driver.Ran());
    EXPECT_EQ(Names(), Texts{L"Anna"});
    EXPECT_EQ(m_contacts.RecordCount(), 1u);
}

TEST_F(AddressWindowTest, GreysWhatHasNothingToWorkOn)
{
    Open();
    HMENU menu = GetMenu(m_window->Handle());
    SendMessageW(m_window->Handle(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(GetSubMenu(menu, 1)), 1);
    for (const UINT id :
         std::initializer_list<UINT>{CMD_EDIT_CONTACT, CMD_DELETE_CONTACT, CMD_SELECT_ALL, CMD_EXPORT_CARDS})
        EXPECT_TRUE(GetMenuState(menu, id, MF_BYCOMMAND) & MF_GRAYED) << id;
    EXPECT_FALSE(GetMenuState(menu, CMD_IMPORT, MF_BYCOMMAND) & MF_GRAYED);
    EXPECT_EQ(WindowText(Item(IDC_COUNT)), L"0 contacts");
    Command(CMD_EDIT_CONTACT);
    Command(CMD_DELETE_CONTACT);
}

TEST_F(AddressWindowTest, OffersWhatThereIsToWorkOn)
{
    Add("Anna");
    Add("Bert");
    Open();
    HMENU menu = GetMenu(m_window->Handle());
    const auto offers = [&](UINT id) {
        SendMessageW(m_window->Handle(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(GetSubMenu(menu, 1)), 1);
        return (GetMenuState(menu, id, MF_BYCOMMAND) & MF_GRAYED) == 0;
    };
    SetWindowTextW(Item(IDC_FIND), L"nobody");
    for (const UINT id :
         std::initializer_list<UINT>{CMD_EDIT_CONTACT, CMD_DELETE_CONTACT, CMD_SELECT_ALL, CMD_EXPORT_CARDS})
        EXPECT_FALSE(offers(id)) << id;
    SetWindowTextW(Item(IDC_FIND), L"");
    for (const UINT id :
         std::initializer_list<UINT>{CMD_EDIT_CONTACT, CMD_DELETE_CONTACT, CMD_SELECT_ALL, CMD_EXPORT_CARDS})
        EXPECT_TRUE(offers(id)) << id;
    Select(0, false);
    EXPECT_FALSE(offers(CMD_DELETE_CONTACT)) << "nothing is selected";
    EXPECT_TRUE(offers(CMD_EDIT_CONTACT)) << "but there is a current one";
    EXPECT_TRUE(offers(CMD_SELECT_ALL));
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

TEST_F(AddressWindowTest, FindsWhatWasChangedWhileItLooks)
{
    const CEOID anna = Add("Anna", "lake");
    Add("Bert");
    Open();
    SetWindowTextW(Item(IDC_FIND), L"lake");
    EXPECT_EQ(Names(), Texts{L"Anna"});
    Contact changed;
    changed[Field::FileAs] = "Anna";
    changed[Field::Note] = "hill";
    ASSERT_EQ(ContactSaver().Save(m_contacts, anna, changed), anna);
    Add("Aaron", "lake");
    TellOfAChange(kChangeModified);
    EXPECT_EQ(Names(), Texts{L"Aaron"});
    EXPECT_EQ(WindowText(Item(IDC_COUNT)), L"1 of 3 contacts");
}

TEST_F(AddressWindowTest, FitsASmallScreen)
{
    Open();
    MoveWindow(m_window->Handle(), 0, 0, 200, 120, TRUE);
    RECT client{}, find{}, list{};
    GetClientRect(m_window->Handle(), &client);
    GetWindowRect(Item(IDC_FIND), &find);
    MapWindowPoints(nullptr, m_window->Handle(), reinterpret_cast<POINT*>(&find), 2);
    GetWindowRect(List(), &list);
    MapWindowPoints(nullptr, m_window->Handle(), reinterpret_cast<POINT*>(&list), 2);
    EXPECT_LE(find.right, client.right);
    EXPECT_EQ(list.right, client.right);
    EXPECT_EQ(list.bottom, client.bottom);
}

TEST_F(AddressWindowTest, HasAnIconOfItsOwn)
{
    Open();
    EXPECT_NE(SendMessageW(m_window->Handle(), WM_GETICON, ICON_SMALL, 0), 0);
    EXPECT_NE(SendMessageW(m_window->Handle(), WM_GETICON, ICON_BIG, 0), 0);
}

} // namespace

} // namespace addrbook
