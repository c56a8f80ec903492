#include "find/find_dialog.h"

#include <commctrl.h>

#include <algorithm>

#include "data/fields.h"
#include "ui/placeholder_edit.h"
#include "find/find_settings.h"
#include "res/resource.h"
#include "ui/control_text.h"
#include "ui/dialog.h"
#include "ui/launch.h"
#include "ui/screen/scale.h"
#include "ui/typed_time.h"
#include "util/clock.h"

namespace {

constexpr RECT kDayPlace = {18, 125, 18 + 177, 125 + 22}; // in pixels
constexpr int kDayMargin = 7;                             // below it, inside its frame
constexpr int kDropTaller = 70;

LPARAM TextParam(const std::wstring& text)
{
    return reinterpret_cast<LPARAM>(text.c_str());
}

SIZE DroppedSize(HWND box)
{
    RECT dropped{};
    SendMessageW(box, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&dropped));
    return {dropped.right - dropped.left, dropped.bottom - dropped.top};
}

class FindDialog : public Dialog {
  public:
    FindDialog(RegistryStore& settings, bool hasCurrentEntry, FindRequest* request)
        : m_settings(settings), m_hasCurrentEntry(hasCurrentEntry), m_request(request)
    {}

    void OnOK() override;

  protected:
    bool OnInitDialog() override;
    const wchar_t* HelpTopic() const override { return kHelpFind; }
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

  private:
    bool OnCommand(int id, WORD code);
    void CreateDayPicker();
    void MakeRoomForDay();
    void FillBox();
    void MakeDropTaller();
    void ShowText(const std::wstring& text);
    void ClickSearchBy(CEPROPID by);
    void ClickSearchFrom(SearchFrom from);
    void EnableWhatBelongs();

    CEPROPID By() const;
    std::wstring Typed() const;

    RegistryStore& m_settings;
    bool m_hasCurrentEntry;
    FindRequest* m_request;
    HWND m_day = nullptr;
};

bool FindDialog::OnInitDialog()
{
    CreateDayPicker();
    MakeRoomForDay();
    FillBox();
    CenterOnWorkArea();
    SetFocus(m_day);
    ClickSearchBy(ReadSearchBy(m_settings));
    CheckButton(IDC_FIND_MATCH_CASE, ReadMatchCase(m_settings));
    EnableItem(IDC_FIND_FROM_CURRENT, m_hasCurrentEntry);
    ClickSearchFrom(ReadSearchFrom(m_settings));
    return false;
}

// It follows the box in the tab order.
void FindDialog::CreateDayPicker()
{
    const auto scaled = [this](LONG pixels) { return Scale(GetWindow(), static_cast<int>(pixels)); };
    m_day = CreateWindowExW(0, DATETIMEPICK_CLASSW, L"DateTime",
                            WS_CHILD | WS_VISIBLE | WS_TABSTOP | DTS_SHORTDATEFORMAT, scaled(kDayPlace.left),
                            scaled(kDayPlace.top), scaled(kDayPlace.right - kDayPlace.left),
                            scaled(kDayPlace.bottom - kDayPlace.top), GetWindow(),
                            reinterpret_cast<HMENU>(IDC_FIND_DAY), GetModuleHandleW(nullptr), nullptr);
    PlaceInDialog(m_day, GetWindow(), GetItem(IDC_FIND_TEXT));
    TellTyping(m_day, GetWindow());
    const bool isChosen = m_request->date.wYear != 0;
    const SYSTEMTIME day = isChosen ? m_request->date : LocalNow();
    SendMessageW(m_day, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&day));
}

// The picker's place is given in pixels, all others follow the font: its frame may have to grow.
void FindDialog::MakeRoomForDay()
{
    RECT day{}, frame{};
    GetWindowRect(m_day, &day);
    GetWindowRect(GetItem(IDC_FIND_TEXT_FRAME), &frame);
    const LONG growth = day.bottom + Scale(GetWindow(), kDayMargin) - frame.bottom;
    if (growth > 0)
        GrowBy(growth, {IDC_FIND_TEXT_FRAME, IDC_FIND_CASE_FRAME});
}

void FindDialog::FillBox()
{
    MakeDropTaller();
    SendDlgItemMessageW(GetWindow(), IDC_FIND_TEXT, CB_RESETCONTENT, 0, 0);
    for (const std::wstring& text : ReadFindHistory(m_settings))
        SendDlgItemMessageW(GetWindow(), IDC_FIND_TEXT, CB_ADDSTRING, 0, TextParam(text));
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    if (GetComboBoxInfo(GetItem(IDC_FIND_TEXT), &info))
        AddPlaceholder(info.hwndItem, kSearchPlaceholder);
    ShowText(m_request->text);
}

// A box counts itself into its dropped height or not, by system: what is missing after a first try is added.
void FindDialog::MakeDropTaller()
{
    HWND box = GetItem(IDC_FIND_TEXT);
    const SIZE before = DroppedSize(box);
    const LONG wanted = before.cy + Scale(GetWindow(), kDropTaller);
    constexpr UINT kSizeOnly = SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE;
    SetWindowPosition(0, 0, before.cx, wanted, box, kSizeOnly, nullptr);
    const LONG missing = wanted - DroppedSize(box).cy;
    SetWindowPosition(0, 0, before.cx, wanted + missing, box, kSizeOnly, nullptr);
}

// The history may have the text in another case, so the box is told both.
void FindDialog::ShowText(const std::wstring& text)
{
    HWND box = GetItem(IDC_FIND_TEXT);
    if (!text.empty()) {
        const LRESULT item = SendMessageW(box, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), TextParam(text));
        SendMessageW(box, CB_SETCURSEL, static_cast<WPARAM>(item), 0);
    }
    if (Typed() != text || text.empty())
        SetWindowTextW(box, text.empty() ? kSearchPlaceholder : text.c_str());
}

void FindDialog::ClickSearchBy(CEPROPID by)
{
    for (const Field& field : Fields())
        if (field.findButton)
            CheckButton(field.findButton, field.id == by);
    EnableWhatBelongs();
}

// The stored choice shows: Current is chosen also where there is no entry to search from. The tab key stops
// at the chosen button alone, so a grey one would hide the other from it.
void FindDialog::ClickSearchFrom(SearchFrom from)
{
    CheckButton(IDC_FIND_FROM_TOP, from == SearchFrom::Top);
    CheckButton(IDC_FIND_FROM_CURRENT, from == SearchFrom::Current);
    HWND top = GetItem(IDC_FIND_FROM_TOP);
    if (!m_hasCurrentEntry)
        SetWindowLongPtrW(top, GWL_STYLE, GetWindowLongPtrW(top, GWL_STYLE) | WS_TABSTOP);
}

// The date belongs to a search by date, the text and its case to the others.
void FindDialog::EnableWhatBelongs()
{
    const bool byDate = PropertyType(By()) == CEVT_FILETIME;
    EnableItem(IDC_FIND_DAY, byDate);
    EnableItem(IDC_FIND_TEXT, !byDate);
    EnableItem(IDC_FIND_MATCH_CASE, !byDate);
    KeepFocus(byDate ? IDC_FIND_DAY : IDC_FIND_TEXT);
}

CEPROPID FindDialog::By() const
{
    for (const Field& field : Fields())
        if (field.findButton && IsButtonChecked(field.findButton))
            return field.id;
    return kPropDate;
}

std::wstring FindDialog::Typed() const
{
    return ReadText(GetItem(IDC_FIND_TEXT)).value_or(std::wstring());
}

bool FindDialog::OnMessage(UINT message, WPARAM wParam, LPARAM, LRESULT*)
{
    return message == WM_COMMAND && OnCommand(LOWORD(wParam), HIWORD(wParam));
}

bool FindDialog::OnCommand(int id, WORD code)
{
    if (!FieldOfFindButton(id) || code != BN_CLICKED)
        return false;
    EnableWhatBelongs();
    return true;
}

void FindDialog::OnOK()
{
    m_request->by = By();
    m_request->matchCase = IsButtonChecked(IDC_FIND_MATCH_CASE);
    m_request->from = IsButtonChecked(IDC_FIND_FROM_CURRENT) ? SearchFrom::Current : SearchFrom::Top;
    StoreFindChoices(&m_settings, *m_request);
    if (PropertyType(m_request->by) == CEVT_FILETIME) {
        TakeTypedTime(GetWindow());
        SendMessageW(m_day, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&m_request->date));
    } else {
        m_request->text = SearchTextOf(Typed());
        AddToFindHistory(&m_settings, m_request->text);
    }
    End(1);
}

} // namespace

bool RunFindDialog(HWND owner, RegistryStore& settings, bool hasCurrentEntry, FindRequest* request)
{
    FindDialog dialog(settings, hasCurrentEntry, request);
    return dialog.DoModal(GetModuleHandleW(nullptr), IDD_FIND, owner) == 1;
}
