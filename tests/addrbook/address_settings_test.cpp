// What the address book remembers of its window.
#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <numeric>

#include "addrbook/contact_rows.h"
#include "addrbook/resource.h"
#include "address_window_fixture.h"
#include "settings/registry_store.h"
#include "support/resolution.h"
#include "support/test_windows.h"
#include "ui/screen/scale.h"
#include "ui/screen/work_area.h"

namespace addrbook {

namespace {

using Widths = std::vector<int>;

class AddressSettings : public AddressWindowTest {
  protected:
    AddressSettings() { EXPECT_EQ(m_settings.Open(L"Software\\Quillmarsh\\Address Book"), 1); }
    void StorePlace(LONG left, LONG top, LONG right, LONG bottom)
    {
        m_settings.SetNumber(L"Settings", L"wLeft", static_cast<DWORD>(left));
        m_settings.SetNumber(L"Settings", L"wTop", static_cast<DWORD>(top));
        m_settings.SetNumber(L"Settings", L"wRight", static_cast<DWORD>(right));
        m_settings.SetNumber(L"Settings", L"wBottom", static_cast<DWORD>(bottom));
    }
    RECT Place() const
    {
        RECT place{};
        GetWindowRect(m_window->Handle(), &place);
        return place;
    }
    bool LiesAt(RECT wanted)
    {
        return PumpUntil([&] {
            const RECT place = Place();
            return EqualRect(&place, &wanted) != FALSE;
        });
    }
    Widths ColumnWidths() const
    {
        Widths widths;
        for (int column = 0; column < static_cast<int>(kColumnCount); ++column)
            widths.push_back(ListView_GetColumnWidth(List(), column));
        return widths;
    }
    RegistryStore m_settings;
};

RECT MiddleOfTheWorkArea()
{
    const RECT area = WorkArea();
    const LONG width = std::min<LONG>(Scale(800), area.right - area.left);
    const LONG height = std::min<LONG>(Scale(560), area.bottom - area.top);
    const LONG left = area.left + (area.right - area.left - width) / 2;
    const LONG top = area.top + (area.bottom - area.top - height) / 2;
    return {left, top, left + width, top + height};
}

TEST_F(AddressSettings, OpensInTheMiddleTheFirstTime)
{
    Open();
    EXPECT_TRUE(LiesAt(MiddleOfTheWorkArea()));
    EXPECT_FALSE(IsZoomed(m_window->Handle()));
}

// The texts have all the room that there is, and on a small screen what they need.
TEST_F(AddressSettings, ColumnsTakeTheWidthOfTheList)
{
    const Widths narrowest{Scale(180), Scale(140), Scale(150), Scale(132)};
    const int all = std::accumulate(narrowest.begin(), narrowest.end(), 0);
    StorePlace(20, 20, 20 + all + Scale(200), 300);
    Open();
    RECT client{};
    GetClientRect(List(), &client);
    const int room = static_cast<int>(client.right) - GetSystemMetrics(SM_CXVSCROLL);
    const Widths wide = ColumnWidths();
    EXPECT_LE(std::accumulate(wide.begin(), wide.end(), 0), room) << "nothing is out of sight";
    EXPECT_GE(std::accumulate(wide.begin(), wide.end(), 0), room - 8);
    EXPECT_GT(wide[0], wide[1]);
    Close();
    for (int column = 0; column < 4; ++column)
        m_settings.RemoveValue(L"Settings", (L"ColumnWidth" + std::to_wstring(column)).c_str());
    StorePlace(20, 20, 320, 300);
    Open();
    EXPECT_EQ(ColumnWidths(), narrowest);
}

TEST_F(AddressSettings, FollowsAnotherResolutionAndStoresWhatItWould)
{
    Open();
    const auto height = [this](int id) {
        RECT rect{};
        GetWindowRect(Item(id), &rect);
        return rect.bottom - rect.top;
    };
    const Widths before = ColumnWidths();
    const LONG box = height(IDC_FIND);
    TellResolution(m_window->Handle(), 2);
    for (size_t i = 0; i < before.size(); ++i)
        EXPECT_EQ(ColumnWidths()[i], 2 * before[i]);
    EXPECT_NEAR(height(IDC_FIND), 2 * box, 3);
    Close();
    for (size_t i = 0; i < before.size(); ++i)
        EXPECT_EQ(m_settings.GetNumber(L"Settings", (L"ColumnWidth" + std::to_wstring(i)).c_str(), 0),
                  static_cast<DWORD>(before[i]));
    Open();
    EXPECT_EQ(ColumnWidths(), before);
    EXPECT_EQ(height(IDC_FIND), box);
    TellResolution(m_window->Handle(), 2);
    TellResolution(m_window->Handle(), 1, 2);
    EXPECT_EQ(ColumnWidths(), before);
    EXPECT_EQ(height(IDC_FIND), box);
}

TEST_F(AddressSettings, ComesBackWhereItWasLeft)
{
    Open();
    const RECT wanted{70, 80, 520, 330};
    MoveWindow(m_window->Handle(), wanted.left, wanted.top, wanted.right - wanted.left,
               wanted.bottom - wanted.top, TRUE);
    ASSERT_TRUE(LiesAt(wanted));
    Close();
    Open();
    EXPECT_TRUE(LiesAt(wanted));
}

TEST_F(AddressSettings, ComesBackMaximised)
{
    Open();
    ShowWindow(m_window->Handle(), SW_SHOWMAXIMIZED);
    ASSERT_TRUE(PumpUntil([&] { return IsZoomed(m_window->Handle()); }));
    Close();
    Open();
    EXPECT_TRUE(PumpUntil([&] { return IsZoomed(m_window->Handle()); }));
}

TEST_F(AddressSettings, WhetherItWasMaximisedIsReadBack)
{
    const RECT wanted{70, 80, 520, 330};
    StorePlace(wanted.left, wanted.top, wanted.right, wanted.bottom);
    m_settings.SetNumber(L"Settings", L"wMax", 1);
    Open();
    EXPECT_TRUE(PumpUntil([&] { return IsZoomed(m_window->Handle()) != FALSE; }));
    ShowWindow(m_window->Handle(), SW_RESTORE);
    EXPECT_TRUE(LiesAt(wanted)) << "the place that it comes back to is kept";
    Close();
    EXPECT_EQ(m_settings.GetNumber(L"Settings", L"wMax", 9), 0u);
    Open();
    EXPECT_TRUE(LiesAt(wanted));
    EXPECT_FALSE(IsZoomed(m_window->Handle()));
}

TEST_F(AddressSettings, APlaceOffEveryScreenIsNotTaken)
{
    for (const RECT place :
         {RECT{5000, 5000, 5400, 5300}, RECT{-900, 100, -500, 400}, RECT{100, 100, 90, 400}}) {
        StorePlace(place.left, place.top, place.right, place.bottom);
        Open();
        EXPECT_TRUE(LiesAt(MiddleOfTheWorkArea())) << place.left;
        Close();
    }
}

TEST_F(AddressSettings, ColumnWidthsComeBack)
{
    Open();
    const Widths wanted{211, 33, 150, 90};
    for (size_t column = 0; column < wanted.size(); ++column)
        ListView_SetColumnWidth(List(), static_cast<int>(column), wanted[column]);
    Close();
    Open();
    EXPECT_EQ(ColumnWidths(), wanted);
}

TEST_F(AddressSettings, AWidthNobodyCanHaveMeantIsNotTaken)
{
    Open();
    const Widths first = ColumnWidths();
    Close();
    for (const DWORD width : {DWORD{0}, DWORD{7}, DWORD{4097}, DWORD{0x80000000}, DWORD{0xFFFFFFFF}}) {
        m_settings.SetNumber(L"Settings", L"ColumnWidth1", width);
        Open();
        EXPECT_EQ(ColumnWidths(), first) << width;
        Close();
    }
    m_settings.SetString(L"Settings", L"ColumnWidth1", L"ninety");
    Open();
    EXPECT_EQ(ColumnWidths(), first);
    Close();
    for (const DWORD width : {DWORD{8}, DWORD{4096}}) {
        m_settings.SetNumber(L"Settings", L"ColumnWidth1", width);
        Open();
        EXPECT_EQ(ColumnWidths()[1], static_cast<int>(width));
        Close();
    }
}

TEST_F(AddressSettings, AreNotTheJournals)
{
    Open();
    Close();
    EXPECT_NE(m_settings.GetNumber(L"Settings", L"wRight", 0), 0u);
    RegistryStore journal;
    ASSERT_EQ(journal.Open(L"Software\\Quillmarsh\\Journal"), 1);
    EXPECT_EQ(journal.GetNumber(L"Settings", L"wRight", 0), 0u);
}

TEST_F(AddressSettings, AFailedStartStoresNothing)
{
    m_contacts.Close();
    const TestStore broken;
    ASSERT_TRUE(WriteFileBytes(broken.Path(), "no store"));
    const MessageBoxAnswerer answerer;
    HINSTANCE instance = GetModuleHandleW(nullptr);
    ASSERT_TRUE(AddressWindow::RegisterWindowClass(instance));
    m_window = std::make_unique<AddressWindow>();
    EXPECT_FALSE(m_window->Create(instance));
    EXPECT_EQ(m_window->Handle(), nullptr);
    EXPECT_TRUE(answerer.Boxes().empty()) << "another start would wait for its answer";
    m_window->TellFailure();
    Close();
    EXPECT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(m_settings.GetNumber(L"Settings", L"wRight", 0), 0u);
    EXPECT_EQ(m_settings.GetNumber(L"Settings", L"ColumnWidth0", 0), 0u);
}

// It has no password, so the journal is the one that offers a backup.
class LostContacts : public AddressSettings {
  protected:
    // A backup of a store that has a contact.
    void BackUp()
    {
        ASSERT_NE(Add("kept"), 0u);
        m_contacts.Close();
        const std::wstring folder = BackupFolderOf(Path());
        std::wstring name = Path().substr(Path().find_last_of(L'\\') + 1);
        name.resize(name.size() - 3);
        m_backup = folder + name + L"-2026-01-31.db";
        CreateDirectoryW(folder.c_str(), nullptr);
        ASSERT_TRUE(CopyFileW(Path().c_str(), m_backup.c_str(), TRUE));
    }
    const std::wstring& Path() const { return m_store.Path(); }
    bool IsThere() const { return GetFileAttributesW(Path().c_str()) != INVALID_FILE_ATTRIBUTES; }
    // What is told where the window cannot be made.
    std::wstring Told()
    {
        const MessageBoxAnswerer answerer;
        HINSTANCE instance = GetModuleHandleW(nullptr);
        EXPECT_TRUE(AddressWindow::RegisterWindowClass(instance));
        m_window = std::make_unique<AddressWindow>();
        if (m_window->Create(instance))
            return L"";
        m_window->TellFailure();
        return answerer.Boxes().empty() ? L"nothing" : answerer.Boxes()[0].text;
    }

    const std::wstring m_startJournal = L"\n\nStart the journal: it offers a backup, where one is whole.";
    std::wstring m_backup;
};

TEST_F(LostContacts, AreNoneOfANewStoreWhereThereIsABackup)
{
    ASSERT_NO_FATAL_FAILURE(BackUp());
    ASSERT_TRUE(DeleteFileW(Path().c_str()));
    EXPECT_EQ(Told(), GoneText(Path(), false) + m_startJournal);
    EXPECT_FALSE(IsThere());
    ASSERT_TRUE(WriteFileBytes(Path(), ""));
    EXPECT_EQ(Told(), GoneText(Path(), true) + m_startJournal);
    EXPECT_TRUE(ReadFileBytes(Path()).empty());
    // Nothing can be offered, which the journal says before it begins a new one.
    ASSERT_TRUE(WriteFileBytes(m_backup, "no store"));
    EXPECT_EQ(Told(), GoneText(Path(), true) + m_startJournal);
    EXPECT_TRUE(ReadFileBytes(Path()).empty());
    ASSERT_TRUE(DeleteFileW(m_backup.c_str()));
    EXPECT_EQ(Told(), L"");
}

TEST_F(LostContacts, InADamagedStoreSayWhoOffersABackup)
{
    ASSERT_NO_FATAL_FAILURE(BackUp());
    const std::string whole = ReadFileBytes(Path());
    ASSERT_TRUE(WriteFileBytes(Path(), whole.substr(0, 4096)));
    EXPECT_EQ(Told(), NotOpenedText(Path(), StoreTrouble::Damaged) + m_startJournal);
    std::string newer = whole;
    newer[60] = 0x7F; // SQLite's user_version, big-endian
    ASSERT_TRUE(WriteFileBytes(Path(), newer));
    EXPECT_EQ(Told(), NotOpenedText(Path(), StoreTrouble::NewerVersion)) << "this one is not broken";
}

// A box that waits for an answer, not one that a quit message closes.
TEST_F(AddressSettings, AWindowThatCannotBeMadeSaysSo)
{
    const MessageBoxAnswerer answerer;
    HINSTANCE instance = GetModuleHandleW(nullptr);
    ASSERT_TRUE(AddressWindow::RegisterWindowClass(instance));
    for (const wchar_t* refused : {L"SysListView32", L"Edit", L"AddressBook"}) {
        const WindowRefuser refuser(refused);
        m_window = std::make_unique<AddressWindow>();
        EXPECT_FALSE(m_window->Create(instance)) << refused;
        m_window->TellFailure();
        m_window.reset();
        MSG message;
        EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) << refused;
    }
    ASSERT_EQ(answerer.Boxes().size(), 3u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"The address book cannot be shown.");
    EXPECT_EQ(m_settings.GetNumber(L"Settings", L"wRight", 0), 0u);
}

TEST_F(LostContacts, AreNoneByAForeignLogWhichIsTold)
{
    ASSERT_NO_FATAL_FAILURE(BackUp());
    ASSERT_TRUE(WriteFileBytes(Path() + L"-wal", std::string(5000, 'x')));
    const MessageBoxAnswerer answerer;
    Open();
    EXPECT_TRUE(answerer.Boxes().empty());
    m_window->TellSetAside();
    m_window->TellSetAside();
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].owner, m_window->Handle());
    EXPECT_NE(answerer.Boxes()[0].text.find(Path() + L"-wal.set-aside-2"), std::wstring::npos);
    EXPECT_EQ(Names(), Texts{L"kept"});
}

} // namespace

} // namespace addrbook
