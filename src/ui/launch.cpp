#include "ui/launch.h"

#include "util/owners.h"
#include "util/program_search.h"

namespace {

std::wstring FolderOfThisProgram()
{
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path.substr(0, path.find_last_of(L'\\') + 1);
}

// The system searches nothing for an application name without a folder, so the full path is handed over. The
// command line stays as given: companions read it whole.
bool Start(const Companion& companion)
{
    const std::wstring path = FindProgram(companion.program);
    if (path.empty())
        return false;
    std::wstring commandLine = companion.commandLine ? companion.commandLine : L"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(path.c_str(), companion.commandLine ? commandLine.data() : nullptr, nullptr, nullptr,
                        FALSE, 0, nullptr, nullptr, &startup, &process))
        return false;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}

} // namespace

std::wstring FindProgram(const wchar_t* name)
{
    const std::wstring beside = FolderOfThisProgram() + name;
    return IsFile(beside) ? beside : FindInSystem(name);
}

void LaunchCompanion(const Companion& companion, HWND owner)
{
    if (!Start(companion))
        MessageBoxW(owner, companion.errorText, companion.errorTitle, MB_OKCANCEL);
}

void ShowHelp(const wchar_t* topic, HWND owner)
{
    LaunchCompanion({L"PegHelp.exe", topic, L"Error starting help", L"PegHelp.exe not found"}, owner);
}
