// A file that another program has open, as a scanner does, and that it lets go while the program waits.
#pragma once

#include <string>

#include "support/import_watch.h"
#include "util/owners.h"

class HeldFile {
  public:
    // It is let go in the nth wait, 0: never. Nobody really waits.
    explicit HeldFile(const std::wstring& path, int letGoAt, DWORD share = FILE_SHARE_READ)
    {
        s_waits = 0;
        s_waited = 0;
        s_letGoAt = letGoAt;
        HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
        EXPECT_NE(file, INVALID_HANDLE_VALUE);
        s_file.reset(file == INVALID_HANDLE_VALUE ? nullptr : file);
    }
    ~HeldFile() { s_file.reset(); }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

    int Waits() const { return s_waits; }
    DWORD Waited() const { return s_waited; } // milliseconds

  private:
    static void WINAPI Wait(DWORD milliseconds)
    {
        s_waited += milliseconds;
        EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_WAIT)) << "the hourglass";
        if (++s_waits == s_letGoAt)
            s_file.reset();
    }

    static inline UniqueKernelHandle s_file;
    static inline int s_waits, s_letGoAt;
    static inline DWORD s_waited;
    const ImportWatch<decltype(&Sleep)> m_watch{&__imp_Sleep, Wait};
};
