// The lines of a stream of bytes, one after the other. In memory is one line and up to as much again, so that
// a file may be of any size. What the bytes mean is not looked at: for UTF-16 see utf16_source.h.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

namespace text {

// Puts up to size bytes into buffer and returns how many; 0 at the end. What failed is known
// to whoever made the source.
using ByteSource = std::function<size_t(char* buffer, size_t size)>;

// Lines end with CR LF, LF or CR. A mark of UTF-8 at the start is left out.
class Lines {
  public:
    explicit Lines(ByteSource source);

    // Valid until the next call. What a line has beyond kLongest bytes is left out.
    bool Next(std::string_view* line);
    size_t Number() const { return m_number; } // of the last line, from 1

    static constexpr size_t kLongest = size_t{16} << 20;

  private:
    bool Fill();
    bool FindEnd();
    void SkipToEnd();
    void SkipByteOrderMark();
    bool At(size_t place);

    ByteSource m_source;
    std::vector<char> m_buffer;
    size_t m_begin = 0; // of the line in the buffer
    size_t m_place = 0; // up to here there is no line end
    size_t m_end = 0;   // of what is in the buffer
    size_t m_number = 0;
    bool m_sourceEnded = false;
};

} // namespace text
