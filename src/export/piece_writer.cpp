#include "export/piece_writer.h"

#include <climits>

#include "util/held_file.h"

namespace {

constexpr int kFirstRoom = 4096; // bytes; most pieces are shorter

HANDLE OpenForWriting(const std::wstring& path)
{
    HANDLE file = INVALID_HANDLE_VALUE;
    const bool isOpen = DoWhileHeld(path, [&] {
        file = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
        return file != INVALID_HANDLE_VALUE;
    });
    return isOpen ? file : nullptr;
}

int ToAnsi(std::wstring_view text, char* bytes, int room)
{
    return WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), bytes, room, nullptr,
                               nullptr);
}

} // namespace

PieceWriter::PieceWriter(const std::wstring& path) : m_file(OpenForWriting(path)) {}

PieceWriter::~PieceWriter()
{
    if (m_file)
        SetEndOfFile(m_file.get());
}

bool PieceWriter::Write(std::wstring_view piece)
{
    if (piece.empty() || !m_file)
        return true;
    const int length = Convert(piece);
    if (!length)
        return false;
    DWORD written = 0;
    WriteFile(m_file.get(), m_bytes.get(), static_cast<DWORD>(length), &written, nullptr);
    FlushFileBuffers(m_file.get());
    return true;
}

// How many bytes of m_bytes are the piece; 0 when there was no memory for it.
int PieceWriter::Convert(std::wstring_view piece)
{
    if (piece.size() > INT_MAX || (!m_room && !MakeRoom(kFirstRoom)))
        return 0;
    const int length = ToAnsi(piece, m_bytes.get(), m_room);
    if (length)
        return length;
    const int needed = ToAnsi(piece, nullptr, 0);
    return MakeRoom(needed) ? ToAnsi(piece, m_bytes.get(), m_room) : 0;
}

bool PieceWriter::MakeRoom(int bytes)
{
    LocalBlock<char> block(static_cast<char*>(LocalAlloc(LMEM_FIXED, static_cast<SIZE_T>(bytes))));
    if (!block)
        return false;
    m_bytes = std::move(block);
    m_room = bytes;
    return true;
}
