// What other programs write reaches what this one keeps in memory and those who show it, whatever comes
// between.
#include <gtest/gtest.h>

#include <algorithm>

#include "change_listener.h"
#include "mervane/changes/commit_ledger.h"
#include "mervane/file/store_path.h"
#include "peer_process.h"
#include "records.h"
#include "statement_log.h"
#include "support/test_store.h"

namespace {

const std::pair<WPARAM, LPARAM> kAllMayBeNew{kChangeWorkEnded, 0};

class ForeignChange : public testing::Test {
  protected:
    void SetUp() override
    {
        ASSERT_EQ(m_journal.Open(m_entries.Window()), 1);
        ASSERT_EQ(m_contacts.Open(kContactsKey, m_people.Window()), 1);
        ASSERT_NE(AddEntry(m_journal, L"here"), 0u);
        ASSERT_NE(AddContact(m_contacts, L"Doe"), 0u);
    }
    // By a tool that tells nobody.
    void WriteContactInSilence()
    {
        ASSERT_TRUE(RawStore(m_store.Path()).Run("INSERT INTO contacts(file_as) VALUES('Roe')"));
    }
    static bool HearsThatAllMayBeNew(Listener& listener)
    {
        return PumpUntil([&] {
            const Heard heard = listener.HeardSoFar();
            return std::find(heard.begin(), heard.end(), kAllMayBeNew) != heard.end();
        });
    }

    TestStore m_store;
    Listener m_entries, m_people;
    DbJournal m_journal;
    DbContacts m_contacts;
};

TEST_F(ForeignChange, BeforeASaveOfTheOwnIsHeard)
{
    WriteContactInSilence();
    ASSERT_NE(AddEntry(m_journal, L"mine"), 0u);
    EXPECT_TRUE(HearsThatAllMayBeNew(m_people));
    EXPECT_TRUE(HearsThatAllMayBeNew(m_entries));
    EXPECT_EQ(m_contacts.RecordCount(), 2u);
}

// The message tells of another change than the one that nobody tells of.
TEST_F(ForeignChange, BeforeASaveThatAThirdProgramTellsOfIsHeard)
{
    WriteContactInSilence();
    ASSERT_EQ(PeerProcess::Run(L"write theirs"), 0u);
    EXPECT_TRUE(HearsThatAllMayBeNew(m_people));
    EXPECT_EQ(m_contacts.RecordCount(), 2u);
    EXPECT_EQ(m_journal.RecordCount(), 2u);
}

TEST_F(ForeignChange, AfterASaveThatAThirdProgramTellsOfIsHeard)
{
    ASSERT_EQ(PeerProcess::Run(L"write theirs"), 0u);
    WriteContactInSilence();
    EXPECT_TRUE(HearsThatAllMayBeNew(m_people));
    EXPECT_EQ(m_contacts.RecordCount(), 2u);
}

// Although the ledger holds a commit of its number, from a time in which the log counted anew.
TEST_F(ForeignChange, BehindOneThatTheLedgerTellsOfIsHeard)
{
    {
        mervane::CommitLedger ledger;
        ledger.Open(mervane::StorePath());
        for (uint32_t number = 0; number < 1000; ++number) {
            ledger.Announce({number, 1}, {mervane::TableId::Journal, {kChangeModified, 1}});
            ledger.Close({number, 1}, mervane::LogState{number + 1, 2});
        }
    }
    ASSERT_EQ(PeerProcess::Run(L"write theirs"), 0u);
    WriteContactInSilence();
    EXPECT_EQ(m_contacts.RecordCount(), 2u);
    EXPECT_TRUE(HearsThatAllMayBeNew(m_people));
}

TEST_F(ForeignChange, DuringBulkWorkOfTheOwnIsHeard)
{
    WriteContactInSilence();
    {
        CeDBase::BulkScope bulk(m_journal);
        ASSERT_NE(AddEntry(m_journal, L"mine"), 0u);
        ASSERT_EQ(bulk.Commit(), 1);
    }
    EXPECT_TRUE(HearsThatAllMayBeNew(m_people));
}

// A message that comes alone says nothing of other commits.
TEST_F(ForeignChange, IsNotExplainedByAnyMessage)
{
    HWND hub = FindWindowExW(HWND_MESSAGE, nullptr, L"MervaneStore", nullptr);
    ASSERT_NE(hub, nullptr);
    WriteContactInSilence();
    SendMessageW(hub, RegisterWindowMessageW(L"MervaneStoreChange"), kChangeModified, 1);
    EXPECT_TRUE(HearsThatAllMayBeNew(m_people));
}

TEST_F(ForeignChange, WithoutAMessageOfItsWriterIsHeardAllTheSame)
{
    // The peer finds no window to post to, as if it had ended behind its commit.
    HWND hub = FindWindowExW(HWND_MESSAGE, nullptr, L"MervaneStore", nullptr);
    ASSERT_NE(hub, nullptr);
    std::wstring title(MAX_PATH, L'\0');
    title.resize(static_cast<size_t>(GetWindowTextW(hub, title.data(), MAX_PATH)));
    ASSERT_TRUE(SetWindowTextW(hub, L"elsewhere"));
    ASSERT_EQ(PeerProcess::Run(L"contact Roe"), 0u);
    EXPECT_EQ(m_people.Hear(1), (Heard{{kChangeCreated, 2}}));
    EXPECT_EQ(m_entries.Hear(1), (Heard{kAllMayBeNew}));
    ASSERT_TRUE(SetWindowTextW(hub, title.c_str()));
}

// With the log's commits written down by their writer, only the records of these are read.
TEST(FollowedChange, ReadsOnlyWhatWasWritten)
{
    const TestStore store;
    StatementLog statements;
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    for (int i = 0; i < 10; ++i)
        ASSERT_NE(AddEntry(journal, L"here", 100), 0u);
    ASSERT_EQ(Rows(journal).size(), 10u);
    (void)statements.Take();
    ASSERT_EQ(PeerProcess::Run(L"write theirs"), 0u);
    ASSERT_EQ(PeerProcess::Run(L"change 3 other"), 0u);
    ASSERT_EQ(PeerProcess::Run(L"delete 4"), 0u);
    EXPECT_EQ(Rows(journal), (std::vector<CEOID>{1, 2, 3, 5, 6, 7, 8, 9, 10, 11}));
    for (const std::string& statement : statements.Take())
        EXPECT_TRUE(statement.find("FROM") == std::string::npos ||
                    statement.find("WHERE oid = ") != std::string::npos)
            << statement;
}

// A walk that stands on a record which another program deletes goes on behind it.
TEST(FollowedChange, LetsAWalkGoOn)
{
    const TestStore store;
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    for (uint64_t date = 1; date <= 4; ++date)
        ASSERT_NE(AddEntry(journal, L"here", date), 0u);
    ASSERT_EQ(journal.SeekFirstRecord(), 1);
    ASSERT_EQ(journal.SeekNextRecord(), 1);
    ASSERT_EQ(PeerProcess::Run(L"delete 2"), 0u);
    ASSERT_EQ(PeerProcess::Run(L"delete 3"), 0u);
    ASSERT_EQ(journal.SeekNextRecord(), 1);
    EXPECT_EQ(Received(journal, std::vector{kDate}).Id(), 4u);
    EXPECT_EQ(journal.SeekNextRecord(), 0);
}

struct Order {
    CEPROPID property;
    DWORD flags;
    bool filtered;
};

class FollowedOrder : public testing::TestWithParam<Order> {};

// Whatever was followed, the order is the one that reading all anew gives.
TEST_P(FollowedOrder, IsThatOfAFreshRead)
{
    const TestStore store;
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    if (GetParam().filtered) {
        const auto isNormal = [](const CEPROPVAL* value) { return value && value->val.iVal == 1; };
        ASSERT_NE(journal.SetRowFilter({kPriority, isNormal}), 0u);
    }
    journal.SetSort({GetParam().property, GetParam().flags}, 1);
    ASSERT_NE(AddEntry(journal, L"here", 1), 0u);
    ASSERT_EQ(Rows(journal).size(), 1u);
    {
        PeerProcess peer(L"churn peer 400 7");
        for (int i = 0; peer.Hear(); ++i)
            if (i % 30 == 0)
                (void)journal.RecordCount();
        ASSERT_EQ(peer.Wait(), 0u);
    }
    const std::vector<CEOID> followed = Rows(journal);
    const uint32_t passing = journal.PassingRows();
    // Nobody says what this has changed.
    ASSERT_TRUE(RawStore(store.Path()).Run("UPDATE journal SET type = 'x' WHERE oid = 1"));
    EXPECT_EQ(followed, Rows(journal));
    EXPECT_EQ(passing, journal.PassingRows());
    EXPECT_GT(followed.size(), 20u);
}

INSTANTIATE_TEST_SUITE_P(All, FollowedOrder,
                         testing::Values(Order{kDate, 0, false}, Order{kDate, CEDB_SORT_DESCENDING, true},
                                         Order{kSubject, 0, false}, Order{kPriority, 0, true},
                                         Order{kSubject, CEDB_SORT_DESCENDING, true}));

// The ledger alone.
class Ledger : public testing::Test {
  protected:
    void SetUp() override
    {
        m_writer.Open(L"c:\\a ledger of tests");
        m_reader.Open(L"c:\\a ledger of tests");
    }
    void Write(uint32_t before, CEOID id, bool made = true)
    {
        const mervane::LogState state{before, 1000 + before};
        m_writer.Announce(state, {mervane::TableId::Contacts, {kChangeModified, id, false}});
        m_writer.Close(state,
                       made ? std::optional(mervane::LogState{before + 1, 1001 + before}) : std::nullopt);
    }
    // As a slot that is left from a time in which the numbers meant other commits.
    void WriteStale(uint32_t before)
    {
        m_writer.Announce({before, 1}, {mervane::TableId::Contacts, {kChangeModified, 1, false}});
        m_writer.Close({before, 1}, mervane::LogState{before + 1, 2});
    }
    std::optional<std::vector<mervane::TableChange>> Read(uint32_t from, uint32_t to)
    {
        return m_reader.Between({from, 1000 + from}, {to, 1000 + to});
    }

    mervane::CommitLedger m_writer, m_reader;
};

TEST_F(Ledger, SaysWhatWasWritten)
{
    Write(7, 70);
    Write(8, 0xFFFFFFFF);
    const auto read = Read(7, 9);
    ASSERT_TRUE(read);
    const mervane::TableChange expected[] = {
        {mervane::TableId::Contacts, {kChangeModified, 70, false}},
        {mervane::TableId::Contacts, {kChangeModified, 0xFFFFFFFF, false}}};
    EXPECT_TRUE(std::equal(read->begin(), read->end(), std::begin(expected), std::end(expected)));
    EXPECT_EQ(Read(8, 9)->size(), 1u);
    EXPECT_TRUE(Read(9, 9)->empty());
}

TEST_F(Ledger, SaysNothingOfWhatIsNotWrittenDown)
{
    Write(7, 70);
    Write(9, 90);
    EXPECT_FALSE(Read(7, 10)) << "one in the middle";
    EXPECT_FALSE(Read(6, 8)) << "the first";
    EXPECT_FALSE(Read(7, 9)) << "the last";
    EXPECT_FALSE(m_reader.Between({7, 1}, {8, 1008})) << "after another state of the same number";
    EXPECT_FALSE(m_reader.Between({8, 1}, {8, 2})) << "another state of the same number";
    EXPECT_FALSE(Read(8, 7)) << "the numbers have begun anew";
    Write(10, 100, false);
    EXPECT_FALSE(Read(10, 11)) << "given up";
    m_writer.Announce({11, 1011}, {mervane::TableId::Journal, {kChangeDeleted, 1}});
    EXPECT_FALSE(Read(11, 12)) << "its writer has ended before it said that it was made";
}

TEST_F(Ledger, KeepsTheLatest)
{
    for (uint32_t before = 0; before < 3000; ++before)
        Write(before, before);
    ASSERT_TRUE(Read(2000, 3000));
    EXPECT_EQ(Read(2000, 3000)->size(), 1000u);
    EXPECT_FALSE(Read(1000, 3000));
    EXPECT_FALSE(Read(1900, 1950)) << "overwritten";
    m_writer.Announce({UINT32_MAX, 3}, {mervane::TableId::Journal, {kChangeDeleted, 5}});
    m_writer.Close({UINT32_MAX, 3}, mervane::LogState{0, 4});
    EXPECT_EQ(m_reader.Between({UINT32_MAX, 3}, {0, 4})->size(), 1u);
}

// Each commit must follow the one before it, and the last one lead to what is there.
TEST_F(Ledger, SaysNothingWhereALinkIsOfAnEarlierTime)
{
    for (const uint32_t stale : {7u, 8u, 9u}) {
        for (uint32_t before = 7; before < 10; ++before)
            Write(before, before);
        ASSERT_TRUE(Read(7, 10));
        WriteStale(stale);
        EXPECT_FALSE(Read(7, 10)) << stale;
    }
    for (uint32_t before = 7; before < 10; ++before)
        Write(before, before);
    EXPECT_FALSE(m_reader.Between({7, 1007}, {10, 1}));
}

} // namespace
