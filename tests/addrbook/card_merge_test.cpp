#include "addrbook/transfer/card_merge.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "addrbook/transfer/reach_merge.h"
#include "support/cards.h"

namespace addrbook {

namespace {

// The contact of one card after another was merged into it, as it would be exported.
std::string Merged(const std::string& stored, const std::string& card)
{
    return vcard::LinesOf(MergedWith(vcard::ContactOf(stored), vcard::ImportedOf(card)));
}

TEST(CardMerge, WhatTheCardLacksStays)
{
    const std::string all =
        "FN:Jane Doe\nN:Doe;Jane;;;\nORG:Acme\nTITLE:Head\nEMAIL:j@d\nTEL:1\nADR:;;Elm;;;;\n"
        "BDAY:19850415\nNOTE:n\nPHOTO:data:image/png;base64,AAAA\nUID:1\nX-A:b\n";
    EXPECT_EQ(Merged(all, "FN:Jane Doe\nUID:1"), all);
    EXPECT_EQ(Merged(all, "FN:Jane Doe\nN:;;;;\nORG:\nTITLE:\nEMAIL:\nTEL:\nADR:;;;;;;\nBDAY:\nNOTE:\nUID:1"),
              all)
        << "an empty value says nothing";
    EXPECT_EQ(vcard::ImportedOf(Merged("FN:x\nUID:1", all)).contact[vcard::Field::Note], "n")
        << "what the contact lacks comes";
}

TEST(CardMerge, WhatTheCardHasTakesTheOldOnesPlace)
{
    EXPECT_EQ(
        Merged(
            "FN:Jane Doe\nN:Doe;Jane;;;\nORG:Acme\nTITLE:Head\nADR:;;Elm;;;;\nBDAY:19850415\nNOTE:n\nUID:1",
            "FN:Jane Roe\nN:Roe;Jane;;;\nORG:B\nTITLE:C\nADR:;;D;;;;\nBDAY:19860101\nNOTE:e\nUID:1"),
        "FN:Jane Roe\nN:Roe;Jane;;;\nORG:B\nTITLE:C\nADR:;;D;;;;\nBDAY:19860101\nNOTE:e\nUID:1\n");
}

TEST(CardMerge, ALineThatTellsOfAReplacedTextGoesWithIt)
{
    EXPECT_EQ(Merged("FN:x\nORG:Acme;Department\nADR;PREF=1:;;Elm;;;;\nUID:1",
                     "FN:x\nORG:New\nADR:;;Oak;;;;\nUID:1"),
              "FN:x\nORG:New\nADR:;;Oak;;;;\nUID:1\n");
    EXPECT_EQ(Merged("FN:x\nORG:Acme;Department\nUID:1", "FN:x\nORG:Acme\nUID:1"),
              "FN:x\nORG:Acme;Department\nUID:1\n")
        << "the card lacks the department";
    EXPECT_EQ(Merged("FN:x\nORG:Acme\nUID:1", "FN:x\nORG:Acme;Department\nUID:1"),
              "FN:x\nORG:Acme;Department\nUID:1\n");
}

TEST(CardMerge, MiddleNamesStayWithNewNames)
{
    EXPECT_EQ(Merged("FN:Dr. Jane Q Doe\nN:Doe;Jane;Q;Dr.;\nUID:1", "FN:Dr. Jane Roe\nN:Roe;Jane;;;\nUID:1"),
              "FN:Dr. Jane Roe\nN:Roe;Jane;Q;Dr.;\nUID:1\n");
    EXPECT_EQ(Merged("FN:Jane Doe\nN:Doe;Jane;;;\nUID:1", "FN:Doe\nN:Roe;;X;;\nUID:1"),
              "FN:Doe\nN:Roe;Jane;X;;\nUID:1\n")
        << "one line of names, with the first name that the card lacks";
}

TEST(CardMerge, TheCardsOwnNameHolds)
{
    EXPECT_EQ(Merged("FN:Old\nUID:1", "FN:New\nUID:1"), "FN:New\nUID:1\n");
    EXPECT_EQ(MergedWith(vcard::ContactOf("FN:Old\nUID:1"),
                         vcard::ImportedOf("FN:New\nUID:1"))[vcard::Field::FileAs],
              "New");
    EXPECT_EQ(Merged("FN:Jane Doe\nN:Doe;Jane;;;\nUID:1", "FN:Janey\nUID:1"),
              "FN:Janey\nN:Doe;Jane;;;\nUID:1\n");
    EXPECT_EQ(Merged("FN:Dr. Jane\nN:Doe;Jane;;;\nUID:1", "FN:Jane Doe\nN:Doe;Jane;;;\nUID:1"),
              "FN:Jane Doe\nN:Doe;Jane;;;\nUID:1\n");
    EXPECT_EQ(Merged("FN:Dr. Jane\nN:Doe;Jane;;;\nUID:1", "N:Doe;Jane;;;\nTEL:1\nUID:1"),
              "FN:Dr. Jane\nN:Doe;Jane;;;\nTEL:1\nUID:1\n")
        << "a card without one";
    EXPECT_EQ(Merged("FN:Dr. Jane\nN:Doe;Jane;;;\nUID:1", "N:Roe;Jane;;;\nUID:1"),
              "FN:Jane Roe\nN:Roe;Jane;;;\nUID:1\n");
    EXPECT_EQ(Merged("FN:Jane Doe\nN:Doe;Jane;;;\nUID:1", "ORG:Acme\nUID:1"),
              "FN:Jane Doe\nN:Doe;Jane;;;\nORG:Acme\nUID:1\n");
}

TEST(CardMerge, FileAsFollowsTheNamesUnlessSomebodyChoseIt)
{
    const auto fileAs = [](const std::string& stored, const std::string& card) {
        return MergedWith(vcard::ContactOf(stored), vcard::ImportedOf(card))[vcard::Field::FileAs];
    };
    const std::string jane = "FN:Jane Doe\nN:Doe;Jane;;;\nUID:1", roe = "FN:Jane Roe\nN:Roe;Jane;;;\nUID:1";
    EXPECT_EQ(fileAs(jane, roe), "Roe, Jane");
    EXPECT_EQ(fileAs(jane + "\nX-FILE-AS:Mum", roe), "Mum");
    EXPECT_EQ(fileAs(jane + "\nX-FILE-AS:Mum", roe + "\nX-FILE-AS:Aunt"), "Aunt");
    EXPECT_EQ(fileAs(jane, roe + "\nX-FILE-AS:Aunt"), "Aunt");
    EXPECT_EQ(fileAs(jane + "\nX-FILE-AS:Mum", roe + "\nX-FILE-AS:"), "Mum");
}

TEST(CardMerge, PhonesAndEmailsAreKeptAndKnownAgain)
{
    const auto phones = [](const std::string& stored, const std::string& card) {
        return MergedReaches(vcard::Property::Phone, stored, card);
    };
    EXPECT_EQ(phones("1\n2 (work)", "3"), "1\n2 (work)\n3");
    EXPECT_EQ(phones("1\n2 (work)", "2\n1 (home)"), "1 (home)\n2 (work)") << "in their order, no kind lost";
    EXPECT_EQ(phones("+49 30 12", "+49-(30)-12 (fax)"), "+49-(30)-12 (fax)");
    EXPECT_EQ(phones("1 (home)\n1 (work)", "1 (work)\n1 (home)"), "1 (home)\n1 (work)");
    EXPECT_EQ(phones("1", "1\n1"), "1\n1");
    EXPECT_EQ(phones("desk", "Desk\ndoor"), "Desk\ndoor") << "without a digit";
    EXPECT_EQ(phones("", "1"), "1");
    EXPECT_EQ(phones("1", ""), "1");
    EXPECT_EQ(MergedReaches(vcard::Property::Email, "A1@b\nc1@d", "a1@B (home)\na2@b"),
              "a1@B (home)\nc1@d\na2@b");
}

TEST(CardMerge, ALineOfAPhoneStaysWithIt)
{
    EXPECT_EQ(Merged("FN:x\nTEL;PREF=1:1\nTEL:2\nUID:1", "FN:x\nTEL:2\nTEL:1\nUID:1"),
              "FN:x\nTEL;PREF=1:1\nTEL:2\nUID:1\n");
    EXPECT_EQ(Merged("FN:x\nTEL;PREF=1:1\nUID:1", "FN:x\nTEL;PREF=2:1\nUID:1"),
              "FN:x\nTEL;PREF=2:1\nUID:1\n");
    EXPECT_EQ(Merged("FN:x\nTEL;PREF=1:1\nUID:1", "FN:x\nTEL;TYPE=work:1\nUID:1"),
              "FN:x\nTEL;TYPE=work:1\nUID:1\n");
    EXPECT_EQ(Merged("FN:x\nTEL:1\nUID:1", "FN:x\nTEL;PREF=1:3\nUID:1"),
              "FN:x\nTEL:1\nTEL;PREF=1:3\nUID:1\n");
}

TEST(CardMerge, LinesOfANameAndItsKindsTakeEachOthersPlace)
{
    EXPECT_EQ(Merged("FN:x\nPHOTO:data:old\nUID:1\nURL:a\nX-A:b",
                     "FN:x\nX-C:d\nPHOTO:data:new\nURL:e\nURL:f\nUID:1"),
              "FN:x\nPHOTO:data:new\nUID:1\nURL:e\nX-A:b\nX-C:d\nURL:f\n");
    EXPECT_EQ(Merged("FN:x\nURL;TYPE=work:a\nURL;TYPE=HOME,work:b\nUID:1",
                     "FN:x\nURL;TYPE=work;TYPE=home,pref:c\nUID:1"),
              "FN:x\nURL;TYPE=work:a\nURL;TYPE=work;TYPE=home,pref:c\nUID:1\n");
    EXPECT_EQ(Merged("FN:x\ng1.X-L:a\ng2.X-L:b\nUID:1", "FN:x\nG2.X-L:c\nUID:1"),
              "FN:x\ng1.X-L:a\nG2.X-L:c\nUID:1\n");
    EXPECT_EQ(Merged("FN:x\nUID:urn:uuid:AB", "FN:x\nUID:ab"), "FN:x\nUID:urn:uuid:AB\n")
        << "it is the same one";
    EXPECT_EQ(Merged("FN:x\nADR;TYPE=home:;;a;;;;\nADR;TYPE=work:;;b;;;;\nUID:1",
                     "FN:x\nADR;TYPE=home:;;a;;;;\nADR;TYPE=work:;;c;;;;\nUID:1"),
              "FN:x\nADR;TYPE=home:;;a;;;;\nADR;TYPE=work:;;c;;;;\nUID:1\n");
}

// A card that comes back as it went out, or as it came.
TEST(CardMerge, AContactsOwnCardChangesNothing)
{
    for (const char* lines :
         {"FN:x\nUID:1",
          "FN:Dr. Jane\nN:Doe;Jane;Q;;\nORG:Acme;D\nTITLE:t\nTITLE:u\nEMAIL;PREF=1:a\nEMAIL:a\nTEL:1\n"
          "TEL;TYPE=work,x:1\nTEL:tel:1\nADR;LABEL=\"a\":;;;;;;\nADR;TYPE=home:;;b;;;;\nBDAY;VALUE=text:c\n"
          "NOTE;LANGUAGE=de:a\\nb\nNOTE:c\nURL:a\nX-B:c\nURL:d\ng.X-A:b\nUID:1\nREV:2",
          "ORG:Acme\nUID:1", "N:;Jane;;;\nUID:1", "FN:a\nFN:b\nN:c;d;;;\nUID:1\nX-FILE-AS:e",
          "TEL:1\nTEL:1\nUID:1", "FN:x\nUID:1\nUID:2", "FN:Acme\nORG:Acme\nUID:1"}) {
        const vcard::Contact stored = vcard::ContactOf(lines);
        EXPECT_EQ(MergedWith(stored, vcard::ImportedOf(lines)), stored) << lines;
        const vcard::Contact back = MergedWith(stored, vcard::ImportedOf(vcard::LinesOf(stored)));
        EXPECT_FALSE(IsChange(stored, back)) << lines << "\n"
                                             << vcard::LinesOf(stored) << vcard::LinesOf(back);
    }
}

TEST(CardMerge, WhoWroteTheCardIsNoChange)
{
    const vcard::Contact stored = vcard::ContactOf("FN:x\nREV:1\nUID:1");
    const auto isChange = [&](const char* lines) {
        return IsChange(stored, MergedWith(stored, vcard::ImportedOf(lines)));
    };
    EXPECT_FALSE(isChange("FN:x\nREV:2\nPRODID:y\nUID:1"));
    EXPECT_TRUE(isChange("FN:x\nREV:2\nX-A:b\nUID:1"));
    EXPECT_TRUE(isChange("FN:y\nUID:1"));
    EXPECT_TRUE(isChange("FN:x\nNOTE:n\nUID:1"));
}

TEST(CardMerge, ANewContactLeavesTheUidToTheOther)
{
    EXPECT_EQ(vcard::LinesOf(AsNew(vcard::ImportedOf("FN:x\nTEL;PREF=1:1\ng.UID:1\nX-A:b"))),
              "FN:x\nTEL;PREF=1:1\nX-A:b\n");
}

TEST(CardMerge, TellsWhichFieldsDiffer)
{
    const vcard::Contact stored =
        vcard::ContactOf("FN:Jane Doe\nN:Doe;Jane;;;\nTEL:1\nX-A:b\nX-C:d\nREV:1\nUID:1");
    const std::string longOne(95, 'a');
    const vcard::Contact merged =
        MergedWith(stored, vcard::ImportedOf("FN:Jane Doe\nN:Doe;Jane;;;\nTEL:2\nORG:Acme\nX-A:" + longOne +
                                             "\xC3\xA4\xC3\xA4\nREV:2\nUID:1"));
    const std::vector<FieldChange> changes = ChangesBetween(stored, merged);
    ASSERT_EQ(changes.size(), 3u);
    EXPECT_STREQ(changes[0].field, L"Company");
    EXPECT_EQ(changes[0].before, "");
    EXPECT_EQ(changes[0].after, "Acme");
    EXPECT_STREQ(changes[1].field, L"Phones");
    EXPECT_EQ(changes[1].before, "1");
    EXPECT_EQ(changes[1].after, "1\n2");
    EXPECT_STREQ(changes[2].field, L"Other lines");
    EXPECT_EQ(changes[2].before, "X-A:b");
    EXPECT_EQ(changes[2].after, "X-A:" + longOne + "...") << "cut between two characters";
    EXPECT_TRUE(ChangesBetween(stored, stored).empty());
}

} // namespace

} // namespace addrbook
