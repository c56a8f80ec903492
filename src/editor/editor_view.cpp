#include "editor/editor_view.h"

#include "res/resource.h"

namespace {

// In the order of the views' numbers.
constexpr EditorViewRule kRules[] = {
    {EditorView::EditEntry, CMD_EDIT_ENTRY_VIEW, true, true, false},
    {EditorView::AssignCategories, CMD_ASSIGN_CATEGORIES, false, false, true},
    {EditorView::AssignContacts, CMD_ASSIGN_CONTACTS, false, false, false},
};

} // namespace

const EditorViewRule& RuleOfView(EditorView view)
{
    return kRules[static_cast<int>(view)];
}

const EditorViewRule* FindViewRule(int command)
{
    for (const EditorViewRule& rule : kRules)
        if (rule.command == command)
            return &rule;
    return nullptr;
}
