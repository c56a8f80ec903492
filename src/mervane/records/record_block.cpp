#include "mervane/records/record_block.h"

#include <cstring>

#include "mervane/records/record_values.h"
#include "mervane/values/text_codec.h"

namespace mervane {

namespace {

// The block: the properties, then their texts and blobs, each at an even address.
class BlockWriter {
  public:
    BlockWriter(CEPROPVAL* block, size_t propertyCount)
        : m_next(block), m_bytes(reinterpret_cast<BYTE*>(block + propertyCount))
    {}

    CEPROPVAL& Add(CEPROPID id)
    {
        *m_next = CEPROPVAL{};
        m_next->propid = id;
        return *m_next++;
    }
    wchar_t* PutText(std::string_view text)
    {
        auto* out = reinterpret_cast<wchar_t*>(m_bytes);
        const size_t length = DecodeText(text, out);
        out[length] = L'\0';
        m_bytes += (length + 1) * sizeof(wchar_t);
        return out;
    }
    CEBLOB PutBlob(std::span<const BYTE> bytes)
    {
        BYTE* out = m_bytes;
        if (!bytes.empty())
            memcpy(out, bytes.data(), bytes.size());
        m_bytes += (bytes.size() + 1) & ~size_t{1};
        return {static_cast<DWORD>(bytes.size()), out};
    }
    const CEPROPVAL* Next() const { return m_next; }

  private:
    CEPROPVAL* m_next;
    BYTE* m_bytes;
};

size_t TailBytes(const Statement& row, const WantedColumn& wanted)
{
    if (!wanted.property)
        return 0;
    if (PropertyType(wanted.id) == CEVT_LPWSTR) {
        // A text has at most as many units as its encoding has bytes.
        const auto text = row.Text(wanted.column);
        return text ? (text->size() + 1) * sizeof(wchar_t) : 0;
    }
    if (PropertyType(wanted.id) != CEVT_BLOB)
        return 0;
    const auto blob = row.Blob(wanted.column);
    return blob ? blob->size() + 1 : 0;
}

FILETIME TimeOf(int64_t count)
{
    return {static_cast<DWORD>(count & 0xFFFFFFFF), static_cast<DWORD>(static_cast<uint64_t>(count) >> 32)};
}

std::optional<int64_t> NumberIn(const Statement& row, const WantedColumn& wanted)
{
    const auto stored = row.Integer(wanted.column);
    return stored ? InRange(*wanted.property, *stored) : std::nullopt;
}

bool PutNumber(const Statement& row, const WantedColumn& wanted, BlockWriter& block)
{
    const auto number = NumberIn(row, wanted);
    if (!number)
        return false;
    CEVALUNION& value = block.Add(wanted.id).val;
    switch (PropertyType(wanted.id)) {
    case CEVT_I2: value.iVal = static_cast<short>(*number); break;
    case CEVT_UI2: value.uiVal = static_cast<USHORT>(*number); break;
    default: value.filetime = TimeOf(*number); break;
    }
    return true;
}

// false when the row lacks the property.
bool PutProperty(const Statement& row, const WantedColumn& wanted, BlockWriter& block)
{
    if (!wanted.property)
        return false;
    if (PropertyType(wanted.id) == CEVT_LPWSTR) {
        const auto text = row.Text(wanted.column);
        if (text)
            block.Add(wanted.id).val.lpwstr = block.PutText(*text);
        return text.has_value();
    }
    if (PropertyType(wanted.id) == CEVT_BLOB) {
        const auto blob = row.Blob(wanted.column);
        if (blob)
            block.Add(wanted.id).val.blob = block.PutBlob(*blob);
        return blob.has_value();
    }
    return PutNumber(row, wanted, block);
}

} // namespace

CEPROPVAL* PackRow(const Statement& row, std::span<const WantedColumn> wanted, bool skipMissing, WORD* count)
{
    size_t bytes = (wanted.empty() ? 1 : wanted.size()) * sizeof(CEPROPVAL);
    for (const WantedColumn& column : wanted)
        bytes += TailBytes(row, column);
    auto* block = row.HasFailed() ? nullptr : static_cast<CEPROPVAL*>(LocalAlloc(LMEM_FIXED, bytes));
    if (!block)
        return nullptr;
    BlockWriter writer(block, wanted.size());
    for (const WantedColumn& column : wanted)
        if (!PutProperty(row, column, writer) && !skipMissing)
            writer.Add(column.id).wFlags = CEDB_PROPNOTFOUND;
    if (row.HasFailed()) {
        LocalFree(block);
        return nullptr;
    }
    *count = static_cast<WORD>(writer.Next() - block);
    return block;
}

bool IsForeign(const Statement& row, const WantedColumn& wanted)
{
    if (row.IsNull(wanted.column))
        return false;
    switch (PropertyType(wanted.id)) {
    case CEVT_LPWSTR: {
        const auto text = row.Text(wanted.column);
        return !text || EncodeText(DecodeText(*text)) != *text;
    }
    case CEVT_BLOB: return !row.Blob(wanted.column);
    default: return !NumberIn(row, wanted);
    }
}

} // namespace mervane
