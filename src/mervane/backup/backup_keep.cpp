#include "mervane/backup/backup_keep.h"

#include <algorithm>
#include <cwchar>
#include <set>

#include "mervane/file/folder_files.h"
#include "util/compare_text.h"

namespace mervane {

namespace {

constexpr size_t kDaysKept = 7;
constexpr size_t kSundaysKept = 4;

constexpr std::wstring_view kUnfinished = L".part";
constexpr std::wstring_view kBefore = L"-before-v";

bool IsNumber(std::wstring_view text)
{
    return !text.empty() && text.size() <= 10 &&
           text.find_first_not_of(L"0123456789") == std::wstring_view::npos;
}

int64_t NumberOf(std::wstring_view digits)
{
    int64_t number = 0;
    for (const wchar_t digit : digits)
        number = 10 * number + (digit - L'0');
    return number;
}

// "2026-01-31"
std::optional<BackupDay> ReadDay(std::wstring_view text)
{
    if (text.size() != 10 || text[4] != L'-' || text[7] != L'-')
        return std::nullopt;
    const std::wstring_view year = text.substr(0, 4), month = text.substr(5, 2), day = text.substr(8);
    if (!IsNumber(year) || !IsNumber(month) || !IsNumber(day))
        return std::nullopt;
    const BackupDay read{std::chrono::year(static_cast<int>(NumberOf(year))),
                         std::chrono::month(static_cast<unsigned>(NumberOf(month))),
                         std::chrono::day(static_cast<unsigned>(NumberOf(day)))};
    return read.ok() ? std::optional(read) : std::nullopt;
}

bool IsSunday(BackupDay day)
{
    return std::chrono::weekday(std::chrono::sys_days(day)) == std::chrono::Sunday;
}

// The latest days and the latest Sundays.
std::set<BackupDay> DaysToKeep(std::vector<BackupDay> days)
{
    std::sort(days.begin(), days.end(), std::greater<>());
    days.erase(std::unique(days.begin(), days.end()), days.end());
    std::set<BackupDay> kept(days.begin(), days.begin() + static_cast<int>(std::min(days.size(), kDaysKept)));
    size_t sundays = 0;
    for (const BackupDay day : days)
        if (IsSunday(day) && ++sundays <= kSundaysKept)
            kept.insert(day);
    return kept;
}

// What an unfinished file will be called; none where the name is no unfinished one's.
std::optional<std::wstring_view> WholeNameOf(std::wstring_view file)
{
    if (!file.ends_with(kUnfinished))
        return std::nullopt;
    file.remove_suffix(kUnfinished.size());
    const size_t dot = file.rfind(L'.');
    if (dot == std::wstring_view::npos || !IsNumber(file.substr(dot + 1)))
        return std::nullopt;
    return file.substr(0, dot);
}

// What a backup's name tells of its age.
struct Age {
    int kind; // 2: of a day up to today, 1: of one after it, 0: from before a migration
    BackupDay day;
    BackupNames::VersionAndNumber version;
    std::wstring name;
};

bool IsNewer(const Age& one, const Age& other)
{
    if (one.kind != other.kind)
        return one.kind > other.kind;
    if (one.day != other.day)
        return one.day > other.day;
    if (one.version.first != other.version.first)
        return one.version.first > other.version.first;
    return one.version.second > other.version.second;
}

} // namespace

BackupDay DayOfTime(const SYSTEMTIME& time)
{
    return {std::chrono::year(time.wYear), std::chrono::month(time.wMonth), std::chrono::day(time.wDay)};
}

BackupNames::BackupNames(std::wstring_view storeFile)
{
    const size_t dot = storeFile.rfind(L'.');
    const size_t stem = dot == std::wstring_view::npos || dot == 0 ? storeFile.size() : dot;
    m_stem = storeFile.substr(0, stem);
    m_extension = storeFile.substr(stem);
}

std::wstring BackupNames::OfDay(BackupDay day) const
{
    wchar_t text[32];
    swprintf(text, 32, L"-%04d-%02u-%02u", static_cast<int>(day.year()), static_cast<unsigned>(day.month()),
             static_cast<unsigned>(day.day()));
    return m_stem + text + m_extension;
}

std::wstring BackupNames::BeforeVersion(int64_t version, int number) const
{
    const std::wstring name = m_stem + std::wstring(kBefore) + std::to_wstring(version);
    return (number == 1 ? name : name + L'-' + std::to_wstring(number)) + m_extension;
}

std::wstring BackupNames::Unfinished(std::wstring_view name, unsigned long process)
{
    return std::wstring(name) + L'.' + std::to_wstring(process) + std::wstring(kUnfinished);
}

std::optional<BackupDay> BackupNames::DayOf(std::wstring_view name) const
{
    constexpr size_t kDate = 11; // with the hyphen before it
    if (name.size() != m_stem.size() + kDate + m_extension.size() || !NameStartsWith(name, m_stem) ||
        !NameEndsWith(name, m_extension) || name[m_stem.size()] != L'-')
        return std::nullopt;
    return ReadDay(name.substr(m_stem.size() + 1, kDate - 1));
}

std::optional<BackupNames::VersionAndNumber> BackupNames::VersionOf(std::wstring_view name) const
{
    const std::wstring start = m_stem + std::wstring(kBefore);
    if (name.size() <= start.size() + m_extension.size() || !NameStartsWith(name, start) ||
        !NameEndsWith(name, m_extension))
        return std::nullopt;
    const std::wstring_view middle =
        name.substr(start.size(), name.size() - start.size() - m_extension.size());
    const size_t hyphen = middle.find(L'-');
    const std::wstring_view version = middle.substr(0, hyphen);
    const std::wstring_view number = hyphen == std::wstring_view::npos ? L"1" : middle.substr(hyphen + 1);
    if (!IsNumber(version) || !IsNumber(number))
        return std::nullopt;
    return VersionAndNumber(NumberOf(version), NumberOf(number));
}

bool BackupNames::IsUnfinishedOf(std::wstring_view name, std::wstring_view file)
{
    return WholeNameOf(file) == name;
}

bool BackupNames::IsUnfinished(std::wstring_view name) const
{
    const auto whole = WholeNameOf(name);
    return whole && (DayOf(*whole) || VersionOf(*whole));
}

std::vector<std::wstring> BackupsToDelete(const BackupNames& names, const std::vector<std::wstring>& files,
                                          BackupDay today)
{
    std::vector<BackupDay> days;
    for (const std::wstring& file : files)
        if (const auto day = names.DayOf(file); day && *day <= today)
            days.push_back(*day);
    const std::set<BackupDay> kept = DaysToKeep(days);
    std::vector<std::wstring> deleted;
    for (const std::wstring& file : files)
        if (const auto day = names.DayOf(file); day && *day <= today && !kept.contains(*day))
            deleted.push_back(file);
    return deleted;
}

std::vector<std::wstring> NewestFirst(const BackupNames& names, const std::vector<std::wstring>& files,
                                      BackupDay today)
{
    std::vector<Age> ages;
    for (const std::wstring& file : files)
        if (const auto day = names.DayOf(file))
            ages.push_back({*day <= today ? 2 : 1, *day, {}, file});
        else if (const auto version = names.VersionOf(file))
            ages.push_back({0, {}, *version, file});
    std::sort(ages.begin(), ages.end(), IsNewer);
    std::vector<std::wstring> sorted;
    for (const Age& age : ages)
        sorted.push_back(age.name);
    return sorted;
}

} // namespace mervane
