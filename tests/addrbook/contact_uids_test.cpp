#include "addrbook/contact_uids.h"

#include <gtest/gtest.h>

namespace addrbook {

namespace {

TEST(ContactUids, AreFoundAmongTheLines)
{
    EXPECT_EQ(UidOf("X-A:b\nUID:AB-1\nX-C:d"), "ab-1");
    EXPECT_EQ(UidOf("item1.uid;VALUE=text:1"), "1");
    EXPECT_EQ(UidOf("UID:1\nUID:2"), "1");
    for (const char* none : {"", "XUID:1", "X-UID:1", "UIDS:1", "UID", "UID:", "X:UID:1", "NOTE:a.UID:1"})
        EXPECT_EQ(UidOf(none), "") << none;
}

TEST(ContactUids, AreEqualWithoutCaseAndPrefix)
{
    EXPECT_EQ(UidOf("UID:URN:UUID:4FBE8971-0BC3"), "4fbe8971-0bc3");
    EXPECT_EQ(UidOf("UID:urn:uuid:4fbe8971-0bc3"), "4fbe8971-0bc3");
    EXPECT_EQ(UidOf("UID:http://A/b"), "http://a/b");
}

TEST(ContactUids, AreNewEachTime)
{
    const std::string one = NewUidLine(), other = NewUidLine();
    EXPECT_NE(one, other);
    EXPECT_TRUE(one.starts_with("UID:urn:uuid:")) << one;
    EXPECT_EQ(UidOf(one), one.substr(13));
    EXPECT_EQ(one.size(), 13u + 36);
}

} // namespace

} // namespace addrbook
