// The help viewer as it is started: by a program, with the topic as its whole command line, and by a person.
#include <gtest/gtest.h>

#include <windows.h>
#include <richedit.h>

#include <vector>

#include "e2e/harness/remote_menu.h"
#include "e2e/harness/remote_memory.h"
#include "e2e/help/help_viewer.h"
#include "support/send_input.h"
#include "support/temporary_name.h"
#include "support/test_store.h"

namespace {

std::wstring FolderOfTest()
{
    wchar_t path[MAX_PATH] = L"";
    const std::wstring own(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
    return own.substr(0, own.rfind(L'\\') + 1);
}

// Started as the journal does: the path as the application, the line as it is.
UniqueKernelHandle StartWith(const std::wstring& program, std::wstring line)
{
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process))
        return nullptr;
    CloseHandle(process.hThread);
    return UniqueKernelHandle(process.hProcess);
}

bool HasEnded(const UniqueKernelHandle& process)
{
    return process && WaitForSingleObject(process.get(), kRemoteLimit) == WAIT_OBJECT_0;
}

int CountViewers()
{
    int count = 0;
    for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, kHelpViewer, nullptr)) != nullptr;)
        ++count;
    return count;
}

class HelpViewerTest : public testing::Test {
  protected:
    void TearDown() override { EXPECT_TRUE(CloseHelp()); }

    TestRegistry m_registry;
    std::wstring m_program = FolderOfTest() + L"PegHelp.exe";
};

TEST_F(HelpViewerTest, TheTopicAloneIsTheCommandLine)
{
    const auto process = StartWith(m_program, L"pellwyn.htp#Entry_Window");
    ASSERT_TRUE(process);
    EXPECT_TRUE(HelpShows(L"The entry window"));
    EXPECT_EQ(TextOf(HelpViewer()), L"Journal Help");
    ASSERT_TRUE(CloseHelp());
    EXPECT_TRUE(HasEnded(process));
}

TEST_F(HelpViewerTest, APersonMayStartItToo)
{
    ASSERT_TRUE(StartWith(m_program, L"\"" + m_program + L"\""));
    EXPECT_TRUE(HelpShows(L"Your journal"));
    EXPECT_TRUE(HasEnded(StartWith(m_program, L"\"" + m_program + L"\" pellwyn.htm#Backup")));
    EXPECT_TRUE(HelpShows(L"Backup"));
    EXPECT_TRUE(HasEnded(StartWith(m_program, L"PegHelp \"#Keys\"")));
    EXPECT_TRUE(HelpShows(L"All keys"));
}

TEST_F(HelpViewerTest, ASecondRequestMovesTheOpenWindow)
{
    ASSERT_TRUE(StartWith(m_program, L"pellwyn.htm#Main_Contents"));
    ASSERT_TRUE(HelpShows(L"Your journal"));
    HWND window = HelpViewer();
    ShowWindow(window, SW_MINIMIZE);
    EXPECT_TRUE(HasEnded(StartWith(m_program, L"pellwyn.htm#Found_Window")));
    EXPECT_TRUE(HelpShows(L"Find Results"));
    EXPECT_EQ(HelpViewer(), window);
    EXPECT_TRUE(WaitFor([&] { return !IsIconic(window) && GetForegroundWindow() == window; }));
    EXPECT_EQ(CountViewers(), 1);
}

TEST_F(HelpViewerTest, ARaceOfStartsLeavesOneWindow)
{
    std::vector<UniqueKernelHandle> processes;
    for (int count = 0; count < 5; ++count)
        processes.push_back(StartWith(m_program, L"pellwyn.htm#Duration"));
    const auto ended = [&] {
        int count = 0;
        for (const UniqueKernelHandle& process : processes)
            count += process && WaitForSingleObject(process.get(), 0) == WAIT_OBJECT_0;
        return count;
    };
    EXPECT_TRUE(WaitFor([&] { return ended() == 4; }));
    EXPECT_TRUE(HelpShows(L"Durations"));
    EXPECT_EQ(CountViewers(), 1);
}

TEST_F(HelpViewerTest, IsWorkedFromTheKeyboard)
{
    ASSERT_TRUE(StartWith(m_program, L"pellwyn.htm#Main_Contents"));
    ASSERT_TRUE(HelpShows(L"Your journal"));
    HWND window = HelpViewer();
    ASSERT_TRUE(Activate(window));
    ASSERT_TRUE(WaitFor([&] { return FocusOf(window) == Control(window, IDC_TEXT); }));
    PressKey(VK_TAB);
    PressKey(VK_RETURN);
    EXPECT_TRUE(HelpShows(L"First steps"));
    PressKeys({VK_MENU, VK_LEFT});
    EXPECT_TRUE(HelpShows(L"Your journal"));
    PressKeys({VK_MENU, VK_RIGHT});
    EXPECT_TRUE(HelpShows(L"First steps"));
    PressKeys({VK_CONTROL, VK_NEXT});
    EXPECT_TRUE(HelpShows(L"All commands"));
    PressKeys({VK_CONTROL, 'F'});
    ASSERT_TRUE(WaitFor([&] { return FocusOf(window) == Control(window, IDC_FIND); }));
    TypeText(L"enciphered\n");
    EXPECT_TRUE(HelpShows(L"The password"));
    EXPECT_EQ(TextOf(Control(window, IDC_STATUS)), L"Found in: The password");
    PressKey(VK_F6);
    ASSERT_TRUE(WaitFor([&] { return FocusOf(window) == Control(window, IDC_FIND); }));
    PressKey(VK_F6);
    ASSERT_TRUE(WaitFor([&] { return FocusOf(window) == Control(window, IDC_CONTENTS); }));
    PressKey(VK_DOWN);
    EXPECT_TRUE(HelpShows(L"The address book"));
    PressKey(VK_F1);
    EXPECT_TRUE(HelpShows(L"This help"));
    PressKeys({VK_MENU, 'F'});
    PressKey('X');
    EXPECT_TRUE(WaitFor([] { return !HelpViewer(); }));
}

TEST_F(HelpViewerTest, AltF4ClosesIt)
{
    for (const int pane : {IDC_TEXT, IDC_CONTENTS, IDC_FIND}) {
        const auto process = StartWith(m_program, L"pellwyn.htm#Main_Contents");
        ASSERT_TRUE(HelpShows(L"Your journal"));
        HWND window = HelpViewer();
        ASSERT_TRUE(Activate(window));
        for (int step = 0; step < 3 && FocusOf(window) != Control(window, pane); ++step) {
            HWND before = FocusOf(window);
            PressKey(VK_F6);
            ASSERT_TRUE(WaitFor([&] { return FocusOf(window) != before; }));
        }
        ASSERT_EQ(FocusOf(window), Control(window, pane));
        PressKeys({VK_MENU, VK_F4});
        EXPECT_TRUE(HasEnded(process)) << pane;
    }
}

// The system's dialog, or its box that there is no printer: the texts are its own.
TEST_F(HelpViewerTest, PrintingCanBeGivenUp)
{
    ASSERT_TRUE(StartWith(m_program, L"pellwyn.htm#Main_Contents"));
    ASSERT_TRUE(HelpShows(L"Your journal"));
    HWND window = HelpViewer();
    ASSERT_TRUE(Activate(window));
    PressKeys({VK_CONTROL, 'P'});
    ASSERT_TRUE(WaitFor([&] { return !IsWindowEnabled(window) && GetForegroundWindow() != window; }));
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(WaitFor([&] { return IsWindowEnabled(window) && GetForegroundWindow() == window; }));
    PressKeys({VK_CONTROL, VK_NEXT});
    EXPECT_TRUE(HelpShows(L"First steps")) << "nothing more is said";
}

// The middle of a character of the text on the screen, counted from 0.
POINT PlaceOf(HWND text, size_t character)
{
    const UniqueKernelHandle process = ProcessOf(text);
    const RemoteBlock from(process.get(), sizeof(POINTL)), to(process.get(), sizeof(POINTL));
    SendMessageW(text, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(from.Address()),
                 static_cast<LPARAM>(character));
    SendMessageW(text, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(to.Address()),
                 static_cast<LPARAM>(character + 1));
    const auto first = from.Read<POINTL>(), next = to.Read<POINTL>();
    POINT place{(first.x + next.x) / 2, first.y + 8};
    ClientToScreen(text, &place);
    return place;
}

void TurnWheel(int steps)
{
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = MOUSEEVENTF_WHEEL;
    input.mi.mouseData = static_cast<DWORD>(steps * WHEEL_DELTA);
    SendInput(1, &input, sizeof input);
}

int ZoomOf(HWND text)
{
    const UniqueKernelHandle process = ProcessOf(text);
    const RemoteBlock numerator(process.get(), sizeof(int)), denominator(process.get(), sizeof(int));
    SendMessageW(text, EM_GETZOOM, reinterpret_cast<WPARAM>(numerator.Address()), denominator.AsLParam());
    const int divisor = denominator.Read<int>();
    return divisor ? numerator.Read<int>() * 100 / divisor : 100;
}

TEST_F(HelpViewerTest, IsWorkedWithTheMouse)
{
    ASSERT_TRUE(StartWith(m_program, L"pellwyn.htm#Main_Contents"));
    ASSERT_TRUE(HelpShows(L"Your journal"));
    HWND window = HelpViewer(), text = Control(window, IDC_TEXT);
    ASSERT_TRUE(Activate(window));
    std::wstring words = TextOf(text);
    std::erase(words, L'\n'); // a line's end is one character to the control
    const size_t link = words.find(L"First steps");
    ASSERT_NE(link, std::wstring::npos);
    ASSERT_TRUE(Click(PlaceOf(text, link - 5)));
    ASSERT_TRUE(Click(PlaceOf(text, link + 5)));
    EXPECT_TRUE(HelpShows(L"First steps"));
    ASSERT_TRUE(Click(MiddleOf(Control(window, IDC_BACK))));
    EXPECT_TRUE(HelpShows(L"Your journal"));
    ASSERT_TRUE(Click(MiddleOf(Control(window, IDC_FORWARD))));
    EXPECT_TRUE(HelpShows(L"First steps"));

    ASSERT_TRUE(Click(MiddleOf(text)));
    ASSERT_EQ(ZoomOf(text), 100);
    SendKey(VK_CONTROL, true);
    TurnWheel(1);
    EXPECT_TRUE(WaitFor([&] { return ZoomOf(text) > 100; }));
    const int larger = ZoomOf(text);
    TurnWheel(-1);
    EXPECT_TRUE(WaitFor([&] { return ZoomOf(text) < larger; }));
    SendKey(VK_CONTROL, false);
}

// A copy of the viewer in a folder whose name has a blank and letters of another script, without its help.
class LonelyViewer : public HelpViewerTest {
  protected:
    void SetUp() override
    {
        m_folder = TemporaryFolder() + L"lonely \u4EBA help\\";
        CreateDirectoryW(m_folder.c_str(), nullptr);
        m_copy = m_folder + L"PegHelp.exe";
        ASSERT_TRUE(CopyFileW(m_program.c_str(), m_copy.c_str(), FALSE));
    }
    void TearDown() override
    {
        HelpViewerTest::TearDown();
        for (const wchar_t* name : {L"PegHelp.exe", L"pellwyn.htm", L"my notes.htm"})
            DeleteFileW((m_folder + name).c_str());
        EXPECT_TRUE(RemoveDirectoryW(m_folder.c_str()));
    }

    std::wstring m_folder;
    std::wstring m_copy;
};

TEST_F(LonelyViewer, SaysThatItsFileIsMissing)
{
    ASSERT_TRUE(StartWith(m_copy, L"pellwyn.htm#Main_Contents"));
    ASSERT_TRUE(HelpShows(L"There is no help to show"));
    EXPECT_NE(TextOf(Control(HelpViewer(), IDC_TEXT)).find(m_folder + L"pellwyn.htm"), std::wstring::npos);
    // Once the file is there it is read.
    ASSERT_TRUE(WriteFileBytes(m_folder + L"pellwyn.htm", "<h1 id=Main_Contents>New</h1>"));
    EXPECT_TRUE(HasEnded(StartWith(m_copy, L"pellwyn.htm#Main_Contents")));
    EXPECT_TRUE(HelpShows(L"New"));
    EXPECT_TRUE(HasEnded(StartWith(m_copy, L"pellwyn.htm#Absent")));
    EXPECT_TRUE(HelpShows(L"There is no such topic"));
}

TEST_F(LonelyViewer, TakesPathsWithBlanksAndAnyLetters)
{
    ASSERT_TRUE(WriteFileBytes(m_folder + L"my notes.htm", "<h1>Notes</h1><h1 id=B>More</h1>"));
    ASSERT_TRUE(StartWith(m_copy, L"\"" + m_folder + L"my notes.htm\"#B"));
    EXPECT_TRUE(HelpShows(L"More"));
    EXPECT_TRUE(HasEnded(StartWith(m_copy, m_folder + L"my notes.htm")));
    EXPECT_TRUE(HelpShows(L"Notes"));
    wchar_t before[MAX_PATH] = L"";
    GetCurrentDirectoryW(MAX_PATH, before);
    ASSERT_TRUE(SetCurrentDirectoryW(m_folder.c_str()));
    EXPECT_TRUE(HasEnded(StartWith(m_copy, L".\\my notes.htm#B"))) << "from another folder than the window's";
    EXPECT_TRUE(HelpShows(L"More"));
    SetCurrentDirectoryW(before);
}

TEST_F(LonelyViewer, AProgramInItsPlaceIsNoHelp)
{
    ASSERT_TRUE(CopyFileW(m_program.c_str(), (m_folder + L"pellwyn.htm").c_str(), FALSE));
    ASSERT_TRUE(StartWith(m_copy, L"pellwyn.htm#Main_Contents"));
    EXPECT_TRUE(HelpShows(L"There is no help to show"));
}

} // namespace
