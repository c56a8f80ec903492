#include "app/command_table.h"

#include <initializer_list>

#include "app/companions.h"
#include "app/main_bands.h"
#include "app/main_window.h"
#include "editor/quick_subjects_dialog.h"
#include "export/export_command.h"
#include "find/find_command.h"
#include "list/entry_commands.h"
#include "options/options_dialog.h"
#include "res/resource.h"
#include "ui/launch.h"

namespace {

void RunNew(MainWindow& window, UINT)
{
    NewEntry(window.Handle(), window.List());
}
void RunEdit(MainWindow& window, UINT)
{
    EditEntry(window.Handle(), window.List());
}
void RunDelete(MainWindow& window, UINT)
{
    DeleteEntries(window.List());
}
void RunCopy(MainWindow& window, UINT)
{
    CopyEntries(window.List());
}
void RunPaste(MainWindow& window, UINT)
{
    PasteEntries(window.List());
}
void RunCategoriesList(MainWindow& window, UINT)
{
    EditCategories(window.Handle(), window.List());
}
void RunSubjects(MainWindow& window, UINT)
{
    RunQuickSubjects(window.Handle(), window.GetSession().settings);
}
void RunCustomizeColumns(MainWindow& window, UINT)
{
    CustomizeListColumns(window.Handle(), window.List());
}
void RunExport(MainWindow& window, UINT)
{
    ExportEntries(window.Handle(), window.List());
}
void RunClearCategories(MainWindow& window, UINT)
{
    ClearCategories(window.List());
}
void RunOptionsDialog(MainWindow& window, UINT)
{
    RunOptions(window.Handle(), window.GetSession().settings);
}
void RunCompanion(MainWindow& window, UINT command)
{
    LaunchCompanionOf(command, window.Handle());
}
void RunFilterCategories(MainWindow& window, UINT)
{
    window.EditFilter(true);
}
void RunFilterMonths(MainWindow& window, UINT)
{
    window.EditFilter(false);
}
void RunClearFilter(MainWindow& window, UINT)
{
    window.ClearTheFilter();
}
void RunFindCommand(MainWindow& window, UINT)
{
    RunFind(window.Handle(), window.List(), &window.Request());
}
void RunHelp(MainWindow& window, UINT)
{
    ShowHelp(kHelpMain, window.Handle());
}
void RunQuit(MainWindow& window, UINT)
{
    window.RequestClose();
}
void RunAbout(MainWindow& window, UINT)
{
    window.ShowAbout();
}
constexpr Command kCommands[] = {
    {CMD_NEW_ENTRY, RunNew},
    {CMD_EDIT_ENTRY, RunEdit},
    {CMD_DELETE_ENTRY, RunDelete},
    {CMD_CATEGORIES_LIST, RunCategoriesList},
    {CMD_SUBJECTS_LIST, RunSubjects},
    {CMD_CLEAR_CATEGORIES, RunClearCategories},
    {CMD_CALENDAR, RunCompanion},
    {CMD_CONTACTS, RunCompanion},
    {CMD_INBOX, RunCompanion},
    {CMD_TASKS, RunCompanion},
    {CMD_FIND, RunFindCommand},
    {CMD_OPTIONS, RunOptionsDialog},
    {CMD_FILTER_CATEGORIES, RunFilterCategories},
    {CMD_FILTER_MONTHS, RunFilterMonths},
    {CMD_CLEAR_FILTER, RunClearFilter},
    {CMD_EXPORT, RunExport},
    {CMD_CUSTOMIZE_COLUMNS, RunCustomizeColumns},
    {CMD_MY_HANDHELD, RunCompanion},
    {CMD_HELP_CONTENTS, RunHelp},
    {CMD_QUIT, RunQuit},
    {CMD_CUT, RunDelete}, // Cut deletes and copies nothing
    {CMD_PASTE, RunPaste},
    {CMD_COPY, RunCopy},
    {CMD_ABOUT, RunAbout},
};

} // namespace

const Command* FindCommand(UINT id)
{
    for (const Command& command : kCommands)
        if (command.id == id)
            return &command;
    return nullptr;
}

void EnableEntryCommands(MainBands& bands, const SelectionState& state)
{
    for (const UINT command :
         std::initializer_list<UINT>{CMD_DELETE_ENTRY, CMD_COPY, CMD_CUT, CMD_EDIT_ENTRY})
        bands.EnableCommand(command, state.hasSelection);
    const bool canPaste = state.hasCurrentEntry && state.flag;
    bands.EnableButton(CMD_PASTE, canPaste);
    bands.EnableMenuCommand(CMD_PASTE, canPaste && state.hasSelection);
}
