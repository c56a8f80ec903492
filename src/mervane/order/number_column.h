// A numeric property of all records in memory, by their places.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "mervane/values/property_map.h"

namespace mervane {

class NumberColumn {
  public:
    explicit NumberColumn(const Property& property) : m_property(property) {}

    // New places lack the property.
    void Resize(uint32_t places);
    // A stored number; one that the property's type cannot hold counts as none.
    void Set(uint32_t place, std::optional<int64_t> stored);

    bool IsMissing(uint32_t place) const { return !m_present[place]; }
    // What orders the values: times as unsigned numbers, the others as their type says.
    uint64_t Key(uint32_t place) const { return IsWide() ? m_wide[place] : m_narrow[place]; }
    // As a read gives it. Not of a place that lacks it.
    CEPROPVAL Value(uint32_t place) const;

  private:
    // The narrow keys' distance from their values: signed ones compare as unsigned.
    uint16_t Bias() const { return PropertyType(m_property.id) == CEVT_I2 ? 0x8000 : 0; }
    bool IsWide() const { return PropertyType(m_property.id) == CEVT_FILETIME; }

    const Property& m_property;
    std::vector<bool> m_present;
    std::vector<uint64_t> m_wide; // the one or the other is used
    std::vector<uint16_t> m_narrow;
};

} // namespace mervane
