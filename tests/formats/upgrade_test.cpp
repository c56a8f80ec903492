// Lines of the older versions in the form of version 4.0.
#include <gtest/gtest.h>

#include "support/cards.h"

namespace vcard {

namespace {

// The card's lines as they are read, VERSION left out.
std::string Upgraded(const std::string& lines, const std::string& version)
{
    Reader reader(SourceOf(CardOf(lines, version)));
    Card card;
    if (!reader.Next(&card))
        return "no card: " + reader.ErrorText();
    std::string all;
    for (size_t i = 0; i < card.Count(); ++i)
        if (!EqualsNoCase(card.At(i).name, "VERSION"))
            all.append(all.empty() ? "" : "\n").append(card.At(i).whole);
    return all;
}

TEST(VCardUpgrade, MakesAPlaceAnAddress)
{
    EXPECT_EQ(Upgraded("GEO:37.386013;-122.082932", "3.0"), "GEO:geo:37.386013,-122.082932");
    EXPECT_EQ(Upgraded("g.GEO;X-A=b:+90;-180.000", "2.1"), "g.GEO;X-A=b:geo:90,-180.000");
    EXPECT_EQ(Upgraded("GEO:0;0", "3.0"), "GEO:geo:0,0");
}

TEST(VCardUpgrade, LeavesAPlaceThatIsNoneAsItIs)
{
    for (const char* line :
         {"GEO:37.24,-17.87", "GEO:91;0", "GEO:0;181", "GEO:1;", "GEO:;1", "GEO:1.;2", "GEO:x;y", "GEO:1;2;3",
          "GEO:999999999999;1", "GEO:1e1;2", "GEO:--1;2", "GEO:geo:1,2"})
        EXPECT_EQ(Upgraded(line, "3.0"), line);
    EXPECT_EQ(Upgraded("GEO:37.24,-17.87", "2.1"), "GEO:37.24,-17.87");
    EXPECT_EQ(Upgraded("GEO:1;2", "4.0"), "GEO:1;2");
}

TEST(VCardUpgrade, MakesAnAgentsAddressARelation)
{
    EXPECT_EQ(Upgraded("AGENT;VALUE=uri:CID:j@host", "3.0"), "RELATED;TYPE=agent:CID:j@host");
    EXPECT_EQ(Upgraded("g.AGENT;VALUE=URL;TYPE=work;X-A=b:http://a/b", "2.1"),
              "g.RELATED;TYPE=work,agent;X-A=b:http://a/b");
}

TEST(VCardUpgrade, KeepsAnAgentsWholeCard)
{
    const char* line = R"(AGENT:BEGIN:VCARD\nFN:Susan\, A\nEND:VCARD\n)";
    EXPECT_EQ(Upgraded(line, "3.0"), line);
    const std::string nested = "AGENT:\nBEGIN:VCARD\nVERSION:2.1\nAGENT:\nBEGIN:VCARD\nFN:b\nEND:VCARD\n"
                               "FN:a\nEND:VCARD\nFN:x";
    EXPECT_EQ(Upgraded(nested, "2.1"),
              R"(AGENT:BEGIN:VCARD\nVERSION:2.1\nAGENT:\nBEGIN:VCARD\nFN:b\nEND:VCARD)"
              R"(\nFN:a\nEND:VCARD)"
              "\nFN:x");
}

TEST(VCardUpgrade, PutsALabelToItsAddress)
{
    EXPECT_EQ(
        Upgraded("LABEL;TYPE=home:Elm 1\\n\"Tower\" ^\\, USA\nADR;TYPE=WORK:;;w;;;;\nADR;TYPE=HOME:;;h;;;;",
                 "3.0"),
        "ADR;TYPE=WORK:;;w;;;;\nADR;TYPE=HOME;LABEL=\"Elm 1^n^'Tower^' ^^, USA\":;;h;;;;");
    EXPECT_EQ(Upgraded("ADR;HOME:;;a;;;;\nADR;HOME:;;b;;;;\nLABEL;HOME:A\nLABEL;HOME:B", "2.1"),
              "ADR;TYPE=HOME;LABEL=\"A\":;;a;;;;\nADR;TYPE=HOME;LABEL=\"B\":;;b;;;;");
    EXPECT_EQ(Upgraded("ADR:;;Stra\xC3\x9F"
                       "e;;;;\nLABEL;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:Stra=C3=9Fe=0D=0AOrt",
                       "2.1"),
              "ADR;LABEL=\"Stra\xC3\x9F"
              "e^nOrt\":;;Stra\xC3\x9F"
              "e;;;;");
}

TEST(VCardUpgrade, TellsAddressesByTheirGroup)
{
    EXPECT_EQ(Upgraded("a.ADR:;;a;;;;\nADR:;;b;;;;\nc.ADR:;;c;;;;\nc.LABEL:C\nLABEL:B", "3.0"),
              "a.ADR:;;a;;;;\nADR;LABEL=\"B\":;;b;;;;\nc.ADR;LABEL=\"C\":;;c;;;;");
}

TEST(VCardUpgrade, MakesALabelWithoutItsAddressOne)
{
    EXPECT_EQ(Upgraded("g.LABEL;TYPE=home;LANGUAGE=en:Elm 1\nADR;TYPE=home:;;h;;;;", "3.0"),
              "g.ADR;TYPE=home;LANGUAGE=en;LABEL=\"Elm 1\":;;;;;;\nADR;TYPE=home:;;h;;;;");
    EXPECT_EQ(Upgraded("ADR;TYPE=home:;;h;;;;\nLABEL;TYPE=home:A\nLABEL;TYPE=home:B", "3.0"),
              "ADR;TYPE=home;LABEL=\"A\":;;h;;;;\nADR;TYPE=home;LABEL=\"B\":;;;;;;");
    EXPECT_EQ(ContactOf("FN:x\nLABEL:Elm 1\\nTown", "3.0")[Field::Address], "Elm 1\nTown");
    EXPECT_EQ(Upgraded("ADR:;;h;;;;\nLABEL:A", "4.0"), "ADR:;;h;;;;\nLABEL:A");
}

TEST(VCardUpgrade, FindsTheLabelsOfEachCardAnew)
{
    const ReadCards read = ReadAll(CardOf("FN:a\nLABEL:A", "3.0") + CardOf("FN:b\nLABEL:B"));
    ASSERT_EQ(read.contacts.size(), 2u);
    EXPECT_EQ(read.contacts[0][Field::Address], "A");
    EXPECT_EQ(read.contacts[1][Field::Extra], "LABEL:B");
}

TEST(VCardUpgrade, WritesDatesAndTimesInTheShortForm)
{
    EXPECT_EQ(Upgraded("BDAY:1985-04-15", "3.0"), "BDAY:19850415");
    EXPECT_EQ(Upgraded("BDAY;VALUE=date-time:1985-04-15T10:22:00-08:00", "3.0"), "BDAY:19850415T102200-0800");
    EXPECT_EQ(Upgraded("REV:1995-10-31T22:27:10Z", "3.0"), "REV:19951031T222710Z");
    EXPECT_EQ(Upgraded("BDAY;VALUE=text:circa 1800", "3.0"), "BDAY;VALUE=text:circa 1800");
    EXPECT_EQ(Upgraded("X-DAY;VALUE=date:1985-04-15", "3.0"), "X-DAY;VALUE=date:1985-04-15");
}

TEST(VCardUpgrade, KeepsTheKindOfBytesThatItDoesNotKnow)
{
    EXPECT_EQ(Upgraded("X-CARD;TYPE=JPEG;ENCODING=b:aGk=", "3.0"),
              "X-CARD;TYPE=JPEG:data:application/octet-stream;base64,aGk=");
    EXPECT_EQ(Upgraded("KEY;X509;ENCODING=BASE64:aGk=", "2.1"),
              "KEY;TYPE=X509:data:application/octet-stream;base64,aGk=");
    EXPECT_EQ(Upgraded("KEY;PGP;BASE64:aGk=", "2.1"), "KEY:data:application/pgp-keys;base64,aGk=");
    EXPECT_EQ(Upgraded("PHOTO;TYPE=image/png,HOME;ENCODING=b:aGk=", "3.0"),
              "PHOTO;TYPE=HOME:data:image/png;base64,aGk=");
    EXPECT_EQ(Upgraded("SOUND;WAVE;BASE64:aGk=", "2.1"), "SOUND:data:audio/wave;base64,aGk=");
    EXPECT_EQ(Upgraded("SOUND;ENCODING=b:aGk=", "3.0"), "SOUND:data:audio/basic;base64,aGk=");
    EXPECT_EQ(Upgraded("PHOTO;TYPE=\"a;b\";ENCODING=b:aGk=", "3.0"),
              "PHOTO;TYPE=\"a;b\":data:application/octet-stream;base64,aGk=");
}

TEST(VCardUpgrade, TellsAPictureWithoutAKindByItsBytes)
{
    EXPECT_EQ(Upgraded("PHOTO;ENCODING=b:iVBORw0KGgo=", "3.0"), "PHOTO:data:image/png;base64,iVBORw0KGgo=");
    EXPECT_EQ(Upgraded("LOGO;BASE64:\n R0lGODlh", "2.1"), "LOGO:data:image/gif;base64,R0lGODlh");
    EXPECT_EQ(Upgraded("PHOTO;ENCODING=b:/9j/4A==", "3.0"), "PHOTO:data:image/jpeg;base64,/9j/4A==");
}

TEST(VCardUpgrade, ReadsWordsInBase64)
{
    EXPECT_EQ(Upgraded("FN;ENCODING=BASE64;CHARSET=ISO-8859-1:Svxy\n Z2Vu", "2.1"), "FN:J\xC3\xBCrgen");
    EXPECT_EQ(Upgraded("N;BASE64:TTtBLEI=", "2.1"), "N:M;A\\,B");
    EXPECT_EQ(Upgraded("NOTE;ENCODING=b:no base!", "3.0"), "NOTE:no base!");
}

TEST(VCardUpgrade, KeepsAnEncodingThatItDoesNotKnow)
{
    EXPECT_EQ(Upgraded("X-A;ENCODING=x-zip;B=c:data", "3.0"), "X-A;ENCODING=x-zip;B=c:data");
    EXPECT_EQ(Upgraded("X-A;ENCODING=8BIT;B=c:data", "2.1"), "X-A;B=c:data");
    EXPECT_EQ(Upgraded("X-A;8bit:data", "2.1"), "X-A:data");
    EXPECT_EQ(Upgraded("X-A;B:data", "2.1"), "X-A;TYPE=B:data") << "the letter alone is no encoding there";
}

TEST(VCardUpgrade, UndoesEncodingsThatVersion40DoesNotHave)
{
    EXPECT_EQ(Upgraded("FN;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:J=C3=\n=BCrgen", "4.0"),
              "FN:J\xC3\xBCrgen");
    EXPECT_EQ(Upgraded("PHOTO;ENCODING=b;TYPE=png:aGk=", "4.0"), "PHOTO:data:image/png;base64,aGk=");
    EXPECT_EQ(Upgraded("TEL;HOME;TYPE=pref;VALUE=URL:J\xFC", "4.0"),
              "TEL;HOME;TYPE=pref;VALUE=URL:J\xC3\xBC");
}

TEST(VCardUpgrade, ReadsOldCharacterSetsInParametersToo)
{
    EXPECT_EQ(Upgraded("TEL;B\xFCro;CHARSET=ISO-8859-1:1", "2.1"), "TEL;TYPE=B\xC3\xBCro:1");
    EXPECT_EQ(Upgraded("X-A;P=\xC1;CHARSET=\"iso-8859-7\":\xC1", "3.0"), "X-A;P=\xCE\x91:\xCE\x91");
    EXPECT_EQ(Upgraded("X-A;P=J\xFC:v", "3.0"), "X-A;P=J\xC3\xBC:v");
}

TEST(VCardUpgrade, NamesAnAddressAsVersion40Does)
{
    EXPECT_EQ(Upgraded("PHOTO;VALUE=URL:http://a/b", "2.1"), "PHOTO;VALUE=uri:http://a/b");
    EXPECT_EQ(Upgraded("PHOTO;VALUE=uri:http://a/b", "3.0"), "PHOTO;VALUE=uri:http://a/b");
}

TEST(VCardUpgrade, EscapesTheWordsOfVersion21)
{
    for (const std::string name : {"FN", "TITLE", "ROLE", "NOTE", "EMAIL", "TEL", "NICKNAME"}) {
        EXPECT_EQ(Upgraded(name + ":a,b", "2.1"), name + R"(:a\,b)");
        EXPECT_EQ(Upgraded(name + ":a;b", "2.1"), name + R"(:a\;b)");
        EXPECT_EQ(Upgraded(name + R"(:a\nb)", "2.1"), name + R"(:a\\nb)");
    }
    EXPECT_EQ(Upgraded("LABEL:a,b", "2.1"), "ADR;LABEL=\"a,b\":;;;;;;");
    EXPECT_EQ(Upgraded(R"(LABEL:C:\new)", "2.1"), R"(ADR;LABEL="C:\new":;;;;;;)");
    for (const char* name : {"N", "ORG", "ADR"})
        EXPECT_EQ(Upgraded(name + std::string(R"(:a,x;b\;c\,d\:e\)"), "2.1"),
                  name + std::string(R"(:a\,x;b\;c\,d:e\\)"))
            << "their parts stay apart";
}

TEST(VCardUpgrade, LeavesWhatIsNoWordsInVersion21)
{
    for (const char* line : {R"(URL:http://a/b,c;d\e)", "X-A:a,b;c", R"(CATEGORIES:a,b\;c)", "UID:a;b"})
        EXPECT_EQ(Upgraded(line, "2.1"), line);
}

TEST(VCardUpgrade, LeavesTheEscapesOfVersion30)
{
    for (const char* line : {R"(NOTE:a\, b\; c\\ d\n)", "NOTE:a, b; c", "N:a,b;c;;;", "TEL;TYPE=home:1,2"})
        EXPECT_EQ(Upgraded(line, "3.0"), line);
}

TEST(VCardUpgrade, KnowsEachEncodingInBothForms)
{
    for (const char* plain : {"7BIT", "8BIT", "7bit", "8Bit"}) {
        EXPECT_EQ(Upgraded(std::string("X-A;") + plain + ":=41", "2.1"), "X-A:=41");
        EXPECT_EQ(Upgraded(std::string("X-A;ENCODING=") + plain + ":=41", "3.0"), "X-A:=41");
    }
    for (const char* encoding : {"QUOTED-PRINTABLE", "quoted-printable"}) {
        EXPECT_EQ(Upgraded(std::string("X-A;") + encoding + ":=41", "2.1"), "X-A:A");
        EXPECT_EQ(Upgraded(std::string("X-A;ENCODING=\"") + encoding + "\":=41", "3.0"), "X-A:A");
    }
    EXPECT_EQ(Upgraded("NOTE;Base64:QQ==", "2.1"), "NOTE:A");
    EXPECT_EQ(Upgraded("NOTE;ENCODING=B:QQ==", "3.0"), "NOTE:A");
    EXPECT_EQ(Upgraded("NOTE;ENCODING=base64:QQ==", "3.0"), "NOTE:A");
}

TEST(VCardUpgrade, TakesQuotesOffOnlyInPairs)
{
    EXPECT_EQ(Upgraded("X-A;CHARSET=\"iso-8859-7x:\xC1", "2.1"), "X-A:\xC3\x81") << "no set that is known";
    EXPECT_EQ(Upgraded("X-A;CHARSET=\":\xC1", "2.1"), "X-A:\xC3\x81");
    EXPECT_EQ(Upgraded("X-A;CHARSET=\"\":\xC1", "2.1"), "X-A:\xC3\x81");
}

TEST(VCardUpgrade, KeepsLineEndsThatAnEncodingBrings)
{
    EXPECT_EQ(Upgraded("NOTE;QUOTED-PRINTABLE:a=0D=0Ab=0Dc=0Ad=0A=0De=00f=0D", "2.1"),
              R"(NOTE:a\nb\nc\nd\n\nef\n)");
    EXPECT_EQ(Upgraded("NOTE;ENCODING=b:YQ0KYg==", "3.0"), R"(NOTE:a\nb)");
    EXPECT_EQ(Upgraded("X-A;QUOTED-PRINTABLE:a=0Ab", "2.1"), R"(X-A:a\nb)");
}

// Many programs name a set and write UTF-8 all the same.
TEST(VCardUpgrade, BelievesTheBytesOfVersion30MoreThanTheName)
{
    EXPECT_EQ(Upgraded("FN;CHARSET=ISO-8859-1:J\xC3\xBCrgen", "3.0"), "FN:J\xC3\xBCrgen");
    EXPECT_EQ(Upgraded("FN;CHARSET=ISO-8859-1:J\xFCrgen", "3.0"), "FN:J\xC3\xBCrgen");
    EXPECT_EQ(Upgraded("FN;CHARSET=ISO-8859-1:\xC3\xBC", "2.1"), "FN:\xC3\x83\xC2\xBC");
    EXPECT_EQ(Upgraded("FN;CHARSET=UTF-8:J\xC3\xBC", "4.0"), "FN:J\xC3\xBC");
}

TEST(VCardUpgrade, NamesNoTypeThatADateSaysByItself)
{
    EXPECT_EQ(Upgraded("BDAY;VALUE=date:1985-04-15", "3.0"), "BDAY:19850415");
    EXPECT_EQ(Upgraded("REV;VALUE=TIMESTAMP:1995-10-31T22:27:10Z", "3.0"), "REV:19951031T222710Z");
    EXPECT_EQ(Upgraded("ANNIVERSARY;VALUE=date:2009-08-08", "3.0"), "ANNIVERSARY:20090808");
    EXPECT_EQ(Upgraded("ANNIVERSARY:2009-08-08", "2.1"), "ANNIVERSARY:20090808");
    EXPECT_EQ(Upgraded("BDAY:1985-04-15", "4.0"), "BDAY:1985-04-15");
    EXPECT_EQ(Upgraded("X-DAY;TYPE=pref;VALUE=date:1985-04-15", "3.0"), "X-DAY;PREF=1;VALUE=date:1985-04-15");
}

TEST(VCardUpgrade, KnowsEachNameOfAnAgentsAddress)
{
    for (const char* type : {"uri", "URL", "CID", "content-id"})
        EXPECT_EQ(Upgraded(std::string("AGENT;VALUE=") + type + ":x", "2.1"), "RELATED;TYPE=agent:x") << type;
    EXPECT_EQ(Upgraded("AGENT;VALUE=text:x", "3.0"), "AGENT;VALUE=text:x");
    EXPECT_EQ(Upgraded("AGENT;VALUE=uri:x", "4.0"), "AGENT;VALUE=uri:x");
}

TEST(VCardUpgrade, MakesAPreferenceOfAType)
{
    EXPECT_EQ(Upgraded("TEL;TYPE=home,PREF,cell:1", "3.0"), "TEL;TYPE=home,cell;PREF=1:1");
    EXPECT_EQ(Upgraded("TEL;PREF;HOME;CELL:1", "2.1"), "TEL;TYPE=HOME,CELL;PREF=1:1");
    EXPECT_EQ(Upgraded("g.EMAIL;TYPE=pref;A=b;C=d:x", "3.0"), "g.EMAIL;PREF=1;A=b;C=d:x");
    EXPECT_EQ(Upgraded("TEL;TYPE=preferred;A=pref:1", "3.0"), "TEL;TYPE=preferred;A=pref:1");
}

TEST(VCardUpgrade, NamesBytesByTheirMediaType)
{
    for (const char* type : {"image/svg+xml", "image/x-icon", "image/vnd.ms", "audio/3gpp"})
        EXPECT_EQ(Upgraded(std::string("PHOTO;TYPE=") + type + ";VALUE=binary;ENCODING=b:aGk=", "3.0"),
                  std::string("PHOTO:data:") + type + ";base64,aGk=");
    EXPECT_EQ(Upgraded("LOGO;TYPE=GIF;ENCODING=b:aGk=", "3.0"), "LOGO:data:image/gif;base64,aGk=");
    EXPECT_EQ(Upgraded("KEY;TYPE=PGP;ENCODING=b:aGk=", "3.0"), "KEY:data:application/pgp-keys;base64,aGk=");
    EXPECT_EQ(Upgraded("X-A;TYPE=PGP;ENCODING=b:aGk=", "3.0"),
              "X-A;TYPE=PGP:data:application/octet-stream;base64,aGk=");
    EXPECT_EQ(Upgraded("SOUND;TYPE=\"a;b\";ENCODING=b:aGk=", "3.0"),
              "SOUND;TYPE=\"a;b\":data:application/octet-stream;base64,aGk=");
    EXPECT_EQ(Upgraded("PHOTO;ENCODING=b: \tR0lG\t OD", "3.0"), "PHOTO:data:image/gif;base64,R0lGOD");
    EXPECT_EQ(Upgraded("PHOTO;ENCODING=b: ", "3.0"), "PHOTO:data:image/jpeg;base64,");
}

TEST(VCardUpgrade, ReadsOldCharacterSetsOfTypesAndValues)
{
    EXPECT_EQ(Upgraded("X-A;VALUE=\xC1;CHARSET=iso-8859-7;TYPE=\xC1:v", "3.0"),
              "X-A;TYPE=\xCE\x91;VALUE=\xCE\x91:v");
}

TEST(VCardUpgrade, TakesNamesInAnyCase)
{
    EXPECT_EQ(Upgraded("adr;type=A-Z:;;a;;;;\nlabel;TYPE=a-z:A", "3.0"), "ADR;type=A-Z;LABEL=\"A\":;;a;;;;");
    EXPECT_EQ(Upgraded("geo:1;2", "3.0"), "geo:geo:1,2");
    EXPECT_EQ(Upgraded("GEO:.5;1", "3.0"), "GEO:.5;1");
    EXPECT_EQ(Upgraded("Fn;Encoding=Quoted-Printable;Charset=Iso-8859-1:=FC", "2.1"), "Fn:\xC3\xBC");
}

TEST(VCardUpgrade, MakesTextOfWhatIsNoBase64)
{
    EXPECT_EQ(LinesOf(ContactOf("FN:x\nLOGO;ENCODING=b:\xAA", "3.0")),
              "FN:x\nLOGO:data:image/jpeg;base64,\xC2\xAA\n");
}

} // namespace

} // namespace vcard
