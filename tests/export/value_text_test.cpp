#include "export/value_text.h"

#include "export/export_fixture.h"
#include "support/live_blocks.h"

namespace {

TEST(ValueTextTest, WhatIsNoValueOfAnEntryIsEmpty)
{
    const ScratchFile scratch;
    {
        PieceWriter file(scratch.Path());
        for (const CEPROPID id : {CEPROPID{0}, kPropKind, CEPROPID{0x0070001F}, CEPROPID{0x0065001F}}) {
            wchar_t text[] = L"text";
            CEPROPVAL property{};
            property.propid = id;
            property.val.lpwstr = text;
            EXPECT_TRUE(WriteValue(property, file)) << id;
        }
    }
    EXPECT_EQ(scratch.Bytes(), "");
}

TEST(ValueTextTest, ATextWithoutCharactersIsEmpty)
{
    const ScratchFile scratch;
    {
        PieceWriter file(scratch.Path());
        for (const CEPROPID id : {kPropSubject, kPropBody, kPropType}) {
            CEPROPVAL property{};
            property.propid = id;
            EXPECT_TRUE(WriteValue(property, file)) << id;
        }
    }
    EXPECT_EQ(scratch.Bytes(), "");
}

TEST_F(ExportTest, TheNamesThatAreJoinedAreGivenBack)
{
    DWORD categories[] = {2, AddCategory(L"Home"), AddCategory(L"Work")};
    DWORD contacts[] = {1, AddContact(L"Bell, Bob")};
    CEPROPVAL values[2]{};
    values[0].propid = kPropCategories;
    values[0].val.blob = {sizeof categories, reinterpret_cast<BYTE*>(categories)};
    values[1].propid = kPropContacts;
    values[1].val.blob = {sizeof contacts, reinterpret_cast<BYTE*>(contacts)};
    {
        PieceWriter file(m_file.Path());
        ASSERT_TRUE(WriteValue(values[0], file)) << "what the writer itself keeps is there by then";
        for (const CEPROPVAL& value : values) {
            const LiveBlocks blocks;
            EXPECT_TRUE(WriteValue(value, file));
            EXPECT_GE(blocks.Taken(), 1u) << value.propid;
            EXPECT_EQ(blocks.Count(), 0u) << value.propid;
        }
    }
    EXPECT_EQ(m_file.Bytes(), "Home,WorkHome,WorkBell, Bob");
}

} // namespace
