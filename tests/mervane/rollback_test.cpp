// Work that is to be taken back, and cannot be.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstring>

#include "records.h"
#include "support/test_store.h"

namespace {

sqlite3* g_handle;

int NoteHandle(sqlite3* handle, const char**, const sqlite3_api_routines*)
{
    g_handle = handle;
    return SQLITE_OK;
}

int AllowNoRollback(void*, int action, const char* what, const char*, const char*, const char*)
{
    return action == SQLITE_TRANSACTION && strcmp(what, "ROLLBACK") == 0 ? SQLITE_DENY : SQLITE_OK;
}

// SQLite compiles statements anew once what they may do has changed: so a rollback fails, the prepared one
// and the next.
class FailedRollback : public testing::Test {
  protected:
    using Hook = void (*)();

    FailedRollback()
    {
        sqlite3_auto_extension(reinterpret_cast<Hook>(NoteHandle));
        EXPECT_EQ(m_journal.Open(nullptr), 1);
        sqlite3_cancel_auto_extension(reinterpret_cast<Hook>(NoteHandle));
        m_handle = g_handle;
        m_id = AddEntry(m_journal, L"stored");
        EXPECT_EQ(m_journal.RecordCount(), 1u);
    }
    ~FailedRollback() override
    {
        if (m_journal.IsOpen())
            Allow(true);
    }

    void Allow(bool rollback)
    {
        sqlite3_set_authorizer(m_handle, rollback ? nullptr : AllowNoRollback, nullptr);
    }
    // An entry in a transaction that cannot be taken back.
    void GiveUpWork()
    {
        CeDBase::BulkScope bulk(m_journal);
        ASSERT_NE(AddEntry(m_journal, L"given up"), 0u);
        Allow(false);
    }
    int64_t Stored() { return RawStore(m_store.Path()).Integer("SELECT count(*) FROM journal"); }

    TestStore m_store;
    DbJournal m_journal;
    sqlite3* m_handle = nullptr;
    CEOID m_id = 0;
};

TEST_F(FailedRollback, LeavesWorkOpenThatIsNeverCommitted)
{
    GiveUpWork();
    EXPECT_FALSE(sqlite3_get_autocommit(m_handle)) << "or nothing is tried here";
    EXPECT_EQ(AddEntry(m_journal, L"refused"), 0u);
    EXPECT_NE(m_journal.Trouble(), StoreTrouble::None);
    EXPECT_EQ(m_journal.DeleteRecord(m_id), 0);
    EXPECT_NE(m_journal.Trouble(), StoreTrouble::None);
    {
        CeDBase::BulkScope bulk(m_journal);
        EXPECT_EQ(AddEntry(m_journal, L"refused"), 0u);
        EXPECT_EQ(bulk.Commit(), 0);
    }
    EXPECT_EQ(Stored(), 1);
    m_journal.Close();
    EXPECT_EQ(Stored(), 1);
    DbJournal again;
    ASSERT_EQ(again.Open(nullptr), 1);
    EXPECT_EQ(again.RecordCount(), 1u);
    EXPECT_STREQ(again.GetSubject(m_id), L"stored");
}

TEST_F(FailedRollback, IsMadeUpForByTheNextWrite)
{
    GiveUpWork();
    Allow(true);
    EXPECT_NE(AddEntry(m_journal, L"second"), 0u);
    EXPECT_EQ(Stored(), 2);
    EXPECT_EQ(m_journal.RecordCount(), 2u);
}

TEST_F(FailedRollback, IsMadeUpForByTheNextRead)
{
    GiveUpWork();
    Allow(true);
    EXPECT_EQ(m_journal.RecordCount(), 1u) << "what was given up is not shown";
    EXPECT_TRUE(sqlite3_get_autocommit(m_handle));
    EXPECT_EQ(Rows(m_journal), std::vector<CEOID>{m_id});
}

TEST_F(FailedRollback, IsATroubleOfReadsAndLeavesNothingInMemory)
{
    GiveUpWork();
    (void)m_journal.RecordCount();
    EXPECT_NE(m_journal.Trouble(), StoreTrouble::None) << "what was given up may be among it";
    Allow(true);
    EXPECT_EQ(m_journal.RecordCount(), 1u);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::None);
    EXPECT_EQ(Rows(m_journal), std::vector<CEOID>{m_id});
}

// The statement is compiled anew for another reason, which the second try does not meet.
TEST_F(FailedRollback, IsTriedAgainAtOnce)
{
    static int s_denials;
    s_denials = 1;
    {
        CeDBase::BulkScope bulk(m_journal);
        ASSERT_NE(AddEntry(m_journal, L"given up"), 0u);
        sqlite3_set_authorizer(
            m_handle,
            [](void*, int action, const char* what, const char*, const char*, const char*) {
                const bool isRollback = action == SQLITE_TRANSACTION && strcmp(what, "ROLLBACK") == 0;
                return isRollback && s_denials-- > 0 ? SQLITE_DENY : SQLITE_OK;
            },
            nullptr);
    }
    EXPECT_TRUE(sqlite3_get_autocommit(m_handle));
    EXPECT_EQ(m_journal.RecordCount(), 1u);
}

} // namespace
