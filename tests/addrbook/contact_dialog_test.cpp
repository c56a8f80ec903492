#include "addrbook/contact_dialog.h"

#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <cstdlib>

#include "addrbook/resource.h"
#include "addrbook/transfer/contact_record.h"
#include "support/cards.h"
#include "support/dialog_window.h"
#include "support/help_requests.h"
#include "support/resolution.h"
#include "support/test_windows.h"
#include "support/work_area_setting.h"
#include "ui/screen/scale.h"
#include "ui/screen/work_area.h"

namespace addrbook {

namespace {

void Type(HWND dialog, int id, const wchar_t* text)
{
    SetDlgItemTextW(dialog, id, text);
}

std::wstring ItemText(HWND dialog, int id)
{
    return WindowText(GetDlgItem(dialog, id));
}

void Press(HWND dialog, int id)
{
    SendMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(id),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

class ContactDialogTest : public testing::Test {
  protected:
    // What was saved, when something was.
    bool Edit(const vcard::Contact& contact, std::function<void(HWND)> work, bool isNew = false)
    {
        const ModalDriver driver(std::move(work));
        const bool saved = EditContact(GetModuleHandleW(nullptr), m_parent.Handle(), contact, isNew,
                                       [this](HWND, const vcard::Contact& entered) {
                                           m_saved = entered;
                                           ++m_saves;
                                           return SaveAnswer{m_maySave, L"Why not."};
                                       });
        EXPECT_TRUE(driver.Ran());
        return saved;
    }

    TestParent m_parent;
    vcard::Contact m_saved;
    int m_saves = 0;
    bool m_maySave = true;
};

TEST_F(ContactDialogTest, AHelpRequestOpensItsPage)
{
    const HelpRequests requests;
    EXPECT_FALSE(Edit({}, [](HWND dialog) {
        SendMessageW(dialog, WM_HELP, 0, 0);
        Press(dialog, IDCANCEL);
    }));
    EXPECT_EQ(requests.Asked(), (std::vector<std::wstring>{L"pellwyn.htm#Address_Contact"}));
}

TEST_F(ContactDialogTest, MakesAContact)
{
    EXPECT_TRUE(Edit(
        {},
        [](HWND dialog) {
            EXPECT_EQ(WindowText(dialog), L"New Contact");
            Type(dialog, IDC_FIRST_NAME, L"J\u00FCrgen ");
            Type(dialog, IDC_LAST_NAME, L"M\u00FCller");
            EXPECT_EQ(ItemText(dialog, IDC_FILE_AS), L"M\u00FCller, J\u00FCrgen");
            wchar_t hint[20] = L"";
            SendDlgItemMessageW(dialog, IDC_BIRTHDAY, EM_GETCUEBANNER, reinterpret_cast<WPARAM>(hint), 20);
            EXPECT_STREQ(hint, L"YYYY-MM-DD");
            Type(dialog, IDC_PHONES, L"1 (work)\r\n2\r\n");
            Type(dialog, IDC_BIRTHDAY, L"1985-04-15");
            Press(dialog, IDOK);
        },
        true));
    EXPECT_EQ(m_saved[vcard::Field::FirstName], "J\xC3\xBCrgen");
    EXPECT_EQ(m_saved[vcard::Field::FileAs], "M\xC3\xBCller, J\xC3\xBCrgen");
    EXPECT_EQ(m_saved[vcard::Field::Phones], "1 (work)\n2");
    EXPECT_EQ(m_saved[vcard::Field::Birthday], "1985-04-15");
}

TEST_F(ContactDialogTest, ShowsAndKeepsEveryField)
{
    const vcard::Contact contact = vcard::ContactOf(
        "FN:Dr. Jane\nN:Doe;Jane;Q;;\nORG:Acme\nTITLE:Head\nEMAIL:j@d\nTEL;TYPE=cell:1\nTEL:2\n"
        "ADR:;;Elm;Town;;;\nBDAY:19850415\nNOTE:\\n a \\n\nX-A:b");
    EXPECT_TRUE(Edit(contact, [](HWND dialog) {
        EXPECT_EQ(WindowText(dialog), L"Doe, Jane");
        EXPECT_EQ(ItemText(dialog, IDC_FILE_AS), L"Doe, Jane");
        EXPECT_EQ(ItemText(dialog, IDC_FIRST_NAME), L"Jane");
        EXPECT_EQ(ItemText(dialog, IDC_LAST_NAME), L"Doe");
        EXPECT_EQ(ItemText(dialog, IDC_COMPANY), L"Acme");
        EXPECT_EQ(ItemText(dialog, IDC_JOB_TITLE), L"Head");
        EXPECT_EQ(ItemText(dialog, IDC_EMAILS), L"j@d");
        EXPECT_EQ(ItemText(dialog, IDC_PHONES), L"1 (mobile)\r\n2");
        EXPECT_EQ(ItemText(dialog, IDC_ADDRESS), L"Elm\r\nTown");
        EXPECT_EQ(ItemText(dialog, IDC_BIRTHDAY), L"1985-04-15");
        Press(dialog, IDOK);
    }));
    EXPECT_EQ(m_saved, contact) << "what nobody touched stays to the byte";
}

// Each box stands for its own field, whatever is written into it.
TEST_F(ContactDialogTest, EachBoxIsItsField)
{
    constexpr std::pair<int, vcard::Field> kBoxes[] = {
        {IDC_FILE_AS, vcard::Field::FileAs},     {IDC_FIRST_NAME, vcard::Field::FirstName},
        {IDC_LAST_NAME, vcard::Field::LastName}, {IDC_COMPANY, vcard::Field::Company},
        {IDC_JOB_TITLE, vcard::Field::JobTitle}, {IDC_EMAILS, vcard::Field::Emails},
        {IDC_PHONES, vcard::Field::Phones},      {IDC_ADDRESS, vcard::Field::Address},
        {IDC_BIRTHDAY, vcard::Field::Birthday},  {IDC_NOTE, vcard::Field::Note}};
    const auto textOf = [](int id) { return L"text " + std::to_wstring(id); };
    EXPECT_TRUE(Edit(
        {},
        [&](HWND dialog) {
            for (const auto& [id, field] : kBoxes)
                Type(dialog, id, textOf(id).c_str());
            Type(dialog, IDC_FILE_AS, textOf(IDC_FILE_AS).c_str());
            Press(dialog, IDOK);
        },
        true));
    for (const auto& [id, field] : kBoxes)
        EXPECT_EQ(m_saved[field], "text " + std::to_string(id));
    const vcard::Contact contact = m_saved;
    Edit(contact, [&](HWND dialog) {
        for (const auto& [id, field] : kBoxes)
            EXPECT_EQ(ItemText(dialog, id), textOf(id));
        Press(dialog, IDCANCEL);
    });
}

// The system's own limit is 32,767 characters.
TEST_F(ContactDialogTest, ABoxTakesMoreThanAPersonTypes)
{
    Edit(
        {},
        [](HWND dialog) {
            for (int id = IDC_FILE_AS; id <= IDC_NOTE; ++id)
                EXPECT_GT(SendDlgItemMessageW(dialog, id, EM_GETLIMITTEXT, 0, 0), 1'000'000) << id;
            Press(dialog, IDCANCEL);
        },
        true);
}

// Left empty it is made, as on a new contact.
TEST_F(ContactDialogTest, AnEmptyFileAsIsMadeFromTheNames)
{
    const vcard::Contact contact = vcard::ContactOf("FN:Jane Doe\nN:Doe;Jane;;;");
    EXPECT_TRUE(Edit(contact, [](HWND dialog) {
        Type(dialog, IDC_FILE_AS, L" ");
        Press(dialog, IDOK);
    }));
    EXPECT_EQ(m_saved[vcard::Field::FileAs], "Doe, Jane");
}

TEST_F(ContactDialogTest, AFileAsThatWasChosenStaysWhenAnythingIsTyped)
{
    vcard::Contact contact = vcard::ContactOf("FN:Jane Doe\nN:Doe;Jane;;;");
    contact[vcard::Field::FileAs] = "Sister";
    EXPECT_TRUE(Edit(contact, [](HWND dialog) {
        EXPECT_EQ(WindowText(dialog), L"Sister");
        Type(dialog, IDC_NOTE, L"hello");
        Type(dialog, IDC_LAST_NAME, L"Smith");
        Press(dialog, IDOK);
    }));
    EXPECT_EQ(m_saved[vcard::Field::FileAs], "Sister");
    EXPECT_EQ(m_saved[vcard::Field::LastName], "Smith");
}

// Another tool may write contacts without it; looking at one is no change.
TEST_F(ContactDialogTest, AContactWithoutFileAsIsNotChangedByBeingShown)
{
    vcard::Contact contact;
    contact[vcard::Field::FirstName] = "Jane";
    const MessageBoxAnswerer answerer({IDNO});
    Edit(contact, [](HWND dialog) {
        EXPECT_EQ(ItemText(dialog, IDC_FILE_AS), L"");
        Press(dialog, IDCANCEL);
    });
    EXPECT_TRUE(answerer.Boxes().empty());
}

TEST_F(ContactDialogTest, ACardsOwnLinesFollowTheFields)
{
    const vcard::Contact contact = vcard::ContactOf("FN:Dr. Jane Doe\nN:Doe;Jane;Q;Dr.;PhD");
    EXPECT_TRUE(Edit(contact, [](HWND dialog) {
        Type(dialog, IDC_LAST_NAME, L"Smith");
        Press(dialog, IDOK);
    }));
    EXPECT_EQ(vcard::LinesOf(m_saved), "FN:Jane Smith\nN:Smith;Jane;Q;Dr.;PhD\n");
}

TEST_F(ContactDialogTest, BlanksAroundATextAreNotKept)
{
    EXPECT_TRUE(Edit(
        {},
        [](HWND dialog) {
            Type(dialog, IDC_COMPANY, L"  Acme & Co\t");
            Type(dialog, IDC_NOTE, L"\r\n one \r\n two \r\n\r\n");
            Press(dialog, IDOK);
        },
        true));
    EXPECT_EQ(m_saved[vcard::Field::Company], "Acme & Co");
    EXPECT_EQ(m_saved[vcard::Field::Note], "one \n two");
}

TEST_F(ContactDialogTest, TheNameIsWhereOneIsSentForIt)
{
    const MessageBoxAnswerer answerer;
    Edit(
        {},
        [](HWND dialog) {
            SetFocus(GetDlgItem(dialog, IDC_NOTE));
            Press(dialog, IDOK);
            EXPECT_EQ(GetDlgCtrlID(GetFocus()), IDC_FIRST_NAME);
            EXPECT_EQ(WindowText(dialog), L"New Contact");
            Press(dialog, IDCANCEL);
        },
        true);
    EXPECT_EQ(m_saves, 0);
}

TEST_F(ContactDialogTest, FileAsFollowsTheNamesUntilItIsChosen)
{
    const vcard::Contact contact = vcard::ContactOf("FN:Jane Doe\nN:Doe;Jane;;;");
    Edit(contact, [](HWND dialog) {
        Type(dialog, IDC_LAST_NAME, L"Smith");
        EXPECT_EQ(ItemText(dialog, IDC_FILE_AS), L"Smith, Jane");
        Type(dialog, IDC_FILE_AS, L"Sister");
        Type(dialog, IDC_LAST_NAME, L"Miller");
        EXPECT_EQ(ItemText(dialog, IDC_FILE_AS), L"Sister");
        Press(dialog, IDOK);
    });
    EXPECT_EQ(m_saved[vcard::Field::FileAs], "Sister");
    EXPECT_EQ(m_saved[vcard::Field::LastName], "Miller");
}

TEST_F(ContactDialogTest, NeedsAName)
{
    const MessageBoxAnswerer answerer;
    EXPECT_FALSE(Edit(
        {},
        [](HWND dialog) {
            Type(dialog, IDC_NOTE, L"nobody");
            Press(dialog, IDOK);
            EXPECT_TRUE(IsWindow(dialog));
            Type(dialog, IDC_NOTE, L"");
            Press(dialog, IDCANCEL);
        },
        true));
    EXPECT_EQ(m_saves, 0);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"A contact needs a name, a company, an e-mail or a phone.");
}

TEST_F(ContactDialogTest, StaysOpenWhenItCannotSave)
{
    const MessageBoxAnswerer answerer({IDOK, IDNO});
    m_maySave = false;
    EXPECT_FALSE(Edit(
        {},
        [](HWND dialog) {
            Type(dialog, IDC_COMPANY, L"Acme");
            Press(dialog, IDOK);
            EXPECT_EQ(ItemText(dialog, IDC_COMPANY), L"Acme");
            Press(dialog, IDCANCEL);
        },
        true));
    EXPECT_EQ(m_saves, 1);
    ASSERT_EQ(answerer.Boxes().size(), 2u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"Why not.");
}

TEST_F(ContactDialogTest, AsksBeforeChangesAreLost)
{
    const vcard::Contact contact = vcard::ContactOf("FN:Jane Doe\nN:Doe;Jane;;;");
    const MessageBoxAnswerer answerer({IDCANCEL, IDYES});
    EXPECT_TRUE(Edit(contact, [&](HWND dialog) {
        Type(dialog, IDC_NOTE, L"new");
        SendMessageW(dialog, WM_CLOSE, 0, 0);
        EXPECT_EQ(m_saves, 0);
        Press(dialog, IDCANCEL);
    }));
    EXPECT_EQ(m_saved[vcard::Field::Note], "new");
    EXPECT_FALSE(Edit(contact, [](HWND dialog) { Press(dialog, IDCANCEL); }));
    EXPECT_EQ(answerer.Boxes().size(), 2u) << "nothing was changed, nothing is asked";
}

bool HasBar(HWND dialog, int bar)
{
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE;
    return GetScrollInfo(dialog, bar, &info) && info.nMax > 0 && static_cast<int>(info.nPage) <= info.nMax;
}

POINT PlaceOf(HWND dialog, int id)
{
    RECT place{};
    GetWindowRect(GetDlgItem(dialog, id), &place);
    return {place.left, place.top};
}

void OpenContact(std::function<void(HWND)> work)
{
    const TestParent parent;
    // The dialog manager shows it once it has nothing else to do, and what is not shown does not scroll.
    const ModalDriver driver([&](HWND dialog) {
        ShowWindow(dialog, SW_SHOW);
        work(dialog);
    });
    EditContact(GetModuleHandleW(nullptr), parent.Handle(), {}, true, [](HWND, const vcard::Contact&) {
        return SaveAnswer{true, {}};
    });
    EXPECT_TRUE(driver.Ran());
}

int LinesShown(HWND box)
{
    RECT text{};
    SendMessageW(box, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&text));
    HDC dc = GetDC(box);
    HGDIOBJ before = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(box, WM_GETFONT, 0, 0)));
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    SelectObject(dc, before);
    ReleaseDC(box, dc);
    return static_cast<int>((text.bottom - text.top) / metrics.tmHeight);
}

TEST_F(ContactDialogTest, ShowsMoreThanTwoLinesWhereThereIsRoom)
{
    OpenContact([](HWND dialog) {
        for (const int id : {IDC_EMAILS, IDC_PHONES, IDC_ADDRESS})
            EXPECT_GE(LinesShown(GetDlgItem(dialog, id)), 5) << id;
        EXPECT_GE(LinesShown(GetDlgItem(dialog, IDC_NOTE)), 12);
        EndDialog(dialog, 0);
    });
}

// Whatever has grown, each box stands beside its label and below the one before.
TEST(OnScreenContact, TheBoxesStandOneBelowTheOther)
{
    OpenContact([](HWND dialog) {
        RECT above{};
        GetWindowRect(GetDlgItem(dialog, IDC_EMAILS), &above);
        for (const int id : {IDC_PHONES, IDC_ADDRESS, IDC_NOTE}) {
            HWND box = GetDlgItem(dialog, id);
            RECT place{}, label{};
            GetWindowRect(box, &place);
            GetWindowRect(GetWindow(box, GW_HWNDPREV), &label);
            EXPECT_GE(place.top, above.bottom) << id;
            EXPECT_LE(place.top - above.bottom, Scale(8)) << id;
            EXPECT_LE(std::abs(label.top - place.top - Scale(3)), Scale(2)) << id;
            above = place;
        }
        for (const int id : {IDOK, IDCANCEL}) {
            EXPECT_GE(PlaceOf(dialog, id).y, above.bottom);
            EXPECT_LE(PlaceOf(dialog, id).y - above.bottom, Scale(8));
        }
        EndDialog(dialog, 0);
    });
}

// A window manager puts its frame around the dialog and moves it back onto the screen after that.
bool IsOnScreen(HWND dialog)
{
    const RECT area = WorkArea();
    RECT own{}, seen{};
    GetWindowRect(dialog, &own);
    IntersectRect(&seen, &own, &area);
    return EqualRect(&seen, &own) != FALSE;
}

// Where there is a bar, and nowhere else.
TEST(OnScreenContact, TheWheelAndTheBarsScroll)
{
    OpenContact([](HWND dialog) {
        EXPECT_TRUE(PumpUntil([=] { return IsOnScreen(dialog); }));
        const POINT start = PlaceOf(dialog, IDC_FIRST_NAME);
        SendMessageW(dialog, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), 0);
        const POINT turned = PlaceOf(dialog, IDC_FIRST_NAME);
        EXPECT_EQ(turned.y < start.y, HasBar(dialog, SB_VERT));
        SendMessageW(dialog, WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
        EXPECT_EQ(PlaceOf(dialog, IDC_FIRST_NAME).y, start.y);
        SendMessageW(dialog, WM_VSCROLL, SB_LINEDOWN, 0);
        EXPECT_EQ(PlaceOf(dialog, IDC_FIRST_NAME).y, turned.y);
        EXPECT_EQ(turned.x, start.x);
        SendMessageW(dialog, WM_HSCROLL, SB_LINERIGHT, 0);
        EXPECT_EQ(PlaceOf(dialog, IDC_FIRST_NAME).x < start.x, HasBar(dialog, SB_HORZ));
        EXPECT_EQ(PlaceOf(dialog, IDC_FIRST_NAME).y, turned.y);
        EndDialog(dialog, 0);
    });
}

TEST(OnScreenContact, LiesInTheMiddle)
{
    OpenContact([](HWND dialog) {
        RECT window{};
        GetWindowRect(dialog, &window);
        const RECT area = WorkArea();
        EXPECT_LE(std::abs((window.left - area.left) - (area.right - window.right)), 1);
        EXPECT_LE(std::abs((window.top - area.top) - (area.bottom - window.bottom)), 1);
        EndDialog(dialog, 0);
    });
}

TEST_F(ContactDialogTest, EverythingIsWithinReachAtAnotherResolutionWhileOpen)
{
    OpenContact([](HWND dialog) {
        const ScopedWorkArea area(dialog, {0, 0, Scale(640), Scale(240)});
        TellDialogResolution(dialog, 2);
        EXPECT_TRUE(HasBar(dialog, SB_VERT));
        EXPECT_TRUE(HasBar(dialog, SB_HORZ));
        DialogWindow(dialog).ExpectInReach();
        TellDialogResolution(dialog, 1, 2);
        DialogWindow(dialog).ExpectInReach();
        EndDialog(dialog, 0);
    });
}

// Each control that takes the focus can be seen then, whatever the screen.
TEST(OnScreenContact, EverythingIsWithinReach)
{
    OpenContact([](HWND dialog) {
        // A control is told of the focus only in a window that has the keyboard.
        ShowWindow(dialog, SW_SHOW);
        EXPECT_TRUE(PumpUntil([&] {
            SetForegroundWindow(dialog);
            return GetForegroundWindow() == dialog && IsChild(dialog, GetFocus());
        }));
        RECT window{}, client{};
        GetWindowRect(dialog, &window);
        GetClientRect(dialog, &client);
        const RECT area = WorkArea();
        EXPECT_GE(window.left, area.left);
        EXPECT_GE(window.top, area.top);
        EXPECT_LE(window.right, area.right);
        EXPECT_LE(window.bottom, area.bottom);
        HWND control = nullptr;
        int count = 0;
        while ((control = GetNextDlgTabItem(dialog, control, FALSE)) != nullptr && count++ < 12) {
            SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
            RECT place{};
            GetWindowRect(control, &place);
            MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
            EXPECT_GE(place.top, 0) << GetDlgCtrlID(control);
            EXPECT_LE(place.bottom, client.bottom) << GetDlgCtrlID(control);
            EXPECT_GE(place.left, 0) << GetDlgCtrlID(control);
            EXPECT_LE(place.right, std::max(client.right, place.left + 1)) << GetDlgCtrlID(control);
        }
        EXPECT_EQ(count, 13);
        EndDialog(dialog, 0);
    });
}

} // namespace

} // namespace addrbook
