#include "launcher/hand_over.h"

#include <windows.h>
#include <objbase.h>
#include <shellapi.h>
#include <shlwapi.h>

#include <algorithm>
#include <string>

#include "util/owners.h"
#include "util/program_search.h"

namespace {

constexpr Way kCalendarWays[] = {{Way::Kind::Client, L"Calendar"}, {Way::Kind::FileType, L".ics"}};
constexpr Way kMailWays[] = {
    {Way::Kind::ChosenMail, L"mailto"}, {Way::Kind::Client, L"Mail"}, {Way::Kind::Protocol, L"mailto"}};
// Programs that keep a calendar keep tasks as well.
constexpr Way kTasksWays[] = {{Way::Kind::Protocol, L"ms-to-do"}, {Way::Kind::Client, L"Calendar"}};
// The computer, with its drives. Wine does not open it so, but its explorer begins above it.
constexpr Way kFilesWays[] = {{Way::Kind::Folder, L"::{20D04FE0-3AEA-1069-A2D8-08002B30309D}"},
                              {Way::Kind::Program, L"explorer.exe"}};

constexpr const wchar_t* kClients = L"Software\\Clients\\";
constexpr const wchar_t* kChoices = L"Software\\Microsoft\\Windows\\Shell\\Associations\\UrlAssociations\\";
constexpr DWORD kLongestKeyName = 255;  // characters
constexpr DWORD kLongestProgram = 1024; // characters, with the terminator

// COM on this thread: the shell may hand what it opens over to an extension, which needs it. Where the system
// refuses, most things open all the same.
class ScopedCom {
  public:
    ScopedCom() = default;
    ~ScopedCom()
    {
        if (SUCCEEDED(m_result))
            CoUninitialize();
    }
    ScopedCom(const ScopedCom&) = delete;
    ScopedCom& operator=(const ScopedCom&) = delete;

  private:
    const HRESULT m_result = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
};

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

// The program is named in full: the system would look for it in the current folder, too.
bool StartCommand(std::wstring command)
{
    const std::wstring program = ProgramOfCommand(command);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (program.empty() || !CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, FALSE, 0,
                                           nullptr, nullptr, &startup, &process))
        return false;
    const UniqueKernelHandle thread(process.hThread), handle(process.hProcess);
    return true;
}

std::wstring CommandOf(const std::wstring& client)
{
    return client + L"\\shell\\open\\command";
}

bool StartClient(const wchar_t* type)
{
    const std::wstring key = std::wstring(kClients) + type;
    const std::wstring client = ReadText(key);
    return !client.empty() && StartCommand(ReadText(CommandOf(key + L"\\" + client)));
}

// Null when the classes know no such name.
HKEY OpenClass(const std::wstring& name)
{
    HKEY key = nullptr;
    if (!name.empty())
        RegOpenKeyExW(HKEY_CLASSES_ROOT, name.c_str(), 0, KEY_READ, &key);
    return key;
}

// What the mail programs under root tell that they take addresses as.
std::wstring CommandOfMailProgram(HKEY root, const wchar_t* scheme, const std::wstring& takenAs)
{
    const std::wstring mails = std::wstring(kClients) + L"Mail";
    HKEY opened = nullptr;
    RegOpenKeyExW(root, mails.c_str(), 0, KEY_READ, &opened);
    const UniqueKey key(opened);
    wchar_t name[kLongestKeyName + 1];
    DWORD size = kLongestKeyName + 1;
    for (DWORD i = 0;
         key && RegEnumKeyExW(key.get(), i, name, &size, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         ++i, size = kLongestKeyName + 1) {
        const std::wstring client = mails + L"\\" + name;
        if (ReadText(root, client + L"\\Capabilities\\URLAssociations", scheme) == takenAs)
            return ReadText(root, CommandOf(client), nullptr);
    }
    return {};
}

// What the system knows of the program for a file's ending or a scheme; empty where there is none.
std::wstring TextOfProgram(ASSOCF kind, ASSOCSTR what, const wchar_t* name)
{
    wchar_t text[kLongestProgram] = L"";
    DWORD size = kLongestProgram;
    const ASSOCF flags = kind | ASSOCF_INIT_IGNOREUNKNOWN;
    return AssocQueryStringW(flags, what, name, L"open", text, &size) == S_OK ? text : L"";
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

// Asked first: the system would offer to look for a program in its shop. A scheme may be left behind by a
// program that is gone.
bool IsAnswered(const wchar_t* scheme)
{
    return RegGetValueW(HKEY_CLASSES_ROOT, scheme, L"URL Protocol", RRF_RT_ANY, nullptr, nullptr, nullptr) ==
               ERROR_SUCCESS &&
           (IsFile(TextOfProgram(ASSOCF_IS_PROTOCOL, ASSOCSTR_EXECUTABLE, scheme)) ||
            !TextOfProgram(ASSOCF_IS_PROTOCOL, ASSOCSTR_APPID, scheme).empty());
}

// An address of the scheme that says nothing more.
bool OpenAddress(const wchar_t* scheme)
{
    return IsAnswered(scheme) && Open((std::wstring(scheme) + L":").c_str());
}

// The user chooses a program for addresses. It is opened as itself where it tells how, or else with an empty
// message.
bool StartChosenMail(const wchar_t* scheme)
{
    const std::wstring chosen =
        ReadText(HKEY_CURRENT_USER, std::wstring(kChoices) + scheme + L"\\UserChoice", L"ProgId");
    const UniqueKey key(OpenClass(chosen));
    return key &&
           (StartCommand(CommandOfMailProgram(HKEY_CURRENT_USER, scheme, chosen)) ||
            StartCommand(CommandOfMailProgram(HKEY_LOCAL_MACHINE, scheme, chosen)) || OpenAddress(scheme));
}

// The program for files of an ending, without a file. One of the system's shop has no path, but a name.
bool StartProgramOfFiles(const wchar_t* ending)
{
    const std::wstring path = TextOfProgram(ASSOCF_NONE, ASSOCSTR_EXECUTABLE, ending);
    if (!path.empty() && StartCommand(L"\"" + path + L"\""))
        return true;
    const std::wstring app = TextOfProgram(ASSOCF_NONE, ASSOCSTR_APPID, ending);
    return !app.empty() && Open((L"shell:AppsFolder\\" + app).c_str());
}

bool StartProgram(const wchar_t* name)
{
    wchar_t folder[MAX_PATH] = L"";
    const UINT size = GetWindowsDirectoryW(folder, MAX_PATH);
    return size > 0 && size < MAX_PATH && StartCommand(L"\"" + std::wstring(folder) + L"\\" + name + L"\"");
}

bool Take(const Way& way)
{
    switch (way.kind) {
    case Way::Kind::Client: return StartClient(way.name);
    case Way::Kind::ChosenMail: return StartChosenMail(way.name);
    case Way::Kind::FileType: return StartProgramOfFiles(way.name);
    case Way::Kind::Protocol: return OpenAddress(way.name);
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
    const ScopedCom com;
    return std::any_of(errand.ways.begin(), errand.ways.end(), Take);
}

int RunErrand(const Errand& errand)
{
    if (HandOver(errand))
        return 0;
    MessageBoxW(nullptr, errand.missing, errand.title, MB_OK | MB_ICONINFORMATION | MB_SETFOREGROUND);
    return 1;
}
