#include "help_window_fixture.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "help/resource.h"
#include "support/test_windows.h"

namespace help {

void HelpWindowTest::Open(const std::string& page, const wchar_t* request)
{
    m_folder.Write(L"pellwyn.htm", page);
    Show(request);
}

void HelpWindowTest::OpenShipped(const wchar_t* request)
{
    std::ifstream file("Z:" HELP_FILE, std::ios::binary);
    Open({std::istreambuf_iterator<char>(file), {}}, request);
}

void HelpWindowTest::Show(const wchar_t* request)
{
    HINSTANCE instance = GetModuleHandleW(nullptr);
    ASSERT_TRUE(HelpWindow::RegisterWindowClass(instance));
    m_window = std::make_unique<HelpWindow>(m_folder.Path() + L"PegHelp.exe");
    ASSERT_TRUE(m_window->Create(instance));
    m_window->Show(RequestOfText(request));
    m_window->ShowFirst(SW_SHOWNORMAL);
    SetForegroundWindow(m_window->Handle());
    PumpMessages();
}

// Its end is the program's.
void HelpWindowTest::Close()
{
    m_window.reset();
    MSG message;
    while (PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
    }
}

std::wstring HelpWindowTest::PaneText() const
{
    std::wstring text(100'000, L'\0');
    GETTEXTEX get{};
    get.cb = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    get.flags = GT_DEFAULT;
    get.codepage = 1200;
    text.resize(static_cast<size_t>(SendMessageW(Pane(), EM_GETTEXTEX, reinterpret_cast<WPARAM>(&get),
                                                 reinterpret_cast<LPARAM>(text.data()))));
    std::replace(text.begin(), text.end(), L'\v', L' ');
    return text;
}

std::wstring HelpWindowTest::Selected() const
{
    const TextRange range = m_window->Text().Selection();
    return m_window->Text().Text().text.substr(range.begin, range.end - range.begin);
}

std::wstring HelpWindowTest::Title() const
{
    const auto topic = m_window->ShownTopic();
    return topic ? m_window->Book().Topics()[*topic].title : std::wstring();
}

std::wstring HelpWindowTest::TreeTopic() const
{
    HWND tree = Item(IDC_CONTENTS);
    wchar_t text[200] = L"";
    TVITEMW item{};
    item.mask = TVIF_TEXT;
    item.hItem = TreeView_GetSelection(tree);
    item.pszText = text;
    item.cchTextMax = 200;
    return item.hItem && SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)) ? text : L"";
}

std::wstring HelpWindowTest::Status() const
{
    return WindowText(Item(IDC_STATUS));
}

void HelpWindowTest::Command(int id)
{
    SendMessageW(m_window->Handle(), WM_COMMAND, static_cast<WPARAM>(id), 0);
}

void HelpWindowTest::Find(const wchar_t* text)
{
    SetWindowTextW(Item(IDC_FIND), text);
    Command(CMD_FIND_NEXT);
}

bool HelpWindowTest::KeyInText(WPARAM key)
{
    MSG message{};
    message.hwnd = Pane();
    message.message = WM_KEYDOWN;
    message.wParam = key;
    return m_window->TranslateKey(message);
}

} // namespace help
