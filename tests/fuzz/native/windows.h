// What the readers use of the system's header, for a compiler of this side: they are run here under a fuzzer
// and the address sanitizer, which know no Windows program. Compiled with -fshort-wchar; platform.cpp has the
// functions.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <cwchar>

using BYTE = unsigned char;
using WORD = uint16_t;
using USHORT = uint16_t;
using DWORD = uint32_t;
using UINT = unsigned int;
using BOOL = int;

struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};

struct SYSTEMTIME {
    WORD wYear;
    WORD wMonth;
    WORD wDayOfWeek;
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};

constexpr UINT CP_UTF8 = 65001;
constexpr UINT LMEM_FIXED = 0;

constexpr bool IS_HIGH_SURROGATE(wchar_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

BOOL IsValidCodePage(UINT codePage);
// UTF-8; every other code page is taken for one of single bytes.
int MultiByteToWideChar(UINT codePage, DWORD flags, const char* bytes, int size, wchar_t* wide, int room);
int WideCharToMultiByte(UINT codePage, DWORD flags, const wchar_t* wide, int size, char* bytes, int room,
                        const char* standIn, BOOL* isUsed);
DWORD CharLowerBuffW(wchar_t* text, DWORD length);        // the letters A to Z
wchar_t* CharUpperW(wchar_t* text);                       // the letters a to z
int wsprintfW(wchar_t* text, const wchar_t* format, ...); // %d and %s
BOOL FileTimeToSystemTime(const FILETIME* count, SYSTEMTIME* time);
BOOL SystemTimeToFileTime(const SYSTEMTIME* time, FILETIME* count); // refuses all

inline void* LocalAlloc(UINT, size_t size)
{
    return malloc(size);
}
inline void* LocalFree(void* block)
{
    free(block);
    return nullptr;
}
