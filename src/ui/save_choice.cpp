#include "ui/save_choice.h"

#include <string>

#include "util/held_file.h"
#include "util/owners.h"

namespace {

std::wstring CurrentFolder()
{
    constexpr DWORD kLongest = 32768;
    std::wstring folder(kLongest, L'\0');
    const DWORD size = GetCurrentDirectoryW(kLongest, folder.data());
    folder.resize(size < kLongest ? size : 0);
    return folder;
}

// The dialog makes the folder of the chosen file the current one. A folder that is the current one cannot be
// renamed or deleted, nor its drive be taken out.
class ScopedCurrentFolder {
  public:
    ScopedCurrentFolder() : m_folder(CurrentFolder()) {}
    ~ScopedCurrentFolder()
    {
        if (!m_folder.empty())
            SetCurrentDirectoryW(m_folder.c_str());
    }
    ScopedCurrentFolder(const ScopedCurrentFolder&) = delete;
    ScopedCurrentFolder& operator=(const ScopedCurrentFolder&) = delete;

  private:
    std::wstring m_folder;
};

bool CanOpen(const wchar_t* path, DWORD disposition, DWORD flags)
{
    HANDLE file = CreateFileW(path, GENERIC_WRITE | (flags ? DELETE : 0), FILE_SHARE_READ | FILE_SHARE_WRITE,
                              nullptr, disposition, FILE_ATTRIBUTE_NORMAL | flags, nullptr);
    const UniqueKernelHandle owner(file == INVALID_HANDLE_VALUE ? nullptr : file);
    return owner != nullptr;
}

// One that is not there is made and goes again.
bool CanWrite(const wchar_t* path)
{
    return DoWhileHeld(path, [path] {
        return CanOpen(path, OPEN_EXISTING, 0) || (GetLastError() == ERROR_FILE_NOT_FOUND &&
                                                   CanOpen(path, CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE));
    });
}

} // namespace

bool ChooseFileToWrite(OPENFILENAMEW* choice)
{
    const ScopedCurrentFolder folder;
    while (GetSaveFileNameW(choice)) {
        if (CanWrite(choice->lpstrFile))
            return true;
        const std::wstring text = L"This file cannot be written:\n\n" + std::wstring(choice->lpstrFile) +
                                  L"\n\nPlease choose another name or folder.";
        MessageBoxW(choice->hwndOwner, text.c_str(), L"Warning", MB_OK | MB_ICONEXCLAMATION);
    }
    return false;
}
