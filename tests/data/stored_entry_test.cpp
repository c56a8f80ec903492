// Entries on their whole way: brought to a property array, written to a store, and read back from it.
#include "data/journal_entry.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "mervane/db_journal.h"
#include "support/test_store.h"
#include "util/owners.h"

namespace {

class StoredEntry : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(m_journal.Open(nullptr), 1); }

    CEOID Write(EntryToWrite entry, CEOID id = 0)
    {
        const std::vector<CEPROPVAL> properties = PropertiesToWrite(entry);
        return m_journal.WriteRecord(id, static_cast<WORD>(properties.size()), properties.data());
    }
    JournalEntry Read(CEOID id)
    {
        JournalEntry entry;
        WORD count = 0;
        CEPROPVAL* properties = nullptr;
        EXPECT_EQ(m_journal.SeekRecord(id), id);
        EXPECT_EQ(m_journal.ReadRecord(&count, nullptr, &properties), id);
        const LocalBlock<CEPROPVAL> block(properties);
        ReadEntry(properties, count, &entry);
        return entry;
    }
    // Creates the record anew from what a read answers.
    CEOID Copy(CEOID id)
    {
        WORD count = 0;
        CEPROPVAL* properties = nullptr;
        EXPECT_EQ(m_journal.SeekRecord(id), id);
        EXPECT_EQ(m_journal.ReadRecord(&count, nullptr, &properties), id);
        const LocalBlock<CEPROPVAL> block(properties);
        return m_journal.WriteRecord(0, count, properties);
    }
    void Execute(const char* sql)
    {
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open16(m_store.Path().c_str(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(database);
        sqlite3_close(database);
    }

    TestStore m_store;
    DbJournal m_journal;
};

TEST_F(StoredEntry, LacksTheTextsThatWereNeverTyped)
{
    EntryToWrite entry;
    entry.type = L"Note";
    entry.body = L"<Entry Body>";
    entry.subject = L"<Entry Subject>";
    const JournalEntry read = Read(Write(entry));
    EXPECT_EQ(read.subject, std::nullopt);
    EXPECT_EQ(read.body, std::nullopt);
    EXPECT_EQ(read.type, L"Note");
}

TEST_F(StoredEntry, LosesTheTextsThatAreTakenBack)
{
    EntryToWrite entry;
    entry.body = L"Body";
    entry.subject = L"Subject";
    const CEOID id = Write(entry);
    entry.body = L"<Entry Body>";
    EXPECT_EQ(Write(entry, id), id);
    EXPECT_EQ(Read(id).body, std::nullopt);
    EXPECT_EQ(Read(id).subject, L"Subject");
}

TEST_F(StoredEntry, KeepsTextsThatOnlyResembleAPlaceholder)
{
    EntryToWrite entry;
    entry.body = L"<entry body>";
    entry.subject = L"<Entry Subject> and more";
    const JournalEntry read = Read(Write(entry));
    EXPECT_EQ(read.body, L"<entry body>");
    EXPECT_EQ(read.subject, L"<Entry Subject> and more");
}

TEST_F(StoredEntry, KeepsTimesAndDurationsOf64Bits)
{
    const uint64_t counts[] = {0,
                               1,
                               0x7FFF'FFFF'FFFF'FFFF, // the last that a FILETIME may hold
                               0x8000'0000'0000'0000,
                               0xFFFF'FFFF'FFFF'FFFF,
                               0x0000'0001'0000'0000,
                               0x0000'0000'FFFF'FFFF};
    for (const uint64_t count : counts) {
        EntryToWrite entry;
        entry.date = TimeCount(count);
        entry.endTime = TimeCount(~count);
        entry.duration = TimeCount(count ^ 1);
        const CEOID id = Write(entry);
        for (const CEOID each : {id, Copy(id)}) {
            const JournalEntry read = Read(each);
            EXPECT_EQ(read.date, TimeCount(count));
            EXPECT_EQ(read.endTime, TimeCount(~count));
            EXPECT_EQ(read.duration, TimeCount(count ^ 1));
        }
    }
}

TEST_F(StoredEntry, KeepsUnpairedSurrogates)
{
    EntryToWrite entry;
    entry.subject = std::wstring{wchar_t{0xDC00}, L'a', wchar_t{0xD800}};
    entry.body = std::wstring{wchar_t{0xD83D}};
    entry.type = std::wstring{wchar_t{0xDFFF}, wchar_t{0xDBFF}, L'\r', L'\n'};
    const CEOID id = Write(entry);
    for (const CEOID each : {id, Copy(id)}) {
        const JournalEntry read = Read(each);
        EXPECT_EQ(read.subject, entry.subject);
        EXPECT_EQ(read.body, entry.body);
        EXPECT_EQ(read.type, entry.type);
    }
    EXPECT_EQ(m_journal.GetSubject(id), entry.subject);
}

TEST_F(StoredEntry, KeepsABodyOfAMillionCharacters)
{
    EntryToWrite entry;
    entry.body.resize(1'000'000);
    for (size_t i = 0; i < entry.body.size(); ++i)
        entry.body[i] = static_cast<wchar_t>(1 + i % 0xD7FF);
    const CEOID id = Write(entry);
    EXPECT_TRUE(Read(id).body == entry.body);
    EXPECT_TRUE(Read(Copy(id)).body == entry.body);
}

TEST_F(StoredEntry, CarriesOtherCodesAndKindsUnchanged)
{
    const CEOID id = Write({});
    EXPECT_EQ(Read(id).kind, 3);
    Execute("UPDATE journal SET kind = 65535, priority = 5, sensitivity = -1");
    for (const CEOID each : {id, Copy(id)}) {
        const JournalEntry read = Read(each);
        EXPECT_EQ(read.kind, 65535);
        EXPECT_EQ(read.priority, 5);
        EXPECT_EQ(read.sensitivity, -1);
    }
}

TEST_F(StoredEntry, OfUnexpectedTypesHasWhatCanBeRead)
{
    EntryToWrite entry;
    entry.subject = L"Subject";
    const CEOID id = Write(entry);
    Execute("UPDATE journal SET date = 'soon', end_time = x'01', duration = 1.5, priority = 'high', "
            "sensitivity = 65536, body = x'42', type = x'', categories = 'Work', contacts = 7, kind = -1");
    const JournalEntry read = Read(id);
    EXPECT_EQ(read.subject, L"Subject");
    EXPECT_TRUE(!read.date && !read.endTime && !read.duration && !read.priority && !read.sensitivity);
    EXPECT_TRUE(!read.body && !read.type && !read.categories && !read.contacts && !read.kind);
}

} // namespace
