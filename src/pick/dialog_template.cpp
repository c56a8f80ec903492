#include "pick/dialog_template.h"

#include <cwchar>

namespace mervane {

namespace {

constexpr WORD kExtended = 0xFFFF;
constexpr size_t kControlCount = 8; // its place in the words
constexpr WORD kPointSize = 8;

} // namespace

DialogTemplate::DialogTemplate(const wchar_t* caption, DWORD style, SIZE size) : m_words{1, kExtended}
{
    Put(DWORD{0}); // help identifier
    Put(DWORD{0}); // extended style
    Put(style | DS_SHELLFONT | WS_POPUP | WS_CAPTION | WS_SYSMENU);
    m_words.push_back(0); // controls
    PutPlace({0, 0, size.cx, size.cy});
    m_words.insert(m_words.end(), {0, 0}); // no menu, the system's window class
    Put(caption);
    m_words.insert(m_words.end(), {kPointSize, FW_NORMAL, MAKEWORD(FALSE, DEFAULT_CHARSET)});
    Put(L"MS Shell Dlg");
}

void DialogTemplate::Add(const Control& control)
{
    m_words.resize((m_words.size() + 1) & ~size_t{1}); // each begins at a double word
    Put(DWORD{0});                                     // help identifier
    Put(control.exStyle);
    Put(control.style | WS_CHILD | WS_VISIBLE);
    PutPlace(control.place);
    Put(DWORD{control.id});
    Put(control.windowClass);
    Put(control.text);
    m_words.push_back(0); // creation data
    ++m_words[kControlCount];
}

void DialogTemplate::Put(DWORD value)
{
    m_words.insert(m_words.end(), {LOWORD(value), HIWORD(value)});
}

void DialogTemplate::Put(const wchar_t* text)
{
    for (const wchar_t* unit = text; *unit; ++unit)
        m_words.push_back(static_cast<WORD>(*unit));
    m_words.push_back(0);
}

void DialogTemplate::PutPlace(const RECT& place)
{
    for (const LONG value : {place.left, place.top, place.right - place.left, place.bottom - place.top})
        m_words.push_back(static_cast<WORD>(value));
}

} // namespace mervane
