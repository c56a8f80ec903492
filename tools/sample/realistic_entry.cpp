#include <algorithm>

#include "sample/sample_entry.h"
#include "sample/scenarios.h"

namespace sample {

namespace {

constexpr int kDays = 3 * 365;
constexpr uint64_t kUnitsPerDay = TimeCount::kUnitsPerMinute * 60 * 24;

// The suggested durations of the editor, in minutes.
constexpr int kDurations[] = {5, 10, 15, 30, 60, 120, 180, 240};

void Replace(std::wstring* text, const wchar_t* mark, const std::wstring& with)
{
    const size_t length = wcslen(mark);
    for (size_t at = text->find(mark); at != std::wstring::npos; at = text->find(mark, at + with.size()))
        text->replace(at, length, with);
}

struct Cast {
    int contact;
    const wchar_t* project;
    int number;
};

std::wstring Told(const wchar_t* pattern, const Cast& cast)
{
    const Contact& contact = kContacts[cast.contact];
    std::wstring text = pattern;
    Replace(&text, L"{n}", contact.spoken);
    Replace(&text, L"{c}", *contact.company ? contact.company : contact.spoken);
    Replace(&text, L"{p}", cast.project);
    Replace(&text, L"{d}", std::to_wstring(cast.number));
    return text;
}

TimeCount Midnight(const SYSTEMTIME& day)
{
    SYSTEMTIME midnight{};
    midnight.wYear = day.wYear;
    midnight.wMonth = day.wMonth;
    midnight.wDay = day.wDay;
    TimeCount count;
    return count.FromSystemTime(midnight) ? count : TimeCount();
}

// Entries are written as life goes on, so their dates rise with their numbers, a few to a day; one in ten is
// written up some days late. Working hours, on steps of five minutes.
TimeCount StartOf(uint32_t index, uint32_t count, const SYSTEMTIME& today, Random& random)
{
    const uint64_t behindLast = (count - 1 - index) / 3 * uint64_t{3};
    int daysAgo = static_cast<int>(behindLast * kDays / std::max(count, 1u));
    if (random.Chance(10))
        daysAgo += random.Between(1, 6);
    TimeCount start = Midnight(today);
    start.AddDays(-daysAgo);
    start.AddMinutes(random.Between(7 * 12, 19 * 12) * 5);
    return start;
}

// Weekends are for the family and the house.
bool IsWeekend(TimeCount instant)
{
    const uint64_t weekday = (instant.Units() / kUnitsPerDay + 1) % 7; // 1 January 1601 was a Monday
    return weekday == 0 || weekday == 6;
}

const Scenario& PickFitting(TimeCount start, Random& random)
{
    const Scenario* scenario = &PickScenario(random);
    for (int i = 0; i < 6 && IsWeekend(start) && scenario->tone != Tone::Private; ++i)
        scenario = &PickScenario(random);
    return *scenario;
}

TimeCount DurationOf(const Scenario& scenario, Random& random)
{
    const int minutes = scenario.minutes && scenario.minutes <= 240 && random.Chance(30)
                            ? random.Pick(kDurations)
                            : scenario.minutes;
    TimeCount duration;
    duration.AddMinutes(minutes);
    return duration;
}

std::wstring BodyOf(const Scenario& scenario, const Cast& cast, Random& random)
{
    std::wstring body;
    const int lines = random.Between(1, 7);
    for (int i = 0; i < lines; ++i) {
        const std::wstring line = Told(PickLine(scenario.tone, random), cast);
        if (body.find(line) != std::wstring::npos)
            continue;
        if (!body.empty())
            body += random.Chance(15) ? L"\r\n\r\n" : L"\r\n";
        body += line;
    }
    return body;
}

bool Names(const std::wstring& text, const Contact& contact)
{
    return text.find(contact.spoken) != std::wstring::npos ||
           (*contact.company && text.find(contact.company) != std::wstring::npos);
}

void Assign(const Scenario& scenario, const Cast& cast, Random& random, SampleEntry* entry)
{
    if (!random.Chance(15))
        entry->categories.push_back(scenario.category);
    const int second = static_cast<int>(random.Below(kCategoryCount));
    if (random.Chance(20) && second != scenario.category)
        entry->categories.push_back(second);
    if (entry->subject && Names(*entry->subject, kContacts[cast.contact]))
        entry->contacts.push_back(cast.contact);
    const int other = static_cast<int>(random.Below(kContactCount));
    if (scenario.tone == Tone::Meeting && other != cast.contact)
        entry->contacts.push_back(other);
}

short PriorityOf(Random& random)
{
    return static_cast<short>(random.Chance(75) ? 1 : random.Chance(60) ? 2 : 0);
}

short SensitivityOf(Tone tone, Random& random)
{
    if (tone == Tone::Private)
        return static_cast<short>(random.Chance(60) ? 1 : 2);
    return static_cast<short>(random.Chance(92) ? 0 : 3);
}

} // namespace

SampleEntry RealisticEntry(uint64_t seed, uint32_t index, uint32_t count, const SYSTEMTIME& today)
{
    Random random(seed, index);
    SampleEntry entry;
    entry.date = StartOf(index, count, today, random);
    const Scenario& scenario = PickFitting(*entry.date, random);
    const Cast cast{static_cast<int>(random.Below(kContactCount)), PickProject(random),
                    random.Between(2, 12)};
    entry.duration = DurationOf(scenario, random);
    entry.endTime = *entry.date + *entry.duration;
    entry.priority = PriorityOf(random);
    entry.sensitivity = SensitivityOf(scenario.tone, random);
    entry.type = scenario.type;
    if (!random.Chance(12))
        entry.body = BodyOf(scenario, cast, random);
    if (!random.Chance(3))
        entry.subject = Told(scenario.subject, cast);
    Assign(scenario, cast, random, &entry);
    return entry;
}

} // namespace sample
