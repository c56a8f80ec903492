// TextPattern: a text that is looked for in stored ones, anywhere in them, with regard to case or by simple
// case folding. It steps over the stored bytes as they are, sixteen at a time, and reads characters only
// where two bytes that follow each other could be those of a match.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "mervane/search/case_folding.h"

namespace mervane {

class TextPattern {
  public:
    TextPattern(std::wstring_view text, bool matchCase);

    // stored: a text in the store's UTF-8, which counts up to its first NUL. It finds whole characters only,
    // as DecodeText reads them. The empty pattern is in every text.
    bool IsIn(std::string_view stored) const;

  private:
    // The values that a byte may have.
    struct ByteSet {
        std::array<uint8_t, CaseForms::kMost> bytes{};
        size_t count = 0;

        void Add(uint8_t byte);
        bool Contains(uint8_t byte) const;
        void FillUp(); // with the first one
    };

    void SetAnchor();
    bool IsAt(std::string_view stored, size_t start) const;
    size_t FindByCharacters(std::string_view stored) const;
    size_t FindByBytes(std::string_view stored) const;
    template <size_t kForms> size_t FindByBytes(std::string_view stored) const;
    template <size_t kForms> uint32_t Candidates(const char* block) const;

    std::vector<CaseForms> m_characters;
    bool m_byBytes = true;
    // What a match is noticed by: the last byte of its first character, and the byte behind that, or the same
    // one again when there is none behind it.
    ByteSet m_first;
    ByteSet m_second;
    size_t m_secondOffset = 0;
};

} // namespace mervane
