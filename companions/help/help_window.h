// The help viewer's window: a row with the way back and the box to find in, the contents, the text.
#pragma once

#include <windows.h>
#include <commctrl.h>
#include <richedit.h>

#include <optional>
#include <string>
#include <vector>

#include "frame/companion_window.h"
#include "help/contents_pane.h"
#include "help/help_book.h"
#include "help/help_request.h"
#include "help/history.h"
#include "help/page/find_in_topics.h"
#include "help/text_pane.h"
#include "ui/window_procedure.h"

namespace help {

constexpr const wchar_t* kSettingsKey = L"Software\\Quillmarsh\\Help"; // under HKEY_CURRENT_USER

class HelpWindow final : public CompanionWindow {
  public:
    // program is the full path of the program, beside which the help lies.
    explicit HelpWindow(std::wstring program) : m_program(std::move(program)) {}
    ~HelpWindow() { DestroyIfThere(); }

    [[nodiscard]] static bool RegisterWindowClass(HINSTANCE instance);
    // Makes the window where it was left, which is not shown yet; false when that fails.
    [[nodiscard]] bool Create(HINSTANCE instance);
    bool TranslateKey(const MSG& message) override;

    // Opens the file and the topic, or says that there is none.
    void Show(const HelpRequest& request);
    // The topic that is shown; nothing while something else is said.
    std::optional<size_t> ShownTopic() const { return m_topic; }
    const HelpBook& Book() const { return m_book; }
    const TextPane& Text() const { return m_text; }

  private:
    friend class WindowProcedure<HelpWindow>;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    bool OnCreate();
    bool MakeRow();
    bool MakePanes();
    void LayOut() override;
    void OnResolutionChanged(int dpiBefore) override;
    void OnCommand(int id);
    LRESULT OnNotify(NMHDR* header);
    LRESULT OnHandedOver(const COPYDATASTRUCT* data);
    void ShowAsked();
    void ComeForward();
    void StayForward(UINT_PTR timer);
    LRESULT OnAppCommand(LPARAM lParam);
    void OnDestroy();
    bool TranslateSystemKey(const MSG& message);
    void OnSetFocus();
    void OnEnter();

    void PlaceRow(int width);
    void EnableCommands();
    void SayStatus(const std::wstring& text);

    void ShowTopic(size_t topic);
    void ShowNotice(const std::vector<Block>& blocks);
    // Leaves what is shown, which is on the way back from then on.
    void Leave();
    // Nothing while something else than a topic is shown.
    std::optional<Visit> Here() const;
    void GoTo(size_t topic, size_t block = 0);
    void Revisit(const std::optional<Visit>& visit);
    void GoToNeighbour(bool forwards);
    bool GoToAnchor(const std::wstring& anchor);
    void Follow(const TextLink* link);
    void StepLink(bool backwards);
    void Find(bool backwards);
    void StepPane(bool backwards);
    void FocusFind();
    void SendToFocused(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    void SetZoom(int percent);
    void Print(std::vector<Block> blocks);

    std::wstring m_program;
    HelpBook m_book;
    History m_history;
    std::optional<size_t> m_topic;
    HWND m_back = nullptr;
    HWND m_forward = nullptr;
    HWND m_findLabel = nullptr;
    HWND m_find = nullptr;
    HWND m_status = nullptr;
    ContentsPane m_contents;
    TextPane m_text;
    std::vector<HelpRequest> m_asked; // by other programs, and not yet shown
    int m_forwardLooks = 0;           // that are still to come
};

} // namespace help
