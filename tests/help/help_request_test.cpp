#include "help/help_request.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "help/one_window.h"

namespace help {
namespace {

constexpr const wchar_t* kProgram = L"C:\\My Journal \u4EBA\\PegHelp.exe";

// "file|anchor"
std::wstring Asked(const std::wstring& commandLine)
{
    const HelpRequest request = RequestOf(commandLine, kProgram);
    return request.file + L"|" + request.anchor;
}

TEST(HelpRequest, TheWholeLineIsTheTopicWhenAProgramAsks)
{
    EXPECT_EQ(Asked(L"pellwyn.htm#Main_Contents"), L"pellwyn.htm|Main_Contents");
    EXPECT_EQ(Asked(L"pellwyn.htp#Entry_Window"), L"pellwyn.htp|Entry_Window");
    EXPECT_EQ(Asked(L""), L"|");
    EXPECT_EQ(Asked(L"  "), L"|");
    EXPECT_EQ(Asked(L"pellwyn.htm"), L"pellwyn.htm|");
    EXPECT_EQ(Asked(L"#Keys"), L"|Keys");
}

TEST(HelpRequest, TheProgramsNameIsNoTopic)
{
    EXPECT_EQ(Asked(L"PegHelp.exe"), L"|");
    EXPECT_EQ(Asked(L"peghelp pellwyn.htm#Keys"), L"pellwyn.htm|Keys");
    EXPECT_EQ(Asked(L"\"C:\\My Journal \u4EBA\\PegHelp.exe\" pellwyn.htm#Keys"), L"pellwyn.htm|Keys");
    EXPECT_EQ(Asked(L"\"C:\\My Journal \u4EBA\\PegHelp.exe\""), L"|");
    EXPECT_EQ(Asked(L"\"C:\\My Journal \u4EBA\\PegHelp.exe"), L"|");
    EXPECT_EQ(Asked(L"..\\bin\\PEGHELP.EXE  \"#Keys\" "), L"|Keys");
    EXPECT_EQ(Asked(L"C:\\My Journal \u4EBA\\PegHelp.exe pellwyn.htm#Keys"), L"pellwyn.htm|Keys")
        << "an application alone stands without quotes";
    EXPECT_EQ(Asked(L"PegHelp.exe.htm#Keys"), L"PegHelp.exe.htm|Keys");
    EXPECT_EQ(Asked(L"C:\\My Journal \u4EBA\\PegHelp.exe.htm#Keys"),
              L"C:\\My Journal \u4EBA\\PegHelp.exe.htm|Keys");
    EXPECT_EQ(Asked(L"PegHelper pellwyn.htm"), L"PegHelper pellwyn.htm|");
}

TEST(HelpRequest, PathsMayHaveBlanksQuotesAndAnyLetters)
{
    EXPECT_EQ(Asked(L"C:\\My Files \u00E9\\pellwyn.htm#A"), L"C:\\My Files \u00E9\\pellwyn.htm|A");
    EXPECT_EQ(Asked(L"\"C:\\My Files \u00E9\\pellwyn.htm#A\""), L"C:\\My Files \u00E9\\pellwyn.htm|A");
    EXPECT_EQ(Asked(L"PegHelp \"C:\\My Files\\x.htm\"#A"), L"C:\\My Files\\x.htm|A");
    EXPECT_EQ(Asked(L"C:\\C# notes\\x.htm#A"), L"C:\\C# notes\\x.htm|A") << "the last # counts";
    EXPECT_EQ(Asked(L"C:\\C# notes\\x.htm"), L"C:\\C# notes\\x.htm|") << "no anchor";
    EXPECT_EQ(Asked(L"\"\"\"\"#\"\""), L"|");
}

TEST(HelpRequest, ALineEndsAtAControlCharacter)
{
    EXPECT_EQ(Asked(L"pellwyn.htm\t#A"), L"pellwyn.htm|A") << "but not at a tab";
    EXPECT_EQ(Asked(L"pellwyn.htm#A\nB"), L"pellwyn.htm|A");
    EXPECT_EQ(Asked(std::wstring(L"pellwyn.htm#A\0B", 15)), L"pellwyn.htm|A");
    EXPECT_LE(RequestOfText(std::wstring(1'000'000, L'x')).file.size(), kMaxRequest);
}

TEST(HelpRequest, ComesBackFromItsText)
{
    for (const wchar_t* text : {L"pellwyn.htm#A", L"pellwyn.htm", L"#A", L"", L"C:\\a b\\x.htp#\u4EBA"}) {
        EXPECT_EQ(TextOfRequest(RequestOfText(text)), text);
    }
}

TEST(HelpRequest, AFileIsNamedInFullBeforeItIsHandedOver)
{
    wchar_t folder[MAX_PATH] = L"";
    GetCurrentDirectoryW(MAX_PATH, folder);
    const HelpRequest request = InFull({L"sub\\x.htm", L"A"});
    EXPECT_EQ(request.file, folder + std::wstring(L"\\sub\\x.htm"));
    EXPECT_EQ(request.anchor, L"A");
    EXPECT_EQ(InFull({L"C:\\a b\\x.htm", L""}).file, L"C:\\a b\\x.htm");
    EXPECT_EQ(InFull({L"pellwyn.htm", L""}).file, L"pellwyn.htm") << "that lies beside the program";
    EXPECT_EQ(InFull({L"", L"A"}).file, L"");
    const std::wstring tooLong = L"\\" + std::wstring(40'000, L'x');
    EXPECT_EQ(InFull({tooLong, L""}).file, tooLong) << "what is no path stays as it was asked for";
}

TEST(HelpRequest, TheHelpLiesBesideTheProgramOrInItsFolder)
{
    using Places = std::vector<std::wstring>;
    const std::wstring folder = L"C:\\My Journal \u4EBA\\";
    EXPECT_EQ(PlacesOf(L"pellwyn.htm", kProgram),
              (Places{folder + L"pellwyn.htm", folder + L"help\\pellwyn.htm"}));
    EXPECT_EQ(PlacesOf(L"pellwyn.htp", kProgram), PlacesOf(L"pellwyn.htm", kProgram));
    EXPECT_EQ(PlacesOf(L"", kProgram), PlacesOf(L"pellwyn.htm", kProgram));
    EXPECT_EQ(PlacesOf(L"PELLWYN.HTP", kProgram)[0], folder + L"PELLWYN.HTm");
    EXPECT_EQ(PlacesOf(L"D:\\x\\other.htm", kProgram), (Places{L"D:\\x\\other.htm"}));
    EXPECT_EQ(PlacesOf(L"..\\other.htp", kProgram), (Places{L"..\\other.htm"}));
    EXPECT_EQ(PlacesOf(L"htp", kProgram)[0], folder + L"htp");
}

std::optional<std::wstring> Taken(ULONG_PTR mark, DWORD size, const void* data)
{
    COPYDATASTRUCT message{};
    message.dwData = mark;
    message.cbData = size;
    message.lpData = const_cast<void*>(data);
    return HandedOver(&message);
}

TEST(HandedOverRequest, IsLookedAtBeforeItIsBelieved)
{
    constexpr ULONG_PTR mark = 0x48454C50;
    EXPECT_EQ(Taken(mark, 4, L"#A"), L"#A");
    EXPECT_EQ(Taken(mark, 0, nullptr), L"");
    EXPECT_FALSE(Taken(mark + 1, 4, L"#A"));
    EXPECT_FALSE(Taken(mark, 3, L"#A")) << "half a character";
    EXPECT_FALSE(Taken(mark, 4, nullptr));
    EXPECT_FALSE(Taken(mark, 6, L"#\0A"));
    const std::wstring longText(40'000, L'x');
    EXPECT_FALSE(Taken(mark, static_cast<DWORD>(longText.size() * sizeof(wchar_t)), longText.data()));
    EXPECT_FALSE(HandedOver(nullptr));
}

} // namespace
} // namespace help
