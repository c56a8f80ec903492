// Reading and writing records.
#include "mervane/ce_dbase.h"

#include <gtest/gtest.h>

#include "records.h"
#include "support/slot_of.h"
#include "support/test_store.h"

namespace {

class Records : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(m_journal.Open(nullptr), 1); }

    TestStore m_store;
    DbJournal m_journal;
};

Sent FullEntry()
{
    Sent sent;
    sent.Number(kKind, 3)
        .Time(kDate, 0x01D9'0000'1234'5678)
        .Time(kEndTime, 0xFFFF'FFFF'FFFF'FFFF)
        .Time(kDuration, 600'000'000)
        .Number(kPriority, 2)
        .Number(kSensitivity, -1)
        .Text(kType, L"Phone call")
        .Text(kBody, L"first\r\nsecond")
        .Text(kSubject, L"Sm\u00f8rrebr\u00f8d \U0001F600")
        .Ids(kCategories, {4, 2})
        .Ids(kContacts, {7});
    return sent;
}

const std::vector<CEPROPID> kAll{kDate,     kSubject,     kBody,    kCategories, kType,    kKind,
                                 kPriority, kSensitivity, kEndTime, kDuration,   kContacts};

TEST(CeDBase, OperationsAreInTheirOrder)
{
    const size_t slots[] = {SlotOf(&CeDBase::Close),           SlotOf(&CeDBase::SetSort),
                            SlotOf(&CeDBase::GetSort),         SlotOf(&CeDBase::SeekRecord),
                            SlotOf(&CeDBase::SeekFirstRecord), SlotOf(&CeDBase::SeekNextRecord),
                            SlotOf(&CeDBase::DeleteRecord),    SlotOf(&CeDBase::RecordCount),
                            SlotOf(&CeDBase::ReadRecord),      SlotOf(&CeDBase::WriteRecord)};
    for (size_t i = 0; i < sizeof slots / sizeof slots[0]; ++i)
        EXPECT_EQ(slots[i], i);
}

TEST_F(Records, ComeBackWithAllPropertiesInAscendingNumber)
{
    const Sent sent = FullEntry();
    const CEOID id = sent.Write(m_journal);
    ASSERT_NE(id, 0u);
    const Received read(m_journal, id);
    EXPECT_EQ(read.Id(), id);
    EXPECT_EQ(read.Ids(), kAll);
    for (size_t i = 0; i < read.Count(); ++i) {
        EXPECT_EQ(read.At(i).wFlags, 0);
        EXPECT_EQ(read.At(i).wLenData, 0);
    }
    EXPECT_EQ(read.Time(kDate), 0x01D9'0000'1234'5678u);
    EXPECT_EQ(read.Time(kEndTime), 0xFFFF'FFFF'FFFF'FFFFu);
    EXPECT_EQ(read.Time(kDuration), 600'000'000u);
    EXPECT_EQ(read.Number(kKind), 3);
    EXPECT_EQ(read.Number(kPriority), 2);
    EXPECT_EQ(read.Number(kSensitivity), -1);
    EXPECT_EQ(read.Text(kType), L"Phone call");
    EXPECT_EQ(read.Text(kBody), L"first\r\nsecond");
    EXPECT_EQ(read.Text(kSubject), L"Sm\u00f8rrebr\u00f8d \U0001F600");
    EXPECT_EQ(read.Blob(kCategories), IdBytes({2, 4, 2}));
    EXPECT_EQ(read.Blob(kContacts), IdBytes({1, 7}));
}

TEST_F(Records, LeaveOutWhatTheyLack)
{
    const CEOID id = Sent().Text(kSubject, L"only this").Write(m_journal);
    const Received read(m_journal, id);
    EXPECT_EQ(read.Ids(), std::vector<CEPROPID>{kSubject});
}

TEST_F(Records, WithoutPropertiesAreRecordsToo)
{
    const CEOID id = m_journal.WriteRecord(0, 0, nullptr);
    ASSERT_NE(id, 0u);
    const Received read(m_journal, id);
    EXPECT_EQ(read.Id(), id);
    EXPECT_EQ(read.Count(), 0);
    EXPECT_TRUE(read.HasBlock());
}

TEST_F(Records, AnswerWhatWasAskedForInThatOrder)
{
    const CEOID id = Sent().Text(kSubject, L"s").Number(kPriority, 1).Write(m_journal);
    const CEPROPID unknown = 0x00990002, otherType = MakePropertyId(102, CEVT_I2);
    const std::vector<CEPROPID> wanted{kPriority, kBody, unknown, kSubject, otherType, kPriority};
    const Received read(m_journal, id, wanted);
    EXPECT_EQ(read.Id(), id);
    EXPECT_EQ(read.Ids(), wanted);
    for (const size_t missing : {1u, 2u, 4u})
        EXPECT_EQ(read.At(missing).wFlags, CEDB_PROPNOTFOUND);
    for (const size_t present : {0u, 3u, 5u})
        EXPECT_EQ(read.At(present).wFlags, 0);
    EXPECT_EQ(read.At(0).val.iVal, 1);
    EXPECT_STREQ(read.At(3).val.lpwstr, L"s");
    EXPECT_EQ(read.At(5).val.iVal, 1);
}

TEST_F(Records, AreOneBlockThatOneCallFrees)
{
    const CEOID id = FullEntry().Write(m_journal);
    ASSERT_EQ(m_journal.SeekRecord(id), id);
    WORD count = 0;
    CEPROPVAL* block = nullptr;
    ASSERT_EQ(m_journal.ReadRecord(&count, nullptr, &block), id);
    const auto* start = reinterpret_cast<const BYTE*>(block);
    const SIZE_T size = LocalSize(block);
    for (WORD i = 0; i < count; ++i) {
        const BYTE* address = nullptr;
        if (PropertyType(block[i].propid) == CEVT_LPWSTR)
            address = reinterpret_cast<const BYTE*>(block[i].val.lpwstr);
        else if (PropertyType(block[i].propid) == CEVT_BLOB)
            address = block[i].val.blob.lpb;
        else
            continue;
        EXPECT_GE(address, start);
        EXPECT_LT(address, start + size);
    }
    EXPECT_EQ(LocalFree(block), nullptr);
}

TEST_F(Records, AreNotReadWithoutACurrentOne)
{
    FullEntry().Write(m_journal);
    WORD count = 3;
    auto* block = reinterpret_cast<CEPROPVAL*>(1);
    EXPECT_EQ(m_journal.ReadRecord(&count, kAll.data(), &block), 0u);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(block, nullptr);
}

TEST_F(Records, AreNotReadAfterAFailedSeek)
{
    const CEOID id = FullEntry().Write(m_journal);
    EXPECT_EQ(m_journal.SeekRecord(id), id);
    EXPECT_EQ(m_journal.SeekRecord(id + 1), 0u);
    EXPECT_EQ(Received(m_journal).Id(), 0u);
    EXPECT_EQ(m_journal.SeekRecord(0), 0u);
}

TEST_F(Records, ReadNothingWithoutTheList)
{
    const CEOID id = FullEntry().Write(m_journal);
    ASSERT_EQ(m_journal.SeekRecord(id), id);
    WORD count = 2;
    CEPROPVAL* block = nullptr;
    EXPECT_EQ(m_journal.ReadRecord(&count, nullptr, &block), 0u);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(m_journal.ReadRecord(nullptr, nullptr, &block), 0u);
    EXPECT_EQ(m_journal.ReadRecord(&count, nullptr, nullptr), 0u);
}

TEST_F(Records, ChangeOnlyInThePropertiesSent)
{
    const CEOID id = FullEntry().Write(m_journal);
    EXPECT_EQ(Sent().Text(kSubject, L"new").Delete(kBody).Number(kPriority, 0).Write(m_journal, id), id);
    const Received read(m_journal, id);
    EXPECT_EQ(read.Count(), 10);
    EXPECT_EQ(read.Text(kSubject), L"new");
    EXPECT_EQ(read.Find(kBody), nullptr);
    EXPECT_EQ(read.Number(kPriority), 0);
    EXPECT_EQ(read.Text(kType), L"Phone call");
    EXPECT_EQ(read.Time(kDate), 0x01D9'0000'1234'5678u);
}

TEST_F(Records, AreNotHarmedByDeletingWhatTheyLack)
{
    const CEOID id = Sent().Text(kSubject, L"s").Write(m_journal);
    EXPECT_EQ(Sent().Delete(kCategories).Delete(kContacts).Write(m_journal, id), id);
    EXPECT_EQ(Received(m_journal, id).Ids(), std::vector<CEPROPID>{kSubject});
}

TEST_F(Records, AreCreatedWithoutWhatIsSentForDeletion)
{
    const CEOID id = Sent().Text(kSubject, L"s").Delete(kBody).Write(m_journal);
    EXPECT_EQ(Received(m_journal, id).Ids(), std::vector<CEPROPID>{kSubject});
}

TEST_F(Records, AreWrittenAsTheyWereRead)
{
    const CEOID id = FullEntry().Write(m_journal);
    ASSERT_EQ(m_journal.SeekRecord(id), id);
    WORD count = 0;
    CEPROPVAL* block = nullptr;
    ASSERT_EQ(m_journal.ReadRecord(&count, nullptr, &block), id);
    const CEOID copy = m_journal.WriteRecord(0, count, block);
    LocalFree(block);
    ASSERT_NE(copy, 0u);
    EXPECT_NE(copy, id);
    const Received first(m_journal, id), second(m_journal, copy);
    ASSERT_EQ(first.Ids(), second.Ids());
    for (const CEPROPID text : {kSubject, kBody, kType})
        EXPECT_EQ(first.Text(text), second.Text(text));
    for (const CEPROPID time : {kDate, kEndTime, kDuration})
        EXPECT_EQ(first.Time(time), second.Time(time));
    for (const CEPROPID number : {kKind, kPriority, kSensitivity})
        EXPECT_EQ(first.Number(number), second.Number(number));
    for (const CEPROPID blob : {kCategories, kContacts})
        EXPECT_EQ(first.Blob(blob), second.Blob(blob));
}

TEST_F(Records, PassOverWhatWasNotFound)
{
    const CEOID id = Sent().Text(kSubject, L"s").Text(kBody, L"b").Write(m_journal);
    Sent sent;
    sent.Text(kBody, L"x").Text(kSubject, L"t");
    sent.values[0].wFlags = CEDB_PROPNOTFOUND;
    EXPECT_EQ(sent.Write(m_journal, id), id);
    const Received read(m_journal, id);
    EXPECT_EQ(read.Text(kBody), L"b");
    EXPECT_EQ(read.Text(kSubject), L"t");
}

TEST_F(Records, TakeTheLastOfAPropertySentTwice)
{
    const CEOID id = Sent().Text(kSubject, L"one").Text(kSubject, L"two").Write(m_journal);
    EXPECT_EQ(Received(m_journal, id).Text(kSubject), L"two");
}

// A write that cannot be, on a record that must then be as it was.
class RefusedWrite : public Records, public testing::WithParamInterface<int> {
  protected:
    static Sent Bad(int which)
    {
        Sent sent;
        sent.Text(kSubject, L"changed");
        switch (which) {
        case 0: sent.Number(0x00990002, 1); break;                        // unknown number
        case 1: sent.Text(MakePropertyId(107, CEVT_LPWSTR), L"1"); break; // another type than the property's
        case 2: sent.Delete(0x00990002); break;
        case 3: sent.values.push_back({kBody, 0, 0, {}}); break; // a text without an address
        case 4:
            sent.Blob(kCategories, {});
            sent.values.back().val.blob = {4, nullptr};
            break;
        case 5: sent.Text(kCategoriesKey, L"another database's"); break;
        default: break;
        }
        return sent;
    }
};

TEST_P(RefusedWrite, LeavesEverythingAsItWas)
{
    const CEOID id = Sent().Text(kSubject, L"before").Text(kBody, L"body").Write(m_journal);
    EXPECT_EQ(Bad(GetParam()).Write(m_journal, id), 0u);
    EXPECT_EQ(Bad(GetParam()).Write(m_journal), 0u);
    const Received read(m_journal, id);
    EXPECT_EQ(read.Text(kSubject), L"before");
    EXPECT_EQ(read.Text(kBody), L"body");
    EXPECT_EQ(m_journal.RecordCount(), 1u);
}

TEST_F(Records, AreNotWrittenWithoutTheArray)
{
    const CEOID id = AddEntry(m_journal, L"before");
    EXPECT_EQ(m_journal.WriteRecord(id, 2, nullptr), 0u);
    EXPECT_EQ(m_journal.WriteRecord(0, 2, nullptr), 0u);
    EXPECT_EQ(m_journal.RecordCount(), 1u);
}

INSTANTIATE_TEST_SUITE_P(All, RefusedWrite, testing::Range(0, 6));

TEST_F(Records, AreNeverCreatedUnderAGivenIdentifier)
{
    EXPECT_EQ(Sent().Text(kSubject, L"s").Write(m_journal, 5), 0u);
    EXPECT_EQ(m_journal.WriteRecord(5, 0, nullptr), 0u);
    EXPECT_EQ(m_journal.RecordCount(), 0u);
    const CEOID id = AddEntry(m_journal, L"gone");
    EXPECT_EQ(m_journal.DeleteRecord(id), 1);
    EXPECT_EQ(Sent().Text(kSubject, L"s").Write(m_journal, id), 0u);
    EXPECT_EQ(m_journal.RecordCount(), 0u);
}

TEST_F(Records, AreDeletedOnce)
{
    const CEOID id = AddEntry(m_journal, L"s");
    EXPECT_EQ(m_journal.DeleteRecord(id), 1);
    EXPECT_EQ(m_journal.DeleteRecord(id), 0);
    EXPECT_EQ(m_journal.DeleteRecord(0), 0);
    EXPECT_EQ(m_journal.SeekRecord(id), 0u);
}

TEST_F(Records, NeverGetAnIdentifierAgain)
{
    AddEntry(m_journal, L"one");
    const CEOID last = AddEntry(m_journal, L"two");
    EXPECT_EQ(m_journal.DeleteRecord(last), 1);
    EXPECT_GT(AddEntry(m_journal, L"three"), last);
    m_journal.Close();
    ASSERT_EQ(m_journal.Open(nullptr), 1);
    for (const CEOID id : Walk(m_journal))
        EXPECT_EQ(m_journal.DeleteRecord(id), 1);
    EXPECT_GT(AddEntry(m_journal, L"four"), last + 1);
}

TEST_F(Records, RefuseIdentifiersOfMoreThan32Bits)
{
    {
        RawStore raw(m_store.Path());
        ASSERT_TRUE(raw.Run("INSERT INTO journal(oid, subject) VALUES(4294967294, 'near the end')"));
    }
    EXPECT_EQ(AddEntry(m_journal, L"the last one"), 4294967295u);
    EXPECT_EQ(AddEntry(m_journal, L"one too many"), 0u);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::NoIdentifier);
    EXPECT_EQ(m_journal.RecordCount(), 2u);
    CeDBase::BulkScope bulk(m_journal);
    EXPECT_EQ(AddEntry(m_journal, L"one too many"), 0u);
    EXPECT_EQ(m_journal.RecordCount(), 2u);
    EXPECT_EQ(bulk.Commit(), 0) << "all or nothing";
    EXPECT_EQ(bulk.Trouble(), StoreTrouble::NoIdentifier);
    EXPECT_EQ(RawStore(m_store.Path()).Integer("SELECT count(*) FROM journal"), 2);
}

// SQLite itself has no identifier left, by its own count or by the last row, and says that it is full.
TEST_F(Records, SayThatNoIdentifierIsLeft)
{
    RawStore raw(m_store.Path());
    for (const char* last : {"INSERT INTO journal(oid, subject) VALUES(9223372036854775807, 'the end')",
                             "UPDATE sqlite_sequence SET seq = 1 WHERE name = 'journal'",
                             "DELETE FROM journal WHERE oid > 1; "
                             "UPDATE sqlite_sequence SET seq = 9223372036854775807 WHERE name = 'journal'"}) {
        ASSERT_TRUE(raw.Run(last));
        EXPECT_EQ(AddEntry(m_journal, L"one too many"), 0u) << last;
        EXPECT_EQ(m_journal.Trouble(), StoreTrouble::NoIdentifier) << last;
        EXPECT_EQ(ReasonText(m_journal.Trouble()), L"the journal's file has no number left for another "
                                                   L"record; export the entries and begin a new file");
        CeDBase::BulkScope bulk(m_journal);
        EXPECT_EQ(AddEntry(m_journal, L"one too many"), 0u) << last;
        EXPECT_EQ(bulk.Commit(), 0) << last;
        EXPECT_EQ(bulk.Trouble(), StoreTrouble::NoIdentifier) << last;
    }
    EXPECT_EQ(raw.Integer("SELECT count(*) FROM journal"), 0);
    ASSERT_TRUE(raw.Run("UPDATE sqlite_sequence SET seq = 5 WHERE name = 'journal'"));
    EXPECT_EQ(AddEntry(m_journal, L"now"), 6u);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::None);
}

TEST_F(Records, IgnoreRowsWhoseIdentifierNoCallCouldName)
{
    const CEOID id = AddEntry(m_journal, L"mine");
    ASSERT_TRUE(RawStore(m_store.Path())
                    .Run("INSERT INTO journal(oid, subject) VALUES(0, 'z'), (-3, 'n'), (4294967296, 'h'), "
                         "(9223372036854775807, 'm')"));
    EXPECT_EQ(m_journal.RecordCount(), 1u);
    EXPECT_EQ(Walk(m_journal), std::vector<CEOID>{id});
}

TEST_F(Records, ReadOddCellsAsAbsent)
{
    const CEOID id = AddEntry(m_journal, L"s", 5);
    RawStore raw(m_store.Path());
    ASSERT_TRUE(raw.Run(
        "UPDATE journal SET date = 'yesterday', subject = x'4142', body = x'00', categories = 'text', "
        "type = NULL, kind = 65536, priority = 32768, sensitivity = 1.5, end_time = 2.5, "
        "duration = x'01', contacts = 7"));
    // A number in a text column is a text to SQLite.
    EXPECT_EQ(Received(m_journal, id).Ids(), std::vector<CEPROPID>{});
    ASSERT_TRUE(raw.Run("UPDATE journal SET kind = -1, priority = -32769, subject = 42"));
    EXPECT_EQ(Received(m_journal, id).Ids(), std::vector<CEPROPID>{kSubject});
    EXPECT_EQ(Received(m_journal, id).Text(kSubject), L"42");
    ASSERT_TRUE(raw.Run("UPDATE journal SET kind = 65535, priority = -32768, sensitivity = 32767"));
    const Received read(m_journal, id);
    EXPECT_EQ(read.Number(kKind), 65535);
    EXPECT_EQ(read.Number(kPriority), -32768);
    EXPECT_EQ(read.Number(kSensitivity), 32767);
}

TEST_F(Records, KeepTextsOfAllKinds)
{
    const std::wstring unpaired{L'a', wchar_t{0xD800}, L'b', wchar_t{0xDC00}};
    for (const std::wstring& text :
         {std::wstring(), unpaired, std::wstring(200'000, L'\u20ac'), std::wstring(L"<Entry Body>")}) {
        const CEOID id = Sent().Text(kBody, text).Write(m_journal);
        EXPECT_EQ(Received(m_journal, id).Text(kBody), text);
    }
}

TEST_F(Records, EndATextAtANulInside)
{
    const CEOID id = AddEntry(m_journal, L"s");
    ASSERT_TRUE(RawStore(m_store.Path()).Run("UPDATE journal SET subject = 'ab' || char(0) || 'cd'"));
    EXPECT_EQ(Received(m_journal, id).Text(kSubject), L"ab");
}

TEST_F(Records, KeepEmptyAndOddBlobs)
{
    const CEOID id = Sent().Blob(kCategories, {}).Blob(kContacts, {1, 2, 3}).Write(m_journal);
    const Received read(m_journal, id);
    EXPECT_EQ(read.Blob(kCategories), std::vector<BYTE>{});
    EXPECT_EQ(read.Blob(kContacts), (std::vector<BYTE>{1, 2, 3}));
}

TEST_F(Records, AreUtf8AndNumbersToOtherTools)
{
    FullEntry().Write(m_journal);
    RawStore raw(m_store.Path());
    EXPECT_EQ(raw.Text("SELECT subject FROM journal"), "Sm\xC3\xB8rrebr\xC3\xB8"
                                                       "d \xF0\x9F\x98\x80");
    EXPECT_EQ(raw.Integer("SELECT date FROM journal"), 0x01D9'0000'1234'5678);
    EXPECT_EQ(raw.Integer("SELECT end_time FROM journal"), -1);
    EXPECT_EQ(raw.Text("SELECT hex(categories) FROM journal"), "020000000400000002000000");
    EXPECT_EQ(raw.Text("SELECT typeof(body) || typeof(priority) FROM journal"), "textinteger");
}

TEST_F(Records, GiveOneTextCutToTheBuffer)
{
    const CEOID id = Sent().Text(kSubject, L"abcdef").Number(kPriority, 1).Write(m_journal);
    wchar_t text[8];
    EXPECT_EQ(m_journal.GetStr(id, text, 8, kSubject), 6);
    EXPECT_STREQ(text, L"abcdef");
    EXPECT_EQ(m_journal.GetStr(id, text, 4, kSubject), 3);
    EXPECT_STREQ(text, L"abc");
    EXPECT_EQ(m_journal.GetStr(id, text, 1, kSubject), 0);
    EXPECT_STREQ(text, L"");
    for (const auto& [record, property] : {std::pair(id, kBody),
                                           {id, kPriority},
                                           {id + 1, kSubject},
                                           {0u, kSubject},
                                           {id, CEPROPID{0x0099001F}}}) {
        wcscpy(text, L"old");
        EXPECT_EQ(m_journal.GetStr(record, text, 8, property), 0);
        EXPECT_STREQ(text, L"");
    }
    wcscpy(text, L"old");
    EXPECT_EQ(m_journal.GetStr(id, text, 0, kSubject), 0);
    EXPECT_STREQ(text, L"old");
    EXPECT_EQ(m_journal.GetStr(id, nullptr, 8, kSubject), 0);
}

TEST_F(Records, AreCountedUpTo65535)
{
    ASSERT_TRUE(RawStore(m_store.Path())
                    .Run("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 65534) "
                         "INSERT INTO journal(date) SELECT i FROM n"));
    EXPECT_EQ(m_journal.RecordCount(), 65534u);
    ASSERT_NE(AddEntry(m_journal, L"a"), 0u);
    EXPECT_EQ(m_journal.RecordCount(), 65535u);
    ASSERT_NE(AddEntry(m_journal, L"b"), 0u);
    EXPECT_EQ(m_journal.RecordCount(), 65535u);
    EXPECT_EQ(m_journal.SeekRow(65535), 65534u) << "the last row is reached all the same";
    EXPECT_EQ(m_journal.SeekRow(65536), 0u);
}

TEST_F(Records, AreUnreachableOnceClosed)
{
    const CEOID id = AddEntry(m_journal, L"s");
    EXPECT_EQ(m_journal.Close(), 1);
    EXPECT_EQ(m_journal.Close(), 0);
    EXPECT_FALSE(m_journal.IsOpen());
    EXPECT_EQ(m_journal.SeekRecord(id), 0u);
    EXPECT_EQ(m_journal.SeekFirstRecord(), 0);
    EXPECT_EQ(m_journal.SeekNextRecord(), 0);
    EXPECT_EQ(m_journal.RecordCount(), 0u);
    EXPECT_EQ(Received(m_journal).Id(), 0u);
    EXPECT_EQ(AddEntry(m_journal, L"t"), 0u);
    EXPECT_EQ(m_journal.DeleteRecord(id), 0);
    EXPECT_EQ(m_journal.SeekRow(0), 0u);
    EXPECT_EQ(m_journal.IdOfRow(0), 0u);
    EXPECT_EQ(m_journal.RowOf(id), -1);
    wchar_t text[4] = L"old";
    EXPECT_EQ(m_journal.GetStr(id, text, 4, kSubject), 0);
    EXPECT_STREQ(m_journal.GetSubject(id), L"");
    SORTORDERSPEC sort{1, 1};
    m_journal.GetSort(&sort);
    EXPECT_EQ(sort.propid, 0u);
    const CeDBase::ReadScope scope(m_journal);
    CeDBase::BulkScope bulk(m_journal);
    EXPECT_EQ(bulk.Commit(), 0);
}

TEST_F(Records, AreSharedByAllObjectsOfTheProcess)
{
    DbJournal other;
    ASSERT_EQ(other.Open(nullptr), 1);
    const CEOID id = AddEntry(m_journal, L"s");
    EXPECT_EQ(other.RecordCount(), 1u);
    EXPECT_EQ(Received(other, id).Text(kSubject), L"s");
    m_journal.Close();
    EXPECT_EQ(other.SeekRecord(id), id);
    EXPECT_EQ(other.DeleteRecord(id), 1);
}

TEST_F(Records, SurviveReopening)
{
    const CEOID id = FullEntry().Write(m_journal);
    m_journal.Close();
    EXPECT_EQ(GetFileAttributesW((m_store.Path() + L"-wal").c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetFileAttributesW((m_store.Path() + L"-shm").c_str()), INVALID_FILE_ATTRIBUTES);
    ASSERT_EQ(m_journal.Open(nullptr), 1);
    EXPECT_EQ(Received(m_journal, id).Ids(), kAll);
}

} // namespace
