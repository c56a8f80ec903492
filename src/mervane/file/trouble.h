// Why something with the store was not done, and how a person is told.
#pragma once

#include <string>
#include <string_view>
#include <vector>

enum class StoreTrouble {
    None,         // it was done, or its answer is a true "no"
    Full,         // no room on the disk
    NoIdentifier, // left for another record
    ReadOnly,     // the file or its folder
    Locked,       // by another program, for longer than a write waits
    Damaged,      // the file's content
    NewerVersion, // only a newer program may use the file
    NotAStore,    // another program's file, or its tables are not ours
    IsFolder,     // where the file should be
    NoAccess,     // the system allows it to somebody else only
    OddLog,       // a log or journal beside the file, of which it cannot be told whether it is the file's
    SeveralNames, // hard links lead to the file: each name would have a log of its own
    OtherFile,    // another one has come into the place of the one that was opened, or was written over it
    NoMemory,
    Unreachable, // the drive, the network or the folder does not answer, or the store is not open
    TooLarge,    // what was to be stored
    Other,       // for none of these reasons
};

// A clause, "the disk is full", without a capital and a full stop; empty for None. file: what a person calls
// the file that it is of.
std::wstring ReasonText(StoreTrouble trouble, std::wstring_view file = L"the journal's file");

// Whether there is something that the person has typed and would fear for.
enum class TypedText { None, StillThere };

// Sentences for a box. what: what was not done, as a sentence without its full stop, "The entry was not
// saved". Then why, that nothing stored before is lost, and that what was typed is still there.
std::wstring NotDoneText(std::wstring_view what, StoreTrouble trouble, TypedText typed = TypedText::None);

// A file that was renamed: its path before, and now.
struct RenamedFile {
    std::wstring path;
    std::wstring keptAs;
};

// The same of a store that cannot be opened. path: the store's. setAside: what lay beside it and has another
// name now all the same.
std::wstring NotOpenedText(std::wstring_view path, StoreTrouble trouble,
                           const std::vector<RenamedFile>& setAside = {});

// Of what lay beside a store's file and was not taken for the store's.
std::wstring SetAsideText(const std::vector<RenamedFile>& files);

// Of a store whose file was not in its place when it was closed, and that has no whole copy. path: the
// store's.
std::wstring NotKeptText(const std::wstring& path, StoreTrouble trouble);

// Of a store that is not there any more, or an empty file by now.
std::wstring GoneText(std::wstring_view path, bool isEmpty);

namespace mervane {

// Of a question that can fail: a failure is not a "no".
enum class Answer { No, Yes, Failed };

constexpr Answer AnswerOf(bool yes)
{
    return yes ? Answer::Yes : Answer::No;
}

// Whether what could not be read may be read with better luck later. Damage stays, and so does what is larger
// than anything that is read.
constexpr bool MayPass(StoreTrouble trouble)
{
    return trouble != StoreTrouble::None && trouble != StoreTrouble::Damaged &&
           trouble != StoreTrouble::TooLarge;
}

// Whether it lies in what the file holds: the file was read, and would read the same again.
constexpr bool IsOfContent(StoreTrouble trouble)
{
    return trouble == StoreTrouble::Damaged || trouble == StoreTrouble::NotAStore ||
           trouble == StoreTrouble::NewerVersion || trouble == StoreTrouble::TooLarge;
}

} // namespace mervane
