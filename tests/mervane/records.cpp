#include "records.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstring>

FILETIME TimeOf(uint64_t count)
{
    return {static_cast<DWORD>(count), static_cast<DWORD>(count >> 32)};
}

uint64_t CountOf(const FILETIME& time)
{
    return uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

CEPROPVAL& Sent::Add(CEPROPID id)
{
    CEPROPVAL value{};
    value.propid = id;
    return values.emplace_back(value);
}

Sent& Sent::Number(CEPROPID id, int value)
{
    if (PropertyType(id) == CEVT_UI2)
        Add(id).val.uiVal = static_cast<USHORT>(value);
    else
        Add(id).val.iVal = static_cast<short>(value);
    return *this;
}

Sent& Sent::Time(CEPROPID id, uint64_t count)
{
    Add(id).val.filetime = TimeOf(count);
    return *this;
}

Sent& Sent::Text(CEPROPID id, const std::wstring& text)
{
    Add(id).val.lpwstr = m_texts.emplace_back(text).data();
    return *this;
}

Sent& Sent::Blob(CEPROPID id, const std::vector<BYTE>& bytes)
{
    auto& kept = m_blobs.emplace_back(bytes);
    Add(id).val.blob = {static_cast<DWORD>(kept.size()), kept.data()};
    return *this;
}

std::vector<BYTE> IdBytes(const std::vector<DWORD>& words)
{
    std::vector<BYTE> bytes;
    for (const DWORD word : words)
        for (int shift = 0; shift < 32; shift += 8)
            bytes.push_back(static_cast<BYTE>(word >> shift));
    return bytes;
}

Sent& Sent::Ids(CEPROPID id, const std::vector<DWORD>& ids)
{
    std::vector<DWORD> words{static_cast<DWORD>(ids.size())};
    words.insert(words.end(), ids.begin(), ids.end());
    return Blob(id, IdBytes(words));
}

Sent& Sent::Delete(CEPROPID id)
{
    Add(id).wFlags = CEDB_PROPDELETE;
    return *this;
}

CEOID Sent::Write(CeDBase& database, CEOID id) const
{
    return database.WriteRecord(id, static_cast<WORD>(values.size()), values.data());
}

Received::Received(CeDBase& database, const std::vector<CEPROPID>& wanted)
    : m_count(static_cast<WORD>(wanted.size()))
{
    CEPROPVAL* block = nullptr;
    m_id = database.ReadRecord(&m_count, wanted.empty() ? nullptr : wanted.data(), &block);
    m_block.reset(block);
}

static CeDBase& Sought(CeDBase& database, CEOID id)
{
    EXPECT_EQ(database.SeekRecord(id), id);
    return database;
}

Received::Received(CeDBase& database, CEOID id, const std::vector<CEPROPID>& wanted)
    : Received(Sought(database, id), wanted)
{}

const CEPROPVAL* Received::Find(CEPROPID id) const
{
    for (WORD i = 0; i < m_count; ++i)
        if (At(i).propid == id && !(At(i).wFlags & CEDB_PROPNOTFOUND))
            return &At(i);
    return nullptr;
}

std::optional<std::wstring> Received::Text(CEPROPID id) const
{
    const CEPROPVAL* value = Find(id);
    return value ? std::optional<std::wstring>(value->val.lpwstr) : std::nullopt;
}

std::optional<uint64_t> Received::Time(CEPROPID id) const
{
    const CEPROPVAL* value = Find(id);
    return value ? std::optional(CountOf(value->val.filetime)) : std::nullopt;
}

std::optional<int> Received::Number(CEPROPID id) const
{
    const CEPROPVAL* value = Find(id);
    if (!value)
        return std::nullopt;
    return PropertyType(id) == CEVT_UI2 ? int{value->val.uiVal} : int{value->val.iVal};
}

std::optional<std::vector<BYTE>> Received::Blob(CEPROPID id) const
{
    const CEPROPVAL* value = Find(id);
    if (!value)
        return std::nullopt;
    return std::vector<BYTE>(value->val.blob.lpb, value->val.blob.lpb + value->val.blob.dwCount);
}

std::vector<CEPROPID> Received::Ids() const
{
    std::vector<CEPROPID> ids;
    for (WORD i = 0; i < m_count; ++i)
        ids.push_back(At(i).propid);
    return ids;
}

std::vector<CEOID> Walk(CeDBase& database)
{
    const CeDBase::ReadScope scope(database);
    std::vector<CEOID> ids;
    for (int found = database.SeekFirstRecord(); found; found = database.SeekNextRecord())
        ids.push_back(Received(database).Id());
    return ids;
}

std::vector<CEOID> Rows(CeDBase& database)
{
    const CeDBase::ReadScope scope(database);
    std::vector<CEOID> ids;
    for (uint32_t row = 0; const CEOID id = database.SeekRow(row); ++row)
        ids.push_back(id);
    return ids;
}

CEOID AddCategory(DbCategories& categories, const std::wstring& name)
{
    return Sent().Text(kCategoriesKey, name).Write(categories);
}

CEOID AddContact(DbContacts& contacts, const std::wstring& fileAs)
{
    return Sent().Text(kContactsKey, fileAs).Write(contacts);
}

CEOID AddEntry(DbJournal& journal, const std::wstring& subject, uint64_t date)
{
    return Sent().Time(kDate, date).Text(kSubject, subject).Write(journal);
}

std::wstring JoinedNames(CeDBase& database, const std::vector<DWORD>& blobWords, wchar_t separator)
{
    std::vector<BYTE> bytes = IdBytes(blobWords);
    wchar_t* text = nullptr;
    const int length =
        database.SetStrFromBlob({static_cast<DWORD>(bytes.size()), bytes.data()}, separator, &text);
    const std::wstring joined = text ? text : L"";
    EXPECT_EQ(static_cast<size_t>(length), joined.size());
    EXPECT_EQ(text == nullptr, joined.empty());
    LocalFree(text);
    return joined;
}

RawStore::RawStore(const std::wstring& path)
{
    EXPECT_EQ(sqlite3_open16(path.c_str(), &m_handle), SQLITE_OK);
    sqlite3_busy_timeout(m_handle, 5000);
}

RawStore::~RawStore()
{
    sqlite3_close(m_handle);
}

bool RawStore::Run(const std::string& sql)
{
    return sqlite3_exec(m_handle, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

int64_t RawStore::Integer(const std::string& sql)
{
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(m_handle, sql.c_str(), -1, &statement, nullptr);
    EXPECT_EQ(sqlite3_step(statement), SQLITE_ROW) << sql << ": " << sqlite3_errmsg(m_handle);
    const int64_t value = sqlite3_column_int64(statement, 0);
    sqlite3_finalize(statement);
    return value;
}

std::string RawStore::Text(const std::string& sql)
{
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(m_handle, sql.c_str(), -1, &statement, nullptr);
    EXPECT_EQ(sqlite3_step(statement), SQLITE_ROW) << sql << ": " << sqlite3_errmsg(m_handle);
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
    const std::string value =
        text ? std::string(text, static_cast<size_t>(sqlite3_column_bytes(statement, 0))) : "";
    sqlite3_finalize(statement);
    return value;
}
