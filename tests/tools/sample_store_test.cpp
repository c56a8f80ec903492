#include "sample/sample_store.h"

#include <map>
#include <vector>

#include <gtest/gtest.h>

#include "data/journal_entry.h"
#include "mervane/db_categories.h"
#include "mervane/db_contacts.h"
#include "mervane/db_journal.h"
#include "sample/sample_entry.h"
#include "support/test_store.h"
#include "util/owners.h"

using namespace sample;

namespace {

std::string ValueBytes(const CEPROPVAL& value)
{
    switch (PropertyType(value.propid)) {
    case CEVT_LPWSTR:
        return {reinterpret_cast<const char*>(value.val.lpwstr), wcslen(value.val.lpwstr) * sizeof(wchar_t)};
    case CEVT_BLOB: return {reinterpret_cast<const char*>(value.val.blob.lpb), value.val.blob.dwCount};
    case CEVT_FILETIME: return {reinterpret_cast<const char*>(&value.val.filetime), sizeof(FILETIME)};
    default: return {reinterpret_cast<const char*>(&value.val.iVal), sizeof(short)};
    }
}

using Record = std::map<CEPROPID, std::string>;
using Records = std::map<CEOID, Record>;

Records ReadAll(CeDBase& database)
{
    Records records;
    CeDBase::ReadScope scope(database);
    for (int more = database.SeekFirstRecord(); more; more = database.SeekNextRecord()) {
        WORD count = 0;
        CEPROPVAL* properties = nullptr;
        const CEOID id = database.ReadRecord(&count, nullptr, &properties);
        const LocalBlock<CEPROPVAL> owner(properties);
        EXPECT_NE(id, 0u);
        for (WORD i = 0; i < count; ++i)
            records[id][properties[i].propid] = ValueBytes(properties[i]);
    }
    return records;
}

struct StoreContent {
    Records journal, categories, contacts;
    bool operator==(const StoreContent&) const = default;
};

StoreContent Fill(const SamplePlan& plan)
{
    TestStore store;
    EXPECT_TRUE(FillStore(plan));
    DbJournal journal;
    DbCategories categories;
    DbContacts contacts;
    EXPECT_TRUE(journal.Open(nullptr));
    EXPECT_TRUE(categories.Open());
    EXPECT_TRUE(contacts.Open());
    return {ReadAll(journal), ReadAll(categories), ReadAll(contacts)};
}

std::string TextBytes(const std::wstring& text)
{
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)};
}

// The identifiers of a blob: a count and as many 32-bit identifiers.
std::vector<uint32_t> Identifiers(const std::string& blob)
{
    std::vector<uint32_t> words(blob.size() / 4);
    memcpy(words.data(), blob.data(), words.size() * 4);
    EXPECT_EQ(blob.size() % 4, 0u);
    EXPECT_FALSE(words.empty());
    EXPECT_EQ(words.front(), words.size() - 1);
    words.erase(words.begin());
    return words;
}

// How many entries are in each category, by their blobs.
std::map<CEOID, int> CountUses(const Records& journal)
{
    std::map<CEOID, int> uses;
    for (const auto& [id, record] : journal) {
        if (const auto blob = record.find(kPropCategories); blob != record.end()) {
            for (uint32_t category : Identifiers(blob->second))
                ++uses[category];
        }
    }
    return uses;
}

void ExpectUses(const StoreContent& content)
{
    const auto uses = CountUses(content.journal);
    EXPECT_EQ(uses.size(), content.categories.size());
    for (const auto& [id, record] : content.categories) {
        short stored = -1;
        ASSERT_TRUE(record.count(kCategoryUses));
        memcpy(&stored, record.at(kCategoryUses).data(), sizeof stored);
        EXPECT_EQ(stored, uses.count(id) ? uses.at(id) : 0);
    }
}

TEST(FillStore, WritesEachEntryAsItWasMade)
{
    const auto content = Fill({40, false, 3});
    ASSERT_EQ(content.journal.size(), 40u);
    uint32_t index = 0;
    for (const auto& [id, record] : content.journal) {
        const SampleEntry entry = RealisticEntry(3, index++, 40, kReferenceDay);
        const FILETIME date = entry.date->ToFileTime();
        EXPECT_EQ(record.at(kPropDate), std::string(reinterpret_cast<const char*>(&date), sizeof date));
        EXPECT_EQ(record.count(kPropSubject), entry.subject.has_value());
        EXPECT_EQ(record.count(kPropBody), entry.body.has_value());
        EXPECT_EQ(record.at(kPropType), TextBytes(*entry.type));
        EXPECT_EQ(record.at(kPropKind), std::string("\x03\x00", 2));
        if (entry.body) {
            EXPECT_EQ(record.at(kPropBody), TextBytes(*entry.body));
        }
        EXPECT_EQ(record.count(kPropCategories), !entry.categories.empty());
        EXPECT_EQ(record.count(kPropContacts), !entry.contacts.empty());
    }
}

TEST(FillStore, ListsAndUseCountsAreRight)
{
    for (const bool bulk : {false, true}) {
        const auto content = Fill({300, bulk});
        EXPECT_EQ(content.categories.size(), static_cast<size_t>(kCategoryCount));
        EXPECT_EQ(content.contacts.size(), static_cast<size_t>(kContactCount));
        ExpectUses(content);
    }
}

TEST(FillStore, BlobsNameContactsThatExist)
{
    const auto content = Fill({300, true});
    size_t assigned = 0;
    for (const auto& [id, record] : content.journal) {
        if (const auto blob = record.find(kPropContacts); blob != record.end()) {
            for (uint32_t contact : Identifiers(blob->second)) {
                EXPECT_TRUE(content.contacts.count(contact));
                ++assigned;
            }
        }
    }
    EXPECT_GT(assigned, 300u);
}

TEST(FillStore, SamePlanSameBytes)
{
    for (const bool bulk : {false, true}) {
        const auto first = Fill({120, bulk, 5});
        EXPECT_EQ(first, Fill({120, bulk, 5}));
        EXPECT_NE(first.journal, Fill({120, bulk, 6}).journal);
    }
}

TEST(FillStore, WritesMoreThanOneTransactionHolds)
{
    const TestStore store;
    ASSERT_TRUE(FillStore({kEntriesPerCommit + 2}));
    DbJournal journal;
    ASSERT_TRUE(journal.Open(nullptr));
    EXPECT_EQ(journal.RecordCount(), kEntriesPerCommit + 2);
}

TEST(SetUses, GoesBeyondItsProperty)
{
    const TestStore store;
    ASSERT_TRUE(FillStore({0}));
    DbCategories categories;
    ASSERT_TRUE(categories.Open());
    ASSERT_TRUE(categories.SeekFirstRecord());
    WORD count = 1;
    CEPROPVAL* read = nullptr;
    const CEOID id = categories.ReadRecord(&count, &kCategoryUses, &read);
    LocalFree(read);
    CeDBase::BulkScope bulk(categories);
    ASSERT_TRUE(SetUses(categories, id, 32'769));
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(categories.DecUse(id));
    ASSERT_TRUE(categories.ReadRecord(&count, &kCategoryUses, &read));
    EXPECT_EQ(read->val.iVal, 32'766);
    LocalFree(read);
}

TEST(FillStore, NoEntriesLeavesTheListsAlone)
{
    const auto content = Fill({0});
    EXPECT_TRUE(content.journal.empty());
    EXPECT_EQ(content.categories.size(), static_cast<size_t>(kCategoryCount));
}

TEST(FillStore, FailsWhereNoStoreCanBe)
{
    const TestStore store;
    ASSERT_TRUE(CreateDirectoryW(store.Path().c_str(), nullptr));
    EXPECT_FALSE(FillStore({3}));
    EXPECT_TRUE(RemoveDirectoryW(store.Path().c_str()));
}

} // namespace
