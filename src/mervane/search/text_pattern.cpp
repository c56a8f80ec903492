#include "mervane/search/text_pattern.h"

#include <emmintrin.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <string>

#include "mervane/values/text_codec.h"

namespace mervane {

namespace {

constexpr size_t kNowhere = SIZE_MAX;
constexpr size_t kBlock = sizeof(__m128i);
constexpr char32_t kReplacement = 0xFFFD;
constexpr uint8_t kSurrogateLead = 0xED;

bool IsBeyondOneUnit(char32_t code)
{
    return code >= 0x10000;
}

std::wstring UnitsOf(char32_t code)
{
    if (!IsBeyondOneUnit(code))
        return {static_cast<wchar_t>(code)};
    return {static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10)),
            static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF))};
}

template <size_t kForms> __m128i IsOneOf(__m128i block, const uint8_t* bytes)
{
    __m128i found = _mm_cmpeq_epi8(block, _mm_set1_epi8(static_cast<char>(bytes[0])));
    for (size_t i = 1; i < kForms; ++i)
        found = _mm_or_si128(found, _mm_cmpeq_epi8(block, _mm_set1_epi8(static_cast<char>(bytes[i]))));
    return found;
}

__m128i Load(const char* bytes)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}

} // namespace

void TextPattern::ByteSet::Add(uint8_t byte)
{
    if (!Contains(byte))
        bytes[count++] = byte;
}

bool TextPattern::ByteSet::Contains(uint8_t byte) const
{
    return std::find(bytes.begin(), bytes.begin() + count, byte) != bytes.begin() + count;
}

void TextPattern::ByteSet::FillUp()
{
    std::fill(bytes.begin() + count, bytes.end(), bytes[0]);
}

TextPattern::TextPattern(std::wstring_view text, bool matchCase)
{
    const std::string encoded = EncodeText(text);
    for (size_t at = 0; at < encoded.size();) {
        const DecodedCharacter character = DecodeCharacter(encoded, at);
        m_characters.push_back(matchCase ? CaseForms::Only(character.code) : CaseForms::Of(character.code));
        // Any byte may be a broken one, which reads as this character.
        m_byBytes &= character.code != kReplacement;
        at += character.length;
    }
    if (!m_characters.empty())
        SetAnchor();
}

void TextPattern::SetAnchor()
{
    for (const char32_t code : m_characters[0].Codes())
        m_first.Add(static_cast<uint8_t>(EncodeText(UnitsOf(code)).back()));
    m_first.FillUp();
    m_second = m_first;
    if (m_characters.size() == 1)
        return;
    m_second = {};
    m_secondOffset = 1;
    for (const char32_t code : m_characters[1].Codes()) {
        m_second.Add(static_cast<uint8_t>(EncodeText(UnitsOf(code)).front()));
        // The two halves may be encoded one by one.
        if (IsBeyondOneUnit(code))
            m_second.Add(kSurrogateLead);
    }
    m_second.FillUp();
}

bool TextPattern::IsIn(std::string_view stored) const
{
    if (m_characters.empty())
        return true;
    const size_t found = m_byBytes ? FindByBytes(stored) : FindByCharacters(stored);
    return found != kNowhere && !memchr(stored.data(), 0, found);
}

bool TextPattern::IsAt(std::string_view stored, size_t start) const
{
    for (const CaseForms& forms : m_characters) {
        if (start >= stored.size())
            return false;
        const DecodedCharacter character = DecodeCharacter(stored, start);
        if (!forms.Contains(character.code))
            return false;
        start += character.length;
    }
    return true;
}

size_t TextPattern::FindByCharacters(std::string_view stored) const
{
    for (size_t at = 0; at < stored.size(); at += DecodeCharacter(stored, at).length)
        if (IsAt(stored, at))
            return at;
    return kNowhere;
}

size_t TextPattern::FindByBytes(std::string_view stored) const
{
    constexpr size_t kUsual = 2;
    const bool isUsual = m_first.count <= kUsual && m_second.count <= kUsual;
    return isUsual ? FindByBytes<kUsual>(stored) : FindByBytes<CaseForms::kMost>(stored);
}

template <size_t kForms> uint32_t TextPattern::Candidates(const char* block) const
{
    const __m128i first = IsOneOf<kForms>(Load(block), m_first.bytes.data());
    const __m128i second = IsOneOf<kForms>(Load(block + m_secondOffset), m_second.bytes.data());
    return static_cast<uint32_t>(_mm_movemask_epi8(_mm_and_si128(first, second)));
}

// A sequence that is valid begins with a byte that continues none, so it is a character wherever it stands.
template <size_t kForms> size_t TextPattern::FindByBytes(std::string_view stored) const
{
    size_t at = 0;
    for (; at + kBlock + m_secondOffset <= stored.size(); at += kBlock)
        for (uint32_t places = Candidates<kForms>(stored.data() + at); places; places &= places - 1) {
            const size_t start = StartOfCharacter(stored, at + static_cast<size_t>(std::countr_zero(places)));
            if (IsAt(stored, start))
                return start;
        }
    for (; at + m_secondOffset < stored.size(); ++at) {
        const auto first = static_cast<uint8_t>(stored[at]);
        const auto second = static_cast<uint8_t>(stored[at + m_secondOffset]);
        if (!m_first.Contains(first) || !m_second.Contains(second))
            continue;
        const size_t start = StartOfCharacter(stored, at);
        if (IsAt(stored, start))
            return start;
    }
    return kNowhere;
}

} // namespace mervane
