#include "editor/subject_list.h"

#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::wstring>;
using Match = SubjectList::Match;

constexpr SubjectButtons kNone{};

TEST(SubjectList, FindsInAnyCase)
{
    const SubjectList subjects(Texts{L"Meeting", L"Call home"});
    EXPECT_EQ(subjects.Find(L"meeting"), Match::Whole);
    EXPECT_EQ(subjects.Find(L"MEETING"), Match::Whole);
    EXPECT_EQ(subjects.Find(L"meet"), Match::Beginning);
    EXPECT_EQ(subjects.Find(L"CALL H"), Match::Beginning);
    EXPECT_EQ(subjects.Find(L"meetings"), Match::None);
    EXPECT_EQ(subjects.Find(L"home"), Match::None) << "only the beginning counts";
    EXPECT_EQ(SubjectList().Find(L"x"), Match::None);
}

TEST(SubjectList, AWholeMatchIsFoundAmongOthersThatBeginAlike)
{
    EXPECT_EQ(SubjectList(Texts{L"Meeting room", L"Meet", L"Meeting"}).Find(L"meet"), Match::Whole);
    EXPECT_EQ(SubjectList(Texts{L"Meet", L"Meeting"}).Find(L"MEET"), Match::Whole);
    EXPECT_EQ(SubjectList(Texts{L"Other", L"Meeting", L"Walk"}).Find(L"Mee"), Match::Beginning);
}

TEST(SubjectList, BracketsAreTextLikeAnyOther)
{
    const SubjectList subjects(Texts{L"[Work] Plan", L"[-a-]"});
    EXPECT_EQ(subjects.Find(L"Work"), Match::None);
    EXPECT_EQ(subjects.Find(L"a"), Match::None);
    EXPECT_EQ(subjects.Find(L"[work]"), Match::Beginning);
}

TEST(SubjectList, AddsAtTheEnd)
{
    SubjectList subjects(Texts{L"Walk", L"Meeting"});
    EXPECT_TRUE(subjects.Add(L"Apples"));
    EXPECT_EQ(subjects.InOrder(), (Texts{L"Walk", L"Meeting", L"Apples"}));
}

TEST(SubjectList, AddsNothingTwice)
{
    SubjectList subjects(Texts{L"Walk", L"Meeting"});
    EXPECT_FALSE(subjects.Add(L"wALK"));
    EXPECT_EQ(subjects.InOrder(), (Texts{L"Walk", L"Meeting"}));
    EXPECT_TRUE(subjects.Add(L"Walk on"));
}

TEST(SubjectList, AReplacedSubjectKeepsItsPlace)
{
    SubjectList subjects(Texts{L"Walk", L"Meeting", L"Call"});
    EXPECT_TRUE(subjects.Replace(L"meeting", L"Lunch"));
    EXPECT_EQ(subjects.InOrder(), (Texts{L"Walk", L"Lunch", L"Call"}));
    EXPECT_FALSE(subjects.Replace(L"Meeting", L"Dinner")) << "there is none any more";
    EXPECT_EQ(subjects.InOrder(), (Texts{L"Walk", L"Lunch", L"Call"}));
}

TEST(SubjectList, ReplacingMakesNothingTwice)
{
    SubjectList subjects(Texts{L"Walk", L"Meeting"});
    EXPECT_FALSE(subjects.Replace(L"Walk", L"MEETING"));
    EXPECT_EQ(subjects.InOrder(), (Texts{L"Walk", L"Meeting"}));
    EXPECT_TRUE(subjects.Replace(L"Walk", L"WALK")) << "its own letters may change";
    EXPECT_EQ(subjects.InOrder(), (Texts{L"WALK", L"Meeting"}));
}

TEST(SubjectList, TheFirstOfEqualOnesIsMeant)
{
    // Somebody else may have written the settings.
    SubjectList replaced(Texts{L"A", L"walk", L"WALK"});
    EXPECT_TRUE(replaced.Replace(L"Walk", L"Run"));
    EXPECT_EQ(replaced.InOrder(), (Texts{L"A", L"Run", L"WALK"}));
    SubjectList removed(Texts{L"A", L"walk", L"WALK"});
    EXPECT_TRUE(removed.Remove(L"WALK"));
    EXPECT_EQ(removed.InOrder(), (Texts{L"A", L"WALK"}));
}

TEST(SubjectList, RemovesOne)
{
    SubjectList subjects(Texts{L"Walk", L"Meeting", L"Call"});
    EXPECT_TRUE(subjects.Remove(L"MEETING"));
    EXPECT_EQ(subjects.InOrder(), (Texts{L"Walk", L"Call"}));
    EXPECT_FALSE(subjects.Remove(L"Meeting"));
    EXPECT_FALSE(subjects.Remove(L"Wal"));
    EXPECT_EQ(subjects.InOrder(), (Texts{L"Walk", L"Call"}));
}

TEST(SubjectList, HasNoLimit)
{
    SubjectList subjects;
    for (int i = 0; i < 500; ++i)
        ASSERT_TRUE(subjects.Add(L"Subject " + std::to_wstring(i)));
    EXPECT_EQ(subjects.InOrder().size(), 500u);
    EXPECT_EQ(subjects.InOrder()[499], L"Subject 499");
}

TEST(SubjectTexts, AreNeitherEmptyNorAFixedItem)
{
    EXPECT_FALSE(IsSubject(L"<Modify Quick Subjects>"));
    EXPECT_FALSE(IsSubject(L"<MODIFY quick subjects>"));
    EXPECT_TRUE(IsSubject(L"<Modify Quick Subjects"));
    EXPECT_FALSE(IsSubject(L""));
    EXPECT_FALSE(IsSubject(L"<Entry Subject>"));
    EXPECT_FALSE(IsSubject(L"<ENTRY subject>"));
    EXPECT_TRUE(IsSubject(L"<Entry Subject> "));
    EXPECT_TRUE(IsSubject(L"<Entry Subject"));
    EXPECT_TRUE(IsSubject(L" "));
    EXPECT_TRUE(IsSubject(L"x"));
}

TEST(SubjectButtons, ForATextThatIsNoSubjectNoneCanBePressed)
{
    const SubjectList subjects(Texts{L"<Entry Subject>", L"Walk"});
    EXPECT_EQ(ButtonsForText(subjects, L""), kNone);
    EXPECT_EQ(ButtonsForText(subjects, L"<entry subject>"), kNone);
}

TEST(SubjectButtons, ForANewTextAddAndModify)
{
    EXPECT_EQ(ButtonsForText(SubjectList(Texts{L"Walk"}), L"Meet"),
              (SubjectButtons{.add = true, .modify = true, .remove = false}));
}

TEST(SubjectButtons, ForABeginningAllThree)
{
    EXPECT_EQ(ButtonsForText(SubjectList(Texts{L"Walk", L"Meeting"}), L"meet"),
              (SubjectButtons{.add = true, .modify = true, .remove = true}));
}

TEST(SubjectButtons, ForARepetitionDeleteOnly)
{
    EXPECT_EQ(ButtonsForText(SubjectList(Texts{L"Meeting room", L"Meeting"}), L"meeting"),
              (SubjectButtons{.add = false, .modify = false, .remove = true}));
}

TEST(SubjectButtons, WithoutASelectionNeitherDeleteNorModify)
{
    for (const bool add : {false, true}) {
        const SubjectButtons after{.add = add, .modify = false, .remove = false};
        EXPECT_EQ(ButtonsForSelection({add, true, true}, false, L"Text"), after);
        EXPECT_EQ(ButtonsForSelection({add, true, true}, false, L""), after);
    }
}

TEST(SubjectButtons, ASelectionGivesAllThreeWhenTheTextIsASubject)
{
    EXPECT_EQ(ButtonsForSelection({false, false, false}, true, L"Text"),
              (SubjectButtons{.add = true, .modify = true, .remove = true}));
}

TEST(SubjectButtons, ASelectionGivesDeleteAloneWhenTheTextIsNone)
{
    for (const bool add : {false, true})
        for (const wchar_t* text : {L"", L"<ENTRY SUBJECT>"})
            EXPECT_EQ(ButtonsForSelection({add, true, false}, true, text),
                      (SubjectButtons{.add = add, .modify = false, .remove = true}));
}

} // namespace
