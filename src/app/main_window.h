// MainWindow: the command bands at the top and the entry list below them; routes what the window gets.
#pragma once

#include <windows.h>

#include "app/band_layout.h"
#include "app/daily_backup.h"
#include "app/main_bands.h"
#include "app/quiet_notice.h"
#include "columns/column_set.h"
#include "find/find_request.h"
#include "list/entry_list.h"
#include "mervane/file/turn.h"
#include "ui/bars/menu_tip.h"
#include "ui/gathered.h"
#include "ui/window_procedure.h"

constexpr const wchar_t* kMainWindowClass = L"Journal";
constexpr const wchar_t* kMainWindowTitle = L"Kelvra Journal";
constexpr UINT kMsgCloseRequest = 1023; // the same as WM_CLOSE

// The property that the list is sorted by, stored at close.
constexpr const wchar_t* kSortValue = L"sort"; // in Options
constexpr DWORD kSortDefault = kPropDate;

class MainWindow {
  public:
    explicit MainWindow(const Session& session);
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    static bool RegisterWindowClass(HINSTANCE instance);
    // Creates the window with everything in it. Null when the journal cannot be opened or the bands or the
    // list cannot be built; then no setting has been written. turn, if any, ends once other copies find it.
    HWND Create(HINSTANCE instance, Turn* turn = nullptr);
    // Shows the window the first time: the show command counts, and where it leaves it open the window comes
    // back as it was left.
    void ShowFirst(int showCommand);

    HWND Handle() const { return m_window; }
    const Session& GetSession() const { return m_session; }
    EntryList& List() { return m_list; }
    // Once a person has closed it: why no whole copy was kept of a store whose file was not in its place.
    StoreTrouble NotKept() const { return m_notKept; }
    // What Find looked for last.
    FindRequest& Request() { return m_findRequest; }
    // For the message loop: keys that open and work the menu, and F4 or Alt+Down for the filter's.
    bool TranslateMenuKey(const MSG& message);

    // What the command table's handlers do in this window.
    // Closes the window, or ends what is open over it first.
    void RequestClose();
    void ShowAbout();
    void EditFilter(bool categoriesMode);
    void ClearTheFilter();

  private:
    friend class WindowProcedure<MainWindow>;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);

    LRESULT OnCreate();
    LRESULT OnDestroy();
    LRESULT OnEndSession(WPARAM ends);
    LRESULT OnSize();
    LRESULT OnResolutionChanged(const RECT& place);
    LRESULT OnColorsChanged(UINT message, WPARAM wParam, LPARAM lParam);
    void RebuildBands();
    LRESULT OnGetMinMaxInfo(MINMAXINFO* info);
    LRESULT OnNotify(NMHDR* notification);
    LRESULT OnBandsNotify(const NMHDR& notification);
    void StoreBands() const;
    LRESULT OnCommand(UINT command, bool fromKeyboard);
    LRESULT OnDatabaseChange(WPARAM code, LPARAM lParam);
    LRESULT OnSelectionChanged(int flag);

    bool BuildContents();
    void Close();
    void StoreSort() const;
    void StoreLayout() const;
    void StoreSettings() const;
    void RefitList();
    void DropFilterMenu();
    void NoteFileTrouble();
    void NoteMissingEntries();
    void ShowWhatHasChanged();
    [[nodiscard]] bool ShowFilter();

    const Session m_session;
    HWND m_window = nullptr;
    HINSTANCE m_instance = nullptr;
    Turn* m_turn = nullptr; // during the creation
    MainBands m_bands;
    ColumnSet m_columns;
    EntryList m_list;
    FindRequest m_findRequest;
    MenuTip m_menuTip;
    bool m_isListDue = false; // to be refreshed when the command ends
    // For what other programs change.
    Gathered m_refresh{[this] {
        m_isListDue = true;
        ShowWhatHasChanged();
    }};
    DailyBackup m_backup{m_session.journal};
    StoreTrouble m_fileTrouble = StoreTrouble::None; // as last looked at
    QuietNotice m_fileNotice;
    bool m_missesEntries = false; // as the list was last looked at
    QuietNotice m_missingNotice;
    StoreTrouble m_notKept = StoreTrouble::None;
    bool m_leftMaximized = false; // when it was last closed
    bool m_isToBeSeen = false;    // the first show has come
    // Set once everything stored has been loaded: from then on it may be stored again.
    bool m_loaded = false;
    UniqueIcon m_smallIcon; // for another resolution than it was opened in
    UniqueIcon m_bigIcon;
};
