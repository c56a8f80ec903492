// A dialog's template, built in memory: the library puts no resources of its own into a program.
#pragma once

#include <windows.h>

#include <vector>

namespace mervane {

class DialogTemplate {
  public:
    // In dialog units; the dialog's font is the system's. style beyond the caption's and the font's.
    DialogTemplate(const wchar_t* caption, DWORD style, SIZE size);

    struct Control {
        const wchar_t* windowClass;
        const wchar_t* text;
        WORD id;
        DWORD style; // beyond WS_CHILD and WS_VISIBLE
        RECT place{};
        DWORD exStyle = 0;
    };
    // In the order of the tab key.
    void Add(const Control& control);

    // Valid until something is added.
    const DLGTEMPLATE* Get() const { return reinterpret_cast<const DLGTEMPLATE*>(m_words.data()); }

  private:
    void Put(DWORD value);
    void Put(const wchar_t* text);
    void PutPlace(const RECT& place);

    std::vector<WORD> m_words;
};

} // namespace mervane
