// The address book's main window: a menu, a box to find in, the list of contacts.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <optional>
#include <string>
#include <vector>

#include "addrbook/contact_dialog.h"
#include "addrbook/contact_rows.h"
#include "formats/vcard/contact.h"
#include "frame/companion_window.h"
#include "mervane/db_contacts.h"
#include "mervane/file/turn.h"
#include "ui/gathered.h"
#include "ui/window_procedure.h"

namespace addrbook {

constexpr const wchar_t* kAddressWindowClass = L"AddressBook";
constexpr const wchar_t* kSettingsKey = L"Software\\Quillmarsh\\Address Book"; // under HKEY_CURRENT_USER

class AddressWindow final : public CompanionWindow {
  public:
    AddressWindow() : m_rows(m_contacts) {}
    ~AddressWindow() { DestroyIfThere(); }

    [[nodiscard]] static bool RegisterWindowClass(HINSTANCE instance);
    // Opens the contacts and makes the window where it was left, which is not shown yet. False when either
    // fails: then there is no window. turn, if any, ends once other copies find it.
    [[nodiscard]] bool Create(HINSTANCE instance, Turn* turn = nullptr);
    // Tells a person why Create has failed, in a box.
    void TellFailure() const;
    // Tells which files beside the store were set aside, in a box over the window.
    void TellSetAside();
    // Once the window is closed by a person: tells, if so, that its store was not in its place and no whole
    // copy was kept.
    void TellNotKept() const;
    bool TranslateKey(const MSG& message) override;

    // What the commands do once a file is chosen.
    void Import(const std::wstring& path);
    void Export(const std::wstring& path);

  private:
    friend class WindowProcedure<AddressWindow>;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    bool OnCreate();
    void LayOut() override;
    void OnResolutionChanged(int dpiBefore) override;
    void OnCommand(int id, WORD notification);
    LRESULT OnNotify(NMHDR* header);
    LRESULT OnListNotify(NMHDR* header);
    void ShowListMenu(POINT point);
    void OnDisplay(NMLVDISPINFOW* info);
    void OnContactsChanged(WPARAM code);
    void OnFindChanged();
    void OnEscape();
    void OnDestroy();
    void OnEndSession(WPARAM ends);
    void Close();

    void NewContact();
    void EditCurrent();
    void DeleteSelected();
    void AskImport();
    void AskExport();
    bool MayReplace(const std::wstring& path);

    void MakeList();
    // Reads the contacts again; the one with the identifier becomes the current one, or when it is 0 what was
    // selected stays.
    void Reload(CEOID current = 0);
    void ShowRows(const std::vector<CEOID>& selected, CEOID focused, int otherwise);
    bool SelectRows(const std::vector<CEOID>& contacts);
    void SetRowState(int row, UINT state);
    void ShowCount();
    void EnableCommands();
    std::vector<CEOID> Selected() const;
    CEOID Focused() const;
    // Writes to the contact as it was loaded, or a new one when *id is 0.
    SaveAnswer Save(HWND dialog, CEOID* id, vcard::Contact loaded, const vcard::Contact& contact);
    std::optional<SaveAnswer> SaveOver(CEOID* id, vcard::Contact* loaded, const vcard::Contact& contact);

    bool m_isLoaded = false; // from the successful creation to the end of the window
    std::wstring m_failure;  // of the creation
    StoreTrouble m_notKept = StoreTrouble::None;
    DbContacts m_contacts;
    ContactRows m_rows;
    Turn* m_turn = nullptr; // during the creation
    HWND m_find = nullptr;
    HWND m_findLabel = nullptr;
    HWND m_count = nullptr;
    HWND m_list = nullptr;
    Gathered m_refresh{[this] { Reload(); }}; // for what other programs change
};

} // namespace addrbook
