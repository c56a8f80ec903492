// Records as the tests write and read them, and the store's file as any SQLite tool sees it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "mervane/db_categories.h"
#include "mervane/db_contacts.h"
#include "mervane/db_journal.h"

struct sqlite3;

constexpr CEPROPID kDate = 0x00650040, kSubject = 0x0066001F, kBody = 0x0067001F, kCategories = 0x00680041,
                   kType = 0x0069001F, kKind = 0x006A0012, kPriority = 0x006B0002, kSensitivity = 0x006C0002,
                   kEndTime = 0x006D0040, kDuration = 0x006E0040, kContacts = 0x006F0041;

FILETIME TimeOf(uint64_t count);
uint64_t CountOf(const FILETIME& time);

// A property array with what it points to.
class Sent {
  public:
    Sent& Number(CEPROPID id, int value);
    Sent& Time(CEPROPID id, uint64_t count);
    Sent& Text(CEPROPID id, const std::wstring& text);
    Sent& Blob(CEPROPID id, const std::vector<BYTE>& bytes);
    // A blob of a count and identifiers, made here by hand.
    Sent& Ids(CEPROPID id, const std::vector<DWORD>& ids);
    Sent& Delete(CEPROPID id);

    CEOID Write(CeDBase& database, CEOID id = 0) const;
    std::vector<CEPROPVAL> values;

  private:
    CEPROPVAL& Add(CEPROPID id);

    std::deque<std::wstring> m_texts;
    std::deque<std::vector<BYTE>> m_blobs;
};

std::vector<BYTE> IdBytes(const std::vector<DWORD>& words);

// What a read answered.
class Received {
  public:
    // Reads the current record.
    explicit Received(CeDBase& database, const std::vector<CEPROPID>& wanted = {});
    // Seeks first.
    Received(CeDBase& database, CEOID id, const std::vector<CEPROPID>& wanted = {});

    CEOID Id() const { return m_id; }
    WORD Count() const { return m_count; }
    bool HasBlock() const { return m_block != nullptr; }
    const CEPROPVAL& At(size_t index) const { return m_block.get()[index]; }
    // null when it is not among the answer, or flagged as missing.
    const CEPROPVAL* Find(CEPROPID id) const;
    std::optional<std::wstring> Text(CEPROPID id) const;
    std::optional<uint64_t> Time(CEPROPID id) const;
    std::optional<int> Number(CEPROPID id) const;
    std::optional<std::vector<BYTE>> Blob(CEPROPID id) const;
    std::vector<CEPROPID> Ids() const;

  private:
    struct Freer {
        void operator()(CEPROPVAL* block) const { LocalFree(block); }
    };
    CEOID m_id = 0;
    WORD m_count = 0;
    std::unique_ptr<CEPROPVAL, Freer> m_block;
};

// The identifiers of a walk.
std::vector<CEOID> Walk(CeDBase& database);
// The identifiers of the rows, by SeekRow.
std::vector<CEOID> Rows(CeDBase& database);

CEOID AddCategory(DbCategories& categories, const std::wstring& name);
CEOID AddContact(DbContacts& contacts, const std::wstring& fileAs);
CEOID AddEntry(DbJournal& journal, const std::wstring& subject, uint64_t date = 0);

// The names that a blob of identifiers is shown as.
std::wstring JoinedNames(CeDBase& database, const std::vector<DWORD>& blobWords, wchar_t separator);

// A connection of the test's own to a file, past the library.
class RawStore {
  public:
    explicit RawStore(const std::wstring& path);
    ~RawStore();
    RawStore(const RawStore&) = delete;
    RawStore& operator=(const RawStore&) = delete;

    bool Run(const std::string& sql);
    // The first column of the first row.
    int64_t Integer(const std::string& sql);
    std::string Text(const std::string& sql);
    sqlite3* Handle() const { return m_handle; }

  private:
    sqlite3* m_handle = nullptr;
};
