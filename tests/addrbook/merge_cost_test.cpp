// An import of a card of twice the size takes twice the work, whatever the card is made of.
#include <gtest/gtest.h>

#include "addrbook/transfer/card_merge.h"
#include "addrbook/transfer/contact_uids.h"
#include "support/card_costs.h"

namespace addrbook {

namespace {

TEST(MergeCost, GrowsWithTheCardAndNotWithItsSquare)
{
    for (const vcard::Shape& shape : vcard::Shapes()) {
        const vcard::Contact contacts[] = {vcard::ReadLines(shape, 500), vcard::ReadLines(shape, 1000)};
        vcard::ExpectLinear(shape, "merging", [&](int lines) {
            const vcard::Contact& stored = contacts[lines / 1000];
            const vcard::Contact merged = MergedWith(stored, {stored, {}, false});
            (void)IsChange(stored, merged);
            (void)ChangesBetween(merged, {});
            (void)AsNew({stored, {}, false});
        });
        vcard::ExpectLinear(shape, "looking for the UID", [&](int lines) {
            EXPECT_EQ(UidOf(contacts[lines / 1000][vcard::Field::Extra]), "1");
        });
    }
}

} // namespace

} // namespace addrbook
