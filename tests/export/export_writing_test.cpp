// What the Export dialog does once OK is pressed.
#include <windows.h>
#include <commctrl.h>

#include "export/export_window.h"
#include "res/resource.h"
#include "support/import_watch.h"
#include "support/unreadable_table.h"

extern "C" {
extern decltype(&GetTickCount64) __imp_GetTickCount64;
extern decltype(&MessageBoxW) __imp_MessageBoxW;
}

namespace {

// The clock runs so fast that the dialog looks at its messages after each entry.
ULONGLONG WINAPI RunFast()
{
    static ULONGLONG s_now = 0;
    return s_now += 1000;
}

// What is looked at in the place of the box at the end.
std::function<void()> g_onBox;

int WINAPI SeeBox(HWND, LPCWSTR, LPCWSTR, UINT)
{
    if (g_onBox)
        g_onBox();
    return IDOK;
}

// So slowly that it does not look at them behind any.
ULONGLONG WINAPI RunSlowly()
{
    static ULONGLONG s_now = 1000;
    return ++s_now;
}

class ExportWritingTest : public ExportDialogTest {
  protected:
    // Exports the subjects alone, without a header, and lets act see the dialog after each flush.
    void Watch(const std::function<void(ExportWindow&, size_t piece)>& act, HWND owner = nullptr)
    {
        const ImportWatch<decltype(&GetTickCount64)> clock(&__imp_GetTickCount64, RunFast);
        Own().SetNumber(L"Settings", L"WriteHeader", 0);
        const MessageBoxAnswerer answerer;
        PieceWatch pieces;
        Run(
            ExportFormat::CommaSeparated,
            [&](ExportWindow& dialog) {
                for (const wchar_t* title : {L"Date", L"Body", L"Categories", L"Type", L"Priority",
                                             L"Sensitivity", L"End Time", L"Duration", L"Contacts"})
                    dialog.ClickField(title);
                pieces.onFlush = [&](size_t piece) { act(dialog, piece); };
                dialog.Ok();
            },
            owner);
        m_boxes = answerer.Boxes();
    }
    // The pieces of one entry's row.
    static constexpr size_t kPieces = 3;

    std::vector<MessageBoxAnswerer::Box> m_boxes;
};

TEST_F(ExportWritingTest, TellsHowManyWentOut)
{
    EXPECT_EQ(RunThrough(ExportFormat::CommaSeparated), L"Exported 0 records");
    AddEntry(1, L"one");
    EXPECT_EQ(RunThrough(ExportFormat::CommaSeparated), L"Exported 1 record");
    AddEntries(11);
    EXPECT_EQ(RunThrough(ExportFormat::SimpleText), L"Exported 12 records");
}

TEST_F(ExportWritingTest, TellsBehindTheCountThatNotAllCouldBeRead)
{
    AddEntry(1, L"one");
    const MessageBoxAnswerer answerer;
    HWND window = nullptr;
    Run(ExportFormat::CommaSeparated, [&](ExportWindow& dialog) {
        window = dialog.Window();
        const UnreadableTable none(m_store.Path(), "journal");
        dialog.Ok();
    });
    ASSERT_EQ(answerer.Boxes().size(), 2u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"Exported 0 records");
    EXPECT_TRUE(answerer.Boxes()[1].text.starts_with(L"Not every entry could be read and exported: "));
    EXPECT_TRUE(answerer.Boxes()[1].text.ends_with(L"Nothing that was stored before is lost."));
    EXPECT_EQ(answerer.Boxes()[1].owner, window);
}

TEST_F(ExportWritingTest, TheBoxBelongsToTheDialogAndHasOneButton)
{
    const MessageBoxAnswerer answerer;
    HWND window = nullptr;
    Run(ExportFormat::CommaSeparated, [&](ExportWindow& dialog) {
        window = dialog.Window();
        dialog.Ok();
        EXPECT_FALSE(IsWindowVisible(window)) << "the dialog has closed";
    });
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].caption, L"Export Completed");
    EXPECT_EQ(answerer.Boxes()[0].owner, window);
    EXPECT_EQ(answerer.Boxes()[0].answers, std::vector<int>{IDOK});
    EXPECT_EQ(answerer.Boxes()[0].icon, nullptr);
}

TEST_F(ExportWritingTest, WhatIsChosenIsWritten)
{
    AddGoldenEntries();
    EXPECT_EQ(RunThrough(ExportFormat::CommaSeparated), L"Exported 7 records");
    EXPECT_EQ(m_file.Bytes(), Golden("all_fields.csv"));
    EXPECT_EQ(RunThrough(ExportFormat::CommaSeparated,
                         [](ExportWindow& dialog) {
                             for (const wchar_t* title : {L"Date", L"Categories", L"Type", L"Sensitivity",
                                                          L"End Time", L"Duration", L"Contacts"})
                                 dialog.ClickField(title);
                             dialog.Click(kHeader);
                         }),
              L"Exported 7 records");
    EXPECT_EQ(m_file.Bytes(), Golden("three_fields.csv"));
    EXPECT_EQ(RunThrough(ExportFormat::SimpleText), L"Exported 7 records");
    EXPECT_EQ(m_file.Bytes(), Golden("plain.txt")) << "the flag is the last export's";
    RunThrough(ExportFormat::SimpleText, [](ExportWindow& dialog) { dialog.Click(kHeader); });
    EXPECT_EQ(m_file.Bytes(), Golden("labels.txt"));
}

TEST_F(ExportWritingTest, ChoicesAreKept)
{
    RunThrough(ExportFormat::CommaSeparated, [](ExportWindow& dialog) {
        dialog.ClickField(L"Subject");
        dialog.ClickField(L"Contacts");
        dialog.Click(kHeader);
    });
    for (const ZColumn& column : m_columns.columns) {
        const bool chosen = column.Property() != 102 && column.Property() != 106 && column.Property() != 111;
        EXPECT_EQ(column.Has(kColumnExport), chosen) << column.Property();
    }
    EXPECT_EQ(Own().GetNumber(L"Settings", L"WriteHeader", 99), 0u);
    EXPECT_EQ(Own().GetNumber(L"Settings", L"Column0", 0) & 0x40, 0x40u);
    EXPECT_EQ(Own().GetNumber(L"Settings", L"Column1", 0x40) & 0x40, 0u);
    Run(ExportFormat::CommaSeparated, [](ExportWindow& dialog) {
        EXPECT_FALSE(dialog.IsOn(kHeader));
        EXPECT_EQ(dialog.SelectedFields(), dialog.Fields()) << "each export begins with all of them";
        dialog.Cancel();
    });
    RunThrough(ExportFormat::SimpleText, [](ExportWindow& dialog) { dialog.Click(kHeader); });
    EXPECT_EQ(Own().GetNumber(L"Settings", L"WriteHeader", 99), 1u);
}

TEST_F(ExportWritingTest, TheSelectedOnesComeInTheOrderOfSelecting)
{
    const CEOID one = AddEntry(1, L"one"), two = AddEntry(2, L"two"), three = AddEntry(3, L"three");
    for (const CEOID id : {three, one})
        m_selection.Append(id);
    EXPECT_EQ(RunThrough(ExportFormat::SimpleText,
                         [](ExportWindow& dialog) {
                             dialog.Click(kSelected);
                             dialog.Click(kHeader);
                         }),
              L"Exported 2 records");
    EXPECT_EQ(m_file.Bytes(), "1/1/2000 12:03 AM\r\nNormal\r\nNormal\r\nthree\r\n\r\n\r\n"
                              "1/1/2000 12:01 AM\r\nNormal\r\nNormal\r\none\r\n\r\n\r\n");
    EXPECT_NE(two, 0u);
}

TEST_F(ExportWritingTest, FilteredTellsWhatItLookedAt)
{
    for (WORD i = 1; i <= 10; ++i)
        TestRecord().Time(kPropDate, Instant(2000, i <= 3 ? 5 : 6, i)).Write();
    FilterMonth(5);
    EXPECT_EQ(RunThrough(ExportFormat::SimpleText,
                         [](ExportWindow& dialog) {
                             dialog.Click(kFiltered);
                             dialog.Click(kHeader);
                         }),
              L"Exported 10 records");
    EXPECT_EQ(m_file.Bytes(), "5/1/2000 12:00 AM\r\nNormal\r\nNormal\r\n\r\n\r\n"
                              "5/2/2000 12:00 AM\r\nNormal\r\nNormal\r\n\r\n\r\n"
                              "5/3/2000 12:00 AM\r\nNormal\r\nNormal\r\n\r\n\r\n");
}

TEST_F(ExportWritingTest, FollowsTheSortOfTheList)
{
    AddEntries(3);
    Own().Journal().SetSort({kPropDate, CEDB_SORT_DESCENDING}, 1);
    Watch([](ExportWindow&, size_t) {});
    EXPECT_EQ(m_file.Bytes(), "\"entry 2\"\r\n\"entry 1\"\r\n\"entry 0\"\r\n");
}

TEST_F(ExportWritingTest, TheBarGoesUpToTheCount)
{
    AddEntries(4);
    std::vector<LRESULT> positions;
    Watch([&](ExportWindow& dialog, size_t piece) {
        EXPECT_TRUE(dialog.IsShown(kProgress));
        EXPECT_FALSE(dialog.IsShown(kHeader));
        PBRANGE range{};
        dialog.Ask(kProgress, PBM_GETRANGE, TRUE, reinterpret_cast<LPARAM>(&range));
        EXPECT_EQ(range.iLow, 0);
        EXPECT_EQ(range.iHigh, 4);
        if (piece % kPieces == 1)
            positions.push_back(dialog.Ask(kProgress, PBM_GETPOS));
    });
    EXPECT_EQ(positions, (std::vector<LRESULT>{0, 1, 2, 3}));
}

TEST_F(ExportWritingTest, TheBarCountsBeyondSixteenBits)
{
    constexpr CEOID kMany = 70'000;
    m_selection.Append(AddEntry(1, L"one"));
    for (CEOID gone = 1000; m_selection.Count() < kMany; ++gone)
        m_selection.Append(gone);
    PBRANGE range{};
    const MessageBoxAnswerer answerer;
    PieceWatch pieces;
    Run(ExportFormat::SimpleText, [&](ExportWindow& dialog) {
        pieces.onFlush = [&](size_t) {
            dialog.Ask(kProgress, PBM_GETRANGE, TRUE, reinterpret_cast<LPARAM>(&range));
        };
        dialog.Click(kSelected);
        dialog.Ok();
    });
    EXPECT_EQ(range.iHigh, int{kMany});
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"Exported 1 record");
}

TEST_F(ExportWritingTest, NothingCanBeChosenWhileItWrites)
{
    AddEntries(2);
    m_selection.Append(1);
    FilterMonth(5);
    TestParent owner;
    bool looked = false;
    Watch(
        [&](ExportWindow& dialog, size_t) {
            looked = true;
            for (const int id : {IDOK, kAll, kSelected, kFiltered, kFields})
                EXPECT_FALSE(dialog.IsEnabled(id)) << id;
            EXPECT_TRUE(dialog.IsEnabled(IDCANCEL));
            EXPECT_TRUE(dialog.HasFocus(IDCANCEL));
            EXPECT_FALSE(IsWindowEnabled(owner.Handle()));
            EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
        },
        owner.Handle());
    EXPECT_TRUE(looked);
    EXPECT_NE(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
}

TEST_F(ExportWritingTest, TheHourglassStaysOverTheWindow)
{
    AddEntries(1);
    LRESULT answer = 0;
    Watch([&](ExportWindow& dialog, size_t) {
        SetCursor(LoadCursorW(nullptr, IDC_ARROW));
        answer = SendMessageW(dialog.Window(), WM_SETCURSOR, reinterpret_cast<WPARAM>(dialog.Window()),
                              MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
        EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
    });
    EXPECT_EQ(answer, TRUE);
    Run(ExportFormat::SimpleText, [](ExportWindow& dialog) {
        SendMessageW(dialog.Window(), WM_SETCURSOR, reinterpret_cast<WPARAM>(dialog.Window()),
                     MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
        EXPECT_NE(GetCursor(), LoadCursorW(nullptr, IDC_WAIT)) << "only while it writes";
    });
}

TEST_F(ExportWritingTest, WindowsPaintThemselvesMeanwhile)
{
    AddEntries(3);
    int paints = 0;
    TestParent below([&](HWND, UINT message, WPARAM, LPARAM, LRESULT*) {
        paints += message == WM_PAINT;
        return false;
    });
    PumpMessages();
    std::vector<int> painted;
    Watch([&](ExportWindow&, size_t piece) {
        if (piece % kPieces != 1)
            return;
        painted.push_back(paints);
        InvalidateRect(below.Handle(), nullptr, TRUE);
    });
    ASSERT_EQ(painted.size(), 3u);
    EXPECT_LT(painted[0], painted[1]);
    EXPECT_LT(painted[1], painted[2]);
}

TEST_F(ExportWritingTest, WindowsPaintThemselvesBeforeTheFirstEntry)
{
    AddEntries(1);
    int paints = 0;
    TestParent below([&](HWND, UINT message, WPARAM, LPARAM, LRESULT*) {
        paints += message == WM_PAINT;
        return false;
    });
    const MessageBoxAnswerer answerer;
    PieceWatch pieces;
    std::vector<int> painted;
    pieces.onFlush = [&](size_t) { painted.push_back(paints); };
    Run(ExportFormat::CommaSeparated, [&](ExportWindow& dialog) {
        PumpMessages();
        paints = 0;
        InvalidateRect(below.Handle(), nullptr, TRUE);
        dialog.Ok();
    });
    ASSERT_FALSE(painted.empty());
    EXPECT_GT(painted[0], 0);
}

TEST_F(ExportWritingTest, AStopComesBehindTheEntryThatIsBeingWritten)
{
    enum class Way { Escape, Button, Close };
    AddEntries(5);
    for (const Way way : {Way::Escape, Way::Button, Way::Close}) {
        ASSERT_TRUE(WriteFileBytes(m_file.Path(), std::string(500, 'x')));
        Watch([&](ExportWindow& dialog, size_t piece) {
            if (piece != kPieces + 1) // in the midst of the second row
                return;
            if (way == Way::Escape)
                PostMessageW(dialog.Item(IDCANCEL), WM_KEYDOWN, VK_ESCAPE, 0);
            else if (way == Way::Button)
                PostMessageW(dialog.Item(IDCANCEL), BM_CLICK, 0, 0);
            else
                PostMessageW(dialog.Window(), WM_CLOSE, 0, 0);
        });
        EXPECT_EQ(m_file.Bytes(), "\"entry 0\"\r\n\"entry 1\"\r\n");
        ASSERT_EQ(m_boxes.size(), 1u);
        EXPECT_EQ(m_boxes[0].text, L"Exported 2 records");
    }
}

TEST_F(ExportWritingTest, AStopBeforeTheFirstEntryWritesNothing)
{
    AddEntries(5);
    const MessageBoxAnswerer answerer;
    Run(ExportFormat::CommaSeparated, [](ExportWindow& dialog) {
        PostMessageW(dialog.Window(), WM_COMMAND, IDCANCEL, 0);
        dialog.Ok();
    });
    EXPECT_EQ(m_file.Bytes(), "");
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"Exported 0 records");
}

TEST_F(ExportWritingTest, EnterDoesNotStopIt)
{
    AddEntries(3);
    Watch([&](ExportWindow& dialog, size_t piece) {
        if (piece == 1)
            PostMessageW(dialog.Item(IDCANCEL), WM_KEYDOWN, VK_RETURN, 0x40000001);
    });
    ASSERT_EQ(m_boxes.size(), 1u);
    EXPECT_EQ(m_boxes[0].text, L"Exported 3 records");
}

TEST_F(ExportWritingTest, OkDoesNotBeginAgain)
{
    AddEntries(3);
    Watch([&](ExportWindow& dialog, size_t) { PostMessageW(dialog.Window(), WM_COMMAND, IDOK, 0); });
    EXPECT_EQ(m_boxes.size(), 1u);
    EXPECT_EQ(m_file.Bytes(), "\"entry 0\"\r\n\"entry 1\"\r\n\"entry 2\"\r\n");
}

TEST_F(ExportWritingTest, AllIsDoneWhenTheBoxComes)
{
    const ImportWatch<decltype(&GetTickCount64)> clock(&__imp_GetTickCount64, RunSlowly);
    const ImportWatch<decltype(&MessageBoxW)> box(&__imp_MessageBoxW, SeeBox);
    AddEntries(3);
    ASSERT_TRUE(WriteFileBytes(m_file.Path(), std::string(5000, 'x')));
    std::string seen;
    PieceWatch pieces;
    Run(ExportFormat::SimpleText, [&](ExportWindow& dialog) {
        pieces.onFlush = [&](size_t) {
            EXPECT_EQ(dialog.Ask(kProgress, PBM_GETPOS), 0) << "it is moved ten times a second, no more";
        };
        g_onBox = [&] {
            seen = m_file.Bytes();
            EXPECT_EQ(dialog.Ask(kProgress, PBM_GETPOS), 3);
            EXPECT_TRUE(IsWindowVisible(dialog.Window()));
            SendMessageW(dialog.Window(), WM_SETCURSOR, reinterpret_cast<WPARAM>(dialog.Window()),
                         MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
            EXPECT_NE(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
        };
        dialog.Ok();
        g_onBox = nullptr;
    });
    EXPECT_EQ(seen.substr(0, 6), "Date: ") << "nobody holds the file any more";
    EXPECT_EQ(seen.find('x'), std::string::npos) << "the longer one is cut";
}

TEST_F(ExportWritingTest, AClosedProgramEndsIt)
{
    AddEntries(5);
    Watch([&](ExportWindow&, size_t piece) {
        if (piece == kPieces + 1)
            PostQuitMessage(7);
    });
    EXPECT_EQ(m_file.Bytes(), "\"entry 0\"\r\n\"entry 1\"\r\n");
    EXPECT_TRUE(m_boxes.empty());
    MSG message;
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) << "the program still ends";
    EXPECT_EQ(message.wParam, 7u);
}

TEST_F(ExportWritingTest, AnOwnerThatIsDestroyedEndsIt)
{
    AddEntries(5);
    TestParent owner([](HWND window, UINT message, WPARAM, LPARAM, LRESULT*) {
        if (message == WM_APP)
            DestroyWindow(window);
        return false;
    });
    Watch(
        [&](ExportWindow&, size_t piece) {
            if (piece == kPieces + 1)
                PostMessageW(owner.Handle(), WM_APP, 0, 0);
        },
        owner.Handle());
    EXPECT_EQ(m_file.Bytes(), "\"entry 0\"\r\n\"entry 1\"\r\n");
    EXPECT_TRUE(m_boxes.empty());
}

TEST_F(ExportWritingTest, AFileThatCannotBeOpenedStillEndsInTheCount)
{
    AddEntries(2);
    ASSERT_TRUE(CreateDirectoryW(m_file.Path().c_str(), nullptr)) << "a folder in the file's place";
    EXPECT_EQ(RunThrough(ExportFormat::CommaSeparated), L"Exported 2 records");
    EXPECT_EQ(RunThrough(ExportFormat::SimpleText), L"Exported 2 records");
    EXPECT_TRUE(RemoveDirectoryW(m_file.Path().c_str())) << "it is there, and empty";
}

TEST_F(ExportWritingTest, AFileThatIsHeldStillEndsInTheCount)
{
    AddEntries(2);
    ASSERT_TRUE(WriteFileBytes(m_file.Path(), "theirs"));
    HANDLE theirs =
        CreateFileW(m_file.Path().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(theirs, INVALID_HANDLE_VALUE);
    EXPECT_EQ(RunThrough(ExportFormat::CommaSeparated), L"Exported 2 records");
    CloseHandle(theirs);
    EXPECT_EQ(m_file.Bytes(), "theirs");
}

} // namespace
