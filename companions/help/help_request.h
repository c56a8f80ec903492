// What the help is asked for: "pellwyn.htm#Entry_Window", which is the whole command line when a program
// starts the viewer; a person who starts it from a shell has the program's name in front.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace help {

constexpr size_t kMaxRequest = 32767; // characters, the longest command line

struct HelpRequest {
    std::wstring file;   // as asked for; empty: the help itself
    std::wstring anchor; // empty: its beginning
};

// program is this program's full path. Quotes count for nothing, so that they may stand around a path with
// blanks or around all of it; a control character ends the line.
HelpRequest RequestOf(std::wstring_view commandLine, std::wstring_view program);

// The same with a file that is named from this program's current folder named in full: the program that takes
// the request over has a folder of its own.
HelpRequest InFull(HelpRequest request);

// The request in the form of a command line without a program.
std::wstring TextOfRequest(const HelpRequest& request);
HelpRequest RequestOfText(std::wstring_view text);

// Where the file may lie, in the order in which to look: a file named without a folder beside the program and
// in the folder "help" there. The ending ".htp" is another name for ".htm".
std::vector<std::wstring> PlacesOf(const std::wstring& file, std::wstring_view program);

} // namespace help
