// The system's functions as far as the readers use them, and the C library's wide ones for 16-bit characters:
// those that are there count in 32 bits.
#include <windows.h>

#include <algorithm>
#include <cstdarg>
#include <string>

namespace {

struct Sequence {
    char32_t code;
    int length;
};

// As Windows reads UTF-8: each byte that belongs to no character is one U+FFFD.
Sequence SequenceAt(const unsigned char* bytes, int available)
{
    const int length = bytes[0] < 0x80   ? 1
                       : bytes[0] < 0xC2 ? 0
                       : bytes[0] < 0xE0 ? 2
                       : bytes[0] < 0xF0 ? 3
                                         : 4;
    if (length == 0 || bytes[0] > 0xF4 || length > available)
        return {0xFFFD, 1};
    char32_t code = length == 1 ? bytes[0] : bytes[0] & (0x7Fu >> length);
    for (int i = 1; i < length; ++i) {
        if ((bytes[i] & 0xC0) != 0x80)
            return {0xFFFD, 1};
        code = code << 6 | (bytes[i] & 0x3Fu);
    }
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isNone = code < kSmallest[length] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF);
    return isNone ? Sequence{0xFFFD, 1} : Sequence{code, length};
}

std::u16string Widened(const char* bytes, int size, bool isUtf8)
{
    std::u16string wide;
    const auto* at = reinterpret_cast<const unsigned char*>(bytes);
    for (int i = 0; i < size;) {
        const Sequence one = isUtf8 ? SequenceAt(at + i, size - i) : Sequence{at[i], 1};
        if (one.code >= 0x10000)
            wide += static_cast<char16_t>(0xD800 + ((one.code - 0x10000) >> 10));
        wide +=
            static_cast<char16_t>(one.code < 0x10000 ? one.code : 0xDC00 + ((one.code - 0x10000) & 0x3FF));
        i += one.length;
    }
    return wide;
}

void AppendUtf8(std::string& out, char32_t code)
{
    if (code < 0x80)
        out += static_cast<char>(code);
    else if (code < 0x800)
        out.append({static_cast<char>(0xC0 | code >> 6), static_cast<char>(0x80 | (code & 0x3F))});
    else if (code < 0x10000)
        out.append({static_cast<char>(0xE0 | code >> 12), static_cast<char>(0x80 | (code >> 6 & 0x3F)),
                    static_cast<char>(0x80 | (code & 0x3F))});
    else
        out.append({static_cast<char>(0xF0 | code >> 18), static_cast<char>(0x80 | (code >> 12 & 0x3F)),
                    static_cast<char>(0x80 | (code >> 6 & 0x3F)), static_cast<char>(0x80 | (code & 0x3F))});
}

std::string Narrowed(const wchar_t* wide, int size)
{
    std::string out;
    for (int i = 0; i < size; ++i) {
        char32_t code = wide[i];
        const bool isLow = i + 1 < size && wide[i + 1] >= 0xDC00 && wide[i + 1] <= 0xDFFF;
        if (IS_HIGH_SURROGATE(wide[i]) && isLow)
            code = 0x10000 + ((code - 0xD800) << 10) + (char32_t{wide[++i]} - 0xDC00);
        else if (code >= 0xD800 && code <= 0xDFFF)
            code = 0xFFFD;
        AppendUtf8(out, code);
    }
    return out;
}

// The system's rule for its buffers: the length where there is no room at all, 0 where there is too little.
template <typename Text, typename Unit> int HandOut(const Text& text, Unit* out, int room)
{
    const int length = static_cast<int>(text.size());
    if (room == 0)
        return length;
    if (length > room)
        return 0;
    std::copy(text.begin(), text.end(), out);
    return length;
}

bool IsLeap(int year)
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int DaysOf(int month, int year)
{
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return kDays[month - 1] + (month == 2 && IsLeap(year) ? 1 : 0);
}

constexpr uint64_t kDay = 864'000'000'000;
constexpr uint64_t kDaysOf400Years = 146'097;

} // namespace

BOOL IsValidCodePage(UINT)
{
    return 1;
}

int MultiByteToWideChar(UINT codePage, DWORD, const char* bytes, int size, wchar_t* wide, int room)
{
    return HandOut(Widened(bytes, size, codePage == CP_UTF8), wide, room);
}

int WideCharToMultiByte(UINT, DWORD, const wchar_t* wide, int size, char* bytes, int room, const char*, BOOL*)
{
    return HandOut(Narrowed(wide, size), bytes, room);
}

DWORD CharLowerBuffW(wchar_t* text, DWORD length)
{
    std::transform(text, text + length, text,
                   [](wchar_t c) { return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 32) : c; });
    return length;
}

wchar_t* CharUpperW(wchar_t* text)
{
    for (wchar_t* at = text; *at; ++at)
        *at = *at >= L'a' && *at <= L'z' ? static_cast<wchar_t>(*at - 32) : *at;
    return text;
}

int wsprintfW(wchar_t* text, const wchar_t* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    std::u16string out;
    for (; *format; ++format) {
        if (*format != L'%') {
            out += static_cast<char16_t>(*format);
        } else if (*++format == L'd') {
            for (const char digit : std::to_string(va_arg(arguments, int)))
                out += static_cast<char16_t>(digit);
        } else {
            for (const wchar_t* word = va_arg(arguments, const wchar_t*); *word; ++word)
                out += static_cast<char16_t>(*word);
        }
    }
    va_end(arguments);
    *std::copy(out.begin(), out.end(), text) = L'\0';
    return static_cast<int>(out.size());
}

BOOL FileTimeToSystemTime(const FILETIME* count, SYSTEMTIME* time)
{
    const uint64_t units = uint64_t{count->dwHighDateTime} << 32 | count->dwLowDateTime;
    if (units >> 63)
        return 0;
    uint64_t days = units / kDay;
    int year = 1601 + static_cast<int>(days / kDaysOf400Years * 400), month = 1;
    time->wDayOfWeek = static_cast<WORD>((days + 1) % 7);
    for (days %= kDaysOf400Years; days >= (IsLeap(year) ? 366u : 365u); ++year)
        days -= IsLeap(year) ? 366 : 365;
    for (; days >= static_cast<uint64_t>(DaysOf(month, year)); ++month)
        days -= static_cast<uint64_t>(DaysOf(month, year));
    time->wYear = static_cast<WORD>(year);
    time->wMonth = static_cast<WORD>(month);
    time->wDay = static_cast<WORD>(days + 1);
    const uint64_t milliseconds = units % kDay / 10'000;
    time->wHour = static_cast<WORD>(milliseconds / 3'600'000);
    time->wMinute = static_cast<WORD>(milliseconds / 60'000 % 60);
    time->wSecond = static_cast<WORD>(milliseconds / 1000 % 60);
    time->wMilliseconds = static_cast<WORD>(milliseconds % 1000);
    return 1;
}

BOOL SystemTimeToFileTime(const SYSTEMTIME*, FILETIME*)
{
    return 0;
}

extern "C" {

size_t wcslen(const wchar_t* text)
{
    const wchar_t* end = text;
    while (*end)
        ++end;
    return static_cast<size_t>(end - text);
}

wchar_t* wmemchr(const wchar_t* text, wchar_t wanted, size_t size)
{
    for (; size; ++text, --size)
        if (*text == wanted)
            return const_cast<wchar_t*>(text);
    return nullptr;
}

int wmemcmp(const wchar_t* a, const wchar_t* b, size_t size)
{
    for (size_t i = 0; i < size; ++i)
        if (a[i] != b[i])
            return a[i] < b[i] ? -1 : 1;
    return 0;
}

wchar_t* wmemcpy(wchar_t* to, const wchar_t* from, size_t size)
{
    return static_cast<wchar_t*>(__builtin_memcpy(to, from, size * sizeof *to));
}

wchar_t* wmemmove(wchar_t* to, const wchar_t* from, size_t size)
{
    return static_cast<wchar_t*>(__builtin_memmove(to, from, size * sizeof *to));
}

wchar_t* wmemset(wchar_t* to, wchar_t unit, size_t size)
{
    for (size_t i = 0; i < size; ++i)
        to[i] = unit;
    return to;
}

wchar_t* wcspbrk(const wchar_t* text, const wchar_t* wanted)
{
    for (; *text; ++text)
        if (wmemchr(wanted, *text, wcslen(wanted)))
            return const_cast<wchar_t*>(text);
    return nullptr;
}

// For std::to_wstring, whose format is "%d".
int vswprintf(wchar_t* out, size_t room, const wchar_t*, va_list arguments)
{
    const std::string digits = std::to_string(va_arg(arguments, int));
    if (digits.size() >= room)
        return -1;
    *std::copy(digits.begin(), digits.end(), out) = L'\0';
    return static_cast<int>(digits.size());
}

} // extern "C"
