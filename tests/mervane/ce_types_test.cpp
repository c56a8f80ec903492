#include "mervane/values/ce_types.h"

#include <gtest/gtest.h>

#include <cstddef>

#include "mervane/db_categories.h"
#include "mervane/db_contacts.h"
#include "mervane/db_journal.h"

namespace {

TEST(CeTypes, ValueTypesHaveTheHandheldsNumbers)
{
    EXPECT_EQ(CEVT_I2, 0x0002);
    EXPECT_EQ(CEVT_UI2, 0x0012);
    EXPECT_EQ(CEVT_LPWSTR, 0x001F);
    EXPECT_EQ(CEVT_FILETIME, 0x0040);
    EXPECT_EQ(CEVT_BLOB, 0x0041);
}

TEST(CeTypes, FlagsHaveTheHandheldsNumbers)
{
    EXPECT_EQ(CEDB_PROPNOTFOUND, 0x0100);
    EXPECT_EQ(CEDB_PROPDELETE, 0x0200);
    EXPECT_EQ(CEDB_SORT_DESCENDING, 1u);
}

TEST(CeTypes, APropertyIsIdentifierLengthFlagsAndValue)
{
    EXPECT_EQ(offsetof(CEPROPVAL, propid), 0u);
    EXPECT_EQ(offsetof(CEPROPVAL, wLenData), 4u);
    EXPECT_EQ(offsetof(CEPROPVAL, wFlags), 6u);
    EXPECT_EQ(offsetof(CEPROPVAL, val), 8u);
    EXPECT_EQ(sizeof(CEPROPVAL::wLenData), 2u);
    EXPECT_EQ(sizeof(CEPROPVAL::wFlags), 2u);
    EXPECT_EQ(sizeof(CEOID), 4u);
}

TEST(CeTypes, AnIdentifierIsNumberAndType)
{
    EXPECT_EQ(PropertyNumber(0x006B0002), 107);
    EXPECT_EQ(PropertyType(0x006B0002), CEVT_I2);
    EXPECT_EQ(MakePropertyId(111, CEVT_BLOB), 0x006F0041u);
    EXPECT_EQ(MakePropertyId(0xFFFF, 0xFFFF), 0xFFFFFFFFu);
}

TEST(CeTypes, TheSharedDatabasesHaveTheDevicesKeys)
{
    EXPECT_EQ(kCategoriesKey, 0x4001001Fu);
    EXPECT_EQ(kContactsKey, 0x4013001Fu);
    EXPECT_EQ(kCategoryUses, 0x43EF0002u);
}

TEST(CeTypes, ChangesAreToldWithTheDevicesNumbers)
{
    EXPECT_EQ(kMsgDatabaseChange, 1125u);
    EXPECT_EQ(kChangeWorkBegins, 1u);
    EXPECT_EQ(kChangeCreated, 2u);
    EXPECT_EQ(kChangeModified, 6u);
    EXPECT_EQ(kChangeDeleted, 8u);
    EXPECT_EQ(kChangeWorkEnded, 15u);
}

} // namespace
