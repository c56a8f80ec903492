#include "data/value_texts.h"

#include <climits>
#include <cwchar>

#include "util/date_text.h"
#include "util/duration_text.h"
#include "util/owners.h"
#include "util/text_cut.h"

namespace {

constexpr size_t kNoBound = INT_MAX;

// Looks no further than it must.
std::wstring_view Bounded(const wchar_t* text, size_t most)
{
    return text ? CutText({text, wcsnlen(text, most + 1)}, most) : std::wstring_view();
}

} // namespace

std::wstring_view ValueTexts::Whole(const Field& field, const CEVALUNION& value)
{
    return Text(field, value, kNoBound);
}

std::wstring ValueTexts::Cell(const Field& field, const CEVALUNION& value)
{
    const size_t most = field.reading == Reading::Text ? kWholeTextMax : kShortTextMax;
    const std::wstring_view text = Text(field, value, most);
    return std::wstring(field.reading == Reading::LongText ? FirstLine(text) : text);
}

std::wstring_view ValueTexts::Text(const Field& field, const CEVALUNION& value, size_t most)
{
    switch (field.reading) {
    case Reading::DateAndTime: return m_text = DateTimeText(TimeCount(value.filetime));
    case Reading::Duration: return m_text = FormatDuration(TimeCount(value.filetime));
    case Reading::Text:
    case Reading::LongText: return Bounded(value.lpwstr, most);
    case Reading::Priority: return PriorityWord(value.iVal);
    case Reading::Sensitivity: return SensitivityWord(value.iVal);
    case Reading::Categories: return CutText(Names(&m_categories, value.blob, kCategorySeparator), most);
    case Reading::Contacts: return CutText(Names(&m_contacts, value.blob, kContactSeparator), most);
    case Reading::Nothing: break;
    }
    return {};
}

template <typename Database>
std::wstring_view ValueTexts::Names(Source<Database>* source, const CEBLOB& blob, wchar_t separator)
{
    Database& database = source->database;
    source->isOpen = source->isOpen || database.Open() != 0;
    wchar_t* names = nullptr;
    const int length = source->isOpen ? database.SetStrFromBlob(blob, separator, &names) : 0;
    const LocalBlock<wchar_t> owner(names);
    if (m_trouble == StoreTrouble::None)
        m_trouble = database.Trouble();
    return m_text.assign(names ? names : L"", static_cast<size_t>(length));
}

std::wstring_view FirstLine(std::wstring_view text)
{
    const size_t end = text.find(L'\r');
    return end == 0 ? text : text.substr(0, end);
}
