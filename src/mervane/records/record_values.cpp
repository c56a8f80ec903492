#include "mervane/records/record_values.h"

#include <algorithm>

#include "mervane/values/text_codec.h"

namespace mervane {

namespace {

bool HasAddress(const CEPROPVAL& property)
{
    switch (PropertyType(property.propid)) {
    case CEVT_LPWSTR: return property.val.lpwstr != nullptr;
    case CEVT_BLOB: return property.val.blob.lpb != nullptr || property.val.blob.dwCount == 0;
    default: return true;
    }
}

} // namespace

bool RecordValues::Read(const TableInfo& table, WORD count, const CEPROPVAL* properties)
{
    if (count && !properties)
        return false;
    for (WORD i = 0; i < count; ++i)
        if (!Take(table, properties[i]))
            return false;
    return true;
}

bool RecordValues::Take(const TableInfo& table, const CEPROPVAL& property)
{
    const int index = FindProperty(table, property.propid);
    if (index < 0)
        return false;
    const bool removes = (property.wFlags & CEDB_PROPDELETE) != 0;
    if (!removes && (property.wFlags & CEDB_PROPNOTFOUND))
        return true;
    if (!removes && !HasAddress(property))
        return false;
    const auto place = static_cast<size_t>(index);
    m_mask |= 1u << index;
    m_values[place] = removes ? nullptr : &property;
    if (!removes && PropertyType(property.propid) == CEVT_LPWSTR) {
        constexpr size_t kUsualBytes = 1024;
        m_textBytes.reserve(kUsualBytes);
        const size_t start = m_textBytes.size();
        AppendEncoded(m_textBytes, property.val.lpwstr);
        m_texts[place] = {start, m_textBytes.size() - start};
    }
    return true;
}

std::optional<int64_t> RecordValues::Number(int index) const
{
    const CEPROPVAL* property = Value(index);
    if (!property)
        return std::nullopt;
    switch (PropertyType(property->propid)) {
    case CEVT_I2: return property->val.iVal;
    case CEVT_UI2: return property->val.uiVal;
    case CEVT_FILETIME: return static_cast<int64_t>(CountOf(property->val.filetime));
    default: return std::nullopt;
    }
}

std::string_view RecordValues::Text(int index) const
{
    const TextPlace& place = m_texts[static_cast<size_t>(index)];
    return std::string_view(m_textBytes).substr(place.start, place.length);
}

std::optional<std::span<const BYTE>> RecordValues::Bytes(int index) const
{
    const CEPROPVAL* value = Value(index);
    if (!value)
        return std::nullopt;
    if (PropertyType(value->propid) == CEVT_LPWSTR)
        return BytesOf(Text(index));
    return std::span<const BYTE>(value->val.blob.lpb, value->val.blob.dwCount);
}

void RecordValues::Bind(Statement& statement, int parameter, int index) const
{
    const CEPROPVAL* property = Value(index);
    if (!property)
        statement.BindNull(parameter);
    else if (PropertyType(property->propid) == CEVT_LPWSTR)
        statement.BindText(parameter, Text(index));
    else if (PropertyType(property->propid) == CEVT_BLOB)
        statement.BindBlob(parameter, {property->val.blob.lpb, property->val.blob.dwCount});
    else
        statement.BindInteger(parameter, Number(index).value_or(0));
}

std::optional<int64_t> InRange(const Property& property, int64_t stored)
{
    int64_t low = INT16_MIN, high = INT16_MAX;
    switch (PropertyType(property.id)) {
    case CEVT_I2: break;
    case CEVT_UI2: low = 0, high = UINT16_MAX; break;
    default: return stored;
    }
    if (property.saturates)
        return std::clamp<int64_t>(stored, 0, high);
    if (stored < low || stored > high)
        return std::nullopt;
    return stored;
}

} // namespace mervane
