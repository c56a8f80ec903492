// The help as it is read from its file: blocks of text, each with its runs, links and anchors.
#pragma once

#include <string>
#include <vector>

namespace help {

struct Run {
    std::wstring text; // never empty; a line break inside a paragraph is L'\v'
    bool isBold = false;
    bool isItalic = false;
    bool isCode = false;
    std::wstring target; // what a link leads to, as written ("#Entry_Window"); empty: no link
};

enum class BlockKind { Heading, Paragraph, ListItem, TableRow, Preformatted };

constexpr int kMaxListDepth = 8;

struct Block {
    BlockKind kind = BlockKind::Paragraph;
    int level = 0;                          // heading: 1 to 6; list item: 1 to kMaxListDepth
    std::wstring marker;                    // list item: a bullet, or a number with its point
    bool isHeader = false;                  // table row: its cells are titles
    std::vector<std::vector<Run>> cells{1}; // one but for a table's row
    std::vector<std::wstring> anchors;      // that lead to its beginning

    std::wstring Text() const; // of all cells, a tab between them
};

struct Document {
    std::wstring title;
    std::vector<Block> blocks;
};

} // namespace help
