#include "addrbook/transfer/contact_uids.h"

#include <gtest/gtest.h>

#include "addrbook/transfer/contact_record.h"
#include "support/test_store.h"

namespace addrbook {

namespace {

TEST(ContactUids, AreFoundAmongTheLines)
{
    EXPECT_EQ(UidOf("X-A:b\nUID:AB-1\nX-C:d"), "ab-1");
    EXPECT_EQ(UidOf("item1.uid;VALUE=text:1"), "1");
    EXPECT_EQ(UidOf("UID:1\nUID:2"), "1");
    for (const char* none :
         {"", "XUID:1", "X-UID:1", "UIDS:1", "UID", "UID:", "UID;x", "X:UID:1", "NOTE:a.UID:1"})
        EXPECT_EQ(UidOf(none), "") << none;
}

TEST(ContactUids, AreEqualWithoutCaseAndPrefix)
{
    EXPECT_EQ(UidOf("UID:URN:UUID:4FBE8971-0BC3"), "4fbe8971-0bc3");
    EXPECT_EQ(UidOf("UID:urn:uuid:4fbe8971-0bc3"), "4fbe8971-0bc3");
    EXPECT_EQ(UidOf("UID:http://A/b"), "http://a/b");
    EXPECT_EQ(UidOf("UID:@AZ[`az{"), "@az[`az{");
}

TEST(ContactUids, AreNewEachTime)
{
    const std::string one = NewUidLine(), other = NewUidLine();
    EXPECT_NE(one, other);
    EXPECT_TRUE(one.starts_with("UID:urn:uuid:")) << one;
    EXPECT_EQ(UidOf(one), one.substr(13));
    EXPECT_EQ(one.size(), 13u + 36);
}

TEST(ContactUids, TakeEachContactOnce)
{
    const TestStore store;
    DbContacts contacts;
    ASSERT_EQ(contacts.Open(), 1);
    const auto add = [&](const char* fileAs, const char* extra) {
        vcard::Contact contact;
        contact[vcard::Field::FileAs] = fileAs;
        contact[vcard::Field::Extra] = extra;
        return ContactSaver().Save(contacts, 0, contact);
    };
    ContactUids none;
    add("a", "");
    add("b", "X-A:1");
    EXPECT_TRUE(none.Load(contacts));
    EXPECT_TRUE(none.IsEmpty());
    EXPECT_EQ(none.Take(""), 0u);
    const CEOID third = add("c", "X-A:1\nUID:urn:uuid:AZ"), fourth = add("d", "UID:az");
    ContactUids uids;
    ASSERT_TRUE(uids.Load(contacts));
    EXPECT_FALSE(uids.IsEmpty());
    for (const char* other : {"", "a", "aa", "b", "zz"})
        EXPECT_EQ(uids.Take(other), 0u) << other;
    EXPECT_EQ(uids.Take("az"), third);
    EXPECT_EQ(uids.Take("az"), fourth);
    EXPECT_EQ(uids.Take("az"), 0u);
    EXPECT_TRUE(uids.IsEmpty());
}

} // namespace

} // namespace addrbook
