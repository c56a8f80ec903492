// The record types and constants of the handheld's database, with the same names and layout rules: a property
// identifier is a property number in the high 16 bits and a value type in the low 16.
#pragma once

#include <windows.h>

using CEOID = DWORD;    // a record's identifier; 0 = none
using CEPROPID = DWORD; // property number << 16 | value type

constexpr WORD CEVT_I2 = 0x0002;
constexpr WORD CEVT_UI2 = 0x0012;
constexpr WORD CEVT_LPWSTR = 0x001F;
constexpr WORD CEVT_FILETIME = 0x0040;
constexpr WORD CEVT_BLOB = 0x0041;

constexpr WORD CEDB_PROPNOTFOUND = 0x0100; // on reading: the record lacks the property that was asked for
constexpr WORD CEDB_PROPDELETE = 0x0200;   // on writing: remove the property

constexpr DWORD CEDB_SORT_DESCENDING = 0x00000001;

struct CEBLOB {
    DWORD dwCount; // bytes
    BYTE* lpb;
};

union CEVALUNION {
    short iVal;
    USHORT uiVal;
    FILETIME filetime;
    wchar_t* lpwstr; // NUL-terminated
    CEBLOB blob;
};

struct CEPROPVAL {
    CEPROPID propid;
    WORD wLenData; // left 0
    WORD wFlags;
    CEVALUNION val;
};

struct SORTORDERSPEC {
    CEPROPID propid;
    DWORD dwFlags;
};

constexpr WORD PropertyType(CEPROPID id)
{
    return static_cast<WORD>(id & 0xFFFF);
}
constexpr WORD PropertyNumber(CEPROPID id)
{
    return static_cast<WORD>(id >> 16);
}
constexpr CEPROPID MakePropertyId(WORD number, WORD type)
{
    return (CEPROPID{number} << 16) | type;
}
