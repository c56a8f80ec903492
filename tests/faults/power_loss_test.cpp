// The power goes: whatever the disk is left with, the store opens and has all that was acknowledged.
//
// POWER_LOSSES in the environment is how many disks each work leaves behind, POWER_SEED where they begin.
#include <gtest/gtest.h>

#include <fstream>
#include <optional>
#include <sstream>

#include "addrbook/transfer/import_job.h"
#include "disk_log.h"
#include "mervane/records.h"
#include "settings_of_run.h"
#include "store_dump.h"
#include "support/test_drive.h"
#include "support/test_store.h"

namespace {

constexpr const wchar_t* kSuffixes[] = {L"", L"-wal", L"-journal"};
constexpr const char* kNames[] = {"", "-wal", "-journal"};

// For the message of a failure: the files with their sizes and what they begin with.
std::string Describe(const Disk& disk)
{
    std::string text;
    for (const auto& [name, file] : disk) {
        const std::string& bytes = file.bytes;
        text += "\n  " + name + ", " + std::to_string(bytes.size()) + " bytes:";
        for (size_t i = 0; i < std::min<size_t>(bytes.size(), 32); ++i) {
            constexpr const char* kDigits = "0123456789abcdef";
            const auto byte = static_cast<unsigned char>(bytes[i]);
            text += {' ', kDigits[byte / 16], kDigits[byte % 16]};
        }
    }
    return text;
}

constexpr unsigned kShortForm = 12;

class PowerLoss : public testing::Test {
  protected:
    void SetUp() override
    {
        const std::wstring name = m_path.substr(m_path.find_last_of(L'\\') + 1);
        m_name.assign(name.begin(), name.end());
    }
    void TearDown() override
    {
        Remove();
        DeleteFileW(Cards().c_str());
    }

    std::wstring Cards() const { return Path() + L".vcf"; }

    // From here on what reaches the disk is kept.
    void Record()
    {
        Disk disk;
        for (size_t i = 0; i < std::size(kSuffixes); ++i)
            if (GetFileAttributesW((Path() + kSuffixes[i]).c_str()) != INVALID_FILE_ATTRIBUTES)
                disk[m_name + kNames[i]].bytes = ReadFileBytes(Path() + kSuffixes[i]);
        m_log.emplace(std::move(disk));
        m_vfs.Record([this](DiskEvent event) {
            if (event.file.starts_with(m_name))
                m_log->Add(std::move(event));
        });
    }
    // What has been done so far was reported as done.
    void Acknowledge() { m_acknowledged.push_back({m_log->Size(), DumpStore(Path())}); }

    void OpenAll()
    {
        ASSERT_EQ(m_journal.Open(nullptr), 1);
        ASSERT_EQ(m_categories.Open(), 1);
        ASSERT_EQ(m_contacts.Open(), 1);
    }
    void CloseAll()
    {
        m_contacts.Close();
        m_categories.Close();
        m_journal.Close();
    }
    void CreateEmpty()
    {
        ASSERT_NO_FATAL_FAILURE(OpenAll());
        CloseAll();
    }

    // Another place for the store, before anything is there.
    void MoveTo(const std::wstring& path)
    {
        m_path = path;
        SetEnvironmentVariableW(L"MERVANE_STORE", path.c_str());
        PowerLoss::SetUp();
    }
    // What was acknowledged last may be undone.
    void AllowUndone() { m_mayBeUndone = true; }

    // Loses the power so often: half of the moments lie all over the log, half around the events that matter
    // most.
    void LosePower(unsigned times);

  private:
    struct Acknowledged {
        size_t events;
        std::string dump;
    };

    void Remove()
    {
        for (const wchar_t* suffix : {L"", L"-wal", L"-journal", L"-shm"})
            DeleteFileW((Path() + suffix).c_str());
    }
    std::vector<size_t> Moments(unsigned times, std::mt19937& random) const;
    void Rebuild(const Disk& disk, std::mt19937& random);
    bool IsAcceptable(size_t moment, const std::string& dump) const;
    void ExpectNothingLost(size_t moment);

    FaultVfs m_vfs;
    TestStore m_store;
    std::wstring m_path = m_store.Path();
    std::string m_name;
    std::optional<DiskLog> m_log;
    std::vector<Acknowledged> m_acknowledged;
    bool m_mayBeUndone = false;

  protected:
    const std::wstring& Path() const { return m_path; }

    DbJournal m_journal;
    DbCategories m_categories;
    DbContacts m_contacts;
};

std::vector<size_t> PowerLoss::Moments(unsigned times, std::mt19937& random) const
{
    std::vector<size_t> turns{m_log->Size()}, moments;
    for (size_t i = 0; i < m_log->Size(); ++i)
        if (m_log->IsTurningPoint(i))
            turns.insert(turns.end(), {i, i + 1});
    for (unsigned i = 0; i < times; ++i)
        moments.push_back(i % 2 ? turns[random() % turns.size()] : random() % (m_log->Size() + 1));
    std::sort(moments.begin(), moments.end());
    return moments;
}

void PowerLoss::Rebuild(const Disk& disk, std::mt19937& random)
{
    Remove();
    for (size_t i = 0; i < std::size(kNames); ++i)
        if (const auto found = disk.find(m_name + kNames[i]); found != disk.end()) {
            ASSERT_TRUE(WriteFileBytes(Path() + kSuffixes[i], found->second.bytes));
        }
    // The index of the log is never flushed: it may have kept anything.
    if (random() % 4 == 0 && disk.contains(m_name + "-wal")) {
        const std::string anything(32768, static_cast<char>(random() % 256));
        ASSERT_TRUE(WriteFileBytes(Path() + L"-shm", anything));
    }
}

// What was acknowledged last, or that and the whole of what was being done. Where the last one may be undone,
// the one before it too.
bool PowerLoss::IsAcceptable(size_t moment, const std::string& dump) const
{
    size_t last = 0;
    while (last + 1 < m_acknowledged.size() && m_acknowledged[last + 1].events <= moment)
        ++last;
    const bool mayBeNext = last + 1 < m_acknowledged.size() && dump == m_acknowledged[last + 1].dump;
    const bool mayBeBefore = m_mayBeUndone && last > 0 && dump == m_acknowledged[last - 1].dump;
    return mayBeNext || mayBeBefore || dump == m_acknowledged[last].dump;
}

void PowerLoss::ExpectNothingLost(size_t moment)
{
    ASSERT_NO_FATAL_FAILURE(OpenAll());
    const DWORD count = m_journal.RecordCount();
    EXPECT_EQ(Walk(m_journal).size(), count);
    CloseAll();
    EXPECT_EQ(CheckStore(Path()), "ok");
    EXPECT_TRUE(IsAcceptable(moment, DumpStore(Path())));
}

void PowerLoss::LosePower(unsigned times)
{
    CloseAll();
    m_vfs.Record(nullptr);
    const unsigned seed = NumberFromEnvironment("POWER_SEED", 1);
    std::mt19937 random(seed);
    DiskReplay replay(*m_log);
    unsigned number = 0;
    for (const size_t moment : Moments(times, random)) {
        replay.GoTo(moment);
        const Disk disk = replay.LosePower(random);
        SCOPED_TRACE("seed " + std::to_string(seed) + ", disk " + std::to_string(number++) + ", after step " +
                     std::to_string(moment) + " of " + std::to_string(m_log->Size()) + Describe(disk));
        ASSERT_NO_FATAL_FAILURE(Rebuild(disk, random));
        ASSERT_NO_FATAL_FAILURE(ExpectNothingLost(moment));
        if (HasFailure())
            return;
    }
    RecordProperty("disks", static_cast<int>(number));
    std::printf("  %u disks, seed %u, %zu steps\n", number, seed, m_log->Size());
}

unsigned Times(unsigned shortForm)
{
    return NumberFromEnvironment("POWER_LOSSES", shortForm);
}

TEST_F(PowerLoss, WhileAStoreIsMade)
{
    Record();
    ASSERT_NO_FATAL_FAILURE(OpenAll());
    Acknowledge();
    ASSERT_NE(AddEntry(m_journal, L"the first"), 0u);
    Acknowledge();
    ASSERT_NE(AddCategory(m_categories, L"Work"), 0u);
    Acknowledge();
    LosePower(Times(kShortForm));
}

// A store of the first version with this in it, and the power that goes while it is opened and written to.
class PowerLossOfAnOlderStore : public PowerLoss {
  protected:
    void BringToTheNewestVersion(const std::string& content)
    {
        std::ifstream file(std::string(SCHEMA_FOLDER) + "/schema_v1.sql");
        std::stringstream script;
        script << file.rdbuf() << "PRAGMA application_id = 0x514A524E; PRAGMA user_version = 1001;"
               << content;
        ASSERT_TRUE(RunInStore(Path(), script.str()));
        Record();
        ASSERT_NO_FATAL_FAILURE(OpenAll());
        Acknowledge();
        ASSERT_NE(AddEntry(m_journal, L"after it"), 0u);
        Acknowledge();
        LosePower(Times(kShortForm));
    }
};

TEST_F(PowerLossOfAnOlderStore, WithALog)
{
    BringToTheNewestVersion(
        "INSERT INTO journal(date, subject, contacts) VALUES(5, 'kept', x'0100000002000000');"
        "INSERT INTO categories(name, uses) VALUES('Work', 3);"
        "WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i + 1 FROM n WHERE i < 300) "
        "INSERT INTO contacts(file_as, company) SELECT 'Contact ' || i, 'Acme' FROM n;"
        "PRAGMA journal_mode = WAL");
}

TEST_F(PowerLossOfAnOlderStore, WithoutALog)
{
    BringToTheNewestVersion("INSERT INTO journal(subject) VALUES('kept')");
}

TEST_F(PowerLoss, WhileEntriesAreSavedAndDeleted)
{
    CreateEmpty();
    Record();
    ASSERT_NO_FATAL_FAILURE(OpenAll());
    Acknowledge();
    std::vector<CEOID> ids;
    for (int i = 0; i < 12; ++i) {
        ids.push_back(Sent().Time(kDate, 1).Text(kBody, std::wstring(1u << i, L'x')).Write(m_journal));
        ASSERT_NE(ids.back(), 0u);
        Acknowledge();
    }
    for (const CEOID id : ids) {
        ASSERT_EQ(Sent().Text(kSubject, L"again").Text(kBody, std::wstring(9000, L'y')).Write(m_journal, id),
                  id);
        Acknowledge();
        if (id % 3 == 0) {
            ASSERT_EQ(m_journal.DeleteRecord(id), 1);
            Acknowledge();
        }
    }
    LosePower(Times(kShortForm));
}

// Without a log what ends a transaction is that its journal is deleted, which a drive tells late: the last
// one may be undone, never a part of it and never one more.
TEST_F(PowerLoss, WhileEntriesAreSavedOnADriveThatCanBePulledOut)
{
    const TestDrive drive(DRIVE_REMOVABLE);
    ASSERT_TRUE(drive.IsThere());
    MoveTo(drive.Path(L"stick.db"));
    CreateEmpty();
    Record();
    ASSERT_NO_FATAL_FAILURE(OpenAll());
    Acknowledge();
    AllowUndone();
    for (int i = 0; i < 12; ++i) {
        const CEOID id = Sent().Time(kDate, 1).Text(kBody, std::wstring(1u << i, L'x')).Write(m_journal);
        ASSERT_NE(id, 0u);
        Acknowledge();
        ASSERT_EQ(Sent().Text(kSubject, L"again").Text(kBody, std::wstring(9000, L'y')).Write(m_journal, id),
                  id);
        Acknowledge();
        if (i % 3 == 0) {
            ASSERT_EQ(m_journal.DeleteRecord(id), 1);
            Acknowledge();
        }
    }
    ASSERT_EQ(GetFileAttributesW((Path() + L"-wal").c_str()), INVALID_FILE_ATTRIBUTES);
    LosePower(Times(kShortForm));
    TearDown(); // while the drive is there
}

// Another program brings the log into the file between saves, so that it is begun anew.
TEST_F(PowerLoss, WhileTheLogIsBroughtIn)
{
    CreateEmpty();
    Record();
    ASSERT_NO_FATAL_FAILURE(OpenAll());
    Acknowledge();
    for (const char* mode : {"PASSIVE", "FULL", "RESTART", "TRUNCATE", "PASSIVE"}) {
        for (int i = 0; i < 6; ++i) {
            ASSERT_NE(Sent().Text(kBody, std::wstring(5000, L'a')).Write(m_journal), 0u);
            Acknowledge();
        }
        RawStore(Path()).Run(std::string("PRAGMA wal_checkpoint(") + mode + ")");
    }
    LosePower(Times(kShortForm));
}

// The log has become so long that a save brings it in.
TEST_F(PowerLoss, WhileASaveBringsALongLogIn)
{
    CreateEmpty();
    Record();
    ASSERT_NO_FATAL_FAILURE(OpenAll());
    Acknowledge();
    CEOID id = 0;
    for (int i = 0; i < 46; ++i) {
        id = Sent().Text(kBody, std::wstring(400'000, static_cast<wchar_t>(L'!' + i))).Write(m_journal, id);
        ASSERT_NE(id, 0u);
        Acknowledge();
    }
    LosePower(Times(kShortForm) / 4);
}

TEST_F(PowerLoss, WhileCardsAreImported)
{
    constexpr int kCards = 10'000;
    std::string cards;
    for (int i = 0; i < kCards; ++i)
        cards += "BEGIN:VCARD\r\nVERSION:4.0\r\nFN:Contact " + std::to_string(i) +
                 "\r\nUID:" + std::to_string(i) +
                 "\r\nNOTE:" + std::string(static_cast<size_t>(i % 300), 'n') + "\r\nEND:VCARD\r\n";
    ASSERT_TRUE(WriteFileBytes(Cards(), cards));
    CreateEmpty();
    Record();
    ASSERT_NO_FATAL_FAILURE(OpenAll());
    Acknowledge();
    ASSERT_NE(AddContact(m_contacts, L"before"), 0u);
    Acknowledge();
    {
        addrbook::ImportJob job(m_contacts, Cards(), nullptr);
        addrbook::Transfer::State state;
        do
            state = job.Step(1000);
        while (state == addrbook::Transfer::State::Working);
        ASSERT_EQ(state, addrbook::Transfer::State::Done);
    }
    Acknowledge();
    LosePower(Times(kShortForm) / 4);
}

TEST_F(PowerLoss, WhileTheLastProgramClosesTheStore)
{
    CreateEmpty();
    ASSERT_NO_FATAL_FAILURE(OpenAll());
    for (int i = 0; i < 40; ++i)
        ASSERT_NE(Sent().Text(kBody, std::wstring(3000, L'z')).Write(m_journal), 0u);
    Record();
    Acknowledge();
    CloseAll();
    LosePower(Times(kShortForm));
}

} // namespace
