#include "support/card_costs.h"

#include <gtest/gtest.h>

#include "support/allocations.h"
#include "support/cards.h"

namespace vcard {

namespace {

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

} // namespace

std::span<const Shape> Shapes()
{
    return kShapes;
}

Contact ReadLines(const Shape& shape, int lines)
{
    std::string text = "FN:x\nUID:1\nNOTE:begins\n";
    for (int i = 0; i < lines; ++i)
        text += shape.line(i);
    return ContactOf(text);
}

namespace {

Allocations CostOf(const std::function<void()>& work)
{
    const Allocations before = AllocationsSoFar();
    work();
    const Allocations after = AllocationsSoFar();
    return {after.count - before.count, after.bytes - before.bytes};
}

} // namespace

void ExpectLinear(const Shape& shape, const char* what, const std::function<void(int)>& work)
{
    constexpr int kLines = 500;
    const Allocations once = CostOf([&] { work(kLines); }), twice = CostOf([&] { work(2 * kLines); });
    EXPECT_LE(twice.count, once.count * 22 / 10 + 50) << what << ": " << shape.name;
    EXPECT_LE(twice.bytes, once.bytes * 3) << what << ": " << shape.name;
}

} // namespace vcard
