// A random generator of our own, because the distributions of the standard library give other numbers with
// other libraries: the same seed must give the same store everywhere.
#pragma once

#include <cstddef>
#include <cstdint>

namespace sample {

class Random {
  public:
    // Each stream of a seed is a sequence of its own, so that an entry does not depend on those before it.
    Random(uint64_t seed, uint64_t stream);

    uint64_t Next();
    uint32_t Below(uint32_t bound); // 0 to bound - 1; bound is not 0
    int Between(int low, int high); // both included
    bool Chance(int percent) { return Below(100) < static_cast<uint32_t>(percent); }
    template <typename T, size_t size> const T& Pick(const T (&items)[size])
    {
        return items[Below(static_cast<uint32_t>(size))];
    }

  private:
    uint64_t m_state;
};

} // namespace sample
