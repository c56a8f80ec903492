// The blob that holds a set of records: a count, then that many 32-bit identifiers, little-endian.
#pragma once

#include <span>
#include <vector>

#include "mervane/values/ce_types.h"

namespace mervane {

struct IdBlob {
    std::vector<CEOID> ids; // each once, in the blob's order; identifier 0 left out
    bool rightShape;        // as many bytes as the count says, or none at all
};
// Of a blob of a wrong shape the identifiers that it counts and wholly holds.
IdBlob ReadIdBlob(std::span<const BYTE> bytes);
IdBlob ReadIdBlob(const CEBLOB& blob);

// Whether ReadIdBlob would read one of the wanted ids. These ascend. Allocates nothing.
[[nodiscard]] bool HoldsAnyId(const CEBLOB& blob, std::span<const CEOID> wanted);

// One LocalAlloc block in blob->lpb, which the caller frees; {0, null} for no identifiers. 0 when there is no
// memory.
[[nodiscard]] int MakeIdBlob(std::span<const CEOID> ids, CEBLOB* blob);

} // namespace mervane
