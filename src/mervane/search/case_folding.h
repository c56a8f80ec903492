// Unicode's simple case folding: one character becomes one character, whatever the locale. So the sharp s is
// not "ss", and the Turkish dotted capital I folds to itself.
#pragma once

#include <array>
#include <cstddef>
#include <span>

namespace mervane {

char32_t FoldCase(char32_t code);

// The characters that are the same without regard to case.
class CaseForms {
  public:
    static constexpr size_t kMost = 4;

    // The character alone.
    static CaseForms Only(char32_t code);
    // All that fold as it does, itself among them.
    static CaseForms Of(char32_t code);

    bool Contains(char32_t code) const
    {
        for (const char32_t form : Codes())
            if (form == code)
                return true;
        return false;
    }
    std::span<const char32_t> Codes() const { return {m_codes.data(), m_count}; }

  private:
    void Add(char32_t code) { m_codes[m_count++] = code; }

    std::array<char32_t, kMost> m_codes{};
    size_t m_count = 0;
};

} // namespace mervane
