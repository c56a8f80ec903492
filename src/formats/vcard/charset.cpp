#include "formats/vcard/charset.h"

#include <windows.h>

#include <cstdint>
#include <cstring>

#include "formats/vcard/line_text.h"

namespace vcard {

namespace {

constexpr UINT kWestern = 1252;
constexpr UINT kChinese = 936;
constexpr UINT kChineseOfAll = 54936;

struct Charset {
    std::string_view name;
    UINT codePage;
};
constexpr Charset kCharsets[] = {
    // What says that it is ISO-8859-1 often is its superset, Windows' own.
    {"iso-8859-1", kWestern}, {"latin1", kWestern},       {"iso-8859-2", 28592},
    {"iso-8859-3", 28593},    {"iso-8859-4", 28594},      {"iso-8859-5", 28595},
    {"iso-8859-6", 28596},    {"iso-8859-7", 28597},      {"iso-8859-8", 28598},
    {"iso-8859-9", 28599},    {"iso-8859-13", 28603},     {"iso-8859-15", 28605},
    {"koi8-r", 20866},        {"koi8-u", 21866},          {"shift_jis", 932},
    {"shift-jis", 932},       {"euc-jp", 20932},          {"gb2312", kChinese},
    {"gbk", kChinese},        {"gb18030", kChineseOfAll}, {"big5", 950},
    {"euc-kr", 949},          {"ks_c_5601-1987", 949},    {"windows-874", 874},
};

// "windows-1250" to "windows-1258" are code pages of the same number.
UINT WindowsPage(std::string_view charset)
{
    constexpr std::string_view kPrefix = "windows-125";
    if (charset.size() != kPrefix.size() + 1 || !StartsWithNoCase(charset, kPrefix))
        return CP_UTF8;
    const char digit = charset.back();
    return digit >= '0' && digit <= '8' ? 1250u + static_cast<UINT>(digit - '0') : CP_UTF8;
}

UINT CodePageOf(std::string_view charset)
{
    for (const Charset& known : kCharsets)
        if (EqualsNoCase(charset, known.name))
            // Not every system has it, and most of its texts need no more than the smaller set in it.
            return known.codePage == kChineseOfAll && !IsValidCodePage(kChineseOfAll) ? kChinese
                                                                                      : known.codePage;
    return WindowsPage(charset);
}

std::wstring Decode(std::string_view text, UINT codePage)
{
    const int size = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    const int length = MultiByteToWideChar(codePage, 0, text.data(), size, wide.data(), size);
    wide.resize(length > 0 ? static_cast<size_t>(length) : 0);
    return wide;
}

std::string Encode(const std::wstring& wide)
{
    const int size = static_cast<int>(wide.size());
    std::string text(wide.size() * 3, '\0');
    const int length = WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, text.data(),
                                           static_cast<int>(text.size()), nullptr, nullptr);
    text.resize(length > 0 ? static_cast<size_t>(length) : 0);
    return text;
}

// How many bytes from the start are UTF-8.
size_t Utf8Length(std::string_view text);

std::string MendUtf8(std::string_view text)
{
    std::string mended;
    for (size_t length; length = Utf8Length(text), mended.append(text, 0, length), length < text.size();) {
        mended += Encode(Decode(text.substr(length, 1), kWestern));
        text.remove_prefix(length + 1);
    }
    return mended;
}

int HexValue(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    const char lower = static_cast<char>(digit | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// How many bytes the character takes whose bytes begin here; 0 when it is none.
size_t SequenceLength(const unsigned char* bytes, size_t available)
{
    const unsigned char lead = bytes[0];
    const size_t length = lead < 0x80   ? 1
                          : lead < 0xC2 ? 0
                          : lead < 0xE0 ? 2
                          : lead < 0xF0 ? 3
                          : lead < 0xF5 ? 4
                                        : 0;
    if (length > available)
        return 0;
    for (size_t i = 1; i < length; ++i)
        if ((bytes[i] & 0xC0) != 0x80)
            return 0;
    const bool overlong = (lead == 0xE0 && bytes[1] < 0xA0) || (lead == 0xF0 && bytes[1] < 0x90);
    const bool beyond = (lead == 0xED && bytes[1] > 0x9F) || (lead == 0xF4 && bytes[1] > 0x8F);
    return overlong || beyond ? 0 : length;
}

size_t Utf8Length(std::string_view text)
{
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    for (size_t i = 0; i < text.size();) {
        uint64_t block;
        if (i + sizeof block <= text.size() && (memcpy(&block, bytes + i, sizeof block), true) &&
            (block & 0x8080808080808080) == 0) {
            i += sizeof block;
            continue;
        }
        const size_t length = SequenceLength(bytes + i, text.size() - i);
        if (length == 0)
            return i;
        i += length;
    }
    return text.size();
}

// -1 for what is none.
int Base64Value(char digit)
{
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const size_t value = kDigits.find(digit);
    return value == std::string_view::npos ? -1 : static_cast<int>(value);
}

} // namespace

bool IsUtf8(std::string_view text)
{
    return Utf8Length(text) == text.size();
}

std::string ToUtf8(std::string_view text, std::string_view charset)
{
    if (charset.empty() && IsUtf8(text))
        return std::string(text);
    const UINT codePage = CodePageOf(charset);
    const std::wstring wide = codePage == CP_UTF8 || text.empty() ? std::wstring() : Decode(text, codePage);
    return wide.empty() ? MendUtf8(text) : Encode(wide);
}

std::string DecodeQuotedPrintable(std::string_view text)
{
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '=' && i + 2 < text.size() ? HexValue(text[i + 1]) : -1;
        const int low = high >= 0 ? HexValue(text[i + 2]) : -1;
        out += low >= 0 ? static_cast<char>(high << 4 | low) : text[i];
        i += low >= 0 ? 2 : 0;
    }
    return out;
}

std::string DecodeBase64(std::string_view text)
{
    std::string out;
    unsigned bits = 0;
    int count = 0; // of the bits that wait
    for (const char character : text.substr(0, text.find('='))) {
        const int value = Base64Value(character);
        if (character == ' ' || character == '\t')
            continue;
        if (value < 0)
            return std::string(text);
        bits = bits << 6 | static_cast<unsigned>(value);
        count += 6;
        if (count >= 8)
            out += static_cast<char>(bits >> (count -= 8) & 0xFF);
    }
    return out;
}

} // namespace vcard
