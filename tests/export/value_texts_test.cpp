#include "data/value_texts.h"

#include "export/export_fixture.h"
#include "support/live_blocks.h"

namespace {

TEST(ValueTextsTest, WhatNobodyIsShownIsEmpty)
{
    ValueTexts texts;
    CEVALUNION kind{};
    kind.uiVal = kEntryKind;
    EXPECT_EQ(texts.Whole(*FieldOf(kPropKind), kind), L"");
    EXPECT_EQ(texts.Cell(*FieldOf(kPropKind), kind), L"");
}

TEST(ValueTextsTest, ATextWithoutCharactersIsEmpty)
{
    ValueTexts texts;
    for (const CEPROPID id : {kPropSubject, kPropBody, kPropType}) {
        EXPECT_EQ(texts.Whole(*FieldOf(id), {}), L"") << id;
        EXPECT_EQ(texts.Cell(*FieldOf(id), {}), L"") << id;
    }
}

TEST(ValueTextsTest, OnlyACellIsBounded)
{
    ValueTexts texts;
    std::wstring text = L"first\r\n" + std::wstring(100'000, L'x');
    CEVALUNION value{};
    value.lpwstr = text.data();
    EXPECT_EQ(texts.Whole(*FieldOf(kPropBody), value), text);
    EXPECT_EQ(texts.Whole(*FieldOf(kPropSubject), value), text);
    EXPECT_EQ(texts.Cell(*FieldOf(kPropBody), value), L"first");
    EXPECT_EQ(texts.Cell(*FieldOf(kPropSubject), value), text.substr(0, 4095));
}

class NamesTest : public ExportTest {
  protected:
    NamesTest()
    {
        m_categories[1] = AddCategory(L"Home");
        m_categories[2] = AddCategory(L"Work");
        m_contacts[1] = AddContact(L"Bell, Bob");
    }
    std::wstring Categories() { return Read(kPropCategories, m_categories, sizeof m_categories); }
    std::wstring Contacts() { return Read(kPropContacts, m_contacts, sizeof m_contacts); }

    ValueTexts m_texts;
    DWORD m_categories[3] = {2};
    DWORD m_contacts[2] = {1};

  private:
    std::wstring Read(CEPROPID id, DWORD* words, size_t bytes)
    {
        CEVALUNION value{};
        value.blob = {static_cast<DWORD>(bytes), reinterpret_cast<BYTE*>(words)};
        return std::wstring(m_texts.Whole(*FieldOf(id), value));
    }
};

TEST_F(NamesTest, AreJoinedAndTheirBlocksGivenBack)
{
    EXPECT_EQ(Categories(), L"Home,Work");
    EXPECT_EQ(Contacts(), L"Bell, Bob");
    const LiveBlocks blocks;
    EXPECT_EQ(Categories(), L"Home,Work");
    EXPECT_EQ(Contacts(), L"Bell, Bob");
    EXPECT_GE(blocks.Taken(), 2u);
    EXPECT_EQ(blocks.Count(), 0u);
    EXPECT_EQ(m_texts.Trouble(), StoreTrouble::None);
}

TEST_F(NamesTest, AreThoseOfTheMomentWhileTheDatabasesStayOpen)
{
    EXPECT_EQ(Categories(), L"Home,Work");
    DbCategories categories;
    ASSERT_EQ(categories.Open(), 1);
    EXPECT_EQ(categories.Rename(m_categories[1], L"Zoo"), 1);
    EXPECT_EQ(Categories(), L"Work,Zoo");
    EXPECT_EQ(categories.DeleteRecord(m_categories[2]), 1);
    EXPECT_EQ(Categories(), L"Zoo");
}

TEST_F(NamesTest, OfAClosedStoreAreATroubleThatStays)
{
    Own().Journal().Close();
    EXPECT_EQ(Categories(), L"Home,Work"); // opens the store itself
    CeDBase::CloseAll();
    EXPECT_EQ(Categories(), L"");
    const StoreTrouble trouble = m_texts.Trouble();
    EXPECT_NE(trouble, StoreTrouble::None);
    EXPECT_EQ(Contacts(), L"Bell, Bob");
    EXPECT_EQ(m_texts.Trouble(), trouble);
}

} // namespace
