// A card of twice the size takes twice the work, whatever it is made of.
#include <gtest/gtest.h>

#include <functional>

#include "addrbook/transfer/contact_uids.h"
#include "allocations.h"
#include "cards.h"
#include "formats/vcard/vcard_contact.h"

namespace addrbook {

namespace {

struct Shape {
    const char* name;
    std::function<std::string(int)> line;
};

std::string Number(int number)
{
    return "+49 30 1234567 " + std::to_string(1'000'000 + number);
}

const Shape kShapes[] = {
    {"phones that say more", [](int i) { return "TEL;PREF=1:" + Number(i) + "\n"; }},
    {"phones of which every other says more",
     [](int i) { return (i % 2 ? "TEL:" : "TEL;PREF=1:") + Number(i) + "\n"; }},
    {"e-mails of which every other says more",
     [](int i) { return (i % 2 ? "EMAIL:" : "EMAIL;PREF=1:") + Number(i) + "\n"; }},
    {"phones all of one text", [](int) { return "TEL;PREF=1:" + Number(1) + "\n"; }},
    {"plain phones", [](int i) { return "TEL;TYPE=cell:" + Number(i) + "\n"; }},
    {"e-mails that say more", [](int i) { return "EMAIL;PREF=1:" + Number(i) + "@example.org\n"; }},
    {"addresses", [](int i) { return "ADR;TYPE=work:;;" + Number(i) + ";Town;;;\n"; }},
    {"names", [](int i) { return "N;X=1:" + Number(i) + ";" + Number(i) + ";;;\n"; }},
    {"formatted names", [](int i) { return "FN;X=1:" + Number(i) + "\n"; }},
    {"notes", [](int i) { return "NOTE:" + Number(i) + "\\n\n"; }},
    {"lines that no field has", [](int i) { return "X-A;TYPE=b:" + Number(i) + "\n"; }},
    {"one line in many pieces", [](int i) { return " " + Number(i) + "\n"; }},
};

Contact ReadLines(const Shape& shape, int lines)
{
    std::string text = "FN:x\nUID:1\nNOTE:begins\n";
    for (int i = 0; i < lines; ++i)
        text += shape.line(i);
    return ContactOf(text);
}

Allocations CostOf(const std::function<void()>& work)
{
    const Allocations before = AllocationsSoFar();
    work();
    const Allocations after = AllocationsSoFar();
    return {after.count - before.count, after.bytes - before.bytes};
}

void ExpectLinear(const Shape& shape, const char* what, const std::function<void(int)>& work)
{
    constexpr int kLines = 500;
    const Allocations once = CostOf([&] { work(kLines); }), twice = CostOf([&] { work(2 * kLines); });
    EXPECT_LE(twice.count, once.count * 22 / 10 + 50) << what << ": " << shape.name;
    EXPECT_LE(twice.bytes, once.bytes * 3) << what << ": " << shape.name;
}

TEST(VCardCost, GrowsWithTheCardAndNotWithItsSquare)
{
    for (const Shape& shape : kShapes) {
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
        ExpectLinear(shape, "merging", [&](int lines) {
            const Contact& stored = contacts[lines / 1000];
            const Contact merged = MergedWith(stored, {stored, {}, false});
            (void)IsChange(stored, merged);
            (void)ChangesBetween(merged, {});
            (void)AsNew({stored, {}, false});
        });
        ExpectLinear(shape, "looking for the UID",
                     [&](int lines) { EXPECT_EQ(UidOf(contacts[lines / 1000][Field::Extra]), "1"); });
    }
}

// Which line of a text comes out first is as it was: each once, in their order.
TEST(VCardCost, LinesOfOneTextComeOutInTheirOrder)
{
    const std::string lines = "FN:x\nTEL;PREF=2:1\nTEL;PREF=1:1\nTEL:1\nTEL;X=3:2\n";
    EXPECT_EQ(LinesOf(ContactOf(lines)), lines);
}

} // namespace

} // namespace addrbook
