// An export as a person makes it, through the system's own window for a file's name.
#include <gtest/gtest.h>
#include <shlobj.h>

#include <algorithm>
#include <cwchar>

#include "data/journal_entry.h"
#include "e2e/journal/journal_window.h"
#include "support/temporary_name.h"

namespace {

constexpr int kFileName = 0x47C; // the system's box for a file's name
constexpr int kFileTypes = 0x470;
constexpr uint64_t kWhen = 134'397'360'000'000'000; // 2026-11-21 12:00
constexpr const char* kPlainEntry = "11/21/2026 12:00 PM\r\nNormal\r\nNormal\r\n";

class Export : public JournalWindowTest {
  protected:
    Export() { DeleteFileW(m_path.c_str()); }
    ~Export() override { DeleteFileW(m_path.c_str()); }

    // Opens the command's window from the menu's key and has the file's name typed. The types are chosen by
    // the list's own keys: the first is the one that is shown.
    void ChooseFile(bool simpleText)
    {
        PostCommand(Window(), CMD_EXPORT);
        HWND chooser = WaitForDialogWith(m_journal.Id(), kFileName);
        ASSERT_NE(chooser, nullptr);
        ASSERT_TRUE(Activate(chooser));
        EXPECT_EQ(GetWindow(chooser, GW_OWNER), Window());
        EXPECT_EQ(ComboItems(Control(chooser, kFileTypes)).size(), 2u);
        EXPECT_EQ(ComboItems(Control(chooser, kFileTypes))[0].substr(0, 23), L"Common Separated Values");
        EXPECT_EQ(ComboItems(Control(chooser, kFileTypes))[1].substr(0, 10), L"Text Files");
        if (simpleText) {
            ASSERT_TRUE(ChooseType(chooser, 1));
        }
        ASSERT_TRUE(FocusName(chooser));
        TypeText(m_path);
        EXPECT_TRUE(WaitFor([&] { return TextOf(Control(chooser, kFileName)) == m_path; }));
        PressKey(VK_RETURN);
        m_chooser = chooser;
    }
    void WaitForExport()
    {
        m_dialog = WaitForDialog(m_journal.Id(), L"Export Journal...");
        ASSERT_NE(m_dialog, nullptr);
        ASSERT_TRUE(Activate(m_dialog));
    }
    void Open(bool simpleText = false)
    {
        ASSERT_NO_FATAL_FAILURE(ChooseFile(simpleText));
        ASSERT_NO_FATAL_FAILURE(WaitForExport());
    }
    // What the box at the end says.
    std::wstring Finish()
    {
        PressKey(VK_RETURN);
        const RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
        if (!box || box.Caption() != L"Export Completed")
            return L"no box";
        const std::wstring text = box.Text();
        return box.Answer(IDOK) && WaitUntilGone(m_dialog) ? text : L"still open";
    }
    std::string Bytes() const { return ReadFileBytes(m_path); }
    void AddMany(int count, const wchar_t* subject) const
    {
        DbJournal journal;
        ASSERT_NE(journal.Open(nullptr), 0);
        CeDBase::BulkScope bulk(journal);
        for (int i = 0; i < count; ++i)
            ASSERT_NE(AddEntry(subject, kWhen), 0u);
        ASSERT_EQ(bulk.Commit(), 1);
    }
    // Labelled blocks of entries that have this subject.
    static std::string Blocks(size_t count, const std::string& subject)
    {
        std::string text;
        for (size_t i = 0; i < count; ++i)
            text += "Date: 11/21/2026 12:00 PM\r\nPriority: Normal\r\nSensitivity: Normal\r\nSubject: " +
                    subject + "\r\n\r\n\r\n";
        return text;
    }
    bool HasBegun() const
    {
        return WaitFor([&] { return Send(Control(m_dialog, IDC_EXPORT_PROGRESS), PBM_GETPOS) > 0; });
    }
    void SelectRow(int row, bool more)
    {
        const POINT point = List().LabelPoint(row);
        ASSERT_TRUE(more ? ClickWith({VK_CONTROL}, point) : Click(point));
        ASSERT_TRUE(WaitFor([&] { return List().State(row, LVIS_SELECTED) == LVIS_SELECTED; }));
    }

    std::wstring m_path = TemporaryFolder() + L"export-e2e.out";
    HWND m_chooser = nullptr;
    HWND m_dialog = nullptr;

  private:
    static bool ChooseType(HWND chooser, int index)
    {
        HWND types = Control(chooser, kFileTypes);
        PostMessageW(chooser, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(types), TRUE);
        if (!WaitFor([&] { return FocusOf(chooser) == types; }))
            return false;
        for (int i = 0; i < index; ++i)
            PressKey(VK_DOWN);
        return WaitFor([&] { return Send(types, CB_GETCURSEL) == index; });
    }
    static bool FocusName(HWND chooser)
    {
        HWND name = Control(chooser, kFileName);
        HWND edit = ChildOfClass(name, L"Edit");
        PostMessageW(chooser, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(name), TRUE);
        return WaitFor([&] { return FocusOf(chooser) == name || FocusOf(chooser) == edit; });
    }
};

TEST_F(Export, OfAllEntriesToCommaSeparatedValues)
{
    ASSERT_NE(AddEntry(L"One", kWhen), 0u);
    ASSERT_NE(AddEntry(L"Two \"quoted\"", kWhen + TimeCount::kUnitsPerMinute), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_NO_FATAL_FAILURE(Open());
    EXPECT_EQ(TextOf(Control(m_dialog, IDC_EXPORT_FORMAT)), L"Format\nComma Separated Value");
    EXPECT_FALSE(IsWindowEnabled(Window()));
    EXPECT_EQ(Finish(), L"Exported 2 records");
    EXPECT_EQ(Bytes(),
              "\"Date\",\"Subject\",\"Body\",\"Categories\",\"Type\",\"Priority\",\"Sensitivity\","
              "\"End Time\",\"Duration\",\"Contacts\"\r\n"
              "\"11/21/2026 12:01 PM\",\"Two \"quoted\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\"\r\n"
              "\"11/21/2026 12:00 PM\",\"One\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\"\r\n");
    EXPECT_TRUE(IsWindowEnabled(Window()));
    ASSERT_TRUE(m_journal.Close());
    EXPECT_EQ(NumberSetting(L"Settings", L"WriteHeader"), 1u);
    EXPECT_EQ(*NumberSetting(L"Settings", L"Column0") & 0x40, 0x40u);
}

TEST_F(Export, OfSelectedEntriesInTheOrderOfSelecting)
{
    for (int i = 0; i < 3; ++i)
        ASSERT_NE(AddEntry(L"Entry " + std::to_wstring(i), kWhen), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(3));
    const std::wstring first = List().Text(2, 1), second = List().Text(0, 1);
    ASSERT_NO_FATAL_FAILURE(SelectRow(2, false));
    ASSERT_NO_FATAL_FAILURE(SelectRow(0, true));
    ASSERT_NO_FATAL_FAILURE(Open(true));
    EXPECT_EQ(TextOf(Control(m_dialog, IDC_EXPORT_FORMAT)), L"Format\nSimple Text");
    EXPECT_FALSE(IsWindowEnabled(Control(m_dialog, IDC_EXPORT_FIELDS)));
    PressKeys({VK_MENU, 'S'});
    ASSERT_TRUE(WaitFor([&] { return IsChecked(m_dialog, IDC_EXPORT_SELECTED); }));
    ASSERT_TRUE(Click(MiddleOf(Control(m_dialog, IDC_EXPORT_HEADER))));
    ASSERT_TRUE(WaitFor([&] { return !IsChecked(m_dialog, IDC_EXPORT_HEADER); }));
    EXPECT_EQ(Finish(), L"Exported 2 records");
    const auto narrow = [](const std::wstring& text) { return std::string(text.begin(), text.end()); };
    EXPECT_EQ(Bytes(),
              kPlainEntry + narrow(first) + "\r\n\r\n\r\n" + kPlainEntry + narrow(second) + "\r\n\r\n\r\n");
}

TEST_F(Export, OfFilteredEntriesTellsHowManyItLookedAt)
{
    constexpr uint64_t kMonth = TimeCount::kUnitsPerMinute * 60 * 24 * 30;
    for (uint64_t i = 0; i < 4; ++i)
        ASSERT_NE(AddEntry(L"Entry " + std::to_wstring(i), kWhen - (i > 1 ? kMonth : 0)), 0u);
    ASSERT_TRUE(StoreSetting(L"Filter", L"Active", 1));
    ASSERT_TRUE(StoreSetting(L"Filter", L"fRange", 0));
    ASSERT_TRUE(StoreSetting(L"Filter", L"fMonths", 1u << 10)); // November
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_NO_FATAL_FAILURE(Open(true));
    ASSERT_TRUE(Click(MiddleOf(Control(m_dialog, IDC_EXPORT_FILTERED))));
    ASSERT_TRUE(Click(MiddleOf(Control(m_dialog, IDC_EXPORT_HEADER))));
    EXPECT_EQ(Finish(), L"Exported 4 records");
    EXPECT_EQ(Bytes(),
              std::string(kPlainEntry) + "Entry 0\r\n\r\n\r\n" + kPlainEntry + "Entry 1\r\n\r\n\r\n");
}

TEST_F(Export, OverAnotherFileAsksFirst)
{
    ASSERT_NE(AddEntry(L"One", kWhen), 0u);
    ASSERT_TRUE(WriteFileBytes(m_path, std::string(5000, 'x')));
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_NO_FATAL_FAILURE(ChooseFile(true));
    RemoteMessageBox question = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(question);
    ASSERT_TRUE(question.Answer(IDNO));
    ASSERT_TRUE(IsWindowVisible(m_chooser));
    PressButton(m_chooser, IDOK);
    question = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(question);
    ASSERT_TRUE(question.Answer(IDYES));
    ASSERT_NO_FATAL_FAILURE(WaitForExport());
    EXPECT_EQ(Bytes().size(), 5000u) << "nothing is done to the file yet";
    EXPECT_EQ(Finish(), L"Exported 1 record");
    EXPECT_EQ(Bytes(), "Date: 11/21/2026 12:00 PM\r\nPriority: Normal\r\nSensitivity: Normal\r\n"
                       "Subject: One\r\n\r\n\r\n");
}

TEST_F(Export, EndsWithoutAWordWhenNoFileIsChosen)
{
    ASSERT_NE(AddEntry(L"One", kWhen), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    PostCommand(Window(), CMD_EXPORT);
    HWND chooser = WaitForDialogWith(m_journal.Id(), kFileName);
    ASSERT_NE(chooser, nullptr);
    ASSERT_TRUE(Activate(chooser));
    PressKey(VK_ESCAPE);
    ASSERT_TRUE(WaitUntilGone(chooser));
    EXPECT_TRUE(WaitFor([&] { return IsWindowEnabled(Window()) != FALSE; }));
    EXPECT_EQ(FindTopWindow(m_journal.Id(), L"#32770"), nullptr);
    EXPECT_EQ(NumberSetting(L"Settings", L"WriteHeader"), std::nullopt);
    ASSERT_TRUE(m_journal.Close());
}

TEST_F(Export, OfAFileWithoutAFolderGoesIntoTheDocuments)
{
    wchar_t folder[MAX_PATH];
    ASSERT_EQ(SHGetFolderPathW(nullptr, CSIDL_PERSONAL, nullptr, SHGFP_TYPE_CURRENT, folder), S_OK);
    const std::wstring name = L"export-e2e.csv", whole = std::wstring(folder) + L"\\" + name;
    DeleteFileW(whole.c_str());
    m_path = name;
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_NO_FATAL_FAILURE(Open());
    EXPECT_EQ(Finish(), L"Exported 0 records");
    EXPECT_EQ(ReadFileBytes(whole).substr(0, 16), "\"Date\",\"Subject\"");
    DeleteFileW(whole.c_str());
    ASSERT_TRUE(m_journal.Close());
}

// The file is what the whole export would be, up to some piece.
TEST_F(Export, ThatIsKilledLeavesWholePieces)
{
    constexpr int kEntries = 3000;
    std::string whole;
    std::vector<size_t> ends{0};
    const auto add = [&](const std::string& piece) {
        whole += piece;
        ends.push_back(whole.size());
    };
    ASSERT_NO_FATAL_FAILURE(AddMany(kEntries, L"A subject of some length"));
    for (int i = 0; i < kEntries; ++i)
        for (const char* piece :
             {"Date: ", "11/21/2026 12:00 PM", "\r\n", "Priority: ", "Normal", "\r\n",
              "Sensitivity: ", "Normal", "\r\n", "Subject: ", "A subject of some length", "\r\n", "\r\n\r\n"})
            add(piece);
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_NO_FATAL_FAILURE(Open(true));
    PressKey(VK_RETURN);
    ASSERT_TRUE(WaitFor([&] {
        WIN32_FILE_ATTRIBUTE_DATA data{};
        return GetFileAttributesExW(m_path.c_str(), GetFileExInfoStandard, &data) && data.nFileSizeLow > 2000;
    }));
    ASSERT_FALSE(HasMessageBox(m_journal.Id())) << "it is still at work";
    m_journal.Kill();
    const std::string bytes = Bytes();
    ASSERT_GT(bytes.size(), 2000u);
    ASSERT_LT(bytes.size(), whole.size());
    EXPECT_EQ(bytes, whole.substr(0, bytes.size()));
    EXPECT_TRUE(std::binary_search(ends.begin(), ends.end(), bytes.size()))
        << bytes.substr(bytes.size() - 30);
    const StoreReader store(m_store.Path());
    EXPECT_EQ(store.QueryOne("PRAGMA integrity_check"), "ok");
    EXPECT_EQ(store.QueryOne("SELECT count(*) FROM journal"), std::to_string(kEntries));
}

TEST_F(Export, IsStoppedByEsc)
{
    constexpr int kEntries = 5000;
    ASSERT_NO_FATAL_FAILURE(AddMany(kEntries, L"x"));
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_NO_FATAL_FAILURE(Open(true));
    PressKey(VK_RETURN);
    ASSERT_TRUE(HasBegun());
    EXPECT_FALSE(IsWindowEnabled(Window()));
    PressKey(VK_ESCAPE);
    const RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(box);
    int count = 0;
    ASSERT_EQ(swscanf(box.Text().c_str(), L"Exported %d records", &count), 1);
    EXPECT_GT(count, 0);
    EXPECT_LT(count, kEntries);
    ASSERT_TRUE(box.Answer(IDOK));
    ASSERT_TRUE(WaitUntilGone(m_dialog));
    EXPECT_EQ(Bytes(), Blocks(static_cast<size_t>(count), "x"));
    ASSERT_TRUE(m_journal.Close());
}

TEST_F(Export, EndsBehindAnEntryWhenTheProgramIsClosed)
{
    constexpr int kEntries = 5000;
    ASSERT_NO_FATAL_FAILURE(AddMany(kEntries, L"x"));
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_NO_FATAL_FAILURE(Open(true));
    PressKey(VK_RETURN);
    ASSERT_TRUE(HasBegun());
    PostMessageW(Window(), WM_CLOSE, 0, 0);
    const RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(box) << "how many went out";
    ASSERT_TRUE(box.Answer(IDOK));
    ASSERT_TRUE(WaitUntilGone(m_dialog));
    ASSERT_TRUE(m_journal.Close());
    EXPECT_EQ(m_journal.ExitCode(), 0u);
    const std::string bytes = Bytes();
    const size_t count = bytes.size() / Blocks(1, "x").size();
    EXPECT_GT(count, 0u);
    EXPECT_LT(count, size_t{kEntries});
    EXPECT_EQ(bytes, Blocks(count, "x"));
    EXPECT_EQ(NumberSetting(L"Settings", L"WriteHeader"), 1u);
    const StoreReader store(m_store.Path());
    EXPECT_EQ(store.QueryOne("PRAGMA integrity_check"), "ok");
}

} // namespace
