// How the owner of an open database is told of a change.
#pragma once

#include <windows.h>

// Posted to the owner window of an open database when another process or connection has changed it; wParam is
// one of the codes below. The program's own writes are not announced: it refreshes its list itself.
constexpr UINT kMsgDatabaseChange = WM_USER + 101;
constexpr WPARAM kChangeWorkBegins = 1; // bulk work begins
constexpr WPARAM kChangeCreated = 2;    // lParam: the record's identifier
constexpr WPARAM kChangeModified = 6;
constexpr WPARAM kChangeDeleted = 8;
constexpr WPARAM kChangeWorkEnded = 15; // bulk work ended; lParam 0: rebuild
