// What becomes of a card's own lines when a person changes the fields.
#include <gtest/gtest.h>

#include "support/cards.h"
#include "formats/vcard/edit.h"

namespace vcard {

namespace {

std::string LinesAfter(const std::string& card, Field field, const std::string& text)
{
    const Contact before = ContactOf(card);
    Contact after = before;
    after[field] = text;
    FollowEdit(before, &after);
    return LinesOf(after);
}

TEST(VCardEdit, OfNothingChangesNothing)
{
    const Contact before = ContactOf("FN:Dr. J\nN:Doe;Jane;Q;;\nTEL;TYPE=voice:1\nX-A:b");
    Contact after = before;
    FollowEdit(before, &after);
    EXPECT_EQ(after, before);
}

TEST(VCardEdit, OfANameKeepsItsOtherParts)
{
    EXPECT_EQ(LinesAfter("FN:Dr. Jane Doe\nN:Doe;Jane;Q;Dr.;PhD", Field::LastName, "Smith"),
              "FN:Jane Smith\nX-FILE-AS:Doe\\, Jane\nN:Smith;Jane;Q;Dr.;PhD\n");
}

TEST(VCardEdit, OfANameCompletesIt)
{
    EXPECT_EQ(LinesAfter("FN:Jane Doe\nN;LANGUAGE=de:Doe;Jane", Field::LastName, "Smith"),
              "FN:Jane Smith\nX-FILE-AS:Doe\\, Jane\nN;LANGUAGE=de:Smith;Jane;;;\n");
    EXPECT_EQ(LinesAfter("FN:x\nN:a;b;;;\nN;ALTID=1:c;d;;;", Field::LastName, "e"),
              "FN:b e\nX-FILE-AS:a\\, b\nN:e;b;;;\nN;ALTID=1:c;d;;;\n");
}

TEST(VCardEdit, OfFileAsKeepsTheFormattedName)
{
    EXPECT_EQ(LinesAfter("FN:Dr. Jane Doe\nN:Doe;Jane;;;", Field::FileAs, "Sister"),
              "FN:Dr. Jane Doe\nX-FILE-AS:Sister\nN:Doe;Jane;;;\n");
    EXPECT_EQ(LinesAfter("FN;LANGUAGE=en:Acme", Field::FileAs, "Acme Inc."), "FN:Acme Inc.\n");
}

TEST(VCardEdit, OfAFieldKeepsWhatStandsBeforeTheValue)
{
    EXPECT_EQ(LinesAfter("FN:x\ng.TITLE;LANGUAGE=en:Old", Field::JobTitle, "New"),
              "FN:x\ng.TITLE;LANGUAGE=en:New\n");
    EXPECT_EQ(LinesAfter("FN:x\nADR;TYPE=home:;;Elm;Town;;;", Field::Address, "Oak\nCity"),
              "FN:x\nADR;TYPE=home:;;Oak\\nCity;;;;\n");
    EXPECT_EQ(LinesAfter("FN:x\nORG:Old;Sales", Field::Company, "New"), "FN:x\nORG:New\n");
}

TEST(VCardEdit, DropsWhatSpeaksOfTheOldText)
{
    EXPECT_EQ(LinesAfter("FN:x\nADR;LABEL=\"Elm\":;;Elm;Town;;;", Field::Address, "Oak"),
              "FN:x\nADR:;;Oak;;;;\n");
    EXPECT_EQ(LinesAfter("FN:x\nBDAY:19850415T10", Field::Birthday, "1990-01-02"), "FN:x\nBDAY:19900102\n");
    EXPECT_EQ(LinesAfter("FN:x\nTITLE;LANGUAGE=en:Old", Field::JobTitle, ""), "FN:x\n");
    EXPECT_EQ(LinesAfter("FN:x\nTEL;TYPE=voice:1\nTEL;PREF=1:2", Field::Phones, "2\n3"),
              "FN:x\nTEL;PREF=1:2\nTEL:3\n");
}

TEST(VCardEdit, LeavesTheLinesOfOtherLanguages)
{
    EXPECT_EQ(LinesAfter("FN:x\nTITLE:Head\nTITLE;LANGUAGE=de:Leiterin", Field::JobTitle, "Boss"),
              "FN:x\nTITLE:Boss\nTITLE;LANGUAGE=de:Leiterin\n");
}

} // namespace

} // namespace vcard
