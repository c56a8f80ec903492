// The help's window over a help and settings of the test's own.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "help/help_window.h"
#include "pages.h"
#include "support/test_store.h"

namespace help {

// Three topics, of which the first leads to the second and the last one back.
inline constexpr const char* kPage =
    "<title>My Help</title><h1 id=One>First</h1><p>Alpha beta. See <a href=#Two>the second</a> or "
    "<a href=#Nowhere>nothing</a>.</p><ul><li>item\xC3\xA9</ul><table><tr><td>cell<td>other</table>"
    "<h2 id=Two>Second</h2><p>Beta gamma<pre>line\n  two</pre><h1 id=Three>Third</h1><p>end <a "
    "href=#One>back</a>";

class HelpWindowTest : public testing::Test {
  protected:
    // With the settings of a first start.
    void SetUp() override { RegDeleteTreeW(HKEY_CURRENT_USER, kSettingsKey); }
    void TearDown() override { Close(); }

    // Makes the window over the help with the page and shows what is asked for, as the program does.
    void Open(const std::string& page, const wchar_t* request = L"pellwyn.htm");
    // The same with the help as it is shipped.
    void OpenShipped(const wchar_t* request);
    void Close();

    HWND Item(int id) const { return GetDlgItem(m_window->Handle(), id); }
    HWND Pane() const { return Item(IDC_TEXT_PANE); }
    // The text as the control has it, with one '\r' at each paragraph's end. A line's break inside one is
    // told in different ways: here it is a blank.
    std::wstring PaneText() const;
    std::wstring Selected() const;
    std::wstring Title() const; // of the topic shown; empty when there is none
    std::wstring TreeTopic() const;
    std::wstring Status() const;
    void Command(int id);
    void Find(const wchar_t* text);
    // A key in the text, before the control gets it.
    bool KeyInText(WPARAM key);

    TestRegistry m_registry;
    TestFolder m_folder;
    std::unique_ptr<HelpWindow> m_window;

  private:
    static constexpr int IDC_TEXT_PANE = 1006;
    void Show(const wchar_t* request);
};

} // namespace help
