#include "addrbook/address_window.h"

#include <gtest/gtest.h>

#include "addrbook/contact_record.h"
#include "addrbook/resource.h"
#include "cards.h"
#include "support/test_store.h"
#include "support/test_windows.h"

namespace addrbook {

namespace {

class AddressWindowTest : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(m_contacts.Open(), 1); }
    void TearDown() override
    {
        m_window.reset();
        // Its end is the program's.
        MSG message;
        while (PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
        }
        DeleteFileW(m_path.c_str());
    }
    CEOID Add(const char* fileAs, const char* note = "")
    {
        Contact contact;
        contact[Field::FileAs] = fileAs;
        contact[Field::Note] = note;
        return ContactSaver().Save(m_contacts, 0, contact);
    }
    void Open()
    {
        HINSTANCE instance = GetModuleHandleW(nullptr);
        ASSERT_TRUE(AddressWindow::RegisterWindowClass(instance));
        m_window = std::make_unique<AddressWindow>();
        ASSERT_TRUE(m_window->Create(instance));
        ShowWindow(m_window->Handle(), SW_SHOW);
        PumpMessages();
    }
    HWND Item(int id) const { return GetDlgItem(m_window->Handle(), id); }
    HWND List() const { return Item(IDC_CONTACTS); }
    std::vector<std::wstring> Names() const
    {
        std::vector<std::wstring> names;
        for (int row = 0; row < ListView_GetItemCount(List()); ++row) {
            wchar_t text[300] = L"";
            ListView_GetItemText(List(), row, 0, text, 300);
            names.emplace_back(text);
        }
        return names;
    }
    std::wstring Current() const
    {
        wchar_t text[300] = L"";
        ListView_GetItemText(List(), ListView_GetNextItem(List(), -1, LVNI_FOCUSED | LVNI_SELECTED), 0, text,
                             300);
        return text;
    }
    void Command(int id) { SendMessageW(m_window->Handle(), WM_COMMAND, static_cast<WPARAM>(id), 0); }
    void PressInList(WPARAM key) { SendMessageW(List(), WM_KEYDOWN, key, 0); }

    TestStore m_store;
    std::wstring m_path = m_store.Path() + L".vcf";
    DbContacts m_contacts;
    std::unique_ptr<AddressWindow> m_window;
};

using Texts = std::vector<std::wstring>;

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

TEST_F(AddressWindowTest, FollowsAnotherProgramsChanges)
{
    Add("Anna");
    const CEOID bert = Add("Bert");
    Open();
    ASSERT_EQ(m_contacts.DeleteRecord(bert), 1);
    PostMessageW(m_window->Handle(), kMsgDatabaseChange, kChangeDeleted, static_cast<LPARAM>(bert));
    PumpMessages();
    EXPECT_EQ(Names(), Texts{L"Anna"});
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
    Command(CMD_EDIT_CONTACT);
    Command(CMD_DELETE_CONTACT);
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
