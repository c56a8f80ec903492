#include "editor/editor_controls.h"

#include <commctrl.h>

#include <algorithm>
#include <vector>

#include "data/journal_entry.h"
#include "editor/bar_keys.h"
#include "editor/body_paste.h"
#include "editor/body_text.h"
#include "editor/command_keys.h"
#include "editor/editor_bar.h"
#include "ui/placeholder_edit.h"
#include "res/resource.h"
#include "ui/screen/scale.h"
#include "ui/screen/scoped.h"
#include "ui/typed_time.h"
#include "ui/window_scroll.h"
#include "util/date_text.h"

namespace {

constexpr DWORD kControl = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
constexpr DWORD kBox = kControl | CBS_AUTOHSCROLL | WS_VSCROLL;
constexpr DWORD kSubjectStyle = kBox | CBS_DROPDOWN | CBS_SORT | CBS_NOINTEGRALHEIGHT;
constexpr DWORD kTypeStyle = kBox | CBS_DROPDOWNLIST | CBS_NOINTEGRALHEIGHT;
constexpr DWORD kDurationStyle = kBox | CBS_DROPDOWN | CBS_SORT;
constexpr DWORD kBodyStyle = kControl | ES_MULTILINE | ES_WANTRETURN | ES_AUTOVSCROLL | WS_VSCROLL;
constexpr DWORD kTimeFormat = 0x9;

constexpr int kRowHeight = 22;
constexpr int kSubjectList = 70; // what the lists add to the boxes' dropped heights
constexpr int kList = 80;
constexpr int kSubjectListWider = 25;

HWND EditOf(HWND box)
{
    return FindWindowExW(box, nullptr, L"Edit", nullptr);
}

HFONT FontOf(HWND window)
{
    return reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
}

struct Maker {
    HINSTANCE instance;
    HWND editor;
    HFONT font;

    HWND Make(const wchar_t* className, const wchar_t* text, int id, DWORD style, DWORD exStyle = 0) const
    {
        HWND control = CreateWindowExW(exStyle, className, text, style, 0, 0, Scale(editor, kRowHeight),
                                       Scale(editor, kRowHeight), editor,
                                       reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), instance, nullptr);
        SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
        return control;
    }
};

int DroppedHeight(HWND box)
{
    RECT dropped{};
    SendMessageW(box, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&dropped));
    RECT closed{};
    GetWindowRect(box, &closed);
    return std::max<int>(dropped.bottom - dropped.top, closed.bottom - closed.top);
}

// Today's boxes stretch a list of whole items to as many as they can, over the whole of a small screen.
void LimitList(HWND box, int height)
{
    const LRESULT itemHeight = SendMessageW(box, CB_GETITEMHEIGHT, 0, 0);
    if (itemHeight > 0)
        SendMessageW(box, CB_SETMINVISIBLE, static_cast<WPARAM>(height / itemHeight), 0);
}

// The separator is the template's one static without an identifier of its own.
HWND FindSeparator(HWND editor)
{
    HWND child = nullptr;
    while ((child = FindWindowExW(editor, child, L"Static", nullptr)) != nullptr)
        if (static_cast<short>(GetDlgCtrlID(child)) == -1)
            return child;
    return nullptr;
}

// In the order of the tab key.
std::vector<HWND> ChildrenOf(HWND editor)
{
    std::vector<HWND> children;
    for (HWND child = GetWindow(editor, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        children.push_back(child);
    return children;
}

bool IsTabStop(HWND control)
{
    return GetWindowLongPtrW(control, GWL_STYLE) & WS_TABSTOP;
}

void PutLast(HWND control)
{
    SetWindowPos(control, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

// The window that has the keyboard: of a box that can be typed into it is the edit inside.
HWND TypedInto(HWND control)
{
    HWND edit = EditOf(control);
    return edit ? edit : control;
}

void Move(HWND control, const RECT& rect, int scrolled, int height = 0)
{
    MoveWindow(control, rect.left, rect.top - scrolled, rect.right - rect.left,
               height ? height : rect.bottom - rect.top, TRUE);
}

} // namespace

bool EditorControls::Create(HINSTANCE instance, HWND editor, EditorBar* bar)
{
    const std::vector<HWND> ofTemplate = ChildrenOf(editor);
    if (!MakeInTabOrder(instance, editor, bar) || !FindTemplateControls(editor))
        return false;
    std::ranges::for_each(ofTemplate, PutLast);
    FollowLocale();
    m_dpi = DpiOf(editor);
    m_subjectDrop = DroppedHeight(subject) + Scale(editor, kSubjectList);
    m_drop = DroppedHeight(type) + Scale(editor, kList);
    LimitList(duration, Scale(editor, kList));
    AddKeys(editor, bar->Window());
    return true;
}

bool EditorControls::MakeInTabOrder(HINSTANCE instance, HWND editor, EditorBar* bar)
{
    const Maker maker{instance, editor, FontOf(editor)};
    date = maker.Make(DATETIMEPICK_CLASSW, L"DateTime", IDC_START_DATE, kControl);
    time = maker.Make(DATETIMEPICK_CLASSW, L"DateTime", IDC_START_TIME, kControl | kTimeFormat);
    subject = maker.Make(WC_COMBOBOXW, L"", IDC_SUBJECT, kSubjectStyle);
    type = maker.Make(WC_COMBOBOXW, L"", IDC_TYPE, kTypeStyle);
    duration = maker.Make(WC_COMBOBOXW, L"", IDC_DURATION, kDurationStyle);
    const bool barMade = bar->Create(instance, editor, maker.font);
    body = maker.Make(WC_EDITW, kBodyPlaceholder, IDC_BODY, kBodyStyle, WS_EX_CLIENTEDGE | WS_EX_WINDOWEDGE);
    return barMade && date && time && subject && type && duration && body;
}

bool EditorControls::FindTemplateControls(HWND editor)
{
    line = FindSeparator(editor);
    label = GetDlgItem(editor, IDC_CATEGORIES_LABEL);
    categories = GetDlgItem(editor, IDC_CATEGORIES_LINE);
    return line && label && categories;
}

void EditorControls::AddKeys(HWND editor, HWND bar) const
{
    AddBarKeys(bar);
    for (HWND picker : {date, time})
        TellTyping(picker, editor);
    AddPlaceholder(EditOf(subject), kSubjectPlaceholder);
    AddPlaceholder(body, kBodyPlaceholder);
    AddBodyPaste(body);
    for (HWND control : ChildrenOf(editor)) {
        if (!IsTabStop(control))
            continue;
        AddCommandKeys(TypedInto(control), editor);
        TellFocus(TypedInto(control), editor);
    }
}

void EditorControls::Place(const EditorLayout& layout, HWND editor, int scrolled) const
{
    Move(line, layout.line, scrolled);
    for (const auto& [id, place] : layout.places)
        Move(GetDlgItem(editor, id), place, scrolled, OverallHeight(id));
    const RECT& box = layout.places.at(IDC_SUBJECT);
    const int width = box.right - box.left + Scale(subject, kSubjectListWider);
    SendMessageW(subject, CB_SETDROPPEDWIDTH, static_cast<WPARAM>(width), 0);
}

// 0: as high as its place.
int EditorControls::OverallHeight(int id) const
{
    switch (id) {
    case IDC_SUBJECT: return MulDiv(m_subjectDrop, DpiOf(subject), m_dpi);
    case IDC_TYPE:
    case IDC_DURATION: return MulDiv(m_drop, DpiOf(type), m_dpi);
    default: return 0;
    }
}

void EditorControls::FollowLocale() const
{
    SendMessageW(time, DTM_SETFORMATW, 0,
                 reinterpret_cast<LPARAM>(TimePickerFormat(ReadTimePickerLocale()).c_str()));
}

void EditorControls::ShowCategories(bool show) const
{
    for (HWND control : {label, categories})
        ShowWindow(control, show ? SW_SHOW : SW_HIDE);
    // A control that was shown and has moved does not paint itself at its new place.
    for (HWND control : {label, categories})
        InvalidateRect(control, nullptr, TRUE);
}

void EditorControls::SetFont(HFONT font) const
{
    for (HWND control : {date, time, subject, type, duration})
        SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
}

int EditorControls::NeededWidth(HWND picker)
{
    SIZE ideal{};
    return SendMessageW(picker, DTM_GETIDEALSIZE, 0, reinterpret_cast<LPARAM>(&ideal)) ? ideal.cx : 0;
}

int EditorControls::BoxHeight() const
{
    RECT closed{};
    GetWindowRect(duration, &closed);
    return closed.bottom - closed.top;
}

int EditorControls::LabelWidth() const
{
    const std::wstring text = TextOf(label);
    HDC dc = GetDC(label);
    SIZE size{};
    {
        const ScopedSelectObject font(dc, FontOf(label));
        GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
    }
    ReleaseDC(label, dc);
    return size.cx;
}

void ShowTime(HWND picker, const SYSTEMTIME& time)
{
    SendMessageW(picker, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time));
}
