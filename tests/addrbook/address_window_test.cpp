#include "addrbook/address_window.h"

#include <commctrl.h>

#include "addrbook/resource.h"
#include "addrbook/transfer/contact_record.h"
#include "address_window_fixture.h"
#include "support/cards.h"
#include "support/help_requests.h"
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

TEST_F(AddressWindowTest, ImportsAndExportsAndTellsTheCount)
{
    Open();
    ASSERT_TRUE(WriteFileBytes(m_path, vcard::CardOf("FN:Anna") + vcard::CardOf("FN:Bert\nX-A:kept\nUID:b") +
                                           "BEGIN:VCARD"));
    const auto answer = [](const wchar_t* expected) {
        return [expected](HWND dialog) {
            HWND ok = GetDlgItem(dialog, IDOK), cancel = GetDlgItem(dialog, IDCANCEL);
            EXPECT_TRUE(PumpUntil([ok] { return IsWindowEnabled(ok) != FALSE; }));
            EXPECT_EQ(WindowText(GetDlgItem(dialog, IDC_TRANSFER_TEXT)), expected);
            EXPECT_FALSE(IsWindowVisible(cancel));
            RECT place{}, free{};
            GetWindowRect(ok, &place);
            GetWindowRect(cancel, &free);
            EXPECT_TRUE(EqualRect(&place, &free)) << "OK takes Cancel's place";
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
        cards += vcard::CardOf("FN:Name " + std::to_string(i));
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
    vcard::Contact anna;
    ASSERT_TRUE(LoadContact(m_contacts, m_contacts.IdOfRow(0), &anna));
    EXPECT_EQ(anna[vcard::Field::Extra], "") << "nor is it given a UID";
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
