#include "formats/vcard/reader.h"

#include "formats/vcard/labels.h"

namespace vcard {

namespace {

constexpr std::string_view kBegin = "BEGIN:VCARD";
constexpr std::string_view kEnd = "END:VCARD";
constexpr std::string_view kBase64 = "BASE64";

// An encoding stands within the first bytes of a line, if it has one. So much is looked at for each line that
// may go on with it, however long that has become.
constexpr size_t kHeadBytes = 1024;
// What a line costs beside its bytes, about.
constexpr size_t kLineCost = 256;

std::string_view Trimmed(std::string_view line)
{
    while (!line.empty() && (line.back() == ' ' || line.back() == '\t'))
        line.remove_suffix(1);
    return line;
}

bool Is(std::string_view line, std::string_view wanted)
{
    return line.size() >= wanted.size() && (line[0] | 0x20) == (wanted[0] | 0x20) &&
           EqualsNoCase(Trimmed(line), wanted);
}

bool IsFolded(std::string_view line)
{
    return !line.empty() && (line[0] == ' ' || line[0] == '\t');
}

std::string_view ParametersOf(std::string_view line)
{
    LinePlaces places;
    line = line.substr(0, kHeadBytes);
    return FindPlaces(line, &places) ? line.substr(places.parameters, places.colon - places.parameters)
                                     : std::string_view();
}

// Whether a line is in an encoding: "BASE64", which is also called "B", or "QUOTED-PRINTABLE". Only before
// version 4.0 it may stand there without a name.
bool IsEncoded(std::string_view line, Version version, std::string_view encoding)
{
    Parameter parameter;
    for (Parameters all(ParametersOf(line)); all.Next(&parameter);) {
        const bool isNamed = EqualsNoCase(parameter.name, "ENCODING");
        if (!isNamed && (!parameter.name.empty() || version == Version::V40))
            continue;
        const std::string_view word = WithoutQuotes(parameter.value);
        if (EqualsNoCase(word, encoding) || (isNamed && encoding == kBase64 && EqualsNoCase(word, "B")))
            return true;
    }
    return false;
}

} // namespace

void Reader::Note(size_t line, const char* why)
{
    if (m_unreadable++ == 0) {
        m_errorLine = line;
        m_errorText = why;
    }
}

void Reader::Break(size_t line, const char* why)
{
    Note(line, why);
    m_state = State::Skipping;
}

bool Reader::Next(Card* card)
{
    std::string_view line;
    while (m_lines.Next(&line))
        if (TakeLine(line, card))
            return true;
    if (m_state == State::Inside)
        Break(m_lines.Number(), "the file ends before the card does");
    m_state = State::Outside;
    return false;
}

// true when the line ends a card that can be read.
bool Reader::TakeLine(std::string_view line, Card* card)
{
    switch (m_state) {
    case State::Outside:
    case State::Stray: TakeOutside(line, card); return false;
    case State::Inside:
        if (m_agentDepth == 0 && Is(line, kEnd))
            return End(card);
        if (m_agentDepth)
            TakeAgent(line, card);
        else
            TakeInside(line, card);
        return false;
    case State::Skipping:
        if (Is(line, kBegin))
            Begin(card);
        else if (Is(line, kEnd))
            m_state = State::Outside;
        return false;
    }
    return false;
}

void Reader::TakeOutside(std::string_view line, Card* card)
{
    if (Is(line, kBegin))
        return Begin(card);
    if (Trimmed(line).empty() || m_state == State::Stray)
        return;
    Note(m_lines.Number(), "no card begins here");
    m_state = State::Stray;
}

void Reader::Begin(Card* card)
{
    m_state = State::Inside;
    m_version = Version::V30;
    m_unknownVersion = false;
    m_hasLabels = false;
    m_agentDepth = 0;
    m_cardLine = m_lines.Number();
    m_raw.clear();
    card->Clear();
}

// Whether a line goes on with the one before.
bool Reader::Continues(std::string_view line, const Card& card) const
{
    if (m_raw.empty())
        return false;
    const std::string_view last = std::string_view(card.Text()).substr(m_raw.back().start);
    // Pictures in base 64 come with lines that are not indented, too.
    return IsFolded(line) || (!Trimmed(line).empty() && line.find(':') == std::string_view::npos &&
                              IsEncoded(last, m_version, kBase64));
}

void Reader::TakeInside(std::string_view line, Card* card)
{
    if (TakeSoftBreak(card))
        return Append(line, card);
    if (Continues(line, *card)) {
        // Version 2.1 folds where there is a blank, which it keeps.
        if (IsFolded(line) && m_version != Version::V21)
            line.remove_prefix(1);
        return Append(line, card);
    }
    if (Trimmed(line).empty())
        return;
    if (Is(line, kBegin))
        return BeginInside(card);
    TakeVersion(line);
    const size_t start = card->Text().size();
    m_raw.push_back({start, start, m_lines.Number()});
    Append(line, card);
}

// Whether the line so far ends with quoted-printable's mark that it goes on, which is taken off.
bool Reader::TakeSoftBreak(Card* card)
{
    std::string& text = card->Text();
    if (m_raw.empty() || !text.ends_with('=') ||
        !IsEncoded(std::string_view(text).substr(m_raw.back().start), m_version, "QUOTED-PRINTABLE"))
        return false;
    text.pop_back();
    m_raw.back().end = text.size();
    return true;
}

void Reader::Append(std::string_view line, Card* card)
{
    std::string& text = card->Text();
    text.append(line);
    m_raw.back().end = text.size();
    if (text.size() + m_raw.size() * kLineCost >= kLargestCard)
        Break(m_lines.Number(), "the card is too large");
}

void Reader::TakeVersion(std::string_view line)
{
    constexpr std::string_view kVersion = "VERSION:";
    if ((line[0] | 0x20) != 'v' || !StartsWithNoCase(line, kVersion))
        return;
    std::string_view version = Trimmed(line.substr(kVersion.size()));
    while (IsFolded(version))
        version.remove_prefix(1);
    if (version == "2.1")
        m_version = Version::V21;
    else if (version == "3.0")
        m_version = Version::V30;
    else if (version == "4.0")
        m_version = Version::V40;
    else
        m_unknownVersion = true;
}

// A card that begins inside another one: that one's agent, whom version 2.1 writes so, or the next card after
// one that lacks its end.
void Reader::BeginInside(Card* card)
{
    const std::string_view last =
        m_raw.empty() ? std::string_view() : std::string_view(card->Text()).substr(m_raw.back().start);
    if (StartsWithNoCase(last, "AGENT") && last.ends_with(':')) {
        m_agentDepth = 1;
        return Append(kBegin, card);
    }
    Note(m_lines.Number(), "a card begins before the one before has ended");
    Begin(card);
}

// An agent's card goes, as version 3.0 writes it, into the value of the line.
void Reader::TakeAgent(std::string_view line, Card* card)
{
    m_agentDepth += Is(line, kBegin) ? 1 : Is(line, kEnd) ? -1 : 0;
    std::string escaped;
    AppendEscaped(escaped, "\n");
    AppendEscaped(escaped, line);
    Append(escaped, card);
}

bool Reader::End(Card* card)
{
    m_state = State::Outside;
    (void)TakeSoftBreak(card); // with nothing to go on with
    if (m_unknownVersion) {
        Note(m_cardLine, "the card's version is not known");
        return false;
    }
    return Build(card);
}

bool Reader::Build(Card* card)
{
    const size_t zero = card->Text().find('\0');
    for (const RawLine& raw : m_raw) {
        if (zero < raw.end) {
            Note(raw.number, "the line has bytes that are no text");
            return false;
        }
        if (!BuildLine(raw, card)) {
            Note(raw.number, "the line is none of a card's");
            return false;
        }
    }
    if (m_hasLabels)
        JoinLabels(card);
    return true;
}

bool Reader::BuildLine(const RawLine& raw, Card* card)
{
    LinePlaces places;
    std::string& text = card->Text();
    const std::string_view whole = std::string_view(text).substr(raw.start, raw.end - raw.start);
    if (!FindPlaces(whole, &places))
        return false;
    const Card::Line line = Card::LineOf(whole, places);
    m_hasLabels |= m_version != Version::V40 && EqualsNoCase(line.name, "LABEL");
    if (IsCurrent(line, m_version, &m_upgraded)) {
        card->AddLine(raw.start, whole.size(), places);
        return true;
    }
    if (!FindPlaces(m_upgraded, &places))
        return false;
    card->AddLine(text.size(), m_upgraded.size(), places);
    text += m_upgraded;
    return true;
}

} // namespace vcard
