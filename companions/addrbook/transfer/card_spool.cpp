#include "addrbook/transfer/card_spool.h"

#include <windows.h>

#include <algorithm>
#include <cstring>

namespace addrbook {

namespace {

constexpr size_t kWindowBytes = size_t{256} << 10;

void AppendText(std::string& out, const std::string& text)
{
    const auto size = static_cast<uint32_t>(text.size());
    out.append(reinterpret_cast<const char*>(&size), sizeof size).append(text);
}

bool WriteAll(HANDLE file, std::string_view bytes)
{
    DWORD written = 0;
    return WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
           written == bytes.size();
}

} // namespace

// The file goes with its handle, whatever ends the program.
bool CardSpool::OpenFile()
{
    wchar_t folder[MAX_PATH + 1], path[MAX_PATH + 1];
    const DWORD length = GetTempPathW(MAX_PATH + 1, folder);
    if (length == 0 || length > MAX_PATH || !GetTempFileNameW(folder, L"vcf", 0, path))
        return false;
    HANDLE file = CreateFileW(path, GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        DeleteFileW(path);
        return false;
    }
    m_file.reset(file);
    return true;
}

bool CardSpool::MoveToFile()
{
    if ((!m_file && !OpenFile()) || !WriteAll(m_file.get(), m_memory))
        return false;
    m_fileSize += m_memory.size();
    m_memory.clear();
    return true;
}

bool CardSpool::Put(const vcard::ImportedCard& card)
{
    for (const std::string& text : card.contact.texts)
        AppendText(m_memory, text);
    AppendText(m_memory, card.formattedName);
    m_memory += card.hasFileAs ? '\1' : '\0';
    m_failed = m_memory.size() >= kInMemory && !MoveToFile();
    return !m_failed;
}

void CardSpool::Rewind()
{
    m_position = 0;
}

bool CardSpool::FillWindow(uint64_t position)
{
    LARGE_INTEGER place;
    place.QuadPart = static_cast<LONGLONG>(position);
    DWORD read = 0;
    m_window.resize(static_cast<size_t>(std::min<uint64_t>(kWindowBytes, m_fileSize - position)));
    m_windowStart = position;
    if (SetFilePointerEx(m_file.get(), place, nullptr, FILE_BEGIN) &&
        ReadFile(m_file.get(), m_window.data(), static_cast<DWORD>(m_window.size()), &read, nullptr) &&
        read == m_window.size())
        return true;
    m_window.clear();
    m_failed = true;
    return false;
}

bool CardSpool::Read(char* bytes, size_t size)
{
    while (size) {
        const bool isInFile = m_position < m_fileSize;
        const bool isInWindow = m_position >= m_windowStart && m_position - m_windowStart < m_window.size();
        if (isInFile && !isInWindow && !FillWindow(m_position))
            return false;
        const std::string& source = isInFile ? m_window : m_memory;
        const auto place = static_cast<size_t>(m_position - (isInFile ? m_windowStart : m_fileSize));
        const size_t count = std::min(size, source.size() - std::min(place, source.size()));
        if (count == 0)
            return false;
        memcpy(bytes, source.data() + place, count);
        bytes += count;
        size -= count;
        m_position += count;
    }
    return true;
}

bool CardSpool::Next(vcard::ImportedCard* card)
{
    const auto readText = [this](std::string* text) {
        uint32_t size = 0;
        if (!Read(reinterpret_cast<char*>(&size), sizeof size) || size > Size() - m_position)
            return false;
        text->resize(size);
        return Read(text->data(), size);
    };
    for (std::string& text : card->contact.texts)
        if (!readText(&text))
            return false;
    char hasFileAs = 0;
    if (!readText(&card->formattedName) || !Read(&hasFileAs, 1))
        return false;
    card->hasFileAs = hasFileAs != 0;
    return true;
}

} // namespace addrbook
