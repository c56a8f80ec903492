#include "list/entry_commands.h"

#include <sqlite3.h>

#include <algorithm>

#include "support/editor_stand_in.h"
#include "support/entry_list_fixture.h"
#include "support/live_blocks.h"
#include "support/locked_store.h"
#include "support/while_asked.h"

namespace {

using List = std::vector<CEOID>;

DWORD RecordCount()
{
    return Own().Journal().RecordCount();
}

bool Exists(CEOID id)
{
    return Own().Journal().SeekRecord(id) == id;
}

// Five entries, the newest first: row r shows the entry 4 - r.
class EntryCommandsTest : public EntryListTest {
  protected:
    EntryCommandsTest()
    {
        g_edit = nullptr;
        g_editorOwner = nullptr;
        g_editorRuns = 0;
        m_ids = AddEntries(5);
        std::reverse(m_ids.begin(), m_ids.end());
        CreateList();
        Paint();
    }

    // Changes the store from another connection.
    void Execute(const char* sql)
    {
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open16(m_store.Path().c_str(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(database);
        sqlite3_close(database);
    }

    CEOID Id(int row) const { return m_ids[static_cast<size_t>(row)]; }
    void DontAsk() { Own().SetNumber(kOptions, L"ConfirmDelete", 0); }

    List m_ids; // by row
};

TEST_F(EntryCommandsTest, NewStartsFromAnEmptySelection)
{
    m_list.SelectRecord(Id(1));
    ClickRow(3, MK_CONTROL);
    CEOID opened = 77;
    std::vector<int> seenSelected;
    g_edit = [&](CEOID* id) {
        opened = *id;
        EXPECT_EQ(LastReport(), 0);
        seenSelected = SelectedRows();
        return 0;
    };
    NewEntry(m_parent.Handle(), m_list);
    EXPECT_EQ(g_editorRuns, 1);
    EXPECT_EQ(g_editorOwner, m_parent.Handle());
    EXPECT_EQ(opened, 0u);
    EXPECT_TRUE(seenSelected.empty());
    EXPECT_TRUE(Selected().empty());
    EXPECT_EQ(m_list.CurrentEntry(), 0u);
    EXPECT_EQ(m_list.SelectionFlag(), 0);
    EXPECT_EQ(RowCount(), 5);
}

TEST_F(EntryCommandsTest, ANewEntryBecomesTheCurrentOneAndIsSelected)
{
    ClickRow(1);
    CEOID written = 0;
    g_edit = [&](CEOID* id) {
        *id = written = AddEntry(2, L"new");
        return 1;
    };
    NewEntry(m_parent.Handle(), m_list);
    EXPECT_EQ(RowCount(), 6);
    EXPECT_EQ(m_list.CurrentEntry(), written);
    EXPECT_EQ(Selected(), List{written});
    Paint();
    ASSERT_EQ(SelectedRows().size(), 1u);
    EXPECT_EQ(Cell(SelectedRows()[0], 1), L"new");
    EXPECT_EQ(LastReport(), 1);
}

TEST_F(EntryCommandsTest, EditOpensTheCurrentEntryAndKeepsTheSelection)
{
    ClickRow(4);
    ClickRow(2, MK_CONTROL);
    CEOID opened = 0;
    g_edit = [&](CEOID* id) {
        opened = *id;
        wchar_t text[] = L"edited";
        CEPROPVAL property{};
        property.propid = kPropSubject;
        property.val.lpwstr = text;
        EXPECT_EQ(Own().Journal().WriteRecord(*id, 1, &property), *id);
        return 1;
    };
    EditEntry(m_parent.Handle(), m_list);
    EXPECT_EQ(opened, Id(2));
    EXPECT_EQ(g_editorOwner, m_parent.Handle());
    EXPECT_EQ(Selected(), (List{Id(4), Id(2)}));
    EXPECT_EQ(m_list.CurrentEntry(), Id(2));
    Paint();
    EXPECT_EQ(Cell(2, 1), L"edited"); // the list was rebuilt
}

TEST_F(EntryCommandsTest, EditWithoutACurrentEntryOpensANewOne)
{
    CEOID opened = 77;
    g_edit = [&](CEOID* id) {
        opened = *id;
        return 0;
    };
    EditEntry(m_parent.Handle(), m_list);
    EXPECT_EQ(g_editorRuns, 1);
    EXPECT_EQ(opened, 0u);
}

// Its own save button may have written, or another program.
TEST_F(EntryCommandsTest, TheListIsRebuiltHoweverTheEditorIsClosed)
{
    CEOID written = 0;
    g_edit = [&](CEOID* id) {
        *id = written = AddEntry(90, L"saved, then cancelled");
        return 0;
    };
    NewEntry(m_parent.Handle(), m_list);
    EXPECT_EQ(RowCount(), 6);
    EXPECT_EQ(m_list.CurrentEntry(), written);
    EXPECT_EQ(Selected(), List{written});
    g_edit = [&](CEOID*) {
        AddEntry(91, L"from elsewhere");
        return 0;
    };
    EditEntry(m_parent.Handle(), m_list);
    EXPECT_EQ(RowCount(), 7);
    EXPECT_EQ(Selected(), List{written});
}

// Another program has deleted the record, and the save wrote it anew.
TEST_F(EntryCommandsTest, AnEntryWrittenAnewStaysTheCurrentOne)
{
    ClickRow(2);
    CEOID anew = 0;
    g_edit = [&](CEOID* id) {
        Own().Journal().DeleteRecord(*id);
        m_list.Refresh();
        *id = anew = AddEntry(3, L"anew");
        return 1;
    };
    EditEntry(m_parent.Handle(), m_list);
    EXPECT_EQ(m_list.CurrentEntry(), anew);
    EXPECT_EQ(Selected(), List{anew});
}

TEST_F(EntryCommandsTest, DeleteAsksOnceForAll)
{
    ClickRow(1);
    ClickRow(3, MK_CONTROL);
    ClickRow(4, MK_CONTROL);
    const MessageBoxAnswerer answerer({IDYES});
    DeleteEntries(m_list);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"Delete record?");
    EXPECT_EQ(answerer.Boxes()[0].caption, L"Confirm");
    EXPECT_EQ(RecordCount(), 2u);
    EXPECT_EQ(RowCount(), 2);
    EXPECT_TRUE(Exists(Id(0)));
    EXPECT_TRUE(Exists(Id(2)));
    EXPECT_TRUE(Selected().empty());
    EXPECT_TRUE(SelectedRows().empty());
    EXPECT_EQ(m_list.CurrentEntry(), 0u);
    EXPECT_EQ(LastReport(), 0);
}

TEST_F(EntryCommandsTest, TheQuestionHasNoOwnerAndTwoButtons)
{
    ClickRow(1);
    const MessageBoxAnswerer answerer({IDNO});
    DeleteEntries(m_list);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].owner, nullptr);
    EXPECT_EQ(answerer.Boxes()[0].answers, (std::vector<int>{IDYES, IDNO}));
    EXPECT_EQ(answerer.Boxes()[0].icon, LoadIconW(nullptr, IDI_EXCLAMATION));
    EXPECT_EQ(RecordCount(), 5u);
}

// The list may be refreshed behind the question, for another program's change.
TEST_F(EntryCommandsTest, WhatWasAskedAboutIsDeletedWhateverIsSelectedMeanwhile)
{
    ClickRow(1);
    ClickRow(3, MK_CONTROL);
    bool wasEnabled = true;
    const WhileAsked change([&] {
        wasEnabled = IsWindowEnabled(m_parent.Handle()) != FALSE;
        m_list.Selection().Clear();
        m_list.Selection().Append(Id(0));
        m_list.SetCurrentEntry(Id(0));
    });
    const MessageBoxAnswerer answerer({IDYES});
    DeleteEntries(m_list);
    EXPECT_FALSE(wasEnabled) << "nothing else can be chosen";
    EXPECT_TRUE(IsWindowEnabled(m_parent.Handle()));
    EXPECT_TRUE(Exists(Id(0)));
    EXPECT_FALSE(Exists(Id(1)));
    EXPECT_FALSE(Exists(Id(3)));
    EXPECT_EQ(RecordCount(), 3u);
}

TEST_F(EntryCommandsTest, AnyOtherAnswerKeepsTheSelectionButNotTheFlag)
{
    m_list.SelectRecord(Id(1));
    ClickRow(3, MK_CONTROL);
    m_list.SetSelectionFlag(1);
    const MessageBoxAnswerer answerer({IDNO});
    DeleteEntries(m_list);
    EXPECT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(RecordCount(), 5u);
    EXPECT_EQ(Selected(), (List{Id(1), Id(3)}));
    EXPECT_EQ(SelectedRows(), (std::vector<int>{1, 3}));
    EXPECT_EQ(m_list.SelectionFlag(), 0);
    EXPECT_EQ(LastReport(), 0);
}

TEST_F(EntryCommandsTest, WhatTakesADeletedOnesPlaceHasTheFocus)
{
    DontAsk();
    ClickRow(1);
    DeleteEntries(m_list);
    EXPECT_EQ(StateOf(1), UINT{LVIS_FOCUSED});
    EXPECT_EQ(m_list.CurrentEntry(), 0u);
    ClickRow(3);
    DeleteEntries(m_list);
    EXPECT_EQ(StateOf(2), UINT{LVIS_FOCUSED}) << "where the last one is gone, the last one now";
}

TEST_F(EntryCommandsTest, WithoutConfirmationDeleteAsksNothing)
{
    DontAsk();
    m_list.SelectRecord(Id(1));
    const MessageBoxAnswerer answerer({IDNO});
    DeleteEntries(m_list);
    EXPECT_TRUE(answerer.Boxes().empty());
    EXPECT_FALSE(Exists(Id(1)));
    EXPECT_EQ(RowCount(), 4);
}

TEST_F(EntryCommandsTest, AnyNumberAsks)
{
    Own().SetNumber(kOptions, L"ConfirmDelete", 7);
    ClickRow(1);
    const MessageBoxAnswerer answerer({IDNO});
    DeleteEntries(m_list);
    EXPECT_EQ(answerer.Boxes().size(), 1u);
}

TEST_F(EntryCommandsTest, ARecordThatIsGoneIsDeletedQuietly)
{
    DontAsk();
    ClickRow(1);
    ClickRow(3, MK_CONTROL);
    Own().Journal().DeleteRecord(Id(1));
    const MessageBoxAnswerer answerer;
    DeleteEntries(m_list);
    EXPECT_TRUE(answerer.Boxes().empty());
    EXPECT_TRUE(Selected().empty());
    EXPECT_EQ(RowCount(), 3);
}

TEST_F(EntryCommandsTest, ACurrentEntryThatIsNotSelectedStays)
{
    DontAsk();
    ClickRow(1);
    PressKey(VK_DOWN, false, true); // the focus alone
    ASSERT_EQ(m_list.CurrentEntry(), Id(2));
    DeleteEntries(m_list);
    EXPECT_FALSE(Exists(Id(1)));
    EXPECT_EQ(m_list.CurrentEntry(), Id(2));
    EXPECT_EQ(m_list.SelectionFlag(), 0);
    EXPECT_EQ(LastReport(), 0);
}

TEST_F(EntryCommandsTest, AfterTheLastEntryTheListSaysSo)
{
    DontAsk();
    ClickRow(0);
    ClickRow(4, MK_SHIFT);
    DeleteEntries(m_list);
    EXPECT_EQ(RecordCount(), 0u);
    ASSERT_NE(Notice(), nullptr);
    EXPECT_EQ(WindowText(Notice()), L"<No Entries to Show>");
}

TEST_F(EntryCommandsTest, DeleteWithoutASelectionDeletesNothing)
{
    DontAsk();
    DeleteEntries(m_list);
    EXPECT_EQ(RecordCount(), 5u);
    EXPECT_EQ(LastReport(), 0);
}

// For no reason that the store could name.
TEST_F(EntryCommandsTest, ADeletionThatIsRefusedKeepsTheSelectionAndIsTold)
{
    DontAsk();
    m_list.SelectRecord(Id(1));
    ClickRow(3, MK_CONTROL);
    {
        const LockedStore lock(m_store.Path());
        const MessageBoxAnswerer answerer;
        DeleteEntries(m_list);
        ASSERT_EQ(answerer.Boxes().size(), 1u);
        EXPECT_EQ(answerer.Boxes()[0].text,
                  L"Nothing was deleted: another program keeps the journal's file locked.\n\n"
                  L"Nothing that was stored before is lost.");
    }
    EXPECT_EQ(RecordCount(), 5u);
    EXPECT_EQ(RowCount(), 5);
    EXPECT_EQ(Selected(), (List{Id(1), Id(3)}));
    EXPECT_EQ(SelectedRows(), (std::vector<int>{1, 3}));
    EXPECT_EQ(m_list.CurrentEntry(), Id(3));
}

TEST_F(EntryCommandsTest, CopySetsTheFlagAndNothingElse)
{
    ClickRow(2);
    ASSERT_EQ(m_list.SelectionFlag(), 0);
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    CloseClipboard();
    CopyEntries(m_list);
    EXPECT_EQ(m_list.SelectionFlag(), 1);
    EXPECT_EQ(LastReport(), 1);
    EXPECT_EQ(CountClipboardFormats(), 0);
    EXPECT_EQ(RecordCount(), 5u);
}

// The properties of a record as bytes that can be compared.
std::vector<std::wstring> Properties(CEOID id)
{
    std::vector<std::wstring> texts;
    WORD count = 0;
    CEPROPVAL* properties = nullptr;
    EXPECT_EQ(Own().Journal().SeekRecord(id), id);
    EXPECT_EQ(Own().Journal().ReadRecord(&count, nullptr, &properties), id);
    for (WORD i = 0; i < count; ++i) {
        const CEPROPVAL& property = properties[i];
        std::wstring text = std::to_wstring(property.propid) + L" ";
        switch (PropertyType(property.propid)) {
        case CEVT_LPWSTR: text += property.val.lpwstr; break;
        case CEVT_BLOB:
            text.append(property.val.blob.lpb, property.val.blob.lpb + property.val.blob.dwCount);
            break;
        case CEVT_FILETIME: text += std::to_wstring(TimeCount(property.val.filetime).Units()); break;
        default: text += std::to_wstring(property.val.iVal);
        }
        texts.push_back(text);
    }
    LocalFree(properties);
    return texts;
}

TEST_F(EntryCommandsTest, PasteDuplicatesEveryProperty)
{
    const CEOID full = TestRecord()
                           .Time(kPropDate, Instant(2001, 1, 1))
                           .Text(kPropSubject, L"subject \xD83D\xDE00")
                           .Text(kPropBody, L"body\r\nsecond line")
                           .Blob(kPropCategories, {2, 5, 6})
                           .Text(kPropType, L"Meeting")
                           .Short(kPropKind, 3)
                           .Short(kPropPriority, -7)
                           .Short(kPropSensitivity, 2)
                           .Time(kPropEndTime, TimeCount(UINT64_MAX))
                           .Time(kPropDuration, TimeCount(1))
                           .Blob(kPropContacts, {1, 9})
                           .Write();
    const CEOID bare = TestRecord().Text(kPropSubject, L"").Write();
    m_list.Refresh();
    m_list.SelectRecord(full);
    m_list.SelectRecord(bare);
    m_list.Selection().Append(Id(0));
    CopyEntries(m_list);
    PasteEntries(m_list);
    ASSERT_EQ(RecordCount(), 10u);
    EXPECT_EQ(RowCount(), 10);
    // New identifiers follow the old ones, in the order of the selection.
    const CEOID first = bare + 1;
    EXPECT_EQ(Properties(first), Properties(full));
    EXPECT_EQ(Properties(first).size(), 11u);
    EXPECT_EQ(Properties(first + 1), Properties(bare));
    EXPECT_EQ(Properties(first + 2), Properties(Id(0)));
    EXPECT_EQ(Selected(), (List{full, bare, Id(0)}));
}

TEST_F(EntryCommandsTest, PasteTwiceGivesTwoDuplicates)
{
    m_list.SelectRecord(Id(1));
    ClickRow(3, MK_CONTROL);
    CopyEntries(m_list);
    PasteEntries(m_list);
    EXPECT_EQ(m_list.SelectionFlag(), 1);
    PasteEntries(m_list);
    EXPECT_EQ(RecordCount(), 9u);
    EXPECT_EQ(m_list.SelectionFlag(), 1);
    EXPECT_EQ(LastReport(), 1);
}

TEST_F(EntryCommandsTest, PasteGivesBackEachRecordThatItReads)
{
    ClickRow(1);
    ClickRow(3, MK_CONTROL);
    CopyEntries(m_list);
    const LiveBlocks blocks;
    PasteEntries(m_list);
    EXPECT_EQ(RecordCount(), 7u);
    EXPECT_GE(blocks.Taken(), 2u);
    EXPECT_EQ(blocks.Count(), 0u);
}

TEST_F(EntryCommandsTest, PasteTakesWhatIsSelectedByThen)
{
    ClickRow(1);
    CopyEntries(m_list);
    ClickRow(3);
    PasteEntries(m_list);
    ASSERT_EQ(RecordCount(), 6u);
    EXPECT_EQ(Properties(6), Properties(Id(3)));
}

TEST_F(EntryCommandsTest, PasteSkipsWhatIsGone)
{
    ClickRow(1);
    ClickRow(3, MK_CONTROL);
    Own().Journal().DeleteRecord(Id(1));
    const MessageBoxAnswerer answerer;
    PasteEntries(m_list);
    EXPECT_TRUE(answerer.Boxes().empty());
    EXPECT_EQ(RecordCount(), 5u);
}

TEST_F(EntryCommandsTest, ARecordThatCannotBeWrittenIsSimplyNotCopied)
{
    ClickRow(1);
    ClickRow(3, MK_CONTROL);
    Execute("CREATE UNIQUE INDEX refuse ON journal(subject) WHERE subject = 'entry 3'");
    const MessageBoxAnswerer answerer;
    PasteEntries(m_list);
    EXPECT_TRUE(answerer.Boxes().empty());
    ASSERT_EQ(RecordCount(), 6u);
    EXPECT_EQ(Properties(6), Properties(Id(3)));
}

TEST_F(EntryCommandsTest, WhereNoIdentifierIsLeftThePasteSaysSo)
{
    m_list.SelectRecord(Id(1));
    Execute("UPDATE sqlite_sequence SET seq = 4294967295 WHERE name = 'journal'");
    const MessageBoxAnswerer answerer;
    PasteEntries(m_list);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_TRUE(answerer.Boxes()[0].text.starts_with(L"Nothing was pasted: "));
    EXPECT_EQ(RecordCount(), 5u);
}

TEST_F(EntryCommandsTest, ACommandAfterTheEndDoesNothing)
{
    DontAsk();
    m_list.SelectRecord(Id(1));
    Own().Journal().Close();
    DestroyWindow(m_parent.Handle());
    PasteEntries(m_list);
    DeleteEntries(m_list);
    CopyEntries(m_list);
    ClearCategories(m_list);
    ASSERT_NE(Own().Journal().Open(nullptr), 0);
    EXPECT_EQ(RecordCount(), 5u);
}

} // namespace
