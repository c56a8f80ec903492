// What an open editor has of an entry that is not saved, as bytes of a rescue file and back. docs/rescue.md
// has the format.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/journal_entry.h"

struct RescueState {
    uint64_t store = 0; // the number of the store that the entry belongs to
    CEOID id = 0;       // the record that is edited; 0: a new entry
    uint64_t image = 0; // stands for the record as it was loaded; 0: there was none
    EntryToWrite entry; // times, numbers and texts, with placeholders where the controls have them; no more
    std::optional<std::vector<CEOID>> categories; // assigned; none: those that the record has
    std::vector<CEOID> contacts;                  // assigned
};

constexpr uint64_t kRescueSizeLimit = 64 * 1024 * 1024; // bytes of a file; one that is larger is none

// FNV-1a. Two texts of the same length that differ in one byte have different numbers.
uint64_t NumberOfBytes(std::string_view bytes);

// Empty when the texts are too long for a file.
std::string RescueBytes(const RescueState& state);
// Nothing for whatever RescueBytes has not written whole, and for a version that is not known.
std::optional<RescueState> ReadRescue(std::string_view bytes);
