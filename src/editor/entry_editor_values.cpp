// EntryEditor: what the controls offer, and the entry's values put into them and taken from them.
#include "editor/entry_editor_dialog.h"

#include <algorithm>
#include <utility>

#include "data/entry_types.h"
#include "data/line_ends.h"
#include "editor/editor_settings.h"
#include "editor/subject_box.h"
#include "ui/control_text.h"
#include "ui/scoped_quiet.h"

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

void FillTypeBox(HWND box, const RegistryStore& settings)
{
    AddItems(box, kEntryTypes);
    const int last = FindType(LastType(settings));
    Select(box, last >= 0 ? last : kDefaultType);
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

} // namespace

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

// Nothing when a text cannot be had from its control, or could not be shown in it: it must not be taken for
// an empty one.
std::optional<EntryToWrite> EntryEditor::Collect() const
{
    if (m_hiddenSubject || m_durationUnread)
        return std::nullopt;
    return CollectWith(SubjectToWrite(m_controls.subject));
}

std::optional<EntryToWrite> EntryEditor::CollectWith(const std::optional<std::wstring>& subject) const
{
    const std::optional<std::wstring> body = ReadText(m_controls.body);
    std::optional<std::wstring> type = ReadText(m_controls.type);
    if (!body || !subject || !type)
        return std::nullopt;
    type->resize(std::min<size_t>(type->size(), kTypeTextSize - 1));
    EntryToWrite entry;
    entry.date = m_times.start;
    entry.endTime = m_times.end;
    entry.duration = m_times.duration;
    entry.priority = static_cast<short>(m_priority);
    entry.sensitivity = static_cast<short>(m_sensitivity);
    entry.type = *type;
    entry.body = WithLineEnds(*body);
    entry.subject = *subject;
    return entry;
}

// With the record's own subject, where that could not be shown.
std::optional<EntryToWrite> EntryEditor::CollectShown() const
{
    return CollectWith(m_hiddenSubject ? m_hiddenSubject : SubjectToWrite(m_controls.subject));
}
