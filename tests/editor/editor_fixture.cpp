#include "editor_fixture.h"

#include <sqlite3.h>

#include "support/send_input.h"

namespace {

constexpr int kNoSuchButton = -1;

void Tap(WORD key)
{
    SendKey(key, true);
    SendKey(key, false);
}

LRESULT Notify(HWND editor, HWND control, NMHDR* header, UINT code)
{
    header->hwndFrom = control;
    header->idFrom = static_cast<UINT_PTR>(GetDlgCtrlID(control));
    header->code = code;
    return SendMessageW(editor, WM_NOTIFY, header->idFrom, reinterpret_cast<LPARAM>(header));
}

TBBUTTONINFOW BarButton(HWND bar, int command, wchar_t* text, int size)
{
    TBBUTTONINFOW info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_STATE | TBIF_IMAGE | TBIF_SIZE | TBIF_TEXT;
    info.pszText = text;
    info.cchText = size;
    EXPECT_NE(
        SendMessageW(bar, TB_GETBUTTONINFOW, static_cast<WPARAM>(command), reinterpret_cast<LPARAM>(&info)),
        kNoSuchButton);
    return info;
}

} // namespace

TimeCount At(const SYSTEMTIME& time)
{
    TimeCount count;
    EXPECT_TRUE(count.FromSystemTime(time));
    return count;
}

TimeCount Minutes(int minutes)
{
    TimeCount count;
    count.AddMinutes(minutes);
    return count;
}

SYSTEMTIME EditorWindow::Picked(int id) const
{
    SYSTEMTIME time{};
    EXPECT_EQ(Ask(id, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time)), GDT_VALID);
    return time;
}

std::wstring EditorWindow::ListItem(int box, int index) const
{
    const LRESULT length = Ask(box, CB_GETLBTEXTLEN, static_cast<WPARAM>(index));
    std::wstring text(static_cast<size_t>(length > 0 ? length : 0) + 1, L'\0');
    Ask(box, CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
    text.pop_back();
    return text;
}

void EditorWindow::Enter(int id, const std::wstring& text) const
{
    Focus(id);
    SendMessageW(Field(id), EM_SETSEL, 0, -1);
    SendMessageW(Field(id), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
}

void EditorWindow::Pick(int id, const SYSTEMTIME& time) const
{
    EXPECT_TRUE(Ask(id, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time)));
    NMDATETIMECHANGE change{};
    change.st = time;
    Notify(Window(), Item(id), &change.nmhdr, DTN_DATETIMECHANGE);
}

void EditorWindow::ChooseInBox(int id, int item) const
{
    Focus(id);
    Key(VK_F4);
    EXPECT_TRUE(Ask(id, CB_GETDROPPEDSTATE)) << id;
    for (LRESULT at = Ask(id, CB_GETCURSEL), steps = 0; at != item && steps < 50;
         at = Ask(id, CB_GETCURSEL), ++steps)
        Key(at < item ? VK_DOWN : VK_UP);
    EXPECT_EQ(Ask(id, CB_GETCURSEL), item);
    Key(VK_RETURN);
    EXPECT_FALSE(Ask(id, CB_GETDROPPEDSTATE)) << id;
}

void EditorWindow::Choose(int button, int menuId) const
{
    const MenuChooser chooser(menuId);
    DropDown(button);
    EXPECT_TRUE(chooser.Chose()) << menuId;
}

void EditorWindow::DropDown(int button) const
{
    NMTOOLBARW dropDown{};
    dropDown.iItem = button;
    Notify(Window(), Item(IDC_EDITOR_BAR), &dropDown.hdr, TBN_DROPDOWN);
    PumpMessages();
}

int EditorWindow::BarState(int command) const
{
    return BarButton(Item(IDC_EDITOR_BAR), command, nullptr, 0).fsState;
}

std::wstring EditorWindow::BarText(int command) const
{
    wchar_t text[64] = L"";
    BarButton(Item(IDC_EDITOR_BAR), command, text, 64);
    return text;
}

int EditorWindow::BarImage(int command) const
{
    return BarButton(Item(IDC_EDITOR_BAR), command, nullptr, 0).iImage;
}

int EditorWindow::BarWidth(int command) const
{
    return BarButton(Item(IDC_EDITOR_BAR), command, nullptr, 0).cx;
}

MenuChooser::MenuChooser(int menuId) : m_menuId(static_cast<UINT>(menuId))
{
    s_current = this;
    m_timer = SetTimer(nullptr, 0, 10, OnTimer);
}

MenuChooser::~MenuChooser()
{
    KillTimer(nullptr, m_timer);
    s_current = nullptr;
}

void CALLBACK MenuChooser::OnTimer(HWND, UINT, UINT_PTR, DWORD)
{
    HWND menuWindow = FindWindowW(L"#32768", nullptr);
    if (!menuWindow || !s_current || s_current->m_done)
        return;
    s_current->m_done = true;
    s_current->Take(reinterpret_cast<HMENU>(SendMessageW(menuWindow, MN_GETHMENU, 0, 0)));
}

void MenuChooser::Take(HMENU menu)
{
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        Tap(VK_DOWN);
        m_chose = GetMenuItemID(menu, i) == m_menuId;
        if (m_chose)
            return Tap(VK_RETURN);
    }
    Tap(VK_ESCAPE);
}

void EditorTest::SetUp()
{
    ASSERT_TRUE(Own().Journal().Open(nullptr));
}

// The log goes with the last connection: nobody has the store open still.
EditorTest::~EditorTest()
{
    EXPECT_EQ(GetFileAttributesW((m_store.Path() + L"-wal").c_str()), INVALID_FILE_ATTRIBUTES);
}

void EditorTest::TearDown()
{
    Own().Journal().Close();
}

int EditorTest::Run(CEOID* id, const std::function<void(EditorWindow&)>& action)
{
    const auto work = [&](HWND window) {
        EditorWindow editor(window);
        action(editor);
    };
    return static_cast<int>(RunDialog([=] { return OpenEntryEditor(Own(), nullptr, id); }, work, -2));
}

int EditorTest::RunNew(const std::function<void(EditorWindow&)>& action)
{
    CEOID id = 0;
    return Run(&id, action);
}

CEOID EditorTest::Write(EntryToWrite entry)
{
    const std::vector<CEPROPVAL> properties = PropertiesToWrite(entry);
    const CEOID id = Own().Journal().WriteRecord(0, static_cast<WORD>(properties.size()), properties.data());
    EXPECT_NE(id, 0u);
    return id;
}

JournalEntry EditorTest::Read(CEOID id)
{
    JournalEntry entry;
    EXPECT_EQ(Own().Journal().SeekRecord(id), id);
    WORD count = 0;
    CEPROPVAL* properties = nullptr;
    EXPECT_EQ(Own().Journal().ReadRecord(&count, nullptr, &properties), id);
    const LocalBlock<CEPROPVAL> block(properties);
    ReadEntry(properties, count, &entry);
    return entry;
}

bool EditorTest::ChangeStore(const char* sql) const
{
    sqlite3* store = nullptr;
    const bool done = sqlite3_open16(m_store.Path().c_str(), &store) == SQLITE_OK &&
                      sqlite3_exec(store, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
    sqlite3_close(store);
    return done;
}
