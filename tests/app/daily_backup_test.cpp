#include "app/daily_backup.h"

#include <set>

#include "app/main_window_fixture.h"
#include "support/fault_vfs.h"
#include "support/import_watch.h"
#include "util/clock.h"

namespace {

// No timer takes longer, and it is known how long each was to take.
std::set<UINT> g_periods;
int g_nextLooks = 0; // that were set
decltype(&SetTimer) g_setTimer = nullptr;

UINT_PTR WINAPI SetShortTimer(HWND window, UINT_PTR id, UINT period, TIMERPROC procedure)
{
    if (procedure)
        g_periods.insert(period);
    if (procedure && period == 3'600'000)
        ++g_nextLooks;
    return g_setTimer(window, id, procedure ? USER_TIMER_MINIMUM : period, procedure);
}

class DailyBackupTest : public testing::Test {
  protected:
    DailyBackupTest()
    {
        g_periods.clear();
        EXPECT_EQ(App().Journal().Open(nullptr), 1);
    }
    ~DailyBackupTest() override
    {
        m_backup.Stop();
        App().Journal().Close();
    }
    using Names = std::vector<std::wstring>;

    FaultVfs m_faults;
    TestRegistry m_registry;
    TestStore m_store;
    TestParent m_parent;
    ScopedClockForTesting m_clock{{2026, 1, 6, 30, 23, 59, 0, 0}};
    DailyBackup m_backup{App().Journal()};
};

TEST_F(DailyBackupTest, IsMadeOfTheNextDayTooWhileTheJournalStaysOpen)
{
    g_setTimer = __imp_SetTimer;
    const ImportWatch<decltype(&SetTimer)> watch(&__imp_SetTimer, SetShortTimer);
    m_backup.Start(m_parent.Handle());
    EXPECT_TRUE(PumpUntil([] { return g_periods.contains(3'600'000); })) << "once an hour";
    const Names one = BackupsOf(m_store.Path());
    ASSERT_EQ(one.size(), 1u);
    EXPECT_NE(one[0].find(L"2026-01-30"), std::wstring::npos);
    m_clock.Set({2026, 1, 0, 31, 0, 30, 0, 0});
    EXPECT_TRUE(PumpUntil([&] { return BackupsOf(m_store.Path()).size() == 2; }));
}

// What else goes wrong with a copy costs nobody anything: it is tried again.
TEST_F(DailyBackupTest, AFullDiskIsNoDamageThatIsTold)
{
    constexpr int kStaysFull = 1;
    ASSERT_STREQ(FaultVfs::FaultName(FileCall::Write, kStaysFull), "disk stays full");
    g_setTimer = __imp_SetTimer;
    const ImportWatch<decltype(&SetTimer)> watch(&__imp_SetTimer, SetShortTimer);
    const MessageBoxAnswerer answerer;
    m_faults.FailNth(FileCall::Write, 1, kStaysFull);
    m_backup.Start(m_parent.Handle());
    EXPECT_TRUE(PumpUntil([] {
        return g_periods.contains(3'600'000) && App().Journal().BackupTrouble() == StoreTrouble::Full;
    }));
    EXPECT_TRUE(BackupsOf(m_store.Path()).empty());
    m_faults.FailNone();
    EXPECT_TRUE(PumpUntil([&] { return !BackupsOf(m_store.Path()).empty(); })) << "room was made";
    EXPECT_TRUE(answerer.Boxes().empty());
}

// It is looked again, for the file may be mended; who was told knows it for the day.
TEST_F(DailyBackupTest, DamageIsToldOnceADayAndLookedForAgain)
{
    {
        CeDBase::BulkScope bulk(App().Journal());
        std::wstring body(20'000, L'x');
        CEPROPVAL value{};
        value.propid = kPropBody;
        value.val.lpwstr = body.data();
        for (int i = 0; i < 100; ++i)
            ASSERT_NE(App().Journal().WriteRecord(0, 1, &value), 0u);
        ASSERT_EQ(bulk.Commit(), 1);
    }
    App().Journal().Close();
    std::string bytes = ReadFileBytes(m_store.Path());
    ASSERT_GT(bytes.size(), size_t{4096 * 400});
    bytes.replace(4096 * 200, 4096 * 20, 4096 * 20, '\x55');
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), bytes));
    ASSERT_EQ(App().Journal().Open(nullptr), 1);
    g_setTimer = __imp_SetTimer;
    const ImportWatch<decltype(&SetTimer)> watch(&__imp_SetTimer, SetShortTimer);
    const MessageBoxAnswerer answerer;
    const auto looksAgain = [](int times) {
        const int until = g_nextLooks + times;
        return PumpUntil([=] { return g_nextLooks >= until; });
    };
    m_backup.Start(m_parent.Handle());
    EXPECT_TRUE(PumpUntil([&] { return answerer.Boxes().size() == 1; }));
    EXPECT_TRUE(looksAgain(3));
    EXPECT_EQ(App().Journal().BackupTrouble(), StoreTrouble::Damaged);
    EXPECT_EQ(answerer.Boxes().size(), 1u);
    m_clock.Set({2026, 1, 0, 31, 0, 30, 0, 0});
    EXPECT_TRUE(PumpUntil([&] { return answerer.Boxes().size() == 2; }));
    EXPECT_TRUE(looksAgain(3));
    EXPECT_EQ(answerer.Boxes().size(), 2u);
    EXPECT_TRUE(BackupsOf(m_store.Path()).empty() || BackupsOf(m_store.Path())[0].ends_with(L".part"));
}

} // namespace
