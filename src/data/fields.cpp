#include "data/fields.h"

#include <algorithm>
#include <iterator>

#include "mervane/z_column.h"
#include "res/resource.h"

namespace {

constexpr int kTitleSize = 60; // with the terminator
constexpr DWORD kSortsDescending = kColumnSortable | kColumnDescending;
constexpr const wchar_t* kBlankLine = L"\r\n\r\n";

constexpr Field kFields[] = {
    {.id = kPropKind,
     .read = &JournalEntry::kind,
     .written = &EntryToWrite::kind,
     .column = {.flags = kColumnNeverOffered}},
    {.id = kPropDate,
     .title = IDS_FIELD_DATE,
     .reading = Reading::DateAndTime,
     .read = &JournalEntry::date,
     .written = &EntryToWrite::date,
     .column = {.thirds = 1, .flags = kColumnShown | kColumnSort | kSortsDescending},
     .line = {1, L"Date: "},
     .findButton = IDC_FIND_DATE},
    {.id = kPropEndTime,
     .title = IDS_FIELD_END_TIME,
     .reading = Reading::DateAndTime,
     .read = &JournalEntry::endTime,
     .written = &EntryToWrite::endTime,
     .lackingAs = kPropDate,
     .column = {.width = 40, .flags = kSortsDescending},
     .line = {2, L"End Date: "}},
    {.id = kPropDuration,
     .title = IDS_FIELD_DURATION,
     .reading = Reading::Duration,
     .read = &JournalEntry::duration,
     .written = &EntryToWrite::duration,
     .lacking = L"0 minutes",
     .column = {.width = 40, .flags = kSortsDescending},
     .line = {3, L"Duration: "}},
    {.id = kPropPriority,
     .title = IDS_FIELD_PRIORITY,
     .reading = Reading::Priority,
     .read = &JournalEntry::priority,
     .written = &EntryToWrite::priority,
     .lacking = L"Normal",
     .column = {.width = 16, .flags = kSortsDescending},
     .line = {.place = 4, .label = L"Priority: ", .isAlways = true}},
    {.id = kPropSensitivity,
     .title = IDS_FIELD_SENSITIVITY,
     .reading = Reading::Sensitivity,
     .read = &JournalEntry::sensitivity,
     .written = &EntryToWrite::sensitivity,
     .lacking = L"Normal",
     .column = {.width = 40, .flags = kSortsDescending},
     .line = {.place = 5, .label = L"Sensitivity: ", .isAlways = true}},
    // Kept: the type is followed by a blank line, the subject is not.
    {.id = kPropType,
     .title = IDS_FIELD_TYPE,
     .reading = Reading::Text,
     .read = &JournalEntry::type,
     .written = &EntryToWrite::type,
     .column = {.width = 50, .flags = kSortsDescending},
     .line = {7, L"Type: ", kBlankLine}},
    {.id = kPropBody,
     .title = IDS_FIELD_BODY,
     .reading = Reading::LongText,
     .read = &JournalEntry::body,
     .written = &EntryToWrite::body,
     .placeholder = kBodyPlaceholder,
     .sorts = false,
     .column = {.width = 100},
     .line = {8, L"Entry:\r\n", kBlankLine},
     .findButton = IDC_FIND_ENTRY},
    {.id = kPropSubject,
     .title = IDS_FIELD_SUBJECT,
     .reading = Reading::Text,
     .read = &JournalEntry::subject,
     .written = &EntryToWrite::subject,
     .placeholder = kSubjectPlaceholder,
     .column = {.thirds = 2, .flags = kColumnShown | kSortsDescending},
     .line = {6, L"Subject: "},
     .findButton = IDC_FIND_SUBJECT},
    {.id = kPropCategories,
     .title = IDS_FIELD_CATEGORIES,
     .reading = Reading::Categories,
     .read = &JournalEntry::categories,
     .written = &EntryToWrite::categories,
     .emptyDeletes = kMaskDeletesCategories,
     .column = {.width = 50},
     .line = {9, L"Assigned Categories:\r\n"}},
    {.id = kPropContacts,
     .title = IDS_FIELD_CONTACTS,
     .reading = Reading::Contacts,
     .read = &JournalEntry::contacts,
     .written = &EntryToWrite::contacts,
     .emptyDeletes = kMaskDeletesContacts,
     .column = {.width = 60},
     .line = {10, L"Assigned Contacts:\r\n"}},
};
static_assert(std::size(kFields) == kPropertyCount);

const Field* FindField(const auto& matches)
{
    const Field* found = std::find_if(std::begin(kFields), std::end(kFields), matches);
    return found == std::end(kFields) ? nullptr : found;
}

} // namespace

std::span<const Field> Fields()
{
    return kFields;
}

size_t IndexOf(const Field& field)
{
    return static_cast<size_t>(&field - kFields);
}

const Field* FieldOf(CEPROPID id)
{
    return FindField([=](const Field& field) { return field.id == id; });
}

const Field* FieldOfColumn(WORD number)
{
    return FindField([=](const Field& field) { return field.title && PropertyNumber(field.id) == number; });
}

const Field* FieldOfLine(int place)
{
    return FindField([=](const Field& field) { return place && field.line.place == place; });
}

const Field* FieldOfFindButton(int button)
{
    return FindField([=](const Field& field) { return button && field.findButton == button; });
}

std::wstring TitleOf(const Field& field)
{
    wchar_t title[kTitleSize] = L"";
    if (field.title)
        LoadStringW(GetModuleHandleW(nullptr), field.title, title, kTitleSize);
    return title;
}
