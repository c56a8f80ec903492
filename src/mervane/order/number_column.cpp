#include "mervane/order/number_column.h"

#include "mervane/records/record_values.h"

namespace mervane {

void NumberColumn::Resize(uint32_t places)
{
    m_present.resize(places);
    if (IsWide())
        m_wide.resize(places);
    else
        m_narrow.resize(places);
}

void NumberColumn::Set(uint32_t place, std::optional<int64_t> stored)
{
    const auto value = stored ? InRange(m_property, *stored) : std::nullopt;
    m_present[place] = value.has_value();
    if (IsWide())
        m_wide[place] = static_cast<uint64_t>(value.value_or(0));
    else
        m_narrow[place] = static_cast<uint16_t>(value.value_or(0) ^ Bias());
}

CEPROPVAL NumberColumn::Value(uint32_t place) const
{
    CEPROPVAL value{};
    value.propid = m_property.id;
    if (IsWide())
        value.val.filetime = {static_cast<DWORD>(m_wide[place]), static_cast<DWORD>(m_wide[place] >> 32)};
    else
        value.val.uiVal = static_cast<USHORT>(m_narrow[place] ^ Bias());
    return value;
}

} // namespace mervane
