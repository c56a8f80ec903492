// Sorting records by what is kept of their properties.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "mervane/order/key_column.h"
#include "mervane/order/number_column.h"
#include "mervane/order/record_set.h"

namespace mervane {

struct KeyedPlace {
    uint64_t key;
    uint32_t place;
};
// By the key; equal ones stay in their order.
void SortByKey(std::vector<KeyedPlace>& items);

// The places of the records that are there, sorted: those that lack the property last, equal ones ascending,
// both in either direction. ascending: all places in an order that the numbers are likely to be in, which
// saves the sort where they are; empty when none is known.
std::vector<uint32_t> SortPlaces(const RecordSet& records, const NumberColumn& numbers, bool descending,
                                 const std::vector<uint32_t>& ascending = {});
// fullKey gives the whole key of a place; it is asked for where kept keys are cut and do not decide.
using FullKey = std::function<std::string(uint32_t place)>;
std::vector<uint32_t> SortPlaces(const RecordSet& records, const KeyColumn& keys, bool descending,
                                 const FullKey& fullKey);

} // namespace mervane
