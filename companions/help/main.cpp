#include <windows.h>
#include <commctrl.h>

#include "help/help_request.h"
#include "help/help_window.h"
#include "help/one_window.h"
#include "help/resource.h"
#include "mervane/file/turn.h"
#include "ui/timer_faults.h"
#include "util/program_search.h"

namespace {

std::wstring ThisProgram()
{
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

// The window with what was asked for, unless another program has one already: that one is given the request.
bool HandOverOrOpen(help::HelpWindow& window, const help::HelpRequest& request, HINSTANCE instance,
                    int showCommand)
{
    const Turn turn(help::kHelpTurn);
    if (help::HandOver(help::TextOfRequest(request)) || !window.Create(instance))
        return false;
    window.Show(request);
    window.ShowFirst(showCommand);
    return true;
}

} // namespace

// The command line is taken whole from the system: a program that starts the help gives the topic alone, and
// what the runtime library hands over lacks its first word.
int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int showCommand)
{
    UseLibrariesOfSystemOnly();
    EndOnTimerFaults();
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_TREEVIEW_CLASSES | ICC_STANDARD_CLASSES};
    if (!InitCommonControlsEx(&controls) || !help::HelpWindow::RegisterWindowClass(instance))
        return 1;
    const std::wstring program = ThisProgram();
    help::HelpWindow window(program);
    if (!HandOverOrOpen(window, help::InFull(help::RequestOf(GetCommandLineW(), program)), instance,
                        showCommand))
        return 0;
    return window.Run(LoadAcceleratorsW(instance, MAKEINTRESOURCEW(IDR_HELP_KEYS)));
}
