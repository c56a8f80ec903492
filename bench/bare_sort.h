// What a sort cannot do without, done bare: reading the column with one statement, making keys, sorting them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bare_store.h"
#include "mervane/values/ce_types.h"

namespace bench {

struct TextKey {
    CEOID id;
    std::string key; // of LCMapStringW; empty for a record without the text
    bool operator<(const TextKey& other) const;
};

struct NumberKey {
    CEOID id;
    int64_t number;
    bool operator<(const NumberKey& other) const;
};

std::vector<TextKey> ReadTextKeys(BareStore& store, const char* column);
std::vector<NumberKey> ReadNumberKeys(BareStore& store, const char* column);

} // namespace bench
