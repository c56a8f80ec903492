#include "fault_sweep.h"

#include <algorithm>
#include <cstdio>
#include <random>

#include "mervane/file/store_waiter.h"
#include "settings_of_run.h"
#include "store_dump.h"

namespace {

constexpr int kMemoryFaults = 2; // once, and from then on

constexpr const char* kSample =
    "WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i + 1 FROM n WHERE i < 40) "
    "INSERT INTO journal(date, subject, body, categories, type, kind, priority, sensitivity, end_time, "
    "duration, "
    "contacts) SELECT 133541000000000000 + i * 600000000, 'Entry ' || i, 'Body ' || i || hex(zeroblob(i * "
    "60)), "
    "CASE i % 3 WHEN 0 THEN x'020000000100000003000000' WHEN 1 THEN x'0100000002000000' END, 'Note', 3, i % "
    "3, 0, "
    "133541000000000000 + i * 600000000, 0, CASE i % 2 WHEN 0 THEN x'0100000004000000' END FROM n;"
    "INSERT INTO categories(name, uses, hidden) VALUES('Home', 13, 0), ('Work', 14, 0), ('Travel', 13, 0), "
    "('Garden', 0, 1), ('Books', 0, 0), ('Music', 0, 0);"
    "WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i + 1 FROM n WHERE i < 20) "
    "INSERT INTO contacts(file_as, company, note, vcard_extra) SELECT 'Contact ' || i, 'Acme', "
    "hex(zeroblob(i * 50)), "
    "'UID:' || i FROM n;";

// Only another program's lock is waited for; a lock that was refused once is there at the next try.
constexpr int kMostWaiting = 100; // milliseconds
int g_waited = 0;

// The first lines that differ, cut.
std::string FirstDifference(const std::string& found, const std::string& expected)
{
    const size_t same = static_cast<size_t>(
        std::mismatch(found.begin(), found.end(), expected.begin(), expected.end()).first - found.begin());
    const size_t start = same ? found.rfind('\n', same - 1) + 1 : 0; // 0 behind npos
    return found.substr(start, 300) + "\ninstead of " + expected.substr(start, 300);
}

constexpr const wchar_t* kCompanions[] = {L"-wal", L"-shm", L"-journal"};

} // namespace

DriveOfRun::DriveOfRun()
{
    wchar_t kind[8], folder[MAX_PATH];
    const DWORD length = GetEnvironmentVariableW(L"FAULT_DRIVE", kind, 8);
    if (length != 5 || wcscmp(kind, L"stick") != 0)
        return;
    GetEnvironmentVariableW(L"TMP", folder, MAX_PATH);
    m_folder = folder;
    EXPECT_TRUE(m_drive.emplace(UINT{DRIVE_REMOVABLE}).IsThere());
    SetEnvironmentVariableW(L"TMP", L"N:\\");
}

DriveOfRun::~DriveOfRun()
{
    if (m_drive)
        SetEnvironmentVariableW(L"TMP", m_folder.c_str());
}

FaultSweep::FaultSweep()
{
    SetStoreWaiter([](DWORD milliseconds) {
        g_waited += static_cast<int>(milliseconds);
        Sleep(milliseconds);
    });
}

FaultSweep::~FaultSweep()
{
    SetStoreWaiter(nullptr);
}

bool FaultSweep::OpenAll()
{
    return m_journal.Open(nullptr) && m_categories.Open() && m_contacts.Open();
}

void FaultSweep::CloseAll()
{
    m_contacts.Close();
    m_categories.Close();
    m_journal.Close();
}

void FaultSweep::MakeTemplate()
{
    ASSERT_TRUE(OpenAll());
    CloseAll();
    ASSERT_TRUE(RunInStore(Path(), kSample));
    m_template = ReadFileBytes(Path());
}

void FaultSweep::Restore()
{
    for (const wchar_t* suffix : kCompanions)
        DeleteFileW((Path() + suffix).c_str());
    ASSERT_TRUE(WriteFileBytes(Path(), m_template));
}

// Every call that the work makes when nothing fails.
std::vector<FaultSweep::Point> FaultSweep::PointsOf(const Work& work)
{
    std::vector<Point> points;
    Restore();
    EXPECT_TRUE(work.prepare());
    Disarm();
    EXPECT_EQ(work.run(), Outcome::Done);
    for (size_t kind = 0; kind < kFileCallCount; ++kind) {
        const auto call = static_cast<FileCall>(kind);
        for (int fault = 0; fault < FaultVfs::FaultCount(call); ++fault)
            for (int n = 1; n <= m_vfs.Seen(call); ++n)
                points.push_back({false, call, fault, n});
    }
    const int requests = m_memory.Seen();
    for (int fault = 0; fault < kMemoryFaults; ++fault)
        for (int n = 1; n <= requests; ++n)
            points.push_back({true, {}, fault, n});
    work.end();
    m_after = DumpStore(Path());
    return points;
}

// So many of each kind at most.
std::vector<FaultSweep::Point> FaultSweep::Chosen(std::vector<Point> points) const
{
    if (NumberFromEnvironment("FAULTS_ALL", 0))
        return points;
    std::mt19937 random(NumberFromEnvironment("FAULT_SEED", 1));
    std::shuffle(points.begin(), points.end(), random);
    const unsigned each = NumberFromEnvironment("FAULTS_EACH", 1);
    std::map<std::pair<bool, FileCall>, unsigned> taken;
    std::erase_if(points, [&](const Point& point) {
        return ++taken[{point.inMemory, point.call}] > (point.inMemory ? 3 * each : each);
    });
    return points;
}

void FaultSweep::Arm(const Point& point)
{
    Disarm();
    if (point.inMemory)
        m_memory.FailNth(point.n, point.fault == 1);
    else
        m_vfs.FailNth(point.call, point.n, point.fault);
}

void FaultSweep::Disarm()
{
    m_memory.FailNone();
    m_vfs.FailNone();
    g_waited = 0;
}

bool FaultSweep::HasFired(const Point& point) const
{
    return point.inMemory ? m_memory.HasFired() : m_vfs.HasFired();
}

std::string FaultSweep::Describe(const Point& point)
{
    if (point.inMemory)
        return "request for memory " + std::to_string(point.n) + (point.fault ? " and all after it" : "");
    return std::string(NameOf(point.call)) + " " + std::to_string(point.n) + ", " +
           FaultVfs::FaultName(point.call, point.fault);
}

// A lock that could not be given back lies on the file until it is closed.
void FaultSweep::ExpectUnchanged(const Work& work)
{
    const std::string dump = DumpStore(Path());
    const bool isLocked = dump.starts_with("error:");
    if (!isLocked) {
        EXPECT_TRUE(dump == m_before) << "failed, but: " << FirstDifference(dump, m_before);
    }
    const bool again = work.triesAgain && !isLocked;
    if (again) {
        EXPECT_EQ(work.run(), Outcome::Done) << "the second time, without a fault";
    }
    work.end();
    EXPECT_TRUE(DumpStore(Path()) == (again ? m_after : m_before)) << "after the second time: " << again;
}

void FaultSweep::ExpectDone(const Work& work)
{
    work.end();
    const std::string dump = DumpStore(Path());
    EXPECT_TRUE(dump == m_after) << "done, but not all of it: " << FirstDifference(dump, m_after);
}

void FaultSweep::Try(const Work& work, const Point& point)
{
    Restore();
    ASSERT_TRUE(work.prepare());
    Arm(point);
    const Outcome outcome = work.run();
    const bool fired = HasFired(point);
    EXPECT_LT(g_waited + m_vfs.Slept(), kMostWaiting) << "milliseconds of waiting for nobody";
    Disarm();
    m_notFired += !fired;
    ++(outcome == Outcome::Failed ? m_failed : m_done);
    if (outcome == Outcome::Failed)
        ExpectUnchanged(work);
    else
        ExpectDone(work);
    ASSERT_TRUE(OpenAll()) << "cannot be opened again";
    CloseAll();
    EXPECT_EQ(CheckStore(Path()), "ok");
}

void FaultSweep::Sweep(const Work& work)
{
    ASSERT_NO_FATAL_FAILURE(MakeTemplate());
    m_before = DumpStore(Path());
    ASSERT_TRUE(RunInStore(Path(), work.model));
    const std::string model = DumpStore(Path());
    const std::vector<Point> points = PointsOf(work);
    ASSERT_TRUE(m_after == model) << "without a fault it does not do what it should: "
                                  << FirstDifference(m_after, model);
    const std::vector<Point> chosen = Chosen(points);
    const bool isTold = NumberFromEnvironment("FAULTS_TOLD", 0);
    int wrong = 0;
    for (const Point& point : chosen) {
        if (isTold)
            std::printf("    %s\n", Describe(point).c_str()), std::fflush(stdout);
        const int before =
            testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count();
        SCOPED_TRACE(Describe(point));
        Try(work, point);
        const int after = testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count();
        wrong += after > before;
        if (wrong == 20)
            break;
    }
    std::printf("  %zu of %zu faults, seed %u: %d failed, %d done, %d did not come, %d wrong\n",
                chosen.size(), points.size(), NumberFromEnvironment("FAULT_SEED", 1), m_failed, m_done,
                m_notFired, wrong);
}
