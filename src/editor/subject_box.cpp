#include "editor/subject_box.h"

#include "data/journal_entry.h"
#include "editor/body_text.h"
#include "editor/quick_subjects.h"
#include "ui/control_text.h"
#include "util/compare_text.h"

namespace {

std::wstring Item(HWND box, int index)
{
    const LRESULT length = SendMessageW(box, CB_GETLBTEXTLEN, static_cast<WPARAM>(index), 0);
    std::wstring text(length > 0 ? static_cast<size_t>(length) + 1 : 1, L'\0');
    SendMessageW(box, CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
    text.resize(length > 0 ? static_cast<size_t>(length) : 0);
    return text;
}

int Insert(HWND box, int index, const std::wstring& text)
{
    return static_cast<int>(SendMessageW(box, CB_INSERTSTRING, static_cast<WPARAM>(index),
                                         reinterpret_cast<LPARAM>(text.c_str())));
}

// The box's own sorting would put a subject that begins with a blank or a mark before the two fixed items.
int InsertSorted(HWND box, const std::wstring& subject)
{
    int low = kNoSubjectItem + 1;
    int high = static_cast<int>(SendMessageW(box, CB_GETCOUNT, 0, 0));
    while (low < high) {
        const int middle = low + (high - low) / 2;
        if (IsBehindForUser(Item(box, middle), subject))
            high = middle;
        else
            low = middle + 1;
    }
    return Insert(box, low, subject);
}

void Select(HWND box, int index)
{
    SendMessageW(box, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

} // namespace

bool FillSubjectBox(HWND box, const RegistryStore& settings, const std::optional<std::wstring>& storedSubject)
{
    SendMessageW(box, CB_RESETCONTENT, 0, 0);
    Insert(box, kModifySubjectsItem, kModifySubjects);
    Insert(box, kNoSubjectItem, kSubjectPlaceholder);
    for (const std::wstring& subject : ReadQuickSubjects(settings))
        if (!subject.empty())
            InsertSorted(box, subject);
    if (storedSubject)
        return AddSubject(box, *storedSubject);
    SelectNoSubject(box);
    return true;
}

bool AddSubject(HWND box, const std::wstring& subject)
{
    Select(box, InsertSorted(box, subject));
    return ReadText(box) == subject;
}

void SelectNoSubject(HWND box)
{
    Select(box, kNoSubjectItem);
}

std::optional<std::wstring> SubjectToWrite(HWND box)
{
    const std::optional<std::wstring> text = ReadText(box);
    return text == kModifySubjects ? kSubjectPlaceholder : text;
}
