#include "editor/entry_copy.h"

#include <commdlg.h>

#include "data/value_texts.h"
#include "editor/categories_line.h"
#include "pick/category_assignment.h"
#include "ui/save_choice.h"
#include "util/whole_file.h"

namespace {

void AddLine(std::wstring* text, const std::wstring& label, const std::wstring& value)
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

std::wstring ValueText(const Field& field, const std::vector<CEPROPVAL>& properties, EditorRecord& record)
{
    if (field.reading == Reading::Categories)
        return CategoryNames(record);
    if (field.reading == Reading::Contacts)
        return ContactNames(record);
    const auto* property = FindProperty(field.id, static_cast<WORD>(properties.size()), properties.data());
    return property ? std::wstring(ValueTexts().Whole(field, property->val)) : std::wstring();
}

std::wstring LabelOf(const Field& field)
{
    const std::wstring label = field.line.label;
    return label.substr(0, label.find(L':')) + L": ";
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

std::wstring EntryCopyText(EntryToWrite entry, EditorRecord& record)
{
    const std::vector<CEPROPVAL> properties = PropertiesToWrite(entry);
    std::wstring text, below;
    for (int place = 1; const Field* field = FieldOfLine(place); ++place) {
        const std::wstring value = ValueText(*field, properties, record);
        if (field->reading == Reading::LongText)
            AddLine(&below, L"\r\n", value);
        else
            AddLine(&text, LabelOf(*field), value);
    }
    return text + below;
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
