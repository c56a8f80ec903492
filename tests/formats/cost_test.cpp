// A card of twice the size takes twice the work, whatever it is made of.
#include <gtest/gtest.h>

#include "support/card_costs.h"
#include "support/cards.h"
#include "formats/vcard/edit.h"
#include "formats/vcard/writer.h"

namespace vcard {

namespace {

TEST(VCardCost, GrowsWithTheCardAndNotWithItsSquare)
{
    for (const Shape& shape : Shapes()) {
        const Contact contacts[] = {ReadLines(shape, 500), ReadLines(shape, 1000)};
        ExpectLinear(shape, "reading", [&](int lines) { (void)ReadLines(shape, lines); });
        ExpectLinear(shape, "writing", [&](int lines) {
            std::string card;
            AppendCard(card, contacts[lines / 1000]);
        });
        ExpectLinear(shape, "following an edit", [&](int lines) {
            Contact edited = contacts[lines / 1000];
            edited[Field::FirstName] += "a";
            edited[Field::Address] += "a";
            FollowEdit(contacts[lines / 1000], &edited);
        });
    }
}

// Which line of a text comes out first is as it was: each once, in their order.
TEST(VCardCost, LinesOfOneTextComeOutInTheirOrder)
{
    const std::string lines = "FN:x\nTEL;PREF=2:1\nTEL;PREF=1:1\nTEL:1\nTEL;X=3:2\n";
    EXPECT_EQ(LinesOf(ContactOf(lines)), lines);
}

} // namespace

} // namespace vcard
