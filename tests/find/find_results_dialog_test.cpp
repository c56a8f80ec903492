#include "find/find_results_dialog.h"

#include <commctrl.h>
#include <sqlite3.h>

#include <functional>

#include "support/dialog_window.h"
#include "support/editor_stand_in.h"
#include "support/help_requests.h"
#include "support/journal_fixture.h"
#include "support/resolution.h"
#include "support/test_windows.h"
#include "ui/screen/scale.h"
#include "util/date_text.h"

namespace {

constexpr int kList = 1041, kCount = 1042;

using Row = std::vector<std::wstring>;

class FindResultsTest : public JournalTest {
  protected:
    void Run(const std::vector<CEOID>& found, const std::function<void(const DialogWindow&)>& action,
             HWND owner = nullptr)
    {
        ModalDriver driver([&](HWND window) {
            ShowWindow(window, SW_SHOW); // the dialog manager shows it once it has nothing else to do
            const DialogWindow dialog(window);
            action(dialog);
            if (IsWindow(window))
                dialog.Ok();
        });
        RunFindResults(Own(), owner, found);
        EXPECT_TRUE(driver.Ran());
    }
    static int RowCount(const DialogWindow& dialog) { return ListView_GetItemCount(dialog.Item(kList)); }
    static std::wstring Cell(const DialogWindow& dialog, int row, int column)
    {
        wchar_t text[300] = L"";
        LVITEMW item{};
        item.iSubItem = column;
        item.pszText = text;
        item.cchTextMax = 300;
        dialog.Ask(kList, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        return text;
    }
    static CEOID IdOf(const DialogWindow& dialog, int row)
    {
        LVITEMW item{};
        item.mask = LVIF_PARAM;
        item.iItem = row;
        EXPECT_TRUE(ListView_GetItem(dialog.Item(kList), &item));
        return static_cast<CEOID>(item.lParam);
    }
    static int Selected(const DialogWindow& dialog)
    {
        return ListView_GetNextItem(dialog.Item(kList), -1, LVNI_SELECTED);
    }
    static void Select(const DialogWindow& dialog, int row)
    {
        ListView_SetItemState(dialog.Item(kList), row, LVIS_SELECTED | LVIS_FOCUSED,
                              LVIS_SELECTED | LVIS_FOCUSED);
    }
    static void DoubleClick(const DialogWindow& dialog, int row)
    {
        RECT rect{};
        ASSERT_TRUE(ListView_GetItemRect(dialog.Item(kList), row, &rect, LVIR_LABEL));
        DoubleClick(dialog, {rect.left + 5, (rect.top + rect.bottom) / 2});
    }
    static void DoubleClick(const DialogWindow& dialog, POINT place)
    {
        const LPARAM point = MAKELPARAM(place.x, place.y);
        PostMessageW(dialog.Item(kList), WM_LBUTTONDOWN, MK_LBUTTON, point);
        PostMessageW(dialog.Item(kList), WM_LBUTTONUP, 0, point);
        PumpMessages();
        PostMessageW(dialog.Item(kList), WM_LBUTTONDBLCLK, MK_LBUTTON, point);
        PostMessageW(dialog.Item(kList), WM_LBUTTONUP, 0, point);
        PumpMessages();
    }
    // What opens the editor, and what the user does in it.
    static void InEditor(const DialogWindow& results, const std::function<void()>& open,
                         const std::function<void(CEOID* id)>& work)
    {
        g_editorRuns = 0;
        g_edit = [&](CEOID* id) {
            work(id);
            return 1;
        };
        open();
        g_edit = nullptr;
        EXPECT_EQ(g_editorRuns, 1);
        EXPECT_EQ(g_editorOwner, results.Window());
    }
    // Changes the store from another connection.
    void Execute(const std::string& sql)
    {
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open16(m_store.Path().c_str(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(database);
    }
    static void Retitle(CEOID id, const wchar_t* subject)
    {
        CEPROPVAL property{};
        property.propid = kPropSubject;
        property.val.lpwstr = const_cast<wchar_t*>(subject);
        EXPECT_EQ(Own().Journal().WriteRecord(id, 1, &property), id);
    }
};

} // namespace

TEST_F(FindResultsTest, ShowsWhatWasFoundInItsOrder)
{
    const CEOID late = AddEntry(30, L"late"), early = AddEntry(10, L"early");
    Run({late, early}, [&](const DialogWindow& dialog) {
        EXPECT_EQ(WindowText(dialog.Window()), L"Find Results...");
        EXPECT_EQ(dialog.Text(kCount), L"2");
        ASSERT_EQ(RowCount(dialog), 2);
        EXPECT_EQ(Cell(dialog, 0, 0), DateTimeText(Instant(2000, 1, 1, 0, 30)));
        EXPECT_EQ(Cell(dialog, 0, 1), L"late");
        EXPECT_EQ(IdOf(dialog, 0), late);
        EXPECT_EQ(Cell(dialog, 1, 0), DateTimeText(Instant(2000, 1, 1, 0, 10)));
        EXPECT_EQ(Cell(dialog, 1, 1), L"early");
        EXPECT_EQ(IdOf(dialog, 1), early);
    });
}

TEST_F(FindResultsTest, NothingFoundIsNought)
{
    Run({}, [](const DialogWindow& dialog) {
        EXPECT_EQ(dialog.Text(kCount), L"0");
        EXPECT_EQ(RowCount(dialog), 0);
        EXPECT_EQ(GetFocus(), dialog.Item(IDOK));
        dialog.Key(VK_RETURN);
        EXPECT_FALSE(IsWindowVisible(dialog.Window())) << "Enter closes it";
    });
}

TEST_F(FindResultsTest, TheListHasItsStyleAndColumns)
{
    const CEOID id = AddEntry(1, L"one");
    Run({id}, [](const DialogWindow& dialog) {
        HWND list = dialog.Item(kList);
        constexpr LONG_PTR kStyle = LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER;
        EXPECT_EQ(GetWindowLongPtrW(list, GWL_STYLE) & (kStyle | LVS_TYPEMASK), kStyle | LVS_REPORT);
        EXPECT_EQ(ListView_GetExtendedListViewStyle(list), DWORD{LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER});
        for (const auto& [column, title] : {std::pair(0, L"Date"), std::pair(1, L"Subject")}) {
            wchar_t text[20] = L"";
            LVCOLUMNW info{};
            info.mask = LVCF_TEXT | LVCF_WIDTH;
            info.pszText = text;
            info.cchTextMax = 20;
            ASSERT_TRUE(ListView_GetColumn(list, column, &info));
            EXPECT_STREQ(text, title);
            EXPECT_GE(info.cx, Scale(60));
        }
        EXPECT_EQ(Header_GetItemCount(ListView_GetHeader(list)), 2);
        EXPECT_EQ(Selected(dialog), 0);
        EXPECT_EQ(GetFocus(), list);
    });
}

TEST_F(FindResultsTest, TheColumnsFollowAnotherResolution)
{
    const CEOID id = AddEntry(1, L"one");
    Run({id}, [](const DialogWindow& dialog) {
        HWND list = dialog.Item(kList);
        const int date = ListView_GetColumnWidth(list, 0), subject = ListView_GetColumnWidth(list, 1);
        TellResolution(dialog.Window(), 2);
        EXPECT_EQ(ListView_GetColumnWidth(list, 0), 2 * date);
        EXPECT_EQ(ListView_GetColumnWidth(list, 1), 2 * subject);
        TellResolution(dialog.Window(), 1, 2);
        EXPECT_EQ(ListView_GetColumnWidth(list, 0), date);
        EXPECT_EQ(ListView_GetColumnWidth(list, 1), subject);
    });
}

TEST_F(FindResultsTest, WhatCannotBeReadIsPassedOver)
{
    const CEOID first = AddEntry(1, L"one"), gone = AddEntry(2, L"two"), last = AddEntry(3, L"three");
    ASSERT_EQ(Own().Journal().DeleteRecord(gone), 1);
    Run({first, gone, 777, last}, [&](const DialogWindow& dialog) {
        ASSERT_EQ(RowCount(dialog), 2);
        EXPECT_EQ(dialog.Text(kCount), L"2");
        EXPECT_EQ(IdOf(dialog, 1), last);
    });
}

TEST_F(FindResultsTest, AnEntryWithoutDateOrSubjectHasEmptyCells)
{
    const CEOID bare = TestRecord().Text(kPropBody, L"body").Write();
    Run({bare}, [](const DialogWindow& dialog) {
        ASSERT_EQ(RowCount(dialog), 1);
        EXPECT_EQ(Cell(dialog, 0, 0), L"");
        EXPECT_EQ(Cell(dialog, 0, 1), L"");
    });
}

TEST_F(FindResultsTest, ADoubleClickOpensTheEntryOverTheResultsAndFillsThemAnew)
{
    const auto ids = AddEntries(3);
    Run(ids, [&](const DialogWindow& dialog) {
        InEditor(
            dialog, [&] { DoubleClick(dialog, 1); },
            [&](const CEOID* id) {
                EXPECT_EQ(*id, ids[1]);
                Retitle(*id, L"changed");
            });
        ASSERT_EQ(RowCount(dialog), 3);
        EXPECT_EQ(Cell(dialog, 1, 1), L"changed");
        EXPECT_EQ(Selected(dialog), 1);
        EXPECT_EQ(GetFocus(), dialog.Item(kList));
    });
}

TEST_F(FindResultsTest, EnterOpensTheEntryWithTheFocus)
{
    const auto ids = AddEntries(3);
    Run(ids, [&](const DialogWindow& dialog) {
        dialog.Key(VK_DOWN);
        dialog.Key(VK_DOWN);
        InEditor(
            dialog, [&] { dialog.Key(VK_RETURN); }, [&](const CEOID* id) { EXPECT_EQ(*id, ids[2]); });
        EXPECT_EQ(Selected(dialog), 2);
        EXPECT_TRUE(IsWindowVisible(dialog.Window()));
    });
}

TEST_F(FindResultsTest, ADoubleClickBelowTheRowsOpensNothing)
{
    const auto ids = AddEntries(1);
    Run(ids, [](const DialogWindow& dialog) {
        RECT row{}, inside{};
        ASSERT_TRUE(ListView_GetItemRect(dialog.Item(kList), 0, &row, LVIR_BOUNDS));
        GetClientRect(dialog.Item(kList), &inside);
        ASSERT_LT(row.bottom + 3, inside.bottom);
        g_editorRuns = 0;
        DoubleClick(dialog, {row.left + 5, row.bottom + 3});
        EXPECT_EQ(g_editorRuns, 0);
        EXPECT_TRUE(IsWindowVisible(dialog.Window()));
    });
}

TEST_F(FindResultsTest, ADoubleClickOnTheSubjectOpensTheEntryToo)
{
    const auto ids = AddEntries(3);
    Run(ids, [&](const DialogWindow& dialog) {
        RECT subject{};
        ASSERT_TRUE(ListView_GetSubItemRect(dialog.Item(kList), 2, 1, LVIR_BOUNDS, &subject));
        const POINT place{subject.left + 20, (subject.top + subject.bottom) / 2};
        InEditor(
            dialog, [&] { DoubleClick(dialog, place); }, [&](const CEOID* id) { EXPECT_EQ(*id, ids[2]); });
    });
}

TEST_F(FindResultsTest, EnterWithNothingChosenClosesIt)
{
    const auto ids = AddEntries(2);
    Run(ids, [](const DialogWindow& dialog) {
        ListView_SetItemState(dialog.Item(kList), -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
        SetFocus(dialog.Item(kList));
        g_editorRuns = 0;
        dialog.Key(VK_RETURN);
        EXPECT_EQ(g_editorRuns, 0);
        EXPECT_FALSE(IsWindowVisible(dialog.Window()));
    });
}

TEST_F(FindResultsTest, WhatAnotherProgramChangesShowsAfterTheEditor)
{
    const auto ids = AddEntries(4);
    Run(ids, [&](const DialogWindow& dialog) {
        InEditor(
            dialog, [&] { DoubleClick(dialog, 1); },
            [&](CEOID*) {
                Execute("UPDATE journal SET subject = 'theirs' WHERE oid = " + std::to_string(ids[3]));
                Execute("DELETE FROM journal WHERE oid = " + std::to_string(ids[0]));
                Execute("UPDATE journal SET subject = NULL, date = 'no time' WHERE oid = " +
                        std::to_string(ids[2]));
            });
        ASSERT_EQ(RowCount(dialog), 3);
        EXPECT_EQ(dialog.Text(kCount), L"3");
        EXPECT_EQ(Selected(dialog), 0);
        EXPECT_EQ(IdOf(dialog, 0), ids[1]);
        EXPECT_EQ(Cell(dialog, 1, 0), L"");
        EXPECT_EQ(Cell(dialog, 1, 1), L"");
        EXPECT_EQ(Cell(dialog, 2, 1), L"theirs");
    });
}

TEST_F(FindResultsTest, AnEntryThatIsGoneAlreadyIsOpenedAsANewOne)
{
    const auto ids = AddEntries(2);
    for (const bool saved : {false, true}) {
        const CEOID gone = AddEntry(9, L"gone");
        Run({ids[0], gone, ids[1]}, [&](const DialogWindow& dialog) {
            Execute("DELETE FROM journal WHERE oid = " + std::to_string(gone));
            InEditor(
                dialog, [&] { DoubleClick(dialog, 1); },
                [&](CEOID* id) {
                    EXPECT_EQ(*id, gone);
                    if (saved)
                        *id = AddEntry(9, L"anew");
                });
            ASSERT_EQ(RowCount(dialog), saved ? 3 : 2);
            EXPECT_EQ(Cell(dialog, 1, 1), saved ? L"anew" : L"entry 1");
            EXPECT_EQ(Selected(dialog), 1);
        });
    }
}

TEST_F(FindResultsTest, AllGoneLeavesNoRow)
{
    const auto ids = AddEntries(1);
    Run(ids, [&](const DialogWindow& dialog) {
        InEditor(
            dialog, [&] { DoubleClick(dialog, 0); }, [&](CEOID*) { Execute("DELETE FROM journal"); });
        EXPECT_EQ(RowCount(dialog), 0);
        EXPECT_EQ(dialog.Text(kCount), L"0");
        dialog.Key(VK_RETURN);
        EXPECT_FALSE(IsWindowVisible(dialog.Window()));
    });
}

TEST_F(FindResultsTest, WhatWasDeletedMeanwhileVanishes)
{
    const auto ids = AddEntries(4);
    Run(ids, [&](const DialogWindow& dialog) {
        InEditor(
            dialog, [&] { DoubleClick(dialog, 1); },
            [&](CEOID*) {
                EXPECT_EQ(Own().Journal().DeleteRecord(ids[0]), 1);
                EXPECT_EQ(Own().Journal().DeleteRecord(ids[3]), 1);
            });
        ASSERT_EQ(RowCount(dialog), 2);
        EXPECT_EQ(dialog.Text(kCount), L"2");
        EXPECT_EQ(Cell(dialog, Selected(dialog), 1), L"entry 1");
    });
}

TEST_F(FindResultsTest, TheEntryItselfGoneSelectsTheNext)
{
    const auto ids = AddEntries(3);
    Run(ids, [&](const DialogWindow& dialog) {
        InEditor(
            dialog, [&] { DoubleClick(dialog, 2); },
            [&](CEOID*) { EXPECT_EQ(Own().Journal().DeleteRecord(ids[2]), 1); });
        ASSERT_EQ(RowCount(dialog), 2);
        EXPECT_EQ(Selected(dialog), 1);
    });
}

TEST_F(FindResultsTest, AnEntryThatIsWrittenAnewStays)
{
    const auto ids = AddEntries(2);
    Run(ids, [&](const DialogWindow& dialog) {
        InEditor(
            dialog, [&] { DoubleClick(dialog, 0); },
            [&](CEOID* id) {
                EXPECT_EQ(Own().Journal().DeleteRecord(ids[0]), 1);
                *id = AddEntry(9, L"anew");
            });
        ASSERT_EQ(RowCount(dialog), 2);
        EXPECT_EQ(Cell(dialog, 0, 1), L"anew");
        EXPECT_NE(IdOf(dialog, 0), ids[0]);
    });
}

// Where another program had changed it and both were kept.
TEST_F(FindResultsTest, AnEntryThatIsKeptBesidesStandsBehindTheOther)
{
    const auto ids = AddEntries(3);
    Run(ids, [&](const DialogWindow& dialog) {
        CEOID mine = 0;
        InEditor(
            dialog, [&] { DoubleClick(dialog, 1); },
            [&](CEOID* id) {
                Retitle(ids[1], L"theirs");
                *id = mine = AddEntry(9, L"mine");
            });
        ASSERT_EQ(RowCount(dialog), 4);
        EXPECT_EQ(dialog.Text(kCount), L"4");
        EXPECT_EQ(Cell(dialog, 1, 1), L"theirs");
        EXPECT_EQ(IdOf(dialog, 1), ids[1]);
        EXPECT_EQ(Cell(dialog, 2, 1), L"mine");
        EXPECT_EQ(IdOf(dialog, 2), mine);
        EXPECT_EQ(IdOf(dialog, 3), ids[2]);
        EXPECT_EQ(Selected(dialog), 2) << "the one that was edited";
    });
}

TEST_F(FindResultsTest, AFarRowStaysInSight)
{
    const auto ids = AddEntries(200);
    Run(ids, [](const DialogWindow& dialog) {
        HWND list = dialog.Item(kList);
        Select(dialog, 120);
        ListView_EnsureVisible(list, 120, FALSE);
        const int top = ListView_GetTopIndex(list);
        InEditor(
            dialog, [&] { dialog.Key(VK_RETURN); }, [](CEOID*) {});
        EXPECT_EQ(Selected(dialog), 120);
        EXPECT_EQ(ListView_GetTopIndex(list), top);
    });
}

TEST_F(FindResultsTest, EscClosesIt)
{
    const auto ids = AddEntries(1);
    Run(ids, [](const DialogWindow& dialog) {
        dialog.Key(VK_ESCAPE);
        EXPECT_FALSE(IsWindowVisible(dialog.Window()));
    });
}

TEST_F(FindResultsTest, HelpIsAskedOnceAndNotOfTheOwner)
{
    const NothingStarts nothing;
    bool ownerAsked = false;
    const TestParent owner([&](HWND, UINT message, WPARAM, LPARAM, LRESULT*) {
        ownerAsked |= message == WM_HELP;
        return false;
    });
    Run(
        {},
        [](const DialogWindow& dialog) {
            const MessageBoxAnswerer boxes;
            HELPINFO info{};
            info.cbSize = sizeof info;
            EXPECT_EQ(SendMessageW(dialog.Window(), WM_HELP, 0, reinterpret_cast<LPARAM>(&info)), TRUE);
            ASSERT_EQ(boxes.Boxes().size(), 1u);
            EXPECT_EQ(boxes.Boxes()[0].text, L"Error starting help");
            EXPECT_EQ(boxes.Boxes()[0].owner, dialog.Window());
        },
        owner.Handle());
    EXPECT_FALSE(ownerAsked);
}

TEST_F(FindResultsTest, F1AsksForThePageOfTheFoundEntries)
{
    const HelpRequests requests;
    Run({}, [](const DialogWindow& dialog) { dialog.Key(VK_F1); });
    EXPECT_EQ(requests.Asked(), (std::vector<std::wstring>{L"pellwyn.htm#Found_Window"}));
}

TEST_F(FindResultsTest, EverythingIsOnTheScreen)
{
    const auto ids = AddEntries(3);
    Run(ids, [](const DialogWindow& dialog) {
        dialog.ExpectWholeOnScreen();
        RECT seen{};
        EXPECT_GE(ListView_GetCountPerPage(dialog.Item(kList)), 1);
        RECT hint = dialog.Rect(1043), button = dialog.Rect(IDOK);
        EXPECT_FALSE(IntersectRect(&seen, &hint, &button));
    });
}
