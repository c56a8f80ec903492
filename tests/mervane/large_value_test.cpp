// Values that are larger than anything that is read or written, which another tool may have put into the
// file.
#include <gtest/gtest.h>

#include "records.h"
#include "support/test_store.h"

namespace {

constexpr int64_t kMost = 128 << 20; // bytes of a value, or of a whole record

class LargeValue : public testing::Test {
  protected:
    void SetUp() override
    {
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        for (const wchar_t* subject : {L"b", L"a", L"large", L"d", L"c"})
            ASSERT_NE(Sent().Time(kDate, 5).Text(kSubject, subject).Text(kBody, L"small").Write(journal), 0u);
    }
    void Enlarge(const std::string& column, int64_t bytes) const
    {
        ASSERT_TRUE(RawStore(m_store.Path())
                        .Run("PRAGMA journal_mode = DELETE; UPDATE journal SET " + column + " = zeroblob(" +
                             std::to_string(bytes) + ") WHERE oid = 3"));
    }

    TestStore m_store;
};

TEST_F(LargeValue, OfABodyLosesNoOtherEntry)
{
    Enlarge("body", kMost + 1);
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    EXPECT_EQ(journal.RecordCount(), 5u);
    journal.SetSort({kSubject, 0}, 1);
    EXPECT_EQ(Rows(journal), (std::vector<CEOID>{2, 1, 5, 4, 3}));
    ASSERT_EQ(journal.SeekRecord(3), 3u);
    WORD count = 0;
    CEPROPVAL* properties = nullptr;
    EXPECT_EQ(journal.ReadRecord(&count, nullptr, &properties), 0u);
    EXPECT_EQ(journal.Trouble(), StoreTrouble::TooLarge);
    EXPECT_STREQ(journal.GetSubject(3), L"large");
    EXPECT_EQ(Sent().Text(kSubject, L"x").Write(journal, 3), 0u);
    EXPECT_EQ(journal.Trouble(), StoreTrouble::TooLarge);
    EXPECT_STREQ(journal.GetSubject(3), L"large");
    EXPECT_EQ(Sent().Text(kSubject, L"x").Write(journal, 4), 4u);
    EXPECT_EQ(journal.DeleteRecord(3), 1) << "a way to be rid of it";
    EXPECT_EQ(journal.RecordCount(), 4u);
}

// The order of the others is right, whichever side of it they lie on.
TEST_F(LargeValue, OfASubjectLosesNoOtherEntry)
{
    Enlarge("subject", kMost + 1);
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    journal.SetSort({kSubject, 0}, 1);
    EXPECT_EQ(Rows(journal), (std::vector<CEOID>{2, 1, 5, 4, 3}));
    EXPECT_STREQ(journal.GetSubject(3), L"");
    EXPECT_EQ(journal.Trouble(), StoreTrouble::TooLarge);
    EXPECT_EQ(journal.FindText(kSubject, L"c", true), 5u);
}

TEST_F(LargeValue, IsNotWritten)
{
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    EXPECT_EQ(Sent().Text(kBody, std::wstring(static_cast<size_t>(kMost), L'x')).Write(journal, 1), 0u);
    EXPECT_EQ(journal.Trouble(), StoreTrouble::TooLarge);
    ASSERT_EQ(journal.SeekRecord(1), 1u);
    EXPECT_EQ(Received(journal).Text(kBody), L"small");
    EXPECT_NE(AddEntry(journal, L"new"), 0u);
}

} // namespace
