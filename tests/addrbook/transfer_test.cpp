// Import and export of whole files.
#include <gtest/gtest.h>

#include "addrbook/count_text.h"
#include "addrbook/export_job.h"
#include "addrbook/import_job.h"
#include "cards.h"
#include "support/test_store.h"

namespace addrbook {

namespace {

using State = Transfer::State;

State RunToEnd(Transfer& transfer)
{
    State state;
    int before = 0;
    while ((state = transfer.Step(20)) == State::Working) {
        EXPECT_GE(transfer.PerMille(), before);
        EXPECT_LE(before = transfer.PerMille(), 1000);
    }
    return state;
}

class Transfers : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(m_contacts.Open(), 1); }
    void TearDown() override
    {
        DeleteFileW(m_path.c_str());
        DeleteFileW((m_path + L".part").c_str());
    }
    State Import(const std::string& text)
    {
        EXPECT_TRUE(WriteFileBytes(m_path, text));
        ImportJob job(m_contacts, m_path);
        const State state = RunToEnd(job);
        m_report = job.Report();
        return state;
    }
    State Export(std::vector<CEOID> ids)
    {
        ExportJob job(m_contacts, std::move(ids), m_path);
        const State state = RunToEnd(job);
        m_report = job.Report();
        return state;
    }
    std::vector<CEOID> Ids()
    {
        std::vector<CEOID> ids;
        for (uint32_t row = 0; const CEOID id = m_contacts.IdOfRow(row); ++row)
            ids.push_back(id);
        return ids;
    }

    TestStore m_store;
    DbContacts m_contacts;
    std::wstring m_path = m_store.Path() + L".\u00FC.vcf";
    std::wstring m_report;
};

std::string ManyCards(int count)
{
    std::string text;
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        text += CardOf("FN:First" + number + " Last" + number + "\nN:Last" + number + ";First" + number +
                       ";;;\nX-N:" + number);
    }
    return text;
}

TEST_F(Transfers, BringEveryCardInAndOutAgain)
{
    const std::string text = ManyCards(3000);
    ASSERT_EQ(Import(text), State::Done);
    EXPECT_EQ(m_report, CountText(3000, L"", L"contacts were imported."));
    ASSERT_EQ(m_contacts.RecordCount(), 3000u);
    ASSERT_EQ(Export(Ids()), State::Done);
    EXPECT_EQ(m_report, CountText(3000, L"", L"contacts were exported."));
    const ReadCards before = ReadAll(text), after = ReadAll(ReadFileBytes(m_path));
    ASSERT_EQ(after.contacts.size(), 3000u);
    for (const Contact& contact : {before.contacts[0], before.contacts[1234]})
        EXPECT_EQ(std::count(after.contacts.begin(), after.contacts.end(), contact), 1);
    EXPECT_EQ(GetFileAttributesW((m_path + L".part").c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(Transfers, ImportWhatCanBeReadAndCountTheRest)
{
    EXPECT_EQ(Import(CardOf("FN:One") + CardOf("FN:x\nbroken") + CardOf("FN:Two") + "BEGIN:VCARD\nFN:cut"),
              State::Done);
    EXPECT_EQ(m_contacts.RecordCount(), 2u);
    EXPECT_EQ(
        m_report,
        L"2 contacts were imported.\r\n2 cards could not be read.\r\nLine 8: the line is none of a card's.");
    EXPECT_EQ(Import(CardOf("FN:Three")), State::Done);
    EXPECT_EQ(m_report, L"1 contact was imported.");
}

TEST_F(Transfers, ImportNothingFromWhatIsNoVCard)
{
    EXPECT_EQ(Import("GIF89a\x01\x02"), State::Failed);
    EXPECT_EQ(m_report, L"There is no card in the file that can be read.\r\nLine 1: no card begins here.");
    EXPECT_EQ(Import(""), State::Failed);
    EXPECT_EQ(m_report, L"There is no card in the file that can be read.");
    ImportJob missing(m_contacts, m_path + L".missing");
    EXPECT_EQ(missing.Step(10), State::Failed);
    EXPECT_EQ(missing.Report(), L"The file cannot be read.");
    EXPECT_EQ(m_contacts.RecordCount(), 0u);
}

TEST_F(Transfers, ThatAreGivenUpChangeNothing)
{
    ASSERT_EQ(Import(CardOf("FN:Before")), State::Done);
    ASSERT_TRUE(WriteFileBytes(m_path, ManyCards(20'000)));
    {
        ImportJob job(m_contacts, m_path);
        ASSERT_EQ(job.Step(0), State::Working);
        EXPECT_GT(job.Imported(), 0u);
    }
    EXPECT_EQ(m_contacts.RecordCount(), 1u);
    EXPECT_EQ(Import(CardOf("FN:After")), State::Done);
    EXPECT_EQ(m_contacts.RecordCount(), 2u);
}

TEST_F(Transfers, ThatCannotBeWrittenSaySo)
{
    ASSERT_EQ(Import(CardOf("FN:x")), State::Done);
    const std::vector<CEOID> ids = Ids();
    m_contacts.Close();
    ASSERT_TRUE(SetFileAttributesW(m_store.Path().c_str(), FILE_ATTRIBUTE_READONLY));
    ASSERT_EQ(m_contacts.Open(), 1);
    EXPECT_EQ(Import(CardOf("FN:y")), State::Failed);
    EXPECT_EQ(m_report, L"The contacts cannot be written. Nothing was imported.");
    SetFileAttributesW(m_store.Path().c_str(), FILE_ATTRIBUTE_NORMAL);
    // A folder in the file's place.
    DeleteFileW(m_path.c_str());
    ASSERT_TRUE(CreateDirectoryW(m_path.c_str(), nullptr));
    EXPECT_EQ(Export(ids), State::Failed);
    EXPECT_EQ(m_report, L"The file cannot be written.");
    EXPECT_TRUE(RemoveDirectoryW(m_path.c_str()));
}

TEST_F(Transfers, ExportPassesOverAContactThatIsGone)
{
    ASSERT_EQ(Import(CardOf("FN:a") + CardOf("FN:b")), State::Done);
    std::vector<CEOID> ids = Ids();
    ASSERT_EQ(m_contacts.DeleteRecord(ids[0]), 1);
    ASSERT_EQ(Export(ids), State::Done);
    EXPECT_EQ(m_report, L"1 contact was exported.");
    EXPECT_EQ(ReadFileBytes(m_path), "BEGIN:VCARD\r\nVERSION:4.0\r\nFN:b\r\nEND:VCARD\r\n");
}

// 50 MB. What the reader holds does not grow with the file.
TEST_F(Transfers, TakeAHundredThousandCards)
{
    constexpr int kCards = 100'000;
    int next = 0;
    std::string rest;
    const std::string note(430, 'n');
    VCardReader reader([&](char* buffer, size_t size) {
        while (rest.size() < size && next < kCards) {
            rest += CardOf("FN:Name " + std::to_string(next) +
                           "\nNOTE:" + (next % 1000 == 7 ? "\nbroken" : note));
            ++next;
        }
        const size_t count = rest.copy(buffer, size);
        rest.erase(0, count);
        return count;
    });
    VCard card;
    size_t cards = 0, largest = 0;
    while (reader.Next(&card)) {
        ++cards;
        largest = std::max(largest, card.Text().capacity());
    }
    EXPECT_EQ(cards, 99'900u);
    EXPECT_EQ(reader.Unreadable(), 100u);
    EXPECT_LT(largest, size_t{10'000});
}

} // namespace

} // namespace addrbook
