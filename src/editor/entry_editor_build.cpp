// EntryEditor: how it is built, laid out and loaded.
#include "editor/entry_editor_dialog.h"

#include <utility>

#include "data/entry_types.h"
#include "data/line_ends.h"
#include "editor/categories_line.h"
#include "editor/editor_settings.h"
#include "editor/subject_box.h"
#include "editor/zoom.h"
#include "res/resource.h"
#include "ui/control_text.h"
#include "ui/scoped_quiet.h"
#include "ui/screen/scale.h"
#include "ui/screen/work_area.h"
#include "util/clock.h"

namespace {

void AddItems(HWND box, std::span<const wchar_t* const> texts)
{
    WPARAM position = 0;
    for (const wchar_t* text : texts)
        SendMessageW(box, CB_INSERTSTRING, position++, reinterpret_cast<LPARAM>(text));
}

void Select(HWND box, int item)
{
    SendMessageW(box, CB_SETCURSEL, static_cast<WPARAM>(item), 0);
}

// False when the control has not taken it, as for want of memory.
bool ShowText(HWND control, const std::wstring& text)
{
    return SetWindowTextW(control, text.c_str()) && ReadText(control) == text;
}

// As if it had been typed.
bool ShowInBox(HWND box, const std::wstring& text)
{
    Select(box, -1);
    return ShowText(box, text);
}

void FillTypeBox(HWND box, const RegistryStore& settings)
{
    AddItems(box, kEntryTypes);
    const int last = FindType(LastType(settings));
    Select(box, last >= 0 ? last : kDefaultType);
}

} // namespace

bool EntryEditor::OnInitDialog()
{
    const ScopedQuiet quiet(&m_quiet);
    if (!Build() || !Load() || (m_found && !ApplyRescued(*m_found))) {
        End(-1);
        return true;
    }
    if (UsesInputPanel(m_settings))
        ShowInputPanel(true);
    SetModified(false);
    if (m_found) {
        m_rescue.TakeOver(std::move(m_foundFile));
        SetModified(true);
    }
    SetFocus(m_controls.date);
    return false;
}

bool EntryEditor::Build()
{
    m_record.OpenStores(GetWindow());
    if (!m_controls.Create(GetModuleHandleW(nullptr), GetWindow(), &m_bar))
        return false;
    m_times.StartAt(LocalNowCount());
    ShowTimes();
    FillBoxes();
    SetBarState();
    LayOut();
    ApplyZoom(static_cast<int>(StoredZoom(m_settings)));
    return true;
}

void EntryEditor::ShowTimes()
{
    SYSTEMTIME start{};
    if (m_times.start.ToSystemTime(&start))
        for (HWND picker : {m_controls.date, m_controls.time})
            ShowTime(picker, start);
    ApplyDateRule(IDC_START_DATE);
}

void EntryEditor::FillSubjects()
{
    const ScopedQuiet quiet(&m_quiet);
    std::optional<std::wstring> subject;
    if (m_record.Mask() & kLoadedSubject)
        subject = m_record.StoredSubject();
    m_hiddenSubject.reset();
    if (!FillSubjectBox(m_controls.subject, m_settings, subject))
        m_hiddenSubject = std::move(subject);
}

void EntryEditor::FillBoxes()
{
    FillSubjects(); // of no record yet
    FillTypeBox(m_controls.type, m_settings);
    AddItems(m_controls.duration, SuggestedDurations());
    Select(m_controls.duration, 0);
}

void EntryEditor::SetBarState()
{
    m_views.Start(GetWindow(), &m_bar, m_controls.body);
    ShowPriority(kPriorityNormal);
    ShowSensitivity(kSensitivityNormal);
    m_timer.Stop(GetWindow(), &m_settings);
    ShowTimer();
}

// It opens on its owner's screen and fills the one that it has been brought to.
RECT EntryEditor::OwnWorkArea() const
{
    return m_isPlaced ? WorkAreaAt(GetWindow()) : OwnersWorkArea();
}

void EntryEditor::OnResolutionChanged(int before)
{
    const auto font = reinterpret_cast<HFONT>(SendMessageW(GetWindow(), WM_GETFONT, 0, 0));
    m_controls.SetFont(font);
    m_bar.OnResolutionChanged(font);
    LayOut();
    m_views.OnResolutionChanged(before);
    ApplyZoom(m_zoom);
}

// The layout takes the client area as it is without a scroll bar, and once more with one where it has to.
void EntryEditor::LayOut()
{
    m_workArea = OwnWorkArea();
    m_isPlaced = true;
    m_scroll.SetExtent(GetWindow(), 0, 0);
    MoveWindow(m_workArea.left, m_workArea.top, m_workArea.right - m_workArea.left,
               m_workArea.bottom - m_workArea.top, true);
    EditorMetrics metrics = Measure();
    m_layout = LayOutEditor(metrics);
    if (m_layout.height > metrics.client.cy) {
        m_scroll.SetExtent(GetWindow(), m_layout.height, metrics.client.cy);
        metrics = Measure();
        m_layout = LayOutEditor(metrics);
        m_scroll.SetExtent(GetWindow(), m_layout.height, metrics.client.cy);
    }
    m_bar.BreakInto(m_layout.barWrapWidth);
    m_controls.Place(m_layout, m_bar, 0);
    m_views.FollowBody();
    m_controls.ShowCategories(metrics.showCategories);
    ShowCategories();
}

EditorMetrics EntryEditor::Measure() const
{
    RECT client{};
    GetClientRectangle(&client);
    EditorMetrics metrics;
    metrics.workArea = {m_workArea.right - m_workArea.left, m_workArea.bottom - m_workArea.top};
    metrics.client = {client.right, client.bottom};
    metrics.dateWidth = m_controls.NeededWidth(m_controls.date);
    metrics.timeWidth = m_controls.NeededWidth(m_controls.time);
    metrics.boxHeight = m_controls.BoxHeight();
    metrics.labelWidth = m_controls.LabelWidth();
    metrics.barButtons = m_bar.Buttons();
    metrics.barRowHeight = m_bar.RowHeight();
    metrics.showCategories = ShowsCategories(m_settings);
    metrics.dpi = DpiOf(GetWindow());
    return metrics;
}

void EntryEditor::ShowCategories()
{
    if (ShowsCategories(m_settings))
        ShowCategoriesLine(m_controls.categories, &m_record.Categories(), &m_record.CategoryStore());
}

// A change of the work area lays everything out anew. A change of the locale brings the categories line close
// below the body. The body gives way from its first layout, so a second change does not shrink it again.
void EntryEditor::OnSettingsChanged()
{
    m_controls.FollowLocale();
    const RECT area = OwnWorkArea();
    if (!EqualRect(&area, &m_workArea))
        return LayOut();
    const bool show = ShowsCategories(m_settings);
    if (show) {
        const EditorLayout layout = WithLineBelowBody(m_layout, DpiOf(GetWindow()));
        m_controls.Place(layout, m_bar, m_scroll.Position());
        m_views.FollowBody();
    }
    m_controls.ShowCategories(show);
    ShowCategories();
}

bool EntryEditor::Fail(StoreTrouble trouble)
{
    m_notOpened = trouble;
    return false;
}

// False for a record that cannot be read or shown: an editor without it would write over it.
bool EntryEditor::Load()
{
    JournalEntry entry;
    const EditorRecord::Loaded loaded = m_record.Load(&entry);
    if (loaded == EditorRecord::Loaded::Failed)
        return Fail(m_record.Trouble());
    if (loaded == EditorRecord::Loaded::Done && !ApplyLoaded(entry))
        return Fail(StoreTrouble::NoMemory);
    m_times.FollowEnds();
    ShowDuration();
    std::optional<EntryToWrite> shown = CollectShown();
    if (!shown)
        return Fail(StoreTrouble::NoMemory);
    m_record.SetShown(std::move(*shown));
    return true;
}

// In the order in which records are read: the date before what it resets.
bool EntryEditor::ApplyLoaded(const JournalEntry& entry)
{
    if (entry.date) {
        m_times.StartAt(*entry.date);
        ShowTimes();
    }
    if (entry.subject && !AddSubject(m_controls.subject, *entry.subject))
        return false;
    if (entry.body && !ShowText(m_controls.body, WithLineEnds(*entry.body)))
        return false;
    if (entry.categories)
        ShowCategories();
    if (const int type = entry.type ? FindTypeByPrefix(*entry.type) : -1; type >= 0)
        Select(m_controls.type, type);
    if (entry.priority)
        ShowPriority(*entry.priority);
    if (entry.sensitivity)
        ShowSensitivity(*entry.sensitivity);
    if (entry.endTime)
        m_times.end = *entry.endTime;
    if (entry.duration)
        m_times.duration = *entry.duration;
    return true;
}

// False where the texts cannot be shown.
bool EntryEditor::ApplyRescued(const RescueState& state)
{
    m_record.GoOnWith(state);
    ApplyRescuedTimes(state.entry);
    if (IsPlaceholder(state.entry.subject, kSubjectPlaceholder))
        SelectNoSubject(m_controls.subject);
    else if (!ShowInBox(m_controls.subject, state.entry.subject))
        return Fail(StoreTrouble::NoMemory);
    if (const int type = FindType(state.entry.type); type >= 0)
        Select(m_controls.type, type);
    if (!ShowText(m_controls.body, state.entry.body))
        return Fail(StoreTrouble::NoMemory);
    ShowPriority(state.entry.priority);
    ShowSensitivity(state.entry.sensitivity);
    ShowCategories();
    return true;
}

// The ends behind what showing the start makes of them.
void EntryEditor::ApplyRescuedTimes(const EntryToWrite& entry)
{
    m_times.StartAt(entry.date);
    ShowTimes();
    m_times.end = entry.endTime;
    m_times.duration = entry.duration;
    ShowDuration();
}
