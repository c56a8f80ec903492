#include "app/companions.h"

#include <gtest/gtest.h>

#include "res/resource.h"
#include "support/command_line_file.h"
#include "support/import_watch.h"
#include "support/test_store.h"
#include "support/test_windows.h"
#include "ui/launch.h"

namespace {

struct Failure {
    UINT command;
    const wchar_t* text;
    const wchar_t* title;
};

class Companions : public testing::TestWithParam<Failure> {};

TEST_P(Companions, AMissingProgramIsToldInABox)
{
    const NothingStarts nothing;
    const MessageBoxAnswerer answerer({IDCANCEL});
    const TestParent owner;
    LaunchCompanionOf(GetParam().command, owner.Handle());
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, GetParam().text);
    EXPECT_EQ(answerer.Boxes()[0].caption, GetParam().title);
    EXPECT_EQ(answerer.Boxes()[0].owner, owner.Handle());
    EXPECT_EQ(answerer.Boxes()[0].answers, (std::vector{IDOK, IDCANCEL}));
}

INSTANTIATE_TEST_SUITE_P(
    All, Companions,
    testing::Values(Failure{CMD_CALENDAR, L"Error starting Calendar", L"Calendar not found"},
                    Failure{CMD_CONTACTS, L"Error starting Address Book", L"Addrbook not found"},
                    Failure{CMD_INBOX, L"Error starting Inbox", L"Pmail.exe not found"},
                    Failure{CMD_TASKS, L"Error starting Tasks", L"Tasks.exe not found"},
                    Failure{CMD_MY_HANDHELD, L"Error starting explorer", L"iexplorm.exe not found"}));

TEST(CompanionOf, NamesTheProgramAndItsCommandLine)
{
    struct Wanted {
        UINT command;
        const wchar_t* program;
    };
    const Wanted wanted[] = {{CMD_CALENDAR, L"calendar.exe"},
                             {CMD_CONTACTS, L"addrbook.exe"},
                             {CMD_INBOX, L"pmail.exe"},
                             {CMD_TASKS, L"tasks.exe"}};
    for (const Wanted& entry : wanted) {
        const Companion* companion = CompanionOf(entry.command);
        ASSERT_NE(companion, nullptr) << entry.command;
        EXPECT_STREQ(companion->program, entry.program);
        EXPECT_EQ(companion->commandLine, nullptr) << entry.command;
    }
    ASSERT_NE(CompanionOf(CMD_MY_HANDHELD), nullptr);
    EXPECT_STREQ(CompanionOf(CMD_MY_HANDHELD)->program, L"iexplorm.exe");
    EXPECT_STREQ(CompanionOf(CMD_MY_HANDHELD)->commandLine, L"My Handheld PC");
    EXPECT_EQ(CompanionOf(123), nullptr);
}

TEST(Launch, AMissingHelpViewerIsToldInABox)
{
    const NothingStarts nothing;
    const MessageBoxAnswerer answerer({IDOK});
    const TestParent owner;
    ShowHelp(kHelpMain, owner.Handle());
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"Error starting help");
    EXPECT_EQ(answerer.Boxes()[0].caption, L"PegHelp.exe not found");
}

TEST(Launch, HelpTopicsAreTheGivenCommandLines)
{
    EXPECT_STREQ(kHelpMain, L"pellwyn.htm#Main_Contents");
    EXPECT_STREQ(kHelpFound, L"pellwyn.htm#Found_Window");
    EXPECT_STREQ(kHelpEntry, L"pellwyn.htp#Entry_Window");
}

TEST(StartedProgram, GetsTheCommandLineAsItStands)
{
    const CommandLineFile file;
    const MessageBoxAnswerer answerer;
    LaunchCompanion({L"command_line_writer.exe", L"My Handheld PC", L"", L""}, nullptr);
    EXPECT_EQ(file.Read(), L"My Handheld PC");
    EXPECT_TRUE(answerer.Boxes().empty());
}

TEST(StartedProgram, WithoutACommandLineGetsNoArguments)
{
    const CommandLineFile file;
    const MessageBoxAnswerer answerer;
    LaunchCompanion({L"command_line_writer.exe", nullptr, L"", L""}, nullptr);
    const std::wstring commandLine = file.Read();
    EXPECT_TRUE(commandLine.ends_with(L"command_line_writer.exe") ||
                commandLine.ends_with(L"command_line_writer.exe\""));
    EXPECT_TRUE(answerer.Boxes().empty());
}

TEST(Launch, OtherCommandsStartNothing)
{
    const MessageBoxAnswerer answerer;
    LaunchCompanionOf(123, nullptr);
    EXPECT_TRUE(answerer.Boxes().empty());
}

TEST(Launch, AProgramBesideThisOneIsFoundFirst)
{
    wchar_t own[MAX_PATH];
    GetModuleFileNameW(nullptr, own, MAX_PATH);
    const std::wstring path = own;
    const std::wstring name = path.substr(path.find_last_of(L'\\') + 1);
    EXPECT_EQ(FindProgram(name.c_str()), path);
    EXPECT_NE(FindProgram(L"cmd.exe").find(L"\\cmd.exe"), std::wstring::npos);
    EXPECT_EQ(FindProgram(L"no-such-program.exe"), L"");
}

} // namespace
