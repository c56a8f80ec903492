#include "help/page/page_text.h"

#include <windows.h>

#include <algorithm>
#include <cstring>

namespace help {

namespace {

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

} // namespace help
