// An entry with values that another program has stored in a form that cannot be read whole: a save of
// something else leaves them as they are.
#include <sqlite3.h>

#include "editor_record_fixture.h"
#include "entry_editor_save_fixture.h"
#include "support/fault_vfs.h"

namespace {

class ForeignValuesTest : public EntryEditorSaveTest {
  protected:
    // An entry of which the column has the value, in SQL.
    CEOID WriteWith(const std::string& column, const std::string& value)
    {
        const CEOID id = Write(Full());
        EXPECT_TRUE(ChangeStore(("UPDATE journal SET " + column + " = " + value).c_str()));
        return id;
    }
    // What the only entry has there, as it would be written in SQL.
    std::string Stored(const std::string& column)
    {
        sqlite3* store = nullptr;
        sqlite3_stmt* row = nullptr;
        std::string value;
        EXPECT_EQ(sqlite3_open16(m_store.Path().c_str(), &store), SQLITE_OK);
        EXPECT_EQ(sqlite3_prepare_v2(
                      store,
                      ("SELECT hex(" + column + ") || ' ' || typeof(" + column + ") FROM journal").c_str(),
                      -1, &row, nullptr),
                  SQLITE_OK);
        EXPECT_EQ(sqlite3_step(row), SQLITE_ROW);
        if (const unsigned char* text = sqlite3_column_text(row, 0))
            value = reinterpret_cast<const char*>(text);
        sqlite3_finalize(row);
        sqlite3_close(store);
        return value;
    }
    void ChangePriority(CEOID id)
    {
        EXPECT_EQ(Run(&id,
                      [](EditorWindow& editor) {
                          editor.Choose(CMD_PRIORITY, CMD_PRIORITY_LOW);
                          editor.Ok();
                      }),
                  1);
        EXPECT_EQ(Read(id).priority, 0);
    }
};

TEST_F(ForeignValuesTest, StayAsTheyAreWhenSomethingElseIsSaved)
{
    const struct {
        const char* column;
        const char* value;
    } cases[] = {
        {"subject", "x'41424300FF'"},
        {"body", "x'0102'"},
        {"type", "x'01'"},
        {"body", "CAST(x'6100620D0A63' AS TEXT)"},      // behind a NUL there is more
        {"subject", "CAST(x'4DFC6E6368656E' AS TEXT)"}, // another encoding
        {"type", "CAST(x'C3' AS TEXT)"},
        {"body", "CAST(x'EDA0BDEDB880' AS TEXT)"}, // a pair of surrogates, one by one
        {"sensitivity", "'private'"},
        {"sensitivity", "70000"},
        {"kind", "'diary'"},
        {"kind", "-1"},
        {"categories", "'Home,Work'"},
        {"contacts", "7"},
        {"date", "'2024-03-05 14:05'"},
        {"date", "2460375.25"},
        {"end_time", "'2024-03-05 15:05'"},
        {"duration", "'PT1H'"},
    };
    for (const auto& [column, value] : cases) {
        const CEOID id = WriteWith(column, value);
        const std::string before = Stored(column);
        ChangePriority(id);
        EXPECT_EQ(Stored(column), before) << column << " = " << value;
        EXPECT_TRUE(Own().Journal().DeleteRecord(id));
    }
}

// The times belong together: what is shown for one that cannot be read makes the others what they are not.
TEST_F(ForeignValuesTest, ATimeKeepsTheOtherTimes)
{
    const CEOID id = WriteWith("date", "'2024-03-08 14:05', end_time = end_time + 3 * 864000000000");
    ChangePriority(id);
    EXPECT_EQ(Read(id).endTime, At(kTuesday) + Minutes(3 * 24 * 60 + 90));
    EXPECT_EQ(Read(id).duration, Minutes(90));
}

TEST_F(ForeignValuesTest, AreWrittenOverWhereTheirFieldsWereEdited)
{
    CEOID id = Write(Full());
    ASSERT_TRUE(
        ChangeStore("UPDATE journal SET subject = x'01', body = x'02', type = x'03', priority = 'high',"
                    " sensitivity = 'private', date = '2024-03-05', kind = 'diary'"));
    EXPECT_EQ(Run(&id,
                  [](EditorWindow& editor) {
                      editor.Enter(IDC_SUBJECT, L"Mine");
                      editor.Enter(IDC_BODY, L"My text");
                      editor.ChooseInBox(IDC_TYPE, 1);
                      editor.Choose(CMD_PRIORITY, CMD_PRIORITY_LOW);
                      editor.Choose(CMD_SENSITIVITY, CMD_SENSITIVITY_PERSONAL);
                      editor.Pick(IDC_START_DATE, {2024, 4, 0, 7, 9, 30, 0, 0});
                      editor.Ok();
                  }),
              1);
    const JournalEntry entry = Read(id);
    EXPECT_EQ(entry.subject, L"Mine");
    EXPECT_EQ(entry.body, L"My text");
    EXPECT_TRUE(entry.type);
    EXPECT_EQ(entry.priority, 0);
    EXPECT_EQ(entry.sensitivity, 1);
    EXPECT_EQ(entry.date, At({2024, 4, 0, 7, 9, 30, 0, 0}));
    EXPECT_FALSE(entry.kind) << "nobody can edit it";
}

// Also when it is typed back to what it was at first.
TEST_F(ForeignValuesTest, WhatWasWrittenOverIsAnOrdinaryValue)
{
    CEOID id = WriteWith("subject", "CAST(x'4100' AS TEXT)");
    Run(&id, [](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"B");
        editor.Command(CMD_SAVE);
        editor.Enter(IDC_SUBJECT, L"A");
        editor.Ok();
    });
    EXPECT_EQ(Stored("subject"), "41 text");
}

TEST_F(ForeignValuesTest, StayInEachSaveOfSeveral)
{
    CEOID id = WriteWith("body", "x'0102'");
    Run(&id, [](EditorWindow& editor) {
        for (const int priority : {CMD_PRIORITY_LOW, CMD_PRIORITY_NORMAL}) {
            editor.Choose(CMD_PRIORITY, priority);
            editor.Command(CMD_SAVE);
        }
    });
    EXPECT_EQ(Stored("body"), "0102 blob");
}

// Behind a save: what nobody touched still stands there in its foreign form.
class ForeignRecordTest : public EditorRecordTest {
  protected:
    // An entry whose body is foreign.
    CEOID WriteForeign()
    {
        const CEOID id = Write(Entry());
        EXPECT_TRUE(ChangeStore("UPDATE journal SET body = x'01'"));
        return id;
    }
    // As the editor shows it.
    EntryToWrite Shown()
    {
        EntryToWrite shown = Entry();
        shown.body = kBodyPlaceholder;
        return shown;
    }
    void ExpectForeignBody(CEOID id)
    {
        EXPECT_TRUE(ChangeStore("UPDATE journal SET kind = 1 WHERE body = x'01'"));
        EXPECT_EQ(Read(id).kind, 1);
    }

    FaultVfs m_faults;
};

TEST_F(ForeignRecordTest, AreWrittenOverWhereThePersonSaysSo)
{
    CEOID id = WriteForeign();
    OpenRecord record(&id);
    EntryToWrite shown = Shown();
    record.SetShown(shown);
    ASSERT_TRUE(ChangeStore("UPDATE journal SET body = x'02', subject = 'theirs'"));
    ASSERT_EQ(record.Save(shown), Saved::Changed);
    ASSERT_EQ(record.Save(shown, Theirs::Replace), Saved::Updated);
    EXPECT_TRUE(ChangeStore("UPDATE journal SET kind = 1 WHERE body IS NULL"));
    EXPECT_EQ(Read(id).kind, 1);
}

// A try that fails has written nothing over.
TEST_F(ForeignRecordTest, StayBehindASaveThatHasFailed)
{
    CEOID id = WriteForeign();
    OpenRecord record(&id);
    EntryToWrite shown = Shown();
    record.SetShown(shown);
    m_faults.FailNth(FileCall::Write, 1);
    EXPECT_EQ(record.Save(Entry(L"Other")), Saved::Failed);
    EXPECT_TRUE(m_faults.HasFired());
    shown.subject = L"Other";
    EXPECT_EQ(record.Save(shown), Saved::Updated);
    ExpectForeignBody(id);
}

// Nor what the person had agreed to, where the record is again what was loaded.
TEST_F(ForeignRecordTest, StayBehindAReplacementThatHasFailed)
{
    CEOID id = WriteForeign();
    OpenRecord record(&id);
    EntryToWrite shown = Shown();
    record.SetShown(shown);
    ASSERT_TRUE(ChangeStore("UPDATE journal SET subject = 'theirs'"));
    ASSERT_EQ(record.Save(shown), Saved::Changed);
    m_faults.FailNth(FileCall::Write, 1);
    EXPECT_EQ(record.Save(shown, Theirs::Replace), Saved::Failed);
    EXPECT_TRUE(m_faults.HasFired());
    ASSERT_TRUE(ChangeStore("UPDATE journal SET subject = 'Subject'"));
    EXPECT_EQ(record.Save(shown), Saved::Updated);
    ExpectForeignBody(id);
}

} // namespace
