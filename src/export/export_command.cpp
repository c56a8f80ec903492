#include "export/export_command.h"

#include <commdlg.h>
#include <shlobj.h>

#include <optional>
#include <string>

#include "export/export_dialog.h"
#include "ui/save_choice.h"

namespace {

constexpr DWORD kPathSize = 260; // with the terminator
constexpr DWORD kTextFilter = 2; // the place of the text files among the filters

struct ExportFile {
    std::wstring path;
    ExportFormat format;
};

// The user's own documents; empty when the system does not tell.
std::wstring DocumentsFolder()
{
    wchar_t folder[MAX_PATH] = L"";
    return SHGetFolderPathW(nullptr, CSIDL_PERSONAL, nullptr, SHGFP_TYPE_CURRENT, folder) == S_OK ? folder
                                                                                                  : L"";
}

// Nothing when the user has cancelled.
std::optional<ExportFile> ChooseFile(HWND owner)
{
    wchar_t path[kPathSize] = L"";
    const std::wstring folder = DocumentsFolder();
    OPENFILENAMEW choice{};
    choice.lStructSize = sizeof choice;
    choice.hwndOwner = owner;
    choice.lpstrFilter = L"Common Separated Values\0*.CSV\0Text Files\0*.TXT\0";
    choice.nFilterIndex = 1;
    choice.lpstrFile = path;
    choice.nMaxFile = kPathSize;
    choice.lpstrInitialDir = folder.c_str();
    choice.Flags = OFN_OVERWRITEPROMPT;
    if (!ChooseFileToWrite(&choice))
        return std::nullopt;
    return ExportFile{path, choice.nFilterIndex == kTextFilter ? ExportFormat::SimpleText
                                                               : ExportFormat::CommaSeparated};
}

} // namespace

void ExportEntries(HWND owner, EntryList& list)
{
    if (const std::optional<ExportFile> file = ChooseFile(owner))
        RunExportDialog(owner, file->path, file->format,
                        {list.Columns(), list.Selection(), list.GetSession()});
}
