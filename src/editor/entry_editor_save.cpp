// EntryEditor: how it is saved, put aside and closed.
#include "editor/entry_editor_dialog.h"

#include <utility>

#include "editor/editor_settings.h"
#include "editor/entry_copy.h"
#include "editor/value_pickers.h"
#include "mervane/file/store_path.h"
#include "res/resource.h"
#include "ui/control_text.h"
#include "ui/typed_time.h"

namespace {

constexpr const wchar_t* kWarning = L"Warning";
constexpr const wchar_t* kNotSaved = L"The entry was not saved";
constexpr const wchar_t* kOfferCopy = L"\n\nSave a copy of it as a text file?";
constexpr const wchar_t* kChangedByOther =
    L"This entry was changed by another program since you opened it.\n\n"
    L"Yes: save yours in its place.\n"
    L"No: keep both, and save yours as a new entry.\n"
    L"Cancel: go back to the entry.";

} // namespace

// What is saved is read from the controls behind each box, since the entry may change there: the timer ticks
// on. What changes while a write waits is in no record yet, and stays a change. Behind a box the window may
// be gone too: then there is nothing to save any more, and nobody to tell.
EditorRecord::Saved EntryEditor::Save()
{
    using Saved = EditorRecord::Saved;
    m_bar.Check(CMD_TIMER, false); // the ticks go on
    TakeTyped();
    RememberType();
    const Saved saved = CollectAndSave();
    const bool hasAll = m_changes == m_collected;
    if (saved == Saved::Updated && hasAll)
        SetModified(false);
    if (saved == Saved::Updated || saved == Saved::Created) {
        m_stored = m_collected;
        // What is put aside must know the record that there is now.
        hasAll ? m_rescue.Discard(GetWindow()) : m_rescue.WriteNow(GetWindow());
    }
    if (saved == Saved::Failed && GetWindow())
        TellNotSaved();
    return saved;
}

// Before the entry is collected: the settings may put up a box of their own.
void EntryEditor::RememberType()
{
    if (const std::optional<std::wstring> type = ReadText(m_controls.type))
        StoreLastType(&m_settings, type->substr(0, kTypeTextSize - 1));
}

template <typename Write> EditorRecord::Saved EntryEditor::CollectAnd(Write write)
{
    m_collected = m_changes;
    std::optional<EntryToWrite> entry = Collect();
    if (entry)
        m_rescue.CatchUp(GetWindow());
    const EditorRecord::Saved saved = entry ? write(&*entry) : EditorRecord::Saved::Failed;
    m_notSaved = entry ? m_record.Trouble() : StoreTrouble::NoMemory;
    return saved;
}

EditorRecord::Saved EntryEditor::CollectAndSave(EditorRecord::Theirs theirs)
{
    const auto saved = CollectAnd([&](EntryToWrite* entry) { return m_record.Save(entry, theirs); });
    return saved == EditorRecord::Saved::Changed ? SaveOverChange() : saved;
}

EditorRecord::Saved EntryEditor::CollectAndSaveAsNew()
{
    return CollectAnd([&](EntryToWrite* entry) { return m_record.SaveAsNew(entry); });
}

// Neither text is lost unless the user says so, and then only one that the user could have seen.
EditorRecord::Saved EntryEditor::SaveOverChange()
{
    switch (MessageBoxW(GetWindow(), kChangedByOther, kWarning,
                        MB_YESNOCANCEL | MB_ICONEXCLAMATION | MB_DEFBUTTON2)) {
    case IDYES: return CollectAndSave(EditorRecord::Theirs::Replace);
    case IDNO: return CollectAndSaveAsNew();
    default: return EditorRecord::Saved::Changed;
    }
}

// The box's own sound is the beep.
void EntryEditor::TellNotSaved()
{
    std::wstring text = NotDoneText(kNotSaved, m_notSaved, TypedText::StillThere);
    // A lock passes; of everything else the person may want to have the text in another place.
    if (m_notSaved == StoreTrouble::Locked || !Collect()) {
        MessageBoxW(GetWindow(), text.c_str(), kWarning, MB_OK | MB_ICONEXCLAMATION);
        return;
    }
    text += kOfferCopy;
    if (MessageBoxW(GetWindow(), text.c_str(), kWarning, MB_YESNO | MB_ICONEXCLAMATION) == IDYES)
        SaveEntryCopy(GetWindow(), [this] { return TextOfCopy(); });
}

std::optional<std::wstring> EntryEditor::TextOfCopy()
{
    std::optional<EntryToWrite> entry = Collect();
    if (!entry)
        return std::nullopt;
    return EntryCopyText(std::move(*entry), m_record);
}

// What is being typed into a field that the keyboard has not left yet: a key or a click on the bar leaves it
// there.
void EntryEditor::TakeTyped()
{
    TakeTypedTime(GetWindow());
    if (m_durationUnread || IsTypingDuration())
        OnDuration(CBN_KILLFOCUS);
}

bool EntryEditor::IsTypingDuration() const
{
    HWND focus = GetFocus();
    return focus && IsChild(m_controls.duration, focus) && GetWindowTextLengthW(m_controls.duration) > 0;
}

// What is being typed stays as it is in its field.
void EntryEditor::AddTypedDuration(EntryToWrite* entry) const
{
    if (!m_durationUnread && !IsTypingDuration())
        return;
    const std::optional<std::wstring> text = ReadText(m_controls.duration);
    if (!text || text->empty() || !IsNewDuration(*text))
        return;
    EditorTimes times = m_times;
    times.TakeDurationText(*text);
    times.FollowDuration();
    entry->endTime = times.end;
    entry->duration = times.duration;
}

// More than a save takes: what there is, whatever cannot be had or shown besides. Nothing where a text cannot
// be had: an incomplete state would replace what was put aside before.
std::optional<RescueState> EntryEditor::StateToRescue() const
{
    std::optional<EntryToWrite> entry = CollectShown();
    if (!entry)
        return std::nullopt;
    AddTypedDuration(&*entry);
    RescueState state;
    state.store = mervane::StoreNumber(mervane::StorePath());
    state.entry = std::move(*entry);
    m_record.DescribeTo(&state);
    return state;
}

void EntryEditor::OnSessionEnd()
{
    TakeTypedTime(GetWindow());
    if (HasUnstored())
        m_rescue.WriteNow(GetWindow());
}

void EntryEditor::OnOK()
{
    if (UsesInputPanel(m_settings))
        ShowInputPanel(false);
    TakeTyped();
    // The window closes only over what is on disk.
    while (m_modified) {
        const auto saved = Save();
        if (saved == EditorRecord::Saved::Failed || saved == EditorRecord::Saved::Changed)
            return;
        if (m_changes == m_collected)
            break;
        m_record.AddWritten();
    }
    m_views.DestroyLists();
    End(1);
}

void EntryEditor::OnCancel()
{
    if (m_modified &&
        MessageBoxW(GetWindow(), L"Cancel changes?", kWarning, MB_YESNO | MB_ICONQUESTION) != IDYES)
        return;
    m_rescue.Discard(GetWindow());
    m_views.DestroyLists();
    if (UsesInputPanel(m_settings))
        ShowInputPanel(false);
    m_bar.Check(CMD_TIMER, false);
    End(0);
}
