#include "formats/text/byte_file.h"

#include "util/held_file.h"

namespace text {

namespace {

constexpr int kNames = 10; // of unfinished files that are tried; after a crash one may be there

HANDLE OrNull(HANDLE file)
{
    return file == INVALID_HANDLE_VALUE ? nullptr : file;
}

} // namespace

bool InputFile::Open(const std::wstring& path)
{
    m_file.reset(OrNull(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr)));
    LARGE_INTEGER size;
    if (m_file && GetFileSizeEx(m_file.get(), &size))
        m_size = static_cast<uint64_t>(size.QuadPart);
    return m_file != nullptr;
}

size_t InputFile::Read(char* buffer, size_t size)
{
    constexpr size_t kMost = size_t{1} << 20;
    DWORD read = 0;
    if (!ReadFile(m_file.get(), buffer, static_cast<DWORD>(size < kMost ? size : kMost), &read, nullptr)) {
        m_failed = true;
        return 0;
    }
    m_position += read;
    return read;
}

OutputFile::~OutputFile()
{
    Discard();
}

void OutputFile::Discard()
{
    if (!m_file)
        return;
    m_file.reset();
    DeleteHeldFile(m_unfinishedPath);
}

bool OutputFile::Check(bool succeeded)
{
    m_error = succeeded ? 0 : GetLastError();
    return succeeded;
}

bool OutputFile::Open(const std::wstring& path)
{
    m_path = path;
    for (int attempt = 0; attempt < kNames; ++attempt) {
        m_unfinishedPath = path + L".part" + (attempt ? std::to_wstring(attempt) : L"");
        m_file.reset(OrNull(CreateFileW(m_unfinishedPath.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                        FILE_ATTRIBUTE_NORMAL, nullptr)));
        if (Check(m_file != nullptr) || m_error != ERROR_FILE_EXISTS)
            break;
    }
    return m_file != nullptr;
}

bool OutputFile::Write(std::string_view bytes)
{
    DWORD written = 0;
    if (!Check(WriteFile(m_file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr)))
        return false;
    m_error = written == bytes.size() ? 0 : ERROR_DISK_FULL;
    return m_error == 0;
}

bool OutputFile::TakePlace()
{
    if (Check(MoveHeldFile(m_unfinishedPath, m_path, MOVEFILE_REPLACE_EXISTING)))
        return true;
    // A file that is held open is told from one that may not be written only by asking for it.
    const DWORD error = m_error;
    const UniqueKernelHandle place(
        OrNull(CreateFileW(m_path.c_str(), DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                           nullptr, OPEN_EXISTING, 0, nullptr)));
    if (Check(place != nullptr) || m_error != ERROR_SHARING_VIOLATION)
        m_error = error;
    return false;
}

bool OutputFile::Finish()
{
    if (!Check(FlushFileBuffers(m_file.get())))
        return false;
    m_file.reset();
    if (TakePlace())
        return true;
    DeleteHeldFile(m_unfinishedPath);
    return false;
}

} // namespace text
