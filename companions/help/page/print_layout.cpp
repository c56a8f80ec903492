#include "help/page/print_layout.h"

#include <algorithm>
#include <cstdint>

#include "help/page/table_columns.h"

namespace help {

namespace {

constexpr int kTextPoints = 10;
constexpr int kHeadingPoints[] = {16, 13, 11, 10, 10, 10};

// Lengths in hundredths of an inch.
constexpr int kIndent = 25;
constexpr int kMarkerWidth = 18;
constexpr int kAfterBlock = 8;
constexpr int kAfterRow = 3;
constexpr int kBeforeHeading = 12;

struct Piece {
    std::wstring text; // a word with the blanks behind it, or "\v" alone
    PrintLook look;
};

PrintLook LookOf(const Block& block, const Run& run)
{
    PrintLook look;
    const bool isHeading = block.kind == BlockKind::Heading;
    look.points = isHeading ? kHeadingPoints[std::clamp(block.level, 1, 6) - 1] : kTextPoints;
    look.isBold = run.isBold || isHeading || block.isHeader;
    look.isItalic = run.isItalic;
    look.isCode = run.isCode || block.kind == BlockKind::Preformatted;
    return look;
}

std::vector<Piece> PiecesOf(const std::wstring& text, const PrintLook& look)
{
    std::vector<Piece> pieces;
    for (size_t begin = 0; begin < text.size();) {
        size_t end = begin + 1;
        if (text[begin] != L'\v') {
            end = std::min(text.find_first_of(L" \v", begin), text.size());
            while (end < text.size() && text[end] == L' ')
                ++end;
        }
        pieces.push_back({text.substr(begin, end - begin), look});
        begin = end;
    }
    return pieces;
}

// In twips.
int TextWidthOf(const PrintArea& area)
{
    return static_cast<int>(int64_t{area.width} * kTwipsPerInch / std::max(1, area.inch));
}

// Puts pieces of text one after the other into lines between two edges, and lines onto pages.
class Layout {
  public:
    Layout(const PrintArea& area, const MeasureText& measure)
        : m_area(area), m_measure(measure), m_left(area.left), m_x(area.left), m_y(area.top)
    {}

    void Add(const Block& block, int firstColumn, bool isFollowed);
    std::vector<PlacedText> Take() { return std::move(m_placed); }

  private:
    int Length(int hundredths) const { return m_area.inch * hundredths / 100; }
    int Right() const { return m_area.left + m_area.width; }
    int Bottom() const { return m_area.top + m_area.height; }
    int ColumnOf(size_t cell, int firstColumn) const;
    void AddCell(const Block& block, size_t cell, int firstColumn);
    void AddPiece(const Piece& piece);
    void AddBroken(const Piece& piece);
    void Put(const std::wstring& text, const PrintLook& look, const PrintSize& size);
    void EndLine(int lineHeight);
    void GoDown(int height) { m_y += height; }

    const PrintArea& m_area;
    const MeasureText& m_measure;
    std::vector<PlacedText> m_placed;
    size_t m_lineBegins = 0; // of m_placed
    int m_left;
    int m_x;
    int m_y;
    int m_page = 0;
    int m_height = 0; // of the line
};

void Layout::Add(const Block& block, int firstColumn, bool isFollowed)
{
    const PrintSize line = m_measure(L"x", LookOf(block, {}));
    const bool isHeading = block.kind == BlockKind::Heading;
    if (isHeading && m_y > m_area.top)
        GoDown(Length(kBeforeHeading));
    const int needed = isHeading && isFollowed ? 3 * line.height : line.height;
    if (m_y > m_area.top && m_y + needed > Bottom()) {
        ++m_page;
        m_y = m_area.top;
    }
    m_left = m_x = m_area.left;
    if (block.kind == BlockKind::ListItem) {
        m_x += Length(kIndent * (block.level - 1));
        m_left = m_x + Length(kMarkerWidth);
        Put(block.marker, LookOf(block, {}), m_measure(block.marker, LookOf(block, {})));
        m_x = std::max(m_x, m_left);
    }
    for (size_t cell = 0; cell < block.cells.size(); ++cell)
        AddCell(block, cell, firstColumn);
    EndLine(line.height);
    GoDown(Length(block.kind == BlockKind::TableRow ? kAfterRow : kAfterBlock));
}

// On a narrow page all begin in its left half.
int Layout::ColumnOf(size_t cell, int firstColumn) const
{
    const int twips = firstColumn + kOtherCells * static_cast<int>(cell - 1);
    return m_area.left + std::min(m_area.inch * twips / kTwipsPerInch, m_area.width / 2);
}

// A cell stands at its column, or below there when those before it reach too far, and wraps below itself.
void Layout::AddCell(const Block& block, size_t cell, int firstColumn)
{
    if (cell > 0) {
        m_left = ColumnOf(cell, firstColumn);
        const PrintSize blank = m_measure(L" ", LookOf(block, {}));
        if (m_x + blank.width > m_left)
            EndLine(blank.height);
        m_x = m_left;
    }
    for (const Run& run : block.cells[cell])
        for (const Piece& piece : PiecesOf(run.text, LookOf(block, run)))
            AddPiece(piece);
}

void Layout::AddPiece(const Piece& piece)
{
    if (piece.text == L"\v")
        return EndLine(m_measure(L"x", piece.look).height);
    const std::wstring word = piece.text.substr(0, piece.text.find_last_not_of(L' ') + 1);
    const PrintSize size = m_measure(word, piece.look);
    if (m_x + size.width > Right() && m_x > m_left)
        EndLine(size.height);
    if (m_x + size.width > Right())
        AddBroken({word, piece.look});
    else
        Put(word, piece.look, size);
    m_x += m_measure(piece.text, piece.look).width - size.width;
}

void Layout::AddBroken(const Piece& piece)
{
    for (const wchar_t character : piece.text) {
        const std::wstring text(1, character);
        const PrintSize size = m_measure(text, piece.look);
        if (m_x + size.width > Right() && m_x > m_left)
            EndLine(size.height);
        Put(text, piece.look, size);
    }
}

void Layout::Put(const std::wstring& text, const PrintLook& look, const PrintSize& size)
{
    if (!text.empty())
        m_placed.push_back({m_page, m_x, m_y, text, look});
    m_x += size.width;
    m_height = std::max(m_height, size.height);
}

// Only at its end a line's height is known; one that does not fit goes onto the next page as a whole.
void Layout::EndLine(int lineHeight)
{
    const int height = std::max(m_height, lineHeight);
    if (m_y > m_area.top && m_y + height > Bottom()) {
        ++m_page;
        m_y = m_area.top;
        for (size_t place = m_lineBegins; place < m_placed.size(); ++place) {
            m_placed[place].page = m_page;
            m_placed[place].y = m_y;
        }
    }
    m_lineBegins = m_placed.size();
    m_x = m_left;
    m_y += height;
    m_height = 0;
}

} // namespace

std::vector<PlacedText> LayOut(const std::vector<Block>& blocks, const PrintArea& area,
                               const MeasureText& measure)
{
    Layout layout(area, measure);
    const std::vector<int> firstColumns = FirstColumnsOf(blocks, WidestColumn(TextWidthOf(area)));
    for (size_t block = 0; block < blocks.size(); ++block)
        layout.Add(blocks[block], firstColumns[block], block + 1 < blocks.size());
    return layout.Take();
}

} // namespace help
