#include "mervane/file/trouble.h"

std::wstring ReasonText(StoreTrouble trouble, std::wstring_view file)
{
    const std::wstring it(file);
    switch (trouble) {
    case StoreTrouble::None: return {};
    case StoreTrouble::Full: return L"the disk is full";
    case StoreTrouble::NoIdentifier:
        return it + L" has no number left for another record; export the entries and begin a new file";
    case StoreTrouble::ReadOnly: return it + L" is read-only";
    case StoreTrouble::Locked: return L"another program keeps " + it + L" locked";
    case StoreTrouble::Damaged: return it + L" is damaged";
    case StoreTrouble::NewerVersion: return it + L" is one of a newer version of this program";
    case StoreTrouble::NotAStore: return L"the file is not a journal";
    case StoreTrouble::IsFolder: return L"a folder is where " + it + L" should be";
    case StoreTrouble::NoAccess: return L"the system does not allow the use of " + it;
    case StoreTrouble::OddLog:
        return L"a log lies beside " + it + L", and it cannot be told whether it belongs to it";
    case StoreTrouble::SeveralNames:
        return it + L" has a second name (a hard link), under which another program could write into it "
                    L"unseen; remove that name";
    case StoreTrouble::OtherFile: return it + L" was replaced or written over";
    case StoreTrouble::NoMemory: return L"there is not enough memory";
    case StoreTrouble::Unreachable: return it + L" cannot be reached";
    case StoreTrouble::TooLarge: return L"it is larger than " + it + L" can hold";
    case StoreTrouble::Other: return L"the system has refused it";
    }
    return {};
}

std::wstring NotDoneText(std::wstring_view what, StoreTrouble trouble, TypedText typed)
{
    std::wstring text(what);
    if (trouble != StoreTrouble::None)
        text += L": " + ReasonText(trouble);
    text += L".\n\nNothing that was stored before is lost";
    if (typed == TypedText::StillThere)
        text += L", and what you have typed is still there";
    return text + L".";
}

namespace {

// One paragraph for each, with an empty line behind it.
std::wstring NewNames(const std::vector<RenamedFile>& files)
{
    std::wstring text = files.size() == 1
                            ? L"Beside the journal's file lay one that does not belong to it:\n\n"
                            : L"Beside the journal's file lay some that do not belong to it:\n\n";
    for (const RenamedFile& file : files)
        text += file.path + L"\nis kept as\n" + file.keptAs + L"\n\n";
    return text;
}

constexpr const wchar_t* kKeepThat = L"If what you saved last is missing, keep that file: it may be in it.";

} // namespace

std::wstring NotOpenedText(std::wstring_view path, StoreTrouble trouble,
                           const std::vector<RenamedFile>& setAside)
{
    const std::wstring text = std::wstring(path) + L"\n\ncannot be opened: " + ReasonText(trouble) +
                              L".\n\nNothing in it has been changed.";
    return setAside.empty() ? text : text + L"\n\n" + NewNames(setAside) + kKeepThat;
}

std::wstring SetAsideText(const std::vector<RenamedFile>& files)
{
    return NewNames(files) + L"Nothing in the journal has been changed. " + kKeepThat;
}

std::wstring NotKeptText(const std::wstring& path, StoreTrouble trouble)
{
    return L"The journal's file was not in its place any more, and no whole copy of what was open could be "
           L"kept beside it: " +
           ReasonText(trouble) + L".\n\nWhat was saved last may be in\n\n" + path +
           L"-wal\n\nKeep that file, and look for the journal's own: the two belong together.";
}

std::wstring GoneText(std::wstring_view path, bool isEmpty)
{
    return std::wstring(path) + (isEmpty ? L"\n\nis empty: nothing is left in the journal's file."
                                         : L"\n\nis not there: the journal's file is gone.");
}
