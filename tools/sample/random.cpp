#include "sample/random.h"

namespace sample {

Random::Random(uint64_t seed, uint64_t stream) : m_state(seed)
{
    m_state = Next() ^ (stream * 0xD1342543DE82EF95u);
}

// SplitMix64.
uint64_t Random::Next()
{
    m_state += 0x9E3779B97F4A7C15u;
    uint64_t mixed = m_state;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
    return mixed ^ (mixed >> 31);
}

// The high half of the product: the bias is far below what anyone could notice.
uint32_t Random::Below(uint32_t bound)
{
    return static_cast<uint32_t>(((Next() >> 32) * bound) >> 32);
}

int Random::Between(int low, int high)
{
    return low + static_cast<int>(Below(static_cast<uint32_t>(high - low) + 1));
}

} // namespace sample
