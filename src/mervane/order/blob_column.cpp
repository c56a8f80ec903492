#include "mervane/order/blob_column.h"

#include <string>

namespace mervane {

namespace {

std::span<const BYTE> BytesOf(std::string_view text)
{
    return {reinterpret_cast<const BYTE*>(text.data()), text.size()};
}

} // namespace

BlobColumn::BlobColumn(Database& database, const TableInfo& table, const Property& property, uint32_t places,
                       size_t limit)
    : m_database(database), m_table(table), m_property(property), m_kept(places, limit)
{}

void BlobColumn::Set(uint32_t place, std::optional<std::span<const BYTE>> blob)
{
    if (blob)
        m_kept.Set(place, std::string_view(reinterpret_cast<const char*>(blob->data()), blob->size()));
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

std::optional<std::span<const BYTE>> BlobColumn::ReadWhole(CEOID id)
{
    if (!m_select.IsValid())
        m_select = Statement(m_database, std::string("SELECT ") + m_property.column + " FROM " +
                                             m_table.name + " WHERE oid = ?");
    const ScopedReset reset(m_select);
    m_select.BindInteger(1, id);
    const auto blob =
        m_select.Step() == Statement::Result::Row ? m_select.Blob(0) : std::optional<std::span<const BYTE>>();
    if (!blob)
        return std::nullopt;
    m_whole.assign(blob->begin(), blob->end());
    return m_whole;
}

} // namespace mervane
