// Reads the cards of a vCard file one by one: versions 2.1, 3.0 (RFC 2425, 2426) and 4.0 (RFC 6350), in UTF-8
// or UTF-16, or with a character set for each line. In memory is one card at a time.
//
//     text::InputFile file;
//     vcard::Reader reader([&](char* buffer, size_t size) { return file.Read(buffer, size); });
//     vcard::ContactReader contacts;
//     while (reader.Next(&card))
//         if (!contacts.Read(card, &contact))
//             reader.Reject("the card names nobody");
//
// A card that cannot be read never ends the reading: it is counted, and the first one's line is told. Whether
// the source itself has failed, that knows: the end of a file that cannot be read on looks here like its end.
#pragma once

#include <string>

#include "formats/text/lines.h"
#include "formats/text/utf16_source.h"
#include "formats/vcard/card.h"
#include "formats/vcard/upgrade.h"

namespace vcard {

class Reader {
  public:
    explicit Reader(text::ByteSource source) : m_lines(text::WithUtf16Decoded(std::move(source))) {}

    // The next card that can be read; false at the end. What cannot be read is passed over and counted.
    [[nodiscard]] bool Next(Card* card);

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

    bool TakeLine(std::string_view line, Card* card);
    void TakeOutside(std::string_view line, Card* card);
    void TakeInside(std::string_view line, Card* card);
    bool Continues(std::string_view line, const Card& card) const;
    bool TakeSoftBreak(Card* card);
    void Append(std::string_view line, Card* card);
    void TakeVersion(std::string_view line);
    void Begin(Card* card);
    void BeginInside(Card* card);
    bool End(Card* card);
    void TakeAgent(std::string_view line, Card* card);
    bool Build(Card* card);
    bool BuildLine(const RawLine& raw, Card* card);
    void Note(size_t line, const char* why);
    void Break(size_t line, const char* why);

    text::Lines m_lines;
    State m_state = State::Outside;
    Version m_version = Version::V30;
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

} // namespace vcard
