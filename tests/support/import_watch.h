// Watches what the program asks of the system: its calls of one function of a system library go through a
// function of the test's instead.
#pragma once

#include <windows.h>
#include <commctrl.h>
#include <commdlg.h>
#include <shellapi.h>

#include <gtest/gtest.h>

// The addresses under which the program finds the functions.
extern "C" {
extern decltype(&AbortDoc) __imp_AbortDoc;
extern decltype(&CommDlgExtendedError) __imp_CommDlgExtendedError;
extern decltype(&CopyFileW) __imp_CopyFileW;
extern decltype(&CreateFileW) __imp_CreateFileW;
extern decltype(&CreateMutexW) __imp_CreateMutexW;
extern decltype(&CreateProcessW) __imp_CreateProcessW;
extern decltype(&CreateWindowExW) __imp_CreateWindowExW;
extern decltype(&DeleteFileW) __imp_DeleteFileW;
extern decltype(&EndDialog) __imp_EndDialog;
extern decltype(&EndDoc) __imp_EndDoc;
extern decltype(&EndPage) __imp_EndPage;
extern decltype(&FindFirstFileW) __imp_FindFirstFileW;
extern decltype(&FindNextFileW) __imp_FindNextFileW;
extern decltype(&FlushFileBuffers) __imp_FlushFileBuffers;
extern decltype(&FormatMessageW) __imp_FormatMessageW;
extern decltype(&GetDateFormatW) __imp_GetDateFormatW;
extern decltype(&GetDriveTypeW) __imp_GetDriveTypeW;
extern decltype(&GetFileAttributesExW) __imp_GetFileAttributesExW;
extern decltype(&GetFileAttributesW) __imp_GetFileAttributesW;
extern decltype(&GetFileInformationByHandle) __imp_GetFileInformationByHandle;
extern decltype(&GetFileInformationByHandleEx) __imp_GetFileInformationByHandleEx;
extern decltype(&GetFileSizeEx) __imp_GetFileSizeEx;
extern decltype(&GetLocaleInfoW) __imp_GetLocaleInfoW;
extern decltype(&GetLocalTime) __imp_GetLocalTime;
extern decltype(&GetSaveFileNameW) __imp_GetSaveFileNameW;
extern decltype(&GetTempFileNameW) __imp_GetTempFileNameW;
extern decltype(&GetVolumeInformationByHandleW) __imp_GetVolumeInformationByHandleW;
extern decltype(&GetWindowTextW) __imp_GetWindowTextW;
extern decltype(&InitCommonControlsEx) __imp_InitCommonControlsEx;
extern decltype(&KillTimer) __imp_KillTimer;
extern decltype(&LocalAlloc) __imp_LocalAlloc;
extern decltype(&LocalFree) __imp_LocalFree;
extern decltype(&MessageBeep) __imp_MessageBeep;
extern decltype(&MessageBoxW) __imp_MessageBoxW;
extern decltype(&MoveFileExW) __imp_MoveFileExW;
extern decltype(&MoveFileW) __imp_MoveFileW;
extern decltype(&PrintDlgW) __imp_PrintDlgW;
extern decltype(&ReadFile) __imp_ReadFile;
extern decltype(&RegCreateKeyExW) __imp_RegCreateKeyExW;
extern decltype(&RegisterClassW) __imp_RegisterClassW;
extern decltype(&RegOpenKeyExW) __imp_RegOpenKeyExW;
extern decltype(&RegQueryValueExW) __imp_RegQueryValueExW;
extern decltype(&RegSetValueExW) __imp_RegSetValueExW;
extern decltype(&ReleaseMutex) __imp_ReleaseMutex;
extern decltype(&SendMessageW) __imp_SendMessageW;
extern decltype(&SetCursor) __imp_SetCursor;
extern decltype(&SetFileAttributesW) __imp_SetFileAttributesW;
extern decltype(&SetFilePointerEx) __imp_SetFilePointerEx;
extern decltype(&SetFileTime) __imp_SetFileTime;
extern decltype(&SetTimer) __imp_SetTimer;
extern decltype(&SetWindowTextW) __imp_SetWindowTextW;
extern decltype(&ShellExecuteExW) __imp_ShellExecuteExW;
extern decltype(&ShowWindow) __imp_ShowWindow;
extern decltype(&ShutdownBlockReasonCreate) __imp_ShutdownBlockReasonCreate;
extern decltype(&ShutdownBlockReasonDestroy) __imp_ShutdownBlockReasonDestroy;
extern decltype(&Sleep) __imp_Sleep;
extern decltype(&StartDocW) __imp_StartDocW;
extern decltype(&StartPage) __imp_StartPage;
extern decltype(&TextOutW) __imp_TextOutW;
extern decltype(&UpdateWindow) __imp_UpdateWindow;
extern decltype(&WaitForSingleObject) __imp_WaitForSingleObject;
extern decltype(&WriteFile) __imp_WriteFile;
}

template <typename Function> class ImportWatch {
  public:
    ImportWatch(Function* import, Function instead) : m_import(import), m_original(*import) { Set(instead); }
    ~ImportWatch() { Set(m_original); }
    ImportWatch(const ImportWatch&) = delete;
    ImportWatch& operator=(const ImportWatch&) = delete;

    Function Original() const { return m_original; }

  private:
    void Set(Function function)
    {
        DWORD before = 0;
        ASSERT_TRUE(VirtualProtect(m_import, sizeof *m_import, PAGE_READWRITE, &before));
        *m_import = function;
        VirtualProtect(m_import, sizeof *m_import, before, &before);
    }

    Function* m_import;
    Function m_original;
};

// No program can be started, whatever lies beside this one.
class NothingStarts {
  private:
    static BOOL WINAPI Refuse(LPCWSTR, LPWSTR, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL, DWORD,
                              LPVOID, LPCWSTR, LPSTARTUPINFOW, LPPROCESS_INFORMATION)
    {
        SetLastError(ERROR_FILE_NOT_FOUND);
        return FALSE;
    }

    const ImportWatch<decltype(&CreateProcessW)> m_watch{&__imp_CreateProcessW, Refuse};
};
