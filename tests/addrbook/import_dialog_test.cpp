#include "addrbook/import_dialog.h"

#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "addrbook/resource.h"
#include "support/help_requests.h"
#include "support/test_windows.h"
#include "ui/screen/work_area.h"

namespace addrbook {

namespace {

ImportQuestion QuestionOf(std::vector<FieldChange> changes)
{
    return {"Doe & S\xC3\xB6hne, Jane", std::move(changes)};
}

const FieldChange kCompany{L"Company", "Acme", "Acme Ltd"};

void Press(HWND dialog, int id)
{
    PostMessageW(GetDlgItem(dialog, id), BM_CLICK, 0, 0);
}

ImportAnswer Ask(const ImportQuestion& question, std::function<void(HWND)> work)
{
    const TestParent parent;
    const ModalDriver driver([&](HWND dialog) {
        EXPECT_FALSE(IsWindowEnabled(parent.Handle())) << "its owner waits";
        work(dialog);
    });
    const ImportAnswer answer = AskAboutCard(GetModuleHandleW(nullptr), parent.Handle(), question);
    EXPECT_TRUE(driver.Ran());
    return answer;
}

TEST(ImportDialog, EachButtonIsAnAnswer)
{
    constexpr std::pair<int, ImportChoice> kButtons[] = {{IDC_CARD_UPDATE, ImportChoice::Update},
                                                         {IDC_CARD_ADD, ImportChoice::AddAsNew},
                                                         {IDOK, ImportChoice::Skip},
                                                         {IDCANCEL, ImportChoice::Cancel}};
    for (const auto& [id, choice] : kButtons)
        for (const bool isForAll : {false, true}) {
            const ImportAnswer answer = Ask(QuestionOf({kCompany}), [&](HWND dialog) {
                CheckDlgButton(dialog, IDC_CARD_FOR_ALL, isForAll ? BST_CHECKED : BST_UNCHECKED);
                Press(dialog, id);
            });
            EXPECT_EQ(answer.choice, choice);
            EXPECT_EQ(answer.isForAll, isForAll);
        }
}

// Neither a key that still repeats nor a closed window changes a contact.
TEST(ImportDialog, EnterSkipsAndClosingCancels)
{
    EXPECT_EQ(Ask(QuestionOf({kCompany}),
                  [](HWND dialog) {
                      EXPECT_EQ(GetDlgCtrlID(GetFocus()), IDC_CARD_CHANGES);
                      EXPECT_EQ(LOWORD(SendMessageW(dialog, DM_GETDEFID, 0, 0)), IDOK);
                      PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 0);
                  })
                  .choice,
              ImportChoice::Skip);
    for (const UINT message : {UINT{WM_CLOSE}, UINT{WM_KEYDOWN}})
        EXPECT_EQ(Ask(QuestionOf({kCompany}),
                      [&](HWND dialog) {
                          PostMessageW(message == WM_CLOSE ? dialog : GetFocus(), message,
                                       message == WM_CLOSE ? 0 : VK_ESCAPE, 0);
                      })
                      .choice,
                  ImportChoice::Cancel);
}

TEST(ImportDialog, ShowsWhoseCardItIsAndWhatItChanges)
{
    Ask(QuestionOf({kCompany, {L"Phones", "", "1\n2"}}), [](HWND dialog) {
        EXPECT_EQ(WindowText(GetDlgItem(dialog, IDC_CARD_NAME)),
                  L"A card in the file would change \"Doe & S\u00F6hne, Jane\":");
        EXPECT_EQ(WindowText(GetDlgItem(dialog, IDC_CARD_CHANGES)),
                  L"Company\r\n    now\tAcme\r\n    then\tAcme Ltd\r\n\r\n"
                  L"Phones\r\n    now\t(nothing)\r\n    then\t1\r\n\t2\r\n");
        SendMessageW(GetDlgItem(dialog, IDC_CARD_CHANGES), EM_REPLACESEL, FALSE,
                     reinterpret_cast<LPARAM>(L""));
        EXPECT_NE(GetWindowLongPtrW(GetDlgItem(dialog, IDC_CARD_CHANGES), GWL_STYLE) & ES_READONLY, 0);
        Press(dialog, IDCANCEL);
    });
}

TEST(ImportDialog, LongTextsAreCut)
{
    ImportQuestion question = QuestionOf({{L"Note", std::string(1'000'000, 'n'), "x"}});
    question.name.assign(1000, 'a');
    Ask(question, [](HWND dialog) {
        EXPECT_LT(GetWindowTextLengthW(GetDlgItem(dialog, IDC_CARD_CHANGES)), 2200);
        EXPECT_LT(GetWindowTextLengthW(GetDlgItem(dialog, IDC_CARD_NAME)), 120);
        Press(dialog, IDCANCEL);
    });
}

TEST(ImportDialog, AHelpRequestOpensItsPage)
{
    const HelpRequests requests;
    Ask(QuestionOf({kCompany}), [](HWND dialog) {
        SendMessageW(dialog, WM_HELP, 0, 0);
        Press(dialog, IDCANCEL);
    });
    EXPECT_EQ(requests.Asked(), (std::vector<std::wstring>{L"pellwyn.htm#Address_Transfer"}));
}

// A static, a box or a button is as wide as its text.
void ExpectTextFits(HWND control, int around)
{
    const std::wstring text = WindowText(control);
    HDC dc = GetDC(control);
    HGDIOBJ before = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)));
    RECT needed{}, place{};
    DrawTextW(dc, text.c_str(), -1, &needed, DT_CALCRECT | DT_SINGLELINE);
    SelectObject(dc, before);
    ReleaseDC(control, dc);
    GetClientRect(control, &place);
    EXPECT_LE(needed.right + around, place.right) << GetDlgCtrlID(control);
    EXPECT_LE(needed.bottom, place.bottom) << GetDlgCtrlID(control);
}

// Each control that takes the focus can be seen then, whatever the screen.
TEST(OnScreenImport, EverythingIsWholeAndWithinReach)
{
    std::vector<FieldChange> changes(10, {L"Note", std::string(50, 'n'), "one\ntwo\nthree"});
    Ask(QuestionOf(changes), [](HWND dialog) {
        ShowWindow(dialog, SW_SHOW);
        EXPECT_TRUE(PumpUntil([&] {
            SetForegroundWindow(dialog);
            return GetForegroundWindow() == dialog && IsChild(dialog, GetFocus());
        }));
        RECT window{}, client{};
        GetWindowRect(dialog, &window);
        GetClientRect(dialog, &client);
        const RECT area = WorkArea();
        EXPECT_LE(window.right - window.left, area.right - area.left);
        EXPECT_LE(window.bottom - window.top, area.bottom - area.top);
        std::vector<int> order;
        HWND control = nullptr;
        while ((control = GetNextDlgTabItem(dialog, control, FALSE)) != nullptr && order.size() < 6) {
            SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
            order.push_back(GetDlgCtrlID(control));
            RECT place{};
            GetWindowRect(control, &place);
            MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
            EXPECT_GE(place.top, 0) << order.back();
            EXPECT_LE(place.bottom, client.bottom) << order.back();
            EXPECT_GE(place.left, 0) << order.back();
            const bool isWider = place.right - place.left > client.right;
            EXPECT_TRUE(isWider || place.right <= client.right) << order.back();
        }
        EXPECT_EQ(order, (std::vector<int>{IDC_CARD_CHANGES, IDC_CARD_FOR_ALL, IDC_CARD_UPDATE, IDC_CARD_ADD,
                                           IDOK, IDCANCEL}));
        ExpectTextFits(GetDlgItem(dialog, IDC_CARD_LACKS), 0);
        ExpectTextFits(GetDlgItem(dialog, IDC_CARD_FOR_ALL), 16);
        for (const int id :
             {IDC_CARD_UPDATE, IDC_CARD_ADD, static_cast<int>(IDOK), static_cast<int>(IDCANCEL)})
            ExpectTextFits(GetDlgItem(dialog, id), 6);
        Press(dialog, IDCANCEL);
    });
}

} // namespace

} // namespace addrbook
