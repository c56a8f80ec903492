// The help is read from the program's own folder and from drives of this computer.
#include "help/help_place.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "help/help_book.h"
#include "help/help_file.h"
#include "pages.h"
#include "support/import_watch.h"

namespace help {
namespace {

constexpr const wchar_t* kProgram = L"C:\\Programs\\Journal\\PegHelp.exe";

// Every drive is of one kind.
class Drives {
  public:
    explicit Drives(UINT kind) { s_kind = kind; }

  private:
    static UINT WINAPI Answer(LPCWSTR) { return s_kind; }
    static inline UINT s_kind;
    const ImportWatch<decltype(&GetDriveTypeW)> m_watch{&__imp_GetDriveTypeW, Answer};
};

TEST(HelpPlace, IsOnADriveOfThisComputer)
{
    for (const UINT kind :
         {UINT{DRIVE_FIXED}, UINT{DRIVE_REMOVABLE}, UINT{DRIVE_CDROM}, UINT{DRIVE_RAMDISK}}) {
        const Drives drives(kind);
        EXPECT_TRUE(IsOwnOrLocal(L"D:\\help\\pellwyn.htm", kProgram)) << kind;
    }
    for (const UINT kind : {UINT{DRIVE_REMOTE}, UINT{DRIVE_UNKNOWN}, UINT{DRIVE_NO_ROOT_DIR}}) {
        const Drives drives(kind);
        EXPECT_FALSE(IsOwnOrLocal(L"D:\\help\\pellwyn.htm", kProgram)) << kind;
    }
}

TEST(HelpPlace, IsInTheFolderOfTheProgramWhereverThatIs)
{
    const Drives drives(DRIVE_REMOTE);
    EXPECT_TRUE(IsOwnOrLocal(L"C:\\PROGRAMS\\journal\\pellwyn.htm", kProgram));
    EXPECT_TRUE(IsOwnOrLocal(L"C:\\Programs\\Journal\\help\\pellwyn.htm", kProgram));
    EXPECT_FALSE(IsOwnOrLocal(L"C:\\Programs\\Journal\\..\\pellwyn.htm", kProgram));
    EXPECT_FALSE(IsOwnOrLocal(L"C:\\Programs\\Journals\\pellwyn.htm", kProgram));
    EXPECT_TRUE(IsOwnOrLocal(L"\\\\server\\journal\\pellwyn.htm", L"\\\\server\\journal\\PegHelp.exe"));
    EXPECT_FALSE(IsOwnOrLocal(L"\\\\server\\other\\pellwyn.htm", L"\\\\server\\journal\\PegHelp.exe"));
}

TEST(HelpPlace, IsNeitherADeviceNorAnotherComputer)
{
    const Drives drives(DRIVE_FIXED);
    for (const wchar_t* path :
         {L"\\\\server\\share\\pellwyn.htm", L"//server/share/pellwyn.htm", L"\\\\?\\C:\\pellwyn.htm",
          L"\\\\.\\C:\\pellwyn.htm", L"\\\\?\\UNC\\server\\share\\pellwyn.htm", L"\\\\.\\pipe\\pellwyn.htm",
          L"\\\\?\\GLOBALROOT\\Device\\Mup\\server\\share\\x.htm", L"C:\\NUL", L"C:\\help\\con.htm", L"COM1",
          L""})
        EXPECT_FALSE(IsOwnOrLocal(path, kProgram)) << path;
}

// The files that the program opens.
class Opened {
  public:
    Opened() { s_count = 0; }
    int Count() const { return s_count; }

  private:
    static HANDLE WINAPI Note(LPCWSTR, DWORD, DWORD, LPSECURITY_ATTRIBUTES, DWORD, DWORD, HANDLE)
    {
        ++s_count;
        return INVALID_HANDLE_VALUE;
    }
    static inline int s_count;
    const ImportWatch<decltype(&CreateFileW)> m_watch{&__imp_CreateFileW, Note};
};

TEST(HelpPlace, AFileElsewhereIsNotTouchedAndToldOf)
{
    const Opened opened;
    HelpBook book;
    book.Open(L"\\\\server\\share\\pellwyn.htm", kProgram);
    EXPECT_EQ(opened.Count(), 0);
    EXPECT_EQ(book.Count(), 0u);
    ASSERT_GE(book.Trouble().size(), 3u);
    EXPECT_NE(book.Trouble()[1].Text().find(L"a drive of this computer"), std::wstring::npos);
    EXPECT_EQ(book.Trouble()[2].Text(), L"\\\\server\\share\\pellwyn.htm");
}

TEST(HelpPlace, ADeviceIsNotRead)
{
    EXPECT_EQ(ReadHelpFile(L"NUL").state, FileState::Unreadable);
}

} // namespace
} // namespace help
