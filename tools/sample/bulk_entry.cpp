#include "data/entry_types.h"
#include "sample/random.h"
#include "sample/sample_entry.h"

namespace sample {

namespace {

constexpr int kYears = 40;
constexpr int kShortestBody = 200;
constexpr int kLongestBody = 2000;
constexpr int kMissingPercent = 3;

// Words are made of syllables, so that texts vary as far as a real language's do and share as much.
constexpr const wchar_t* kLatin[] = {
    L"ba", L"ber", L"ca", L"con",  L"da", L"del", L"e",  L"en",   L"fi", L"for", L"ga", L"gen", L"ha", L"i",
    L"in", L"ka",  L"la", L"lin",  L"ma", L"men", L"na", L"ning", L"o",  L"on",  L"pa", L"per", L"ra", L"ren",
    L"sa", L"ser", L"ta", L"tion", L"u",  L"un",  L"va", L"ver",  L"wa", L"win", L"za", L"zel",
};
constexpr const wchar_t* kAccented[] = {
    L"äu", L"ber", L"çe", L"é",  L"fü", L"gö", L"hå", L"í",  L"ko",  L"lę", L"mä", L"nö",
    L"ó",  L"ř",   L"ße", L"šk", L"tü", L"ú",  L"vå", L"yn", L"žen", L"ør", L"la", L"men",
};
constexpr const wchar_t* kGreek[] = {
    L"α",  L"βα", L"γο", L"δι", L"ε",  L"ζω", L"ή",   L"θε", L"κα", L"λο",
    L"μα", L"νή", L"ού", L"πα", L"ρω", L"σι", L"τος", L"φω", L"χα", L"ψη",
};
constexpr const wchar_t* kCyrillic[] = {
    L"ба", L"во", L"го", L"ди", L"е",   L"жи", L"за", L"ка", L"ло",
    L"ме", L"но", L"по", L"ра", L"сть", L"та", L"ча", L"ша", L"я",
};
constexpr const wchar_t* kHan[] = {
    L"山", L"水", L"学", L"会", L"议", L"报", L"告", L"茶", L"书", L"店",
    L"明", L"天", L"电", L"话", L"客", L"户", L"新", L"年", L"计", L"划",
};
constexpr const wchar_t* kEmoji[] = {L"🎂", L"📷", L"🚲", L"💡", L"🍀", L"⛵"};

enum class Language { Latin, Accented, Greek, Cyrillic, Han };

Language PickLanguage(Random& random)
{
    const uint32_t roll = random.Below(100);
    if (roll < 60)
        return Language::Latin;
    if (roll < 80)
        return Language::Accented;
    if (roll < 88)
        return Language::Greek;
    return roll < 94 ? Language::Cyrillic : Language::Han;
}

const wchar_t* Syllable(Language language, Random& random)
{
    switch (language) {
    case Language::Accented: return random.Pick(kAccented);
    case Language::Greek: return random.Pick(kGreek);
    case Language::Cyrillic: return random.Pick(kCyrillic);
    case Language::Han: return random.Pick(kHan);
    case Language::Latin: break;
    }
    return random.Pick(kLatin);
}

void AppendWord(Language language, Random& random, std::wstring* text)
{
    if (random.Chance(1)) {
        *text += random.Pick(kEmoji);
        return;
    }
    const size_t start = text->size();
    const int syllables = random.Between(1, 4);
    for (int i = 0; i < syllables; ++i)
        *text += Syllable(language, random);
    // Only plain letters are capitalised: the result must not depend on a locale.
    wchar_t& first = (*text)[start];
    if (random.Chance(12) && first >= L'a' && first <= L'z')
        first = static_cast<wchar_t>(first - L'a' + L'A');
}

std::wstring SubjectOf(Random& random)
{
    std::wstring subject;
    const int words = random.Between(1, 7);
    const Language language = PickLanguage(random);
    for (int i = 0; i < words; ++i) {
        if (i)
            subject += L' ';
        AppendWord(random.Chance(10) ? PickLanguage(random) : language, random, &subject);
    }
    return subject;
}

const wchar_t* Gap(Random& random)
{
    const uint32_t roll = random.Below(40);
    if (roll == 0)
        return L".\r\n";
    return roll < 4 ? L". " : roll < 7 ? L", " : L" ";
}

// Cuts the text to a length without leaving half a character or half a line end behind.
void CutTo(size_t length, std::wstring* text)
{
    text->resize(length);
    wchar_t& last = text->back();
    if (last == L'\r' || (last >= 0xD800 && last <= 0xDBFF))
        last = L'.';
}

std::wstring BodyOf(Random& random)
{
    const auto length = static_cast<size_t>(random.Between(kShortestBody, kLongestBody));
    std::wstring body;
    body.reserve(length + 16);
    const Language language = PickLanguage(random);
    while (body.size() < length) {
        AppendWord(language, random, &body);
        body += Gap(random);
    }
    CutTo(length, &body);
    return body;
}

TimeCount DateOf(const SYSTEMTIME& today, Random& random)
{
    constexpr uint32_t kMinutes = kYears * 365u * 24 * 60;
    SYSTEMTIME noon{};
    noon.wYear = today.wYear;
    noon.wMonth = today.wMonth;
    noon.wDay = today.wDay;
    noon.wHour = 12;
    TimeCount date;
    if (!date.FromSystemTime(noon))
        return date;
    date.AddMinutes(-static_cast<int32_t>(random.Below(kMinutes)));
    return date;
}

// Up to three different positions below count.
std::vector<int> Few(int count, Random& random)
{
    std::vector<int> positions;
    const int wanted = random.Between(0, 3);
    positions.reserve(static_cast<size_t>(wanted));
    const int first = static_cast<int>(random.Below(static_cast<uint32_t>(count)));
    const int step = random.Between(1, count / 3 - 1);
    for (int i = 0; i < wanted; ++i)
        positions.push_back((first + i * step) % count);
    return positions;
}

} // namespace

SampleEntry BulkEntry(uint64_t seed, uint32_t index, const SYSTEMTIME& today)
{
    Random random(seed, index);
    SampleEntry entry;
    const auto has = [&random] { return !random.Chance(kMissingPercent); };
    const TimeCount date = DateOf(today, random);
    TimeCount duration;
    duration.AddMinutes(random.Between(0, 96) * 5);
    if (has())
        entry.date = date;
    if (has())
        entry.duration = duration;
    if (has())
        entry.endTime = date + duration;
    if (has())
        entry.priority = static_cast<short>(random.Between(0, 2));
    if (has())
        entry.sensitivity = static_cast<short>(random.Between(0, 3));
    if (has())
        entry.type = random.Pick(kEntryTypes);
    if (has())
        entry.subject = SubjectOf(random);
    if (has())
        entry.body = BodyOf(random);
    entry.categories = Few(kCategoryCount, random);
    entry.contacts = Few(kContactCount, random);
    return entry;
}

} // namespace sample
