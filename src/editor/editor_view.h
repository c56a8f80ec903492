// The three views that take turns in the place below the editor's bar, and what the bar offers in each.
#pragma once

enum class EditorView { EditEntry, AssignCategories, AssignContacts };

struct EditorViewRule {
    EditorView view;
    int command; // the button and the command that switch to it
    bool inputPanel;
    bool editsBody; // time stamp and zoom
    bool editsCategories;
};

const EditorViewRule& RuleOfView(EditorView view);
// The view that a command switches to; null for any other command.
const EditorViewRule* FindViewRule(int command);
