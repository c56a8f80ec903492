#include "ui/launch.h"

#include <gtest/gtest.h>

#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "support/import_watch.h"
#include "support/test_store.h"
#include "support/test_windows.h"

namespace {

// What the system was asked to start, which it does not.
class StartWatch {
  public:
    struct Start {
        std::wstring application;
        std::optional<std::wstring> commandLine;
        bool isPlain; // nothing beside these is asked for
    };
    StartWatch() { s_starts.clear(); }
    const std::vector<Start>& Starts() const { return s_starts; }

  private:
    static BOOL WINAPI Take(LPCWSTR application, LPWSTR commandLine, LPSECURITY_ATTRIBUTES process,
                            LPSECURITY_ATTRIBUTES thread, BOOL inherit, DWORD flags, LPVOID environment,
                            LPCWSTR folder, LPSTARTUPINFOW startup, LPPROCESS_INFORMATION)
    {
        STARTUPINFOW none{};
        none.cb = sizeof none;
        s_starts.push_back({application ? application : L"",
                            commandLine ? std::optional<std::wstring>(commandLine) : std::nullopt,
                            !process && !thread && !inherit && !flags && !environment && !folder &&
                                std::memcmp(startup, &none, sizeof none) == 0});
        return TRUE;
    }

    static inline std::vector<Start> s_starts;
    const ImportWatch<decltype(&CreateProcessW)> m_watch{&__imp_CreateProcessW, Take};
};

std::wstring FolderOfTest()
{
    wchar_t path[MAX_PATH] = L"";
    const std::wstring own(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
    return own.substr(0, own.rfind(L'\\') + 1);
}

// A file of the test's own beside this program.
class FileBeside {
  public:
    explicit FileBeside(const wchar_t* name) : m_path(FolderOfTest() + name)
    {
        EXPECT_TRUE(WriteFileBytes(m_path, "no program"));
    }
    ~FileBeside() { DeleteFileW(m_path.c_str()); }
    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;

    const std::wstring& Path() const { return m_path; }

  private:
    std::wstring m_path;
};

TEST(LaunchCompanion, StartsTheFullPathWithTheCommandLineAlone)
{
    const FileBeside program(L"launch-test.exe");
    const StartWatch watch;
    const MessageBoxAnswerer boxes;
    LaunchCompanion({L"launch-test.exe", L"My Handheld PC", L"text", L"title"}, nullptr);
    LaunchCompanion({L"launch-test.exe", nullptr, L"text", L"title"}, nullptr);
    ASSERT_EQ(watch.Starts().size(), 2u);
    for (const StartWatch::Start& start : watch.Starts()) {
        EXPECT_EQ(start.application, program.Path());
        EXPECT_TRUE(start.isPlain);
    }
    EXPECT_EQ(watch.Starts()[0].commandLine, L"My Handheld PC");
    EXPECT_EQ(watch.Starts()[1].commandLine, std::nullopt);
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST(LaunchCompanion, LooksBesideThisProgramBeforeItSearches)
{
    const FileBeside program(L"hostname.exe"); // the system has one, too
    const StartWatch watch;
    LaunchCompanion({L"hostname.exe", nullptr, L"", L""}, nullptr);
    ASSERT_EQ(watch.Starts().size(), 1u);
    EXPECT_EQ(watch.Starts()[0].application, program.Path());
}

TEST(LaunchCompanion, AFolderOfItsNameIsNoProgram)
{
    const std::wstring folder = FolderOfTest() + L"launch-folder.exe";
    ASSERT_TRUE(CreateDirectoryW(folder.c_str(), nullptr));
    const MessageBoxAnswerer boxes;
    LaunchCompanion({L"launch-folder.exe", nullptr, L"text", L"title"}, nullptr);
    RemoveDirectoryW(folder.c_str());
    EXPECT_EQ(boxes.Boxes().size(), 1u);
}

TEST(LaunchCompanion, WhatCannotBeStartedIsToldOverTheOwner)
{
    const FileBeside program(L"launch-test.exe"); // found, but no program
    const MessageBoxAnswerer boxes({IDCANCEL});
    const TestParent owner;
    LaunchCompanion({L"launch-test.exe", nullptr, L"text", L"title"}, owner.Handle());
    LaunchCompanion({L"launch-absent.exe", nullptr, L"text", L"title"}, owner.Handle());
    ASSERT_EQ(boxes.Boxes().size(), 2u);
    for (const MessageBoxAnswerer::Box& box : boxes.Boxes()) {
        EXPECT_EQ(box.text, L"text");
        EXPECT_EQ(box.caption, L"title");
        EXPECT_EQ(box.owner, owner.Handle());
        EXPECT_EQ(box.answers, (std::vector{IDOK, IDCANCEL}));
    }
}

TEST(ShowHelp, StartsTheViewerWithTheTopicAlone)
{
    const bool isThere = !FindProgram(L"PegHelp.exe").empty();
    std::optional<FileBeside> viewer;
    if (!isThere)
        viewer.emplace(L"PegHelp.exe");
    const StartWatch watch;
    for (const wchar_t* topic : {kHelpMain, kHelpFound, kHelpEntry})
        ShowHelp(topic, nullptr);
    ASSERT_EQ(watch.Starts().size(), 3u);
    EXPECT_EQ(watch.Starts()[0].application, FolderOfTest() + L"PegHelp.exe");
    EXPECT_EQ(watch.Starts()[0].commandLine, L"pellwyn.htm#Main_Contents");
    EXPECT_EQ(watch.Starts()[1].commandLine, L"pellwyn.htm#Found_Window");
    EXPECT_EQ(watch.Starts()[2].commandLine, L"pellwyn.htp#Entry_Window");
}

} // namespace
