#include "util/duration_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <string>

namespace {

constexpr const wchar_t* kNumberCharacters = L"0123456789.";
constexpr const wchar_t* kUnitLetters = L"MHDWS";

bool IsDigit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}

wchar_t* SkipDigits(wchar_t* text)
{
    while (IsDigit(*text))
        ++text;
    return text;
}

// Digits with at most one point; a lone point is a number too, of nothing.
wchar_t* NumberEnd(wchar_t* text)
{
    wchar_t* const end = SkipDigits(text);
    return *end == L'.' ? SkipDigits(end + 1) : end;
}

// The number from start to end as a double, correctly rounded. The C library's own reading would go on into
// exponents, hexadecimal digits and another locale's point. Past what a double holds it is infinite.
double NumberValue(const wchar_t* start, const wchar_t* end)
{
    std::string digits;
    std::transform(start, end, std::back_inserter(digits), [](wchar_t c) { return static_cast<char>(c); });
    double value = 0;
    const auto result =
        std::from_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed);
    if (result.ec != std::errc::result_out_of_range)
        return value;
    // Out of range is also what lies too close to zero.
    return digits.find_first_not_of('0') < digits.find('.') ? std::numeric_limits<double>::infinity() : 0;
}

struct Number {
    int32_t whole;   // as far as 32 bits hold it
    double fraction; // 0 or more, below 1
};

Number Split(double value)
{
    double whole;
    const double fraction = std::modf(value, &whole);
    return {static_cast<int32_t>(std::min<double>(whole, std::numeric_limits<int32_t>::max())), fraction};
}

int32_t Part(double fraction, int units)
{
    return static_cast<int32_t>(fraction * units);
}

// A week's whole part counts as days, only its fraction as sevenths of a week.
void Apply(wchar_t unit, const Number& number, TimeCount* duration)
{
    switch (unit) {
    case L'D':
        duration->AddDays(number.whole);
        duration->AddHours(Part(number.fraction, 24));
        break;
    case L'H':
        duration->AddHours(number.whole);
        duration->AddMinutes(Part(number.fraction, 60));
        break;
    case L'M': duration->AddMinutes(number.whole); break;
    case L'S': duration->AddSeconds(number.whole); break;
    case L'W':
        duration->AddDays(number.whole);
        duration->AddDays(Part(number.fraction, 7));
        break;
    default: break;
    }
}

std::wstring Counted(int n, const wchar_t* one, const wchar_t* many)
{
    return std::to_wstring(n) + L' ' + (n == 1 ? one : many);
}

std::wstring FormatDays(int d, int h, int m)
{
    if (m)
        return Counted(d, L"dy", L"dys") + L' ' + (h ? Counted(h, L"hour", L"hrs") : L"0 hrs") + L' ' +
               Counted(m, L"mn", L"mn");
    return Counted(d, L"day", L"days") + (h ? L' ' + Counted(h, L"hour", L"hrs") : L"");
}

std::wstring FormatHours(int h, int m)
{
    if (h && m)
        return Counted(h, L"hour", L"hrs") + L' ' + Counted(m, L"minute", L"min");
    return h ? Counted(h, L"hour", L"hours") : Counted(m, L"minute", L"minutes");
}

} // namespace

std::wstring FormatDuration(TimeCount duration)
{
    SYSTEMTIME time;
    if (!duration.ToSystemTime(&time))
        return FormatHours(0, 0);
    const int days = time.wDay - 1;
    return days ? FormatDays(days, time.wHour, time.wMinute) : FormatHours(time.wHour, time.wMinute);
}

int ParseDuration(wchar_t* text, TimeCount* duration)
{
    wchar_t* start = wcspbrk(text, kNumberCharacters);
    if (!start)
        return 0;
    CharUpperW(start);
    while (start) {
        wchar_t* end = NumberEnd(start);
        const Number number = Split(NumberValue(start, end));
        wchar_t* unit = wcspbrk(end, kUnitLetters);
        if (!unit) {
            duration->AddMinutes(number.whole);
            return 1;
        }
        Apply(*unit, number, duration);
        start = wcspbrk(unit, kNumberCharacters);
    }
    return 1;
}
