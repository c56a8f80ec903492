#include "editor/editor_view.h"
#include "res/resource.h"

#include <gtest/gtest.h>

namespace {

TEST(EditorView, EachHasItsCommandAndWhatTheBarOffersInIt)
{
    const EditorViewRule expected[] = {
        {EditorView::EditEntry, CMD_EDIT_ENTRY_VIEW, true, true, false},
        {EditorView::AssignCategories, CMD_ASSIGN_CATEGORIES, false, false, true},
        {EditorView::AssignContacts, CMD_ASSIGN_CONTACTS, false, false, false},
    };
    for (const EditorViewRule& want : expected) {
        const EditorViewRule* rule = FindViewRule(want.command);
        ASSERT_NE(rule, nullptr) << want.command;
        EXPECT_EQ(rule, &RuleOfView(want.view));
        EXPECT_EQ(rule->view, want.view);
        EXPECT_EQ(rule->inputPanel, want.inputPanel) << want.command;
        EXPECT_EQ(rule->editsBody, want.editsBody) << want.command;
        EXPECT_EQ(rule->editsCategories, want.editsCategories) << want.command;
    }
}

TEST(EditorView, OtherCommandsSwitchToNone)
{
    for (const int command : {0, 1, CMD_TIME_STAMP, CMD_EDIT_CATEGORIES, CMD_TIMER, 1056})
        EXPECT_EQ(FindViewRule(command), nullptr) << command;
}

} // namespace
