#include "help/page/help_document.h"

namespace help {

std::wstring Block::Text() const
{
    std::wstring text;
    for (size_t cell = 0; cell < cells.size(); ++cell) {
        if (cell > 0)
            text += L'\t';
        for (const Run& run : cells[cell])
            text += run.text;
    }
    return text;
}

} // namespace help
