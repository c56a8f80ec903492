#include "help/help_file.h"

#include <windows.h>

#include <algorithm>
#include <cstring>

#include "util/owners.h"

namespace help {

namespace {

UniqueKernelHandle OpenForReading(const std::wstring& path)
{
    HANDLE file =
        CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    return UniqueKernelHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

bool IsMissing(DWORD error)
{
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_INVALID_NAME ||
           error == ERROR_BAD_PATHNAME || error == ERROR_INVALID_DRIVE;
}

bool ReadBytes(HANDLE file, std::string& bytes)
{
    size_t read = 0;
    while (read < bytes.size()) {
        DWORD part = 0;
        if (!ReadFile(file, bytes.data() + read, static_cast<DWORD>(bytes.size() - read), &part, nullptr))
            return false;
        if (part == 0)
            break;
        read += part;
    }
    bytes.resize(read);
    return true;
}

bool IsInUtf16(std::string_view bytes)
{
    return bytes.substr(0, 2) == "\xFF\xFE";
}

std::wstring FromUtf8(std::string_view bytes)
{
    const int size = static_cast<int>(bytes.size());
    if (size == 0)
        return {};
    std::wstring text(static_cast<size_t>(MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, nullptr, 0)),
                      L'\0');
    MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, text.data(), static_cast<int>(text.size()));
    return text;
}

std::wstring FromUtf16(std::string_view bytes)
{
    std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
    return text;
}

} // namespace

bool IsText(std::string_view bytes)
{
    if (IsInUtf16(bytes))
        return true;
    const auto controls = std::count_if(bytes.begin(), bytes.end(), [](char byte) {
        return (byte >= 0 && byte < '\t') || (byte > '\r' && byte < ' ');
    });
    return static_cast<size_t>(controls) <= bytes.size() / 20;
}

std::wstring DecodeText(std::string_view bytes)
{
    std::wstring text = IsInUtf16(bytes)
                            ? FromUtf16(bytes.substr(2))
                            : FromUtf8(bytes.substr(bytes.substr(0, 3) == "\xEF\xBB\xBF" ? 3 : 0));
    for (wchar_t& character : text)
        if (character == L'\0' || (character < L' ' && (character < L'\t' || character > L'\r')))
            character = L'\uFFFD';
    return text;
}

HelpFile ReadHelpFile(const std::wstring& path)
{
    const UniqueKernelHandle file = OpenForReading(path);
    if (!file)
        return {IsMissing(GetLastError()) ? FileState::Missing : FileState::Unreadable, {}};
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file.get(), &size))
        return {FileState::Unreadable, {}};
    if (size.QuadPart > static_cast<LONGLONG>(kMaxHelpFile))
        return {FileState::TooLarge, {}};
    std::string bytes(static_cast<size_t>(size.QuadPart), '\0');
    if (!ReadBytes(file.get(), bytes))
        return {FileState::Unreadable, {}};
    if (!IsText(bytes))
        return {FileState::NoText, {}};
    return {FileState::Read, DecodeText(bytes)};
}

} // namespace help
