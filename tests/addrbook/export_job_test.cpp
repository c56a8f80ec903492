#include "addrbook/transfer/export_job.h"

#include "addrbook/transfer/contact_uids.h"
#include "support/held_file.h"
#include "support/locked_store.h"
#include "transfers.h"

namespace addrbook {

namespace {

TEST_F(Transfers, ExportPassesOverAContactThatIsGone)
{
    ASSERT_EQ(Import(vcard::CardOf("FN:a") + vcard::CardOf("FN:b")), State::Done);
    std::vector<CEOID> ids = Ids();
    ASSERT_EQ(m_contacts.DeleteRecord(ids[0]), 1);
    ASSERT_EQ(Export(ids), State::Done);
    EXPECT_EQ(m_report, L"1 contact was exported.");
    std::vector<vcard::Contact> exported = vcard::ReadAll(ReadFileBytes(m_path)).contacts;
    ASSERT_EQ(exported.size(), 1u);
    TakeUid(exported.data());
    EXPECT_EQ(vcard::LinesOf(exported[0]), "FN:b\n");
}

TEST_F(Transfers, ExportFromAStoreThatCannotBeWritten)
{
    ASSERT_EQ(Import(vcard::CardOf("FN:a") + vcard::CardOf("FN:b")), State::Done);
    const std::vector<CEOID> ids = Ids();
    m_contacts.Close();
    ASSERT_TRUE(SetFileAttributesW(m_store.Path().c_str(), FILE_ATTRIBUTE_READONLY));
    ASSERT_EQ(m_contacts.Open(), 1);
    EXPECT_EQ(Export(ids), State::Done);
    SetFileAttributesW(m_store.Path().c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(m_report, L"2 contacts were exported.");
    EXPECT_EQ(ReadFileBytes(m_path), "BEGIN:VCARD\r\nVERSION:4.0\r\nFN:a\r\nEND:VCARD\r\n"
                                     "BEGIN:VCARD\r\nVERSION:4.0\r\nFN:b\r\nEND:VCARD\r\n")
        << "another UID each time would be none";
}

// Nothing but the file that was there, as it was.
void ExpectUntouched(const std::wstring& path)
{
    EXPECT_EQ(ReadFileBytes(path), "before");
    EXPECT_EQ(GetFileAttributesW((path + L".part").c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(Transfers, ExportOverAFileThatIsHeldOpenSaysSoAndLeavesIt)
{
    ASSERT_EQ(Import(vcard::CardOf("FN:a")), State::Done);
    ASSERT_TRUE(WriteFileBytes(m_path, "before"));
    {
        const UniqueKernelHandle held(
            CreateFileW(m_path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
        ASSERT_NE(held.get(), INVALID_HANDLE_VALUE);
        EXPECT_EQ(Export(Ids()), State::Failed);
        EXPECT_EQ(m_report, L"The file cannot be written: another program has it open.\r\n"
                            L"The file that was there is unchanged.");
    }
    ExpectUntouched(m_path);
    EXPECT_EQ(Stored("a")[vcard::Field::Extra], "") << "no card has gone out";
}

TEST_F(Transfers, ExportOverAFileThatIsHeldForAMomentWaits)
{
    ASSERT_EQ(Import(vcard::CardOf("FN:a")), State::Done);
    ASSERT_TRUE(WriteFileBytes(m_path, "before"));
    const HeldFile held(m_path, 3);
    EXPECT_EQ(Export(Ids()), State::Done);
    EXPECT_EQ(held.Waits(), 3);
    EXPECT_TRUE(ReadFileBytes(m_path).starts_with("BEGIN:VCARD"));
}

TEST(ExportReason, IsNamedWhereAPersonCanDoSomething)
{
    EXPECT_STREQ(ReasonOf(ERROR_DISK_FULL), L": the disk is full.");
    EXPECT_STREQ(ReasonOf(ERROR_HANDLE_DISK_FULL), L": the disk is full.");
    EXPECT_STREQ(ReasonOf(ERROR_SHARING_VIOLATION), L": another program has it open.");
    for (const long other : {ERROR_SUCCESS, ERROR_ACCESS_DENIED, ERROR_GEN_FAILURE, ERROR_LOCK_VIOLATION})
        EXPECT_STREQ(ReasonOf(static_cast<DWORD>(other)), L".");
}

// Others can write until the file is whole; a contact that has changed meanwhile keeps what it says.
TEST_F(Transfers, ExportHoldsNobodyOffWhileItWrites)
{
    ASSERT_EQ(Import(ManyCards(2000)), State::Done);
    const std::vector<CEOID> ids = Ids();
    ExportJob job(m_contacts, ids, m_path);
    while (job.PerMille() == 0)
        ASSERT_EQ(job.Step(1), State::Working);
    {
        const LockedStore writer(m_store.Path()); // takes the store for writing, which succeeds
    }
    vcard::Contact changed;
    ASSERT_TRUE(LoadContact(m_contacts, ids[0], &changed));
    changed[vcard::Field::Extra] += "\nX-NEW:1";
    ASSERT_TRUE(SaveField(m_contacts, ids[0], vcard::Field::Extra, changed[vcard::Field::Extra]));
    ASSERT_TRUE(SaveField(m_contacts, ids[1], vcard::Field::Extra, "UID:own"));
    ASSERT_EQ(m_contacts.DeleteRecord(ids[2]), 1);
    ASSERT_EQ(RunToEnd(job), State::Done);
    vcard::Contact after;
    ASSERT_TRUE(LoadContact(m_contacts, ids[0], &after));
    const std::string uid = TakeUid(&after);
    EXPECT_EQ(after, changed);
    EXPECT_NE(ReadFileBytes(m_path).find(uid), std::string::npos) << "known again when it comes back";
    ASSERT_TRUE(LoadContact(m_contacts, ids[1], &after));
    EXPECT_EQ(after[vcard::Field::Extra], "UID:own");
    EXPECT_FALSE(LoadContact(m_contacts, ids[2], &after)) << "what was deleted stays so";
}

// The store is taken when the UIDs are to be kept: no card has one then.
TEST_F(Transfers, ExportNamesNoCardWhoseUidCannotBeKept)
{
    ASSERT_EQ(Import(ManyCards(500) + vcard::CardOf("FN:x\nUID:own")), State::Done);
    ExportJob job(m_contacts, Ids(), m_path);
    ASSERT_EQ(job.Step(0), State::Working);
    {
        const LockedStore other(m_store.Path());
        ASSERT_EQ(RunToEnd(job), State::Done);
    }
    EXPECT_EQ(job.Report(), L"501 contacts were exported.");
    const std::string written = ReadFileBytes(m_path);
    EXPECT_EQ(vcard::ReadAll(written).contacts.size(), 501u);
    EXPECT_EQ(written.find("urn:uuid"), std::string::npos);
    EXPECT_NE(written.find("UID:own"), std::string::npos);
    EXPECT_EQ(GetFileAttributesW((m_path + L".part").c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(Transfers, ExportThatIsGivenUpLeavesTheFile)
{
    ASSERT_EQ(Import(ManyCards(2000)), State::Done);
    ASSERT_TRUE(WriteFileBytes(m_path, "before"));
    {
        ExportJob job(m_contacts, Ids(), m_path);
        ASSERT_EQ(job.Step(0), State::Working);
    }
    ExpectUntouched(m_path);
}

TEST_F(Transfers, ExportLeavesAFileBesideItAlone)
{
    ASSERT_EQ(Import(vcard::CardOf("FN:a")), State::Done);
    ASSERT_TRUE(WriteFileBytes(m_path + L".part", "somebody's"));
    EXPECT_EQ(Export(Ids()), State::Done);
    EXPECT_EQ(vcard::ReadAll(ReadFileBytes(m_path)).contacts.size(), 1u);
    EXPECT_EQ(ReadFileBytes(m_path + L".part"), "somebody's");
    EXPECT_EQ(GetFileAttributesW((m_path + L".part1").c_str()), INVALID_FILE_ATTRIBUTES);
}

} // namespace

} // namespace addrbook
