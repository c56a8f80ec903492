// One entry of a sample store. A member without a value: the record lacks the property.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "util/time_count.h"

namespace sample {

struct SampleEntry {
    std::optional<TimeCount> date;
    std::optional<TimeCount> endTime;
    std::optional<TimeCount> duration;
    std::optional<short> priority;
    std::optional<short> sensitivity;
    std::optional<std::wstring> type;
    std::optional<std::wstring> body;
    std::optional<std::wstring> subject;
    std::vector<int> categories; // positions in Categories(), each at most once
    std::vector<int> contacts;   // positions in Contacts(), likewise
};

// Entry index of count of a believable journal: the three years up to today, in order but for a few.
SampleEntry RealisticEntry(uint64_t seed, uint32_t index, uint32_t count, const SYSTEMTIME& today);

// Entry index of a big store: a body of 200 to 2,000 characters, subjects of many languages, some time in the
// forty years up to today; about one entry in thirty lacks any given property.
SampleEntry BulkEntry(uint64_t seed, uint32_t index, const SYSTEMTIME& today);

struct Contact {
    const wchar_t* fileAs;
    const wchar_t* spoken; // as a subject or a body names the person
    const wchar_t* company;
};
constexpr int kCategoryCount = 12;
constexpr int kContactCount = 40;
extern const wchar_t* const kCategories[kCategoryCount];
extern const Contact kContacts[kContactCount];

// Positions in kCategories.
enum Category {
    Business,
    Customers,
    Family,
    Finance,
    Health,
    Home,
    Ideas,
    Office,
    Projects,
    Study,
    Suppliers,
    Travel
};

} // namespace sample
