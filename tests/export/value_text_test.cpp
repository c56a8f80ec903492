#include "export/value_text.h"

#include "export/export_fixture.h"

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

} // namespace
