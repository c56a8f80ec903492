#include "launcher/hand_over.h"

#include <gtest/gtest.h>

#include <windows.h>
#include <objbase.h>
#include <shlwapi.h>

#include <string>
#include <vector>

#include "support/command_line_file.h"
#include "support/import_watch.h"
#include "support/test_windows.h"
#include "util/owners.h"

namespace {

constexpr const wchar_t* kCalendars = L"Software\\Clients\\Calendar";
constexpr const wchar_t* kMails = L"Software\\Clients\\Mail";
constexpr const wchar_t* kChoice =
    L"Software\\Microsoft\\Windows\\Shell\\Associations\\UrlAssociations\\mailto";

void SetText(HKEY root, const std::wstring& key, const wchar_t* name, const std::wstring& text,
             DWORD type = REG_SZ)
{
    ASSERT_EQ(SHSetValueW(root, key.c_str(), name, type, text.c_str(),
                          static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))),
              ERROR_SUCCESS);
}

std::wstring Quoted(const std::wstring& path)
{
    return L"\"" + path + L"\"";
}

// What the user has installed: nothing at first.
class HandOverTest : public testing::Test {
  protected:
    HandOverTest() { RemoveAll(); }
    ~HandOverTest() override { RemoveAll(); }

    static void SetClient(const wchar_t* type, const std::wstring& command, DWORD kind = REG_SZ)
    {
        SetText(HKEY_CURRENT_USER, type, nullptr, L"Some Client");
        SetText(HKEY_CURRENT_USER, std::wstring(type) + L"\\Some Client\\shell\\open\\command", nullptr,
                command, kind);
    }
    void SetProtocol(const wchar_t* scheme)
    {
        m_schemes.push_back(scheme);
        SetText(HKEY_CLASSES_ROOT, scheme, L"URL Protocol", L"");
        SetClass(scheme);
    }
    // What opens a kind of files or addresses.
    void SetClass(const wchar_t* name)
    {
        m_schemes.push_back(name);
        SetText(HKEY_CLASSES_ROOT, std::wstring(name) + L"\\shell\\open\\command", nullptr,
                Quoted(CommandLineFile::ProgramPath()) + L" \"%1\"");
    }
    void SetFileType(const wchar_t* ending)
    {
        m_schemes.push_back(ending);
        SetText(HKEY_CLASSES_ROOT, ending, nullptr, L"Test.File");
        SetClass(L"Test.File");
    }
    // The user has chosen it for addresses of e-mail.
    void Choose(const wchar_t* program)
    {
        SetText(HKEY_CURRENT_USER, std::wstring(kChoice) + L"\\UserChoice", L"ProgId", program);
    }
    // A program that tells what it takes addresses as, with its command.
    static void SetMailProgram(HKEY root, const wchar_t* name, const wchar_t* takenAs)
    {
        const std::wstring key = std::wstring(kMails) + L"\\" + name;
        SetText(root, key + L"\\Capabilities\\URLAssociations", L"mailto", takenAs);
        SetText(root, key + L"\\shell\\open\\command", nullptr,
                Quoted(CommandLineFile::ProgramPath()) + L" " + name);
    }

    CommandLineFile m_file;

  private:
    void RemoveAll()
    {
        for (const wchar_t* type : {kCalendars, kMails})
            SHDeleteKeyW(HKEY_CURRENT_USER, type);
        SHDeleteKeyW(HKEY_LOCAL_MACHINE, kMails);
        SHDeleteKeyW(HKEY_CURRENT_USER, kChoice);
        for (const wchar_t* scheme : m_schemes)
            SHDeleteKeyW(HKEY_CLASSES_ROOT, scheme);
    }

    std::vector<const wchar_t*> m_schemes;
};

TEST_F(HandOverTest, TheDefaultProgramOfATypeComesFirst)
{
    SetClient(kCalendars, Quoted(CommandLineFile::ProgramPath()) + L" calendar");
    SetFileType(L".ics");
    EXPECT_TRUE(HandOver(kCalendarErrand));
    EXPECT_EQ(m_file.Read(), Quoted(CommandLineFile::ProgramPath()) + L" calendar");
}

TEST_F(HandOverTest, TheMailProgramIsTheMailsOwn)
{
    SetClient(kCalendars, Quoted(CommandLineFile::ProgramPath()) + L" calendar");
    SetClient(kMails, Quoted(CommandLineFile::ProgramPath()) + L" mail");
    EXPECT_TRUE(HandOver(kMailErrand));
    EXPECT_EQ(m_file.Read(), Quoted(CommandLineFile::ProgramPath()) + L" mail");
}

TEST_F(HandOverTest, VariablesOfACommandAreFilledIn)
{
    SetEnvironmentVariableW(L"HAND_OVER_TEST", CommandLineFile::ProgramPath().c_str());
    SetClient(kCalendars, L"\"%HAND_OVER_TEST%\" filled", REG_EXPAND_SZ);
    EXPECT_TRUE(HandOver(kCalendarErrand));
    EXPECT_EQ(m_file.Read(), Quoted(CommandLineFile::ProgramPath()) + L" filled");
    SetEnvironmentVariableW(L"HAND_OVER_TEST", nullptr);
}

TEST_F(HandOverTest, WithoutADefaultCalendarTheProgramOfItsFilesIsOne)
{
    SetFileType(L".ics");
    EXPECT_TRUE(HandOver(kCalendarErrand));
    EXPECT_EQ(m_file.Read(), Quoted(CommandLineFile::ProgramPath()));
}

TEST_F(HandOverTest, MailFallsBackToItsProtocol)
{
    SetProtocol(L"mailto");
    EXPECT_TRUE(HandOver(kMailErrand));
    EXPECT_EQ(m_file.Read(), Quoted(CommandLineFile::ProgramPath()) + L" \"mailto:\"");
}

TEST_F(HandOverTest, TheChosenMailProgramComesBeforeTheDefaultOne)
{
    for (HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
        SetClient(kMails, Quoted(CommandLineFile::ProgramPath()) + L" default");
        SetMailProgram(root, L"Another", L"Another.Address");
        SetMailProgram(root, L"Chosen", L"Chosen.Address");
        SetClass(L"Chosen.Address");
        Choose(L"Chosen.Address");
        const CommandLineFile file;
        EXPECT_TRUE(HandOver(kMailErrand));
        EXPECT_EQ(file.Read(), Quoted(CommandLineFile::ProgramPath()) + L" Chosen");
        SHDeleteKeyW(root, kMails);
    }
}

TEST_F(HandOverTest, AChosenProgramThatIsNoneOfMailGetsAnAddress)
{
    SetClient(kMails, Quoted(CommandLineFile::ProgramPath()) + L" default");
    SetProtocol(L"mailto");
    SetClass(L"Chosen.Address");
    Choose(L"Chosen.Address");
    EXPECT_TRUE(HandOver(kMailErrand));
    EXPECT_EQ(m_file.Read(), Quoted(CommandLineFile::ProgramPath()) + L" \"mailto:\"");
}

TEST_F(HandOverTest, AChosenProgramThatIsGoneIsPassedOver)
{
    SetClient(kMails, Quoted(CommandLineFile::ProgramPath()) + L" default");
    SetProtocol(L"mailto");
    Choose(L"Gone.Address");
    EXPECT_TRUE(HandOver(kMailErrand));
    EXPECT_EQ(m_file.Read(), Quoted(CommandLineFile::ProgramPath()) + L" default");
}

// Of this thread; MTA, which nobody asks for, where it has none.
APTTYPE Apartment()
{
    APTTYPE type = APTTYPE_MTA;
    APTTYPEQUALIFIER qualifier{};
    return SUCCEEDED(CoGetApartmentType(&type, &qualifier)) ? type : APTTYPE_MTA;
}

// What the shell was to open, which it does not; it answers that it did, or that it could not.
class ShellWatch {
  public:
    explicit ShellWatch(BOOL answer)
    {
        s_answer = answer;
        s_asked.clear();
    }
    const std::vector<std::wstring>& Asked() const { return s_asked; }

  private:
    static BOOL WINAPI Note(SHELLEXECUTEINFOW* execute)
    {
        EXPECT_TRUE(execute->fMask & SEE_MASK_FLAG_NO_UI) << "the launcher says it, and nobody else";
        EXPECT_TRUE(execute->fMask & SEE_MASK_NOASYNC) << "the process ends at once";
        EXPECT_NE(Apartment(), APTTYPE_MTA) << "what opens it may be an extension of the shell's";
        EXPECT_STREQ(execute->lpVerb, L"open");
        EXPECT_EQ(execute->nShow, SW_SHOWNORMAL);
        s_asked.push_back(execute->lpFile);
        return s_answer;
    }

    static inline BOOL s_answer = FALSE;
    static inline std::vector<std::wstring> s_asked;
    const ImportWatch<decltype(&ShellExecuteExW)> m_watch{&__imp_ShellExecuteExW, Note};
};

TEST_F(HandOverTest, AnAddressWhoseProgramIsGoneIsNotOpened)
{
    SetProtocol(L"mailto");
    SetText(HKEY_CLASSES_ROOT, L"mailto\\shell\\open\\command", nullptr, L"\"C:\\no such program.exe\" %1");
    EXPECT_FALSE(HandOver(kMailErrand));
    SHDeleteKeyW(HKEY_CLASSES_ROOT, L"mailto\\shell");
    EXPECT_FALSE(HandOver(kMailErrand));
}

// The system would show its shop, and tell that it has opened the address.
TEST_F(HandOverTest, AChosenProgramWhoseFileIsGoneIsPassedOver)
{
    SetClient(kMails, Quoted(CommandLineFile::ProgramPath()) + L" default");
    SetProtocol(L"mailto");
    SetText(HKEY_CLASSES_ROOT, L"mailto\\shell\\open\\command", nullptr, L"\"C:\\no such program.exe\" %1");
    SetClass(L"Gone.Address");
    Choose(L"Gone.Address");
    const ShellWatch shell(TRUE);
    EXPECT_TRUE(HandOver(kMailErrand));
    EXPECT_EQ(shell.Asked(), std::vector<std::wstring>{});
    EXPECT_EQ(m_file.Read(), Quoted(CommandLineFile::ProgramPath()) + L" default");
}

// The path of the program that the system was asked to start, which it does not.
class StartedPath {
  public:
    StartedPath() { s_path.clear(); }
    const std::wstring& Path() const { return s_path; }

  private:
    static BOOL WINAPI Note(LPCWSTR program, LPWSTR, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL,
                            DWORD, LPVOID, LPCWSTR, LPSTARTUPINFOW, LPPROCESS_INFORMATION)
    {
        s_path = program ? program : L"";
        return FALSE;
    }
    static inline std::wstring s_path;
    const ImportWatch<decltype(&CreateProcessW)> m_watch{&__imp_CreateProcessW, Note};
};

TEST_F(HandOverTest, AProgramIsStartedByItsFullPath)
{
    const StartedPath started;
    const std::wstring program = CommandLineFile::ProgramPath();
    for (const std::wstring& command : {Quoted(program) + L" /x", program + L" /x"}) {
        SetClient(kCalendars, command);
        EXPECT_FALSE(HandOver(kCalendarErrand));
        EXPECT_EQ(started.Path(), program);
    }
}

TEST_F(HandOverTest, NothingIsStartedFromTheCurrentFolder)
{
    wchar_t before[MAX_PATH] = L"";
    GetCurrentDirectoryW(MAX_PATH, before);
    const std::wstring program = CommandLineFile::ProgramPath();
    const size_t end = program.find_last_of(L'\\');
    ASSERT_TRUE(SetCurrentDirectoryW(program.substr(0, end).c_str()));
    SetClient(kCalendars, program.substr(end + 1) + L" calendar");
    EXPECT_FALSE(HandOver(kCalendarErrand));
    SetCurrentDirectoryW(before);
}

TEST_F(HandOverTest, TasksHaveAProtocolAndElseTheCalendar)
{
    SetClient(kCalendars, Quoted(CommandLineFile::ProgramPath()) + L" calendar");
    EXPECT_TRUE(HandOver(kTasksErrand));
    EXPECT_EQ(m_file.Read(), Quoted(CommandLineFile::ProgramPath()) + L" calendar");
    SetProtocol(L"ms-to-do");
    const CommandLineFile second;
    EXPECT_TRUE(HandOver(kTasksErrand));
    EXPECT_EQ(second.Read(), Quoted(CommandLineFile::ProgramPath()) + L" \"ms-to-do:\"");
}

TEST_F(HandOverTest, ADefaultProgramThatIsGoneIsPassedOver)
{
    for (const std::wstring command : {L"\"C:\\no such program.exe\"", L"", L"\""}) {
        SetClient(kCalendars, command);
        EXPECT_FALSE(HandOver(kCalendarErrand)) << command;
    }
    SetText(HKEY_CURRENT_USER, kCalendars, nullptr, L"Another Client");
    EXPECT_FALSE(HandOver(kCalendarErrand)) << "a name without a command";
    SetFileType(L".ics");
    EXPECT_TRUE(HandOver(kCalendarErrand));
    EXPECT_NE(m_file.Read(), L"");
}

TEST_F(HandOverTest, WhatIsNoTextOrTooLongIsNoCommand)
{
    SetClient(kCalendars, Quoted(CommandLineFile::ProgramPath()), REG_BINARY);
    EXPECT_FALSE(HandOver(kCalendarErrand));
    SetClient(kCalendars, Quoted(CommandLineFile::ProgramPath()) + L" " + std::wstring(40'000, L'x'));
    EXPECT_FALSE(HandOver(kCalendarErrand));
}

TEST_F(HandOverTest, ASchemeThatIsNoProtocolIsNotOpened)
{
    SetProtocol(L"mailto");
    SHDeleteValueW(HKEY_CLASSES_ROOT, L"mailto", L"URL Protocol");
    EXPECT_FALSE(HandOver(kMailErrand));
}

TEST_F(HandOverTest, ThatThereIsNothingIsSaidPlainly)
{
    const NothingStarts nothingStarts;
    const ShellWatch nothingOpens(FALSE);
    const MessageBoxAnswerer boxes;
    EXPECT_EQ(RunErrand(kCalendarErrand), 1);
    EXPECT_EQ(RunErrand(kTasksErrand), 1);
    EXPECT_EQ(RunErrand(kMailErrand), 1);
    EXPECT_EQ(RunErrand(kFilesErrand), 1);
    ASSERT_EQ(boxes.Boxes().size(), 4u);
    EXPECT_EQ(boxes.Boxes()[2].caption, L"Inbox");
    EXPECT_EQ(boxes.Boxes()[2].text,
              L"There is no mail program on this computer that the journal could open.");
    EXPECT_EQ(boxes.Boxes()[3].caption, L"My Handheld PC");
    EXPECT_EQ(boxes.Boxes()[3].text,
              L"The computer's files could not be opened: the system shows no folders.");
    EXPECT_EQ(boxes.Boxes()[0].caption, L"Calendar");
    EXPECT_EQ(boxes.Boxes()[0].text,
              L"There is no calendar program on this computer that the journal could open.");
    EXPECT_EQ(boxes.Boxes()[0].owner, nullptr);
    EXPECT_EQ(boxes.Boxes()[0].answers, std::vector<int>{IDOK});
    EXPECT_EQ(boxes.Boxes()[1].caption, L"Tasks");
    EXPECT_EQ(boxes.Boxes()[1].text,
              L"There is no program for tasks on this computer that the journal could open.");
}

TEST_F(HandOverTest, WaysAreTakenInTheirOrderUntilOneLeadsAnywhere)
{
    const ShellWatch nothing(FALSE);
    for (const wchar_t* scheme : {L"outlookcal", L"outlookmail", L"ms-to-do", L"mailto"})
        SetProtocol(scheme);
    EXPECT_FALSE(HandOver(kCalendarErrand)) << "by the addresses of programs that the system has no more";
    EXPECT_FALSE(HandOver(kMailErrand));
    EXPECT_FALSE(HandOver(kTasksErrand));
    EXPECT_EQ(nothing.Asked(), (std::vector<std::wstring>{L"mailto:", L"ms-to-do:"}));
}

TEST_F(HandOverTest, ComIsThereWhileTheShellIsAskedAndGoneAfterwards)
{
    const ShellWatch shell(TRUE);
    ASSERT_EQ(Apartment(), APTTYPE_MTA);
    EXPECT_TRUE(HandOver(kFilesErrand));
    EXPECT_EQ(shell.Asked().size(), 1u) << "or nothing is tried here";
    EXPECT_EQ(Apartment(), APTTYPE_MTA);
}

TEST_F(HandOverTest, TheUsersDefaultProgramComesBeforeTheComputers)
{
    SetText(HKEY_LOCAL_MACHINE, kMails, nullptr, L"Theirs");
    SetText(HKEY_LOCAL_MACHINE, std::wstring(kMails) + L"\\Theirs\\shell\\open\\command", nullptr,
            Quoted(CommandLineFile::ProgramPath()) + L" theirs");
    EXPECT_TRUE(HandOver(kMailErrand));
    EXPECT_EQ(m_file.Read(), Quoted(CommandLineFile::ProgramPath()) + L" theirs");
    SetClient(kMails, Quoted(CommandLineFile::ProgramPath()) + L" own");
    const CommandLineFile second;
    EXPECT_TRUE(HandOver(kMailErrand));
    EXPECT_EQ(second.Read(), Quoted(CommandLineFile::ProgramPath()) + L" own");
    SHDeleteKeyW(HKEY_LOCAL_MACHINE, kMails);
}

// Wine's and Windows' windows of files.
HWND FilesWindow()
{
    HWND window = FindWindowW(L"ExplorerWClass", nullptr);
    return window ? window : FindWindowW(L"CabinetWClass", nullptr);
}

TEST_F(HandOverTest, TheComputersFilesOpen)
{
    {
        const ShellWatch nothing(FALSE);
        const NothingStarts nothingStarts;
        EXPECT_FALSE(HandOver(kFilesErrand));
        EXPECT_EQ(nothing.Asked(), std::vector<std::wstring>{L"::{20D04FE0-3AEA-1069-A2D8-08002B30309D}"});
    }
    ASSERT_EQ(FilesWindow(), nullptr);
    EXPECT_TRUE(HandOver(kFilesErrand));
    EXPECT_TRUE(PumpUntil([] { return FilesWindow() != nullptr; }));
    PostMessageW(FilesWindow(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(PumpUntil([] { return FilesWindow() == nullptr; }));
}

TEST_F(HandOverTest, AWayThatLeadsSomewhereSaysNothing)
{
    SetClient(kCalendars, Quoted(CommandLineFile::ProgramPath()));
    const MessageBoxAnswerer boxes;
    EXPECT_EQ(RunErrand(kCalendarErrand), 0);
    EXPECT_NE(m_file.Read(), L"");
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST(Launchers, EachIsAProgramOfItsOwn)
{
    const std::wstring path = CommandLineFile::ProgramPath();
    const std::wstring folder = path.substr(0, path.find_last_of(L'\\') + 1);
    for (const wchar_t* name : {L"calendar.exe", L"pmail.exe", L"tasks.exe", L"iexplorm.exe"})
        EXPECT_NE(GetFileAttributesW((folder + name).c_str()), INVALID_FILE_ATTRIBUTES) << name;
}

} // namespace
