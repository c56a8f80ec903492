// Cards of many shapes, and whether work on them grows with their size: a card of twice the size takes twice
// the work, whatever it is made of.
#pragma once

#include <functional>
#include <span>
#include <string>

#include "formats/vcard/contact.h"

namespace vcard {

struct Shape {
    const char* name;
    std::function<std::string(int)> line; // with its line end, by its number
};
std::span<const Shape> Shapes();

// The contact of a card of so many lines, besides the UID "1" and the beginning of a note.
Contact ReadLines(const Shape& shape, int lines);

// Does the work for 500 and for 1,000 lines and compares how much memory was asked for, and how often.
void ExpectLinear(const Shape& shape, const char* what, const std::function<void(int lines)>& work);

} // namespace vcard
