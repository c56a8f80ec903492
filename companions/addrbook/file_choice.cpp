#include "addrbook/file_choice.h"

#include <commdlg.h>

#include "ui/save_choice.h"

namespace addrbook {

namespace {

constexpr DWORD kPathSize = 32768;

OPENFILENAMEW ChoiceOf(HWND owner, std::wstring* path, DWORD flags)
{
    path->resize(kPathSize);
    OPENFILENAMEW choice{};
    choice.lStructSize = sizeof choice;
    choice.hwndOwner = owner;
    choice.lpstrFilter = L"vCard files (*.vcf)\0*.vcf\0All files (*.*)\0*.*\0";
    choice.lpstrFile = path->data();
    choice.nMaxFile = kPathSize;
    choice.lpstrDefExt = L"vcf";
    choice.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST | flags;
    return choice;
}

} // namespace

std::wstring ChooseFileToOpen(HWND owner)
{
    std::wstring path;
    OPENFILENAMEW choice = ChoiceOf(owner, &path, OFN_FILEMUSTEXIST);
    choice.lpstrTitle = L"Import";
    return GetOpenFileNameW(&choice) ? std::wstring(path.c_str()) : std::wstring();
}

std::wstring ChooseFileToSave(HWND owner)
{
    std::wstring path(L"contacts.vcf");
    OPENFILENAMEW choice = ChoiceOf(owner, &path, OFN_OVERWRITEPROMPT | OFN_NOREADONLYRETURN);
    choice.lpstrTitle = L"Export";
    return ChooseFileToWrite(&choice) ? std::wstring(path.c_str()) : std::wstring();
}

} // namespace addrbook
