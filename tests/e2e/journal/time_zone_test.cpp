// A time is what the clock on the wall shows, and the same in every zone. The session is in one that is nine
// hours ahead.
#include <gtest/gtest.h>

#include "data/journal_entry.h"
#include "e2e/harness/remote_date_picker.h"
#include "e2e/journal/journal_window.h"

namespace {

constexpr uint64_t kHour = 60 * TimeCount::kUnitsPerMinute;
// 2026-12-01 00:00 by the clock on the wall, where it is still November elsewhere.
constexpr uint64_t kDecember = kNoon + 9 * 24 * kHour + 12 * kHour;

// M/d/yyyy h:mm tt, by hand.
std::wstring Shown(const SYSTEMTIME& time)
{
    wchar_t text[40];
    swprintf(text, 40, L"%u/%u/%u %u:%02u %ls", time.wMonth, time.wDay, time.wYear,
             time.wHour % 12 ? time.wHour % 12 : 12, time.wMinute, time.wHour < 12 ? L"AM" : L"PM");
    return text;
}

uint64_t WallClock()
{
    SYSTEMTIME now;
    GetLocalTime(&now);
    FILETIME count{};
    EXPECT_TRUE(SystemTimeToFileTime(&now, &count));
    return TimeCount(count).Units();
}

class TimeZone : public JournalWindowTest {
  protected:
    void SetUp() override
    {
        TIME_ZONE_INFORMATION zone{};
        GetTimeZoneInformation(&zone);
        ASSERT_EQ(zone.Bias, -9 * 60) << "to be run with TZ=JST-9 in the environment";
    }
    uint64_t StoredDate() const
    {
        return std::stoull(StoreReader(m_store.Path()).QueryOne("SELECT date FROM journal").value_or("0"));
    }
    bool ShowsDate(const std::wstring& text) const
    {
        return WaitFor([&] { return List().Text(0, 0) == text; });
    }
};

TEST_F(TimeZone, ANewEntryIsOfTheWallClock)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    const uint64_t before = WallClock();
    PressKeys({VK_CONTROL, 'N'});
    HWND editor = WaitForEditor();
    ASSERT_NE(editor, nullptr);
    const uint64_t after = WallClock();
    HWND body = Control(editor, IDC_BODY);
    ASSERT_TRUE(WaitFor([&] { return Click(MiddleOf(body)) && FocusOf(editor) == body; }));
    TypeText(L"a walk");
    ASSERT_TRUE(Click(MiddleOf(Control(editor, IDOK))));
    ASSERT_TRUE(WaitUntilGone(editor));
    ASSERT_TRUE(ShowsRows(1));
    EXPECT_GE(StoredDate(), before);
    EXPECT_LE(StoredDate(), after);
    SYSTEMTIME stored{};
    const FILETIME date = TimeCount(StoredDate()).ToFileTime();
    ASSERT_TRUE(FileTimeToSystemTime(&date, &stored));
    EXPECT_TRUE(ShowsDate(Shown(stored)));
}

TEST_F(TimeZone, AStoredTimeIsShownAndSavedAsItIs)
{
    ASSERT_NE(AddEntry(L"Lunch"), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    EXPECT_TRUE(ShowsDate(L"11/21/2026 12:00 PM"));
    ASSERT_TRUE(DoubleClick(List().LabelPoint(0)));
    HWND editor = WaitForEditor();
    ASSERT_NE(editor, nullptr);
    const RemoteDatePicker picker(Control(editor, IDC_START_DATE));
    SYSTEMTIME date = picker.Value().value_or(SYSTEMTIME{});
    EXPECT_EQ(Shown(date), L"11/21/2026 12:00 PM");
    date.wHour = 23;
    date.wMinute = 45;
    ASSERT_TRUE(picker.Change(date));
    ASSERT_TRUE(Click(MiddleOf(Control(editor, IDOK))));
    ASSERT_TRUE(WaitUntilGone(editor));
    EXPECT_TRUE(ShowsDate(L"11/21/2026 11:45 PM"));
    EXPECT_EQ(StoredDate(), kNoon + 11 * kHour + 45 * TimeCount::kUnitsPerMinute);
}

TEST_F(TimeZone, AMonthBeginsWithItsFirstHourOnTheWall)
{
    ASSERT_NE(AddEntry(L"the last hour of November", kDecember - kHour / 2), 0u);
    ASSERT_NE(AddEntry(L"the first hour of December", kDecember + kHour / 2), 0u);
    ASSERT_TRUE(StoreSetting(L"Filter", L"fRange", 0));
    ASSERT_TRUE(StoreSetting(L"Filter", L"fMonths", 1u << 11));
    ASSERT_TRUE(StoreSetting(L"Filter", L"Active", 1));
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(1));
    EXPECT_TRUE(WaitFor([&] { return List().Text(0, 1) == L"the first hour of December"; }));
}

} // namespace
