// The program's calls on files, of which one fails while this lives.
#pragma once

#include "support/import_watch.h"

class FileFaults {
  public:
    FileFaults() { FailNone(); }
    ~FileFaults() { FailNone(); }
    FileFaults(const FileFaults&) = delete;
    FileFaults& operator=(const FileFaults&) = delete;

    // From now on the nth call (from 1) fails, whichever it is; all others go through.
    void FailNth(int n)
    {
        s_seen = 0;
        s_failAt = n;
    }
    void FailNone() { FailNth(0); }
    bool HasFired() const { return s_failAt && s_seen >= s_failAt; } // since FailNth
    static const char* Failed() { return s_failed; }                 // the last one

  private:
    static bool Meets(const char* name)
    {
        if (++s_seen == s_failAt)
            s_failed = name;
        return s_seen == s_failAt;
    }

    template <typename Result> static Result Failure()
    {
        if constexpr (std::is_same_v<Result, HANDLE>)
            return INVALID_HANDLE_VALUE;
        else if constexpr (std::is_same_v<Result, DWORD>)
            return INVALID_FILE_ATTRIBUTES;
        else
            return FALSE;
    }

    // The number makes types of functions of the same kind different.
    template <int kNumber, typename Function> class Call;
    template <int kNumber, typename Result, typename... Arguments>
    class Call<kNumber, Result(WINAPI*)(Arguments...)> {
      public:
        using Function = Result(WINAPI*)(Arguments...);
        Call(Function* import, const char* name) : m_watch(import, Pass)
        {
            s_real = m_watch.Original();
            s_name = name;
        }

      private:
        static Result WINAPI Pass(Arguments... arguments)
        {
            if (!Meets(s_name))
                return s_real(arguments...);
            SetLastError(ERROR_IO_DEVICE);
            return Failure<Result>();
        }

        static inline Function s_real = nullptr;
        static inline const char* s_name = nullptr;
        const ImportWatch<Function> m_watch;
    };

    static inline int s_seen = 0;
    static inline int s_failAt = 0; // 0: none
    static inline const char* s_failed = "";

    const Call<1, decltype(&CreateFileW)> m_create{&__imp_CreateFileW, "CreateFileW"};
    const Call<2, decltype(&WriteFile)> m_write{&__imp_WriteFile, "WriteFile"};
    const Call<3, decltype(&ReadFile)> m_read{&__imp_ReadFile, "ReadFile"};
    const Call<4, decltype(&GetFileSizeEx)> m_size{&__imp_GetFileSizeEx, "GetFileSizeEx"};
    const Call<5, decltype(&FlushFileBuffers)> m_flush{&__imp_FlushFileBuffers, "FlushFileBuffers"};
    const Call<6, decltype(&MoveFileExW)> m_move{&__imp_MoveFileExW, "MoveFileExW"};
    const Call<7, decltype(&DeleteFileW)> m_delete{&__imp_DeleteFileW, "DeleteFileW"};
    const Call<8, decltype(&SetFileTime)> m_time{&__imp_SetFileTime, "SetFileTime"};
    const Call<9, decltype(&FindFirstFileW)> m_findFirst{&__imp_FindFirstFileW, "FindFirstFileW"};
    const Call<10, decltype(&FindNextFileW)> m_findNext{&__imp_FindNextFileW, "FindNextFileW"};
    const Call<11, decltype(&MoveFileW)> m_moveOnly{&__imp_MoveFileW, "MoveFileW"};
    const Call<12, decltype(&CopyFileW)> m_copy{&__imp_CopyFileW, "CopyFileW"};
    const Call<13, decltype(&SetFilePointerEx)> m_seek{&__imp_SetFilePointerEx, "SetFilePointerEx"};
    const Call<14, decltype(&GetFileAttributesW)> m_attributes{&__imp_GetFileAttributesW,
                                                               "GetFileAttributesW"};
    const Call<15, decltype(&GetFileAttributesExW)> m_facts{&__imp_GetFileAttributesExW,
                                                            "GetFileAttributesExW"};
    const Call<16, decltype(&SetFileAttributesW)> m_setAttributes{&__imp_SetFileAttributesW,
                                                                  "SetFileAttributesW"};
    const Call<17, decltype(&GetFileInformationByHandle)> m_identity{&__imp_GetFileInformationByHandle,
                                                                     "GetFileInformationByHandle"};
    const Call<18, decltype(&GetFileInformationByHandleEx)> m_identityEx{&__imp_GetFileInformationByHandleEx,
                                                                         "GetFileInformationByHandleEx"};
    const Call<19, decltype(&GetTempFileNameW)> m_tempName{&__imp_GetTempFileNameW, "GetTempFileNameW"};
};
