#include "editor/entry_copy.h"

#include "editor_fixture.h"
#include "support/import_watch.h"

namespace {

class EntryCopyTest : public EditorTest {
  protected:
    CEOID m_id = 0;
    EditorRecord m_record{App().Journal(), &m_id};
};

TEST_F(EntryCopyTest, HasAllThatWasTyped)
{
    EntryToWrite entry;
    entry.date = At(kTuesday);
    entry.duration = Minutes(90);
    entry.endTime = entry.date + entry.duration;
    entry.priority = 2;
    entry.sensitivity = 1;
    entry.type = L"Meeting";
    entry.subject = L"Lunch";
    entry.body = L"First\r\nSecond";
    m_record.OpenStores(nullptr);
    const CEPROPVAL name{kCategoriesKey, 0, 0, {.lpwstr = const_cast<wchar_t*>(L"Work")}};
    m_record.Categories().Push({m_record.CategoryStore().WriteRecord(0, 1, &name), 0x1101});
    EXPECT_EQ(EntryCopyText(entry, m_record), L"Date: 3/5/2024 2:05 PM\r\n"
                                              L"End Date: 3/5/2024 3:35 PM\r\n"
                                              L"Duration: 1 hour 30 min\r\n"
                                              L"Priority: High\r\n"
                                              L"Sensitivity: Personal\r\n"
                                              L"Subject: Lunch\r\n"
                                              L"Type: Meeting\r\n"
                                              L"Assigned Categories: Work\r\n"
                                              L"\r\nFirst\r\nSecond\r\n");
}

TEST_F(EntryCopyTest, LeavesPlaceholdersOut)
{
    EntryToWrite entry;
    entry.date = entry.endTime = At(kTuesday);
    entry.subject = L"<Entry Subject>";
    entry.body = L"<Entry Body>";
    EXPECT_EQ(EntryCopyText(entry, m_record), L"Date: 3/5/2024 2:05 PM\r\n"
                                              L"End Date: 3/5/2024 2:05 PM\r\n"
                                              L"Duration: 0 minutes\r\n"
                                              L"Priority: Normal\r\n"
                                              L"Sensitivity: Normal\r\n");
}

TEST_F(EntryCopyTest, IsWrittenInPlaceOfWhatWasThere)
{
    const std::wstring path = m_store.Path() + L".txt";
    ASSERT_TRUE(WriteFileBytes(path, std::string(1000, 'x')));
    ASSERT_TRUE(WriteTextFile(path.c_str(), L"Gespr\u00E4ch\r\n\xD83D\xDE00"));
    EXPECT_EQ(ReadFileBytes(path), "\xEF\xBB\xBFGespr\xC3\xA4"
                                   "ch\r\n\xF0\x9F\x98\x80");
    EXPECT_TRUE(DeleteFileW(path.c_str()));
    EXPECT_FALSE(WriteTextFile((m_store.Path() + L"\\no\\such.txt").c_str(), L"x"));
}

// As much as the disk has room for, with the rest of it missing.
BOOL WINAPI WriteNothing(HANDLE, LPCVOID, DWORD, LPDWORD written, LPOVERLAPPED)
{
    *written = 0;
    SetLastError(ERROR_DISK_FULL);
    return FALSE;
}

TEST_F(EntryCopyTest, ACopyThatCannotBeWrittenLeavesTheFileThatWasThere)
{
    const std::wstring path = m_store.Path() + L".txt";
    ASSERT_TRUE(WriteFileBytes(path, "the older copy"));
    {
        const ImportWatch<decltype(&WriteFile)> full(&__imp_WriteFile, WriteNothing);
        EXPECT_FALSE(WriteTextFile(path.c_str(), L"the newer one"));
    }
    EXPECT_EQ(ReadFileBytes(path), "the older copy");
    WIN32_FIND_DATAW found{};
    HANDLE search = FindFirstFileW((path + L"?*").c_str(), &found);
    EXPECT_EQ(search, INVALID_HANDLE_VALUE) << "and nothing beside it";
    FindClose(search);
    EXPECT_TRUE(DeleteFileW(path.c_str()));
}

TEST_F(EntryCopyTest, AFileThatLiesWhereItIsWrittenFirstStays)
{
    const std::wstring path = m_store.Path() + L".txt";
    ASSERT_TRUE(WriteFileBytes(path + L".new", "somebody's"));
    ASSERT_TRUE(WriteTextFile(path.c_str(), L"x"));
    EXPECT_EQ(ReadFileBytes(path), "\xEF\xBB\xBFx");
    EXPECT_EQ(ReadFileBytes(path + L".new"), "somebody's");
    EXPECT_TRUE(DeleteFileW(path.c_str()));
    EXPECT_TRUE(DeleteFileW((path + L".new").c_str()));
}

} // namespace
