#include "formats/vcard/contact_reader.h"
#include "formats/vcard/writer.h"

#include <gtest/gtest.h>

#include "support/cards.h"
#include "formats/vcard/contact_names.h"

namespace vcard {

namespace {

TEST(VCardContact, HasTheFieldsOfACard)
{
    const Contact contact =
        ContactOf("FN:Dr. Anna M\xC3\xBCller\nN:M\xC3\xBCller;Anna;;Dr.;\nORG:Acme\\, Ltd;Sales\n"
                  "TITLE:Head\nEMAIL;TYPE=work:anna@example.org\nEMAIL:a@b.example\n"
                  "TEL;TYPE=\"cell,voice\":+49 170 1\nTEL;VALUE=uri;TYPE=work,fax:tel:+49-30-2\n"
                  "ADR:;;Elm St 1;Springfield;IL;12345;USA\nBDAY:19850415\nNOTE:a\\nb");
    EXPECT_EQ(contact[Field::FileAs], "M\xC3\xBCller, Anna");
    EXPECT_EQ(contact[Field::FirstName], "Anna");
    EXPECT_EQ(contact[Field::LastName], "M\xC3\xBCller");
    EXPECT_EQ(contact[Field::Company], "Acme, Ltd");
    EXPECT_EQ(contact[Field::JobTitle], "Head");
    EXPECT_EQ(contact[Field::Emails], "anna@example.org (work)\na@b.example");
    EXPECT_EQ(contact[Field::Phones], "+49 170 1 (mobile)\n+49-30-2 (work, fax)");
    EXPECT_EQ(contact[Field::Address], "Elm St 1\n12345 Springfield\nIL\nUSA");
    EXPECT_EQ(contact[Field::Birthday], "1985-04-15");
    EXPECT_EQ(contact[Field::Note], "a\nb");
}

TEST(VCardContact, IsCalledByTheBestThatThereIs)
{
    EXPECT_EQ(ContactOf("N:Doe;Jane\nFN:Jane D.")[Field::FileAs], "Doe, Jane");
    EXPECT_EQ(ContactOf("N:Doe\nFN:x")[Field::FileAs], "Doe");
    EXPECT_EQ(ContactOf("N:;Jane;;;\nFN:x")[Field::FileAs], "Jane");
    EXPECT_EQ(ContactOf("FN:Acme Hotline\nN:;;;;\nORG:Acme")[Field::FileAs], "Acme Hotline");
    EXPECT_EQ(ContactOf("ORG:Acme;Sales\nTEL:1")[Field::FileAs], "Acme");
    EXPECT_EQ(ContactOf("TEL:1\nEMAIL:a@b")[Field::FileAs], "a@b");
    EXPECT_EQ(ContactOf("TEL:1")[Field::FileAs], "1");
    EXPECT_EQ(ContactOf("FN:x\nX-FILE-AS:Own")[Field::FileAs], "Own");
}

TEST(VCardContact, PassesOverEmptyPhones)
{
    EXPECT_EQ(ContactOf("FN:x\nTEL:\nTEL:1\nTEL;TYPE=work:\nTEL:2\nTEL:")[Field::Phones], "1\n2");
}

TEST(VCardContact, IsReadWithoutARestOfTheOneBefore)
{
    Reader cards(SourceOf(CardOf("FN:One\nFN:Two\nN:a;b;;;\nORG:c\nX-FILE-AS:d\nX-A:b\nTEL:1") +
                          CardOf("FN:Next") + CardOf("X-A:b")));
    ContactReader reader;
    Card card;
    Contact contact;
    ASSERT_TRUE(cards.Next(&card));
    ASSERT_TRUE(reader.Read(card, &contact));
    ASSERT_TRUE(cards.Next(&card));
    ASSERT_TRUE(reader.Read(card, &contact));
    EXPECT_EQ(contact, ContactOf("FN:Next"));
    ASSERT_TRUE(cards.Next(&card));
    EXPECT_FALSE(reader.Read(card, &contact));
}

TEST(VCardContact, TakesALabelForAnAddressWithoutParts)
{
    EXPECT_EQ(ContactOf("FN:x\nADR;LABEL=\"Elm St 1^nSpringfield\":;;;;;;")[Field::Address],
              "Elm St 1\nSpringfield");
    EXPECT_EQ(ContactOf(R"(FN:x
ADR;LABEL="Elm St 1\nSpringfield\, IL":;;;;;;)")[Field::Address],
              "Elm St 1\nSpringfield, IL");
}

TEST(VCardContact, ReadsABirthdayInWords)
{
    EXPECT_EQ(ContactOf("FN:x\nBDAY;VALUE=text:about 1900")[Field::Birthday], "about 1900");
    EXPECT_EQ(ContactOf("FN:x\nBDAY;VALUE=text:19850415")[Field::Birthday], "19850415");
    EXPECT_EQ(ContactOf("FN:x\nBDAY:1985-04-15T00:00:00Z", "3.0")[Field::Birthday], "1985-04-15");
}

TEST(VCardContact, KeepsNothingThatTheFieldsSay)
{
    const Contact contact =
        ContactOf("FN:Jane Doe\nN:Doe;Jane;;;\nORG:Acme\nTITLE:Head\nEMAIL;TYPE=work:j@d\nTEL;TYPE=cell:1\n"
                  "ADR:;;Elm St;;;;\nBDAY:19850415\nNOTE:n");
    EXPECT_EQ(contact[Field::Extra], "");
}

// What is written says the same as what was read, line by line, whatever their order.
void ExpectKept(const std::string& lines)
{
    const Contact contact = ContactOf(lines);
    const std::string written = "\n" + LinesOf(contact);
    size_t count = 0;
    ForEachLine(lines, [&](std::string_view line) {
        ++count;
        EXPECT_NE(written.find("\n" + std::string(line) + "\n"), std::string::npos)
            << line << " is not in" << written;
    });
    EXPECT_EQ(static_cast<size_t>(std::count(written.begin(), written.end(), '\n')), count + 1) << written;
    Contact again = ContactOf(LinesOf(contact));
    EXPECT_EQ(LinesOf(again), LinesOf(contact));
    again[Field::Extra] = contact[Field::Extra]; // in the order in which they were written
    EXPECT_EQ(again, contact);
}

TEST(VCardContact, WritesEverythingBack)
{
    ExpectKept("FN:Jane Doe\nN:Doe;Jane;;;");
    ExpectKept(
        "FN:Dr. Jane Q. Doe\nN:Doe;Jane;Quinn,Rose;Dr.;PhD\nORG:Acme;Sales;East\nTITLE;LANGUAGE=en:Head\n"
        "TITLE;LANGUAGE=de:Leiterin");
    ExpectKept("FN:x\nitem1.TEL;TYPE=cell;PREF=1:+1\nitem1.X-ABLABEL:Boat\nTEL;TYPE=voice:+2\nTEL:+2\nTEL;"
               "VALUE=uri:tel:+3");
    ExpectKept("FN:x\nEMAIL;TYPE=home;PREF=2:a@b\nEMAIL;X-Y=z:c@d");
    ExpectKept("FN:x\nADR;TYPE=home;LABEL=\"a^nb\":p;e;s;l;r;c;country\nADR;TYPE=work:;;other;;;;");
    ExpectKept("FN:x\nBDAY:19850415T102200Z\nANNIVERSARY:20100101\nNOTE:one\nNOTE:two\nUID:urn:uuid:1\nREV:"
               "20200101T000000Z");
    ExpectKept(
        "FN:x\nX-ODD;A=\"b:c;d\",e;F=^n^^:v\\,w;x\\\\y:z\nPHOTO:data:image/png;base64,aGk=\nCATEGORIES:a,b");
    ExpectKept("FN:One\nFN;LANGUAGE=de:Eins\nN:Last;First;;;\nN;ALTID=1:Letzte;Erste;;;");
    ExpectKept("FN:One Two\nN:Two;One;;;\nFN:Zwei");
    ExpectKept("FN:x\nX-FILE-AS:Own order");
    ExpectKept("FN:x\nBDAY;VALUE=text:about 1900\nN:;;;;");
    ExpectKept("FN:x\nADR;LABEL=\"Elm\\nTown\":;;;;;;");
    ExpectKept("FN:x\nTEL:tel:+3");
    ExpectKept("FN:x\nTEL:1 (work)\nEMAIL:a@b (home)");
    ExpectKept("FN:x\ntitle:Head\ng.NOTE:n");
    ExpectKept("FN:x\nORG:;Sales\nTEL:1\\n2");
}

TEST(VCardContact, WritesEveryScriptByteForByte)
{
    for (const char* name :
         {"M\xC3\xBCller", "\xCE\x91\xCE\xB8\xCE\xB7\xCE\xBD\xCE\xAC", "\xE6\x9D\x8E\xE5\xB0\x8F\xE9\xBE\x99",
          "\xF0\x9F\x98\x80\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x91\xA6", "u\xCC\x88",
          "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D"})
        ExpectKept(std::string("FN:") + name + "\nNOTE:" + name + "\nX-A:" + name + "\nN:" + name + ";" +
                   name + ";" + name + ";;");
}

TEST(VCardContact, FoldsLongLinesBetweenCharacters)
{
    Contact contact;
    contact[Field::FileAs] = "x";
    for (int i = 0; i < 60; ++i)
        contact[Field::Note] += i % 3 ? "\xF0\x9F\x98\x80" : "\xC3\xBC";
    std::string card;
    AppendCard(card, contact);
    for (size_t start = 0, end; (end = card.find("\r\n", start)) != std::string::npos; start = end + 2) {
        EXPECT_LE(end - start, 75u);
        const size_t first = card[start] == ' ' ? start + 1 : start;
        EXPECT_NE(static_cast<unsigned char>(card[first]) & 0xC0, 0x80) << "a line begins inside a character";
    }
    EXPECT_EQ(card.find('\n'), card.find("\r\n") + 1);
    EXPECT_EQ(ReadAll(card).contacts.at(0), contact);
}

TEST(VCardContact, FoldsAfter75Bytes)
{
    Contact contact;
    contact[Field::FileAs] = "x";
    for (const size_t length : {size_t{70}, size_t{71}, size_t{144}, size_t{145}}) {
        const std::string note(length, 'n');
        contact[Field::Note] = note;
        std::string card;
        AppendCard(card, contact);
        std::string expected = "NOTE:" + note.substr(0, 70);
        for (size_t place = 70; place < length; place += 74)
            expected += "\r\n " + note.substr(place, 74);
        EXPECT_NE(card.find("\r\n" + expected + "\r\nEND"), std::string::npos) << card;
    }
}

TEST(VCardContact, IsOneLineWhereAFieldIs)
{
    EXPECT_EQ(ContactOf("FN:x\nTITLE:a\\nb")[Field::JobTitle], "a b");
    EXPECT_EQ(ContactOf("FN:a\\nb")[Field::FileAs], "a b");
}

// Contacts as another program may leave them in the store.
TEST(VCardContact, HasAFormattedNameWhateverItLacks)
{
    Contact contact;
    contact[Field::Company] = "Acme";
    EXPECT_EQ(LinesOf(contact), "FN:Acme\nORG:Acme\n");
    contact[Field::Company].clear();
    contact[Field::Note] = "n";
    EXPECT_EQ(LinesOf(contact), "FN:\nNOTE:n\n");
}

TEST(VCardContact, WritesWhatWasTyped)
{
    Contact contact;
    contact[Field::FileAs] = "Doe, Jane";
    contact[Field::FirstName] = "Jane";
    contact[Field::LastName] = "Doe";
    contact[Field::Phones] = "1 (mobile)\n2 (work, fax)\n3 (boat)\n4\n5 (work, boat)";
    contact[Field::Emails] = "a@b (home)";
    contact[Field::Address] = "Elm St 1; left\n12345 Springfield";
    contact[Field::Birthday] = "--04-15";
    EXPECT_EQ(LinesOf(contact),
              "FN:Jane Doe\nN:Doe;Jane;;;\nEMAIL;TYPE=home:a@b\nTEL;TYPE=cell:1\nTEL;TYPE=work,fax:2\n"
              "TEL:3 (boat)\nTEL:4\nTEL:5 (work\\, boat)\nADR:;;Elm St 1\\; left\\n12345 "
              "Springfield;;;;\nBDAY:--0415\n");
    contact[Field::FileAs] = "Sister";
    EXPECT_NE(LinesOf(contact).find("\nX-FILE-AS:Sister\n"), std::string::npos);
}

TEST(VCardContact, WritesNoBrokenCardFromAStrangersLines)
{
    Contact contact;
    contact[Field::FileAs] = "x";
    contact[Field::Extra] =
        "END:VCARD\nno colon\nVERSION:9\nBEGIN:VCARD\nX-GOOD:1\n\nTEL:gone\nX-FILE-AS:not it";
    EXPECT_EQ(LinesOf(contact), "FN:x\nX-GOOD:1\n");
}

// What comes of a card that was written once more.
void ExpectTheSameAgain(const Contact& contact)
{
    std::string card;
    AppendCard(card, contact);
    const ReadCards again = ReadAll(card);
    EXPECT_EQ(again.unreadable, 0u);
    ASSERT_EQ(again.contacts.size(), 1u);
    EXPECT_EQ(again.contacts.front(), contact);
}

TEST(VCardContact, KeepsNoLineOfTheFrame)
{
    const Contact contact = ContactOf("ORG:M\nEND:\nBEGIN:x");
    EXPECT_EQ(contact[Field::Extra], "");
    ExpectTheSameAgain(contact);
}

TEST(VCardContact, KeepsNoPhoneWithoutANumber)
{
    const Contact contact = ContactOf("FN:x\nTEL;X=y:\nEMAIL;PREF=1:");
    EXPECT_EQ(contact[Field::Extra], "");
    ExpectTheSameAgain(contact);
}

TEST(VCardContact, TakesALineThatStandsTwiceOnce)
{
    const Contact contact = ContactOf("N:A;;;;\nN:A;;;;\nNOTE:same\nNOTE:same\nX-FILE-AS:b\nX-FILE-AS:c");
    EXPECT_EQ(LinesOf(contact), "FN:A\nX-FILE-AS:b\nN:A;;;;\nNOTE:same\n");
    ExpectTheSameAgain(contact);
}

// A line that is folded behind "=" goes on only where it is in quoted-printable.
TEST(VCardContact, KeepsAnEqualsSignAtAFold)
{
    for (const char* start :
         {"NOTE;TYPE=NO-QUOTED-PRINTABLE:", "NOTE;QUOTED-PRINTABLE:", "NOTE;X=\"ENCODING=B\":"}) {
        const size_t room = 75 - std::string(start).size();
        const Contact contact = ContactOf("FN:x\n" + (start + std::string(room - 1, 'n')) + "=\n  more");
        EXPECT_EQ(contact[Field::Note], std::string(room - 1, 'n') + "= more");
        ExpectTheSameAgain(contact);
    }
}

} // namespace

} // namespace vcard
