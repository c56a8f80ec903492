// The program's calls on files, of which one fails while this lives.
#pragma once

#include "support/import_watch.h"

extern "C" {
extern decltype(&ReadFile) __imp_ReadFile;
extern decltype(&GetFileSizeEx) __imp_GetFileSizeEx;
extern decltype(&FlushFileBuffers) __imp_FlushFileBuffers;
extern decltype(&MoveFileExW) __imp_MoveFileExW;
extern decltype(&SetFileTime) __imp_SetFileTime;
extern decltype(&FindFirstFileW) __imp_FindFirstFileW;
extern decltype(&FindNextFileW) __imp_FindNextFileW;
}

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

  private:
    static bool Meets() { return ++s_seen == s_failAt; }

    template <typename Result> static Result Failure()
    {
        if constexpr (std::is_same_v<Result, HANDLE>)
            return INVALID_HANDLE_VALUE;
        else
            return FALSE;
    }

    // The number makes types of functions of the same kind different.
    template <int kNumber, typename Function> class Call;
    template <int kNumber, typename Result, typename... Arguments>
    class Call<kNumber, Result(WINAPI*)(Arguments...)> {
      public:
        using Function = Result(WINAPI*)(Arguments...);
        explicit Call(Function* import) : m_watch(import, Pass) { s_real = m_watch.Original(); }

      private:
        static Result WINAPI Pass(Arguments... arguments)
        {
            if (!Meets())
                return s_real(arguments...);
            SetLastError(ERROR_IO_DEVICE);
            return Failure<Result>();
        }

        static inline Function s_real = nullptr;
        const ImportWatch<Function> m_watch;
    };

    static inline int s_seen = 0;
    static inline int s_failAt = 0; // 0: none

    const Call<1, decltype(&CreateFileW)> m_create{&__imp_CreateFileW};
    const Call<2, decltype(&WriteFile)> m_write{&__imp_WriteFile};
    const Call<3, decltype(&ReadFile)> m_read{&__imp_ReadFile};
    const Call<4, decltype(&GetFileSizeEx)> m_size{&__imp_GetFileSizeEx};
    const Call<5, decltype(&FlushFileBuffers)> m_flush{&__imp_FlushFileBuffers};
    const Call<6, decltype(&MoveFileExW)> m_move{&__imp_MoveFileExW};
    const Call<7, decltype(&DeleteFileW)> m_delete{&__imp_DeleteFileW};
    const Call<8, decltype(&SetFileTime)> m_time{&__imp_SetFileTime};
    const Call<9, decltype(&FindFirstFileW)> m_findFirst{&__imp_FindFirstFileW};
    const Call<10, decltype(&FindNextFileW)> m_findNext{&__imp_FindNextFileW};
};
