#include "editor/editor_view.h"

#include <gtest/gtest.h>

namespace {

TEST(EditorView, EachHasItsCommandAndWhatTheBarOffersInIt)
{
    const EditorViewRule expected[] = {
        {EditorView::EditEntry, 1052, true, true, false},
        {EditorView::AssignCategories, 1051, false, false, true},
        {EditorView::AssignContacts, 1055, false, false, false},
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
    for (const int command : {0, 1, 1050, 1053, 1054, 1056})
        EXPECT_EQ(FindViewRule(command), nullptr) << command;
}

} // namespace
