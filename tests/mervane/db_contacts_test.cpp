#include "mervane/db_contacts.h"

#include <gtest/gtest.h>

#include "records.h"
#include "support/test_store.h"

namespace {

class Contacts : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(m_contacts.Open(), 1); }
    int SetAssigned(std::vector<BYTE> bytes)
    {
        return m_contacts.SetAssigned({static_cast<DWORD>(bytes.size()), bytes.data()}, 256);
    }

    TestStore m_store;
    DbContacts m_contacts;
};

TEST_F(Contacts, OpenByTheirKeyOnly)
{
    DbContacts other;
    EXPECT_EQ(other.Open(kCategoriesKey), 0);
    EXPECT_EQ(other.Open(kContactsKey), 1);
}

TEST_F(Contacts, HaveANameAndACompany)
{
    const CEOID id = Sent().Text(kContactsKey, L"Doe, Jane").Text(kContactCompany, L"Acme").Write(m_contacts);
    ASSERT_NE(id, 0u);
    const Received read(m_contacts, id);
    EXPECT_EQ(read.Ids(), (std::vector<CEPROPID>{kContactCompany, kContactsKey}));
    EXPECT_EQ(read.Text(kContactsKey), L"Doe, Jane");
    EXPECT_EQ(read.Text(kContactCompany), L"Acme");
    EXPECT_NE(AddContact(m_contacts, L"Doe, Jane"), 0u) << "two may be called the same";
    EXPECT_EQ(m_contacts.RecordCount(), 2u);
}

TEST_F(Contacts, HaveAllThatAnAddressBookKnows)
{
    const std::vector<CEPROPID> ids{kContactCompany,  kContactsKey,   kContactFirstName, kContactLastName,
                                    kContactJobTitle, kContactEmails, kContactPhones,    kContactAddress,
                                    kContactBirthday, kContactNote,   kContactExtra};
    Sent sent;
    for (const CEPROPID id : ids)
        sent.Text(id, L"text of " + std::to_wstring(id));
    const CEOID id = sent.Write(m_contacts);
    ASSERT_NE(id, 0u);
    const Received read(m_contacts, id);
    EXPECT_EQ(read.Ids(), ids);
    for (const CEPROPID property : ids)
        EXPECT_EQ(read.Text(property), L"text of " + std::to_wstring(property));
    EXPECT_EQ(RawStore(m_store.Path()).Text("SELECT emails || vcard_extra FROM contacts"),
              "text of " + std::to_string(kContactEmails) + "text of " + std::to_string(kContactExtra));
}

TEST_F(Contacts, HoldAnAssignedSet)
{
    EXPECT_EQ(SetAssigned(IdBytes({2, 8, 3})), 1);
    EXPECT_EQ(m_contacts.Assigned(), (std::vector<CEOID>{8, 3}));
    m_contacts.Assign(5);
    m_contacts.Assign(8);
    m_contacts.Assign(0);
    EXPECT_EQ(m_contacts.Assigned(), (std::vector<CEOID>{8, 3, 5}));
    m_contacts.Unassign(3);
    m_contacts.Unassign(77);
    EXPECT_EQ(m_contacts.Assigned(), (std::vector<CEOID>{8, 5}));
    CEBLOB blob{};
    EXPECT_EQ(m_contacts.SetBlob(&blob), 1);
    EXPECT_EQ(std::vector<BYTE>(blob.lpb, blob.lpb + blob.dwCount), IdBytes({2, 8, 5}));
    LocalFree(blob.lpb);
}

TEST_F(Contacts, ReportNothingToWriteForAnEmptySet)
{
    CEBLOB blob{9, reinterpret_cast<BYTE*>(1)};
    EXPECT_EQ(m_contacts.SetBlob(&blob), 0);
    EXPECT_EQ(blob.dwCount, 0u);
    EXPECT_EQ(blob.lpb, nullptr);
}

TEST_F(Contacts, WriteAnUntouchedSetAgain)
{
    EXPECT_EQ(SetAssigned(IdBytes({1, 4})), 1);
    CEBLOB blob{};
    EXPECT_EQ(m_contacts.SetBlob(&blob), 1);
    EXPECT_EQ(blob.dwCount, 8u);
    LocalFree(blob.lpb);
}

TEST_F(Contacts, TakeWhatABlobOfAWrongShapeHolds)
{
    EXPECT_EQ(SetAssigned(IdBytes({3, 8, 3})), 0);
    EXPECT_EQ(m_contacts.Assigned(), (std::vector<CEOID>{8, 3}));
    EXPECT_EQ(SetAssigned({}), 1);
    EXPECT_TRUE(m_contacts.Assigned().empty());
    EXPECT_EQ(SetAssigned({1, 2}), 0);
    EXPECT_EQ(SetAssigned(IdBytes({3, 0, 4, 4})), 1);
    EXPECT_EQ(m_contacts.Assigned(), std::vector<CEOID>{4});
}

TEST_F(Contacts, JoinNamesInTheirOrder)
{
    const CEOID zoe = AddContact(m_contacts, L"Zoe"), adam = AddContact(m_contacts, L"adam"),
                same = AddContact(m_contacts, L"Zoe");
    EXPECT_EQ(JoinedNames(m_contacts, {3, same, zoe, adam}, L';'), L"adam;Zoe;Zoe");
    const CEOID nameless = Sent().Text(kContactCompany, L"Acme").Write(m_contacts);
    EXPECT_EQ(JoinedNames(m_contacts, {2, nameless, adam}, L';'), L"adam");
    EXPECT_EQ(m_contacts.DeleteRecord(adam), 1);
    EXPECT_EQ(JoinedNames(m_contacts, {2, adam, zoe}, L';'), L"Zoe");
}

TEST_F(Contacts, AreNoNamesForTheJournalItself)
{
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    AddEntry(journal, L"subject");
    EXPECT_EQ(JoinedNames(journal, {1, 1}, L';'), L"");
    EXPECT_EQ(journal.NameRank(1), UINT32_MAX);
}

} // namespace
