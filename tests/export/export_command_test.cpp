#include "export/export_command.h"

#include <commdlg.h>
#include <shlobj.h>

#include "export/export_window.h"
#include "support/import_watch.h"

extern "C" {
extern decltype(&GetSaveFileNameW) __imp_GetSaveFileNameW;
}

namespace {

// What the system was asked for, and what the user answers.
struct Question {
    OPENFILENAMEW asked{};
    std::wstring filter;
    std::wstring folder;
    std::wstring firstPath;
    const wchar_t* path = nullptr; // null: cancelled
    DWORD filterIndex = 1;
};
Question* g_question = nullptr;

// The names and patterns with their terminators, without the list's own.
std::wstring FilterText(const wchar_t* filter)
{
    std::wstring text;
    for (; *filter; filter += wcslen(filter) + 1)
        text.append(filter).push_back(L'|');
    return text;
}

BOOL WINAPI AnswerQuestion(OPENFILENAMEW* choice)
{
    g_question->asked = *choice;
    g_question->filter = FilterText(choice->lpstrFilter);
    g_question->folder = choice->lpstrInitialDir;
    g_question->firstPath = choice->lpstrFile;
    if (!g_question->path)
        return FALSE;
    wcscpy(choice->lpstrFile, g_question->path);
    choice->nFilterIndex = g_question->filterIndex;
    return TRUE;
}

class ExportCommandTest : public ExportDialogTest {
  protected:
    ExportCommandTest()
    {
        g_question = &m_question;
        EXPECT_NE(m_list.Create(m_parent.Handle(), &m_columns, WS_CHILD | WS_VISIBLE | LVS_REPORT, 0),
                  nullptr);
    }
    ~ExportCommandTest() override { g_question = nullptr; }

    // The dialog after a file of this path was chosen.
    void Export(DWORD filterIndex, const std::function<void(ExportWindow&)>& action)
    {
        m_question.path = m_file.Path().c_str();
        m_question.filterIndex = filterIndex;
        const auto work = [&](HWND window) {
            ExportWindow dialog(window);
            action(dialog);
        };
        const auto call = [&]() -> INT_PTR {
            ExportEntries(m_parent.Handle(), m_list);
            return 0;
        };
        RunDialog(call, work, 0);
    }

    Question m_question;
    const ImportWatch<decltype(&GetSaveFileNameW)> m_watch{&__imp_GetSaveFileNameW, AnswerQuestion};
    TestParent m_parent;
    EntryList m_list{Own()};
};

TEST_F(ExportCommandTest, AsksForAFileOfTwoKinds)
{
    wchar_t documents[MAX_PATH];
    ASSERT_EQ(SHGetFolderPathW(nullptr, CSIDL_PERSONAL, nullptr, SHGFP_TYPE_CURRENT, documents), S_OK);
    ExportEntries(m_parent.Handle(), m_list);
    const OPENFILENAMEW& asked = m_question.asked;
    EXPECT_EQ(asked.lStructSize, sizeof asked);
    EXPECT_EQ(asked.hwndOwner, m_parent.Handle());
    EXPECT_EQ(m_question.filter, L"Common Separated Values|*.CSV|Text Files|*.TXT|");
    EXPECT_EQ(asked.nFilterIndex, 1u);
    EXPECT_EQ(m_question.firstPath, L"");
    EXPECT_EQ(asked.nMaxFile, 260u);
    EXPECT_EQ(m_question.folder, documents);
    EXPECT_EQ(asked.Flags, DWORD{OFN_OVERWRITEPROMPT});
    EXPECT_EQ(asked.lpstrDefExt, nullptr);
    EXPECT_EQ(asked.lpstrTitle, nullptr);
}

TEST_F(ExportCommandTest, EndsWithoutADialogWhenNoFileIsChosen)
{
    const WindowRefuser dialogs(L"#32770", 1000);
    ExportEntries(m_parent.Handle(), m_list);
    EXPECT_EQ(dialogs.Seen(), 0);
}

TEST_F(ExportCommandTest, OnlyTheSecondKindIsText)
{
    for (const DWORD index : {0u, 1u, 2u, 3u})
        Export(index, [&](ExportWindow& dialog) {
            EXPECT_EQ(dialog.Text(kFormat),
                      index == 2 ? L"Format\nSimple Text" : L"Format\nComma Separated Value");
            EXPECT_EQ(GetWindow(dialog.Window(), GW_OWNER), m_parent.Handle());
        });
}

TEST_F(ExportCommandTest, TakesWhatTheListHas)
{
    const CEOID one = AddEntry(1, L"one");
    AddEntry(2, L"two");
    m_list.Selection().Append(one);
    m_columns.columns[0].Add(kColumnNeverOffered);
    FilterMonth(5);
    const MessageBoxAnswerer answerer;
    Export(2, [](ExportWindow& dialog) {
        EXPECT_TRUE(dialog.IsEnabled(kFiltered));
        EXPECT_EQ(dialog.Fields().front(), L"Subject");
        dialog.Click(kSelected);
        dialog.Ok();
    });
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"Exported 1 record");
    EXPECT_EQ(m_file.Bytes(), "Date: 1/1/2000 12:01 AM\r\nPriority: Normal\r\nSensitivity: Normal\r\n"
                              "Subject: one\r\n\r\n\r\n");
}

} // namespace
