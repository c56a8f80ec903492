// What was put aside is still there, one way or the other, whichever call of the system fails.
#include "editor/rescue_file.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/file_faults.h"
#include "support/rescue_folder.h"
#include "support/test_store.h"

namespace {

constexpr uint64_t kStore = 5;

class RescueFaults : public testing::Test {
  protected:
    static RescueState State(const std::wstring& subject)
    {
        RescueState state;
        state.store = kStore;
        state.entry.subject = subject;
        return state;
    }
    static std::wstring Subject(const std::optional<RescueState>& state)
    {
        return state ? state->entry.subject : L"unreadable";
    }
    // The subjects of the files whose names end so.
    std::vector<std::wstring> Subjects(const wchar_t* ending) const
    {
        std::vector<std::wstring> subjects;
        for (const std::wstring& path : m_folder.Files(ending))
            subjects.push_back(Subject(ReadRescue(ReadFileBytes(path))));
        return subjects;
    }
    // As a program that was killed leaves it.
    static void Leave(const std::wstring& subject)
    {
        RescueFile file;
        ASSERT_TRUE(file.Write(State(subject)));
    }
    // Prepares, does something in which the nth call fails, and looks what has come of it, for each n until
    // nothing fails any more.
    template <typename Prepare, typename Action, typename Look>
    void Sweep(Prepare prepare, Action action, Look look)
    {
        bool fired = true;
        for (int n = 1; fired; ++n) {
            SCOPED_TRACE(n);
            prepare();
            m_faults.FailNth(n);
            action();
            fired = m_faults.HasFired();
            m_faults.FailNone();
            look();
            EXPECT_TRUE(fired || n > 1) << "no call was seen";
        }
    }

    RescueFolder m_folder;
    FileFaults m_faults;
};

using Texts = std::vector<std::wstring>;

TEST_F(RescueFaults, AWriteLeavesTheOneBeforeOrTheNewOne)
{
    RescueFile file;
    bool written = false;
    Sweep([&] { ASSERT_TRUE(file.Write(State(L"Before"))); }, [&] { written = file.Write(State(L"After")); },
          [&] {
              EXPECT_EQ(Subject(file.Read()), written ? L"After" : L"Before");
              EXPECT_EQ(m_folder.Files().size(), 2u) << "nothing but the file and its lock";
          });
    EXPECT_TRUE(written);
}

TEST_F(RescueFaults, TheFirstWriteTouchesNoneThatWasLeft)
{
    Leave(L"Left");
    RescueFile file;
    bool written = false;
    Sweep([&] { file = RescueFile(); }, [&] { written = file.Write(State(L"Mine")); },
          [&] {
              EXPECT_EQ(Subject(file.Read()), written ? L"Mine" : L"unreadable");
              EXPECT_TRUE(file.Write(State(L"Mine"))) << "the next time";
              EXPECT_TRUE(file.Remove());
              EXPECT_EQ(Subjects(L""), Texts{L"Left"});
          });
    EXPECT_TRUE(written);
}

TEST_F(RescueFaults, OneThatWasLeftIsFoundNowOrTheNextTime)
{
    Leave(L"Left");
    std::vector<RescueFile> found;
    Sweep([&] { found.clear(); }, [&] { found = RescueFile::FindLeft(kStore); },
          [&] {
              EXPECT_EQ(Subjects(L".rescue"), Texts{L"Left"});
              found.clear();
              EXPECT_EQ(RescueFile::FindLeft(kStore).size(), 1u);
          });
}

TEST_F(RescueFaults, OneSetAsideIsKeptOrFoundAgain)
{
    std::vector<RescueFile> found;
    Sweep(
        [&] {
            for (const std::wstring& path : m_folder.Files())
                DeleteFileW(path.c_str());
            Leave(L"Mine");
            found = RescueFile::FindLeft(kStore);
            ASSERT_EQ(found.size(), 1u);
        },
        [&] { found[0].SetAside(); },
        [&] {
            const Texts kept = Subjects(L".kept"), unsaved = Subjects(L".rescue");
            EXPECT_EQ(kept.empty() ? unsaved : kept, Texts{L"Mine"});
            EXPECT_EQ(m_folder.Files().size(), 1u);
            EXPECT_EQ(RescueFile::FindLeft(kStore).size(), unsaved.size());
        });
    EXPECT_EQ(Subjects(L".kept"), Texts{L"Mine"});
}

// One more than are kept.
TEST_F(RescueFaults, NoneOfTheKeptGoesButTheOldest)
{
    int next = 0;
    const auto keepOne = [&] {
        Leave(std::to_wstring(next++));
        RescueFile::FindLeft(kStore)[0].SetAside();
        Sleep(20); // so that their times differ
    };
    while (next < static_cast<int>(RescueFile::kKept))
        keepOne();
    std::vector<RescueFile> found;
    Sweep(
        [&] {
            keepOne(); // what a fault has left too many goes with it
            Leave(std::to_wstring(next++));
            found = RescueFile::FindLeft(kStore);
            ASSERT_EQ(found.size(), 1u);
        },
        [&] { found[0].SetAside(); },
        [&] {
            for (RescueFile& left : RescueFile::FindLeft(kStore))
                left.SetAside();
            Texts kept = Subjects(L".kept");
            for (int newest = 0; newest < static_cast<int>(RescueFile::kKept); ++newest)
                EXPECT_EQ(std::count(kept.begin(), kept.end(), std::to_wstring(next - 1 - newest)), 1);
            Sleep(20);
        });
}

TEST_F(RescueFaults, OneThatIsRemovedIsGoneOrStillTheOwners)
{
    RescueFile file;
    bool removed = false;
    Sweep([&] { ASSERT_TRUE(file.Write(State(L"Mine"))); }, [&] { removed = file.Remove(); },
          [&] {
              EXPECT_EQ(Subjects(L".rescue"), removed ? Texts{} : Texts{L"Mine"});
              EXPECT_TRUE(RescueFile::FindLeft(kStore).empty());
              EXPECT_EQ(file.HasFile(), !removed);
          });
    EXPECT_TRUE(removed);
}

decltype(&CreateFileW) g_createFile;

HANDLE WINAPI NoLock(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                     DWORD disposition, DWORD flags, HANDLE like)
{
    if (!std::wstring(path).ends_with(L".lock"))
        return g_createFile(path, access, share, security, disposition, flags, like);
    SetLastError(ERROR_ACCESS_DENIED);
    return INVALID_HANDLE_VALUE;
}

// Whose it is could not be told afterwards, so that two might write it.
TEST_F(RescueFaults, WithoutALockNothingIsWrittenAndNothingTakenOver)
{
    Leave(L"Left");
    RescueFile file;
    g_createFile = __imp_CreateFileW;
    {
        const ImportWatch<decltype(&CreateFileW)> watch(&__imp_CreateFileW, NoLock);
        EXPECT_FALSE(file.Write(State(L"Mine")));
        EXPECT_FALSE(file.HasFile());
        EXPECT_TRUE(RescueFile::FindLeft(kStore).empty());
    }
    EXPECT_EQ(Subjects(L""), Texts{L"Left"});
    EXPECT_TRUE(file.Write(State(L"Mine")));
    EXPECT_EQ(RescueFile::FindLeft(kStore).size(), 1u);
}

} // namespace
