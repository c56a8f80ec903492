// EntryEditor: how it is built, laid out and loaded.
#include "editor/entry_editor_dialog.h"

#include <utility>

#include "editor/categories_line.h"
#include "editor/editor_settings.h"
#include "editor/zoom.h"
#include "res/resource.h"
#include "ui/scoped_quiet.h"
#include "ui/screen/scale.h"
#include "ui/screen/work_area.h"
#include "util/clock.h"

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
    m_controls.Place(m_layout, GetWindow(), 0);
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
        m_controls.Place(layout, GetWindow(), m_scroll.Position());
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
