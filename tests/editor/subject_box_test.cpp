#include "editor/subject_box.h"

#include "editor/quick_subjects.h"
#include "editor_fixture.h"

namespace {

void Store(DWORD count, const std::vector<std::wstring>& subjects)
{
    Own().SetNumber(kSettings, L"scount", count);
    for (size_t i = 0; i < subjects.size(); ++i)
        Own().SetString(kOptions, (L"subj" + std::to_wstring(i)).c_str(), subjects[i].c_str());
}

class SubjectBoxTest : public EditorTest {
  protected:
    SubjectBoxTest()
        : m_box(CreateWindowExW(0, L"COMBOBOX", L"",
                                WS_CHILD | WS_VISIBLE | CBS_DROPDOWN | CBS_SORT | CBS_AUTOHSCROLL, 0, 0, 200,
                                200, m_parent.Handle(), nullptr, nullptr, nullptr))
    {
        EXPECT_NE(m_box, nullptr);
    }
    std::vector<std::wstring> Items()
    {
        std::vector<std::wstring> items;
        for (LRESULT i = 0; i < SendMessageW(m_box, CB_GETCOUNT, 0, 0); ++i) {
            wchar_t text[300];
            SendMessageW(m_box, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
            items.emplace_back(text);
        }
        return items;
    }
    LRESULT Selected() { return SendMessageW(m_box, CB_GETCURSEL, 0, 0); }

    TestParent m_parent;
    HWND m_box;
};

using Texts = std::vector<std::wstring>;

TEST_F(SubjectBoxTest, HoldsOnlyTheFixedItemsWithoutQuickSubjects)
{
    EXPECT_TRUE(FillSubjectBox(m_box, Own(), std::nullopt));
    EXPECT_EQ(Items(), (Texts{L"<Modify Quick Subjects>", L"<Entry Subject>"}));
    EXPECT_EQ(Selected(), 1);
}

TEST_F(SubjectBoxTest, SortsTheQuickSubjectsBehindTheFixedItems)
{
    Store(5, {L"walk", L"!urgent", L"Meeting", L"apples", L" blank"});
    EXPECT_TRUE(FillSubjectBox(m_box, Own(), std::nullopt));
    const Texts items = Items();
    ASSERT_EQ(items.size(), 7u);
    EXPECT_EQ(items[0], L"<Modify Quick Subjects>");
    EXPECT_EQ(items[1], L"<Entry Subject>");
    EXPECT_EQ(Texts(items.end() - 3, items.end()), (Texts{L"apples", L"Meeting", L"walk"}));
}

TEST_F(SubjectBoxTest, RefillingEmptiesTheBoxFirst)
{
    Store(1, {L"Walk"});
    EXPECT_TRUE(FillSubjectBox(m_box, Own(), std::nullopt));
    EXPECT_TRUE(FillSubjectBox(m_box, Own(), std::nullopt));
    EXPECT_EQ(Items().size(), 3u);
}

TEST_F(SubjectBoxTest, TheRecordsSubjectIsAddedAndSelected)
{
    Store(2, {L"Apples", L"Walk"});
    EXPECT_TRUE(FillSubjectBox(m_box, Own(), L"Lunch"));
    EXPECT_EQ(Items(), (Texts{L"<Modify Quick Subjects>", L"<Entry Subject>", L"Apples", L"Lunch", L"Walk"}));
    EXPECT_EQ(Selected(), 3);
    EXPECT_EQ(WindowText(m_box), L"Lunch");
}

TEST_F(SubjectBoxTest, FixedItemsAreNoSubject)
{
    EXPECT_TRUE(FillSubjectBox(m_box, Own(), std::nullopt));
    EXPECT_EQ(SubjectToWrite(m_box), L"<Entry Subject>");
    SetWindowTextW(m_box, L"<Modify Quick Subjects>");
    EXPECT_EQ(SubjectToWrite(m_box), L"<Entry Subject>");
    SetWindowTextW(m_box, L"<Modify Quick Subjects>!");
    EXPECT_EQ(SubjectToWrite(m_box), L"<Modify Quick Subjects>!");
}

TEST_F(SubjectBoxTest, ReadsAsManySubjectsAsAreCounted)
{
    Store(2, {L"A", L"B", L"C"});
    EXPECT_EQ(ReadQuickSubjects(Own()), (Texts{L"A", L"B"}));
}

// Missing or too long for a setting.
TEST_F(SubjectBoxTest, ASubjectThatCannotBeReadIsEmptyAndNotInTheBox)
{
    Store(5, {L"A", L"", std::wstring(200, L'x'), L"D", L"E"});
    Own().RemoveValue(kOptions, L"subj3");
    EXPECT_EQ(ReadQuickSubjects(Own()), (Texts{L"A", L"", L"", L"", L"E"}));
    EXPECT_TRUE(FillSubjectBox(m_box, Own(), std::nullopt));
    EXPECT_EQ(Items(), (Texts{L"<Modify Quick Subjects>", L"<Entry Subject>", L"A", L"E"}));
}

TEST_F(SubjectBoxTest, TheRecordsEmptySubjectIsAddedAndSelected)
{
    Store(1, {L"Walk"});
    EXPECT_TRUE(FillSubjectBox(m_box, Own(), L""));
    EXPECT_EQ(Items(), (Texts{L"<Modify Quick Subjects>", L"<Entry Subject>", L"", L"Walk"}));
    EXPECT_EQ(Selected(), 2);
    EXPECT_EQ(SubjectToWrite(m_box), L"");
}

// Behind the last one that is stored there is none to be read.
TEST_F(SubjectBoxTest, ACountBeyondReasonEndsWithWhatIsStored)
{
    Store(0xFFFFFFFF, {L"A", L"B"});
    EXPECT_EQ(ReadQuickSubjects(Own()), (Texts{L"A", L"B"}));
    Own().SetString(kOptions, L"SUBJ200", L"C");
    const std::vector<std::wstring> subjects = ReadQuickSubjects(Own());
    ASSERT_EQ(subjects.size(), 201u);
    EXPECT_EQ(subjects[199], L"");
    EXPECT_EQ(subjects[200], L"C");
}

// One stored value could ask for thousands of millions of empty subjects.
TEST_F(SubjectBoxTest, AValueFarBehindTheOthersIsNoSubject)
{
    Store(0xFFFFFFFF, {L"A", L"B"});
    for (const wchar_t* name : {L"subj1010", L"subj1000000", L"subj4294967294"})
        Own().SetString(kOptions, name, L"x");
    EXPECT_EQ(ReadQuickSubjects(Own()), (Texts{L"A", L"B"}));
    Own().SetString(kOptions, L"subj1002", L"C");
    EXPECT_EQ(ReadQuickSubjects(Own()).size(), 1003u);
}

// Names that a number at their end does not make one of the list's.
TEST_F(SubjectBoxTest, OtherValuesAreNoSubjects)
{
    Store(0xFFFFFFFF, {L"A"});
    for (const wchar_t* name : {L"subj", L"subj07", L"subj+8", L"subj 9", L"subj9x", L"subject5", L"6",
                                L"subj4294967295", L"subj18446744073709551616"})
        Own().SetString(kOptions, name, L"x");
    EXPECT_EQ(ReadQuickSubjects(Own()), Texts{L"A"});
    Own().SetString(kOptions, (L"subj" + std::wstring(200, L'1')).c_str(), L"x");
    EXPECT_EQ(ReadQuickSubjects(Own()), Texts{L"A"});
}

} // namespace
