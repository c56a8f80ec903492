#include "addrbook/transfer/contact_record.h"

#include <gtest/gtest.h>

#include "support/test_store.h"

namespace addrbook {

namespace {

class StoredContact : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(m_contacts.Open(), 1); }

    std::wstring Stored(CEOID id, vcard::Field field)
    {
        wchar_t text[200];
        m_contacts.GetStr(id, text, 200, PropertyOf(field));
        return text;
    }
    // How many properties the record has.
    WORD CountOf(CEOID id)
    {
        WORD count = 0;
        CEPROPVAL* read = nullptr;
        EXPECT_EQ(m_contacts.SeekRecord(id), id);
        EXPECT_EQ(m_contacts.ReadRecord(&count, nullptr, &read), id);
        LocalFree(read);
        return count;
    }

    TestStore m_store;
    DbContacts m_contacts;
};

TEST_F(StoredContact, HasTheStoresLineEnds)
{
    vcard::Contact contact;
    contact[vcard::Field::Note] = "\na\n\nb\n";
    contact[vcard::Field::Extra] = "X-A:b";
    ContactSaver saver;
    const CEOID id = saver.Save(m_contacts, 0, contact);
    ASSERT_NE(id, 0u);
    EXPECT_EQ(Stored(id, vcard::Field::Note), L"\r\na\r\n\r\nb\r\n");
    EXPECT_EQ(Stored(id, vcard::Field::Extra), L"X-A:b");
    vcard::Contact read;
    ASSERT_TRUE(LoadContact(m_contacts, id, &read));
    EXPECT_EQ(read, contact);
    EXPECT_EQ(ToWide("\n"), L"\r\n");
    EXPECT_EQ(ToWide(""), L"");
}

TEST_F(StoredContact, LacksWhatIsEmpty)
{
    vcard::Contact contact;
    for (std::string& text : contact.texts)
        text = "x";
    ContactSaver saver;
    const CEOID id = saver.Save(m_contacts, 0, contact);
    EXPECT_EQ(CountOf(id), vcard::kFieldCount);
    vcard::Contact less;
    less[vcard::Field::FileAs] = "y";
    ASSERT_EQ(saver.Save(m_contacts, id, less), id);
    EXPECT_EQ(CountOf(id), 1u);
    ASSERT_TRUE(SaveField(m_contacts, id, vcard::Field::Note, "a\nb"));
    EXPECT_EQ(CountOf(id), 2u);
    EXPECT_EQ(Stored(id, vcard::Field::Note), L"a\r\nb");
    ASSERT_TRUE(SaveField(m_contacts, id, vcard::Field::Note, ""));
    EXPECT_EQ(CountOf(id), 1u);
}

TEST_F(StoredContact, IsReadAndWrittenOnlyWhileItIsThere)
{
    vcard::Contact contact;
    contact[vcard::Field::FileAs] = "x";
    const CEOID id = ContactSaver().Save(m_contacts, 0, contact);
    ASSERT_EQ(m_contacts.DeleteRecord(id), 1);
    EXPECT_FALSE(LoadContact(m_contacts, id, &contact));
    EXPECT_EQ(ContactSaver().Save(m_contacts, id, contact), 0u);
    EXPECT_FALSE(SaveField(m_contacts, id, vcard::Field::Note, "n"));
}

// What moves a character for each line before it does not end.
TEST_F(StoredContact, MayHaveMillionsOfLines)
{
    EXPECT_EQ(ToWide(std::string(4'000'000, '\n')).size(), 8'000'000u);
}

} // namespace

} // namespace addrbook
