#include "addrbook/contact_rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "addrbook/transfer/contact_record.h"
#include "support/test_store.h"

namespace addrbook {

namespace {

class Rows : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(m_contacts.Open(), 1); }
    CEOID Add(const char* fileAs, vcard::Field field = vcard::Field::Note, const char* text = "")
    {
        vcard::Contact contact;
        contact[vcard::Field::FileAs] = fileAs;
        contact[field] = text;
        return ContactSaver().Save(m_contacts, 0, contact);
    }
    std::vector<std::wstring> Names()
    {
        std::vector<std::wstring> names;
        for (size_t row = 0; row < m_rows.Count(); ++row)
            names.push_back(m_rows.Text(row, Column::FileAs));
        return names;
    }
    std::vector<std::wstring> Found(const wchar_t* text)
    {
        m_rows.Find(text);
        return Names();
    }

    TestStore m_store;
    DbContacts m_contacts;
    ContactRows m_rows{m_contacts};
};

using testing::UnorderedElementsAreArray;
using Texts = std::vector<std::wstring>;

TEST_F(Rows, ComeByFileAsWithoutRegardToCase)
{
    Add("beta");
    Add("\xC3\x84pfel");
    Add("Alpha");
    Add("Gamma");
    m_rows.Load();
    EXPECT_EQ(Names(), (Texts{L"Alpha", L"\u00C4pfel", L"beta", L"Gamma"}));
    EXPECT_EQ(m_rows.CountOfAll(), 4u);
}

TEST_F(Rows, ShowTheFirstOfSeveral)
{
    Add("a", vcard::Field::Emails, "one@x (work)\ntwo@x");
    Add("b", vcard::Field::Phones, "1\n2");
    Add("c", vcard::Field::Company, "Acme");
    m_rows.Load();
    m_rows.Prepare(0, 2);
    EXPECT_EQ(m_rows.Text(0, Column::Email), L"one@x (work)");
    EXPECT_EQ(m_rows.Text(1, Column::Phone), L"1");
    EXPECT_EQ(m_rows.Text(2, Column::Company), L"Acme");
    EXPECT_EQ(m_rows.Text(2, Column::Email), L"");
    EXPECT_EQ(m_rows.Text(3, Column::FileAs), L"");
}

TEST_F(Rows, AreFoundByAnyFieldAndInAnyCase)
{
    Add("Anna", vcard::Field::Company, "M\xC3\xBCller & Co");
    Add("Bert", vcard::Field::Phones, "+49 30 1234");
    Add("Carl", vcard::Field::Note, "met Anna at the lake");
    m_rows.Load();
    EXPECT_EQ(Found(L"anna"), (Texts{L"Anna", L"Carl"}));
    EXPECT_EQ(Found(L"M\u00DCLLER"), Texts{L"Anna"});
    EXPECT_EQ(Found(L"1234"), Texts{L"Bert"});
    EXPECT_EQ(Found(L" lake  anna "), Texts{L"Carl"}) << "each word, in any order";
    EXPECT_EQ(Found(L"nobody"), Texts());
    EXPECT_EQ(m_rows.CountOfAll(), 3u);
    EXPECT_EQ(Found(L"  ").size(), 3u);
}

TEST_F(Rows, AreFoundByEachFieldButNotByWhatNobodySees)
{
    vcard::Contact contact;
    for (size_t i = 0; i < vcard::kFieldCount; ++i)
        contact.texts[i] = "word" + std::string(1, static_cast<char>('a' + i));
    ASSERT_NE(ContactSaver().Save(m_contacts, 0, contact), 0u);
    m_rows.Load();
    const auto finds = [&](size_t field) {
        return Found((L"word" + std::wstring(1, static_cast<wchar_t>(L'a' + field))).c_str()).size() == 1;
    };
    constexpr size_t kHidden = static_cast<size_t>(vcard::Field::Extra);
    for (size_t i = 0; i < vcard::kFieldCount; ++i)
        EXPECT_EQ(finds(i), i != kHidden) << i;
}

TEST_F(Rows, FollowTheStoreWhenTheyAreLoadedAgain)
{
    const CEOID id = Add("Anna");
    Add("Bert");
    m_rows.Load();
    EXPECT_EQ(Found(L"an"), Texts{L"Anna"});
    ASSERT_EQ(m_contacts.DeleteRecord(id), 1);
    Add("Antonia");
    m_rows.Load();
    EXPECT_EQ(Names(), Texts{L"Antonia"});
    EXPECT_EQ(m_rows.RowOf(id), -1);
    EXPECT_EQ(m_rows.RowOf(m_rows.IdAt(0)), 0);
    EXPECT_EQ(m_rows.IdAt(1), 0u);
}

TEST_F(Rows, AreFoundWithAndWithoutAccents)
{
    for (const char* name : {"M\xC3\xBCller", "Mueller", "Mu\xCC\x88ller e", "Mullen",
                             "\xC5\x81\xC3\xB3\xC5\xBA", "\xCE\x86\xCE\xBD\xCE\xBD\xCE\xB1", "\xE1\xBE\x82",
                             "\xE6\x9D\x8E \xF0\x9F\x98\x80", "\xC4\xB0zmir"})
        Add(name);
    m_rows.Load();
    const Texts mull{L"Mullen", L"M\u00FCller", L"Mu\u0308ller e"};
    EXPECT_THAT(Found(L"mull"), UnorderedElementsAreArray(mull));
    EXPECT_THAT(Found(L"M\u00DCLL"), UnorderedElementsAreArray(mull));
    EXPECT_THAT(Found(L"mu\u0308ll"), UnorderedElementsAreArray(mull));
    EXPECT_EQ(Found(L"\u0141oz"), Texts{L"\u0141\u00F3\u017A"}) << "a stroke is no accent";
    EXPECT_EQ(Found(L"\u03B1\u03BD"), Texts{L"\u0386\u03BD\u03BD\u03B1"});
    EXPECT_EQ(Found(L"\u03B1").size(), 2u) << "three accents on one letter";
    EXPECT_EQ(Found(L"\u674E"), Texts{L"\u674E \U0001F600"});
    EXPECT_EQ(Found(L"\U0001F600").size(), 1u);
    EXPECT_EQ(Found(L"izmir"), Texts{L"\u0130zmir"});
    EXPECT_EQ(Found(L"\u0308").size(), 9u) << "an accent alone is nothing to look for";
}

TEST_F(Rows, AreFoundByWhatTheStoreSaysNow)
{
    const CEOID id = Add("Anna", vcard::Field::Note, "lake");
    m_rows.Load();
    EXPECT_EQ(Found(L"lake"), Texts{L"Anna"});
    vcard::Contact changed;
    changed[vcard::Field::FileAs] = "Anna";
    changed[vcard::Field::Note] = "hill";
    ASSERT_EQ(ContactSaver().Save(m_contacts, id, changed), id);
    m_rows.Load();
    EXPECT_EQ(Names(), Texts()) << "as many contacts as before, but other texts";
    EXPECT_EQ(Found(L"hill"), Texts{L"Anna"});
    EXPECT_EQ(m_rows.Text(0, Column::FileAs), L"Anna");
}

TEST_F(Rows, AreFoundByTheStartOfTheirName)
{
    for (const char* name : {"Anna", "Bert", "Bj\xC3\xB6rn", "Carl"})
        Add(name);
    m_rows.Load();
    EXPECT_EQ(m_rows.FindName(L"b", 0), 1);
    EXPECT_EQ(m_rows.FindName(L"b", 2), 2);
    EXPECT_EQ(m_rows.FindName(L"b", 3), 1) << "from the top again";
    EXPECT_EQ(m_rows.FindName(L"BJ\u00D6", 0), 2);
    EXPECT_EQ(m_rows.FindName(L"x", 0), -1);
}

TEST_F(Rows, AreMoreThanARecordCountCanSay)
{
    {
        CeDBase::BulkScope bulk(m_contacts);
        ContactSaver saver;
        vcard::Contact contact;
        for (int i = 0; i < 66'000; ++i) {
            contact[vcard::Field::FileAs] = "n" + std::to_string(i);
            ASSERT_NE(saver.Save(m_contacts, 0, contact), 0u);
        }
        ASSERT_EQ(bulk.Commit(), 1);
    }
    m_rows.Load();
    EXPECT_EQ(m_rows.Count(), 66'000u);
    EXPECT_EQ(Found(L"n65999").size(), 1u);
}

TEST(ContactRecord, KeepsAContactToTheByte)
{
    const TestStore store;
    DbContacts contacts;
    ASSERT_EQ(contacts.Open(), 1);
    vcard::Contact contact;
    for (size_t i = 0; i < vcard::kFieldCount; ++i)
        contact.texts[i] =
            "line " + std::to_string(i) + "\n\xF0\x9F\x98\x80 \xCE\xB1\xC3\xBC\xE6\x97\xA5u\xCC\x88";
    contact[vcard::Field::Address].clear();
    const CEOID id = ContactSaver().Save(contacts, 0, contact);
    ASSERT_NE(id, 0u);
    vcard::Contact read;
    ASSERT_TRUE(LoadContact(contacts, id, &read));
    EXPECT_EQ(read, contact);
    EXPECT_FALSE(LoadContact(contacts, id + 1, &read));
    contact[vcard::Field::Note].clear();
    ASSERT_EQ(ContactSaver().Save(contacts, id, contact), id);
    ASSERT_TRUE(LoadContact(contacts, id, &read));
    EXPECT_EQ(read[vcard::Field::Note], "");
    // A CR alone ends a line too, and stays what it is until the field is changed.
    contact[vcard::Field::Note] = "a\rb";
    ASSERT_EQ(ContactSaver().Save(contacts, id, contact), id);
    ASSERT_TRUE(LoadContact(contacts, id, &read));
    EXPECT_EQ(read[vcard::Field::Note], "a\nb");
    contact = read;
    contact[vcard::Field::Company] = "changed";
    ASSERT_EQ(ContactSaver().SaveChanges(contacts, id, read, contact), id);
    wchar_t note[10];
    contacts.GetStr(id, note, 10, kContactNote);
    EXPECT_STREQ(note, L"a\rb");
    ASSERT_TRUE(LoadContact(contacts, id, &read));
    EXPECT_EQ(read, contact);
}

} // namespace

} // namespace addrbook
