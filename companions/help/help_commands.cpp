#include <algorithm>

#include "help/help_window.h"
#include "help/print.h"
#include "help/resource.h"
#include "ui/control_text.h"

namespace help {

namespace {

constexpr int kZoomStep = 25; // percent
constexpr const wchar_t* kOwnTopic = L"Help_Window";

} // namespace

void HelpWindow::OnCommand(int id)
{
    switch (id) {
    case CMD_PRINT_TOPIC: return m_topic ? Print(m_book.Topics()[*m_topic].blocks) : SayStatus(L"");
    case CMD_PRINT_ALL: return Print(m_book.AllBlocks());
    case CMD_EXIT: PostMessageW(m_window, WM_CLOSE, 0, 0); return;
    case CMD_COPY_TEXT: return SendToFocused(WM_COPY);
    case CMD_SELECT_ALL: return SendToFocused(EM_SETSEL, 0, -1);
    case CMD_FIND_TEXT: return FocusFind();
    case CMD_FIND_NEXT: return Find(false);
    case CMD_FIND_PREVIOUS: return Find(true);
    case CMD_ZOOM_IN: return SetZoom(m_text.Zoom() + kZoomStep);
    case CMD_ZOOM_OUT: return SetZoom(m_text.Zoom() - kZoomStep);
    case CMD_ZOOM_NORMAL: return SetZoom(kNormalZoom);
    case IDC_BACK:
    case CMD_BACK: return Revisit(m_history.Back(Here()));
    case IDC_FORWARD:
    case CMD_FORWARD: return Revisit(m_history.Forward(Here()));
    case CMD_FIRST_TOPIC: return GoTo(0);
    case CMD_PREVIOUS_TOPIC: return GoToNeighbour(false);
    case CMD_NEXT_TOPIC: return GoToNeighbour(true);
    case CMD_NEXT_PANE: return StepPane(false);
    case CMD_PREVIOUS_PANE: return StepPane(true);
    case CMD_HELP_ON_HELP: GoToAnchor(kOwnTopic); return;
    case IDOK: return OnEnter();
    case IDCANCEL: SetFocus(m_text.Handle()); return;
    default: return;
    }
}

void HelpWindow::EnableCommands()
{
    HMENU menu = GetMenu(m_window);
    const auto enable = [menu](UINT id, bool enabled) {
        EnableMenuItem(menu, id, enabled ? MF_ENABLED : MF_GRAYED);
    };
    enable(CMD_PRINT_TOPIC, m_topic.has_value());
    enable(CMD_PRINT_ALL, m_book.Count() > 0);
    enable(CMD_BACK, m_history.CanGoBack());
    enable(CMD_FORWARD, m_history.CanGoForward());
    enable(CMD_FIRST_TOPIC, m_book.Count() > 0);
    enable(CMD_PREVIOUS_TOPIC, m_topic && *m_topic > 0);
    enable(CMD_NEXT_TOPIC, m_topic && *m_topic + 1 < m_book.Count());
    const auto enableButton = [this](HWND button, bool enabled) {
        if (!enabled && GetFocus() == button)
            SetFocus(m_text.Handle());
        EnableWindow(button, enabled);
    };
    enableButton(m_back, m_history.CanGoBack());
    enableButton(m_forward, m_history.CanGoForward());
}

void HelpWindow::SayStatus(const std::wstring& text)
{
    SetWindowTextW(m_status, text.c_str());
}

void HelpWindow::Show(const HelpRequest& request)
{
    if (!m_book.IsOpen(request.file, m_program)) {
        m_book.Open(request.file, m_program);
        m_history.Clear();
        m_topic.reset();
        SetWindowTextW(m_window, m_book.Title().c_str());
        m_contents.Fill(m_book.Topics());
    }
    if (m_book.Count() == 0)
        return ShowNotice(m_book.Trouble());
    if (request.anchor.empty())
        return GoTo(0);
    if (!GoToAnchor(request.anchor)) {
        Leave();
        ShowNotice(NoSuchTopic(request.anchor));
    }
}

void HelpWindow::ShowTopic(size_t topic)
{
    if (m_topic != topic) {
        m_topic = topic;
        m_text.Show(m_book.Topics()[topic].blocks);
    }
    m_contents.Select(topic);
    SayStatus(L"");
    EnableCommands();
}

void HelpWindow::ShowNotice(const std::vector<Block>& blocks)
{
    m_topic.reset();
    m_contents.Select(std::nullopt);
    m_text.Show(blocks);
    SayStatus(L"");
    EnableCommands();
}

std::optional<Visit> HelpWindow::Here() const
{
    return m_topic ? std::optional(Visit{*m_topic, m_text.FirstVisible()}) : std::nullopt;
}

void HelpWindow::Leave()
{
    if (const auto here = Here())
        m_history.Leave(*here);
}

void HelpWindow::GoTo(size_t topic, size_t block)
{
    if (topic >= m_book.Count())
        return;
    if (m_topic != topic || block > 0)
        Leave();
    ShowTopic(topic);
    const std::vector<size_t>& blocks = m_text.Text().blocks;
    m_text.GoTo(block > 0 && block < blocks.size() ? blocks[block] : 0);
}

void HelpWindow::Revisit(const std::optional<Visit>& visit)
{
    if (!visit || visit->topic >= m_book.Count())
        return;
    ShowTopic(visit->topic);
    m_text.GoTo(visit->place);
}

void HelpWindow::GoToNeighbour(bool forwards)
{
    if (m_topic && (forwards || *m_topic > 0))
        GoTo(forwards ? *m_topic + 1 : *m_topic - 1);
}

bool HelpWindow::GoToAnchor(const std::wstring& anchor)
{
    const std::optional<TopicPlace> place = FindAnchor(m_book.Topics(), anchor);
    if (place)
        GoTo(place->topic, place->block);
    return place.has_value();
}

// Links lead to places in the help, and nowhere else.
void HelpWindow::Follow(const TextLink* link)
{
    if (!link)
        return;
    const std::wstring target = link->target;
    const size_t hash = target.find(L'#');
    const std::wstring anchor = hash == std::wstring::npos ? std::wstring() : target.substr(hash + 1);
    if (anchor.empty() || !GoToAnchor(anchor))
        SayStatus(L"This link leads nowhere: " + target);
}

void HelpWindow::StepLink(bool backwards)
{
    const TextRange selected = m_text.Selection();
    const TextLink* link =
        backwards ? PreviousLink(m_text.Text(), selected.begin) : NextLink(m_text.Text(), selected.end);
    if (link)
        m_text.Select(link->range);
    else
        StepPane(backwards);
}

void HelpWindow::Find(bool backwards)
{
    const std::wstring text = ReadText(m_find).value_or(std::wstring());
    if (text.empty())
        return FocusFind();
    const TextPlace from{m_topic.value_or(0), m_topic ? m_text.Selection() : TextRange{}};
    const std::optional<TextPlace> found = FindInTopics(m_book.Texts(), text, from, backwards);
    if (!found) {
        MessageBeep(MB_OK);
        return SayStatus(L"Not found: " + text);
    }
    if (m_topic != found->topic)
        Leave();
    ShowTopic(found->topic);
    m_text.Select(found->range);
    SayStatus(L"Found in: " + m_book.Topics()[found->topic].title);
    SetFocus(m_text.Handle());
}

void HelpWindow::FocusFind()
{
    SetFocus(m_find);
    SendMessageW(m_find, EM_SETSEL, 0, -1);
}

// Contents, text, the box to find in, and round.
void HelpWindow::StepPane(bool backwards)
{
    const HWND panes[] = {m_contents.Handle(), m_text.Handle(), m_find};
    constexpr size_t count = std::size(panes);
    const auto* focused = std::find(std::begin(panes), std::end(panes), GetFocus());
    const size_t current = focused == std::end(panes) ? count - 1 : static_cast<size_t>(focused - panes);
    SetFocus(panes[(current + (backwards ? count - 1 : 1)) % count]);
}

void HelpWindow::SendToFocused(UINT message, WPARAM wParam, LPARAM lParam)
{
    SendMessageW(GetFocus() == m_find ? m_find : m_text.Handle(), message, wParam, lParam);
}

void HelpWindow::SetZoom(int percent)
{
    m_text.SetZoom(percent);
    m_text.Fit();
}

// While the person is asked, another file may be opened.
void HelpWindow::Print(std::vector<Block> blocks)
{
    const std::wstring title = m_book.Title();
    AskAndPrint(m_window, title, blocks);
}

} // namespace help
