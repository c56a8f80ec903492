// What the files beside a store say of the store that they were made for, read past SQLite: it takes them as
// the store's by their names alone.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "mervane/file/database_header.h"

namespace mervane {

constexpr size_t kLogHeaderSize = 32; // a log of no more has nothing

// A write-ahead log: what it has of whole transactions.
struct LogContent {
    uint32_t pageSize = 0;
    std::vector<FirstPage> firstPages;
    uint32_t pagesAtFirst = 0, pagesAtEnd = 0; // of the database, after the first and the last transaction
};
// None when it has no whole transaction, or is no log. *hasFailed is set where it could not be read as far as
// it goes: then nothing is known of it.
std::optional<LogContent> ReadLog(const std::wstring& path, bool* hasFailed);
// Whether the log may have been made for the database: its first page is the one before the log's first, or
// one that the log has (what was taken in already).
bool MayBelong(const DatabaseHeader& database, const LogContent& log);

// A rollback journal that SQLite would put back.
struct JournalContent {
    uint32_t pageSize = 0;
    uint32_t pagesBefore = 0; // of the database; 0: it was just being made
    std::optional<FirstPage> firstPage;
};
// None when it is no journal, or one that is done. *hasFailed as for a log.
std::optional<JournalContent> ReadJournal(const std::wstring& path, bool* hasFailed);
bool MayBelong(const DatabaseHeader& database, const JournalContent& journal);

} // namespace mervane
