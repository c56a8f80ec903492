#include "editor/entry_copy.h"

#include "editor/categories_line.h"
#include "editor_fixture.h"
#include "support/held_file.h"
#include "support/import_watch.h"
#include "support/unreadable_table.h"

namespace {

class EntryCopyTest : public EditorTest {
  protected:
    CEOID m_id = 0;
    EditorRecord m_record{Own().Journal(), &m_id};
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

TEST_F(EntryCopyTest, SaysWhereNamesCannotBeRead)
{
    EntryToWrite entry;
    entry.date = entry.endTime = At(kTuesday);
    m_record.OpenStores(nullptr);
    for (const wchar_t* text : {L"Home", L"Work"}) {
        const CEPROPVAL name{kCategoriesKey, 0, 0, {.lpwstr = const_cast<wchar_t*>(text)}};
        m_record.Categories().Push({m_record.CategoryStore().WriteRecord(0, 1, &name), 0x1101});
    }
    HWND line = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 400, 20, nullptr, nullptr, nullptr, nullptr);
    {
        const UnreadableTable unreadable(m_store.Path(), "categories");
        EXPECT_TRUE(
            EntryCopyText(entry, m_record).ends_with(L"Assigned Categories: (not all can be read)\r\n"));
        ShowCategoriesLine(line, &m_record.Categories(), &m_record.CategoryStore());
        EXPECT_EQ(WindowText(line), L"(not all can be read)");
    }
    ShowCategoriesLine(line, &m_record.Categories(), &m_record.CategoryStore());
    EXPECT_EQ(WindowText(line), L"Home, Work");
    DestroyWindow(line);
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

// A contact without a name, and one that is gone.
TEST_F(EntryCopyTest, NamesTheContactsThatTheStoreCanTell)
{
    m_record.OpenStores(nullptr);
    DbContacts& contacts = m_record.Contacts();
    ASSERT_EQ(contacts.Open(), 1);
    for (const wchar_t* name : {L"Doe", L"", L"Roe"}) {
        const CEPROPVAL value{kContactsKey, 0, 0, {.lpwstr = const_cast<wchar_t*>(name)}};
        contacts.Assign(contacts.WriteRecord(0, 1, &value));
    }
    contacts.Assign(99);
    const std::wstring text = EntryCopyText(EntryToWrite(), m_record);
    EXPECT_EQ(text.substr(text.find(L"Assigned")), L"Assigned Contacts: Doe;Roe\r\n");
}

std::wstring g_chosen; // empty: Cancel

BOOL WINAPI ChooseCopy(LPOPENFILENAMEW dialog)
{
    wcscpy(dialog->lpstrFile, g_chosen.c_str());
    return !g_chosen.empty();
}

decltype(&WriteFile) g_writeFile;

BOOL WINAPI WriteHalf(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD written, LPOVERLAPPED overlapped)
{
    return g_writeFile(file, bytes, size / 2, written, overlapped);
}

class EntryCopyBoxTest : public EntryCopyTest {
  protected:
    EntryCopyBoxTest()
    {
        g_chosen = m_path;
        g_writeFile = __imp_WriteFile;
        EXPECT_TRUE(WriteFileBytes(m_path, "the older copy"));
    }
    ~EntryCopyBoxTest() override { DeleteFileW(m_path.c_str()); }

    void Save(const std::function<std::optional<std::wstring>()>& text)
    {
        const ImportWatch<decltype(&GetSaveFileNameW)> choice(&__imp_GetSaveFileNameW, ChooseCopy);
        SaveEntryCopy(m_owner.Handle(), text);
    }
    void SaveNewer()
    {
        Save([] { return std::wstring(L"the newer one"); });
    }
    // It says so, and there is nothing but the older copy.
    void ExpectNotWritten() const
    {
        ASSERT_EQ(m_boxes.Boxes().size(), 1u);
        EXPECT_EQ(m_boxes.Boxes()[0].text,
                  L"The copy could not be written.\n\nWhat you have typed is still there.");
        EXPECT_EQ(m_boxes.Boxes()[0].owner, m_owner.Handle());
        EXPECT_EQ(ReadFileBytes(m_path), "the older copy");
        EXPECT_EQ(GetFileAttributesW((m_path + L".new").c_str()), INVALID_FILE_ATTRIBUTES);
    }

    const std::wstring m_path = m_store.Path() + L".txt";
    TestParent m_owner;
    MessageBoxAnswerer m_boxes;
};

TEST_F(EntryCopyBoxTest, SaysNothingOverACopyThatIsThere)
{
    SaveNewer();
    EXPECT_TRUE(m_boxes.Boxes().empty());
    EXPECT_EQ(ReadFileBytes(m_path), "\xEF\xBB\xBFthe newer one");
}

TEST_F(EntryCopyBoxTest, AsksForNoTextWhereNoFileIsChosen)
{
    g_chosen.clear();
    Save([]() -> std::optional<std::wstring> {
        ADD_FAILURE() << "asked";
        return std::nullopt;
    });
    EXPECT_TRUE(m_boxes.Boxes().empty());
    EXPECT_EQ(ReadFileBytes(m_path), "the older copy");
}

TEST_F(EntryCopyBoxTest, SaysThatATextThatCannotBeHadIsNotWritten)
{
    Save([] { return std::optional<std::wstring>(); });
    ExpectNotWritten();
}

TEST_F(EntryCopyBoxTest, SaysThatACopyIsHalf)
{
    const ImportWatch<decltype(&WriteFile)> half(&__imp_WriteFile, WriteHalf);
    SaveNewer();
    ExpectNotWritten();
}

// As by the program that shows it, and lets others write it, but nobody replace it.
TEST_F(EntryCopyBoxTest, SaysThatAnotherProgramHasTheFile)
{
    const HeldFile held(m_path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE);
    SaveNewer();
    ExpectNotWritten();
}

TEST_F(EntryCopyBoxTest, WaitsForAProgramThatHasTheFileForAMoment)
{
    const HeldFile held(m_path, 10, FILE_SHARE_READ | FILE_SHARE_WRITE);
    SaveNewer();
    EXPECT_TRUE(m_boxes.Boxes().empty());
    EXPECT_EQ(ReadFileBytes(m_path), "\xEF\xBB\xBFthe newer one");
}

} // namespace
