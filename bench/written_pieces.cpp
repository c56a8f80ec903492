#include "written_pieces.h"

#include "measure.h"
#include "stores.h"

// The addresses under which the program finds the functions.
extern "C" {
extern decltype(&WriteFile) __imp_WriteFile;
extern decltype(&FlushFileBuffers) __imp_FlushFileBuffers;
}

namespace bench {

namespace {

std::vector<std::string>* g_pieces = nullptr;
decltype(&WriteFile) g_write = nullptr;
decltype(&FlushFileBuffers) g_flush = nullptr;

BOOL WINAPI KeepPiece(HANDLE, LPCVOID bytes, DWORD count, LPDWORD written, LPOVERLAPPED)
{
    if (g_pieces)
        g_pieces->emplace_back(static_cast<const char*>(bytes), count);
    *written = count;
    return TRUE;
}

BOOL WINAPI FlushNothing(HANDLE)
{
    return TRUE;
}

template <typename Function> Function Exchange(Function* import, Function instead)
{
    DWORD before = 0;
    if (!VirtualProtect(import, sizeof *import, PAGE_READWRITE, &before))
        Fail("an import cannot be watched");
    const Function original = *import;
    *import = instead;
    VirtualProtect(import, sizeof *import, before, &before);
    return original;
}

} // namespace

CallsNotMade::CallsNotMade(std::vector<std::string>* pieces)
{
    g_pieces = pieces;
    g_write = Exchange<decltype(&WriteFile)>(&__imp_WriteFile, KeepPiece);
    g_flush = Exchange<decltype(&FlushFileBuffers)>(&__imp_FlushFileBuffers, FlushNothing);
}

CallsNotMade::~CallsNotMade()
{
    Exchange(&__imp_WriteFile, g_write);
    Exchange(&__imp_FlushFileBuffers, g_flush);
}

BareFile::BareFile(const std::wstring& path)
    : m_path(path), m_file(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                       FILE_ATTRIBUTE_NORMAL, nullptr))
{
    if (m_file == INVALID_HANDLE_VALUE)
        Fail("a file cannot be written");
}

BareFile::~BareFile()
{
    CloseHandle(m_file);
    DeleteFileW(m_path.c_str());
}

double BareFile::TimePieces(const std::vector<std::string>& pieces, size_t from, size_t to)
{
    const Stopwatch watch;
    for (size_t i = from; i < to; ++i) {
        DWORD written = 0;
        WriteFile(m_file, pieces[i].data(), static_cast<DWORD>(pieces[i].size()), &written, nullptr);
        FlushFileBuffers(m_file);
    }
    return watch.Microseconds();
}

} // namespace bench
