// One card of a vCard file as its content lines (RFC 6350, 3.3), unfolded, in UTF-8 and in the form of
// version 4.0, whatever version the file has; without BEGIN and END. What the lines mean is told by fields.h.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "formats/vcard/line_text.h"

namespace vcard {

class Card {
  public:
    // One content line; the views are the card's.
    struct Line {
        std::string_view whole;
        std::string_view group; // without its dot
        std::string_view name;
        std::string_view parameters; // from the first semicolon on
        std::string_view value;
    };

    size_t Count() const { return m_lines.size(); }
    Line At(size_t index) const
    {
        const Place& place = m_lines[index];
        return LineOf(std::string_view(m_text).substr(place.start, place.length), place.places);
    }
    static Line LineOf(std::string_view whole, const LinePlaces& places)
    {
        return {whole, whole.substr(0, places.name ? places.name - 1 : 0),
                whole.substr(places.name, places.parameters - places.name),
                whole.substr(places.parameters, places.colon - places.parameters),
                whole.substr(places.colon + 1)};
    }

    // How the reader fills it: Text() grows at its end, and lines are pieces of it.
    std::string& Text() { return m_text; }
    const std::string& Text() const { return m_text; }
    void AddLine(size_t start, size_t length, const LinePlaces& places)
    {
        m_lines.push_back({start, length, places});
    }
    // In the place of the line at index, which it may have been made of.
    void Replace(size_t index, const std::string& whole)
    {
        LinePlaces places{};
        if (!FindPlaces(whole, &places))
            return;
        m_lines[index] = {m_text.size(), whole.size(), places};
        m_text += whole;
    }
    // The lines for which it is true.
    void Remove(const std::vector<bool>& isUnwanted)
    {
        size_t kept = 0;
        for (size_t i = 0; i < m_lines.size(); ++i)
            if (!isUnwanted[i])
                m_lines[kept++] = m_lines[i];
        m_lines.resize(kept);
    }
    void Clear()
    {
        m_text.clear();
        m_lines.clear();
    }

  private:
    struct Place {
        size_t start;
        size_t length;
        LinePlaces places;
    };
    std::string m_text;
    std::vector<Place> m_lines;
};

} // namespace vcard
