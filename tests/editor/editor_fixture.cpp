#include "editor_fixture.h"

namespace {

constexpr int kNoSuchButton = -1;

// The dialog manager's own loop: keys pass its translation as they do for a user.
void PumpDialog(HWND dialog)
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (IsDialogMessageW(dialog, &message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

void PressOrRelease(WORD key, bool release)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = release ? KEYEVENTF_KEYUP : 0;
    EXPECT_EQ(SendInput(1, &input, sizeof input), 1u);
}

void Tap(WORD key)
{
    PressOrRelease(key, false);
    PressOrRelease(key, true);
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

HWND EditorWindow::Item(int id) const
{
    HWND item = GetDlgItem(m_window, id);
    EXPECT_NE(item, nullptr) << id;
    return item;
}

RECT EditorWindow::RectOf(HWND control) const
{
    RECT rect{};
    GetWindowRect(control, &rect);
    MapWindowPoints(nullptr, m_window, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

SYSTEMTIME EditorWindow::Picked(int id) const
{
    SYSTEMTIME time{};
    EXPECT_EQ(Ask(id, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time)), GDT_VALID);
    return time;
}

LRESULT EditorWindow::Ask(int id, UINT message, WPARAM wParam, LPARAM lParam) const
{
    return SendMessageW(Item(id), message, wParam, lParam);
}

std::wstring EditorWindow::ListItem(int box, int index) const
{
    const LRESULT length = Ask(box, CB_GETLBTEXTLEN, static_cast<WPARAM>(index));
    std::wstring text(static_cast<size_t>(length > 0 ? length : 0) + 1, L'\0');
    Ask(box, CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
    text.pop_back();
    return text;
}

void EditorWindow::Command(int command, WORD code) const
{
    SendMessageW(m_window, WM_COMMAND, MAKEWPARAM(command, code),
                 reinterpret_cast<LPARAM>(GetDlgItem(m_window, command)));
}

HWND EditorWindow::Field(int id) const
{
    HWND edit = FindWindowExW(Item(id), nullptr, L"Edit", nullptr);
    return edit ? edit : Item(id);
}

void EditorWindow::Focus(int id) const
{
    SetFocus(Field(id));
    PumpDialog(m_window);
    EXPECT_EQ(GetFocus(), Field(id)) << id;
}

void EditorWindow::Type(const std::wstring& text) const
{
    for (const wchar_t character : text) {
        for (const DWORD release : {0ul, static_cast<unsigned long>(KEYEVENTF_KEYUP)}) {
            INPUT input{};
            input.type = INPUT_KEYBOARD;
            input.ki.wScan = character;
            input.ki.dwFlags = KEYEVENTF_UNICODE | release;
            EXPECT_EQ(SendInput(1, &input, sizeof input), 1u);
        }
        PumpDialog(m_window);
    }
}

void EditorWindow::Key(WORD key, bool ctrl, bool shift) const
{
    if (ctrl)
        PressOrRelease(VK_CONTROL, false);
    if (shift)
        PressOrRelease(VK_SHIFT, false);
    PressOrRelease(key, false);
    PumpDialog(m_window);
    PressOrRelease(key, true);
    if (shift)
        PressOrRelease(VK_SHIFT, true);
    if (ctrl)
        PressOrRelease(VK_CONTROL, true);
    PumpDialog(m_window);
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
    Notify(m_window, Item(id), &change.nmhdr, DTN_DATETIMECHANGE);
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
    Notify(m_window, Item(IDC_EDITOR_BAR), &dropDown.hdr, TBN_DROPDOWN);
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
    ASSERT_TRUE(App().Journal().Open(nullptr));
}

void EditorTest::TearDown()
{
    App().Journal().Close();
}

int EditorTest::Run(CEOID* id, const std::function<void(EditorWindow&)>& action)
{
    ModalDriver driver([&](HWND window) {
        ShowWindow(window, SW_SHOW); // the dialog manager shows it once it has nothing else to do
        EditorWindow editor(window);
        action(editor);
        if (IsWindowVisible(window)) // a dialog that has ended is hidden
            EndDialog(window, -2);
    });
    const int result = OpenEntryEditor(nullptr, id);
    EXPECT_TRUE(driver.Ran());
    return result;
}

int EditorTest::RunNew(const std::function<void(EditorWindow&)>& action)
{
    CEOID id = 0;
    return Run(&id, action);
}

CEOID EditorTest::Write(EntryToWrite entry)
{
    const std::vector<CEPROPVAL> properties = PropertiesToWrite(entry);
    const CEOID id = App().Journal().WriteRecord(0, static_cast<WORD>(properties.size()), properties.data());
    EXPECT_NE(id, 0u);
    return id;
}

JournalEntry EditorTest::Read(CEOID id)
{
    JournalEntry entry;
    EXPECT_EQ(App().Journal().SeekRecord(id), id);
    WORD count = 0;
    CEPROPVAL* properties = nullptr;
    EXPECT_EQ(App().Journal().ReadRecord(&count, nullptr, &properties), id);
    const LocalBlock<CEPROPVAL> block(properties);
    ReadEntry(properties, count, &entry);
    return entry;
}
