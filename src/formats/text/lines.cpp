#include "formats/text/lines.h"

#include <emmintrin.h>

#include <bit>
#include <cstring>

namespace text {

namespace {

constexpr size_t kBufferSize = size_t{256} << 10;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsLineEnd(char character)
{
    return character == '\n' || character == '\r';
}

// The first line end from place on; end when there is none.
size_t FindLineEnd(const char* text, size_t place, size_t end)
{
    constexpr size_t kBlock = sizeof(__m128i);
    const __m128i feed = _mm_set1_epi8('\n'), carriageReturn = _mm_set1_epi8('\r');
    for (; place + kBlock <= end; place += kBlock) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + place));
        const __m128i hits = _mm_or_si128(_mm_cmpeq_epi8(block, feed), _mm_cmpeq_epi8(block, carriageReturn));
        if (const auto mask = static_cast<unsigned>(_mm_movemask_epi8(hits)))
            return place + static_cast<size_t>(std::countr_zero(mask));
    }
    while (place < end && !IsLineEnd(text[place]))
        ++place;
    return place;
}

} // namespace

Lines::Lines(ByteSource source) : m_source(std::move(source)), m_buffer(kBufferSize) {}

// false at the end of the source. The line moves to the buffer's start, which grows when the line fills it.
bool Lines::Fill()
{
    if (m_sourceEnded)
        return false;
    memmove(m_buffer.data(), m_buffer.data() + m_begin, m_end - m_begin);
    m_place -= m_begin;
    m_end -= m_begin;
    m_begin = 0;
    if (m_end == m_buffer.size())
        m_buffer.resize(2 * m_buffer.size());
    const size_t read = m_source(m_buffer.data() + m_end, m_buffer.size() - m_end);
    m_sourceEnded = read == 0;
    m_end += read;
    return read != 0;
}

bool Lines::At(size_t place)
{
    const size_t behindBegin = place - m_begin;
    while (m_begin + behindBegin >= m_end)
        if (!Fill())
            return false;
    return true;
}

// false when the text ends, or the line is too long, before the line does.
bool Lines::FindEnd()
{
    do {
        m_place = FindLineEnd(m_buffer.data(), m_place, m_end);
        if (m_place < m_end)
            return true;
    } while (m_place - m_begin < kLongest && Fill());
    return false;
}

void Lines::SkipToEnd()
{
    do {
        m_begin = m_place;
    } while (!FindEnd() && !m_sourceEnded);
    m_begin = m_place;
}

void Lines::SkipByteOrderMark()
{
    if (At(m_begin + kByteOrderMark.size() - 1) &&
        memcmp(m_buffer.data() + m_begin, kByteOrderMark.data(), kByteOrderMark.size()) == 0)
        m_begin = m_place = m_begin + kByteOrderMark.size();
}

bool Lines::Next(std::string_view* line)
{
    if (m_number == 0)
        SkipByteOrderMark();
    // The end of the line before, which is passed only now that its text is no longer needed.
    if (m_number && At(m_begin)) {
        if (!IsLineEnd(m_buffer[m_begin]))
            SkipToEnd();
        const bool isReturn = m_begin < m_end && m_buffer[m_begin] == '\r';
        m_begin += m_begin < m_end ? 1 : 0;
        if (isReturn && At(m_begin) && m_buffer[m_begin] == '\n')
            ++m_begin;
    }
    m_place = m_begin;
    if (!At(m_begin))
        return false;
    FindEnd();
    ++m_number;
    *line = {m_buffer.data() + m_begin, m_place - m_begin};
    m_begin = m_place;
    return true;
}

} // namespace text
