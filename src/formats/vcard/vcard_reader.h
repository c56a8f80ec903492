// Reads the cards of a vCard file one by one: versions 2.1, 3.0 and 4.0, in UTF-8 or UTF-16, in little
// memory.
#pragma once

#include <string>

#include "formats/text/text_lines.h"
#include "formats/text/utf16_source.h"
#include "formats/vcard/vcard_card.h"
#include "formats/vcard/vcard_upgrade.h"

namespace addrbook {

class VCardReader {
  public:
    explicit VCardReader(ByteSource source) : m_lines(WithUtf16Decoded(std::move(source))) {}

    // The next card that can be read; false at the end. What cannot be read is passed over and counted.
    [[nodiscard]] bool Next(VCard* card);

    // Cards that could not be read; text outside of cards counts as one for each stretch of it.
    size_t Unreadable() const { return m_unreadable; }
    // The first of them: the number of the line, from 1, and what is wrong there.
    size_t ErrorLine() const { return m_errorLine; }
    const std::string& ErrorText() const { return m_errorText; }
    // A card that the caller cannot use; counted as unreadable from its first line on.
    void Reject(const char* why) { Note(m_cardLine, why); }

    static constexpr size_t kLargestCard = size_t{16} << 20; // bytes, of which each line costs some

  private:
    // A line of the card as it is in the file, unfolded.
    struct RawLine {
        size_t start;
        size_t end;
        size_t number;
    };
    enum class State { Outside, Stray, Inside, Skipping };

    bool TakeLine(std::string_view line, VCard* card);
    void TakeOutside(std::string_view line, VCard* card);
    void TakeInside(std::string_view line, VCard* card);
    bool Continues(std::string_view line, const VCard& card) const;
    bool TakeSoftBreak(VCard* card);
    void Append(std::string_view line, VCard* card);
    void TakeVersion(std::string_view line);
    void Begin(VCard* card);
    void BeginInside(VCard* card);
    bool End(VCard* card);
    void TakeAgent(std::string_view line, VCard* card);
    bool Build(VCard* card);
    bool BuildLine(const RawLine& raw, VCard* card);
    void Note(size_t line, const char* why);
    void Break(size_t line, const char* why);

    TextLines m_lines;
    State m_state = State::Outside;
    VCardVersion m_version = VCardVersion::V30;
    bool m_unknownVersion = false;
    bool m_hasLabels = false;
    int m_agentDepth = 0;
    size_t m_cardLine = 0;
    std::vector<RawLine> m_raw;
    std::string m_upgraded;
    size_t m_unreadable = 0;
    size_t m_errorLine = 0;
    std::string m_errorText;
};

} // namespace addrbook
