#include "mervane/order/blob_column.h"

#include <string>

#include "mervane/values/text_codec.h"

namespace mervane {

BlobColumn::BlobColumn(Database& database, const TableInfo& table, const Property& property, uint32_t places,
                       size_t limit)
    : m_database(database), m_table(table), m_property(property), m_kept(places, limit)
{}

void BlobColumn::Set(uint32_t place, std::optional<std::span<const BYTE>> bytes)
{
    if (bytes)
        m_kept.Set(place, std::string_view(reinterpret_cast<const char*>(bytes->data()), bytes->size()));
    else
        m_kept.Set(place, std::nullopt);
}

std::optional<std::span<const BYTE>> BlobColumn::At(uint32_t place, CEOID id)
{
    if (m_kept.IsMissing(place))
        return std::nullopt;
    if (m_kept.IsCut(place))
        if (const auto whole = ReadWhole(id))
            return whole;
    return BytesOf(m_kept.Key(place));
}

std::optional<std::span<const BYTE>> BlobColumn::BytesIn(const Statement& row, int column) const
{
    if (PropertyType(m_property.id) == CEVT_BLOB)
        return row.Blob(column);
    const auto text = row.Text(column);
    return text ? std::optional(BytesOf(*text)) : std::nullopt;
}

std::optional<std::span<const BYTE>> BlobColumn::ReadWhole(CEOID id)
{
    if (!m_select.IsValid())
        m_select = Statement(m_database, std::string("SELECT ") + m_property.column + " FROM " +
                                             m_table.name + " WHERE oid = ?");
    const ScopedReset reset(m_select);
    m_select.BindInteger(1, id);
    if (m_select.Step() != Statement::Result::Row)
        return std::nullopt;
    const auto bytes = BytesIn(m_select, 0);
    if (!bytes)
        return std::nullopt;
    m_whole.assign(bytes->begin(), bytes->end());
    return m_whole;
}

} // namespace mervane
