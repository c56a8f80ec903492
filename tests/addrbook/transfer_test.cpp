// What comes in goes out again, and is known when it comes back.
#include <algorithm>
#include <set>

#include "addrbook/transfer/contact_uids.h"
#include "addrbook/transfer/count_text.h"
#include "transfers.h"

namespace addrbook {

namespace {

TEST_F(Transfers, BringEveryCardInAndOutAgain)
{
    const std::string text = ManyCards(3000);
    ASSERT_EQ(Import(text), State::Done);
    EXPECT_EQ(m_report, CountText(3000, L"", L"contacts were imported."));
    ASSERT_EQ(m_contacts.RecordCount(), 3000u);
    ASSERT_EQ(Export(Ids()), State::Done);
    EXPECT_EQ(m_report, CountText(3000, L"", L"contacts were exported."));
    const vcard::ReadCards before = vcard::ReadAll(text), after = vcard::ReadAll(ReadFileBytes(m_path));
    ASSERT_EQ(after.contacts.size(), 3000u);
    for (const size_t i : {size_t{0}, size_t{1234}})
        EXPECT_EQ(std::count_if(after.contacts.begin(), after.contacts.end(),
                                [&](vcard::Contact contact) {
                                    TakeUid(&contact);
                                    return contact == before.contacts[i];
                                }),
                  1);
    EXPECT_EQ(GetFileAttributesW((m_path + L".part").c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(Transfers, ThatCannotBeWrittenSaySo)
{
    ASSERT_EQ(Import(vcard::CardOf("FN:x")), State::Done);
    const std::vector<CEOID> ids = Ids();
    m_contacts.Close();
    ASSERT_TRUE(SetFileAttributesW(m_store.Path().c_str(), FILE_ATTRIBUTE_READONLY));
    ASSERT_EQ(m_contacts.Open(), 1);
    EXPECT_EQ(Import(vcard::CardOf("FN:y")), State::Failed);
    EXPECT_EQ(m_report,
              L"The contacts cannot be written: the journal's file is read-only. Nothing was imported.");
    SetFileAttributesW(m_store.Path().c_str(), FILE_ATTRIBUTE_NORMAL);
    // A folder in the file's place.
    DeleteFileW(m_path.c_str());
    ASSERT_TRUE(CreateDirectoryW(m_path.c_str(), nullptr));
    EXPECT_EQ(Export(ids), State::Failed);
    EXPECT_EQ(m_report, L"The file cannot be written.");
    EXPECT_TRUE(RemoveDirectoryW(m_path.c_str()));
}

TEST_F(Transfers, UpdateAContactWhoseUidTheCardHas)
{
    ASSERT_EQ(Import(vcard::CardOf("FN:Old\nUID:urn:uuid:AB-1\nTEL:1\nNOTE:n\nX-A:b") +
                     vcard::CardOf("FN:Other\nUID:ab")),
              State::Done);
    const CEOID id = Ids()[0];
    const std::string again =
        vcard::CardOf("FN:New\nEMAIL:a@b\ng.uid:ab-1") + vcard::CardOf("FN:More\nUID:3");
    ASSERT_EQ(Import(again), State::Done);
    EXPECT_EQ(m_report, L"1 contact was imported, 1 was updated.");
    EXPECT_EQ(m_contacts.RecordCount(), 3u);
    EXPECT_EQ(Stored("New"), vcard::ContactOf("FN:New\nUID:urn:uuid:AB-1\nTEL:1\nEMAIL:a@b\nNOTE:n\nX-A:b"))
        << "what the card lacks stays";
    EXPECT_NE(m_contacts.SeekRecord(id), 0u) << "entries refer to it";
    Stored("Other");
    ASSERT_EQ(Import(again), State::Done);
    EXPECT_EQ(m_report, L"2 contacts were unchanged.");
    EXPECT_EQ(m_contacts.RecordCount(), 3u);
    ASSERT_EQ(Import(vcard::CardOf("FN:Newer\nUID:ab-1")), State::Done);
    EXPECT_EQ(m_report, L"1 contact was updated.");
}

// Two cards of one UID, as careless programs write them, are two contacts; so are two without any.
TEST_F(Transfers, JoinNoCardsOfOneFile)
{
    const std::string text = vcard::CardOf("FN:a\nUID:1") + vcard::CardOf("FN:b\nUID:1") +
                             vcard::CardOf("FN:c\nUID:") + vcard::CardOf("FN:d\nUID:");
    ASSERT_EQ(Import(text), State::Done);
    EXPECT_EQ(m_contacts.RecordCount(), 4u);
    ASSERT_EQ(Import(text), State::Done);
    EXPECT_EQ(m_report, L"2 contacts were imported, 2 were unchanged.");
    EXPECT_EQ(m_contacts.RecordCount(), 6u);
    EXPECT_EQ(UidOf(Stored("a")[vcard::Field::Extra]), "1");
    EXPECT_EQ(UidOf(Stored("b")[vcard::Field::Extra]), "1");
}

TEST_F(Transfers, GiveAContactAUidThatStays)
{
    ASSERT_EQ(Import(vcard::CardOf("FN:a\nX-A:b") + vcard::CardOf("FN:b") + vcard::CardOf("FN:c\nUID:own")),
              State::Done);
    ASSERT_EQ(Export(Ids()), State::Done);
    const std::string first = ReadFileBytes(m_path);
    std::set<std::string> uids;
    for (vcard::Contact& contact : vcard::ReadAll(first).contacts)
        uids.insert(TakeUid(&contact));
    EXPECT_EQ(uids.size(), 3u);
    EXPECT_EQ(uids.count("own"), 1u);
    for (const std::string& uid : uids)
        EXPECT_TRUE(uid == "own" || (uid.starts_with("urn:uuid:") && uid.size() == 9 + 36)) << uid;
    ASSERT_EQ(Export(Ids()), State::Done);
    EXPECT_EQ(ReadFileBytes(m_path), first);
    // What comes back, also after a new start, is known again.
    m_contacts.Close();
    ASSERT_EQ(m_contacts.Open(), 1);
    ASSERT_EQ(Import(first), State::Done);
    EXPECT_EQ(m_report, L"3 contacts were unchanged.");
    EXPECT_EQ(m_contacts.RecordCount(), 3u);
}

// From the file through the store into a file: bytes in, the same bytes out.
TEST_F(Transfers, BringEveryScriptThroughByteForByte)
{
    std::string text;
    for (const char* name :
         {"J\xC3\xBCrgen \xC3\x84\xC3\xA4\xC3\x9F", "\xCE\x91\xCE\xB8\xCE\xB7\xCE\xBD\xCE\xAC",
          "\xE6\x9D\x8E\xE5\xB0\x8F\xE9\xBE\x99", "\xF0\xA0\x80\x80\xF0\x9F\x98\x80", "u\xCC\x88 \xC3\xBC",
          "\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x91\xA6",
          "\xEF\xBB\xBF \xEF\xBF\xBD \xEF\xBF\xBF \xC2\x85 \xE2\x80\xA8", "a\\, b\\; c\\\\d\\ne"}) {
        const std::string n = name;
        const std::string card = "BEGIN:VCARD\nVERSION:4.0\nFN:" + n + "\nN:" + n + ";" + n +
                                 ";;;\nORG:" + n + "\nTITLE:" + n + "\nEMAIL:" + n + "\nTEL:" + n +
                                 "\nADR:;;" + n + ";;;;\nNOTE:" + n + "\nX-A;P=\"x\":" + n +
                                 "\nUID:" + std::to_string(text.size()) + "\nEND:VCARD\n";
        text += card;
    }
    ASSERT_EQ(Import(text), State::Done);
    std::vector<CEOID> ids = Ids();
    std::sort(ids.begin(), ids.end()); // as they came
    ASSERT_EQ(Export(ids), State::Done);
    std::string written = ReadFileBytes(m_path);
    for (size_t fold; (fold = written.find("\r\n ")) != std::string::npos;)
        written.erase(fold, 3);
    std::erase(written, '\r');
    const auto linesOf = [](const std::string& all) {
        std::vector<std::string> lines;
        vcard::ForEachLine(all, [&](std::string_view line) { lines.emplace_back(line); });
        return lines;
    };
    for (const std::string& line : linesOf(text))
        EXPECT_NE(("\n" + written).find("\n" + line + "\n"), std::string::npos) << line;
    EXPECT_EQ(Import(written), State::Done);
    EXPECT_EQ(m_report, L"8 contacts were unchanged.");
    ASSERT_EQ(Export(ids), State::Done);
    std::string again = ReadFileBytes(m_path);
    for (size_t fold; (fold = again.find("\r\n ")) != std::string::npos;)
        again.erase(fold, 3);
    std::erase(again, '\r');
    EXPECT_EQ(again, written);
}

TEST_F(Transfers, BringAPictureOfManyMegabytesThrough)
{
    std::string picture;
    for (size_t i = 0; i < 10'000'000; ++i)
        picture += static_cast<char>('A' + i * 7 % 26);
    ASSERT_EQ(Import(vcard::CardOf("FN:x\nPHOTO;ENCODING=b;TYPE=PNG:" + picture + "\nUID:1", "3.0")),
              State::Done);
    ASSERT_EQ(Export(Ids()), State::Done);
    std::vector<vcard::Contact> contacts = vcard::ReadAll(ReadFileBytes(m_path)).contacts;
    ASSERT_EQ(contacts.size(), 1u);
    EXPECT_TRUE(contacts[0][vcard::Field::Extra] == "PHOTO:data:image/png;base64," + picture + "\nUID:1");
}

} // namespace

} // namespace addrbook
