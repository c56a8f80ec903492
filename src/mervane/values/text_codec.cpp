#include "mervane/values/text_codec.h"

#include <emmintrin.h>

#include <cstdint>

namespace mervane {

namespace {

constexpr wchar_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char32_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLowSurrogate(char32_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

char* PutTail(char* out, char32_t code, int shift)
{
    for (; shift >= 0; shift -= 6)
        *out++ = static_cast<char>(0x80 | ((code >> shift) & 0x3F));
    return out;
}

// At most three bytes for each unit of UTF-16.
char* PutSequence(char* out, char32_t code)
{
    if (code < 0x80) {
        *out++ = static_cast<char>(code);
        return out;
    }
    if (code < 0x800) {
        *out++ = static_cast<char>(0xC0 | (code >> 6));
        return PutTail(out, code, 0);
    }
    if (code < 0x10000) {
        *out++ = static_cast<char>(0xE0 | (code >> 12));
        return PutTail(out, code, 6);
    }
    *out++ = static_cast<char>(0xF0 | (code >> 18));
    return PutTail(out, code, 12);
}

struct Decoded {
    char32_t code;
    size_t length; // bytes taken; 0: no valid sequence
};

int TailLength(unsigned char lead)
{
    if (lead >= 0xC2 && lead <= 0xDF)
        return 1;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 2;
    if (lead >= 0xF0 && lead <= 0xF4)
        return 3;
    return 0;
}

// A sequence of two to four bytes. Overlong forms and what lies past U+10FFFF are none.
Decoded DecodeSequence(const unsigned char* bytes, size_t available)
{
    constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    const int tail = TailLength(bytes[0]);
    if (tail == 0 || available <= static_cast<size_t>(tail))
        return {0, 0};
    char32_t code = bytes[0] & (0x3Fu >> tail);
    for (int i = 1; i <= tail; ++i) {
        if ((bytes[i] & 0xC0) != 0x80)
            return {0, 0};
        code = code << 6 | (bytes[i] & 0x3Fu);
    }
    if (code < kSmallest[tail] || code > 0x10FFFF)
        return {0, 0};
    return {code, static_cast<size_t>(tail) + 1};
}

constexpr size_t kSurrogateLength = 3; // bytes of a surrogate that is encoded by itself

Decoded DecodeAt(std::string_view text, size_t at)
{
    return DecodeSequence(reinterpret_cast<const unsigned char*>(text.data()) + at, text.size() - at);
}

constexpr size_t kBlock = sizeof(__m128i);

// Sixteen characters at once, when all of them are ASCII and none is NUL.
bool DecodeBlock(const unsigned char* bytes, wchar_t* out)
{
    const __m128i zero = _mm_setzero_si128();
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
    // As signed bytes these alone are above zero.
    if (_mm_movemask_epi8(_mm_cmpgt_epi8(block, zero)) != 0xFFFF)
        return false;
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_unpacklo_epi8(block, zero));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + kBlock / 2), _mm_unpackhi_epi8(block, zero));
    return true;
}

constexpr size_t kUnits = kBlock / sizeof(wchar_t);

// Eight units at once, when all of them are ASCII.
bool EncodeBlock(const wchar_t* units, char* out)
{
    const __m128i zero = _mm_setzero_si128();
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(units));
    const __m128i beyond = _mm_and_si128(block, _mm_set1_epi16(static_cast<short>(0xFF80)));
    if (_mm_movemask_epi8(_mm_cmpeq_epi16(beyond, zero)) != 0xFFFF)
        return false;
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out), _mm_packus_epi16(block, zero));
    return true;
}

wchar_t* PutCode(wchar_t* out, char32_t code)
{
    if (code < 0x10000) {
        *out++ = static_cast<wchar_t>(code);
        return out;
    }
    *out++ = static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10));
    *out++ = static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
    return out;
}

} // namespace

void AppendEncoded(std::string& bytes, std::wstring_view text)
{
    constexpr size_t kMostBytes = 3;
    const size_t start = bytes.size();
    bytes.resize(start + text.size() * kMostBytes);
    char* out = bytes.data() + start;
    for (size_t i = 0; i < text.size(); ++i) {
        for (; i + kUnits <= text.size() && EncodeBlock(text.data() + i, out); i += kUnits)
            out += kUnits;
        if (i == text.size())
            break;
        char32_t code = text[i];
        if (IsHighSurrogate(code) && i + 1 < text.size() && IsLowSurrogate(text[i + 1]))
            code = 0x10000 + ((code - 0xD800) << 10) + (char32_t{text[++i]} - 0xDC00);
        out = PutSequence(out, code);
    }
    bytes.resize(static_cast<size_t>(out - bytes.data()));
}

std::string EncodeText(std::wstring_view text)
{
    std::string bytes;
    AppendEncoded(bytes, text);
    return bytes;
}

size_t DecodeText(std::string_view text, wchar_t* out)
{
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    wchar_t* const start = out;
    for (size_t i = 0; i < text.size() && bytes[i];) {
        if (bytes[i] < 0x80) {
            for (; i + kBlock <= text.size() && DecodeBlock(bytes + i, out); i += kBlock)
                out += kBlock;
            while (i < text.size() && bytes[i] && bytes[i] < 0x80)
                *out++ = bytes[i++];
            continue;
        }
        const Decoded decoded = DecodeSequence(bytes + i, text.size() - i);
        out = PutCode(out, decoded.length ? decoded.code : char32_t{kReplacement});
        i += decoded.length ? decoded.length : 1;
    }
    return static_cast<size_t>(out - start);
}

std::wstring DecodeText(std::string_view text)
{
    std::wstring out(text.size(), L'\0');
    out.resize(DecodeText(text, out.data()));
    return out;
}

DecodedCharacter DecodeCharacter(std::string_view text, size_t at)
{
    if (const auto byte = static_cast<unsigned char>(text[at]); byte < 0x80)
        return {byte, 1};
    const Decoded decoded = DecodeAt(text, at);
    if (!decoded.length)
        return {kReplacement, 1};
    if (!IsHighSurrogate(decoded.code) || at + kSurrogateLength >= text.size())
        return {decoded.code, decoded.length};
    const Decoded next = DecodeAt(text, at + kSurrogateLength);
    if (!next.length || !IsLowSurrogate(next.code))
        return {decoded.code, decoded.length};
    return {0x10000 + ((decoded.code - 0xD800) << 10) + (next.code - 0xDC00), 2 * kSurrogateLength};
}

size_t StartOfCharacter(std::string_view text, size_t lastByte)
{
    size_t start = lastByte;
    while (start > 0 && lastByte - start < 3 && (text[start] & 0xC0) == 0x80)
        --start;
    const bool mayFollow = start >= kSurrogateLength && text[start] == '\xED';
    if (mayFollow && DecodeCharacter(text, start - kSurrogateLength).length == 2 * kSurrogateLength)
        start -= kSurrogateLength;
    return start;
}

} // namespace mervane
