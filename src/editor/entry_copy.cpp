#include "editor/entry_copy.h"

#include <commdlg.h>

#include "editor/categories_line.h"
#include "pick/category_assignment.h"
#include "ui/save_choice.h"
#include "util/date_text.h"
#include "util/duration_text.h"
#include "util/whole_file.h"

namespace {

void AddLine(std::wstring* text, const wchar_t* label, const std::wstring& value)
{
    if (!value.empty())
        *text += label + value + L"\r\n";
}

void AddName(std::wstring* names, wchar_t separator, std::wstring_view name)
{
    if (name.empty())
        return;
    if (!names->empty())
        *names += separator;
    *names += name;
}

std::wstring WithUnread(const std::wstring& names)
{
    return names + (names.empty() ? L"" : L" ") + kUnreadNames;
}

std::wstring CategoryNames(EditorRecord& record)
{
    std::wstring names;
    bool hasAll = true;
    wchar_t name[kCategoryNameSize];
    for (const CEOID id : AssignedCategories(record.Categories()))
        if (record.CategoryStore().GetStr(id, name, kCategoryNameSize, kCategoriesKey))
            AddName(&names, kCategorySeparator, name);
        else
            hasAll = hasAll && record.CategoryStore().Trouble() == StoreTrouble::None;
    return hasAll ? names : WithUnread(names);
}

std::wstring ContactNames(EditorRecord& record)
{
    const CeDBase::ReadScope scope(record.Contacts());
    std::wstring names;
    bool hasAll = true;
    for (const CEOID id : record.Contacts().Assigned()) {
        AddName(&names, kContactSeparator, record.Contacts().NameOf(id));
        hasAll = hasAll && record.Contacts().Trouble() == StoreTrouble::None;
    }
    return hasAll ? names : WithUnread(names);
}

std::wstring Typed(const std::wstring& text, const wchar_t* placeholder)
{
    return IsPlaceholder(text, placeholder) ? std::wstring() : text;
}

std::string Utf8(const std::wstring& text)
{
    const int length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

} // namespace

std::wstring EntryCopyText(const EntryToWrite& entry, EditorRecord& record)
{
    std::wstring text;
    AddLine(&text, L"Date: ", DateTimeText(entry.date));
    AddLine(&text, L"End Date: ", DateTimeText(entry.endTime));
    AddLine(&text, L"Duration: ", FormatDuration(entry.duration));
    AddLine(&text, L"Priority: ", PriorityWord(entry.priority));
    AddLine(&text, L"Sensitivity: ", SensitivityWord(entry.sensitivity));
    AddLine(&text, L"Subject: ", Typed(entry.subject, kSubjectPlaceholder));
    AddLine(&text, L"Type: ", entry.type);
    AddLine(&text, L"Assigned Categories: ", CategoryNames(record));
    AddLine(&text, L"Assigned Contacts: ", ContactNames(record));
    AddLine(&text, L"\r\n", Typed(entry.body, kBodyPlaceholder));
    return text;
}

bool WriteTextFile(const wchar_t* path, const std::wstring& text)
{
    return ReplaceWholeFile(path, "\xEF\xBB\xBF" + Utf8(text));
}

void SaveEntryCopy(HWND owner, const std::function<std::optional<std::wstring>()>& text)
{
    wchar_t path[MAX_PATH] = L"Entry.txt";
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.lpstrFilter = L"Text Files (*.txt)\0*.txt\0All Files (*.*)\0*.*\0";
    dialog.lpstrFile = path;
    dialog.nMaxFile = MAX_PATH;
    dialog.lpstrDefExt = L"txt";
    dialog.Flags =
        OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_NOREADONLYRETURN;
    if (!ChooseFileToWrite(&dialog))
        return;
    const std::optional<std::wstring> copy = text();
    if (!copy || !WriteTextFile(path, *copy))
        MessageBoxW(owner, L"The copy could not be written.\n\nWhat you have typed is still there.",
                    L"Warning", MB_OK | MB_ICONEXCLAMATION);
}
