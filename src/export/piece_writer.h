// PieceWriter: the file that an export writes. Each piece of text goes to the disk by itself, so that the
// file is complete up to the last piece at every moment.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "util/owners.h"

class PieceWriter {
  public:
    // Writes over the file from its start. A file that cannot be opened swallows every piece.
    explicit PieceWriter(const std::wstring& path);
    // Cuts the file behind what was written, so that nothing is left of a longer one, and closes it.
    ~PieceWriter();
    PieceWriter(const PieceWriter&) = delete;
    PieceWriter& operator=(const PieceWriter&) = delete;

    // Writes a piece in the ANSI code page, without a terminator, with a write and a flush of its own; the
    // empty piece takes neither. A failed write is not reported. False only when there was no memory to
    // convert the piece, which is not written then.
    [[nodiscard]] bool Write(std::wstring_view piece);

  private:
    int Convert(std::wstring_view piece);
    bool MakeRoom(int bytes);

    UniqueKernelHandle m_file; // null when it could not be opened
    LocalBlock<char> m_bytes;  // of the piece being written
    int m_room = 0;
};
