#include "launcher/hand_over.h"

#include <windows.h>
#include <shellapi.h>

#include <algorithm>
#include <string>

#include "util/owners.h"

namespace {

constexpr Way kCalendarWays[] = {{Way::Kind::Client, L"Calendar"}, {Way::Kind::Protocol, L"outlookcal"}};
constexpr Way kMailWays[] = {
    {Way::Kind::Client, L"Mail"}, {Way::Kind::Protocol, L"outlookmail"}, {Way::Kind::Protocol, L"mailto"}};
// Programs that keep a calendar keep tasks as well.
constexpr Way kTasksWays[] = {{Way::Kind::Protocol, L"ms-to-do"}, {Way::Kind::Client, L"Calendar"}};
// The computer, with its drives. Wine does not open it so, but its explorer begins above it.
constexpr Way kFilesWays[] = {{Way::Kind::Folder, L"::{20D04FE0-3AEA-1069-A2D8-08002B30309D}"},
                              {Way::Kind::Program, L"explorer.exe"}};

// A text of the registry with its variables filled in; empty when there is none.
std::wstring ReadText(HKEY root, const std::wstring& key, const wchar_t* name)
{
    constexpr DWORD kLongestCommand = 32'767; // of CreateProcessW, in characters
    DWORD size = 0;
    if (RegGetValueW(root, key.c_str(), name, RRF_RT_REG_SZ, nullptr, nullptr, &size) != ERROR_SUCCESS ||
        size > kLongestCommand * sizeof(wchar_t))
        return {};
    std::wstring text(size / sizeof(wchar_t) + 1, L'\0');
    size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    if (RegGetValueW(root, key.c_str(), name, RRF_RT_REG_SZ, nullptr, text.data(), &size) != ERROR_SUCCESS)
        return {};
    return text.c_str();
}

// The user's choice comes before the computer's.
std::wstring ReadText(const std::wstring& key)
{
    const std::wstring own = ReadText(HKEY_CURRENT_USER, key, nullptr);
    return own.empty() ? ReadText(HKEY_LOCAL_MACHINE, key, nullptr) : own;
}

bool StartCommand(std::wstring command)
{
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (command.empty() || !CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                           nullptr, &startup, &process))
        return false;
    const UniqueKernelHandle thread(process.hThread), handle(process.hProcess);
    return true;
}

bool StartClient(const wchar_t* type)
{
    const std::wstring key = std::wstring(L"Software\\Clients\\") + type;
    const std::wstring client = ReadText(key);
    return !client.empty() && StartCommand(ReadText(key + L"\\" + client + L"\\shell\\open\\command"));
}

bool StartProgram(const wchar_t* name)
{
    wchar_t folder[MAX_PATH] = L"";
    const UINT size = GetWindowsDirectoryW(folder, MAX_PATH);
    return size > 0 && size < MAX_PATH && StartCommand(L"\"" + std::wstring(folder) + L"\\" + name + L"\"");
}

bool Open(const wchar_t* what)
{
    SHELLEXECUTEINFOW execute{};
    execute.cbSize = sizeof execute;
    execute.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC; // this process ends at once
    execute.lpVerb = L"open";
    execute.lpFile = what;
    execute.nShow = SW_SHOWNORMAL;
    return ShellExecuteExW(&execute) != FALSE;
}

// Asked first: the system would offer to look for a program in its shop.
bool IsRegistered(const wchar_t* scheme)
{
    return RegGetValueW(HKEY_CLASSES_ROOT, scheme, L"URL Protocol", RRF_RT_ANY, nullptr, nullptr, nullptr) ==
           ERROR_SUCCESS;
}

bool Take(const Way& way)
{
    switch (way.kind) {
    case Way::Kind::Client: return StartClient(way.name);
    case Way::Kind::Protocol: return IsRegistered(way.name) && Open((std::wstring(way.name) + L":").c_str());
    case Way::Kind::Folder: return Open(way.name);
    case Way::Kind::Program: return StartProgram(way.name);
    }
    return false;
}

} // namespace

const Errand kCalendarErrand{L"Calendar",
                             L"There is no calendar program on this computer that the journal could open.",
                             kCalendarWays};
const Errand kMailErrand{L"Inbox", L"There is no mail program on this computer that the journal could open.",
                         kMailWays};
const Errand kTasksErrand{
    L"Tasks", L"There is no program for tasks on this computer that the journal could open.", kTasksWays};
const Errand kFilesErrand{
    L"My Handheld PC", L"The computer's files could not be opened: the system shows no folders.", kFilesWays};

bool HandOver(const Errand& errand)
{
    return std::any_of(errand.ways.begin(), errand.ways.end(), Take);
}

int RunErrand(const Errand& errand)
{
    if (HandOver(errand))
        return 0;
    MessageBoxW(nullptr, errand.missing, errand.title, MB_OK | MB_ICONINFORMATION | MB_SETFOREGROUND);
    return 1;
}
