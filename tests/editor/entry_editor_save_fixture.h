// What the tests of the editor's loading and saving share.
#pragma once

#include <vector>

#include "editor_fixture.h"

class EntryEditorSaveTest : public EditorTest {
  protected:
    EntryToWrite Full()
    {
        EntryToWrite entry;
        entry.date = At(kTuesday);
        entry.endTime = At(kTuesday) + Minutes(90);
        entry.duration = Minutes(90);
        entry.priority = 2;
        entry.sensitivity = 3;
        entry.type = L"Meeting";
        entry.body = L"First\r\nSecond";
        entry.subject = L"Lunch";
        return entry;
    }
    // Writes some properties of a record as another program would.
    CEOID WriteOnly(std::vector<CEPROPVAL> properties)
    {
        return Own().Journal().WriteRecord(0, static_cast<WORD>(properties.size()), properties.data());
    }
    static CEPROPVAL TextValue(CEPROPID property, const wchar_t* text)
    {
        CEPROPVAL value{};
        value.propid = property;
        value.val.lpwstr = const_cast<wchar_t*>(text);
        return value;
    }
    static CEPROPVAL ShortValue(CEPROPID property, short number)
    {
        CEPROPVAL value{};
        value.propid = property;
        value.val.iVal = number;
        return value;
    }
    static CEPROPVAL TimeValue(CEPROPID property, TimeCount time)
    {
        CEPROPVAL value{};
        value.propid = property;
        value.val.filetime = time.ToFileTime();
        return value;
    }
    static bool Copy(HWND owner, const std::wstring& text)
    {
        const size_t size = (text.size() + 1) * sizeof(wchar_t);
        HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
        if (!block || !OpenClipboard(owner))
            return false;
        memcpy(GlobalLock(block), text.c_str(), size);
        GlobalUnlock(block);
        EmptyClipboard();
        const bool copied = SetClipboardData(CF_UNICODETEXT, block) != nullptr; // which owns the block now
        CloseClipboard();
        return copied;
    }
    // Opens the record, changes nothing but presses Save as the bar does, and closes.
    void SaveUnchanged(CEOID id)
    {
        EXPECT_EQ(Run(&id,
                      [](EditorWindow& editor) {
                          editor.Command(CMD_SAVE);
                          editor.Cancel();
                      }),
                  0);
    }
};
