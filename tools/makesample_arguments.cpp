#include "makesample_arguments.h"

#include "util/time_count.h"

namespace {

// Digits only.
std::optional<uint64_t> ParseNumber(const std::wstring& text, uint64_t maximum)
{
    uint64_t number = 0;
    for (wchar_t c : text) {
        if (c < L'0' || c > L'9')
            return {};
        const auto digit = static_cast<uint64_t>(c - L'0');
        if (number > (maximum - digit) / 10)
            return {};
        number = number * 10 + digit;
    }
    return text.empty() ? std::nullopt : std::optional(number);
}

std::optional<SYSTEMTIME> ParseDay(const std::wstring& text)
{
    if (text.size() != 10 || text[4] != L'-' || text[7] != L'-')
        return {};
    const auto year = ParseNumber(text.substr(0, 4), 9999);
    const auto month = ParseNumber(text.substr(5, 2), 12);
    const auto day = ParseNumber(text.substr(8, 2), 31);
    if (!year || !month || !day)
        return {};
    SYSTEMTIME parsed{};
    parsed.wYear = static_cast<WORD>(*year);
    parsed.wMonth = static_cast<WORD>(*month);
    parsed.wDay = static_cast<WORD>(*day);
    // There and back, because a 29 February of any year may be taken for a 1 March.
    TimeCount count;
    SYSTEMTIME back{};
    if (!count.FromSystemTime(parsed) || !count.ToSystemTime(&back) || back.wDay != parsed.wDay)
        return {};
    return parsed;
}

bool ParseOption(const std::wstring& name, const std::wstring& value, sample::SamplePlan* plan)
{
    if (name == L"--seed") {
        const auto seed = ParseNumber(value, UINT64_MAX);
        plan->seed = seed.value_or(0);
        return seed.has_value();
    }
    const auto today = name == L"--today" ? ParseDay(value) : std::nullopt;
    plan->today = today.value_or(SYSTEMTIME{});
    return today.has_value();
}

} // namespace

std::optional<MakeSampleArguments> ParseArguments(const std::vector<std::wstring>& arguments)
{
    if (arguments.size() < 2 || arguments[0].empty())
        return {};
    MakeSampleArguments parsed;
    parsed.store = arguments[0];
    const auto count = ParseNumber(arguments[1], UINT32_MAX);
    if (!count)
        return {};
    parsed.plan.count = static_cast<uint32_t>(*count);
    for (size_t i = 2; i < arguments.size(); ++i) {
        if (arguments[i] == L"--bulk") {
            parsed.plan.bulk = true;
        } else {
            if (i + 1 == arguments.size() || !ParseOption(arguments[i], arguments[i + 1], &parsed.plan))
                return {};
            ++i;
        }
    }
    return parsed;
}
