// Whatever another tool has put into the store, the journal shows what can be shown and goes on.
#include <gtest/gtest.h>

#include <algorithm>

#include "data/journal_entry.h"
#include "e2e/journal/journal_window.h"

namespace {

class HostileStore : public JournalWindowTest {
  protected:
    // A store with one entry and then what the statement does to it.
    void MakeStore(const std::string& sql)
    {
        ASSERT_NE(AddEntry(L"Good"), 0u);
        ASSERT_TRUE(ChangeStore(m_store.Path(), sql)) << sql;
    }

    // With all ten columns in the order of the properties, 106 left out; none is the sort column.
    void StartWithAllColumns()
    {
        DWORD position = 0;
        for (const DWORD property : {101u, 102u, 103u, 104u, 105u, 107u, 108u, 109u, 110u, 111u})
            ASSERT_TRUE(StoreSetting(L"Settings", (L"Column" + std::to_wstring(position++)).c_str(),
                                     (property << 24) | (90 << 12) | 0x0C));
        ASSERT_TRUE(StoreSetting(L"Settings", L"iCols", position));
        ASSERT_NE(m_journal.Start(), nullptr);
    }

    // The row with the subject, once it is painted.
    std::vector<std::wstring> RowOf(const std::wstring& subject)
    {
        int row = -1;
        EXPECT_TRUE(WaitFor([&] { return (row = List().FindRow(kSubject, subject)) >= 0; })) << "no such row";
        return List().Row(std::max(row, 0));
    }

    // Every header is clicked, every row opened, copied and closed again.
    void ExpectEverythingWorks(int rows)
    {
        ASSERT_TRUE(ShowsRows(rows));
        for (int column = 0; column < List().ColumnCount(); ++column)
            ASSERT_TRUE(Click(List().HeaderPoint(column)));
        ASSERT_TRUE(Click(List().HeaderPoint(kSubject)));
        for (int row = 0; row < rows; ++row) {
            ASSERT_TRUE(Activate(Window()));
            PressKey(row ? VK_DOWN : VK_HOME);
            ASSERT_TRUE(WaitFor([&] { return List().SelectedRows() == std::vector{row}; })) << row;
            PressKey(VK_RETURN);
            HWND editor = WaitForEditor();
            ASSERT_NE(editor, nullptr) << row;
            PressKey(VK_ESCAPE);
            ASSERT_TRUE(WaitUntilGone(editor)) << row;
        }
        PostCommand(Window(), CMD_COPY);
        PostCommand(Window(), CMD_PASTE);
        EXPECT_TRUE(ShowsRows(rows + 1));
        ASSERT_TRUE(m_journal.Close());
        EXPECT_EQ(m_journal.ExitCode(), 0u);
    }

    static constexpr int kSubject = 1, kBody = 2, kPriority = 5, kSensitivity = 6, kEnd = 7, kDuration = 8;
};

TEST_F(HostileStore, PropertiesOfUnexpectedTypes)
{
    MakeStore(
        "INSERT INTO journal(date, subject, body, categories, type, kind, priority, sensitivity, end_time, "
        "duration, contacts) VALUES"
        "('soon', 'texts', x'00FF', 'Work', x'41', 'three', 'high', 'secret', 'later', 'long', 'Ann'),"
        "(1.5, 'numbers', 7, 8, 9, 1e300, 2.5, -1e300, 0.1, -2.5, 10),"
        "(x'01', x'626C6F62', x'', zeroblob(3), x'', x'', x'', x'', x'', x'', x'FFFFFFFF01'),"
        "(NULL, 'nothing', NULL, NULL, NULL, NULL, 99999, -99999, NULL, NULL, NULL)");
    StartWithAllColumns();
    ASSERT_TRUE(ShowsRows(5));
    const std::vector<std::wstring> row = RowOf(L"texts");
    EXPECT_EQ(row[0], L"");
    EXPECT_EQ(row[kPriority], L"Normal");
    EXPECT_EQ(row[kSensitivity], L"Normal");
    EXPECT_EQ(row[kEnd], L"");
    EXPECT_EQ(row[kDuration], L"0 minutes");
    const std::vector<std::wstring> bare = RowOf(L"nothing");
    EXPECT_EQ(bare[kPriority], L"Normal");
    EXPECT_EQ(bare[kDuration], L"0 minutes");
    ExpectEverythingWorks(5);
}

TEST_F(HostileStore, TimesOfAnyValue)
{
    MakeStore("INSERT INTO journal(subject, date, end_time, duration) VALUES"
              "('minus one', -1, -1, -1),"
              "('largest', 9223372036854775807, 9223372036854775807, 9223372036854775807),"
              "('smallest', -9223372036854775807 - 1, -9223372036854775807 - 1, -9223372036854775807 - 1),"
              "('zero', 0, 0, 0),"
              "('one', 1, 1, 1),"
              "('end of the year 30827', 9223372036854775000, 9223372036854775000, 9223372036854775000)");
    StartWithAllColumns();
    ASSERT_TRUE(ShowsRows(7));
    for (const wchar_t* subject : {L"minus one", L"smallest"}) {
        const std::vector<std::wstring> row = RowOf(subject);
        EXPECT_EQ(row[0], L"") << "no date";
        EXPECT_EQ(row[kDuration], L"0 minutes");
    }
    EXPECT_EQ(RowOf(L"zero")[kDuration], L"0 minutes");
    EXPECT_EQ(RowOf(L"zero")[0], L"1/1/1601 12:00 AM");
    ExpectEverythingWorks(7);
}

// Surrogates are kept as three bytes each where they have no other half. A million characters are 5,000 lines
// of 200 each, a subject or a type without an end.
TEST_F(HostileStore, TextsOfAnyKindAndLength)
{
    MakeStore(
        "INSERT INTO journal(subject, body, type) VALUES"
        "(CAST(x'4BEDA080' AS TEXT), CAST(x'EDB080EDB080' AS TEXT), CAST(x'EDA080' AS TEXT)),"
        "(CAST(x'42FFFEC0' AS TEXT), CAST(x'C3' AS TEXT), ''),"
        "('long', replace(hex(zeroblob(5000)), '00', replace(hex(zeroblob(100)), '0', 'b') || char(13, 10)),"
        " replace(hex(zeroblob(500000)), '0', 't')),"
        "(replace(hex(zeroblob(500000)), '0', 's'), 'x' || char(13) || 'y', 'a' || char(0) || 'b')");
    StartWithAllColumns();
    ASSERT_TRUE(ShowsRows(5));
    EXPECT_EQ(RowOf(L"K\xD800")[kBody], L"\xDC00\xDC00");
    EXPECT_EQ(RowOf(L"B\xFFFD\xFFFD\xFFFD").size(), 10u);
    EXPECT_EQ(RowOf(L"long")[kBody], std::wstring(119, L'b'));
    EXPECT_EQ(RowOf(std::wstring(1023, L's'))[kBody], L"x");
    ExpectEverythingWorks(5);
}

TEST_F(HostileStore, RowsThatAreNoRecords)
{
    MakeStore("INSERT INTO journal(oid, subject) VALUES (-5, 'below'), (0, 'zero'), (4294967296, 'above'), "
              "(4294967295, 'last')");
    StartWithAllColumns();
    ASSERT_TRUE(ShowsRows(2));
    EXPECT_EQ(RowOf(L"last")[kSubject], L"last");
    EXPECT_TRUE(m_journal.Close());
}

} // namespace
