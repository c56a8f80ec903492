// The view Assign Categories in the editor's window.
#include "assign_fixture.h"

#include "res/resource.h"
#include "support/locked_store.h"
#include "support/unreadable_table.h"

namespace {

constexpr const wchar_t* kPlaceholder = L"<Double Tap to Create Categories>";

class AssignCategoriesTest : public AssignTest {
  protected:
    static void ExpectPlaceholder(const ListInEditor& list)
    {
        ASSERT_EQ(list.Count(), 1);
        EXPECT_EQ(list.Text(0), kPlaceholder);
        EXPECT_EQ(list.Box(0), 0);
        // Of 0xFFFFFFFB what lists meant by it then: grid lines, images of sub-items, a header to be dragged,
        // whole rows.
        EXPECT_EQ(list.ExtendedStyle(), 0x33u);
        EXPECT_FALSE(IsWindowVisible(ListView_GetHeader(list.Window())));
        EXPECT_GE(list.ColumnWidth(0), ListView_GetStringWidth(list.Window(), kPlaceholder));
    }
};

TEST_F(AssignCategoriesTest, WithoutCategoriesThereIsOneItemThatSaysSo)
{
    HideCategory(AddCategory(L"Hidden"));
    RunNewIn(CMD_ASSIGN_CATEGORIES, [](EditorWindow& editor) {
        const ListInEditor list = Categories(editor);
        ExpectPlaceholder(list);
        list.ClickLabel(0);
        editor.Focus(IDC_CATEGORY_LIST);
        editor.Key(VK_SPACE);
        ExpectPlaceholder(list);
        EXPECT_EQ(Line(editor), L"<None>");
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(AssignCategoriesTest, WhatCannotBeReadIsNotShownAsNone)
{
    const CEOID home = AddCategory(L"Home");
    AddCategory(L"Work");
    CEOID id = AddEntry({home});
    Run(&id, [&](EditorWindow& editor) {
        {
            const UnreadableTable none(m_store.Path(), "categories");
            editor.Command(CMD_ASSIGN_CATEGORIES);
            const ListInEditor list = Categories(editor);
            ASSERT_EQ(list.Count(), 1);
            EXPECT_EQ(list.Text(0), L"<The categories cannot be read>");
            EXPECT_EQ(list.Box(0), 0);
        }
        EXPECT_TRUE(PumpUntil([&] { return Categories(editor).Count() == 2; }));
        EXPECT_TRUE(Categories(editor).IsChecked(L"Home"));
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(AssignCategoriesTest, AllThatAreNotHiddenHaveABoxAndTheEntrysOnesAreChecked)
{
    const CEOID work = AddCategory(L"Work");
    const CEOID home = AddCategory(L"Home");
    AddCategory(L"Garden");
    HideCategory(AddCategory(L"Secret"));
    CEOID id = AddEntry({home, work});
    RunIn(&id, CMD_ASSIGN_CATEGORIES, [](EditorWindow& editor) {
        const ListInEditor list = Categories(editor);
        ASSERT_EQ(list.Count(), 3);
        EXPECT_EQ(list.ExtendedStyle(), static_cast<DWORD>(LVS_EX_CHECKBOXES));
        EXPECT_EQ(list.Box(list.Find(L"Garden")), 1);
        EXPECT_EQ(list.Box(list.Find(L"Home")), 2);
        EXPECT_EQ(list.Box(list.Find(L"Work")), 2);
        EXPECT_EQ(Line(editor), L"Home, Work");
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(AssignCategoriesTest, AHiddenOneStaysNamedAndADeletedOneUnnamedInTheRecord)
{
    const CEOID home = AddCategory(L"Home");
    const CEOID secret = AddCategory(L"Secret", 1);
    const CEOID gone = AddCategory(L"Gone");
    HideCategory(secret);
    DeleteCategory(gone);
    CEOID id = AddEntry({gone, secret, home});
    RunIn(&id, CMD_ASSIGN_CATEGORIES, [](EditorWindow& editor) {
        EXPECT_EQ(Categories(editor).Count(), 1);
        EXPECT_EQ(Line(editor), L"Home, Secret");
        editor.Enter(IDC_SUBJECT, L"Dinner");
        editor.Ok();
    });
    EXPECT_EQ(Read(id).categories, Ids({home, secret, gone}));
    EXPECT_EQ(Uses(secret), 1);
}

TEST_F(AssignCategoriesTest, AnUncheckedOneStaysUncheckedInTheNextLook)
{
    const CEOID home = AddCategory(L"Home");
    CEOID id = AddEntry({home});
    RunIn(&id, CMD_ASSIGN_CATEGORIES, [](EditorWindow& editor) {
        Categories(editor).Check(L"Home", false);
        editor.Command(CMD_EDIT_ENTRY_VIEW);
        editor.Command(CMD_ASSIGN_CATEGORIES);
        EXPECT_FALSE(Categories(editor).IsChecked(L"Home"));
        Categories(editor).Check(L"Home", true);
        editor.Command(CMD_ASSIGN_CONTACTS);
        editor.Command(CMD_ASSIGN_CATEGORIES);
        EXPECT_TRUE(Categories(editor).IsChecked(L"Home"));
    });
}

TEST_F(AssignCategoriesTest, ACheckMarksTheEntryModifiedAndNamesTheCategory)
{
    AddCategory(L"Home");
    AddCategory(L"Garden");
    RunNewIn(CMD_ASSIGN_CATEGORIES, [](EditorWindow& editor) {
        EXPECT_EQ(Line(editor), L"<None>");
        Categories(editor).Check(L"Home", true);
        EXPECT_TRUE(editor.SaveEnabled());
        EXPECT_EQ(Line(editor), L"Home");
        Categories(editor).Check(L"Garden", true);
        EXPECT_EQ(Line(editor), L"Garden, Home");
        Categories(editor).Check(L"Home", false);
        EXPECT_EQ(Line(editor), L"Garden");
        Categories(editor).Check(L"Garden", false);
        EXPECT_EQ(Line(editor), L"<None>");
        EXPECT_TRUE(editor.SaveEnabled());
    });
}

TEST_F(AssignCategoriesTest, AnUncheckIsAChangeToo)
{
    CEOID id = AddEntry({AddCategory(L"Home")});
    RunIn(&id, CMD_ASSIGN_CATEGORIES, [](EditorWindow& editor) {
        Categories(editor).Check(L"Home", false);
        EXPECT_TRUE(editor.SaveEnabled());
        EXPECT_EQ(Line(editor), L"<None>");
    });
}

TEST_F(AssignCategoriesTest, ATapOnTheLabelTogglesTheBox)
{
    AddCategory(L"Garden");
    AddCategory(L"Home");
    RunNewIn(CMD_ASSIGN_CATEGORIES, [](EditorWindow& editor) {
        const ListInEditor list = Categories(editor);
        list.ClickLabel(1);
        EXPECT_EQ(list.Box(1), 2);
        EXPECT_EQ(list.Box(0), 1);
        EXPECT_EQ(Line(editor), L"Home");
        list.ClickLabel(1);
        EXPECT_EQ(list.Box(1), 1);
        EXPECT_EQ(Line(editor), L"<None>");
    });
}

TEST_F(AssignCategoriesTest, ATapOnTheBoxTogglesOnceAndMarksTheItem)
{
    AddCategory(L"Garden");
    AddCategory(L"Home");
    RunNewIn(CMD_ASSIGN_CATEGORIES, [](EditorWindow& editor) {
        const ListInEditor list = Categories(editor);
        ASSERT_FALSE(list.Has(1, LVIS_FOCUSED));
        list.ClickBox(1);
        EXPECT_EQ(list.Box(1), 2);
        EXPECT_TRUE(list.Has(1, LVIS_SELECTED | LVIS_FOCUSED));
        EXPECT_EQ(Line(editor), L"Home");
        list.ClickBox(1);
        EXPECT_EQ(list.Box(1), 1);
        EXPECT_EQ(Line(editor), L"<None>");
    });
}

TEST_F(AssignCategoriesTest, ATapBesideTheItemsTogglesNone)
{
    AddCategory(L"Home");
    RunNewIn(CMD_ASSIGN_CATEGORIES, [](EditorWindow& editor) {
        Categories(editor).ClickBelow();
        EXPECT_EQ(Categories(editor).Box(0), 1);
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(AssignCategoriesTest, TheSpaceBarTogglesTheItemWithTheFocus)
{
    AddCategory(L"Garden");
    AddCategory(L"Home");
    RunNewIn(CMD_ASSIGN_CATEGORIES, [](EditorWindow& editor) {
        editor.Focus(IDC_CATEGORY_LIST);
        editor.Key(VK_SPACE);
        EXPECT_EQ(Line(editor), L"Garden");
        editor.Key(VK_DOWN);
        editor.Key(VK_SPACE);
        EXPECT_EQ(Line(editor), L"Garden, Home");
        EXPECT_TRUE(Categories(editor).IsChecked(L"Home"));
        editor.Key(VK_SPACE);
        EXPECT_EQ(Line(editor), L"Garden");
        EXPECT_FALSE(Categories(editor).IsChecked(L"Home"));
    });
}

TEST_F(AssignCategoriesTest, CheckedOnesAreSavedAndCounted)
{
    const CEOID home = AddCategory(L"Home");
    const CEOID garden = AddCategory(L"Garden");
    CEOID id = 0;
    RunIn(&id, CMD_ASSIGN_CATEGORIES, [](EditorWindow& editor) {
        Categories(editor).Check(L"Home", true);
        Categories(editor).Check(L"Garden", true);
        editor.Ok();
    });
    ASSERT_NE(id, 0u);
    EXPECT_EQ(Read(id).categories, Ids({garden, home}));
    EXPECT_EQ(Uses(home), 1);
    EXPECT_EQ(Uses(garden), 1);
}

TEST_F(AssignCategoriesTest, CheckingAndUncheckingLeavesNoTrace)
{
    const CEOID home = AddCategory(L"Home");
    CEOID id = AddEntry({});
    RunIn(&id, CMD_ASSIGN_CATEGORIES, [](EditorWindow& editor) {
        Categories(editor).Check(L"Home", true);
        Categories(editor).Check(L"Home", false);
        editor.Ok();
    });
    EXPECT_FALSE(Read(id).categories);
    EXPECT_EQ(Uses(home), 0);
}

TEST_F(AssignCategoriesTest, UncheckingAndCheckingOneThatTheEntryHadCountsNothing)
{
    const CEOID home = AddCategory(L"Home", 3);
    CEOID id = AddEntry({home});
    RunIn(&id, CMD_ASSIGN_CATEGORIES, [](EditorWindow& editor) {
        Categories(editor).Check(L"Home", false);
        Categories(editor).Check(L"Home", true);
        EXPECT_EQ(Line(editor), L"Home");
        editor.Ok();
    });
    EXPECT_EQ(Read(id).categories, Ids({home}));
    EXPECT_EQ(Uses(home), 3);
}

TEST_F(AssignCategoriesTest, AnUncheckedOneLosesOneUseAndLeavesTheRecord)
{
    const CEOID home = AddCategory(L"Home", 3);
    const CEOID work = AddCategory(L"Work", 2);
    CEOID id = AddEntry({home, work});
    RunIn(&id, CMD_ASSIGN_CATEGORIES, [](EditorWindow& editor) {
        Categories(editor).Check(L"Home", false);
        editor.Ok();
    });
    EXPECT_EQ(Read(id).categories, Ids({work}));
    EXPECT_EQ(Uses(home), 2);
    EXPECT_EQ(Uses(work), 2);
}

TEST_F(AssignCategoriesTest, UncheckingTheLastOneDeletesTheProperty)
{
    const CEOID home = AddCategory(L"Home", 1);
    CEOID id = AddEntry({home});
    RunIn(&id, CMD_ASSIGN_CATEGORIES, [](EditorWindow& editor) {
        Categories(editor).Check(L"Home", false);
        editor.Ok();
    });
    EXPECT_FALSE(Read(id).categories);
    EXPECT_EQ(Uses(home), 0);
}

TEST_F(AssignCategoriesTest, ASaveAChangedBodyAndOkDeleteTheCategories)
{
    const CEOID home = AddCategory(L"Home", 1);
    CEOID id = AddEntry({home});
    RunIn(&id, CMD_ASSIGN_CATEGORIES, [&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Dinner");
        editor.Command(CMD_SAVE);
        EXPECT_EQ(Read(id).categories, Ids({home}));
        editor.Command(CMD_EDIT_ENTRY_VIEW);
        editor.Enter(IDC_BODY, L"Changed");
        editor.Ok();
    });
    EXPECT_FALSE(Read(id).categories);
    EXPECT_EQ(Uses(home), 1) << "only a release counts down";
}

TEST_F(AssignCategoriesTest, AfterASaveThereIsNothingLeftToRelease)
{
    const CEOID home = AddCategory(L"Home", 1);
    CEOID id = AddEntry({home});
    RunIn(&id, CMD_ASSIGN_CATEGORIES, [&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Dinner");
        editor.Command(CMD_SAVE);
        Categories(editor).Check(L"Home", false);
        EXPECT_TRUE(editor.SaveEnabled());
        EXPECT_EQ(Line(editor), L"<None>");
        editor.Ok();
    });
    EXPECT_FALSE(Read(id).categories);
    EXPECT_EQ(Uses(home), 1);
}

TEST_F(AssignCategoriesTest, ANewEntrysCategoriesOutlastTheSecondWriteOfOk)
{
    const CEOID home = AddCategory(L"Home");
    CEOID id = 0;
    RunIn(&id, CMD_ASSIGN_CATEGORIES, [&](EditorWindow& editor) {
        Categories(editor).Check(L"Home", true);
        editor.Command(CMD_SAVE);
        EXPECT_TRUE(editor.SaveEnabled());
        editor.Ok();
    });
    EXPECT_EQ(Read(id).categories, Ids({home}));
    EXPECT_EQ(Uses(home), 1);
}

TEST_F(AssignCategoriesTest, ASecondSaveKnowsOnlyWhatWasCheckedSince)
{
    const CEOID home = AddCategory(L"Home");
    const CEOID garden = AddCategory(L"Garden");
    CEOID id = AddEntry({});
    RunIn(&id, CMD_ASSIGN_CATEGORIES, [&](EditorWindow& editor) {
        Categories(editor).Check(L"Home", true);
        editor.Command(CMD_SAVE);
        EXPECT_EQ(Uses(home), 1);
        Categories(editor).Check(L"Garden", true);
        EXPECT_EQ(Line(editor), L"Garden");
        editor.Ok();
    });
    EXPECT_EQ(Read(id).categories, Ids({garden}));
    EXPECT_EQ(Uses(home), 1);
    EXPECT_EQ(Uses(garden), 1);
}

TEST_F(AssignCategoriesTest, AFailedSaveKeepsTheListAndTheAssignment)
{
    const MessageBoxAnswerer boxes;
    const CEOID home = AddCategory(L"Home");
    CEOID id = AddEntry({});
    RunIn(&id, CMD_ASSIGN_CATEGORIES, [&](EditorWindow& editor) {
        Categories(editor).Check(L"Home", true);
        {
            const LockedStore trouble(m_store.Path());
            editor.Ok();
        }
        ASSERT_TRUE(Has(editor, IDC_CATEGORY_LIST));
        EXPECT_TRUE(Categories(editor).IsChecked(L"Home"));
        EXPECT_TRUE(editor.SaveEnabled());
        EXPECT_EQ(Uses(home), 0);
        editor.Ok();
    });
    EXPECT_EQ(Read(id).categories, Ids({home}));
    EXPECT_EQ(Uses(home), 1);
}

TEST_F(AssignCategoriesTest, ACancelledCheckChangesNothing)
{
    const CEOID home = AddCategory(L"Home");
    CEOID id = AddEntry({});
    const MessageBoxAnswerer boxes({IDYES});
    RunIn(&id, CMD_ASSIGN_CATEGORIES, [](EditorWindow& editor) {
        Categories(editor).Check(L"Home", true);
        editor.Cancel();
    });
    EXPECT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_FALSE(Read(id).categories);
    EXPECT_EQ(Uses(home), 0);
}

TEST_F(AssignCategoriesTest, WithoutTheLineCategoriesAreAssignedAllTheSame)
{
    Own().SetNumber(kOptions, L"DispCats", 0);
    const CEOID home = AddCategory(L"Home");
    CEOID id = 0;
    RunIn(&id, CMD_ASSIGN_CATEGORIES, [](EditorWindow& editor) {
        Categories(editor).Check(L"Home", true);
        EXPECT_FALSE(IsWindowVisible(editor.Item(IDC_CATEGORIES_LINE)));
        editor.Ok();
    });
    EXPECT_EQ(Read(id).categories, Ids({home}));
}

TEST_F(AssignCategoriesTest, ALineThatASettingsChangeBringsInNamesThem)
{
    Own().SetNumber(kOptions, L"DispCats", 0);
    CEOID id = AddEntry({AddCategory(L"Home")});
    Run(&id, [](EditorWindow& editor) {
        Own().SetNumber(kOptions, L"DispCats", 1);
        editor.TellOfChange(L"intl");
        EXPECT_EQ(Line(editor), L"Home");
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(AssignCategoriesTest, SixLongNamesEndAtTheLinesWidthInCharacters)
{
    for (const wchar_t* name :
         {L"1 a category with a rather long name that", L"2 a category with a long name",
          L"3 a category with a rather long name that", L"4 a category with a long name",
          L"5 a category with a rather long name that", L"6 a category with a long name"})
        AddCategory(name);
    RunNewIn(CMD_ASSIGN_CATEGORIES, [](EditorWindow& editor) {
        for (int i = 0; i < 6; ++i)
            Categories(editor).ClickLabel(i);
        HWND line = editor.Item(IDC_CATEGORIES_LINE);
        RECT client{};
        GetClientRect(line, &client);
        HDC dc = GetDC(line);
        const HGDIOBJ before =
            SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(line, WM_GETFONT, 0, 0)));
        TEXTMETRICW metrics{};
        GetTextMetricsW(dc, &metrics);
        SelectObject(dc, before);
        ReleaseDC(line, dc);
        const std::wstring text = Line(editor);
        EXPECT_EQ(static_cast<LONG>(text.size()), client.right / metrics.tmAveCharWidth);
        EXPECT_EQ(text.substr(text.size() - 3), L"...");
        EXPECT_EQ(text.substr(0, 43), L"1 a category with a rather long name that, ");
    });
}

TEST_F(AssignCategoriesTest, ADoubleTapOpensTheCategories)
{
    RunNewIn(CMD_ASSIGN_CATEGORIES, [&](EditorWindow& editor) {
        WhileEditingCategories([&] { Categories(editor).DoubleClick(0); }, [&] { AddCategory(L"Home"); });
        const ListInEditor list = Categories(editor);
        EXPECT_TRUE(PumpUntil([&] { return list.Text(0) == L"Home"; }));
        EXPECT_EQ(list.Count(), 1);
        EXPECT_EQ(list.Box(0), 1);
        EXPECT_EQ(list.ExtendedStyle(), static_cast<DWORD>(LVS_EX_CHECKBOXES));
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(AssignCategoriesTest, ADoubleTapOnACategoryOpensThemAndTogglesItOnce)
{
    AddCategory(L"Garden");
    AddCategory(L"Home");
    RunNewIn(CMD_ASSIGN_CATEGORIES, [&](EditorWindow& editor) {
        WhileEditingCategories([&] { Categories(editor).DoubleClick(1); }, [] {});
        EXPECT_TRUE(PumpUntil([&] { return Categories(editor).IsChecked(L"Home"); }));
        EXPECT_FALSE(Categories(editor).IsChecked(L"Garden"));
        EXPECT_EQ(Line(editor), L"Home");
    });
}

TEST_F(AssignCategoriesTest, EditedCategoriesAreListedAnewAndTheAssignedOnesChecked)
{
    const CEOID home = AddCategory(L"Home");
    const CEOID secret = AddCategory(L"Secret", 1);
    const CEOID gone = AddCategory(L"Gone", 1);
    CEOID id = AddEntry({home, secret, gone});
    RunIn(&id, CMD_ASSIGN_CATEGORIES, [&](EditorWindow& editor) {
        EXPECT_EQ(Line(editor), L"Gone, Home, Secret");
        WhileEditingCategories([&] { editor.Command(CMD_EDIT_CATEGORIES); },
                               [&] {
                                   HideCategory(secret);
                                   DeleteCategory(gone);
                                   AddCategory(L"Added");
                               });
        const ListInEditor list = Categories(editor);
        ASSERT_EQ(list.Count(), 2);
        EXPECT_FALSE(list.IsChecked(L"Added"));
        EXPECT_TRUE(list.IsChecked(L"Home"));
        EXPECT_EQ(Line(editor), L"Home");
        EXPECT_FALSE(editor.SaveEnabled());
        editor.Enter(IDC_SUBJECT, L"Dinner");
        editor.Ok();
    });
    EXPECT_EQ(Read(id).categories, Ids({home}));
    EXPECT_EQ(Uses(secret), 1) << "only a release counts down";
}

TEST_F(AssignCategoriesTest, WhenNoneIsLeftTheListSaysSo)
{
    const CEOID home = AddCategory(L"Home");
    const CEOID work = AddCategory(L"Work");
    CEOID id = AddEntry({home});
    RunIn(&id, CMD_ASSIGN_CATEGORIES, [&](EditorWindow& editor) {
        WhileEditingCategories([&] { editor.Command(CMD_EDIT_CATEGORIES); },
                               [&] {
                                   DeleteCategory(home);
                                   HideCategory(work);
                               });
        ExpectPlaceholder(Categories(editor));
        RECT client{};
        GetClientRect(editor.Item(IDC_CATEGORY_LIST), &client);
        EXPECT_EQ(Categories(editor).ColumnWidth(0), client.right);
        EXPECT_EQ(Line(editor), L"<None>");
    });
}

TEST_F(AssignCategoriesTest, OutsideTheViewEditedCategoriesLeaveTheEntryAlone)
{
    const CEOID home = AddCategory(L"Home");
    CEOID id = AddEntry({home});
    Run(&id, [&](EditorWindow& editor) {
        WhileEditingCategories([&] { editor.Command(CMD_EDIT_CATEGORIES); }, [&] { HideCategory(home); });
        EXPECT_FALSE(Has(editor, IDC_CATEGORY_LIST));
        editor.Enter(IDC_SUBJECT, L"Dinner");
        editor.Ok();
    });
    EXPECT_EQ(Read(id).categories, Ids({home}));
}

} // namespace
