#include "help/help_file.h"

#include <gtest/gtest.h>

#include "help/help_book.h"
#include "pages.h"
#include "util/owners.h"

namespace help {
namespace {

std::wstring TroubleOf(const HelpBook& book)
{
    std::wstring text;
    for (const Block& block : book.Trouble())
        text += block.Text() + L"\n";
    return text;
}

bool Says(const HelpBook& book, const std::wstring& words)
{
    return TroubleOf(book).find(words) != std::wstring::npos;
}

TEST(HelpFile, TellsWhatIsWrong)
{
    TestFolder folder;
    EXPECT_EQ(ReadHelpFile(folder.Path() + L"absent.htm").state, FileState::Missing);
    EXPECT_EQ(ReadHelpFile(folder.Path() + L"absent\\absent.htm").state, FileState::Missing);
    EXPECT_EQ(ReadHelpFile(folder.Path()).state, FileState::Unreadable);
    EXPECT_EQ(ReadHelpFile(folder.Write(L"program.htm", "MZ" + std::string(4000, '\0'))).state,
              FileState::NoText);
    EXPECT_EQ(ReadHelpFile(folder.Write(L"some nuls.htm", std::string(100, 'x') + '\0')).state,
              FileState::Read);
    EXPECT_EQ(ReadHelpFile(folder.Write(L"empty.htm", "")).state, FileState::Read);
    EXPECT_EQ(ReadHelpFile(folder.Write(L"full.htm", std::string(kMaxHelpFile, 'x'))).state, FileState::Read);
    EXPECT_EQ(ReadHelpFile(folder.Write(L"over.htm", std::string(kMaxHelpFile + 1, 'x'))).state,
              FileState::TooLarge);
}

TEST(HelpFile, FiftyMegabytesAreRefusedAtOnce)
{
    TestFolder folder;
    const std::wstring path = folder.Write(L"huge.htm", std::string(50 * 1024 * 1024, '<'));
    HelpBook book;
    const DWORD start = GetTickCount();
    book.Open(path, L"C:\\x\\PegHelp.exe");
    EXPECT_LT(GetTickCount() - start, 2000u);
    EXPECT_EQ(book.Count(), 0u);
    EXPECT_TRUE(Says(book, L"too large"));
    EXPECT_TRUE(Says(book, path));
}

TEST(HelpBook, IsFoundBesideTheProgramThenInItsFolder)
{
    TestFolder folder;
    const std::wstring program = folder.Path() + L"PegHelp.exe";
    HelpBook book;
    book.Open(L"pellwyn.htp", program);
    EXPECT_EQ(book.Count(), 0u);
    EXPECT_TRUE(Says(book, L"cannot be found"));
    EXPECT_TRUE(Says(book, folder.Path() + L"pellwyn.htm"));
    EXPECT_TRUE(Says(book, folder.Path() + L"help\\pellwyn.htm"));
    EXPECT_FALSE(book.IsOpen(L"pellwyn.htm", program));

    folder.Write(L"help\\pellwyn.htm", "<title>Inner</title><h1>A</h1>");
    book.Open(L"pellwyn.htp", program);
    EXPECT_EQ(book.Title(), L"Inner");
    EXPECT_TRUE(book.IsOpen(L"pellwyn.htm", program));
    EXPECT_FALSE(book.IsOpen(L"other.htm", program));

    folder.Write(L"pellwyn.htm", "<title>Beside</title><h1>A</h1><p>x</p><h1>B</h1>");
    book.Open(L"", program);
    EXPECT_EQ(book.Title(), L"Beside");
    EXPECT_EQ(book.Count(), 2u);
    EXPECT_EQ(book.Texts()[0], L"A\rx");
    EXPECT_EQ(book.AllBlocks().size(), 3u);
    EXPECT_TRUE(TroubleOf(book).empty());
}

TEST(HelpBook, AFileThatCannotBeReadIsSaid)
{
    TestFolder folder;
    const std::wstring path = folder.Write(L"pellwyn.htm", "<h1>A</h1>");
    const HANDLE held = CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    const UniqueKernelHandle owner(held);
    HelpBook book;
    book.Open(L"pellwyn.htm", folder.Path() + L"PegHelp.exe");
    EXPECT_EQ(book.Count(), 0u);
    EXPECT_TRUE(Says(book, L"cannot be read"));
    EXPECT_TRUE(Says(book, path));
}

} // namespace
} // namespace help
