#include "help/help_request.h"

#include <windows.h>

#include "help/page/ascii_text.h"

namespace help {

namespace {

constexpr const wchar_t* kHelpFile = L"pellwyn.htm";
constexpr std::wstring_view kOtherEnding = L".htp";

bool EndsAlike(std::wstring_view text, std::wstring_view end)
{
    return text.size() >= end.size() &&
           InSmallLetters(text.substr(text.size() - end.size())) == InSmallLetters(end);
}

std::wstring_view FileNameOf(std::wstring_view path)
{
    const size_t folder = path.find_last_of(L"\\/:");
    return folder == std::wstring_view::npos ? path : path.substr(folder + 1);
}

std::wstring Trimmed(std::wstring_view text)
{
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return std::wstring(text);
}

// Whether it is how this program is called: by its path, its name, or its name without the ending.
bool NamesProgram(std::wstring_view word, std::wstring_view program)
{
    const std::wstring name = InSmallLetters(FileNameOf(program));
    const std::wstring called = InSmallLetters(FileNameOf(word));
    return called == name || (EndsAlike(name, L".exe") && called == name.substr(0, name.size() - 4));
}

// A path with blanks stands without quotes where a program has given it as the application alone.
bool BeginsWithPath(std::wstring_view line, std::wstring_view program)
{
    return line.size() >= program.size() && !program.empty() &&
           InSmallLetters(line.substr(0, program.size())) == InSmallLetters(program) &&
           (line.size() == program.size() || IsBlank(line[program.size()]));
}

std::wstring_view WithoutProgram(std::wstring_view line, std::wstring_view program)
{
    if (BeginsWithPath(line, program))
        return line.substr(program.size());
    const bool isQuoted = !line.empty() && line.front() == L'"';
    const size_t begin = isQuoted ? 1 : 0;
    size_t end = begin;
    while (end < line.size() && (isQuoted ? line[end] != L'"' : !IsBlank(line[end])))
        ++end;
    if (!NamesProgram(line.substr(begin, end - begin), program))
        return line;
    return line.substr(std::min(line.size(), end + (isQuoted ? 1 : 0)));
}

} // namespace

HelpRequest RequestOfText(std::wstring_view text)
{
    size_t end = 0;
    while (end < text.size() && end < kMaxRequest && (text[end] >= L' ' || text[end] == L'\t'))
        ++end;
    std::wstring plain(text.substr(0, end));
    std::erase(plain, L'"');
    const size_t hash = plain.rfind(L'#');
    // A folder's name may have one.
    if (hash == std::wstring::npos || plain.find(L'\\', hash) != std::wstring::npos)
        return {Trimmed(plain), {}};
    return {Trimmed(std::wstring_view(plain).substr(0, hash)),
            Trimmed(std::wstring_view(plain).substr(hash + 1))};
}

HelpRequest RequestOf(std::wstring_view commandLine, std::wstring_view program)
{
    while (!commandLine.empty() && IsBlank(commandLine.front()))
        commandLine.remove_prefix(1);
    return RequestOfText(WithoutProgram(commandLine, program));
}

HelpRequest InFull(HelpRequest request)
{
    if (FileNameOf(request.file).size() == request.file.size())
        return request;
    std::wstring path(kMaxRequest, L'\0');
    const DWORD size = GetFullPathNameW(request.file.c_str(), kMaxRequest, path.data(), nullptr);
    if (size > 0 && size < kMaxRequest)
        request.file = path.substr(0, size);
    return request;
}

std::wstring TextOfRequest(const HelpRequest& request)
{
    return request.anchor.empty() ? request.file : request.file + L"#" + request.anchor;
}

std::vector<std::wstring> PlacesOf(const std::wstring& file, std::wstring_view program)
{
    std::wstring path = file.empty() ? kHelpFile : file;
    if (EndsAlike(path, kOtherEnding))
        path.back() = L'm';
    if (FileNameOf(path).size() != path.size())
        return {path};
    const std::wstring folder(program.substr(0, program.size() - FileNameOf(program).size()));
    return {folder + path, folder + L"help\\" + path};
}

} // namespace help
