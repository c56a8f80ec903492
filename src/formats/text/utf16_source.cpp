#include "formats/text/utf16_source.h"

#include <windows.h>

#include <string>

namespace text {

namespace {

constexpr size_t kPieceBytes = size_t{64} << 10;
constexpr std::string_view kLittleEndian = "\xFF\xFE", kBigEndian = "\xFE\xFF";

class Utf16Source {
  public:
    explicit Utf16Source(ByteSource source) : m_source(std::move(source)) {}

    size_t operator()(char* buffer, size_t size)
    {
        if (!m_hasBegun)
            Begin();
        if (m_ready.empty() && m_isPlain)
            return m_source(buffer, size);
        while (m_ready.empty() && !m_hasEnded)
            Decode();
        const size_t count = m_ready.copy(buffer, size);
        m_ready.erase(0, count);
        return count;
    }

  private:
    void Begin();
    void Decode();
    std::wstring TakeUnits();

    ByteSource m_source;
    bool m_hasBegun = false;
    bool m_hasEnded = false;
    bool m_isPlain = true;
    bool m_isBigEndian = false;
    std::string m_bytes; // read, of UTF-16
    std::string m_ready; // to be handed out
};

void Utf16Source::Begin()
{
    m_hasBegun = true;
    char mark[2];
    size_t count = 0;
    for (size_t read = 1; count < sizeof mark && read; count += read)
        read = m_source(mark + count, sizeof mark - count);
    m_ready.assign(mark, count);
    m_isBigEndian = m_ready == kBigEndian;
    m_isPlain = !m_isBigEndian && m_ready != kLittleEndian;
    if (!m_isPlain)
        m_ready.clear();
}

// All that are whole: the first half of a pair waits for its second one.
std::wstring Utf16Source::TakeUnits()
{
    const bool hasHalf = m_hasEnded && m_bytes.size() % 2;
    std::wstring units(m_bytes.size() / 2, L'\0');
    for (size_t i = 0; i < units.size(); ++i) {
        const auto first = static_cast<unsigned char>(m_bytes[2 * i]);
        const auto second = static_cast<unsigned char>(m_bytes[2 * i + 1]);
        units[i] = static_cast<wchar_t>(m_isBigEndian ? first << 8 | second : second << 8 | first);
    }
    if (!m_hasEnded && !units.empty() && IS_HIGH_SURROGATE(units.back()))
        units.pop_back();
    m_bytes.erase(0, 2 * units.size());
    return hasHalf ? units + L'\uFFFD' : units;
}

void Utf16Source::Decode()
{
    const size_t waiting = m_bytes.size();
    m_bytes.resize(waiting + kPieceBytes);
    const size_t read = m_source(m_bytes.data() + waiting, kPieceBytes);
    m_bytes.resize(waiting + read);
    m_hasEnded = read == 0;
    const std::wstring units = TakeUnits();
    if (units.empty())
        return;
    const int count = static_cast<int>(units.size());
    m_ready.resize(3 * units.size());
    const int length = WideCharToMultiByte(CP_UTF8, 0, units.data(), count, m_ready.data(),
                                           static_cast<int>(m_ready.size()), nullptr, nullptr);
    m_ready.resize(static_cast<size_t>(length));
}

} // namespace

ByteSource WithUtf16Decoded(ByteSource source)
{
    return Utf16Source(std::move(source));
}

} // namespace text
