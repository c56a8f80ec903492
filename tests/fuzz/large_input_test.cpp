// Inputs that are large in one way only. Work that grows with the square of the size would take minutes here.
#include <gtest/gtest.h>

#include <chrono>
#include <functional>

#include "formats/vcard/contact_reader.h"
#include "formats/vcard/writer.h"
#include "formats/vcard/reader.h"
#include "seeded.h"
#include "targets.h"

namespace {

constexpr auto kLimit = std::chrono::seconds(60);

std::string Times(const std::string& piece, size_t bytes)
{
    std::string text;
    while (text.size() + piece.size() <= bytes)
        text += piece;
    return text;
}

struct Shape {
    const char* name;
    std::string text;
};

// Lines of a card.
std::vector<Shape> CardShapes(size_t bytes)
{
    return {
        {"one property", "NOTE:" + Times("n", bytes)},
        {"escapes", "NOTE:" + Times("\\n\\,", bytes)},
        {"parameters", "TEL" + Times(";TYPE=home", bytes) + ":1"},
        {"a list of types", "TEL;TYPE=" + Times("home,", bytes) + ":1"},
        {"quotes", "NOTE;X=" + Times("\"", bytes) + ":1"},
        {"semicolons", "N:" + Times(";", bytes)},
        {"folds", "NOTE:" + Times("n\n ", bytes)},
        {"soft breaks", "VERSION:2.1\nNOTE;QUOTED-PRINTABLE:" + Times("=0D=\n", bytes)},
        {"lines in base 64", "PHOTO;ENCODING=b:" + Times("aGVsbG8h\n", bytes) + "\n"},
        {"addresses with labels", "VERSION:3.0\n" + Times("ADR:;;a\nLABEL:b\n", bytes / 20)},
        {"agents",
         "VERSION:2.1\nAGENT:\n" + Times("BEGIN:VCARD\n", bytes / 2) + Times("END:VCARD\n", bytes / 2)},
        {"phones", Times("TEL:1\n", bytes / 50)},
        {"bytes that are no text", "NOTE:" + Times("\xFF", bytes)},
    };
}

std::vector<Shape> PageShapes(size_t bytes)
{
    return {
        {"runs of a long link", "<a href='#" + Times("x", bytes / 2) + "'>" + Times("<b>x</b>y", bytes / 2)},
        {"topics", Times("<h1>x", bytes)},
        {"lists", Times("<ul><li>x", bytes)},
        {"cells", "<table><tr>" + Times("<td>x", bytes)},
        {"open tags", Times("<a ", bytes)},
        {"open quotes", Times("<a b='\" ", bytes)},
        {"ampersands", Times("&", bytes)},
        {"less-than signs", Times("<", bytes)},
        {"comments", Times("<!-- ", bytes)},
        {"scripts", "<script>" + Times("</", bytes)},
        {"attributes", "<p " + Times("a b c ", bytes) + ">"},
        {"anchors", Times("<a name=x>", bytes)},
        {"line breaks", "x" + Times("<br>", bytes) + "y"},
        {"blanks", "x" + Times(" ", bytes) + "y"},
    };
}

void ExpectInTime(const Shape& shape, const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    EXPECT_LT(std::chrono::steady_clock::now() - start, kLimit) << shape.name;
}

void ReadAndWrite(const std::string& lines)
{
    const std::string file = "BEGIN:VCARD\nFN:x\n" + lines + "\nEND:VCARD\n";
    size_t place = 0;
    vcard::Reader reader([&](char* buffer, size_t size) {
        const size_t count = file.copy(buffer, size, place);
        place += count;
        return count;
    });
    vcard::Card card;
    vcard::Contact contact;
    std::string written;
    while (reader.Next(&card))
        if (vcard::ContactReader().Read(card, &contact))
            vcard::AppendCard(written, contact);
    EXPECT_TRUE(!written.empty() || reader.Unreadable());
}

// 10 MB by hand (FUZZ_CASES=100000).
TEST(LargeInput, ACardTakesNoLongerThanItsSize)
{
    const size_t bytes = std::max<size_t>(1'000'000, fuzz::CasesOr(0) * 100);
    for (const Shape& shape : CardShapes(bytes))
        ExpectInTime(shape, [&] { ReadAndWrite(shape.text); });
}

TEST(LargeInput, APageTakesNoLongerThanItsSize)
{
    for (const Shape& shape : PageShapes(fuzz::CasesOr(0) < 100'000 ? 50'000 : 500'000))
        ExpectInTime(shape, [&] { EXPECT_EQ(fuzz::TryHelpPage(shape.text), "") << shape.name; });
}

} // namespace
