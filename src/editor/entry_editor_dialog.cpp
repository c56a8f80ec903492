#include "editor/entry_editor_dialog.h"

#include <iterator>
#include <utility>

#include "editor/body_text.h"
#include "editor/editor_settings.h"
#include "editor/picker_menus.h"
#include "editor/quick_subjects_dialog.h"
#include "editor/subject_box.h"
#include "editor/zoom.h"
#include "pick/z_cats_dlg.h"
#include "res/resource.h"
#include "ui/bars/drop_down.h"
#include "ui/control_text.h"
#include "ui/scoped_quiet.h"
#include "ui/screen/scale.h"
#include "ui/typed_time.h"
#include "util/clock.h"
#include "util/compare_text.h"
#include "util/date_text.h"

namespace {

// Shows the duration's words again once a box has finished closing its list.
constexpr UINT kMsgShowDuration = WM_APP + 1;
// wParam: the button whose menu drops, behind the bar's own handling of the click.
constexpr UINT kMsgDropDown = WM_APP + 4;

void ShowLimitReached(HWND owner)
{
    wchar_t text[128] = L"";
    LoadStringW(GetModuleHandleW(nullptr), IDS_BODY_LIMIT, text, static_cast<int>(std::size(text)));
    MessageBoxW(owner, text, L"Maximum Reached", MB_OK | MB_ICONEXCLAMATION);
}

// A change of a choice, of a box's text or of the body.
bool IsChange(WORD code)
{
    return code == CBN_SELCHANGE || code == CBN_EDITCHANGE || code == EN_CHANGE;
}

} // namespace

EntryEditor::EntryEditor(const Session& session, CEOID* id)
    : m_settings(session.settings), m_record(session.journal, id)
{}

void EntryEditor::GoOnWith(RescueFile file, RescueState state)
{
    m_foundFile = std::move(file);
    m_found = std::move(state);
}

bool EntryEditor::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    switch (message) {
    case WM_COMMAND: return OnCommand(LOWORD(wParam), HIWORD(wParam));
    case WM_NOTIFY: return OnNotify(reinterpret_cast<NMHDR*>(lParam), result);
    case WM_TIMER: return OnTimer(wParam);
    case WM_VSCROLL: m_scroll.OnScroll(GetWindow(), LOWORD(wParam)); return true;
    case WM_SETTINGCHANGE: return !IsLaidOutBy(wParam, lParam);
    case kMsgDatabaseChange: OnDatabaseChange(wParam, lParam); return true;
    case kMsgShowDuration: ShowDuration(); return true;
    case kMsgDropDown: DropDown(static_cast<int>(wParam)); return true;
    case kMsgTimeTyped: SetModified(true); return true;
    case kMsgControlFocused: m_scroll.Reveal(GetWindow(), reinterpret_cast<HWND>(lParam)); return true;
    default: return false;
    }
}

// Of all that is broadcast as a changed setting: the locale, and the work area where it is this window's.
bool EntryEditor::IsLaidOutBy(WPARAM action, LPARAM section) const
{
    const auto* name = reinterpret_cast<const wchar_t*>(section);
    if (name && IsSameName(name, L"intl"))
        return true;
    const RECT area = OwnWorkArea();
    return action == SPI_SETWORKAREA && !EqualRect(&area, &m_workArea);
}

bool EntryEditor::OnCommand(int id, WORD code)
{
    if (id == IDOK || id == IDCANCEL)
        return false;
    RunCommand(id, code);
    TrackChange(code);
    return true;
}

void EntryEditor::RunCommand(int id, WORD code)
{
    switch (id) {
    case CMD_SAVE: (void)Save(); break;
    case CMD_TIMER: OnTimerButton(); break;
    case CMD_TIME_STAMP: InsertTimeStamp(m_controls.body, LocalNow()); break;
    case CMD_ZOOM_50:
    case CMD_ZOOM_100:
    case CMD_ZOOM_150:
    case CMD_ZOOM_200: ApplyZoom(id); break;
    case CMD_PRIORITY:
    case CMD_SENSITIVITY:
    case CMD_ZOOM: DropDown(id); break;
    case CMD_EDIT_ENTRY_VIEW:
    case CMD_ASSIGN_CATEGORIES:
    case CMD_ASSIGN_CONTACTS: SwitchView(*FindViewRule(id)); break;
    case CMD_EDIT_CATEGORIES: EditCategories(); break;
    case IDC_SUBJECT: OnSubject(code); break;
    case IDC_TYPE: OnType(code); break;
    case IDC_DURATION: OnDuration(code); break;
    case IDC_BODY: OnBody(code); break;
    default: break;
    }
}

void EntryEditor::TrackChange(WORD code)
{
    if (IsChange(code) && !m_quiet)
        SetModified(true);
}

bool EntryEditor::OnNotify(NMHDR* notification, LRESULT* result)
{
    if (OnViewNotify(notification, result))
        return true;
    switch (notification->code) {
    case DTN_DATETIMECHANGE: OnPickerChange(static_cast<int>(notification->idFrom)); return true;
    case TBN_DROPDOWN: {
        const int button = reinterpret_cast<NMTOOLBARW*>(notification)->iItem;
        PostMessageW(GetWindow(), kMsgDropDown, static_cast<WPARAM>(button), 0);
        return true;
    }
    case TBN_GETINFOTIPW: {
        auto* tip = reinterpret_cast<NMTBGETINFOTIPW*>(notification);
        lstrcpynW(tip->pszText, EditorBar::Tooltip(tip->iItem), tip->cchTextMax);
        return true;
    }
    default: return false;
    }
}

bool EntryEditor::OnViewNotify(NMHDR* notification, LRESULT* result)
{
    switch (m_views.OnNotify(notification, result)) {
    case AssignViews::Outcome::NotOurs: return false;
    case AssignViews::Outcome::CategoriesAssigned:
        SetModified(true);
        ShowCategories();
        return true;
    case AssignViews::Outcome::ContactsAssigned: SetModified(true); return true;
    // Posted: the list is filled anew, and must have done with the click by then.
    case AssignViews::Outcome::EditCategories:
        PostMessageW(GetWindow(), WM_COMMAND, CMD_EDIT_CATEGORIES, 0);
        return true;
    default: return true;
    }
}

void EntryEditor::SwitchView(const EditorViewRule& rule)
{
    if (m_views.SwitchTo(rule.view) && UsesInputPanel(m_settings))
        ShowInputPanel(rule.inputPanel);
}

// The categories or the contacts, changed by another program. After a save the stack is empty, and the line
// keeps what it says until the next check.
void EntryEditor::OnDatabaseChange(WPARAM code, LPARAM id)
{
    const bool isChange = code == kChangeCreated || code == kChangeModified || code == kChangeDeleted;
    if (isChange || (code == kChangeWorkEnded && id == 0))
        m_refresh.Ask(GetWindow());
}

void EntryEditor::ShowChanges()
{
    m_views.Refresh();
    if (!m_record.Categories().IsEmpty())
        ShowCategories();
}

void EntryEditor::EditCategories()
{
    ZCatsDlg(GetWindow()).DoModal();
    if (m_views.View() != EditorView::AssignCategories)
        return;
    m_views.TakeEditedCategories();
    ShowCategories();
}

void EntryEditor::OnSubject(WORD code)
{
    if (code == CBN_KILLFOCUS && GetWindowTextLengthW(m_controls.subject) == 0)
        SelectNoSubject(m_controls.subject);
    if (IsChange(code) && !m_quiet)
        m_hiddenSubject.reset(); // whatever it is, the person has given it
    if (code == CBN_CLOSEUP && SendMessageW(m_controls.subject, CB_GETCURSEL, 0, 0) == kModifySubjectsItem) {
        RunQuickSubjects(GetWindow(), m_settings);
        FillSubjects();
    }
}

void EntryEditor::OnType(WORD code)
{
    if (code == CBN_KILLFOCUS && GetWindowTextLengthW(m_controls.type) == 0)
        SendMessageW(m_controls.type, CB_SETCURSEL, 0, 0);
}

void EntryEditor::OnDuration(WORD code)
{
    if (IsChange(code) && !m_quiet)
        m_durationEdited = true;
    if (code == CBN_KILLFOCUS)
        TakeDuration(ReadText(m_controls.duration));
    // Some systems put the chosen item's own words into the box after this notification.
    if (code == CBN_CLOSEUP && TakeDuration(ChosenDuration()))
        PostMessageW(GetWindow(), kMsgShowDuration, 0, 0);
    ApplyDateRule(IDC_DURATION);
}

// What stands in the box when its list closes. Some systems bring its text into line with the choice only
// later, so a choice counts before the text; the box has one only while its text is an item of the list.
std::optional<std::wstring> EntryEditor::ChosenDuration() const
{
    const LRESULT chosen = SendMessageW(m_controls.duration, CB_GETCURSEL, 0, 0);
    const auto durations = SuggestedDurations();
    if (chosen >= 0 && static_cast<size_t>(chosen) < durations.size())
        return durations[static_cast<size_t>(chosen)];
    return ReadText(m_controls.duration);
}

// False for an emptied box: it shows a suggestion, but the duration stays until the box is read again. Where
// its text cannot be had all stays, and the next save tries again.
bool EntryEditor::TakeDuration(const std::optional<std::wstring>& text)
{
    m_durationUnread = !text;
    if (!text)
        return false;
    if (text->empty()) {
        SendMessageW(m_controls.duration, CB_SETCURSEL, kEmptiedDuration, 0);
        return false;
    }
    if (IsNewDuration(*text))
        m_times.TakeDurationText(*text);
    ShowDuration();
    return true;
}

// The words are less exact than the duration that they stand for: where nobody has touched them they are not
// read.
bool EntryEditor::IsNewDuration(const std::wstring& text) const
{
    return m_durationEdited || text != m_times.DurationText();
}

void EntryEditor::ShowDuration()
{
    const ScopedQuiet quiet(&m_quiet);
    m_durationEdited = m_durationUnread = false;
    const std::wstring text = m_times.DurationText();
    const LRESULT item = SendMessageW(m_controls.duration, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                      reinterpret_cast<LPARAM>(text.c_str()));
    SendMessageW(m_controls.duration, CB_SETCURSEL, static_cast<WPARAM>(item), 0); // -1: no item
    if (item < 0)
        SetWindowTextW(m_controls.duration, text.c_str());
}

void EntryEditor::OnBody(WORD code)
{
    switch (code) {
    case EN_SETFOCUS: SelectBodyPlaceholder(m_controls.body); break;
    case EN_KILLFOCUS: {
        const ScopedQuiet quiet(&m_quiet);
        RestoreBodyPlaceholder(m_controls.body);
        break;
    }
    case EN_MAXTEXT: ShowLimitReached(GetWindow()); break;
    default: break;
    }
}

// Both pickers carry the whole time, so either one's answer is the new start.
void EntryEditor::OnPickerChange(int id)
{
    SYSTEMTIME picked{};
    if (DateTime_GetSystemtime(GetItem(id), &picked) != GDT_VALID)
        return;
    if (!(id == IDC_START_DATE ? m_times.TakePickedDate(picked) : m_times.TakePickedTime(picked)))
        return;
    ApplyDateRule(id);
    SetModified(true);
}

void EntryEditor::ApplyDateRule(int id)
{
    SYSTEMTIME start{};
    const bool isDate = m_times.start.ToSystemTime(&start);
    if (id == IDC_START_DATE && isDate) {
        ShowTime(m_controls.time, start);
        SetWindowTextW(GetWindow(), WeekdayName(start).c_str());
    }
    if (id == IDC_START_TIME && isDate)
        ShowTime(m_controls.date, start);
    m_times.FollowDuration();
}

// A save has unchecked the button while the ticks go on, so they tell what a press means, not the button.
void EntryEditor::OnTimerButton()
{
    if (m_timer.IsRunning())
        m_timer.Stop(GetWindow(), &m_settings);
    else if (!m_timer.Start(GetWindow(), &m_settings))
        MessageBeep(MB_ICONEXCLAMATION);
    ShowTimer();
}

bool EntryEditor::OnTimer(UINT_PTR id)
{
    if (m_rescue.OnTimer(GetWindow(), id))
        return true;
    if (!m_timer.IsTick(id))
        return false;
    m_timer.AddTimeSinceLastTick(&m_settings, &m_times);
    ShowDuration();
    SetModified(true);
    return true;
}

void EntryEditor::ShowTimer()
{
    m_bar.Check(CMD_TIMER, m_timer.IsRunning());
    m_bar.SetFace(CMD_TIMER, TimerFace(m_timer.IsRunning()));
}

void EntryEditor::DropDown(int button)
{
    const UniqueMenu menu = PickerMenu(button);
    if (!menu || !IsWindowEnabled(GetWindow())) // a box may have come up since the click
        return;
    if (const UINT chosen = TrackPressedDropDown(m_bar.Window(), button, menu.get(), GetWindow()))
        Choose(button, static_cast<int>(chosen));
}

void EntryEditor::Choose(int button, int menuId)
{
    if (button == CMD_ZOOM)
        return ApplyZoom(menuId);
    if (button == CMD_PRIORITY)
        ShowPriority(menuId);
    else
        ShowSensitivity(menuId);
    SetModified(true);
}

void EntryEditor::ShowPriority(int valueOrId)
{
    m_priority = PriorityOf(valueOrId);
    m_bar.SetFace(CMD_PRIORITY, PriorityFace(m_priority));
}

void EntryEditor::ShowSensitivity(int valueOrId)
{
    m_sensitivity = SensitivityOf(valueOrId);
    m_bar.SetFace(CMD_SENSITIVITY, SensitivityFace(m_sensitivity));
}

void EntryEditor::ApplyZoom(int menuId)
{
    const ZoomStep& step = ZoomStepOf(static_cast<unsigned>(menuId));
    m_zoom = step.menuId;
    m_bar.SetFace(CMD_ZOOM, ZoomFace(step));
    UniqueFont font = MakeZoomFont(step, DpiOf(GetWindow()));
    SendMessageW(m_controls.body, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
    m_bodyFont = std::move(font);
    StoreZoom(&m_settings, static_cast<DWORD>(m_zoom));
    RedrawWindow(m_controls.body, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME);
}

void EntryEditor::SetModified(bool modified)
{
    m_modified = modified;
    m_bar.Enable(CMD_SAVE, modified);
    if (!modified)
        return;
    ++m_changes;
    m_rescue.Ask(GetWindow());
}
