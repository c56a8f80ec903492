#include "e2e/journal/journal_window.h"

#include "data/journal_entry.h"

namespace {

// The button bar among the tool bars: the one with the New Entry button.
BOOL CALLBACK FindButtonBar(HWND window, LPARAM found)
{
    wchar_t name[32];
    if (GetClassNameW(window, name, 32) && wcscmp(name, L"ToolbarWindow32") == 0 &&
        SendMessageW(window, TB_COMMANDTOINDEX, CMD_NEW_ENTRY, 0) >= 0) {
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    return TRUE;
}

} // namespace

RemoteToolbar JournalWindowTest::Buttons() const
{
    HWND bar = nullptr;
    EnumChildWindows(Window(), FindButtonBar, reinterpret_cast<LPARAM>(&bar));
    return RemoteToolbar(bar);
}

bool JournalWindowTest::ShowsRows(int count) const
{
    return WaitFor([&] { return List().RowCount() == count; });
}

HWND JournalWindowTest::WaitForEditor() const
{
    HWND editor = WaitForDialogWith(m_journal.Id(), IDC_BODY);
    return editor && Activate(editor) ? editor : nullptr;
}

CEOID JournalWindowTest::AddEntry(const std::wstring& subject, uint64_t date) const
{
    DbJournal journal;
    if (!journal.Open(nullptr))
        return 0;
    std::wstring text = subject;
    CEPROPVAL properties[2]{};
    properties[0].propid = kPropDate;
    properties[0].val.filetime = TimeCount(date ? date : kNoon).ToFileTime();
    properties[1].propid = kPropSubject;
    properties[1].val.lpwstr = text.data();
    return journal.WriteRecord(0, 2, properties);
}
