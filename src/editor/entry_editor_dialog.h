// EntryEditor: the editor's window. It routes messages and keeps what the user sees in step with the entry's
// times, its record and the settings.
#pragma once

#include <optional>
#include <string>

#include "data/session.h"
#include "editor/assign_views.h"
#include "editor/editor_bar.h"
#include "editor/editor_controls.h"
#include "editor/editor_layout.h"
#include "editor/editor_record.h"
#include "editor/editor_rescue.h"
#include "editor/editor_times.h"
#include "editor/entry_timer.h"
#include "ui/dialog.h"
#include "ui/gathered.h"
#include "ui/launch.h"
#include "ui/window_scroll.h"
#include "util/owners.h"

class EntryEditor : public Dialog {
  public:
    // id is the caller's, see OpenEntryEditor.
    EntryEditor(const Session& session, CEOID* id);
    // Before it runs: what it shows instead of the record, and the rescue file that this comes from; the
    // editor goes on writing into that file.
    void GoOnWith(RescueFile file, RescueState state);

    // Why the record could not be read, when it ended with -1; None when it could not be made.
    StoreTrouble Trouble() const { return m_notOpened; }

    void OnOK() override;
    void OnCancel() override;
    void OnSettingsChanged() override;

  protected:
    bool OnInitDialog() override;
    void OnResolutionChanged(int before) override;
    const wchar_t* HelpTopic() const override { return kHelpEntry; }
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    const wchar_t* Unsaved() const override { return HasUnstored() ? L"An entry is not saved." : nullptr; }
    void OnSessionEnd() override;

  private:
    // Building
    bool Build();
    void FillSubjects();
    void FillBoxes();
    void SetBarState();
    void LayOut();
    RECT OwnWorkArea() const;
    EditorMetrics Measure() const;
    void ShowTimes();
    [[nodiscard]] bool Load();
    [[nodiscard]] bool ApplyLoaded(const JournalEntry& entry);
    [[nodiscard]] bool ApplyRescued(const RescueState& state);
    bool Fail(StoreTrouble trouble);
    void ApplyRescuedTimes(const EntryToWrite& entry);

    // Messages
    bool OnCommand(int id, WORD code);
    void RunCommand(int id, WORD code);
    void TrackChange(WORD code);
    bool IsLaidOutBy(WPARAM action, LPARAM section) const;
    bool OnNotify(NMHDR* notification, LRESULT* result);
    bool OnViewNotify(NMHDR* notification, LRESULT* result);
    bool OnTimer(UINT_PTR id);
    void OnSubject(WORD code);
    void OnType(WORD code);
    void OnDuration(WORD code);
    void OnBody(WORD code);
    void OnPickerChange(int id);
    void OnTimerButton();
    void DropDown(int button);
    void Choose(int button, int menuId);
    void ShowPriority(int valueOrId);
    void ShowSensitivity(int valueOrId);

    // What the entry is
    void ApplyDateRule(int id);
    bool TakeDuration(const std::optional<std::wstring>& text);
    bool IsNewDuration(const std::wstring& text) const;
    void ShowDuration();
    void ShowTimer();
    std::optional<std::wstring> ChosenDuration() const;
    void ApplyZoom(int menuId);
    void ShowCategories();
    void SwitchView(const EditorViewRule& rule);
    void EditCategories();
    void OnDatabaseChange(WPARAM code, LPARAM id);
    void ShowChanges();
    void SetModified(bool modified);

    // Saving and putting aside
    [[nodiscard]] EditorRecord::Saved Save();
    void RememberType();
    EditorRecord::Saved CollectAndSave(EditorRecord::Theirs theirs = EditorRecord::Theirs::Ask);
    EditorRecord::Saved CollectAndSaveAsNew();
    template <typename Write> EditorRecord::Saved CollectAnd(Write write);
    EditorRecord::Saved SaveOverChange();
    void TellNotSaved();
    std::optional<std::wstring> TextOfCopy();
    void TakeTyped();
    std::optional<EntryToWrite> Collect() const;
    std::optional<EntryToWrite> CollectWith(const std::optional<std::wstring>& subject) const;
    std::optional<EntryToWrite> CollectShown() const;
    void AddTypedDuration(EntryToWrite* entry) const;
    bool IsTypingDuration() const;
    std::optional<RescueState> StateToRescue() const;
    // Whether there is something that is not on disk: less than being modified: the first write of a new
    // entry leaves it modified.
    bool HasUnstored() const { return m_modified && m_changes != m_stored; }

    RegistryStore& m_settings;
    EditorRecord m_record;
    EditorTimes m_times;
    EntryTimer m_timer;
    EditorControls m_controls;
    EditorBar m_bar;
    EditorLayout m_layout;
    RECT m_workArea{};
    bool m_isPlaced = false;
    WindowScroll m_scroll;
    UniqueFont m_bodyFont;
    bool m_modified = false;
    unsigned m_changes = 0;                      // so far
    unsigned m_collected = 0;                    // how many of them what was read last from the controls has
    unsigned m_stored = 0;                       // and what was written last
    bool m_durationEdited = false;               // since it was shown last
    bool m_durationUnread = false;               // what is in its box could not be had
    std::optional<std::wstring> m_hiddenSubject; // the record's, where it could not be shown
    StoreTrouble m_notOpened = StoreTrouble::None; // why
    StoreTrouble m_notSaved = StoreTrouble::None;  // the last time
    int m_priority = kPriorityNormal;
    int m_sensitivity = kSensitivityNormal;
    int m_zoom = 0;       // the menu id
    bool m_quiet = false; // the editor itself is filling its controls
    AssignViews m_views{&m_record, &m_quiet};
    std::optional<RescueState> m_found; // to go on with
    RescueFile m_foundFile;
    EditorRescue m_rescue{[this] { return StateToRescue(); }};
    Gathered m_refresh{[this] { ShowChanges(); }}; // of other programs
};
