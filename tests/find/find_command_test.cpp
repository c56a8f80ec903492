#include "find/find_command.h"

#include <sqlite3.h>

#include <memory>

#include "res/resource.h"
#include "support/dialog_window.h"
#include "support/editor_stand_in.h"
#include "support/entry_list_fixture.h"
#include "support/import_watch.h"
#include "support/test_windows.h"

namespace {

using Ids = std::vector<CEOID>;

class RunFindTest : public EntryListTest {
  protected:
    // Finds a text by the subject; inResults runs while the results are shown.
    void Find(const std::wstring& text, const std::function<void(const DialogWindow&)>& inResults = nullptr,
              int from = IDC_FIND_FROM_TOP)
    {
        std::unique_ptr<ModalDriver> results;
        bool shown = false;
        ModalDriver find([&](HWND window) {
            results = std::make_unique<ModalDriver>([&](HWND resultsWindow) {
                const DialogWindow dialog(resultsWindow);
                shown = dialog.Item(IDC_FOUND_LIST) != nullptr;
                m_resultCount = dialog.Text(IDC_FOUND_COUNT);
                EXPECT_EQ(::GetWindow(resultsWindow, GW_OWNER), m_parent.Handle());
                if (inResults)
                    inResults(dialog);
                dialog.Ok();
            });
            const DialogWindow dialog(window);
            dialog.Click(IDC_FIND_SUBJECT);
            dialog.Click(from);
            dialog.SetText(IDC_FIND_TEXT, text);
            dialog.Ok();
        });
        RunFind(m_parent.Handle(), m_list, &m_request);
        EXPECT_TRUE(shown);
        PumpMessages();
    }
    CEOID Current() { return m_list.CurrentEntry(); }
    // What the results list, in its order.
    static Ids Listed(const DialogWindow& results)
    {
        Ids ids;
        HWND list = results.Item(IDC_FOUND_LIST);
        LVITEMW item{};
        item.mask = LVIF_PARAM;
        for (; item.iItem < ListView_GetItemCount(list); ++item.iItem) {
            EXPECT_TRUE(ListView_GetItem(list, &item));
            ids.push_back(static_cast<CEOID>(item.lParam));
        }
        return ids;
    }
    void Execute(const std::string& sql)
    {
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open16(m_store.Path().c_str(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(database);
    }

    FindRequest m_request;
    std::wstring m_resultCount;
};

// The option is stored for whoever may want it, and a search never opens what it finds.
TEST_F(RunFindTest, OpensNoEntryByItselfWhateverTheOption)
{
    const CEOID found = AddEntry(1, L"walk");
    CreateList();
    g_edit = nullptr;
    g_editorRuns = 0;
    for (const DWORD option : {0u, 1u}) {
        Own().SetNumber(kOptions, L"OpenOnFind", option);
        Find(L"walk");
        EXPECT_EQ(g_editorRuns, 0) << option;
        EXPECT_EQ(Selected(), Ids{found});
    }
    Own().RemoveValue(kOptions, L"OpenOnFind");
    Find(L"walk");
    EXPECT_EQ(g_editorRuns, 0);
}

} // namespace

TEST_F(RunFindTest, SelectsEveryEntryFound)
{
    const CEOID a = AddEntry(3, L"walk"), b = AddEntry(2, L"lunch"), c = AddEntry(1, L"Walk");
    m_handsFocusOn = true;
    CreateList(); // the newest first
    m_list.SelectRecord(b);
    Find(L"walk", [&](const DialogWindow&) {
        EXPECT_EQ(Selected(), (Ids{a, c}));
        EXPECT_EQ(SelectedRows(), (std::vector<int>{0, 2}));
    });
    EXPECT_EQ(Selected(), (Ids{a, c}));
    EXPECT_EQ(m_resultCount, L"2");
    EXPECT_EQ(Current(), c) << "as if they had been selected one by one";
    EXPECT_EQ(LastReport(), 1);
    EXPECT_EQ(m_request.text, L"walk");
    EXPECT_TRUE(PumpUntil([this] { return GetFocus() == Handle(); })) << "the keyboard is back in the list";
}

EntryList* g_list = nullptr;
size_t g_selectedAtFirst = 99; // when the search began

HCURSOR WINAPI NoteSelection(HCURSOR cursor)
{
    if (g_selectedAtFirst == 99)
        g_selectedAtFirst = g_list->Selection().InOrder().size();
    return cursor;
}

TEST_F(RunFindTest, TheSelectionIsEmptyBeforeTheSearchBegins)
{
    const CEOID a = AddEntry(1, L"walk");
    CreateList();
    m_list.SelectRecord(a);
    g_list = &m_list;
    g_selectedAtFirst = 99;
    {
        const ImportWatch<decltype(&SetCursor)> cursors(&__imp_SetCursor, NoteSelection);
        Find(L"walk");
    }
    EXPECT_EQ(g_selectedAtFirst, 0u);
    EXPECT_EQ(Selected(), Ids{a});
}

TEST_F(RunFindTest, NothingFoundEmptiesTheSelection)
{
    const CEOID a = AddEntry(1, L"walk");
    CreateList();
    m_list.SelectRecord(a);
    Find(L"nowhere");
    EXPECT_EQ(Selected(), Ids{});
    EXPECT_EQ(SelectedRows(), std::vector<int>{});
    EXPECT_EQ(Current(), 0u);
    EXPECT_EQ(LastReport(), 0);
    EXPECT_EQ(m_resultCount, L"0");
}

TEST_F(RunFindTest, CancelLeavesTheSelection)
{
    const CEOID a = AddEntry(1, L"walk");
    CreateList();
    m_list.SelectRecord(a);
    ModalDriver find([](HWND window) { DialogWindow(window).Cancel(); });
    RunFind(m_parent.Handle(), m_list, &m_request);
    EXPECT_EQ(Selected(), (Ids{a}));
    EXPECT_EQ(Current(), a);
}

TEST_F(RunFindTest, FromCurrentStartsBehindTheFocusThatWasThereBefore)
{
    const CEOID a = AddEntry(4, L"walk"), b = AddEntry(3, L"lunch"), c = AddEntry(2, L"walk"),
                d = AddEntry(1, L"walk");
    CreateList();
    m_list.SelectRecord(c);
    Find(L"walk", nullptr, IDC_FIND_FROM_CURRENT);
    EXPECT_EQ(Selected(), (Ids{d, a}));
    m_list.ClearSelection();
    m_list.SelectRecord(b);
    Find(L"walk", nullptr, IDC_FIND_FROM_CURRENT);
    EXPECT_EQ(Selected(), (Ids{c, d, a})) << "an entry that does not match itself";
}

TEST_F(RunFindTest, CurrentIsGreyWhereNothingHasTheFocus)
{
    AddEntry(1, L"walk");
    CreateList();
    bool enabled = true;
    ModalDriver find([&](HWND window) {
        const DialogWindow dialog(window);
        enabled = dialog.IsEnabled(IDC_FIND_FROM_CURRENT);
        dialog.Cancel();
    });
    RunFind(m_parent.Handle(), m_list, &m_request);
    EXPECT_FALSE(enabled);
}

TEST_F(RunFindTest, WhatTheFilterHidesIsInTheResultsAndNotInTheSelection)
{
    const CEOID hidden =
        TestRecord().Time(kPropDate, Instant(2000, 1, 5)).Text(kPropSubject, L"walk").Write();
    const CEOID seen = TestRecord().Time(kPropDate, Instant(2000, 3, 5)).Text(kPropSubject, L"walk").Write();
    Own().Filter().active = true;
    Own().Filter().monthMask = 1 << 2; // March
    CreateList();
    ASSERT_EQ(RowCount(), 1);
    Find(L"walk", [&](const DialogWindow& dialog) {
        EXPECT_EQ(ListView_GetItemCount(dialog.Item(IDC_FOUND_LIST)), 2);
        EXPECT_EQ(Selected(), (Ids{seen}));
    });
    EXPECT_EQ(m_resultCount, L"2");
    EXPECT_EQ(Selected(), (Ids{seen}));
    EXPECT_EQ(Current(), seen);
    EXPECT_FALSE(m_list.Selection().Contains(hidden));
}

TEST_F(RunFindTest, UnderAFilterTheSearchGoesThroughTheWholeOrder)
{
    Ids ids;
    for (const WORD month : {WORD{5}, WORD{4}, WORD{3}, WORD{2}})
        ids.push_back(
            TestRecord().Time(kPropDate, Instant(2000, month, 5)).Text(kPropSubject, L"walk").Write());
    Own().Filter().active = true;
    Own().Filter().monthMask = 1 << 1 | 1 << 3; // February and April
    CreateList();
    ASSERT_EQ(RowCount(), 2);
    Find(L"walk", [&](const DialogWindow& dialog) { EXPECT_EQ(Listed(dialog), ids); });
    EXPECT_EQ(Selected(), (Ids{ids[1], ids[3]}));
    m_list.ClearSelection();
    m_list.SelectRecord(ids[1]);
    Find(
        L"walk",
        [&](const DialogWindow& dialog) {
            EXPECT_EQ(Listed(dialog), (Ids{ids[2], ids[3], ids[0]}));
        },
        IDC_FIND_FROM_CURRENT);
    EXPECT_EQ(Selected(), (Ids{ids[3]}));
    EXPECT_EQ(LastReport(), 1) << "although what was found last is hidden";
}

TEST_F(RunFindTest, OnlyHiddenEntriesFoundSelectNothing)
{
    const CEOID seen = TestRecord().Time(kPropDate, Instant(2000, 3, 5)).Text(kPropSubject, L"lunch").Write();
    TestRecord().Time(kPropDate, Instant(2000, 1, 5)).Text(kPropSubject, L"walk").Write();
    Own().Filter().active = true;
    Own().Filter().monthMask = 1 << 2; // March
    CreateList();
    m_list.SelectRecord(seen);
    Find(L"walk");
    EXPECT_EQ(m_resultCount, L"1");
    EXPECT_EQ(Selected(), Ids{});
    EXPECT_EQ(Current(), 0u);
    EXPECT_EQ(LastReport(), 0);
}

TEST_F(RunFindTest, WhatAnotherProgramDoesMeanwhileIsSeenInTheEnd)
{
    const CEOID a = AddEntry(3, L"walk"), b = AddEntry(2, L"walk"), c = AddEntry(1, L"lunch");
    CreateList();
    Find(L"walk", [&](const DialogWindow&) {
        Execute("DELETE FROM journal WHERE oid = " + std::to_string(b));
        Execute("UPDATE journal SET subject = 'swim' WHERE oid = " + std::to_string(a));
    });
    EXPECT_EQ(Selected(), (Ids{a}));
    ASSERT_EQ(RowCount(), 2);
    Paint();
    EXPECT_EQ(Cell(0, 1), L"swim");
    EXPECT_FALSE(m_list.Selection().Contains(c));
}

TEST_F(RunFindTest, MoreThanTheListCanShowAreFoundAndListed)
{
    constexpr int kMost = 65'535;
    const Ids ids = AddEntries(kMost + 1);
    CreateList(); // the newest first
    const ULONGLONG start = GetTickCount64();
    Find(L"ENTRY", [&](const DialogWindow& dialog) {
        EXPECT_EQ(ListView_GetItemCount(dialog.Item(IDC_FOUND_LIST)), kMost + 1);
    });
    EXPECT_EQ(m_resultCount, L"65536");
    EXPECT_EQ(m_list.Selection().Count(), size_t{kMost});
    EXPECT_EQ(ListView_GetSelectedCount(Handle()), UINT{kMost});
    EXPECT_EQ(Current(), ids[1]) << "the last of those that the list shows";
    // What costs a pass for each would take minutes.
    EXPECT_LT(GetTickCount64() - start, 60'000u);
}

TEST_F(RunFindTest, TheListIsRefreshedAfterTheResults)
{
    const CEOID a = AddEntry(1, L"walk");
    CreateList();
    Find(L"walk", [&](const DialogWindow&) {
        EXPECT_EQ(RowCount(), 1);
        AddEntry(2, L"new");
        EXPECT_EQ(Own().Journal().DeleteRecord(a), 1);
        AddEntry(3, L"newer");
    });
    EXPECT_EQ(RowCount(), 2);
    EXPECT_EQ(Selected(), Ids{}) << "what is gone leaves the selection";
}
