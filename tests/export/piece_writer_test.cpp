#include "export/piece_writer.h"

#include "export/export_fixture.h"
#include "support/held_file.h"

namespace {

using Pieces = std::vector<std::string>;

class PieceWriterTest : public testing::Test {
  protected:
    std::string Written(const std::vector<std::wstring>& pieces)
    {
        {
            PieceWriter file(m_file.Path());
            for (const std::wstring& piece : pieces)
                EXPECT_TRUE(file.Write(piece));
        }
        return m_file.Bytes();
    }

    // Of the file on the disk, while nobody else may read it.
    int Size() const
    {
        WIN32_FILE_ATTRIBUTE_DATA data{};
        EXPECT_TRUE(GetFileAttributesExW(m_file.Path().c_str(), GetFileExInfoStandard, &data));
        return static_cast<int>(data.nFileSizeLow);
    }

    ScratchFile m_file;
};

TEST_F(PieceWriterTest, PiecesStandBehindEachOtherWithoutTerminators)
{
    EXPECT_EQ(Written({L"One", L"\r\n", L"", L"two"}), "One\r\ntwo");
}

TEST_F(PieceWriterTest, CharactersComeInTheAnsiCodePage)
{
    ASSERT_EQ(GetACP(), 1252u) << "what is expected below is of this code page";
    EXPECT_EQ(Written({L"\u00E4\u20AC\u2019"}), "\xE4\x80\x92");
    EXPECT_EQ(Written({L"a\u65E5b"}), "a?b") << "the code page's default character";
    EXPECT_EQ(Written({L"a\U0001F600b"}), "a??b") << "one for each half";
    EXPECT_EQ(Written({std::wstring(1, L'\xD83D')}), "?");
    EXPECT_EQ(Written({L"\u0100\uFF22"}), "AB") << "what comes near is taken instead";
}

TEST_F(PieceWriterTest, EachPieceIsOneWriteAndOneFlush)
{
    PieceWatch watch;
    Written({L"Date: ", L"x", L"", L"\r\n"});
    EXPECT_EQ(watch.Pieces(), (Pieces{"Date: ", "x", "\r\n"}));
    EXPECT_TRUE(watch.IsEachFlushed());
}

TEST_F(PieceWriterTest, APieceIsOnTheDiskBeforeTheNext)
{
    PieceWatch watch;
    std::vector<int> sizes;
    watch.onFlush = [&](size_t) { sizes.push_back(Size()); };
    Written({L"one", L"two", L"!"});
    EXPECT_EQ(sizes, (std::vector<int>{3, 6, 7}));
}

TEST_F(PieceWriterTest, LongPiecesAreWholeAndOneWrite)
{
    for (const size_t length : {4095u, 4096u, 4097u, 1'000'000u}) {
        PieceWatch watch;
        EXPECT_EQ(Written({L"<", std::wstring(length, L'\u00E4'), L">"}),
                  "<" + std::string(length, '\xE4') + ">");
        EXPECT_EQ(watch.Pieces().size(), 3u) << length;
    }
}

TEST_F(PieceWriterTest, ALongerFileIsWrittenOverAndCut)
{
    ASSERT_TRUE(WriteFileBytes(m_file.Path(), std::string(1000, 'x')));
    EXPECT_EQ(Written({L"short"}), "short");
    EXPECT_EQ(Written({}), "");
}

TEST_F(PieceWriterTest, ALongerFileIsCutOnlyAtTheEnd)
{
    ASSERT_TRUE(WriteFileBytes(m_file.Path(), "0123456789"));
    {
        PieceWriter file(m_file.Path());
        EXPECT_EQ(Size(), 10);
        EXPECT_TRUE(file.Write(L"abc"));
        EXPECT_EQ(Size(), 10);
    }
    EXPECT_EQ(m_file.Bytes(), "abc");
}

TEST_F(PieceWriterTest, OtherProgramsMayWriteMeanwhileAndNotRead)
{
    const PieceWriter file(m_file.Path());
    const auto open = [&](DWORD access) {
        HANDLE other = CreateFileW(m_file.Path().c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                   OPEN_EXISTING, 0, nullptr);
        if (other != INVALID_HANDLE_VALUE)
            CloseHandle(other);
        return other != INVALID_HANDLE_VALUE;
    };
    EXPECT_TRUE(open(GENERIC_WRITE));
    EXPECT_FALSE(open(GENERIC_READ));
}

TEST_F(PieceWriterTest, AFileThatCannotBeOpenedSwallowsAll)
{
    PieceWatch watch;
    PieceWriter file(L"C:\\no such folder\\export.csv");
    EXPECT_TRUE(file.Write(L"text"));
    EXPECT_TRUE(watch.Pieces().empty());
}

TEST_F(PieceWriterTest, AFileThatAnotherProgramHoldsStaysAsItIs)
{
    ASSERT_TRUE(WriteFileBytes(m_file.Path(), "theirs"));
    HANDLE theirs =
        CreateFileW(m_file.Path().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(theirs, INVALID_HANDLE_VALUE);
    {
        PieceWriter file(m_file.Path());
        EXPECT_TRUE(file.Write(L"ours, which is longer"));
    }
    CloseHandle(theirs);
    EXPECT_EQ(m_file.Bytes(), "theirs");
}

TEST_F(PieceWriterTest, AFileThatAnotherProgramWritesToIsWrittenToo)
{
    HANDLE theirs =
        CreateFileW(m_file.Path().c_str(), GENERIC_WRITE, FILE_SHARE_WRITE, nullptr, CREATE_NEW, 0, nullptr);
    ASSERT_NE(theirs, INVALID_HANDLE_VALUE);
    {
        PieceWriter file(m_file.Path());
        EXPECT_TRUE(file.Write(L"ours"));
    }
    CloseHandle(theirs);
    EXPECT_EQ(m_file.Bytes(), "ours");
}

TEST_F(PieceWriterTest, AFileThatIsHeldForAMomentIsWaitedFor)
{
    ASSERT_EQ(Written({L"before"}), "before");
    const HeldFile held(m_file.Path(), 3);
    EXPECT_EQ(Written({L"after"}), "after");
    EXPECT_EQ(held.Waits(), 3);
}

TEST_F(PieceWriterTest, FailedWritesAreNotReportedAndEachIsTried)
{
    PieceWatch watch;
    watch.failFrom = 1;
    EXPECT_EQ(Written({L"one", L"two", L"three"}), "one");
    EXPECT_EQ(watch.Pieces(), (Pieces{"one", "two", "three"}));
}

TEST_F(PieceWriterTest, APieceWithoutMemoryIsLeftOut)
{
    const NoMemoryFor noMemory(50'000);
    {
        PieceWriter file(m_file.Path());
        EXPECT_TRUE(file.Write(L"one"));
        EXPECT_FALSE(file.Write(std::wstring(60'000, L'x')));
        EXPECT_TRUE(file.Write(L"three"));
    }
    EXPECT_EQ(m_file.Bytes(), "onethree");
}

} // namespace
