#include "formats/vcard/reader.h"

#include <gtest/gtest.h>

#include "support/cards.h"

namespace vcard {

namespace {

// The lines of the first card, unfolded, each ended with "\n"; VERSION is left out.
std::string FirstCard(const std::string& text, size_t piece = 1 << 16)
{
    Reader reader(SourceOf(text, piece));
    Card card;
    if (!reader.Next(&card))
        return "no card: " + reader.ErrorText();
    std::string lines;
    for (size_t i = 0; i < card.Count(); ++i)
        if (!EqualsNoCase(card.At(i).name, "VERSION"))
            lines.append(card.At(i).whole).append("\n");
    return lines;
}

std::string Of21(const std::string& lines)
{
    return FirstCard(CardOf(lines, "2.1"));
}

std::string Of30(const std::string& lines)
{
    return FirstCard(CardOf(lines, "3.0"));
}

TEST(VCardReader, TakesLinesApart)
{
    Reader reader(SourceOf(CardOf("item1.TEL;TYPE=work;PREF=1:+1 2")));
    Card card;
    ASSERT_TRUE(reader.Next(&card));
    ASSERT_EQ(card.Count(), 2u);
    const Card::Line line = card.At(1);
    EXPECT_EQ(line.group, "item1");
    EXPECT_EQ(line.name, "TEL");
    EXPECT_EQ(line.parameters, ";TYPE=work;PREF=1");
    EXPECT_EQ(line.value, "+1 2");
    EXPECT_FALSE(reader.Next(&card));
    EXPECT_EQ(reader.Unreadable(), 0u);
}

TEST(VCardReader, ReadsCardsWithAnyLineEnd)
{
    const std::string text = CardOf("FN:One") + "\n" + CardOf("FN:Two", "3.0") + CardOf("FN:Three", "2.1");
    for (const char* end : {"\n", "\r\n", "\r"}) {
        std::string file = "\xEF\xBB\xBF";
        for (const char character : text)
            file += character == '\n' ? end : std::string(1, character);
        for (const size_t piece : {size_t{1}, size_t{7}, size_t{100'000}}) {
            const ReadCards read = ReadAll(file, piece);
            ASSERT_EQ(read.contacts.size(), 3u);
            EXPECT_EQ(read.contacts[2][Field::FileAs], "Three");
            EXPECT_EQ(read.unreadable, 0u);
        }
    }
}

TEST(VCardReader, Unfolds)
{
    EXPECT_EQ(FirstCard(CardOf("NOTE:one\r\n  two\r\n\tthree")), "NOTE:one twothree\n");
    // Within a character, at the colon and within the name.
    EXPECT_EQ(FirstCard(CardOf("FN:J\xC3\r\n \xBCrgen \xF0\x9F\r\n \x98\r\n \x80")),
              "FN:J\xC3\xBCrgen \xF0\x9F\x98\x80\n");
    EXPECT_EQ(FirstCard(CardOf("NO\n TE\n :x")), "NOTE:x\n");
}

TEST(VCardReader, KeepsTheBlankAtAFoldOfVersion21)
{
    EXPECT_EQ(Of21("NOTE:one\n two"), "NOTE:one two\n");
    EXPECT_EQ(Of30("NOTE:one\n two"), "NOTE:onetwo\n");
}

TEST(VCardReader, DecodesQuotedPrintable)
{
    EXPECT_EQ(Of21("FN;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:J=C3=BCrgen"), "FN:J\xC3\xBCrgen\n");
    EXPECT_EQ(Of21("N;ENCODING=QUOTED-PRINTABLE;CHARSET=ISO-8859-1:M=FCller;J=FCrgen"),
              "N:M\xC3\xBCller;J\xC3\xBCrgen\n");
    EXPECT_EQ(Of21("NOTE;QUOTED-PRINTABLE:a=0D=0Ab=0Ac, d"), "NOTE:a\\nb\\nc\\, d\n");
    EXPECT_EQ(Of21("X-A;ENCODING=QUOTED-PRINTABLE:a=0Ab, c"), "X-A:a\\nb, c\n");
    EXPECT_EQ(Of21("X-A;ENCODING=QUOTED-PRINTABLE:a=00b=0Dc"), "X-A:ab\\nc\n") << "a NUL is no text";
}

TEST(VCardReader, JoinsSoftLineBreaks)
{
    EXPECT_EQ(Of21("NOTE;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:J=C3=\n=BCr=\ngen=3D=\n\nFN:x"),
              "NOTE:J\xC3\xBCrgen=\nFN:x\n");
    EXPECT_EQ(Of21("NOTE:1+1=\nFN:x"), "NOTE:1+1=\nFN:x\n")
        << "a line that is not encoded ends where it ends";
    EXPECT_EQ(Of21("FN:x\nNOTE;QUOTED-PRINTABLE:a="), "FN:x\nNOTE:a\n") << "the card ends first";
    EXPECT_EQ(Of21("NOTE;QUOTED-PRINTABLE:a=\n b\nFN:x"), "NOTE:a b\nFN:x\n") << "the blank is the text's";
}

TEST(VCardReader, TakesVersion21sWordsForTypes)
{
    EXPECT_EQ(Of21("TEL;HOME;VOICE;PREF:1"), "TEL;TYPE=HOME,VOICE;PREF=1:1\n");
    EXPECT_EQ(Of21("TEL;CELL;X-A=b:1"), "TEL;TYPE=CELL;X-A=b:1\n");
    EXPECT_EQ(Of30("TEL;TYPE=work,pref:1"), "TEL;TYPE=work;PREF=1:1\n");
    EXPECT_EQ(Of30("TEL;type=WORK;type=VOICE:1"), "TEL;type=WORK;type=VOICE:1\n")
        << "is as version 4.0 writes it";
}

TEST(VCardReader, TakesVersion21sEscapes)
{
    EXPECT_EQ(Of21(R"(ORG:A\;B;C\D, Ltd)"), R"(ORG:A\;B;C\\D\, Ltd)"
                                            "\n");
    EXPECT_EQ(Of21("NOTE:a; b"), "NOTE:a\\; b\n");
    EXPECT_EQ(Of21(R"(NOTE:a\:b\,c\)"), R"(NOTE:a:b\,c\\)"
                                        "\n");
    EXPECT_EQ(Of21(R"(X-PATH:C:\new)"), R"(X-PATH:C:\new)"
                                        "\n");
}

TEST(VCardReader, MakesPicturesAddresses)
{
    EXPECT_EQ(Of30("PHOTO;ENCODING=b;TYPE=JPEG:aGk=\n  aGk="), "PHOTO:data:image/jpeg;base64,aGk=aGk=\n");
    EXPECT_EQ(Of21("PHOTO;ENCODING=BASE64;PNG:\n  aGk=\n  aGk=\n\nFN:x"),
              "PHOTO:data:image/png;base64,aGk=aGk=\nFN:x\n");
    EXPECT_EQ(Of21("LOGO;GIF;BASE64:aGk\naGk=\nFN:x"), "LOGO:data:image/gif;base64,aGkaGk=\nFN:x\n")
        << "not indented";
    EXPECT_EQ(Of30("KEY;ENCODING=b;VALUE=binary:aGk="), "KEY:data:application/octet-stream;base64,aGk=\n");
    EXPECT_EQ(Of30("PHOTO;VALUE=uri:http://a/b,c"), "PHOTO;VALUE=uri:http://a/b,c\n");
}

TEST(VCardReader, ReadsTextsInOldCharacterSets)
{
    EXPECT_EQ(Of21("FN;CHARSET=iso-8859-7:\xC1\xE8"), "FN:\xCE\x91\xCE\xB8\n");
    EXPECT_EQ(Of30("FN:J\xFCrgen"), "FN:J\xC3\xBCrgen\n");
}

TEST(VCardReader, LeavesVersion40AsItIs)
{
    const std::string lines = "item1.X-B;X=\"a;b:c\";Y=^n^^:C:\\d\\,e\nBDAY:1985-04-15\nTEL;TYPE=pref:1\n";
    EXPECT_EQ(FirstCard(CardOf(lines)), lines);
}

TEST(VCardReader, KeepsAnAgentsCardInItsLine)
{
    EXPECT_EQ(Of21("AGENT:\nBEGIN:VCARD\nVERSION:2.1\nFN:Agent, A\nEND:VCARD\nFN:x"),
              "AGENT:BEGIN:VCARD\\nVERSION:2.1\\nFN:Agent\\, A\\nEND:VCARD\nFN:x\n");
}

struct Broken {
    std::string text;
    size_t line;
    size_t readable;
};

void ExpectBroken(const Broken& broken, const char* why)
{
    for (const size_t piece : {size_t{1}, size_t{64}}) {
        const ReadCards read = ReadAll(broken.text, piece);
        EXPECT_EQ(read.unreadable, 1u) << why;
        EXPECT_EQ(read.errorLine, broken.line) << why << ": " << read.errorText;
        EXPECT_FALSE(read.errorText.empty()) << why;
        EXPECT_EQ(read.contacts.size(), broken.readable) << why;
    }
}

TEST(VCardReader, CountsWhatItCannotReadAndNamesTheLine)
{
    const std::string good = CardOf("FN:Good"); // four lines
    ExpectBroken({good + CardOf("FN:x\nno colon here") + good, 8, 2}, "a line without a colon");
    ExpectBroken({good + "BEGIN:VCARD\nVERSION:4.0\nFN:x\n" + good, 8, 2}, "no end");
    ExpectBroken({good + "BEGIN:VCARD\nVERSION:4.0\nFN:cut o", 7, 1}, "the file is truncated");
    ExpectBroken({good + "FN:x\nEND:VCARD\n" + good, 5, 2}, "no beginning");
    ExpectBroken({good + CardOf(std::string("FN:a\0b", 6)) + good, 7, 2}, "a NUL byte");
    ExpectBroken({good + CardOf("FN:x", "5.0") + good, 5, 2}, "an unknown version");
    ExpectBroken({good + CardOf("NOTE:nobody") + good, 5, 2}, "nobody");
    ExpectBroken({good + CardOf("\xC3\xA4:x\nFN:y"), 7, 1}, "a name with an umlaut");
    ExpectBroken({"Just some text\nin two lines\n", 1, 0}, "no vCard");
}

TEST(VCardReader, CountsABinaryFileAsOne)
{
    std::string bytes;
    for (unsigned i = 0; i < 3'000'000; ++i)
        bytes += static_cast<char>(i * 2654435761u >> 24);
    const ReadCards read = ReadAll(bytes);
    EXPECT_EQ(read.contacts.size(), 0u);
    EXPECT_EQ(read.unreadable, 1u);
    EXPECT_EQ(read.errorLine, 1u);
}

TEST(VCardReader, PassesOverACardThatIsTooLarge)
{
    std::string huge = "BEGIN:VCARD\nFN:Huge\n";
    for (size_t size = 0; size <= Reader::kLargestCard; size += 1'000'000)
        huge += "NOTE:" + std::string(1'000'000, 'x') + "\n";
    const ReadCards read = ReadAll(CardOf("FN:a") + huge + "END:VCARD\n" + CardOf("FN:b"));
    EXPECT_EQ(read.contacts.size(), 2u);
    EXPECT_EQ(read.unreadable, 1u);
}

TEST(VCardReader, ReadsTheCardAfterOneThatIsTooLarge)
{
    // The first lacks its end, the second is too large within its agent's card.
    const std::string large = "NOTE:" + std::string(Reader::kLargestCard, 'x') + "\n";
    const ReadCards read =
        ReadAll("BEGIN:VCARD\nFN:a\n" + large + "BEGIN:VCARD\nFN:b\nAGENT:\nBEGIN:VCARD\n" + large +
                "END:VCARD\n" + CardOf("FN:c"));
    EXPECT_EQ(read.unreadable, 2u);
    EXPECT_EQ(read.errorLine, 3u);
    ASSERT_EQ(read.contacts.size(), 1u);
    EXPECT_EQ(read.contacts[0][Field::FileAs], "c");
}

// Each line costs memory, however short it is.
TEST(VCardReader, PassesOverACardOfTooManyLines)
{
    std::string lines;
    for (int i = 0; i < 100'000; ++i)
        lines += "X:\n";
    const ReadCards read = ReadAll(CardOf("FN:a\n" + lines) + CardOf("FN:b"));
    EXPECT_EQ(read.unreadable, 1u);
    EXPECT_EQ(read.contacts.size(), 1u);
}

// Foldings after which each line could be one that goes on.
TEST(VCardReader, TakesNoLongerForOddFoldings)
{
    std::string folded = "X-A";
    for (int i = 0; i < 1'000'000; ++i)
        folded += "\n =";
    EXPECT_EQ(ReadAll(CardOf(folded)).unreadable, 1u);
    EXPECT_EQ(ReadAll(CardOf("FN:x\n" + folded + ":")).unreadable, 1u);
}

TEST(VCardReader, TakesEachCardsVersionForItself)
{
    const std::string folded = "NOTE:a\n b";
    Reader reader(SourceOf(CardOf(folded, "2.1") + "BEGIN:VCARD\n" + folded + "\nEND:VCARD\n" +
                           CardOf(folded, " 2.1 ") + CardOf("FN:x", "9") + CardOf(folded, "3.0")));
    Card card;
    for (const char* expected : {"NOTE:a b", "NOTE:ab", "NOTE:a b", "NOTE:ab"}) {
        ASSERT_TRUE(reader.Next(&card));
        EXPECT_EQ(card.At(card.Count() - 1).whole, expected);
    }
    EXPECT_FALSE(reader.Next(&card));
    EXPECT_EQ(reader.Unreadable(), 1u);
}

TEST(VCardReader, TakesWordsInAnyCaseAndBlanksBehindThem)
{
    EXPECT_EQ(FirstCard("begin:vcard \nversion:4.0\nfn:x\nEnd:vCard\t\n"), "fn:x\n");
    EXPECT_EQ(FirstCard("BEGIN:VCARD\nFN:no version\nEND:VCARD"), "FN:no version\n");
}

} // namespace

} // namespace vcard
