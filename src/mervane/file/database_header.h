// The beginning of a database's file, in the form that SQLite's file format fixes, read past SQLite.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace mervane {

constexpr size_t kDatabaseHeaderSize = 100;
// The bytes that tell which way of writing its writers and its readers must know.
constexpr size_t kWriteVersionPlace = 18, kReadVersionPlace = 19;
constexpr BYTE kVersionWithLog = 2;

// The part of a database's first page that changes with what is written.
struct FirstPage {
    uint32_t changes = 0; // counted up whenever the first page is written, mostly by one
    uint32_t pages = 0;   // of the database
    uint32_t schema = 0;  // counted up with the tables' shape, and by a copy that SQLite makes
    uint32_t userVersion = 0;
};
// page: its beginning at least, kDatabaseHeaderSize bytes.
FirstPage FirstPageIn(std::span<const BYTE> page);
uint32_t ApplicationIdIn(std::span<const BYTE> page);

struct DatabaseHeader {
    uint32_t pageSize = 0;
    bool usesLog = false;
    FirstPage first;
};
// None when the file is shorter, or cannot be read, which sets *hasFailed.
std::optional<DatabaseHeader> ReadDatabaseHeader(const std::wstring& path, bool* hasFailed);

} // namespace mervane
