// Where the help's text goes on paper: lines and pages, of any text measured in any unit.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "help/page/help_document.h"

namespace help {

struct PrintLook {
    int points = 10;
    bool isBold = false;
    bool isItalic = false;
    bool isCode = false;
    bool operator==(const PrintLook&) const = default;
};

struct PrintSize {
    int width = 0;
    int height = 0; // of a line
};
using MeasureText = std::function<PrintSize(const std::wstring& text, const PrintLook& look)>;

// The part of a page that is printed on, and the unit: what `point` points of type measure.
struct PrintArea {
    int left = 0;
    int top = 0;
    int width = 1;
    int height = 1;
    int inch = 72;
};

struct PlacedText {
    int page = 0; // from 0
    int x = 0;
    int y = 0; // of its top
    std::wstring text;
    PrintLook look;
};

// In the order of pages and lines. A word that is wider than the area is broken within; a heading is not left
// alone at the foot of a page. At least one line goes on each page, however small that is.
std::vector<PlacedText> LayOut(const std::vector<Block>& blocks, const PrintArea& area,
                               const MeasureText& measure);

} // namespace help
